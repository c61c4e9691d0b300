#include "Codecs/MOXTC/MOXTCII2bppCompressor.h"

#include "Codecs/MOXTC/HardFlags.h"

namespace moxtexture
{

MOXTCII2bppCompressor::MOXTCII2bppCompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight)
    : CCompressorSteps(pSource, uiWidth, uiHeight)
{
}

void MOXTCII2bppCompressor::Initialise(bool)
{
    // On purpose: without the overlap, whatever the caller says.
    findStartingColours(m_Images, false);
    m_HardFlags = findHardFlags(m_Images);
    upscaleAndOptimiseModulation();
}

void MOXTCII2bppCompressor::WriteOutput(uint8_t* pTarget)
{
    writeAllBlocks(pTarget, m_HardFlags.data(), false);
}

} // namespace moxtexture
