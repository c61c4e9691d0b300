#include "Codecs/ETC/EtcPunchThroughSearch.h"

// Vectors stand in arrays, so they need a size that the compiler knows.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
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

/// The table positions that a mode's pixels choose from.
template <bool kTransparentMode>
constexpr auto k_auiChoices = std::array<size_t, 4>{0, 1, 2, 3};
template <>
constexpr auto k_auiChoices<true> = std::array<size_t, 3>{0, 2, 3};

/// The first table of least error for the opaque pixels of a half.
template <bool kTransparentMode>
HWY_INLINE TableFit findTableA1(const PlainPixels& pixels, EEtcHalf eHalf, uint32_t ui32Transparent, const int32_t (&base)[3])
{
    constexpr auto& auiChoices = k_auiChoices<kTransparentMode>;
    VI least = hn::Set(di, INT32_MAX);
    for (size_t uiTable = 0; uiTable < k_uiTables; uiTable += hn::Lanes(di))
    {
        VI aRedGreen[auiChoices.size()], aBlue[auiChoices.size()], aSquares[auiChoices.size()];
        for (size_t i = 0; i < auiChoices.size(); ++i)
        {
            const bool bBase = kTransparentMode && auiChoices[i] == 2;
            const VI modifier = bBase ? hn::Zero(di) : hn::Load(di, k_modifierColumns.aai[auiChoices[i]] + uiTable);
            const VI red = clampToByte(hn::Add(hn::Set(di, base[0]), modifier));
            const VI green = clampToByte(hn::Add(hn::Set(di, base[1]), modifier));
            aRedGreen[i] = packPair(red, green);
            aBlue[i] = clampToByte(hn::Add(hn::Set(di, base[2]), modifier));
            aSquares[i] = addPairProducts(addPairProducts(hn::Zero(di), aRedGreen[i], aRedGreen[i]), aBlue[i], aBlue[i]);
        }
        VI sum = hn::Zero(di);
        forEachOfHalf(eHalf,
                      [&](size_t uiPixel) HWY_ATTR
                      {
                          if (ui32Transparent >> uiPixel & 1)
                              return;
                          const VI redGreen = hn::Set(di, pixels.aiRedGreen[uiPixel]);
                          const VI blue = hn::Set(di, pixels.aiBlue[uiPixel]);
                          VI error = hn::Set(di, INT32_MAX);
                          for (size_t i = 0; i < auiChoices.size(); ++i)
                              error = hn::Min(error, addPairProducts(addPairProducts(aSquares[i], redGreen, aRedGreen[i]), blue, aBlue[i]));
                          sum = hn::Add(sum, hn::Add(error, hn::Set(di, pixels.aiSquares[uiPixel])));
                      });
        // The table in the lowest bits lets the first of equal ones win; the sum is 1560600 at most.
        least = hn::Min(least, hn::Or(hn::ShiftLeft<3>(sum), hn::Iota(di, static_cast<int32_t>(uiTable))));
    }
    const auto uiKey = static_cast<uint32_t>(hn::GetLane(hn::MinOfLanes(di, least)));
    return {uiKey & 7, uiKey >> 3};
}

template <bool kTransparentMode>
HWY_INLINE EtcSplitA1 findSplit(const EtcPixels& block, uint32_t ui32Transparent, const EtcSplitBases& bases)
{
    const ColumnPixels columns = orderByColumns(block);
    const PlainPixels pixels(columns);
    constexpr EEtcHalf aaeHalves[2][2] = {{eEtcLeft, eEtcRight}, {eEtcTop, eEtcBottom}};
    int32_t aaaiBases[2][2][3];
    TableFit aaFits[2][2];
    for (size_t uiSplit = 0; uiSplit < 2; ++uiSplit)
        for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
        {
            for (size_t c = 0; c < 3; ++c)
                aaaiBases[uiSplit][uiHalf][c] = bases[uiSplit][uiHalf][c];
            aaFits[uiSplit][uiHalf] =
                findTableA1<kTransparentMode>(pixels, aaeHalves[uiSplit][uiHalf], ui32Transparent, aaaiBases[uiSplit][uiHalf]);
        }
    const size_t uiBest = aaFits[1][0].uiError + aaFits[1][1].uiError < aaFits[0][0].uiError + aaFits[0][1].uiError ? 1 : 0;
    const TableFit(&aFits)[2] = aaFits[uiBest];

    SplitCandidates candidates = makeCandidates(aaaiBases[uiBest][0], aFits[0].uiTable, aaaiBases[uiBest][1], aFits[1].uiTable);
    if constexpr (kTransparentMode)
        for (size_t c = 0; c < 3; ++c)
            for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
            {
                // A second candidate like the first is never strictly better, so that nothing takes position 1.
                int32_t* const piPositions = candidates.aai[c] + uiHalf * k_uiPositions;
                piPositions[1] = piPositions[0];
                piPositions[2] = aaaiBases[uiBest][uiHalf][c];
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
