#include "Files/DdsWriter.h"

#include <gtest/gtest.h>

#include "Support/DdsLoading.h"
#include "Support/DdsWriting.h"
#include "Support/FileSizeLimit.h"
#include "Support/NativeLoading.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

const PixelEncoding k_Argb8 = {layout("argb", 8, 8, 8, 8), eCT_UnsignedNormalisedInteger};
const PixelEncoding k_Grey = {layout("r", 8), eCT_UnsignedNormalisedByte};

/// True if reading what was written gives the texture back.
void expectRoundTrip(const PixelEncoding& encoding, const DdsShape& shape)
{
    const CMOXTexture texture = makeDdsTexture(encoding, shape);
    const DdsWritten written = writeToDds(texture);
    ASSERT_TRUE(written.bGood);
    const DdsLoad load = loadDds(written.bytes);
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(texture.getEncoding(), load.texture.getEncoding());
    EXPECT_EQ(dataOf(texture), dataOf(load.texture));
    EXPECT_EQ(texture.getWidth(), load.texture.getWidth());
    EXPECT_EQ(texture.getHeight(), load.texture.getHeight());
    EXPECT_EQ(texture.getDepth(), load.texture.getDepth());
    EXPECT_EQ(texture.getNumMIPLevels(), load.texture.getNumMIPLevels());
    EXPECT_EQ(texture.getNumArrayMembers(), load.texture.getNumArrayMembers());
    EXPECT_EQ(texture.getNumFaces(), load.texture.getNumFaces());
}

} // namespace

TEST(DdsWriter, APlainFileByteForByte)
{
    const uint8_t aui8Pixels[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    const CMOXTextureHeader header(layout("argb", 8, 8, 8, 8), 1, 3, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    Bytes expected = CDdsFileBuilder::words({
        0x20534444, 124, 0x100F,     1,  3,        12,     1,    1, // flags with pitch; height, width, pitch, depth, levels
        0,          0,   0,          0,  0,        0,      0,    0,          0, 0, 0, // reserved
        32,         65,  0x30315844, 32, 0xFF0000, 0xFF00, 0xFF, 0xFF000000,          // pixel format
        0x1000,     0,   0,          0,  0,                                           // caps
    });
    expected.insert(expected.end(), std::begin(aui8Pixels), std::end(aui8Pixels));
    EXPECT_EQ(expected, writeToDds(CMOXTexture(header, aui8Pixels)).bytes);
}

TEST(DdsWriter, AnExtendedFileByteForByte)
{
    const uint8_t aui8Pixels[] = {1, 2, 3, 4, 5, 6, 7, 8};
    const CMOXTextureHeader header(k_RGBA8, 1, 1, 1, 1, 2, 1, eCS_sRGB, eCT_UnsignedNormalisedByte, false);
    Bytes expected = CDdsFileBuilder::words({
        0x20534444, 124, 0x100F,     1, 1, 4, 1, 1,          // flags with pitch; height, width, pitch, depth, levels
        0,          0,   0,          0, 0, 0, 0, 0, 0, 0, 0, // reserved
        32,         4,   0x30315844, 0, 0, 0, 0, 0,          // pixel format
        0x1000,     0,   0,          0, 0,                   // caps
        29,         2,   0,          2, 0,                   // RGBA 8888 sRGB, one row, no cube, two members
    });
    expected.insert(expected.end(), std::begin(aui8Pixels), std::end(aui8Pixels));
    EXPECT_EQ(expected, writeToDds(CMOXTexture(header, aui8Pixels)).bytes);
}

TEST(DdsWriter, AFourCCStandsAloneInThePixelFormat)
{
    const DdsWritten written = writeToDds({ePF_BC1, eCT_UnsignedNormalisedInteger, eCS_sRGB}, {8, 4});
    EXPECT_EQ(128u + 16u, written.bytes.size());
    EXPECT_EQ(4u, written.word(80));
    EXPECT_EQ(0x31545844u, written.word(84));
    for (size_t uiOffset = 88; uiOffset <= 104; uiOffset += 4)
        EXPECT_EQ(0u, written.word(uiOffset));
    EXPECT_EQ(0x81007u, written.word(8));
    EXPECT_EQ(16u, written.word(20));
}

TEST(DdsWriter, TheLinearSizeIsThatOfTheWholeData)
{
    // 8 by 8, 4 by 4, 2 by 2 and 1 by 1: 4 + 1 + 1 + 1 blocks of 8 bytes, for six faces.
    EXPECT_EQ(7u * 8 * 6, writeToDds({ePF_BC1}, {8, 8, 1, 4, 1, 6}).word(20));
}

TEST(DdsWriter, ThePitchRoundsUpToWholeBytes)
{
    EXPECT_EQ(3u * 7, writeToDds({layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte}, {7, 2}).word(20));
    EXPECT_EQ(5u * 2, writeToDds({layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort}, {5, 5}).word(20));
}

TEST(DdsWriter, ANumberStandsInTheFieldOfTheFourCC)
{
    const DdsWritten written = writeToDds({layout("abgr", 16, 16, 16, 16), eCT_UnsignedNormalisedShort}, {1, 1});
    EXPECT_EQ(4u, written.word(80));
    EXPECT_EQ(36u, written.word(84));
    EXPECT_EQ(0u, written.word(88));
}

TEST(DdsWriter, AnArrayGetsTheExtendedHeaderEvenForBC1)
{
    const DdsWritten written = writeToDds({ePF_BC1}, {4, 4, 1, 1, 2});
    EXPECT_TRUE(written.bGood);
    EXPECT_EQ(148u + 16u, written.bytes.size());
    EXPECT_EQ(0x30315844u, written.word(84));
    EXPECT_EQ(71u, written.word(128));
    EXPECT_EQ(3u, written.word(132));
    EXPECT_EQ(2u, written.word(140));
}

TEST(DdsWriter, ByteRGBAHasNoPlainNumberAndGoesExtended)
{
    const DdsWritten written = writeToDds({k_RGBA8}, {2, 2});
    EXPECT_EQ(4u, written.word(80));
    EXPECT_EQ(0x30315844u, written.word(84));
    EXPECT_EQ(28u, written.word(128));
    EXPECT_EQ(1u, written.word(140));
}

TEST(DdsWriter, CapsAndFlagsOfEachShape)
{
    struct Row
    {
        DdsShape shape;
        uint32_t uiFlags, uiCaps, uiCaps2;
    };
    const Row aRows[] = {
        {{4, 4, 1, 1, 1, 1}, 0x100F, 0x1000, 0},          {{4, 4, 1, 1, 1, 6}, 0x100F, 0x1008, 0xFE00},
        {{4, 4, 1, 3, 1, 1}, 0x2100F, 0x401008, 0},       {{4, 4, 1, 3, 1, 6}, 0x2100F, 0x401008, 0xFE00},
        {{4, 4, 2, 1, 1, 1}, 0x80100F, 0x1000, 0x200000}, {{4, 4, 4, 3, 1, 1}, 0x82100F, 0x401008, 0x200000},
    };
    for (const Row& row : aRows)
    {
        const DdsWritten written = writeToDds(k_Argb8, row.shape);
        EXPECT_EQ(row.uiFlags, written.word(8)) << row.uiCaps;
        EXPECT_EQ(row.uiCaps, written.word(108));
        EXPECT_EQ(row.uiCaps2, written.word(112));
        EXPECT_EQ(row.shape.uiDepth, written.word(24));
        EXPECT_EQ(row.shape.uiLevels, written.word(28));
    }
}

TEST(DdsWriter, TheResourceDimensionIsThatOfTheSides)
{
    EXPECT_EQ(2u, writeToDds(k_Grey, {5, 1}).word(132));
    EXPECT_EQ(3u, writeToDds(k_Grey, {1, 5}).word(132));
    EXPECT_EQ(4u, writeToDds(k_Grey, {5, 1, 2}).word(132));
    EXPECT_EQ(0u, writeToDds(k_Grey, {5, 5}).word(136));
    EXPECT_EQ(4u, writeToDds(k_Grey, {5, 5, 1, 1, 1, 6}).word(136)) << "a cube";
}

TEST(DdsWriter, AnyOtherNumberOfFacesThanSixIsNoCubeToAReader)
{
    // All faces are in the file, but no header can tell of them, and one is read.
    for (const uint32_t uiFaces : {2u, 5u, 7u, 12u})
    {
        const CMOXTexture texture = makeDdsTexture(k_Grey, {4, 4, 1, 1, 1, uiFaces});
        const DdsWritten written = writeToDds(texture);
        EXPECT_TRUE(written.bGood);
        EXPECT_EQ(148 + 16 * uiFaces, written.bytes.size());
        EXPECT_EQ(0x1000u, written.word(108));
        EXPECT_EQ(0u, written.word(112));
        EXPECT_EQ(0u, written.word(136));
        const DdsLoad load = loadDds(written.bytes);
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(1u, load.texture.getNumFaces());
        EXPECT_EQ(Bytes(texture.getDataPtr(), texture.getDataPtr() + 16), dataOf(load.texture));
    }
}

TEST(DdsWriter, AnArrayOfVolumesIsOfTheThirdDimensionWithAllCaps)
{
    const DdsWritten written = writeToDds(k_Grey, {4, 4, 4, 3, 2});
    EXPECT_EQ(0x82100Fu, written.word(8));
    EXPECT_EQ(0x401008u, written.word(108));
    EXPECT_EQ(0x200000u, written.word(112));
    EXPECT_EQ(4u, written.word(132));
    EXPECT_EQ(0u, written.word(136));
    EXPECT_EQ(2u, written.word(140));
}

TEST(DdsWriter, SurfacesGoByMemberThenFaceThenLevel)
{
    // 2 by 1, then 1 by 1. In memory the level is outermost: twelve faces of two bytes, then twelve of one.
    const CMOXTextureHeader header(layout("r", 8), 1, 2, 1, 2, 2, 6, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    Bytes data(36);
    for (size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<uint8_t>(i);
    const DdsWritten written = writeToDds(CMOXTexture(header, data.data()));
    ASSERT_EQ(148u + 36u, written.bytes.size());
    for (size_t i = 0; i < 12; ++i)
    {
        EXPECT_EQ(2 * i, written.bytes[148 + 3 * i]);
        EXPECT_EQ(2 * i + 1, written.bytes[148 + 3 * i + 1]);
        EXPECT_EQ(24 + i, written.bytes[148 + 3 * i + 2]);
    }
}

TEST(DdsWriter, WhatHasNoNumberFailsAndLeavesNoFile)
{
    const PixelEncoding aEncodings[] = {
        {layout("xrgb", 8, 8, 8, 8), eCT_UnsignedNormalisedByte},
        {layout("xrgb", 8, 8, 8, 8), eCT_UnsignedNormalisedInteger},
        {layout("abgr", 8, 8, 8, 8), eCT_UnsignedNormalisedInteger},
        {layout("gr", 32, 32), eCT_SignedFloatingPoint},
        {layout("abgr", 16, 16, 16, 16), eCT_SignedNormalisedInteger},
        {ePF_ETC1},
        {layout("rgb", 8, 8, 8), eCT_SignedNormalisedByte},
    };
    for (const PixelEncoding& encoding : aEncodings)
    {
        const DdsWritten written = writeToDds(encoding, {4, 4});
        EXPECT_FALSE(written.bGood) << encoding.pixelFormat.getWord();
        EXPECT_FALSE(written.bFileThere);
    }
    EXPECT_FALSE(writeToDds({ePF_DXT2}, {4, 4, 1, 1, 2}).bGood) << "only its FourCC, which arrays cannot have";
}

TEST(DdsWriter, ATextureWithoutDataFailsAndLeavesNoFile)
{
    for (const CMOXTexture& texture : {CMOXTexture(), makeDdsTexture({ePF_BC7}, {4, 4})})
    {
        const DdsWritten written = writeToDds(texture);
        EXPECT_FALSE(written.bGood);
        EXPECT_FALSE(written.bFileThere);
    }
    for (const DdsShape& shape : {DdsShape{4, 4, 1, 0}, DdsShape{4, 4, 1, 1, 0}, DdsShape{4, 4, 1, 1, 1, 0}})
    {
        const DdsWritten written = writeToDds(k_Argb8, shape);
        EXPECT_FALSE(written.bGood) << "no levels, members or faces";
        EXPECT_FALSE(written.bFileThere);
    }
    CMOXTexture grown = makeDdsTexture(k_Argb8, {2, 2});
    grown.setHeight(3);
    EXPECT_FALSE(writeToDds(grown).bGood) << "more than the block holds";
}

TEST(DdsWriter, AFileThatCannotBeOpenedOrDoesNotFitFails)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture = makeDdsTexture(k_Argb8, {64, 64});
    EXPECT_FALSE(writeDds(texture, folder.path("none/a.dds")));
    for (const rlim_t uiBytes : {3u, 127u, 128u, 16511u})
    {
        const CFileSizeLimit limit(uiBytes);
        EXPECT_FALSE(writeDds(texture, folder.path("a.dds"))) << uiBytes;
    }
    const CMOXTexture extended = makeDdsTexture({k_RGBA8}, {4, 4});
    for (const rlim_t uiBytes : {127u, 128u, 147u, 148u, 211u})
    {
        const CFileSizeLimit limit(uiBytes);
        EXPECT_FALSE(writeDds(extended, folder.path("a.dds"))) << uiBytes;
    }
    EXPECT_EQ(0u, folder.count());
    EXPECT_TRUE(writeDds(texture, folder.path("a.dds"))) << "128 + 64 * 64 * 4 bytes";
}

TEST(DdsWriter, MetadataHasNoPlaceInTheFile)
{
    CMOXTexture texture = makeDdsTexture(k_Argb8, {2, 2});
    const Bytes plain = writeToDds(texture).bytes;
    texture.setOrientation(2);
    EXPECT_EQ(plain, writeToDds(texture).bytes);
}

TEST(DdsRoundTrip, EveryShape)
{
    for (const PixelEncoding& encoding : {k_Argb8, k_Grey, PixelEncoding{ePF_BC1}, PixelEncoding{ePF_BC3}})
        for (const DdsShape& shape :
             {DdsShape{1, 1, 1, 1, 1, 6}, DdsShape{16, 16, 1, 5, 1, 6}, DdsShape{7, 5, 3, 3, 1, 1}, DdsShape{4, 8, 1, 4, 1, 1},
              DdsShape{1, 1, 1, 6, 1, 1}, DdsShape{5, 3, 1, 9, 1, 6}, DdsShape{1, 7, 9, 4, 1, 1}})
            expectRoundTrip(encoding, shape);
    const PixelEncoding asExtended = {ePF_BC1, eCT_UnsignedNormalisedInteger, eCS_sRGB};
    for (const DdsShape& shape :
         {DdsShape{4, 4, 1, 1, 2, 1}, DdsShape{8, 8, 1, 4, 3, 6}, DdsShape{1, 1, 1, 1, 5, 6}, DdsShape{9, 1, 1, 4, 2, 1},
          DdsShape{3, 5, 1, 3, 2, 6}, DdsShape{6, 5, 4, 3, 3, 1}, DdsShape{2, 1, 1, 32, 2, 1}})
    {
        expectRoundTrip(asExtended, shape);
        expectRoundTrip(k_Grey, shape);
    }
}
