#include "Codecs/ETC/EtcTryTables.h"

#include <algorithm>

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
namespace
{

struct HalfToFit
{
    ColumnPixels pixels;
    EEtcHalf eHalf;
    BasePairs base;

    HalfToFit(const EtcPixels& block, EEtcHalf eHalfOfBlock, const EtcColour& baseColour)
        : pixels(orderByColumns(block)), eHalf(eHalfOfBlock), base(makeBasePairs(baseColour))
    {
    }

    /// The exact fit of one table.
    template <typename Measure, typename E>
    EtcHalfFit<E> paint(uint32_t uiTable) const
    {
        SplitPaint<typename Measure::T> result;
        const bool bFlip = eHalf == eEtcTop || eHalf == eEtcBottom;
        SplitCandidates candidates;
        for (size_t i = 0; i < 2; ++i)
            setCandidates(candidates, i, base, uiTable);
        paintSplit<Measure>(pixels, bFlip, candidates, result);
        return {uiTable, result.ui32Indices & indexBitsOf(eHalf), static_cast<E>(sumOfHalf(result, eHalf))};
    }

    /// The best of the tables whose bits are set, in their order.
    template <typename Measure, typename E>
    EtcHalfFit<E> paintBest(uint32_t uiTables) const
    {
        EtcHalfFit<E> best = paint<Measure, E>(takeLowestTable(uiTables));
        while (uiTables != 0)
        {
            const EtcHalfFit<E> fit = paint<Measure, E>(takeLowestTable(uiTables));
            if (fit.error < best.error)
                best = fit;
        }
        return best;
    }
};

EtcHalfFit<uint32_t> fitPlain(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    const HalfToFit half(pixels, eHalf, base);
    return half.paint<PlainMeasure, uint32_t>(findTable(PlainPixels(half.pixels), eHalf, half.base).uiTable);
}

EtcHalfFit<float> fitPerceptual(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    const HalfToFit half(pixels, eHalf, base);
    const uint32_t uiTables = findNearTables(NearPixels(half.pixels), eHalf, half.base).uiTables;
    return half.paintBest<PerceptualMeasure, float>(uiTables);
}

EtcHalfFit<uint32_t> fitWeighted(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    return HalfToFit(pixels, eHalf, base).paintBest<WeightedMeasure, uint32_t>(0xFF);
}

} // namespace
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
