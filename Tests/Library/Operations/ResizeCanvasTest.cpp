#include "Operations/ResizeCanvas.h"

#include <gtest/gtest.h>

#include <limits>

#include "Library/Operations/NumberedTexture.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

std::vector<int> placed(const Shape& shape, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth, int32_t x, int32_t y, int32_t z)
{
    CMOXTexture texture = numberedTexture<uint8_t>(shape);
    EXPECT_TRUE(ResizeCanvas(texture, uiWidth, uiHeight, uiDepth, x, y, z));
    EXPECT_EQ(uiWidth, texture.getWidth());
    EXPECT_EQ(uiHeight, texture.getHeight());
    EXPECT_EQ(uiDepth, texture.getDepth());
    return numbersOf<uint8_t>(texture);
}

} // namespace

template <typename T>
class ResizeCanvasOfEveryKind : public ::testing::Test
{
};
TYPED_TEST_SUITE(ResizeCanvasOfEveryKind, ChannelKinds);

TYPED_TEST(ResizeCanvasOfEveryKind, LeavesZerosAroundTheTexture)
{
    CMOXTexture texture = numberedTexture<TypeParam>({2, 2});
    ASSERT_TRUE(ResizeCanvas(texture, 4, 4, 1, 1, 1, 0));
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0, 0, 1, 2, 0, 0, 3, 4, 0, 0, 0, 0, 0}), numbersOf<TypeParam>(texture));
}

TEST(ResizeCanvas, NegativeOffsetsCutTheLeftAndTheTop)
{
    EXPECT_EQ((std::vector<int>{5, 6, 8, 9}), placed({3, 3}, 2, 2, 1, -1, -1, 0));
}

TEST(ResizeCanvas, ASmallerFrameCutsTheRightAndTheBottom)
{
    EXPECT_EQ((std::vector<int>{1, 2, 4, 5}), placed({3, 3}, 2, 2, 1, 0, 0, 0));
    EXPECT_EQ((std::vector<int>{0, 1, 0, 4}), placed({3, 3}, 2, 2, 1, 1, 0, 0));
}

TEST(ResizeCanvas, TheTextureEndsAtItsOwnWidthAndNotAtTheFrames)
{
    EXPECT_EQ((std::vector<int>{0, 1, 2, 0, 0}), placed({2, 1}, 5, 1, 1, 1, 0, 0));
}

TEST(ResizeCanvas, MovesSlicesAsWell)
{
    EXPECT_EQ((std::vector<int>{0, 0, 1, 2}), placed({1, 1, 2}, 1, 1, 4, 0, 0, 2));
    EXPECT_EQ((std::vector<int>{2, 0}), placed({1, 1, 2}, 1, 1, 2, 0, 0, -1));
}

TEST(ResizeCanvas, OffsetsThatLeaveNothingGiveZeros)
{
    constexpr int32_t iLowest = std::numeric_limits<int32_t>::min();
    constexpr int32_t iHighest = std::numeric_limits<int32_t>::max();
    const std::vector<int> zeros(4, 0);
    EXPECT_EQ(zeros, placed({2, 2}, 2, 2, 1, 2, 0, 0));
    EXPECT_EQ(zeros, placed({2, 2}, 2, 2, 1, -2, 0, 0));
    EXPECT_EQ(zeros, placed({2, 2}, 2, 2, 1, iLowest, iLowest, iLowest));
    EXPECT_EQ(zeros, placed({2, 2}, 2, 2, 1, iHighest, iHighest, iHighest));
}

TEST(ResizeCanvas, OfTheSameSizeInTheSamePlaceChangesNothing)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2, 1, 2});
    EXPECT_TRUE(ResizeCanvas(texture, 2, 2, 1, 0, 0, 0));
    EXPECT_EQ(2u, texture.getNumMIPLevels());
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), numbersOf<uint8_t>(texture));
    EXPECT_EQ((std::vector<int>{5}), numbersOf<uint8_t>(texture, 1));
}

TEST(ResizeCanvas, DropsTheOtherLevelsEvenWhereOnlyThePlaceChanges)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2, 1, 2});
    ASSERT_TRUE(ResizeCanvas(texture, 2, 2, 1, 0, 1, 0));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ((std::vector<int>{0, 0, 1, 2}), numbersOf<uint8_t>(texture));
}

TEST(ResizeCanvas, TakesEveryMemberAndFace)
{
    CMOXTexture texture = numberedTexture<uint8_t>({1, 1, 1, 1, 2, 2});
    ASSERT_TRUE(ResizeCanvas(texture, 2, 1, 1, 1, 0, 0));
    EXPECT_EQ((std::vector<int>{0, 1}), numbersOf<uint8_t>(texture, 0, 0, 0));
    EXPECT_EQ((std::vector<int>{0, 2}), numbersOf<uint8_t>(texture, 0, 0, 1));
    EXPECT_EQ((std::vector<int>{0, 3}), numbersOf<uint8_t>(texture, 0, 1, 0));
    EXPECT_EQ((std::vector<int>{0, 4}), numbersOf<uint8_t>(texture, 0, 1, 1));
}

TEST(ResizeCanvas, ScalesTheBorderInTheMetadata)
{
    CMOXTexture texture = numberedTexture<uint8_t>({4, 4, 2});
    texture.setBorder(3, 3, 1);
    ASSERT_TRUE(ResizeCanvas(texture, 2, 8, 2, 0, 0, 0));
    uint32_t x, y, z;
    texture.getBorder(x, y, z);
    EXPECT_EQ(1u, x); // 3 * 2 / 4
    EXPECT_EQ(6u, y); // 3 * 8 / 4
    EXPECT_EQ(1u, z);
    EXPECT_EQ(24u, texture.getMetaDataSize());
}

TEST(ResizeCanvas, IsFalseForASizeOfZero)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2});
    EXPECT_FALSE(ResizeCanvas(texture, 0, 2, 1, 0, 0, 0));
    EXPECT_FALSE(ResizeCanvas(texture, 2, 0, 1, 0, 0, 0));
    EXPECT_FALSE(ResizeCanvas(texture, 2, 2, 0, 0, 0, 0));
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), numbersOf<uint8_t>(texture));
}

TEST(ResizeCanvas, IsFalseOutsideTheWorkingForm)
{
    CMOXTexture texture = foreignTexture();
    EXPECT_FALSE(ResizeCanvas(texture, 4, 4, 1, 0, 0, 0));
    EXPECT_FALSE(ResizeCanvas(texture, 2, 1, 1, 0, 0, 0)); // its own size
    EXPECT_TRUE(isStillForeign(texture));
}

TEST(ResizeCanvas, RefusesAResultThatNoBlockHolds)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2});
    EXPECT_FALSE(ResizeCanvas(texture, 65536, 65536, 1, 0, 0, 0));
    EXPECT_FALSE(ResizeCanvas(texture, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0, 0, 0));
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), numbersOf<uint8_t>(texture));
}

TEST(ResizeCanvas, IsFalseWhereASurfaceIsMissing)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2});
    texture.setNumArrayMembers(2);
    EXPECT_FALSE(ResizeCanvas(texture, 3, 3, 1, 0, 0, 0));
    EXPECT_EQ(2u, texture.getWidth());
}
