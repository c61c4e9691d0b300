#include "Codecs/MOXTC/OptimiseModulation.h"

#include <cstring>

#include "CompressorHardImages.h"

using namespace moxtexture;
using namespace compressortest;

namespace
{

template <typename Record>
class OptimiseModulationSimd : public testing::Test
{
};
using AllRecords = testing::Types<BlockRecord2bpp, BlockRecord4bpp>;
TYPED_TEST_SUITE(OptimiseModulationSimd, AllRecords);

/// Records are compared whole, since those of the blocks outside the region, and codes that are not chosen, stay.
template <typename Record>
bool areEqual(const std::vector<Record>& a, const std::vector<Record>& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(Record)) == 0;
}

template <typename Record>
void expectThePlainRecords(const CompressorImages& images, const std::vector<Record>& records, const BlockRegion& region)
{
    std::vector<Record> expected = records;
    optimiseModulationReference(images, expected, region);
    forEachInstructionSet(
        [&]
        {
            std::vector<Record> actual = records;
            optimiseModulation(images, actual, region);
            EXPECT_TRUE(areEqual(expected, actual));
        });
}

} // namespace

TYPED_TEST(OptimiseModulationSimd, GivesThePlainRecordsOfEveryGrid)
{
    forEachHardGrid(
        [](EPixels ePixels, uint32_t uiBlocksX, uint32_t uiBlocksY, CSeededRandom& random)
        {
            const CompressorImages images = makeHardImages<TypeParam>(ePixels, uiBlocksX, uiBlocksY, random);
            expectThePlainRecords(images, makeRandomRecords<TypeParam>(images, random), images.getWholeRegion());
        });
}

TYPED_TEST(OptimiseModulationSimd, LeavesWhatIsOutsideARegion)
{
    forEachHardGrid(
        [](EPixels ePixels, uint32_t uiBlocksX, uint32_t uiBlocksY, CSeededRandom& random)
        {
            const CompressorImages images = makeHardImages<TypeParam>(ePixels, uiBlocksX, uiBlocksY, random);
            expectThePlainRecords(images, makeRandomRecords<TypeParam>(images, random), makeRandomRegion(images, random));
        });
}

/// With factors that bring the errors of the modes near each other, every mode is chosen.
TYPED_TEST(OptimiseModulationSimd, ChoosesByTheFactorsOfEachRecord)
{
    CSeededRandom random(9);
    const CompressorImages images = makeHardImages<TypeParam>(EPixels::eAny, 64, 64, random);
    std::vector<TypeParam> records(images.getBlockCount());
    for (TypeParam& record : records)
        for (uint8_t& ui8Factor : record.aui8ModeFactors)
            ui8Factor = static_cast<uint8_t>(random.below(256));
    expectThePlainRecords(images, records, images.getWholeRegion());

    optimiseModulation(images, records, images.getWholeRegion());
    for (uint32_t uiMode = 0; uiMode < records[0].aui8ModeFactors.size(); ++uiMode)
    {
        const auto isOfMode = [uiMode](const BlockRecord2bpp& record) { return record.ui8Mode == uiMode; };
        const auto isOfMode4bpp = [uiMode](const BlockRecord4bpp& record) { return record.uiMode == uiMode; };
        if constexpr (std::is_same_v<TypeParam, BlockRecord2bpp>)
            EXPECT_TRUE(std::any_of(records.begin(), records.end(), isOfMode)) << "mode " << uiMode;
        else
            EXPECT_TRUE(std::any_of(records.begin(), records.end(), isOfMode4bpp)) << "mode " << uiMode;
    }
}
