#include "Codecs/ETC/EacSearch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EacSearchSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef HALVANE_EAC_SEARCH_ONCE
#define HALVANE_EAC_SEARCH_ONCE

namespace moxtexture
{
namespace
{

/// Distances beyond this one count as this one, so that a sum of sixteen squares stays below 2^31. A sum below this one's square
/// is thereby exact, any other is too small, if anything, and is taken again in full where it matters.
constexpr int32_t k_iFarthest = 11585;
constexpr int32_t k_iExactBelow = k_iFarthest * k_iFarthest;

/// More than the least sum of any sixteen pixels: base 128, table 0, multiplier 15 have a value within 9700 of everything.
constexpr int64_t k_iAnySum = 0x7FFFFFFF;

constexpr size_t k_uiPairs = 8;
constexpr size_t k_uiMostLanes = 16;
constexpr int32_t k_iZeroPlace = -EacValues::k_iLeastPlace;

/// Multiplier 0 moves a value by no more than this from that of its base.
constexpr int32_t k_iFineReach = 15 * 32 + 1;

/// Distances of two pixels to the value at every place, one after the other.
struct PairDistances
{
    alignas(64) std::array<int16_t, EacValues::k_uiPlaces * 2> ai16;
};

/// The pixels ascending on the circle, starting behind its widest gap.
struct SortedPixels
{
    std::array<uint16_t, 16> aui16;
    [[nodiscard]] int32_t getRange() const { return static_cast<uint16_t>(aui16[15] - aui16[0]); }
};

struct EacSearchState
{
    explicit EacSearchState(const EacValues& allValues) : values(allValues) {}

    const EacValues& values;
    std::array<uint16_t, 16> aui16Pixels;
    std::array<PairDistances, k_uiPairs> aPairs;
    int64_t iBound = k_iAnySum; ///< what the best has, or the first bound
    uint32_t uiBest = 0;        ///< base, table and multiplier in this order, 8, 4 and 4 bits: the order of the search

    /// Where a pixel stands on the line from the value of place 0, near 0, to that of place 256, near 65536.
    [[nodiscard]] uint16_t toLine(uint16_t ui16Pixel) const
    {
        return values.bSigned ? static_cast<uint16_t>(ui16Pixel ^ 0x8000u) : ui16Pixel;
    }
};

inline SortedPixels sortOnCircle(std::array<uint16_t, 16> pixels)
{
    std::sort(pixels.begin(), pixels.end());
    size_t uiStart = 0;
    int32_t iWidest = 65536 - pixels[15] + pixels[0];
    for (size_t i = 1; i < 16; ++i)
        if (pixels[i] - pixels[i - 1] > iWidest)
        {
            iWidest = pixels[i] - pixels[i - 1];
            uiStart = i;
        }
    std::rotate(pixels.begin(), pixels.begin() + static_cast<std::ptrdiff_t>(uiStart), pixels.end());
    return {pixels};
}

inline int64_t measureChoice(const EacSearchState& state, uint32_t uiChoice)
{
    int64_t iSum = 0;
    for (const uint16_t ui16Pixel : state.aui16Pixels)
    {
        int64_t iLeast = 65536;
        for (uint32_t k = 0; k < 8; ++k)
        {
            const uint16_t ui16Value = state.values.get(uiChoice >> 8, uiChoice >> 4 & 15, uiChoice & 15, k);
            iLeast = std::min<int64_t>(iLeast, std::abs(static_cast<int16_t>(static_cast<uint16_t>(ui16Pixel - ui16Value))));
        }
        iSum += iLeast * iLeast;
    }
    return iSum;
}

/// Keeps a choice that is better than the best, or as good and earlier.
inline void offerChoice(EacSearchState& state, uint32_t uiChoice, int32_t iCappedSum)
{
    // Signed data: base 0 is base 1 over again and stands at another place.
    if (iCappedSum > state.iBound || (state.values.bSigned && uiChoice >> 8 == 0))
        return;
    const int64_t iSum = iCappedSum < k_iExactBelow ? iCappedSum : measureChoice(state, uiChoice);
    if (iSum < state.iBound || (iSum == state.iBound && uiChoice < state.uiBest))
    {
        state.iBound = iSum;
        state.uiBest = uiChoice;
    }
}

/// The groups of uiGroup bases that have, with a modifier added, a place whose value lies within iRadius of a pixel.
///
/// By modifier times multiplier - k_iLeastPlace; bit n stands for bases n * uiGroup to n * uiGroup + uiGroup - 1. A bit too many
/// does no harm.
struct GroupsInReach
{
    std::array<uint64_t, 225 + 210 + 1> aui64;

    /// @param iPixel  as EacSearchState::toLine has it
    GroupsInReach(int32_t iPixel, int32_t iRadius, int32_t iGroup)
    {
        aui64.fill(0);
        if (iRadius >= 32768)
        {
            addReach(0, 65535, iGroup);
            return;
        }
        // The circle is cut between 65535 and 0, so the reach can have a part at the other end.
        addReach(iPixel - iRadius, iPixel + iRadius, iGroup);
        if (iPixel - iRadius < 0)
            addReach(iPixel - iRadius + 65536, 65535, iGroup);
        if (iPixel + iRadius > 65535)
            addReach(0, iPixel + iRadius - 65536, iGroup);
    }

private:
    void addReach(int32_t iLeast, int32_t iGreatest, int32_t iGroup)
    {
        // The value at a place between the clamped ends is 256 times it, less 32 or more, plus 160 or less.
        const int32_t iFirst = iLeast <= 160 ? EacValues::k_iLeastPlace : (iLeast - 160) >> 8;
        const int32_t iLast = iGreatest >= 65535 ? EacValues::k_iGreatestPlace : (iGreatest + 32) >> 8;
        for (int32_t i = 0; i < static_cast<int32_t>(aui64.size()); ++i)
        {
            const int32_t iOffset = i + EacValues::k_iLeastPlace;
            const int32_t iFirstBase = std::max(iFirst - iOffset, 0);
            const int32_t iLastBase = std::min(iLast - iOffset, 255);
            if (iFirstBase <= iLastBase)
                aui64[static_cast<size_t>(i)] |= (~uint64_t{0} << iFirstBase / iGroup) & (~uint64_t{0} >> (63 - iLastBase / iGroup));
        }
    }
};

} // namespace
} // namespace moxtexture
#endif

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace hn = hwy::HWY_NAMESPACE;

/// A table at one multiplier: where its eight values stand in PairDistances, seen from base 0.
struct RowOffsets
{
    std::array<int32_t, 8> ai;

    RowOffsets(uint32_t uiTable, uint32_t uiMultiplier)
    {
        for (uint32_t k = 0; k < 8; ++k)
            ai[k] = 2 * (k_iZeroPlace + static_cast<int32_t>(uiMultiplier) * getEtcAlphaModifier(uiTable, k));
    }
};

/// Capped sums of the bases of a group.
using GroupSums = std::array<int32_t, k_uiMostLanes>;

#if HWY_TARGET == HWY_SCALAR

// One lane of 32 bits doesn't hold two of 16, so this target has four bases to a group without vectors.

HWY_INLINE uint32_t getGroupSize()
{
    return 4;
}

HWY_INLINE int16_t getCappedDistance(uint16_t ui16Pixel, uint16_t ui16Value)
{
    const int32_t iDifference = static_cast<int16_t>(static_cast<uint16_t>(ui16Pixel - ui16Value));
    return static_cast<int16_t>(std::min(std::abs(iDifference), k_iFarthest));
}

HWY_INLINE int32_t squareOf(int32_t iValue)
{
    return iValue * iValue;
}

HWY_INLINE void fillDistances(const EacValues& values, uint16_t ui16First, uint16_t ui16Second, PairDistances& pair)
{
    for (size_t i = 0; i < EacValues::k_uiPlaces; ++i)
    {
        pair.ai16[2 * i] = getCappedDistance(ui16First, values.aui16Places[i]);
        pair.ai16[2 * i + 1] = getCappedDistance(ui16Second, values.aui16Places[i]);
    }
}

HWY_INLINE bool sumBases(const EacSearchState& state, const RowOffsets& row, uint32_t uiFirstBase, int32_t iLimit, GroupSums& sums)
{
    bool bAny = false;
    for (uint32_t i = 0; i < getGroupSize(); ++i)
    {
        sums[i] = 0;
        for (size_t uiPair = 0; uiPair < k_uiPairs && sums[i] < iLimit; ++uiPair)
        {
            const int16_t* const pFirst = state.aPairs[uiPair].ai16.data() + 2 * (uiFirstBase + i);
            int16_t i16First = pFirst[row.ai[0]];
            int16_t i16Second = pFirst[row.ai[0] + 1];
            for (size_t k = 1; k < 8; ++k)
            {
                i16First = std::min(i16First, pFirst[row.ai[k]]);
                i16Second = std::min(i16Second, pFirst[row.ai[k] + 1]);
            }
            sums[i] += squareOf(i16First) + squareOf(i16Second);
        }
        bAny = bAny || sums[i] < iLimit;
    }
    return bAny;
}

HWY_INLINE void sumFineReach(const PairDistances& pair, uint32_t uiFirstBase, GroupSums& sums)
{
    const int16_t* const pFirst = pair.ai16.data() + 2 * (static_cast<uint32_t>(k_iZeroPlace) + uiFirstBase);
    for (size_t i = 0; i < getGroupSize(); ++i)
        sums[i] = squareOf(std::max(pFirst[2 * i] - k_iFineReach, 0)) + squareOf(std::max(pFirst[2 * i + 1] - k_iFineReach, 0));
}

HWY_INLINE void sumFineTables(const EacSearchState& state, uint32_t uiBase, std::array<int32_t, 16>& sums)
{
    sums.fill(0);
    for (const uint16_t ui16Pixel : state.aui16Pixels)
        for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
        {
            int16_t i16Least = k_iFarthest;
            for (uint32_t k = 0; k < 8; ++k)
                i16Least = std::min(i16Least, getCappedDistance(ui16Pixel, state.values.get(uiBase, uiTable, 0, k)));
            sums[uiTable] += squareOf(i16Least);
        }
}

#else

/// A base a lane; where two pixels stand side by side, two lanes of 16 bits.
constexpr hn::CappedTag<int32_t, k_uiMostLanes> d32;
constexpr hn::Repartition<int16_t, decltype(d32)> d16;
constexpr hn::Rebind<uint16_t, decltype(d32)> dHalf;
using V32 = hn::Vec<decltype(d32)>;
using V16 = hn::Vec<decltype(d16)>;

HWY_INLINE uint32_t getGroupSize()
{
    return static_cast<uint32_t>(hn::Lanes(d32));
}

/// The sum of the squares of two neighbours, each at most k_iFarthest.
HWY_INLINE V32 addSquares(V16 pairs)
{
    V32 rest = hn::Zero(d32);
    const V32 sums = hn::ReorderWidenMulAccumulate(d32, pairs, pairs, hn::Zero(d32), rest);
    return hn::RearrangeToOddPlusEven(sums, rest);
}

template <typename D, typename V>
HWY_INLINE V getCappedDistances(D d, V a, V b)
{
    const V difference = hn::Sub(a, b);
    const V distance = hn::Max(difference, hn::SaturatedSub(hn::Zero(d), difference));
    return hn::Min(distance, hn::Set(d, static_cast<int16_t>(k_iFarthest)));
}

HWY_INLINE void fillDistances(const EacValues& values, uint16_t ui16First, uint16_t ui16Second, PairDistances& pair)
{
    const hn::RebindToUnsigned<decltype(d32)> du32;
    const size_t uiLanes = hn::Lanes(d32);
    const V16 pixels = hn::BitCast(d16, hn::Set(du32, ui16First | static_cast<uint32_t>(ui16Second) << 16));
    for (size_t i = 0; i < EacValues::k_uiPlaces; i += uiLanes)
    {
        const size_t uiFrom = std::min(i, EacValues::k_uiPlaces - uiLanes);
        const auto value = hn::PromoteTo(du32, hn::LoadU(dHalf, values.aui16Places.data() + uiFrom));
        const V16 twice = hn::BitCast(d16, hn::Or(value, hn::ShiftLeft<16>(value)));
        hn::StoreU(getCappedDistances(d16, twice, pixels), d16, pair.ai16.data() + 2 * uiFrom);
    }
}

/// False as soon as no base of the group has a sum below the limit.
HWY_INLINE bool sumBases(const EacSearchState& state, const RowOffsets& row, uint32_t uiFirstBase, int32_t iLimit, GroupSums& sums)
{
    const V32 limit = hn::Set(d32, iLimit);
    V32 sum = hn::Zero(d32);
    for (const PairDistances& pair : state.aPairs)
    {
        const int16_t* const pFirst = pair.ai16.data() + 2 * uiFirstBase;
        V16 least = hn::LoadU(d16, pFirst + row.ai[0]);
        for (size_t k = 1; k < 8; ++k)
            least = hn::Min(least, hn::LoadU(d16, pFirst + row.ai[k]));
        sum = hn::Add(sum, addSquares(least));
        if (hn::AllFalse(d32, hn::Lt(sum, limit)))
            return false;
    }
    hn::StoreU(sum, d32, sums.data());
    return true;
}

/// What the two outermost pixels at least have at multiplier 0.
HWY_INLINE void sumFineReach(const PairDistances& pair, uint32_t uiFirstBase, GroupSums& sums)
{
    const V16 toBase = hn::LoadU(d16, pair.ai16.data() + 2 * (static_cast<uint32_t>(k_iZeroPlace) + uiFirstBase));
    const V16 reach = hn::Set(d16, static_cast<int16_t>(k_iFineReach));
    hn::StoreU(addSquares(hn::Max(hn::Sub(toBase, reach), hn::Zero(d16))), d32, sums.data());
}

/// Multiplier 0 of one base: the distances of sixteen pixels to each fine value, then the sums of the tables.
HWY_INLINE void sumFineTables(const EacSearchState& state, uint32_t uiBase, std::array<int32_t, 16>& sums)
{
    const hn::CappedTag<int16_t, 16> dPixels;
    const hn::RebindToUnsigned<decltype(dPixels)> duPixels;
    const hn::RepartitionToWide<decltype(dPixels)> dSums;
    const size_t uiLanes = hn::Lanes(dPixels);
    std::array<std::array<int16_t, 16>, EacValues::k_uiModifiers> distances;
    for (size_t i = 0; i < EacValues::k_uiModifiers; ++i)
        for (size_t uiPart = 0; uiPart < 16; uiPart += uiLanes)
        {
            const auto value = hn::BitCast(dPixels, hn::Set(duPixels, state.values.aaui16Fine[uiBase][i]));
            const auto pixels = hn::BitCast(dPixels, hn::LoadU(duPixels, state.aui16Pixels.data() + uiPart));
            hn::StoreU(getCappedDistances(dPixels, pixels, value), dPixels, distances[i].data() + uiPart);
        }
    for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
    {
        auto sum0 = hn::Zero(dSums);
        auto sum1 = hn::Zero(dSums);
        for (size_t uiPart = 0; uiPart < 16; uiPart += uiLanes)
        {
            auto least = hn::Set(dPixels, static_cast<int16_t>(k_iFarthest));
            for (uint32_t k = 0; k < 8; ++k)
            {
                const auto uiRow = static_cast<size_t>(getEtcAlphaModifier(uiTable, k) - EacValues::k_iLeastModifier);
                least = hn::Min(least, hn::LoadU(dPixels, distances[uiRow].data() + uiPart));
            }
            sum0 = hn::ReorderWidenMulAccumulate(dSums, least, least, sum0, sum1);
        }
        sums[uiTable] = hn::GetLane(hn::SumOfLanes(dSums, hn::Add(sum0, sum1)));
    }
}

#endif

/// Offers a group of bases with one table and multiplier.
HWY_INLINE void tryBases(EacSearchState& state, const RowOffsets& row, uint32_t uiFirstBase, uint32_t uiTableAndMultiplier)
{
    // An equal sum is of use before the best only.
    const int64_t iTie = uiFirstBase <= state.uiBest >> 8 ? 1 : 0;
    GroupSums sums;
    if (!sumBases(state, row, uiFirstBase, static_cast<int32_t>(std::min(state.iBound + iTie, k_iAnySum)), sums))
        return;
    for (uint32_t i = 0; i < getGroupSize(); ++i)
        offerChoice(state, (uiFirstBase + i) << 8 | uiTableAndMultiplier, sums[i]);
}

/// Some bases that put the middle of a row's values on the middle of the pixels, at the multipliers that suit their range.
HWY_INLINE void sweepCoarsely(EacSearchState& state, const SortedPixels& pixels)
{
    const auto iGroup = static_cast<int32_t>(getGroupSize());
    const int32_t iRange = pixels.getRange();
    const int32_t iMiddle = state.toLine(static_cast<uint16_t>(pixels.aui16[0] + iRange / 2)) >> 8;
    for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
    {
        const int32_t iLow = getEtcAlphaModifier(uiTable, 3);
        const int32_t iHigh = getEtcAlphaModifier(uiTable, 7);
        const int32_t iSuitable = std::clamp(iRange / (256 * (iHigh - iLow)), 1, 14);
        for (int32_t iMultiplier = iSuitable; iMultiplier <= iSuitable + 1; ++iMultiplier)
        {
            const int32_t iBase = iMiddle - (iLow + iHigh) * iMultiplier / 2;
            const auto uiFirstBase = static_cast<uint32_t>(std::clamp(iBase - iGroup / 2, 0, 256 - iGroup));
            const auto uiMultiplier = static_cast<uint32_t>(iMultiplier);
            tryBases(state, RowOffsets(uiTable, uiMultiplier), uiFirstBase, uiTable << 4 | uiMultiplier);
        }
    }
}

/// Multiplier 0, at the bases that are near enough to the two outermost pixels.
HWY_INLINE void sweepFineRows(EacSearchState& state)
{
    GroupSums reach;
    std::array<int32_t, 16> sums;
    for (uint32_t uiFirstBase = 0; uiFirstBase < 256; uiFirstBase += getGroupSize())
    {
        sumFineReach(state.aPairs[0], uiFirstBase, reach);
        for (uint32_t i = 0; i < getGroupSize(); ++i)
        {
            if (reach[i] > state.iBound)
                continue;
            sumFineTables(state, uiFirstBase + i, sums);
            for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
                offerChoice(state, (uiFirstBase + i) << 8 | uiTable << 4, sums[uiTable]);
        }
    }
}

/// Multipliers 1 to 15, at the bases that reach the two outermost pixels within the bound.
HWY_INLINE void sweepRows(EacSearchState& state, const SortedPixels& pixels)
{
    const auto iRadius = static_cast<int32_t>(std::sqrt(static_cast<double>(state.iBound)));
    const uint32_t uiGroup = getGroupSize();
    const GroupsInReach first(state.toLine(pixels.aui16[0]), iRadius, static_cast<int32_t>(uiGroup));
    const GroupsInReach last(state.toLine(pixels.aui16[15]), iRadius, static_cast<int32_t>(uiGroup));
    for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
        for (uint32_t uiMultiplier = 1; uiMultiplier < 16; ++uiMultiplier)
        {
            const RowOffsets row(uiTable, uiMultiplier);
            uint64_t ui64First = 0;
            uint64_t ui64Last = 0;
            for (const int32_t iOffset : row.ai)
            {
                ui64First |= first.aui64[static_cast<size_t>(iOffset / 2)];
                ui64Last |= last.aui64[static_cast<size_t>(iOffset / 2)];
            }
            for (uint64_t ui64Groups = ui64First & ui64Last; ui64Groups != 0; ui64Groups &= ui64Groups - 1)
            {
                const auto uiFirstBase = static_cast<uint32_t>(hwy::Num0BitsBelowLS1Bit_Nonzero64(ui64Groups)) * uiGroup;
                tryBases(state, row, uiFirstBase, uiTable << 4 | uiMultiplier);
            }
        }
}

uint32_t searchBlock(const uint16_t* pui16Pixels, const EacValues& values)
{
    EacSearchState state(values);
    std::copy(pui16Pixels, pui16Pixels + 16, state.aui16Pixels.begin());
    const SortedPixels pixels = sortOnCircle(state.aui16Pixels);

    // Outermost pixels first: most choices are out of reach of one of them.
    constexpr uint8_t k_aaui8Pairs[k_uiPairs][2] = {{0, 15}, {5, 10}, {3, 12}, {7, 8}, {1, 14}, {6, 9}, {2, 13}, {4, 11}};
    for (size_t i = 0; i < k_uiPairs; ++i)
        fillDistances(values, pixels.aui16[k_aaui8Pairs[i][0]], pixels.aui16[k_aaui8Pairs[i][1]], state.aPairs[i]);

    // Only a bound is kept of the coarse sweep; the choices stand in line again, the earliest first of those that meet it.
    sweepCoarsely(state, pixels);
    state.iBound += 1;
    state.uiBest = 0;
    sweepFineRows(state);
    sweepRows(state, pixels);
    return state.uiBest;
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(searchBlock);

EacChoice searchEacBlock(const uint16_t (&aui16Pixels)[16], const EacValues& values)
{
    const uint32_t uiBest = HWY_DYNAMIC_DISPATCH(searchBlock)(aui16Pixels, values);
    const uint32_t uiBase = uiBest >> 8;
    // Signed data: bases 0 and 1 have the same values, and the earlier one is chosen.
    return {values.bSigned && uiBase == 1 ? 0 : uiBase, uiBest >> 4 & 15, uiBest & 15};
}

} // namespace moxtexture
#endif
