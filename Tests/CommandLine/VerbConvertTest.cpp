#include <algorithm>
#include <array>
#include <functional>

#include "CommandLine/HalvaneCli.h"
#include "Composition/WorkingForm.h"
#include "Conversion/Transcode.h"
#include "Files/SaveTexture.h"
#include "Images/LoadTextureFile.h"
#include "Operations/Border.h"
#include "Operations/Flip.h"
#include "Operations/ResizeCanvas.h"
#include "Operations/Rotate.h"
#include "Support/NativeFileBuilder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

/// The file's extent of a native texture's data: all behind the header and the metadata.
std::vector<uint8_t> dataOf(const std::string& strPath)
{
    const std::vector<uint8_t> bytes = readBytes(strPath);
    const size_t uiStart = 52 + static_cast<size_t>(numberOf(infoOf(strPath), "metaDataSize"));
    return uiStart <= bytes.size() ? std::vector<uint8_t>(bytes.begin() + static_cast<ptrdiff_t>(uiStart), bytes.end())
                                   : std::vector<uint8_t>();
}

/// A picture file in a folder, and what converting it gives.
class ConvertTest : public testing::Test
{
protected:
    ConvertTest() { writePicture(path("photo.png"), 24, 20); }

    std::string path(const std::string& strName) const { return m_Folder.path(strName); }

    ProgramRun convert(const std::string& strInput, const std::string& strOutput, std::vector<std::string> words = {}) const
    {
        words.insert(words.begin(), {"convert", path(strInput), "-o", path(strOutput)});
        return cli(words);
    }

    CTemporaryFolder m_Folder;
};

using Convert = ConvertTest;
using ConvertWords = ConvertTest;
using ConvertMany = ConvertTest;

} // namespace

TEST_F(Convert, SavesAnImageAsTheTextureThatItIs)
{
    expectDone(convert("photo.png", "a.mox"));
    const QJsonObject info = infoOf(path("a.mox"));
    EXPECT_FALSE(info["image"].toBool());
    EXPECT_EQ("0x0808080861626772", textOf(info, "formatWord"));
    EXPECT_EQ(24, numberOf(info, "width"));
    EXPECT_EQ(20, numberOf(info, "height"));
    EXPECT_EQ(0, numberOf(info, "colourSpace"));
    EXPECT_EQ(makePicture(24, 20), dataOf(path("a.mox")));
    EXPECT_EQ(2u, m_Folder.count());
}

TEST_F(Convert, EncodesAPhotoWithAllItsLevels)
{
    expectDone(convert("photo.png", "a.mox", {"--assume-space", "srgb", "--mips", "all", "--format", "bc1"}));
    const QJsonObject info = infoOf(path("a.mox"));
    EXPECT_EQ("BC1", textOf(info, "formatName"));
    EXPECT_EQ("sRGB", textOf(info, "colourSpaceName"));
    EXPECT_EQ(5, numberOf(info, "mipLevels")); // 24x20, 12x10, 6x5, 3x2, 1x1
    // Blocks of 4 by 4 in 8 bytes: 6*5 + 3*3 + 2*2 + 1 + 1 = 45.
    EXPECT_EQ(45 * 8, numberOf(info, "dataSize"));
}

TEST_F(Convert, LabelsWithoutTouchingAPixel)
{
    expectDone(convert("photo.png", "a.mox", {"--assume-space", "srgb"}));
    EXPECT_EQ(makePicture(24, 20), dataOf(path("a.mox")));
    EXPECT_EQ(1, numberOf(infoOf(path("a.mox")), "colourSpace"));
    // To convert is another thing.
    expectDone(convert("photo.png", "b.mox", {"--space", "srgb"}));
    EXPECT_NE(makePicture(24, 20), dataOf(path("b.mox")));
    EXPECT_EQ(1, numberOf(infoOf(path("b.mox")), "colourSpace"));
}

TEST_F(Convert, SavesAgainByteForByteWhereTheTargetIsWhatItHas)
{
    expectDone(convert("photo.png", "a.mox", {"--mips", "all", "--format", "bc1"}));
    // Decoding and encoding a second time would change the blocks; saving again does not.
    expectDone(convert("a.mox", "b.mox"));
    EXPECT_EQ(readBytes(path("a.mox")), readBytes(path("b.mox")));
    expectDone(convert("a.mox", "c.mox", {"--format", "bc1", "--type", "0", "--space", "lrgb", "--dither"}));
    EXPECT_EQ(readBytes(path("a.mox")), readBytes(path("c.mox")));
    expectDone(convert("a.mox", "d.mox", {"--filter", "cubic"}));
    EXPECT_EQ(readBytes(path("a.mox")), readBytes(path("d.mox")));
}

TEST_F(Convert, KeepsTheMetaDataAndTheOrientationWithoutAnOperation)
{
    const std::vector<uint8_t> bytes = CNativeFileBuilder()
                                           .size(1, 2)
                                           .block(CNativeFileBuilder::k_ui32Native, 3, {0, 2, 0})
                                           .block(0x41424344, 7, {1, 2, 3})
                                           .data({1, 2, 3, 4, 5, 6, 7, 8})
                                           .bytes();
    m_Folder.write("a.mox", bytes);
    expectDone(convert("a.mox", "b.mox"));
    EXPECT_EQ(bytes, readBytes(path("b.mox")));
    expectDone(convert("a.mox", "c.mox", {"--format", "b8g8r8a8"}));
    EXPECT_EQ((std::vector<uint8_t>{3, 2, 1, 4, 7, 6, 5, 8}), dataOf(path("c.mox")));
    EXPECT_EQ(infoOf(path("a.mox"))["metaData"], infoOf(path("c.mox"))["metaData"]);
}

TEST_F(Convert, UndoesTheOrientationBeforeTheFirstOperation)
{
    m_Folder.write(
        "a.mox",
        CNativeFileBuilder().size(1, 2).block(CNativeFileBuilder::k_ui32Native, 3, {0, 2, 0}).data({1, 2, 3, 4, 5, 6, 7, 8}).bytes());
    // A single level is what it has: only the way through the working form shows.
    expectDone(convert("a.mox", "b.mox", {"--mips", "1"}));
    EXPECT_EQ((std::vector<uint8_t>{5, 6, 7, 8, 1, 2, 3, 4}), dataOf(path("b.mox")));
    EXPECT_NE(std::string::npos, cli({"info", path("b.mox")}).strOutput.find("orientation X 0, Y 0, Z 0"));
}

TEST_F(Convert, BringsAnEditedTextureBackToItsOwnEncoding)
{
    expectDone(convert("photo.png", "a.mox", {"--assume-space", "srgb", "--format", "r5g6b5"}));
    expectDone(convert("a.mox", "b.mox", {"--resize", "8x8"}));
    const QJsonObject info = infoOf(path("b.mox"));
    EXPECT_EQ("RGB 5 6 5 ", textOf(info, "formatName"));
    EXPECT_EQ(4, numberOf(info, "channelType"));
    EXPECT_EQ(1, numberOf(info, "colourSpace"));
    EXPECT_EQ(8 * 8 * 2, numberOf(info, "dataSize"));
    expectDone(convert("photo.png", "c.mox", {"--format", "bc3"}));
    expectDone(convert("c.mox", "d.mox", {"--flip", "x"}));
    EXPECT_EQ("BC3", textOf(infoOf(path("d.mox")), "formatName"));
}

TEST_F(Convert, EditsInFloatsWhereTheTextureHasFloats)
{
    // Red 2.0 and 4.0: halves of 2^1 and 2^2 with exponents 16 and 17 in bits 10 to 14.
    m_Folder.write("a.mox",
                   CNativeFileBuilder().format(0x0000001000000072).channelType(12).size(2, 1).data({0x00, 0x40, 0x00, 0x44}).bytes());
    expectDone(convert("a.mox", "b.mox", {"--flip", "x"}));
    EXPECT_EQ((std::vector<uint8_t>{0x00, 0x44, 0x00, 0x40}), dataOf(path("b.mox")));
}

TEST_F(Convert, GivesTheUsualTypeOfTheFormatWhereNoneIsAskedFor)
{
    struct Row
    {
        const char* strFormat;
        int iType;
    };
    for (const Row& row :
         {Row{"r8g8b8a8", 0}, Row{"r16g16b16a16", 4}, Row{"r32g32b32a32", 12}, Row{"b10g11r11", 13}, Row{"x8r8g8b8", 0}, Row{"l8", 0}})
    {
        expectDone(convert("photo.png", "a.mox", {"--format", row.strFormat}));
        EXPECT_EQ(row.iType, numberOf(infoOf(path("a.mox")), "channelType")) << row.strFormat;
    }
    expectDone(convert("photo.png", "a.mox", {"--format", "r16g16b16a16", "--type", "SignedFloatingPoint"}));
    EXPECT_EQ(12, numberOf(infoOf(path("a.mox")), "channelType"));
}

TEST_F(Convert, DithersWhereAsked)
{
    expectDone(convert("photo.png", "plain.mox", {"--format", "r5g6b5"}));
    expectDone(convert("photo.png", "dithered.mox", {"--format", "r5g6b5", "--dither"}));
    EXPECT_NE(dataOf(path("plain.mox")), dataOf(path("dithered.mox")));
}

TEST_F(Convert, AppliesOperationsInEveryOrderAsTheLibraryDoes)
{
    struct Step
    {
        std::vector<std::string> words;
        std::function<bool(CMOXTexture&)> apply;
    };
    const std::array<Step, 4> steps = {{
        {{"--flip", "x"}, [](CMOXTexture& texture) { return Flip(texture, eAxisX); }},
        {{"--canvas", "20x10+2+-3"}, [](CMOXTexture& texture) { return ResizeCanvas(texture, 20, 10, 1, 2, -3, 0); }},
        {{"--rotate", "cw"}, [](CMOXTexture& texture) { return Rotate(texture, eAxisZ, true); }},
        {{"--border", "2,1"}, [](CMOXTexture& texture) { return Border(texture, 2, 1, 0); }},
    }};
    std::array<size_t, 4> order = {0, 1, 2, 3};
    std::vector<std::vector<uint8_t>> results;
    do
    {
        CMOXTexture expected;
        LoadStatus status;
        loadTextureFile(status, expected, path("photo.png"));
        ASSERT_TRUE(toWorkingForm(expected));
        std::vector<std::string> words;
        for (const size_t i : order)
        {
            ASSERT_TRUE(steps[i].apply(expected));
            words.insert(words.end(), steps[i].words.begin(), steps[i].words.end());
        }
        expectDone(convert("photo.png", "a.mox", words));
        ASSERT_TRUE(saveTexture(expected, path("expected.mox")));
        EXPECT_EQ(readBytes(path("expected.mox")), readBytes(path("a.mox"))) << testing::PrintToString(order);
        results.push_back(readBytes(path("a.mox")));
    } while (std::next_permutation(order.begin(), order.end()));
    std::sort(results.begin(), results.end());
    EXPECT_LT(12, std::unique(results.begin(), results.end()) - results.begin()); // the order matters
}

TEST_F(Convert, ReadsItsWordsInAnyPlace)
{
    expectDone(convert("photo.png", "a.mox", {"--resize", "8x8", "--format", "bc1", "--mips", "all"}));
    expectDone(cli({"convert", "--format=bc1", "--resize=8x8", "--mips", "all", path("photo.png"), "--output", path("b.mox")}));
    expectDone(cli({"convert", "--resize", "8x8", path("photo.png"), "--mips=all", "-o" + path("c.mox"), "--format", "BC1"}));
    EXPECT_EQ(readBytes(path("a.mox")), readBytes(path("b.mox")));
    EXPECT_EQ(readBytes(path("a.mox")), readBytes(path("c.mox")));
}

TEST_F(Convert, AlignsTheDataWhereAsked)
{
    for (const uint32_t uiAlignment : {2u, 8u, 64u, 65536u})
    {
        expectDone(convert("photo.png", "a.mox", {"--pad", std::to_string(uiAlignment)}));
        const uint32_t uiStart = 52 + static_cast<uint32_t>(numberOf(infoOf(path("a.mox")), "metaDataSize"));
        EXPECT_EQ(0u, uiStart % uiAlignment);
        EXPECT_EQ(makePicture(24, 20), dataOf(path("a.mox")));
    }
    expectDone(convert("a.mox", "b.mox", {"--pad", "16"}));
    EXPECT_EQ(1, infoOf(path("b.mox"))["metaData"].toArray().size()); // the earlier padding went
    for (const char* strNone : {"0", "1"})
    {
        expectDone(convert("photo.png", "c.mox", {"--pad", strNone}));
        EXPECT_EQ(0, numberOf(infoOf(path("c.mox")), "metaDataSize"));
    }
}

TEST_F(Convert, ReplacesItsOwnInput)
{
    expectDone(convert("photo.png", "a.mox"));
    expectDone(convert("a.mox", "a.mox", {"--format", "bc1"}));
    EXPECT_EQ("BC1", textOf(infoOf(path("a.mox")), "formatName"));
    EXPECT_EQ(2u, m_Folder.count());
}

TEST_F(Convert, TakesItsExtensionInAnyCase)
{
    expectDone(convert("photo.png", "A.MOX"));
    EXPECT_EQ(24, numberOf(infoOf(path("A.MOX")), "width"));
    EXPECT_EQ(2u, m_Folder.count());
}

TEST_F(Convert, SaysWhyAFileCannotBeLoaded)
{
    expectFailed(convert("missing.png", "a.mox"),
                 "Cannot open file, as it does not exist at specified location. Has it been renamed, moved or deleted?");
    m_Folder.write("text.png", "no picture");
    expectFailed(convert("text.png", "a.mox"), "Either file is not a valid image or texture file, or is an unsupported format. If the file "
                                               "is a simple bitmap or texture file, you "
                                               "could try wrapping it as raw data.");
    EXPECT_EQ(2u, m_Folder.count());
}

TEST_F(Convert, SaysWhatCannotBeEncoded)
{
    expectFailed(convert("photo.png", "a.mox", {"--format", "bc7"}), "Cannot encode this texture as BC7");
    expectFailed(convert("photo.png", "a.mox", {"--quality", "Thorough"}), "'Thorough' is no quality of RGBA 8 8 8 8");
    expectFailed(convert("photo.png", "a.mox", {"--type", "12"}), "RGBA 8 8 8 8 cannot hold values of type Signed Floating Point");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(Convert, SaysWhichOperationFailed)
{
    // 4 bytes times 2^32 pixels is more than a texture can hold.
    expectFailed(convert("photo.png", "a.mox", {"--flip", "x", "--canvas", "65536x65536"}),
                 "Cannot apply --canvas 65536x65536 to this texture");
    expectFailed(convert("photo.png", "a.mox", {"--border", "4294967295,0"}), "Cannot apply --border 4294967295,0 to this texture");
    expectFailed(convert("photo.png", "a.mox", {"--border", "2147483648,2147483648"}),
                 "Cannot apply --border 2147483648,2147483648 to this texture");
    expectFailed(convert("photo.png", "a.mox", {"--resize", "4294967295x4294967295x4294967295"}),
                 "Cannot apply --resize 4294967295x4294967295x4294967295 to this texture");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(Convert, LeavesTheEarlierFileWhereItFails)
{
    m_Folder.write("a.mox", "precious");
    EXPECT_EQ(1, convert("photo.png", "a.mox", {"--format", "bc7"}).iStatus);
    EXPECT_EQ("precious", readText(path("a.mox")));
    EXPECT_EQ(2u, m_Folder.count());
}

TEST_F(Convert, SaysWhereNothingCanBeWritten)
{
    EXPECT_EQ(1, convert("photo.png", "missing/a.mox").iStatus);
    std::filesystem::create_directory(path("folder.mox"));
    const ProgramRun run = convert("photo.png", "folder.mox");
    expectFailed(run, "\"" + path("folder.mox") + "\" is a folder");
    EXPECT_EQ(2u, m_Folder.count());
}

TEST_F(ConvertWords, MustSayWhereToWriteWhat)
{
    expectWrongWords(cli({"convert"}), "INPUT is required", "convert");
    expectWrongWords(cli({"convert", path("photo.png")}), "required", "convert");
    expectWrongWords(cli({"convert", path("photo.png"), "-o"}), "output", "convert");
    expectWrongWords(cli({"convert", "-o", path("a.mox")}), "INPUT is required", "convert");
    expectWrongWords(cli({"convert", path("photo.png"), "b.png", "-o", path("a.mox")}), "one input", "convert");
    expectWrongWords(cli({"convert", path("photo.png"), "-o", path("a.mox"), "-o", path("b.mox")}), "output", "convert");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(ConvertWords, NameNoOutputThatCannotBeWritten)
{
    for (const char* strName : {"a.png", "a", "a.astc", "a.mox.", "a.moxx", "mox", "a.txt"})
        expectWrongWords(convert("photo.png", strName), "must end in .mox, .ktx, .dds or .h", "convert");
    // Whatever else is wrong, nothing was read.
    expectWrongWords(convert("missing.png", "a.png"), "must end in", "convert");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(ConvertWords, AreRefusedWhereAnOptionDoesNotTakeThem)
{
    struct Row
    {
        const char* strOption;
        std::vector<const char*> values;
    };
    const Row aRows[] = {
        {"--format", {"", "bc", "r8r8", "51"}},
        {"--type", {"14", "-1", "UNorm", ""}},
        {"--space", {"rgb", "linear", ""}},
        {"--assume-space", {"rgb", ""}},
        {"--quality", {"best", "-1", ""}},
        {"--pad", {"-1", "3", "48", "65535", "65537", "131072", "x", "", "4294967300"}},
        {"--mips", {"0", "x"}},
        {"--resize", {"0x0"}},
        {"--filter", {"lanczos"}},
    };
    for (const Row& row : aRows)
        for (const char* strValue : row.values)
            expectWrongWords(convert("photo.png", "a.mox", {row.strOption, strValue}), row.strOption, "convert");
    expectWrongWords(convert("photo.png", "a.mox", {"--format", "bc1", "--quality", "Thorough"}), "no quality of BC1", "convert");
    expectWrongWords(convert("photo.png", "a.mox", {"--format", "r8g8b8a8", "--type", "12"}), "cannot hold", "convert");
    expectWrongWords(convert("photo.png", "a.mox", {"--mips", "33"}), "'33' is not N|all, N being 1 to 32", "convert");
    expectWrongWords(convert("photo.png", "a.mox", {"--dither=no"}), "dither", "convert");
    expectWrongWords(convert("photo.png", "a.mox", {"--format", "bc1", "--format", "bc2"}), "format", "convert");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(ConvertWords, AreNoOptionsWhereANameIsWanted)
{
    for (const char* strWord : {"--quiet", "--x", "-o", "-h"})
        expectWrongWords(cli({"convert", path("photo.png"), "--ext", "mox", "--out-dir", strWord}),
                         "a file of that name is ./" + std::string(strWord), "convert");
    expectWrongWords(cli({"convert", path("photo.png"), "-o", "--dither"}), "'--dither' is an option", "convert");
    expectWrongWords(cli({"extract", path("photo.png"), "-o", "--x.png"}), "'--x.png' is an option", "extract");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(ConvertWords, OfOneFileAndOfManyDoNotMix)
{
    const std::string strPhoto = path("photo.png");
    expectWrongWords(cli({"convert", strPhoto, "-o", path("a.mox"), "--out-dir", path("out"), "--ext", "mox"}), "exclude", "convert");
    expectWrongWords(cli({"convert", strPhoto, "--out-dir", path("out")}), "requires --ext", "convert");
    expectWrongWords(cli({"convert", strPhoto, "-o", path("a.mox"), "--ext", "mox"}), "require --out-dir", "convert");
    expectWrongWords(cli({"convert", strPhoto, "-o", path("a.mox"), "--jobs", "2"}), "require --out-dir", "convert");
    for (const char* strExtension : {"png", "MOX", ".mox", ""})
        expectWrongWords(cli({"convert", strPhoto, "--out-dir", path("out"), "--ext", strExtension}), "--ext", "convert");
    for (const char* strJobs : {"0", "-1", "1025", "two", ""})
        expectWrongWords(cli({"convert", strPhoto, "--out-dir", path("out"), "--ext", "mox", "--jobs", strJobs}), "--jobs", "convert");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(ConvertMany, WritesEachInputIntoTheFolderWithTheSameBytesWhateverTheJobs)
{
    std::vector<std::string> inputs;
    for (uint32_t i = 0; i < 9; ++i)
    {
        const std::string strStem = "p" + std::to_string(i);
        inputs.push_back(path(strStem + ".png"));
        writePicture(inputs.back(), 8 + 4 * i, 20, i);
        expectDone(convert(strStem + ".png", strStem + ".mox", {"--mips", "all", "--format", "bc3"}));
    }
    for (const char* strJobs : {"1", "2", "5", "64"})
    {
        const std::string strFolder = path(std::string("out/deep") + strJobs);
        std::vector<std::string> words = {"convert", "--out-dir", strFolder, "--ext",    "mox", "--jobs",
                                          strJobs,   "--mips",    "all",     "--format", "bc3"};
        words.insert(words.end(), inputs.begin(), inputs.end());
        expectDone(cli(words));
        for (uint32_t i = 0; i < 9; ++i)
        {
            const std::string strName = "p" + std::to_string(i) + ".mox";
            EXPECT_EQ(readBytes(path(strName)), readBytes((std::filesystem::path(strFolder) / strName).string())) << strJobs << " " << i;
        }
    }
}

TEST_F(ConvertMany, GoesOnPastAFailingFileAndNamesEach)
{
    m_Folder.write("bad.png", "no picture");
    writePicture(path("last.png"), 8, 8);
    const ProgramRun run = cli(
        {"convert", path("missing.png"), path("photo.png"), path("bad.png"), path("last.png"), "--out-dir", path("out"), "--ext", "mox"});
    EXPECT_EQ(1, run.iStatus);
    EXPECT_EQ("", run.strOutput);
    EXPECT_EQ("halvane-cli: error: " + path("missing.png") +
                  ": Cannot open file, as it does not exist at specified location. Has it been renamed, moved or deleted?\n"
                  "halvane-cli: error: " +
                  path("bad.png") +
                  ": Either file is not a valid image or texture file, or is an unsupported format. If the file is a simple bitmap or "
                  "texture file, "
                  "you could try wrapping it as raw data.\n",
              run.strErrors);
    EXPECT_EQ(24, numberOf(infoOf(path("out/photo.mox")), "width"));
    EXPECT_EQ(8, numberOf(infoOf(path("out/last.mox")), "width"));
    EXPECT_FALSE(std::filesystem::exists(path("out/bad.mox")));
}

TEST_F(ConvertMany, WritesNothingWhereTwoInputsGiveOneOutput)
{
    std::filesystem::copy_file(path("photo.png"), path("photo.jpg"));
    expectWrongWords(cli({"convert", path("photo.png"), path("photo.jpg"), "--out-dir", path("out"), "--ext", "mox"}), "both be written",
                     "convert");
    EXPECT_FALSE(std::filesystem::exists(path("out")));
}

TEST_F(ConvertMany, ReplacesItsInputsInTheirOwnFolder)
{
    expectDone(convert("photo.png", "a.mox"));
    expectDone(convert("photo.png", "b.mox"));
    expectDone(cli({"convert", path("a.mox"), path("b.mox"), "--out-dir", path(""), "--ext", "mox", "--format", "bc1"}));
    EXPECT_EQ("BC1", textOf(infoOf(path("a.mox")), "formatName"));
    EXPECT_EQ("BC1", textOf(infoOf(path("b.mox")), "formatName"));
    EXPECT_EQ(3u, m_Folder.count());
}

TEST_F(ConvertMany, SaysWhereTheFolderCannotBeMade)
{
    const ProgramRun run = cli({"convert", path("photo.png"), "--out-dir", path("photo.png") + "/out", "--ext", "mox"});
    EXPECT_EQ(1, run.iStatus);
    EXPECT_EQ(0u, run.strErrors.find("halvane-cli: error: Cannot make the folder ")) << run.strErrors;
    EXPECT_EQ(1, std::count(run.strErrors.begin(), run.strErrors.end(), '\n'));
}

TEST_F(ConvertMany, ShowsProgressOnATerminalAloneAndTakesItAwayAtTheEnd)
{
    writePicture(path("b.png"), 8, 8);
    std::vector<std::string> words = {
        "convert", path("photo.png"), path("b.png"), path("missing.png"), "--out-dir", path("out"), "--ext", "mox", "--jobs", "1"};
    ProgramSetting terminal;
    terminal.bTerminal = true;
    const std::string strShown = cli(words, terminal).strErrors;
    EXPECT_NE(std::string::npos, strShown.find("0 of 3: ")) << strShown;
    EXPECT_NE(std::string::npos, strShown.find("2 of 3: ")) << strShown;
    const std::string strErase = "\r\033[K";
    ASSERT_LT(strErase.size(), strShown.size());
    EXPECT_EQ(strErase, strShown.substr(strShown.size() - strErase.size()));
    // The error stands on a line of its own.
    EXPECT_NE(std::string::npos, strShown.find(strErase + "halvane-cli: error: " + path("missing.png"))) << strShown;

    EXPECT_EQ(std::string::npos, cli(words).strErrors.find("of 3"));
    words.emplace_back("--quiet");
    const std::string strQuiet = cli(words, terminal).strErrors;
    EXPECT_EQ(std::string::npos, strQuiet.find("of 3"));
    EXPECT_EQ(0u, strQuiet.find("halvane-cli: error: "));
}
