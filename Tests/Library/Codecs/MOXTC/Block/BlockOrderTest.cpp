#include "Codecs/MOXTC/Block/BlockOrder.h"

#include <algorithm>
#include <vector>

#include <gmock/gmock.h>

using namespace moxtexture;
using testing::ElementsAre;

namespace
{

/// The Morton places of the grid's blocks, row after row.
std::vector<uint64_t> getPlaces(uint32_t uiXBlocks, uint32_t uiYBlocks)
{
    std::vector<uint64_t> places;
    for (uint32_t y = 0; y < uiYBlocks; ++y)
        for (uint32_t x = 0; x < uiXBlocks; ++x)
            places.push_back(getBlockIndexMorton(x, y, uiXBlocks, uiYBlocks));
    return places;
}

} // namespace

TEST(BlockOrder, RasterGoesRowAfterRow)
{
    EXPECT_EQ(0u, getBlockIndexRaster(0, 0, 5));
    EXPECT_EQ(4u, getBlockIndexRaster(4, 0, 5));
    EXPECT_EQ(13u, getBlockIndexRaster(3, 2, 5));
    EXPECT_EQ((uint64_t{1} << 33) + 7, getBlockIndexRaster(7, 8, uint32_t{1} << 30));
}

TEST(BlockOrder, MortonHasTheBitOfYBelowThatOfX)
{
    EXPECT_THAT(getPlaces(2, 2), ElementsAre(0, 2, //
                                             1, 3));
    EXPECT_THAT(getPlaces(4, 4), ElementsAre(0, 2, 8, 10,  //
                                             1, 3, 9, 11,  //
                                             4, 6, 12, 14, //
                                             5, 7, 13, 15));
}

TEST(BlockOrder, AWideGridIsARowOfMortonSquares)
{
    EXPECT_THAT(getPlaces(8, 2), ElementsAre(0, 2, 4, 6, 8, 10, 12, 14, //
                                             1, 3, 5, 7, 9, 11, 13, 15));
}

TEST(BlockOrder, AHighGridIsAColumnOfMortonSquares)
{
    EXPECT_THAT(getPlaces(2, 6), ElementsAre(0, 2,  //
                                             1, 3,  //
                                             4, 6,  //
                                             5, 7,  //
                                             8, 10, //
                                             9, 11));
}

TEST(BlockOrder, OneRowOrColumnGoesStraight)
{
    EXPECT_THAT(getPlaces(5, 1), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(getPlaces(1, 5), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(getPlaces(1, 1), ElementsAre(0));
}

TEST(BlockOrder, ThreeByThreeTakesTwoBitsOfEachAxisAndLeavesTheGrid)
{
    // x 2 gives bit 3, y 2 gives bit 2: the last corner has place 12 of 9.
    EXPECT_THAT(getPlaces(3, 3), ElementsAre(0, 2, 8, //
                                             1, 3, 9, //
                                             4, 6, 12));
}

TEST(BlockOrder, IsCompleteWhereTheLastPlaceIsInTheGrid)
{
    EXPECT_TRUE(isOrderComplete(1, 1));
    EXPECT_TRUE(isOrderComplete(64, 64));
    EXPECT_TRUE(isOrderComplete(7, 1));
    EXPECT_TRUE(isOrderComplete(1, 7));
    EXPECT_TRUE(isOrderComplete(2, 6));  // three squares of two by two
    EXPECT_TRUE(isOrderComplete(12, 4)); // three of four by four
    EXPECT_TRUE(isOrderComplete(0, 7));
    EXPECT_TRUE(isOrderComplete(7, 0));

    EXPECT_FALSE(isOrderComplete(3, 3));
    EXPECT_TRUE(isOrderComplete(3, 2));  // the last corner, (2, 1), has place 4 + 1
    EXPECT_FALSE(isOrderComplete(2, 3)); // the last corner, (1, 2), has place 4 + 2
}

TEST(BlockOrder, OfACompleteGridIsAPermutationAndOfAnyOtherHasEveryPlaceOnce)
{
    for (uint32_t uiXBlocks = 1; uiXBlocks <= 17; ++uiXBlocks)
    {
        for (uint32_t uiYBlocks = 1; uiYBlocks <= 17; ++uiYBlocks)
        {
            std::vector<uint64_t> places = getPlaces(uiXBlocks, uiYBlocks);
            std::sort(places.begin(), places.end());
            EXPECT_EQ(places.end(), std::adjacent_find(places.begin(), places.end())) << uiXBlocks << " x " << uiYBlocks;
            EXPECT_EQ(isOrderComplete(uiXBlocks, uiYBlocks), places.back() == places.size() - 1) << uiXBlocks << " x " << uiYBlocks;
        }
    }
}

TEST(BlockOrder, HoldsForTheLargestGrids)
{
    constexpr uint32_t k_uiLast = 0xFFFFFFFF;
    // Every bit of both in turn; nothing is left to go above.
    EXPECT_EQ(0xFFFFFFFFFFFFFFFCu, getBlockIndexMorton(k_uiLast - 1, k_uiLast - 1, k_uiLast, k_uiLast));
    EXPECT_EQ(uint64_t{k_uiLast - 1}, getBlockIndexMorton(k_uiLast - 1, 0, k_uiLast, 1));
}
