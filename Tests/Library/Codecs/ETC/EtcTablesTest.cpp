#include "Codecs/ETC/EtcTables.h"

#include <gmock/gmock.h>

using namespace moxtexture;
using testing::Each;
using testing::ElementsAre;

TEST(EtcTables, TheAlphaModifierTableIsEightKibibytes)
{
    EXPECT_EQ(8192u, sizeof(alphaModifierTable));
}

TEST(EtcTables, RowSixteenOfTheAlphaModifiersIsTheFirstTableAtMultiplierOne)
{
    EXPECT_THAT(alphaModifierTable[16], ElementsAre(-3, -6, -9, -15, 2, 5, 8, 14));
}

TEST(EtcTables, TheLastRowOfTheAlphaModifiersIsTheLastTableAtMultiplierFifteen)
{
    EXPECT_THAT(alphaModifierTable[255], ElementsAre(-45, -75, -105, -135, 30, 60, 90, 120));
}

TEST(EtcTables, TheAlphaModifiersOfMultiplierZeroAreZero)
{
    for (size_t uiRow = 0; uiRow < 16; ++uiRow)
        EXPECT_THAT(alphaModifierTable[uiRow], Each(0)) << uiRow;
}

TEST(EtcTables, TheAlphaModifiersOfEveryRowAreThePublishedOnesTimesTheMultiplier)
{
    // The standard's table of modifiers for alpha and 11-bit blocks, in its own order.
    constexpr int32_t k_aaiPublished[16][8] = {
        // clang-format off
        {-3, -6,  -9, -15, 2, 5, 8, 14},
        {-3, -7, -10, -13, 2, 6, 9, 12},
        {-2, -5,  -8, -13, 1, 4, 7, 12},
        {-2, -4,  -6, -13, 1, 3, 5, 12},
        {-3, -6,  -8, -12, 2, 5, 7, 11},
        {-3, -7,  -9, -11, 2, 6, 8, 10},
        {-4, -7,  -8, -11, 3, 6, 7, 10},
        {-3, -5,  -8, -11, 2, 4, 7, 10},
        {-2, -6,  -8, -10, 1, 5, 7,  9},
        {-2, -5,  -8, -10, 1, 4, 7,  9},
        {-2, -4,  -8, -10, 1, 3, 7,  9},
        {-2, -5,  -7, -10, 1, 4, 6,  9},
        {-3, -4,  -7, -10, 2, 3, 6,  9},
        {-1, -2,  -3, -10, 0, 1, 2,  9},
        {-4, -6,  -8,  -9, 3, 5, 7,  8},
        {-3, -5,  -7,  -9, 2, 4, 6,  8},
        // clang-format on
    };
    for (uint32_t uiRow = 0; uiRow < 256; ++uiRow)
        for (uint32_t i = 0; i < 8; ++i)
        {
            EXPECT_EQ(static_cast<int32_t>(uiRow / 16) * k_aaiPublished[uiRow % 16][i], alphaModifierTable[uiRow][i]) << uiRow;
            EXPECT_EQ(k_aaiPublished[uiRow % 16][i], getEtcAlphaModifier(uiRow % 16, i)) << uiRow;
        }
}

TEST(EtcTables, TheDistancesOfTAndHModeAreThePublishedOnes)
{
    EXPECT_THAT(k_aui8EtcDistances, ElementsAre(3, 6, 11, 16, 23, 32, 41, 64));
}

TEST(EtcTables, TheModifiersOfEveryTableAreThePublishedOnes)
{
    // The standard's small and large modifier of each table.
    constexpr int32_t k_aaiPublished[8][2] = {{2, 8}, {5, 17}, {9, 29}, {13, 42}, {18, 60}, {24, 80}, {33, 106}, {47, 183}};
    for (size_t i = 0; i < 8; ++i)
    {
        const auto [iSmall, iLarge] = k_aaiPublished[i];
        EXPECT_THAT(k_aaiEtcModifiers[i], ElementsAre(-iLarge, -iSmall, iSmall, iLarge)) << i;
    }
}

TEST(EtcTables, ThePositionsGrowAndTheIndicesTellSizeByTheLsbAndSignByTheMsb)
{
    EXPECT_THAT(k_aui8EtcPositionOfIndex, ElementsAre(2, 3, 1, 0));
    EXPECT_THAT(k_aui8EtcIndexOfPosition, ElementsAre(3, 2, 0, 1));
}

TEST(EtcTables, PositionsAndIndicesAreTheInverseOfEachOther)
{
    for (uint8_t i = 0; i < 4; ++i)
    {
        EXPECT_EQ(i, k_aui8EtcIndexOfPosition[k_aui8EtcPositionOfIndex[i]]);
        EXPECT_EQ(i, k_aui8EtcPositionOfIndex[k_aui8EtcIndexOfPosition[i]]);
    }
}

TEST(EtcTables, TheIndicesReachTheSmallAndTheLargeModifiersOfBothSigns)
{
    // The published order of table 0: 2, 8, -2, -8.
    int32_t aiModifiers[4];
    for (uint32_t i = 0; i < 4; ++i)
        aiModifiers[i] = k_aaiEtcModifiers[0][k_aui8EtcPositionOfIndex[i]];
    EXPECT_THAT(aiModifiers, ElementsAre(2, 8, -2, -8));
}
