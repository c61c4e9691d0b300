#include "Codecs/BC/BcAlphaBlock.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/BC/BcAlphaBlockSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/BC/BcBlockLanesSimd.h"

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

/// The 8 bytes of the alpha parts of a group.
struct AlphaParts
{
    VU low;
    VU high;
};

/// Eight indices of three bits each, from as many steps from alpha 1 to alpha 0: 0 to 7 become 1, 7, 6, 5, 4, 3, 2, 0.
///
/// That is minus the step in three bits, with 0 and 1 changed for each other; one bit of all eight at a time.
HWY_INLINE VU getAlphaIndices(VU steps)
{
    const VU lowest = hn::Set(du, 0x00249249);
    const VU bit0 = hn::And(steps, lowest);
    const VU bit1 = hn::And(hn::ShiftRight<1>(steps), lowest);
    const VU bit2 = hn::And(hn::ShiftRight<2>(steps), lowest);
    const VU negative1 = hn::Xor(bit1, bit0);
    const VU negative2 = hn::Xor(bit2, hn::Or(bit1, bit0));
    const VU changed0 = hn::Xor(bit0, hn::AndNot(hn::Or(negative1, negative2), lowest));
    return hn::Or(changed0, hn::Or(hn::ShiftLeft<1>(negative1), hn::ShiftLeft<2>(negative2)));
}

/// Steps of eight pixels from alpha 1, rounded, three bits each.
///
/// A half rounds up, as the plain form's comparisons have it. No other quotient is nearer to a half than 1/510, so half of that
/// covers the error of multiplying by the reciprocal. (BcAlphaBlockTest tries every pair of numbers.)
HWY_INLINE VU findSteps(const uint32_t* HWY_RESTRICT pPixels, VU alpha1, VF stepsPerAlpha)
{
    const VF half = hn::Set(df, 0.5f + 1.0f / 1024.0f);
    VU steps = hn::Zero(du);
    for (size_t i = 8; i-- > 0;)
    {
        const VU alpha = hn::ShiftRight<24>(hn::Load(du, pPixels + i * hn::Lanes(du)));
        const VF t = hn::Mul(toFloat(hn::Sub(alpha, alpha1)), stepsPerAlpha);
        steps = hn::Or(hn::ShiftLeft<3>(steps), truncate(hn::Add(t, half)));
    }
    return steps;
}

HWY_INLINE AlphaParts encodeAlphas(const uint32_t* HWY_RESTRICT pPixels)
{
    const size_t uiLanes = hn::Lanes(du);
    VU least = hn::Load(du, pPixels);
    VU greatest = least;
    for (size_t i = 1; i < k_uiBcPixels; ++i)
    {
        const VU pixel = hn::Load(du, pPixels + i * uiLanes);
        least = hn::Min(least, pixel);
        greatest = hn::Max(greatest, pixel);
    }
    const VU alpha0 = hn::ShiftRight<24>(greatest);
    const VU alpha1 = hn::ShiftRight<24>(least);
    const VU ends = hn::Or(alpha0, hn::ShiftLeft<8>(alpha1));
    const MU isFlat = hn::Eq(alpha0, alpha1);
    if (hn::AllTrue(du, isFlat))
        return {ends, hn::Zero(du)};

    const VU range = hn::Max(hn::Sub(alpha0, alpha1), hn::Set(du, 1));
    const VF stepsPerAlpha = hn::Div(hn::Set(df, 7.0f), toFloat(range));
    const VU firstEight = hn::IfThenZeroElse(isFlat, getAlphaIndices(findSteps(pPixels, alpha1, stepsPerAlpha)));
    const VU lastEight = hn::IfThenZeroElse(isFlat, getAlphaIndices(findSteps(pPixels + 8 * uiLanes, alpha1, stepsPerAlpha)));
    return {hn::Or(ends, hn::ShiftLeft<16>(firstEight)), hn::Or(hn::ShiftRight<16>(firstEight), hn::ShiftLeft<8>(lastEight))};
}

/// The upper four bits of eight alphas.
HWY_INLINE VU packNibbles(const uint32_t* HWY_RESTRICT pPixels)
{
    VU nibbles = hn::Zero(du);
    for (size_t i = 8; i-- > 0;)
        nibbles = hn::Or(hn::ShiftLeft<4>(nibbles), hn::ShiftRight<28>(hn::Load(du, pPixels + i * hn::Lanes(du))));
    return nibbles;
}

void encodeAlphaRow(const BcRowToEncode& wholeRow, bool bExplicit)
{
    const size_t uiLanes = hn::Lanes(du);
    RunPixels pixels;
    for (size_t uiRun = 0; uiRun < wholeRow.uiBlockCount; uiRun += k_uiRunBlocks)
    {
        const BcRowToEncode row = wholeRow.part(uiRun, std::min(k_uiRunBlocks, wholeRow.uiBlockCount - uiRun));
        loadRun(row, pixels);
        for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; uiBlock += uiLanes)
        {
            const uint32_t* pPixels = pixels.aui + uiBlock * k_uiBcPixels;
            const AlphaParts parts =
                bExplicit ? AlphaParts{packNibbles(pPixels), packNibbles(pPixels + 8 * uiLanes)} : encodeAlphas(pPixels);
            alignas(64) uint32_t auiLow[k_uiMostLanes];
            alignas(64) uint32_t auiHigh[k_uiMostLanes];
            hn::Store(parts.low, du, auiLow);
            hn::Store(parts.high, du, auiHigh);
            const size_t uiCount = std::min(uiLanes, row.uiBlockCount - uiBlock);
            for (size_t i = 0; i < uiCount; ++i)
                storeLE(row.pParts + (uiBlock + i) * row.uiBlockBytes, auiLow[i] | static_cast<uint64_t>(auiHigh[i]) << 32);
        }
    }
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(encodeAlphaRow);

void bcAlphaRow(const BcRowToEncode& row, bool bExplicit)
{
    HWY_DYNAMIC_DISPATCH(encodeAlphaRow)(row, bExplicit);
}

} // namespace moxtexture
#endif
