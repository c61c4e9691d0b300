#include "Common/Fnv1.h"

#include <gtest/gtest.h>

TEST(Fnv1, GivesThePublishedValues)
{
    EXPECT_EQ(0x050c5d7eu, fnv1("a"));
    EXPECT_EQ(0x050c5d7du, fnv1("b"));
    EXPECT_EQ(0x31f0b262u, fnv1("foobar"));
}

TEST(Fnv1, OfNothingIsNone)
{
    EXPECT_EQ(0u, fnv1(""));
}

TEST(Fnv1, TakesBytesWithoutASign)
{
    // 0x811c9dc5 * 0x01000193 = 0x050c5d1f in 32 bits, and 0x1f ^ 0xff = 0xe0
    EXPECT_EQ(0x050c5de0u, fnv1("\xff"));
}
