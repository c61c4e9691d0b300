#pragma once

#include "Codecs/MOXTC/BlockRecords.h"
#include "Codecs/MOXTC/CompressorSteps.h"
#include "Codecs/MOXTC/MOXTCIICompressor.h"

namespace moxtexture
{

/// The fast compressor of MOXTCII at 4 bits a pixel: blocks of 4 by 4 pixels.
class MOXTCII4bppCompressor : public CCompressorSteps<MOXTCIICompressor, BlockRecord4bpp>
{
public:
    /// Copies the picture: uiHeight rows of uiWidth pixels, four bytes each, red first, without padding.
    /// @param uiWidth, uiHeight  multiples of 4 and of 4
    /// Throws std::bad_alloc where memory is refused.
    MOXTCII4bppCompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight);

    void Initialise(bool bOverlap) override;
    void WriteOutput(uint8_t* pTarget) override;
};

} // namespace moxtexture
