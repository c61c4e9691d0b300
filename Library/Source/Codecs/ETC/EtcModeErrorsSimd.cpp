#include "Codecs/ETC/EtcModeErrors.h"

#include <algorithm>
#include <type_traits>

#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcTables.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcModeErrorsSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

// The eight distances are the lanes of a vector, or of several shorter ones, and the pixels come one after the other, so that
// sums need no step across lanes. Plain errors are floats: whole numbers below 2^24, exact in any order.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

namespace hn = hwy::HWY_NAMESPACE;

constexpr size_t k_uiPixels = 16;
constexpr size_t k_uiDistances = 8;
constexpr size_t k_uiChannels = 3;

/// More than any pixel's error.
constexpr int32_t k_i32Never = 1 << 30;

/// What the sums are made of: weighted ones outgrow the whole numbers of a float.
template <bool bWeighted>
using SumType = std::conditional_t<bWeighted, int32_t, float>;

template <bool bWeighted, class D, class V = hn::Vec<D>>
HWY_INLINE V squaredError(D d, V red, V green, V blue)
{
    const V red2 = hn::Mul(red, red);
    const V green2 = hn::Mul(green, green);
    const V blue2 = hn::Mul(blue, blue);
    if constexpr (bWeighted)
    {
        using T = hn::TFromD<D>;
        return hn::Add(hn::Add(hn::Mul(red2, hn::Set(d, T{299})), hn::Mul(green2, hn::Set(d, T{587}))), hn::Mul(blue2, hn::Set(d, T{114})));
    }
    else
        return hn::Add(hn::Add(red2, green2), blue2);
}

/// The block as the sums want it: by channel and pixel, and the least that a pixel can cost without a distance.
template <typename T>
struct PixelTerms
{
    alignas(64) T aaChannels[k_uiChannels][k_uiPixels];
    alignas(64) T aaBases[2][k_uiPixels]; ///< T mode: at most this, in the two orders of colours
    alignas(64) T aCeilingH[k_uiPixels];  ///< H mode of punch-through: at most this
};

/// One colour's two paints at every distance.
template <class V>
struct DistancePaints
{
    V aPlus[k_uiChannels];
    V aMinus[k_uiChannels];
};

template <typename T, class D, class V = hn::Vec<D>>
HWY_INLINE DistancePaints<V> makePaints(D d, const EtcColour& base, const T* HWY_RESTRICT pDistances)
{
    const V distance = hn::Load(d, pDistances);
    DistancePaints<V> paints;
    for (size_t c = 0; c < k_uiChannels; ++c)
    {
        const V channel = hn::Set(d, static_cast<T>(base[c]));
        paints.aPlus[c] = hn::Min(hn::Add(channel, distance), hn::Set(d, T{255}));
        paints.aMinus[c] = hn::Max(hn::Sub(channel, distance), hn::Zero(d));
    }
    return paints;
}

/// Fills the channels and each pixel's error at the two colours themselves.
template <bool bWeighted>
HWY_INLINE void measureBases(const EtcPixels& pixels, const EtcColour (&aBases)[2], PixelTerms<SumType<bWeighted>>& terms)
{
    using T = SumType<bWeighted>;
    const uint8_t* const apPlanes[k_uiChannels] = {pixels.aui8Red.data(), pixels.aui8Green.data(), pixels.aui8Blue.data()};
    const hn::CappedTag<T, k_uiPixels> d;
    const hn::RebindToSigned<decltype(d)> di;
    const hn::Rebind<uint8_t, decltype(d)> d8;
    using V = hn::Vec<decltype(d)>;
    for (size_t i = 0; i < k_uiPixels; i += hn::Lanes(d))
    {
        V aChannels[k_uiChannels];
        for (size_t c = 0; c < k_uiChannels; ++c)
        {
            const auto whole = hn::PromoteTo(di, hn::Load(d8, apPlanes[c] + i));
            if constexpr (bWeighted)
                aChannels[c] = whole;
            else
                aChannels[c] = hn::ConvertTo(d, whole);
            hn::Store(aChannels[c], d, terms.aaChannels[c] + i);
        }
        for (size_t uiColour = 0; uiColour < 2; ++uiColour)
        {
            const EtcColour& base = aBases[uiColour];
            const V error = squaredError<bWeighted>(d, hn::Sub(aChannels[0], hn::Set(d, static_cast<T>(base[0]))),
                                                    hn::Sub(aChannels[1], hn::Set(d, static_cast<T>(base[1]))),
                                                    hn::Sub(aChannels[2], hn::Set(d, static_cast<T>(base[2]))));
            hn::Store(error, d, terms.aaBases[uiColour] + i);
        }
    }
}

/// The error of the nearer of a colour's two paints.
template <bool bWeighted, class D, class V = hn::Vec<D>>
HWY_INLINE void measurePaints(D d, const DistancePaints<V>& paints, V red, V green, V blue, V& plus, V& minus)
{
    plus = squaredError<bWeighted>(d, hn::Sub(red, paints.aPlus[0]), hn::Sub(green, paints.aPlus[1]), hn::Sub(blue, paints.aPlus[2]));
    minus = squaredError<bWeighted>(d, hn::Sub(red, paints.aMinus[0]), hn::Sub(green, paints.aMinus[1]), hn::Sub(blue, paints.aMinus[2]));
}

template <class D, class V = hn::Vec<D>>
HWY_INLINE void storeErrors(D /*d*/, V errors, uint32_t* HWY_RESTRICT pErrors)
{
    const hn::RebindToUnsigned<D> du;
    if constexpr (hwy::IsFloat<hn::TFromD<D>>())
        hn::Store(hn::BitCast(du, hn::ConvertTo(hn::RebindToSigned<D>(), errors)), du, pErrors);
    else
        hn::Store(hn::BitCast(du, errors), du, pErrors);
}

/// @tparam bA1  punch-through: some paints are left out by distance, and some pixels have no error
/// @param pLeftOut  for punch-through, by colour and distance: k_i32Never where the colour plus the distance is left out, else 0
template <bool bWeighted, bool bA1>
HWY_INLINE EtcModeErrors sumErrors(const PixelTerms<SumType<bWeighted>>& terms, const EtcColour (&aBases)[2],
                                   const SumType<bWeighted> (*pLeftOut)[k_uiDistances])
{
    using T = SumType<bWeighted>;
    const hn::CappedTag<T, k_uiDistances> d;
    using V = hn::Vec<decltype(d)>;
    alignas(64) T aDistances[k_uiDistances];
    for (size_t i = 0; i < k_uiDistances; ++i)
        aDistances[i] = static_cast<T>(k_aui8EtcDistances[i]);

    EtcModeErrors errors;
    for (size_t uiFirst = 0; uiFirst < k_uiDistances; uiFirst += hn::Lanes(d))
    {
        const DistancePaints<V> paints0 = makePaints<T>(d, aBases[0], aDistances + uiFirst);
        const DistancePaints<V> paints1 = makePaints<T>(d, aBases[1], aDistances + uiFirst);
        V sumT = hn::Zero(d);
        V sumSwapped = hn::Zero(d);
        V sumH = hn::Zero(d);
        for (size_t i = 0; i < k_uiPixels; ++i)
        {
            const V red = hn::Set(d, terms.aaChannels[0][i]);
            const V green = hn::Set(d, terms.aaChannels[1][i]);
            const V blue = hn::Set(d, terms.aaChannels[2][i]);
            V plus0;
            V minus0;
            V plus1;
            V minus1;
            measurePaints<bWeighted>(d, paints0, red, green, blue, plus0, minus0);
            measurePaints<bWeighted>(d, paints1, red, green, blue, plus1, minus1);
            const V nearer0 = hn::Min(plus0, minus0);
            const V nearer1 = hn::Min(plus1, minus1);
            sumT = hn::Add(sumT, hn::Min(nearer1, hn::Set(d, terms.aaBases[0][i])));
            sumSwapped = hn::Add(sumSwapped, hn::Min(nearer0, hn::Set(d, terms.aaBases[1][i])));
            if constexpr (bA1)
            {
                const V allowed0 = hn::Min(hn::Max(plus0, hn::Load(d, pLeftOut[0] + uiFirst)), minus0);
                const V allowed1 = hn::Min(hn::Max(plus1, hn::Load(d, pLeftOut[1] + uiFirst)), minus1);
                sumH = hn::Add(sumH, hn::Min(hn::Min(allowed0, allowed1), hn::Set(d, terms.aCeilingH[i])));
            }
            else
                sumH = hn::Add(sumH, hn::Min(nearer0, nearer1));
        }
        storeErrors(d, sumT, errors.aui32T.data() + uiFirst);
        storeErrors(d, sumSwapped, errors.aui32TSwapped.data() + uiFirst);
        storeErrors(d, sumH, errors.aui32H.data() + uiFirst);
    }
    return errors;
}

template <bool bWeighted>
HWY_INLINE EtcModeErrors measureBlock(const EtcPixels& pixels, const EtcColourPair& levels)
{
    const EtcColour aBases[2] = {expandLevels444(levels[0]), expandLevels444(levels[1])};
    PixelTerms<SumType<bWeighted>> terms;
    measureBases<bWeighted>(pixels, aBases, terms);
    for (size_t i = 0; i < k_uiPixels; ++i)
    {
        terms.aaBases[0][i] = std::min(terms.aaBases[0][i], terms.aaBases[1][i]);
        terms.aaBases[1][i] = terms.aaBases[0][i];
    }
    return sumErrors<bWeighted, false>(terms, aBases, nullptr);
}

EtcModeErrors measurePlain(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return measureBlock<false>(pixels, levels);
}

EtcModeErrors measureWeighted(const EtcPixels& pixels, const EtcColourPair& levels)
{
    return measureBlock<true>(pixels, levels);
}

EtcModeErrors measurePunchThrough(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& levels, uint32_t uiAscending)
{
    constexpr auto fNever = static_cast<float>(k_i32Never);
    const EtcColour aBases[2] = {expandLevels444(levels[0]), expandLevels444(levels[1])};
    PixelTerms<float> terms;
    measureBases<false>(pixels, aBases, terms);
    for (size_t i = 0; i < k_uiPixels; ++i)
    {
        const bool bTransparent = alphas.aui8[i] == 0;
        for (auto& aErrors : terms.aaBases)
            aErrors[i] = bTransparent ? 0.0f : aErrors[i];
        terms.aCeilingH[i] = bTransparent ? fNever : 0.0f;
    }
    // Of the colour that is 0 or 1, the paint with the distance added is number 0 or 2.
    alignas(64) float aafLeftOut[2][k_uiDistances];
    for (size_t i = 0; i < k_uiDistances; ++i)
    {
        const size_t uiColour = (i & 1) ^ uiAscending;
        aafLeftOut[uiColour][i] = fNever;
        aafLeftOut[1 - uiColour][i] = 0.0f;
    }
    return sumErrors<false, true>(terms, aBases, aafLeftOut);
}

template <bool bWeighted>
HWY_INLINE uint32_t chooseNearest(const EtcPixels& pixels, const EtcModePaints& paints, uint32_t uiLeftOut)
{
    const hn::CappedTag<int32_t, k_uiPixels> d;
    const hn::RebindToUnsigned<decltype(d)> du;
    const hn::Rebind<uint8_t, decltype(d)> d8;
    using V = hn::Vec<decltype(d)>;
    const auto shifts = hn::Add(hn::Iota(du, 0), hn::Iota(du, 0));
    uint32_t ui32Indices = 0;
    for (size_t i = 0; i < k_uiPixels; i += hn::Lanes(d))
    {
        const V red = hn::PromoteTo(d, hn::Load(d8, pixels.aui8Red.data() + i));
        const V green = hn::PromoteTo(d, hn::Load(d8, pixels.aui8Green.data() + i));
        const V blue = hn::PromoteTo(d, hn::Load(d8, pixels.aui8Blue.data() + i));
        V least = hn::Set(d, k_i32Never);
        V index = hn::Zero(d);
        for (uint32_t uiPaint = 0; uiPaint < 4; ++uiPaint)
        {
            if (uiPaint == uiLeftOut)
                continue;
            const EtcColour& paint = paints[uiPaint];
            const V error =
                squaredError<bWeighted>(d, hn::Sub(red, hn::Set(d, int32_t{paint[0]})), hn::Sub(green, hn::Set(d, int32_t{paint[1]})),
                                        hn::Sub(blue, hn::Set(d, int32_t{paint[2]})));
            const auto isNearer = hn::Lt(error, least);
            index = hn::IfThenElse(isNearer, hn::Set(d, static_cast<int32_t>(uiPaint)), index);
            least = hn::Min(least, error);
        }
        const auto placed = hn::Shl(hn::BitCast(du, index), shifts);
        ui32Indices |= hn::GetLane(hn::SumOfLanes(du, placed)) << (2 * i);
    }
    return ui32Indices;
}

uint32_t choosePlain(const EtcPixels& pixels, const EtcModePaints& paints, uint32_t uiLeftOut)
{
    return chooseNearest<false>(pixels, paints, uiLeftOut);
}

uint32_t chooseWeighted(const EtcPixels& pixels, const EtcModePaints& paints, uint32_t uiLeftOut)
{
    return chooseNearest<true>(pixels, paints, uiLeftOut);
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(measurePlain);
HWY_EXPORT(measureWeighted);
HWY_EXPORT(measurePunchThrough);
HWY_EXPORT(choosePlain);
HWY_EXPORT(chooseWeighted);

EtcModeErrors measureModes(const EtcPixels& pixels, const EtcColourPair& levels, bool bWeighted)
{
    return bWeighted ? HWY_DYNAMIC_DISPATCH(measureWeighted)(pixels, levels) : HWY_DYNAMIC_DISPATCH(measurePlain)(pixels, levels);
}

EtcModeErrors measureModesA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& levels)
{
    const uint32_t uiAscending = colourNumber444(levels[0]) < colourNumber444(levels[1]) ? 1 : 0;
    return HWY_DYNAMIC_DISPATCH(measurePunchThrough)(pixels, alphas, levels, uiAscending);
}

uint32_t pixelsWithAlpha(const EtcAlphas& alphas)
{
    uint32_t ui32Pixels = 0;
    for (uint32_t i = 0; i < 16; ++i)
        ui32Pixels |= (alphas.aui8[i] != 0 ? 1u : 0u) << i;
    return ui32Pixels;
}

uint32_t choosePaints(const EtcPixels& pixels, const EtcModePaints& paints, bool bWeighted, uint32_t uiFixedPaint, uint32_t ui32FixedPixels)
{
    const uint32_t ui32Indices = bWeighted ? HWY_DYNAMIC_DISPATCH(chooseWeighted)(pixels, paints, uiFixedPaint)
                                           : HWY_DYNAMIC_DISPATCH(choosePlain)(pixels, paints, uiFixedPaint);
    if (ui32FixedPixels == 0)
        return ui32Indices;
    uint32_t ui32Fixed = 0;
    for (uint32_t i = 0; i < 16; ++i)
        ui32Fixed |= (ui32FixedPixels >> i & 1) << 2 * i;
    return (ui32Indices & ~(ui32Fixed * 3)) | ui32Fixed * uiFixedPaint;
}

} // namespace moxtexture
#endif
