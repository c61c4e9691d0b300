#include "Catalogue/EncodeChecks.h"

#include "Catalogue/QualityNames.h"
#include "Core/Bits.h"

namespace moxtexture
{
namespace
{

bool isMultipleOrSmaller(uint32_t uiSize, uint32_t uiBlock)
{
    return uiSize <= uiBlock || uiSize % uiBlock == 0;
}

bool fitsBlocks(const CMOXTextureHeader& header, MOXPixelWord pixelFormat)
{
    uint32_t x = 0, y = 0, z = 0;
    CMOXTextureHeader::getMinDimensions(pixelFormat, x, y, z);
    return isMultipleOrSmaller(header.getWidth(), x) && isMultipleOrSmaller(header.getHeight(), y) &&
           isMultipleOrSmaller(header.getDepth(), z);
}

EncodeCheck checkMOXTC(const CMOXTextureHeader& header, EMOXTPixelFormat eFormat, bool bPowersOfTwo)
{
    if (eFormat > ePF_MOXTC_4bpp_RGBA)
        return {eEncodePageMOXTC, true, false};
    if (!bPowersOfTwo)
        return {eEncodePageNPOTError, false, false};
    return {eEncodePageMOXTC, true, header.getWidth() != header.getHeight()};
}

} // namespace

EncodeCheck checkEncode(const CMOXTextureHeader& header, MOXPixelWord pixelFormat, bool bASTCEncoderFound)
{
    const bool bPowersOfTwo = isPowerOfTwo(header.getWidth()) && isPowerOfTwo(header.getHeight());
    switch (getQualityFamily(pixelFormat))
    {
    case eQualityMOXTC:
        return checkMOXTC(header, pixelFormat.getFormat(), bPowersOfTwo);
    case eQualityETC:
        return {eEncodePageETC, true, !bPowersOfTwo};
    case eQualityASTC:
        return bASTCEncoderFound ? EncodeCheck{eEncodePageASTC, true, false} : EncodeCheck{eEncodePageASTCError, false, false};
    case eQualityNone:
        break;
    }

    if (pixelFormat.isCompressed())
    {
        const EMOXTPixelFormat eFormat = pixelFormat.getFormat();
        // On purpose: the BC formats leave the page as it was.
        if (eFormat >= ePF_BC1 && eFormat <= ePF_BC7)
            return {eEncodePageUnchanged, true, false};
        if (eFormat >= ePF_ETC2_RGB_A1 && eFormat <= ePF_EAC_RG11)
            return {eEncodePageEmpty, true, false};
    }
    const bool bFits = fitsBlocks(header, pixelFormat);
    return {bFits ? eEncodePageEmpty : eEncodePageSizeError, bFits, false};
}

} // namespace moxtexture
