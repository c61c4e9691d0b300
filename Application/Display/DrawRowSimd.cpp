#include "Display/DrawRow.h"

#include <typeinfo>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Display/DrawRowSimd.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE
{
namespace
{

namespace hn = hwy::HWY_NAMESPACE;

// A lane is a pixel, red in the lowest byte. Arithmetic runs on two channels at once, 16 bits apart: no sum below is wider.
constexpr uint32_t k_ui32TwoChannels = 0x00FF00FF;

/// Calls shade(tag, pixels) for all pixels, in whole vectors, then one by one, and stores what it gives.
template <typename Shade>
HWY_INLINE void shadeRow(const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount, Shade shade)
{
    const auto* pSource = reinterpret_cast<const uint32_t*>(pui8Source);
    auto* pTarget = reinterpret_cast<uint32_t*>(pui8Target);
    const hn::ScalableTag<uint32_t> dWhole;
    const hn::CappedTag<uint32_t, 1> dOne;
    size_t i = 0;
    for (; i + hn::Lanes(dWhole) <= uiCount; i += hn::Lanes(dWhole))
        hn::StoreU(shade(dWhole, hn::LoadU(dWhole, pSource + i)), dWhole, pTarget + i);
    for (; i < uiCount; ++i)
        hn::StoreU(shade(dOne, hn::LoadU(dOne, pSource + i)), dOne, pTarget + i);
}

/// Both channels divided by 255, truncated; exact from 0 to 65534.
template <class D>
HWY_INLINE hn::Vec<D> divideBy255(D d, hn::Vec<D> channels)
{
    const auto mask = hn::Set(d, k_ui32TwoChannels);
    const auto upper = hn::And(hn::ShiftRight<8>(channels), mask);
    return hn::And(hn::ShiftRight<8>(hn::Add(hn::Add(channels, upper), hn::Set(d, 0x00010001))), mask);
}

/// Background and mask of a functor, laid out for the lanes.
struct LaneColours
{
    explicit LaneColours(const CMOXDrawPixel& drawPixel)
    {
        const std::array<uint8_t, 4>& aui8BG = drawPixel.getBGColour();
        const std::array<uint8_t, 4>& aui8Mask = drawPixel.getMask();
        ui32RedBlue = aui8BG[0] | static_cast<uint32_t>(aui8BG[2]) << 16;
        ui32Green = aui8BG[1];
        ui32AlphaOn = static_cast<uint8_t>(~aui8Mask[3]);
        ui32Mask = aui8Mask[0] | static_cast<uint32_t>(aui8Mask[1]) << 8 | static_cast<uint32_t>(aui8Mask[2]) << 16 | 0xFF000000u;
    }

    uint32_t ui32RedBlue;
    uint32_t ui32Green;
    uint32_t ui32AlphaOn; ///< or'ed to alpha
    uint32_t ui32Mask;    ///< leaves alpha alone
};

/// Blends a row: alpha of a pixel, then its colours by mix(tag, channels, background of these channels, alpha), then the mask.
template <typename Mix>
HWY_INLINE void blendRow(const CMOXDrawPixel& drawPixel, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount, Mix mix)
{
    const LaneColours colours(drawPixel);
    shadeRow(pui8Source, pui8Target, uiCount,
             [&](auto d, auto pixels) HWY_ATTR
             {
                 const auto alpha = hn::Or(hn::ShiftRight<24>(pixels), hn::Set(d, colours.ui32AlphaOn));
                 const auto redBlue = mix(d, hn::And(pixels, hn::Set(d, k_ui32TwoChannels)), colours.ui32RedBlue, alpha);
                 const auto green = mix(d, hn::And(hn::ShiftRight<8>(pixels), hn::Set(d, 0xFF)), colours.ui32Green, alpha);
                 const auto joined = hn::Or(hn::Or(redBlue, hn::ShiftLeft<8>(green)), hn::ShiftLeft<24>(alpha));
                 return hn::And(joined, hn::Set(d, colours.ui32Mask));
             });
}

void BlendRow(const CMOXDrawPixel& drawPixel, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount)
{
    // bg * (255 - a) + src * a as bg * 255 + (src - bg) * a: differences may borrow from the upper channel, the sum gives it back.
    blendRow(drawPixel, pui8Source, pui8Target, uiCount,
             [](auto d, auto source, uint32_t ui32BG, auto alpha) HWY_ATTR
             {
                 const auto difference = hn::Mul(hn::Sub(source, hn::Set(d, ui32BG)), alpha);
                 return divideBy255(d, hn::Add(hn::Set(d, ui32BG * 255), difference));
             });
}

void PreMultBlendRow(const CMOXDrawPixel& drawPixel, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount)
{
    blendRow(drawPixel, pui8Source, pui8Target, uiCount,
             [](auto d, auto source, uint32_t ui32BG, auto alpha) HWY_ATTR
             {
                 const auto rest = hn::Sub(hn::Set(d, 255), alpha);
                 const auto sum = hn::Add(source, divideBy255(d, hn::Mul(hn::Set(d, ui32BG), rest)));
                 // A sum of 256 or more has bit 8, which becomes eight set bits.
                 const auto over = hn::And(hn::ShiftRight<8>(sum), hn::Set(d, 0x00010001));
                 return hn::And(hn::Or(sum, hn::Sub(hn::ShiftLeft<8>(over), over)), hn::Set(d, k_ui32TwoChannels));
             });
}

void AlphaAsGreyRow(const CMOXDrawPixel&, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount)
{
    shadeRow(pui8Source, pui8Target, uiCount,
             [](auto d, auto pixels) HWY_ATTR
             {
                 const auto alpha = hn::ShiftRight<24>(pixels);
                 const auto two = hn::Or(alpha, hn::ShiftLeft<8>(alpha));
                 return hn::Or(hn::Or(two, hn::ShiftLeft<16>(alpha)), hn::Set(d, 0xFF000000u));
             });
}

void SwapRow(uint8_t* pui8Pixels, size_t uiCount)
{
    shadeRow(pui8Pixels, pui8Pixels, uiCount,
             [](auto d, auto pixels) HWY_ATTR
             {
                 const auto red = hn::ShiftLeft<16>(hn::And(pixels, hn::Set(d, 0xFF)));
                 const auto blue = hn::And(hn::ShiftRight<16>(pixels), hn::Set(d, 0xFF));
                 const auto green = hn::And(pixels, hn::Set(d, 0xFF00));
                 return hn::Or(hn::Or(red, blue), hn::Or(green, hn::Set(d, 0xFF000000u)));
             });
}

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace
{

HWY_EXPORT(BlendRow);
HWY_EXPORT(PreMultBlendRow);
HWY_EXPORT(AlphaAsGreyRow);
HWY_EXPORT(SwapRow);

void drawBlendRow(const CMOXDrawPixel& drawPixel, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount)
{
    HWY_DYNAMIC_DISPATCH(BlendRow)(drawPixel, pui8Source, pui8Target, uiCount);
}

void drawPreMultBlendRow(const CMOXDrawPixel& drawPixel, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount)
{
    HWY_DYNAMIC_DISPATCH(PreMultBlendRow)(drawPixel, pui8Source, pui8Target, uiCount);
}

void drawAlphaAsGreyRow(const CMOXDrawPixel& drawPixel, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount)
{
    HWY_DYNAMIC_DISPATCH(AlphaAsGreyRow)(drawPixel, pui8Source, pui8Target, uiCount);
}

} // namespace

DrawRowFunction getDrawRow(const CMOXDrawPixel& drawPixel)
{
    const std::type_info& type = typeid(drawPixel);
    if (type == typeid(CMOXDrawPixelBlend))
        return drawBlendRow;
    if (type == typeid(CMOXDrawPixelPreMultBlend))
        return drawPreMultBlendRow;
    if (type == typeid(CMOXDrawPixelAlphaAsGrey))
        return drawAlphaAsGreyRow;
    return drawRowReference;
}

void swapRowForScreen(uint8_t* pui8Pixels, size_t uiCount)
{
    HWY_DYNAMIC_DISPATCH(SwapRow)(pui8Pixels, uiCount);
}

#endif
