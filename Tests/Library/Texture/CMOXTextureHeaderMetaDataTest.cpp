#include "Texture/CMOXTextureHeader.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

using namespace moxtexture;

namespace
{

constexpr uint32_t k_uiNative = 0x03584F4D;

MetaDataBlock nativeBlock(uint32_t uiKey, const std::vector<uint8_t>& bytes)
{
    return MetaDataBlock(k_uiNative, uiKey, bytes.data(), static_cast<uint32_t>(bytes.size()));
}

/// The bytes of a native record, or {-1} if there is none.
std::vector<int> bytesOf(const CMOXTextureHeader& header, uint32_t uiKey)
{
    const auto* pBlocks = header.getMetaData().find(k_uiNative);
    const MetaDataBlock* pBlock = pBlocks != nullptr ? pBlocks->find(uiKey) : nullptr;
    if (pBlock == nullptr)
        return {-1};
    EXPECT_EQ(k_uiNative, pBlock->DevFOURCC);
    EXPECT_EQ(uiKey, pBlock->u32Key);
    return {pBlock->Data.get(), pBlock->Data.get() + pBlock->u32DataSize};
}

std::tuple<uint32_t, uint32_t, uint32_t> borderOf(const CMOXTextureHeader& header)
{
    uint32_t x = 9;
    uint32_t y = 9;
    uint32_t z = 9;
    header.getBorder(x, y, z);
    return {x, y, z};
}

CMOXTextureHeader headerOfFaces(uint32_t uiFaces)
{
    return {k_RGBA8, 1, 1, 1, 1, 1, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte, false};
}

} // namespace

TEST(NativeFourCC, IsTheBytesMOXAnd3)
{
    EXPECT_EQ(k_uiNative, CMOXTextureHeader::k_ui32NativeFourCC);
    EXPECT_EQ(1u, eMetaDataBumpMap);
    EXPECT_EQ(2u, eMetaDataCubeMapOrder);
    EXPECT_EQ(3u, eMetaDataOrientation);
    EXPECT_EQ(4u, eMetaDataBorder);
    EXPECT_EQ(5u, eMetaDataPadding);
}

TEST(AddMetaData, StoresADeepCopyByOwnerAndKey)
{
    CMOXTextureHeader header;
    uint8_t aui8Data[2] = {5, 6};
    MetaDataBlock block(77, 88, aui8Data, 2);
    header.addMetaData(block);
    block.Data[0] = 99;
    ASSERT_EQ(1u, header.getMetaData().getCount());
    const MetaDataBlock* pBlock = header.getMetaData().find(77)->find(88);
    ASSERT_NE(nullptr, pBlock);
    EXPECT_EQ(5, pBlock->Data[0]);
    EXPECT_EQ(6, pBlock->Data[1]);
    EXPECT_EQ(14u, header.getMetaDataSize());
}

TEST(AddMetaData, CountsAReplacedBlockTwice)
{
    CMOXTextureHeader header;
    header.addMetaData(MetaDataBlock(1, 2, nullptr, 3));
    header.addMetaData(MetaDataBlock(1, 2, nullptr, 3));
    EXPECT_EQ(30u, header.getMetaDataSize());
    EXPECT_EQ(1u, header.getMetaData().getCount());
    EXPECT_EQ(1u, header.getMetaData().find(1)->getCount());
    EXPECT_EQ(15u, header.sumMetaDataSize());
}

TEST(AddMetaData, KeepsOwnersAndKeysInTheOrderOfInsertion)
{
    CMOXTextureHeader header;
    header.addMetaData(MetaDataBlock(9, 5, nullptr, 1));
    header.addMetaData(MetaDataBlock(3, 1, nullptr, 1));
    header.addMetaData(MetaDataBlock(9, 2, nullptr, 1));
    ASSERT_EQ(2u, header.getMetaData().getCount());
    EXPECT_EQ(9u, header.getMetaData().getKey(0));
    EXPECT_EQ(3u, header.getMetaData().getKey(1));
    ASSERT_EQ(2u, header.getMetaData().getValue(0).getCount());
    EXPECT_EQ(5u, header.getMetaData().getValue(0).getKey(0));
    EXPECT_EQ(2u, header.getMetaData().getValue(0).getKey(1));
    EXPECT_EQ(39u, header.getMetaDataSize());
    EXPECT_EQ(39u, header.sumMetaDataSize());
}

TEST(BumpMap, IsTheScaleAndFourLetters)
{
    CMOXTextureHeader header;
    EXPECT_FALSE(header.isBumpMap());
    header.setBumpMap(1.0f, "xyz");
    EXPECT_TRUE(header.isBumpMap());
    EXPECT_EQ((std::vector<int>{0, 0, 0x80, 0x3F, 'x', 'y', 'z', 0}), bytesOf(header, 1));
    EXPECT_EQ(20u, header.getMetaDataSize());
}

TEST(BumpMap, LettersPastTheFourthAreCutOff)
{
    CMOXTextureHeader header;
    header.setBumpMap(-2.0f, "xyzhq");
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0xC0, 'x', 'y', 'z', 'h'}), bytesOf(header, 1));
    header.setBumpMap(0.0f, "");
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0}), bytesOf(header, 1));
    EXPECT_EQ(20u, header.getMetaDataSize());
}

TEST(BumpMap, IsTheRecordWhateverItHolds)
{
    CMOXTextureHeader header;
    header.addMetaData(nativeBlock(1, {}));
    EXPECT_TRUE(header.isBumpMap());
    CMOXTextureHeader foreign;
    foreign.addMetaData(MetaDataBlock(7, 1, nullptr, 8));
    EXPECT_FALSE(foreign.isBumpMap());
}

TEST(CubeMapOrder, IsTheTextOfTheRecord)
{
    CMOXTextureHeader header = headerOfFaces(6);
    EXPECT_EQ("", header.getCubeMapOrder());
    header.addMetaData(nativeBlock(2, {'X', 'x', 'Z', 'z', 'Y', 'y'}));
    EXPECT_EQ("XxZzYy", header.getCubeMapOrder());
}

TEST(CubeMapOrder, EndsAtAZeroOrAfterSixLetters)
{
    CMOXTextureHeader header = headerOfFaces(6);
    header.addMetaData(nativeBlock(2, {'X', 'x', 0, 'z', 'Y', 'y'}));
    EXPECT_EQ("Xx", header.getCubeMapOrder());
    header.addMetaData(nativeBlock(2, {'X', 'x', 'Z', 'z', 'Y', 'y', 'A', 'B'}));
    EXPECT_EQ("XxZzYy", header.getCubeMapOrder());
    header.addMetaData(nativeBlock(2, {'Z', 'z'})); // shorter than six
    EXPECT_EQ("Zz", header.getCubeMapOrder());
}

TEST(CubeMapOrder, OfASingleFaceIsEmptyEvenWithARecord)
{
    CMOXTextureHeader header = headerOfFaces(1);
    header.addMetaData(nativeBlock(2, {'X', 'x', 'Z', 'z', 'Y', 'y'}));
    EXPECT_EQ("", header.getCubeMapOrder());
    header.setNumFaces(0);
    EXPECT_EQ("", header.getCubeMapOrder());
    header.setNumFaces(2);
    EXPECT_EQ("XxZzYy", header.getCubeMapOrder());
}

TEST(Orientation, OfATextureWithoutARecordIsTheUsualOne)
{
    const CMOXTextureHeader header;
    for (const EMOXTAxis eAxis : {eAxisX, eAxisY, eAxisZ})
        EXPECT_EQ(0u, header.getOrientation(eAxis));
}

TEST(Orientation, HasAByteWithItsOwnBitForEachAxis)
{
    for (uint32_t uiMask = 0; uiMask < 8; ++uiMask)
    {
        CMOXTextureHeader header;
        header.setOrientation(uiMask);
        EXPECT_EQ(uiMask & 1, header.getOrientation(eAxisX));
        EXPECT_EQ(uiMask & 2, header.getOrientation(eAxisY));
        EXPECT_EQ(uiMask & 4, header.getOrientation(eAxisZ));
        EXPECT_EQ((std::vector<int>{static_cast<int>(uiMask & 1), static_cast<int>(uiMask & 2), static_cast<int>(uiMask & 4)}),
                  bytesOf(header, 3));
    }
}

TEST(Orientation, IgnoresFurtherBitsOfTheMask)
{
    CMOXTextureHeader header;
    header.setOrientation(0xFFFFFFF8);
    EXPECT_EQ((std::vector<int>{0, 0, 0}), bytesOf(header, 3));
}

TEST(Orientation, SetTwiceIsCountedOnce)
{
    CMOXTextureHeader header;
    header.setOrientation(2);
    header.setOrientation(2);
    EXPECT_EQ(15u, header.getMetaDataSize());
}

TEST(Orientation, ReadsTheBytesAsTheyStandAndZerosPastTheirEnd)
{
    CMOXTextureHeader header;
    header.addMetaData(nativeBlock(3, {200, 1}));
    EXPECT_EQ(200u, header.getOrientation(eAxisX));
    EXPECT_EQ(1u, header.getOrientation(eAxisY));
    EXPECT_EQ(0u, header.getOrientation(eAxisZ));
}

TEST(Border, IsThreeWidths)
{
    CMOXTextureHeader header;
    EXPECT_EQ(std::make_tuple(0u, 0u, 0u), borderOf(header));
    header.setBorder(1, 0x02030405, 0xFFFFFFFF);
    EXPECT_EQ(std::make_tuple(1u, 0x02030405u, 0xFFFFFFFFu), borderOf(header));
    EXPECT_EQ((std::vector<int>{1, 0, 0, 0, 5, 4, 3, 2, 255, 255, 255, 255}), bytesOf(header, 4));
    EXPECT_EQ(24u, header.getMetaDataSize());
}

TEST(Border, OfAShortRecordHasZerosPastItsEnd)
{
    CMOXTextureHeader header;
    header.addMetaData(nativeBlock(4, {7, 0, 0, 0, 8}));
    EXPECT_EQ(std::make_tuple(7u, 8u, 0u), borderOf(header));
}

TEST(NativeSetters, KeepTheMetadataSizeExactWhateverTheyReplace)
{
    CMOXTextureHeader header;
    header.addMetaData(MetaDataBlock(1, 1, nullptr, 8));              // 20, stays
    header.addMetaData(nativeBlock(1, std::vector<uint8_t>(100, 1))); // replaced by 8 bytes
    header.addMetaData(nativeBlock(3, {}));                           // replaced by 3 bytes
    header.addMetaData(nativeBlock(4, {1}));                          // replaced by 12 bytes
    header.setBumpMap(1.0f, "xyz");
    header.setOrientation(7);
    header.setBorder(1, 2, 3);
    EXPECT_EQ(20u + 20u + 15u + 24u, header.getMetaDataSize());
    EXPECT_EQ(header.sumMetaDataSize(), header.getMetaDataSize());
}

TEST(PaddingMetaData, PutsTheDataOnAMultiple)
{
    CMOXTextureHeader header;
    header.setOrientation(2); // 15 bytes
    header.addPaddingMetaData(4);
    // (0 - 64 - 15) mod 4 = 1, so the data lies at 52 + 15 + 12 + 1 = 80.
    EXPECT_EQ((std::vector<int>{0}), bytesOf(header, 5));
    EXPECT_EQ(28u, header.getMetaDataSize());
    EXPECT_EQ(80u, CMOXTextureHeader::k_uiRecordSize + header.getMetaDataSize());
}

TEST(PaddingMetaData, IsTakenFromA32BitDifference)
{
    CMOXTextureHeader header;
    header.addPaddingMetaData(7);
    // 2^32 - 64 = 4294967232 = 7 * 613566747 + 3
    EXPECT_EQ(3u, bytesOf(header, 5).size());
    EXPECT_EQ(15u, header.getMetaDataSize());
}

TEST(PaddingMetaData, OfLengthZeroIsStillARecord)
{
    CMOXTextureHeader header;
    header.addPaddingMetaData(64);
    EXPECT_EQ((std::vector<int>{}), bytesOf(header, 5));
    EXPECT_EQ(12u, header.getMetaDataSize());
}

TEST(PaddingMetaData, IsNotAddedForAlignmentsOfZeroAndOne)
{
    CMOXTextureHeader header;
    header.addPaddingMetaData(0);
    header.addPaddingMetaData(1);
    EXPECT_EQ(0u, header.getMetaData().getCount());
    EXPECT_EQ(0u, header.getMetaDataSize());
}

TEST(PaddingMetaData, AddedAgainIsCountedTwice)
{
    CMOXTextureHeader header;
    header.addPaddingMetaData(16); // (0 - 64) mod 16 = 0
    header.addPaddingMetaData(16); // (0 - 64 - 12) mod 16 = 4
    EXPECT_EQ(12u + 16u, header.getMetaDataSize());
    EXPECT_EQ(16u, header.sumMetaDataSize());
}
