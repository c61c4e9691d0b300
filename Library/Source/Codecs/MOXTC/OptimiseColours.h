#pragma once

#include <vector>

#include "Codecs/MOXTC/BlockRecords.h"
#include "Codecs/MOXTC/CompressorImages.h"

namespace moxtexture
{

/// A block whose mean difference (a vector of four channels) is shorter than the root of this stays as it is.
constexpr float k_fLeastSquaredShift = 128.0f;
/// Weights that vary less than this are all alike.
constexpr float k_fLeastWeightVariance = 1e-10f;
/// The farthest that one visit moves a channel of a colour.
constexpr float k_fMostColourShift = 100.0f;

/// Moves colourA and colourB of the blocks of a region by least squares over the block's own pixels, for the codes as they are.
///
/// Reads the upscaled colours and leaves them. Only the region's colours are written, so regions that do not overlap may be done by
/// several threads.
///
/// Arithmetic is in 32-bit floats. Differences are multiples of 1/8, and their products with weights multiples of 1/64, few enough
/// that every sum and mean is exact in any order; only what follows the means rounds. Results are cut off to bytes, not rounded.
/// The fast forms give the same colours as the references.
void optimiseColoursReference(CompressorImages& images, const std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region);
void optimiseColoursReference(CompressorImages& images, const std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region);
void optimiseColours(CompressorImages& images, const std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region);
void optimiseColours(CompressorImages& images, const std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region);

} // namespace moxtexture
