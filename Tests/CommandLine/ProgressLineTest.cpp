#include "CommandLine/ProgressLine.h"

#include <gtest/gtest.h>

using namespace moxtexture;

TEST(ProgressText, TellsFilesDoneOfHowManyAndTheOneAtHand)
{
    EXPECT_EQ("12 of 340: textures/wall.png", getProgressText(12, 340, "textures/wall.png", 79));
}

TEST(ProgressText, KeepsTheEndOfALongName)
{
    EXPECT_EQ("0 of 1: ...all.png", getProgressText(0, 1, "textures/wall.png", 18));
    EXPECT_EQ("0 of 1: textures/wall.png", getProgressText(0, 1, "textures/wall.png", 25));
    EXPECT_EQ("0 of 1: ", getProgressText(0, 1, "textures/wall.png", 8));
    EXPECT_EQ("0 of 1: ", getProgressText(0, 1, "textures/wall.png", 2));
}

TEST(ProgressText, CutsBetweenCharactersNotBytes)
{
    // Each of the five is two bytes; seven columns are left for eight characters with the ending: dots and the last four.
    EXPECT_EQ("0 of 1: ...\xC3\xB6.pn", getProgressText(0, 1, "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xB6.pn", 15));
}

TEST(ProgressText, HasNoControlCharacters)
{
    EXPECT_EQ("0 of 1: a b?c", getProgressText(0, 1, "a\nb\033c", 79));
}

TEST(ProgressLine, WritesNothingOfItsOwnWhereItIsNotShown)
{
    testing::internal::CaptureStderr();
    {
        CProgressLine line(2, false);
        line.begin("a");
        line.finishOne();
        line.printAbove("an error");
    }
    EXPECT_EQ("an error\n", testing::internal::GetCapturedStderr());
}

TEST(ProgressLine, IsGoneAtTheEnd)
{
    testing::internal::CaptureStderr();
    {
        CProgressLine line(2, true);
        line.begin("a");
        line.finishOne();
    }
    EXPECT_EQ("\r\033[K0 of 2: a\r\033[K1 of 2: a\r\033[K", testing::internal::GetCapturedStderr());
}
