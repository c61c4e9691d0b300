#include "Files/KtxWriter.h"

#include <gtest/gtest.h>

#include "Formats/GLFormatTable.h"
#include "Support/FileSizeLimit.h"
#include "Support/KtxLoading.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

struct Shape
{
    uint32_t uiWidth = 1, uiHeight = 1, uiDepth = 1, uiLevels = 1, uiMembers = 1, uiFaces = 1;
};

CMOXTexture makeTexture(MOXPixelWord format, const Shape& shape, EMOXTChannelType eType = eCT_UnsignedNormalisedByte,
                        EMOXTColourSpace eSpace = eCS_Linear)
{
    const CMOXTextureHeader header(format, shape.uiHeight, shape.uiWidth, shape.uiDepth, shape.uiLevels, shape.uiMembers, shape.uiFaces,
                                   eSpace, eType, false);
    const Bytes data = CSeededRandom(header.getDataSize()).bytes(header.getDataSize());
    return CMOXTexture(header, data.data());
}

/// A texture whose bytes count up: 1, 2, 3...
CMOXTexture makeRun(MOXPixelWord format, const Shape& shape)
{
    CMOXTexture texture = makeTexture(format, shape);
    for (uint32_t i = 0; i < texture.getBlockSize(); ++i)
        texture.getDataPtr()[i] = static_cast<uint8_t>(i + 1);
    return texture;
}

uint32_t wordAt(const Bytes& bytes, size_t uiOffset)
{
    return loadLE<uint32_t>(&bytes.at(uiOffset));
}

Bytes from(const Bytes& bytes, size_t uiOffset)
{
    return {bytes.begin() + static_cast<std::ptrdiff_t>(uiOffset), bytes.end()};
}

void expectEqualTextures(const CMOXTexture& a, const CMOXTexture& b)
{
    EXPECT_EQ(a.getEncoding(), b.getEncoding());
    EXPECT_EQ(a.getWidth(), b.getWidth());
    EXPECT_EQ(a.getHeight(), b.getHeight());
    EXPECT_EQ(a.getDepth(), b.getDepth());
    EXPECT_EQ(a.getNumMIPLevels(), b.getNumMIPLevels());
    EXPECT_EQ(a.getNumArrayMembers(), b.getNumArrayMembers());
    EXPECT_EQ(a.getNumFaces(), b.getNumFaces());
    EXPECT_EQ(dataOf(a), dataOf(b));
}

void expectRoundTrip(const CMOXTexture& texture)
{
    const KtxLoad load = loadKtx(saveKtx(texture));
    EXPECT_TRUE(load.bGood);
    expectEqualTextures(texture, load.texture);
}

constexpr size_t k_uiDataStart = 64 + 32;

} // namespace

TEST(KtxWriter, AWholeFileByHand)
{
    const Bytes expected = {
        0xAB, 0x4B, 0x54, 0x58, 0x20, 0x31, 0x31, 0xBB, 0x0D, 0x0A, 0x1A, 0x0A, // identifier
        0x01, 0x02, 0x03, 0x04,                                                 // 0x04030201
        0x01, 0x14, 0,    0,                                                    // glType 5121
        1,    0,    0,    0,                                                    // glTypeSize
        0x07, 0x19, 0,    0,                                                    // glFormat 6407
        0x51, 0x80, 0,    0,                                                    // glInternalFormat 32849
        0x07, 0x19, 0,    0,                                                    // glBaseInternalFormat 6407
        3,    0,    0,    0,                                                    // width
        2,    0,    0,    0,                                                    // height
        0,    0,    0,    0,                                                    // depth 1
        0,    0,    0,    0,                                                    // no array
        1,    0,    0,    0,                                                    // faces
        2,    0,    0,    0,                                                    // levels
        32,   0,    0,    0,                                                    // 4 + 27 + 1 bytes of key
        27,   0,    0,    0,                                                    // 15 of the key, 12 of the value
        'K',  'T',  'X',  'o',  'r',  'i',  'e',  'n',  't',  'a',  't',  'i',  'o', 'n',
        0,    'S',  '=',  'r',  ',',  'T',  '=',  'u',  ',',  'R',  '=',  'i',  0,
        0,                   // padding
        24,   0,    0,    0, // two rows of 9 and 3
        1,    2,    3,    4,    5,    6,    7,    8,    9,    0,    0,    0,    10,  11,
        12,   13,   14,   15,   16,   17,   18,   0,    0,    0,    4,    0,    0,   0, // one row of 3 and 1
        19,   20,   21,   0,
    };
    CMOXTexture texture = makeRun(layout("rgb", 8, 8, 8), {3, 2, 1, 2});
    texture.setOrientation(2);
    EXPECT_EQ(expected, saveKtx(texture));
}

TEST(KtxWriter, SizesAreWrittenAsTheyAreButForOnes)
{
    const Bytes flat = saveKtx(makeTexture(k_RGBA8, {1, 1, 1}));
    EXPECT_EQ(1u, wordAt(flat, 36)); // the width alone stays 1
    EXPECT_EQ(0u, wordAt(flat, 40));
    EXPECT_EQ(0u, wordAt(flat, 44));
    EXPECT_EQ(0u, wordAt(flat, 48));
    const Bytes full = saveKtx(makeTexture(k_RGBA8, {2, 3, 4, 1, 5, 6}));
    EXPECT_EQ(2u, wordAt(full, 36));
    EXPECT_EQ(3u, wordAt(full, 40));
    EXPECT_EQ(4u, wordAt(full, 44));
    EXPECT_EQ(5u, wordAt(full, 48));
    EXPECT_EQ(6u, wordAt(full, 52));
    EXPECT_EQ(1u, wordAt(full, 56));
}

TEST(KtxWriter, BlocksAreWrittenAsTheyStand)
{
    const Bytes file = saveKtx(makeRun(ePF_ETC1, {5, 3})); // 2 by 1 blocks of 8 bytes
    EXPECT_EQ((Bytes{16, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}), from(file, k_uiDataStart));
    EXPECT_EQ(0u, wordAt(file, 16));
    EXPECT_EQ(1u, wordAt(file, 20));
    EXPECT_EQ(0u, wordAt(file, 24));
    EXPECT_EQ(36196u, wordAt(file, 28));
    EXPECT_EQ(6407u, wordAt(file, 32));
}

TEST(KtxWriter, ACubeHasTheSizeOfOneFaceAndAnArrayOfCubesThatOfTheLevel)
{
    // A row of 1 and 3: a face takes 4 bytes.
    EXPECT_EQ((Bytes{4, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0, 6, 0, 0, 0}),
              from(saveKtx(makeRun(layout("r", 8), {1, 1, 1, 1, 1, 6})), k_uiDataStart));
    const Bytes cubes = saveKtx(makeRun(layout("r", 8), {1, 1, 1, 1, 2, 6}));
    EXPECT_EQ(48u, wordAt(cubes, k_uiDataStart));
    EXPECT_EQ(k_uiDataStart + 4 + 48, cubes.size());
    EXPECT_EQ(12, cubes[cubes.size() - 4]);
}

TEST(KtxWriter, AnArrayHasTheSizeOfTheLevel)
{
    const Bytes file = saveKtx(makeRun(layout("rg", 8, 8), {1, 1, 1, 1, 3}));
    EXPECT_EQ((Bytes{12, 0, 0, 0, 1, 2, 0, 0, 3, 4, 0, 0, 5, 6, 0, 0}), from(file, k_uiDataStart));
}

TEST(KtxWriter, AnEncodingWithoutARowWritesZerosAndTheRestAllTheSame)
{
    const Bytes file = saveKtx(makeTexture(layout("argb", 8, 8, 8, 8), {2, 2}));
    ASSERT_EQ(k_uiDataStart + 4 + 16, file.size());
    for (size_t uiOffset = 16; uiOffset < 36; uiOffset += 4)
        EXPECT_EQ(0u, wordAt(file, uiOffset)) << uiOffset;
    EXPECT_EQ(2u, wordAt(file, 36));
}

TEST(KtxWriter, PackedYuvIsWrittenAsBlocks)
{
    // 3 pixels take two pairs: 8 bytes.
    EXPECT_EQ((Bytes{8, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8}), from(saveKtx(makeRun(ePF_UYVY, {3, 1})), k_uiDataStart));
}

TEST(KtxWriter, WithoutDataTheFileEndsBehindTheKey)
{
    EXPECT_EQ(k_uiDataStart, saveKtx(CMOXTexture()).size());
    CMOXTexture texture = makeTexture(k_RGBA8, {7, 5, 1, 0});
    const Bytes file = saveKtx(texture);
    EXPECT_EQ(k_uiDataStart, file.size());
    EXPECT_EQ(7u, wordAt(file, 36));
    EXPECT_EQ(5u, wordAt(file, 40));
    EXPECT_EQ(0u, wordAt(file, 56));
}

TEST(KtxWriter, WhatCannotBeWrittenLeavesNoFile)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(writeKtx(makeTexture(k_RGBA8, {2, 2}), folder.path("none/a.ktx")));

    CMOXTexture grown = makeTexture(k_RGBA8, {2, 2});
    grown.setHeight(3);
    EXPECT_FALSE(writeKtx(grown, folder.path("a.ktx")));

    CMOXTexture released = makeTexture(k_RGBA8, {2, 2});
    released.releaseData();
    EXPECT_FALSE(writeKtx(released, folder.path("a.ktx")));

    {
        const CFileSizeLimit limit(1000);
        EXPECT_FALSE(writeKtx(makeTexture(k_RGBA8, {100, 100}), folder.path("a.ktx")));
    }
    EXPECT_EQ(0u, folder.count());
}

TEST(KtxRoundTrip, EveryShapeComesBackEqual)
{
    for (const MOXPixelWord format : {layout("r", 8), layout("rgb", 8, 8, 8), k_RGBA8, MOXPixelWord(ePF_BC1), MOXPixelWord(ePF_ASTC_5x4)})
    {
        for (uint32_t uiWidth = 1; uiWidth <= 7; ++uiWidth)
        {
            expectRoundTrip(makeTexture(format, {uiWidth, 5}));
            expectRoundTrip(makeTexture(format, {uiWidth, 5, 3}));
            expectRoundTrip(makeTexture(format, {uiWidth, uiWidth, 1, 3, 1, 6}));
            expectRoundTrip(makeTexture(format, {uiWidth, uiWidth, 1, 3, 2, 6}));
            expectRoundTrip(makeTexture(format, {uiWidth, 3, 1, 3, 4}));
        }
        expectRoundTrip(makeTexture(format, {33, 17, 1, 6})); // down to 1 by 1
        expectRoundTrip(makeTexture(format, {64, 64, 1, 7, 1, 6}));
    }
}

TEST(KtxRoundTrip, MoreRowsThanAreWrittenAtOnceComeBackEqual)
{
    expectRoundTrip(makeTexture(layout("r", 8), {1, 100000}));
    expectRoundTrip(makeTexture(layout("rgb", 8, 8, 8), {1023, 301, 2}));
    expectRoundTrip(makeTexture(layout("r", 8), {300001, 3}));
}

TEST(KtxRoundTrip, EveryEncodingOfTheTableComesBackEqual)
{
    for (uint32_t uiInternal = 0; uiInternal < 65536; ++uiInternal)
    {
        for (const uint32_t uiType : {5120u, 5121u, 5122u, 5123u, 5124u, 5125u, 33635u, 32818u, 32819u, 32820u})
        {
            const auto encoding = findGLFormat(uiInternal, uiType);
            // sRGB of the three BC formats is read only.
            if (!encoding || (uiInternal >= 35916 && uiInternal <= 35919))
                continue;
            SCOPED_TRACE(std::to_string(uiInternal) + " of type " + std::to_string(uiType));
            expectRoundTrip(makeTexture(encoding->pixelFormat, {3, 2}, encoding->eChannelType, encoding->eColourSpace));
            if (uiInternal > 6410 && uiInternal != 32993 && uiInternal != 33319)
                break; // the type does not matter
        }
    }
}

TEST(KtxRoundTrip, AllEightOrientationsKeepTheirLetters)
{
    for (uint32_t ui32Mask = 0; ui32Mask < 8; ++ui32Mask)
    {
        CMOXTexture texture = makeTexture(k_RGBA8, {2, 2});
        texture.setOrientation(ui32Mask);
        const Bytes file = saveKtx(texture);
        const KtxLoad load = loadKtx(file);
        EXPECT_TRUE(load.bGood);
        for (const EMOXTAxis eAxis : {eAxisX, eAxisY, eAxisZ})
            EXPECT_EQ(texture.getOrientation(eAxis), load.texture.getOrientation(eAxis)) << ui32Mask;
        EXPECT_EQ(file, saveKtx(load.texture));
    }
}
