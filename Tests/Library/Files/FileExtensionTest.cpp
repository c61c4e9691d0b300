#include "Files/FileExtension.h"

#include <gtest/gtest.h>

using moxtexture::getFileExtension;

TEST(FileExtension, IsWhatStandsBehindTheLastDotInLowerCase)
{
    EXPECT_EQ("dds", getFileExtension("IMAGE.DDS"));
    EXPECT_EQ("mox", getFileExtension("/a/b.c/picture.png.mOx"));
    EXPECT_EQ("h", getFileExtension(".h"));
}

TEST(FileExtension, IsEmptyWithoutADotOrWithAFinalOne)
{
    EXPECT_EQ("", getFileExtension(""));
    EXPECT_EQ("", getFileExtension("picture"));
    EXPECT_EQ("", getFileExtension("picture."));
    EXPECT_EQ("", getFileExtension("picture.mox."));
}

TEST(FileExtension, OnlyLettersOfTheAlphabetHaveALowerCase)
{
    EXPECT_EQ("\xC3\x84z[", getFileExtension("a.\xC3\x84Z["));
}

TEST(FileExtension, ADotInAFoldersNameCountsToo)
{
    EXPECT_EQ("2/picture", getFileExtension("v1.2/picture"));
}
