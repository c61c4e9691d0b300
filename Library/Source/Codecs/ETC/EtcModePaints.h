#pragma once

#include <algorithm>
#include <array>

#include "Codecs/ETC/EtcModeFit.h"

namespace moxtexture
{

/// The weights of the squares of red, green and blue in an error.
constexpr std::array<uint32_t, 3> k_aui32EtcPlainWeights = {1, 1, 1};
constexpr std::array<uint32_t, 3> k_aui32EtcPerceptualWeights = {299, 587, 114};

/// The four colours of a T or H block as bytes, by paint number.
using EtcModePaints = std::array<EtcColour, 4>;

constexpr EtcColour expandLevels444(const EtcColour& levels)
{
    return {static_cast<uint8_t>(levels[0] * 17), static_cast<uint8_t>(levels[1] * 17), static_cast<uint8_t>(levels[2] * 17)};
}

constexpr EtcColour offsetColour(const EtcColour& colour, int32_t i32Distance)
{
    return {static_cast<uint8_t>(std::clamp(colour[0] + i32Distance, 0, 255)),
            static_cast<uint8_t>(std::clamp(colour[1] + i32Distance, 0, 255)),
            static_cast<uint8_t>(std::clamp(colour[2] + i32Distance, 0, 255))};
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
