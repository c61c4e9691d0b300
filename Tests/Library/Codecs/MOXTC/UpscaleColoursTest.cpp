#include "Codecs/MOXTC/UpscaleColours.h"

#include <gmock/gmock.h>

#include "CompressorTestImages.h"

using namespace moxtexture;
using namespace compressortest;
using testing::Each;
using testing::ElementsAre;

namespace
{

/// The plain form, which the fast one must equal.
void upscaleBoth(CompressorImages& images)
{
    CompressorImages fast = images;
    upscaleColours(fast);
    upscaleColoursReference(images);
    EXPECT_EQ(images.upscaledA, fast.upscaledA);
    EXPECT_EQ(images.upscaledB, fast.upscaledB);
}

std::vector<uint32_t> getRow(const CompressorImages& images, uint32_t y)
{
    const auto first = images.upscaledA.begin() + static_cast<ptrdiff_t>(size_t{y} * images.uiWidth);
    return {first, first + images.uiWidth};
}

std::vector<uint32_t> getColumn(const CompressorImages& images, uint32_t x)
{
    std::vector<uint32_t> column;
    for (uint32_t y = 0; y < images.uiHeight; ++y)
        column.push_back(images.upscaledA[size_t{y} * images.uiWidth + x]);
    return column;
}

/// 8 by 8 pixels of 4bpp in red alone: 0 and 160 above, 80 and 40 below.
CompressorImages makeFourBlocks()
{
    CompressorImages images = makeEmptyImages(8, 8, 4);
    images.colourA = {0, 160, 80, 40};
    upscaleBoth(images);
    return images;
}

/// 16 by 4 pixels of 2bpp in red alone.
CompressorImages makeTwoBlocks(uint32_t uiLeft, uint32_t uiRight)
{
    CompressorImages images = makeEmptyImages(16, 4, 8);
    images.colourA = {uiLeft, uiRight};
    upscaleBoth(images);
    return images;
}

} // namespace

TEST(UpscaleColours, AOneBlockPictureIsFlatInAllChannels)
{
    for (const uint8_t ui8BlockWidth : {uint8_t{4}, uint8_t{8}})
    {
        CompressorImages images = makeEmptyImages(ui8BlockWidth, 4, ui8BlockWidth);
        images.colourA = {rgba(1, 255, 0, 77)};
        images.colourB = {rgba(255, 3, 9, 254)};
        upscaleBoth(images);
        EXPECT_THAT(images.upscaledA, Each(rgba(1, 255, 0, 77)));
        EXPECT_THAT(images.upscaledB, Each(rgba(255, 3, 9, 254)));
    }
}

TEST(UpscaleColours, InsideFourCentresTheRampsAreBilinearWithoutFractions)
{
    // top = 160 i, bottom = 320 - 40 i, (4 top + j (bottom - top)) / 16; the cell starts at the centre of the first block, (2, 2).
    const CompressorImages images = makeFourBlocks();
    const auto cellRow = [&](uint32_t j)
    {
        const std::vector<uint32_t> row = getRow(images, 2 + j);
        return std::vector<uint32_t>(row.begin() + 2, row.begin() + 6);
    };
    EXPECT_THAT(cellRow(0), ElementsAre(0, 40, 80, 120));
    EXPECT_THAT(cellRow(1), ElementsAre(20, 47, 75, 102)); // 320, 760, 1200, 1640 sixteenths
    EXPECT_THAT(cellRow(2), ElementsAre(40, 55, 70, 85));
    EXPECT_THAT(cellRow(3), ElementsAre(60, 62, 65, 67)); // 960, 1000, 1040, 1080
}

TEST(UpscaleColours, RampsWrapAtTheEdges)
{
    const CompressorImages images = makeFourBlocks();
    // The row of the lower centres: 80 at x = 2, 40 at x = 6, and back to 80 across the edge.
    EXPECT_THAT(getRow(images, 6), ElementsAre(60, 70, 80, 70, 60, 50, 40, 50));
    // The column of the left centres: 0 at y = 2, 80 at y = 6, and back.
    EXPECT_THAT(getColumn(images, 2), ElementsAre(40, 20, 0, 20, 40, 60, 80, 60));
    // The corner is the mean of all four blocks: (0 + 160 + 80 + 40) / 4.
    EXPECT_EQ(70u, images.upscaledA[0]);
}

TEST(UpscaleColours, At2bppARampIsEightPixelsLong)
{
    const CompressorImages images = makeTwoBlocks(0, 200);
    for (uint32_t y = 0; y < 4; ++y)
        EXPECT_THAT(getRow(images, y), ElementsAre(100, 75, 50, 25, 0, 25, 50, 75, 100, 125, 150, 175, 200, 175, 150, 125));
}

TEST(UpscaleColours, At2bppRowsRampOverFourPixels)
{
    CompressorImages images = makeEmptyImages(8, 8, 8);
    images.colourA = {10, 90};
    upscaleBoth(images);
    for (uint32_t x = 0; x < 8; ++x)
        EXPECT_THAT(getColumn(images, x), ElementsAre(50, 30, 10, 30, 50, 70, 90, 70));
}

TEST(UpscaleColours, FractionsAreDroppedOnRisingAndFallingSlopes)
{
    // Rising from 0 to 1: i / 8 is 0 throughout. Falling from 1 to 0: (32 - 4 i) / 32 is 1 at i = 0 alone.
    EXPECT_THAT(getRow(makeTwoBlocks(0, 1), 0), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0));
    EXPECT_THAT(getRow(makeTwoBlocks(255, 254), 0),
                ElementsAre(254, 254, 254, 254, 255, 254, 254, 254, 254, 254, 254, 254, 254, 254, 254, 254));
}

TEST(UpscaleColours, ChannelsRampEachForItselfInBothPictures)
{
    CompressorImages images = makeEmptyImages(16, 4, 8);
    images.colourA = {rgba(0, 240, 7, 255), rgba(240, 0, 7, 15)};
    images.colourB = {rgba(8, 0, 0, 0), rgba(0, 16, 0, 0)};
    upscaleBoth(images);
    // Pixel 6 is 2 of 8 on the way from block 0 to block 1, pixel 15 is 3 of 8 on the way back.
    EXPECT_EQ(rgba(60, 180, 7, 195), images.upscaledA[6]);
    EXPECT_EQ(rgba(150, 90, 7, 105), images.upscaledA[15]);
    EXPECT_EQ(rgba(6, 4, 0, 0), images.upscaledB[6]);
    EXPECT_EQ(rgba(3, 10, 0, 0), images.upscaledB[15]);
}
