#include "Codecs/MOXTC/OptimiseModulation.h"

#include <gmock/gmock.h>

#include <tuple>

#include "CompressorTestImages.h"

using namespace moxtexture;
using namespace compressortest;
using testing::Each;

namespace
{

auto getFields(const BlockRecord2bpp& record)
{
    return std::make_tuple(record.aui8DirectCodes, record.aui8InterpolatedCodes, record.aui8ModeFactors, record.ui8Mode);
}

auto getFields(const BlockRecord4bpp& record)
{
    return std::make_tuple(record.aui8StandardCodes, record.aui8PunchThroughCodes, record.aui8ModeFactors, record.uiMode);
}

/// The plain form, which the fast one must equal.
template <typename Record>
void optimiseBoth(const CompressorImages& images, std::vector<Record>& blockData, const BlockRegion& region)
{
    std::vector<Record> fast = blockData;
    optimiseModulation(images, fast, region);
    optimiseModulationReference(images, blockData, region);
    for (size_t i = 0; i < fast.size(); ++i)
        EXPECT_EQ(getFields(blockData[i]), getFields(fast[i])) << "block " << i;
}

/// One block between colours that are uiA and uiB in red everywhere; red of the source by the pixel's number in the block.
template <typename Record, typename GetRed>
Record optimiseBlock(uint32_t uiA, uint32_t uiB, const GetRed& getRed, Record record = {})
{
    CompressorImages images = makeImages(Record::k_uiBlockWidth, 4, Record::k_uiBlockWidth,
                                         [&](uint32_t x, uint32_t y) { return uint32_t{getRed(y * Record::k_uiBlockWidth + x)}; });
    fill(images.upscaledA, uiA);
    fill(images.upscaledB, uiB);
    std::vector<Record> blockData{record};
    optimiseBoth(images, blockData, images.getWholeRegion());
    return blockData[0];
}

/// A block of 90 in red but for pixel 1, which is not stored; colours 0 and 90.
BlockRecord2bpp optimiseDot(uint32_t uiDot)
{
    return optimiseBlock<BlockRecord2bpp>(0, 90, [&](uint32_t i) { return i == 1 ? uiDot : 90; });
}

} // namespace

TEST(OptimiseModulation, ADirectCodeIsAOnlyWhereAIsStrictlyNearer)
{
    const auto record = optimiseBlock<BlockRecord2bpp>(0, 80, [](uint32_t i) { return i == 3 ? 39u : i == 9 ? 41u : 40u; });
    for (uint32_t i = 0; i < 32; ++i)
        EXPECT_EQ(i == 3 ? 0 : 3, record.aui8DirectCodes[i]) << i;
}

TEST(OptimiseModulation, AStoredCodeIsTheNearestWeightAndTheLowestOfEquals)
{
    // The weights give 0, 30, 50, 80: half way between two of them the lower code is taken. All at stored places of row 0 and row 1.
    constexpr uint32_t auiRed[] = {15, 0, 16, 0, 40, 0, 41, 0, 0, 65, 0, 66};
    constexpr uint32_t auiCode[] = {0, 0, 1, 0, 1, 0, 2, 0, 0, 2, 0, 3};
    const auto record = optimiseBlock<BlockRecord2bpp>(0, 80, [&](uint32_t i) { return i < 12 ? auiRed[i] : 0; });
    for (uint32_t i = 0; i < 12; ++i)
        EXPECT_EQ(auiCode[i], record.aui8InterpolatedCodes[i]) << i;
}

TEST(OptimiseModulation, CodesBetweenTheStoredOnesStayZero)
{
    const auto record = optimiseBlock<BlockRecord2bpp>(0, 80, [](uint32_t) { return 80u; });
    for (uint32_t i = 0; i < 32; ++i)
        EXPECT_EQ((i % 8 + i / 8) % 2 == 0 ? 3 : 0, record.aui8InterpolatedCodes[i]) << i;
    EXPECT_THAT(record.aui8DirectCodes, Each(3));
}

TEST(OptimiseModulation, AModeIsChosenForTheSourceThatItsOwnWeightsMake)
{
    // Between 0 and 80 a weight gives ten times itself, up to 100 for 10: that mode's error is 0, and any other's is not.
    for (uint8_t ui8Mode = 1; ui8Mode < 4; ++ui8Mode)
    {
        const Codes2bpp& weights = *k_apWorkedWeights[ui8Mode];
        const auto record = optimiseBlock<BlockRecord2bpp>(0, 80, [&](uint32_t i) { return 10u * weights[i]; });
        EXPECT_EQ(ui8Mode, record.ui8Mode);
        EXPECT_EQ(k_aui8WorkedCodes, record.aui8InterpolatedCodes);
    }
}

TEST(OptimiseModulation, StripesThatGoDownAreModeTwoAndStripesAcrossModeThree)
{
    // Weights 0 and 5 in pairs. Mode 0 shows 80 for 50: 16 times 900. Mode 1 is kept out by its factor.
    BlockRecord2bpp factors;
    factors.aui8ModeFactors = {1, 255, 1, 1};
    // Columns: mode 2 is off by 1 between rows and by 2 in the first and last one, 8 * 100 + 8 * 400. Mode 3 mixes the stripes, with
    // 23, 18, 23, 18 hundreds in the four rows.
    EXPECT_EQ(2, optimiseBlock(
                     0, 80, [](uint32_t i) { return i % 8 / 2 % 2 * 50; }, factors)
                     .ui8Mode);
    // Rows: mode 3 is off by 1 at four ends, 4 * 100. Mode 2 mixes the stripes: 16, 36, 16, 16 hundreds.
    EXPECT_EQ(3, optimiseBlock(
                     0, 80, [](uint32_t i) { return i / 16 * 50; }, factors)
                     .ui8Mode);
}

TEST(OptimiseModulation, OtherModesCountFourTimesAgainstModeOne)
{
    // Mode 0 shows the dot as 0, mode 1 as 90. Four times 29 * 29 is below 61 * 61, four times 31 * 31 above 59 * 59.
    EXPECT_EQ(0, optimiseDot(29).ui8Mode);
    EXPECT_EQ(1, optimiseDot(31).ui8Mode);
}

TEST(OptimiseModulation, OfEqualProductsTheLowestModeIsChosen)
{
    EXPECT_EQ(0, optimiseDot(30).ui8Mode); // 4 * 30 * 30 = 60 * 60
    // Both colours alike: all modes err alike, and the factors decide.
    const auto wrongEverywhere = [](uint32_t) { return 17u; };
    EXPECT_EQ(1, optimiseBlock<BlockRecord2bpp>(20, 20, wrongEverywhere).ui8Mode);
    BlockRecord2bpp otherFactors;
    otherFactors.aui8ModeFactors = {4, 4, 1, 1};
    EXPECT_EQ(2, optimiseBlock(20, 20, wrongEverywhere, otherFactors).ui8Mode);
    // No error at all.
    EXPECT_EQ(0, optimiseBlock<BlockRecord2bpp>(17, 17, wrongEverywhere).ui8Mode);
}

TEST(OptimiseModulation, TheModeBeforeHasNoSay)
{
    BlockRecord2bpp before;
    before.ui8Mode = 3;
    EXPECT_EQ(0, optimiseBlock(
                     17, 17, [](uint32_t) { return 17u; }, before)
                     .ui8Mode);
    BlockRecord4bpp before4;
    before4.uiMode = 1;
    EXPECT_EQ(0u, optimiseBlock(
                      17, 17, [](uint32_t) { return 17u; }, before4)
                      .uiMode);
}

TEST(OptimiseModulation, WeightsAboveEightKeepTheirTruncatedBlend)
{
    // Between 7 and 0 a weight of 8 gives 0, one of 9 gives -7 / 8 = 0 and one of 10 gives -14 / 8 = -1. All codes are 3 for a source of
    // 0, but for a 1 at an unstored place inside. Mode 1 errs by 1 there; mode 2 does too, and in its eight pixels of weight 10.
    // Rounded down, mode 2 would err by 7 * 1 + 4 + 8 * 4; with weights or blends that stop at 8 and at 0, by 1.
    const auto chooseFor = [](uint8_t ui8Factor1)
    {
        BlockRecord2bpp record;
        record.aui8ModeFactors = {255, ui8Factor1, 1, 255};
        return optimiseBlock(
                   7, 0, [](uint32_t i) { return i == 10 ? 1u : 0u; }, record)
            .ui8Mode;
    };
    EXPECT_EQ(2, chooseFor(10));
    EXPECT_EQ(1, chooseFor(9));
}

TEST(OptimiseModulation, CodesOf4bppAreTheNearestAndTheLowestOfEquals)
{
    // Standard 0, 30, 50, 80; punch-through 0, 40, 40, 80, where code 2 never wins.
    constexpr uint32_t auiRed[] = {0, 15, 16, 20, 21, 30, 40, 41, 50, 59, 60, 61, 65, 66, 80, 255};
    constexpr uint8_t aui8Standard[] = {0, 0, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 3, 3, 3};
    constexpr uint8_t aui8PunchThrough[] = {0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 3, 3, 3, 3, 3};
    const auto record = optimiseBlock<BlockRecord4bpp>(0, 80, [&](uint32_t i) { return auiRed[i]; });
    for (uint32_t i = 0; i < 16; ++i)
    {
        EXPECT_EQ(aui8Standard[i], record.aui8StandardCodes[i]) << auiRed[i];
        EXPECT_EQ(aui8PunchThrough[i], record.aui8PunchThroughCodes[i]) << auiRed[i];
    }
}

TEST(OptimiseModulation, PunchThroughIsChosenForTheSmallerErrorOnly)
{
    const auto chooseFor = [](uint32_t uiFirst, uint32_t uiOthers)
    { return optimiseBlock<BlockRecord4bpp>(0, 80, [&](uint32_t i) { return i == 0 ? uiFirst : uiOthers; }).uiMode; };
    EXPECT_EQ(1u, chooseFor(40, 0)); // 10 * 10 against 0
    EXPECT_EQ(0u, chooseFor(30, 0)); // 0 against 10 * 10
    EXPECT_EQ(0u, chooseFor(35, 0)); // 5 * 5 both: standard stays
    EXPECT_EQ(1u, chooseFor(36, 0)); // 6 * 6 against 4 * 4
}

TEST(OptimiseModulation, TheFactorsOf4bppWeighTheErrors)
{
    const auto chooseFor = [](uint8_t ui8Factor0, uint8_t ui8Factor1)
    {
        BlockRecord4bpp record;
        record.aui8ModeFactors = {ui8Factor0, ui8Factor1};
        // 6 * 6 for standard, 4 * 4 for punch-through.
        return optimiseBlock(
                   0, 80, [](uint32_t i) { return i == 0 ? 36u : 0u; }, record)
            .uiMode;
    };
    EXPECT_EQ(1u, chooseFor(4, 8));  // 144 and 128
    EXPECT_EQ(0u, chooseFor(4, 9));  // 144 both
    EXPECT_EQ(0u, chooseFor(4, 10)); // 144 and 160
}

TEST(OptimiseModulation, AllFourChannelsCountAndAlphaIsOneOfThem)
{
    CompressorImages images = makeImages(4, 4, 4, [](uint32_t, uint32_t) { return rgba(0, 0, 0, 80); });
    fill(images.upscaledA, rgba(0, 0, 10, 0));
    fill(images.upscaledB, rgba(0, 20, 0, 80));
    std::vector<BlockRecord4bpp> blockData(1);
    optimiseBoth(images, blockData, images.getWholeRegion());
    // Code 3 errs by 20 in green; code 2 (0, 12, 3, 50) by 144 + 9 + 900.
    EXPECT_THAT(blockData[0].aui8StandardCodes, Each(3));
}

TEST(OptimiseModulation, OnlyTheBlocksOfTheRegionAreTouched)
{
    CompressorImages images = makeImages(12, 16, 4, [](uint32_t, uint32_t) { return level(80); });
    fill(images.upscaledB, level(80));
    std::vector<BlockRecord4bpp> blockData(12);
    optimiseBoth(images, blockData, {1, 3, 2, 3});
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 3; ++x)
            EXPECT_THAT(blockData[y * 3 + x].aui8StandardCodes, Each(x >= 1 && y == 2 ? 3 : 0)) << x << ", " << y;
}

TEST(OptimiseModulation, ABlockReadsItsOwnPixels)
{
    // 16 by 8 pixels in 2bpp blocks; each block has the blend with one direct pixel at a place of its own.
    constexpr uint32_t auiPlaces[] = {5, 12, 23, 30};
    CompressorImages images = makeImages(
        16, 8, 8, [&](uint32_t x, uint32_t y) { return y % 4 * 8 + x % 8 == auiPlaces[y / 4 * 2 + x / 8] ? level(80) : level(0); });
    fill(images.upscaledB, level(80));
    std::vector<BlockRecord2bpp> blockData(4);
    optimiseBoth(images, blockData, images.getWholeRegion());
    for (uint32_t uiBlock = 0; uiBlock < 4; ++uiBlock)
        for (uint32_t i = 0; i < 32; ++i)
            EXPECT_EQ(i == auiPlaces[uiBlock] ? 3 : 0, blockData[uiBlock].aui8DirectCodes[i]) << uiBlock << ": " << i;
}
