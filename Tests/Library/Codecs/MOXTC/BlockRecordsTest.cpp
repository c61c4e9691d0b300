#include "Codecs/MOXTC/BlockRecords.h"

#include <gmock/gmock.h>

#include "CompressorTestImages.h"

using namespace moxtexture;
using namespace compressortest;
using testing::Each;
using testing::ElementsAre;

namespace
{

BlockRecord2bpp makeRecord(const Codes2bpp& codes, uint8_t ui8Mode)
{
    BlockRecord2bpp record;
    record.aui8InterpolatedCodes = codes;
    record.ui8Mode = ui8Mode;
    return record;
}

} // namespace

TEST(BlockRecords, OnlyTheModeOfAllNeighboursHasFactorOneAtFirst)
{
    const BlockRecord2bpp record;
    EXPECT_THAT(record.aui8ModeFactors, ElementsAre(4, 1, 4, 4));
    EXPECT_EQ(0, record.ui8Mode);
    EXPECT_THAT(record.aui8DirectCodes, Each(0));
    EXPECT_THAT(record.aui8InterpolatedCodes, Each(0));
}

TEST(BlockRecords, BothModesOf4bppHaveFactorOneAtFirst)
{
    const BlockRecord4bpp record;
    EXPECT_THAT(record.aui8ModeFactors, ElementsAre(1, 1));
    EXPECT_EQ(0u, record.uiMode);
}

TEST(BlockRecords, DirectCodesAreAllOrNothing)
{
    BlockRecord2bpp record = makeRecord(k_aui8WorkedCodes, 0);
    record.aui8DirectCodes[1] = 3;
    record.aui8DirectCodes[31] = 3;
    Codes2bpp expected{};
    expected[1] = 8;
    expected[31] = 8;
    EXPECT_EQ(expected, getBlockWeights(record));
}

TEST(BlockRecords, ModeOneAveragesTheNeighboursThatLieInsideTheBlock)
{
    EXPECT_EQ(k_aui8WorkedWeights1, getBlockWeights(makeRecord(k_aui8WorkedCodes, 1)));
}

TEST(BlockRecords, ModeTwoTakesTheVerticalNeighboursAndReachesTen)
{
    EXPECT_EQ(k_aui8WorkedWeights2, getBlockWeights(makeRecord(k_aui8WorkedCodes, 2)));
}

TEST(BlockRecords, ModeThreeTakesTheHorizontalNeighbours)
{
    EXPECT_EQ(k_aui8WorkedWeights3, getBlockWeights(makeRecord(k_aui8WorkedCodes, 3)));
}

TEST(BlockRecords, AFullBlockGoesBeyondEightInModesTwoAndThree)
{
    Codes2bpp codes;
    codes.fill(3);
    // Mode 2: (8 + 8 + 2) / 2 between rows, 8 + 2 in the first and the last row.
    EXPECT_THAT(getBlockWeights(makeRecord(codes, 2)), ElementsAre(8, 10, 8, 10, 8, 10, 8, 10, //
                                                                   9, 8, 9, 8, 9, 8, 9, 8,     //
                                                                   8, 9, 8, 9, 8, 9, 8, 9,     //
                                                                   10, 8, 10, 8, 10, 8, 10, 8));
    // Mode 3: (8 + 8 + 1) / 2 is 8 between columns, 8 + 1 in the first and the last column.
    EXPECT_THAT(getBlockWeights(makeRecord(codes, 3)), ElementsAre(8, 8, 8, 8, 8, 8, 8, 9, //
                                                                   9, 8, 8, 8, 8, 8, 8, 8, //
                                                                   8, 8, 8, 8, 8, 8, 8, 9, //
                                                                   9, 8, 8, 8, 8, 8, 8, 8));
    EXPECT_THAT(getBlockWeights(makeRecord(codes, 1)), Each(8));
}

TEST(BlockRecords, TheModeOf4bppChoosesCodesAndTable)
{
    BlockRecord4bpp record;
    record.aui8StandardCodes = {0, 1, 2, 3, 3, 2, 1, 0, 0, 0, 0, 0, 1, 1, 1, 1};
    record.aui8PunchThroughCodes = {3, 2, 1, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2};
    EXPECT_THAT(getBlockWeights(record), ElementsAre(0, 3, 5, 8, 8, 5, 3, 0, 0, 0, 0, 0, 3, 3, 3, 3));
    record.uiMode = 1;
    EXPECT_THAT(getBlockWeights(record), ElementsAre(8, 4, 4, 0, 0, 0, 0, 0, 4, 4, 4, 4, 4, 4, 4, 4));
}
