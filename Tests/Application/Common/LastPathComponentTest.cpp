#include "Common/LastPathComponent.h"

#include <gtest/gtest.h>

TEST(LastPathComponent, IsCutAtTheLaterOfBothSeparators)
{
    EXPECT_EQ("c.mox", getLastPathComponent("/a/b/c.mox"));
    EXPECT_EQ("c.mox", getLastPathComponent("D:\\a/b\\c.mox"));
    EXPECT_EQ("d", getLastPathComponent("a\\c/d"));
}

TEST(LastPathComponent, IsAllOfANameWithoutASeparator)
{
    EXPECT_EQ("New Texture 1", getLastPathComponent("New Texture 1"));
    EXPECT_EQ("", getLastPathComponent(""));
}

TEST(LastPathComponent, IsEmptyBehindAFinalSeparator)
{
    EXPECT_EQ("", getLastPathComponent("/a/"));
    EXPECT_EQ("", getLastPathComponent("a\\"));
}
