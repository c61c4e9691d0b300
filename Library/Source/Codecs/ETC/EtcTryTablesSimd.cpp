#include "Codecs/ETC/EtcTryTables.h"

#include <algorithm>

// Vectors stand in arrays, so they need a size that the compiler knows.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcTryTablesSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/ETC/EtcTryTablesSimd.h"

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

struct HalfToFit
{
    ColumnPixels pixels;
    EEtcHalf eHalf;
    int32_t aiBase[3];

    HalfToFit(const EtcPixels& block, EEtcHalf eHalfOfBlock, const EtcColour& base)
        : pixels(orderByColumns(block)), eHalf(eHalfOfBlock), aiBase{base[0], base[1], base[2]}
    {
    }

    /// The exact fit of one table.
    template <typename Measure, typename E>
    EtcHalfFit<E> paint(uint32_t uiTable) const
    {
        SplitPaint<typename Measure::T> result;
        const bool bFlip = eHalf == eEtcTop || eHalf == eEtcBottom;
        paintSplit<Measure>(pixels, bFlip, makeCandidates(aiBase, uiTable, aiBase, uiTable), result);
        return {uiTable, result.ui32Indices & indexBitsOf(eHalf), static_cast<E>(sumOfHalf(result, eHalf))};
    }

    /// The best of the tables that pass, in their order.
    template <typename Measure, typename E, typename Passes>
    EtcHalfFit<E> paintBest(Passes passes) const
    {
        EtcHalfFit<E> best;
        bool bFound = false;
        for (uint32_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
        {
            if (!passes(uiTable))
                continue;
            const EtcHalfFit<E> fit = paint<Measure, E>(uiTable);
            if (!bFound || fit.error < best.error)
                best = fit;
            bFound = true;
        }
        return best;
    }
};

EtcHalfFit<uint32_t> fitPlain(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    const HalfToFit half(pixels, eHalf, base);
    return half.paint<PlainMeasure, uint32_t>(findTable(PlainPixels(half.pixels), eHalf, half.aiBase).uiTable);
}

EtcHalfFit<float> fitPerceptual(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    const HalfToFit half(pixels, eHalf, base);
    const NearSums sums = findNearSums(PerceptualPixels(half.pixels), eHalf, half.aiBase);
    const float fMost = *std::min_element(sums.af, sums.af + k_uiTables) + 2 * k_fNearSumsReach;
    return half.paintBest<PerceptualMeasure, float>([&](uint32_t uiTable) HWY_ATTR { return sums.af[uiTable] <= fMost; });
}

EtcHalfFit<uint32_t> fitWeighted(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    return HalfToFit(pixels, eHalf, base).paintBest<WeightedMeasure, uint32_t>([](uint32_t) HWY_ATTR { return true; });
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(fitPlain);
HWY_EXPORT(fitPerceptual);
HWY_EXPORT(fitWeighted);

EtcHalfFit<uint32_t> tryAllTables(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    return HWY_DYNAMIC_DISPATCH(fitPlain)(pixels, eHalf, base);
}

EtcHalfFit<float> tryAllTablesPerceptual(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    return HWY_DYNAMIC_DISPATCH(fitPerceptual)(pixels, eHalf, base);
}

EtcHalfFit<uint32_t> tryAllTablesWeighted(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    return HWY_DYNAMIC_DISPATCH(fitWeighted)(pixels, eHalf, base);
}

} // namespace moxtexture
#endif
