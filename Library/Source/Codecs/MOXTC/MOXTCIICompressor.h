#pragma once

#include <cstdint>
#include <vector>

#include "Codecs/MOXTC/CompressorImages.h"

namespace moxtexture
{

/// A picture that becomes MOXTCII blocks by repeated refinement: Initialise, passes (Compress, or a thread driver that calls the steps
/// tile by tile), WriteOutput.
class MOXTCIICompressor
{
public:
    MOXTCIICompressor(const MOXTCIICompressor&) = delete;
    MOXTCIICompressor& operator=(const MOXTCIICompressor&) = delete;
    virtual ~MOXTCIICompressor();

    /// Finds starting colours, upscales them and chooses codes for every block. To be called before any other step.
    /// @param bOverlap  lets the starting colours of a 4bpp block come from around it too; 2bpp blocks never look beyond themselves
    virtual void Initialise(bool bOverlap) = 0;
    /// All passes, over the whole grid at once.
    virtual void Compress() = 0;
    /// Packs all blocks, eight bytes each, in rows.
    virtual void WriteOutput(uint8_t* pTarget) = 0;
    /// Recomputes the upscaled pictures from the colours of the blocks.
    virtual void UpscaleColours() = 0;
    /// Chooses codes and modes of blocks uiX0 to uiX1 - 1 of rows uiY0 to uiY1 - 1. Threads may do regions that do not overlap at once.
    virtual void OptimiseModulation(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) = 0;
    /// Moves the colours of these blocks; threads likewise.
    virtual void OptimiseColours(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) = 0;

    [[nodiscard]] const CompressorImages& getImages() const { return m_Images; }
    [[nodiscard]] uint32_t getBlocksX() const { return m_Images.uiBlocksX; }
    [[nodiscard]] uint32_t getBlocksY() const { return m_Images.uiBlocksY; }
    /// One byte a block, 1 for hard; set by Initialise, the passes leave them.
    [[nodiscard]] const std::vector<uint8_t>& getHardFlags() const { return m_HardFlags; }
    /// The number of passes; 0 at first.
    [[nodiscard]] uint32_t getIterations() const { return m_uiIterations; }
    void setIterations(uint32_t uiIterations) { m_uiIterations = uiIterations; }
    /// Codes are chosen anew in every pass whose number is a multiple of this, in none for 0; 1 at first.
    [[nodiscard]] uint32_t getModulationInterval() const { return m_uiModulationInterval; }
    void setModulationInterval(uint32_t uiInterval) { m_uiModulationInterval = uiInterval; }

protected:
    /// Copies the picture: uiHeight rows of uiWidth pixels, four bytes each, red first. Both sizes are multiples of the block's.
    MOXTCIICompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight, uint8_t ui8BlockWidth);

    CompressorImages m_Images;
    std::vector<uint8_t> m_HardFlags;
    uint32_t m_uiIterations = 0;
    uint32_t m_uiModulationInterval = 1;
};

} // namespace moxtexture
