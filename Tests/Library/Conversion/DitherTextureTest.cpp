#include "Conversion/DitherTexture.h"

#include <vector>

#include <gtest/gtest.h>

using namespace moxtexture;

namespace
{

CMOXTexture onePixel(uint8_t r, uint8_t g, uint8_t b, uint8_t a)
{
    const uint8_t aui8Pixel[4] = {r, g, b, a};
    return CMOXTexture(CMOXTextureHeader{k_RGBA8, 1, 1, 1, 1, 1, 1, eCS_sRGB, eCT_UnsignedNormalisedByte, false}, aui8Pixel);
}

std::vector<uint8_t> dithered(CMOXTexture texture, MOXPixelWord newFormat)
{
    EXPECT_TRUE(ditherTexture(texture, newFormat));
    EXPECT_EQ(k_RGBA8, texture.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, texture.getChannelType());
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
    return {texture.getDataPtr(), texture.getDataPtr() + texture.getBlockSize()};
}

} // namespace

TEST(DitherTexture, ALuminanceTargetGetsTheWeightedGrey)
{
    // 0.2126 * 100 + 0.7152 * 200 + 0.0722 * 50 = 167.91; 8 target bits leave it as it is.
    EXPECT_EQ((std::vector<uint8_t>{167, 167, 167, 9}), dithered(onePixel(100, 200, 50, 9), layout("l", 8)));
}

TEST(DitherTexture, AnIntensityTargetGetsTheMean)
{
    // 350 / 3 = 116.67
    EXPECT_EQ((std::vector<uint8_t>{116, 116, 116, 9}), dithered(onePixel(100, 200, 50, 9), layout("i", 8)));
}

TEST(DitherTexture, IntensityWinsOverLuminanceInEitherOrder)
{
    EXPECT_EQ((std::vector<uint8_t>{116, 116, 116, 9}), dithered(onePixel(100, 200, 50, 9), layout("li", 8, 8)));
    EXPECT_EQ((std::vector<uint8_t>{116, 116, 116, 9}), dithered(onePixel(100, 200, 50, 9), layout("il", 8, 8)));
}

TEST(DitherTexture, OneBitTakesTheIntensity)
{
    // The mean 116 in one bit: (116 >> 7) << 7 is 0, and 116 >> 1 = 58 fills the low bits.
    EXPECT_EQ((std::vector<uint8_t>{58, 58, 58, 9}), dithered(onePixel(100, 200, 50, 9), ePF_1bpp));
}

TEST(DitherTexture, TheLGRLayoutOfSixFiveFiveIsNoGrey)
{
    // On purpose: this one word never counts. Its l (6 bits, first) sets r, g and b, then g and r their own 5 bits:
    // red 100 -> 96 + 3, green 200 -> 200 + 6, blue in 6 bits 50 -> 48 + 0.
    const MOXPixelWord lgr(0x000505060072676Cu);
    EXPECT_EQ((std::vector<uint8_t>{99, 206, 48, 9}), dithered(onePixel(100, 200, 50, 9), lgr));
    // The same letters with other bits do count: the grey 167 stands in all three before the bits are cut.
    EXPECT_EQ((std::vector<uint8_t>{167, 167, 167, 9}), dithered(onePixel(100, 200, 50, 9), layout("lgr", 8, 8, 8)));
}

TEST(DitherTexture, FormatsWithoutBitCountsLeaveEveryValue)
{
    EXPECT_EQ((std::vector<uint8_t>{100, 200, 50, 9}), dithered(onePixel(100, 200, 50, 9), ePF_ASTC_4x4));
}

TEST(DitherTexture, ETC1UsesFourBitsOfEachChannel)
{
    // 100 >> 4 is 6: 96 + (100 >> 4); 200: 192 + 12; 50: 48 + 3; 9: 0 + 0.
    EXPECT_EQ((std::vector<uint8_t>{102, 204, 51, 0}), dithered(onePixel(100, 200, 50, 9), ePF_ETC1));
}

TEST(DitherTexture, AnySourceBecomesBytesFirst)
{
    const float afPixel[2] = {1.0f, 0.5f}; // 0.5 * 255 + 0.5 = 128
    const CMOXTexture greys(CMOXTextureHeader{layout("r", 32), 1, 2, 1, 1, 1, 1, eCS_sRGB, eCT_SignedFloatingPoint, false}, afPixel);
    EXPECT_EQ((std::vector<uint8_t>{255, 0, 0, 255, 128, 0, 0, 255}), dithered(greys, layout("rgb", 8, 8, 8)));
}

TEST(DitherTexture, EveryMemberAndFaceIsDitheredByItself)
{
    CMOXTexture texture(CMOXTextureHeader{k_RGBA8, 1, 1, 1, 1, 2, 6, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    for (uint32_t i = 0; i < texture.getBlockSize(); ++i)
        texture.getDataPtr()[i] = 4; // its error would lift a neighbour to 8
    ASSERT_TRUE(ditherTexture(texture, layout("rgba", 5, 5, 5, 1)));
    for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
        for (uint32_t uiFace = 0; uiFace < 6; ++uiFace)
            EXPECT_EQ(0, texture.getDataPtr(0, uiMember, uiFace)[0]) << uiMember << ' ' << uiFace;
}

TEST(DitherTexture, EveryLevelIsDithered)
{
    CMOXTexture texture(CMOXTextureHeader{k_RGBA8, 2, 2, 1, 2, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    for (uint32_t i = 0; i < texture.getBlockSize(); ++i)
        texture.getDataPtr()[i] = 7;
    ASSERT_TRUE(ditherTexture(texture, layout("rgb", 5, 6, 5)));
    EXPECT_EQ(0, texture.getDataPtr(1)[0]); // 7 in 5 bits is 0
    EXPECT_EQ(4, texture.getDataPtr(1)[1]); // 7 in 6 bits is 4
    EXPECT_EQ(7, texture.getDataPtr(1)[3]); // alpha has no bits in the target
}
