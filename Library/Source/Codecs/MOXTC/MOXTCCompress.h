#pragma once

#include <cstdint>

namespace moxtexture
{

/// Encodes one surface of 32-bit RGBA pixels into MOXTC blocks.
///
/// | uiQuality | MOXTC1 and MOXTCII 2bpp          | MOXTCII 4bpp                     |
/// |-----------|----------------------------------|----------------------------------|
/// | 0         | fast compressor, 0 passes        | one-pass block coder             |
/// | 1         | fast compressor, 8 passes        | fast compressor, 8 passes        |
/// | 2 or more | none yet: 0 bytes                | none yet: 0 bytes                |
///
/// The bytes of quality 1 depend on getProcessorCount(), which decides the tiles of the passes, and on nothing else of the machine.
///
/// @param pSource      uiHeight rows of uiWidth pixels, four bytes each, red first, without padding
/// @param pTarget      room for the bytes that are returned; blocks in Morton order for MOXTC1, in rows for MOXTCII
/// @param uiWidth, uiHeight  in pixels. MOXTCII pads to whole blocks (padImage); MOXTC1 takes whole blocks only, and of these only grids
///                     whose block order stays within the grid (isOrderComplete)
/// @param bHasAlpha    is not looked at: a caller that wants none sets every alpha to 255
/// @param b2bpp, bII   blocks of 8 by 4 pixels instead of 4 by 4; MOXTCII instead of MOXTC1
/// @return bytes written: half a byte a padded pixel, at 2bpp a quarter; the same, with nothing done, if a pointer is null;
///         0 for a size that is 0, that the format does not take or whose bytes 32 bits do not count, and for a quality without an engine
///
/// Throws std::bad_alloc where memory is refused.
[[nodiscard]] uint32_t MOXTCCompress(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, bool bHasAlpha,
                                     bool b2bpp, bool bII, uint32_t uiQuality);

} // namespace moxtexture
