#include "Files/AstcFile.h"

#include <algorithm>
#include <istream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "Core/OneShotReadBuf.h"
#include "Files/LoadTexture.h"
#include "Library/Files/LargestRequest.h"
#include "Support/FileSizeLimit.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

struct Footprint
{
    uint8_t uiX, uiY, uiZ;
    uint32_t uiFormat;
};

constexpr Footprint k_aFootprints[] = {
    {4, 4, 1, 27},  {5, 4, 1, 28},  {5, 5, 1, 29},  {6, 5, 1, 30},   {6, 6, 1, 31},   {8, 5, 1, 32},   {8, 6, 1, 33}, {8, 8, 1, 34},
    {10, 5, 1, 35}, {10, 6, 1, 36}, {10, 8, 1, 37}, {10, 10, 1, 38}, {12, 10, 1, 39}, {12, 12, 1, 40}, {3, 3, 3, 41}, {4, 3, 3, 42},
    {4, 4, 3, 43},  {4, 4, 4, 44},  {5, 4, 4, 45},  {5, 5, 4, 46},   {5, 5, 5, 47},   {6, 5, 5, 48},   {6, 6, 5, 49}, {6, 6, 6, 50},
};

/// The format number of a block size, by the rules for its three numbers one after the other; 51 for none.
uint32_t formatByRules(uint32_t x, uint32_t y, uint32_t z)
{
    const uint32_t uiXYZ = 10000 * x + 100 * y + z;
    if (x < 3 || x > 12 || y < 3 || y > 12 || (z != 1 && (z < 3 || z > 12)))
        return 51;
    if (z == 1)
    {
        switch (x)
        {
        case 4:
            return y == 4 ? 27 : 51;
        case 5:
            return y == 4 ? 28 : y == 5 ? 29 : 51;
        case 6:
            return y == 5 ? 30 : y == 6 ? 31 : 51;
        case 8:
            return y == 5 ? 32 : y == 6 ? 33 : y == 8 ? 34 : 51;
        case 10:
            return y == 5 ? 35 : y == 6 ? 36 : y == 8 ? 37 : y == 10 ? 38 : 51;
        case 12:
            return y == 10 ? 39 : y == 12 ? 40 : 51;
        default:
            return 51;
        }
    }
    switch (uiXYZ)
    {
    case 30303:
        return 41;
    case 40303:
        return 42;
    case 40403:
        return 43;
    case 40404:
        return 44;
    case 50404:
        return 45;
    case 50504:
        return 46;
    case 50505:
        return 47;
    case 60505:
        return 48;
    case 60605:
        return 49;
    case 60606:
        return 50;
    default:
        return 51;
    }
}

Bytes fileOf(const Footprint& block, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth, const Bytes& data = {})
{
    Bytes bytes = {0x13, 0xAB, 0xA1, 0x5C, block.uiX, block.uiY, block.uiZ};
    for (const uint32_t uiSize : {uiWidth, uiHeight, uiDepth})
        for (const uint32_t uiShift : {0u, 8u, 16u})
            bytes.push_back(static_cast<uint8_t>(uiSize >> uiShift));
    bytes.insert(bytes.end(), data.begin(), data.end());
    return bytes;
}

NativeLoad loadASTC(const Bytes& bytes)
{
    OneShotReadBuf buffer(bytes);
    std::istream stream(&buffer);
    NativeLoad result;
    result.bGood = readASTC(stream, result.texture);
    EXPECT_EQ(result.texture.getDataSize(), result.texture.getBlockSize());
    return result;
}

CMOXTextureHeader shapeOf(MOXPixelWord format, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth = 1, uint32_t uiLevels = 1)
{
    return {format, uiHeight, uiWidth, uiDepth, uiLevels, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false};
}

} // namespace

TEST(AstcReader, AFileOfOneBlockGivesTheBlockAndOtherwiseADefaultHeader)
{
    const Bytes data = CSeededRandom(1).bytes(16);
    const NativeLoad load = loadASTC(fileOf({6, 5, 1, 0}, 3, 2, 1, data));
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ((PixelEncoding{ePF_ASTC_6x5}), load.texture.getEncoding());
    EXPECT_EQ(3u, load.texture.getWidth());
    EXPECT_EQ(2u, load.texture.getHeight());
    EXPECT_EQ(1u, load.texture.getDepth());
    EXPECT_EQ(1u, load.texture.getNumMIPLevels());
    EXPECT_EQ(1u, load.texture.getNumArrayMembers());
    EXPECT_EQ(1u, load.texture.getNumFaces());
    EXPECT_EQ(data, dataOf(load.texture));
}

TEST(AstcReader, EveryBlockSizeOfAByteEachIsAFormatOrRefused)
{
    uint32_t uiKnownCount = 0;
    for (uint32_t x = 0; x <= 17; ++x)
    {
        for (uint32_t y = 0; y <= 17; ++y)
        {
            for (uint32_t z = 0; z <= 17; ++z)
            {
                const uint32_t uiFormat = formatByRules(x, y, z);
                uiKnownCount += uiFormat != 51;
                const NativeLoad load =
                    loadASTC(fileOf({static_cast<uint8_t>(x), static_cast<uint8_t>(y), static_cast<uint8_t>(z), 0}, 1, 1, 1, Bytes(16, 9)));
                EXPECT_EQ(uiFormat != 51, load.bGood) << x << " by " << y << " by " << z;
                EXPECT_EQ(uiFormat, load.texture.getPixelFormat().getWord()) << x << " by " << y << " by " << z;
                EXPECT_EQ(uiFormat != 51 ? 16u : 0u, load.texture.getDataSize());
            }
        }
    }
    EXPECT_EQ(24u, uiKnownCount);
}

TEST(AstcReader, BlockSizesOfTheUpperHalfOfAByteAreRefused)
{
    // Each equals a known size in its lower bits.
    for (const Footprint& block : k_aFootprints)
    {
        for (const uint32_t uiBit : {0x10u, 0x20u, 0x40u, 0x80u})
        {
            for (size_t uiByte = 4; uiByte < 7; ++uiByte)
            {
                Bytes bytes = fileOf(block, 1, 1, 1, Bytes(16, 9));
                bytes[uiByte] = static_cast<uint8_t>(bytes[uiByte] | uiBit);
                EXPECT_FALSE(loadASTC(bytes).bGood) << block.uiFormat;
            }
        }
    }
}

TEST(AstcReader, EveryFormatHasTheBlockSizesOfItsNumber)
{
    for (const Footprint& block : k_aFootprints)
    {
        EXPECT_EQ(block.uiFormat, formatByRules(block.uiX, block.uiY, block.uiZ));
        // One pixel more than a block on each side: two blocks on each, also where they are flat.
        const Bytes data = CSeededRandom(block.uiFormat).bytes(8 * 16);
        const NativeLoad load = loadASTC(fileOf(block, block.uiX + 1u, block.uiY + 1u, block.uiZ + 1u, data));
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(block.uiFormat, load.texture.getPixelFormat().getWord());
        EXPECT_EQ(data, dataOf(load.texture));
    }
}

TEST(AstcReader, Block4By3By1IsRefused)
{
    const NativeLoad load = loadASTC(fileOf({4, 3, 1, 0}, 4, 4, 1, Bytes(64, 1)));
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(AstcReader, Block3By3By3IsFormat41)
{
    EXPECT_EQ(MOXPixelWord(uint64_t{41}), loadASTC(fileOf({3, 3, 3, 0}, 3, 3, 3, Bytes(16, 1))).texture.getPixelFormat());
}

TEST(AstcReader, SizesAreThreeBytesLittleEndian)
{
    // 0x010203 = 66051 pixels are 5505 blocks of 12.
    Bytes bytes = {0x13, 0xAB, 0xA1, 0x5C, 12, 12, 1, 3, 2, 1, 12, 0, 0, 1, 0, 0};
    bytes.resize(16 + 5505 * 16, 7);
    const NativeLoad load = loadASTC(bytes);
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(0x010203u, load.texture.getWidth());
    EXPECT_EQ(12u, load.texture.getHeight());
    EXPECT_EQ(5505u * 16, load.texture.getDataSize());
}

TEST(AstcReader, BlocksAtTheEdgesAreWhole)
{
    // 9 by 7 by 4 pixels in blocks of 4 by 3 by 3: 3 by 3 by 2 blocks.
    const Bytes data = CSeededRandom(2).bytes(18 * 16);
    const NativeLoad load = loadASTC(fileOf({4, 3, 3, 0}, 9, 7, 4, data));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(4u, load.texture.getDepth());
    EXPECT_EQ(data, dataOf(load.texture));
}

TEST(AstcReader, SlicesOfFlatBlocksAreReadToo)
{
    const Bytes data = CSeededRandom(3).bytes(3 * 16);
    const NativeLoad load = loadASTC(fileOf({4, 4, 1, 0}, 4, 4, 3, data));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(data, dataOf(load.texture));
}

TEST(AstcReader, EveryByteOfTheMagicNumberCounts)
{
    const Bytes sound = fileOf({4, 4, 1, 0}, 4, 4, 1, Bytes(16, 1));
    for (size_t i = 0; i < 4; ++i)
    {
        Bytes bytes = sound;
        bytes[i] = static_cast<uint8_t>(bytes[i] + 1);
        EXPECT_FALSE(loadASTC(bytes).bGood);
    }
    EXPECT_TRUE(loadASTC(sound).bGood);
}

TEST(AstcReader, CutAtEveryLengthItFailsWithZerosForWhatIsMissing)
{
    const Bytes data = CSeededRandom(4).bytes(2 * 16);
    const Bytes whole = fileOf({4, 4, 1, 0}, 8, 4, 1, data);
    for (size_t uiLength = 0; uiLength < whole.size(); ++uiLength)
    {
        SCOPED_TRACE(uiLength);
        const NativeLoad load = loadASTC(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(uiLength)));
        EXPECT_FALSE(load.bGood);
        Bytes expected;
        if (uiLength >= 16)
        {
            expected = data;
            std::fill(expected.begin() + static_cast<std::ptrdiff_t>(uiLength - 16), expected.end(), uint8_t{0});
        }
        EXPECT_EQ(expected, dataOf(load.texture));
    }
}

TEST(AstcReader, ThroughTheStreamOfTheLoaderAShortFileIsAFailureToo)
{
    const Bytes bytes = fileOf({4, 4, 1, 0}, 4, 4, 1, Bytes(15, 1));
    const CMemoryFile file(bytes);
    CMOXTexture texture;
    EXPECT_FALSE(readThroughStream(file.get(), readASTC, texture));
    EXPECT_EQ(16u, texture.getDataSize());
}

TEST(AstcReader, SizesOfAllOnesAreRefusedWithoutTakingMemory)
{
    for (const Footprint& block : {Footprint{4, 4, 1, 0}, Footprint{12, 12, 1, 0}, Footprint{6, 6, 6, 0}})
    {
        getLargestRequest() = 0;
        const NativeLoad load = loadASTC(fileOf(block, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, Bytes(64, 1)));
        EXPECT_FALSE(load.bGood);
        EXPECT_EQ(0u, load.texture.getDataSize());
        EXPECT_LT(getLargestRequest(), 4096u);
    }
}

TEST(AstcReader, SizesThatComeOutSmallIn32BitsAreRefused)
{
    // 0x100000 by 0x10 by 0x10 blocks of 16 bytes, with slices of 4 by 4 pixels: 2^32.
    const NativeLoad load = loadASTC(fileOf({4, 4, 1, 0}, 0x400000, 0x40, 0x10, Bytes(64, 1)));
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(AstcReader, SidesOfZeroCountAsOnePixel)
{
    const NativeLoad load = loadASTC(fileOf({4, 4, 1, 0}, 0, 0, 0, Bytes(16, 3)));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(1u, load.texture.getWidth());
    EXPECT_EQ(1u, load.texture.getHeight());
    EXPECT_EQ(1u, load.texture.getDepth());
    EXPECT_EQ(Bytes(16, 3), dataOf(load.texture));
}

TEST(AstcReader, WhatStandsBehindTheDataIsLeftAlone)
{
    const NativeLoad load = loadASTC(fileOf({4, 4, 1, 0}, 4, 4, 1, Bytes(40, 3)));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(Bytes(16, 3), dataOf(load.texture));
}

TEST(AstcReader, ThroughThePathOfATextureTheExtensionDecides)
{
    const CTemporaryFolder folder;
    const Bytes bytes = fileOf({6, 6, 1, 0}, 7, 6, 1, CSeededRandom(8).bytes(32));
    for (const char* strName : {"a.astc", "b.ASTC", "c.mox.Astc"})
    {
        const CMOXTexture texture(folder.write(strName, bytes));
        EXPECT_EQ(MOXPixelWord(ePF_ASTC_6x6), texture.getPixelFormat()) << strName;
        EXPECT_EQ(32u, texture.getDataSize()) << strName;
    }
    for (const char* strName : {"a.mox", "a.ast", "a.astcx", "astc"})
        EXPECT_EQ(0u, CMOXTexture(folder.write(strName, bytes)).getDataSize()) << strName;
    EXPECT_EQ(0u, CMOXTexture(folder.write("cut.astc", Bytes(bytes.begin(), bytes.begin() + 15))).getDataSize());
}

TEST(AstcReader, AnyByteChangedGivesATextureOrNone)
{
    const Bytes sound = fileOf({4, 4, 3, 0}, 5, 4, 3, Bytes(32, 1));
    for (size_t uiByte = 0; uiByte < 16; ++uiByte)
    {
        for (uint32_t uiBit = 0; uiBit < 8; ++uiBit)
        {
            SCOPED_TRACE(std::to_string(uiByte) + ", bit " + std::to_string(uiBit));
            Bytes bytes = sound;
            bytes[uiByte] = static_cast<uint8_t>(bytes[uiByte] ^ (1u << uiBit));
            const NativeLoad load = loadASTC(bytes);
            EXPECT_TRUE(!load.bGood || load.texture.getDataSize() != 0);
        }
    }
}

TEST(AstcWriter, WritesEveryBlockSizeAndReadsItBack)
{
    const CTemporaryFolder folder;
    for (const Footprint& block : k_aFootprints)
    {
        const CMOXTextureHeader header = shapeOf(MOXPixelWord(uint64_t{block.uiFormat}), 13, 7, 5);
        const Bytes data = CSeededRandom(5).bytes(header.getDataSize());
        ASSERT_TRUE(writeASTC(CMOXTexture(header, data.data()), folder.path("a.astc")));
        const Bytes bytes = readBytes(folder.path("a.astc"));
        EXPECT_EQ(fileOf(block, 13, 7, 5, data), bytes) << block.uiFormat;
        EXPECT_EQ(data, dataOf(loadASTC(bytes).texture));
    }
}

TEST(AstcWriter, WidthIsWrittenLowestByteFirst)
{
    const CTemporaryFolder folder;
    ASSERT_TRUE(writeASTC(CMOXTexture(shapeOf(ePF_ASTC_12x12, 0x010203, 1)), folder.path("a.astc")));
    Bytes bytes = readBytes(folder.path("a.astc"));
    ASSERT_EQ(16u + 5505 * 16, bytes.size());
    bytes.resize(16);
    EXPECT_EQ((Bytes{0x13, 0xAB, 0xA1, 0x5C, 12, 12, 1, 3, 2, 1, 1, 0, 0, 1, 0, 0}), bytes);
}

TEST(AstcWriter, AFormatWithoutBlocksHasBlockSizesOfZero)
{
    const CTemporaryFolder folder;
    const Bytes data = {1, 2, 3, 4, 5, 6, 7, 8};
    ASSERT_TRUE(writeASTC(CMOXTexture(shapeOf(k_RGBA8, 2, 1), data.data()), folder.path("a.astc")));
    EXPECT_EQ(fileOf({0, 0, 0, 0}, 2, 1, 1, data), readBytes(folder.path("a.astc")));
    ASSERT_TRUE(writeASTC(CMOXTexture(shapeOf(ePF_ETC1, 4, 4), data.data()), folder.path("a.astc")));
    EXPECT_EQ(fileOf({0, 0, 0, 0}, 4, 4, 1, data), readBytes(folder.path("a.astc")));
}

TEST(AstcWriter, OnlyTheFirstSurfaceGoesOut)
{
    const CMOXTextureHeader header(ePF_ASTC_4x4, 8, 8, 1, 4, 2, 6, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    const Bytes data = CSeededRandom(6).bytes(header.getDataSize());
    const CTemporaryFolder folder;
    ASSERT_TRUE(writeASTC(CMOXTexture(header, data.data()), folder.path("a.astc")));
    EXPECT_EQ(fileOf({4, 4, 1, 0}, 8, 8, 1, Bytes(data.begin(), data.begin() + 64)), readBytes(folder.path("a.astc")));
}

TEST(AstcWriter, WhatTheHeaderHasNoRoomForFailsAndNoFileRemains)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(writeASTC(CMOXTexture(shapeOf(ePF_ASTC_12x12, 0x1000000, 1)), folder.write("a.astc", "earlier")));
    EXPECT_EQ(0u, folder.count());
    EXPECT_TRUE(writeASTC(CMOXTexture(shapeOf(ePF_ASTC_12x12, 0xFFFFFF, 1)), folder.path("a.astc")));
    EXPECT_EQ(0xFFFFFFu, CMOXTexture(folder.path("a.astc")).getWidth());
}

TEST(AstcWriter, WhatCannotBeWrittenFailsAndNoFileRemains)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(writeASTC(CMOXTexture(), folder.path("a.astc")));
    EXPECT_FALSE(writeASTC(CMOXTexture(shapeOf(ePF_ASTC_4x4, 4, 4)), folder.path("missing/a.astc")));

    CMOXTexture grown(shapeOf(ePF_ASTC_4x4, 4, 4));
    grown.setWidth(4000);
    EXPECT_FALSE(writeASTC(grown, folder.path("a.astc")));

    for (const rlim_t uiRoom : {0u, 15u, 31u})
    {
        const CFileSizeLimit limit(uiRoom);
        EXPECT_FALSE(writeASTC(CMOXTexture(shapeOf(ePF_ASTC_4x4, 4, 4)), folder.path("a.astc")));
    }
    EXPECT_EQ(0u, folder.count());
}
