#include <algorithm>
#include <cmath>

#include "CommandLine/HalvaneCli.h"
#include "Support/NativeFileBuilder.h"

using namespace testsupport;

namespace
{

std::vector<uint8_t> bytesOf(const QImage& image)
{
    std::vector<uint8_t> bytes;
    for (int y = 0; y < image.height(); ++y)
        bytes.insert(bytes.end(), image.constScanLine(y), image.constScanLine(y) + 4 * image.width());
    return bytes;
}

/// Peak signal to noise ratio of the colours, in decibels.
double measurePSNR(const std::vector<uint8_t>& a, const std::vector<uint8_t>& b)
{
    EXPECT_EQ(a.size(), b.size());
    double fSum = 0;
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        if (i % 4 != 3)
            fSum += (a[i] - b[i]) * (a[i] - b[i]);
    return 10 * std::log10(255.0 * 255.0 / (fSum / (static_cast<double>(a.size()) * 0.75)));
}

class ExtractTest : public testing::Test
{
protected:
    std::string path(const std::string& strName) const { return m_Folder.path(strName); }

    ProgramRun extract(const std::string& strInput, const std::string& strImage, std::vector<std::string> words = {}) const
    {
        words.insert(words.begin(), {"extract", path(strInput), "-o", path(strImage)});
        return cli(words);
    }

    /// The one pixel of a texture as extracted.
    std::vector<uint8_t> pixelOf(const CNativeFileBuilder& builder, const std::vector<std::string>& words = {}) const
    {
        m_Folder.write("pixel.mox", builder.bytes());
        expectDone(extract("pixel.mox", "pixel.png", words));
        return bytesOf(readImage(path("pixel.png")));
    }

    CTemporaryFolder m_Folder;
};

using Extract = ExtractTest;
using ExtractWords = ExtractTest;

} // namespace

TEST_F(Extract, GivesBackThePhotoThatWasEncodedAtEveryLevel)
{
    std::vector<uint8_t> photo = makePicture(256, 192);
    for (size_t i = 3; i < photo.size(); i += 4)
        photo[i] = 255;
    writeImage(path("photo.png"), photo, 256, 192);
    expectDone(cli({"convert", path("photo.png"), "-o", path("plain.mox"), "--mips", "all"}));
    expectDone(cli({"convert", path("photo.png"), "-o", path("bc1.mox"), "--mips", "all", "--format", "bc1"}));
    ASSERT_EQ(9, numberOf(infoOf(path("bc1.mox")), "mipLevels"));
    for (int iLevel = 0; iLevel < 9; ++iLevel)
    {
        expectDone(extract("plain.mox", "plain.png", {"--level", std::to_string(iLevel)}));
        expectDone(extract("bc1.mox", "bc1.png", {"--level", std::to_string(iLevel)}));
        const QImage plain = readImage(path("plain.png"));
        const QImage decoded = readImage(path("bc1.png"));
        ASSERT_EQ(std::max(256 >> iLevel, 1), decoded.width());
        ASSERT_EQ(std::max(192 >> iLevel, 1), decoded.height());
        ASSERT_EQ(plain.size(), decoded.size());
        if (iLevel == 0)
        {
            EXPECT_EQ(photo, bytesOf(plain));
        }
        // Blocks of the small levels hold more detail than two colours and their mixtures can tell.
        EXPECT_LT(iLevel < 4 ? 25.0 : 15.0, measurePSNR(bytesOf(plain), bytesOf(decoded))) << iLevel;
    }
}

TEST_F(Extract, WritesEachKindOfImage)
{
    const std::vector<uint8_t> pixels = {10, 20, 30, 255, 40, 50, 60, 255};
    writeImage(path("a.png"), pixels, 2, 1);
    for (const char* strName : {"b.png", "b.bmp", "b.jpg", "b.PNG"})
    {
        expectDone(extract("a.png", strName));
        const QImage image = readImage(path(strName));
        EXPECT_EQ(2, image.width()) << strName;
        EXPECT_EQ(1, image.height()) << strName;
    }
    EXPECT_EQ(pixels, bytesOf(readImage(path("b.png"))));
    EXPECT_EQ(pixels, bytesOf(readImage(path("b.bmp"))));
}

TEST_F(Extract, TakesTheSurfaceAskedFor)
{
    // Two members of six faces of one pixel: red counts the surfaces, member outermost.
    std::vector<uint8_t> data;
    for (uint8_t i = 0; i < 12; ++i)
        data.insert(data.end(), {i, 0, 0, 255});
    const CNativeFileBuilder builder = CNativeFileBuilder().members(2).faces(6).data(data);
    EXPECT_EQ(0, pixelOf(builder)[0]);
    EXPECT_EQ(5, pixelOf(builder, {"--face", "5"})[0]);
    EXPECT_EQ(6, pixelOf(builder, {"--member", "1"})[0]);
    EXPECT_EQ(9, pixelOf(builder, {"--face", "3", "--member", "1", "--level", "0"})[0]);
}

TEST_F(Extract, GivesLinearValues)
{
    // Black and white are what they are in both spaces; 128 of sRGB is ((128/255 + 0.0556) / 1.0556)^2.4 = 0.2158, so 55.
    const std::vector<uint8_t> pixel = pixelOf(CNativeFileBuilder().colourSpace(1).data({0, 128, 255, 128}));
    EXPECT_EQ((std::vector<uint8_t>{0, 55, 255, 128}), pixel);
}

TEST_F(Extract, BringsFloatsToBytes)
{
    // The halves 0.5, 1.0, 2.0 and 1.0; 0.5 times 255 rounds to 128.
    const CNativeFileBuilder builder =
        CNativeFileBuilder().format(0x1010101061626772).channelType(12).data({0x00, 0x38, 0x00, 0x3C, 0x00, 0x40, 0x00, 0x3C});
    EXPECT_EQ((std::vector<uint8_t>{128, 255, 255, 255}), pixelOf(builder));
}

TEST_F(Extract, UndoesTheOrientation)
{
    m_Folder.write(
        "a.mox",
        CNativeFileBuilder().size(1, 2).block(CNativeFileBuilder::k_ui32Native, 3, {0, 2, 0}).data({1, 2, 3, 255, 5, 6, 7, 255}).bytes());
    expectDone(extract("a.mox", "a.png"));
    EXPECT_EQ((std::vector<uint8_t>{5, 6, 7, 255, 1, 2, 3, 255}), bytesOf(readImage(path("a.png"))));
}

TEST_F(Extract, SaysWhichSurfaceIsNotThere)
{
    m_Folder.write("a.mox", CNativeFileBuilder().size(4, 4).levels(3).faces(6).data(std::vector<uint8_t>(6 * 4 * 21)).bytes());
    expectFailed(extract("a.mox", "a.png", {"--level", "3"}), "There is no MIP level 3: the texture has 3, counted from 0");
    expectFailed(extract("a.mox", "a.png", {"--member", "1"}), "There is no array member 1: the texture has 1, counted from 0");
    expectFailed(extract("a.mox", "a.png", {"--face", "4294967295"}), "There is no face 4294967295: the texture has 6, counted from 0");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(Extract, SaysWhyItFails)
{
    expectFailed(extract("missing.mox", "a.png"),
                 "Cannot open file, as it does not exist at specified location. Has it been renamed, moved or deleted?");
    writePicture(path("a.png"), 4, 4);
    EXPECT_EQ(1, extract("a.png", "missing/b.png").iStatus);
    std::filesystem::create_directory(path("b.png"));
    expectFailed(extract("a.png", "b.png"), "\"" + path("b.png") + "\" is a folder");
    EXPECT_EQ(2u, m_Folder.count());
}

TEST_F(Extract, LeavesTheEarlierFileWhereItFails)
{
    m_Folder.write("back.png", "precious");
    m_Folder.write("a.mox", CNativeFileBuilder().data({1, 2, 3, 4}).bytes());
    EXPECT_EQ(1, extract("a.mox", "back.png", {"--level", "1"}).iStatus);
    EXPECT_EQ("precious", readText(path("back.png")));
    expectDone(extract("a.mox", "back.png"));
    EXPECT_EQ(1, readImage(path("back.png")).width());
}

TEST_F(ExtractWords, NameNoOutputThatIsNoImage)
{
    for (const char* strName : {"a.mox", "a.tga", "a.jpeg", "a", "png", "a.png."})
        expectWrongWords(extract("missing.mox", strName), "must end in .png, .bmp or .jpg", "extract");
}

TEST_F(ExtractWords, AreNumbersAndOneFileEach)
{
    for (const char* strOption : {"--level", "--member", "--face"})
        for (const char* strValue : {"-1", "x", "1.0", "", "4294967296"})
            expectWrongWords(extract("a.mox", "a.png", {strOption, strValue}), strOption, "extract");
    expectWrongWords(cli({"extract", "a.mox"}), "--output is required", "extract");
    expectWrongWords(cli({"extract", "-o", "a.png"}), "INPUT is required", "extract");
    expectWrongWords(cli({"extract", "a.mox", "b.mox", "-o", "a.png"}), "b.mox", "extract");
    expectWrongWords(cli({"extract", "a.mox", "-o", "a.png", "--format", "bc1"}), "--format", "extract");
}
