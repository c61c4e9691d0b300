#include "Codecs/ETC/EtcExhaustiveDifferential.h"

#include <algorithm>

#include "Codecs/ETC/EtcAverageCandidates.h"
#include "Codecs/ETC/EtcExhaustiveHalves.h"

namespace moxtexture
{
namespace
{

template <EEtcMeasure eMeasure>
uint32_t search(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
{
    const EtcAverageCandidate start = etcAverageDifferential<eMeasure>(pixels);
    EtcBestPair best;
    best.levels0 = start.levels[start.bFlip ? eEtcTop : eEtcLeft];
    best.levels1 = start.levels[start.bFlip ? eEtcBottom : eEtcRight];
    // On purpose: in the plain form the colours of top and bottom go into a block of left and right.
    best.bFlip = eMeasure == EEtcMeasure::ePerceptual && start.bFlip;
    best.uiError = start.uiError;
    uiBound = std::min(uiBound, start.uiError);
    if (uiBound > 0) // nothing is below 0
        improvePair<eMeasure>(pixels, uiBound, best);
    words = packEtcHalves<eMeasure>(pixels, k_EtcDifferential, best.levels0, best.levels1, best.bFlip);
    return best.uiError;
}

} // namespace

uint32_t searchDifferentialExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
{
    return search<EEtcMeasure::ePlain>(pixels, uiBound, words);
}

uint32_t searchDifferentialExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
{
    return search<EEtcMeasure::ePerceptual>(pixels, uiBound, words);
}

} // namespace moxtexture
