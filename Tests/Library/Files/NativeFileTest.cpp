#include "Files/NativeFile.h"

#include <filesystem>

#include <unistd.h>

#include <gtest/gtest.h>

#include "Support/FileSizeLimit.h"
#include "Support/NativeLoading.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;
namespace fs = std::filesystem;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiNative = CNativeFileBuilder::k_ui32Native;
constexpr uint32_t k_uiFont = 0x746E6F66; // "font"

const MetaDataBlock* findBlock(const CMOXTexture& texture, uint32_t uiFourCC, uint32_t uiKey)
{
    const auto* pBlocks = texture.getMetaData().find(uiFourCC);
    return pBlocks != nullptr ? pBlocks->find(uiKey) : nullptr;
}

Bytes blockData(const CMOXTexture& texture, uint32_t uiFourCC, uint32_t uiKey)
{
    const MetaDataBlock* pBlock = findBlock(texture, uiFourCC, uiKey);
    return pBlock != nullptr ? Bytes(pBlock->Data.get(), pBlock->Data.get() + pBlock->u32DataSize) : Bytes();
}

CMOXTexture onePixel()
{
    const Bytes pixel = {1, 2, 3, 4};
    return CMOXTexture(CMOXTextureHeader(k_RGBA8, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false), pixel.data());
}

} // namespace

TEST(NativeReader, ReadsEveryFieldOfTheHeader)
{
    const NativeLoad load = loadNative(CNativeFileBuilder()
                                           .flags(3)
                                           .format(0x0000080800006772) // "rg", 8 and 8 bits
                                           .colourSpace(1)
                                           .channelType(1)
                                           .size(4, 2, 3)
                                           .members(2)
                                           .faces(6)
                                           .levels(2)
                                           .data(Bytes(1, 7)));
    ASSERT_TRUE(load.bGood);
    const CMOXTexture& texture = load.texture;
    EXPECT_EQ(3u, texture.getFlags());
    EXPECT_EQ(layout("rg", 8, 8), texture.getPixelFormat());
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
    EXPECT_EQ(eCT_SignedNormalisedByte, texture.getChannelType());
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_EQ(2u, texture.getHeight());
    EXPECT_EQ(3u, texture.getDepth());
    EXPECT_EQ(2u, texture.getNumArrayMembers());
    EXPECT_EQ(6u, texture.getNumFaces());
    EXPECT_EQ(2u, texture.getNumMIPLevels());
    EXPECT_EQ(624u, texture.getDataSize()); // (4 * 2 * 3 + 2 * 1 * 1) pixels, 2 bytes, 6 faces, 2 members: 26 * 24
    EXPECT_EQ(7, texture.getDataPtr()[0]);
}

TEST(NativeReader, ReadsANumberedFormat)
{
    const NativeLoad load = loadNative(CNativeFileBuilder().format(ePF_BC1).size(4, 4).data(Bytes(8, 1)));
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ(MOXPixelWord(ePF_BC1), load.texture.getPixelFormat());
    EXPECT_EQ(8u, load.texture.getBlockSize());
}

TEST(NativeReader, AnEmptyFileFails)
{
    const NativeLoad load = loadNative(Bytes());
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(NativeReader, NoFileFails)
{
    CMOXTexture texture;
    EXPECT_FALSE(readNative(nullptr, texture));
    EXPECT_EQ(0u, texture.getDataSize());
}

TEST(NativeReader, AFileThatCannotBeSoughtInFails)
{
    const Bytes bytes = CNativeFileBuilder().data({1, 2, 3, 4}).bytes();
    int aiEnds[2];
    ASSERT_EQ(0, ::pipe(aiEnds));
    ASSERT_EQ(static_cast<ssize_t>(bytes.size()), ::write(aiEnds[1], bytes.data(), bytes.size()));
    std::FILE* pFile = ::fdopen(aiEnds[0], "rb");
    CMOXTexture texture;
    EXPECT_FALSE(readNative(pFile, texture));
    EXPECT_EQ(0u, texture.getDataSize());
    std::fclose(pFile);
    ::close(aiEnds[1]);
}

TEST(NativeReader, AFolderFails)
{
    const CTemporaryFolder folder;
    std::FILE* pFile = std::fopen(folder.path().c_str(), "rb"); // which the system allows
    ASSERT_NE(nullptr, pFile);
    CMOXTexture texture;
    EXPECT_FALSE(readNative(pFile, texture));
    EXPECT_EQ(0u, texture.getDataSize());
    std::fclose(pFile);
}

TEST(NativeReader, OnlyTheLittleEndianVersionWordIsKnown)
{
    for (const uint32_t uiWord : {0u, 0x4D4F5803u, 0x02584F4Du, 0x04584F4Du, 0x21584F4Du, 51u})
    {
        const NativeLoad load = loadNative(CNativeFileBuilder().version(uiWord).data({1, 2, 3, 4}));
        EXPECT_FALSE(load.bGood) << uiWord;
        EXPECT_EQ(0u, load.texture.getDataSize()) << uiWord;
    }
}

TEST(NativeReader, StartsAtTheStartWhateverThePosition)
{
    const Bytes bytes = CNativeFileBuilder().data({1, 2, 3, 4}).bytes();
    const CMemoryFile file(bytes);
    std::fseek(file.get(), 20, SEEK_SET);
    CMOXTexture texture;
    EXPECT_TRUE(readNative(file.get(), texture));
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(texture));
}

TEST(NativeReader, AMetaDataSizeOfZeroReadsNoBlock)
{
    // What follows would be a fine block.
    const NativeLoad load = loadNative(CNativeFileBuilder().metaDataSize(0).block(k_uiFont, 1, {5}));
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ(0u, load.texture.getMetaData().getCount());
    EXPECT_EQ((Bytes{'f', 'o', 'n', 't'}), dataOf(load.texture));
}

TEST(NativeReader, ReadsBlocksOfManyOwnersInTheirOrder)
{
    const NativeLoad load = loadNative(
        CNativeFileBuilder().block(k_uiFont, 9, {1, 2, 3}).block(k_uiNative, 3, {0, 2, 0}).block(k_uiFont, 1, {4}).data({1, 2, 3, 4}));
    ASSERT_TRUE(load.bGood);
    const MetaDataMap& metaData = load.texture.getMetaData();
    ASSERT_EQ(2u, metaData.getCount());
    EXPECT_EQ(k_uiFont, metaData.getKey(0));
    ASSERT_EQ(2u, metaData.getValue(0).getCount());
    EXPECT_EQ(9u, metaData.getValue(0).getKey(0));
    EXPECT_EQ((Bytes{1, 2, 3}), blockData(load.texture, k_uiFont, 9));
    EXPECT_EQ((Bytes{4}), blockData(load.texture, k_uiFont, 1));
    EXPECT_EQ(2u, load.texture.getOrientation(eAxisY));
    EXPECT_EQ(43u, load.texture.getMetaDataSize()); // 3 * 12 + 3 + 3 + 1
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
}

TEST(NativeReader, ABlockOfNoDataFailsTheLoadAndLeavesNoData)
{
    const NativeLoad load = loadNative(CNativeFileBuilder().block(k_uiFont, 1, {7}).block(k_uiFont, 2, Bytes()).data({1, 2, 3, 4}));
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
    EXPECT_EQ(nullptr, load.texture.getDataPtr());
    EXPECT_EQ(13u, load.texture.getMetaDataSize()) << "of the block before it";
}

TEST(NativeReader, ABlockThatOverrunsTheSectionIsDroppedAndDataStartsBehindTheBlocksKept)
{
    // The section is told as 20 bytes: the first block of 13 fits, the second would end at 28.
    const NativeLoad load =
        loadNative(CNativeFileBuilder().metaDataSize(20).block(k_uiFont, 1, {7}).block(k_uiNative, 3, {0, 2, 0}).data({1, 2, 3, 4}));
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{7}), blockData(load.texture, k_uiFont, 1));
    EXPECT_EQ(nullptr, findBlock(load.texture, k_uiNative, 3));
    EXPECT_EQ(13u, load.texture.getMetaDataSize());
    EXPECT_EQ((Bytes{'M', 'O', 'X', 3}), dataOf(load.texture)) << "the dropped block's own bytes";
}

TEST(NativeReader, TheFirstBlockMayBeTheOneThatIsDropped)
{
    const NativeLoad load = loadNative(CNativeFileBuilder().metaDataSize(1).block(k_uiFont, 1, {7}).data({1, 2, 3, 4}));
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ(0u, load.texture.getMetaData().getCount());
    EXPECT_EQ(0u, load.texture.getMetaDataSize());
    EXPECT_EQ((Bytes{'f', 'o', 'n', 't'}), dataOf(load.texture));
}

TEST(NativeReader, AKeyThatComesTwiceKeepsTheLaterBlockAndTheSizeOfWhatIsHeld)
{
    const NativeLoad load = loadNative(CNativeFileBuilder().block(k_uiFont, 1, {7, 8, 9}).block(k_uiFont, 1, {5}).data({1, 2, 3, 4}));
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{5}), blockData(load.texture, k_uiFont, 1));
    EXPECT_EQ(13u, load.texture.getMetaDataSize()) << "12 + 1: what saving again will write";
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture)) << "the data stands behind both";
}

TEST(NativeReader, AfterAKeyThatComesTwiceTheTextureIsSavedRight)
{
    const NativeLoad load = loadNative(CNativeFileBuilder().block(k_uiFont, 1, {7, 8, 9}).block(k_uiFont, 1, {5}).data({1, 2, 3, 4}));
    const CTemporaryFolder folder;
    ASSERT_TRUE(writeNative(load.texture, folder.path("a.mox")));
    EXPECT_EQ(CNativeFileBuilder().block(k_uiFont, 1, {5}).data({1, 2, 3, 4}).bytes(), readBytes(folder.path("a.mox")));
}

TEST(NativeReader, ANativeBlockShorterThanItsRecordReadsAsZeros)
{
    const NativeLoad load =
        loadNative(CNativeFileBuilder().block(k_uiNative, 3, {1}).block(k_uiNative, 4, {9, 0, 0, 0, 8}).data({1, 2, 3, 4}));
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ(1u, load.texture.getOrientation(eAxisX));
    EXPECT_EQ(0u, load.texture.getOrientation(eAxisY));
    uint32_t x = 1;
    uint32_t y = 1;
    uint32_t z = 1;
    load.texture.getBorder(x, y, z);
    EXPECT_EQ(9u, x);
    EXPECT_EQ(8u, y);
    EXPECT_EQ(0u, z);
}

TEST(NativeReader, BytesBehindTheDataAreOfNoConcern)
{
    const NativeLoad load = loadNative(CNativeFileBuilder().data({1, 2, 3, 4, 5, 6}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
}

TEST(NativeReader, ShortDataLoadsAndTheRestIsZero)
{
    const NativeLoad load = loadNative(CNativeFileBuilder().size(2, 1).data({1, 2, 3}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{1, 2, 3, 0, 0, 0, 0, 0}), dataOf(load.texture));
}

TEST(NativeReader, NoByteOfDataIsAFailureThoughTheTextureStands)
{
    const NativeLoad load = loadNative(CNativeFileBuilder());
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ((Bytes{0, 0, 0, 0}), dataOf(load.texture));
}

TEST(NativeReader, AFormatThatMeasuresNothingFails)
{
    for (const uint64_t uiFormat : {uint64_t{ePF_Count}, uint64_t{ePF_BC7}, uint64_t{0xFFFFFFFF}})
    {
        const NativeLoad load = loadNative(CNativeFileBuilder().format(uiFormat).data({1, 2, 3, 4}));
        EXPECT_FALSE(load.bGood) << uiFormat;
        EXPECT_EQ(0u, load.texture.getDataSize()) << uiFormat;
    }
}

TEST(NativeReader, TheFirstWordTellsTheOlderHeadersOf44And52Bytes)
{
    // Size, height, width, levels below the top, type 18, data size, bits, four masks; the longer one has a magic word and surfaces.
    const std::vector<uint32_t> words = {44, 1, 2, 0, 18, 8, 32, 0, 0, 0, 0};
    std::vector<uint32_t> longer = words;
    longer.front() = 52;
    longer.insert(longer.end(), {0x21584F4D, 1});
    for (const std::vector<uint32_t>& header : {words, longer})
    {
        Bytes bytes(4 * header.size());
        for (size_t i = 0; i < header.size(); ++i)
            storeLE(&bytes[4 * i], header[i]);
        const NativeLoad empty = loadNative(bytes);
        EXPECT_FALSE(empty.bGood);
        EXPECT_EQ(Bytes(8), dataOf(empty.texture)); // as of a file with today's header

        for (uint8_t i = 1; i <= 8; ++i)
            bytes.push_back(i);
        const NativeLoad load = loadNative(bytes);
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(2u, load.texture.getWidth());
        EXPECT_EQ((Bytes{1, 2, 3, 4, 5, 6, 7, 8}), dataOf(load.texture));

        bytes.resize(40);
        EXPECT_EQ(0u, loadNative(bytes).texture.getDataSize()); // ends in the header
    }
}

TEST(NativeWriter, ABlockOfMOXTCWithoutMetaDataIs84Bytes)
{
    // The format takes no surface below 8 by 8 pixels: 64 pixels of 4 bits.
    const CMOXTexture texture(CMOXTextureHeader(ePF_MOXTC_4bpp_RGBA, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    const CTemporaryFolder folder;
    ASSERT_TRUE(writeNative(texture, folder.path("a.mox")));
    EXPECT_EQ(52u + 32u, fs::file_size(folder.path("a.mox")));
}

TEST(NativeWriter, WritesTheBytesOfTheFormat)
{
    CMOXTexture texture = onePixel();
    texture.setOrientation(2);
    texture.addMetaData(MetaDataBlock(k_uiFont, 8, "xy", 2));
    texture.setBumpMap(1.0f, "xyz");
    const CTemporaryFolder folder;
    ASSERT_TRUE(writeNative(texture, folder.path("a.mox")));
    const Bytes expected = CNativeFileBuilder()
                               .block(k_uiNative, 3, {0, 2, 0})
                               .block(k_uiNative, 1, {0, 0, 0x80, 0x3F, 'x', 'y', 'z', 0})
                               .block(k_uiFont, 8, {'x', 'y'})
                               .data({1, 2, 3, 4})
                               .bytes();
    EXPECT_EQ(expected, readBytes(folder.path("a.mox")));
}

TEST(NativeWriter, TheMetaDataSizeIsWrittenAsTheHeaderTellsIt)
{
    CMOXTexture texture = onePixel();
    texture.addMetaData(MetaDataBlock(k_uiFont, 1, "abc", 3));
    texture.addMetaData(MetaDataBlock(k_uiFont, 1, "abc", 3)); // counted twice on purpose
    const CTemporaryFolder folder;
    ASSERT_TRUE(writeNative(texture, folder.path("a.mox")));
    const Bytes bytes = readBytes(folder.path("a.mox"));
    EXPECT_EQ(52u + 15u + 4u, bytes.size());
    EXPECT_EQ(30, bytes[48]);
}

TEST(NativeWriter, APathThatCannotBeOpenedFails)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(writeNative(onePixel(), folder.path("missing/a.mox")));
    EXPECT_FALSE(writeNative(onePixel(), folder.path()));
    EXPECT_FALSE(writeNative(onePixel(), ""));
}

TEST(NativeWriter, AMetaDataBlockOfNoBytesFailsAndTheFileIsRemoved)
{
    CMOXTexture texture = onePixel();
    texture.addMetaData(MetaDataBlock(k_uiFont, 1, nullptr, 0));
    const CTemporaryFolder folder;
    EXPECT_FALSE(writeNative(texture, folder.write("a.mox", "earlier")));
    EXPECT_EQ(0u, folder.count());
}

TEST(NativeWriter, ATextureWithoutDataFailsAndTheFileIsRemoved)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(writeNative(CMOXTexture(), folder.path("a.mox")));
    EXPECT_EQ(0u, folder.count());
}

TEST(NativeWriter, AHeaderThatMeasuresMoreThanTheBlockFails)
{
    CMOXTexture texture = onePixel();
    texture.setWidth(1000000);
    const CTemporaryFolder folder;
    EXPECT_FALSE(writeNative(texture, folder.path("a.mox")));
    texture.setHeight(1 << 30); // 4 * 10^6 * 2^30 bytes: cut to 32 bits, 0
    EXPECT_FALSE(writeNative(texture, folder.path("a.mox")));
    EXPECT_EQ(0u, folder.count());
}

TEST(NativeWriter, AFullDiskRemovesTheFile)
{
    CMOXTexture texture(CMOXTextureHeader(k_RGBA8, 64, 64, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    texture.setOrientation(1);
    const CTemporaryFolder folder;
    // In the header, in the metadata, in the data, and one byte short of all: 52 + 15 + 16384.
    for (const rlim_t uiRoom : {0u, 51u, 60u, 8192u, 16450u})
    {
        const CFileSizeLimit limit(uiRoom);
        EXPECT_FALSE(writeNative(texture, folder.path("a.mox"))) << uiRoom;
        EXPECT_EQ(0u, folder.count()) << uiRoom;
    }
    const CFileSizeLimit limit(16451);
    EXPECT_TRUE(writeNative(texture, folder.path("a.mox")));
}

TEST(NativeWriter, AFileThatFillsTheDiskOnlyOnClosingIsRemoved)
{
    // So short that all of it is kept back until then.
    const CTemporaryFolder folder;
    const CFileSizeLimit limit(40);
    EXPECT_FALSE(writeNative(onePixel(), folder.path("a.mox")));
    EXPECT_EQ(0u, folder.count());
}

TEST(NativeWriter, ADeviceThatWasWrittenToIsNotRemoved)
{
    const CTemporaryFolder folder;
    fs::create_symlink("/dev/full", folder.path("a.mox"));
    EXPECT_FALSE(writeNative(onePixel(), folder.path("a.mox")));
    EXPECT_TRUE(fs::is_symlink(folder.path("a.mox")));
    EXPECT_TRUE(fs::exists("/dev/full"));
}
