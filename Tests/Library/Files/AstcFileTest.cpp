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
    for (uint32_t x = 0; x <= 16; ++x)
    {
        for (uint32_t y = 0; y <= 16; ++y)
        {
            for (uint32_t z = 0; z <= 16; ++z)
            {
                const auto isIt = [&](const Footprint& row) { return row.uiX == x && row.uiY == y && row.uiZ == z; };
                const auto* pRow = std::find_if(std::begin(k_aFootprints), std::end(k_aFootprints), isIt);
                const bool bKnown = pRow != std::end(k_aFootprints);
                const NativeLoad load =
                    loadASTC(fileOf({static_cast<uint8_t>(x), static_cast<uint8_t>(y), static_cast<uint8_t>(z), 0}, 1, 1, 1, Bytes(16, 9)));
                EXPECT_EQ(bKnown, load.bGood) << x << " by " << y << " by " << z;
                EXPECT_EQ(bKnown ? pRow->uiFormat : 51u, load.texture.getPixelFormat().getWord());
                EXPECT_EQ(bKnown ? 16u : 0u, load.texture.getDataSize());
            }
        }
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
