#include "Codecs/MOXTC/MOXTC2bppCompressor.h"

#include <gmock/gmock.h>

#include "CompressorTestPictures.h"

using namespace moxtexture;
using namespace compressortest;
using testing::ElementsAre;
using testing::Pair;

TEST(MOXTC2bppCompressor, StartingColoursComeFromTheBlockAloneWhateverTheCallerSays)
{
    constexpr uint32_t uiBlack = rgba(0, 0, 0);
    constexpr uint32_t uiWhite = rgba(255, 255, 255);
    for (const bool bOverlap : {false, true})
        EXPECT_THAT(findColoursAroundADot<MOXTC2bppCompressor>(bOverlap), ElementsAre(uiBlack, uiWhite, uiBlack, uiBlack));
}

TEST(MOXTC2bppCompressor, BlocksGoInMortonOrderOrInRows)
{
    // A and B are alike: all modes err alike, and mode 1, with the least factor, is taken with codes 0; the mode flag is bit 0.
    const auto red = Pair(0u, 0xFC00FC01u);
    const auto green = Pair(0u, 0x83E083E1u);
    const auto blue = Pair(0u, 0x801F801Fu);
    const auto white = Pair(0u, 0xFFFFFFFFu);
    EXPECT_THAT(writeFourColours<MOXTC2bppCompressor>(false), ElementsAre(red, green, blue, white));
    EXPECT_THAT(writeFourColours<MOXTC2bppCompressor>(true), ElementsAre(red, blue, green, white));
}

TEST(MOXTC2bppCompressor, AFlatPictureIsExactWithinItsQuantisation)
{
    EXPECT_EQ(makeFlatPicture(rgba(206, 99, 49)), compressFlat<MOXTC2bppCompressor>(rgba(200, 100, 50)));
    // Translucent, all colour B: 12, 6, 3 in 4 bits expand to 25, 12, 6. Alpha 3 in 3 bits is 6, 0x66.
    EXPECT_EQ(makeFlatPicture(rgba(206, 99, 49, 0x66)), compressFlat<MOXTC2bppCompressor>(rgba(200, 100, 50, 120)));
}

TEST(MOXTC2bppCompressor, TheModeOfABlockIsWrittenWithItsCodes)
{
    // One block whose colours are 0 and 240 in red everywhere, and whose pixels are the worked weights of the mode, 30 a step. (Those of
    // mode 2 go beyond 8, where no pixel between the two colours lies.)
    for (uint8_t ui8Mode : {uint8_t{1}, uint8_t{3}})
    {
        const Codes2bpp& weights = *k_apWorkedWeights[ui8Mode];
        const std::vector<uint8_t> picture = makeBytes(8, 4, [&](uint32_t x, uint32_t y) { return rgba(30u * weights[y * 8 + x], 0, 0); });
        MOXTC2bppCompressor compressor(picture.data(), 8, 4);
        compressor.Initialise(true);
        EXPECT_EQ(ui8Mode, compressor.getBlockData()[0].ui8Mode);
        // Codes of two bits from the first pixel up: 3 1 2 0, 1 3 0 2, 2 2 3 1, 0 1 3 3: bytes 27, 8D, 7A, F4.
        // Bit 0 is cleared for mode 1, and it and bit 20 (set already, in 7A) are set for mode 3.
        const uint32_t uiModulation = ui8Mode == 1 ? 0xF47A8D26u : 0xF47A8D27u;
        // A: opaque black with the flag; B: opaque, red 30.
        EXPECT_THAT(getWords(writeBlocks(compressor)), ElementsAre(Pair(uiModulation, 0xF8008001u)));
    }
}
