#include "Pixels/ColourSpaceMapping.h"

#include <cmath>

namespace moxtexture
{

float linearToSRGB(float fLinear)
{
    if (fLinear <= 0.00304f)
        return fLinear * 12.92f;
    return std::pow(fLinear, 0.41666666f) * 1.0556f - 0.0556f;
}

float sRGBToLinear(float fEncoded)
{
    if (fEncoded <= 0.03928f)
        return fEncoded / 12.92f;
    return std::pow((fEncoded + 0.0556f) / 1.0556f, 2.4f);
}

EColourMapping getColourMapping(EMOXTColourSpace eNewSpace, EMOXTColourSpace eOldSpace)
{
    if (eOldSpace == eCS_Linear && eNewSpace == eCS_sRGB)
        return EColourMapping::eLinearToSRGB;
    if (eOldSpace == eCS_sRGB && eNewSpace == eCS_Linear)
        return EColourMapping::eSRGBToLinear;
    return EColourMapping::eNone;
}

float mapColour(EColourMapping eMapping, float fValue)
{
    switch (eMapping)
    {
    case EColourMapping::eLinearToSRGB:
        return linearToSRGB(fValue);
    case EColourMapping::eSRGBToLinear:
        return sRGBToLinear(fValue);
    case EColourMapping::eNone:
        break;
    }
    return fValue;
}

} // namespace moxtexture
