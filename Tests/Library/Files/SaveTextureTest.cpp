#include "Files/SaveTexture.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "Support/FileSizeLimit.h"
#include "Support/NativeLoading.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;
namespace fs = std::filesystem;

namespace
{

CMOXTexture onePixel()
{
    const uint8_t aui8Pixel[] = {1, 2, 3, 4};
    return CMOXTexture(CMOXTextureHeader(k_RGBA8, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false), aui8Pixel);
}

} // namespace

TEST(SaveTexture, AnExtensionWithoutAFormatGetsTheNativeOneBehindTheWholePath)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"tex.jpg", "a.png", "a", "a.astc", "a."})
    {
        EXPECT_TRUE(saveTexture(onePixel(), folder.path(strName))) << strName;
        EXPECT_FALSE(fs::exists(folder.path(strName))) << strName;
        const std::string strSaved = folder.path(strName) + ".mox";
        EXPECT_EQ(strSaved, getSavedPath(folder.path(strName)));
        EXPECT_EQ(CNativeFileBuilder().data({1, 2, 3, 4}).bytes(), readBytes(strSaved)) << strName;
    }
    EXPECT_EQ("tex.jpg.mox", getSavedPath("tex.jpg"));
    EXPECT_EQ("a.mox", getSavedPath("a"));
}

TEST(SaveTexture, TheNativeExtensionStaysAsItIsInAnyCase)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"a.mox", "b.MOX", "c.png.mox"})
    {
        EXPECT_EQ(folder.path(strName), getSavedPath(folder.path(strName)));
        EXPECT_TRUE(saveTexture(onePixel(), folder.path(strName)));
        EXPECT_TRUE(fs::exists(folder.path(strName))) << strName;
    }
    EXPECT_EQ(3u, folder.count());
}

TEST(SaveTexture, TheOtherContainersHaveTheirOwnWriters)
{
    struct Container
    {
        const char* strName;
        std::vector<uint8_t> start; ///< what such a file begins with
    };
    const Container aContainers[] = {
        {"a.ktx", {0xAB, 'K', 'T', 'X', ' ', '1', '1', 0xBB}}, {"b.DDS", {'D', 'D', 'S', ' ', 124, 0, 0, 0}}, {"c.h", {'/', '*'}}};
    const CTemporaryFolder folder;
    for (const Container& container : aContainers)
    {
        const std::string strPath = folder.path(container.strName);
        EXPECT_EQ(strPath, getSavedPath(strPath));
        ASSERT_TRUE(saveTexture(onePixel(), strPath)) << strPath;
        std::vector<uint8_t> bytes = readBytes(strPath);
        ASSERT_LT(container.start.size(), bytes.size());
        bytes.resize(container.start.size());
        EXPECT_EQ(container.start, bytes) << strPath;
    }
    EXPECT_EQ(3u, folder.count());
}

TEST(SaveTexture, TheArrayInACHeaderIsCalledAsTheFile)
{
    const CTemporaryFolder folder;
    ASSERT_TRUE(saveTexture(onePixel(), folder.path("a.h")));
    EXPECT_NE(std::string::npos, readText(folder.path("a.h")).find("A8BIT a[] = {\n"));
}

TEST(SaveTexture, KtxAndDdsAreLoadedAgain)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"a.ktx", "a.dds"})
    {
        ASSERT_TRUE(saveTexture(onePixel(), folder.path(strName))) << strName;
        const CMOXTexture texture(folder.path(strName));
        EXPECT_EQ(onePixel().getEncoding(), texture.getEncoding()) << strName;
        EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4}), dataOf(texture)) << strName;
    }
}

TEST(SaveTexture, AFailedSaveRemovesWhatItBegan)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(saveTexture(CMOXTexture(), folder.path("a.mox")));
    EXPECT_FALSE(saveTexture(CMOXTexture(), folder.path("a.dds")));
    for (const char* strName : {"missing/a.mox", "missing/a.ktx", "missing/a.dds", "missing/a.h"})
        EXPECT_FALSE(saveTexture(onePixel(), folder.path(strName))) << strName;
    EXPECT_EQ(0u, folder.count());
}

TEST(SaveTexture, AFullDiskLeavesNoFileOfAnyKind)
{
    const CTemporaryFolder folder;
    const CFileSizeLimit limit(40);
    for (const char* strName : {"a.mox", "a.ktx", "a.dds", "a.h", "a.png"})
        EXPECT_FALSE(saveTexture(onePixel(), folder.path(strName))) << strName;
    EXPECT_EQ(0u, folder.count());
}

TEST(SaveTexture, WhatWasSavedIsLoadedAgain)
{
    const CTemporaryFolder folder;
    ASSERT_TRUE(saveTexture(onePixel(), folder.path("T\xC3\xBCr.mox")));
    const CMOXTexture texture(folder.path("T\xC3\xBCr.mox"));
    EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4}), dataOf(texture));
}
