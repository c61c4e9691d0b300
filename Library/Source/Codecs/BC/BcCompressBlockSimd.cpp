#include "Codecs/BC/BcCompressBlock.h"

#include <algorithm>
#include <cstring>

#include "Codecs/BC/BcPrincipalAxis.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/BC/BcCompressBlockSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/BC/BcBlockLanesSimd.h"

// A row of blocks is encoded in runs of k_uiRunBlocks, in three passes: statistics and the blocks of one or two colours; the
// axes of the others; their end points and indices. In each a lane does what the plain form does, in its order.
//
// The axes are a pass of their own because their steps differ in number: a lane that has ended leaves the list and the others
// move up, so that no block waits for the slowest of its group.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

constexpr size_t k_uiListRoom = k_uiRunBlocks + k_uiMostLanes;
constexpr uint32_t k_uiKeyMask = 0x00F8FCF8; ///< the bits of a pixel that 5:6:5 keeps
constexpr uint32_t k_uiStepsInTurn = 5;      ///< steps of the iteration between two clearances of the list
static_assert(k_uiBcAxisSteps % k_uiStepsInTurn == 0);
static_assert(k_uiRunBlocks % k_uiMostLanes == 0);

/// Red, green and blue of the blocks of a group.
struct Colours
{
    VF red;
    VF green;
    VF blue;
};

/// The same for all the blocks of a run.
struct ColourArrays
{
    alignas(64) float afRed[k_uiRunBlocks];
    alignas(64) float afGreen[k_uiRunBlocks];
    alignas(64) float afBlue[k_uiRunBlocks];
};

/// What the passes over a run leave for each other.
struct Run
{
    RunPixels pixels;
    ColourArrays mean;
    ColourArrays axis;
    alignas(64) uint32_t auiFit[k_uiRunBlocks];     ///< all bits set for a block of three or more colours
    alignas(64) uint32_t auiColours[k_uiRunBlocks]; ///< colour 0 and above it colour 1
    alignas(64) uint32_t auiIndices[k_uiRunBlocks]; ///< 0 in the slots that are left out
    alignas(64) uint32_t auiLeftOut[k_uiRunBlocks]; ///< both bits set in a slot that keeps the index of the block before

    // The list of blocks whose axis is sought: covariance, vector so far, number in the run.
    alignas(64) float aafCovariance[6][k_uiListRoom];
    alignas(64) float aafVector[3][k_uiListRoom];
    alignas(64) uint32_t auiNumber[k_uiListRoom];
    size_t uiListed;
};

HWY_INLINE Colours loadColours(const ColourArrays& arrays, size_t uiBlock)
{
    return {hn::Load(df, arrays.afRed + uiBlock), hn::Load(df, arrays.afGreen + uiBlock), hn::Load(df, arrays.afBlue + uiBlock)};
}

HWY_INLINE void storeColours(const Colours& colours, ColourArrays& arrays, size_t uiBlock)
{
    hn::Store(colours.red, df, arrays.afRed + uiBlock);
    hn::Store(colours.green, df, arrays.afGreen + uiBlock);
    hn::Store(colours.blue, df, arrays.afBlue + uiBlock);
}

HWY_INLINE Colours subtract(const Colours& a, const Colours& b)
{
    return {hn::Sub(a.red, b.red), hn::Sub(a.green, b.green), hn::Sub(a.blue, b.blue)};
}

HWY_INLINE Colours multiply(const Colours& a, VF factor)
{
    return {hn::Mul(a.red, factor), hn::Mul(a.green, factor), hn::Mul(a.blue, factor)};
}

HWY_INLINE Colours choose(MF mask, const Colours& yes, const Colours& no)
{
    return {hn::IfThenElse(mask, yes.red, no.red), hn::IfThenElse(mask, yes.green, no.green), hn::IfThenElse(mask, yes.blue, no.blue)};
}

HWY_INLINE VF dotProduct(const Colours& a, const Colours& b)
{
    return hn::Add(hn::Add(hn::Mul(a.red, b.red), hn::Mul(a.green, b.green)), hn::Mul(a.blue, b.blue));
}

HWY_INLINE Colours splitPixel(VU pixel)
{
    const VU byte = hn::Set(du, 0xFF);
    return {toFloat(hn::And(pixel, byte)), toFloat(hn::And(hn::ShiftRight<8>(pixel), byte)),
            toFloat(hn::And(hn::ShiftRight<16>(pixel), byte))};
}

/// 5:6:5 from the upper bits of three bytes in their places in a pixel.
HWY_INLINE VU pack565(VU pixel)
{
    const VU red = hn::ShiftLeft<8>(hn::And(pixel, hn::Set(du, 0xF8)));
    const VU green = hn::ShiftRight<5>(hn::And(pixel, hn::Set(du, 0xFC00)));
    const VU blue = hn::And(hn::ShiftRight<19>(pixel), hn::Set(du, 0x1F));
    return hn::Or(hn::Or(red, green), blue);
}

HWY_INLINE VU quantise565(const Colours& colours)
{
    const VU red = hn::ShiftLeft<8>(hn::And(truncate(colours.red), hn::Set(du, 0xF8)));
    const VU green = hn::ShiftLeft<3>(hn::And(truncate(colours.green), hn::Set(du, 0xFC)));
    return hn::Or(hn::Or(red, green), hn::ShiftRight<3>(truncate(colours.blue)));
}

/// Three in the slot of every pixel with an alpha below 128, 0 in the others.
HWY_INLINE VU findTransparentSlots(const uint32_t* HWY_RESTRICT pPixels)
{
    VU slots = hn::Zero(du);
    for (size_t i = k_uiBcPixels; i-- > 0;)
    {
        const VU pixel = hn::Load(du, pPixels + i * hn::Lanes(du));
        const VU transparent = hn::BitCast(du, hn::BroadcastSignBit(hn::BitCast(di, hn::Not(pixel))));
        slots = hn::Or(hn::ShiftLeft<2>(slots), hn::And(transparent, hn::Set(du, 3)));
    }
    return slots;
}

/// Encodes the blocks of a group as if none had more than two colours.
HWY_INLINE void encodeFewColours(const uint32_t* HWY_RESTRICT pPixels, VU leastKey, VU greatestKey, VU transparentSlots, Run& run,
                                 size_t uiBlock)
{
    const VU zero = hn::Zero(du);
    const VU one565 = pack565(leastKey);
    const VU other565 = pack565(greatestKey);
    const VU lesser = hn::Min(one565, other565);
    const VU greater = hn::Max(one565, other565);
    const MU isSingle = hn::Eq(leastKey, greatestKey);
    const MU isThreeColours = hn::Ne(transparentSlots, zero);

    // A single colour is colour 0, or colour 1 in the form of three colours; the other one is 0.
    const VU lesserOr0 = hn::IfThenZeroElse(isSingle, lesser);
    const VU colour0 = hn::IfThenElse(isThreeColours, lesserOr0, greater);
    const VU colour1 = hn::IfThenElse(isThreeColours, greater, lesserOr0);
    const MU isLeastKeyColour1 = hn::Xor(hn::Eq(one565, greater), hn::Not(isThreeColours));
    const VU key1 = hn::IfThenElse(isLeastKeyColour1, leastKey, greatestKey);

    const VU keyMask = hn::Set(du, k_uiKeyMask);
    const VU slotOne = hn::Set(du, 1);
    VU indices = zero;
    for (size_t i = k_uiBcPixels; i-- > 0;)
    {
        const VU key = hn::And(hn::Load(du, pPixels + i * hn::Lanes(du)), keyMask);
        indices = hn::Or(hn::ShiftLeft<2>(indices), hn::IfThenElseZero(hn::Eq(key, key1), slotOne));
    }
    const MU isAllZero = hn::AndNot(isThreeColours, isSingle);
    hn::Store(hn::Or(colour0, hn::ShiftLeft<16>(colour1)), du, run.auiColours + uiBlock);
    hn::Store(hn::IfThenZeroElse(isAllZero, hn::Or(indices, transparentSlots)), du, run.auiIndices + uiBlock);
    hn::Store(zero, du, run.auiLeftOut + uiBlock);
}

/// Lists the blocks of a group that are in the mask, with the sums of products about their means.
HWY_INLINE void listForAxis(const uint32_t* HWY_RESTRICT pPixels, const Colours& mean, MF mask, Run& run, size_t uiBlock)
{
    VF rr = hn::Zero(df), rg = rr, rb = rr, gg = rr, gb = rr, bb = rr;
    for (size_t i = 0; i < k_uiBcPixels; ++i)
    {
        const Colours d = subtract(splitPixel(hn::Load(du, pPixels + i * hn::Lanes(du))), mean);
        rr = hn::Add(rr, hn::Mul(d.red, d.red));
        rg = hn::Add(rg, hn::Mul(d.red, d.green));
        rb = hn::Add(rb, hn::Mul(d.red, d.blue));
        gg = hn::Add(gg, hn::Mul(d.green, d.green));
        gb = hn::Add(gb, hn::Mul(d.green, d.blue));
        bb = hn::Add(bb, hn::Mul(d.blue, d.blue));
    }
    const size_t uiTo = run.uiListed;
    hn::StoreU(hn::Compress(rr, mask), df, run.aafCovariance[0] + uiTo);
    hn::StoreU(hn::Compress(rg, mask), df, run.aafCovariance[1] + uiTo);
    hn::StoreU(hn::Compress(rb, mask), df, run.aafCovariance[2] + uiTo);
    hn::StoreU(hn::Compress(gg, mask), df, run.aafCovariance[3] + uiTo);
    hn::StoreU(hn::Compress(gb, mask), df, run.aafCovariance[4] + uiTo);
    hn::StoreU(hn::Compress(bb, mask), df, run.aafCovariance[5] + uiTo);
    const VU number = hn::Iota(du, static_cast<uint32_t>(uiBlock));
    hn::StoreU(hn::Compress(number, hn::RebindMask(du, mask)), du, run.auiNumber + uiTo);
    run.uiListed += hn::CountTrue(df, mask);
}

/// First pass over a group: encodes the blocks of one or two colours and lists the others.
HWY_INLINE void surveyGroup(bool bOneBitAlpha, Run& run, size_t uiBlock)
{
    const size_t uiLanes = hn::Lanes(du);
    const uint32_t* HWY_RESTRICT pPixels = run.pixels.aui + uiBlock * k_uiBcPixels;
    const VU keyMask = hn::Set(du, k_uiKeyMask);
    const VU evenBytes = hn::Set(du, 0x00FF00FF);
    const VU lowHalf = hn::Set(du, 0xFFFF);

    // Sums of whole numbers are exact in any order, so red and blue are summed in one.
    VU leastKey = keyMask, greatestKey = hn::Zero(du), redAndBlue = greatestKey, green = greatestKey;
    for (size_t i = 0; i < k_uiBcPixels; ++i)
    {
        const VU pixel = hn::Load(du, pPixels + i * uiLanes);
        const VU key = hn::And(pixel, keyMask);
        leastKey = hn::Min(leastKey, key);
        greatestKey = hn::Max(greatestKey, key);
        redAndBlue = hn::Add(redAndBlue, hn::And(pixel, evenBytes));
        green = hn::Add(green, hn::And(hn::ShiftRight<8>(pixel), evenBytes));
    }
    VU neither = hn::Zero(du);
    for (size_t i = 0; i < k_uiBcPixels; ++i)
    {
        const VU key = hn::And(hn::Load(du, pPixels + i * uiLanes), keyMask);
        neither = hn::Or(neither, hn::Min(hn::Xor(key, leastKey), hn::Xor(key, greatestKey)));
    }
    const MU isFit = hn::Ne(neither, hn::Zero(du));
    hn::Store(hn::VecFromMask(du, isFit), du, run.auiFit + uiBlock);

    if (!hn::AllTrue(du, isFit))
    {
        const VU transparentSlots = bOneBitAlpha ? findTransparentSlots(pPixels) : hn::Zero(du);
        encodeFewColours(pPixels, leastKey, greatestKey, transparentSlots, run, uiBlock);
        const VF one = hn::Set(df, 1.0f);
        storeColours({one, one, one}, run.axis, uiBlock);
    }
    if (!hn::AllFalse(du, isFit))
    {
        const Colours sums{toFloat(hn::And(redAndBlue, lowHalf)), toFloat(hn::And(green, lowHalf)),
                           toFloat(hn::ShiftRight<16>(redAndBlue))};
        const Colours mean = multiply(sums, hn::Set(df, 0.0625f));
        storeColours(mean, run.mean, uiBlock);
        listForAxis(pPixels, mean, hn::RebindMask(df, isFit), run, uiBlock);
    }
}

/// A few steps of the power iteration for the blocks of the list from uiFrom on, one vector of them.
/// @return the lanes that have not ended
HWY_INLINE MF iterateAxes(Run& run, size_t uiFrom, Colours& axis)
{
    const VF rr = hn::LoadU(df, run.aafCovariance[0] + uiFrom);
    const VF rg = hn::LoadU(df, run.aafCovariance[1] + uiFrom);
    const VF rb = hn::LoadU(df, run.aafCovariance[2] + uiFrom);
    const VF gg = hn::LoadU(df, run.aafCovariance[3] + uiFrom);
    const VF gb = hn::LoadU(df, run.aafCovariance[4] + uiFrom);
    const VF bb = hn::LoadU(df, run.aafCovariance[5] + uiFrom);
    const Colours redRow{rr, rg, rb}, greenRow{rg, gg, gb}, blueRow{rb, gb, bb};
    const VF one = hn::Set(df, 1.0f);
    const VF squaredTolerance = hn::Set(df, k_fBcSquaredAxisTolerance);

    MF isActive = hn::Eq(one, one);
    for (uint32_t uiStep = 0; uiStep < k_uiStepsInTurn; ++uiStep)
    {
        const Colours product{dotProduct(redRow, axis), dotProduct(greenRow, axis), dotProduct(blueRow, axis)};
        const VF length = hn::Sqrt(dotProduct(product, product));
        const MF isMoving = hn::And(isActive, hn::Gt(length, hn::Zero(df)));
        const Colours next = multiply(product, hn::Div(one, length));
        const Colours move = subtract(next, axis);
        axis = choose(isMoving, next, axis);
        isActive = hn::And(isMoving, hn::Ge(dotProduct(move, move), squaredTolerance));
    }
    return isActive;
}

/// Second pass: the axes of all listed blocks.
HWY_NOINLINE void findAxes(Run& run)
{
    const size_t uiLanes = hn::Lanes(df);
    for (auto& afVector : run.aafVector)
        std::fill_n(afVector, run.uiListed + uiLanes, 1.0f);
    for (uint32_t uiSteps = 0; uiSteps < k_uiBcAxisSteps && run.uiListed > 0; uiSteps += k_uiStepsInTurn)
    {
        // The lanes beyond the end have a matrix of zeros, which ends at once, and are not written.
        for (auto& afSums : run.aafCovariance)
            hn::StoreU(hn::Zero(df), df, afSums + run.uiListed);
        const bool bLastTurn = uiSteps + k_uiStepsInTurn >= k_uiBcAxisSteps;
        size_t uiTo = 0;
        for (size_t uiFrom = 0; uiFrom < run.uiListed; uiFrom += uiLanes)
        {
            Colours axis{hn::LoadU(df, run.aafVector[0] + uiFrom), hn::LoadU(df, run.aafVector[1] + uiFrom),
                         hn::LoadU(df, run.aafVector[2] + uiFrom)};
            const MF isActive = iterateAxes(run, uiFrom, axis);
            const size_t uiCount = std::min(uiLanes, run.uiListed - uiFrom);
            const size_t uiActive = bLastTurn ? 0 : hn::CountTrue(df, isActive);
            const VU number = hn::LoadU(du, run.auiNumber + uiFrom);
            if (uiActive < uiCount)
            {
                alignas(64) float afRed[k_uiMostLanes], afGreen[k_uiMostLanes], afBlue[k_uiMostLanes];
                alignas(64) uint32_t auiEnded[k_uiMostLanes], auiNumber[k_uiMostLanes];
                hn::Store(axis.red, df, afRed);
                hn::Store(axis.green, df, afGreen);
                hn::Store(axis.blue, df, afBlue);
                hn::Store(number, du, auiNumber);
                hn::Store(hn::VecFromMask(du, hn::RebindMask(du, hn::Not(isActive))), du, auiEnded);
                for (size_t i = 0; i < uiCount; ++i)
                    if (bLastTurn || auiEnded[i] != 0)
                    {
                        run.axis.afRed[auiNumber[i]] = afRed[i];
                        run.axis.afGreen[auiNumber[i]] = afGreen[i];
                        run.axis.afBlue[auiNumber[i]] = afBlue[i];
                    }
            }
            if (uiActive > 0)
            {
                // A whole vector is stored, which reaches no entry that is still to be read: uiTo is not beyond uiFrom.
                for (auto& afSums : run.aafCovariance)
                    hn::StoreU(hn::Compress(hn::LoadU(df, afSums + uiFrom), isActive), df, afSums + uiTo);
                hn::StoreU(hn::Compress(axis.red, isActive), df, run.aafVector[0] + uiTo);
                hn::StoreU(hn::Compress(axis.green, isActive), df, run.aafVector[1] + uiTo);
                hn::StoreU(hn::Compress(axis.blue, isActive), df, run.aafVector[2] + uiTo);
                hn::StoreU(hn::Compress(number, hn::RebindMask(du, isActive)), du, run.auiNumber + uiTo);
                uiTo += uiActive;
            }
        }
        run.uiListed = uiTo;
    }
}

HWY_INLINE Colours makeEndPoint(const Colours& mean, const Colours& axis, VF p)
{
    const VF zero = hn::Zero(df);
    const VF most = hn::Set(df, 255.0f);
    return {hn::Min(hn::Max(hn::Add(mean.red, hn::Mul(p, axis.red)), zero), most),
            hn::Min(hn::Max(hn::Add(mean.green, hn::Mul(p, axis.green)), zero), most),
            hn::Min(hn::Max(hn::Add(mean.blue, hn::Mul(p, axis.blue)), zero), most)};
}

/// Third pass over a group: end points and indices of the blocks with an axis.
HWY_INLINE void fitGroup(bool bOneBitAlpha, Run& run, size_t uiBlock)
{
    const MU isFit = hn::MaskFromVec(hn::Load(du, run.auiFit + uiBlock));
    if (hn::AllFalse(du, isFit))
        return;
    const size_t uiLanes = hn::Lanes(du);
    const uint32_t* HWY_RESTRICT pPixels = run.pixels.aui + uiBlock * k_uiBcPixels;
    const Colours mean = loadColours(run.mean, uiBlock);
    const Colours axis = loadColours(run.axis, uiBlock);
    VF least = hn::Zero(df);
    VF greatest = least;
    for (size_t i = 0; i < k_uiBcPixels; ++i)
    {
        const VF p = dotProduct(axis, subtract(splitPixel(hn::Load(du, pPixels + i * uiLanes)), mean));
        least = hn::Min(least, p);
        greatest = hn::Max(greatest, p);
    }
    const Colours leastEnd = makeEndPoint(mean, axis, least);
    const Colours greatestEnd = makeEndPoint(mean, axis, greatest);
    const VU least565 = quantise565(leastEnd);
    const VU greatest565 = quantise565(greatestEnd);

    // Colour 0 is the greater number, but the lesser one in the form of three colours.
    const VU transparentSlots = bOneBitAlpha ? findTransparentSlots(pPixels) : hn::Zero(du);
    const MU isThreeColours = hn::Ne(transparentSlots, hn::Zero(du));
    const MU isLeastFirst = hn::Xor(hn::Gt(least565, greatest565), isThreeColours);
    const VU colour0 = hn::IfThenElse(isLeastFirst, least565, greatest565);
    const VU colour1 = hn::IfThenElse(isLeastFirst, greatest565, least565);
    const Colours end0 = choose(hn::RebindMask(df, isLeastFirst), leastEnd, greatestEnd);
    const Colours end1 = choose(hn::RebindMask(df, isLeastFirst), greatestEnd, leastEnd);
    const Colours way = subtract(end1, end0);
    const Colours scaledWay = multiply(way, hn::Div(hn::Set(df, 1.0f), dotProduct(way, way)));

    const MF isThreeColoursF = hn::RebindMask(df, isThreeColours);
    const VF lastStep = hn::IfThenElse(isThreeColoursF, hn::Set(df, 2.0f), hn::Set(df, 3.0f));
    const VF beyond = hn::Add(lastStep, hn::Set(df, 1.0f));
    VU steps = hn::Zero(du);
    VU leftOut = steps;
    for (size_t i = k_uiBcPixels; i-- > 0;)
    {
        const VF t = dotProduct(subtract(splitPixel(hn::Load(du, pPixels + i * uiLanes)), end0), scaledWay);
        const VF s = hn::Add(hn::Mul(lastStep, t), hn::Set(df, 0.5f));
        const MF isStep = hn::And(hn::Gt(s, hn::Set(df, -1.0f)), hn::Lt(s, beyond));
        steps = hn::Or(hn::ShiftLeft<2>(steps), truncate(hn::IfThenElseZero(isStep, s)));
        leftOut = hn::Or(hn::ShiftLeft<2>(leftOut), hn::IfThenZeroElse(hn::RebindMask(du, isStep), hn::Set(du, 3)));
    }

    // Of four colours, steps 0, 1, 2, 3 have the indices 0, 2, 3, 1; of three, steps 0, 1, 2 have 0, 2, 1. A transparent pixel has
    // both bits set, so that no index of the block before can show through.
    const VU evenBits = hn::Set(du, 0x55555555);
    const VU low = hn::And(steps, evenBits);
    const VU high = hn::And(hn::ShiftRight<1>(steps), evenBits);
    const VU upperBit = hn::Xor(low, hn::IfThenZeroElse(isThreeColours, high));
    VU indices = hn::Or(hn::Or(high, hn::ShiftLeft<1>(upperBit)), transparentSlots);
    const MU isOneColour = hn::Eq(colour0, colour1);
    indices = hn::IfThenZeroElse(isOneColour, indices);
    leftOut = hn::IfThenZeroElse(isOneColour, leftOut);

    const VU colours = hn::Or(colour0, hn::ShiftLeft<16>(colour1));
    hn::Store(hn::IfThenElse(isFit, colours, hn::Load(du, run.auiColours + uiBlock)), du, run.auiColours + uiBlock);
    hn::Store(hn::IfThenElse(isFit, indices, hn::Load(du, run.auiIndices + uiBlock)), du, run.auiIndices + uiBlock);
    hn::Store(hn::IfThenElse(isFit, leftOut, hn::Load(du, run.auiLeftOut + uiBlock)), du, run.auiLeftOut + uiBlock);
}

HWY_NOINLINE void encodeRun(const BcRowToEncode& row, bool bOneBitAlpha, Run& run, BcIndexSlots& slots)
{
    const size_t uiLanes = hn::Lanes(du);
    run.uiListed = 0;
    loadRun(row, run.pixels);
    for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; uiBlock += uiLanes)
        surveyGroup(bOneBitAlpha, run, uiBlock);
    findAxes(run);
    for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; uiBlock += uiLanes)
        fitGroup(bOneBitAlpha, run, uiBlock);
    for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; ++uiBlock)
    {
        slots.uiBits = run.auiIndices[uiBlock] | (slots.uiBits & run.auiLeftOut[uiBlock]);
        const uint64_t uiBits = run.auiColours[uiBlock] | static_cast<uint64_t>(slots.uiBits) << 32;
        storeLE(row.pParts + uiBlock * row.uiBlockBytes, uiBits);
    }
}

void encodeColourRow(const BcRowToEncode& row, bool bOneBitAlpha, BcIndexSlots& slots)
{
    Run run;
    for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; uiBlock += k_uiRunBlocks)
        encodeRun(row.part(uiBlock, std::min(k_uiRunBlocks, row.uiBlockCount - uiBlock)), bOneBitAlpha, run, slots);
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(encodeColourRow);

void bcColourRow(const BcRowToEncode& row, bool bOneBitAlpha, BcIndexSlots& slots)
{
    HWY_DYNAMIC_DISPATCH(encodeColourRow)(row, bOneBitAlpha, slots);
}

} // namespace moxtexture
#endif
