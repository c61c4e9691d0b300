#include "Codecs/ETC/EtcBlockBits.h"

#include <vector>

#include <gmock/gmock.h>

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using testing::ElementsAre;
using testsupport::CSeededRandom;

namespace
{

/// The test with which the words below choose between a sum that is too high and one that is negative; bits of the word.
uint32_t overflowsUpwards(uint32_t w, uint32_t a, uint32_t b, uint32_t c, uint32_t e)
{
    const bool bA = (w >> a & 1) != 0, bB = (w >> b & 1) != 0, bC = (w >> c & 1) != 0, bE = (w >> e & 1) != 0;
    return (((!bA && bB) || (!bB && bA)) && bC && bE) || (bA && bB) ? 1 : 0;
}

/// The words as one expression each, for the forms in which fields are moved one by one.
uint32_t stuffTInOne(uint32_t h)
{
    const uint32_t w = (h >> 25 & 3) << 27 | (h & 0xF3FFFFFF) * 2 | (h & 1);
    const uint32_t f = overflowsUpwards(w, 25, 28, 27, 24);
    return (f * 120 | (1 - f)) << 26 | 2 | (w & 0x1BFFFFFD);
}

uint32_t stuffHInOne(uint32_t h)
{
    uint32_t w = ((((h & 0x3F80000) * 8 | (h & 0x60000)) * 2 | (h & 0x1FFFE)) * 2) | (h & 1);
    w |= (~w >> 30 & 1) << 31;
    const uint32_t f = overflowsUpwards(w, 17, 20, 19, 16);
    return ((((0 - f) & 7) * 8 | (f ^ 1)) << 18) | 2 | w;
}

EtcBlockWords stuffPlanarInOne(const EtcBlockWords& compact)
{
    const uint32_t h = compact.ui32High, l = compact.ui32Low;
    const uint32_t uiRO = h >> 26, uiGO = h >> 19 & 127, uiBO = h >> 13 & 63, uiRH = h >> 7 & 63, uiGH = h & 127;
    const uint32_t uiBH = l >> 26, uiRV = l >> 20 & 63, uiGV = l >> 13 & 127, uiBV = l >> 7 & 63;
    uint32_t w = uiRO << 25 | (uiGO >> 6) << 24 | (uiGO & 63) << 17 | (uiBO >> 5) << 16 | (uiBO >> 3 & 3) << 11 | (uiBO & 7) << 7 |
                 (uiRH >> 1) << 2 | (uiRH & 1);
    w |= (~w >> 30 & 1) << 31;
    w |= (~w >> 22 & 1) << 23;
    const uint32_t f = overflowsUpwards(w, 9, 12, 11, 8);
    w = (w & ~0xE400u) | (((0 - f) & 7) * 8 | (f ^ 1)) << 10 | 2;
    return {w, uiGH << 25 | uiBH << 19 | uiRV << 13 | uiGV << 6 | uiBV};
}

/// Values of uiBits bits: random ones, and those around each power of two.
std::vector<uint32_t> makeValues(uint32_t uiBits)
{
    CSeededRandom random(uiBits);
    std::vector<uint32_t> values;
    for (uint32_t i = 0; i < 100000; ++i)
        values.push_back(random.next32() >> (32 - uiBits));
    for (uint32_t uiBit = 0; uiBit < uiBits; ++uiBit)
        for (const uint32_t uiValue : {1u << uiBit, (1u << uiBit) - 1, ~(1u << uiBit)})
            values.push_back(uiValue & (0xFFFFFFFFu >> (32 - uiBits)));
    return values;
}

} // namespace

TEST(EtcBlockBits, AStreamHasTheMostSignificantByteOfEachWordFirst)
{
    const uint8_t aui8Block[8] = {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF};
    const EtcBlockWords words = loadEtcBlock(aui8Block);
    EXPECT_EQ(0x01234567u, words.ui32High);
    EXPECT_EQ(0x89ABCDEFu, words.ui32Low);
    uint8_t aui8Stored[8] = {};
    storeEtcBlock(aui8Stored, words);
    EXPECT_THAT(aui8Stored, ElementsAre(0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF));
}

TEST(EtcBlockBits, LevelsExpandByRepeatingTheirBits)
{
    EXPECT_EQ(0u, expandEtc4(0));
    EXPECT_EQ(136u, expandEtc4(8)); // 1000 1000
    EXPECT_EQ(255u, expandEtc4(15));
    EXPECT_EQ(8u, expandEtc5(1));    // 00001 000
    EXPECT_EQ(132u, expandEtc5(16)); // 10000 100
    EXPECT_EQ(255u, expandEtc5(31));
    EXPECT_EQ(4u, expandEtc6(1));    // 000001 00
    EXPECT_EQ(130u, expandEtc6(32)); // 100000 10
    EXPECT_EQ(255u, expandEtc6(63));
    EXPECT_EQ(2u, expandEtc7(1));    // 0000001 0
    EXPECT_EQ(129u, expandEtc7(64)); // 1000000 1
    EXPECT_EQ(255u, expandEtc7(127));
}

TEST(EtcBlockBits, IndividualModeHasTheNibblesOfBothHalvesInTurn)
{
    // Tables 5 and 2, diff 0, flip 1: 101 010 0 1.
    const EtcBlockWords words = packIndividual({1, 2, 3}, {4, 5, 6}, true, 5, 2, 0x89ABCDEF);
    EXPECT_EQ(0x142536A9u, words.ui32High);
    EXPECT_EQ(0x89ABCDEFu, words.ui32Low);
    EXPECT_EQ(0x142536A8u, packIndividual({1, 2, 3}, {4, 5, 6}, false, 5, 2, 0).ui32High);
}

TEST(EtcBlockBits, DifferentialModeHasTheFirstHalfAndSignedDifferences)
{
    // Red 01010 011 (+3), green 10100 100 (-4), blue 11110 000; tables 1 and 7, diff 1, flip 0: 001 111 1 0.
    const EtcBlockWords words = packDifferential({10, 20, 30}, {13, 16, 30}, false, 1, 7, 0x12345678);
    EXPECT_EQ(0x53A4F03Eu, words.ui32High);
    EXPECT_EQ(0x12345678u, words.ui32Low);
    EXPECT_EQ(0x53A4F03Fu, packDifferential({10, 20, 30}, {13, 16, 30}, true, 1, 7, 0).ui32High);
}

TEST(EtcBlockBits, SumsThatAreNoLevelsAreAboveThirtyOne)
{
    // 31 + 3, 0 - 4 and 31 - 1; as 8-bit values 34, 252 and 30.
    const EtcDifferentialLevels levels = readEtcDifferentialLevels(0xFB04FF00);
    EXPECT_THAT(levels.bases, ElementsAre(31, 0, 31));
    EXPECT_THAT(levels.sums, ElementsAre(34, 252, 30));
}

TEST(EtcBlockBits, PixelsLieInThePlanesColumnByColumn)
{
    // The msb of pixel (2, 1), bit 9 + 16, and the lsb of (2, 1) and (0, 3), bits 9 and 3.
    const uint32_t ui32Indices = 1u << 25 | 1u << 9 | 1u << 3;
    EXPECT_EQ(3u, getEtcIndex(ui32Indices, 2, 1));
    EXPECT_EQ(1u, getEtcIndex(ui32Indices, 0, 3));
    EXPECT_EQ(0u, getEtcIndex(ui32Indices, 3, 0));
}

TEST(EtcBlockBits, AStuffedTBlockMakesTheRedSumOverflow)
{
    // Red 15, green 2, blue 3; 4, 5, 6; distance index 5 (101). Red's halves 11 and 11: 3 + 3 is 4 or more, so 111 11 0 11.
    const EtcBlockWords compact = {15u << 23 | 2 << 19 | 3 << 15 | 4 << 11 | 5 << 7 | 6 << 3 | 5, 0x12345678};
    EXPECT_EQ(0xFB23456Bu, stuffT(compact).ui32High); // low nibble: 10 1 1
    EXPECT_EQ(0xFB234569u, stuffT(compact, false).ui32High);
    EXPECT_EQ(0x12345678u, stuffT(compact).ui32Low);
    // Red 6 (01 10): 1 + 2 is below 4, so 000 01 1 10.
    const EtcBlockWords lower = {6u << 23 | 2 << 19 | 3 << 15 | 4 << 11 | 5 << 7 | 6 << 3 | 5, 0};
    EXPECT_EQ(0x0E23456Bu, stuffT(lower).ui32High);
}

TEST(EtcBlockBits, AStuffedHBlockMakesTheGreenSumOverflowAndNotTheRedOne)
{
    // Levels 5, 9, 12 (0101 1001 1100) and 5, 9, 11 (0101 1001 1011), upper bits of the distance 10.
    // Red 1 0101 100: bit 31 is the opposite of the next. Green: 11 + 10 is 4 or more, so 111 11 0 10. Then 0 0101 100 1 1011 1 1 0.
    const EtcBlockWords compact = {0x59Cu << 14 | 0x59B << 2 | 2, 0x12345678};
    EXPECT_EQ(0xACFA2CDEu, stuffH(compact).ui32High);
    EXPECT_EQ(0xACFA2CDCu, stuffH(compact, false).ui32High);
    EXPECT_EQ(0x12345678u, stuffH(compact).ui32Low);
}

TEST(EtcBlockBits, AStuffedPlanarBlockMakesOnlyTheBlueSumOverflow)
{
    // O 42, 85, 51; H 27, 78, 33; V 22, 51, 56.
    const EtcBlockWords compact = {42u << 26 | 85 << 19 | 51 << 13 | 27 << 7 | 78, 33u << 26 | 22 << 20 | 51 << 13 | 56 << 7};
    // 0 101010 1 | 1 010101 1 | 000 10 1 01 | 1 01101 1 1; blue's 10 + 01 is below 4.
    EXPECT_EQ(0x55AB15B7u, stuffPlanar(compact).ui32High);
    EXPECT_EQ(0x55AB15B5u, stuffPlanar(compact, false).ui32High);
    // 1001110 100001 010110 0110011 111000
    EXPECT_EQ(0x9D0ACCF8u, stuffPlanar(compact).ui32Low);
}

TEST(EtcBlockBits, EveryStuffedTBlockIsReadAsTAndGivesBackItsCompactForm)
{
    for (const uint32_t uiValue : makeValues(27))
    {
        const EtcBlockWords compact = {uiValue, ~uiValue};
        const EtcBlockWords words = stuffT(compact);
        ASSERT_EQ(stuffTInOne(uiValue), words.ui32High);
        ASSERT_EQ(words.ui32High - 2, stuffT(compact, false).ui32High);
        ASSERT_EQ(eEtcT, getEtcDifferentialMode(words.ui32High));
        ASSERT_EQ(compact, compactT(words));
    }
}

TEST(EtcBlockBits, EveryStuffedHBlockIsReadAsHAndGivesBackItsCompactForm)
{
    for (const uint32_t uiValue : makeValues(26))
    {
        const EtcBlockWords compact = {uiValue, ~uiValue};
        const EtcBlockWords words = stuffH(compact);
        ASSERT_EQ(stuffHInOne(uiValue), words.ui32High);
        ASSERT_EQ(words.ui32High - 2, stuffH(compact, false).ui32High);
        ASSERT_EQ(eEtcH, getEtcDifferentialMode(words.ui32High));
        ASSERT_EQ(compact, compactH(words));
    }
}

TEST(EtcBlockBits, EveryStuffedPlanarBlockIsReadAsPlanarAndGivesBackItsCompactForm)
{
    CSeededRandom random(57);
    for (const uint32_t uiValue : makeValues(32))
    {
        const EtcBlockWords compact = {uiValue, random.next32() & 0xFFFFFF80};
        const EtcBlockWords words = stuffPlanar(compact);
        ASSERT_EQ(stuffPlanarInOne(compact), words);
        ASSERT_EQ(words.ui32High - 2, stuffPlanar(compact, false).ui32High);
        ASSERT_EQ(eEtcPlanar, getEtcDifferentialMode(words.ui32High));
        ASSERT_EQ(compact, compactPlanar(words));
    }
}
