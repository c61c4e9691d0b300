#include "Pixels/ElementConversion.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Pixels/ElementConversionSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

using DF = hn::ScalableTag<float>;
using DI = hn::ScalableTag<int32_t>;
using DU = hn::ScalableTag<uint32_t>;
using VF = hn::Vec<DF>;
using D8 = hn::Rebind<uint8_t, DI>;
using D16 = hn::Rebind<uint16_t, DI>;

constexpr int k_iExponentShift = 112 << 23; // between the exponents of a half and of a float

/// Elements as vectors of floats: what readValue() and writeValue() do to one, step by step the same.
template <EElement eElement>
struct Lanes;

template <typename D, typename Code>
struct UnsignedLanes
{
    static HWY_INLINE VF load(const Code* pCodes)
    {
        const auto maximum = hn::Set(DF(), static_cast<float>(hwy::LimitsMax<Code>()));
        return hn::Div(hn::ConvertTo(DF(), hn::PromoteTo(DI(), hn::LoadU(D(), pCodes))), maximum);
    }

    static HWY_INLINE void store(VF values, Code* pCodes)
    {
        const auto one = hn::Set(DF(), 1.0f);
        const auto positive = hn::IfThenElseZero(hn::Gt(values, hn::Zero(DF())), values); // 0 for not-a-number
        const auto clamped = hn::IfThenElse(hn::Lt(positive, one), positive, one);
        const auto maximum = hn::Set(DF(), static_cast<float>(hwy::LimitsMax<Code>()));
        const auto scaled = hn::Add(hn::Mul(clamped, maximum), hn::Set(DF(), 0.5f));
        hn::StoreU(hn::DemoteTo(D(), hn::ConvertTo(DI(), scaled)), D(), pCodes);
    }
};

template <>
struct Lanes<EElement::eUnsigned8> : UnsignedLanes<D8, uint8_t>
{
};
template <>
struct Lanes<EElement::eUnsigned16> : UnsignedLanes<D16, uint16_t>
{
};

template <>
struct Lanes<EElement::eHalf>
{
    static HWY_INLINE VF load(const uint16_t* pCodes)
    {
        const DI di;
        const auto codes = hn::PromoteTo(di, hn::LoadU(D16(), pCodes));
        const auto magnitude = hn::And(codes, hn::Set(di, 0x7FFF));
        const auto shift = hn::Set(di, k_iExponentShift);
        const auto finite = hn::Add(hn::ShiftLeft<13>(magnitude), shift);
        const auto isTop = hn::Gt(magnitude, hn::Set(di, 0x7BFF));
        const auto value = hn::Add(finite, hn::IfThenElseZero(isTop, shift));
        const auto sign = hn::ShiftLeft<16>(hn::AndNot(hn::Set(di, 0x7FFF), codes));
        return hn::BitCast(DF(), hn::IfThenZeroElse(hn::Eq(codes, hn::Zero(di)), hn::Or(value, sign)));
    }

    static HWY_INLINE void store(VF values, uint16_t* pCodes)
    {
        const DI di;
        const auto bits = hn::BitCast(di, values);
        const auto magnitude = hn::And(bits, hn::Set(di, 0x7FFFFFFF));
        const auto mantissa = hn::And(hn::ShiftRight<13>(bits), hn::Set(di, 0x3FF));
        const auto isSpecial = hn::Gt(magnitude, hn::Set(di, 0x7F7FFFFF));
        const auto largest = hn::Or(hn::Set(di, 30 << 10), hn::IfThenElse(isSpecial, mantissa, hn::Set(di, 0x3FF)));
        const auto finite = hn::ShiftRight<13>(hn::Sub(magnitude, hn::Set(di, k_iExponentShift)));
        const auto isLarge = hn::Gt(magnitude, hn::Set(di, (143 << 23) - 1));
        const auto isSmall = hn::Lt(magnitude, hn::Set(di, 113 << 23));
        const auto value = hn::IfThenZeroElse(isSmall, hn::IfThenElse(isLarge, largest, finite));
        const auto sign = hn::And(hn::ShiftRight<16>(bits), hn::Set(di, 0x8000));
        hn::StoreU(hn::DemoteTo(D16(), hn::Or(value, sign)), D16(), pCodes);
    }
};

template <>
struct Lanes<EElement::eFloat32>
{
    static HWY_INLINE VF load(const uint32_t* pCodes) { return hn::BitCast(DF(), hn::LoadU(DU(), pCodes)); }
    static HWY_INLINE void store(VF values, uint32_t* pCodes) { hn::StoreU(hn::BitCast(DU(), values), DU(), pCodes); }
};

/// @return the elements that were converted: all but the rest of a vector
template <EElement eFrom, EElement eTo>
size_t ConvertVectors(const uint8_t* HWY_RESTRICT pSource, uint8_t* HWY_RESTRICT pTarget, size_t uiCount)
{
    using FromCode = typename ElementTraits<eFrom>::Code;
    using ToCode = typename ElementTraits<eTo>::Code;
    // The vector loads and stores need no alignment.
    const auto* pFrom = reinterpret_cast<const FromCode*>(pSource);
    auto* pTo = reinterpret_cast<ToCode*>(pTarget);
    const size_t uiLanes = hn::Lanes(DF());
    size_t i = 0;
    for (; i + uiLanes <= uiCount; i += uiLanes)
        Lanes<eTo>::store(Lanes<eFrom>::load(pFrom + i), pTo + i);
    return i;
}

template <EElement eFrom>
size_t ConvertVectorsTo(EElement eTo, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
{
    switch (eTo)
    {
    case EElement::eUnsigned8:
        return ConvertVectors<eFrom, EElement::eUnsigned8>(pSource, pTarget, uiCount);
    case EElement::eUnsigned16:
        return ConvertVectors<eFrom, EElement::eUnsigned16>(pSource, pTarget, uiCount);
    case EElement::eHalf:
        return ConvertVectors<eFrom, EElement::eHalf>(pSource, pTarget, uiCount);
    case EElement::eFloat32:
        break;
    }
    return ConvertVectors<eFrom, EElement::eFloat32>(pSource, pTarget, uiCount);
}

size_t ConvertElements(EElement eFrom, EElement eTo, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
{
    switch (eFrom)
    {
    case EElement::eUnsigned8:
        return ConvertVectorsTo<EElement::eUnsigned8>(eTo, pSource, pTarget, uiCount);
    case EElement::eUnsigned16:
        return ConvertVectorsTo<EElement::eUnsigned16>(eTo, pSource, pTarget, uiCount);
    case EElement::eHalf:
        return ConvertVectorsTo<EElement::eHalf>(eTo, pSource, pTarget, uiCount);
    case EElement::eFloat32:
        break;
    }
    return ConvertVectorsTo<EElement::eFloat32>(eTo, pSource, pTarget, uiCount);
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(ConvertElements);

void convertElements(EElement eFrom, EElement eTo, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
{
    const size_t uiDone = HWY_DYNAMIC_DISPATCH(ConvertElements)(eFrom, eTo, pSource, pTarget, uiCount);
    if (uiDone != uiCount)
        convertElementsReference(eFrom, eTo, pSource + uiDone * getElementBytes(eFrom), pTarget + uiDone * getElementBytes(eTo),
                                 uiCount - uiDone);
}

} // namespace moxtexture
#endif
