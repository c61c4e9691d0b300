#pragma once

#include <vector>

#include "Codecs/MOXTC/BlockRecords.h"
#include "Codecs/MOXTC/CompressorImages.h"

namespace moxtexture
{

/// Chooses the codes and the mode of the blocks of a region for the upscaled colours as they are.
///
/// Each code is the one of least squared error, the lowest of equals. The mode is that of the least error times its factor, the lowest
/// of equals. Records are one a block, in rows of images.uiBlocksX; those outside the region stay, so regions that do not overlap may be
/// done by several threads.
/// The fast forms give the same records as the references.
void optimiseModulationReference(const CompressorImages& images, std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region);
void optimiseModulationReference(const CompressorImages& images, std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region);
void optimiseModulation(const CompressorImages& images, std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region);
void optimiseModulation(const CompressorImages& images, std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region);

} // namespace moxtexture
