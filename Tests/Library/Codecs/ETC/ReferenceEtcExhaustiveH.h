#pragma once

#include "ReferenceEtcHModes.h"
#include "ReferenceEtcPairSearch.h"

namespace etcreference
{

/// Each colour has a paint above and one below it.
inline FoundPair searchPairsH(const moxtexture::EtcPixels& pixels, const std::array<int, 3>& weights, uint32_t uiBound)
{
    return searchPairs(pixels, weights, {1, -1}, {1, -1}, true, uiBound);
}

inline uint32_t improveH(const moxtexture::EtcPixels& pixels, const std::array<int, 3>& weights, uint32_t uiFastError, uint32_t uiBound,
                         moxtexture::EtcBlockWords& compact)
{
    const FoundPair found = searchPairsH(pixels, weights, std::min(uiFastError, uiBound));
    if (!found.bImproved)
        return uiFastError;
    moxtexture::EtcModeFit fit =
        hBlockErrorOfWeights(pixels, {levelsOfTwelveBits(found.uiFirst), levelsOfTwelveBits(found.uiSecond)}, weights);
    etcreference::settleHOrder(fit);
    compact = etcreference::packH(fit);
    return found.uiError;
}

inline uint32_t searchHExhaustive(const moxtexture::EtcPixels& pixels, uint32_t uiBound, moxtexture::EtcBlockWords& compact)
{
    const uint32_t uiFastError = etcreference::hFast(pixels, compact);
    return improveH(pixels, k_aiPlainWeights, uiFastError, uiBound, compact);
}

inline uint32_t searchHExhaustivePerceptual(const moxtexture::EtcPixels& pixels, uint32_t uiBound, moxtexture::EtcBlockWords& compact)
{
    const uint32_t uiFastError = etcreference::hFastPerceptual(pixels, compact);
    return improveH(pixels, k_aiPerceptualWeights, uiFastError, uiBound, compact);
}

} // namespace etcreference
