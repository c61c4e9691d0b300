#include "Codecs/ETC/EtcHModes.h"

#include <utility>

#include "Core/Diagnostics.h"

namespace moxtexture
{

namespace
{

EtcModeFit fitDistances(const EtcPixels& pixels, const EtcColourPair& levels, bool bWeighted)
{
    EtcModeFit fit = bestFitH(measureModes(pixels, levels, bWeighted), levels);
    chooseIndicesH(pixels, bWeighted, fit);
    return fit;
}

/// The settled fit of two colours given as bytes.
EtcModeFit fitColours(const EtcPixels& pixels, const EtcColourPair& bytes, bool bWeighted)
{
    EtcModeFit fit = fitDistances(pixels, orderForH(quantise444Pair(bytes)), bWeighted);
    settleHOrder(fit);
    return fit;
}

} // namespace

EtcColourPair orderForH(const EtcColourPair& levels)
{
    uint32_t uiFirst = colourNumber444(levels[0]);
    uint32_t uiSecond = colourNumber444(levels[1]);
    if (uiFirst > uiSecond)
        std::swap(uiFirst, uiSecond);
    else if (uiFirst == uiSecond)
    {
        if (uiFirst != 0)
            --uiFirst;
        else
            ++uiSecond;
    }
    return {colourOfNumber444(uiFirst), colourOfNumber444(uiSecond)};
}

EtcModeFit bestFitH(const EtcModeErrors& errors, const EtcColourPair& levels)
{
    const EtcLeastError least = firstLeast(errors.aui32H);
    return {levels, least.uiDistance, 0, least.uiError};
}

void chooseIndicesH(const EtcPixels& pixels, bool bWeighted, EtcModeFit& fit)
{
    fit.ui32Indices = choosePaints(pixels, paintsH(fit.levels, fit.uiDistance), bWeighted);
}

void chooseIndicesHA1(const EtcPixels& pixels, const EtcAlphas& alphas, EtcModeFit& fit)
{
    const uint32_t uiAscending = colourNumber444(fit.levels[0]) < colourNumber444(fit.levels[1]) ? 1 : 0;
    const uint32_t uiStoredAs2 = 2 * ((fit.uiDistance & 1) ^ uiAscending);
    fit.ui32Indices = choosePaints(pixels, paintsH(fit.levels, fit.uiDistance), false, uiStoredAs2, pixelsWithAlpha(alphas));
}

void tellInvalidAlphas(const EtcAlphas& alphas)
{
    for (const uint8_t ui8Alpha : alphas.aui8)
        if (ui8Alpha != 0 && ui8Alpha != 255)
            writeDiagnostic("INVALID ALPHA DATA!!\n");
}

EtcModeFit hBlockError(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitDistances(pixels, levels, false);
}

EtcModeFit hBlockErrorWeighted(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitDistances(pixels, levels, true);
}

void settleHOrder(EtcModeFit& fit)
{
    const bool bAscending = colourNumber444(fit.levels[0]) < colourNumber444(fit.levels[1]);
    const bool bOdd = (fit.uiDistance & 1) != 0;
    if (bAscending != bOdd)
        return;
    std::swap(fit.levels[0], fit.levels[1]);
    fit.ui32Indices ^= 0xAAAAAAAAu;
}

EtcBlockWords packH(const EtcModeFit& fit)
{
    return {colourNumber444(fit.levels[0]) << 14 | colourNumber444(fit.levels[1]) << 2 | fit.uiDistance >> 1,
            indexToBlockOrder(fit.ui32Indices)};
}

uint32_t hFast(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
{
    const EtcModeFit fit = fitColours(pixels, halfIntensity, false);
    compact = packH(fit);
    return fit.uiError;
}

uint32_t hFast(const EtcPixels& pixels, EtcBlockWords& compact)
{
    return hFast(pixels, lbgHalfIntensity(pixels), compact);
}

uint32_t hFastPerceptual(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
{
    const EtcModeFit fit = fitColours(pixels, halfIntensity, true);
    compact = packH(fit);
    return fit.uiError;
}

uint32_t hFastPerceptual(const EtcPixels& pixels, EtcBlockWords& compact)
{
    return hFastPerceptual(pixels, lbgHalfIntensity(pixels), compact);
}

EtcBlockWords hRefine(const EtcPixels& pixels)
{
    EtcModeFit best = fitColours(pixels, lbgNoIntensityH(pixels), false);
    const EtcModeFit other = fitColours(pixels, lbgRGBH(pixels), false);
    return packH(other.uiError < best.uiError ? other : best);
}

} // namespace moxtexture
