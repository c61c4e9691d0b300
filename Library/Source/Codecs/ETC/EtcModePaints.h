#pragma once

#include <algorithm>
#include <array>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcTables.h"

namespace moxtexture
{

/// The weights of the squares of red, green and blue in an error.
constexpr std::array<uint32_t, 3> k_aui32EtcPlainWeights = {1, 1, 1};
constexpr std::array<uint32_t, 3> k_aui32EtcPerceptualWeights = {299, 587, 114};

/// A colour of 4-bit levels as a 12-bit number, red on top: as it is stored, and as the order of H mode's colours is told.
constexpr uint32_t colourNumber444(const EtcColour& levels)
{
    return uint32_t{levels[0]} << 8 | uint32_t{levels[1]} << 4 | uint32_t{levels[2]};
}

/// The other way round; bits above the lowest twelve don't count.
constexpr EtcColour colourOfNumber444(uint32_t uiNumber)
{
    return {static_cast<uint8_t>(uiNumber >> 8 & 15), static_cast<uint8_t>(uiNumber >> 4 & 15), static_cast<uint8_t>(uiNumber & 15)};
}

constexpr EtcColour expandLevels444(const EtcColour& levels)
{
    return {static_cast<uint8_t>(levels[0] * 17), static_cast<uint8_t>(levels[1] * 17), static_cast<uint8_t>(levels[2] * 17)};
}

/// A colour of bytes with i32Distance added to each channel, clamped to 0 to 255.
constexpr EtcColour offsetColour(const EtcColour& colour, int32_t i32Distance)
{
    return {static_cast<uint8_t>(std::clamp(colour[0] + i32Distance, 0, 255)),
            static_cast<uint8_t>(std::clamp(colour[1] + i32Distance, 0, 255)),
            static_cast<uint8_t>(std::clamp(colour[2] + i32Distance, 0, 255))};
}

/// The four colours that the pixels of a T or H block choose from, as bytes, by paint number, which is the index that is stored.
using EtcModePaints = std::array<EtcColour, 4>;

/// @param levels      4-bit levels in the order in which they are stored
/// @param uiDistance  a row of k_aui8EtcDistances
constexpr EtcModePaints paintsT(const EtcColourPair& levels, uint32_t uiDistance)
{
    const int32_t i32Distance = k_aui8EtcDistances[uiDistance];
    const EtcColour second = expandLevels444(levels[1]);
    return {expandLevels444(levels[0]), offsetColour(second, i32Distance), second, offsetColour(second, -i32Distance)};
}

constexpr EtcModePaints paintsH(const EtcColourPair& levels, uint32_t uiDistance)
{
    const int32_t i32Distance = k_aui8EtcDistances[uiDistance];
    const EtcColour first = expandLevels444(levels[0]);
    const EtcColour second = expandLevels444(levels[1]);
    return {offsetColour(first, i32Distance), offsetColour(first, -i32Distance), offsetColour(second, i32Distance),
            offsetColour(second, -i32Distance)};
}

constexpr uint32_t paintError(const EtcPixels& pixels, size_t uiPixel, const EtcColour& paint, const std::array<uint32_t, 3>& aui32Weights)
{
    const int32_t i32Red = pixels.aui8Red[uiPixel] - paint[0];
    const int32_t i32Green = pixels.aui8Green[uiPixel] - paint[1];
    const int32_t i32Blue = pixels.aui8Blue[uiPixel] - paint[2];
    return aui32Weights[0] * static_cast<uint32_t>(i32Red * i32Red) + aui32Weights[1] * static_cast<uint32_t>(i32Green * i32Green) +
           aui32Weights[2] * static_cast<uint32_t>(i32Blue * i32Blue);
}

} // namespace moxtexture
