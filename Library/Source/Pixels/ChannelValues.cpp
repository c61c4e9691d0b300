#include "Pixels/ChannelValues.h"

namespace moxtexture
{

EValueRule getReadRule(EMOXTChannelType eType, unsigned int uiBits, bool bWhole)
{
    if (uiBits == 0 || uiBits > 64 || getStorageBits(eType) == 0)
        return EValueRule::eNothing;
    if (eType < eCT_SignedFloatingPoint)
    {
        if (!isSignedChannelType(eType))
            return EValueRule::eUnsigned;
        return bWhole ? EValueRule::eSignedElement : EValueRule::eSignedField;
    }
    switch (uiBits)
    {
    case 10:
        return EValueRule::eFloat10;
    case 11:
        return EValueRule::eFloat11;
    case 16:
        return eType == eCT_SignedFloatingPoint ? EValueRule::eHalf : EValueRule::eUnsignedHalf;
    case 32:
        // On purpose: there is no unsigned float of 32 bits.
        return eType == eCT_SignedFloatingPoint ? EValueRule::eFloat32 : EValueRule::eNothing;
    default:
        return EValueRule::eNothing;
    }
}

EValueRule getWriteRule(EMOXTChannelType eType, unsigned int uiBits, bool bWhole)
{
    if (eType == eCT_SignedFloatingPoint && (uiBits == 10 || uiBits == 11))
        return EValueRule::eNothing;
    return getReadRule(eType, uiBits, bWhole);
}

float readValueByRule(EValueRule eRule, uint64_t ui64Code, unsigned int uiBits)
{
    return withRule(eRule, [&](auto rule) { return readValue<decltype(rule)::value>(ui64Code, uiBits); });
}

uint64_t writeValueByRule(EValueRule eRule, float fValue, unsigned int uiBits)
{
    return withRule(eRule, [&](auto rule) { return writeValue<decltype(rule)::value>(fValue, uiBits); });
}

} // namespace moxtexture
