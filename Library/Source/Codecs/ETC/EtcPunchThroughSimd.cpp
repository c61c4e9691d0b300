#include "Codecs/ETC/EtcPunchThroughSearch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcPunchThroughSimd.cpp"
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

/// What pixels choose from in the transparent mode: positions 0 and 3, and the base itself in the place of position 2.
constexpr ModifierPairs<3> makeTransparentModifiers()
{
    ModifierPairs<3> pairs{};
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
    {
        pairs.aai[0][uiTable] = k_modifierPairs.aai[0][uiTable];
        pairs.aai[2][uiTable] = k_modifierPairs.aai[3][uiTable];
    }
    return pairs;
}

constexpr ModifierPairs<3> k_transparentModifiers = makeTransparentModifiers();

/// The first table of least error for the opaque pixels of a half.
template <bool kTransparentMode>
HWY_INLINE TableFit findTableA1(const PlainPixels& pixels, EEtcHalf eHalf, uint32_t ui32Transparent, const BasePairs& base)
{
    if constexpr (kTransparentMode)
        return findLeast(sumTables(pixels, eHalf, base, k_transparentModifiers, ui32Transparent));
    else
        return findLeast(sumTables(pixels, eHalf, base, k_modifierPairs, ui32Transparent));
}

template <bool kTransparentMode>
HWY_INLINE EtcSplitA1 findSplit(const EtcPixels& block, uint32_t ui32Transparent, const EtcSplitBases& bases)
{
    const ColumnPixels columns = orderByColumns(block);
    const PlainPixels pixels(columns);
    constexpr EEtcHalf aaeHalves[2][2] = {{eEtcLeft, eEtcRight}, {eEtcTop, eEtcBottom}};
    BasePairs aaBases[2][2];
    TableFit aaFits[2][2];
    for (size_t uiSplit = 0; uiSplit < 2; ++uiSplit)
        for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
        {
            aaBases[uiSplit][uiHalf] = makeBasePairs(bases[uiSplit][uiHalf]);
            aaFits[uiSplit][uiHalf] =
                findTableA1<kTransparentMode>(pixels, aaeHalves[uiSplit][uiHalf], ui32Transparent, aaBases[uiSplit][uiHalf]);
        }
    const size_t uiBest = aaFits[1][0].uiError + aaFits[1][1].uiError < aaFits[0][0].uiError + aaFits[0][1].uiError ? 1 : 0;
    const TableFit(&aFits)[2] = aaFits[uiBest];

    SplitCandidates candidates;
    for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
        setCandidates(candidates, uiHalf, aaBases[uiBest][uiHalf], aFits[uiHalf].uiTable);
    if constexpr (kTransparentMode)
        for (size_t c = 0; c < 3; ++c)
            for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
            {
                // A second candidate like the first is never strictly better, so that nothing takes position 1.
                int32_t* const piPositions = candidates.aai[c] + uiHalf * k_uiPositions;
                piPositions[1] = piPositions[0];
                piPositions[2] = bases[uiBest][uiHalf][c];
            }
    SplitPaint<int32_t> paint;
    paintSplit<PlainMeasure>(columns, uiBest == 1, candidates, paint);
    const uint32_t ui32Indices = (paint.ui32Indices & ~(ui32Transparent << 16 | ui32Transparent)) | ui32Transparent << 16;
    return {uiBest == 1, {aFits[0].uiTable, aFits[1].uiTable}, ui32Indices, aFits[0].uiError + aFits[1].uiError};
}

EtcSplitA1 findSplitOfMode(const EtcPixels& pixels, uint32_t ui32Transparent, const EtcSplitBases& bases, bool bTransparentMode)
{
    return bTransparentMode ? findSplit<true>(pixels, ui32Transparent, bases) : findSplit<false>(pixels, ui32Transparent, bases);
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(findSplitOfMode);

EtcSplitA1 findSplitA1(const EtcPixels& pixels, uint32_t ui32Transparent, const EtcSplitBases& bases, bool bTransparentMode)
{
    return HWY_DYNAMIC_DISPATCH(findSplitOfMode)(pixels, ui32Transparent, bases, bTransparentMode);
}

} // namespace moxtexture
#endif
