#include "Texture/DdsFormats.h"

#include <gtest/gtest.h>

using namespace moxtexture;

namespace
{

constexpr uint32_t k_uiDXT2 = 0x32545844;
constexpr uint32_t k_uiDXT5 = 0x35545844;

CMOXTextureHeader someHeader()
{
    CMOXTextureHeader header(layout("bgr", 10, 11, 11), 3, 4, 5, 1, 1, 1, eCS_sRGB, eCT_UnsignedFloatingPoint, false);
    return header;
}

/// With both flags, the way a file gives them.
CMOXTextureHeader headerWithAllFlags()
{
    CMOXTextureHeader header = someHeader();
    uint8_t aui8Record[CMOXTextureHeader::k_uiRecordSize];
    header.writeRecord(aui8Record);
    aui8Record[4] = 3;
    header.readRecord(aui8Record);
    return header;
}

} // namespace

TEST(SetFromD3DFormat, ANumberSetsFormatTypeAndTheLinearSpaceAndNoFlag)
{
    CMOXTextureHeader header = headerWithAllFlags();
    EXPECT_TRUE(setFromD3DFormat(header, 60));
    EXPECT_EQ(layout("gr", 8, 8), header.getPixelFormat());
    EXPECT_EQ(eCT_SignedNormalisedInteger, header.getChannelType());
    EXPECT_EQ(eCS_Linear, header.getColourSpace());
    EXPECT_EQ(3u, header.getFlags());
    EXPECT_EQ(4u, header.getWidth());
}

TEST(SetFromD3DFormat, AFourCCAlsoSetsTheFlagAndANoClearsAllOfThem)
{
    CMOXTextureHeader header = someHeader();
    EXPECT_TRUE(setFromD3DFormat(header, k_uiDXT2));
    EXPECT_EQ(MOXPixelWord(ePF_DXT2), header.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, header.getChannelType());
    EXPECT_EQ(eCS_Linear, header.getColourSpace());
    EXPECT_EQ(2u, header.getFlags());

    header = headerWithAllFlags();
    EXPECT_TRUE(setFromD3DFormat(header, k_uiDXT5));
    EXPECT_EQ(0u, header.getFlags());
}

TEST(SetFromD3DFormat, AnUnknownNumberChangesNothing)
{
    CMOXTextureHeader header = headerWithAllFlags();
    EXPECT_FALSE(setFromD3DFormat(header, 0));
    EXPECT_FALSE(setFromD3DFormat(header, 37));
    EXPECT_EQ(headerWithAllFlags().getEncoding(), header.getEncoding());
    EXPECT_EQ(3u, header.getFlags());
}

TEST(SetFromDXGIFormat, ANumberSetsFormatTypeAndSpaceAndNoFlag)
{
    CMOXTextureHeader header = headerWithAllFlags();
    setFromDXGIFormat(header, 29);
    EXPECT_EQ(k_RGBA8, header.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, header.getChannelType());
    EXPECT_EQ(eCS_sRGB, header.getColourSpace());
    setFromDXGIFormat(header, 98);
    EXPECT_EQ(MOXPixelWord(ePF_BC7), header.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedInteger, header.getChannelType());
    EXPECT_EQ(eCS_Linear, header.getColourSpace());
    EXPECT_EQ(3u, header.getFlags());
}

TEST(SetFromDXGIFormat, AnUnknownNumberChangesNothing)
{
    CMOXTextureHeader header = someHeader();
    setFromDXGIFormat(header, 0);
    setFromDXGIFormat(header, 27);
    EXPECT_EQ(someHeader().getEncoding(), header.getEncoding());
}
