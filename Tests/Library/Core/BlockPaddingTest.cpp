#include "Core/BlockPadding.h"

#include <gtest/gtest.h>

using namespace moxtexture;

TEST(BlockPadding, PlacesWithinTheSideAreTheirOwnSource)
{
    for (uint64_t i = 0; i < 5; ++i)
        EXPECT_EQ(i, getPaddingSource(i, 5, 8));
}

TEST(BlockPadding, PlacesBeyondTheSideRepeatThoseThatEndAtItsEnd)
{
    EXPECT_EQ(2u, getPaddingSource(5, 5, 8));
    EXPECT_EQ(3u, getPaddingSource(6, 5, 8));
    EXPECT_EQ(4u, getPaddingSource(7, 5, 8));
    EXPECT_EQ(4u, getPaddingSource(6, 6, 8));
    EXPECT_EQ(6u, getPaddingSource(7, 7, 8));
    EXPECT_EQ(0xFFFFFFFCu, getPaddingSource(0xFFFFFFFF, 0xFFFFFFFD, 0x100000000));
}

TEST(BlockPadding, ASideOfOnePixelRepeatsIt)
{
    for (uint64_t i = 0; i < 4; ++i)
        EXPECT_EQ(0u, getPaddingSource(i, 1, 4));
}
