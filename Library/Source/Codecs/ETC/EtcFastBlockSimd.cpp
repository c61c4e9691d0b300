#include "Codecs/ETC/EtcFastBlock.h"

#include <algorithm>

#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcQuantise.h"

// Vectors stand in arrays, so they need a size that the compiler knows.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcFastBlockSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/ETC/EtcTryTablesSimd.h"

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

using DU = hn::RebindToUnsigned<DI>;
constexpr DU du{};

// The lanes of the quantisers: the four halves with 5 bits a channel, then the four with 4.
constexpr size_t k_uiHalves = 4;
constexpr size_t k_uiQuantisers = 2 * k_uiHalves;

/// The highest level.
alignas(32) constexpr int32_t k_aiTopLevel[k_uiQuantisers] = {31, 31, 31, 31, 15, 15, 15, 15};
/// A level becomes a byte as level * factor / 4.
alignas(32) constexpr int32_t k_aiExpansion[k_uiQuantisers] = {33, 33, 33, 33, 68, 68, 68, 68};

/// The sums of the eight pixels of each half, twice.
struct HalfSums
{
    alignas(32) int32_t aai[3][k_uiQuantisers];
};

HWY_INLINE HalfSums sumHalves(const ColumnPixels& pixels)
{
    HalfSums sums;
    for (size_t c = 0; c < 3; ++c)
    {
        // Pairs down the columns: of each column the upper one and the lower one.
        int32_t aiPairs[8];
        for (size_t i = 0; i < 8; ++i)
            aiPairs[i] = pixels.aai[c][2 * i] + pixels.aai[c][2 * i + 1];
        const int32_t iTopLeft = aiPairs[0] + aiPairs[2];
        const int32_t iBottomLeft = aiPairs[1] + aiPairs[3];
        const int32_t iTopRight = aiPairs[4] + aiPairs[6];
        const int32_t iBottomRight = aiPairs[5] + aiPairs[7];
        const int32_t aiHalves[k_uiHalves] = {iTopLeft + iBottomLeft, iTopRight + iBottomRight, iTopLeft + iTopRight,
                                              iBottomLeft + iBottomRight};
        for (size_t i = 0; i < k_uiQuantisers; ++i)
            sums.aai[c][i] = aiHalves[i % k_uiHalves];
    }
    return sums;
}

/// Colours by quantiser.
struct QuantisedHalves
{
    alignas(32) uint32_t aui32Levels[k_uiQuantisers]; ///< red, green, blue in 8 bits each, red lowest
    alignas(32) int32_t aiRedGreen[k_uiQuantisers];   ///< bytes as in BasePairs
    alignas(32) int32_t aiBlue[k_uiQuantisers];
};

HWY_INLINE VI expandLevels(VI levels, VI expansion)
{
    return hn::ShiftRight<2>(hn::Mul(levels, expansion));
}

HWY_INLINE void storeColours(const VI (&aLevels)[3], const VI (&aBytes)[3], size_t i, QuantisedHalves& halves)
{
    const VI levels = hn::Or(aLevels[0], hn::Or(hn::ShiftLeft<8>(aLevels[1]), hn::ShiftLeft<16>(aLevels[2])));
    hn::Store(hn::BitCast(du, levels), du, halves.aui32Levels + i);
    hn::Store(hn::Or(aBytes[0], hn::ShiftLeft<16>(aBytes[1])), di, halves.aiRedGreen + i);
    hn::Store(hn::Or(aBytes[2], hn::Set(di, static_cast<int32_t>(k_ui32ClampedAway))), di, halves.aiBlue + i);
}

/// v / 2040, rounded down, for v below 2^16.
HWY_INLINE VI divideBy2040(VI v)
{
    const VI eighth = hn::ShiftRight<3>(v);
    return hn::ShiftRight<8>(hn::Add(hn::Add(eighth, hn::Set(di, 1)), hn::ShiftRight<8>(eighth)));
}

/// quantiseNearest555 and quantiseNearest444. A sum of eight bytes makes level * 2040.
HWY_INLINE void quantiseNearest(const HalfSums& sums, QuantisedHalves& halves)
{
    for (size_t i = 0; i < k_uiQuantisers; i += hn::Lanes(di))
    {
        const VI top = hn::Load(di, k_aiTopLevel + i);
        const VI expansion = hn::Load(di, k_aiExpansion + i);
        VI aLevels[3], aBytes[3];
        for (size_t c = 0; c < 3; ++c)
        {
            aLevels[c] = divideBy2040(hn::Add(hn::Mul(hn::Load(di, sums.aai[c] + i), top), hn::Set(di, 1020)));
            aBytes[c] = expandLevels(aLevels[c], expansion);
        }
        storeColours(aLevels, aBytes, i, halves);
    }
}

/// A choice between the low and the high level for every channel; bits 0 to 2 say which of red, green and blue are high.
constexpr int32_t k_aiChoices[8] = {0, 1, 2, 4, 3, 5, 6, 7};

/// quantiseCombined555 and quantiseCombined444, plain or perceptual.
template <bool kPerceptual>
HWY_INLINE void quantiseCombined(const HalfSums& sums, QuantisedHalves& halves)
{
    for (size_t i = 0; i < k_uiQuantisers; i += hn::Lanes(di))
    {
        const VI top = hn::Load(di, k_aiTopLevel + i);
        const VI expansion = hn::Load(di, k_aiExpansion + i);
        VI aLow[3], aHigh[3], aLowBytes[3], aHighBytes[3];
        VF aaErrors[2][3];
        for (size_t c = 0; c < 3; ++c)
        {
            const VI sum = hn::Load(di, sums.aai[c] + i);
            const auto error = [&](VI bytes) HWY_ATTR
            { return hn::Mul(hn::ConvertTo(df, hn::Sub(hn::ShiftLeft<3>(bytes), sum)), hn::Set(df, 0.125f)); };
            aLow[c] = divideBy2040(hn::Mul(sum, top));
            aHigh[c] = hn::Min(hn::Add(aLow[c], hn::Set(di, 1)), top);
            aLowBytes[c] = expandLevels(aLow[c], expansion);
            aHighBytes[c] = expandLevels(aHigh[c], expansion);
            aaErrors[0][c] = error(aLowBytes[c]);
            aaErrors[1][c] = error(aHighBytes[c]);
        }

        // The squares for red and green, red and blue, green and blue, each low or high.
        VF aaaSquares[3][2][2];
        for (size_t uiPair = 0; uiPair < 3; ++uiPair)
            for (size_t a = 0; a < 2; ++a)
                for (size_t b = 0; b < 2; ++b)
                {
                    const VF difference = hn::Sub(aaErrors[a][uiPair == 2 ? 1 : 0], aaErrors[b][uiPair == 0 ? 1 : 2]);
                    VF square = hn::Mul(difference, difference);
                    if constexpr (kPerceptual)
                        square = hn::Mul(hn::Set(df, k_afEtcHueWeights[uiPair]), square);
                    aaaSquares[uiPair][a][b] = square;
                }

        VF least = hn::Zero(df);
        VI choice = hn::Zero(di);
        for (size_t n = 0; n < 8; ++n)
        {
            const auto uiChoice = static_cast<size_t>(k_aiChoices[n]);
            const size_t uiRed = uiChoice & 1;
            const size_t uiGreen = uiChoice >> 1 & 1;
            const size_t uiBlue = uiChoice >> 2;
            const VF cost = hn::Add(hn::Add(aaaSquares[0][uiRed][uiGreen], aaaSquares[1][uiRed][uiBlue]), aaaSquares[2][uiGreen][uiBlue]);
            if (n == 0)
            {
                least = cost;
                continue;
            }
            const auto isLess = hn::Lt(cost, least);
            least = hn::IfThenElse(isLess, cost, least);
            choice = hn::IfThenElse(hn::RebindMask(di, isLess), hn::Set(di, k_aiChoices[n]), choice);
        }
        if constexpr (!kPerceptual)
        {
            VF lowSquares = hn::Zero(df);
            for (size_t c = 0; c < 3; ++c)
                lowSquares = hn::Add(lowSquares, hn::Mul(aaErrors[0][c], aaErrors[0][c]));
            const auto isHigh = hn::RebindMask(di, hn::Gt(lowSquares, hn::Set(df, k_fEtcGreyLimit)));
            const VI settled = hn::IfThenElse(isHigh, hn::Set(di, 7), hn::Zero(di));
            const auto isAlike = hn::Or(hn::Eq(choice, hn::Zero(di)), hn::Eq(choice, hn::Set(di, 7)));
            choice = hn::IfThenElse(hn::And(isAlike, hn::Eq(top, hn::Set(di, 15))), settled, choice);
        }

        VI aLevels[3], aBytes[3];
        for (size_t c = 0; c < 3; ++c)
        {
            const VI bit = hn::Set(di, 1 << c);
            const auto isHigh = hn::Eq(hn::And(choice, bit), bit);
            aLevels[c] = hn::IfThenElse(isHigh, aHigh[c], aLow[c]);
            aBytes[c] = hn::IfThenElse(isHigh, aHighBytes[c], aLowBytes[c]);
        }
        storeColours(aLevels, aBytes, i, halves);
    }
}

/// The base colours of the two halves of a split.
struct SplitBases
{
    bool bFlip;
    bool bDifferential;
    uint32_t aui32Levels[2];
    BasePairs aBases[2];
};

/// isEtcDifferential() for three channels at once: an offset less -4 stays in the lower 3 bits of its byte.
HWY_INLINE bool isWithinReach(uint32_t ui32Levels0, uint32_t ui32Levels1)
{
    return ((ui32Levels1 + 0x848484 - ui32Levels0) & 0xF8F8F8) == 0x808080;
}

HWY_INLINE void chooseBases(const QuantisedHalves& halves, bool bFlip, SplitBases& bases)
{
    const size_t uiFirst = bFlip ? eEtcTop : eEtcLeft;
    bases.bFlip = bFlip;
    bases.bDifferential = isWithinReach(halves.aui32Levels[uiFirst], halves.aui32Levels[uiFirst + 1]);
    const size_t uiQuantiser = bases.bDifferential ? uiFirst : uiFirst + k_uiHalves;
    for (size_t i = 0; i < 2; ++i)
    {
        bases.aui32Levels[i] = halves.aui32Levels[uiQuantiser + i];
        bases.aBases[i] = {halves.aiRedGreen[uiQuantiser + i], halves.aiBlue[uiQuantiser + i]};
    }
}

HWY_INLINE EEtcHalf halfOf(bool bFlip, size_t i)
{
    return static_cast<EEtcHalf>((bFlip ? eEtcTop : eEtcLeft) + static_cast<int>(i));
}

HWY_INLINE EtcColour toColour(uint32_t ui32Levels)
{
    return {static_cast<uint8_t>(ui32Levels), static_cast<uint8_t>(ui32Levels >> 8), static_cast<uint8_t>(ui32Levels >> 16)};
}

/// A split with its tables.
struct SplitFit
{
    const SplitBases* pBases;
    uint32_t auiTables[2];
};

template <typename Measure>
HWY_INLINE void paintFit(const ColumnPixels& pixels, const SplitFit& fit, SplitPaint<typename Measure::T>& paint)
{
    const SplitBases& bases = *fit.pBases;
    SplitCandidates candidates;
    for (size_t i = 0; i < 2; ++i)
        setCandidates(candidates, i, bases.aBases[i], fit.auiTables[i]);
    paintSplit<Measure>(pixels, bases.bFlip, candidates, paint);
}

HWY_INLINE EtcBlockWords packFit(const SplitFit& fit, uint32_t ui32Indices)
{
    const SplitBases& bases = *fit.pBases;
    const auto pack = bases.bDifferential ? packDifferential : packIndividual;
    return pack(toColour(bases.aui32Levels[0]), toColour(bases.aui32Levels[1]), bases.bFlip, fit.auiTables[0], fit.auiTables[1],
                ui32Indices);
}

/// Results by half, kept for a second search whose base is that of the first.
template <typename Result>
class CFitMemory
{
public:
    template <typename Find>
    HWY_INLINE const Result& get(const SplitBases& bases, size_t i, Find find)
    {
        const EEtcHalf eHalf = halfOf(bases.bFlip, i);
        const BasePairs& base = bases.aBases[i];
        BasePairs& known = m_aBases[eHalf];
        if (known.iRedGreen != base.iRedGreen || known.iBlue != base.iBlue)
        {
            known = base;
            m_aResults[eHalf] = find(eHalf, base);
        }
        return m_aResults[eHalf];
    }

private:
    static constexpr BasePairs k_none = {-1, -1};
    BasePairs m_aBases[k_uiHalves] = {k_none, k_none, k_none, k_none};
    Result m_aResults[k_uiHalves];
};

/// The plain form's two searches are one: of the four splits, nearest levels before combined ones and left and right before top
/// and bottom, the first with the least error. What the searches sum is what the decoded block measures.
double encodePlain(const EtcPixels& block, EtcBlockWords& words)
{
    const ColumnPixels pixels = orderByColumns(block);
    const PlainPixels searchPixels(pixels);
    const HalfSums sums = sumHalves(pixels);
    CFitMemory<TableFit> memory;
    SplitBases aBases[4];
    SplitFit best{};
    uint32_t uiBestError = UINT32_MAX;

    const auto trySplit = [&](const QuantisedHalves& halves, bool bFlip, SplitBases& bases) HWY_ATTR
    {
        chooseBases(halves, bFlip, bases);
        SplitFit fit = {&bases, {}};
        uint32_t uiError = 0;
        for (size_t i = 0; i < 2 && uiError < uiBestError; ++i)
        {
            const TableFit& half =
                memory.get(bases, i, [&](EEtcHalf eHalf, const BasePairs& base) HWY_ATTR { return findTable(searchPixels, eHalf, base); });
            fit.auiTables[i] = half.uiTable;
            uiError += half.uiError;
        }
        if (uiError >= uiBestError)
            return;
        best = fit;
        uiBestError = uiError;
    };
    QuantisedHalves halves;
    quantiseNearest(sums, halves);
    trySplit(halves, false, aBases[0]);
    trySplit(halves, true, aBases[1]);
    if (uiBestError > 0)
    {
        quantiseCombined<false>(sums, halves);
        trySplit(halves, false, aBases[2]);
        trySplit(halves, true, aBases[3]);
    }

    SplitPaint<int32_t> paint;
    paintFit<PlainMeasure>(pixels, best, paint);
    words = packFit(best, paint.ui32Indices);
    return uiBestError;
}

/// blockErrorPerceptual(), row by row, from squares that stand column by column.
template <typename T>
HWY_INLINE double measurePerceptual(const SplitPaint<T>& paint)
{
    double fSum = 0.0;
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            const size_t i = x * 4 + y;
            fSum += 0.299 * paint.aaiSquares[0][i] + 0.587 * paint.aaiSquares[1][i] + 0.114 * paint.aaiSquares[2][i];
        }
    return fSum;
}

/// The perceptual search of a block. Sums of floats settle which table and split wins within a search, and sums of doubles which
/// search; near sums only tell which of them can't.
class CPerceptualSearch
{
public:
    HWY_INLINE explicit CPerceptualSearch(const ColumnPixels& pixels) : m_pixels(pixels), m_searchPixels(pixels) {}

    /// Finds the split of one search. Splits whose errors are certainly above fLimit are left out: the search then gives the other
    /// one, which is above it as well where the search proper would have given the one left out.
    /// @param aBases  of both splits; stay in use by what is found
    /// @return false if none is left
    HWY_INLINE bool findSplit(const SplitBases (&aBases)[2], double fLimit, SplitFit& fit, SplitPaint<float>& paint)
    {
        const double fNearLimit = fLimit * (k_fMostNear * 1.001);
        const NearSplit upright = findNearSplit(aBases[0], fNearLimit);
        const NearSplit flipped = findNearSplit(aBases[1], std::min(fNearLimit, static_cast<double>(leastCertainAbove(upright.uiError))));
        if (upright.uiError == k_uiLeftOut && flipped.uiError == k_uiLeftOut)
            return false;
        // (One that is left out is far above any other.)
        if (upright.uiError >= leastCertainAbove(flipped.uiError))
            paintBest(flipped, fit, paint);
        else if (flipped.uiError >= leastCertainAbove(upright.uiError))
            paintBest(upright, fit, paint);
        else
        {
            const float fError = paintBest(upright, fit, paint);
            SplitFit flippedFit;
            SplitPaint<float> flippedPaint;
            if (fError > paintBest(flipped, flippedFit, flippedPaint))
            {
                fit = flippedFit;
                paint = flippedPaint;
            }
        }
        return true;
    }

private:
    static constexpr uint32_t k_uiLeftOut = UINT32_MAX / 2;

    struct NearSplit
    {
        const SplitBases* pBases;
        uint32_t auiTables[2]; ///< of each half the tables to try
        uint32_t uiError;
    };

    HWY_INLINE NearSplit findNearSplit(const SplitBases& bases, double fLimit)
    {
        NearSplit split = {&bases, {}, 0};
        for (size_t i = 0; i < 2; ++i)
        {
            const NearFit& half = m_memory.get(
                bases, i, [&](EEtcHalf eHalf, const BasePairs& base) HWY_ATTR { return findNearTables(m_searchPixels, eHalf, base); });
            split.auiTables[i] = half.uiTables;
            split.uiError += half.uiError;
            if (split.uiError > fLimit)
            {
                split.uiError = k_uiLeftOut;
                break;
            }
        }
        return split;
    }

    /// Paints a split with the best tables of its halves.
    /// @return its error
    HWY_INLINE float paintBest(const NearSplit& split, SplitFit& fit, SplitPaint<float>& paint)
    {
        uint32_t auiTables[2] = {split.auiTables[0], split.auiTables[1]};
        float afErrors[2];
        fit.pBases = split.pBases;
        for (size_t i = 0; i < 2; ++i)
            fit.auiTables[i] = takeLowestTable(auiTables[i]);
        paintFit<PerceptualMeasure>(m_pixels, fit, paint);
        for (size_t i = 0; i < 2; ++i)
            afErrors[i] = sumOfHalf(paint, halfOf(split.pBases->bFlip, i));
        if (auiTables[0] == 0 && auiTables[1] == 0)
            return afErrors[0] + afErrors[1];

        while (auiTables[0] != 0 || auiTables[1] != 0)
        {
            SplitFit next = fit;
            for (size_t i = 0; i < 2; ++i)
                if (auiTables[i] != 0)
                    next.auiTables[i] = takeLowestTable(auiTables[i]);
            paintFit<PerceptualMeasure>(m_pixels, next, paint);
            for (size_t i = 0; i < 2; ++i)
            {
                const float fError = sumOfHalf(paint, halfOf(split.pBases->bFlip, i));
                if (fError >= afErrors[i])
                    continue;
                afErrors[i] = fError;
                fit.auiTables[i] = next.auiTables[i];
            }
        }
        paintFit<PerceptualMeasure>(m_pixels, fit, paint);
        return afErrors[0] + afErrors[1];
    }

    const ColumnPixels& m_pixels;
    NearPixels m_searchPixels;
    CFitMemory<NearFit> m_memory;
};

HWY_INLINE void chooseBothBases(const QuantisedHalves& halves, SplitBases (&aBases)[2])
{
    chooseBases(halves, false, aBases[0]);
    chooseBases(halves, true, aBases[1]);
}

double encodePerceptual(const EtcPixels& block, EtcBlockWords& words)
{
    const ColumnPixels pixels = orderByColumns(block);
    const HalfSums sums = sumHalves(pixels);
    CPerceptualSearch search(pixels);
    QuantisedHalves halves;
    SplitBases aBases[2];
    SplitFit fit{};
    SplitPaint<float> paint{};
    quantiseNearest(sums, halves);
    chooseBothBases(halves, aBases);
    static_cast<void>(search.findSplit(aBases, k_fEtcMaxError, fit, paint));
    double fError = measurePerceptual(paint);
    words = packFit(fit, paint.ui32Indices);
    if (fError == 0.0)
        return fError;

    quantiseCombined<true>(sums, halves);
    chooseBothBases(halves, aBases);
    if (!search.findSplit(aBases, fError, fit, paint))
        return fError;
    const double fSecondError = measurePerceptual(paint);
    if (fSecondError < fError)
    {
        fError = fSecondError;
        words = packFit(fit, paint.ui32Indices);
    }
    return fError;
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(encodePlain);
HWY_EXPORT(encodePerceptual);

double etcFastBlockETC1(const EtcPixels& pixels, EtcBlockWords& words)
{
    return HWY_DYNAMIC_DISPATCH(encodePlain)(pixels, words);
}

double etcFastBlockETC1Perceptual(const EtcPixels& pixels, EtcBlockWords& words)
{
    return HWY_DYNAMIC_DISPATCH(encodePerceptual)(pixels, words);
}

} // namespace moxtexture
#endif
