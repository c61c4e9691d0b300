#pragma once

#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// Bytes of a surface's blocks as a texture holds them: MOXTC1 in multiples of its smallest surface, 16 x 8 (2bpp) or 8 x 8 (4bpp)
/// pixels, MOXTCII padded to whole blocks.
[[nodiscard]] uint64_t getMOXTCDataSize(uint32_t uiWidth, uint32_t uiHeight, bool b2bpp, bool bII);

/// Decodes one surface of MOXTC1 (bII false) or MOXTCII (bII true) into 32-bit pixels.
///
/// @param pSource  getMOXTCDataSize bytes of 64-bit blocks, in Morton order for MOXTC1 and in rows for MOXTCII; no alignment needed
/// @param pTarget  uiHeight rows of uiWidth pixels, red, green, blue, alpha, without padding
/// @return bytes written: width * height * 4, modulo 2^32; the same, with nothing done, if a pointer is null; 0 on failure
///
/// MOXTC1 of a size outside whole blocks leaves the pixels past the last one as they are. In a grid that the Morton order does not
/// fill (see isOrderComplete) some blocks lie past its count, and those past the end of the data have pixels of 0.
/// Keeps no state; any thread may call it.
[[nodiscard]] uint32_t MOXTCDecompress(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, bool b2bpp, bool bII);

} // namespace moxtexture
