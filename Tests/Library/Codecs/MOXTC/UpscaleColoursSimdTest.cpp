#include "Codecs/MOXTC/UpscaleColours.h"

#include "CompressorHardImages.h"

using namespace moxtexture;
using namespace compressortest;

namespace
{

template <typename Record>
void expectThePlainPixels()
{
    forEachHardGrid(
        [](EPixels ePixels, uint32_t uiBlocksX, uint32_t uiBlocksY, CSeededRandom& random)
        {
            const CompressorImages images = makeHardImages<Record>(ePixels, uiBlocksX, uiBlocksY, random);
            CompressorImages expected = images;
            upscaleColoursReference(expected);
            forEachInstructionSet(
                [&]
                {
                    CompressorImages actual = images;
                    upscaleColours(actual);
                    EXPECT_EQ(expected.upscaledA, actual.upscaledA);
                    EXPECT_EQ(expected.upscaledB, actual.upscaledB);
                });
        });
}

} // namespace

TEST(UpscaleColoursSimd, GivesThePlainPixelsOfEveryGridAt2bpp)
{
    expectThePlainPixels<BlockRecord2bpp>();
}

TEST(UpscaleColoursSimd, GivesThePlainPixelsOfEveryGridAt4bpp)
{
    expectThePlainPixels<BlockRecord4bpp>();
}
