#pragma once

#include <cstdint>

#include "Codecs/MOXTC/CompressorState.h"

namespace moxtexture
{

/// A picture that becomes MOXTC1 blocks by repeated refinement: Initialise, then the passes (a thread driver calls their
/// steps tile by tile, Compress does all of them at once), then WriteOutput.
///
/// Regions are blocks uiX0 to uiX1 - 1 of rows uiY0 to uiY1 - 1; threads may take a step through regions that do not overlap.
class MOXTCCompressor : public CCompressorState
{
public:
    virtual ~MOXTCCompressor() = default;

    /// Finds starting colours, upscales them and chooses codes for every block.
    /// @param bOverlap  lets the starting colours of a 4bpp block come from around it too; those of a 2bpp block never do
    virtual void Initialise(bool bOverlap) = 0;
    /// Runs all passes over the whole grid.
    virtual void Compress() = 0;
    /// Packs all blocks, eight bytes each, in Morton order (which must stay within the grid) or in rows.
    virtual void WriteOutput(uint8_t* pTarget, bool bMorton) = 0;
    /// Recomputes the upscaled pictures from the colours of the blocks.
    virtual void UpscaleColours() = 0;
    /// Chooses codes and modes of the blocks of a region.
    virtual void OptimiseModulation(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) = 0;
    /// Moves the colours of the blocks of a region.
    virtual void OptimiseColours(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) = 0;

protected:
    using CCompressorState::CCompressorState;
};

} // namespace moxtexture
