#pragma once

#include "Codecs/MOXTC/Block/BlockStrip.h"

namespace moxtexture
{

/// A row of cells, each from the centre of a block to the centres of its neighbours: four rows of pixels.
struct CellRow
{
    const BlockStrip* pUpper = nullptr; ///< uiCellCount + 1 blocks
    const BlockStrip* pLower = nullptr; ///< those below
    size_t uiCellCount = 0;             ///< k_uiStripCells at most

    /// By row, the weights of the pixels from the first cell's left edge on, as in BlockStrip, with k_uiMaxBlockWidth bytes behind them
    /// that may be read.
    std::array<const uint8_t*, k_uiBlockHeight> apWeights = {};

    /// By row, where the pixels go: red, green, blue, alpha of 8 bits, uiCellCount times the block's width of them.
    std::array<uint8_t*, k_uiBlockHeight> apPixels = {};
};

/// Interpolates both colours over the cells and blends them by the weights.
///
/// A weight that punches through leaves the colour and clears the alpha (MOXTC1) or clears the pixel (MOXTCII). A MOXTCII cell whose
/// block at the upper left is hard has its colours from the block that holds the pixel; colours of its palette are not shown here,
/// see CHardCellPainter.
void blendCells(const CellRow& row, bool b2bpp, bool bII);

/// The same, plainly.
void blendCellsReference(const CellRow& row, bool b2bpp, bool bII);

} // namespace moxtexture
