#pragma once

#include <array>
#include <cstdint>

#include "Codecs/MOXTC/Block/BlockColours.h"

namespace moxtexture
{

/// The four blocks whose centres are the corners of a cell: P upper left, Q upper right, R lower left, S lower right.
struct CellBlocks
{
    BlockWord P;
    BlockWord Q;
    BlockWord R;
    BlockWord S;
};

/// Colour A, or colour B, of the four blocks.
struct CellColours
{
    BlockColour P;
    BlockColour Q;
    BlockColour R;
    BlockColour S;
};

[[nodiscard]] CellColours unpackCellColoursA(const CellBlocks& blocks, bool bII);
[[nodiscard]] CellColours unpackCellColoursB(const CellBlocks& blocks, bool bII);

/// The colour at pixel (x, y) of the cell by bilinear interpolation, as 8-bit red, green, blue, alpha.
///
/// @param x, y  from P's centre pixel: below the block's width and height
[[nodiscard]] std::array<uint8_t, 4> interpolateCell(const CellColours& colours, uint32_t x, uint32_t y, bool b2bpp);

/// a at weight 0 to b at weight 8, cut off below the whole numbers.
[[nodiscard]] std::array<uint8_t, 4> blendColours(const std::array<uint8_t, 4>& a, const std::array<uint8_t, 4>& b, uint32_t uiWeight);

} // namespace moxtexture
