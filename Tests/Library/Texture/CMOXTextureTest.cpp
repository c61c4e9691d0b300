#include "Texture/CMOXTexture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <utility>
#include <vector>

using namespace moxtexture;

namespace
{

CMOXTextureHeader rgbaHeader(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiLevels = 1, uint32_t uiMembers = 1, uint32_t uiFaces = 1)
{
    return {k_RGBA8, uiHeight, uiWidth, 1, uiLevels, uiMembers, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte, false};
}

/// 16 bytes: 2 by 2 pixels that count from 1, with a border record.
CMOXTexture countingTexture()
{
    uint8_t aui8Data[16];
    std::iota(aui8Data, aui8Data + 16, uint8_t{1});
    CMOXTextureHeader header = rgbaHeader(2, 2);
    header.setBorder(3, 4, 5);
    return CMOXTexture(header, aui8Data);
}

void expectCounting(const CMOXTexture& texture)
{
    ASSERT_NE(nullptr, texture.getDataPtr());
    ASSERT_EQ(16u, texture.getBlockSize());
    for (uint8_t i = 0; i < 16; ++i)
        EXPECT_EQ(i + 1, texture.getDataPtr()[i]);
    uint32_t x, y, z;
    texture.getBorder(x, y, z);
    EXPECT_EQ(4u, y);
    EXPECT_EQ(24u, texture.getMetaDataSize());
}

} // namespace

TEST(Texture, IsWithoutDataByDefault)
{
    CMOXTexture texture;
    EXPECT_EQ(0u, texture.getDataSize());
    EXPECT_EQ(0u, texture.getBlockSize());
    EXPECT_EQ(nullptr, texture.getDataPtr());
    EXPECT_EQ(nullptr, static_cast<const CMOXTexture&>(texture).getDataPtr(0, 0, 0));
}

TEST(Texture, MadeOfAHeaderHoldsTheBytesThatItMeasures)
{
    uint8_t aui8Data[16] = {10, 11, 12};
    CMOXTexture texture(rgbaHeader(2, 2), aui8Data);
    aui8Data[0] = 0;
    ASSERT_EQ(16u, texture.getBlockSize());
    EXPECT_EQ(texture.getDataSize(0xFFFFFFFF, true, true), texture.getBlockSize());
    EXPECT_EQ(10, texture.getDataPtr()[0]);
    EXPECT_EQ(12, texture.getDataPtr()[2]);
}

TEST(Texture, MadeWithoutDataHoldsZeros)
{
    const CMOXTexture texture(rgbaHeader(3, 5, 2, 2, 6));
    ASSERT_EQ(12u * (60 + 8), texture.getBlockSize()); // 15 and 2 pixels
    for (uint32_t i = 0; i < texture.getBlockSize(); ++i)
        ASSERT_EQ(0, texture.getDataPtr()[i]);
}

TEST(Texture, TakesTheMetadataOfItsHeader)
{
    expectCounting(countingTexture());
}

TEST(Texture, OfAFormatWithoutASizeHasNoData)
{
    const uint8_t ui8Unused = 1;
    const CMOXTexture texture({ePF_BC7, 64, 64, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false}, &ui8Unused);
    EXPECT_EQ(0u, texture.getBlockSize());
    EXPECT_EQ(nullptr, texture.getDataPtr());
}

TEST(Texture, CopiesShareNothing)
{
    CMOXTexture texture = countingTexture();
    CMOXTexture copy(texture);
    CMOXTexture assigned(rgbaHeader(30, 30));
    assigned = texture;
    texture.getDataPtr()[0] = 99;
    texture.setBorder(0, 0, 0);
    expectCounting(copy);
    expectCounting(assigned);
    EXPECT_EQ(2u, assigned.getWidth());
}

TEST(Texture, ACopyOfATextureWithoutDataHasNone)
{
    const CMOXTexture empty;
    CMOXTexture copy(empty);
    copy.setWidth(2);
    EXPECT_EQ(1u, empty.getWidth());
    EXPECT_EQ(nullptr, copy.getDataPtr());
    EXPECT_EQ(0u, copy.getBlockSize());
    CMOXTexture assigned = countingTexture();
    assigned = empty;
    EXPECT_EQ(nullptr, assigned.getDataPtr());
    EXPECT_EQ(0u, assigned.getBlockSize());
    EXPECT_EQ(0u, assigned.getMetaDataSize());
    EXPECT_EQ(MOXPixelWord(ePF_Count), assigned.getPixelFormat());
}

TEST(Texture, AssignmentFromItselfDoesNothing)
{
    CMOXTexture texture = countingTexture();
    const uint8_t* pData = texture.getDataPtr();
    const CMOXTexture& same = texture;
    texture = same;
    EXPECT_EQ(pData, texture.getDataPtr());
    expectCounting(texture);
}

TEST(Texture, MovesItsDataAndIsEmptyThen)
{
    CMOXTexture texture = countingTexture();
    const uint8_t* pData = texture.getDataPtr();
    CMOXTexture moved(std::move(texture));
    EXPECT_EQ(pData, moved.getDataPtr());
    expectCounting(moved);
    // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): what is left is what is tested here
    EXPECT_EQ(nullptr, texture.getDataPtr());
    EXPECT_EQ(0u, texture.getBlockSize());
    EXPECT_EQ(0u, texture.getDataSize());
    EXPECT_EQ(0u, texture.getMetaDataSize());
    // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    texture = std::move(moved);
    expectCounting(texture);
}

TEST(DataPtr, LevelsAreOutermostThenMembersThenFaces)
{
    CMOXTexture texture(rgbaHeader(4, 4, 2, 2, 6));
    EXPECT_EQ(768u, texture.getDataSize(0, true, true));
    const uint8_t* pStart = texture.getDataPtr();
    EXPECT_EQ(912, texture.getDataPtr(1, 1, 3) - pStart); // 768 + 6 * 16 + 3 * 16
    uint32_t uiExpected = 0;
    for (uint32_t uiLevel = 0; uiLevel < 2; ++uiLevel)
        for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
            for (uint32_t uiFace = 0; uiFace < 6; ++uiFace)
            {
                EXPECT_EQ(pStart + uiExpected, texture.getDataPtr(uiLevel, uiMember, uiFace));
                uiExpected += uiLevel == 0 ? 64 : 16;
            }
    EXPECT_EQ(uiExpected, texture.getBlockSize());
}

TEST(DataPtr, IsNullForASurfaceThatTheTextureHasNot)
{
    const CMOXTexture texture(rgbaHeader(4, 4, 2, 3, 6));
    EXPECT_NE(nullptr, texture.getDataPtr(1, 2, 5));
    EXPECT_EQ(nullptr, texture.getDataPtr(2, 0, 0));
    EXPECT_EQ(nullptr, texture.getDataPtr(0, 3, 0));
    EXPECT_EQ(nullptr, texture.getDataPtr(0, 0, 6));
    EXPECT_EQ(nullptr, texture.getDataPtr(0xFFFFFFFF, 0, 0));
}

TEST(DataPtr, IsNullForAllLevelsHoweverManyThereAre)
{
    CMOXTexture texture({layout("r", 8), 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    texture.setNumMIPLevels(0xFFFFFFFF);
    EXPECT_EQ(nullptr, texture.getDataPtr(0xFFFFFFFF, 0, 0));
    EXPECT_EQ(nullptr, texture.getDataPtr(0xFFFFFFFE, 0, 0)); // would lie far past the block
    EXPECT_EQ(nullptr, texture.getDataPtr(0xFFFFFFE2, 0, 0));
    EXPECT_NE(nullptr, texture.getDataPtr(0, 0, 0));
}

TEST(DataPtr, CountsEveryLevelBelow)
{
    // 4, 2, then thirty times 1 byte; level 32 is as wide as level 0 and starts at 36.
    const CMOXTexture texture({layout("r", 8), 1, 4, 1, 40, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    EXPECT_EQ(6, texture.getDataPtr(2) - texture.getDataPtr());
    EXPECT_EQ(35, texture.getDataPtr(31) - texture.getDataPtr());
    EXPECT_EQ(36, texture.getDataPtr(32) - texture.getDataPtr());
    EXPECT_EQ(40, texture.getDataPtr(33) - texture.getDataPtr());
}

TEST(DataPtr, IsNullWhereAChangedHeaderReachesPastTheBlock)
{
    CMOXTexture texture(rgbaHeader(4, 4, 1, 2));
    texture.setWidth(8);
    EXPECT_NE(nullptr, texture.getDataPtr(0, 0, 0)); // 128 bytes: just the block
    EXPECT_EQ(nullptr, texture.getDataPtr(0, 1, 0));
    texture.setWidth(9);
    EXPECT_EQ(nullptr, texture.getDataPtr(0, 0, 0));
    texture.setWidth(0xFFFFFFFF);
    texture.setHeight(0xFFFFFFFF);
    texture.setDepth(0xFFFFFFFF);
    EXPECT_EQ(nullptr, texture.getDataPtr(0, 1, 0));
}

TEST(AllocateData, TakesABlockOfZerosForTheHeaderAsItStands)
{
    CMOXTexture texture = countingTexture();
    texture.setWidth(3);
    ASSERT_TRUE(texture.allocateData());
    ASSERT_EQ(24u, texture.getBlockSize());
    for (uint32_t i = 0; i < 24; ++i)
        EXPECT_EQ(0, texture.getDataPtr()[i]);
}

TEST(AllocateData, FailsForASizeThatDoesNotFit)
{
    CMOXTexture texture = countingTexture();
    texture.setWidth(65536);
    texture.setHeight(65536);
    EXPECT_FALSE(texture.allocateData());
    EXPECT_EQ(nullptr, texture.getDataPtr());
    EXPECT_EQ(0u, texture.getBlockSize());
}

TEST(AllocateData, OfNoBytesIsNoFailure)
{
    CMOXTexture texture = countingTexture();
    texture.setPixelFormat(ePF_Count);
    EXPECT_TRUE(texture.allocateData());
    EXPECT_EQ(0u, texture.getBlockSize());
    EXPECT_EQ(nullptr, texture.getDataPtr());
}

TEST(ReleaseData, LeavesTheHeader)
{
    CMOXTexture texture = countingTexture();
    texture.releaseData();
    EXPECT_EQ(nullptr, texture.getDataPtr());
    EXPECT_EQ(0u, texture.getBlockSize());
    EXPECT_EQ(16u, texture.getDataSize());
    EXPECT_EQ(24u, texture.getMetaDataSize());
}
