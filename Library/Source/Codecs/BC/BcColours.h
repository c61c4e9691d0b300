#pragma once

#include <array>
#include <cstdint>

namespace moxtexture
{

/// A colour in float, each channel 0 to 255 (or, as an axis, a direction between such colours).
struct BcColour
{
    float fRed;
    float fGreen;
    float fBlue;
};

[[nodiscard]] constexpr BcColour operator-(const BcColour& a, const BcColour& b)
{
    return {a.fRed - b.fRed, a.fGreen - b.fGreen, a.fBlue - b.fBlue};
}

[[nodiscard]] constexpr BcColour operator*(const BcColour& a, float fFactor)
{
    return {a.fRed * fFactor, a.fGreen * fFactor, a.fBlue * fFactor};
}

/// Red, green, blue in this order: every float path adds so.
[[nodiscard]] constexpr float dotProduct(const BcColour& a, const BcColour& b)
{
    return a.fRed * b.fRed + a.fGreen * b.fGreen + a.fBlue * b.fBlue;
}

/// The four colours that an index of two bits chooses from; 32-bit RGBA, red in the lowest byte.
using BcPalette = std::array<uint32_t, 4>;

/// Which of its two forms a colour block takes.
enum class EBcColourForm
{
    eByOrder,         ///< 4 colours if colour 0 is the greater number, else 3 and black (BC1, DXT4, BC3)
    eAlwaysFourColour ///< 4 colours (DXT2, BC2)
};

/// The upper 5, 6 and 5 bits of the channels, each truncated to an integer; red in the top bits.
///
/// @param colour  each channel 0 or more and below 256
[[nodiscard]] uint32_t quantise565(const BcColour& colour);

/// An opaque 32-bit RGBA colour: the upper bits of each channel repeat in the lower ones.
[[nodiscard]] uint32_t expand565(uint32_t ui565);

/// The colours of a block with the end points uiColour0 and uiColour1 (5:6:5).
///
/// All have alpha 255, but for colour 3 of the 3-colour form: that is 0 in all four channels.
/// On purpose: the colours at the thirds are 42 and 22 sixty-fourths, not 2/3 and 1/3, and so up to 3 levels off; and
/// eByOrder holds for the colours of DXT4 and BC3 too, which other decoders always take as four.
[[nodiscard]] BcPalette makeBcPalette(uint32_t uiColour0, uint32_t uiColour1, EBcColourForm eForm);

} // namespace moxtexture
