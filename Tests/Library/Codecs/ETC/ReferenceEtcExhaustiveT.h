#pragma once

#include "ReferenceEtcPairSearch.h"

namespace etcreference
{

/// The first colour has three paints, the second one.
inline FoundPair searchPairsT(const moxtexture::EtcPixels& pixels, const std::array<int, 3>& weights, uint32_t uiBound)
{
    return searchPairs(pixels, weights, {-1, 0, 1}, {0}, false, uiBound);
}

template <typename Fit>
uint32_t improveT(const moxtexture::EtcPixels& pixels, const std::array<int, 3>& weights, Fit fit, uint32_t uiFastError, uint32_t uiBound,
                  moxtexture::EtcBlockWords& compact)
{
    const FoundPair found = searchPairsT(pixels, weights, std::min(uiFastError, uiBound));
    if (!found.bImproved)
        return uiFastError;
    compact = etcreference::packT(fit(pixels, {levelsOfTwelveBits(found.uiSecond), levelsOfTwelveBits(found.uiFirst)}));
    return found.uiError;
}

inline uint32_t searchTExhaustive(const moxtexture::EtcPixels& pixels, uint32_t uiBound, moxtexture::EtcBlockWords& compact)
{
    const uint32_t uiFastError = etcreference::tFast(pixels, compact);
    return improveT(pixels, k_aiPlainWeights, etcreference::tBlockErrorFixedOrder, uiFastError, uiBound, compact);
}

inline uint32_t searchTExhaustivePerceptual(const moxtexture::EtcPixels& pixels, uint32_t uiBound, moxtexture::EtcBlockWords& compact)
{
    const uint32_t uiFastError = etcreference::tFastPerceptual(pixels, compact);
    return improveT(pixels, k_aiPerceptualWeights, etcreference::tBlockErrorFixedOrderWeighted, uiFastError, uiBound, compact);
}

} // namespace etcreference
