#include <cstdint>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Formats/FormatNames.h"
#include "Formats/PixelFormats.h"
#include "Support/NativeLoading.h"
#include "Support/TemporaryFolder.h"

namespace
{

using namespace moxtexture;

std::string readText(const std::string& strPath)
{
    std::ifstream file(strPath, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string documentSource()
{
    return readText(HALVANE_SOURCE_DIR "/Documentation/Source/MOXFileFormat.html");
}

/// The bytes of the document's hex dump.
std::vector<uint8_t> exampleBytes()
{
    const std::string strSource = documentSource();
    const std::string strStart = "<pre id=\"example\">";
    const size_t uiStart = strSource.find(strStart) + strStart.size();
    const std::string strDump = std::regex_replace(strSource.substr(uiStart, strSource.find("</pre>", uiStart) - uiStart),
                                                   std::regex("<[^>]*>|(^|\n)[0-9a-f]{2}  "), " ");
    std::vector<uint8_t> bytes;
    std::istringstream words(strDump);
    for (std::string strWord; words >> strWord;)
        bytes.push_back(static_cast<uint8_t>(std::stoul(strWord, nullptr, 16)));
    return bytes;
}

TEST(FormatDocument, ItsExampleIsTheTextureThatItTells)
{
    const std::vector<uint8_t> bytes = exampleBytes();
    ASSERT_EQ(87u, bytes.size());
    const testsupport::NativeLoad load = testsupport::loadNative(bytes);
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ("RGBA 8 8 8 8 ", getFormatName(load.texture.getPixelFormat()));
    EXPECT_EQ(eCS_sRGB, load.texture.getColourSpace());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, load.texture.getChannelType());
    EXPECT_EQ(2u, load.texture.getWidth(0));
    EXPECT_EQ(2u, load.texture.getHeight(0));
    EXPECT_EQ(2u, load.texture.getNumMIPLevels());
    EXPECT_EQ(2u, load.texture.getOrientation(eAxisY));
    EXPECT_THAT(testsupport::dataOf(load.texture),
                testing::ElementsAre(255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 255, 128, 128, 128, 255));
}

TEST(FormatDocument, ItsExampleIsWhatTheWriterWrites)
{
    const std::vector<uint8_t> bytes = exampleBytes();
    const testsupport::CTemporaryFolder folder;
    const std::string strPath = folder.path() + "/example.mox";
    ASSERT_TRUE(writeNative(testsupport::loadNative(bytes).texture, strPath));
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), readText(strPath));
}

TEST(FormatDocument, ItsTablesNameEveryFormatAndChannelType)
{
    const std::string strSource = documentSource();
    const auto row = [](uint32_t ui32Number, const std::string& strName)
    { return "<td align=\"right\">" + std::to_string(ui32Number) + "</td><td>" + strName + "</td>"; };
    for (uint32_t i = 0; i < ePF_Count; ++i)
        EXPECT_THAT(strSource, testing::HasSubstr(row(i, getPixelFormatRow(i).strName)));
    for (uint32_t i = 0; i < k_uiChannelTypeCount; ++i)
        EXPECT_THAT(strSource, testing::HasSubstr(row(i, getChannelTypeName(static_cast<EMOXTChannelType>(i), false))));
}

TEST(FormatDocument, IsBuiltWhereTheProgramLooksForIt)
{
    const std::string strDocument = readText(HALVANE_SOURCE_DIR "/Documentation/MOX File Format.Specification.pdf");
    EXPECT_EQ("%PDF-", strDocument.substr(0, 5));
    EXPECT_NE(std::string::npos, strDocument.find("%%EOF"));
}

} // namespace
