#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// A surface to be encoded: uiHeight rows of uiWidth pixels without padding, uiPixelBytes each.
struct EtcSurface
{
    const uint8_t* pui8Pixels;
    uint32_t uiWidth;
    uint32_t uiHeight;
    size_t uiPixelBytes;
};

/// The byte of the surface at which each pixel of a block begins, in row order.
using EtcBlockOffsets = std::array<size_t, 16>;

/// The places of the pixels of the block at (uiX, uiY).
///
/// A block that reaches beyond the surface repeats pixels, as getPaddingSource says.
[[nodiscard]] EtcBlockOffsets getEtcBlockOffsets(const EtcSurface& surface, uint32_t uiX, uint32_t uiY);

/// The bytes 0, 1 and 2 of the block's pixels: R, G, B.
[[nodiscard]] EtcPixels gatherEtcPixels(const EtcSurface& surface, const EtcBlockOffsets& offsets);

/// The byte 3 of the block's pixels.
[[nodiscard]] EtcAlphas gatherEtcAlphas(const EtcSurface& surface, const EtcBlockOffsets& offsets);

/// The 16-bit word uiChannel of the block's pixels, in row order.
void gatherEacPixels(const EtcSurface& surface, const EtcBlockOffsets& offsets, size_t uiChannel, uint16_t (&pixels)[16]);

} // namespace moxtexture
