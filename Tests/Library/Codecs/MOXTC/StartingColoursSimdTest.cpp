#include "Codecs/MOXTC/StartingColours.h"

#include "CompressorHardImages.h"

using namespace moxtexture;
using namespace compressortest;

namespace
{

void expectThePlainColours(const CompressorImages& images)
{
    for (const bool bOverlap : {false, true})
    {
        SCOPED_TRACE(bOverlap ? "with the overlap" : "without the overlap");
        CompressorImages expected = images;
        findStartingColoursReference(expected, bOverlap);
        forEachInstructionSet(
            [&]
            {
                CompressorImages actual = images;
                findStartingColours(actual, bOverlap);
                EXPECT_EQ(expected.colourA, actual.colourA);
                EXPECT_EQ(expected.colourB, actual.colourB);
            });
    }
}

} // namespace

TEST(StartingColoursSimd, GivesThePlainColoursOfEveryGridAt2bpp)
{
    forEachHardGrid<BlockRecord2bpp>([](const CompressorImages& images, CSeededRandom&) { expectThePlainColours(images); });
}

TEST(StartingColoursSimd, GivesThePlainColoursOfEveryGridAt4bpp)
{
    forEachHardGrid<BlockRecord4bpp>([](const CompressorImages& images, CSeededRandom&) { expectThePlainColours(images); });
}

/// Every pair of places of the window of 64 in turn has the only far pixels.
TEST(StartingColoursSimd, FindsAPairWhereverItLies)
{
    CompressorImages images = makeEmptyImages(8, 8, 4);
    for (size_t i = 0; i < images.source.size(); ++i)
    {
        for (size_t j = i + 1; j < images.source.size(); ++j)
        {
            fill(images.source, level(100));
            images.source[i] = level(90);
            images.source[j] = level(200);
            findStartingColours(images, true);
            ASSERT_EQ(std::vector<uint32_t>(4, level(90)), images.colourA) << i << " and " << j;
            ASSERT_EQ(std::vector<uint32_t>(4, level(200)), images.colourB) << i << " and " << j;
        }
    }
}

/// Two pairs of pixels are 100 apart, one in red, one in green; a red and a green one are 71 apart at most.
TEST(StartingColoursSimd, TakesTheFirstOfTwoPairsThatAreEquallyFar)
{
    CompressorImages images = makeEmptyImages(4, 4, 4);
    for (size_t i = 0; i < 8; ++i)
    {
        for (size_t j = 0; j < 8; ++j)
        {
            if (i == j)
                continue;
            fill(images.source, rgba(100, 100, 100));
            images.source[i] = rgba(50, 100, 100);
            images.source[i + 8] = rgba(150, 100, 100);
            images.source[j] = rgba(100, 50, 100);
            images.source[j + 8] = rgba(100, 150, 100);
            findStartingColours(images, false);
            EXPECT_EQ(i < j ? rgba(50, 100, 100) : rgba(100, 50, 100), images.colourA[0]) << i << " and " << j;
            EXPECT_EQ(i < j ? rgba(150, 100, 100) : rgba(100, 150, 100), images.colourB[0]) << i << " and " << j;
        }
    }
}
