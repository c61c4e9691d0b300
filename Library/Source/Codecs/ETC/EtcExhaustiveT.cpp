#include "Codecs/ETC/EtcExhaustiveT.h"

#include <algorithm>

#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcModePaints.h"
#include "Codecs/ETC/EtcPairSearch.h"
#include "Codecs/ETC/EtcTModes.h"

namespace moxtexture
{

namespace
{

/// @param uiFastError  of the block that `compact` holds
/// @param fit          tBlockErrorFixedOrder with the same weights
uint32_t improveT(const EtcPixels& pixels, const std::array<uint32_t, 3>& aui32Weights,
                  EtcModeFit (*fit)(const EtcPixels&, const EtcColourPair&), uint32_t uiFastError, uint32_t uiBound, EtcBlockWords& compact)
{
    EtcPair pair;
    const uint32_t uiLeast = std::min(uiFastError, uiBound);
    const uint32_t uiError = findLeastPair(pixels, eEtcPairsT, aui32Weights, uiLeast, pair);
    if (uiError == uiLeast)
        return uiFastError;
    // The colour of one paint is stored first.
    compact = packT(fit(pixels, {colourOfNumber444(pair.uiSecond), colourOfNumber444(pair.uiFirst)}));
    return uiError;
}

} // namespace

uint32_t searchTExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact)
{
    const uint32_t uiFastError = tFast(pixels, compact);
    return improveT(pixels, k_aui32EtcPlainWeights, tBlockErrorFixedOrder, uiFastError, uiBound, compact);
}

uint32_t searchTExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact)
{
    const uint32_t uiFastError = tFastPerceptual(pixels, compact);
    return improveT(pixels, k_aui32EtcPerceptualWeights, tBlockErrorFixedOrderWeighted, uiFastError, uiBound, compact);
}

} // namespace moxtexture
