#include "Codecs/ETC/EtcTModes.h"

#include <utility>

#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcModePaints.h"
#include "Codecs/ETC/EtcTables.h"

namespace moxtexture
{

namespace
{

EtcModePaints paintsT(const EtcColourPair& levels, uint32_t uiDistance)
{
    const int32_t i32Distance = k_aui8EtcDistances[uiDistance];
    const EtcColour second = expandLevels444(levels[1]);
    return {expandLevels444(levels[0]), offsetColour(second, i32Distance), second, offsetColour(second, -i32Distance)};
}

/// Lowers `best` by the fits of two colours in one order.
/// @param pAlphas  for punch-through, else null
void lowerByOrder(const EtcPixels& pixels, const EtcAlphas* pAlphas, const EtcColourPair& levels,
                  const std::array<uint32_t, 3>& aui32Weights, EtcModeFit& best)
{
    for (uint32_t uiDistance = 0; uiDistance < 8; ++uiDistance)
    {
        const EtcModePaints paints = paintsT(levels, uiDistance);
        EtcModeFit fit{levels, uiDistance, 0, 0};
        for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
        {
            uint32_t uiIndex = 2;
            uint32_t ui32Least = 0;
            if (!pAlphas || pAlphas->aui8[uiPixel] != 0)
            {
                ui32Least = k_uiEtcMaxPerceptualError;
                for (uint32_t uiPaint = 0; uiPaint < 4; ++uiPaint)
                {
                    if (pAlphas && uiPaint == 2)
                        continue;
                    const uint32_t ui32Error = paintError(pixels, uiPixel, paints[uiPaint], aui32Weights);
                    if (ui32Error < ui32Least)
                    {
                        ui32Least = ui32Error;
                        uiIndex = uiPaint;
                    }
                }
            }
            fit.uiError += ui32Least;
            fit.ui32Indices |= uiIndex << uiPixel * 2;
        }
        if (fit.uiError < best.uiError)
            best = fit;
    }
}

EtcModeFit fitBothOrders(const EtcPixels& pixels, const EtcAlphas* pAlphas, const EtcColourPair& levels,
                         const std::array<uint32_t, 3>& aui32Weights)
{
    EtcModeFit best{levels, 0, 0, k_uiEtcMaxPerceptualError};
    lowerByOrder(pixels, pAlphas, levels, aui32Weights, best);
    lowerByOrder(pixels, pAlphas, {levels[1], levels[0]}, aui32Weights, best);
    return best;
}

EtcModeFit fitGivenOrder(const EtcPixels& pixels, const EtcColourPair& levels, const std::array<uint32_t, 3>& aui32Weights)
{
    EtcModeFit best{levels, 0, 0, k_uiEtcMaxPerceptualError};
    lowerByOrder(pixels, nullptr, levels, aui32Weights, best);
    return best;
}

} // namespace

EtcModeFit tBlockError(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitBothOrders(pixels, nullptr, levels, k_aui32EtcPlainWeights);
}

EtcModeFit tBlockErrorWeighted(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitBothOrders(pixels, nullptr, levels, k_aui32EtcPerceptualWeights);
}

EtcModeFit tBlockErrorFixedOrder(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitGivenOrder(pixels, levels, k_aui32EtcPlainWeights);
}

EtcModeFit tBlockErrorFixedOrderWeighted(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitGivenOrder(pixels, levels, k_aui32EtcPerceptualWeights);
}

EtcModeFit tBlockErrorA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& levels)
{
    return fitBothOrders(pixels, &alphas, levels, k_aui32EtcPlainWeights);
}

EtcBlockWords packT(const EtcModeFit& fit)
{
    uint32_t ui32High = 0;
    for (const EtcColour& colour : fit.levels)
        for (const uint8_t ui8Level : colour)
            ui32High = ui32High << 4 | ui8Level;
    return {ui32High << 3 | fit.uiDistance, indexToBlockOrder(fit.ui32Indices)};
}

uint32_t tFast(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
{
    const EtcModeFit fit = tBlockError(pixels, quantise444Pair(halfIntensity));
    compact = packT(fit);
    return fit.uiError;
}

uint32_t tFast(const EtcPixels& pixels, EtcBlockWords& compact)
{
    return tFast(pixels, lbgHalfIntensity(pixels), compact);
}

uint32_t tFastPerceptual(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
{
    const EtcModeFit fit = tBlockErrorWeighted(pixels, quantise444Pair(halfIntensity));
    compact = packT(fit);
    return fit.uiError;
}

uint32_t tFastPerceptual(const EtcPixels& pixels, EtcBlockWords& compact)
{
    return tFastPerceptual(pixels, lbgHalfIntensity(pixels), compact);
}

EtcBlockWords tRefine(const EtcPixels& pixels, const EtcColourPair& halfIntensity)
{
    EtcModeFit best = tBlockError(pixels, quantise444Pair(lbgNoIntensityT(pixels)));
    for (const EtcColourPair& bytes : {halfIntensity, lbgRGBT(pixels)})
    {
        const EtcModeFit fit = tBlockError(pixels, quantise444Pair(bytes));
        if (fit.uiError < best.uiError)
            best = fit;
    }
    return packT(best);
}

EtcBlockWords tRefine(const EtcPixels& pixels)
{
    return tRefine(pixels, lbgHalfIntensity(pixels));
}

} // namespace moxtexture
