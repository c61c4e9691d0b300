#include "Codecs/ETC/EtcExhaustiveH.h"

#include <algorithm>

#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcModePaints.h"
#include "Codecs/ETC/EtcPairSearch.h"

namespace moxtexture
{

namespace
{

/// @param uiFastError  of the block that `compact` holds
/// @param fit          hBlockError with the same weights
uint32_t improveH(const EtcPixels& pixels, const std::array<uint32_t, 3>& aui32Weights,
                  EtcModeFit (*fit)(const EtcPixels&, const EtcColourPair&), uint32_t uiFastError, uint32_t uiBound, EtcBlockWords& compact)
{
    EtcPair pair;
    const uint32_t uiLeast = std::min(uiFastError, uiBound);
    const uint32_t uiError = findLeastPair(pixels, eEtcPairsH, aui32Weights, uiLeast, pair);
    if (uiError == uiLeast)
        return uiFastError;
    EtcModeFit best = fit(pixels, {colourOfNumber444(pair.uiFirst), colourOfNumber444(pair.uiSecond)});
    settleHOrder(best);
    compact = packH(best);
    return uiError;
}

} // namespace

uint32_t searchHExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact)
{
    const uint32_t uiFastError = hFast(pixels, compact);
    return improveH(pixels, k_aui32EtcPlainWeights, hBlockError, uiFastError, uiBound, compact);
}

uint32_t searchHExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact)
{
    const uint32_t uiFastError = hFastPerceptual(pixels, compact);
    return improveH(pixels, k_aui32EtcPerceptualWeights, hBlockErrorWeighted, uiFastError, uiBound, compact);
}

} // namespace moxtexture
