#include "Operations/Rotate.h"

#include <gtest/gtest.h>

#include "Library/Operations/NumberedTexture.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

void expectSizes(const CMOXTexture& texture, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth)
{
    EXPECT_EQ(uiWidth, texture.getWidth());
    EXPECT_EQ(uiHeight, texture.getHeight());
    EXPECT_EQ(uiDepth, texture.getDepth());
    EXPECT_EQ(texture.getDataSize(), texture.getBlockSize());
}

} // namespace

template <typename T>
class RotateOfEveryKind : public ::testing::Test
{
};
TYPED_TEST_SUITE(RotateOfEveryKind, ChannelKinds);

// 1 2 3 4
// 5 6 7 8
TYPED_TEST(RotateOfEveryKind, ForwardAboutZIsClockwise)
{
    CMOXTexture texture = numberedTexture<TypeParam>({4, 2});
    ASSERT_TRUE(Rotate(texture, eAxisZ, true));
    expectSizes(texture, 2, 4, 1);
    EXPECT_EQ((std::vector<int>{5, 1, 6, 2, 7, 3, 8, 4}), numbersOf<TypeParam>(texture));
}

TYPED_TEST(RotateOfEveryKind, BackAboutZIsAnticlockwise)
{
    CMOXTexture texture = numberedTexture<TypeParam>({4, 2});
    ASSERT_TRUE(Rotate(texture, eAxisZ, false));
    expectSizes(texture, 2, 4, 1);
    EXPECT_EQ((std::vector<int>{4, 8, 3, 7, 2, 6, 1, 5}), numbersOf<TypeParam>(texture));
}

TYPED_TEST(RotateOfEveryKind, ForwardAndBackIsTheTextureItself)
{
    const CMOXTexture original = numberedTexture<TypeParam>({5, 3, 2});
    CMOXTexture texture = original;
    ASSERT_TRUE(Rotate(texture, eAxisZ, true));
    ASSERT_TRUE(Rotate(texture, eAxisZ, false));
    expectSizes(texture, 5, 3, 2);
    EXPECT_EQ(numbersOf<TypeParam>(original), numbersOf<TypeParam>(texture));
}

TYPED_TEST(RotateOfEveryKind, AboutXExchangesHeightAndDepthAndLeavesZeros)
{
    for (const bool bForward : {true, false})
    {
        CMOXTexture texture = numberedTexture<TypeParam>({4, 2, 3});
        ASSERT_TRUE(Rotate(texture, eAxisX, bForward));
        expectSizes(texture, 4, 3, 2);
        EXPECT_EQ(std::vector<int>(24, 0), numbersOf<TypeParam>(texture));
    }
}

TYPED_TEST(RotateOfEveryKind, AboutYMakesTheHeightTheWidthAndLeavesZeros)
{
    for (const bool bForward : {true, false})
    {
        CMOXTexture texture = numberedTexture<TypeParam>({4, 2, 3});
        ASSERT_TRUE(Rotate(texture, eAxisY, bForward));
        expectSizes(texture, 4, 4, 3); // on purpose: width and depth are not exchanged
        EXPECT_EQ(std::vector<int>(48, 0), numbersOf<TypeParam>(texture));
    }
}

TEST(Rotate, AboutAnyOtherAxisKeepsTheSizesAndLeavesZeros)
{
    for (const uint32_t uiAxis : {3u, 0xFFFFFFFFu})
    {
        CMOXTexture texture = numberedTexture<uint8_t>({4, 2, 3});
        ASSERT_TRUE(Rotate(texture, uiAxis, true));
        expectSizes(texture, 4, 2, 3);
        EXPECT_EQ(std::vector<int>(24, 0), numbersOf<uint8_t>(texture));
    }
}

TEST(Rotate, TurnsEverySliceInItsPlace)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 1, 2});
    ASSERT_TRUE(Rotate(texture, eAxisZ, false));
    expectSizes(texture, 1, 2, 2);
    EXPECT_EQ((std::vector<int>{2, 1, 4, 3}), numbersOf<uint8_t>(texture));
}

TEST(Rotate, TurnsEveryLevelMemberAndFace)
{
    // A surface of 4 by 2 and one of 2 by 1; 4 of each, top levels first.
    CMOXTexture texture = numberedTexture<uint8_t>({4, 2, 1, 2, 2, 2});
    ASSERT_TRUE(Rotate(texture, eAxisZ, true));
    EXPECT_EQ(2u, texture.getNumMIPLevels());
    int iTop = 0;
    int iSecond = 32;
    for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
        for (uint32_t uiFace = 0; uiFace < 2; ++uiFace, iTop += 8, iSecond += 2)
        {
            EXPECT_EQ((std::vector<int>{iTop + 5, iTop + 1, iTop + 6, iTop + 2, iTop + 7, iTop + 3, iTop + 8, iTop + 4}),
                      numbersOf<uint8_t>(texture, 0, uiMember, uiFace));
            EXPECT_EQ((std::vector<int>{iSecond + 1, iSecond + 2}), numbersOf<uint8_t>(texture, 1, uiMember, uiFace));
        }
}

TEST(Rotate, KeepsTheRestOfTheHeader)
{
    CMOXTexture texture = numberedTexture<float>({4, 2});
    texture.setOrientation(2);
    texture.setColourSpace(eCS_sRGB);
    ASSERT_TRUE(Rotate(texture, eAxisZ, true));
    EXPECT_EQ(2u, texture.getOrientation(eAxisY));
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
    EXPECT_EQ(eCT_SignedFloatingPoint, texture.getChannelType());
}

TEST(Rotate, IsFalseOutsideTheWorkingForm)
{
    CMOXTexture texture = foreignTexture();
    for (uint32_t uiAxis = 0; uiAxis < 4; ++uiAxis)
        EXPECT_FALSE(Rotate(texture, uiAxis, true));
    EXPECT_TRUE(isStillForeign(texture));
}

TEST(Rotate, RefusesAResultThatNoBlockHolds)
{
    CMOXTexture texture = numberedTexture<uint8_t>({65536, 1}); // about Y it would have 2^32 pixels
    EXPECT_FALSE(Rotate(texture, eAxisY, true));
    EXPECT_EQ(65536u, texture.getWidth());
    EXPECT_EQ(1u, texture.getHeight());
    EXPECT_NE(nullptr, texture.getDataPtr());
}

TEST(Rotate, IsFalseWhereASurfaceIsMissing)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2});
    texture.setNumArrayMembers(2);
    EXPECT_FALSE(Rotate(texture, eAxisZ, true));
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), numbersOf<uint8_t>(texture));
}
