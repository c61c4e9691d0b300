#include "Composition/CanonicalForm.h"

#include "Conversion/Transcode.h"
#include "Operations/Flip.h"

namespace moxtexture
{
namespace
{

constexpr uint32_t k_uiQuality = 2;

bool toCanonical(CMOXTexture& texture, MOXPixelWord pixelFormat, EMOXTChannelType eChannelType)
{
    const bool bConverted = Transcode(texture, pixelFormat, eChannelType, eCS_Linear, k_uiQuality, false);
    return undoOrientation(texture) && bConverted;
}

} // namespace

bool undoOrientation(CMOXTexture& texture)
{
    bool bSuccess = true;
    for (const EMOXTAxis eAxis : {eAxisX, eAxisY, eAxisZ})
        if (texture.getOrientation(eAxis) == 1u << eAxis)
            bSuccess = Flip(texture, eAxis) && bSuccess;
    texture.setOrientation(0);
    return bSuccess;
}

bool toRGBA8Canonical(CMOXTexture& texture)
{
    return toCanonical(texture, k_RGBA8, eCT_UnsignedNormalisedByte);
}

bool toRGBAFloatCanonical(CMOXTexture& texture)
{
    return toCanonical(texture, k_RGBA32, eCT_SignedFloatingPoint);
}

} // namespace moxtexture
