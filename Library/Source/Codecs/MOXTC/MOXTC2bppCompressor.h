#pragma once

#include "Codecs/MOXTC/BlockRecords.h"
#include "Codecs/MOXTC/CompressorSteps.h"
#include "Codecs/MOXTC/MOXTCCompressor.h"

namespace moxtexture
{

/// The fast compressor of MOXTC1 at 2 bits a pixel: blocks of 8 by 4 pixels.
class MOXTC2bppCompressor : public CCompressorSteps<MOXTCCompressor, BlockRecord2bpp>
{
public:
    /// Copies the picture: uiHeight rows of uiWidth pixels, four bytes each, red first, without padding.
    /// @param uiWidth, uiHeight  multiples of 8 and of 4
    /// Throws std::bad_alloc where memory is refused.
    MOXTC2bppCompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight);

    void Initialise(bool bOverlap) override;
    void WriteOutput(uint8_t* pTarget, bool bMorton) override;
};

} // namespace moxtexture
