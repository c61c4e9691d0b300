#include "Files/SaveTexture.h"

#include <filesystem>

#include <gtest/gtest.h>

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

TEST(SaveTexture, AFormatWithoutAWriterIsACleanFailure)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"a.ktx", "a.dds", "a.h", "A.DDS"})
    {
        EXPECT_EQ(folder.path(strName), getSavedPath(folder.path(strName)));
        EXPECT_FALSE(saveTexture(onePixel(), folder.path(strName))) << strName;
    }
    EXPECT_EQ(0u, folder.count());
}

TEST(SaveTexture, AFailedSaveRemovesWhatItBegan)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(saveTexture(CMOXTexture(), folder.path("a.mox")));
    EXPECT_FALSE(saveTexture(onePixel(), folder.path("missing/a.mox")));
    EXPECT_EQ(0u, folder.count());
}

TEST(SaveTexture, WhatWasSavedIsLoadedAgain)
{
    const CTemporaryFolder folder;
    ASSERT_TRUE(saveTexture(onePixel(), folder.path("T\xC3\xBCr.mox")));
    const CMOXTexture texture(folder.path("T\xC3\xBCr.mox"));
    EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4}), dataOf(texture));
}
