#pragma once

#include <array>
#include <cstdint>

#include "Formats/PixelWord.h"

namespace moxtexture
{

/// Bits that red, green, blue and alpha keep.
using DitherBits = std::array<uint8_t, 4>;

/// How many bits of each channel a format can show. 0 where it has no such channel or nothing is known of it.
[[nodiscard]] DitherBits getDitherBits(MOXPixelWord newFormat);

/// Cuts 8-bit RGBA to what newFormat can show and spreads the error over the neighbours to the right and below, each channel by
/// itself. Channels that keep 1 to 7 bits are changed, in place; others are left alone. Nothing crosses depth slices.
///
/// @param pData  uiWidth * uiHeight * uiDepth pixels of four bytes, without padding; null for none
void ditherSurface(uint8_t* pData, MOXPixelWord newFormat, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth);

/// The plain form, which ditherSurface() equals byte for byte.
void ditherSurfaceReference(uint8_t* pData, MOXPixelWord newFormat, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth);

} // namespace moxtexture
