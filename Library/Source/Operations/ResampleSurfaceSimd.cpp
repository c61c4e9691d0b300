#include "Operations/ResampleKernels.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <type_traits>

#include "Operations/ChannelKind.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Operations/ResampleSurfaceSimd.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

#ifndef HALVANE_RESAMPLE_KERNEL_SET
#define HALVANE_RESAMPLE_KERNEL_SET
namespace moxtexture
{

/// All kernels of one instruction set.
using ResampleKernelSet =
    std::tuple<ResampleKernels<uint8_t, 2>, ResampleKernels<uint16_t, 2>, ResampleKernels<uint32_t, 2>, ResampleKernels<float, 2>,
               ResampleKernels<uint8_t, 4>, ResampleKernels<uint16_t, 4>, ResampleKernels<uint32_t, 4>, ResampleKernels<float, 4>,
               SmoothKernels<uint8_t>, SmoothKernels<uint16_t>, SmoothKernels<uint32_t>, SmoothKernels<float>>;

} // namespace moxtexture
#endif

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

namespace hn = hwy::HWY_NAMESPACE;

/// One pixel as floats; a single channel where the instruction set has no vectors.
using PixelTag = hn::CappedTag<float, k_uiWorkingChannels>;

/// Calls body(tag, i) for all floats from 0 to uiCount - 1, a multiple of the channels: in whole vectors, then in pixels.
template <typename Body>
HWY_INLINE void forEachVector(size_t uiCount, Body body)
{
    const hn::ScalableTag<float> dWhole;
    size_t i = 0;
    for (; i + hn::Lanes(dWhole) <= uiCount; i += hn::Lanes(dWhole))
        body(dWhole, i);
    for (; i < uiCount; i += hn::Lanes(PixelTag()))
        body(PixelTag(), i);
}

// ---- elements to floats and back, as static_cast and ChannelKind do ----

template <class D, typename T>
HWY_INLINE hn::Vec<D> loadFloats(D d, const T* pElements)
{
    const hn::RebindToSigned<D> dInt;
    return hn::ConvertTo(d, hn::PromoteTo(dInt, hn::LoadU(hn::Rebind<T, D>(), pElements)));
}
template <class D>
HWY_INLINE hn::Vec<D> loadFloats(D d, const uint32_t* pElements)
{
    return hn::ConvertTo(d, hn::LoadU(hn::RebindToUnsigned<D>(), pElements));
}
template <class D>
HWY_INLINE hn::Vec<D> loadFloats(D d, const float* pElements)
{
    return hn::LoadU(d, pElements);
}

/// Between 0 and the channel maximum; NaN gives 0.
template <typename T, class D>
HWY_INLINE hn::Vec<D> clampToChannel(D d, hn::Vec<D> value)
{
    return hn::IfThenElseZero(hn::Gt(value, hn::Zero(d)), hn::Min(value, hn::Set(d, ChannelKind<T>::kMaximum)));
}

template <class D, typename T>
HWY_INLINE void storeClamped(D d, hn::Vec<D> value, T* pElements)
{
    const hn::Rebind<T, D> dElements;
    const hn::RebindToSigned<D> dInt;
    hn::StoreU(hn::DemoteTo(dElements, hn::ConvertTo(dInt, clampToChannel<T>(d, value))), dElements, pElements);
}
template <class D>
HWY_INLINE void storeClamped(D d, hn::Vec<D> value, uint32_t* pElements)
{
    const hn::RebindToSigned<D> dInt;
    const hn::RebindToUnsigned<D> dUnsigned;
    const hn::Vec<D> clamped = clampToChannel<uint32_t>(d, value);
    // The conversion knows signed numbers only: from 2^31 on without the top bit, and 2^32 itself is all bits.
    const auto half = hn::Set(d, 2147483648.0f);
    const auto bUpperHalf = hn::Ge(clamped, half);
    const auto bFull = hn::Eq(clamped, hn::Set(d, ChannelKind<uint32_t>::kMaximum));
    const auto lower = hn::Sub(clamped, hn::IfThenElseZero(bUpperHalf, half));
    const auto bits = hn::BitCast(dUnsigned, hn::ConvertTo(dInt, hn::IfThenZeroElse(bFull, lower)));
    const auto top = hn::IfThenElseZero(hn::RebindMask(dUnsigned, bUpperHalf), hn::Set(dUnsigned, 0x80000000u));
    const auto full = hn::IfThenElseZero(hn::RebindMask(dUnsigned, bFull), hn::Set(dUnsigned, 0xFFFFFFFFu));
    hn::StoreU(hn::Or(hn::Or(bits, top), full), dUnsigned, pElements);
}
template <class D>
HWY_INLINE void storeClamped(D d, hn::Vec<D> value, float* pElements)
{
    hn::StoreU(clampToChannel<float>(d, value), d, pElements);
}

/// As ChannelKind::toElement: only floats differ from storeClamped(), as they stay what they are.
template <class D, typename T>
HWY_INLINE void storeCut(D d, hn::Vec<D> value, T* pElements)
{
    storeClamped(d, value, pElements);
}
template <class D>
HWY_INLINE void storeCut(D d, hn::Vec<D> value, float* pElements)
{
    hn::StoreU(value, d, pElements);
}

// ---- the filters: each operation and its order as in the plain form ----

template <class D, typename Load>
HWY_INLINE hn::Vec<D> interpolate(D d, std::integral_constant<size_t, 2>, Load load, hn::Vec<D> f)
{
    return hn::Add(hn::Mul(load(0), hn::Sub(hn::Set(d, 1.0f), f)), hn::Mul(load(1), f));
}

template <class D, typename Load>
HWY_INLINE hn::Vec<D> interpolate(D d, std::integral_constant<size_t, 4>, Load load, hn::Vec<D> f)
{
    const auto va = load(0);
    const auto vb = load(1);
    const auto vc = load(2);
    const auto vd = load(3);
    const auto two = hn::Set(d, 2.0f);
    const auto three = hn::Set(d, 3.0f);
    const auto cubed = hn::Add(hn::Sub(hn::Sub(hn::Mul(three, vb), va), hn::Mul(three, vc)), vd);
    const auto squared = hn::Sub(hn::Add(hn::Sub(hn::Mul(two, va), hn::Mul(hn::Set(d, 5.0f), vb)), hn::Mul(hn::Set(d, 4.0f), vc)), vd);
    const auto linear = hn::Sub(vc, va);
    const auto inner = hn::Add(hn::Mul(hn::Add(hn::Mul(cubed, f), squared), f), linear);
    return hn::Mul(hn::Set(d, 0.5f), hn::Add(hn::Mul(inner, f), hn::Mul(two, vb)));
}

template <typename T, size_t uiTaps>
void resampleRow(const T* pRow, const AxisTaps<uiTaps>* pTaps, size_t uiCount, float* pOut)
{
    const PixelTag d;
    for (size_t i = 0; i < uiCount; ++i)
        for (size_t c = 0; c < k_uiWorkingChannels; c += hn::Lanes(d))
        {
            const AxisTaps<uiTaps>& taps = pTaps[i];
            const auto load = [&](size_t uiTap) HWY_ATTR
            { return loadFloats(d, pRow + size_t{taps.auiIndex[uiTap]} * k_uiWorkingChannels + c); };
            hn::StoreU(interpolate(d, std::integral_constant<size_t, uiTaps>(), load, hn::Set(d, taps.fFraction)), d,
                       pOut + i * k_uiWorkingChannels + c);
        }
}

template <size_t uiTaps>
void blendRows(const std::array<const float*, uiTaps>& pRows, float fFraction, size_t uiCount, float* pOut)
{
    forEachVector(uiCount,
                  [&](auto d, size_t i) HWY_ATTR
                  {
                      const auto load = [&](size_t uiTap) HWY_ATTR { return hn::LoadU(d, pRows[uiTap] + i); };
                      hn::StoreU(interpolate(d, std::integral_constant<size_t, uiTaps>(), load, hn::Set(d, fFraction)), d, pOut + i);
                  });
}

template <typename T, size_t uiTaps>
void blendRowsToElements(const std::array<const float*, uiTaps>& pRows, float fFraction, size_t uiCount, T* pOut)
{
    forEachVector(uiCount,
                  [&](auto d, size_t i) HWY_ATTR
                  {
                      const auto load = [&](size_t uiTap) HWY_ATTR { return hn::LoadU(d, pRows[uiTap] + i); };
                      storeClamped(d, interpolate(d, std::integral_constant<size_t, uiTaps>(), load, hn::Set(d, fFraction)), pOut + i);
                  });
}

/// Every other element of a vector is summed in the lower half of a lane twice its width, the rest in the lane's upper half.
template <typename T, typename Lane, typename Pixel>
void halveRows(const T* pRow0, const T* pRow1, size_t uiCount, T* pOut)
{
    size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<T> d;
    const hn::Repartition<Lane, decltype(d)> dLane;
    const hn::Repartition<Pixel, decltype(d)> dPixel;
    const auto lowerMask = hn::Set(dLane, static_cast<Lane>(std::numeric_limits<T>::max()));
    constexpr int kBits = std::numeric_limits<T>::digits;
    const size_t uiPixels = hn::Lanes(dPixel);
    for (; i + uiPixels <= uiCount; i += uiPixels)
    {
        auto lower = hn::Zero(dLane);
        auto upper = hn::Zero(dLane);
        for (const T* pRow : {pRow0, pRow1})
        {
            const T* pPixels = pRow + 2 * i * k_uiWorkingChannels;
            const auto first = hn::BitCast(dPixel, hn::LoadU(d, pPixels));
            const auto second = hn::BitCast(dPixel, hn::LoadU(d, pPixels + hn::Lanes(d)));
            const auto even = hn::BitCast(dLane, hn::ConcatEven(dPixel, second, first));
            const auto odd = hn::BitCast(dLane, hn::ConcatOdd(dPixel, second, first));
            lower = hn::Add(lower, hn::Add(hn::And(even, lowerMask), hn::And(odd, lowerMask)));
            upper = hn::Add(upper, hn::Add(hn::ShiftRight<kBits>(even), hn::ShiftRight<kBits>(odd)));
        }
        const auto quarters = hn::Or(hn::ShiftRight<2>(lower), hn::ShiftLeft<kBits>(hn::ShiftRight<2>(upper)));
        hn::StoreU(hn::BitCast(d, quarters), d, pOut + i * k_uiWorkingChannels);
    }
#endif
    for (; i < uiCount; ++i)
        for (size_t c = 0; c < k_uiWorkingChannels; ++c)
        {
            const size_t uiLeft = 2 * i * k_uiWorkingChannels + c;
            const size_t uiRight = uiLeft + k_uiWorkingChannels;
            const uint32_t uiSum = uint32_t{pRow0[uiLeft]} + pRow0[uiRight] + pRow1[uiLeft] + pRow1[uiRight];
            pOut[i * k_uiWorkingChannels + c] = static_cast<T>(uiSum / 4);
        }
}

template <typename T>
void toFloats(const T* pElements, size_t uiCount, float* pOut)
{
    forEachVector(uiCount, [&](auto d, size_t i) HWY_ATTR { hn::StoreU(loadFloats(d, pElements + i), d, pOut + i); });
}

template <typename T, size_t uiRowCount>
HWY_INLINE void smoothFromRows(const float* const* pAllRows, const float* pAllWeights, float fScale, size_t uiCount, T* pOut)
{
    // Copies of its own: the compiler cannot know that bytes written through pOut leave those of the caller as they are.
    std::array<const float*, uiRowCount> pRows;
    std::copy_n(pAllRows, uiRowCount, pRows.begin());
    std::array<float, 3 * uiRowCount> afWeights;
    std::copy_n(pAllWeights, afWeights.size(), afWeights.begin());
    forEachVector(uiCount,
                  [&](auto d, size_t i) HWY_ATTR
                  {
                      auto sum = hn::Zero(d);
                      for (size_t j = 0; j < uiRowCount; ++j)
                          for (size_t k = 0; k < 3; ++k)
                              sum = hn::Add(
                                  sum, hn::Mul(hn::LoadU(d, pRows[j] + i + k * k_uiWorkingChannels), hn::Set(d, afWeights[3 * j + k])));
                      storeCut(d, hn::Mul(sum, hn::Set(d, fScale)), pOut + i);
                  });
}

template <typename T>
void smoothRow(const float* const* pRows, const float* pWeights, size_t uiRowCount, float fScale, size_t uiCount, T* pOut)
{
    if (uiRowCount == 3)
        smoothFromRows<T, 3>(pRows, pWeights, fScale, uiCount, pOut);
    else
        smoothFromRows<T, 9>(pRows, pWeights, fScale, uiCount, pOut);
}

template <typename T, size_t uiTaps>
constexpr ResampleKernels<T, uiTaps> makeResampleKernels()
{
    ResampleKernels<T, uiTaps> kernels = {resampleRow<T, uiTaps>, blendRows<uiTaps>, blendRowsToElements<T, uiTaps>, nullptr};
    if constexpr (uiTaps == 2 && std::is_same_v<T, uint8_t>)
        kernels.halveRows = halveRows<uint8_t, uint16_t, uint32_t>;
    if constexpr (uiTaps == 2 && std::is_same_v<T, uint16_t>)
        kernels.halveRows = halveRows<uint16_t, uint32_t, uint64_t>;
    return kernels;
}

template <typename T>
constexpr SmoothKernels<T> makeSmoothKernels()
{
    return {toFloats<T>, smoothRow<T>};
}

} // namespace

const ResampleKernelSet& getKernelSet()
{
    static constexpr ResampleKernelSet kernelSet = {
        makeResampleKernels<uint8_t, 2>(),  makeResampleKernels<uint16_t, 2>(), makeResampleKernels<uint32_t, 2>(),
        makeResampleKernels<float, 2>(),    makeResampleKernels<uint8_t, 4>(),  makeResampleKernels<uint16_t, 4>(),
        makeResampleKernels<uint32_t, 4>(), makeResampleKernels<float, 4>(),    makeSmoothKernels<uint8_t>(),
        makeSmoothKernels<uint16_t>(),      makeSmoothKernels<uint32_t>(),      makeSmoothKernels<float>()};
    return kernelSet;
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(getKernelSet);

template <typename T, size_t uiTaps>
const ResampleKernels<T, uiTaps>& getResampleKernels()
{
    return std::get<ResampleKernels<T, uiTaps>>(HWY_DYNAMIC_DISPATCH(getKernelSet)());
}

template <typename T>
const SmoothKernels<T>& getSmoothKernels()
{
    return std::get<SmoothKernels<T>>(HWY_DYNAMIC_DISPATCH(getKernelSet)());
}

template const ResampleKernels<uint8_t, 2>& getResampleKernels();
template const ResampleKernels<uint16_t, 2>& getResampleKernels();
template const ResampleKernels<uint32_t, 2>& getResampleKernels();
template const ResampleKernels<float, 2>& getResampleKernels();
template const ResampleKernels<uint8_t, 4>& getResampleKernels();
template const ResampleKernels<uint16_t, 4>& getResampleKernels();
template const ResampleKernels<uint32_t, 4>& getResampleKernels();
template const ResampleKernels<float, 4>& getResampleKernels();
template const SmoothKernels<uint8_t>& getSmoothKernels();
template const SmoothKernels<uint16_t>& getSmoothKernels();
template const SmoothKernels<uint32_t>& getSmoothKernels();
template const SmoothKernels<float>& getSmoothKernels();

} // namespace moxtexture
#endif
