#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "Files/NativeFile.h"
#include "Library/Files/LargestRequest.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiHuge = 0xFFFFFFFF;

/// Whatever a load ends in: what the header measures is what is held.
NativeLoad loadAndCheck(const Bytes& bytes)
{
    NativeLoad load = loadNative(bytes);
    EXPECT_TRUE(load.texture.fitsDataBlock());
    EXPECT_EQ(load.texture.getDataSize(), load.texture.getBlockSize());
    EXPECT_EQ(load.texture.getMetaDataSize(), load.texture.sumMetaDataSize());
    EXPECT_TRUE(!load.bGood || load.texture.getDataSize() != 0);
    return load;
}

void setWord(Bytes& bytes, size_t uiOffset, uint32_t uiValue)
{
    storeLE(&bytes[uiOffset], uiValue);
}

} // namespace

TEST(HostileNativeFile, CutAtEveryLengthItGivesNoTextureOrOneWithZerosForWhatIsMissing)
{
    const Bytes data = CSeededRandom(1).bytes(2 * 3 * 4);
    const Bytes whole = CNativeFileBuilder().size(2, 3).block(1, 2, {1, 2, 3}).block(4, 5, {6, 7, 8, 9, 10}).data(data).bytes();
    const size_t uiDataStart = 52 + 15 + 17;
    ASSERT_EQ(uiDataStart + data.size(), whole.size());

    for (size_t uiLength = 0; uiLength <= whole.size(); ++uiLength)
    {
        SCOPED_TRACE(uiLength);
        const NativeLoad load = loadAndCheck(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(uiLength)));
        EXPECT_EQ(uiLength > uiDataStart, load.bGood);
        Bytes expected;
        if (uiLength >= uiDataStart)
        {
            expected = data;
            std::fill(expected.begin() + static_cast<std::ptrdiff_t>(uiLength - uiDataStart), expected.end(), uint8_t{0});
        }
        EXPECT_EQ(expected, dataOf(load.texture));
    }
}

TEST(HostileNativeFile, AHeaderCutShortKeepsTheFieldsThatItHas)
{
    Bytes bytes = CNativeFileBuilder().size(300, 200, 7).bytes();
    bytes.resize(32); // up to the width
    const NativeLoad load = loadAndCheck(bytes);
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(300u, load.texture.getWidth());
    EXPECT_EQ(200u, load.texture.getHeight());
    EXPECT_EQ(1u, load.texture.getDepth());
    EXPECT_EQ(MOXPixelWord(ePF_Count), load.texture.getPixelFormat());
}

TEST(HostileNativeFile, CountsOfAllOnesAloneAndInPairs)
{
    const Bytes sound = CNativeFileBuilder().size(2, 2).data(Bytes(16, 1)).bytes();
    for (size_t uiFirst = 4; uiFirst < 52; uiFirst += 4)
    {
        for (size_t uiSecond = uiFirst; uiSecond < 52; uiSecond += 4)
        {
            SCOPED_TRACE(std::to_string(uiFirst) + " and " + std::to_string(uiSecond));
            Bytes bytes = sound;
            setWord(bytes, uiFirst, k_uiHuge);
            setWord(bytes, uiSecond, k_uiHuge);
            const NativeLoad load = loadAndCheck(bytes);
            // Any of height, width, depth, members, faces and levels asks for more than there can be.
            const bool bTooMuch = (uiFirst >= 24 && uiFirst < 48) || (uiSecond >= 24 && uiSecond < 48);
            EXPECT_TRUE(!bTooMuch || load.texture.getDataSize() == 0);
        }
    }
}

TEST(HostileNativeFile, SizesThatWrapAreRefused)
{
    struct Sizes
    {
        uint32_t uiWidth, uiHeight, uiDepth, uiMembers, uiFaces;
    };
    // Products of 2^32, 2^64 and 2^65 bytes, which a size of 32 or 64 bits cannot tell from nothing, and a byte more than those.
    const Sizes aSizes[] = {
        {0x8000, 0x8000, 1, 1, 1}, {0x10000, 0x4001, 1, 1, 1},        {0x10000, 0x10000, 0x10000, 0x4000, 1},
        {0x40000001, 1, 1, 1, 1},  {0x80000000, 0x80000000, 1, 1, 2}, {k_uiHuge, k_uiHuge, k_uiHuge, k_uiHuge, k_uiHuge},
        {0, 0, 0, 0x40000000, 1},  {1, 1, 1, 0x8000, 0x8000},
    };
    for (const Sizes& sizes : aSizes)
    {
        const NativeLoad load = loadAndCheck(CNativeFileBuilder()
                                                 .size(sizes.uiWidth, sizes.uiHeight, sizes.uiDepth)
                                                 .members(sizes.uiMembers)
                                                 .faces(sizes.uiFaces)
                                                 .data(Bytes(16, 1))
                                                 .bytes());
        EXPECT_FALSE(load.bGood);
        EXPECT_EQ(0u, load.texture.getDataSize()) << sizes.uiWidth << " by " << sizes.uiHeight;
    }
}

TEST(HostileNativeFile, SidesOfZeroCountAsOneAndCountsOfZeroAsNone)
{
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(loadAndCheck(CNativeFileBuilder().size(0, 0, 0).data({1, 2, 3, 4}).bytes()).texture));
    for (const CNativeFileBuilder& builder :
         {CNativeFileBuilder().levels(0), CNativeFileBuilder().faces(0), CNativeFileBuilder().members(0)})
        EXPECT_FALSE(loadAndCheck(CNativeFileBuilder(builder).data({1, 2, 3, 4}).bytes()).bGood);
}

TEST(HostileNativeFile, MoreThan32LevelsAreRefused)
{
    EXPECT_TRUE(loadAndCheck(CNativeFileBuilder().levels(32).data({1}).bytes()).bGood);
    EXPECT_EQ(0u, loadAndCheck(CNativeFileBuilder().levels(33).data({1}).bytes()).texture.getDataSize());
}

TEST(HostileNativeFile, AShortFileMayNotClaimMoreThan256MiB)
{
    // 8192 * 8192 * 4 bytes are 256 MiB.
    EXPECT_TRUE(loadAndCheck(CNativeFileBuilder().size(8192, 8192).data({1}).bytes()).bGood);
    EXPECT_EQ(0u, loadAndCheck(CNativeFileBuilder().size(8192, 8193).data({1}).bytes()).texture.getDataSize());
}

TEST(HostileNativeFile, ABlockThatClaimsMoreThanTheFileHoldsFailsWithoutTakingItsMemory)
{
    for (const uint32_t uiClaimed : {5u, 1000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFF3u, 0xFFFFFFF4u, k_uiHuge})
    {
        const Bytes bytes = CNativeFileBuilder().metaDataSize(k_uiHuge).block(1, 2, uiClaimed, {1, 2, 3, 4}).bytes();
        getLargestRequest() = 0;
        const NativeLoad load = loadAndCheck(bytes);
        EXPECT_FALSE(load.bGood);
        EXPECT_EQ(0u, load.texture.getDataSize());
        EXPECT_LT(getLargestRequest(), 4096u) << uiClaimed;
    }
}

TEST(HostileNativeFile, ALargeBlockThatOverrunsTheSectionIsDroppedUnread)
{
    // The file does hold the eight million bytes, the section is over after one.
    constexpr uint32_t uiClaimed = 8000000;
    const Bytes bytes = CNativeFileBuilder().metaDataSize(1).block(1, 2, uiClaimed, Bytes(uiClaimed, 5)).data({6, 7, 8, 9}).bytes();
    getLargestRequest() = 0;
    const NativeLoad load = loadAndCheck(bytes);
    EXPECT_LT(getLargestRequest(), 4096u);
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(0u, load.texture.getMetaDataSize());
    EXPECT_EQ((Bytes{1, 0, 0, 0}), dataOf(load.texture)); // right behind the header: the owner of the block that was dropped
}

TEST(HostileNativeFile, ASectionOfAllOnesEndsWithTheFile)
{
    // Every block is sound; the section never ends.
    const NativeLoad load = loadAndCheck(CNativeFileBuilder().metaDataSize(k_uiHuge).block(1, 2, {1}).block(1, 3, {2}).bytes());
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
    EXPECT_EQ(26u, load.texture.getMetaDataSize());
}

TEST(HostileNativeFile, ASectionOfLessThanABlocksRecordIsDroppedWholeOrFailsWithTheFile)
{
    for (uint32_t uiSize = 1; uiSize < 12; ++uiSize)
    {
        const Bytes twelve(12, 1); // a record that claims 0x01010101 bytes
        EXPECT_FALSE(loadAndCheck(CNativeFileBuilder().metaDataSize(uiSize).data(twelve).bytes()).bGood);
        const NativeLoad load = loadAndCheck(CNativeFileBuilder().metaDataSize(uiSize).block(1, 2, {9}).bytes());
        EXPECT_EQ((Bytes{1, 0, 0, 0}), dataOf(load.texture));
    }
}

TEST(HostileNativeFile, MoreBlocksThanAnybodyHasUseForFailInsteadOfTakingAnAge)
{
    CNativeFileBuilder builder;
    for (uint32_t i = 0; i < 32768; ++i)
        builder.block(i, 0, {1});
    EXPECT_TRUE(loadAndCheck(CNativeFileBuilder(builder).data({1, 2, 3, 4}).bytes()).bGood);

    const NativeLoad load = loadAndCheck(builder.block(k_uiHuge, 0, {1}).data({1, 2, 3, 4}).bytes());
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(HostileNativeFile, AnyByteChangedGivesATextureOrNone)
{
    const Bytes sound = CNativeFileBuilder().size(3, 2).levels(2).block(1, 2, {1, 2, 3}).data(Bytes(28, 1)).bytes();
    for (size_t uiByte = 0; uiByte < sound.size(); ++uiByte)
    {
        for (uint32_t uiBit = 0; uiBit < 8; ++uiBit)
        {
            SCOPED_TRACE(std::to_string(uiByte) + ", bit " + std::to_string(uiBit));
            Bytes bytes = sound;
            bytes[uiByte] = static_cast<uint8_t>(bytes[uiByte] ^ (1u << uiBit));
            loadAndCheck(bytes);
        }
    }
}
