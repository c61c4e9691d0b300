#include "Codecs/MOXTC/OptimiseColours.h"

#include "CompressorHardImages.h"

using namespace moxtexture;
using namespace compressortest;

namespace
{

template <typename Record>
class OptimiseColoursSimd : public testing::Test
{
};
using AllRecords = testing::Types<BlockRecord2bpp, BlockRecord4bpp>;
TYPED_TEST_SUITE(OptimiseColoursSimd, AllRecords);

template <typename Record>
void expectThePlainColours(const CompressorImages& images, const std::vector<Record>& records, const BlockRegion& region)
{
    CompressorImages expected = images;
    optimiseColoursReference(expected, records, region);
    forEachInstructionSet(
        [&]
        {
            CompressorImages actual = images;
            optimiseColours(actual, records, region);
            EXPECT_EQ(expected.colourA, actual.colourA);
            EXPECT_EQ(expected.colourB, actual.colourB);
        });
}

void setAllCodes(BlockRecord2bpp& record, uint8_t ui8Code)
{
    record.aui8DirectCodes.fill(ui8Code);
    record.aui8InterpolatedCodes.fill(ui8Code);
}

void setAllCodes(BlockRecord4bpp& record, uint8_t ui8Code)
{
    record.aui8StandardCodes.fill(ui8Code);
    record.aui8PunchThroughCodes.fill(ui8Code);
}

} // namespace

TYPED_TEST(OptimiseColoursSimd, GivesThePlainColoursOfEveryGrid)
{
    forEachHardGrid(
        [](EPixels ePixels, uint32_t uiBlocksX, uint32_t uiBlocksY, CSeededRandom& random)
        {
            const CompressorImages images = makeHardImages<TypeParam>(ePixels, uiBlocksX, uiBlocksY, random);
            expectThePlainColours(images, makeRandomRecords<TypeParam>(images, random), images.getWholeRegion());
        });
}

TYPED_TEST(OptimiseColoursSimd, LeavesWhatIsOutsideARegion)
{
    forEachHardGrid(
        [](EPixels ePixels, uint32_t uiBlocksX, uint32_t uiBlocksY, CSeededRandom& random)
        {
            const CompressorImages images = makeHardImages<TypeParam>(ePixels, uiBlocksX, uiBlocksY, random);
            expectThePlainColours(images, makeRandomRecords<TypeParam>(images, random), makeRandomRegion(images, random));
        });
}

/// Blocks whose weights are all alike stand among others, so that one vector has both kinds.
TYPED_TEST(OptimiseColoursSimd, GivesThePlainColoursWhereWeightsAreAlike)
{
    forEachHardGrid(
        [](EPixels ePixels, uint32_t uiBlocksX, uint32_t uiBlocksY, CSeededRandom& random)
        {
            const CompressorImages images = makeHardImages<TypeParam>(ePixels, uiBlocksX, uiBlocksY, random);
            std::vector<TypeParam> records = makeRandomRecords<TypeParam>(images, random);
            for (TypeParam& record : records)
                if (random.below(2) == 0)
                    setAllCodes(record, static_cast<uint8_t>(random.below(4)));
            expectThePlainColours(images, records, images.getWholeRegion());
        });
}

/// Differences of about 11 in one channel or 5 to 6 in all four: their squares lie on both sides of 128.
TYPED_TEST(OptimiseColoursSimd, MovesTheBlocksThatThePlainFormMoves)
{
    CSeededRandom random(3);
    CompressorImages images = makeHardImages<TypeParam>(EPixels::eFlat, 100, 40, random);
    for (uint32_t& uiPixel : images.source)
    {
        const uint32_t uiRed = 77 + 5 + random.below(2);
        uiPixel = random.below(4) == 0 ? rgba(77 + 11, 77, 77, 77) : rgba(uiRed, 77 + 5 + random.below(2), 77 - 6, 77 + 6);
    }
    expectThePlainColours(images, makeRandomRecords<TypeParam>(images, random), images.getWholeRegion());

    CompressorImages moved = images;
    optimiseColours(moved, makeRandomRecords<TypeParam>(images, random), images.getWholeRegion());
    const auto uiStill = std::count(moved.colourA.begin(), moved.colourA.end(), images.colourA[0]);
    EXPECT_GT(uiStill, 0);
    EXPECT_LT(uiStill, std::ptrdiff_t{100} * 40);
}
