#include "Codecs/ETC/EtcAlphaSearch.h"

#include <algorithm>

#include "Codecs/ETC/EtcTables.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcAlphaSearchSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef HALVANE_ETC_ALPHA_SEARCH_ONCE
#define HALVANE_ETC_ALPHA_SEARCH_ONCE

namespace moxtexture
{
namespace
{

constexpr size_t k_uiPixels = 16;
constexpr size_t k_uiMostBases = 2; // four, in vectors of 512 bits, take longer
constexpr uint32_t k_uiRowsAtOnce = 16;
constexpr int32_t k_iNoSum = 1000000000;
constexpr int32_t k_iSaturated = 65535;

/// The modifiers by size, rows side by side: how far four values lie below the base, then how far four lie above. Room for the rows
/// of a batch behind the last one.
constexpr std::array<std::array<uint8_t, 256 + k_uiRowsAtOnce>, 8> makeSizes()
{
    std::array<std::array<uint8_t, 256 + k_uiRowsAtOnce>, 8> sizes{};
    for (size_t k = 0; k < 8; ++k)
        for (size_t uiRow = 0; uiRow < 256; ++uiRow)
            sizes[k][uiRow] = static_cast<uint8_t>(k < 4 ? -alphaModifierTable[uiRow][k] : alphaModifierTable[uiRow][k]);
    return sizes;
}

constexpr std::array<std::array<uint8_t, 256 + k_uiRowsAtOnce>, 8> k_aaui8Sizes = makeSizes();

/// The sums of some bases, each a step above the one before: of all pixels, or the first one above the limit as the pixels add up.
using BaseSums = std::array<int32_t, k_uiMostBases>;

struct AlphaSearchState
{
    const EtcStoredAlphas& alphas;
    const EtcAlphaScales& scales;
    int32_t iMean;
    int32_t iBest = k_iNoSum;
    EtcAlphaChoice choice;
};

inline int32_t addUpSquares(const std::array<uint16_t, k_uiPixels>& squares, int32_t iLimit)
{
    int32_t iSum = 0;
    for (const uint16_t ui16Square : squares)
    {
        iSum += ui16Square;
        if (iSum > iLimit)
            break;
    }
    return iSum;
}

} // namespace
} // namespace moxtexture
#endif

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

HWY_INLINE size_t getBasesAtOnce()
{
    return 1;
}

HWY_INLINE void measureBases(const EtcStoredAlphas& alphas, uint32_t uiRow, int32_t iBase, int32_t, int32_t iLimit, bool, BaseSums& sums)
{
    const std::array<int32_t, 8>& row = alphaModifierTable[uiRow];
    std::array<int32_t, 8> values;
    for (size_t k = 0; k < 8; ++k)
        values[k] = std::clamp(iBase + row[k], 0, 255);
    std::array<uint16_t, k_uiPixels> aui16Squares;
    for (size_t i = 0; i < k_uiPixels; ++i)
    {
        const size_t uiFirst = alphas[i] <= iBase ? 0 : 4;
        int32_t iLeast = 255;
        for (size_t k = uiFirst; k < uiFirst + 4; ++k)
            iLeast = std::min(iLeast, std::abs(values[k] - alphas[i]));
        aui16Squares[i] = static_cast<uint16_t>(iLeast * iLeast);
    }
    sums[0] = addUpSquares(aui16Squares, iLimit);
}

#else

/// The sixteen pixels stand in each block of 128 bits, a base a block.
constexpr hn::CappedTag<uint8_t, k_uiPixels * k_uiMostBases> d8;
constexpr hn::Repartition<uint16_t, decltype(d8)> d16;
using V8 = hn::Vec<decltype(d8)>;
using V16 = hn::Vec<decltype(d16)>;

HWY_INLINE size_t getBasesAtOnce()
{
    return hn::Lanes(d8) / k_uiPixels;
}

/// The number of a block times a step.
HWY_INLINE V8 getBlockOffsets(int32_t iStep)
{
    const V8 blocks = hn::ShiftRight<4>(hn::Iota(d8, 0));
    // The steps are powers of two.
    return iStep == 32 ? hn::ShiftLeft<5>(blocks) : iStep == 16 ? hn::ShiftLeft<4>(blocks) : iStep == 4 ? hn::ShiftLeft<2>(blocks) : blocks;
}

HWY_INLINE V8 getDistance(V8 a, V8 b)
{
    return hn::Or(hn::SaturatedSub(a, b), hn::SaturatedSub(b, a));
}

/// The distance of each pixel to the nearest value on its side of the base.
HWY_INLINE V8 getDistances(V8 pixels, V8 bases, uint32_t uiRow)
{
    const V8 above = hn::SaturatedSub(pixels, bases);
    const V8 fromBase = hn::Or(above, hn::SaturatedSub(bases, pixels));
    const auto isBelow = hn::Eq(above, hn::Zero(d8));
    // Values are clamped where they lie no farther below than the base itself, and no farther above than 255 less the base.
    const V8 room = hn::IfThenElse(isBelow, bases, hn::Xor(bases, hn::Set(d8, 255)));
    V8 least = hn::Set(d8, 255);
    for (size_t k = 0; k < 4; ++k)
    {
        const V8 size = hn::IfThenElse(isBelow, hn::Set(d8, k_aaui8Sizes[k][uiRow]), hn::Set(d8, k_aaui8Sizes[k + 4][uiRow]));
        least = hn::Min(least, getDistance(fromBase, hn::Min(size, room)));
    }
    return least;
}

/// Sums from the first lane of a block up to each, no greater than 65535.
HWY_INLINE V16 addUp(V16 squares)
{
    const V16 twos = hn::SaturatedAdd(squares, hn::ShiftLeftLanes<1>(d16, squares));
    const V16 fours = hn::SaturatedAdd(twos, hn::ShiftLeftLanes<2>(d16, twos));
    return hn::SaturatedAdd(fours, hn::ShiftLeftLanes<4>(d16, fours));
}

/// @param bLeftToo  false where sums above the limit need only be above it
HWY_INLINE void measureBases(const EtcStoredAlphas& alphas, uint32_t uiRow, int32_t iBase, int32_t iStep, int32_t iLimit, bool bLeftToo,
                             BaseSums& sums)
{
    const V8 pixels = hn::LoadDup128(d8, alphas.data());
    const V8 distances = getDistances(pixels, hn::Add(hn::Set(d8, static_cast<uint8_t>(iBase)), getBlockOffsets(iStep)), uiRow);
    const V16 first = hn::BitCast(d16, hn::InterleaveLower(d8, distances, hn::Zero(d8)));
    const V16 last = hn::BitCast(d16, hn::InterleaveUpper(d8, distances, hn::Zero(d8)));
    const V16 firstSquares = hn::Mul(first, first);
    const V16 lastSquares = hn::Mul(last, last);

    HWY_ALIGN std::array<uint16_t, 8 * k_uiMostBases> aui16First;
    HWY_ALIGN std::array<uint16_t, 8 * k_uiMostBases> aui16Last;
    const V16 firstSums = addUp(firstSquares);
    const V16 lastSums = hn::SaturatedAdd(addUp(lastSquares), hn::Broadcast<7>(firstSums));
    hn::Store(lastSums, d16, aui16Last.data());
    bool bExact = true;
    for (size_t i = 0; i < getBasesAtOnce(); ++i)
    {
        sums[i] = aui16Last[i * 8 + 7];
        bExact = bExact && sums[i] != k_iSaturated;
    }
    if (iLimit < k_iSaturated)
    {
        if (!bLeftToo)
            return;

        // What a sum has above the limit, less one: those at or below the limit become 65535. The sums grow, so the first of those
        // above it is the least.
        const V16 limit = hn::Set(d16, static_cast<uint16_t>(iLimit));
        const V16 one = hn::Set(d16, 1);
        V16 least = hn::Min(hn::Sub(hn::SaturatedSub(firstSums, limit), one), hn::Sub(hn::SaturatedSub(lastSums, limit), one));
        least = hn::Min(least, hn::ShiftRightLanes<4>(d16, least));
        least = hn::Min(least, hn::ShiftRightLanes<2>(d16, least));
        least = hn::Min(least, hn::ShiftRightLanes<1>(d16, least));
        hn::Store(least, d16, aui16First.data());
        bExact = true;
        for (size_t i = 0; i < getBasesAtOnce(); ++i)
        {
            if (sums[i] > iLimit)
                sums[i] = aui16First[i * 8] + iLimit + 1;
            bExact = bExact && sums[i] != k_iSaturated;
        }
    }
    if (bExact)
        return;

    hn::Store(firstSquares, d16, aui16First.data());
    hn::Store(lastSquares, d16, aui16Last.data());
    for (size_t i = 0; i < getBasesAtOnce(); ++i)
    {
        std::array<uint16_t, k_uiPixels> aui16Squares;
        std::copy_n(aui16First.begin() + static_cast<std::ptrdiff_t>(i * 8), 8, aui16Squares.begin());
        std::copy_n(aui16Last.begin() + static_cast<std::ptrdiff_t>(i * 8), 8, aui16Squares.begin() + 8);
        sums[i] = addUpSquares(aui16Squares, iLimit);
    }
}

#endif

/// One row by itself: where there is no best sum yet, or sums of 65535 and more matter.
HWY_INLINE void searchRow(AlphaSearchState& state, uint32_t uiRow)
{
    const auto iBasesAtOnce = static_cast<int32_t>(getBasesAtOnce());
    int32_t iRowBest = k_iNoSum;
    int32_t iRowBase = state.iMean;
    BaseSums sums{};
    for (size_t uiScale = 0; uiScale < 3 && iRowBest > 0; ++uiScale)
    {
        const int32_t iStep = state.scales.aiSteps[uiScale];
        const int32_t iReach = uiScale == 0 ? state.scales.iFirstReach : state.scales.iLaterReach * iStep;
        const int32_t iEnd = std::min(iRowBase + iReach, 255);
        for (int32_t iFirst = std::max(iRowBase - iReach, 0); iFirst <= iEnd; iFirst += iBasesAtOnce * iStep)
        {
            // The best sum of all may fall within the row, and sums be left at that. It is the row's best then, so they don't count
            // either way: the limit of the row's start serves.
            measureBases(state.alphas, uiRow, iFirst, iStep, state.iBest, iRowBest > state.iBest, sums);
            for (int32_t i = 0; i < iBasesAtOnce && iFirst + i * iStep <= iEnd; ++i)
                if (sums[static_cast<size_t>(i)] < iRowBest)
                {
                    iRowBest = sums[static_cast<size_t>(i)];
                    iRowBase = iFirst + i * iStep;
                }
        }
    }
    if (iRowBest < state.iBest)
    {
        state.iBest = iRowBest;
        state.choice = {iRowBase, uiRow};
    }
}

#if HWY_TARGET != HWY_SCALAR

/// Sixteen rows, one a lane, eight to a vector.
constexpr hn::FixedTag<uint16_t, 8> dRows;
using VRows = hn::Vec<decltype(dRows)>;

/// What sixteen rows come to, if none of those before one has changed the best sum.
struct RowBatch
{
    HWY_ALIGN std::array<uint16_t, k_uiRowsAtOnce> aui16Bases;
    HWY_ALIGN std::array<uint16_t, k_uiRowsAtOnce> aui16FirstSums; ///< after the first scale
    HWY_ALIGN std::array<uint16_t, k_uiRowsAtOnce> aui16Sums;
};

/// The eight values of sixteen rows, side by side in each block of 128 bits, a base a block.
struct RowValues
{
    V8 below0, below1, below2, below3;
    V8 above0, above1, above2, above3;
};

/// The sums of such rows, first and last eight.
struct BlockSums
{
    V16 first;
    V16 last;
};

HWY_INLINE RowValues getRowValues(uint32_t uiFirstRow, V8 bases)
{
    const auto below = [&](size_t k) { return hn::SaturatedSub(bases, hn::LoadDup128(d8, k_aaui8Sizes[k].data() + uiFirstRow)); };
    const auto above = [&](size_t k) { return hn::SaturatedAdd(bases, hn::LoadDup128(d8, k_aaui8Sizes[k + 4].data() + uiFirstRow)); };
    return {below(0), below(1), below(2), below(3), above(0), above(1), above(2), above(3)};
}

/// Sums that are left where they exceed the limit, and are no greater than 65535.
///
/// @param isDead  all bits set where there is nothing to measure: 65535
HWY_INLINE BlockSums sumRows(const EtcStoredAlphas& alphas, const RowValues& values, V8 bases, V8 isDead, uint16_t ui16Limit)
{
    const V8 zero = hn::Zero(d8);
    const V16 zero16 = hn::Zero(d16);
    const V16 limit = hn::Set(d16, ui16Limit);
    V16 first = hn::BitCast(d16, hn::InterleaveLower(d8, isDead, isDead));
    V16 last = hn::BitCast(d16, hn::InterleaveUpper(d8, isDead, isDead));
    auto isFirstOpen = hn::Eq(first, zero16);
    auto isLastOpen = hn::Eq(last, zero16);
    for (const uint8_t ui8Alpha : alphas)
    {
        const V8 alpha = hn::Set(d8, ui8Alpha);
        const auto isBelow = hn::Eq(hn::Max(alpha, bases), bases);
        const V8 distance0 = getDistance(alpha, hn::IfThenElse(isBelow, values.below0, values.above0));
        const V8 distance1 = getDistance(alpha, hn::IfThenElse(isBelow, values.below1, values.above1));
        const V8 distance2 = getDistance(alpha, hn::IfThenElse(isBelow, values.below2, values.above2));
        const V8 distance3 = getDistance(alpha, hn::IfThenElse(isBelow, values.below3, values.above3));
        const V8 least = hn::Min(hn::Min(distance0, distance1), hn::Min(distance2, distance3));
        const V16 firstLeast = hn::BitCast(d16, hn::InterleaveLower(d8, least, zero));
        const V16 lastLeast = hn::BitCast(d16, hn::InterleaveUpper(d8, least, zero));
        first = hn::SaturatedAdd(first, hn::IfThenElseZero(isFirstOpen, hn::Mul(firstLeast, firstLeast)));
        last = hn::SaturatedAdd(last, hn::IfThenElseZero(isLastOpen, hn::Mul(lastLeast, lastLeast)));
        isFirstOpen = hn::Eq(hn::SaturatedSub(first, limit), zero16);
        isLastOpen = hn::Eq(hn::SaturatedSub(last, limit), zero16);
        if (hn::AllFalse(d16, hn::Or(isFirstOpen, isLastOpen)))
            break;
    }
    return {first, last};
}

/// Sixteen rows as bytes in each block; what exceeds 255 becomes 255.
HWY_INLINE V8 packRows(VRows first, VRows last)
{
    const hn::RebindToSigned<decltype(dRows)> dSigned;
    const hn::Half<hn::FixedTag<uint8_t, k_uiRowsAtOnce>> dHalf;
    HWY_ALIGN std::array<uint8_t, k_uiRowsAtOnce> aui8Rows;
    hn::Store(hn::DemoteTo(dHalf, hn::BitCast(dSigned, first)), dHalf, aui8Rows.data());
    hn::Store(hn::DemoteTo(dHalf, hn::BitCast(dSigned, last)), dHalf, aui8Rows.data() + 8);
    return hn::LoadDup128(d8, aui8Rows.data());
}

/// Takes the bases of one half of the rows, an array entry a row and a block, in order.
HWY_INLINE void keepLeast(const uint16_t* HWY_RESTRICT pSums, VRows starts, int32_t iOffset, int32_t iStep, uint16_t* HWY_RESTRICT pBest,
                          uint16_t* HWY_RESTRICT pBases)
{
    VRows best = hn::Load(dRows, pBest);
    VRows base = hn::Load(dRows, pBases);
    for (size_t i = 0; i < getBasesAtOnce(); ++i)
    {
        const VRows sum = hn::Load(dRows, pSums + i * 8);
        const VRows least = hn::Min(best, sum);
        const auto isSame = hn::Eq(least, best);
        const auto ui16Offset = static_cast<uint16_t>(iOffset + static_cast<int32_t>(i) * iStep);
        base = hn::IfThenElse(isSame, base, hn::Add(starts, hn::Set(dRows, ui16Offset)));
        best = least;
    }
    hn::Store(best, dRows, pBest);
    hn::Store(base, dRows, pBases);
}

/// Searches the rows from uiFirstRow as if each came next. Those from uiRowsBehind on have sums of no meaning.
HWY_INLINE void searchRowBatch(const AlphaSearchState& state, uint32_t uiFirstRow, RowBatch& batch)
{
    const auto ui16Limit = static_cast<uint16_t>(state.iBest);
    HWY_ALIGN std::array<uint16_t, 8 * k_uiMostBases> aui16First;
    HWY_ALIGN std::array<uint16_t, 8 * k_uiMostBases> aui16Last;
    batch.aui16Bases.fill(static_cast<uint16_t>(state.iMean));
    batch.aui16Sums.fill(k_iSaturated);
    for (size_t uiScale = 0; uiScale < 3; ++uiScale)
    {
        const int32_t iStep = state.scales.aiSteps[uiScale];
        const int32_t iReach = uiScale == 0 ? state.scales.iFirstReach : state.scales.iLaterReach * iStep;
        const VRows firstCentres = hn::Load(dRows, batch.aui16Bases.data());
        const VRows lastCentres = hn::Load(dRows, batch.aui16Bases.data() + 8);
        const VRows reach = hn::Set(dRows, static_cast<uint16_t>(iReach));
        const VRows firstStarts = hn::SaturatedSub(firstCentres, reach);
        const VRows lastStarts = hn::SaturatedSub(lastCentres, reach);
        const V8 starts = packRows(firstStarts, lastStarts);
        const V8 ranges = hn::Sub(packRows(hn::Add(firstCentres, reach), hn::Add(lastCentres, reach)), starts);
        const V8 blockOffsets = getBlockOffsets(iStep);
        const V8 farthest = hn::Set(d8, 255);
        for (int32_t iOffset = 0; iOffset <= std::min(2 * iReach, 255); iOffset += static_cast<int32_t>(getBasesAtOnce()) * iStep)
        {
            // No offset exceeds 224: the first scale goes on by 16 or 32, two bases at most at once.
            const V8 offsets = hn::Add(hn::Set(d8, static_cast<uint8_t>(iOffset)), blockOffsets);
            const V8 beyond = hn::SaturatedSub(offsets, ranges);
            const V8 isInside = hn::VecFromMask(d8, hn::Eq(beyond, hn::Zero(d8)));
            const V8 isDead = hn::Xor(isInside, farthest);
            const V8 bases = hn::Add(starts, offsets);
            const BlockSums sums = sumRows(state.alphas, getRowValues(uiFirstRow, bases), bases, isDead, ui16Limit);
            hn::Store(sums.first, d16, aui16First.data());
            hn::Store(sums.last, d16, aui16Last.data());
            keepLeast(aui16First.data(), firstStarts, iOffset, iStep, batch.aui16Sums.data(), batch.aui16Bases.data());
            keepLeast(aui16Last.data(), lastStarts, iOffset, iStep, batch.aui16Sums.data() + 8, batch.aui16Bases.data() + 8);
        }
        if (uiScale == 0)
            batch.aui16FirstSums = batch.aui16Sums;
    }
}

/// Goes on from uiRow by a batch of rows, up to the first that changes the best sum or can't be told here.
/// @return the row to go on with
HWY_INLINE uint32_t searchSomeRows(AlphaSearchState& state, uint32_t uiRow)
{
    RowBatch batch;
    searchRowBatch(state, uiRow, batch);
    const uint32_t uiCount = std::min(k_uiRowsAtOnce, state.scales.uiRowsBehind - uiRow);
    for (uint32_t i = 0; i < uiCount; ++i)
    {
        if (batch.aui16FirstSums[i] == k_iSaturated)
        {
            searchRow(state, uiRow + i);
            return uiRow + i + 1;
        }
        if (batch.aui16Sums[i] < state.iBest)
        {
            state.iBest = batch.aui16Sums[i];
            state.choice = {batch.aui16Bases[i], uiRow + i};
            return uiRow + i + 1;
        }
    }
    return uiRow + uiCount;
}

#endif

EtcAlphaChoice searchRows(const EtcStoredAlphas& alphas, int32_t iMean, const EtcAlphaScales& scales)
{
    AlphaSearchState state{alphas, scales, iMean, k_iNoSum, {}};
    uint32_t uiRow = scales.uiFirstRow;
    while (uiRow < scales.uiRowsBehind && state.iBest > 0)
    {
#if HWY_TARGET != HWY_SCALAR
        if (state.iBest < k_iSaturated)
        {
            uiRow = searchSomeRows(state, uiRow);
            continue;
        }
#endif
        searchRow(state, uiRow);
        ++uiRow;
    }
    return state.choice;
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(searchRows);

EtcAlphaChoice searchAlphaRows(const EtcStoredAlphas& alphas, int32_t iMean, const EtcAlphaScales& scales)
{
    return HWY_DYNAMIC_DISPATCH(searchRows)(alphas, iMean, scales);
}

} // namespace moxtexture
#endif
