#include "Codecs/MOXTC/MOXTCIIBlockCoder.h"

#include <algorithm>
#include <cstring>

#include "Codecs/MOXTC/WriteBlocks.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/MOXTC/MOXTCIIBlockCoderSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

// Blocks side by side: each has one lane of a vector, and does there what the plain form does, in its order.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

namespace hn = hwy::HWY_NAMESPACE;

using DF = hn::CappedTag<float, 16>;
using DI = hn::RebindToSigned<DF>;
using DU = hn::RebindToUnsigned<DF>;
using VF = hn::Vec<DF>;
using VU = hn::Vec<DU>;
using MF = hn::Mask<DF>;
using MU = hn::Mask<DU>;

constexpr DF df{};
constexpr DI di{};
constexpr DU du{};

constexpr size_t k_uiMostLanes = 16;
constexpr size_t k_uiSide = 4;

/// The pixels of a group of blocks: a vector for each place in the block.
struct GroupPixels
{
    alignas(64) uint32_t aui[k_uiCodedPixels * k_uiMostLanes];

    HWY_INLINE VU load(size_t i) const { return hn::Load(du, aui + i * hn::Lanes(du)); }
};

/// A place or a direction for every block of a group.
struct Vectors
{
    VF red;
    VF green;
    VF blue;
    VF alpha;
};

/// The upper triangle of a symmetric matrix for every block of a group.
struct Matrices
{
    VF rr, rg, rb, ra, gg, gb, ga, bb, ba, aa;
};

/// What a group's blocks are to be made of.
struct GroupResult
{
    VU colourA;
    VU colourB;
    VU modulation;
};

HWY_INLINE VF toFloat(VU v)
{
    return hn::ConvertTo(df, hn::BitCast(di, v));
}

HWY_INLINE Vectors splitPixel(VU pixel)
{
    const VU byte = hn::Set(du, 0xFF);
    return {toFloat(hn::And(pixel, byte)), toFloat(hn::And(hn::ShiftRight<8>(pixel), byte)),
            toFloat(hn::And(hn::ShiftRight<16>(pixel), byte)), toFloat(hn::ShiftRight<24>(pixel))};
}

HWY_INLINE Vectors add(const Vectors& a, const Vectors& b)
{
    return {hn::Add(a.red, b.red), hn::Add(a.green, b.green), hn::Add(a.blue, b.blue), hn::Add(a.alpha, b.alpha)};
}

HWY_INLINE Vectors subtract(const Vectors& a, const Vectors& b)
{
    return {hn::Sub(a.red, b.red), hn::Sub(a.green, b.green), hn::Sub(a.blue, b.blue), hn::Sub(a.alpha, b.alpha)};
}

HWY_INLINE Vectors multiply(const Vectors& a, VF factor)
{
    return {hn::Mul(a.red, factor), hn::Mul(a.green, factor), hn::Mul(a.blue, factor), hn::Mul(a.alpha, factor)};
}

HWY_INLINE Vectors choose(MF mask, const Vectors& yes, const Vectors& no)
{
    return {hn::IfThenElse(mask, yes.red, no.red), hn::IfThenElse(mask, yes.green, no.green), hn::IfThenElse(mask, yes.blue, no.blue),
            hn::IfThenElse(mask, yes.alpha, no.alpha)};
}

HWY_INLINE VF dotProduct(const Vectors& a, const Vectors& b)
{
    const VF colours = hn::Add(hn::Add(hn::Mul(a.red, b.red), hn::Mul(a.green, b.green)), hn::Mul(a.blue, b.blue));
    return hn::Add(colours, hn::Mul(a.alpha, b.alpha));
}

HWY_INLINE MU isTransparent(VU pixel)
{
    return hn::Eq(hn::ShiftRight<24>(pixel), hn::Zero(du));
}

/// Equal for equal colours: full alpha for none, too.
HWY_INLINE VU getColourKey(VU pixel)
{
    return hn::Or(pixel, hn::IfThenElseZero(isTransparent(pixel), hn::Set(du, 0xFF000000)));
}

/// Copies the pixels of blocks uiFirst and on; where there are no more, the last block stands in.
HWY_INLINE void loadGroup(const uint8_t* pui8Source, size_t uiBlocksX, size_t uiFirst, size_t uiBlockCount, GroupPixels& pixels)
{
    constexpr size_t uiBlockRowBytes = k_uiSide * 4;
    const size_t uiLanes = hn::Lanes(du);
    const size_t uiPitch = uiBlocksX * uiBlockRowBytes;
    std::array<const uint8_t*, k_uiMostLanes> apBlocks;
    for (size_t i = 0; i < uiLanes; ++i)
    {
        const size_t uiBlock = std::min(uiFirst + i, uiBlockCount - 1);
        apBlocks[i] = pui8Source + uiBlock / uiBlocksX * k_uiSide * uiPitch + uiBlock % uiBlocksX * uiBlockRowBytes;
    }
    for (size_t y = 0; y < k_uiSide; ++y)
    {
        alignas(64) uint32_t auiRow[k_uiMostLanes * k_uiSide];
        for (size_t i = 0; i < uiLanes; ++i)
            std::memcpy(auiRow + i * k_uiSide, apBlocks[i] + y * uiPitch, uiBlockRowBytes);
        VU a, b, c, d;
        hn::LoadInterleaved4(du, auiRow, a, b, c, d);
        uint32_t* pOut = pixels.aui + y * k_uiSide * uiLanes;
        hn::Store(a, du, pOut);
        hn::Store(b, du, pOut + uiLanes);
        hn::Store(c, du, pOut + 2 * uiLanes);
        hn::Store(d, du, pOut + 3 * uiLanes);
    }
}

/// Codes of a group, from the last pixel to the first: the first has the lowest bits.
template <typename GetCode>
HWY_INLINE VU makeCodes(const GroupPixels& pixels, const GetCode& getCode)
{
    VU codes = hn::Zero(du);
    for (size_t i = k_uiCodedPixels; i-- > 0;)
        codes = hn::Or(hn::ShiftLeft<2>(codes), getCode(pixels.load(i)));
    return codes;
}

/// 256 times the covariance of the channels; whole numbers below 2^24, so no sum is rounded.
HWY_INLINE Matrices findCovariance(const GroupPixels& pixels, const Vectors& sum)
{
    const VF zero = hn::Zero(df);
    Matrices m{zero, zero, zero, zero, zero, zero, zero, zero, zero, zero};
    for (size_t i = 0; i < k_uiCodedPixels; ++i)
    {
        const Vectors p = splitPixel(pixels.load(i));
        m.rr = hn::Add(m.rr, hn::Mul(p.red, p.red));
        m.rg = hn::Add(m.rg, hn::Mul(p.red, p.green));
        m.rb = hn::Add(m.rb, hn::Mul(p.red, p.blue));
        m.ra = hn::Add(m.ra, hn::Mul(p.red, p.alpha));
        m.gg = hn::Add(m.gg, hn::Mul(p.green, p.green));
        m.gb = hn::Add(m.gb, hn::Mul(p.green, p.blue));
        m.ga = hn::Add(m.ga, hn::Mul(p.green, p.alpha));
        m.bb = hn::Add(m.bb, hn::Mul(p.blue, p.blue));
        m.ba = hn::Add(m.ba, hn::Mul(p.blue, p.alpha));
        m.aa = hn::Add(m.aa, hn::Mul(p.alpha, p.alpha));
    }
    const auto centre = [](VF products, VF sumC, VF sumD) { return hn::Sub(hn::Mul(hn::Set(df, 16.0f), products), hn::Mul(sumC, sumD)); };
    return {centre(m.rr, sum.red, sum.red),     centre(m.rg, sum.red, sum.green),   centre(m.rb, sum.red, sum.blue),
            centre(m.ra, sum.red, sum.alpha),   centre(m.gg, sum.green, sum.green), centre(m.gb, sum.green, sum.blue),
            centre(m.ga, sum.green, sum.alpha), centre(m.bb, sum.blue, sum.blue),   centre(m.ba, sum.blue, sum.alpha),
            centre(m.aa, sum.alpha, sum.alpha)};
}

/// The principal axes of the lanes in isActive; 1 in all channels in the others.
HWY_INLINE Vectors findPrincipalAxes(const Matrices& m, MF isActive)
{
    const VF one = hn::Set(df, 1.0f);
    Vectors axis{one, one, one, one};
    for (uint32_t uiRound = 0; uiRound < k_uiAxisRounds; ++uiRound)
    {
        Vectors next{dotProduct({m.rr, m.rg, m.rb, m.ra}, axis), dotProduct({m.rg, m.gg, m.gb, m.ga}, axis),
                     dotProduct({m.rb, m.gb, m.bb, m.ba}, axis), dotProduct({m.ra, m.ga, m.ba, m.aa}, axis)};
        const VF length = hn::Sqrt(dotProduct(next, next));
        isActive = hn::And(isActive, hn::Ne(length, hn::Zero(df)));
        if (hn::AllFalse(df, isActive))
            break;
        next = multiply(next, hn::Div(one, length));
        const Vectors change = subtract(next, axis);
        axis = choose(isActive, next, axis);
        isActive = hn::AndNot(hn::Lt(hn::Sqrt(dotProduct(change, change)), hn::Set(df, k_fAxisTolerance)), isActive);
    }
    return axis;
}

HWY_INLINE VU makeEndPoint(const Vectors& mean, const Vectors& axis, VF t)
{
    const auto onLine = [t](VF m, VF a)
    {
        const VF channel = hn::Min(hn::Max(hn::Add(m, hn::Mul(t, a)), hn::Zero(df)), hn::Set(df, 255.0f));
        return hn::BitCast(du, hn::ConvertTo(di, channel));
    };
    const VU redGreen = hn::Or(onLine(mean.red, axis.red), hn::ShiftLeft<8>(onLine(mean.green, axis.green)));
    const VU blueAlpha = hn::Or(hn::ShiftLeft<16>(onLine(mean.blue, axis.blue)), hn::ShiftLeft<24>(onLine(mean.alpha, axis.alpha)));
    return hn::Or(redGreen, blueAlpha);
}

/// (30 red + 59 green + 11 blue) / 100 without its fraction. 5243 / 2^19 is near enough to 1 / 100 for all sums up to 25500.
HWY_INLINE VU getBrightness(VU pixel)
{
    const VU byte = hn::Set(du, 0xFF);
    const VU red = hn::Mul(hn::And(pixel, byte), hn::Set(du, 30));
    const VU green = hn::Mul(hn::And(hn::ShiftRight<8>(pixel), byte), hn::Set(du, 59));
    const VU blue = hn::Mul(hn::And(hn::ShiftRight<16>(pixel), byte), hn::Set(du, 11));
    return hn::ShiftRight<19>(hn::Mul(hn::Add(hn::Add(red, green), blue), hn::Set(du, 5243)));
}

/// The blocks in isMany, which have three colours or more; nothing of use in the other lanes.
HWY_INLINE GroupResult codeManyColours(const GroupPixels& pixels, MU isMany, MU isPunchThrough)
{
    const VF zero = hn::Zero(df);
    Vectors sum{zero, zero, zero, zero};
    for (size_t i = 0; i < k_uiCodedPixels; ++i)
        sum = add(sum, splitPixel(pixels.load(i)));
    const Vectors mean = multiply(sum, hn::Set(df, 0.0625f));
    const Vectors axis = findPrincipalAxes(findCovariance(pixels, sum), hn::RebindMask(df, isMany));

    VF least = dotProduct(subtract(splitPixel(pixels.load(0)), mean), axis);
    VF greatest = least;
    for (size_t i = 1; i < k_uiCodedPixels; ++i)
    {
        const VF projection = dotProduct(subtract(splitPixel(pixels.load(i)), mean), axis);
        least = hn::Min(least, projection);
        greatest = hn::Max(greatest, projection);
    }
    const VU low = makeEndPoint(mean, axis, least);
    const VU high = makeEndPoint(mean, axis, greatest);
    const VU lowBrightness = getBrightness(low);
    const VU highBrightness = getBrightness(high);
    const MU isLowBrighter =
        hn::Or(hn::Gt(lowBrightness, highBrightness), hn::And(hn::Eq(lowBrightness, highBrightness), hn::Gt(low, high)));
    const VU colourA = hn::IfThenElse(isLowBrighter, high, low);
    const VU colourB = hn::IfThenElse(isLowBrighter, low, high);

    const Vectors a = splitPixel(colourA);
    const Vectors way = subtract(splitPixel(colourB), a);
    const VF squaredWay = dotProduct(way, way);
    // Where A and B are one, every product is 0 as well: 0 / 1 in place of 0 / 0.
    const VF divisor = hn::IfThenElse(hn::Eq(squaredWay, zero), hn::Set(df, 1.0f), squaredWay);
    const auto getCode = [&](VU pixel)
    {
        const VU one = hn::Set(du, 1);
        const VF t = hn::Div(dotProduct(subtract(splitPixel(pixel), a), way), divisor);
        const auto oneFrom = [](VF value, float fLimit)
        { return hn::IfThenElseZero(hn::RebindMask(du, hn::Ge(value, hn::Set(df, fLimit))), hn::Set(du, 1)); };
        const VU plain = hn::Add(hn::Add(oneFrom(t, 0.1875f), oneFrom(t, 0.5f)), oneFrom(t, 0.8175f));
        const VF place = hn::Add(hn::Mul(hn::Set(df, 2.0f), t), hn::Set(df, 0.5f));
        const VU opaque = hn::Add(hn::ShiftLeft<1>(oneFrom(place, 1.0f)), oneFrom(place, 2.0f));
        const VU punched = hn::IfThenElse(isTransparent(pixel), one, opaque);
        return hn::IfThenElse(isPunchThrough, punched, plain);
    };
    return {colourA, colourB, makeCodes(pixels, getCode)};
}

/// Colours and codes of a group as if no block had more than two colours, and which blocks do have more.
HWY_INLINE GroupResult codeFewColours(const GroupPixels& pixels, MU isPunchThrough, MU& isMany)
{
    const VU first = pixels.load(0);
    const VU firstKey = getColourKey(first);
    VU second = first;
    VU secondKey = firstKey;
    isMany = hn::MaskFromVec(hn::Zero(du));
    for (size_t i = 1; i < k_uiCodedPixels; ++i)
    {
        const VU pixel = pixels.load(i);
        const VU key = getColourKey(pixel);
        const MU isOther = hn::And(hn::Ne(key, firstKey), hn::Ne(key, secondKey));
        const MU isSecond = hn::And(isOther, hn::Eq(secondKey, firstKey));
        isMany = hn::Or(isMany, hn::AndNot(isSecond, isOther));
        second = hn::IfThenElse(isSecond, pixel, second);
        secondKey = hn::IfThenElse(isSecond, key, secondKey);
    }
    const MU isOneColour = hn::Eq(firstKey, secondKey);
    const VU codeOfFirst = hn::IfThenElseZero(hn::And(isOneColour, isPunchThrough), hn::Set(du, 1));
    const auto getCode = [&](VU pixel)
    {
        const MU isSecond = hn::AndNot(isOneColour, hn::Eq(getColourKey(pixel), secondKey));
        const VU code = hn::IfThenElse(isSecond, hn::Set(du, 3), codeOfFirst);
        return hn::IfThenElse(isTransparent(pixel), hn::Set(du, 2), code);
    };
    return {first, second, makeCodes(pixels, getCode)};
}

} // namespace

HWY_NOINLINE void codeBlocks(const uint8_t* pui8Source, size_t uiBlocksX, size_t uiBlockCount, uint8_t* pui8Target)
{
    const size_t uiLanes = hn::Lanes(du);
    GroupPixels pixels;
    for (size_t uiFirst = 0; uiFirst < uiBlockCount; uiFirst += uiLanes)
    {
        loadGroup(pui8Source, uiBlocksX, uiFirst, uiBlockCount, pixels);
        MU isPunchThrough = isTransparent(pixels.load(0));
        for (size_t i = 1; i < k_uiCodedPixels; ++i)
            isPunchThrough = hn::Or(isPunchThrough, isTransparent(pixels.load(i)));
        MU isMany;
        GroupResult result = codeFewColours(pixels, isPunchThrough, isMany);
        if (!hn::AllFalse(du, isMany))
        {
            const GroupResult fit = codeManyColours(pixels, isMany, isPunchThrough);
            result.colourA = hn::IfThenElse(isMany, fit.colourA, result.colourA);
            result.colourB = hn::IfThenElse(isMany, fit.colourB, result.colourB);
            result.modulation = hn::IfThenElse(isMany, fit.modulation, result.modulation);
        }

        alignas(64) uint32_t auiColourA[k_uiMostLanes], auiColourB[k_uiMostLanes], auiModulation[k_uiMostLanes], auiFlags[k_uiMostLanes];
        hn::Store(result.colourA, du, auiColourA);
        hn::Store(result.colourB, du, auiColourB);
        hn::Store(result.modulation, du, auiModulation);
        hn::Store(hn::IfThenElse(isPunchThrough, hn::Set(du, k_ui32ModeFlag), hn::Set(du, k_ui32HardFlag)), du, auiFlags);
        for (size_t i = 0; i < std::min(uiLanes, uiBlockCount - uiFirst); ++i)
            storeBlock(pui8Target + (uiFirst + i) * k_uiBlockBytes,
                       {auiModulation[i], packPixels(auiColourA[i], auiColourB[i], true) | auiFlags[i]});
    }
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(codeBlocks);

void codeMOXTCIIBlocks(const uint8_t* pui8Source, uint32_t uiWidth, uint32_t uiHeight, uint8_t* pui8Target)
{
    const size_t uiBlocksX = uiWidth / getBlockWidth(false);
    HWY_DYNAMIC_DISPATCH(codeBlocks)(pui8Source, uiBlocksX, uiBlocksX * (uiHeight / k_uiBlockHeight), pui8Target);
}

} // namespace moxtexture
#endif
