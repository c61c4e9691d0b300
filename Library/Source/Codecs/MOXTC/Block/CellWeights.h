#pragma once

#include "Codecs/MOXTC/Block/BlockStrip.h"

namespace moxtexture
{

/// Weights of a row of 2bpp cells: by row and column of pixels, from the centre of the first block at the upper left.
struct CellWeights
{
    alignas(64) std::array<std::array<uint8_t, k_uiStripRowBytes>, k_uiBlockHeight> aaui8 = {};
};

/// Rebuilds the weights that the blocks of a row of 2bpp cells do not store from the neighbours that they do.
///
/// @param upper, lower  the blocks above and below, uiCellCount + 1 of each
void interpolateWeights(const BlockStrip& upper, const BlockStrip& lower, size_t uiCellCount, CellWeights& weights);

/// The same, plainly.
void interpolateWeightsReference(const BlockStrip& upper, const BlockStrip& lower, size_t uiCellCount, CellWeights& weights);

/// The rows of weights that a row of cells is made from, and those above and below each.
struct CellWeightRows
{
    std::array<const uint8_t*, k_uiBlockHeight + 2> ap; ///< the first is above the cells, the last below

    CellWeightRows(const BlockStrip& upper, const BlockStrip& lower)
        : ap{upper.aaui8Weights[1].data(), upper.aaui8Weights[2].data(), upper.aaui8Weights[3].data(),
             lower.aaui8Weights[0].data(), lower.aaui8Weights[1].data(), lower.aaui8Weights[2].data()}
    {
    }
};

} // namespace moxtexture
