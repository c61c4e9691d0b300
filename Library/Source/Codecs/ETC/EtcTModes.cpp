#include "Codecs/ETC/EtcTModes.h"

namespace moxtexture
{

namespace
{

EtcModeFit fitBothOrders(const EtcPixels& pixels, const EtcColourPair& levels, bool bWeighted)
{
    EtcModeFit best = bestFitT(measureModes(pixels, levels, bWeighted), levels);
    chooseIndicesT(pixels, bWeighted, best);
    return best;
}

EtcModeFit fitGivenOrder(const EtcPixels& pixels, const EtcColourPair& levels, bool bWeighted)
{
    const EtcLeastError least = firstLeast(measureModes(pixels, levels, bWeighted).aui32T);
    EtcModeFit fit{levels, least.uiDistance, 0, least.uiError};
    chooseIndicesT(pixels, bWeighted, fit);
    return fit;
}

} // namespace

EtcModeFit bestFitT(const EtcModeErrors& errors, const EtcColourPair& levels)
{
    const EtcLeastError given = firstLeast(errors.aui32T);
    const EtcLeastError swapped = firstLeast(errors.aui32TSwapped);
    if (swapped.uiError < given.uiError)
        return {{levels[1], levels[0]}, swapped.uiDistance, 0, swapped.uiError};
    return {levels, given.uiDistance, 0, given.uiError};
}

void chooseIndicesT(const EtcPixels& pixels, bool bWeighted, EtcModeFit& fit)
{
    fit.ui32Indices = choosePaints(pixels, paintsT(fit.levels, fit.uiDistance), bWeighted);
}

void chooseIndicesTA1(const EtcPixels& pixels, const EtcAlphas& alphas, EtcModeFit& fit)
{
    constexpr uint32_t uiTransparent = 2;
    const uint32_t ui32Transparent = 0xFFFF & ~pixelsWithAlpha(alphas);
    fit.ui32Indices = choosePaints(pixels, paintsT(fit.levels, fit.uiDistance), false, uiTransparent, ui32Transparent);
}

EtcModeFit tBlockError(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitBothOrders(pixels, levels, false);
}

EtcModeFit tBlockErrorWeighted(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitBothOrders(pixels, levels, true);
}

EtcModeFit tBlockErrorFixedOrder(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitGivenOrder(pixels, levels, false);
}

EtcModeFit tBlockErrorFixedOrderWeighted(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return fitGivenOrder(pixels, levels, true);
}

EtcBlockWords packT(const EtcModeFit& fit)
{
    return {colourNumber444(fit.levels[0]) << 15 | colourNumber444(fit.levels[1]) << 3 | fit.uiDistance,
            indexToBlockOrder(fit.ui32Indices)};
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
