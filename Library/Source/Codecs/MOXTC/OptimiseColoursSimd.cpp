#include "Codecs/MOXTC/OptimiseColours.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/MOXTC/OptimiseColoursSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/MOXTC/BlockWeightsSimd.h"
#include "Codecs/MOXTC/CompressorLanesSimd.h"

// A row of blocks is done in runs of k_uiRunBlocks, each in two steps. The first sums up over the pixels in whole numbers: weights
// in eighths, differences in eighths, their products in parts of 64, which the plain form's floats hold exactly as well. The second
// does in floats, each in its place, what the plain form does with the means; a channel of a block has a lane there.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

#if HWY_TARGET == HWY_SCALAR

void optimiseColours2bpp(CompressorImages& images, const std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region)
{
    optimiseColoursReference(images, blockData, region);
}

void optimiseColours4bpp(CompressorImages& images, const std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region)
{
    optimiseColoursReference(images, blockData, region);
}

#else

namespace
{

using DF = hn::RebindToFloat<DI>;
using VF = hn::Vec<DF>;
using MF = hn::Mask<DF>;
constexpr DF df{};
constexpr hn::FixedTag<int32_t, 4> d4{};
constexpr hn::FixedTag<uint8_t, 8> dHalfRow{};

constexpr size_t k_uiChannels = 4;
constexpr size_t k_uiMostLanes = 16;
constexpr size_t k_uiRunBlocks = 64;
static_assert(k_uiRunBlocks % k_uiMostLanes == 0);

/// What is known of the blocks of a run; those beyond its end count as blocks without any difference.
struct Run
{
    alignas(64) int32_t aiDifference[k_uiRunBlocks * k_uiChannels] = {};         ///< in eighths
    alignas(64) int32_t aiWeightedDifference[k_uiRunBlocks * k_uiChannels] = {}; ///< in parts of 64
    alignas(64) int32_t aiWeights[k_uiRunBlocks * k_uiChannels] = {};            ///< the first two of each: sum, sum of squares
    alignas(64) uint32_t auiColourA[k_uiRunBlocks] = {};
    alignas(64) uint32_t auiColourB[k_uiRunBlocks] = {};
};

// ---- Weights of a group's pixels

HWY_INLINE V8 findBlockWeights(const BlockRecord4bpp& record)
{
    const bool bStandard = record.uiMode == k_ui8ModeDirect;
    const auto& codes = bStandard ? record.aui8StandardCodes : record.aui8PunchThroughCodes;
    return lookUpWeights(bStandard ? k_aui8StandardWeights : k_aui8PunchThroughWeightsMOXTCII, hn::LoadU(d8, codes.data()));
}

HWY_INLINE void findWeights(const BlockRecord4bpp* HWY_RESTRICT pRecords, size_t uiBlocks, GroupBytes& weights)
{
    // A vector of four rows for each of four blocks becomes one of four blocks for each row.
    const hn::Repartition<uint32_t, decltype(d8)> dRows;
    const auto getRows = [&](size_t i) HWY_ATTR { return hn::BitCast(dRows, findBlockWeights(pRecords[std::min(i, uiBlocks - 1)])); };
    hn::StoreInterleaved4(getRows(0), getRows(1), getRows(2), getRows(3), dRows, reinterpret_cast<uint32_t*>(weights.aui8[0]));
}

/// Row y of two blocks side by side.
HWY_INLINE V8 joinRows(const uint8_t* pCodes, const uint8_t* pNextCodes, size_t y)
{
    constexpr size_t uiWidth = BlockRecord2bpp::k_uiBlockWidth;
    return hn::Combine(d8, hn::LoadU(dHalfRow, pNextCodes + y * uiWidth), hn::LoadU(dHalfRow, pCodes + y * uiWidth));
}

HWY_INLINE void findWeights(const BlockRecord2bpp* HWY_RESTRICT pRecords, size_t uiBlocks, GroupBytes& weights)
{
    const BlockRecord2bpp& record = pRecords[0];
    const BlockRecord2bpp& next = pRecords[uiBlocks > 1 ? 1 : 0];
    const V8 modes = hn::Combine(d8, hn::Set(dHalfRow, next.ui8Mode), hn::Set(dHalfRow, record.ui8Mode));
    const auto isDirect = hn::Eq(modes, hn::Set(d8, k_ui8ModeDirect));
    const auto isBothAxes = hn::Eq(modes, hn::Set(d8, k_ui8ModeBothAxes));
    const auto isVertical = hn::Eq(modes, hn::Set(d8, k_ui8ModeHorizontal)); // on purpose: the axes are exchanged

    const auto getRow = [&](const uint8_t* pCodes, const uint8_t* pNextCodes, size_t y) HWY_ATTR
    { return lookUpWeights(k_aui8StandardWeights, joinRows(pCodes, pNextCodes, y)); };
    const auto getDirectRow = [&](size_t y) HWY_ATTR { return getRow(record.aui8DirectCodes.data(), next.aui8DirectCodes.data(), y); };
    const auto getStoredRow = [&](size_t y) HWY_ATTR
    { return getRow(record.aui8InterpolatedCodes.data(), next.aui8InterpolatedCodes.data(), y); };

    const V8 stored[k_uiRowPairs] = {hn::OddEven(getStoredRow(1), getStoredRow(0)), hn::OddEven(getStoredRow(3), getStoredRow(2))};
    for (size_t p = 0; p < k_uiRowPairs; ++p)
    {
        const BetweenWeights between = interpolateWeights(stored[p], stored[1 - p], p);
        const V8 chosen = hn::IfThenElse(isBothAxes, between.bothAxes, hn::IfThenElse(isVertical, between.vertical, between.horizontal));
        const V8 upper = hn::IfThenElse(isDirect, getDirectRow(2 * p), hn::OddEven(chosen, stored[p]));
        const V8 lower = hn::IfThenElse(isDirect, getDirectRow(2 * p + 1), hn::OddEven(stored[p], chosen));
        hn::Store(upper, d8, weights.aui8[2 * p]);
        hn::Store(lower, d8, weights.aui8[2 * p + 1]);
    }
}

// ---- Sums

/// Of each four lanes of four vectors: the sums, that of a in the first of four lanes, and so on.
HWY_INLINE VI addUpLanes(VI a, VI b, VI c, VI d)
{
    const VI ac = hn::Add(hn::InterleaveLower(di, a, c), hn::InterleaveUpper(di, a, c));
    const VI bd = hn::Add(hn::InterleaveLower(di, b, d), hn::InterleaveUpper(di, b, d));
    return hn::Add(hn::InterleaveLower(di, ac, bd), hn::InterleaveUpper(di, ac, bd));
}

/// Sums over the rows of every four columns, a sum to a lane: by four columns, then as in Run.
struct ColumnSums
{
    alignas(64) int32_t aiDifference[k_uiGroupWidth];
    alignas(64) int32_t aiWeightedDifference[k_uiGroupWidth];
    alignas(64) int32_t aiWeights[k_uiGroupWidth];
};

HWY_NOINLINE void sumUpGroup(const PixelGroup& group, const GroupBytes& weights, ColumnSums& sums)
{
    const VH ones = hn::BitCast(dh, hn::Set(di, 1));
    const VH upperOnes = hn::BitCast(dh, hn::Set(di, 1 << 16));
    for (size_t x = 0; x < k_uiGroupWidth; x += hn::Lanes(di))
    {
        // Weights reach 10, so a difference stays within 10 * 255 eighths, and four of them within 16 bits.
        ChannelPairs difference{hn::Zero(dh), hn::Zero(dh)};
        CPairProducts weightedRed, weightedGreen, weightedBlue, weightedAlpha;
        VI weight = hn::Zero(di);
        CPairProducts squaredWeight;
        for (size_t y = 0; y < k_uiGroupHeight; ++y)
        {
            const size_t uiPlace = y * group.uiPitch + x;
            const ChannelPairs a = splitPixels(hn::LoadU(du, group.pA + uiPlace));
            const ChannelPairs b = splitPixels(hn::LoadU(du, group.pB + uiPlace));
            const ChannelPairs source = splitPixels(hn::LoadU(du, group.pSource + uiPlace));
            const VI w = loadBytes(weights.aui8[y] + x);
            const VH lowerWeight = hn::BitCast(dh, w);
            const VH upperWeight = hn::BitCast(dh, hn::ShiftLeft<16>(w));
            const ChannelPairs way = multiply(subtract(b, a), hn::Or(lowerWeight, upperWeight));
            const ChannelPairs d = subtract(shiftLeft<3>(subtract(source, a)), way);

            difference = add(difference, d);
            weightedRed.add(d.redBlue, lowerWeight);
            weightedBlue.add(d.redBlue, upperWeight);
            weightedGreen.add(d.greenAlpha, lowerWeight);
            weightedAlpha.add(d.greenAlpha, upperWeight);
            weight = hn::Add(weight, w);
            squaredWeight.add(lowerWeight, lowerWeight);
        }

        const auto pick = [](VH pairs, VH which) HWY_ATTR
        {
            CPairProducts products;
            products.add(pairs, which);
            return products.getSum();
        };
        hn::Store(addUpLanes(pick(difference.redBlue, ones), pick(difference.greenAlpha, ones), pick(difference.redBlue, upperOnes),
                             pick(difference.greenAlpha, upperOnes)),
                  di, sums.aiDifference + x);
        hn::Store(addUpLanes(weightedRed.getSum(), weightedGreen.getSum(), weightedBlue.getSum(), weightedAlpha.getSum()), di,
                  sums.aiWeightedDifference + x);
        const VI squared = squaredWeight.getSum();
        hn::Store(addUpLanes(weight, squared, weight, squared), di, sums.aiWeights + x);
    }
}

/// Adds up the columns of each block.
template <size_t uiBlockWidth>
HWY_INLINE void copySums(const int32_t* HWY_RESTRICT pColumns, int32_t* HWY_RESTRICT pRun, size_t uiBlocks)
{
    for (size_t i = 0; i < uiBlocks; ++i)
    {
        auto sum = hn::Load(d4, pColumns + i * uiBlockWidth);
        if constexpr (uiBlockWidth == 8)
            sum = hn::Add(sum, hn::Load(d4, pColumns + i * uiBlockWidth + 4));
        hn::Store(sum, d4, pRun + i * k_uiChannels);
    }
}

template <typename Record>
HWY_INLINE void sumUpRun(const CompressorImages& images, const Record* HWY_RESTRICT pRecords, uint32_t uiX, uint32_t uiEnd, uint32_t uiY,
                         Run& run)
{
    constexpr size_t uiWidth = Record::k_uiBlockWidth;
    GroupCopy copy;
    GroupBytes weights = {};
    ColumnSums sums;
    size_t uiBlock = 0;
    for (uint32_t x = uiX; x < uiEnd; x += k_uiGroupWidth / uiWidth)
    {
        const PixelGroup group = openGroup<Record>(images, x, uiEnd, uiY, copy);
        findWeights(pRecords + images.getBlockIndex(x, uiY), group.uiBlocks, weights);
        sumUpGroup(group, weights, sums);
        const size_t uiPlace = uiBlock * k_uiChannels;
        copySums<uiWidth>(sums.aiDifference, run.aiDifference + uiPlace, group.uiBlocks);
        copySums<uiWidth>(sums.aiWeightedDifference, run.aiWeightedDifference + uiPlace, group.uiBlocks);
        copySums<uiWidth>(sums.aiWeights, run.aiWeights + uiPlace, group.uiBlocks);
        uiBlock += group.uiBlocks;
    }
}

// ---- What follows from the means

/// Means over the pixels of a block for each of its channels; the last two are the same in all four.
struct Means
{
    VF difference;
    VF weightedDifference;
    VF weight;
    VF squaredWeight;
};

/// A channel of either colour.
struct ColourPair
{
    VF a;
    VF b;
};

HWY_INLINE VF loadFloats(const int32_t* HWY_RESTRICT p)
{
    return hn::ConvertTo(df, hn::Load(di, p));
}

HWY_INLINE VF clamp(VF v, float fLeast, float fMost)
{
    return hn::Min(hn::Max(v, hn::Set(df, fLeast)), hn::Set(df, fMost));
}

/// The squares of a block's four channels, added up from the first to the last.
HWY_INLINE VF getSquaredLength(VF channels)
{
    const VF squares = hn::Mul(channels, channels);
    const VF sum = hn::Add(hn::Add(hn::Broadcast<0>(squares), hn::Broadcast<1>(squares)), hn::Broadcast<2>(squares));
    return hn::Add(sum, hn::Broadcast<3>(squares));
}

HWY_INLINE ColourPair shiftTogether(const Means& means, const ColourPair& colours)
{
    const VF half = hn::Set(df, 0.5f);
    const VF one = hn::Set(df, 1.0f);
    const VF weightOfA = hn::Sub(one, means.weight);
    const VF a = clamp(hn::Add(colours.a, hn::Mul(means.difference, weightOfA)), 0.0f, 255.0f);
    const VF b = clamp(hn::Add(colours.b, hn::Mul(means.difference, means.weight)), 0.0f, 255.0f);
    const VF way = hn::Sub(b, a);
    const VF gap = hn::IfThenZeroElse(hn::Lt(hn::Abs(way), one), way);
    return {hn::Add(a, hn::Mul(hn::Mul(gap, means.weight), half)), hn::Sub(b, hn::Mul(hn::Mul(gap, weightOfA), half))};
}

HWY_INLINE ColourPair shiftByLine(const Means& means, VF variance, const ColourPair& colours)
{
    const VF slope = hn::Div(hn::Sub(means.weightedDifference, hn::Mul(means.difference, means.weight)), variance);
    const VF shiftA = hn::Sub(means.difference, hn::Mul(slope, means.weight));
    // On purpose: B's starts from the shift of A as it is before its limit.
    const VF shiftB = hn::Add(shiftA, slope);
    return {hn::Add(colours.a, clamp(shiftA, -k_fMostColourShift, k_fMostColourShift)),
            hn::Add(colours.b, clamp(shiftB, -k_fMostColourShift, k_fMostColourShift))};
}

/// Stores the channels of the blocks that move.
HWY_INLINE void storeColours(VF channels, MF stays, VI old, uint32_t* HWY_RESTRICT pColours)
{
    const VI moved = hn::ConvertTo(di, clamp(channels, 0.0f, 255.0f));
    storeBytes(hn::IfThenElse(hn::RebindMask(di, stays), old, moved), reinterpret_cast<uint8_t*>(pColours));
}

/// @tparam uiPixels  of a block
template <size_t uiPixels>
HWY_NOINLINE void moveColours(Run& run, size_t uiBlocks)
{
    constexpr float fEighthShare = 1.0f / (8 * uiPixels);
    constexpr float fSquareShare = 1.0f / (64 * uiPixels);
    for (size_t i = 0; i < uiBlocks; i += hn::Lanes(di) / k_uiChannels)
    {
        const size_t uiPlace = i * k_uiChannels;
        Means means;
        means.difference = hn::Mul(loadFloats(run.aiDifference + uiPlace), hn::Set(df, fEighthShare));
        const MF stays = hn::Lt(getSquaredLength(means.difference), hn::Set(df, k_fLeastSquaredShift));
        if (hn::AllTrue(df, stays))
            continue;
        means.weightedDifference = hn::Mul(loadFloats(run.aiWeightedDifference + uiPlace), hn::Set(df, fSquareShare));
        const VF weights = loadFloats(run.aiWeights + uiPlace);
        means.weight = hn::Mul(hn::Broadcast<0>(weights), hn::Set(df, fEighthShare));
        means.squaredWeight = hn::Mul(hn::Broadcast<1>(weights), hn::Set(df, fSquareShare));

        const VI oldA = loadBytes(reinterpret_cast<const uint8_t*>(run.auiColourA + i));
        const VI oldB = loadBytes(reinterpret_cast<const uint8_t*>(run.auiColourB + i));
        const ColourPair colours{hn::ConvertTo(df, oldA), hn::ConvertTo(df, oldB)};
        const VF variance = hn::Sub(means.squaredWeight, hn::Mul(means.weight, means.weight));
        const MF isAlike = hn::Lt(variance, hn::Set(df, k_fLeastWeightVariance));
        // The variance of the blocks that the line is not for may be 0.
        ColourPair moved = shiftByLine(means, hn::IfThenElse(isAlike, hn::Set(df, 1.0f), variance), colours);
        if (!hn::AllFalse(df, isAlike))
        {
            const ColourPair together = shiftTogether(means, colours);
            moved = {hn::IfThenElse(isAlike, together.a, moved.a), hn::IfThenElse(isAlike, together.b, moved.b)};
        }
        storeColours(moved.a, stays, oldA, run.auiColourA + i);
        storeColours(moved.b, stays, oldB, run.auiColourB + i);
    }
}

template <typename Record>
HWY_INLINE void optimiseRegion(CompressorImages& images, const Record* HWY_RESTRICT pRecords, const BlockRegion& region)
{
    for (uint32_t y = region.uiY0; y < region.uiY1; ++y)
    {
        uint32_t uiEnd = 0;
        for (uint32_t x = region.uiX0; x < region.uiX1; x = uiEnd)
        {
            const size_t uiBlocks = std::min<size_t>(k_uiRunBlocks, region.uiX1 - x);
            uiEnd = x + static_cast<uint32_t>(uiBlocks);
            uint32_t* pColourA = &images.colourA[images.getBlockIndex(x, y)];
            uint32_t* pColourB = &images.colourB[images.getBlockIndex(x, y)];
            Run run;
            std::copy(pColourA, pColourA + uiBlocks, run.auiColourA);
            std::copy(pColourB, pColourB + uiBlocks, run.auiColourB);
            sumUpRun(images, pRecords, x, uiEnd, y, run);
            moveColours<Record::k_uiPixels>(run, uiBlocks);
            std::copy(run.auiColourA, run.auiColourA + uiBlocks, pColourA);
            std::copy(run.auiColourB, run.auiColourB + uiBlocks, pColourB);
        }
    }
}

} // namespace

void optimiseColours2bpp(CompressorImages& images, const std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region)
{
    optimiseRegion(images, blockData.data(), region);
}

void optimiseColours4bpp(CompressorImages& images, const std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region)
{
    optimiseRegion(images, blockData.data(), region);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(optimiseColours2bpp);
HWY_EXPORT(optimiseColours4bpp);

void optimiseColours(CompressorImages& images, const std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region)
{
    HWY_DYNAMIC_DISPATCH(optimiseColours2bpp)(images, blockData, region);
}

void optimiseColours(CompressorImages& images, const std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region)
{
    HWY_DYNAMIC_DISPATCH(optimiseColours4bpp)(images, blockData, region);
}

} // namespace moxtexture
#endif
