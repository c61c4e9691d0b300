#include "CommandLine/HalvaneCli.h"

#include <filesystem>

#include "Conversion/Transcode.h"
#include "Formats/FormatNames.h"

using namespace testsupport;

// ETC1, ETC2 and EAC from the shell, by their names.

namespace
{

using Bytes = std::vector<uint8_t>;

struct Row
{
    const char* pcName;
    uint32_t uiFormat;
    uint32_t uiBytesOf16By16;
    uint32_t uiBytesOfChain; ///< of 16 by 16 down to one pixel
    bool bHasQualities;
};

// 16 by 16 pixels are 16 blocks of 8 or 16 bytes; the chain is 16 + 4 + 1 + 1 + 1 blocks.
constexpr Row k_aRows[] = {{"etc1", 6, 128, 184, true},          {"etc2-rgb", 22, 128, 184, true}, {"ETC2 RGBA", 23, 256, 368, true},
                           {"etc2-rgb-a1", 24, 128, 184, false}, {"eac-r11", 25, 128, 184, false}, {"EAC_RG11", 26, 256, 368, false}};

class EtcFormatsOfTheShell : public testing::Test
{
protected:
    EtcFormatsOfTheShell() { writePicture(path("picture.png"), 16, 16); }

    std::string path(const std::string& strName) const { return m_Folder.path(strName); }

    ProgramRun convert(const std::string& strInput, const std::string& strOutput, std::vector<std::string> words) const
    {
        words.insert(words.begin(), {"convert", path(strInput), "-o", path(strOutput)});
        return cli(words);
    }

    Bytes encode(const Row& row, const std::string& strQuality) const
    {
        expectDone(convert("picture.png", "a.mox", {"--format", row.pcName, "--quality", strQuality}));
        return lastBytes(path("a.mox"), row.uiBytesOf16By16);
    }

    CTemporaryFolder m_Folder;
};

} // namespace

TEST_F(EtcFormatsOfTheShell, AreMadeAtEveryQualityByNumberAndName)
{
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(row.pcName);
        if (!row.bHasQualities)
            continue;
        expectDone(convert("picture.png", "usual.mox", {"--format", row.pcName}));
        EXPECT_EQ(lastBytes(path("usual.mox"), row.uiBytesOf16By16), encode(row, "0"));
        const char* const apcNames[] = {"Fast", "fast perceptual", "slow", "Slow Perceptual"};
        for (uint32_t i = 0; i < 4; ++i)
        {
            const Bytes blocks = encode(row, std::to_string(i));
            EXPECT_EQ(blocks, encode(row, apcNames[i]));
            // As in the library.
            moxtexture::CMOXTexture texture(moxtexture::CMOXTextureHeader(moxtexture::k_RGBA8, 16, 16, 1, 1, 1, 1, moxtexture::eCS_Linear,
                                                                          moxtexture::eCT_UnsignedNormalisedByte, false),
                                            makePicture(16, 16).data());
            ASSERT_TRUE(moxtexture::Transcode(texture, static_cast<moxtexture::EMOXTPixelFormat>(row.uiFormat),
                                              moxtexture::eCT_UnsignedNormalisedByte, moxtexture::eCS_Linear, i, false));
            EXPECT_EQ(Bytes(texture.getDataPtr(), texture.getDataPtr() + texture.getBlockSize()), blocks);
        }
    }
}

TEST_F(EtcFormatsOfTheShell, WithOneQualityTakeAnyNumber)
{
    for (const Row& row : k_aRows)
        if (!row.bHasQualities)
        {
            EXPECT_EQ(encode(row, "0"), encode(row, "3")) << row.pcName;
            EXPECT_EQ(encode(row, "0"), encode(row, "99")) << row.pcName;
        }
}

TEST_F(EtcFormatsOfTheShell, TakeAWholeChainGoThroughKtxFilesAndOpenAsPicturesOfTheOneThatTheyWere)
{
    // White is exact in each of them; R11 has no green, and neither of both has blue.
    writeImage(path("white.png"), Bytes(16 * 16 * 4, 255), 16, 16);
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(row.pcName);
        expectDone(convert("white.png", "a.ktx", {"--mips", "all", "--format", row.pcName}));
        const QJsonObject info = infoOf(path("a.ktx"));
        EXPECT_EQ(moxtexture::getFormatName(static_cast<moxtexture::EMOXTPixelFormat>(row.uiFormat)), textOf(info, "formatName"));
        EXPECT_EQ(5, numberOf(info, "mipLevels"));
        EXPECT_EQ(row.uiBytesOfChain, numberOf(info, "dataSize"));
        expectDone(cli({"extract", path("a.ktx"), "-o", path("top.png")}));
        const QImage top = readImage(path("top.png"));
        ASSERT_EQ(QSize(16, 16), top.size());
        const QColor colour(255, row.uiFormat == 25 ? 0 : 255, row.uiFormat >= 25 ? 0 : 255);
        for (int i = 0; i < 16 * 16; ++i)
            ASSERT_EQ(colour, top.pixelColor(i % 16, i / 16)) << i;
        expectDone(cli({"extract", path("a.ktx"), "-o", path("last.png"), "--level", "4"}));
        EXPECT_EQ(QSize(1, 1), readImage(path("last.png")).size());
    }
}

TEST_F(EtcFormatsOfTheShell, OfEACHaveASignWhereTheTypeHasOne)
{
    for (const auto& [pcType, uiStored] : {std::pair("UnsignedNormalisedInteger", 4), std::pair("SignedNormalisedInteger", 5)})
        for (const char* pcFormat : {"eac-r11", "eac-rg11"})
        {
            expectDone(convert("picture.png", "a.mox", {"--format", pcFormat, "--type", pcType}));
            EXPECT_EQ(uiStored, numberOf(infoOf(path("a.mox")), "channelType")) << pcFormat;
        }
}

TEST_F(EtcFormatsOfTheShell, AreSilentAboutAlphaThatPunchThroughHasNoPlaceFor)
{
    Bytes pixels = makePicture(16, 16);
    for (size_t i = 3; i < pixels.size(); i += 4)
        pixels[i] = static_cast<uint8_t>(i);
    writeImage(path("soft.png"), pixels, 16, 16);
    expectDone(convert("soft.png", "a.mox", {"--format", "etc2-rgb-a1"}));
}

TEST_F(EtcFormatsOfTheShell, HaveTheSameBytesWhateverTheJobsAndProcessors)
{
    std::vector<std::string> words = {"convert", "--ext", "mox", "--format", "etc2-rgba"};
    for (uint32_t i = 0; i < 4; ++i)
    {
        words.push_back(path("p" + std::to_string(i) + ".png"));
        writePicture(words.back(), 40 + 3 * i, 25, i);
    }
    for (const char* strCount : {"1", "4"})
    {
        std::vector<std::string> all = words;
        all.insert(all.end(), {"--out-dir", path(strCount), "--jobs", strCount, "--processors", strCount});
        expectDone(cli(all));
    }
    for (uint32_t i = 0; i < 4; ++i)
    {
        const std::string strName = "/p" + std::to_string(i) + ".mox";
        EXPECT_FALSE(readBytes(path("1") + strName).empty());
        EXPECT_EQ(readBytes(path("1") + strName), readBytes(path("4") + strName));
    }
}

TEST_F(EtcFormatsOfTheShell, RefuseQualitiesPastTheLastAndWriteNoFile)
{
    for (const char* pcQuality : {"4", "5", "99", "Thorough"})
    {
        const ProgramRun run = convert("picture.png", "a.mox", {"--format", "etc2-rgb", "--quality", pcQuality});
        EXPECT_EQ(2, run.iStatus) << pcQuality;
        EXPECT_NE(std::string::npos, run.strErrors.find("is no quality of ETC2 RGB")) << run.strErrors;
        EXPECT_FALSE(std::filesystem::exists(path("a.mox")));
    }
}
