#pragma once

#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// Decodes a MOXTC1 surface, plainly: cell after cell, each between the centres of four blocks, wrapping at the edges.
///
/// Blocks are 8 x 4 pixels at 2bpp and 4 x 4 at 4bpp, in Morton order. A surface narrower than 16 (2bpp) or 8 (4bpp) pixels, or lower
/// than 8, is the top left of one of that size, whose blocks the data hold. Pixels past the last whole block of a larger surface
/// stay as they are. Blocks past the end of the data count as all zero, and their own pixels become 0.
///
/// @param pSource  uiSourceSize bytes of 64-bit blocks; no alignment needed
/// @param pTarget  uiHeight rows of uiWidth pixels, red, green, blue, alpha, without padding
/// @return bytes of blocks that the surface is made of: width * height, modulo 2^32, / 4 at 2bpp, / 2 at 4bpp
///
/// Keeps no state; any thread may call it.
uint32_t DecompressMOXTCReference(const uint8_t* pSource, size_t uiSourceSize, bool b2bpp, uint32_t uiWidth, uint32_t uiHeight,
                                  uint8_t* pTarget);

} // namespace moxtexture
