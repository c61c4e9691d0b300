#pragma once

#include <cstddef>
#include <cstdint>

#include "Pixels/ChannelValues.h"

namespace moxtexture
{

/// A channel that is an element of its own, of the kinds that have vector routines.
enum class EElement : uint8_t
{
    eUnsigned8,
    eUnsigned16,
    eHalf,
    eFloat32,
};

template <EElement eElement>
struct ElementTraits;
template <>
struct ElementTraits<EElement::eUnsigned8>
{
    using Code = uint8_t;
    static constexpr EValueRule k_eRule = EValueRule::eUnsigned;
};
template <>
struct ElementTraits<EElement::eUnsigned16>
{
    using Code = uint16_t;
    static constexpr EValueRule k_eRule = EValueRule::eUnsigned;
};
template <>
struct ElementTraits<EElement::eHalf>
{
    using Code = uint16_t;
    static constexpr EValueRule k_eRule = EValueRule::eHalf;
};
template <>
struct ElementTraits<EElement::eFloat32>
{
    using Code = uint32_t;
    static constexpr EValueRule k_eRule = EValueRule::eFloat32;
};

/// Calls body with the ElementTraits of a kind.
template <typename Body>
auto withElement(EElement eElement, Body body)
{
    switch (eElement)
    {
    case EElement::eUnsigned8:
        return body(ElementTraits<EElement::eUnsigned8>());
    case EElement::eUnsigned16:
        return body(ElementTraits<EElement::eUnsigned16>());
    case EElement::eHalf:
        return body(ElementTraits<EElement::eHalf>());
    case EElement::eFloat32:
        break;
    }
    return body(ElementTraits<EElement::eFloat32>());
}

/// Bytes of one element.
[[nodiscard]] inline size_t getElementBytes(EElement eElement)
{
    return withElement(eElement, [](auto traits) { return sizeof(typename decltype(traits)::Code); });
}

/// Reads each element as a float and writes it as the other kind.
///
/// @param pSource, pTarget  uiCount elements each, without alignment; they must not overlap
void convertElementsReference(EElement eFrom, EElement eTo, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount);
/// The same bytes with vectors.
void convertElements(EElement eFrom, EElement eTo, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount);

/// True for the kinds that come back from a float as they were, whatever their bits. Halves do not: denormals and infinities change.
[[nodiscard]] constexpr bool isKeptByFloat(EElement eElement)
{
    return eElement != EElement::eHalf;
}

} // namespace moxtexture
