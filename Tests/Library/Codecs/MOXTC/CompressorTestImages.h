#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Codecs/MOXTC/BlockRecords.h"
#include "Codecs/MOXTC/CompressorImages.h"

namespace compressortest
{

using moxtexture::CompressorImages;

[[nodiscard]] constexpr uint32_t rgba(uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, uint32_t uiAlpha = 255)
{
    return uiRed | uiGreen << 8 | uiBlue << 16 | uiAlpha << 24;
}

/// All four channels alike.
[[nodiscard]] constexpr uint32_t level(uint32_t uiLevel)
{
    return rgba(uiLevel, uiLevel, uiLevel, uiLevel);
}

/// The bytes of a picture whose pixel at (x, y) is getPixel(x, y).
template <typename GetPixel>
[[nodiscard]] std::vector<uint8_t> makeBytes(uint32_t uiWidth, uint32_t uiHeight, const GetPixel& getPixel)
{
    std::vector<uint8_t> bytes;
    for (uint32_t y = 0; y < uiHeight; ++y)
        for (uint32_t x = 0; x < uiWidth; ++x)
            for (uint32_t c = 0; c < 4; ++c)
                bytes.push_back(static_cast<uint8_t>(getPixel(x, y) >> 8 * c));
    return bytes;
}

template <typename GetPixel>
[[nodiscard]] CompressorImages makeImages(uint32_t uiWidth, uint32_t uiHeight, uint8_t ui8BlockWidth, const GetPixel& getPixel)
{
    return moxtexture::makeCompressorImages(makeBytes(uiWidth, uiHeight, getPixel).data(), uiWidth, uiHeight, ui8BlockWidth);
}

/// Black and transparent everywhere.
[[nodiscard]] inline CompressorImages makeEmptyImages(uint32_t uiWidth, uint32_t uiHeight, uint8_t ui8BlockWidth)
{
    return makeImages(uiWidth, uiHeight, ui8BlockWidth, [](uint32_t, uint32_t) { return 0u; });
}

/// Gives a picture one colour everywhere.
inline void fill(std::vector<uint32_t>& picture, uint32_t uiPixel)
{
    picture.assign(picture.size(), uiPixel);
}

using Codes2bpp = std::array<uint8_t, 32>;

/// A 2bpp block with the stored codes below, and the weights that it has in modes 1 to 3. A code of 0, 1, 2, 3 has the weight 0, 3, 5, 8:
///
///     8 . 3 . 5 . 0 .
///     . 3 . 8 . 0 . 5
///     5 . 5 . 8 . 3 .
///     . 0 . 3 . 8 . 8
constexpr Codes2bpp k_aui8WorkedCodes = {3, 0, 1, 0, 2, 0, 0, 0, //
                                         0, 1, 0, 3, 0, 0, 0, 2, //
                                         2, 0, 2, 0, 3, 0, 1, 0, //
                                         0, 0, 0, 1, 0, 3, 0, 3};

/// Mode 1: the mean of two (+ 1), three (+ 1) or four (+ 2) neighbours, without its fraction.
/// Row 0: (8+3+3+1)/3, (3+5+8+1)/3, (5+0+0+1)/3, (0+5+1)/2. Row 1: (8+5+3+1)/3, (3+5+3+8+2)/4, (5+8+8+0+2)/4, (0+3+0+5+2)/4.
/// Row 2: (3+0+5+5+2)/4, (8+3+5+8+2)/4, (0+8+8+3+2)/4, (5+8+3+1)/3. Row 3: (5+0+1)/2, (5+0+3+1)/3, (8+3+8+1)/3, (3+8+8+1)/3.
constexpr Codes2bpp k_aui8WorkedWeights1 = {8, 5, 3, 5, 5, 2, 0, 3, //
                                            5, 3, 5, 8, 5, 0, 2, 5, //
                                            5, 3, 5, 6, 8, 5, 3, 5, //
                                            3, 0, 3, 3, 6, 8, 6, 8};

/// Mode 2, from above and below.
/// Row 0: 3+2, 8+2, 0+2, 5+2. Row 1: (8+5+2)/2, (3+5+2)/2, (5+8+2)/2, (0+3+2)/2.
/// Row 2: (3+0+2)/2, (8+3+2)/2, (0+8+2)/2, (5+8+2)/2. Row 3: 5+2, 5+2, 8+2, 3+2.
constexpr Codes2bpp k_aui8WorkedWeights2 = {8, 5, 3, 10, 5,  2, 0, 7, //
                                            7, 3, 5, 8,  7,  0, 2, 5, //
                                            5, 2, 5, 6,  8,  5, 3, 7, //
                                            7, 0, 7, 3,  10, 8, 5, 8};

/// Mode 3, from left and right.
/// Row 0: (8+3+1)/2, (3+5+1)/2, (5+0+1)/2, 0+1. Row 1: 3+1, (3+8+1)/2, (8+0+1)/2, (0+5+1)/2.
/// Row 2: (5+5+1)/2, (5+8+1)/2, (8+3+1)/2, 3+1. Row 3: 0+1, (0+3+1)/2, (3+8+1)/2, (8+8+1)/2.
constexpr Codes2bpp k_aui8WorkedWeights3 = {8, 6, 3, 4, 5, 3, 0, 1, //
                                            4, 3, 6, 8, 4, 0, 3, 5, //
                                            5, 5, 5, 7, 8, 6, 3, 4, //
                                            1, 0, 2, 3, 6, 8, 8, 8};

constexpr std::array<const Codes2bpp*, 4> k_apWorkedWeights = {nullptr, &k_aui8WorkedWeights1, &k_aui8WorkedWeights2,
                                                               &k_aui8WorkedWeights3};

} // namespace compressortest
