#include "Codecs/MOXTC/OptimiseModulation.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/MOXTC/OptimiseModulationSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/MOXTC/BlockWeightsSimd.h"
#include "Codecs/MOXTC/CompressorLanesSimd.h"

// A group of blocks at a time. The error of a block in a mode is the sum of its pixels' least errors wherever a pixel chooses its
// own code, so that nothing is blended twice but the pixels between stored ones at 2bpp.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

#if HWY_TARGET == HWY_SCALAR

void optimiseModulation2bpp(const CompressorImages& images, std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region)
{
    optimiseModulationReference(images, blockData, region);
}

void optimiseModulation4bpp(const CompressorImages& images, std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region)
{
    optimiseModulationReference(images, blockData, region);
}

#else

namespace
{

/// What a few pixels are and what they may become.
struct Blend
{
    ChannelPairs source;
    ChannelPairs a;
    ChannelPairs b;
};

HWY_INLINE VI getErrorOf(const ChannelPairs& blended, const Blend& blend)
{
    return getSquaredLength(subtract(blended, blend.source));
}

/// Errors of the weights 0, 3, 5 and 8. No sum is negative, so shifts round as the plain form's division does.
struct StandardErrors
{
    VI none, three, five, all;
};

HWY_INLINE StandardErrors getStandardErrors(const Blend& blend)
{
    const ChannelPairs fourOfEach = shiftLeft<2>(add(blend.a, blend.b));
    const ChannelPairs way = subtract(blend.b, blend.a);
    return {getErrorOf(blend.a, blend), getErrorOf(shiftRight<3>(subtract(fourOfEach, way)), blend),
            getErrorOf(shiftRight<3>(add(fourOfEach, way)), blend), getErrorOf(blend.b, blend)};
}

/// A code for each pixel and its error.
struct Choice
{
    VI code;
    VI error;
};

HWY_INLINE void consider(Choice& choice, VI error, int32_t iCode)
{
    choice.code = hn::IfThenElse(hn::Lt(error, choice.error), hn::Set(di, iCode), choice.code);
    choice.error = hn::Min(error, choice.error);
}

HWY_INLINE Choice chooseStandardCode(const StandardErrors& errors)
{
    Choice choice{hn::Zero(di), errors.none};
    consider(choice, errors.three, 1);
    consider(choice, errors.five, 2);
    consider(choice, errors.all, 3);
    return choice;
}

/// Weights 0, 4, 4, 8: code 2 is never better than code 1.
HWY_INLINE Choice choosePunchThroughCode(const StandardErrors& errors, const Blend& blend)
{
    Choice choice{hn::Zero(di), errors.none};
    consider(choice, getErrorOf(shiftRight<1>(add(blend.a, blend.b)), blend), 1);
    consider(choice, errors.all, 3);
    return choice;
}

/// Code 3 unless A is nearer.
HWY_INLINE Choice chooseDirectCode(const StandardErrors& errors)
{
    return {hn::IfThenZeroElse(hn::Lt(errors.none, errors.all), hn::Set(di, 3)), hn::Min(errors.none, errors.all)};
}

/// Errors of the modes of a group's blocks, by mode and column of the group.
template <size_t uiModes>
struct ModeErrors
{
    alignas(64) int32_t aaiColumns[uiModes][k_uiGroupWidth];

    /// Stores the sums over the four rows of a few columns.
    HWY_INLINE void store(size_t uiMode, size_t uiColumn, VI sums)
    {
        // Each lane gets the sum of its four.
        sums = hn::Add(sums, hn::Shuffle2301(sums));
        sums = hn::Add(sums, hn::Shuffle1032(sums));
        hn::Store(sums, di, aaiColumns[uiMode] + uiColumn);
    }

    /// The mode of least error times factor, the lowest of equals.
    template <typename Record>
    HWY_INLINE uint8_t findBestMode(const Record& record, size_t uiBlock) const
    {
        size_t uiBest = 0;
        int64_t i64Least = 0;
        for (size_t uiMode = 0; uiMode < uiModes; ++uiMode)
        {
            int32_t iError = 0;
            for (size_t x = 0; x < Record::k_uiBlockWidth; x += 4)
                iError += aaiColumns[uiMode][uiBlock * Record::k_uiBlockWidth + x];
            const int64_t i64Error = int64_t{iError} * record.aui8ModeFactors[uiMode];
            if (uiMode == 0 || i64Error < i64Least)
            {
                i64Least = i64Error;
                uiBest = uiMode;
            }
        }
        return static_cast<uint8_t>(uiBest);
    }
};

// ---- 4bpp

HWY_INLINE void copyCodesOfBlock(const GroupBytes& codes, size_t uiBlock, std::array<uint8_t, BlockRecord4bpp::k_uiPixels>& aui8Codes)
{
    constexpr size_t uiWidth = BlockRecord4bpp::k_uiBlockWidth;
    for (size_t y = 0; y < k_uiGroupHeight; ++y)
        std::memcpy(&aui8Codes[y * uiWidth], codes.aui8[y] + uiBlock * uiWidth, uiWidth);
}

HWY_NOINLINE void optimiseGroup(const PixelGroup& group, BlockRecord4bpp* HWY_RESTRICT pRecords)
{
    GroupBytes standardCodes;
    GroupBytes punchThroughCodes;
    ModeErrors<2> errors;
    for (size_t x = 0; x < k_uiGroupWidth; x += hn::Lanes(di))
    {
        VI standard = hn::Zero(di);
        VI punchThrough = standard;
        for (size_t y = 0; y < k_uiGroupHeight; ++y)
        {
            const size_t uiPlace = y * group.uiPitch + x;
            const Blend blend{splitPixels(hn::LoadU(du, group.pSource + uiPlace)), splitPixels(hn::LoadU(du, group.pA + uiPlace)),
                              splitPixels(hn::LoadU(du, group.pB + uiPlace))};
            const StandardErrors standardErrors = getStandardErrors(blend);
            const Choice standardChoice = chooseStandardCode(standardErrors);
            const Choice punchThroughChoice = choosePunchThroughCode(standardErrors, blend);
            storeBytes(standardChoice.code, standardCodes.aui8[y] + x);
            storeBytes(punchThroughChoice.code, punchThroughCodes.aui8[y] + x);
            standard = hn::Add(standard, standardChoice.error);
            punchThrough = hn::Add(punchThrough, punchThroughChoice.error);
        }
        errors.store(k_ui8ModeDirect, x, standard);
        errors.store(k_ui8ModePunchThrough, x, punchThrough);
    }

    for (size_t i = 0; i < group.uiBlocks; ++i)
    {
        BlockRecord4bpp& record = pRecords[i];
        copyCodesOfBlock(standardCodes, i, record.aui8StandardCodes);
        copyCodesOfBlock(punchThroughCodes, i, record.aui8PunchThroughCodes);
        record.uiMode = errors.findBestMode(record, i);
    }
}

// ---- 2bpp, whose pixels are taken by pairs of rows as BlockWeightsSimd.h tells

/// A pixel of each column, from the upper row in one kind of columns and from the lower row in the other.
template <bool bStored>
HWY_INLINE VU loadChequered(const uint32_t* HWY_RESTRICT pUpper, size_t uiPitch)
{
    const VU upper = hn::LoadU(du, pUpper);
    const VU lower = hn::LoadU(du, pUpper + uiPitch);
    return bStored ? hn::OddEven(lower, upper) : hn::OddEven(upper, lower);
}

template <bool bStored>
HWY_INLINE Blend loadChequered(const PixelGroup& group, size_t x, size_t uiPair)
{
    const size_t uiPlace = 2 * uiPair * group.uiPitch + x;
    return {splitPixels(loadChequered<bStored>(group.pSource + uiPlace, group.uiPitch)),
            splitPixels(loadChequered<bStored>(group.pA + uiPlace, group.uiPitch)),
            splitPixels(loadChequered<bStored>(group.pB + uiPlace, group.uiPitch))};
}

constexpr size_t k_uiStored = 0;  ///< the row of a pair's stored pixels
constexpr size_t k_uiBetween = 1; ///< the row of its others

/// The error of any weight up to 8.
HWY_INLINE VI getError(const Blend& blend, VI weights)
{
    const ChannelPairs way = multiply(subtract(blend.b, blend.a), repeatInPairs(weights));
    return getErrorOf(shiftRight<3>(add(way, shiftLeft<3>(blend.a))), blend);
}

/// Division by 8 that rounds towards 0.
HWY_INLINE VH divideByEight(VH v)
{
    const VH isNegative = hn::BroadcastSignBit(v);
    return hn::ShiftRight<3>(hn::Add(v, hn::And(isNegative, hn::Set(dh, 7))));
}

/// The error of any weight up to 10, which may lead below 0.
HWY_INLINE VI getErrorBeyond(const Blend& blend, VI weights)
{
    const ChannelPairs way = multiply(subtract(blend.b, blend.a), repeatInPairs(weights));
    const ChannelPairs sum = add(way, shiftLeft<3>(blend.a));
    return getErrorOf({divideByEight(sum.redBlue), divideByEight(sum.greenAlpha)}, blend);
}

/// Codes and weights of two blocks.
struct PairCodes
{
    GroupBytes direct; ///< a row of stored pixels and one of the others, for each pair of rows
    alignas(64) uint8_t aaui8Stored[k_uiRowPairs][k_uiGroupWidth];
    alignas(64) uint8_t aaui8BothAxes[k_uiRowPairs][k_uiGroupWidth]; ///< these are weights of the pixels between others
    alignas(64) uint8_t aaui8Vertical[k_uiRowPairs][k_uiGroupWidth];
    alignas(64) uint8_t aaui8Horizontal[k_uiRowPairs][k_uiGroupWidth];
};

HWY_INLINE void interpolateWeights(PairCodes& codes)
{
    const V8 upper = lookUpWeights(k_aui8StandardWeights, hn::Load(d8, codes.aaui8Stored[0]));
    const V8 lower = lookUpWeights(k_aui8StandardWeights, hn::Load(d8, codes.aaui8Stored[1]));
    const BetweenWeights between[k_uiRowPairs] = {interpolateWeights(upper, lower, 0), interpolateWeights(lower, upper, 1)};
    for (size_t p = 0; p < k_uiRowPairs; ++p)
    {
        hn::Store(between[p].bothAxes, d8, codes.aaui8BothAxes[p]);
        hn::Store(between[p].vertical, d8, codes.aaui8Vertical[p]);
        hn::Store(between[p].horizontal, d8, codes.aaui8Horizontal[p]);
    }
}

/// The half of two rows that belongs to one of two blocks.
template <size_t uiBlock>
HWY_INLINE V8 takeBlock(V8 upperRow, V8 lowerRow)
{
    return uiBlock == 0 ? hn::ConcatLowerLower(d8, lowerRow, upperRow) : hn::ConcatUpperUpper(d8, lowerRow, upperRow);
}

template <size_t uiBlock>
HWY_INLINE void writeCodes(const PairCodes& codes, BlockRecord2bpp& record)
{
    constexpr size_t uiPairPixels = size_t{BlockRecord2bpp::k_uiBlockWidth} * 2;
    // Of a pair of rows, in a record: even columns of the upper row and odd ones of the lower.
    alignas(16) constexpr uint8_t aui8Stored[16] = {k_ui8All, 0,        k_ui8All, 0,        k_ui8All, 0,        k_ui8All, 0,
                                                    0,        k_ui8All, 0,        k_ui8All, 0,        k_ui8All, 0,        k_ui8All};
    const auto isStored = loadColumnMask(aui8Stored);
    for (size_t p = 0; p < k_uiRowPairs; ++p)
    {
        const V8 directStored = hn::Load(d8, codes.direct.aui8[2 * p + k_uiStored]);
        const V8 directBetween = hn::Load(d8, codes.direct.aui8[2 * p + k_uiBetween]);
        const V8 stored = hn::Load(d8, codes.aaui8Stored[p]);
        const V8 direct =
            hn::IfThenElse(isStored, takeBlock<uiBlock>(directStored, directStored), takeBlock<uiBlock>(directBetween, directBetween));
        hn::StoreU(direct, d8, &record.aui8DirectCodes[p * uiPairPixels]);
        uint8_t* pInterpolated = &record.aui8InterpolatedCodes[p * uiPairPixels];
        hn::StoreU(hn::IfThenElse(isStored, takeBlock<uiBlock>(stored, stored), hn::LoadU(d8, pInterpolated)), d8, pInterpolated);
    }
}

/// Errors of the modes, and what the stored pixels have of them by column.
struct PairErrors
{
    ModeErrors<4> modes;
    alignas(64) int32_t aiStored[k_uiGroupWidth];
};

/// Chooses the codes of all pixels for the direct mode, and of the stored ones for the others.
HWY_NOINLINE void chooseCodes(const PixelGroup& group, PairCodes& codes, PairErrors& errors)
{
    for (size_t x = 0; x < k_uiGroupWidth; x += hn::Lanes(di))
    {
        VI direct = hn::Zero(di);
        VI stored = direct;
        for (size_t p = 0; p < k_uiRowPairs; ++p)
        {
            const StandardErrors storedErrors = getStandardErrors(loadChequered<true>(group, x, p));
            const Choice storedChoice = chooseStandardCode(storedErrors);
            const Choice storedDirect = chooseDirectCode(storedErrors);
            const Choice betweenDirect = chooseDirectCode(getStandardErrors(loadChequered<false>(group, x, p)));
            storeBytes(storedChoice.code, codes.aaui8Stored[p] + x);
            storeBytes(storedDirect.code, codes.direct.aui8[2 * p + k_uiStored] + x);
            storeBytes(betweenDirect.code, codes.direct.aui8[2 * p + k_uiBetween] + x);
            direct = hn::Add(direct, hn::Add(storedDirect.error, betweenDirect.error));
            stored = hn::Add(stored, storedChoice.error);
        }
        errors.modes.store(k_ui8ModeDirect, x, direct);
        hn::Store(stored, di, errors.aiStored + x);
    }
}

/// Finds the errors of the modes that weigh the pixels between stored ones.
HWY_NOINLINE void findErrorsBetween(const PixelGroup& group, const PairCodes& codes, PairErrors& errors)
{
    for (size_t x = 0; x < k_uiGroupWidth; x += hn::Lanes(di))
    {
        VI bothAxes = hn::Load(di, errors.aiStored + x);
        VI vertical = bothAxes;
        VI horizontal = bothAxes;
        for (size_t p = 0; p < k_uiRowPairs; ++p)
        {
            const Blend blend = loadChequered<false>(group, x, p);
            bothAxes = hn::Add(bothAxes, getError(blend, loadBytes(codes.aaui8BothAxes[p] + x)));
            vertical = hn::Add(vertical, getErrorBeyond(blend, loadBytes(codes.aaui8Vertical[p] + x)));
            horizontal = hn::Add(horizontal, getErrorBeyond(blend, loadBytes(codes.aaui8Horizontal[p] + x)));
        }
        errors.modes.store(k_ui8ModeBothAxes, x, bothAxes);
        // On purpose: the axes of these two are exchanged.
        errors.modes.store(k_ui8ModeHorizontal, x, vertical);
        errors.modes.store(k_ui8ModeVertical, x, horizontal);
    }
}

HWY_NOINLINE void optimiseGroup(const PixelGroup& group, BlockRecord2bpp* HWY_RESTRICT pRecords)
{
    PairCodes codes;
    PairErrors errors;
    chooseCodes(group, codes, errors);
    interpolateWeights(codes);
    findErrorsBetween(group, codes, errors);

    writeCodes<0>(codes, pRecords[0]);
    pRecords[0].ui8Mode = errors.modes.findBestMode(pRecords[0], 0);
    if (group.uiBlocks > 1)
    {
        writeCodes<1>(codes, pRecords[1]);
        pRecords[1].ui8Mode = errors.modes.findBestMode(pRecords[1], 1);
    }
}

template <typename Record>
HWY_INLINE void optimiseRegion(const CompressorImages& images, Record* HWY_RESTRICT pRecords, const BlockRegion& region)
{
    constexpr uint32_t uiStep = k_uiGroupWidth / Record::k_uiBlockWidth;
    GroupCopy copy;
    for (uint32_t y = region.uiY0; y < region.uiY1; ++y)
        for (uint32_t x = region.uiX0; x < region.uiX1; x += uiStep)
            optimiseGroup(openGroup<Record>(images, x, region.uiX1, y, copy), pRecords + images.getBlockIndex(x, y));
}

} // namespace

void optimiseModulation2bpp(const CompressorImages& images, std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region)
{
    optimiseRegion(images, blockData.data(), region);
}

void optimiseModulation4bpp(const CompressorImages& images, std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region)
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

HWY_EXPORT(optimiseModulation2bpp);
HWY_EXPORT(optimiseModulation4bpp);

void optimiseModulation(const CompressorImages& images, std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region)
{
    HWY_DYNAMIC_DISPATCH(optimiseModulation2bpp)(images, blockData, region);
}

void optimiseModulation(const CompressorImages& images, std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region)
{
    HWY_DYNAMIC_DISPATCH(optimiseModulation4bpp)(images, blockData, region);
}

} // namespace moxtexture
#endif
