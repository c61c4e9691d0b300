#include "Codecs/MOXTC/MOXTC2bppCompressor.h"

namespace moxtexture
{

MOXTC2bppCompressor::MOXTC2bppCompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight)
    : CCompressorSteps(pSource, uiWidth, uiHeight)
{
}

void MOXTC2bppCompressor::Initialise(bool)
{
    // On purpose: without the overlap, whatever the caller says.
    findStartingColours(m_Images, false);
    upscaleAndOptimiseModulation();
}

void MOXTC2bppCompressor::WriteOutput(uint8_t* pTarget, bool bMorton)
{
    writeAllBlocks(pTarget, nullptr, bMorton);
}

} // namespace moxtexture
