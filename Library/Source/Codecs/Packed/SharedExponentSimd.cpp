#include "Codecs/Packed/SharedExponent.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/Packed/SharedExponentSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/Packed/PackedLanesSimd.h"

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

HWY_INLINE VF clampChannel(VF value)
{
    return hn::IfThenElseZero(hn::Gt(value, hn::Zero(df)), hn::Min(value, hn::Set(df, 65408.0f)));
}

/// 2 to the powers of the lanes, which lie within those of normal floats.
HWY_INLINE VF makePower(VI exponent)
{
    return hn::BitCast(df, hn::ShiftLeft<23>(hn::Add(exponent, hn::Set(di, 127))));
}

/// Multiplies where the plain form divides: the same, as the scale is a power of two.
HWY_INLINE VI roundChannel(VF value, VF inverseScale)
{
    return hn::ConvertTo(di, hn::Add(hn::Mul(value, inverseScale), hn::Set(df, 0.5f)));
}

HWY_INLINE VU encodePixels(VF red, VF green, VF blue)
{
    red = clampChannel(red);
    green = clampChannel(green);
    blue = clampChannel(blue);
    const VF most = hn::Max(hn::Max(red, green), blue);
    const VI floatExponent = hn::Sub(hn::BitCast(di, hn::ShiftRight<23>(hn::BitCast(du, most))), hn::Set(di, 127));
    const VI exponent = hn::Max(floatExponent, hn::Set(di, -16));
    const VI rounded = roundChannel(most, makePower(hn::Sub(hn::Set(di, 8), exponent)));
    // A true mask is -1 in every lane.
    const VI carry = hn::VecFromMask(di, hn::Eq(rounded, hn::Set(di, 512)));
    const VI raised = hn::Sub(exponent, carry);
    const VF inverseScale = makePower(hn::Sub(hn::Set(di, 8), raised));
    const VI shared = hn::ShiftLeft<27>(hn::Add(raised, hn::Set(di, 16)));
    const VI redAndGreen = hn::Or(roundChannel(red, inverseScale), hn::ShiftLeft<9>(roundChannel(green, inverseScale)));
    return hn::BitCast(du, hn::Or(hn::Or(redAndGreen, hn::ShiftLeft<18>(roundChannel(blue, inverseScale))), shared));
}

void encodeExponentRun(const uint8_t* pFloats, uint8_t* pWords, size_t uiCount)
{
    const size_t uiLanes = hn::Lanes(du);
    alignas(64) float afPixels[3 * k_uiMostLanes];
    alignas(64) uint32_t auiWords[k_uiMostLanes];
    size_t i = 0;
    for (; i + uiLanes <= uiCount; i += uiLanes)
    {
        std::memcpy(afPixels, pFloats + 12 * i, 12 * uiLanes);
        VF red, green, blue;
        hn::LoadInterleaved3(df, afPixels, red, green, blue);
        hn::Store(encodePixels(red, green, blue), du, auiWords);
        std::memcpy(pWords + 4 * i, auiWords, 4 * uiLanes);
    }
    encodeExponentPixelsReference(pFloats + 12 * i, pWords + 4 * i, uiCount - i);
}

template <int kShift>
HWY_INLINE VF decodeChannel(VU words, VF factor)
{
    const VU channel = hn::And(hn::ShiftRight<kShift>(words), hn::Set(du, 0x1FF));
    return hn::Mul(hn::ConvertTo(df, hn::BitCast(di, channel)), factor);
}

void decodeExponentRun(const uint8_t* pWords, uint8_t* pFloats, size_t uiCount)
{
    const size_t uiLanes = hn::Lanes(du);
    alignas(64) float afPixels[3 * k_uiMostLanes];
    alignas(64) uint32_t auiWords[k_uiMostLanes];
    size_t i = 0;
    for (; i + uiLanes <= uiCount; i += uiLanes)
    {
        std::memcpy(auiWords, pWords + 4 * i, 4 * uiLanes);
        const VU words = hn::Load(du, auiWords);
        const VF factor = makePower(hn::Sub(hn::BitCast(di, hn::ShiftRight<27>(words)), hn::Set(di, 24)));
        hn::StoreInterleaved3(decodeChannel<0>(words, factor), decodeChannel<9>(words, factor), decodeChannel<18>(words, factor), df,
                              afPixels);
        std::memcpy(pFloats + 12 * i, afPixels, 12 * uiLanes);
    }
    decodeExponentPixelsReference(pWords + 4 * i, pFloats + 12 * i, uiCount - i);
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(encodeExponentRun);
HWY_EXPORT(decodeExponentRun);

void encodeExponentPixels(const uint8_t* pFloats, uint8_t* pWords, size_t uiCount)
{
    HWY_DYNAMIC_DISPATCH(encodeExponentRun)(pFloats, pWords, uiCount);
}

void decodeExponentPixels(const uint8_t* pWords, uint8_t* pFloats, size_t uiCount)
{
    HWY_DYNAMIC_DISPATCH(decodeExponentRun)(pWords, pFloats, uiCount);
}

} // namespace moxtexture
#endif
