#pragma once

#include <array>
#include <cstdint>

#include "Codecs/MOXTC/Block/BlockWord.h"

namespace moxtexture
{

/// A colour as the decoders interpolate it: red, green, blue of 5 bits, alpha of 4.
struct BlockColour
{
    std::array<uint8_t, 4> aui8 = {};
};

/// Colour A of a colour word. Opaque: red 5, green 5, blue 4 bits. Translucent: alpha 3, red 4, green 4, blue 3.
[[nodiscard]] BlockColour unpackColourA(uint32_t ui32Colours, bool bII);

/// Colour B of a colour word. Opaque: 5 bits each. Translucent: alpha 3, red, green, blue 4.
///
/// On purpose: the low bit of a translucent alpha is 1 in MOXTCII and 0 in MOXTC1, so only there does it reach 15.
[[nodiscard]] BlockColour unpackColourB(uint32_t ui32Colours, bool bII);

/// The colour as 8-bit red, green, blue, alpha: high bits repeated below.
[[nodiscard]] std::array<uint8_t, 4> expandColour(const BlockColour& colour);

/// Two colours of 8 bits per channel, red first, as a colour word; what a channel cannot hold is cut off.
///
/// MOXTC1: a colour of alpha 255 is opaque, each for itself. MOXTCII: the pair is opaque if both have alpha 255.
///
/// @return the word with mode flag and hard flag clear
[[nodiscard]] uint32_t packColours(const uint8_t* pA, const uint8_t* pB, bool bII);

} // namespace moxtexture
