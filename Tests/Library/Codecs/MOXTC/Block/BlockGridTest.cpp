#include "Codecs/MOXTC/Block/BlockGrid.h"

#include <vector>

#include <gtest/gtest.h>

using namespace moxtexture;

namespace
{

/// Data of uiSize bytes whose block of place n has n + 1 as both of its numbers.
std::vector<uint8_t> makeNumberedBlocks(size_t uiSize)
{
    std::vector<uint8_t> data(uiSize);
    for (size_t i = 0; (i + 1) * k_uiBlockBytes <= uiSize; ++i)
        storeBlock(data.data() + i * k_uiBlockBytes, {static_cast<uint32_t>(i + 1), static_cast<uint32_t>(i + 1)});
    return data;
}

uint32_t getNumber(const CBlockGrid& grid, uint32_t x, uint32_t y)
{
    return grid.getBlock(x, y).ui32Modulation;
}

void expectCounts(uint32_t uiX, uint32_t uiY, const BlockCounts& counts)
{
    EXPECT_EQ(uiX, counts.uiX);
    EXPECT_EQ(uiY, counts.uiY);
}

} // namespace

TEST(BlockGrid, OfTheFirstGenerationHasTheWholeBlocksAndTwoEachWayAtLeast)
{
    expectCounts(4, 4, getMOXTC1BlockCounts(32, 16, true));
    expectCounts(8, 4, getMOXTC1BlockCounts(32, 16, false));
    expectCounts(2, 2, getMOXTC1BlockCounts(23, 11, true));
    expectCounts(5, 2, getMOXTC1BlockCounts(23, 11, false));
    expectCounts(2, 2, getMOXTC1BlockCounts(1, 1, true));
    expectCounts(2, 16, getMOXTC1BlockCounts(4, 64, false));
    expectCounts(16, 2, getMOXTC1BlockCounts(64, 4, false));
}

TEST(BlockGrid, OfTheSecondGenerationIsPaddedToWholeBlocks)
{
    expectCounts(1, 1, getMOXTCIIBlockCounts(1, 1, true));
    expectCounts(1, 1, getMOXTCIIBlockCounts(8, 4, true));
    expectCounts(2, 2, getMOXTCIIBlockCounts(9, 5, true));
    expectCounts(3, 2, getMOXTCIIBlockCounts(9, 5, false));
    expectCounts(0, 0, getMOXTCIIBlockCounts(0, 0, false));
    expectCounts(0x20000000, 0x40000000, getMOXTCIIBlockCounts(0xFFFFFFFF, 0xFFFFFFFF, true));
}

TEST(BlockGrid, GivesBlocksInEitherOrder)
{
    const std::vector<uint8_t> data = makeNumberedBlocks(4 * k_uiBlockBytes);
    const CBlockGrid raster(data.data(), data.size(), {2, 2}, EBlockOrder::eRaster);
    EXPECT_EQ(2u, getNumber(raster, 1, 0));
    EXPECT_EQ(3u, getNumber(raster, 0, 1));
    const CBlockGrid morton(data.data(), data.size(), {2, 2}, EBlockOrder::eMorton);
    EXPECT_EQ(3u, getNumber(morton, 1, 0));
    EXPECT_EQ(2u, getNumber(morton, 0, 1));
}

TEST(BlockGrid, ABlockPastTheDataOrCutOffIsNotThereAndZero)
{
    const std::vector<uint8_t> data = makeNumberedBlocks(2 * k_uiBlockBytes + 7);
    const CBlockGrid grid(data.data(), data.size(), {2, 2}, EBlockOrder::eRaster);
    EXPECT_TRUE(grid.hasBlock(0, 0));
    EXPECT_TRUE(grid.hasBlock(1, 0));
    EXPECT_FALSE(grid.hasBlock(0, 1));
    EXPECT_FALSE(grid.hasBlock(1, 1));
    EXPECT_EQ(2u, getNumber(grid, 1, 0));
    EXPECT_EQ(0u, grid.getBlock(0, 1).ui32Modulation);
    EXPECT_EQ(0u, grid.getBlock(0, 1).ui32Colours);
}

TEST(BlockGrid, AMortonPlaceInTheDataIsThereThoughTheGridHasFewerBlocks)
{
    // Block (2, 2) of 3 x 3 has place 12.
    const std::vector<uint8_t> data = makeNumberedBlocks(13 * k_uiBlockBytes);
    EXPECT_EQ(13u, getNumber(CBlockGrid(data.data(), data.size(), {3, 3}, EBlockOrder::eMorton), 2, 2));
    EXPECT_FALSE(CBlockGrid(data.data(), 12 * k_uiBlockBytes, {3, 3}, EBlockOrder::eMorton).hasBlock(2, 2));
}

TEST(BlockGrid, TheBlocksAroundACellWrapAtTheRightAndLowerEdges)
{
    const std::vector<uint8_t> data = makeNumberedBlocks(6 * k_uiBlockBytes);
    const CBlockGrid grid(data.data(), data.size(), {3, 2}, EBlockOrder::eRaster);
    const CellBlocks inside = grid.getCellBlocks(1, 0);
    EXPECT_EQ(2u, inside.P.ui32Modulation);
    EXPECT_EQ(3u, inside.Q.ui32Modulation);
    EXPECT_EQ(5u, inside.R.ui32Modulation);
    EXPECT_EQ(6u, inside.S.ui32Modulation);
    const CellBlocks corner = grid.getCellBlocks(2, 1);
    EXPECT_EQ(6u, corner.P.ui32Modulation);
    EXPECT_EQ(4u, corner.Q.ui32Modulation);
    EXPECT_EQ(3u, corner.R.ui32Modulation);
    EXPECT_EQ(1u, corner.S.ui32Modulation);
}

TEST(BlockGrid, OneBlockIsAllFourAroundItsCell)
{
    const std::vector<uint8_t> data = makeNumberedBlocks(k_uiBlockBytes);
    const CellBlocks blocks = CBlockGrid(data.data(), data.size(), {1, 1}, EBlockOrder::eRaster).getCellBlocks(0, 0);
    for (const BlockWord& block : {blocks.P, blocks.Q, blocks.R, blocks.S})
        EXPECT_EQ(1u, block.ui32Modulation);
}
