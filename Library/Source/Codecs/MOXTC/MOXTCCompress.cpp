#include "Codecs/MOXTC/MOXTCCompress.h"

#include <vector>

#include "Codecs/MOXTC/Block/BlockOrder.h"
#include "Codecs/MOXTC/Block/BlockWord.h"
#include "Codecs/MOXTC/ImagePadding.h"
#include "Codecs/MOXTC/MOXTC2bppCompressor.h"
#include "Codecs/MOXTC/MOXTC4bppCompressor.h"
#include "Codecs/MOXTC/MOXTCII2bppCompressor.h"
#include "Codecs/MOXTC/MOXTCII4bppCompressor.h"
#include "Codecs/MOXTC/MOXTCIIBlockCoder.h"
#include "Codecs/MOXTC/MOXTCThreadDriver.h"

namespace moxtexture
{
namespace
{

constexpr uint32_t k_uiQualityFastest = 0;
constexpr uint32_t k_uiQualityFast = 1;
constexpr uint32_t k_uiPassesOfFast = 8;

/// A picture of whole blocks.
struct Picture
{
    const uint8_t* pui8Pixels;
    uint32_t uiWidth;
    uint32_t uiHeight;
};

uint64_t roundUp(uint32_t uiSide, uint32_t uiMultiple)
{
    return (uint64_t{uiSide} + uiMultiple - 1) / uiMultiple * uiMultiple;
}

/// @tparam TCompressor  a leaf class of MOXTCCompressor or MOXTCIICompressor
/// @param writeOutput   calls the compressor's WriteOutput
template <typename TCompressor, typename Write>
void compressFast(const Picture& picture, uint32_t uiPasses, const Write& writeOutput)
{
    TCompressor compressor(picture.pui8Pixels, picture.uiWidth, picture.uiHeight);
    compressor.setIterations(uiPasses);
    CMOXTCThreadDriver driver(compressor);
    compressor.Initialise(true);
    driver.run();
    writeOutput(compressor);
}

void compressFast(const Picture& picture, bool b2bpp, bool bII, uint32_t uiPasses, uint8_t* pTarget)
{
    const auto writeMorton = [pTarget](auto& compressor) { compressor.WriteOutput(pTarget, true); };
    const auto writeRaster = [pTarget](auto& compressor) { compressor.WriteOutput(pTarget); };
    if (bII && b2bpp)
        compressFast<MOXTCII2bppCompressor>(picture, uiPasses, writeRaster);
    else if (bII)
        compressFast<MOXTCII4bppCompressor>(picture, uiPasses, writeRaster);
    else if (b2bpp)
        compressFast<MOXTC2bppCompressor>(picture, uiPasses, writeMorton);
    else
        compressFast<MOXTC4bppCompressor>(picture, uiPasses, writeMorton);
}

void compressPicture(const Picture& picture, bool b2bpp, bool bII, uint32_t uiQuality, uint8_t* pTarget)
{
    if (uiQuality == k_uiQualityFastest && bII && !b2bpp)
        codeMOXTCIIBlocks(picture.pui8Pixels, picture.uiWidth, picture.uiHeight, pTarget);
    else
        compressFast(picture, b2bpp, bII, uiQuality == k_uiQualityFast ? k_uiPassesOfFast : 0, pTarget);
}

} // namespace

uint32_t MOXTCCompress(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, bool /*bHasAlpha*/, bool b2bpp,
                       bool bII, uint32_t uiQuality)
{
    const uint32_t uiBlockWidth = getBlockWidth(b2bpp);
    const uint64_t ui64PaddedWidth = roundUp(uiWidth, uiBlockWidth);
    const uint64_t ui64PaddedHeight = roundUp(uiHeight, k_uiBlockHeight);
    const uint64_t ui64BlocksX = ui64PaddedWidth / uiBlockWidth;
    const uint64_t ui64BlocksY = ui64PaddedHeight / k_uiBlockHeight;
    // Both sides have at most 2^30 blocks, so the product fits 64 bits with room for the eight bytes.
    const uint64_t ui64Size = ui64BlocksX * ui64BlocksY * k_uiBlockBytes;
    if (ui64Size == 0 || ui64Size > UINT32_MAX)
        return 0;

    const bool bNeedsPadding = ui64PaddedWidth != uiWidth || ui64PaddedHeight != uiHeight;
    if (!bII && (bNeedsPadding || !isOrderComplete(static_cast<uint32_t>(ui64BlocksX), static_cast<uint32_t>(ui64BlocksY))))
        return 0;
    const auto uiSize = static_cast<uint32_t>(ui64Size);
    if (pSource == nullptr || pTarget == nullptr)
        return uiSize;
    if (uiQuality > k_uiQualityFast)
        return 0; // no engine

    Picture picture{pSource, uiWidth, uiHeight};
    std::vector<uint8_t> padded;
    if (bNeedsPadding)
    {
        picture.uiWidth = static_cast<uint32_t>(ui64PaddedWidth);
        picture.uiHeight = static_cast<uint32_t>(ui64PaddedHeight);
        padded = padImage(pSource, uiWidth, uiHeight, picture.uiWidth, picture.uiHeight);
        picture.pui8Pixels = padded.data();
    }
    compressPicture(picture, b2bpp, bII, uiQuality, pTarget);
    return uiSize;
}

} // namespace moxtexture
