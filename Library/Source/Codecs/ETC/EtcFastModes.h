#pragma once

#include "Codecs/ETC/EtcModeFit.h"

namespace moxtexture
{

// T and H mode for the same two colours, measured in one go: what tFast and hFast find, at half the cost of both, and with the
// indices left out until a block is wanted. No state; any thread may call it.

/// @see fitFastModes
struct EtcFastModes
{
    EtcModeFit t; ///< levels, distance and error; no indices
    EtcModeFit h; ///< the same, the colours still in the order in which they were searched
};

/// @param halfIntensity  lbgHalfIntensity(pixels)
/// @param bWeighted      errors weighted by 299, 587 and 114
[[nodiscard]] EtcFastModes fitFastModes(const EtcPixels& pixels, const EtcColourPair& halfIntensity, bool bWeighted);

/// The same for punch-through, where pixels of alpha 0 are transparent to T mode, and all others to H mode. Tells by writeDiagnostic
/// of each alpha other than 0 and 255.
[[nodiscard]] EtcFastModes fitFastModesA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& halfIntensity);

/// Chooses the indices of a fit of fitFastModes and packs it.
/// @return the block before stuffing
[[nodiscard]] EtcBlockWords makeFastT(const EtcPixels& pixels, const EtcModeFit& t, bool bWeighted);
[[nodiscard]] EtcBlockWords makeFastH(const EtcPixels& pixels, const EtcModeFit& h, bool bWeighted);

/// The same for fits of fitFastModesA1.
[[nodiscard]] EtcBlockWords makeFastTA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcModeFit& t);
[[nodiscard]] EtcBlockWords makeFastHA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcModeFit& h);

} // namespace moxtexture
