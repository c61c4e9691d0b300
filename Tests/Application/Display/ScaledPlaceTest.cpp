#include "Display/ScaledPlace.h"

#include <gtest/gtest.h>

TEST(ScaledPlace, SizesAreTruncatedAndNeverWrap)
{
    EXPECT_EQ(2, scaleSize(5, 0.5f));   // 2.5
    EXPECT_EQ(0, scaleSize(7, 0.125f)); // 0.875
    EXPECT_EQ(128, scaleSize(1, 128.0f));
    EXPECT_EQ(8388608, scaleSize(65536, 128.0f));
    EXPECT_EQ(549755813760, scaleSize(0xFFFFFFFF, 128.0f)); // (2^32 - 1) * 2^7
}

TEST(ScaledPlace, TexelsAreTruncated)
{
    EXPECT_EQ(1u, getTexelWithin(3, 0.5f, 4));
    EXPECT_EQ(2u, getTexelWithin(4, 0.5f, 4));
    EXPECT_EQ(24u, getTexelWithin(3, 8.0f, 100));
}

TEST(ScaledPlace, APlaceThatTheFloatRoundsPastTheEndCountsAsTheEnd)
{
    // 16777219 lies between the floats 16777218 and 16777220 and goes to the even mantissa: one past a surface of 16777220 texels.
    EXPECT_EQ(16777220, getTexel(16777219, 1.0f));
    EXPECT_EQ(16777219u, getTexelWithin(16777219, 1.0f, 16777220));
    EXPECT_EQ(16777216u, getTexelWithin(16777217, 1.0f, 16777220));
}

TEST(ScaledPlace, TiledTexelsWrapOnBothSidesAfterTruncationTowardsZero)
{
    EXPECT_EQ(2u, getTexelTiled(-1, 1.0f, 3));
    EXPECT_EQ(0u, getTexelTiled(-3, 1.0f, 3));
    EXPECT_EQ(1u, getTexelTiled(4, 1.0f, 3));
    EXPECT_EQ(0u, getTexelTiled(-1, 0.5f, 3)); // -0.5 is 0
    EXPECT_EQ(2u, getTexelTiled(-2, 0.5f, 3)); // -1
    EXPECT_EQ(1u, getTexelTiled(-1, 8.0f, 3)); // -8 = -3 * 3 + 1
    // -2^31 / 0.125 = -2^34 = -(5726623061 * 3 + 1)
    EXPECT_EQ(2u, getTexelTiled(-2147483648, 8.0f, 3));
}

TEST(ScaledPlace, GridLinesStartAtAStepOfTwo)
{
    EXPECT_FALSE(isOnGridLine(0, 0));
    EXPECT_FALSE(isOnGridLine(0, 1));
    EXPECT_TRUE(isOnGridLine(0, 2));
    EXPECT_FALSE(isOnGridLine(1, 2));
    EXPECT_TRUE(isOnGridLine(-6, 3));
    EXPECT_FALSE(isOnGridLine(-5, 3));
}
