#include "CommandLine/HalvaneCli.h"

using namespace testsupport;

// The packed formats from the shell, by their names.

namespace
{

using Bytes = std::vector<uint8_t>;

/// Red, blue; green, a mixed colour; white, black; two greys.
const Bytes k_eightColours = {255, 0,   0,   255, 0, 0, 255, 255, 0,   255, 0,   255, 10,  20,  200, 255,
                              255, 255, 255, 255, 0, 0, 0,   255, 128, 128, 128, 255, 127, 127, 127, 255};

class PackedFormatsOfTheShell : public testing::Test
{
protected:
    std::string path(const std::string& strName) const { return m_Folder.path(strName); }

    ProgramRun convert(const std::string& strInput, const std::string& strOutput, std::vector<std::string> words) const
    {
        words.insert(words.begin(), {"convert", path(strInput), "-o", path(strOutput)});
        return cli(words);
    }

    CTemporaryFolder m_Folder;
};

} // namespace

TEST_F(PackedFormatsOfTheShell, HoldThePictureAsWorkedByHand)
{
    struct Row
    {
        const char* pcName;
        const char* pcWord;
        int iChannelType;
        Bytes data;
    };
    // Y of the eight pixels: 82, 41, 145, 48, 235, 16, and of the greys 0.859 * 128 + 16.5 = 126.45, 0.859 * 127 + 16.5 = 125.59.
    // U of each left pixel 90, 54, 128, 128; V of each right one 110, 111, 128, 128.
    // Means: 85, 85, 85, 76, 255, 0, 128, 127. Only the fifth and the seventh are white.
    // Words of the shared exponent: red, green and blue from the lowest bit, nine bits each, the exponent above: 256 in 1.0 at 16;
    // (10, 20, 200) / 255 at 15 is 20, 40, 402; 128 / 255 at 15 is 257.0; 127 / 255 at 14 is 510.0.
    const auto word = [](uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, uint32_t uiExponent)
    { return uiRed | uiGreen << 9 | uiBlue << 18 | uiExponent << 27; };
    Bytes words;
    for (const uint32_t uiWord : {word(256, 0, 0, 16), word(0, 0, 256, 16), word(0, 256, 0, 16), word(20, 40, 402, 15),
                                  word(256, 256, 256, 16), word(0, 0, 0, 0), word(257, 257, 257, 15), word(510, 510, 510, 14)})
        for (uint32_t uiShift = 0; uiShift < 32; uiShift += 8)
            words.push_back(static_cast<uint8_t>(uiWord >> uiShift));
    const Row aRows[] = {
        {"uyvy", "0x0000000000000010", 0, {90, 82, 110, 41, 54, 145, 111, 48, 128, 235, 128, 16, 128, 126, 128, 125}},
        {"YUY2", "0x0000000000000011", 0, {82, 90, 41, 110, 145, 54, 48, 111, 235, 128, 16, 128, 126, 128, 125, 128}},
        {"1bpp", "0x0000000000000012", 0, {0x50}},
        {"shared-exponent-rgb999-e5", "0x0000000000000013", 12, words},
        {"2-planar-rgbg-8-8-8-8", "0x0000000000000014", 0, {255, 0, 0, 0, 0, 255, 0, 20, 255, 255, 255, 0, 128, 128, 128, 127}},
        {"2-Planar GRGB 8 8 8 8", "0x0000000000000015", 0, {0, 255, 0, 0, 255, 0, 20, 0, 255, 255, 0, 255, 128, 128, 127, 128}},
    };
    writeImage(path("colours.png"), k_eightColours, 8, 1);
    for (const Row& row : aRows)
    {
        SCOPED_TRACE(row.pcName);
        expectDone(convert("colours.png", "packed.mox", {"--format", row.pcName}));
        const QJsonObject info = infoOf(path("packed.mox"));
        EXPECT_EQ(row.pcWord, textOf(info, "formatWord"));
        EXPECT_EQ(row.iChannelType, numberOf(info, "channelType"));
        EXPECT_EQ(row.data.size(), static_cast<size_t>(numberOf(info, "dataSize")));
        EXPECT_EQ(row.data, lastBytes(path("packed.mox"), row.data.size()));
    }
}

TEST_F(PackedFormatsOfTheShell, OpenAsPictures)
{
    writeImage(path("colours.png"), k_eightColours, 8, 1);
    expectDone(convert("colours.png", "pairs.mox", {"--format", "2-planar-rgbg-8-8-8-8"}));
    expectDone(convert("pairs.mox", "pixels.mox", {"--format", "r8g8b8a8"}));
    // Red and blue of each left pixel, its own green in each.
    const Bytes expected = {255, 0,   0,   255, 255, 0, 0,   255, 0,   255, 0,   255, 0,   20,  0,   255,
                            255, 255, 255, 255, 255, 0, 255, 255, 128, 128, 128, 255, 128, 127, 128, 255};
    EXPECT_EQ(expected, lastBytes(path("pixels.mox"), 32));
    expectDone(cli({"extract", path("pairs.mox"), "-o", path("pixels.png")}));
    const QImage image = readImage(path("pixels.png"));
    ASSERT_EQ(QSize(8, 1), image.size());
    EXPECT_EQ(expected, Bytes(image.constScanLine(0), image.constScanLine(0) + 32));
}

TEST_F(PackedFormatsOfTheShell, TakeAWholeChain)
{
    writePicture(path("photo.png"), 16, 8);
    for (const char* pcName : {"uyvy", "yuy2", "1bpp", "shared-exponent-rgb999-e5", "2-planar-rgbg-8-8-8-8", "2-planar-grgb-8-8-8-8"})
    {
        SCOPED_TRACE(pcName);
        expectDone(convert("photo.png", "packed.mox", {"--mips", "all", "--format", pcName}));
        EXPECT_EQ(5, numberOf(infoOf(path("packed.mox")), "mipLevels"));
        expectDone(cli({"extract", path("packed.mox"), "-o", path("last.png"), "--level", "4"}));
        EXPECT_EQ(QSize(1, 1), readImage(path("last.png")).size());
    }
}

TEST_F(PackedFormatsOfTheShell, RefuseWidthsThatDoNotFitAndWriteNoFile)
{
    writePicture(path("odd.png"), 15, 4);
    writePicture(path("even.png"), 12, 12);
    expectFailed(convert("odd.png", "a.mox", {"--format", "uyvy"}), "Cannot encode this texture as UYVY");
    expectFailed(convert("odd.png", "a.mox", {"--format", "2-planar-grgb-8-8-8-8"}), "Cannot encode this texture as 2-Planar GRGB 8 8 8 8");
    expectFailed(convert("odd.png", "a.mox", {"--format", "1bpp"}), "Cannot encode this texture as 1bpp");
    // 12, 6, 3
    expectFailed(convert("even.png", "a.mox", {"--mips", "3", "--format", "yuy2"}), "Cannot encode this texture as YUY2");
    expectDone(convert("even.png", "b.mox", {"--mips", "2", "--format", "yuy2"}));
    EXPECT_EQ(3u, m_Folder.count());
}
