#pragma once

#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// Decodes a MOXTCII surface of any size, plainly: pixel after pixel of the picture padded to whole blocks.
///
/// Blocks are 8 x 4 pixels at 2bpp and 4 x 4 at 4bpp. Blocks past the end of the data count as all zero, and their own pixels
/// become 0.
///
/// @param pSource  uiSourceSize bytes of 64-bit blocks; no alignment needed
/// @param pTarget  uiHeight rows of uiWidth pixels, red, green, blue, alpha, without padding
/// @param bRasterOrder  blocks in rows; else in the Morton order of MOXTC1
/// @return false, with nothing done, for a width of 0; a height of 0 is well, and writes nothing
///
/// Keeps no state; any thread may call it.
[[nodiscard]] bool DecompressMOXTCIIReference(const uint8_t* pSource, size_t uiSourceSize, uint8_t* pTarget, uint32_t uiWidth,
                                              uint32_t uiHeight, bool bRasterOrder, bool b2bpp);

} // namespace moxtexture
