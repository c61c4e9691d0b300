#include "CommandLine/HalvaneCli.h"

#include <algorithm>
#include <sstream>

using namespace testsupport;

namespace
{

QJsonArray readFormats()
{
    const ProgramRun run = cli({"formats", "--json"});
    EXPECT_EQ(0, run.iStatus) << run.strErrors;
    EXPECT_EQ("", run.strErrors);
    EXPECT_EQ('\n', run.strOutput.empty() ? ' ' : run.strOutput.back());
    EXPECT_EQ(1, std::count(run.strOutput.begin(), run.strOutput.end(), '\n'));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(run.strOutput), &error);
    EXPECT_EQ(QJsonParseError::NoError, error.error) << error.errorString().toStdString();
    return document.array();
}

std::vector<std::string> readLines()
{
    const ProgramRun run = cli({"formats"});
    EXPECT_EQ(0, run.iStatus) << run.strErrors;
    EXPECT_EQ("", run.strErrors);
    std::istringstream stream(run.strOutput);
    std::vector<std::string> lines;
    for (std::string strLine; std::getline(stream, strLine);)
        lines.push_back(strLine);
    return lines;
}

struct WholeRow
{
    int iIndex;
    const char* strName;
    const char* strWord;
    int iChannelType, iColourSpace, iAPIs, iStorageClass, iChannelCounts;
    bool bHasAlpha;
    double fBitsPerPixel;
};

// Written by hand from the list of formats.
constexpr WholeRow k_aRows[] = {
    {0, "MOXTC 2bpp RGBA", "0x0000000000000001", 0, 0, 0x8F, 0, 16, true, 2},
    {13, "BC1", "0x0000000000000007", 0, 1, 0xF0, 0, 8, false, 4},
    {28, "EAC RG11", "0x000000000000001a", 9, 0, 0x84, 0, 4, false, 8},
    {76, "ASTC 6x6x6", "0x0000000000000032", 0, 1, 0x04, 0, 30, true, 0.59},
    {79, "Shared Exponent RGB999 E5", "0x0000000000000013", 13, 0, 0xE4, 3, 8, false, 32},
    {80, "RGBA 8 8 8 8 ", "0x0808080861626772", 0, 0, 0xFF, 1, 16, true, 32},
    {145, "R 32 ", "0x0000002000000072", 11, 0, 0xE4, 3, 2, false, 32},
};

} // namespace

TEST(FormatsAsJson, IsTheWholeCatalogueInItsOrder)
{
    const QJsonArray formats = readFormats();
    ASSERT_EQ(146, formats.size());
    for (const WholeRow& row : k_aRows)
    {
        SCOPED_TRACE(row.iIndex);
        const QJsonObject format = formats[row.iIndex].toObject();
        EXPECT_EQ(9, format.size());
        EXPECT_EQ(row.strName, textOf(format, "name"));
        EXPECT_EQ(row.strWord, textOf(format, "formatWord"));
        EXPECT_EQ(row.iChannelType, numberOf(format, "channelType"));
        EXPECT_EQ(row.iColourSpace, numberOf(format, "colourSpace"));
        EXPECT_EQ(row.iAPIs, numberOf(format, "apis"));
        EXPECT_EQ(row.iStorageClass, numberOf(format, "storageClass"));
        EXPECT_EQ(row.iChannelCounts, numberOf(format, "channelCounts"));
        EXPECT_TRUE(format["hasAlpha"].isBool());
        EXPECT_EQ(row.bHasAlpha, format["hasAlpha"].toBool());
        EXPECT_EQ(row.fBitsPerPixel, numberOf(format, "bitsPerPixel"));
    }
}

TEST(FormatsAsText, HasARowForEachUnderItsHeadings)
{
    const std::vector<std::string> lines = readLines();
    ASSERT_EQ(147u, lines.size());
    EXPECT_EQ("Name                       Type                         Space  APIs                                       Channels  Alpha  "
              "Bits per pixel",
              lines[0]);
    EXPECT_EQ(
        "MOXTC 2bpp RGBA            Unsigned Normalised Byte     lRGB   ES1 ES2 ES3 GL ----- ------ ------ Vulkan  4         yes    2",
        lines[1]);
    EXPECT_EQ(
        "MOXTCII 2bpp               Unsigned Normalised Byte     sRGB   --- ES2 ES3 -- ----- ------ ------ Vulkan  3-4       yes    2",
        lines[4]);
    EXPECT_EQ(
        "BC1                        Unsigned Normalised Byte     sRGB   --- --- --- -- DX9_3 DX10_1 DX11_1 Vulkan  3         no     4",
        lines[14]);
    EXPECT_EQ(
        "ASTC 6x6x6                 Unsigned Normalised Byte     sRGB   --- --- ES3 -- ----- ------ ------ ------  1-4       yes    0.59",
        lines[77]);
    EXPECT_EQ(
        "RGBA 8 8 8 8               Unsigned Normalised Byte     lRGB   ES1 ES2 ES3 GL DX9_3 DX10_1 DX11_1 Vulkan  4         yes    32",
        lines[81]);
    EXPECT_EQ(
        "R 32                       Signed Integer               lRGB   --- --- ES3 -- ----- DX10_1 DX11_1 Vulkan  1         no     32",
        lines[146]);
}

TEST(FormatsAsText, StandsInColumnsWithoutBlanksAtTheEnd)
{
    const std::vector<std::string> lines = readLines();
    ASSERT_FALSE(lines.empty());
    for (const char* strHeading : {"Type", "Space", "APIs", "Channels", "Alpha", "Bits per pixel"})
    {
        const size_t uiColumn = lines[0].find(strHeading);
        for (const std::string& strLine : lines)
        {
            ASSERT_LT(uiColumn, strLine.size()) << strLine;
            EXPECT_EQ("  ", strLine.substr(uiColumn - 2, 2)) << strLine;
            EXPECT_NE(' ', strLine[uiColumn]) << strLine;
            EXPECT_NE(' ', strLine.back()) << strLine;
        }
    }
}

TEST(Formats, HasNamesThatConvertTakes)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), 8, 8);
    for (const char* strName : {"BC1", "RGB 5 6 5", "BGRA 8 8 8 8"})
        expectDone(cli({"convert", folder.path("a.png"), "-o", folder.path("a.mox"), "--format", strName}));
}

TEST(Formats, TakesItsOwnFlagAlone)
{
    expectWrongWords(cli({"formats", "a"}), "a", "formats");
    expectWrongWords(cli({"formats", "--json=false"}), "json", "formats");
    expectWrongWords(cli({"formats", "-o", "b"}), "-o", "formats");
}
