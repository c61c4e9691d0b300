#include "Pixels/ElementConversion.h"

#include "Core/ByteOrder.h"

namespace moxtexture
{
namespace
{

template <typename From, typename To>
void convert(const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
{
    using FromCode = typename From::Code;
    using ToCode = typename To::Code;
    for (size_t i = 0; i < uiCount; ++i)
    {
        const uint32_t ui32Code = loadLE<FromCode>(pSource + i * sizeof(FromCode));
        const float fValue = readValue<From::k_eRule>(ui32Code, 8 * sizeof(FromCode));
        storeLE(pTarget + i * sizeof(ToCode), static_cast<ToCode>(writeValue<To::k_eRule>(fValue, 8 * sizeof(ToCode))));
    }
}

} // namespace

void convertElementsReference(EElement eFrom, EElement eTo, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
{
    withElement(eFrom,
                [&](auto from) { withElement(eTo, [&](auto to) { convert<decltype(from), decltype(to)>(pSource, pTarget, uiCount); }); });
}

} // namespace moxtexture
