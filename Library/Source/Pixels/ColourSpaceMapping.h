#pragma once

#include <cstdint>

#include "Formats/ChannelTypes.h"

namespace moxtexture
{

// The curve between linear and sRGB, with this library's own constants in 32-bit floats (the published curve has 0.0031308 and
// 0.055): stored textures depend on them.
[[nodiscard]] float linearToSRGB(float fLinear);
[[nodiscard]] float sRGBToLinear(float fEncoded);

enum class EColourMapping : uint8_t
{
    eNone,
    eLinearToSRGB,
    eSRGBToLinear,
};

/// eNone for equal spaces and for numbers that name no space.
[[nodiscard]] EColourMapping getColourMapping(EMOXTColourSpace eNewSpace, EMOXTColourSpace eOldSpace);

[[nodiscard]] float mapColour(EColourMapping eMapping, float fValue);

/// True for red, green, blue, luminance and intensity: what a colour space acts on.
[[nodiscard]] constexpr bool isColourChannel(EChannelName eName)
{
    return eName != eChannelNone && eName != eChannelAlpha && eName < eChannelUnspecified;
}

} // namespace moxtexture
