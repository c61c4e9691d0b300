#include "Codecs/Packed/OneBit.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/Packed/OneBitSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

#if HWY_TARGET == HWY_SCALAR

// One lane does not make a byte.
void encodeBitRun(const uint8_t* pPixels, uint8_t* pBits, size_t uiByteCount)
{
    encodeBitsReference(pPixels, pBits, uiByteCount);
}

#else

namespace hn = hwy::HWY_NAMESPACE;

void encodeBitRun(const uint8_t* pPixels, uint8_t* pBits, size_t uiByteCount)
{
    const hn::ScalableTag<int16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const size_t uiBytes = hn::Lanes(d16) / 8;
    size_t i = 0;
    for (; i + uiBytes <= uiByteCount; i += uiBytes)
    {
        hn::Vec<decltype(d8)> red, green, blue, alpha;
        hn::LoadInterleaved4(d8, pPixels + 32 * i, red, green, blue, alpha);
        const auto sum = hn::Add(hn::Add(hn::PromoteTo(d16, red), hn::PromoteTo(d16, green)), hn::PromoteTo(d16, blue));
        hn::StoreMaskBits(d16, hn::Gt(sum, hn::Set(d16, 3 * 128 - 1)), pBits + i);
    }
    encodeBitsReference(pPixels + 32 * i, pBits + i, uiByteCount - i);
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(encodeBitRun);

void encodeBits(const uint8_t* pPixels, uint8_t* pBits, size_t uiByteCount)
{
    HWY_DYNAMIC_DISPATCH(encodeBitRun)(pPixels, pBits, uiByteCount);
}

} // namespace moxtexture
#endif
