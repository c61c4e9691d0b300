#include "Pixels/ValuePlanes.h"

namespace moxtexture
{

void readValues(const ChannelPlace& place, const uint32_t* pCodes, size_t uiCount, float* pValues)
{
    withRule(place.eReadRule,
             [&](auto rule)
             {
                 for (size_t i = 0; i < uiCount; ++i)
                     pValues[i] = readValue<decltype(rule)::value>(pCodes[i], place.uiBits);
             });
}

void writeValues(const ChannelPlace& place, const float* pValues, size_t uiCount, uint32_t* pCodes)
{
    withRule(place.eWriteRule,
             [&](auto rule)
             {
                 for (size_t i = 0; i < uiCount; ++i)
                     pCodes[i] = static_cast<uint32_t>(writeValue<decltype(rule)::value>(pValues[i], place.uiBits));
             });
}

} // namespace moxtexture
