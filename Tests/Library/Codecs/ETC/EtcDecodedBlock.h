#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace etctest
{

/// The low word that gives pixel (x, y) the index aaIndices[y][x].
constexpr uint32_t packIndices(const std::array<std::array<uint32_t, 4>, 4>& aaIndices)
{
    uint32_t ui32Low = 0;
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
            ui32Low |= ((aaIndices[y][x] >> 1) << 16 | (aaIndices[y][x] & 1)) << (x * 4 + y);
    return ui32Low;
}

/// Indices 0, 1, 2, 3 in every row.
constexpr uint32_t k_ui32EveryIndex = packIndices({{{0, 1, 2, 3}, {0, 1, 2, 3}, {0, 1, 2, 3}, {0, 1, 2, 3}}});

inline std::array<int, 3> pixelAt(const moxtexture::EtcPixels& pixels, size_t uiX, size_t uiY)
{
    const size_t i = uiY * 4 + uiX;
    return {pixels.aui8Red[i], pixels.aui8Green[i], pixels.aui8Blue[i]};
}

inline std::vector<std::array<int, 3>> rowOf(const moxtexture::EtcPixels& pixels, size_t uiY)
{
    return {pixelAt(pixels, 0, uiY), pixelAt(pixels, 1, uiY), pixelAt(pixels, 2, uiY), pixelAt(pixels, 3, uiY)};
}

using Row = std::vector<std::array<int, 3>>;

} // namespace etctest
