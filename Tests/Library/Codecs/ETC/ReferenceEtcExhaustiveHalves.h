#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "Codecs/ETC/EtcAverageCandidates.h"
#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcMeasure.h"
#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcTables.h"
#include "ReferenceEtcFastBlock.h"

/// The searches of individual and differential mode as plain loops: candidate by candidate, nothing left out but the ranges of
/// colours that cannot come below the bound.
namespace etcreference
{

using moxtexture::EEtcMeasure;
using moxtexture::EtcAverageCandidate;
using moxtexture::EtcMeasure;

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
    return moxtexture::etcPixelIndex(x, y);
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
                const int32_t iModifier = moxtexture::k_aaiEtcModifiers[uiTable][uiModifier];
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

/// How one half is painted with one base colour, as bytes.
template <EEtcMeasure eMeasure>
EtcHalfFit<uint32_t> fitHalf(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    return eMeasure == EEtcMeasure::ePlain ? etcreference::tryAllTables(pixels, eHalf, base)
                                           : etcreference::tryAllTablesWeighted(pixels, eHalf, base);
}

/// Levels of 4 bits if individual, else of 5, as bytes.
inline EtcColour expandLevels(const EtcColour& levels, bool bIndividual)
{
    EtcColour bytes;
    for (size_t i = 0; i < 3; ++i)
        bytes[i] = bIndividual ? expand4(levels[i]) : expand5(levels[i]);
    return bytes;
}

/// The seed: the halves' means, each channel on its own to the nearest level.
template <EEtcMeasure eMeasure>
EtcAverageCandidate averageCandidate(const EtcPixels& pixels, bool bIndividual)
{
    EtcAverageCandidate candidate;
    for (size_t uiFirst = 0; uiFirst < 4; uiFirst += 2)
    {
        const EtcMean mean0 = halfMean(pixels, static_cast<EEtcHalf>(uiFirst));
        const EtcMean mean1 = halfMean(pixels, static_cast<EEtcHalf>(uiFirst + 1));
        EtcColour& levels0 = candidate.levels[uiFirst];
        EtcColour& levels1 = candidate.levels[uiFirst + 1];
        if (bIndividual)
            for (size_t c = 0; c < 3; ++c)
            {
                levels0[c] = static_cast<uint8_t>(mean0[c] * 15.0f / 255.0f + 0.5f);
                levels1[c] = static_cast<uint8_t>(mean1[c] * 15.0f / 255.0f + 0.5f);
            }
        else
        {
            levels0 = quantiseNearest555(mean0).levels;
            levels1 = quantiseNearest555(mean1).levels;
            if (!isWithinReach(levels0, levels1))
            {
                const EtcMean middle = {(mean0[0] + mean1[0]) * 0.5f, (mean0[1] + mean1[1]) * 0.5f, (mean0[2] + mean1[2]) * 0.5f};
                levels0 = quantiseNearest555(middle).levels;
                levels1 = levels0;
            }
        }
    }
    for (size_t uiHalf = 0; uiHalf < 4; ++uiHalf)
        candidate.auiErrors[uiHalf] =
            fitHalf<eMeasure>(pixels, static_cast<EEtcHalf>(uiHalf), expandLevels(candidate.levels[uiHalf], bIndividual)).error;
    const uint32_t uiColumns = candidate.auiErrors[0] + candidate.auiErrors[1];
    const uint32_t uiRows = candidate.auiErrors[2] + candidate.auiErrors[3];
    candidate.bFlip = uiRows < uiColumns;
    candidate.uiError = std::min(uiRows, uiColumns);
    return candidate;
}

template <EEtcMeasure eMeasure>
EtcBlockWords packHalves(const EtcPixels& pixels, const EtcColour& levels0, const EtcColour& levels1, bool bFlip, bool bIndividual)
{
    const auto fit0 = fitHalf<eMeasure>(pixels, bFlip ? moxtexture::eEtcTop : moxtexture::eEtcLeft, expandLevels(levels0, bIndividual));
    const auto fit1 = fitHalf<eMeasure>(pixels, bFlip ? moxtexture::eEtcBottom : moxtexture::eEtcRight, expandLevels(levels1, bIndividual));
    const auto pack = bIndividual ? moxtexture::packIndividual : moxtexture::packDifferential;
    return pack(levels0, levels1, bFlip, fit0.uiTable, fit1.uiTable, fit0.ui32Indices | fit1.ui32Indices);
}

template <EEtcMeasure eMeasure>
uint32_t searchIndividualExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
{
    const EtcAverageCandidate seed = averageCandidate<eMeasure>(pixels, true);
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
    words = packHalves<eMeasure>(pixels, levels[bFlip ? 2 : 0], levels[bFlip ? 3 : 1], bFlip, true);
    return std::min(least[2] + least[3], least[0] + least[1]);
}

template <EEtcMeasure eMeasure>
uint32_t searchDifferentialExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
{
    constexpr size_t uiColours = size_t{32} * 32 * 32;
    const EtcAverageCandidate seed = averageCandidate<eMeasure>(pixels, false);
    uint32_t uiBest = seed.uiError;
    std::array<EtcColour, 2> best = {seed.levels[seed.bFlip ? 2 : 0], seed.levels[seed.bFlip ? 3 : 1]};
    bool bFlip = eMeasure == EEtcMeasure::ePerceptual && seed.bFlip;
    uiBound = std::min(uiBound, seed.uiError);

    // By half and colour.
    std::vector<std::vector<uint32_t>> tables(4, std::vector<uint32_t>(uiColours, EtcMeasure<eMeasure>::k_uiMaxError));
    const ExhaustiveTerms none{};
    ExhaustiveTerms red, redGreen, all;
    for (uint32_t r = 0; r < 32; ++r)
    {
        addTerms<eMeasure>(pixels, 0, moxtexture::expandEtc5(r), none, red);
        if (!isBelow(red, uiBound))
            continue;
        for (uint32_t g = 0; g < 32; ++g)
        {
            addTerms<eMeasure>(pixels, 1, moxtexture::expandEtc5(g), red, redGreen);
            if (!isBelow(redGreen, uiBound))
                continue;
            for (uint32_t b = 0; b < 32; ++b)
            {
                addTerms<eMeasure>(pixels, 2, moxtexture::expandEtc5(b), redGreen, all);
                const HalfErrors errors = allHalvesError(all);
                for (size_t uiHalf = 0; uiHalf < 4; ++uiHalf)
                    tables[uiHalf][(r * 32 + g) * 32 + b] = errors[uiHalf];
            }
        }
    }

    // The second level's range for a first one.
    const auto from = [](uint32_t uiLevel) { return uiLevel < 4 ? 0 : uiLevel - 4; };
    const auto to = [](uint32_t uiLevel) { return std::min<uint32_t>(uiLevel + 3, 31); };
    const auto colourOf = [](uint32_t r, uint32_t g, uint32_t b) -> EtcColour {
        return {static_cast<uint8_t>(r), static_cast<uint8_t>(g), static_cast<uint8_t>(b)};
    };
    for (uint32_t r1 = 0; r1 < 32; ++r1)
        for (uint32_t g1 = 0; g1 < 32; ++g1)
            for (uint32_t b1 = 0; b1 < 32; ++b1)
            {
                const uint32_t uiLeft = tables[0][(r1 * 32 + g1) * 32 + b1];
                const uint32_t uiTop = tables[2][(r1 * 32 + g1) * 32 + b1];
                if (uiLeft >= uiBound && uiTop >= uiBound)
                    continue;
                for (uint32_t r2 = from(r1); r2 <= to(r1); ++r2)
                    for (uint32_t g2 = from(g1); g2 <= to(g1); ++g2)
                        for (uint32_t b2 = from(b1); b2 <= to(b1); ++b2)
                        {
                            const uint32_t uiRows = uiTop + tables[3][(r2 * 32 + g2) * 32 + b2];
                            const uint32_t uiColumns = uiLeft + tables[1][(r2 * 32 + g2) * 32 + b2];
                            if (uiRows < uiBest)
                            {
                                uiBest = uiRows;
                                if (eMeasure == EEtcMeasure::ePerceptual)
                                    bFlip = true;
                            }
                            if (uiColumns < uiBest)
                            {
                                uiBest = uiColumns;
                                best = {colourOf(r1, g1, b1), colourOf(r2, g2, b2)};
                                bFlip = false;
                            }
                        }
                uiBound = std::min(uiBound, uiBest);
            }
    words = packHalves<eMeasure>(pixels, best[0], best[1], bFlip, false);
    return uiBest;
}

} // namespace etcreference
