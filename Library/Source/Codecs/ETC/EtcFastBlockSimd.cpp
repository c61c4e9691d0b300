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

/// Colours by channel and quantiser.
struct QuantisedHalves
{
    alignas(32) int32_t aaiLevels[3][k_uiQuantisers];
    alignas(32) int32_t aaiBytes[3][k_uiQuantisers];
};

HWY_INLINE VI expandLevels(VI levels, VI expansion)
{
    return hn::ShiftRight<2>(hn::Mul(levels, expansion));
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
        for (size_t c = 0; c < 3; ++c)
        {
            const VI levels = divideBy2040(hn::Add(hn::Mul(hn::Load(di, sums.aai[c] + i), top), hn::Set(di, 1020)));
            hn::Store(levels, di, halves.aaiLevels[c] + i);
            hn::Store(expandLevels(levels, expansion), di, halves.aaiBytes[c] + i);
        }
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

        for (size_t c = 0; c < 3; ++c)
        {
            const VI bit = hn::Set(di, 1 << c);
            const auto isHigh = hn::Eq(hn::And(choice, bit), bit);
            hn::Store(hn::IfThenElse(isHigh, aHigh[c], aLow[c]), di, halves.aaiLevels[c] + i);
            hn::Store(hn::IfThenElse(isHigh, aHighBytes[c], aLowBytes[c]), di, halves.aaiBytes[c] + i);
        }
    }
}

/// The base colours of the two halves of a split.
struct SplitBases
{
    bool bFlip;
    bool bDifferential;
    int32_t aaiLevels[2][3];
    int32_t aaiBytes[2][3];
};

HWY_INLINE SplitBases chooseBases(const QuantisedHalves& halves, bool bFlip)
{
    const size_t uiFirst = bFlip ? eEtcTop : eEtcLeft;
    uint32_t uiBeyond = 0;
    for (const auto& aiLevels : halves.aaiLevels)
        uiBeyond |= static_cast<uint32_t>(aiLevels[uiFirst + 1] - aiLevels[uiFirst] + 4);
    SplitBases bases;
    bases.bFlip = bFlip;
    bases.bDifferential = uiBeyond < 8;
    const size_t uiQuantiser = bases.bDifferential ? uiFirst : uiFirst + k_uiHalves;
    for (size_t i = 0; i < 2; ++i)
        for (size_t c = 0; c < 3; ++c)
        {
            bases.aaiLevels[i][c] = halves.aaiLevels[c][uiQuantiser + i];
            bases.aaiBytes[i][c] = halves.aaiBytes[c][uiQuantiser + i];
        }
    return bases;
}

HWY_INLINE EEtcHalf halfOf(bool bFlip, size_t i)
{
    return static_cast<EEtcHalf>((bFlip ? eEtcTop : eEtcLeft) + static_cast<int>(i));
}

HWY_INLINE bool isSameColour(const int32_t (&a)[3], const int32_t (&b)[3])
{
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}

HWY_INLINE EtcColour toColour(const int32_t (&levels)[3])
{
    return {static_cast<uint8_t>(levels[0]), static_cast<uint8_t>(levels[1]), static_cast<uint8_t>(levels[2])};
}

/// A split with its tables.
struct SplitFit
{
    SplitBases bases;
    uint32_t auiTables[2];
};

template <typename Measure>
HWY_INLINE void paintFit(const ColumnPixels& pixels, const SplitFit& fit, SplitPaint<typename Measure::T>& paint)
{
    const SplitBases& bases = fit.bases;
    paintSplit<Measure>(pixels, bases.bFlip, makeCandidates(bases.aaiBytes[0], fit.auiTables[0], bases.aaiBytes[1], fit.auiTables[1]),
                        paint);
}

HWY_INLINE EtcBlockWords packFit(const SplitFit& fit, uint32_t ui32Indices)
{
    const SplitBases& bases = fit.bases;
    const auto pack = bases.bDifferential ? packDifferential : packIndividual;
    return pack(toColour(bases.aaiLevels[0]), toColour(bases.aaiLevels[1]), bases.bFlip, fit.auiTables[0], fit.auiTables[1], ui32Indices);
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
        const int32_t(&base)[3] = bases.aaiBytes[i];
        if (!m_abKnown[eHalf] || !isSameColour(m_aaiBases[eHalf], base))
        {
            m_abKnown[eHalf] = true;
            std::copy_n(base, 3, m_aaiBases[eHalf]);
            m_aResults[eHalf] = find(eHalf, base);
        }
        return m_aResults[eHalf];
    }

private:
    bool m_abKnown[k_uiHalves] = {};
    int32_t m_aaiBases[k_uiHalves][3];
    Result m_aResults[k_uiHalves];
};

/// The plain form's two searches are one: of the four splits, nearest levels before combined ones and left and right before top
/// and bottom, the first with the least error. What the searches sum is what the decoded block measures.
double encodePlain(const EtcPixels& block, EtcBlockWords& words)
{
    const ColumnPixels pixels = orderByColumns(block);
    const PlainPixels plainPixels(pixels);
    const HalfSums sums = sumHalves(pixels);
    CFitMemory<TableFit> memory;
    SplitFit best{};
    uint32_t uiBestError = UINT32_MAX;

    const auto trySplits = [&](const QuantisedHalves& halves) HWY_ATTR
    {
        for (size_t uiFlip = 0; uiFlip < 2; ++uiFlip)
        {
            SplitFit fit;
            fit.bases = chooseBases(halves, uiFlip == 1);
            uint32_t uiError = 0;
            for (size_t i = 0; i < 2 && uiError < uiBestError; ++i)
            {
                const TableFit& half = memory.get(
                    fit.bases, i, [&](EEtcHalf eHalf, const int32_t(&base)[3]) HWY_ATTR { return findTable(plainPixels, eHalf, base); });
                fit.auiTables[i] = half.uiTable;
                uiError += half.uiError;
            }
            if (uiError >= uiBestError)
                continue;
            best = fit;
            uiBestError = uiError;
        }
    };
    QuantisedHalves halves;
    quantiseNearest(sums, halves);
    trySplits(halves);
    if (uiBestError > 0)
    {
        quantiseCombined<false>(sums, halves);
        trySplits(halves);
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
    HWY_INLINE explicit CPerceptualSearch(const ColumnPixels& pixels) : m_pixels(pixels), m_nearPixels(pixels) {}

    /// Finds the split of one search. Splits that can't come to an error below fLimit are left out.
    /// @return false if none is left
    HWY_INLINE bool findSplit(const QuantisedHalves& halves, double fLimit, SplitFit& fit, SplitPaint<float>& paint)
    {
        NearSplit aSplits[2];
        for (size_t uiFlip = 0; uiFlip < 2; ++uiFlip)
            aSplits[uiFlip] = findNearSplit(chooseBases(halves, uiFlip == 1), fLimit + k_fLimitReach);
        const float fUpright = aSplits[0].fError;
        const float fFlipped = aSplits[1].fError;
        if (fUpright == k_fLeftOut && fFlipped == k_fLeftOut)
            return false;
        if (fUpright > fFlipped + k_fSplitReach || fFlipped > fUpright + k_fSplitReach)
        {
            paintBest(aSplits[fUpright > fFlipped ? 1 : 0], fit, paint);
            return true;
        }
        const float fError = paintBest(aSplits[0], fit, paint);
        SplitFit flippedFit;
        SplitPaint<float> flippedPaint;
        if (fError > paintBest(aSplits[1], flippedFit, flippedPaint))
        {
            fit = flippedFit;
            paint = flippedPaint;
        }
        return true;
    }

private:
    static constexpr float k_fLeftOut = 1e30f;
    /// Near sums of two halves each.
    static constexpr float k_fSplitReach = 5 * k_fNearSumsReach;
    /// Far enough that the other split's error, where it is no less, is above the limit too.
    static constexpr float k_fLimitReach = 10 * k_fNearSumsReach;

    struct NearHalf
    {
        NearSums sums;
        float fLeast;
    };

    struct NearSplit
    {
        SplitBases bases;
        NearHalf aHalves[2];
        float fError;
    };

    HWY_INLINE NearSplit findNearSplit(const SplitBases& bases, double fLimit)
    {
        NearSplit split;
        split.bases = bases;
        split.fError = 0.0f;
        for (size_t i = 0; i < 2; ++i)
        {
            split.aHalves[i] = m_memory.get(bases, i,
                                            [&](EEtcHalf eHalf, const int32_t(&base)[3]) HWY_ATTR
                                            {
                                                NearHalf half;
                                                half.sums = findNearSums(m_nearPixels, eHalf, base);
                                                half.fLeast = *std::min_element(half.sums.af, half.sums.af + k_uiTables);
                                                return half;
                                            });
            split.fError += split.aHalves[i].fLeast;
            if (split.fError > fLimit)
            {
                split.fError = k_fLeftOut;
                break;
            }
        }
        return split;
    }

    /// The first table from uiTable on that may have the least error; 8 if none has.
    static HWY_INLINE uint32_t nextTable(const NearHalf& half, uint32_t uiTable)
    {
        while (uiTable < k_uiTables && half.sums.af[uiTable] > half.fLeast + 2 * k_fNearSumsReach)
            ++uiTable;
        return uiTable;
    }

    /// Paints a split with the best tables of its halves.
    /// @return its error
    HWY_INLINE float paintBest(const NearSplit& split, SplitFit& fit, SplitPaint<float>& paint)
    {
        fit.bases = split.bases;
        float afErrors[2];
        uint32_t auiNext[2];
        for (size_t i = 0; i < 2; ++i)
        {
            fit.auiTables[i] = nextTable(split.aHalves[i], 0);
            auiNext[i] = nextTable(split.aHalves[i], fit.auiTables[i] + 1);
        }
        paintFit<PerceptualMeasure>(m_pixels, fit, paint);
        for (size_t i = 0; i < 2; ++i)
            afErrors[i] = sumOfHalf(paint, halfOf(split.bases.bFlip, i));
        if (auiNext[0] == k_uiTables && auiNext[1] == k_uiTables)
            return afErrors[0] + afErrors[1];

        while (auiNext[0] < k_uiTables || auiNext[1] < k_uiTables)
        {
            SplitFit next = fit;
            for (size_t i = 0; i < 2; ++i)
                if (auiNext[i] < k_uiTables)
                {
                    next.auiTables[i] = auiNext[i];
                    auiNext[i] = nextTable(split.aHalves[i], auiNext[i] + 1);
                }
            paintFit<PerceptualMeasure>(m_pixels, next, paint);
            for (size_t i = 0; i < 2; ++i)
            {
                const float fError = sumOfHalf(paint, halfOf(split.bases.bFlip, i));
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
    PerceptualPixels m_nearPixels;
    CFitMemory<NearHalf> m_memory;
};

double encodePerceptual(const EtcPixels& block, EtcBlockWords& words)
{
    const ColumnPixels pixels = orderByColumns(block);
    const HalfSums sums = sumHalves(pixels);
    CPerceptualSearch search(pixels);
    QuantisedHalves halves;
    SplitFit fit{};
    SplitPaint<float> paint{};
    quantiseNearest(sums, halves);
    static_cast<void>(search.findSplit(halves, k_fEtcMaxError, fit, paint));
    double fError = measurePerceptual(paint);
    words = packFit(fit, paint.ui32Indices);
    if (fError == 0.0)
        return fError;
    quantiseCombined<true>(sums, halves);
    if (!search.findSplit(halves, fError, fit, paint))
        return fError;
    const double fSecondError = measurePerceptual(paint);
    if (fSecondError < fError)
    {
        fError = fSecondError;
        words = packFit(fit, paint.ui32Indices);
    }
    return fError;
}

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
