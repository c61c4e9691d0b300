#include <algorithm>

#include "Pixels/PixelShuffle.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Pixels/PixelShuffleSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

/// Without vectors all pixels are left.
size_t ShufflePixels(const PixelShuffle&, const uint8_t*, uint8_t*, size_t)
{
    return 0;
}

#else

/// As many pixels at a time as fit 16 bytes on both sides. Loads and stores are always 16 bytes: what a store writes beyond its
/// pixels is written over by the next one.
/// @return the pixels that were done; the last ones are left, as 16 bytes there would reach past an end
size_t ShufflePixels(const PixelShuffle& shuffle, const uint8_t* HWY_RESTRICT pSource, uint8_t* HWY_RESTRICT pTarget, size_t uiCount)
{
    const hn::FixedTag<uint8_t, 16> d;
    const size_t uiSourceBytes = shuffle.uiSourceBytes;
    const size_t uiTargetBytes = shuffle.uiTargetBytes;
    const size_t uiStep = 16 / std::max(uiSourceBytes, uiTargetBytes);

    HWY_ALIGN uint8_t aui8From[16];
    HWY_ALIGN uint8_t aui8Mask[16];
    HWY_ALIGN uint8_t aui8Value[16];
    for (size_t i = 0; i < 16; ++i)
    {
        const size_t uiPixel = i / uiTargetBytes;
        const size_t uiByte = i % uiTargetBytes;
        const bool bCopied = uiPixel < uiStep && shuffle.aui8From[uiByte] != PixelShuffle::k_uiConstant;
        aui8From[i] = bCopied ? static_cast<uint8_t>(uiPixel * uiSourceBytes + shuffle.aui8From[uiByte]) : 0;
        aui8Mask[i] = bCopied ? 0xFF : 0;
        aui8Value[i] = bCopied ? 0 : shuffle.aui8Value[uiByte];
    }
    const auto from = hn::Load(d, aui8From);
    const auto mask = hn::Load(d, aui8Mask);
    const auto value = hn::Load(d, aui8Value);

    size_t i = 0;
    for (; (uiCount - i) * uiSourceBytes >= 16 && (uiCount - i) * uiTargetBytes >= 16; i += uiStep)
    {
        const auto bytes = hn::TableLookupBytes(hn::LoadU(d, pSource + i * uiSourceBytes), from);
        hn::StoreU(hn::Or(hn::And(bytes, mask), value), d, pTarget + i * uiTargetBytes);
    }
    return i;
}

#endif

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(ShufflePixels);

void shufflePixels(const PixelShuffle& shuffle, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
{
    const size_t uiDone = HWY_DYNAMIC_DISPATCH(ShufflePixels)(shuffle, pSource, pTarget, uiCount);
    if (uiDone != uiCount)
        shufflePixelsReference(shuffle, pSource + uiDone * shuffle.uiSourceBytes, pTarget + uiDone * shuffle.uiTargetBytes,
                               uiCount - uiDone);
}

} // namespace moxtexture
#endif
