#include "Codecs/MOXTC/MOXTCII4bppCompressor.h"

#include <gmock/gmock.h>

#include "CompressorTestPictures.h"

using namespace moxtexture;
using namespace compressortest;
using testing::ElementsAre;
using testing::Pair;

TEST(MOXTCII4bppCompressor, StartingColoursComeFromAroundTheBlockIfTheCallerSaysSo)
{
    constexpr uint32_t uiBlack = rgba(0, 0, 0);
    constexpr uint32_t uiWhite = rgba(255, 255, 255);
    EXPECT_THAT(findColoursAroundADot<MOXTCII4bppCompressor>(true), ElementsAre(uiWhite, uiWhite, uiBlack, uiBlack));
    EXPECT_THAT(findColoursAroundADot<MOXTCII4bppCompressor>(false), ElementsAre(uiBlack, uiWhite, uiBlack, uiBlack));
}

TEST(MOXTCII4bppCompressor, BlocksGoInRowsAndBlocksAtEdgesAreHard)
{
    // All four differ from their neighbours by 2 * 255 * 255 or more: bit 15 is set in each. Bit 31 says that both colours are opaque.
    EXPECT_THAT(writeFourColours<MOXTCII4bppCompressor>(),
                ElementsAre(Pair(0u, 0xFC00FC00u), Pair(0u, 0x83E083E0u), Pair(0u, 0x801F801Eu), Pair(0u, 0xFFFFFFFEu)));
}

TEST(MOXTCII4bppCompressor, BlocksOfNearColoursAreNotHard)
{
    // 63 * 63 = 3969 is not above 4095; 64 * 64 = 4096 is.
    const auto makeFlags = [](uint32_t uiOther)
    {
        const std::vector<uint8_t> picture = makeBytes(8, 4, [=](uint32_t x, uint32_t) { return rgba(x < 4 ? 128 : uiOther, 0, 0); });
        MOXTCII4bppCompressor compressor(picture.data(), 8, 4);
        compressor.Initialise(false);
        return std::make_pair(compressor.getHardFlags(), getWords(writeBlocks(compressor)));
    };
    // Red 128 is 16 of 5 bits, 191 is 23, 192 is 24.
    EXPECT_THAT(makeFlags(191), Pair(ElementsAre(0, 0), ElementsAre(Pair(0u, 0xC0004000u), Pair(0u, 0xDC005C00u))));
    EXPECT_THAT(makeFlags(192), Pair(ElementsAre(1, 1), ElementsAre(Pair(0u, 0xC000C000u), Pair(0u, 0xE000E000u))));
}

TEST(MOXTCII4bppCompressor, ThePassesLeaveTheHardFlags)
{
    const std::vector<uint8_t> picture =
        makeBytes(32, 32, [](uint32_t x, uint32_t y) { return rgba(x * 37 % 256, y * 59 % 256, (x / 5 + y / 3) % 2 * 255); });
    MOXTCII4bppCompressor compressor(picture.data(), 32, 32);
    compressor.Initialise(true);
    const std::vector<uint8_t> flags = compressor.getHardFlags();
    compressor.setIterations(8);
    compressor.Compress();
    EXPECT_EQ(flags, compressor.getHardFlags());
}

TEST(MOXTCII4bppCompressor, AFlatPictureIsExactWithinItsQuantisation)
{
    EXPECT_EQ(makeFlatPicture(rgba(206, 99, 49)), compressFlat<MOXTCII4bppCompressor>(rgba(200, 100, 50)));
    // Translucent, all colour A, as in MOXTC1: blue 1 in 3 bits is 4, 33; alpha 3 is 6, 0x66.
    EXPECT_EQ(makeFlatPicture(rgba(206, 99, 33, 0x66)), compressFlat<MOXTCII4bppCompressor>(rgba(200, 100, 50, 120)));
}

TEST(MOXTCII4bppCompressor, BothColoursAreTranslucentIfOneIs)
{
    // One block: a transparent black pixel, the others opaque red: alpha 7 of 3 bits in 30..28, red 15 of 4 bits in 27..24.
    const std::vector<uint8_t> picture = makeBytes(4, 4, [](uint32_t x, uint32_t y) { return x == 3 && y == 3 ? 0u : rgba(255, 0, 0); });
    MOXTCII4bppCompressor compressor(picture.data(), 4, 4);
    compressor.Initialise(true);
    EXPECT_THAT(getWords(writeBlocks(compressor)), ElementsAre(Pair(0x3FFFFFFFu, 0x7F000000u)));
}
