#include "Dialogs/EncodeSettings.h"

#include <algorithm>
#include <array>

#include "Catalogue/ApiGroups.h"
#include "Catalogue/EncodeFilter.h"
#include "Catalogue/QualityNames.h"
#include "Common/Preferences.h"

using namespace moxtexture;

namespace
{

struct ModeRow
{
    const char* strKey;
    int32_t EncodeSettings::*pField;
    EQualityFamily eFamily;
};

constexpr ModeRow k_aModes[] = {
    {"Encoding/MOXTCEncode", &EncodeSettings::i32MOXTCMode, eQualityMOXTC},
    {"Encoding/ETCEncode", &EncodeSettings::i32ETCMode, eQualityETC},
    {"Encoding/ASTCEncode", &EncodeSettings::i32ASTCMode, eQualityASTC},
};

struct SwitchRow
{
    const char* strKey;
    bool EncodeSettings::*pField;
};

constexpr SwitchRow k_aSwitches[] = {
    {"Encoding/DoMIPs", &EncodeSettings::bMIPMaps},
    {"Encoding/DoDither", &EncodeSettings::bDither},
    {"Encoding/DoDiff", &EncodeSettings::bDiff},
    {"Encoding/DoVFlip", &EncodeSettings::bVerticalFlip},
};

/// One of the lists that the recent formats are kept as: a number of each entry.
struct RecentRow
{
    const char* strKey;
    uint32_t (*pGet)(const RecentFormat& format);
};

enum ERecentList
{
    eRecentAPI,
    eRecentHigh,
    eRecentLow,
    eRecentType,
    eRecentSpace,
    eRecentListCount
};

constexpr std::array<RecentRow, eRecentListCount> k_aRecentLists = {{
    {"Encoding/RecentAPIs", [](const RecentFormat& format) -> uint32_t { return format.uiAPI; }},
    {"Encoding/RecentFormat/PTHigh",
     [](const RecentFormat& format) { return static_cast<uint32_t>(format.encoding.pixelFormat.getWord() >> 32); }},
    {"Encoding/RecentFormat/PTLow",
     [](const RecentFormat& format) { return static_cast<uint32_t>(format.encoding.pixelFormat.getWord()); }},
    {"Encoding/RecentFormat/VarType", [](const RecentFormat& format) -> uint32_t { return format.encoding.eChannelType; }},
    {"Encoding/RecentFormat/CSpace", [](const RecentFormat& format) -> uint32_t { return format.encoding.eColourSpace; }},
}};

using RecentLists = std::array<std::vector<uint32_t>, eRecentListCount>;

RecentFormat takeEntry(const RecentLists& lists, size_t uiIndex)
{
    const uint64_t ui64High = lists[eRecentHigh][uiIndex];
    RecentFormat format;
    format.encoding.pixelFormat = MOXPixelWord(ui64High << 32 | lists[eRecentLow][uiIndex]);
    format.encoding.eChannelType = static_cast<EMOXTChannelType>(lists[eRecentType][uiIndex]);
    format.encoding.eColourSpace = static_cast<EMOXTColourSpace>(lists[eRecentSpace][uiIndex]);
    format.uiAPI = lists[eRecentAPI][uiIndex];
    return format;
}

bool contains(const RecentFormats& formats, const PixelEncoding& encoding)
{
    return std::any_of(formats.begin(), formats.end(), [&](const RecentFormat& format) { return format.encoding == encoding; });
}

bool isModeOnOffer(int32_t i32Mode, EQualityFamily eFamily)
{
    return i32Mode >= 0 && static_cast<uint32_t>(i32Mode) < getQualityNames(eFamily).uiCount;
}

} // namespace

EncodeSettings loadEncodeSettings(Preferences* pPreferences)
{
    EncodeSettings settings;
    if (pPreferences == nullptr)
        return settings;
    for (const ModeRow& row : k_aModes)
    {
        int32_t i32Mode = 0;
        if (pPreferences->getInt(row.strKey, i32Mode) == Preferences::eDone && isModeOnOffer(i32Mode, row.eFamily))
            settings.*row.pField = i32Mode;
    }
    for (const SwitchRow& row : k_aSwitches)
    {
        bool bOn = false;
        if (pPreferences->getBool(row.strKey, bOn) == Preferences::eDone)
            settings.*row.pField = bOn;
    }
    return settings;
}

void storeEncodeSettings(Preferences* pPreferences, const EncodeSettings& settings)
{
    if (pPreferences == nullptr)
        return;
    for (const ModeRow& row : k_aModes)
        pPreferences->setInt(row.strKey, settings.*row.pField);
    for (const SwitchRow& row : k_aSwitches)
        pPreferences->setBool(row.strKey, settings.*row.pField);
}

RecentFormats loadRecentFormats(Preferences* pPreferences)
{
    RecentFormats formats;
    if (pPreferences == nullptr)
        return formats;

    RecentLists lists;
    size_t uiCount = SIZE_MAX;
    for (size_t i = 0; i < lists.size(); ++i)
    {
        if (pPreferences->getUintArray(k_aRecentLists[i].strKey, lists[i]) != Preferences::eDone)
            return formats;
        uiCount = std::min(uiCount, lists[i].size());
    }

    // From the newest back, so that those are the ones that stay.
    while (uiCount-- > 0 && formats.size() < k_uiMaxRecentFormats)
    {
        const RecentFormat format = takeEntry(lists, uiCount);
        if (format.uiAPI < k_aApiGroups.size() && findInCatalogue(format.encoding) != nullptr && !contains(formats, format.encoding))
            formats.push_back(format);
    }
    std::reverse(formats.begin(), formats.end());
    return formats;
}

void storeRecentFormats(Preferences* pPreferences, const RecentFormats& formats)
{
    if (pPreferences == nullptr)
        return;
    for (const RecentRow& row : k_aRecentLists)
    {
        std::vector<uint32_t> list;
        std::transform(formats.begin(), formats.end(), std::back_inserter(list), row.pGet);
        pPreferences->setUintArray(row.strKey, list);
    }
}

void addRecentFormat(RecentFormats& formats, const RecentFormat& choice)
{
    const auto isChoice = [&](const RecentFormat& format) { return format.encoding == choice.encoding; };
    formats.erase(std::remove_if(formats.begin(), formats.end(), isChoice), formats.end());
    if (formats.size() >= k_uiMaxRecentFormats)
        formats.erase(formats.begin(), formats.end() - (k_uiMaxRecentFormats - 1));
    formats.push_back(choice);
}

uint32_t getLegacyApi(const RecentFormats& formats)
{
    if (formats.empty())
        return 2;
    // On purpose: the places 8 and above are no APIs of the list, which has eight.
    switch (formats.back().uiAPI)
    {
    case 1:
        return 1;
    case 8:
        return 4;
    case 16:
    case 32:
    case 64:
        return 6;
    default:
        return 2;
    }
}
