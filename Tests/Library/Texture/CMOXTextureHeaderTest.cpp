#include "Texture/CMOXTextureHeader.h"

#include <gtest/gtest.h>

#include <tuple>

#include "Formats/FormatNames.h"

using namespace moxtexture;

namespace
{

CMOXTextureHeader makeHeader(MOXPixelWord pixelFormat, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth, uint32_t uiLevels = 1,
                             uint32_t uiMembers = 1, uint32_t uiFaces = 1)
{
    return {pixelFormat, uiHeight, uiWidth, uiDepth, uiLevels, uiMembers, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte, false};
}

uint32_t levelSize(MOXPixelWord pixelFormat, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth = 1)
{
    return makeHeader(pixelFormat, uiWidth, uiHeight, uiDepth).getDataSize(0, false, false);
}

std::tuple<uint32_t, uint32_t, uint32_t> minDimensions(MOXPixelWord pixelFormat)
{
    uint32_t x = 0;
    uint32_t y = 0;
    uint32_t z = 0;
    CMOXTextureHeader::getMinDimensions(pixelFormat, x, y, z);
    return {x, y, z};
}

/// A header with these flags, as a file could bring it.
CMOXTextureHeader withFlags(uint8_t ui8Flags)
{
    uint8_t aui8Record[52] = {};
    aui8Record[4] = ui8Flags;
    CMOXTextureHeader header;
    header.readRecord(aui8Record);
    return header;
}

} // namespace

TEST(TextureHeader, IsOnePixelOfNoFormatByDefault)
{
    const CMOXTextureHeader header;
    EXPECT_EQ(0u, header.getFlags());
    EXPECT_EQ(MOXPixelWord(ePF_Count), header.getPixelFormat());
    EXPECT_EQ(eCS_Linear, header.getColourSpace());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, header.getChannelType());
    EXPECT_EQ(1u, header.getWidth());
    EXPECT_EQ(1u, header.getHeight());
    EXPECT_EQ(1u, header.getDepth());
    EXPECT_EQ(1u, header.getNumArrayMembers());
    EXPECT_EQ(1u, header.getNumFaces());
    EXPECT_EQ(1u, header.getNumMIPLevels());
    EXPECT_EQ(0u, header.getMetaDataSize());
    EXPECT_EQ(0u, header.getMetaData().getCount());

    EXPECT_EQ(0u, header.getDataSize());
    EXPECT_EQ(0u, header.getBitsPerPixel());
    EXPECT_EQ("", getFormatName(header.getPixelFormat()));
}

TEST(TextureHeader, TakesItsValuesWithTheHeightFirst)
{
    const CMOXTextureHeader header(k_RGBA16, 2, 3, 4, 5, 6, 7, eCS_sRGB, eCT_SignedShort, true);
    EXPECT_EQ(k_RGBA16, header.getPixelFormat());
    EXPECT_EQ(2u, header.getHeight());
    EXPECT_EQ(3u, header.getWidth());
    EXPECT_EQ(4u, header.getDepth());
    EXPECT_EQ(5u, header.getNumMIPLevels());
    EXPECT_EQ(6u, header.getNumArrayMembers());
    EXPECT_EQ(7u, header.getNumFaces());
    EXPECT_EQ(eCS_sRGB, header.getColourSpace());
    EXPECT_EQ(eCT_SignedShort, header.getChannelType());
    EXPECT_EQ(2u, header.getFlags());
    EXPECT_EQ(0u, header.getMetaDataSize());
    EXPECT_EQ(0u, header.getMetaData().getCount());
    EXPECT_EQ(0u, CMOXTextureHeader(k_RGBA16, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_SignedShort, false).getFlags());
}

TEST(TextureHeader, SettersChangeTheirOwnField)
{
    CMOXTextureHeader header;
    header.setPixelFormat(ePF_BC3);
    header.setChannelType(eCT_SignedInteger);
    header.setColourSpace(eCS_sRGB);
    header.setNumMIPLevels(2);
    header.setNumArrayMembers(3);
    header.setNumFaces(6);
    header.setWidth(7);
    header.setHeight(8);
    header.setDepth(9);
    header.setMetaDataSize(10);
    EXPECT_EQ(MOXPixelWord(ePF_BC3), header.getPixelFormat());
    EXPECT_EQ(eCT_SignedInteger, header.getChannelType());
    EXPECT_EQ(eCS_sRGB, header.getColourSpace());
    EXPECT_EQ(2u, header.getNumMIPLevels());
    EXPECT_EQ(3u, header.getNumArrayMembers());
    EXPECT_EQ(6u, header.getNumFaces());
    EXPECT_EQ(7u, header.getWidth());
    EXPECT_EQ(8u, header.getHeight());
    EXPECT_EQ(9u, header.getDepth());
    EXPECT_EQ(10u, header.getMetaDataSize());
}

TEST(TextureHeader, TellsItsEncodingAsOne)
{
    const CMOXTextureHeader header(k_RGBA16, 1, 1, 1, 1, 1, 1, eCS_sRGB, eCT_SignedShort, true);
    EXPECT_TRUE((header.getEncoding() == PixelEncoding{k_RGBA16, eCT_SignedShort, eCS_sRGB, true}));
}

TEST(TextureHeader, IsWrittenAsThirteenWords)
{
    CMOXTextureHeader header(k_RGBA8, 0x01020304, 5, 6, 7, 8, 9, eCS_sRGB, eCT_SignedByte, true);
    header.setMetaDataSize(15);
    uint8_t aui8Record[52];
    header.writeRecord(aui8Record);
    const uint8_t aui8Expected[52] = {'M', 'O', 'X', 3, 2, 0, 0, 0, 'r', 'g', 'b', 'a', 8, 8, 8, 8, 1, 0, 0, 0, 3, 0, 0,  0, 4, 3,
                                      2,   1,   5,   0, 0, 0, 6, 0, 0,   0,   8,   0,   0, 0, 9, 0, 0, 0, 7, 0, 0, 0, 15, 0, 0, 0};
    for (size_t i = 0; i < 52; ++i)
        EXPECT_EQ(aui8Expected[i], aui8Record[i]) << "byte " << i;

    CMOXTextureHeader read;
    read.readRecord(aui8Record);
    uint8_t aui8Again[52];
    read.writeRecord(aui8Again);
    for (size_t i = 0; i < 52; ++i)
        EXPECT_EQ(aui8Expected[i], aui8Again[i]) << "byte " << i;
}

TEST(TextureHeader, ReadingARecordLeavesTheMetadata)
{
    CMOXTextureHeader header;
    header.setOrientation(2);
    const uint8_t aui8Record[52] = {};
    header.readRecord(aui8Record);
    EXPECT_EQ(2u, header.getOrientation(eAxisY));
    EXPECT_EQ(0u, header.getMetaDataSize());
}

TEST(TextureHeader, ACopyHasItsOwnMetadata)
{
    CMOXTextureHeader header;
    header.setBorder(1, 2, 3);
    CMOXTextureHeader copy = header;
    CMOXTextureHeader assigned;
    assigned = header;
    header.setBorder(4, 5, 6);
    uint32_t x, y, z;
    copy.getBorder(x, y, z);
    EXPECT_EQ(2u, y);
    EXPECT_EQ(24u, copy.getMetaDataSize());
    assigned.getBorder(x, y, z);
    EXPECT_EQ(3u, z);

    const CMOXTextureHeader& same = copy;
    copy = same;
    copy.getBorder(x, y, z);
    EXPECT_EQ(1u, x);
    EXPECT_EQ(24u, copy.getMetaDataSize());
}

TEST(HeaderLevels, HalveAndStayAtOne)
{
    const CMOXTextureHeader header = makeHeader(k_RGBA8, 40, 5, 2, 4);
    const uint32_t auiExpected[5][3] = {{40, 5, 2}, {20, 2, 1}, {10, 1, 1}, {5, 1, 1}, {0, 0, 0}};
    for (uint32_t i = 0; i < 5; ++i)
    {
        EXPECT_EQ(auiExpected[i][0], header.getWidth(i)) << i;
        EXPECT_EQ(auiExpected[i][1], header.getHeight(i)) << i;
        EXPECT_EQ(auiExpected[i][2], header.getDepth(i)) << i;
    }
    EXPECT_EQ(0u, header.getWidth(0xFFFFFFFF));
}

TEST(HeaderLevels, ASizeOfZeroReadsAsOne)
{
    const CMOXTextureHeader header = makeHeader(k_RGBA8, 0, 0, 0);
    EXPECT_EQ(1u, header.getWidth());
    EXPECT_EQ(1u, header.getHeight());
    EXPECT_EQ(1u, header.getDepth());
    EXPECT_EQ(4u, header.getDataSize());
}

TEST(HeaderLevels, ComeRoundAfterThirtyTwo)
{
    const CMOXTextureHeader header = makeHeader(k_RGBA8, 40, 1, 1, 40);
    EXPECT_EQ(1u, header.getWidth(31));
    EXPECT_EQ(40u, header.getWidth(32));
    EXPECT_EQ(20u, header.getWidth(33));
    EXPECT_EQ(160u, header.getDataSize(32, false, false));
}

TEST(HeaderFlags, TrueSetsItsOwnBitAndFalseClearsAll)
{
    CMOXTextureHeader header = withFlags(3);
    EXPECT_TRUE(header.isFileCompressed());
    EXPECT_TRUE(header.isPreMultiplied());
    header.setIsPreMultiplied(false);
    EXPECT_EQ(0u, header.getFlags());
    EXPECT_FALSE(header.isFileCompressed());
    EXPECT_FALSE(header.isPreMultiplied());

    header = withFlags(1);
    EXPECT_TRUE(header.isFileCompressed());
    EXPECT_FALSE(header.isPreMultiplied());
    header.setIsPreMultiplied(true);
    EXPECT_EQ(3u, header.getFlags());
}

TEST(BitsPerPixel, OfALayoutAreTheSumOfItsChannels)
{
    EXPECT_EQ(32u, makeHeader(k_RGBA8, 1, 1, 1).getBitsPerPixel());
    EXPECT_EQ(128u, CMOXTextureHeader::getBitsPerPixel(k_RGBA32));
    EXPECT_EQ(16u, CMOXTextureHeader::getBitsPerPixel(layout("rgb", 5, 6, 5)));
    EXPECT_EQ(1020u, CMOXTextureHeader::getBitsPerPixel(layout("rgba", 255, 255, 255, 255)));
}

TEST(BitsPerPixel, OfANumberAreThoseOfTheFormat)
{
    EXPECT_EQ(2u, CMOXTextureHeader::getBitsPerPixel(ePF_MOXTCII_2bpp));
    EXPECT_EQ(32u, CMOXTextureHeader::getBitsPerPixel(ePF_Shared_Exponent_RGB999_E5));
    EXPECT_EQ(0u, CMOXTextureHeader::getBitsPerPixel(ePF_ASTC_4x4));
    EXPECT_EQ(0u, CMOXTextureHeader::getBitsPerPixel(ePF_BC7));
    EXPECT_EQ(0u, CMOXTextureHeader::getBitsPerPixel(MOXPixelWord(uint64_t{0x61})));
}

TEST(MinDimensions, AreThoseOfTheNumberAndOnePixelForLayouts)
{
    EXPECT_EQ(std::make_tuple(16u, 8u, 1u), minDimensions(ePF_MOXTC_2bpp_RGBA));
    EXPECT_EQ(std::make_tuple(6u, 6u, 5u), minDimensions(ePF_ASTC_6x6x5));
    EXPECT_EQ(std::make_tuple(1u, 1u, 1u), minDimensions(k_RGBA8));
    EXPECT_EQ(std::make_tuple(1u, 1u, 1u), minDimensions(MOXPixelWord(uint64_t{0x61})));
    // A layout without letters whose lower half would be BC1.
    EXPECT_EQ(std::make_tuple(1u, 1u, 1u), minDimensions(MOXPixelWord(uint64_t{0x0800000000000007})));
}

TEST(DataSize, OfOnePixelIsThatOfTheSmallestSurface)
{
    EXPECT_EQ(32u, levelSize(ePF_MOXTC_2bpp_RGB, 1, 1));  // 16 * 8 * 2 bits
    EXPECT_EQ(32u, levelSize(ePF_MOXTC_4bpp_RGBA, 1, 1)); // 8 * 8 * 4 bits
    EXPECT_EQ(8u, levelSize(ePF_ETC1, 1, 1));
    EXPECT_EQ(16u, levelSize(ePF_BC3, 1, 1));
    EXPECT_EQ(16u, levelSize(ePF_ASTC_12x12, 1, 1));
    EXPECT_EQ(4u, levelSize(ePF_UYVY, 1, 1)); // two pixels of 16 bits
    EXPECT_EQ(1u, levelSize(ePF_1bpp, 1, 1));
    EXPECT_EQ(4u, levelSize(ePF_Shared_Exponent_RGB999_E5, 1, 1));
}

TEST(DataSize, RoundsEachSizeUpToTheSmallestSurface)
{
    EXPECT_EQ(64u, levelSize(ePF_ASTC_4x4, 5, 5)); // 2 * 2 blocks of 16 bytes
    EXPECT_EQ(32u, levelSize(ePF_BC1, 5, 5));      // 8 * 8 pixels of 4 bits
    EXPECT_EQ(6u, levelSize(ePF_1bpp, 9, 3));      // 16 bits a row
    EXPECT_EQ(12u, levelSize(ePF_YUY2, 5, 1));     // 6 pixels of 16 bits
    EXPECT_EQ(64u, levelSize(ePF_MOXTC_2bpp_RGB, 17, 8));
}

TEST(DataSize, CountsBlocksOfThreeDimensions)
{
    EXPECT_EQ(128u, levelSize(ePF_ASTC_3x3x3, 4, 4, 4));
    EXPECT_EQ(16u, levelSize(ePF_ASTC_6x6x6, 6, 6, 6));
    EXPECT_EQ(48u, levelSize(ePF_ASTC_4x4, 4, 4, 3)); // a flat format: one block a slice
}

TEST(DataSize, OfFormatsWithoutASizeIsZero)
{
    EXPECT_EQ(0u, levelSize(ePF_BC6, 64, 64));
    EXPECT_EQ(0u, levelSize(ePF_BC7, 64, 64));
    EXPECT_EQ(0u, levelSize(ePF_Count, 64, 64));
    EXPECT_EQ(0u, levelSize(MOXPixelWord(uint64_t{0x61}), 64, 64)); // a number, not the channel "a"
    EXPECT_EQ(4096u, levelSize(layout("a", 8), 64, 64));
}

TEST(DataSize, MultipliesByMembersAndFacesAsAsked)
{
    const CMOXTextureHeader header = makeHeader(k_RGBA8, 4, 4, 1, 2, 3, 6);
    EXPECT_EQ(64u, header.getDataSize(0, false, false));
    EXPECT_EQ(384u, header.getDataSize(0, false, true));
    EXPECT_EQ(192u, header.getDataSize(0, true, false));
    EXPECT_EQ(1152u, header.getDataSize(0, true, true));
    EXPECT_EQ(16u, header.getDataSize(1, false, false));
    EXPECT_EQ(80u, header.getDataSize(0xFFFFFFFF, false, false));
    EXPECT_EQ(1440u, header.getDataSize(0xFFFFFFFF, true, true));
    EXPECT_EQ(1440u, header.getDataSize());
}

TEST(DataSize, OfALevelPastTheEndStillMeasures)
{
    const CMOXTextureHeader header = makeHeader(k_RGBA8, 8, 4, 1);
    EXPECT_EQ(0u, header.getWidth(1));
    EXPECT_EQ(32u, header.getDataSize(1, false, false)); // 4 * 2 pixels
    EXPECT_EQ(4u, header.getDataSize(9, false, false));
}

TEST(DataSize, CutsBitsToBytesOnlyAfterTheSum)
{
    // Levels of 3 and of 1 pixels of 4 bits: 12 + 4 bits are 2 bytes, alone they are 1 and 0.
    const CMOXTextureHeader header = makeHeader(layout("r", 4), 3, 1, 1, 2, 1, 5);
    EXPECT_EQ(1u, header.getDataSize(0, false, false));
    EXPECT_EQ(0u, header.getDataSize(1, false, false));
    EXPECT_EQ(2u, header.getDataSize(0xFFFFFFFF, false, false));
    EXPECT_EQ(5u, header.getDataSize(0, true, true)); // cut before the faces, not after: 60 bits would be 7 bytes
}

TEST(DataSize, IsTruncatedTo32Bits)
{
    // 2^16 * (2^14 + 1) pixels of 4 bytes are 2^32 + 2^18 bytes.
    const CMOXTextureHeader header = makeHeader(k_RGBA8, 65536, 16385, 1);
    EXPECT_EQ(262144u, header.getDataSize());
    EXPECT_EQ(0x100040000u, header.measure(0xFFFFFFFF, true, true).getValue());
    EXPECT_EQ(0u, levelSize(k_RGBA8, 65536, 65536));
}

TEST(DataSize, RoundsTheLargestSizesUpWithoutWrapping)
{
    // 2^32 - 1 pixels are 2^30 blocks of 16 bytes.
    EXPECT_EQ(uint64_t{1} << 34, makeHeader(ePF_ASTC_4x4, 0xFFFFFFFF, 1, 1).measure(0, false, false).getValue());
}

TEST(DataSize, CountsEveryLevelOfAnyNumberOfLevels)
{
    // 4, 2 and 30 times 1 byte; level 32 is as wide as level 0.
    EXPECT_EQ(36u, makeHeader(layout("r", 8), 4, 1, 1, 32).getDataSize());
    EXPECT_EQ(40u, makeHeader(layout("r", 8), 4, 1, 1, 33).getDataSize());
    EXPECT_EQ(72u, makeHeader(layout("r", 8), 4, 1, 1, 64).getDataSize());
    EXPECT_EQ(0xFFFFFFFFu, makeHeader(layout("r", 8), 1, 1, 1, 0xFFFFFFFF).getDataSize());
    EXPECT_EQ(0xFFFFFFF0u, makeHeader(layout("r", 8), 1, 1, 1, 0xFFFFFFF0).getDataSize());
    EXPECT_EQ(0u, makeHeader(layout("r", 8), 4, 1, 1, 0).getDataSize());
}

TEST(FitsDataBlock, IsTrueUpToTheLargest32BitSize)
{
    EXPECT_TRUE(makeHeader(layout("r", 8), 65535, 65537, 1).fitsDataBlock()); // 2^32 - 1 bytes
    EXPECT_FALSE(makeHeader(layout("r", 8), 65536, 65536, 1).fitsDataBlock());
    EXPECT_TRUE(CMOXTextureHeader().fitsDataBlock());
    EXPECT_TRUE(makeHeader(layout("r", 8), 1, 1, 1, 0xFFFFFFFF).fitsDataBlock());
    EXPECT_FALSE(makeHeader(layout("r", 8), 2, 1, 1, 0xFFFFFFFF).fitsDataBlock());
}

TEST(FitsDataBlock, IsFalseWhereEven64BitsWrap)
{
    EXPECT_FALSE(makeHeader(k_RGBA8, 0x80000000, 0x80000000, 0x80000000).fitsDataBlock()); // 2^98 bits: 0 in 64
    EXPECT_FALSE(makeHeader(k_RGBA8, 0x10000, 0x10000, 1, 1, 0x80000000, 0x80000000).fitsDataBlock());
    EXPECT_FALSE(makeHeader(k_RGBA8, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 1, 1, 0).fitsDataBlock());
}

TEST(PixelCount, IsTheDataSizeInPixels)
{
    EXPECT_EQ(16u, makeHeader(k_RGBA8, 4, 4, 1, 2, 3, 6).getPixelCount(0, false, false));
    EXPECT_EQ(360u, makeHeader(k_RGBA8, 4, 4, 1, 2, 3, 6).getPixelCount(0xFFFFFFFF, true, true)); // 20 * 18
    EXPECT_EQ(64u, makeHeader(ePF_BC1, 5, 5, 1).getPixelCount(0, false, false));                  // those of whole blocks
    EXPECT_EQ(8u, makeHeader(ePF_1bpp, 1, 1, 1).getPixelCount(0, false, false));
}

TEST(PixelCount, DoesNotWrapWhereTheBitsPass32Bits)
{
    // 2^30 bytes are 2^33 bits.
    EXPECT_EQ(0x10000000u, makeHeader(k_RGBA8, 16384, 16384, 1).getPixelCount(0, false, false));
}

TEST(PixelCount, IsZeroForFormatsWithoutBits)
{
    EXPECT_EQ(0u, makeHeader(ePF_ASTC_4x4, 4, 4, 1).getPixelCount(0, false, false));
    EXPECT_EQ(0u, CMOXTextureHeader().getPixelCount(0, true, true));
}
