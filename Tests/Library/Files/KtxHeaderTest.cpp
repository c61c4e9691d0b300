#include "Files/KtxHeader.h"

#include <cstring>

#include <gtest/gtest.h>

#include "Support/KtxFileBuilder.h"

using namespace moxtexture;

namespace
{

/// A header with a number of its own in each field.
const uint8_t k_aui8Bytes[64] = {
    0xAB, 0x4B, 0x54, 0x58, 0x20, 0x31, 0x31, 0xBB, 0x0D, 0x0A, 0x1A, 0x0A, // identifier
    1,    2,    3,    4,                                                    // 0x04030201, lowest byte first
    0x10, 0x11, 0,    0,                                                    // glType
    0x20, 0,    0,    0,                                                    // glTypeSize
    0x30, 0,    0,    0,                                                    // glFormat
    0x40, 0,    0,    0,                                                    // glInternalFormat
    0x50, 0,    0,    0,                                                    // glBaseInternalFormat
    0x60, 0,    0,    0x61,                                                 // width
    0x70, 0,    0,    0,                                                    // height
    0x80, 0,    0,    0,                                                    // depth
    0x90, 0,    0,    0,                                                    // array elements
    0xA0, 0,    0,    0,                                                    // faces
    0xB0, 0,    0,    0,                                                    // levels
    0xC0, 0xC1, 0xC2, 0xC3,                                                 // bytes of keys and values
};

bool parse(const uint8_t (&aui8Changed)[64])
{
    KtxHeader header;
    return parseKtxHeader(aui8Changed, header);
}

CMOXTextureHeader orientedBy(uint32_t ui32Mask)
{
    CMOXTextureHeader header;
    header.setOrientation(ui32Mask);
    return header;
}

} // namespace

TEST(KtxHeader, EveryFieldStandsAtItsOffset)
{
    KtxHeader header;
    ASSERT_TRUE(parseKtxHeader(k_aui8Bytes, header));
    EXPECT_EQ(0x1110u, header.format.ui32Type);
    EXPECT_EQ(0x20u, header.format.ui32TypeSize);
    EXPECT_EQ(0x30u, header.format.ui32Format);
    EXPECT_EQ(0x40u, header.format.ui32InternalFormat);
    EXPECT_EQ(0x50u, header.format.ui32BaseInternalFormat);
    EXPECT_EQ(0x61000060u, header.ui32Width);
    EXPECT_EQ(0x70u, header.ui32Height);
    EXPECT_EQ(0x80u, header.ui32Depth);
    EXPECT_EQ(0x90u, header.ui32NumArrayElements);
    EXPECT_EQ(0xA0u, header.ui32NumFaces);
    EXPECT_EQ(0xB0u, header.ui32NumMIPLevels);
    EXPECT_EQ(0xC3C2C1C0u, header.ui32KeyValueSize);

    uint8_t aui8Stored[64];
    storeKtxHeader(header, aui8Stored);
    EXPECT_EQ(0, std::memcmp(k_aui8Bytes, aui8Stored, 64));
}

TEST(KtxHeader, AnyOtherByteOfIdentifierOrByteOrderIsRefused)
{
    for (size_t i = 0; i < 16; ++i)
    {
        uint8_t aui8Changed[64];
        std::memcpy(aui8Changed, k_aui8Bytes, 64);
        aui8Changed[i] ^= 0x20;
        EXPECT_FALSE(parse(aui8Changed)) << i;
    }
}

TEST(KtxHeader, TheOtherByteOrderIsRefused)
{
    uint8_t aui8Changed[64];
    std::memcpy(aui8Changed, k_aui8Bytes, 64);
    for (uint8_t i = 0; i < 4; ++i)
        aui8Changed[12 + i] = static_cast<uint8_t>(4 - i);
    EXPECT_FALSE(parse(aui8Changed));
}

TEST(KtxHeader, PaddingGoesToTheNextMultipleOfFour)
{
    const uint32_t auiExpected[] = {0, 3, 2, 1, 0, 3, 2, 1, 0};
    for (uint32_t i = 0; i < 9; ++i)
        EXPECT_EQ(auiExpected[i], getKtxPadding(i)) << i;
    EXPECT_EQ(1u, getKtxPadding(0xFFFFFFFF));
    EXPECT_EQ(3u, getKtxPadding(0x100000001));
}

TEST(KtxOrientation, AllEightLetterCombinationsGoBothWays)
{
    const char* const astrValues[] = {"S=r,T=d,R=i", "S=l,T=d,R=i", "S=r,T=u,R=i", "S=l,T=u,R=i",
                                      "S=r,T=d,R=o", "S=l,T=d,R=o", "S=r,T=u,R=o", "S=l,T=u,R=o"};
    for (uint32_t ui32Mask = 0; ui32Mask < 8; ++ui32Mask)
    {
        EXPECT_EQ(ui32Mask, getKtxOrientationMask(astrValues[ui32Mask])) << astrValues[ui32Mask];
        EXPECT_EQ(astrValues[ui32Mask], getKtxOrientationValue(orientedBy(ui32Mask)));
    }
}

TEST(KtxOrientation, AValueWithoutATPartSetsTheYBit)
{
    EXPECT_EQ(2u, getKtxOrientationMask("S=r"));
    EXPECT_EQ(3u, getKtxOrientationMask("S=l"));
    EXPECT_EQ(2u, getKtxOrientationMask(""));
}

TEST(KtxOrientation, ValuesOfFewerAxesAreReadByTheirLetters)
{
    EXPECT_EQ(0u, getKtxOrientationMask("S=r,T=d"));
    EXPECT_EQ(2u, getKtxOrientationMask("S=r,T=u"));
}

TEST(KtxOrientation, ALetterCountsWhereItStandsExactlyOnce)
{
    EXPECT_EQ(2u, getKtxOrientationMask("S=r,T=d,T=d"));
    EXPECT_EQ(0u, getKtxOrientationMask("S=l,l,T=d"));
    EXPECT_EQ(0u, getKtxOrientationMask("o,o,d"));
    EXPECT_EQ(5u, getKtxOrientationMask("old"));
}

TEST(KtxOrientation, ATextureWithoutTheRecordOrWithOtherBytesIsPlain)
{
    EXPECT_EQ("S=r,T=d,R=i", getKtxOrientationValue(CMOXTextureHeader()));
    CMOXTextureHeader header;
    const uint8_t aui8Odd[3] = {2, 1, 1};
    header.addMetaData(MetaDataBlock(CMOXTextureHeader::k_ui32NativeFourCC, eMetaDataOrientation, aui8Odd, 3));
    EXPECT_EQ("S=r,T=d,R=i", getKtxOrientationValue(header));
}

TEST(KtxRows, PixelsHaveThemAndBlocksDoNot)
{
    EXPECT_TRUE(hasKtxRows(k_RGBA8));
    EXPECT_TRUE(hasKtxRows(ePF_Shared_Exponent_RGB999_E5));
    EXPECT_FALSE(hasKtxRows(ePF_ETC1));
    EXPECT_FALSE(hasKtxRows(ePF_UYVY));

    const CMOXTextureHeader header(layout("rgb", 8, 8, 8), 4, 7, 6, 2, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    EXPECT_EQ(24u, getKtxRows(header, 0).ui64Count); // 4 rows in each of 6 slices
    EXPECT_EQ(21u, getKtxRows(header, 0).ui64Size);  // 7 pixels of 3 bytes
    EXPECT_EQ(6u, getKtxRows(header, 1).ui64Count);  // 2 rows in each of 3 slices
    EXPECT_EQ(9u, getKtxRows(header, 1).ui64Size);
}
