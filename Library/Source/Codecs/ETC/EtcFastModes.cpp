#include "Codecs/ETC/EtcFastModes.h"

#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcModeErrors.h"
#include "Codecs/ETC/EtcTModes.h"

namespace moxtexture
{

namespace
{

/// @param measure  gives the EtcModeErrors of two colours
template <typename Measure>
EtcFastModes fitBoth(const EtcColourPair& halfIntensity, Measure measure)
{
    const EtcColourPair levels = quantise444Pair(halfIntensity);
    const EtcColourPair ordered = orderForH(levels);
    const EtcModeErrors errors = measure(levels);
    // H mode costs the same in both orders of two colours, but equal colours have been parted.
    return {bestFitT(errors, levels), bestFitH(levels[0] == levels[1] ? measure(ordered) : errors, ordered)};
}

} // namespace

EtcFastModes fitFastModes(const EtcPixels& pixels, const EtcColourPair& halfIntensity, bool bWeighted)
{
    return fitBoth(halfIntensity, [&](const EtcColourPair& levels) { return measureModes(pixels, levels, bWeighted); });
}

EtcFastModes fitFastModesA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& halfIntensity)
{
    tellInvalidAlphas(alphas);
    return fitBoth(halfIntensity, [&](const EtcColourPair& levels) { return measureModesA1(pixels, alphas, levels); });
}

EtcBlockWords makeFastT(const EtcPixels& pixels, const EtcModeFit& t, bool bWeighted)
{
    EtcModeFit fit = t;
    chooseIndicesT(pixels, bWeighted, fit);
    return packT(fit);
}

EtcBlockWords makeFastH(const EtcPixels& pixels, const EtcModeFit& h, bool bWeighted)
{
    EtcModeFit fit = h;
    chooseIndicesH(pixels, bWeighted, fit);
    settleHOrder(fit);
    return packH(fit);
}

EtcBlockWords makeFastTA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcModeFit& t)
{
    EtcModeFit fit = t;
    chooseIndicesTA1(pixels, alphas, fit);
    return packT(fit);
}

EtcBlockWords makeFastHA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcModeFit& h)
{
    EtcModeFit fit = h;
    chooseIndicesHA1(pixels, alphas, fit);
    settleHOrder(fit);
    return packH(fit);
}

} // namespace moxtexture
