#include "Codecs/MOXTC/CompressorImages.h"

#include <gmock/gmock.h>

#include "CompressorTestImages.h"

using namespace moxtexture;
using namespace compressortest;
using testing::Each;
using testing::SizeIs;

TEST(CompressorImages, BlocksAreEightOrFourWideAndFourHigh)
{
    const CompressorImages wide = makeEmptyImages(24, 20, 8);
    EXPECT_EQ(3u, wide.uiBlocksX);
    EXPECT_EQ(5u, wide.uiBlocksY);
    EXPECT_EQ(15u, wide.getBlockCount());
    const CompressorImages square = makeEmptyImages(24, 20, 4);
    EXPECT_EQ(6u, square.uiBlocksX);
    EXPECT_EQ(5u, square.uiBlocksY);
    EXPECT_EQ(4, square.ui8BlockHeight);
}

TEST(CompressorImages, TheSourceIsACopyOfNumbersWithRedLowest)
{
    std::vector<uint8_t> bytes = makeBytes(4, 4, [](uint32_t x, uint32_t y) { return rgba(10 * y + x, 1, 2, 3); });
    const CompressorImages images = makeCompressorImages(bytes.data(), 4, 4, 4);
    bytes.assign(bytes.size(), 99);
    EXPECT_EQ(0x03020100u + 32u, images.source[4 * 3 + 2]);
}

TEST(CompressorImages, ColoursAreOneABlockAndUpscaledOnesOneAPixel)
{
    const CompressorImages images = makeEmptyImages(16, 8, 8);
    EXPECT_THAT(images.colourA, SizeIs(4));
    EXPECT_THAT(images.colourB, SizeIs(4));
    EXPECT_THAT(images.upscaledA, SizeIs(128));
    EXPECT_THAT(images.upscaledB, SizeIs(128));
    EXPECT_THAT(images.upscaledA, Each(0u));
}

TEST(CompressorImages, ABlockStartsAtItsUpperLeftPixel)
{
    const CompressorImages images = makeEmptyImages(24, 20, 8);
    EXPECT_EQ(2u * 4 * 24 + 8, images.getFirstPixel(1, 2));
    EXPECT_EQ(2u * 3 + 1, images.getBlockIndex(1, 2));
}

TEST(CompressorImages, ABlendGoesFromAToBInEighths)
{
    EXPECT_EQ(100, blendChannel(100, 180, 0));
    EXPECT_EQ(130, blendChannel(100, 180, 3)); // (80 * 3 + 800) / 8
    EXPECT_EQ(150, blendChannel(100, 180, 5));
    EXPECT_EQ(180, blendChannel(100, 180, 8));
    EXPECT_EQ(0, blendChannel(0, 1, 5)); // 5 / 8
}

TEST(CompressorImages, ABlendBeyondBTruncatesTowardsZero)
{
    EXPECT_EQ(200, blendChannel(100, 180, 10));
    EXPECT_EQ(-1, blendChannel(7, 0, 10)); // (-70 + 56) / 8 = -14 / 8, -2 if rounded down
    EXPECT_EQ(0, blendChannel(7, 0, 9));   // (-63 + 56) / 8 = -7 / 8, -1 if rounded down
    EXPECT_EQ(-63, blendChannel(255, 0, 10));
    EXPECT_EQ(318, blendChannel(0, 255, 10));
}

TEST(CompressorImages, DistancesAndErrorsAddTheSquaresOfFourChannels)
{
    EXPECT_EQ(1 + 4 + 9 + 16, getSquaredDistance(rgba(10, 20, 30, 40), rgba(11, 18, 33, 36)));
    EXPECT_EQ(4 * 255 * 255, getSquaredDistance(level(0), level(255)));
    // Blends of 3 eighths: 30, 130, 50 (80 - 30), 255. Differences 1, -2, 3, 5.
    EXPECT_EQ(1 + 4 + 9 + 25, getBlendError(rgba(29, 132, 47, 250), rgba(0, 100, 80, 255), rgba(80, 180, 0, 255), 3));
}
