#pragma once

#include <array>
#include <cstdint>

#include "Codecs/MOXTC/Block/CellColours.h"

namespace moxtexture
{

/// The colours that pixels of a hard 4bpp cell show unblended, 8-bit red, green, blue, alpha: A and B of P, of S, of Q, of R, the
/// blocks at the upper left, lower right, upper right and lower left of the cell.
using BlockPalette = std::array<std::array<uint8_t, 4>, 8>;

[[nodiscard]] BlockPalette makeBlockPalette(const CellBlocks& blocks);

/// Which colour of the palette pixel (x, y) of a hard cell shows for its code.
///
/// @param x, y     0 to 3 from P's centre pixel, which has no place in the table: not both 0
/// @param uiCode   0 to 3
/// @return 0 to 7
[[nodiscard]] uint32_t getPaletteIndex(uint32_t x, uint32_t y, uint32_t uiCode);

} // namespace moxtexture
