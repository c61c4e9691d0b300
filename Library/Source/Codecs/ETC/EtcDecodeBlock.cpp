#include "Codecs/ETC/EtcDecodeBlock.h"

#include <algorithm>

#include "Codecs/ETC/EtcModePaints.h"
#include "Codecs/ETC/EtcTables.h"

namespace moxtexture
{

namespace
{

uint8_t clampToByte(int32_t iValue)
{
    return static_cast<uint8_t>(std::clamp(iValue, 0, 255));
}

EtcColour expandColour555(const EtcColour& levels)
{
    return {static_cast<uint8_t>(expandEtc5(levels[0])), static_cast<uint8_t>(expandEtc5(levels[1])),
            static_cast<uint8_t>(expandEtc5(levels[2]))};
}

EtcHalfColours makeHalves(uint32_t ui32High, const EtcColour& base0, const EtcColour& base1)
{
    return {{base0, base1}, {ui32High >> 5 & 7, ui32High >> 2 & 7}, (ui32High & k_ui32EtcFlipBit) != 0};
}

EtcHalfColours readHalvesIndividual(uint32_t ui32High)
{
    const auto upperNibbles = (ui32High >> 20 & 0xF00) | (ui32High >> 16 & 0xF0) | (ui32High >> 12 & 0xF);
    const auto lowerNibbles = (ui32High >> 16 & 0xF00) | (ui32High >> 12 & 0xF0) | (ui32High >> 8 & 0xF);
    return makeHalves(ui32High, expandLevels444(colourOfNumber444(upperNibbles)), expandLevels444(colourOfNumber444(lowerNibbles)));
}

/// Every pixel of a block as the paint that its index says.
EtcPixels paintPixels(const EtcModePaints& paints, uint32_t ui32Indices)
{
    EtcPixels pixels;
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
            setEtcPixel(pixels, x, y, paints[getEtcIndex(ui32Indices, x, y)]);
    return pixels;
}

/// A channel of planar mode from its bytes at the corner (0, 0), at (4, 0) and at (0, 4).
void fillPlane(std::array<uint8_t, 16>& aui8, uint32_t uiOrigin, uint32_t uiHorizontal, uint32_t uiVertical)
{
    const auto iOrigin = static_cast<int32_t>(uiOrigin);
    const int32_t iStepX = static_cast<int32_t>(uiHorizontal) - iOrigin;
    const int32_t iStepY = static_cast<int32_t>(uiVertical) - iOrigin;
    size_t uiPixel = 0;
    for (int32_t y = 0; y < 4; ++y)
        for (int32_t x = 0; x < 4; ++x)
            aui8[uiPixel++] = clampToByte((4 * iOrigin + 2 + x * iStepX + y * iStepY) >> 2);
}

} // namespace

EEtcDifferentialMode getEtcDifferentialMode(uint32_t ui32High)
{
    const EtcColour sums = readEtcDifferentialLevels(ui32High).sums;
    if (sums[0] > 31)
        return eEtcT;
    if (sums[1] > 31)
        return eEtcH;
    return sums[2] > 31 ? eEtcPlanar : eEtcDifferential;
}

EtcHalfColours readEtcHalvesDifferential(uint32_t ui32High)
{
    const EtcDifferentialLevels levels = readEtcDifferentialLevels(ui32High);
    return makeHalves(ui32High, expandColour555(levels.bases), expandColour555(levels.sums));
}

EtcPixels decodeEtcPixelsETC1(const EtcBlockWords& words)
{
    const bool bDifferential = (words.ui32High & k_ui32EtcDiffBit) != 0;
    const EtcHalfColours halves = bDifferential ? readEtcHalvesDifferential(words.ui32High) : readHalvesIndividual(words.ui32High);
    EtcPixels pixels;
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
        {
            const uint32_t uiHalf = halves.getHalf(x, y);
            const uint32_t uiPosition = k_aui8EtcPositionOfIndex[getEtcIndex(words.ui32Low, x, y)];
            setEtcPixel(pixels, x, y, offsetColour(halves.aBases[uiHalf], k_aaiEtcModifiers[halves.auiTables[uiHalf]][uiPosition]));
        }
    return pixels;
}

EtcPixels decodeEtcPixelsETC2(const EtcBlockWords& words)
{
    if ((words.ui32High & k_ui32EtcDiffBit) == 0)
        return decodeEtcPixelsETC1(words);
    switch (getEtcDifferentialMode(words.ui32High))
    {
    case eEtcT:
        return decodeEtcPixelsT(compactT(words));
    case eEtcH:
        return decodeEtcPixelsH(compactH(words));
    case eEtcPlanar:
        return decodeEtcPixelsPlanar(compactPlanar(words));
    case eEtcDifferential:
        break;
    }
    return decodeEtcPixelsETC1(words);
}

EtcPixels decodeEtcPixelsT(const EtcBlockWords& compact)
{
    const EtcColourPair levels = {colourOfNumber444(compact.ui32High >> 15), colourOfNumber444(compact.ui32High >> 3)};
    return paintPixels(paintsT(levels, compact.ui32High & 7), compact.ui32Low);
}

EtcPixels decodeEtcPixelsH(const EtcBlockWords& compact)
{
    const EtcColourPair levels = {colourOfNumber444(compact.ui32High >> 14), colourOfNumber444(compact.ui32High >> 2)};
    // The lowest bit of the distance index isn't stored: the order of the colours stands for it.
    const uint32_t uiLowestBit = colourNumber444(levels[0]) >= colourNumber444(levels[1]) ? 1 : 0;
    return paintPixels(paintsH(levels, (compact.ui32High & 3) << 1 | uiLowestBit), compact.ui32Low);
}

EtcPixels decodeEtcPixelsPlanar(const EtcBlockWords& compact)
{
    const uint32_t ui32High = compact.ui32High;
    const uint32_t ui32Low = compact.ui32Low;
    EtcPixels pixels;
    fillPlane(pixels.aui8Red, expandEtc6(ui32High >> 26), expandEtc6(ui32High >> 7 & 63), expandEtc6(ui32Low >> 20 & 63));
    fillPlane(pixels.aui8Green, expandEtc7(ui32High >> 19 & 127), expandEtc7(ui32High & 127), expandEtc7(ui32Low >> 13 & 127));
    fillPlane(pixels.aui8Blue, expandEtc6(ui32High >> 13 & 63), expandEtc6(ui32Low >> 26), expandEtc6(ui32Low >> 7 & 63));
    return pixels;
}

void writeEtcPixels(const EtcPixels& pixels, uint8_t* pui8Image, uint32_t uiStride, uint32_t uiX, uint32_t uiY)
{
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            uint8_t* const pui8Pixel = pui8Image + ((uiY + y) * uiStride + uiX + x) * 3;
            pui8Pixel[0] = pixels.aui8Red[etcPixelIndex(x, y)];
            pui8Pixel[1] = pixels.aui8Green[etcPixelIndex(x, y)];
            pui8Pixel[2] = pixels.aui8Blue[etcPixelIndex(x, y)];
        }
}

void etcDecodeBlockETC1(const EtcBlockWords& words, uint8_t* pui8Image, uint32_t uiStride, uint32_t uiX, uint32_t uiY)
{
    writeEtcPixels(decodeEtcPixelsETC1(words), pui8Image, uiStride, uiX, uiY);
}

void etcDecodeBlockETC2(const EtcBlockWords& words, uint8_t* pui8Image, uint32_t uiStride, uint32_t uiX, uint32_t uiY)
{
    writeEtcPixels(decodeEtcPixelsETC2(words), pui8Image, uiStride, uiX, uiY);
}

} // namespace moxtexture
