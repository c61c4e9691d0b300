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

TEST(KtxWriter, EveryKindOfPixelHasItsFiveNumbersInTheHeader)
{
    struct Expected
    {
        MOXPixelWord format;
        uint32_t uiChannelType;
        std::vector<uint32_t> numbers; ///< as they stand from byte 16 on
    };
    const Expected aExpected[] = {
        {layout("rgb", 5, 6, 5), 4, {33635, 2, 6407, 36194, 6407}},
        {layout("rgba", 4, 4, 4, 4), 4, {32819, 2, 6408, 32854, 6408}},
        {layout("rgba", 5, 5, 5, 1), 4, {32820, 2, 6408, 32855, 6408}},
        {layout("rgb", 3, 3, 2), 0, {32818, 1, 6407, 10768, 6407}},
        {layout("abgr", 2, 10, 10, 10), 8, {33640, 4, 6408, 32857, 6408}},
        {layout("bgr", 10, 11, 11), 13, {35899, 4, 6407, 35898, 6407}},
        {ePF_Shared_Exponent_RGB999_E5, 13, {35902, 4, 6407, 35901, 6407}},
        {k_RGBA32, 12, {5126, 4, 6408, 34836, 6408}},
        {k_RGBA16, 12, {5131, 2, 6408, 34842, 6408}},
        {k_RGBA16, 6, {5123, 2, 36249, 36214, 36249}},
        {layout("r", 32), 11, {5124, 4, 36244, 33333, 36244}},
        {ePF_ASTC_6x6, 0, {0, 1, 0, 37812, 6408}},
    };
    for (const Expected& expected : aExpected)
    {
        const Bytes file = saveKtx(makeTexture(expected.format, {2, 2}, static_cast<EMOXTChannelType>(expected.uiChannelType)));
        for (size_t i = 0; i < 5; ++i)
            EXPECT_EQ(expected.numbers[i], wordAt(file, 16 + 4 * i)) << expected.numbers[3];
    }
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
    // 2 by 2 pixels: 16 bytes, or one block of 8 or 16.
    for (const MOXPixelWord format : {layout("argb", 8, 8, 8, 8), MOXPixelWord(ePF_BC4), MOXPixelWord(ePF_BC5), MOXPixelWord(ePF_UYVY)})
    {
        const CMOXTexture texture = makeTexture(format, {2, 2});
        const Bytes file = saveKtx(texture);
        ASSERT_EQ(k_uiDataStart + 4 + texture.getBlockSize(), file.size());
        for (size_t uiOffset = 16; uiOffset < 36; uiOffset += 4)
            EXPECT_EQ(0u, wordAt(file, uiOffset)) << uiOffset;
        EXPECT_EQ(2u, wordAt(file, 36));
        EXPECT_EQ(dataOf(texture), from(file, k_uiDataStart + 4));
        EXPECT_FALSE(loadKtx(file).bGood);
    }
}

TEST(KtxWriter, RowsOfEverySliceAndMemberArePadded)
{
    // 3 by 1 by 2 bytes in 2 members: four rows of 3 and 1; then 1 by 1 by 1 in 2: two of 1 and 3.
    const Bytes expected = {16, 0, 0, 0, 1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 0, 8, 0, 0, 0, 13, 0, 0, 0, 14, 0, 0, 0};
    EXPECT_EQ(expected, from(saveKtx(makeRun(layout("r", 8), {3, 1, 2, 2, 2})), k_uiDataStart));
}

TEST(KtxWriter, FacesAndLevelsWhoseSizeIsNotAMultipleOfFourArePadded)
{
    // One byte holds 8 pixels of 1 bit, in a format that has no rows: the padding is that of the face or of the level.
    EXPECT_EQ((Bytes{1, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0, 6, 0, 0, 0}),
              from(saveKtx(makeRun(ePF_1bpp, {8, 1, 1, 1, 1, 6})), k_uiDataStart));
    EXPECT_EQ((Bytes{5, 0, 0, 0, 1, 2, 3, 4, 5, 0, 0, 0}), from(saveKtx(makeRun(ePF_1bpp, {8, 1, 1, 1, 5})), k_uiDataStart));
    EXPECT_EQ((Bytes{6, 0, 0, 0, 1, 2, 3, 4, 5, 6, 0, 0}), from(saveKtx(makeRun(ePF_1bpp, {8, 1, 1, 1, 2, 3})), k_uiDataStart));
    // Six faces make a cube; five do not.
    EXPECT_EQ((Bytes{5, 0, 0, 0, 1, 2, 3, 4, 5, 0, 0, 0}), from(saveKtx(makeRun(ePF_1bpp, {8, 1, 1, 1, 1, 5})), k_uiDataStart));
}

TEST(KtxWriter, RowsOfBitsThatFillNoByteAreCutToWholeBytes)
{
    // 3 pixels of 12 bits: 4 bytes of 4.5, three times.
    EXPECT_EQ((Bytes{12, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}),
              from(saveKtx(makeRun(layout("rgb", 4, 4, 4), {3, 3})), k_uiDataStart));
}

TEST(KtxWriter, ALevelWhosePaddedRowsDoNotFitTheWordOfItsSizeLeavesNoFile)
{
    // 2^15 by 2^15 rows of one byte: 1 GiB, never touched here, and 4 GiB with padding.
    const CMOXTextureHeader header(layout("r", 8), 1 << 15, 1, 1 << 15, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    const CTemporaryFolder folder;
    EXPECT_FALSE(writeKtx(CMOXTexture(header), folder.path("a.ktx")));
    EXPECT_EQ(0u, folder.count());
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

TEST(KtxRoundTrip, WhatTheContainerHasNoNumberForComesBackAsWhatIsNearest)
{
    struct Expected
    {
        PixelEncoding written, read;
    };
    const EMOXTChannelType eByte = eCT_UnsignedNormalisedByte;
    const Expected aExpected[] = {
        // pre-multiplied blocks, under the number of the plain ones
        {{ePF_DXT2, eByte, eCS_Linear, false}, {ePF_BC2, eByte, eCS_Linear, false}},
        {{ePF_DXT4, eByte, eCS_Linear, false}, {ePF_BC3, eByte, eCS_Linear, false}},
        // blocks whose sRGB is read and not written, or has no number
        {{ePF_BC1, eByte, eCS_sRGB, false}, {ePF_BC1, eByte, eCS_Linear, false}},
        {{ePF_BC2, eByte, eCS_sRGB, false}, {ePF_BC2, eByte, eCS_Linear, false}},
        {{ePF_BC3, eByte, eCS_sRGB, false}, {ePF_BC3, eByte, eCS_Linear, false}},
        {{ePF_ETC1, eByte, eCS_sRGB, false}, {ePF_ETC1, eByte, eCS_Linear, false}},
        {{ePF_EAC_R11, eByte, eCS_sRGB, false}, {ePF_EAC_R11, eByte, eCS_Linear, false}},
        // pixels whose sRGB has no number
        {{layout("r", 8), eByte, eCS_sRGB, false}, {layout("r", 8), eByte, eCS_Linear, false}},
        {{k_RGBA16, eCT_UnsignedNormalisedShort, eCS_sRGB, false}, {k_RGBA16, eCT_UnsignedNormalisedShort, eCS_Linear, false}},
        // the type of blocks, but for the sign of the two formats that have it
        {{ePF_BC1, eCT_UnsignedInteger, eCS_Linear, false}, {ePF_BC1, eByte, eCS_Linear, false}},
        {{ePF_EAC_RG11, eCT_SignedNormalisedShort, eCS_Linear, false}, {ePF_EAC_RG11, eCT_SignedNormalisedByte, eCS_Linear, false}},
        // the flag of pre-multiplied pixels
        {{k_RGBA8, eByte, eCS_Linear, true}, {k_RGBA8, eByte, eCS_Linear, false}},
    };
    for (const Expected& expected : aExpected)
    {
        SCOPED_TRACE(expected.written.pixelFormat.getWord());
        CMOXTexture texture =
            makeTexture(expected.written.pixelFormat, {5, 3}, expected.written.eChannelType, expected.written.eColourSpace);
        texture.setIsPreMultiplied(expected.written.bPreMultiplied);
        const KtxLoad load = loadKtx(saveKtx(texture));
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(expected.read, load.texture.getEncoding());
        EXPECT_EQ(dataOf(texture), dataOf(load.texture));
    }
}

TEST(KtxRoundTrip, OfTheMetadataTheOrientationAloneComesBack)
{
    CMOXTexture texture = makeTexture(k_RGBA8, {2, 2});
    texture.setBorder(1, 1, 0);
    texture.setBumpMap(2.0f, "xyz");
    const KtxLoad load = loadKtx(saveKtx(texture));
    const auto* pBlocks = load.texture.getMetaData().find(CMOXTextureHeader::k_ui32NativeFourCC);
    ASSERT_NE(nullptr, pBlocks);
    EXPECT_EQ(1u, pBlocks->getCount());
    EXPECT_NE(nullptr, pBlocks->find(eMetaDataOrientation)); // written also for a texture without it
}

TEST(KtxRoundTrip, AnOrientationOfTwoAxesKeepsItsLettersAndGetsTheThird)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().withKey("KTXorientation", "S=l,T=u").level(4, {1, 2, 3, 4}));
    const Bytes file = saveKtx(load.texture);
    ASSERT_LT(k_uiDataStart, file.size());
    // Behind the header, the size of the record and the key.
    EXPECT_EQ("S=l,T=u,R=i", std::string(file.begin() + 64 + 4 + 15, file.begin() + 64 + 4 + 15 + 11));
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
