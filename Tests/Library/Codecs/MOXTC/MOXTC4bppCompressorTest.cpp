#include "Codecs/MOXTC/MOXTC4bppCompressor.h"

#include <gmock/gmock.h>

#include "CompressorTestPictures.h"

using namespace moxtexture;
using namespace compressortest;
using testing::ElementsAre;
using testing::Pair;

TEST(MOXTC4bppCompressor, StartingColoursComeFromAroundTheBlockIfTheCallerSaysSo)
{
    constexpr uint32_t uiBlack = rgba(0, 0, 0);
    constexpr uint32_t uiWhite = rgba(255, 255, 255);
    EXPECT_THAT(findColoursAroundADot<MOXTC4bppCompressor>(true), ElementsAre(uiWhite, uiWhite, uiBlack, uiBlack));
    EXPECT_THAT(findColoursAroundADot<MOXTC4bppCompressor>(false), ElementsAre(uiBlack, uiWhite, uiBlack, uiBlack));
}

TEST(MOXTC4bppCompressor, BlocksGoInMortonOrderOrInRows)
{
    // A and B are alike, so that all codes are 0 and both modes err alike. Opacity flags 15 and 31; red 14..10 and 30..26, green 9..5 and
    // 25..21, blue 4..1 and 20..16.
    const auto red = Pair(0u, 0xFC00FC00u);
    const auto green = Pair(0u, 0x83E083E0u);
    const auto blue = Pair(0u, 0x801F801Eu);
    const auto white = Pair(0u, 0xFFFFFFFEu);
    EXPECT_THAT(writeFourColours<MOXTC4bppCompressor>(false), ElementsAre(red, green, blue, white));
    EXPECT_THAT(writeFourColours<MOXTC4bppCompressor>(true), ElementsAre(red, blue, green, white));
}

TEST(MOXTC4bppCompressor, AFlatPictureIsExactWithinItsQuantisation)
{
    // 200, 100, 50 in 5 bits are 25, 12, 6 (blue 3 in 4 bits, which expands to 6): 25 << 3 | 25 >> 2 = 206, 99, 49.
    EXPECT_EQ(makeFlatPicture(rgba(206, 99, 49)), compressFlat<MOXTC4bppCompressor>(rgba(200, 100, 50)));
    // Translucent, all colour A: 12 and 6 in 4 bits expand to 25 and 12, blue 1 in 3 bits to 4, which is 33. Alpha 3 in 3 bits is 6, 0x66.
    EXPECT_EQ(makeFlatPicture(rgba(206, 99, 33, 0x66)), compressFlat<MOXTC4bppCompressor>(rgba(200, 100, 50, 120)));
}

TEST(MOXTC4bppCompressor, EachColourHasAnOpacityOfItsOwn)
{
    // One block: a transparent black pixel, the others opaque red. A: nothing but zeros. B: flag 31 and red.
    const std::vector<uint8_t> picture = makeBytes(4, 4, [](uint32_t x, uint32_t y) { return x == 3 && y == 3 ? 0u : rgba(255, 0, 0); });
    MOXTC4bppCompressor compressor(picture.data(), 4, 4);
    compressor.Initialise(true);
    EXPECT_THAT(getWords(writeBlocks(compressor)), ElementsAre(Pair(0x3FFFFFFFu, 0xFC000000u)));
}

TEST(MOXTC4bppCompressor, HalfWayPixelsMakeThePunchThroughMode)
{
    // Rows of 0, 124, 124, 248: code 1 of weights 0, 4, 4, 8. Codes 0, 1, 1, 3 by rows; the mode flag is set.
    const std::vector<uint8_t> picture = makeBytes(4, 4, [](uint32_t, uint32_t y) { return rgba(124 * (y - y / 2), 0, 0); });
    MOXTC4bppCompressor compressor(picture.data(), 4, 4);
    compressor.Initialise(true);
    EXPECT_EQ(1u, compressor.getBlockData()[0].uiMode);
    // A: opaque black with the flag; B: opaque, red 31.
    EXPECT_THAT(getWords(writeBlocks(compressor)), ElementsAre(Pair(0xFF555500u, 0xFC008001u)));
}
