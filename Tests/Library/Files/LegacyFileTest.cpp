#include "Files/LegacyFile.h"

#include <string>

#include <gtest/gtest.h>

#include "Core/ByteOrder.h"
#include "Support/FileSizeLimit.h"
#include "Support/LegacyFileBuilder.h"
#include "Support/MemoryFile.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiHuge = 0xFFFFFFFF;
constexpr uint32_t k_uiRGBA8 = k_uiLegacyRGBA8;

/// Through the reader of native files, which tells them by their first word.
NativeLoad loadLegacy(const Bytes& bytes)
{
    NativeLoad load = loadNative(bytes);
    EXPECT_EQ(load.texture.getDataSize(), load.texture.getBlockSize());
    EXPECT_EQ(load.texture.getMetaDataSize(), load.texture.sumMetaDataSize());
    return load;
}

NativeLoad loadLegacy(const CLegacyFileBuilder& builder)
{
    return loadLegacy(builder.bytes());
}

CMOXTexture textureOf(MOXPixelWord format, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiLevels = 1, uint32_t uiMembers = 1,
                      uint32_t uiFaces = 1)
{
    const CMOXTextureHeader header(format, uiHeight, uiWidth, 1, uiLevels, uiMembers, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte,
                                   false);
    return CMOXTexture(header, CSeededRandom(7).bytes(header.getDataSize()).data());
}

uint32_t wordAt(const Bytes& bytes, size_t uiOffset)
{
    return loadLE<uint32_t>(&bytes[uiOffset]);
}

} // namespace

TEST(LegacyReader, TheShorterHeaderOfAPixel)
{
    const NativeLoad load = loadLegacy(CLegacyFileBuilder(44).data({1, 2, 3, 4}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
    EXPECT_EQ((PixelEncoding{k_RGBA8}), load.texture.getEncoding());
    EXPECT_EQ(1u, load.texture.getNumArrayMembers());
    EXPECT_EQ(0u, load.texture.getMetaDataSize());
}

TEST(LegacyReader, HeightStandsBeforeWidthAndMIPMapsAreCountedBelowTheTop)
{
    // 4 by 2 and 2 by 1 pixels of 4 bytes.
    const Bytes data = CSeededRandom(1).bytes(40);
    for (const uint32_t uiHeaderSize : {44u, 52u})
    {
        const NativeLoad load = loadLegacy(CLegacyFileBuilder(uiHeaderSize).size(4, 2).levelsBelow(1).data(data));
        ASSERT_TRUE(load.bGood);
        EXPECT_EQ(4u, load.texture.getWidth());
        EXPECT_EQ(2u, load.texture.getHeight());
        EXPECT_EQ(1u, load.texture.getDepth());
        EXPECT_EQ(2u, load.texture.getNumMIPLevels());
        EXPECT_EQ(data, dataOf(load.texture));
    }
}

TEST(LegacyReader, Type12IsFormat1)
{
    // The smallest surface is 16 by 8 pixels of 2 bits.
    const NativeLoad load = loadLegacy(CLegacyFileBuilder().flags(12).data(Bytes(32, 5)));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(MOXPixelWord(ePF_MOXTC_2bpp_RGBA), load.texture.getPixelFormat());
    EXPECT_EQ(Bytes(32, 5), dataOf(load.texture));
}

TEST(LegacyReader, ATypeThatNobodyKnowsIsFormat51WithoutData)
{
    for (const uint32_t uiType : {14u, 63u, 143u, 182u, 183u, 255u})
    {
        const NativeLoad load = loadLegacy(CLegacyFileBuilder().flags(uiType).data({1, 2, 3, 4}));
        EXPECT_FALSE(load.bGood);
        EXPECT_EQ(MOXPixelWord(ePF_Count), load.texture.getPixelFormat());
        EXPECT_EQ(14u, load.texture.getChannelType());
        EXPECT_EQ(0u, load.texture.getDataSize());
    }
}

TEST(LegacyReader, SpaceAndPreMultiplicationComeFromTheType)
{
    const NativeLoad load = loadLegacy(CLegacyFileBuilder().flags(146).data({1, 2, 3, 4}));
    EXPECT_EQ((PixelEncoding{k_RGBA8, eCT_UnsignedNormalisedByte, eCS_sRGB, true}), load.texture.getEncoding());
    EXPECT_EQ(2u, load.texture.getFlags());
    EXPECT_EQ(0u, loadLegacy(CLegacyFileBuilder().flags(145).data({1, 2, 3, 4})).texture.getFlags());
}

TEST(LegacyReader, TwelveSurfacesWithTheCubeFlagAreTwoMembersOfSixFaces)
{
    const NativeLoad load = loadLegacy(CLegacyFileBuilder().flags(k_uiRGBA8 | 0x1000).surfaces(12).data(Bytes(48, 1)));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(2u, load.texture.getNumArrayMembers());
    EXPECT_EQ(6u, load.texture.getNumFaces());
}

TEST(LegacyReader, TooFewSurfacesAreOneMember)
{
    for (const uint32_t uiSurfaces : {0u, 1u, 5u})
    {
        const NativeLoad load = loadLegacy(CLegacyFileBuilder().flags(k_uiRGBA8 | 0x1000).surfaces(uiSurfaces).data(Bytes(24, 1)));
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(1u, load.texture.getNumArrayMembers());
        EXPECT_EQ(6u, load.texture.getNumFaces());
    }
    EXPECT_EQ(1u, loadLegacy(CLegacyFileBuilder().surfaces(0).data({1, 2, 3, 4})).texture.getNumArrayMembers());
    EXPECT_EQ(3u, loadLegacy(CLegacyFileBuilder().surfaces(3).data(Bytes(12, 1))).texture.getNumArrayMembers());
}

TEST(LegacyReader, TheShorterHeaderMayBeACubeButIsNeverAnArray)
{
    const NativeLoad load = loadLegacy(CLegacyFileBuilder(44).flags(k_uiRGBA8 | 0x1000).data(Bytes(24, 200)));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(1u, load.texture.getNumArrayMembers());
    EXPECT_EQ(6u, load.texture.getNumFaces());
}

TEST(LegacyReader, TheBumpMapFlagGivesScaleOneAndXYZ)
{
    const NativeLoad load = loadLegacy(CLegacyFileBuilder().flags(k_uiRGBA8 | 0x400).data({1, 2, 3, 4}));
    EXPECT_TRUE(load.texture.isBumpMap());
    const auto* pBlocks = load.texture.getMetaData().find(CNativeFileBuilder::k_ui32Native);
    ASSERT_NE(nullptr, pBlocks);
    const MetaDataBlock* pBlock = pBlocks->find(1);
    ASSERT_NE(nullptr, pBlock);
    ASSERT_EQ(8u, pBlock->u32DataSize);
    EXPECT_EQ((Bytes{0, 0, 0x80, 0x3F, 'x', 'y', 'z', 0}), Bytes(pBlock->Data.get(), pBlock->Data.get() + 8));
    EXPECT_EQ(20u, load.texture.getMetaDataSize());
}

TEST(LegacyReader, TheVerticalFlipFlagGivesOrientation020)
{
    const NativeLoad load = loadLegacy(CLegacyFileBuilder().flags(k_uiRGBA8 | 0x10000).data({1, 2, 3, 4}));
    EXPECT_EQ(0u, load.texture.getOrientation(eAxisX));
    EXPECT_EQ(2u, load.texture.getOrientation(eAxisY));
    EXPECT_EQ(0u, load.texture.getOrientation(eAxisZ));
    EXPECT_FALSE(load.texture.isBumpMap());
}

TEST(LegacyReader, WhatItHasNoUseForIsIgnored)
{
    // The flags of MIP maps and alpha, the data size, bits, masks and magic.
    CLegacyFileBuilder builder;
    builder.flags(k_uiRGBA8 | 0x100 | 0x8000 | 0xFFFE6200).data({1, 2, 3, 4});
    for (size_t uiOffset = 20; uiOffset < 48; uiOffset += 4)
        builder.word(uiOffset, k_uiHuge);
    const NativeLoad load = loadLegacy(builder);
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(1u, load.texture.getNumMIPLevels());
    EXPECT_EQ(0u, load.texture.getMetaDataSize());
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
}

TEST(LegacyReader, SurfacesStandMemberByMemberThenFaceByFaceThenLevelByLevel)
{
    // Two members, six faces, levels of 2 by 1 and 1 by 1: 12 bytes a face.
    Bytes data;
    for (uint32_t uiFace = 0; uiFace < 12; ++uiFace)
    {
        data.insert(data.end(), 8, static_cast<uint8_t>(10 * uiFace));
        data.insert(data.end(), 4, static_cast<uint8_t>(10 * uiFace + 1));
    }
    const NativeLoad load = loadLegacy(CLegacyFileBuilder().size(2, 1).levelsBelow(1).flags(k_uiRGBA8 | 0x1000).surfaces(12).data(data));
    ASSERT_TRUE(load.bGood);
    for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
        for (uint32_t uiFace = 0; uiFace < 6; ++uiFace)
            for (uint32_t uiLevel = 0; uiLevel < 2; ++uiLevel)
                EXPECT_EQ(10 * (6 * uiMember + uiFace) + uiLevel, *load.texture.getDataPtr(uiLevel, uiMember, uiFace));
}

TEST(LegacyReader, AnotherFirstWordFailsAndLeavesTheTextureAsItWas)
{
    for (const uint32_t uiWord : {0u, 43u, 45u, 51u, 53u, 0x34000000u, 0x03584F4Du, k_uiHuge})
    {
        const CLegacyFileBuilder builder = CLegacyFileBuilder().word(0, uiWord).size(5, 5).data(Bytes(100, 1));
        const CMemoryFile file(builder.bytes());
        CMOXTexture texture;
        EXPECT_FALSE(readLegacyHeader(file.get(), texture));
        EXPECT_EQ(1u, texture.getWidth());
        EXPECT_EQ(0u, texture.getDataSize());
    }
}

TEST(LegacyWriter, WritesTheBytesOfTheFormat)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture = textureOf(k_RGBA8, 3, 2);
    ASSERT_TRUE(saveLegacy(texture, folder.path("a.mox"), 1));
    Bytes expected = {
        52,  0,   0,   0,                                       // header
        2,   0,   0,   0,                                       // height
        3,   0,   0,   0,                                       // width
        0,   0,   0,   0,                                       // levels below the top
        18,  0,   0,   0,                                       // flags
        24,  0,   0,   0,                                       // 3 * 2 pixels of 4 bytes
        32,  0,   0,   0,                                       // bits
        0,   0,   0,   0,   0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, // masks
        'M', 'O', 'X', '!',                                     //
        1,   0,   0,   0,                                       // surfaces
    };
    const Bytes data = dataOf(texture);
    expected.insert(expected.end(), data.begin(), data.end());
    EXPECT_EQ(expected, readBytes(folder.path("a.mox")));
}

TEST(LegacyWriter, AnETC1TextureForApi1HasType54)
{
    const CTemporaryFolder folder;
    ASSERT_TRUE(saveLegacy(textureOf(ePF_ETC1, 4, 4), folder.path("a.mox"), 1));
    const Bytes bytes = readBytes(folder.path("a.mox"));
    ASSERT_EQ(60u, bytes.size());
    EXPECT_EQ(54u, wordAt(bytes, 16));
    EXPECT_EQ(8u, wordAt(bytes, 20));
    EXPECT_EQ(4u, wordAt(bytes, 24));
}

TEST(LegacyWriter, FlagsAndCountsOfAnArrayOfCubesWithLevels)
{
    CMOXTexture texture = textureOf(k_RGBA8, 2, 2, 2, 3, 6);
    texture.setBumpMap(2.5f, "xyz");
    texture.setOrientation(3);
    const CTemporaryFolder folder;
    ASSERT_TRUE(saveLegacy(texture, folder.path("a.mox"), 4));
    const Bytes bytes = readBytes(folder.path("a.mox"));
    ASSERT_EQ(52u + 18 * 20, bytes.size());
    EXPECT_EQ(1u, wordAt(bytes, 12));
    EXPECT_EQ(18u | 0x100 | 0x400 | 0x1000 | 0x10000, wordAt(bytes, 16));
    EXPECT_EQ(360u, wordAt(bytes, 20));
    EXPECT_EQ(18u, wordAt(bytes, 48));
    // The first face's two levels, then the second face.
    const auto at = [&](size_t uiOffset, size_t uiSize) {
        return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(uiOffset), bytes.begin() + static_cast<std::ptrdiff_t>(uiOffset + uiSize));
    };
    const auto surface = [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace, size_t uiSize)
    {
        const uint8_t* p = texture.getDataPtr(uiLevel, uiMember, uiFace);
        return Bytes(p, p + uiSize);
    };
    EXPECT_EQ(surface(0, 0, 0, 16), at(52, 16));
    EXPECT_EQ(surface(1, 0, 0, 4), at(68, 4));
    EXPECT_EQ(surface(0, 0, 1, 16), at(72, 16));
    EXPECT_EQ(surface(1, 2, 5, 4), at(52 + 17 * 20 + 16, 4));

    const NativeLoad load = loadLegacy(bytes);
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(dataOf(texture), dataOf(load.texture));
    EXPECT_EQ(3u, load.texture.getNumArrayMembers());
    EXPECT_TRUE(load.texture.isBumpMap());
    EXPECT_EQ(0u, load.texture.getOrientation(eAxisX)); // only the vertical flip has a flag
    EXPECT_EQ(2u, load.texture.getOrientation(eAxisY));
}

TEST(LegacyWriter, OrientationOnOtherAxesHasNoFlag)
{
    CMOXTexture texture = textureOf(k_RGBA8, 1, 1);
    texture.setOrientation(5);
    const CTemporaryFolder folder;
    ASSERT_TRUE(saveLegacy(texture, folder.path("a.mox"), 1));
    EXPECT_EQ(18u, wordAt(readBytes(folder.path("a.mox")), 16));
}

TEST(LegacyWriter, OnlyTheValue2OfTheYAxisIsAVerticalFlip)
{
    const CTemporaryFolder folder;
    for (const uint32_t uiValue : {0u, 1u, 2u, 3u, 4u, 255u})
    {
        CMOXTexture texture = textureOf(k_RGBA8, 1, 1);
        const uint8_t aui8Orientation[] = {2, static_cast<uint8_t>(uiValue), 2};
        texture.addMetaData(MetaDataBlock(CNativeFileBuilder::k_ui32Native, 3, aui8Orientation, sizeof(aui8Orientation)));
        ASSERT_TRUE(saveLegacy(texture, folder.path("a.mox"), 1));
        EXPECT_EQ(uiValue == 2 ? 18u | 0x10000 : 18u, wordAt(readBytes(folder.path("a.mox")), 16)) << uiValue;
    }
}

TEST(LegacyWriter, OnlyFormats1And3HaveTheAlphaFlagAndMask)
{
    struct Row
    {
        EMOXTPixelFormat eFormat;
        uint32_t uiFlags, uiAlphaMask;
    };
    const CTemporaryFolder folder;
    for (const Row& row : {Row{ePF_MOXTC_2bpp_RGB, 24, 0}, Row{ePF_MOXTC_2bpp_RGBA, 24 | 0x8000, 1}, Row{ePF_MOXTC_4bpp_RGB, 25, 0},
                           Row{ePF_MOXTC_4bpp_RGBA, 25 | 0x8000, 1}, Row{ePF_MOXTCII_4bpp, 28, 0}})
    {
        ASSERT_TRUE(saveLegacy(textureOf(row.eFormat, 16, 16), folder.path("a.mox"), 2));
        const Bytes bytes = readBytes(folder.path("a.mox"));
        EXPECT_EQ(row.uiFlags, wordAt(bytes, 16)) << row.eFormat;
        EXPECT_EQ(row.uiAlphaMask, wordAt(bytes, 40)) << row.eFormat;
    }
}

TEST(LegacyWriter, OtherMetaDataIsDropped)
{
    CMOXTexture texture = textureOf(k_RGBA8, 1, 1);
    texture.setBorder(1, 2, 3);
    const CTemporaryFolder folder;
    ASSERT_TRUE(saveLegacy(texture, folder.path("a.mox"), 1));
    EXPECT_EQ(56u, readBytes(folder.path("a.mox")).size());
}

TEST(LegacyWriter, NoExtensionIsAdded)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"a", "a.", "a.png"})
    {
        EXPECT_TRUE(saveLegacy(textureOf(k_RGBA8, 1, 1), folder.path(strName), 1));
        EXPECT_EQ(56u, readBytes(folder.path(strName)).size()) << strName;
    }
    EXPECT_EQ(3u, folder.count());
}

TEST(LegacyWriter, AFormatThatTheApiDoesNotHaveFailsAndNoFileRemains)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(saveLegacy(textureOf(ePF_ETC1, 4, 4), folder.write("a.mox", "earlier"), 3));
    EXPECT_FALSE(saveLegacy(textureOf(k_RGBA8, 4, 4), folder.path("b.mox"), 0));
    EXPECT_FALSE(saveLegacy(textureOf(k_RGBA8, 4, 4), folder.path("c.mox"), 8));
    EXPECT_EQ(0u, folder.count());
}

TEST(LegacyWriter, ADepthOfTwoFailsAndNoFileRemains)
{
    const CMOXTexture texture(CMOXTextureHeader(k_RGBA8, 1, 1, 2, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    const CTemporaryFolder folder;
    EXPECT_FALSE(saveLegacy(texture, folder.write("a.mox", "earlier"), 1));
    EXPECT_EQ(0u, folder.count());
}

TEST(LegacyWriter, AHeaderThatMeasuresOtherThanTheBlockFails)
{
    CMOXTexture texture = textureOf(k_RGBA8, 1, 1);
    const CTemporaryFolder folder;
    for (const uint32_t uiWidth : {1000000u, k_uiHuge})
    {
        texture.setWidth(uiWidth);
        EXPECT_FALSE(saveLegacy(texture, folder.path("a.mox"), 1));
    }
    texture.setWidth(1);
    texture.setNumMIPLevels(0);
    EXPECT_FALSE(saveLegacy(texture, folder.path("a.mox"), 1));
    EXPECT_EQ(0u, folder.count());
}

TEST(LegacyWriter, ATextureWithoutASurfaceFailsAndNoFileRemains)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(saveLegacy(CMOXTexture(), folder.path("a.mox"), 1));
    EXPECT_FALSE(saveLegacy(textureOf(k_RGBA8, 1, 1, 0), folder.path("a.mox"), 1));
    EXPECT_FALSE(saveLegacy(textureOf(k_RGBA8, 1, 1, 1, 0), folder.path("a.mox"), 1));
    EXPECT_FALSE(saveLegacy(textureOf(k_RGBA8, 1, 1, 1, 1, 0), folder.path("a.mox"), 1));
    EXPECT_EQ(0u, folder.count());
}

TEST(LegacyWriter, APathThatCannotBeOpenedFails)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(saveLegacy(textureOf(k_RGBA8, 1, 1), folder.path("missing/a.mox"), 1));
    EXPECT_FALSE(saveLegacy(textureOf(k_RGBA8, 1, 1), folder.path(), 1));
}

TEST(LegacyWriter, AFullDiskRemovesTheFile)
{
    const CMOXTexture texture = textureOf(k_RGBA8, 64, 64, 7);
    const CTemporaryFolder folder;
    // In the header, in the data, one byte short of all: 52 + 4 * (4096 + 1024 + 256 + 64 + 16 + 4 + 1).
    for (const rlim_t uiRoom : {0u, 51u, 8192u, 21895u})
    {
        const CFileSizeLimit limit(uiRoom);
        EXPECT_FALSE(saveLegacy(texture, folder.path("a.mox"), 1)) << uiRoom;
        EXPECT_EQ(0u, folder.count()) << uiRoom;
    }
    const CFileSizeLimit limit(21896);
    EXPECT_TRUE(saveLegacy(texture, folder.path("a.mox"), 1));
}
