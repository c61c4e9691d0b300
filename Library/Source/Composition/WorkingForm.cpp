#include "Composition/WorkingForm.h"

#include "Composition/CanonicalForm.h"
#include "Conversion/CodecTable.h"
#include "Conversion/Transcode.h"

namespace moxtexture
{
namespace
{

/// Quality and dithering mean nothing for a target without compression that is no narrower than its source.
constexpr uint32_t k_uiAnyQuality = 2;

Intermediate getWorkingForm(const CMOXTextureHeader& header)
{
    const MOXPixelWord pixelFormat = header.getPixelFormat();
    const EMOXTChannelType eType = pixelFormat.isCompressed()
                                       ? getIntermediate(pixelFormat.getFormat(), header.getChannelType()).eChannelType
                                       : header.getChannelType();
    if (eType == eCT_SignedFloatingPoint || eType == eCT_UnsignedFloatingPoint)
        return {k_RGBA32, eCT_SignedFloatingPoint};
    switch (getStorageBits(eType))
    {
    case 8:
        return {k_RGBA8, eCT_UnsignedNormalisedByte};
    case 16:
        return {k_RGBA16, eCT_UnsignedNormalisedShort};
    case 32:
        return {k_RGBA32, eCT_UnsignedNormalisedInteger};
    default:
        return {ePF_Count, eCT_UnsignedNormalisedByte};
    }
}

} // namespace

bool toWorkingForm(CMOXTexture& texture)
{
    const Intermediate form = getWorkingForm(texture);
    return Transcode(texture, form.pixelFormat, form.eChannelType, texture.getColourSpace(), k_uiAnyQuality, false) &&
           undoOrientation(texture);
}

} // namespace moxtexture
