#include "Catalogue/EncodeFilter.h"

#include <algorithm>

namespace moxtexture
{
namespace
{

bool hasBit(uint32_t uiBits, uint32_t uiBit)
{
    return uiBit < 32 && ((uiBits >> uiBit) & 1) != 0;
}

bool passesBitRate(const CMOXSearchObject& record, uint32_t uiPlace)
{
    return uiPlace == 1 ? record.uiStorageClass == 0 : record.uiBitRateIndex == uiPlace - 2;
}

} // namespace

ETypeGroup getTypeGroup(EMOXTChannelType eType)
{
    if (eType == eCT_SignedFloatingPoint)
        return eTypeGroupFloat;
    if (eType == eCT_UnsignedFloatingPoint)
        return eTypeGroupUFloat;
    // Bytes, shorts and integers come in the same four kinds.
    return eType < eCT_SignedFloatingPoint ? static_cast<ETypeGroup>(eType % 4) : eTypeGroupOther;
}

bool passesFilter(const CMOXSearchObject& record, const EncodeFilter& filter)
{
    return (filter.uiAPI == 0 || hasBit(record.uiAPIs, filter.uiAPI - 1)) &&
           (filter.uiBitsPerPixel == 0 || passesBitRate(record, filter.uiBitsPerPixel)) &&
           (filter.uiChannelCount == 0 || hasBit(record.uiChannelCounts, filter.uiChannelCount)) &&
           (filter.uiTypeGroup == 0 || getTypeGroup(record.eChannelType) == filter.uiTypeGroup - 1) &&
           (filter.uiHasAlpha == 0 || record.uiHasAlpha + filter.uiHasAlpha == 2) &&
           (filter.uiColourSpace == 0 || record.eColourSpace == filter.uiColourSpace - 1);
}

std::vector<PixelEncoding> filterCatalogue(const EncodeFilter& filter)
{
    std::vector<PixelEncoding> encodings;
    for (const CMOXSearchObject& record : getEncodeCatalogue())
        if (passesFilter(record, filter))
            encodings.push_back(getEncoding(record));
    return encodings;
}

PixelEncoding getEncoding(const CMOXSearchObject& record)
{
    return {record.pixelFormat, record.eChannelType, record.eColourSpace};
}

const CMOXSearchObject* findInCatalogue(const PixelEncoding& encoding)
{
    const auto& records = getEncodeCatalogue();
    const auto found =
        std::find_if(records.begin(), records.end(), [&](const CMOXSearchObject& record) { return getEncoding(record) == encoding; });
    return found == records.end() ? nullptr : &*found;
}

} // namespace moxtexture
