#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Codecs/MOXTC/BlockRegion.h"

namespace moxtexture
{

/// A picture on its way into blocks: the source, and the two pictures whose blend shall come near it.
///
/// A pixel is its four bytes as a little-endian number: red in the lowest byte, alpha in the highest.
struct CompressorImages
{
    uint32_t uiWidth = 0;  ///< pixels, a multiple of the block's
    uint32_t uiHeight = 0; ///< pixels, a multiple of the block's
    uint32_t uiBlocksX = 0;
    uint32_t uiBlocksY = 0;
    uint8_t ui8BlockWidth = 0;       ///< pixels: 8 at 2bpp, 4 at 4bpp
    uint8_t ui8BlockHeight = 0;      ///< pixels: 4
    std::vector<uint32_t> source;    ///< uiHeight rows of uiWidth pixels
    std::vector<uint32_t> colourA;   ///< one pixel a block, in rows of uiBlocksX, all eight bits of each channel
    std::vector<uint32_t> colourB;   ///< likewise
    std::vector<uint32_t> upscaledA; ///< colourA at the size of the source
    std::vector<uint32_t> upscaledB; ///< colourB at the size of the source

    [[nodiscard]] BlockRegion getWholeRegion() const { return {0, uiBlocksX, 0, uiBlocksY}; }
    [[nodiscard]] size_t getBlockCount() const { return size_t{uiBlocksX} * uiBlocksY; }
    [[nodiscard]] size_t getBlockIndex(uint32_t uiX, uint32_t uiY) const { return size_t{uiY} * uiBlocksX + uiX; }
    /// Where the first pixel of a block lies in the pictures of full size; the block's next row is uiWidth further on.
    [[nodiscard]] size_t getFirstPixel(uint32_t uiBlockX, uint32_t uiBlockY) const
    {
        return size_t{uiBlockY} * ui8BlockHeight * uiWidth + size_t{uiBlockX} * ui8BlockWidth;
    }
};

/// A copy of a picture, with colours and upscaled pictures of 0.
///
/// @param pSource  uiHeight rows of uiWidth pixels, four bytes each, red first, without padding or need of alignment
/// @param uiWidth, uiHeight  multiples of the block's, which has ui8BlockWidth (8 at 2bpp, 4 at 4bpp) by 4 pixels
/// Throws std::bad_alloc where memory is refused.
[[nodiscard]] CompressorImages makeCompressorImages(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight, uint8_t ui8BlockWidth);

/// Channel 0 (red) to 3 (alpha) of a pixel.
[[nodiscard]] constexpr int32_t getChannel(uint32_t uiPixel, uint32_t uiChannel)
{
    return static_cast<int32_t>(uiPixel >> 8 * uiChannel & 0xFF);
}

/// Sum of the squared differences of all four channels.
[[nodiscard]] constexpr int32_t getSquaredDistance(uint32_t uiPixel, uint32_t uiOther)
{
    int32_t iSum = 0;
    for (uint32_t c = 0; c < 4; ++c)
    {
        const int32_t iDifference = getChannel(uiPixel, c) - getChannel(uiOther, c);
        iSum += iDifference * iDifference;
    }
    return iSum;
}

/// The channel of a pixel that has a part of uiWeight eighths of B and the rest of A. Truncates towards 0.
/// Weights above 8 go beyond B: the value may lie outside 0 to 255 then.
[[nodiscard]] constexpr int32_t blendChannel(int32_t iA, int32_t iB, int32_t iWeight)
{
    return ((iB - iA) * iWeight + 8 * iA) / 8;
}

/// Sum over the channels of the squared differences of a source pixel to the blend of A and B.
[[nodiscard]] constexpr int32_t getBlendError(uint32_t uiSource, uint32_t uiA, uint32_t uiB, int32_t iWeight)
{
    int32_t iSum = 0;
    for (uint32_t c = 0; c < 4; ++c)
    {
        const int32_t iDifference = blendChannel(getChannel(uiA, c), getChannel(uiB, c), iWeight) - getChannel(uiSource, c);
        iSum += iDifference * iDifference;
    }
    return iSum;
}

} // namespace moxtexture
