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

TEST(EtcTables, TheAlphaModifiersGrowAwayFromZeroInBothHalvesOfARow)
{
    for (size_t uiRow = 16; uiRow < 256; ++uiRow)
        for (size_t i = 0; i < 3; ++i)
        {
            EXPECT_GT(alphaModifierTable[uiRow][i], alphaModifierTable[uiRow][i + 1]) << uiRow;
            EXPECT_LT(alphaModifierTable[uiRow][i + 4], alphaModifierTable[uiRow][i + 5]) << uiRow;
        }
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

TEST(EtcTables, EveryModifierTableIsSymmetricAndGrows)
{
    for (const auto& table : k_aaiEtcModifiers)
    {
        EXPECT_EQ(table[0], -table[3]);
        EXPECT_EQ(table[1], -table[2]);
        EXPECT_LT(table[2], table[3]);
        EXPECT_GT(table[2], 0);
    }
}
