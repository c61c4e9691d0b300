#include "Codecs/MOXTC/MOXTCIIDecoder.h"

#include "Codecs/MOXTC/StripDecoder.h"

namespace moxtexture
{

bool DecompressMOXTCII(const uint8_t* pSource, size_t uiSourceSize, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                       bool bRasterOrder, bool b2bpp)
{
    if (uiWidth == 0)
        return false;
    if (uiHeight == 0)
        return true;

    const EBlockOrder eOrder = bRasterOrder ? EBlockOrder::eRaster : EBlockOrder::eMorton;
    decodeStrips({pSource, uiSourceSize, getMOXTCIIBlockCounts(uiWidth, uiHeight, b2bpp), eOrder, b2bpp, true},
                 {pTarget, uiWidth, uiHeight});
    return true;
}

} // namespace moxtexture
