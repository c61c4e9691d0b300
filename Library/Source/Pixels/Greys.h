#pragma once

#include <limits>

namespace moxtexture
{

// What luminance and intensity are made of where a source has only colours. A colour that it has not is 0.0 here.
//
// Which of two operands gives its bits to a result that is not a number is the compiler's choice; to be the same everywhere such a
// result is always the quiet one.

[[nodiscard]] inline float withQuietNaN(float fValue)
{
    return fValue == fValue ? fValue : std::numeric_limits<float>::quiet_NaN();
}

/// The weights of missing channels are not spread over the others.
[[nodiscard]] inline float getLuminanceOf(float fRed, float fGreen, float fBlue)
{
    return withQuietNaN(0.2126f * fRed + 0.7152f * fGreen + 0.0722f * fBlue);
}

/// @param fCount  how many of the three the source has; 0.0 gives 0.0
[[nodiscard]] inline float getMeanOf(float fRed, float fGreen, float fBlue, float fCount)
{
    return fCount == 0.0f ? 0.0f : withQuietNaN((fRed + fGreen + fBlue) / fCount);
}

} // namespace moxtexture
