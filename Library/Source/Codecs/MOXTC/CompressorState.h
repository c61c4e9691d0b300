#pragma once

#include <cstdint>

#include "Codecs/MOXTC/CompressorImages.h"

namespace moxtexture
{

/// What the fast compressors of both generations have in common: the pictures, and how many passes there shall be.
class CCompressorState
{
public:
    CCompressorState(const CCompressorState&) = delete;
    CCompressorState& operator=(const CCompressorState&) = delete;

    [[nodiscard]] const CompressorImages& getImages() const { return m_Images; }
    [[nodiscard]] uint32_t getBlocksX() const { return m_Images.uiBlocksX; }
    [[nodiscard]] uint32_t getBlocksY() const { return m_Images.uiBlocksY; }

    /// The number of passes; 0 at first.
    [[nodiscard]] uint32_t getIterations() const { return m_uiIterations; }
    void setIterations(uint32_t uiIterations) { m_uiIterations = uiIterations; }

    /// Codes are chosen anew in every pass whose number is a multiple of this, in none for 0; 1 at first.
    [[nodiscard]] uint32_t getModulationInterval() const { return m_uiModulationInterval; }
    void setModulationInterval(uint32_t uiInterval) { m_uiModulationInterval = uiInterval; }

protected:
    /// The parameters are those of makeCompressorImages.
    CCompressorState(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight, uint8_t ui8BlockWidth)
        : m_Images(makeCompressorImages(pSource, uiWidth, uiHeight, ui8BlockWidth))
    {
    }
    ~CCompressorState() = default;

    CompressorImages m_Images;
    uint32_t m_uiIterations = 0;
    uint32_t m_uiModulationInterval = 1;
};

} // namespace moxtexture
