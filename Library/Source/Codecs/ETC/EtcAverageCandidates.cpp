#include "Codecs/ETC/EtcAverageCandidates.h"

#include <algorithm>

#include "Codecs/ETC/EtcQuantise.h"

namespace moxtexture
{
namespace
{

constexpr std::array<EEtcHalf, 4> k_aeHalves = {eEtcLeft, eEtcRight, eEtcTop, eEtcBottom};

template <EEtcMeasure eMeasure>
void measureCandidate(const EtcPixels& pixels, const std::array<EtcColour, 4>& bytes, EtcAverageCandidate& candidate)
{
    for (const EEtcHalf eHalf : k_aeHalves)
        candidate.auiErrors[eHalf] = EtcMeasure<eMeasure>::fitHalf(pixels, eHalf, bytes[eHalf]).error;
    const uint32_t uiColumns = candidate.auiErrors[eEtcLeft] + candidate.auiErrors[eEtcRight];
    const uint32_t uiRows = candidate.auiErrors[eEtcTop] + candidate.auiErrors[eEtcBottom];
    candidate.bFlip = uiRows < uiColumns;
    candidate.uiError = std::min(uiColumns, uiRows);
}

} // namespace

template <EEtcMeasure eMeasure>
EtcAverageCandidate etcAverageIndividual(const EtcPixels& pixels)
{
    EtcAverageCandidate candidate;
    std::array<EtcColour, 4> bytes{};
    for (const EEtcHalf eHalf : k_aeHalves)
    {
        // Not quantiseNearest444, which lifts the mean a little.
        const EtcMean mean = etcHalfMean(pixels, eHalf);
        for (size_t uiChannel = 0; uiChannel < mean.size(); ++uiChannel)
        {
            candidate.levels[eHalf][uiChannel] = roundEtcLevel(mean[uiChannel] * 15.0f / 255.0f);
            bytes[eHalf][uiChannel] = static_cast<uint8_t>(expandEtc4(candidate.levels[eHalf][uiChannel]));
        }
    }
    measureCandidate<eMeasure>(pixels, bytes, candidate);
    return candidate;
}

template <EEtcMeasure eMeasure>
EtcAverageCandidate etcAverageDifferential(const EtcPixels& pixels)
{
    EtcAverageCandidate candidate;
    std::array<EtcColour, 4> bytes{};
    for (const EEtcHalf eFirst : {eEtcLeft, eEtcTop})
    {
        const EEtcHalf eSecond = eFirst == eEtcLeft ? eEtcRight : eEtcBottom;
        const EtcMean mean0 = etcHalfMean(pixels, eFirst);
        const EtcMean mean1 = etcHalfMean(pixels, eSecond);
        EtcQuantised base0 = quantiseNearest555(mean0);
        EtcQuantised base1 = quantiseNearest555(mean1);
        if (!isEtcDifferential(base0.levels, base1.levels))
        {
            EtcMean middle{};
            for (size_t uiChannel = 0; uiChannel < middle.size(); ++uiChannel)
                middle[uiChannel] = (mean0[uiChannel] + mean1[uiChannel]) * 0.5f;
            base0 = quantiseNearest555(middle);
            base1 = base0;
        }
        candidate.levels[eFirst] = base0.levels;
        candidate.levels[eSecond] = base1.levels;
        bytes[eFirst] = base0.bytes;
        bytes[eSecond] = base1.bytes;
    }
    measureCandidate<eMeasure>(pixels, bytes, candidate);
    return candidate;
}

template EtcAverageCandidate etcAverageIndividual<EEtcMeasure::ePlain>(const EtcPixels& pixels);
template EtcAverageCandidate etcAverageIndividual<EEtcMeasure::ePerceptual>(const EtcPixels& pixels);
template EtcAverageCandidate etcAverageDifferential<EEtcMeasure::ePlain>(const EtcPixels& pixels);
template EtcAverageCandidate etcAverageDifferential<EEtcMeasure::ePerceptual>(const EtcPixels& pixels);

} // namespace moxtexture
