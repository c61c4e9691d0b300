#pragma once

#include <cstdint>
#include <vector>

#include "Codecs/MOXTC/CompressorState.h"

namespace moxtexture
{

/// A picture that becomes MOXTCII blocks by repeated refinement: Initialise, then the passes (a thread driver calls their
/// steps tile by tile, Compress does all of them at once), then WriteOutput.
///
/// Regions are blocks uiX0 to uiX1 - 1 of rows uiY0 to uiY1 - 1; threads may take a step through regions that do not overlap.
class MOXTCIICompressor : public CCompressorState
{
public:
    virtual ~MOXTCIICompressor() = default;

    /// Finds starting colours, upscales them and chooses codes for every block.
    /// @param bOverlap  lets the starting colours of a 4bpp block come from around it too; those of a 2bpp block never do
    virtual void Initialise(bool bOverlap) = 0;
    /// Runs all passes over the whole grid.
    virtual void Compress() = 0;
    /// Packs all blocks, eight bytes each, in rows.
    virtual void WriteOutput(uint8_t* pTarget) = 0;
    /// Recomputes the upscaled pictures from the colours of the blocks.
    virtual void UpscaleColours() = 0;
    /// Chooses codes and modes of the blocks of a region.
    virtual void OptimiseModulation(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) = 0;
    /// Moves the colours of the blocks of a region.
    virtual void OptimiseColours(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) = 0;

    /// One byte a block, 1 for hard. Initialise sets them, the passes leave them.
    [[nodiscard]] const std::vector<uint8_t>& getHardFlags() const { return m_HardFlags; }

protected:
    MOXTCIICompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight, uint8_t ui8BlockWidth)
        : CCompressorState(pSource, uiWidth, uiHeight, ui8BlockWidth), m_HardFlags(m_Images.getBlockCount())
    {
    }

    std::vector<uint8_t> m_HardFlags;
};

} // namespace moxtexture
