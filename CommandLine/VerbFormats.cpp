#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <vector>

#include <CLI/CLI.hpp>

#include "Catalogue/ApiGroups.h"
#include "Catalogue/EncodeCatalogue.h"
#include "CommandLine/Json.h"
#include "CommandLine/Names.h"
#include "CommandLine/Verb.h"
#include "CommandLine/WordOptions.h"
#include "Formats/FormatNames.h"

namespace moxtexture
{
namespace
{

struct FormatsWords
{
    bool bJson = false;
};

/// The APIs in so few letters that all of them fit a line, as k_aApiGroups.
constexpr std::array<std::string_view, k_aApiGroups.size()> k_aShortApis = {"ES1",   "ES2",    "ES3",    "GL",
                                                                            "DX9_3", "DX10_1", "DX11_1", "Vulkan"};

using Row = std::array<std::string, 7>;

bool hasBit(uint32_t uiBits, uint32_t uiBit)
{
    return ((uiBits >> uiBit) & 1) != 0;
}

/// Each API in a place of its own, so that a column can be followed with the eye.
std::string describeAPIs(uint32_t uiAPIs)
{
    std::string strText;
    for (uint32_t i = 0; i < k_aShortApis.size(); ++i)
    {
        strText += hasBit(uiAPIs, i) ? k_aShortApis[i] : std::string(k_aShortApis[i].size(), '-');
        strText += i + 1 < k_aShortApis.size() ? " " : "";
    }
    return strText;
}

/// "4", "3-4", "1-4": the counts are neighbours.
std::string describeChannelCounts(uint32_t uiChannelCounts)
{
    std::string strFirst, strLast;
    for (uint32_t i = 1; i <= 4; ++i)
        if (hasBit(uiChannelCounts, i))
        {
            strLast = std::to_string(i);
            strFirst = strFirst.empty() ? strLast : strFirst;
        }
    return strFirst == strLast ? strFirst : strFirst + "-" + strLast;
}

std::string_view getBitRate(const CMOXSearchObject& record)
{
    return k_aBitsPerPixel[record.uiBitRateIndex];
}

/// In every locale alike.
double readNumber(std::string_view strText)
{
    double fValue = 0;
    std::from_chars(strText.data(), strText.data() + strText.size(), fValue);
    return fValue;
}

std::string describeAsText()
{
    constexpr size_t uiGap = 2;
    std::vector<Row> rows = {{"Name", "Type", "Space", "APIs", "Channels", "Alpha", "Bits per pixel"}};
    for (const CMOXSearchObject& record : getEncodeCatalogue())
        rows.push_back({getTidyName(record.pixelFormat), getChannelTypeName(record.eChannelType, false),
                        getColourSpaceName(record.eColourSpace, true), describeAPIs(record.uiAPIs),
                        describeChannelCounts(record.uiChannelCounts), record.uiHasAlpha != 0 ? "yes" : "no",
                        std::string(getBitRate(record))});

    std::array<size_t, std::tuple_size_v<Row>> auiWidths = {};
    for (const Row& row : rows)
        for (size_t i = 0; i < row.size(); ++i)
            auiWidths[i] = std::max(auiWidths[i], row[i].size() + uiGap);
    auiWidths.back() = 0; // nothing stands behind it

    std::string strText;
    for (const Row& row : rows)
    {
        for (size_t i = 0; i < row.size(); ++i)
            strText += row[i] + std::string(std::max(auiWidths[i], row[i].size()) - row[i].size(), ' ');
        strText += '\n';
    }
    return strText;
}

std::string describeAsJson()
{
    CJsonWriter json;
    json.beginArray();
    for (const CMOXSearchObject& record : getEncodeCatalogue())
    {
        json.beginObject();
        json.key("name").text(getFormatName(record.pixelFormat));
        json.key("formatWord").text(toHexNumber(record.pixelFormat.getWord(), 16));
        json.key("channelType").number(record.eChannelType);
        json.key("colourSpace").number(record.eColourSpace);
        json.key("apis").number(record.uiAPIs);
        json.key("storageClass").number(record.uiStorageClass);
        json.key("channelCounts").number(record.uiChannelCounts);
        json.key("hasAlpha").boolean(record.uiHasAlpha != 0);
        json.key("bitsPerPixel").real(readNumber(getBitRate(record)));
        json.endObject();
    }
    return json.endArray().getText() + "\n";
}

} // namespace

VerbRun describeFormats(CLI::App& verb)
{
    auto pWords = std::make_shared<FormatsWords>();
    addFlag(verb, "--json", pWords->bJson, "One JSON array instead of text");
    return [pWords](COutputsInFlight&) { return done(pWords->bJson ? describeAsJson() : describeAsText()); };
}

} // namespace moxtexture
