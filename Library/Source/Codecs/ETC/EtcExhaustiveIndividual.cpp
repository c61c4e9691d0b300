#include "Codecs/ETC/EtcExhaustiveIndividual.h"

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
    const EtcAverageCandidate start = etcAverageIndividual<eMeasure>(pixels);
    EtcBestHalves best{start.levels, start.auiErrors};
    uiBound = std::min(uiBound, start.uiError);
    if (uiBound > 0) // nothing is below 0
        improveHalves<eMeasure>(pixels, uiBound, best);
    const bool bFlip = best.rowsError() < best.columnsError();
    words = packEtcHalves<eMeasure>(pixels, k_EtcIndividual, best.levels[bFlip ? eEtcTop : eEtcLeft],
                                    best.levels[bFlip ? eEtcBottom : eEtcRight], bFlip);
    return std::min(best.rowsError(), best.columnsError());
}

} // namespace

uint32_t searchIndividualExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
{
    return search<EEtcMeasure::ePlain>(pixels, uiBound, words);
}

uint32_t searchIndividualExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
{
    return search<EEtcMeasure::ePerceptual>(pixels, uiBound, words);
}

} // namespace moxtexture
