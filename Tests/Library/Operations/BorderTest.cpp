#include "Operations/Border.h"

#include <gtest/gtest.h>

#include <tuple>

#include "Library/Operations/NumberedTexture.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

std::vector<int> bordered(const Shape& shape, uint32_t x, uint32_t y, uint32_t z)
{
    CMOXTexture texture = numberedTexture<uint8_t>(shape);
    EXPECT_TRUE(Border(texture, x, y, z));
    EXPECT_EQ(shape.uiWidth + 2 * x, texture.getWidth());
    EXPECT_EQ(shape.uiHeight + 2 * y, texture.getHeight());
    EXPECT_EQ(shape.uiDepth + 2 * z, texture.getDepth());
    return numbersOf<uint8_t>(texture);
}

std::tuple<uint32_t, uint32_t, uint32_t> borderRecord(const CMOXTexture& texture)
{
    uint32_t x, y, z;
    texture.getBorder(x, y, z);
    return {x, y, z};
}

} // namespace

template <typename T>
class BorderOfEveryKind : public ::testing::Test
{
};
TYPED_TEST_SUITE(BorderOfEveryKind, ChannelKinds);

TYPED_TEST(BorderOfEveryKind, RepeatsColumnsAndRowsFromTheEdgeOnAndCornersTakeBoth)
{
    CMOXTexture texture = numberedTexture<TypeParam>({2, 2});
    ASSERT_TRUE(Border(texture, 1, 1, 0));
    EXPECT_EQ((std::vector<int>{1, 1, 2, 2, 1, 1, 2, 2, 3, 3, 4, 4, 3, 3, 4, 4}), numbersOf<TypeParam>(texture));
}

TEST(BorderOperation, OfOneColumnRepeatsTheEdges)
{
    EXPECT_EQ((std::vector<int>{1, 1, 2, 2}), bordered({2, 1}, 1, 0, 0)); // A B gives A A B B
}

TEST(BorderOperation, MirrorsFurtherColumnsAndRows)
{
    EXPECT_EQ((std::vector<int>{2, 1, 1, 2, 3, 3, 2}), bordered({3, 1}, 2, 0, 0));
    EXPECT_EQ((std::vector<int>{2, 1, 1, 2, 3, 3, 2}), bordered({1, 3}, 0, 2, 0));
}

TEST(BorderOperation, MirrorsColumnsOnAndOnWhereTheBorderIsWiderThanTheImage)
{
    // Each side in turn: column 0 takes column 5, which the right border got two steps before.
    EXPECT_EQ((std::vector<int>{2, 2, 1, 1, 2, 2, 1, 1}), bordered({2, 1}, 3, 0, 0));
}

TEST(BorderOperation, FillsTheTopBeforeTheBottomWhereTheBorderIsTallerThanTheImage)
{
    // Row 0 takes row 5 while that is still empty; at the bottom row 7 takes row 2, which is filled by then.
    EXPECT_EQ((std::vector<int>{0, 2, 1, 1, 2, 2, 1, 1}), bordered({1, 2}, 0, 3, 0));
}

TEST(BorderOperation, OfOneSliceIsEmptyInFrontAndBehind)
{
    EXPECT_EQ((std::vector<int>{0, 1, 2, 0}), bordered({1, 1, 2}, 0, 0, 1));
}

TEST(BorderOperation, IsOneSliceOffInFrontAndTakesFromBehind)
{
    // Slices 1 2 3 at places 2 to 4. In front, place 1 takes place 3. Behind, place 3 takes place 5, which is empty.
    EXPECT_EQ((std::vector<int>{0, 2, 1, 0, 3, 0, 0}), bordered({1, 1, 3}, 0, 0, 2));
    // Slices 1 to 4 at places 3 to 6. Places 2 and 1 take 4 and 5; then 5 and 4 take 7 and 8.
    EXPECT_EQ((std::vector<int>{0, 3, 2, 1, 0, 0, 4, 0, 0, 0}), bordered({1, 1, 4}, 0, 0, 3));
}

TEST(BorderOperation, FramesEverySliceThatIsFilled)
{
    // Slices of one row: empty, A B with a column on each side, empty.
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0, 1, 1, 2, 2, 0, 0, 0, 0}), bordered({2, 1, 1}, 1, 0, 1));
}

TEST(BorderOperation, RowsAreAddedToTheSlicesThatTheFrameHas)
{
    // Slices of two rows at places 2 to 4: as above place 1 takes 3, then 3 takes the empty 5; then each slice gets its two rows.
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0, 3, 3, 4, 4, 1, 1, 2, 2, 0, 0, 0, 0, 5, 5, 6, 6, 0, 0, 0, 0, 0, 0, 0, 0}),
              bordered({1, 2, 3}, 0, 1, 2));
}

TEST(BorderOperation, TakesTheTopLevelOfEveryMemberAndFaceAndDropsTheOthers)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 1, 1, 2, 2, 2}); // top levels 1 2, 3 4, 5 6, 7 8
    ASSERT_TRUE(Border(texture, 1, 0, 0));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ((std::vector<int>{1, 1, 2, 2}), numbersOf<uint8_t>(texture, 0, 0, 0));
    EXPECT_EQ((std::vector<int>{3, 3, 4, 4}), numbersOf<uint8_t>(texture, 0, 0, 1));
    EXPECT_EQ((std::vector<int>{5, 5, 6, 6}), numbersOf<uint8_t>(texture, 0, 1, 0));
    EXPECT_EQ((std::vector<int>{7, 7, 8, 8}), numbersOf<uint8_t>(texture, 0, 1, 1));
}

TEST(BorderOperation, LeavesItsWidthsInTheMetadataInPlaceOfEarlierOnes)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2});
    ASSERT_TRUE(Border(texture, 3, 2, 1));
    EXPECT_EQ(std::make_tuple(3u, 2u, 1u), borderRecord(texture));
    ASSERT_TRUE(Border(texture, 1, 0, 0));
    EXPECT_EQ(std::make_tuple(1u, 0u, 0u), borderRecord(texture));
    EXPECT_EQ(24u, texture.getMetaDataSize());
}

TEST(BorderOperation, OfNoWidthChangesNothing)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2, 1, 2});
    EXPECT_TRUE(Border(texture, 0, 0, 0));
    EXPECT_EQ(2u, texture.getNumMIPLevels());
    EXPECT_EQ(0u, texture.getMetaDataSize());
}

TEST(BorderOperation, IsFalseOutsideTheWorkingForm)
{
    CMOXTexture texture = foreignTexture();
    EXPECT_FALSE(Border(texture, 1, 1, 0));
    EXPECT_FALSE(Border(texture, 0, 0, 0));
    EXPECT_TRUE(isStillForeign(texture));
}

TEST(BorderOperation, RefusesSizesThatWrapOrThatNoBlockHolds)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2});
    EXPECT_FALSE(Border(texture, 0x80000000, 0, 0)); // 2 + 2^32 would be 2 again
    EXPECT_FALSE(Border(texture, 0, 0x7FFFFFFF, 0)); // 2^32
    EXPECT_FALSE(Border(texture, 0, 0, 0xFFFFFFFF));
    EXPECT_FALSE(Border(texture, 0x7FFFFFFE, 0, 0)); // fits as a size, not as bytes
    EXPECT_FALSE(Border(texture, 40000, 40000, 0));
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), numbersOf<uint8_t>(texture));
    EXPECT_EQ(0u, texture.getMetaDataSize());
}

TEST(BorderOperation, IsFalseWhereASurfaceIsMissing)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 2});
    texture.setNumFaces(6);
    EXPECT_FALSE(Border(texture, 1, 0, 0));
    EXPECT_EQ(0u, texture.getMetaDataSize());
    texture.setNumMIPLevels(0);
    EXPECT_FALSE(Border(texture, 1, 0, 0));
}
