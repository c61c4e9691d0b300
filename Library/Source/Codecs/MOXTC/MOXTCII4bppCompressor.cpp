#include "Codecs/MOXTC/MOXTCII4bppCompressor.h"

#include "Codecs/MOXTC/HardFlags.h"

namespace moxtexture
{

MOXTCII4bppCompressor::MOXTCII4bppCompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight)
    : CCompressorSteps(pSource, uiWidth, uiHeight)
{
}

void MOXTCII4bppCompressor::Initialise(bool bOverlap)
{
    findStartingColours(m_Images, bOverlap);
    m_HardFlags = findHardFlags(m_Images);
    upscaleAndOptimiseModulation();
}

void MOXTCII4bppCompressor::WriteOutput(uint8_t* pTarget)
{
    writeAllBlocks(pTarget, m_HardFlags.data(), false);
}

} // namespace moxtexture
