#include "Images/LoadTextureFile.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "Support/ChannelBits.h"
#include "Support/DdsFileBuilder.h"
#include "Support/KtxFileBuilder.h"
#include "Support/NativeLoading.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;
namespace fs = std::filesystem;

namespace
{

using Bytes = std::vector<uint8_t>;

const std::string k_strImages = std::string(HALVANE_SOURCE_DIR) + "/Tests/Data/Images/";
const std::string k_strCannotOpen = "Cannot open file, as it does not exist at specified location.\nHas it been renamed, moved or deleted?";
const std::string k_strNoImage = "Either file is not a valid image or texture file, or is an unsupported format. If the file is a simple "
                                 "bitmap or texture file, you could try wrapping it as raw data.";

const Bytes k_RGBA = {1, 2, 3, 4, 250, 100, 50, 255, 0, 255, 0, 0, 255, 254, 253, 128};
const Bytes k_RGB = {1, 2, 3, 255, 250, 100, 50, 255, 0, 255, 0, 255, 255, 254, 253, 255};

struct Load
{
    explicit Load(const std::string& strPath, bool bAsStored = false)
    {
        status.bFailed = true; // both must be set anew
        status.strError = "left over";
        status.bWasImage = true;
        texture = CMOXTexture(CMOXTextureHeader(k_RGBA8, 9, 9, 1, 1, 1, 1, eCS_sRGB, eCT_SignedByte, true));
        loadTextureFile(status, texture, strPath, bAsStored);
    }

    LoadStatus status;
    CMOXTexture texture;
};

void expectFailure(const std::string& strPath, const std::string& strText)
{
    SCOPED_TRACE(strPath);
    const Load load(strPath);
    EXPECT_TRUE(load.status.bFailed);
    EXPECT_FALSE(load.status.bWasImage);
    EXPECT_EQ(strText, load.status.strError);
    EXPECT_EQ(0u, load.texture.getDataSize());
    EXPECT_EQ(nullptr, load.texture.getDataPtr());
}

void expectImage(const std::string& strPath, const Bytes& expected)
{
    SCOPED_TRACE(strPath);
    const Load load(strPath);
    ASSERT_FALSE(load.status.bFailed) << load.status.strError;
    EXPECT_TRUE(load.status.bWasImage);
    EXPECT_EQ("", load.status.strError);
    EXPECT_EQ(expected, dataOf(load.texture));
}

} // namespace

TEST(LoadTextureFile, ATextureFileIsNoImage)
{
    const CTemporaryFolder folder;
    const Load load(folder.write("a.png", CNativeFileBuilder().data({1, 2, 3, 4}).bytes()));
    EXPECT_FALSE(load.status.bFailed);
    EXPECT_FALSE(load.status.bWasImage);
    EXPECT_EQ("", load.status.strError);
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
}

TEST(LoadTextureFile, AnEmptyPathOrAMissingFileCannotBeOpened)
{
    const CTemporaryFolder folder;
    expectFailure("", k_strCannotOpen);
    expectFailure(folder.path("missing.png"), k_strCannotOpen);
    EXPECT_EQ(1u, Load("").texture.getWidth()) << "a default texture";
}

TEST(LoadTextureFile, WhatIsNeitherTextureNorImageHasTheOtherText)
{
    const CTemporaryFolder folder;
    expectFailure(folder.write("a.txt", "just text"), k_strNoImage);
    expectFailure(folder.write("empty.png", ""), k_strNoImage);
    expectFailure(folder.write("a.mox", CNativeFileBuilder().levels(33).data({1}).bytes()), k_strNoImage);
    expectFailure(folder.path(), k_strNoImage);
}

TEST(LoadTextureFile, APipeIsRefusedAndNotWaitedFor)
{
    const CTemporaryFolder folder;
    ASSERT_EQ(0, ::mkfifo(folder.path("pipe.png").c_str(), 0600));
    expectFailure(folder.path("pipe.png"), k_strNoImage);
}

TEST(LoadTextureFile, AnImageBecomesALinearTextureOfOneSurface)
{
    const CMOXTexture texture = Load(k_strImages + "rgba.png").texture;
    EXPECT_EQ(k_RGBA8, texture.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, texture.getChannelType());
    EXPECT_EQ(eCS_Linear, texture.getColourSpace());
    EXPECT_FALSE(texture.isPreMultiplied());
    EXPECT_EQ(2u, texture.getWidth());
    EXPECT_EQ(2u, texture.getHeight());
    EXPECT_EQ(1u, texture.getDepth());
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ(1u, texture.getNumArrayMembers());
    EXPECT_EQ(1u, texture.getNumFaces());
    EXPECT_EQ(0u, texture.getMetaDataSize());
}

TEST(LoadTextureFile, PNGBMPAndTGAGiveTheirPixelsRedFirst)
{
    expectImage(k_strImages + "rgba.png", k_RGBA);
    expectImage(k_strImages + "rgb.png", k_RGB);
    expectImage(k_strImages + "rgb.bmp", k_RGB);
    expectImage(k_strImages + "rgb.tga", k_RGB);
    expectImage(k_strImages + "rgba.tga", k_RGBA);
}

TEST(LoadTextureFile, GreyAndPalettesBecomeFourChannels)
{
    expectImage(k_strImages + "grey.png", {0, 0, 0, 255, 1, 1, 1, 255, 128, 128, 128, 255, 255, 255, 255, 255});
    expectImage(k_strImages + "palette.png", {10, 20, 30, 255, 40, 50, 60, 0, 70, 80, 90, 255, 40, 50, 60, 0});
}

TEST(LoadTextureFile, AJPEGGetsAlpha255AndRedFirst)
{
    const Load load(k_strImages + "flat.jpg");
    ASSERT_TRUE(load.status.bWasImage);
    const Bytes pixels = dataOf(load.texture);
    ASSERT_EQ(16u * 16u * 4u, pixels.size());
    for (size_t i = 0; i < pixels.size(); i += 4)
    {
        // 200, 100, 50 went through other colours: two levels off at the most
        EXPECT_LE(std::abs(pixels[i] - 200), 2);
        EXPECT_LE(std::abs(pixels[i + 1] - 100), 2);
        EXPECT_LE(std::abs(pixels[i + 2] - 50), 2);
        EXPECT_EQ(255, pixels[i + 3]);
    }
}

TEST(LoadTextureFile, ContentCountsWhereTheNameDoesNotFit)
{
    const CTemporaryFolder folder;
    expectImage(folder.write("image.xyz", readBytes(k_strImages + "rgba.png")), k_RGBA);
    expectImage(folder.write("image.mox", readBytes(k_strImages + "rgba.png")), k_RGBA);
    expectImage(folder.write("image.tga", readBytes(k_strImages + "rgba.png")), k_RGBA);
    expectImage(folder.write("image", std::string("P3 2 1 255  1 2 3  250 251 252\n")), {1, 2, 3, 255, 250, 251, 252, 255});
}

TEST(LoadTextureFile, RowsOfAnyWidthStandWithoutGaps)
{
    const CTemporaryFolder folder;
    expectImage(folder.write("a.ppm", std::string("P2 3 2 255  1 2 3  4 5 6\n")),
                {1, 1, 1, 255, 2, 2, 2, 255, 3, 3, 3, 255, 4, 4, 4, 255, 5, 5, 5, 255, 6, 6, 6, 255});
}

TEST(LoadTextureFile, NamesAreBytesWhateverTheLocale)
{
    const CTemporaryFolder folder;
    const Bytes png = readBytes(k_strImages + "rgba.png");
    expectImage(folder.write("T\xC3\xBCr \xE6\x96\x87.png", png), k_RGBA);
    expectImage(folder.write("not UTF-8 \xFF.png", png), k_RGBA);
    const fs::path earlier = fs::current_path();
    fs::current_path(folder.path());
    folder.write(":a.png", png); // Qt takes such a name for a resource of the program
    expectImage(":a.png", k_RGBA);
    fs::current_path(earlier);
}

TEST(LoadTextureFile, AnImageThatDoesNotFit32BitsIsRefused)
{
    expectFailure(k_strImages + "claims-4-gib.png", k_strNoImage); // 2^15 * 2^15 * 4 bytes = 2^32
}

TEST(LoadTextureFile, AFewBytesThatClaimGigabytesAreRefused)
{
    expectFailure(k_strImages + "claims-3.6-gb.png", k_strNoImage);
    const CTemporaryFolder folder;
    expectFailure(folder.write("a.ppm", std::string("P6 65536 16384 255\n123")), k_strNoImage);
    expectFailure(folder.write("a.ppm", std::string("P6 2147483647 2147483647 255\n123")), k_strNoImage);
}

TEST(LoadTextureFile, AnImageCutAtAnyLengthIsAnImageOrAFailure)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"rgba.png", "rgb.bmp", "rgba.tga", "flat.jpg", "palette.png"})
    {
        const Bytes whole = readBytes(k_strImages + strName);
        ASSERT_FALSE(whole.empty());
        for (size_t uiLength = 0; uiLength < whole.size(); ++uiLength)
        {
            SCOPED_TRACE(strName + std::string(" cut to ") + std::to_string(uiLength));
            const Load load(folder.write(strName, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(uiLength))));
            EXPECT_NE(load.status.bFailed, load.status.bWasImage);
            EXPECT_EQ(load.status.bFailed, load.texture.getDataSize() == 0);
        }
    }
}

TEST(LoadTextureFile, LayoutsOfADDSFileArePutRightUnlessTheyAreWantedAsStored)
{
    const CTemporaryFolder folder;
    const Bytes spare = CDdsFileBuilder().masks(64, 32, 0xFF0000, 0xFF00, 0xFF).data({3, 2, 1, 0}).bytes();
    const Bytes tens = CDdsFileBuilder().extended(24).data({0xFF, 0x03, 0x00, 0x00}).bytes();
    const Bytes halves = CDdsFileBuilder().fourCC(112).data({1, 2, 3, 4}).bytes();
    for (const char* strName : {"a.dds", "A.DDS", "a.b.Dds"})
    {
        EXPECT_EQ((Bytes{3, 2, 1, 255}), blockOf(Load(folder.write(strName, spare)).texture));
        EXPECT_EQ((Bytes{3, 2, 1, 0}), blockOf(Load(folder.path(strName), true).texture));
        EXPECT_EQ(layout("abgr", 2, 10, 10, 10), Load(folder.write(strName, tens)).texture.getPixelFormat());
        EXPECT_EQ(layout("rgba", 10, 10, 10, 2), Load(folder.path(strName), true).texture.getPixelFormat());
        EXPECT_EQ(layout("rg", 16, 16), Load(folder.write(strName, halves)).texture.getPixelFormat());
        EXPECT_EQ(layout("gr", 16, 16), Load(folder.path(strName), true).texture.getPixelFormat());
    }
    const Load load(folder.path("a.dds"));
    EXPECT_FALSE(load.status.bFailed);
    EXPECT_FALSE(load.status.bWasImage);
    EXPECT_EQ((Bytes{1, 2, 3, 4}), blockOf(load.texture));
}

TEST(LoadTextureFile, LayoutsOfOtherFilesAreWhatTheyAre)
{
    const CTemporaryFolder folder;
    // xrgb and gr of floats in a native file, rgbx with 10 bits in a KTX file.
    const std::string strNative = folder.write("a.mox", CNativeFileBuilder().format(0x0808080862677278).data({1, 2, 3, 4}).bytes());
    EXPECT_EQ((Bytes{1, 2, 3, 4}), blockOf(Load(strNative).texture));
    const std::string strFloats =
        folder.write("b.mox", CNativeFileBuilder().format(0x0000101000007267).channelType(12).data({1, 2, 3, 4}).bytes());
    EXPECT_EQ(layout("gr", 16, 16), Load(strFloats).texture.getPixelFormat());
    const std::string strKtx = folder.write("a.ktx", CKtxFileBuilder().format(32850).level(4, {0, 0, 0, 0}).bytes());
    EXPECT_EQ(layout("rgbx", 10, 10, 10, 2), Load(strKtx).texture.getPixelFormat());
    EXPECT_EQ((Bytes{0, 0, 0, 0}), blockOf(Load(strKtx).texture));
}

TEST(LoadTextureFile, AnImageThatIsCalledDDSIsAnImage)
{
    const CTemporaryFolder folder;
    expectImage(folder.write("image.dds", readBytes(k_strImages + "rgba.png")), k_RGBA);
    expectFailure(folder.write("cut.dds", Bytes(127, 'D')), k_strNoImage);
    expectFailure(folder.write("cut.ktx", CKtxFileBuilder().keyValueSize(0xFFFFFFF0).size(9999, 9999).bytes()), k_strNoImage);
}
