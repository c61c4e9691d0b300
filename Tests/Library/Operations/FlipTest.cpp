#include "Operations/Flip.h"

#include <gtest/gtest.h>

#include "Library/Operations/NumberedTexture.h"

using namespace moxtexture;
using namespace testsupport;

template <typename T>
class FlipOfEveryKind : public ::testing::Test
{
};
TYPED_TEST_SUITE(FlipOfEveryKind, ChannelKinds);

TYPED_TEST(FlipOfEveryKind, OnXTurnsEachRowAround)
{
    CMOXTexture texture = numberedTexture<TypeParam>({3, 2});
    ASSERT_TRUE(Flip(texture, eAxisX));
    EXPECT_EQ((std::vector<int>{3, 2, 1, 6, 5, 4}), numbersOf<TypeParam>(texture));
}

TYPED_TEST(FlipOfEveryKind, OnYTurnsTheOrderOfRowsInEachSlice)
{
    CMOXTexture texture = numberedTexture<TypeParam>({2, 3, 2});
    ASSERT_TRUE(Flip(texture, eAxisY));
    EXPECT_EQ((std::vector<int>{5, 6, 3, 4, 1, 2, 11, 12, 9, 10, 7, 8}), numbersOf<TypeParam>(texture));
}

TYPED_TEST(FlipOfEveryKind, OnZTurnsTheOrderOfSlices)
{
    CMOXTexture texture = numberedTexture<TypeParam>({1, 2, 3});
    ASSERT_TRUE(Flip(texture, eAxisZ));
    EXPECT_EQ((std::vector<int>{5, 6, 3, 4, 1, 2}), numbersOf<TypeParam>(texture));
}

TYPED_TEST(FlipOfEveryKind, TwiceOnOneAxisIsTheTextureItself)
{
    for (uint32_t uiAxis = 0; uiAxis < 3; ++uiAxis)
    {
        const CMOXTexture original = numberedTexture<TypeParam>({7, 4, 3});
        CMOXTexture texture = original;
        ASSERT_TRUE(Flip(texture, uiAxis));
        EXPECT_NE(numbersOf<TypeParam>(original), numbersOf<TypeParam>(texture));
        ASSERT_TRUE(Flip(texture, uiAxis));
        EXPECT_EQ(numbersOf<TypeParam>(original), numbersOf<TypeParam>(texture));
    }
}

TEST(Flip, OfASinglePixelOnItsAxisChangesNothing)
{
    CMOXTexture texture = numberedTexture<uint8_t>({1, 4});
    EXPECT_TRUE(Flip(texture, eAxisX));
    EXPECT_TRUE(Flip(texture, eAxisZ)); // one slice
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), numbersOf<uint8_t>(texture));
    texture = numberedTexture<uint8_t>({4, 1});
    EXPECT_TRUE(Flip(texture, eAxisY));
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), numbersOf<uint8_t>(texture));
}

TEST(Flip, TakesEachLevelWithItsOwnSize)
{
    CMOXTexture texture = numberedTexture<uint8_t>({4, 2, 1, 3}); // 8 pixels, 2 pixels, 1 pixel
    ASSERT_TRUE(Flip(texture, eAxisX));
    EXPECT_EQ((std::vector<int>{4, 3, 2, 1, 8, 7, 6, 5}), numbersOf<uint8_t>(texture, 0));
    EXPECT_EQ((std::vector<int>{10, 9}), numbersOf<uint8_t>(texture, 1));
    EXPECT_EQ((std::vector<int>{11}), numbersOf<uint8_t>(texture, 2));
}

TEST(Flip, TakesEveryMemberAndFace)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 1, 1, 1, 2, 6});
    ASSERT_TRUE(Flip(texture, eAxisX));
    int iFirst = 1;
    for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
        for (uint32_t uiFace = 0; uiFace < 6; ++uiFace, iFirst += 2)
            EXPECT_EQ((std::vector<int>{iFirst + 1, iFirst}), numbersOf<uint8_t>(texture, 0, uiMember, uiFace));
}

TEST(Flip, OnAnyOtherAxisLeavesThePixelsAndIsTrue)
{
    CMOXTexture texture = numberedTexture<uint16_t>({3, 2});
    for (const uint32_t uiAxis : {3u, 4u, 0xFFFFFFFFu})
        EXPECT_TRUE(Flip(texture, uiAxis));
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6}), numbersOf<uint16_t>(texture));
}

TEST(Flip, KeepsTheHeader)
{
    CMOXTexture texture = numberedTexture<uint8_t>({3, 2});
    texture.setOrientation(2);
    ASSERT_TRUE(Flip(texture, eAxisY));
    EXPECT_EQ(3u, texture.getWidth());
    EXPECT_EQ(2u, texture.getHeight());
    EXPECT_EQ(2u, texture.getOrientation(eAxisY));
}

TEST(Flip, IsFalseOutsideTheWorkingForm)
{
    CMOXTexture texture = foreignTexture();
    for (uint32_t uiAxis = 0; uiAxis < 4; ++uiAxis)
        EXPECT_FALSE(Flip(texture, uiAxis));
    EXPECT_TRUE(isStillForeign(texture));
    CMOXTexture empty;
    EXPECT_FALSE(Flip(empty, eAxisX));
}

TEST(Flip, IsFalseWhereASurfaceIsMissing)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2});
    texture.setHeight(3);
    EXPECT_FALSE(Flip(texture, eAxisX));
    texture.releaseData();
    EXPECT_FALSE(Flip(texture, eAxisX));
}
