#include "Codecs/MOXTC/MOXTC4bppCompressor.h"

namespace moxtexture
{

MOXTC4bppCompressor::MOXTC4bppCompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight)
    : CCompressorSteps(pSource, uiWidth, uiHeight)
{
}

void MOXTC4bppCompressor::Initialise(bool bOverlap)
{
    findStartingColours(m_Images, bOverlap);
    upscaleAndOptimiseModulation();
}

void MOXTC4bppCompressor::WriteOutput(uint8_t* pTarget, bool bMorton)
{
    writeAllBlocks(pTarget, nullptr, bMorton);
}

} // namespace moxtexture
