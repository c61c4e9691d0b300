#include "Images/SaveSurfaceAsImage.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include "Images/LoadTextureFile.h"
#include "Support/FileSizeLimit.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;
namespace fs = std::filesystem;

namespace
{

using Bytes = std::vector<uint8_t>;

/// Every byte of the block different from its neighbours.
CMOXTexture makeTexture(MOXPixelWord format, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiLevels, uint32_t uiMembers, uint32_t uiFaces)
{
    const CMOXTextureHeader header(format, uiHeight, uiWidth, 1, uiLevels, uiMembers, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte,
                                   false);
    return CMOXTexture(header, CSeededRandom(1).bytes(header.getDataSize()).data());
}

Bytes loadPixels(const std::string& strPath)
{
    LoadStatus status;
    CMOXTexture texture;
    loadTextureFile(status, texture, strPath);
    EXPECT_TRUE(status.bWasImage) << strPath;
    return dataOf(texture);
}

} // namespace

TEST(SaveSurfaceAsImage, APNGHoldsThePixelsOfEverySurface)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(k_RGBA8, 5, 3, 2, 2, 2);
    for (uint32_t uiLevel = 0; uiLevel < 2; ++uiLevel)
    {
        for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
        {
            for (uint32_t uiFace = 0; uiFace < 2; ++uiFace)
            {
                ASSERT_TRUE(saveSurfaceAsImage(texture, folder.path("a.png"), uiLevel, uiMember, uiFace));
                const uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
                EXPECT_EQ(Bytes(pSurface, pSurface + texture.getDataSize(uiLevel, false, false)), loadPixels(folder.path("a.png")));
            }
        }
    }
}

TEST(SaveSurfaceAsImage, ABMPHoldsBlueGreenRed)
{
    const uint8_t aui8Pixel[] = {10, 20, 30, 255};
    const CMOXTexture texture(CMOXTextureHeader(k_RGBA8, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false), aui8Pixel);
    const CTemporaryFolder folder;
    ASSERT_TRUE(saveSurfaceAsImage(texture, folder.path("a.bmp"), 0, 0, 0));
    const Bytes bytes = readBytes(folder.path("a.bmp"));
    ASSERT_GE(bytes.size(), 57u);
    const size_t uiPixels = loadLE<uint32_t>(&bytes[10]); // where the file itself says that they start
    ASSERT_LE(uiPixels + 3, bytes.size());
    EXPECT_EQ((Bytes{30, 20, 10}),
              Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(uiPixels), bytes.begin() + static_cast<std::ptrdiff_t>(uiPixels) + 3));
}

TEST(SaveSurfaceAsImage, AJPEGIsNearTheSurfaceInEitherSpellingAndCase)
{
    Bytes pixels;
    for (int i = 0; i < 16 * 16; ++i)
        pixels.insert(pixels.end(), {200, 100, 50, 255});
    const CMOXTexture texture(CMOXTextureHeader(k_RGBA8, 16, 16, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false), pixels.data());
    const CTemporaryFolder folder;
    for (const char* strName : {"a.jpg", "a.jpeg", "B.JPG"})
    {
        ASSERT_TRUE(saveSurfaceAsImage(texture, folder.path(strName), 0, 0, 0)) << strName;
        const Bytes loaded = loadPixels(folder.path(strName));
        ASSERT_EQ(pixels.size(), loaded.size());
        for (size_t i = 0; i < pixels.size(); ++i)
            ASSERT_LE(std::abs(loaded[i] - pixels[i]), 8) << strName; // the default quality of a flat colour
    }
}

TEST(SaveSurfaceAsImage, OtherLayoutsAndSurfacesThatAreNotThereFailAndTouchNoFile)
{
    const CTemporaryFolder folder;
    const std::string strPath = folder.write("a.png", "earlier");
    EXPECT_FALSE(saveSurfaceAsImage(CMOXTexture(), strPath, 0, 0, 0));
    for (const MOXPixelWord format : {layout("bgra", 8, 8, 8, 8), layout("rgb", 8, 8, 8), k_RGBA16, MOXPixelWord(ePF_BC1)})
        EXPECT_FALSE(saveSurfaceAsImage(makeTexture(format, 4, 4, 1, 1, 1), strPath, 0, 0, 0));
    const CMOXTexture texture = makeTexture(k_RGBA8, 4, 4, 2, 2, 2);
    EXPECT_FALSE(saveSurfaceAsImage(texture, strPath, 2, 0, 0));
    EXPECT_FALSE(saveSurfaceAsImage(texture, strPath, 0, 2, 0));
    EXPECT_FALSE(saveSurfaceAsImage(texture, strPath, 0, 0, 2));
    EXPECT_FALSE(saveSurfaceAsImage(texture, strPath, CMOXTextureHeader::k_uiAllLevels, 0, 0));
    EXPECT_EQ("earlier", readText(strPath));
}

TEST(SaveSurfaceAsImage, AHeaderThatMeasuresMoreThanTheBlockFails)
{
    CMOXTexture texture = makeTexture(k_RGBA8, 4, 4, 1, 1, 1);
    texture.setWidth(0xFFFFFFFF);
    const CTemporaryFolder folder;
    EXPECT_FALSE(saveSurfaceAsImage(texture, folder.path("a.png"), 0, 0, 0));
    EXPECT_EQ(0u, folder.count());
}

TEST(SaveSurfaceAsImage, AnExtensionThatCannotBeWrittenTouchesNoFile)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(k_RGBA8, 4, 4, 1, 1, 1);
    for (const char* strName : {"a.tga", "a.xyz", "a", "a.", "a.mox"})
    {
        const std::string strPath = folder.write(strName, "earlier");
        EXPECT_FALSE(saveSurfaceAsImage(texture, strPath, 0, 0, 0)) << strName;
        EXPECT_EQ("earlier", readText(strPath)) << strName;
    }
}

TEST(SaveSurfaceAsImage, APathThatCannotBeOpenedFails)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(k_RGBA8, 4, 4, 1, 1, 1);
    EXPECT_FALSE(saveSurfaceAsImage(texture, folder.path("missing/a.png"), 0, 0, 0));
    fs::create_directory(folder.path("folder.png"));
    EXPECT_FALSE(saveSurfaceAsImage(texture, folder.path("folder.png"), 0, 0, 0));
}

TEST(SaveSurfaceAsImage, AFullDiskRemovesTheFile)
{
    const CTemporaryFolder folder;
    const CFileSizeLimit limit(40);
    EXPECT_FALSE(saveSurfaceAsImage(makeTexture(k_RGBA8, 4, 4, 1, 1, 1), folder.path("a.png"), 0, 0, 0));
    EXPECT_EQ(0u, folder.count());
}

TEST(SaveSurfaceAsImage, NamesAreBytesWhateverTheLocale)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(k_RGBA8, 4, 4, 1, 1, 1);
    for (const char* strName : {"T\xC3\xBCr \xE6\x96\x87.png", "not UTF-8 \xFF.png"})
    {
        EXPECT_TRUE(saveSurfaceAsImage(texture, folder.path(strName), 0, 0, 0));
        EXPECT_TRUE(fs::exists(folder.path(strName)));
    }
}
