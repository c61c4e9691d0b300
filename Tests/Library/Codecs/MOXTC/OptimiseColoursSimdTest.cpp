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
    forEachHardGrid<TypeParam>([](const CompressorImages& images, CSeededRandom& random)
                               { expectThePlainColours(images, makeRandomRecords<TypeParam>(images, random), images.getWholeRegion()); });
}

TYPED_TEST(OptimiseColoursSimd, LeavesWhatIsOutsideARegion)
{
    forEachHardGrid<TypeParam>(
        [](const CompressorImages& images, CSeededRandom& random)
        { expectThePlainColours(images, makeRandomRecords<TypeParam>(images, random), makeRandomRegion(images, random)); });
}

/// Blocks whose weights are all alike stand among others, so that one vector has both kinds.
TYPED_TEST(OptimiseColoursSimd, GivesThePlainColoursWhereWeightsAreAlike)
{
    forEachHardGrid<TypeParam>(
        [](const CompressorImages& images, CSeededRandom& random)
        {
            std::vector<TypeParam> records = makeRandomRecords<TypeParam>(images, random);
            for (TypeParam& record : records)
                if (random.below(2) == 0)
                    setAllCodes(record, static_cast<uint8_t>(random.below(4)));
            expectThePlainColours(images, records, images.getWholeRegion());
        });
}

/// Blocks whose squared mean difference is 113, 128 or 145: 7, 8 or 9 in red and 8 in green, over a flat 77.
TYPED_TEST(OptimiseColoursSimd, MovesTheBlocksThatThePlainFormMoves)
{
    CSeededRandom random(3);
    CompressorImages images = makeHardImages<TypeParam>(EPixels::eFlat, 60, 3, random);
    for (uint32_t y = 0; y < images.uiHeight; ++y)
        for (uint32_t x = 0; x < images.uiWidth; ++x)
            images.source[size_t{y} * images.uiWidth + x] = rgba(77 + 7 + x / TypeParam::k_uiBlockWidth % 3, 77 + 8, 77, 77);
    const std::vector<TypeParam> records = makeRandomRecords<TypeParam>(images, random);
    expectThePlainColours(images, records, images.getWholeRegion());

    CompressorImages moved = images;
    optimiseColours(moved, records, images.getWholeRegion());
    for (size_t i = 0; i < moved.colourA.size(); ++i)
        EXPECT_EQ(i % 3 == 0, moved.colourA[i] == images.colourA[i]) << "block " << i;
}
