#include "Codecs/MOXTC/Block/Modulation.h"

#include <algorithm>

#include <gmock/gmock.h>

#include "Support/SeededPictures.h"

using namespace moxtexture;
using testing::Each;
using testing::ElementsAre;

namespace
{

/// Two bits of a modulation word.
constexpr uint32_t code(uint32_t uiPlace, uint32_t uiCode)
{
    return uiCode << (2 * uiPlace);
}

/// Place of pixel (4, 2)'s code among the stored ones: four each in rows 0 and 1, then x 0, 2, 4.
constexpr uint32_t k_uiPlaceOf42 = 10;

BlockModulation unpack4bpp(uint32_t ui32Modulation, bool bModeFlag)
{
    return unpackModulation({ui32Modulation, bModeFlag ? 1u : 0u}, false);
}
BlockModulation unpack2bpp(uint32_t ui32Modulation, bool bModeFlag)
{
    return unpackModulation({ui32Modulation, bModeFlag ? 1u : 0u}, true);
}

uint8_t codeAt(const BlockModulation& modulation, uint32_t x, uint32_t y)
{
    return modulation.aui8Codes[y * k_uiMaxBlockWidth + x];
}

/// A 2bpp block of the mode whose stored codes are: rows 0 and 2 at x 0, 2, 4, 6; rows 1 and 3 at x 1, 3, 5, 7.
constexpr std::array<uint8_t, 32> k_aui8Codes = {
    0, 9, 1, 9, 2, 9, 3, 9, //
    9, 3, 9, 2, 9, 1, 9, 0, //
    1, 9, 1, 9, 3, 9, 2, 9, //
    9, 0, 9, 3, 9, 2, 9, 1,
};

BlockWord makeBlock(uint8_t ui8Mode)
{
    return {packModulationInterpolated(k_aui8Codes.data(), ui8Mode), k_ui32ModeFlag};
}

/// Weights of the pixels of block P's upper left: map positions (1, 1) to (7, 2).
std::array<std::array<int, 7>, 2> getWeights(const CellBlocks& blocks)
{
    const CModulationMap map(blocks, true);
    std::array<std::array<int, 7>, 2> aaiWeights = {};
    for (uint32_t y = 0; y < 2; ++y)
        for (uint32_t x = 0; x < 7; ++x)
            aaiWeights[y][x] = map.getWeight2bpp(x + 1, y + 1);
    return aaiWeights;
}

CellBlocks fourOf(const BlockWord& block)
{
    return {block, block, block, block};
}

} // namespace

TEST(Modulation, FourBitBlocksHaveTwoBitsAPixelRowAfterRow)
{
    // Rows 0 1 2 3, 3 2 1 0, 1 1 0 0, 2 3 2 3, lowest pair first.
    const uint32_t ui32Modulation = 0b11'10'11'10'00'00'01'01'00'01'10'11'11'10'01'00;
    const BlockModulation modulation = unpack4bpp(ui32Modulation, false);
    EXPECT_THAT(std::vector<int>(modulation.aui8Codes.begin(), modulation.aui8Codes.begin() + 16),
                ElementsAre(0, 1, 2, 3, 3, 2, 1, 0, 1, 1, 0, 0, 2, 3, 2, 3));
    EXPECT_EQ(k_ui8ModeDirect, modulation.ui8Mode);
    EXPECT_EQ(k_ui8ModePunchThrough, unpack4bpp(ui32Modulation, true).ui8Mode);
    EXPECT_EQ(modulation.aui8Codes, unpack4bpp(ui32Modulation, true).aui8Codes);
    EXPECT_EQ(ui32Modulation, packModulation4bpp(modulation.aui8Codes.data()));
}

TEST(Modulation, DirectTwoBitBlocksHaveOneBitAPixel)
{
    // Pixels (0, 0), (7, 0), (2, 1) and (7, 3): bits 0, 7, 10, 31.
    const uint32_t ui32Modulation = 1u | 1u << 7 | 1u << 10 | 1u << 31;
    const BlockModulation modulation = unpack2bpp(ui32Modulation, false);
    EXPECT_EQ(k_ui8ModeDirect, modulation.ui8Mode);
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 8; ++x)
            EXPECT_EQ(((ui32Modulation >> (8 * y + x)) & 1) != 0 ? 3 : 0, codeAt(modulation, x, y)) << x << ", " << y;
    EXPECT_EQ(ui32Modulation, packModulationDirect(modulation.aui8Codes.data()));
}

TEST(Modulation, ATwoBitBlockWithTheModeFlagHasCodesOfEveryOtherPixel)
{
    // One code of 3 at each place in turn but the first, whose low bit is a flag: the pixels go 2, 4, 6 of row 0, 1, 3, 5, 7 of row 1, ...
    for (uint32_t uiPlace = 1; uiPlace < 16; ++uiPlace)
    {
        const uint32_t y = uiPlace / 4;
        const uint32_t x = 2 * (uiPlace % 4) + (y & 1);
        BlockModulation expected;
        expected.ui8Mode = k_ui8ModeBothAxes;
        expected.aui8Codes[8 * y + x] = 3;
        const BlockModulation modulation = unpack2bpp(code(uiPlace, 3), true);
        EXPECT_EQ(expected.aui8Codes, modulation.aui8Codes) << uiPlace;
        EXPECT_EQ(expected.ui8Mode, modulation.ui8Mode);
    }
}

TEST(Modulation, BitZeroAndBitTwentyChooseTheModeBetweenPixels)
{
    EXPECT_EQ(k_ui8ModeBothAxes, unpack2bpp(0, true).ui8Mode);
    EXPECT_EQ(k_ui8ModeBothAxes, unpack2bpp(1u << 20, true).ui8Mode);
    EXPECT_EQ(k_ui8ModeHorizontal, unpack2bpp(1, true).ui8Mode);
    EXPECT_EQ(k_ui8ModeVertical, unpack2bpp(1u | 1u << 20, true).ui8Mode);
}

TEST(Modulation, TheFirstPixelsLowBitIsACopyOfItsHighBitInEveryModeBetweenPixels)
{
    for (const uint32_t ui32Mode : {0u, 1u, 1u | 1u << 20})
    {
        EXPECT_EQ(0, codeAt(unpack2bpp(ui32Mode, true), 0, 0));
        EXPECT_EQ(3, codeAt(unpack2bpp(ui32Mode | 2, true), 0, 0));
    }
}

TEST(Modulation, ThePixelOfTheVerticalFlagHasAllFourCodesInTheModeOfBothAxesOnly)
{
    for (uint32_t uiCode = 0; uiCode < 4; ++uiCode)
    {
        EXPECT_EQ(uiCode, codeAt(unpack2bpp(code(k_uiPlaceOf42, uiCode), true), 4, 2));
        EXPECT_EQ(uiCode < 2 ? 0 : 3, codeAt(unpack2bpp(code(k_uiPlaceOf42, uiCode) | 1, true), 4, 2));
    }
}

TEST(Modulation, PackingBetweenPixelsPutsTheFlagsInPlaceOfLowBits)
{
    // Codes 0 1 2 3, 3 2 1 0, 1 1 3 2, 0 3 2 1 at places 0 to 15; the low bits of places 0 and 10 are flags.
    constexpr uint32_t k_ui32Codes = 0b01'10'11'00'10'11'01'01'00'01'10'11'11'10'01'00;
    EXPECT_EQ(k_ui32Codes, packModulationInterpolated(k_aui8Codes.data(), k_ui8ModeBothAxes));
    EXPECT_EQ((k_ui32Codes | 1u) & ~(1u << 20), packModulationInterpolated(k_aui8Codes.data(), k_ui8ModeHorizontal));
    EXPECT_EQ(k_ui32Codes | 1u | 1u << 20, packModulationInterpolated(k_aui8Codes.data(), k_ui8ModeVertical));

    std::array<uint8_t, 32> aui8AllThrees = {};
    aui8AllThrees.fill(3);
    EXPECT_EQ(0xFFFFFFFEu, packModulationInterpolated(aui8AllThrees.data(), k_ui8ModeBothAxes));
    EXPECT_EQ(0xFFEFFFFFu, packModulationInterpolated(aui8AllThrees.data(), k_ui8ModeHorizontal));
    std::array<uint8_t, 32> aui8Zeros = {};
    EXPECT_EQ(0x00100001u, packModulationInterpolated(aui8Zeros.data(), k_ui8ModeVertical));
}

TEST(Modulation, WhatIsUnpackedIsPackedAgain)
{
    testsupport::CSeededRandom random(1);
    for (int i = 0; i < 10000; ++i)
    {
        const uint32_t ui32Modulation = random.next32();
        const BlockModulation modulation = unpack2bpp(ui32Modulation, true);
        EXPECT_EQ(ui32Modulation, packModulationInterpolated(modulation.aui8Codes.data(), modulation.ui8Mode));
    }
}

TEST(Modulation, WeightTablesAreInEighthsWithFourteenForPunchThroughOfTheFirstGeneration)
{
    EXPECT_THAT(k_aui8StandardWeights, ElementsAre(0, 3, 5, 8));
    EXPECT_THAT(k_aui8PunchThroughWeightsMOXTC1, ElementsAre(0, 4, 14, 8));
    EXPECT_THAT(k_aui8PunchThroughWeightsMOXTCII, ElementsAre(0, 4, 4, 8));
}

TEST(Modulation, TheMapHasTheFourBlocksSideBySide)
{
    // Modes and codes tell the blocks apart: P direct with codes 3, Q both axes with 1, R horizontal with 2, S vertical with 3.
    const BlockWord P = {0xFFFFFFFF, 0};
    const BlockWord Q = {0x55555554, 1};
    const BlockWord R = {0xAAAAAAAB, 1};
    const BlockWord S = {0xFFFFFFFF, 1};
    const CModulationMap map({P, Q, R, S}, true);
    EXPECT_EQ(k_ui8ModeDirect, map.getMode(0, 0));
    EXPECT_EQ(k_ui8ModeDirect, map.getMode(7, 3));
    EXPECT_EQ(k_ui8ModeBothAxes, map.getMode(8, 0));
    EXPECT_EQ(k_ui8ModeBothAxes, map.getMode(15, 3));
    EXPECT_EQ(k_ui8ModeHorizontal, map.getMode(0, 4));
    EXPECT_EQ(k_ui8ModeHorizontal, map.getMode(7, 7));
    EXPECT_EQ(k_ui8ModeVertical, map.getMode(8, 4));
    EXPECT_EQ(k_ui8ModeVertical, map.getMode(15, 7));
    EXPECT_EQ(3, map.getCode(7, 3));
    EXPECT_EQ(1, map.getCode(9, 3));
    EXPECT_EQ(2, map.getCode(1, 5));
    EXPECT_EQ(3, map.getCode(15, 7));
}

TEST(Modulation, TheMapOfFourBitBlocksHasThemFourApart)
{
    const CModulationMap map({{0x00000000, 0}, {0x55555555, 1}, {0xAAAAAAAA, 0}, {0xFFFFFFFF, 1}}, false);
    for (uint32_t y = 0; y < 8; ++y)
    {
        for (uint32_t x = 0; x < 8; ++x)
        {
            EXPECT_EQ((x < 4 ? 0 : 1) + (y < 4 ? 0 : 2), map.getCode(x, y)) << x << ", " << y;
            EXPECT_EQ(x < 4 ? k_ui8ModeDirect : k_ui8ModePunchThrough, map.getMode(x, y)) << x << ", " << y;
        }
    }
    EXPECT_EQ(5, map.getStandardWeight(0, 4));
}

// Stored weights of the block of k_aui8Codes, whose code of (4, 2) is 3 in every mode that packs it whole:
//     0  .  3  .  5  .  8  .
//     .  8  .  5  .  3  .  0
//     3  .  3  .  8  .  5  .
//     .  0  .  8  .  5  .  3

TEST(Modulation, BetweenPixelsOfBothAxesIsTheMeanOfFourRounded)
{
    const auto aaiWeights = getWeights(fourOf(makeBlock(k_ui8ModeBothAxes)));
    // Row 1 from x 1: stored, then up + down + left + right.
    EXPECT_THAT(aaiWeights[0], ElementsAre(8, (3 + 3 + 8 + 5 + 2) / 4, 5, (5 + 8 + 5 + 3 + 2) / 4, 3, (8 + 5 + 3 + 0 + 2) / 4, 0));
    EXPECT_THAT(aaiWeights[1], ElementsAre((8 + 0 + 3 + 3 + 2) / 4, 3, (5 + 8 + 3 + 8 + 2) / 4, 8, (3 + 5 + 8 + 5 + 2) / 4, 5,
                                           (0 + 3 + 5 + 3 + 2) / 4)); // its right neighbour is (0, 2) of Q
}

TEST(Modulation, BetweenPixelsOfTheHorizontalModeIsTheMeanOfLeftAndRightRounded)
{
    // The code of (4, 2) has a high bit of 1: it stays 3.
    const auto aaiWeights = getWeights(fourOf(makeBlock(k_ui8ModeHorizontal)));
    EXPECT_THAT(aaiWeights[0], ElementsAre(8, (8 + 5 + 1) / 2, 5, (5 + 3 + 1) / 2, 3, (3 + 0 + 1) / 2, 0));
    EXPECT_THAT(aaiWeights[1], ElementsAre((3 + 3 + 1) / 2, 3, (3 + 8 + 1) / 2, 8, (8 + 5 + 1) / 2, 5, (5 + 3 + 1) / 2));
}

TEST(Modulation, BetweenPixelsOfTheVerticalModeIsTheMeanOfUpAndDownRounded)
{
    const auto aaiWeights = getWeights(fourOf(makeBlock(k_ui8ModeVertical)));
    EXPECT_THAT(aaiWeights[0], ElementsAre(8, (3 + 3 + 1) / 2, 5, (5 + 8 + 1) / 2, 3, (8 + 5 + 1) / 2, 0));
    EXPECT_THAT(aaiWeights[1], ElementsAre((8 + 0 + 1) / 2, 3, (5 + 8 + 1) / 2, 8, (3 + 5 + 1) / 2, 5, (0 + 3 + 1) / 2));
}

TEST(Modulation, APixelBetweenTakesItsNeighboursInOtherBlocksWhateverTheirMode)
{
    // Around P's (7, 2): above 0 and below 3 and left 5 are its own; the right one is Q's (0, 2), where the direct Q has 8.
    const BlockWord P = makeBlock(k_ui8ModeBothAxes);
    const BlockWord Q = {1u << 16, 0};
    CModulationMap map({P, Q, P, Q}, true);
    EXPECT_EQ((0 + 3 + 5 + 8 + 2) / 4, map.getWeight2bpp(7, 2));
    // The direct Q has codes at every pixel, and takes none from P.
    EXPECT_EQ(8, map.getWeight2bpp(8, 2));
    EXPECT_EQ(0, map.getWeight2bpp(8, 1));

    // P's (2, 3), vertical: above 3, below R's (2, 0) with 8. R's (1, 0), vertical: above P's (1, 3) with 0, below its own 8.
    const BlockWord R = {0xFFFFFFFF, 1};
    map = CModulationMap({makeBlock(k_ui8ModeVertical), Q, R, Q}, true);
    EXPECT_EQ((3 + 8 + 1) / 2, map.getWeight2bpp(2, 3));
    EXPECT_EQ((0 + 8 + 1) / 2, map.getWeight2bpp(1, 4));
}

TEST(Modulation, AMeanOfFullWeightsIsNotAboveEight)
{
    for (const uint32_t ui32Modulation : {0xFFFFFFFEu, 0xFFEFFFFFu, 0xFFFFFFFFu})
        for (const auto& aiRow : getWeights(fourOf({ui32Modulation, 1})))
            EXPECT_THAT(aiRow, Each(8));
}
