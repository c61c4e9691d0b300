#include "Codecs/ETC/EtcPlanarFit.h"

#include <gtest/gtest.h>

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcPlanarFit.h"

namespace
{

using namespace moxtexture;

/// A grey block of start + x * across + y * down.
EtcPixels greyPlane(int32_t iStart, int32_t iAcross, int32_t iDown)
{
    EtcPixels pixels;
    for (int32_t i = 0; i < 16; ++i)
        pixels.aui8Red[static_cast<size_t>(i)] = static_cast<uint8_t>(iStart + i % 4 * iAcross + i / 4 * iDown);
    pixels.aui8Green = pixels.aui8Red;
    pixels.aui8Blue = pixels.aui8Red;
    return pixels;
}

TEST(EtcPlanarFit, LevelsArePackedFromTheTopInTheOrderOriginHorizontalVertical)
{
    // 000001 0000010 000011 000100 0000101 | 000110 000111 0001000 001001 0000000
    const EtcBlockWords words = packPlanar({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    EXPECT_EQ(0x04106205u, words.ui32High);
    EXPECT_EQ(0x18710480u, words.ui32Low);
}

TEST(EtcPlanarFit, EveryFieldTakesItsGreatestLevel)
{
    const EtcBlockWords words = packPlanar({{63, 127, 63}, {63, 127, 63}, {63, 127, 63}});
    EXPECT_EQ(0xFFFFFFFFu, words.ui32High);
    EXPECT_EQ(0xFFFFFF80u, words.ui32Low);
}

TEST(EtcPlanarFit, AFlatWhiteBlockHasAllCornersWhite)
{
    EXPECT_EQ(packPlanar({{63, 127, 63}, {63, 127, 63}, {63, 127, 63}}), planarFit(etctest::flatEtcBlock(255, 255, 255)));
}

TEST(EtcPlanarFit, APerfectGradientGetsTheNearestLevelsOfItsCorners)
{
    // Values 100 + 8 x: 100 at the origin, 132 at (4, 0), 100 at (0, 4).
    // 6 bits: 100 / 4.0476 = 24.7 is 25, 132 / 4.0476 = 32.6 is 33. 7 bits: 100 / 2.0079 = 49.8 is 50, 132 / 2.0079 = 65.7 is 66.
    const EtcPixels pixels = greyPlane(100, 8, 0);
    const EtcBlockWords words = planarFit(pixels);
    EXPECT_EQ(packPlanar({{25, 50, 25}, {33, 66, 33}, {25, 50, 25}}), words);

    // Red and blue: 101 and 134 are decoded as 101, 109, 118, 126, off by 1, 1, 2, 2 in each row: 40 for the block.
    // Green: 100 and 133, (402 + 33 x) / 4 is 100, 108, 117, 125: off by 0, 0, 1, 1 in each row: 8 for the block.
    EXPECT_EQ(88.0, blockErrorRGB(pixels, decodeEtcPixelsPlanar(words)));
}

TEST(EtcPlanarFit, ACornerBecomesTheNearestLevelOfItsBits)
{
    // 253 * 63 / 255 = 62.51 and 250 * 127 / 255 = 124.51; 252 * 63 / 255 = 62.26 and 249 * 127 / 255 = 124.01.
    EXPECT_EQ(packPlanar({{63, 125, 63}, {63, 125, 63}, {63, 125, 63}}), planarFit(etctest::flatEtcBlock(253, 250, 253)));
    EXPECT_EQ(packPlanar({{62, 124, 62}, {62, 124, 62}, {62, 124, 62}}), planarFit(etctest::flatEtcBlock(252, 249, 252)));
}

TEST(EtcPlanarFit, CornersBeyondTheRangeOfAByteAreClamped)
{
    // Across 340 at (4, 0), down likewise.
    EXPECT_EQ(packPlanar({{0, 0, 0}, {63, 127, 63}, {0, 0, 0}}), planarFit(greyPlane(0, 85, 0)));
    EXPECT_EQ(packPlanar({{63, 127, 63}, {63, 127, 63}, {0, 0, 0}}), planarFit(greyPlane(255, 0, -85)));
}

TEST(EtcPlanarFit, ChannelsAreFittedApart)
{
    EtcPixels pixels = greyPlane(0, 0, 0);
    pixels.aui8Green = greyPlane(0, 0, 85).aui8Red;
    pixels.aui8Blue = greyPlane(255, 0, 0).aui8Red;
    EXPECT_EQ(packPlanar({{0, 0, 63}, {0, 0, 63}, {0, 127, 63}}), planarFit(pixels));
}

TEST(EtcPlanarFit, GivesTheWordsOfTheProductsOfWholeMatrices)
{
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(801, 40000))
    {
        const EtcBlockWords expected = etcreference::planarFit(pixels);
        const EtcBlockWords actual = planarFit(pixels);
        ASSERT_EQ(expected.ui32High, actual.ui32High);
        ASSERT_EQ(expected.ui32Low, actual.ui32Low);
    }
}

} // namespace
