#pragma once

#include "Codecs/MOXTC/BlockRecords.h"
#include "Codecs/MOXTC/CompressorSteps.h"
#include "Codecs/MOXTC/MOXTCIICompressor.h"

namespace moxtexture
{

/// The fast compressor of MOXTCII at 2 bits a pixel: blocks of 8 by 4 pixels.
class MOXTCII2bppCompressor : public CCompressorSteps<MOXTCIICompressor, BlockRecord2bpp>
{
public:
    /// Copies the picture: uiHeight rows of uiWidth pixels, four bytes each, red first, without padding.
    /// @param uiWidth, uiHeight  multiples of 8 and of 4
    /// Throws std::bad_alloc where memory is refused.
    MOXTCII2bppCompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight);

    void Initialise(bool bOverlap) override;
    void WriteOutput(uint8_t* pTarget) override;
};

} // namespace moxtexture
