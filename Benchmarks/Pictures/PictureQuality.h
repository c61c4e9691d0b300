#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Formats/PixelFormats.h"

/// A picture to encode and to look at again.
struct Picture
{
    std::string strName;
    uint32_t uiWidth, uiHeight;
    std::vector<uint8_t> pixels; ///< RGBA of 8 bits, rows without padding
};

/// Seeded, the same on every machine.
Picture makeGenerated(uint32_t uiSide, uint64_t ui64Seed);

/// @return nothing if the file is no picture
std::optional<Picture> readPicture(const std::string& strPath);

/// A square out of the middle; the picture itself where it is no larger.
Picture cutMiddle(const Picture& picture, uint32_t uiSide);

/// What is left of the pixels after a format.
/// @return RGBA of 8 bits; empty if the format does not take the picture at that quality
std::vector<uint8_t> throughFormat(const Picture& picture, moxtexture::EMOXTPixelFormat eFormat, uint32_t uiQuality);

/// Weights of red, green, blue and alpha; those of channels that do not count are 0.
using ChannelWeights = std::array<double, 4>;

/// The peak signal-to-noise ratio in decibels: 10 log10(255^2 / mean of the weighted squared errors), the weights brought to a sum of 1.
/// Infinite where nothing is lost.
///
/// @param ui8LeastAlpha  pixels whose alpha in the picture is lower are left out
double getPSNR(const Picture& picture, const std::vector<uint8_t>& decoded, const ChannelWeights& weights, uint8_t ui8LeastAlpha = 0);
