#include "Codecs/Packed/PackedYUV.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/Packed/PackedYUVSimd.cpp"
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

/// A pair is a lane here: U, Y0, V, Y1 from the lowest byte, or every two bytes changed for each other.
HWY_INLINE VU changeOrder(VU pairs)
{
    const VU evenBytes = hn::Set(du, 0x00FF00FF);
    return hn::Or(hn::ShiftLeft<8>(hn::And(pairs, evenBytes)), hn::And(hn::ShiftRight<8>(pairs), evenBytes));
}

template <int kByte>
HWY_INLINE VI getByte(VU v)
{
    return hn::BitCast(di, hn::And(hn::ShiftRight<8 * kByte>(v), hn::Set(du, 0xFF)));
}

template <int kByte>
HWY_INLINE VF weigh(VU pixels, float fWeight)
{
    return hn::Mul(hn::Set(df, fWeight), hn::ConvertTo(df, getByte<kByte>(pixels)));
}

HWY_INLINE VU truncate(VF sum)
{
    return hn::BitCast(du, hn::ConvertTo(di, sum));
}

HWY_INLINE VU getLuma(VU pixels)
{
    const VF sum = hn::Add(hn::Add(weigh<0>(pixels, 0.257f), weigh<1>(pixels, 0.504f)), weigh<2>(pixels, 0.098f));
    return truncate(hn::Add(sum, hn::Set(df, 16.5f)));
}

HWY_INLINE VU getU(VU pixels)
{
    const VF sum = hn::Sub(weigh<2>(pixels, 0.439f), hn::Add(weigh<0>(pixels, 0.148f), weigh<1>(pixels, 0.291f)));
    return truncate(hn::Add(sum, hn::Set(df, 128.5f)));
}

HWY_INLINE VU getV(VU pixels)
{
    const VF sum = hn::Sub(hn::Sub(weigh<0>(pixels, 0.439f), weigh<1>(pixels, 0.368f)), weigh<2>(pixels, 0.071f));
    return truncate(hn::Add(sum, hn::Set(df, 128.5f)));
}

void encodeYUVRun(const uint8_t* pPixels, uint8_t* pPairs, size_t uiPairCount, bool bLumaFirst)
{
    const size_t uiLanes = hn::Lanes(du);
    alignas(64) uint32_t auiPixels[2 * k_uiMostLanes];
    alignas(64) uint32_t auiPairs[k_uiMostLanes];
    size_t i = 0;
    for (; i + uiLanes <= uiPairCount; i += uiLanes)
    {
        std::memcpy(auiPixels, pPixels + 8 * i, 8 * uiLanes);
        VU first, second;
        hn::LoadInterleaved2(du, auiPixels, first, second);
        const VU lumas = hn::Or(hn::ShiftLeft<8>(getLuma(first)), hn::ShiftLeft<24>(getLuma(second)));
        const VU pairs = hn::Or(lumas, hn::Or(getU(first), hn::ShiftLeft<16>(getV(second))));
        hn::Store(bLumaFirst ? changeOrder(pairs) : pairs, du, auiPairs);
        std::memcpy(pPairs + 4 * i, auiPairs, 4 * uiLanes);
    }
    encodeYUVPairsReference(pPixels + 8 * i, pPairs + 4 * i, uiPairCount - i, bLumaFirst);
}

HWY_INLINE VU toByte(VI sum)
{
    return hn::BitCast(du, hn::Min(hn::Max(hn::ShiftRight<8>(sum), hn::Zero(di)), hn::Set(di, 255)));
}

/// What U and V add to each channel.
struct Shared
{
    VI red, green, blue;
};

HWY_INLINE VU decodePixels(VI luma, const Shared& shared)
{
    const VI scaled = hn::Add(hn::Mul(luma, hn::Set(di, 298)), hn::Set(di, 128 - 16 * 298));
    const VU red = toByte(hn::Add(scaled, shared.red));
    const VU green = toByte(hn::Add(scaled, shared.green));
    const VU blue = toByte(hn::Add(scaled, shared.blue));
    return hn::Or(hn::Or(red, hn::ShiftLeft<8>(green)), hn::Or(hn::ShiftLeft<16>(blue), hn::Set(du, 0xFF000000)));
}

void decodeYUVRun(const uint8_t* pPairs, uint8_t* pPixels, size_t uiPairCount, bool bLumaFirst)
{
    const size_t uiLanes = hn::Lanes(du);
    alignas(64) uint32_t auiPixels[2 * k_uiMostLanes];
    alignas(64) uint32_t auiPairs[k_uiMostLanes];
    const VI middle = hn::Set(di, 128);
    size_t i = 0;
    for (; i + uiLanes <= uiPairCount; i += uiLanes)
    {
        std::memcpy(auiPairs, pPairs + 4 * i, 4 * uiLanes);
        const VU stored = hn::Load(du, auiPairs);
        const VU pairs = bLumaFirst ? changeOrder(stored) : stored;
        const VI u = hn::Sub(getByte<0>(pairs), middle);
        const VI v = hn::Sub(getByte<2>(pairs), middle);
        const Shared shared{hn::Mul(v, hn::Set(di, 409)), hn::Add(hn::Mul(u, hn::Set(di, -100)), hn::Mul(v, hn::Set(di, -208))),
                            hn::Mul(u, hn::Set(di, 517))};
        const VU first = decodePixels(getByte<1>(pairs), shared);
        const VU second = decodePixels(getByte<3>(pairs), shared);
        hn::StoreInterleaved2(first, second, du, auiPixels);
        std::memcpy(pPixels + 8 * i, auiPixels, 8 * uiLanes);
    }
    decodeYUVPairsReference(pPairs + 4 * i, pPixels + 8 * i, uiPairCount - i, bLumaFirst);
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(encodeYUVRun);
HWY_EXPORT(decodeYUVRun);

void encodeYUVPairs(const uint8_t* pPixels, uint8_t* pPairs, size_t uiPairCount, bool bLumaFirst)
{
    HWY_DYNAMIC_DISPATCH(encodeYUVRun)(pPixels, pPairs, uiPairCount, bLumaFirst);
}

void decodeYUVPairs(const uint8_t* pPairs, uint8_t* pPixels, size_t uiPairCount, bool bLumaFirst)
{
    HWY_DYNAMIC_DISPATCH(decodeYUVRun)(pPairs, pPixels, uiPairCount, bLumaFirst);
}

} // namespace moxtexture
#endif
