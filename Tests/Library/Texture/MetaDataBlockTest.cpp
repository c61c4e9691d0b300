#include "Texture/MetaDataBlock.h"

#include <gtest/gtest.h>

#include <vector>

using namespace moxtexture;

namespace
{

std::vector<int> bytesOf(const MetaDataBlock& block)
{
    return {block.Data.get(), block.Data.get() + block.u32DataSize};
}

MetaDataBlock threeBytes()
{
    const uint8_t aui8Data[3] = {1, 2, 3};
    return MetaDataBlock(7, 8, aui8Data, 3);
}

} // namespace

TEST(MetaDataBlock, IsAllZeroByDefault)
{
    const MetaDataBlock block;
    EXPECT_EQ(0u, block.DevFOURCC);
    EXPECT_EQ(0u, block.u32Key);
    EXPECT_EQ(0u, block.u32DataSize);
    EXPECT_EQ(nullptr, block.Data);
}

TEST(MetaDataBlock, HoldsACopyOfItsBytes)
{
    uint8_t aui8Data[3] = {1, 2, 3};
    const MetaDataBlock block(7, 8, aui8Data, 3);
    aui8Data[0] = 99;
    EXPECT_EQ(7u, block.DevFOURCC);
    EXPECT_EQ(8u, block.u32Key);
    EXPECT_EQ((std::vector<int>{1, 2, 3}), bytesOf(block));
}

TEST(MetaDataBlock, MadeOfNoBytesHoldsZeros)
{
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0}), bytesOf(MetaDataBlock(1, 2, nullptr, 4)));
    EXPECT_EQ(0u, MetaDataBlock(1, 2, nullptr, 0).u32DataSize);
}

TEST(MetaDataBlock, CopiesShareNothing)
{
    MetaDataBlock block = threeBytes();
    const MetaDataBlock copy = block;
    MetaDataBlock assigned(1, 1, nullptr, 10);
    assigned = block;
    block.Data[0] = 99;
    for (const MetaDataBlock* pCopy : {&copy, static_cast<const MetaDataBlock*>(&assigned)})
    {
        EXPECT_EQ(7u, pCopy->DevFOURCC);
        EXPECT_EQ(8u, pCopy->u32Key);
        EXPECT_EQ((std::vector<int>{1, 2, 3}), bytesOf(*pCopy));
    }
}

TEST(MetaDataBlock, ACopyOfABlockWithoutDataHasNone)
{
    MetaDataBlock source;
    source.DevFOURCC = 4;
    source.u32Key = 5;
    source.u32DataSize = 6;
    MetaDataBlock target = threeBytes();
    target = source;
    EXPECT_EQ(nullptr, target.Data);
    EXPECT_EQ(4u, target.DevFOURCC);
    EXPECT_EQ(5u, target.u32Key);
    EXPECT_EQ(6u, target.u32DataSize);
    EXPECT_EQ(nullptr, MetaDataBlock(source).Data);
}

TEST(MetaDataBlock, AssignmentFromItselfDoesNothing)
{
    MetaDataBlock block = threeBytes();
    const uint8_t* pData = block.Data.get();
    const MetaDataBlock& same = block;
    block = same;
    EXPECT_EQ(pData, block.Data.get());
    EXPECT_EQ((std::vector<int>{1, 2, 3}), bytesOf(block));
}

TEST(MetaDataBlock, ReadsZerosPastItsEnd)
{
    const MetaDataBlock block = threeBytes();
    uint8_t aui8Read[5] = {9, 9, 9, 9, 9};
    block.read(aui8Read, 5);
    EXPECT_EQ((std::vector<int>{1, 2, 3, 0, 0}), std::vector<int>(aui8Read, aui8Read + 5));

    uint8_t aui8Part[3] = {9, 9, 9};
    block.read(aui8Part, 2);
    EXPECT_EQ((std::vector<int>{1, 2, 9}), std::vector<int>(aui8Part, aui8Part + 3));

    MetaDataBlock().read(aui8Part, 3);
    EXPECT_EQ((std::vector<int>{0, 0, 0}), std::vector<int>(aui8Part, aui8Part + 3));
}
