#include "CommandLine/HalvaneCli.h"
#include "Support/NativeFileBuilder.h"

using namespace testsupport;

namespace
{

/// Two members of 4 by 2 with three levels (8, 2 and 1 pixels of 4 bytes, twice: 88), pre-multiplied, sRGB, with two blocks.
std::vector<uint8_t> makeFile()
{
    return CNativeFileBuilder()
        .flags(2)
        .colourSpace(1)
        .size(4, 2)
        .members(2)
        .levels(3)
        .block(CNativeFileBuilder::k_ui32Native, 3, {0, 2, 0})
        .block(0x41424344, 7, {0xAB, 0xCD})
        .data(std::vector<uint8_t>(88))
        .bytes();
}

} // namespace

TEST(InfoAsJson, HasTheKeysAndValuesOfTheFile)
{
    const CTemporaryFolder folder;
    const std::string strPath = folder.write("a.mox", makeFile());
    const ProgramRun run = cli({"info", strPath, "--json"});
    EXPECT_EQ(0, run.iStatus);
    EXPECT_EQ("", run.strErrors);
    // Metadata: 12 bytes before each block's own, so 15 and 14.
    EXPECT_EQ(
        "{\"file\": \"" + strPath +
            "\", \"formatName\": \"RGBA 8 8 8 8 \", \"formatWord\": \"0x0808080861626772\", \"channelType\": 0, \"channelTypeName\": "
            "\"Unsigned Normalised Byte\", \"colourSpace\": 1, \"colourSpaceName\": \"sRGB\", \"width\": 4, \"height\": 2, \"depth\": 1, "
            "\"arrayMembers\": 2, \"faces\": 1, \"mipLevels\": 3, \"flags\": 2, \"preMultiplied\": true, \"dataSize\": 88, "
            "\"metaDataSize\": 29, \"image\": false, \"metaData\": [{\"fourCC\": \"0x03584f4d\", \"key\": 3, \"size\": 3, \"hex\": "
            "\"000200\"}, {\"fourCC\": \"0x41424344\", \"key\": 7, \"size\": 2, \"hex\": \"abcd\"}]}\n",
        run.strOutput);
}

TEST(InfoAsJson, SaysOfAnImageThatItIsOne)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), 5, 3);
    const QJsonObject info = infoOf(folder.path("a.png"));
    EXPECT_TRUE(info["image"].toBool());
    EXPECT_EQ(5, numberOf(info, "width"));
    EXPECT_EQ(3, numberOf(info, "height"));
    EXPECT_EQ("Linear RGB", textOf(info, "colourSpaceName"));
    EXPECT_TRUE(info["metaData"].toArray().isEmpty());
}

TEST(InfoAsJson, EscapesTheFilesName)
{
    const CTemporaryFolder folder;
    const std::string strPath = folder.write("a\"\\\n\x01.mox", makeFile());
    EXPECT_EQ(strPath, textOf(infoOf(strPath), "file"));
}

TEST(InfoAsText, TellsTheHeaderAndEveryBlockInAlignedLines)
{
    const CTemporaryFolder folder;
    const std::string strPath = folder.write("a.mox", makeFile());
    const ProgramRun run = cli({"info", strPath});
    EXPECT_EQ(0, run.iStatus);
    EXPECT_EQ("File            " + strPath +
                  "\n"
                  "Kind            texture\n"
                  "Format          0x0808080861626772 RGBA 8 8 8 8\n"
                  "Channel type    0 Unsigned Normalised Byte\n"
                  "Colour space    1 sRGB\n"
                  "Size            4 x 2 x 1\n"
                  "Array members   2\n"
                  "Faces           1\n"
                  "MIP levels      3\n"
                  "Flags           2\n"
                  "Pre-multiplied  yes\n"
                  "Data            88 bytes\n"
                  "Metadata        29 bytes\n"
                  "                0x03584f4d key 3, 3 bytes: 000200 (orientation X 0, Y 2, Z 0)\n"
                  "                0x41424344 key 7, 2 bytes: abcd\n",
              run.strOutput);
}

TEST(InfoAsText, ExplainsTheBlocksOfTheLibraryItself)
{
    const CTemporaryFolder folder;
    constexpr uint32_t ui32Native = CNativeFileBuilder::k_ui32Native;
    const std::string strPath = folder.write("a.mox", CNativeFileBuilder()
                                                          .faces(6)
                                                          .block(ui32Native, 1, {0, 0, 0x80, 0x3F, 'x', 'y', 'z', 0})
                                                          .block(ui32Native, 2, {'X', 'x', 'Y', 'y', 'Z', 'z'})
                                                          .block(ui32Native, 4, {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0})
                                                          .block(ui32Native, 5, std::vector<uint8_t>(40))
                                                          .block(ui32Native, 6, {1})
                                                          .data(std::vector<uint8_t>(24))
                                                          .bytes());
    const std::string strText = cli({"info", strPath}).strOutput;
    for (const char* strPart : {"(bump map, scale 1, channels xyz)\n", "(cube map faces +X -X +Y -Y +Z -Z)\n", "(border 1, 2, 3)\n",
                                "key 6, 1 byte: 01\n", "00000000... (padding)\n"})
        EXPECT_NE(std::string::npos, strText.find(strPart)) << strPart << "\n" << strText;
}

TEST(Info, TellsWhyAFileCannotBeLoaded)
{
    const CTemporaryFolder folder;
    expectFailed(cli({"info", folder.path("missing.mox")}),
                 "Cannot open file, as it does not exist at specified location. Has it been renamed, moved or deleted?");
    expectFailed(cli({"info", folder.write("text.txt", "no picture"), "--json"}),
                 "Either file is not a valid image or texture file, or is an unsupported format. If the file is a simple bitmap or texture "
                 "file, you could try wrapping it as raw data.");
    expectFailed(cli({"info", ""}), "Cannot open file, as it does not exist at specified location. Has it been renamed, moved or deleted?");
}

TEST(Info, TakesOneFileAndItsOwnFlagAlone)
{
    expectWrongWords(cli({"info"}), "FILE is required", "info");
    expectWrongWords(cli({"info", "a", "b"}), "b", "info");
    expectWrongWords(cli({"info", "a", "--json=false"}), "json", "info");
    expectWrongWords(cli({"info", "a", "-o", "b"}), "-o", "info");
}
