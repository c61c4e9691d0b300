#pragma once

#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// Decodes a MOXTCII surface as DecompressMOXTCIIReference does, and gives the same.
[[nodiscard]] bool DecompressMOXTCII(const uint8_t* pSource, size_t uiSourceSize, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                     bool bRasterOrder, bool b2bpp);

} // namespace moxtexture
