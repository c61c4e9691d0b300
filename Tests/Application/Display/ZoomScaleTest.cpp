#include "Display/ZoomScale.h"

#include <gtest/gtest.h>

TEST(ZoomScale, EachPositionDoublesTheFactor)
{
    const float afFactors[k_i32ZoomPositionCount] = {0.125f, 0.25f, 0.5f, 1.0f, 2.0f, 4.0f, 8.0f, 16.0f, 32.0f, 64.0f, 128.0f};
    for (int32_t i = 0; i < k_i32ZoomPositionCount; ++i)
        EXPECT_EQ(afFactors[i], getZoomFactor(i));
    EXPECT_EQ(1.0f, getZoomFactor(k_i32DefaultZoomPosition));
}

TEST(ZoomScale, PositionsOutsideTheScaleClamp)
{
    for (const ETextureViewModes eMode : {eViewSingle, eViewTiled})
    {
        EXPECT_EQ(0, clampZoomPosition(-1, eMode));
        EXPECT_EQ(0, clampZoomPosition(0, eMode));
        EXPECT_EQ(10, clampZoomPosition(10, eMode));
        EXPECT_EQ(10, clampZoomPosition(11, eMode));
    }
    EXPECT_EQ(0.125f, getZoomFactor(-1));
    EXPECT_EQ(128.0f, getZoomFactor(11));
}

TEST(ZoomScale, ACubeSnapsToOneToOneBelowIt)
{
    EXPECT_EQ(3, clampZoomPosition(-1, eViewCube));
    EXPECT_EQ(3, clampZoomPosition(2, eViewCube)); // 0.5
    EXPECT_EQ(3, clampZoomPosition(3, eViewCube));
    EXPECT_EQ(4, clampZoomPosition(4, eViewCube));
    EXPECT_EQ(10, clampZoomPosition(11, eViewCube));
}

TEST(ZoomScale, TextsHaveAsManyDecimalsAsTheFactorNeeds)
{
    EXPECT_EQ("0.125 : 1", getZoomText(0.125f));
    EXPECT_EQ("0.25 : 1", getZoomText(0.25f));
    EXPECT_EQ("0.5 : 1", getZoomText(0.5f));
    EXPECT_EQ("1 : 1", getZoomText(1.0f));
    EXPECT_EQ("128 : 1", getZoomText(128.0f));
    EXPECT_EQ("  :  ", getNoZoomText());
}
