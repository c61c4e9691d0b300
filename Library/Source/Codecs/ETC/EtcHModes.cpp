#include "Codecs/ETC/EtcHModes.h"

#include <utility>

#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcModePaints.h"
#include "Codecs/ETC/EtcTables.h"
#include "Core/Diagnostics.h"

namespace moxtexture
{

namespace
{

EtcModePaints paintsH(const EtcColourPair& levels, uint32_t uiDistance)
{
    const int32_t i32Distance = k_aui8EtcDistances[uiDistance];
    const EtcColour first = expandLevels444(levels[0]);
    const EtcColour second = expandLevels444(levels[1]);
    return {offsetColour(first, i32Distance), offsetColour(first, -i32Distance), offsetColour(second, i32Distance),
            offsetColour(second, -i32Distance)};
}

/// The nearest paint of each pixel.
/// @param ui32Painted  the pixels, one bit each, that take uiFixedPaint and have no error; the others do without that paint
EtcModeFit fitDistance(const EtcPixels& pixels, const EtcColourPair& levels, uint32_t uiDistance,
                       const std::array<uint32_t, 3>& aui32Weights, uint32_t uiFixedPaint = 4, uint32_t ui32Painted = 0)
{
    const EtcModePaints paints = paintsH(levels, uiDistance);
    EtcModeFit fit{levels, uiDistance, 0, 0};
    for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
    {
        uint32_t uiIndex = uiFixedPaint;
        uint32_t ui32Least = 0;
        if (!(ui32Painted >> uiPixel & 1))
        {
            ui32Least = k_uiEtcMaxPerceptualError;
            for (uint32_t uiPaint = 0; uiPaint < 4; ++uiPaint)
            {
                const uint32_t ui32Error = paintError(pixels, uiPixel, paints[uiPaint], aui32Weights);
                if (uiPaint != uiFixedPaint && ui32Error < ui32Least)
                {
                    ui32Least = ui32Error;
                    uiIndex = uiPaint;
                }
            }
        }
        fit.uiError += ui32Least;
        fit.ui32Indices |= uiIndex << uiPixel * 2;
    }
    return fit;
}

EtcModeFit fitDistances(const EtcPixels& pixels, const EtcColourPair& levels, const std::array<uint32_t, 3>& aui32Weights)
{
    EtcModeFit best = fitDistance(pixels, levels, 0, aui32Weights);
    for (uint32_t uiDistance = 1; uiDistance < 8; ++uiDistance)
    {
        const EtcModeFit fit = fitDistance(pixels, levels, uiDistance, aui32Weights);
        if (fit.uiError < best.uiError)
            best = fit;
    }
    return best;
}

} // namespace

EtcColourPair orderForH(const EtcColourPair& levels)
{
    uint32_t uiFirst = colourNumberH(levels[0]);
    uint32_t uiSecond = colourNumberH(levels[1]);
    if (uiFirst > uiSecond)
        std::swap(uiFirst, uiSecond);
    else if (uiFirst == uiSecond)
    {
        if (uiFirst != 0)
            --uiFirst;
        else
            ++uiSecond;
    }
    return {colourOfNumberH(uiFirst), colourOfNumberH(uiSecond)};
}

EtcModeFit hBlockError(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitDistances(pixels, levels, k_aui32EtcPlainWeights);
}

EtcModeFit hBlockErrorWeighted(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitDistances(pixels, levels, k_aui32EtcPerceptualWeights);
}

EtcModeFit hBlockErrorA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& levels)
{
    uint32_t ui32WithAlpha = 0;
    for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
    {
        const uint8_t ui8Alpha = alphas.aui8[uiPixel];
        if (ui8Alpha != 0 && ui8Alpha != 255)
            writeDiagnostic("INVALID ALPHA DATA!!\n");
        if (ui8Alpha != 0)
            ui32WithAlpha |= 1u << uiPixel;
    }

    const uint32_t uiAscending = colourNumberH(levels[0]) < colourNumberH(levels[1]) ? 1 : 0;
    EtcModeFit best{levels, 0, 0, k_uiEtcMaxPerceptualError};
    for (uint32_t uiDistance = 0; uiDistance < 8; ++uiDistance)
    {
        const uint32_t uiTestPaint = 2 * ((uiDistance & 1) ^ uiAscending);
        const EtcModeFit fit = fitDistance(pixels, levels, uiDistance, k_aui32EtcPlainWeights, uiTestPaint, ui32WithAlpha);
        if (fit.uiError < best.uiError)
            best = fit;
    }
    return best;
}

void settleHOrder(EtcModeFit& fit)
{
    const bool bAscending = colourNumberH(fit.levels[0]) < colourNumberH(fit.levels[1]);
    const bool bOdd = (fit.uiDistance & 1) != 0;
    if (bAscending != bOdd)
        return;
    std::swap(fit.levels[0], fit.levels[1]);
    fit.ui32Indices ^= 0xAAAAAAAAu;
}

EtcBlockWords packH(const EtcModeFit& fit)
{
    return {colourNumberH(fit.levels[0]) << 14 | colourNumberH(fit.levels[1]) << 2 | fit.uiDistance >> 1,
            indexToBlockOrder(fit.ui32Indices)};
}

EtcModeFit hFitOfColours(const EtcPixels& pixels, const EtcColourPair& bytes)
{
    EtcModeFit fit = hBlockError(pixels, orderForH(quantise444Pair(bytes)));
    settleHOrder(fit);
    return fit;
}

EtcModeFit hFitOfColoursWeighted(const EtcPixels& pixels, const EtcColourPair& bytes)
{
    EtcModeFit fit = hBlockErrorWeighted(pixels, orderForH(quantise444Pair(bytes)));
    settleHOrder(fit);
    return fit;
}

uint32_t hFast(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
{
    const EtcModeFit fit = hFitOfColours(pixels, halfIntensity);
    compact = packH(fit);
    return fit.uiError;
}

uint32_t hFast(const EtcPixels& pixels, EtcBlockWords& compact)
{
    return hFast(pixels, lbgHalfIntensity(pixels), compact);
}

uint32_t hFastPerceptual(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
{
    const EtcModeFit fit = hFitOfColoursWeighted(pixels, halfIntensity);
    compact = packH(fit);
    return fit.uiError;
}

uint32_t hFastPerceptual(const EtcPixels& pixels, EtcBlockWords& compact)
{
    return hFastPerceptual(pixels, lbgHalfIntensity(pixels), compact);
}

EtcBlockWords hRefine(const EtcPixels& pixels)
{
    EtcModeFit best = hFitOfColours(pixels, lbgNoIntensityH(pixels));
    const EtcModeFit other = hFitOfColours(pixels, lbgRGBH(pixels));
    return packH(other.uiError < best.uiError ? other : best);
}

} // namespace moxtexture
