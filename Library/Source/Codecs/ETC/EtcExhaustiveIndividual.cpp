#include "Codecs/ETC/EtcExhaustiveIndividual.h"

#include <algorithm>
#include <array>
#include <vector>

#include "Codecs/ETC/EtcAverageCandidates.h"
#include "Codecs/ETC/EtcTables.h"

namespace moxtexture
{
namespace
{

/// By table, pixel and modifier.
using ExhaustiveTerms = std::array<std::array<std::array<uint32_t, 4>, 16>, 8>;
/// Left, right, top, bottom.
using HalfErrors = std::array<uint32_t, 4>;

/// Place in the planes of the pixels in the order of the searches: quadrant by quadrant, in each x outer and y inner.
inline size_t quadrantPixel(size_t uiPixel)
{
    const size_t uiQuadrant = uiPixel / 4;
    const size_t x = uiQuadrant % 2 * 2 + uiPixel % 4 / 2;
    const size_t y = uiQuadrant / 2 * 2 + uiPixel % 2;
    return etcPixelIndex(x, y);
}

inline const std::array<uint8_t, 16>& planeOf(const EtcPixels& pixels, size_t uiChannel)
{
    return uiChannel == 0 ? pixels.aui8Red : uiChannel == 1 ? pixels.aui8Green : pixels.aui8Blue;
}

/// The squared errors of one channel at one base value, each added to what `before` has in its place.
template <EEtcMeasure eMeasure>
void addTerms(const EtcPixels& pixels, size_t uiChannel, uint32_t uiBase, const ExhaustiveTerms& before, ExhaustiveTerms& terms)
{
    for (size_t uiTable = 0; uiTable < 8; ++uiTable)
        for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
            for (size_t uiModifier = 0; uiModifier < 4; ++uiModifier)
            {
                const int32_t iModifier = k_aaiEtcModifiers[uiTable][uiModifier];
                const int32_t iCandidate = std::clamp(static_cast<int32_t>(uiBase) + iModifier, 0, 255);
                const int32_t iDifference = planeOf(pixels, uiChannel)[quadrantPixel(uiPixel)] - iCandidate;
                const uint32_t uiSquare = static_cast<uint32_t>(iDifference * iDifference);
                terms[uiTable][uiPixel][uiModifier] =
                    before[uiTable][uiPixel][uiModifier] + EtcMeasure<eMeasure>::k_auiWeights[uiChannel] * uiSquare;
            }
}

/// What each half costs under one table.
inline HalfErrors halfErrors(const ExhaustiveTerms& terms, size_t uiTable)
{
    uint32_t auiQuadrants[4] = {};
    for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
    {
        const auto& four = terms[uiTable][uiPixel];
        auiQuadrants[uiPixel / 4] += *std::min_element(four.begin(), four.end());
    }
    return {auiQuadrants[0] + auiQuadrants[2], auiQuadrants[1] + auiQuadrants[3], auiQuadrants[0] + auiQuadrants[1],
            auiQuadrants[2] + auiQuadrants[3]};
}

/// Whether any half comes below the bound under any table.
inline bool isBelow(const ExhaustiveTerms& terms, uint32_t uiBound)
{
    for (size_t uiTable = 0; uiTable < 8; ++uiTable)
        for (const uint32_t uiError : halfErrors(terms, uiTable))
            if (uiError < uiBound)
                return true;
    return false;
}

/// What each half costs under its best table.
inline HalfErrors allHalvesError(const ExhaustiveTerms& terms)
{
    HalfErrors least = halfErrors(terms, 0);
    for (size_t uiTable = 1; uiTable < 8; ++uiTable)
    {
        const HalfErrors errors = halfErrors(terms, uiTable);
        for (size_t uiHalf = 0; uiHalf < 4; ++uiHalf)
            least[uiHalf] = std::min(least[uiHalf], errors[uiHalf]);
    }
    return least;
}

template <EEtcMeasure eMeasure>
EtcBlockWords packHalves(const EtcPixels& pixels, const EtcColour& levels0, const EtcColour& levels1, bool bFlip)
{
    EtcColour bytes0, bytes1;
    for (size_t i = 0; i < 3; ++i)
    {
        bytes0[i] = static_cast<uint8_t>(expandEtc4(levels0[i]));
        bytes1[i] = static_cast<uint8_t>(expandEtc4(levels1[i]));
    }
    const auto fit0 = EtcMeasure<eMeasure>::fitHalf(pixels, bFlip ? eEtcTop : eEtcLeft, bytes0);
    const auto fit1 = EtcMeasure<eMeasure>::fitHalf(pixels, bFlip ? eEtcBottom : eEtcRight, bytes1);
    return packIndividual(levels0, levels1, bFlip, fit0.uiTable, fit1.uiTable, fit0.ui32Indices | fit1.ui32Indices);
}

template <EEtcMeasure eMeasure>
uint32_t search(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
{
    const EtcAverageCandidate seed = etcAverageIndividual<eMeasure>(pixels);
    HalfErrors least = seed.auiErrors;
    std::array<EtcColour, 4> levels = seed.levels;
    uiBound = std::min(uiBound, seed.uiError);

    const ExhaustiveTerms none{};
    ExhaustiveTerms red, redGreen, all;
    for (uint8_t r = 0; r < 16; ++r)
    {
        addTerms<eMeasure>(pixels, 0, r * 17u, none, red);
        if (!isBelow(red, uiBound))
            continue;
        for (uint8_t g = 0; g < 16; ++g)
        {
            addTerms<eMeasure>(pixels, 1, g * 17u, red, redGreen);
            if (!isBelow(redGreen, uiBound))
                continue;
            bool bImproved = false;
            for (uint8_t b = 0; b < 16; ++b)
            {
                addTerms<eMeasure>(pixels, 2, b * 17u, redGreen, all);
                const HalfErrors errors = allHalvesError(all);
                for (size_t uiHalf = 0; uiHalf < 4; ++uiHalf)
                    if (errors[uiHalf] < least[uiHalf])
                    {
                        least[uiHalf] = errors[uiHalf];
                        levels[uiHalf] = {r, g, b};
                        bImproved = true;
                    }
            }
            if (bImproved)
                uiBound = std::min({uiBound, least[2] + least[3], least[0] + least[1]});
        }
    }
    const bool bFlip = least[2] + least[3] < least[0] + least[1];
    words = packHalves<eMeasure>(pixels, levels[bFlip ? 2 : 0], levels[bFlip ? 3 : 1], bFlip);
    return std::min(least[2] + least[3], least[0] + least[1]);
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
