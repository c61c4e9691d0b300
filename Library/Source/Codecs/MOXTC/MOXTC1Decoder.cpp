#include "Codecs/MOXTC/MOXTC1Decoder.h"

#include "Codecs/MOXTC/StripDecoder.h"

namespace moxtexture
{

uint32_t DecompressMOXTC(const uint8_t* pSource, size_t uiSourceSize, bool b2bpp, uint32_t uiWidth, uint32_t uiHeight, uint8_t* pTarget)
{
    if (uiWidth == 0 || uiHeight == 0)
        return 0;

    decodeStrips({pSource, uiSourceSize, getMOXTC1BlockCounts(uiWidth, uiHeight, b2bpp), EBlockOrder::eMorton, b2bpp, false},
                 {pTarget, uiWidth, uiHeight});
    return uiWidth * uiHeight >> (b2bpp ? 2 : 1);
}

} // namespace moxtexture
