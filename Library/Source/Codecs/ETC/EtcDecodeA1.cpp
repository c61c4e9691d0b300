#include "Codecs/ETC/EtcDecodeA1.h"

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcModePaints.h"
#include "Codecs/ETC/EtcPlanePatch.h"
#include "Codecs/ETC/EtcTables.h"

namespace moxtexture
{

namespace
{

/// The index of transparent pixels in blocks that may have them.
constexpr uint32_t k_uiTransparentIndex = 2;

/// The table position without a modifier in such blocks: that of index 0.
constexpr uint32_t k_uiPlainPosition = 2;

/// Makes the pixels with the index of transparent ones black without alpha, and all others opaque.
void cutOutTransparent(uint32_t ui32Indices, EtcPixels& pixels, EtcAlphas& alphas)
{
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
        {
            const bool bTransparent = getEtcIndex(ui32Indices, x, y) == k_uiTransparentIndex;
            if (bTransparent)
                setEtcPixel(pixels, x, y, {0, 0, 0});
            alphas.aui8[etcPixelIndex(x, y)] = bTransparent ? 0 : 255;
        }
}

} // namespace

EtcPixels decodeEtcPixelsA1Differential(const EtcBlockWords& words, EtcAlphas& alphas)
{
    const bool bOpaque = (words.ui32High & k_ui32EtcDiffBit) != 0;
    const EtcHalfColours halves = readEtcHalvesDifferential(words.ui32High);
    EtcPixels pixels;
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
        {
            const uint32_t uiHalf = halves.getHalf(x, y);
            const uint32_t uiPosition = k_aui8EtcPositionOfIndex[getEtcIndex(words.ui32Low, x, y)];
            const bool bPlain = !bOpaque && uiPosition == k_uiPlainPosition;
            const int32_t iModifier = bPlain ? 0 : k_aaiEtcModifiers[halves.auiTables[uiHalf]][uiPosition];
            setEtcPixel(pixels, x, y, offsetColour(halves.aBases[uiHalf], iModifier));
        }
    alphas.aui8.fill(255);
    if (!bOpaque)
        cutOutTransparent(words.ui32Low, pixels, alphas);
    return pixels;
}

EtcPixels decodeEtcPixelsA1T(const EtcBlockWords& compact, EtcAlphas& alphas)
{
    EtcPixels pixels = decodeEtcPixelsT(compact);
    cutOutTransparent(compact.ui32Low, pixels, alphas);
    return pixels;
}

EtcPixels decodeEtcPixelsA1H(const EtcBlockWords& compact, EtcAlphas& alphas)
{
    EtcPixels pixels = decodeEtcPixelsH(compact);
    cutOutTransparent(compact.ui32Low, pixels, alphas);
    return pixels;
}

EtcPixels decodeEtcPixelsA1(const EtcBlockWords& words, EtcAlphas& alphas)
{
    const bool bOpaque = (words.ui32High & k_ui32EtcDiffBit) != 0;
    alphas.aui8.fill(255);
    switch (getEtcDifferentialMode(words.ui32High))
    {
    case eEtcT:
        return bOpaque ? decodeEtcPixelsT(compactT(words)) : decodeEtcPixelsA1T(compactT(words), alphas);
    case eEtcH:
        return bOpaque ? decodeEtcPixelsH(compactH(words)) : decodeEtcPixelsA1H(compactH(words), alphas);
    case eEtcPlanar:
        return decodeEtcPixelsPlanar(compactPlanar(words));
    case eEtcDifferential:
        break;
    }
    return decodeEtcPixelsA1Differential(words, alphas);
}

void etcDecodeBlockA1(const EtcBlockWords& words, uint8_t* pui8Image, uint8_t* pui8Alpha, uint32_t uiStride, uint32_t uiX, uint32_t uiY)
{
    EtcAlphas alphas;
    writeEtcPixels(decodeEtcPixelsA1(words, alphas), pui8Image, uiStride, uiX, uiY);
    writeEtcPlanePatch(alphas.aui8, pui8Alpha, uiStride, uiX, uiY);
}

} // namespace moxtexture
