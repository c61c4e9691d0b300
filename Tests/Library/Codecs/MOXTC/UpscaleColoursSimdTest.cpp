#include "Codecs/MOXTC/UpscaleColours.h"

#include "CompressorHardImages.h"

using namespace moxtexture;
using namespace compressortest;

namespace
{

template <typename Record>
void expectThePlainPixels()
{
    forEachHardGrid<Record>(
        [](const CompressorImages& images, CSeededRandom&)
        {
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
