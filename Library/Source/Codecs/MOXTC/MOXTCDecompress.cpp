#include "Codecs/MOXTC/MOXTCDecompress.h"

#include "Codecs/MOXTC/Block/BlockGrid.h"
#include "Codecs/MOXTC/MOXTC1Decoder.h"
#include "Codecs/MOXTC/MOXTCIIDecoder.h"

namespace moxtexture
{

uint64_t getMOXTCDataSize(uint32_t uiWidth, uint32_t uiHeight, bool b2bpp, bool bII)
{
    const BlockCounts counts = getMOXTCIIBlockCounts(uiWidth, uiHeight, b2bpp);
    const auto raiseToEven = [](uint64_t ui64Count) { return ui64Count + ui64Count % 2; };
    const uint64_t ui64Blocks = bII ? uint64_t{counts.uiX} * counts.uiY : raiseToEven(counts.uiX) * raiseToEven(counts.uiY);
    return ui64Blocks * k_uiBlockBytes;
}

uint32_t MOXTCDecompress(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, bool b2bpp, bool bII)
{
    const uint32_t uiSize = uiWidth * uiHeight * 4;
    if (pSource == nullptr || pTarget == nullptr)
        return uiSize;

    const auto uiSourceSize = static_cast<size_t>(getMOXTCDataSize(uiWidth, uiHeight, b2bpp, bII));
    if (bII)
        return DecompressMOXTCII(pSource, uiSourceSize, pTarget, uiWidth, uiHeight, true, b2bpp) ? uiSize : 0;
    (void)DecompressMOXTC(pSource, uiSourceSize, b2bpp, uiWidth, uiHeight, pTarget);
    return uiSize;
}

} // namespace moxtexture
