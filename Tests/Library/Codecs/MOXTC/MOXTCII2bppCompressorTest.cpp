#include "Codecs/MOXTC/MOXTCII2bppCompressor.h"

#include <gmock/gmock.h>

#include "CompressorTestPictures.h"

using namespace moxtexture;
using namespace compressortest;
using testing::ElementsAre;
using testing::Pair;

TEST(MOXTCII2bppCompressor, StartingColoursComeFromTheBlockAloneWhateverTheCallerSays)
{
    constexpr uint32_t uiBlack = rgba(0, 0, 0);
    constexpr uint32_t uiWhite = rgba(255, 255, 255);
    for (const bool bOverlap : {false, true})
        EXPECT_THAT(findColoursAroundADot<MOXTCII2bppCompressor>(bOverlap), ElementsAre(uiBlack, uiWhite, uiBlack, uiBlack));
}

TEST(MOXTCII2bppCompressor, BlocksGoInRowsAndBlocksAtEdgesAreHard)
{
    // All modes err alike, so mode 1 with codes 0: bit 0. All four are hard (bit 15) and opaque (bit 31).
    EXPECT_THAT(writeFourColours<MOXTCII2bppCompressor>(),
                ElementsAre(Pair(0u, 0xFC00FC01u), Pair(0u, 0x83E083E1u), Pair(0u, 0x801F801Fu), Pair(0u, 0xFFFFFFFFu)));
}

TEST(MOXTCII2bppCompressor, AFlatPictureIsExactWithinItsQuantisation)
{
    EXPECT_EQ(makeFlatPicture(rgba(206, 99, 49)), compressFlat<MOXTCII2bppCompressor>(rgba(200, 100, 50)));
    // Translucent, all colour B: the low bit of its alpha is set, so that 3 of 3 bits is 7, 0x77.
    EXPECT_EQ(makeFlatPicture(rgba(206, 99, 49, 0x77)), compressFlat<MOXTCII2bppCompressor>(rgba(200, 100, 50, 120)));
}

TEST(MOXTCII2bppCompressor, AFlatPictureIsNeitherHardNorOfModeOne)
{
    const std::vector<uint8_t> picture = makeFlatPicture(rgba(255, 0, 0));
    MOXTCII2bppCompressor compressor(picture.data(), 16, 8);
    compressor.Initialise(true);
    EXPECT_THAT(compressor.getHardFlags(), testing::Each(0));
    EXPECT_THAT(getWords(writeBlocks(compressor)), testing::Each(Pair(0xFFFFFFFFu, 0xFC007C00u)));
}
