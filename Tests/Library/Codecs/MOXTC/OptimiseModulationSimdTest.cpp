#include "Codecs/MOXTC/OptimiseModulation.h"

#include <algorithm>
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

template <typename Record>
std::vector<Record> makeRecordsOfAnyFactors(const CompressorImages& images, CSeededRandom& random)
{
    std::vector<Record> records(images.getBlockCount());
    for (Record& record : records)
        for (uint8_t& ui8Factor : record.aui8ModeFactors)
            ui8Factor = static_cast<uint8_t>(random.below(256));
    return records;
}

uint32_t getMode(const BlockRecord2bpp& record)
{
    return record.ui8Mode;
}

uint32_t getMode(const BlockRecord4bpp& record)
{
    return record.uiMode;
}

} // namespace

TYPED_TEST(OptimiseModulationSimd, GivesThePlainRecordsOfEveryGrid)
{
    forEachHardGrid<TypeParam>([](const CompressorImages& images, CSeededRandom& random)
                               { expectThePlainRecords(images, makeRandomRecords<TypeParam>(images, random), images.getWholeRegion()); });
}

TYPED_TEST(OptimiseModulationSimd, LeavesWhatIsOutsideARegion)
{
    forEachHardGrid<TypeParam>(
        [](const CompressorImages& images, CSeededRandom& random)
        { expectThePlainRecords(images, makeRandomRecords<TypeParam>(images, random), makeRandomRegion(images, random)); });
}

/// Factors bring the errors of the modes near each other. Where pixels are narrow, errors are so small that a difference of one shows.
TYPED_TEST(OptimiseModulationSimd, ChoosesByTheFactorsOfEachRecord)
{
    CSeededRandom random(9);
    for (const EPixels ePixels : k_AllPixels)
    {
        SCOPED_TRACE(testing::Message() << "pixels of kind " << static_cast<int>(ePixels));
        const CompressorImages images = makeHardImages<TypeParam>(ePixels, 32, 32, random);
        expectThePlainRecords(images, makeRecordsOfAnyFactors<TypeParam>(images, random), images.getWholeRegion());
    }
}

TYPED_TEST(OptimiseModulationSimd, ChoosesEveryMode)
{
    CSeededRandom random(10);
    const CompressorImages images = makeHardImages<TypeParam>(EPixels::eAny, 32, 32, random);
    std::vector<TypeParam> records = makeRecordsOfAnyFactors<TypeParam>(images, random);
    optimiseModulation(images, records, images.getWholeRegion());
    for (uint32_t uiMode = 0; uiMode < records[0].aui8ModeFactors.size(); ++uiMode)
        EXPECT_TRUE(std::any_of(records.begin(), records.end(), [&](const TypeParam& record) { return getMode(record) == uiMode; }))
            << "mode " << uiMode;
}
