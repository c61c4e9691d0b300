#include "CommandLine/HalvaneCli.h"

#include <filesystem>

#include "Conversion/Transcode.h"

using namespace testsupport;

// The MOXTC formats from the shell, by their names.

namespace
{

using Bytes = std::vector<uint8_t>;

struct Row
{
    const char* pcName;
    uint32_t uiFormat;
    uint32_t uiBytesOf64By64;
    uint32_t uiBytesOfChain; ///< of 64 by 64 down to one pixel
};

// A level takes a quarter or half a byte a pixel, and at least as much as one of 16 by 8 pixels (MOXTC 2bpp), 8 by 8 (4bpp), one block of
// eight bytes (MOXTCII): 1024 + 256 + 64 + 4 * 32, where 16 by 16 has 64 and 8 by 8 is enlarged; 2048 + 512 + 128 + 4 * 32;
// 1024 + 256 + 64 + 16 + 3 * 8; 2048 + 512 + 128 + 32 + 3 * 8.
constexpr Row k_aRows[] = {{"moxtc-2bpp-rgb", 0, 1024, 1472},  {"moxtc-2bpp-rgba", 1, 1024, 1472}, {"moxtc-4bpp-rgb", 2, 2048, 2816},
                           {"MOXTC 4bpp RGBA", 3, 2048, 2816}, {"moxtcii-2bpp", 4, 1024, 1384},    {"MOXTCII-4bpp", 5, 2048, 2744}};

class MoxtcFormatsOfTheShell : public testing::Test
{
protected:
    std::string path(const std::string& strName) const { return m_Folder.path(strName); }

    ProgramRun convert(const std::string& strInput, const std::string& strOutput, std::vector<std::string> words) const
    {
        words.insert(words.begin(), {"convert", path(strInput), "-o", path(strOutput)});
        return cli(words);
    }

    /// The data of the picture in a format at quality 1 with that count of processors.
    Bytes encodeWith(const std::string& strCount, size_t uiSize) const
    {
        expectDone(convert("picture.png", "a.mox", {"--format", "moxtcii-4bpp", "--quality", "1", "--processors", strCount}));
        return lastBytes(path("a.mox"), uiSize);
    }

    CTemporaryFolder m_Folder;
};

} // namespace

TEST_F(MoxtcFormatsOfTheShell, AreMadeAtBothFastQualitiesByNumberAndName)
{
    // Noise, which gives the passes something to do in every block.
    writeImage(path("picture.png"), CSeededRandom(3).bytes(64 * 64 * 4), 64, 64);
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(row.pcName);
        expectDone(convert("picture.png", "fastest.mox", {"--format", row.pcName, "--quality", "0"}));
        expectDone(convert("picture.png", "fast.mox", {"--format", row.pcName, "--quality", "1"}));
        for (const char* pcFile : {"fastest.mox", "fast.mox"})
        {
            const QJsonObject info = infoOf(path(pcFile));
            EXPECT_EQ("0x000000000000000" + std::to_string(row.uiFormat), textOf(info, "formatWord"));
            EXPECT_EQ(0, numberOf(info, "channelType"));
            EXPECT_EQ(row.uiBytesOf64By64, numberOf(info, "dataSize"));
        }
        EXPECT_NE(readBytes(path("fastest.mox")), readBytes(path("fast.mox")));
        expectDone(convert("picture.png", "named.mox", {"--format", row.pcName, "--quality", "fastest-(development-quality)"}));
        EXPECT_EQ(readBytes(path("fastest.mox")), readBytes(path("named.mox")));
        expectDone(convert("picture.png", "named.mox", {"--format", row.pcName, "--quality", "Fast (Lower Quality)"}));
        EXPECT_EQ(readBytes(path("fast.mox")), readBytes(path("named.mox")));
    }
}

TEST_F(MoxtcFormatsOfTheShell, AreTheLibrarysOwnBytes)
{
    writePicture(path("picture.png"), 64, 64);
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(row.pcName);
        expectDone(convert("picture.png", "a.mox", {"--format", row.pcName, "--quality", "0"}));
        moxtexture::CMOXTexture texture(moxtexture::CMOXTextureHeader(moxtexture::k_RGBA8, 64, 64, 1, 1, 1, 1, moxtexture::eCS_Linear,
                                                                      moxtexture::eCT_UnsignedNormalisedByte, false),
                                        makePicture(64, 64).data());
        ASSERT_TRUE(moxtexture::Transcode(texture, static_cast<moxtexture::EMOXTPixelFormat>(row.uiFormat),
                                          moxtexture::eCT_UnsignedNormalisedByte, moxtexture::eCS_Linear, 0, false));
        EXPECT_EQ(Bytes(texture.getDataPtr(), texture.getDataPtr() + texture.getBlockSize()),
                  lastBytes(path("a.mox"), row.uiBytesOf64By64));
    }
}

TEST_F(MoxtcFormatsOfTheShell, TakeAWholeChainAndOpenAsPicturesOfTheOneThatTheyWere)
{
    // White is exact in each of them.
    writeImage(path("white.png"), Bytes(64 * 64 * 4, 255), 64, 64);
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(row.pcName);
        expectDone(convert("white.png", "a.mox", {"--mips", "all", "--format", row.pcName, "--quality", "1"}));
        const QJsonObject info = infoOf(path("a.mox"));
        EXPECT_EQ(7, numberOf(info, "mipLevels"));
        EXPECT_EQ(row.uiBytesOfChain, numberOf(info, "dataSize"));
        expectDone(cli({"extract", path("a.mox"), "-o", path("top.png")}));
        const QImage top = readImage(path("top.png"));
        ASSERT_EQ(QSize(64, 64), top.size());
        for (int y = 0; y < 64; ++y)
            EXPECT_EQ(Bytes(64 * 4, 255), Bytes(top.constScanLine(y), top.constScanLine(y) + 64 * 4));
        expectDone(cli({"extract", path("a.mox"), "-o", path("last.png"), "--level", "6"}));
        EXPECT_EQ(QSize(1, 1), readImage(path("last.png")).size());
    }
}

TEST_F(MoxtcFormatsOfTheShell, DependAtQuality1OnTheNumberOfProcessorsByTheTilesAlone)
{
    // 16 by 16 blocks: two tiles of 8 rows, or two by two of 8 by 8, leave nothing over, but three of five leave a row that no pass is for.
    writePicture(path("picture.png"), 64, 64);
    const Bytes one = encodeWith("1", 2048);
    EXPECT_EQ(one, encodeWith("2", 2048));
    EXPECT_EQ(one, encodeWith("4", 2048));
    const Bytes three = encodeWith("3", 2048);
    EXPECT_NE(one, three);
    EXPECT_EQ(three, encodeWith("3", 2048));

    // 64 are the most that count.
    EXPECT_EQ(encodeWith("64", 2048), encodeWith("1024", 2048));
}

TEST_F(MoxtcFormatsOfTheShell, DependAtQuality0OnNothingButThePicture)
{
    writePicture(path("picture.png"), 64, 64);
    for (const Row& row : k_aRows)
    {
        expectDone(convert("picture.png", "a.mox", {"--format", row.pcName, "--quality", "0", "--processors", "1"}));
        expectDone(convert("picture.png", "b.mox", {"--format", row.pcName, "--quality", "0", "--processors", "3"}));
        EXPECT_EQ(readBytes(path("a.mox")), readBytes(path("b.mox"))) << row.pcName;
    }
}

TEST_F(MoxtcFormatsOfTheShell, HaveTheSameBytesWhateverTheJobs)
{
    std::vector<std::string> words = {"convert", "--ext", "mox", "--format", "moxtcii-2bpp", "--quality", "1", "--processors", "3"};
    for (uint32_t i = 0; i < 6; ++i)
    {
        words.push_back(path("p" + std::to_string(i) + ".png"));
        writePicture(words.back(), 40 + 4 * i, 52, i);
    }
    for (const char* strJobs : {"1", "4"})
    {
        std::vector<std::string> all = words;
        all.insert(all.end(), {"--out-dir", path(strJobs), "--jobs", strJobs});
        expectDone(cli(all));
    }
    for (uint32_t i = 0; i < 6; ++i)
    {
        const std::string strName = "/p" + std::to_string(i) + ".mox";
        EXPECT_FALSE(readBytes(path("1") + strName).empty());
        EXPECT_EQ(readBytes(path("1") + strName), readBytes(path("4") + strName));
    }
}

TEST_F(MoxtcFormatsOfTheShell, RefuseSizesThatTheFirstGenerationDoesNotTakeAndWriteNoFile)
{
    writePicture(path("odd.png"), 50, 34);
    writePicture(path("blocks.png"), 48, 48);
    for (const char* pcInput : {"odd.png", "blocks.png"})
    {
        expectFailed(convert(pcInput, "a.mox", {"--format", "moxtc-4bpp-rgb", "--quality", "0"}),
                     "Cannot encode this texture as MOXTC 4bpp RGB");
        expectFailed(convert(pcInput, "a.mox", {"--format", "moxtc-2bpp-rgba", "--quality", "1"}),
                     "Cannot encode this texture as MOXTC 2bpp RGBA");
        EXPECT_FALSE(std::filesystem::exists(path("a.mox")));
        expectDone(convert(pcInput, "b.mox", {"--format", "moxtcii-2bpp", "--quality", "1"}));
    }
}

TEST_F(MoxtcFormatsOfTheShell, FailAtQualitiesThatAreNotBuiltYetOfWhichTheUsualOneIsOne)
{
    writePicture(path("picture.png"), 64, 64);
    expectFailed(convert("picture.png", "a.mox", {"--format", "moxtcii-4bpp"}), "Cannot encode this texture as MOXTCII 4bpp");
    for (const char* pcQuality : {"2", "3", "4"})
        expectFailed(convert("picture.png", "a.mox", {"--format", "moxtcii-4bpp", "--quality", pcQuality}),
                     "Cannot encode this texture as MOXTCII 4bpp");
    EXPECT_FALSE(std::filesystem::exists(path("a.mox")));
}
