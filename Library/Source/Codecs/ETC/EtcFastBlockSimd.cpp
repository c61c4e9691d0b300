#include "Codecs/ETC/EtcFastBlock.h"

#include <algorithm>

#include "Codecs/ETC/EtcErrors.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcFastBlockSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/ETC/EtcQuantiseSimd.h"
#include "Codecs/ETC/EtcTryTablesSimd.h"

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

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
