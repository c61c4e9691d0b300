#include "Codecs/MOXTC/MOXTCIIDecoderReference.h"

#include <string>

#include <gmock/gmock.h>

#include "MoxtcTestPictures.h"

using namespace moxtexture;
using namespace moxtctest;

namespace
{

constexpr Pixel k_aNothing = {0, 0, 0, 0};
constexpr uint32_t k_ui32HardBit = k_ui32Bit15;

/// Opaque colours that differ in their reds of 5 bits.
constexpr uint32_t reds(uint32_t uiA, uint32_t uiB)
{
    return opaqueColours(k_MOXTCIIAt4bpp, {uiA, 0, 0}, {uiB, 0, 0});
}

/// The four blocks around the cell in the middle of a picture of two by two: reds 1 to 8, in the order of the palette. Expanded they
/// are k_aiReds.
constexpr uint32_t k_ui32RedsOfP = reds(1, 2);
constexpr uint32_t k_ui32RedsOfS = reds(3, 4);
constexpr uint32_t k_ui32RedsOfQ = reds(5, 6);
constexpr uint32_t k_ui32RedsOfR = reds(7, 8);
constexpr int k_aiReds[] = {8, 16, 24, 33, 41, 49, 57, 66};

/// Colours of the palette for codes 0 to 3 at the pixels right and down from P's centre.
const std::string k_astrPalette[4][4] = {
    {"", "0145", "0145", "0145"},
    {"0167", "0147", "0145", "2145"},
    {"0167", "0167", "0365", "2345"},
    {"0167", "0367", "2367", "2365"},
};

int paletteRed(uint32_t x, uint32_t y, uint32_t uiCode)
{
    return k_aiReds[k_astrPalette[y][x][uiCode] - '0'];
}

/// Two reds at a weight.
int mix(int iA, int iB, int iWeight)
{
    return (iA * (8 - iWeight) + iB * iWeight) / 8;
}

} // namespace

class MOXTCIIDecoding : public MoxtcDecoding
{
};
INSTANTIATE_MOXTC_DECODING(MOXTCIIDecoding);

TEST_P(MOXTCIIDecoding, PunchThroughMakesAllOfThePixelZero)
{
    const BlockWord block = {0xE4E4E4E4, blackAndWhite(k_MOXTCIIAt4bpp) | k_ui32ModeBit};
    const CPicture picture = decode(k_MOXTCIIAt4bpp, {block, block, block, block}, 8, 8);
    for (uint32_t y = 0; y < 8; ++y)
    {
        EXPECT_EQ(grey(0), picture.at(0, y));
        EXPECT_EQ(grey(4), picture.at(1, y));
        EXPECT_EQ(k_aNothing, picture.at(2, y));
        EXPECT_EQ(grey(8), picture.at(3, y));
    }
}

TEST_P(MOXTCIIDecoding, EachPixelGoesByTheModeOfItsOwnBlock)
{
    const BlockWord standard = {everyPixel(2), blackAndWhite(k_MOXTCIIAt4bpp)};
    const BlockWord punched = {everyPixel(2), blackAndWhite(k_MOXTCIIAt4bpp) | k_ui32ModeBit};
    const CPicture picture = decode(k_MOXTCIIAt4bpp, {standard, punched, standard, standard}, 8, 8);
    for (uint32_t y = 0; y < 8; ++y)
        for (uint32_t x = 0; x < 8; ++x)
            EXPECT_EQ(x >= 4 && y < 4 ? k_aNothing : grey(5), picture.at(x, y)) << x << ", " << y;
}

TEST_P(MOXTCIIDecoding, ATranslucentPairHasAlphaUpToFourteenInAAndFifteenInB)
{
    // A alpha 010: 4 of 15, 64, 4 + 64 = 68. B alpha 011: 7 of 15, 112, 7 + 112 = 119.
    const BlockWord block = {0xE4E4E4E4, 2u << 12 | 3u << 28};
    CPicture picture = decode(k_MOXTCIIAt4bpp, {block}, 4, 4);
    EXPECT_EQ((Pixel{0, 0, 0, 68}), picture.at(0, 0));
    EXPECT_EQ((Pixel{0, 0, 0, mix(68, 119, 3)}), picture.at(1, 0));
    EXPECT_EQ((Pixel{0, 0, 0, mix(68, 119, 5)}), picture.at(2, 0));
    EXPECT_EQ((Pixel{0, 0, 0, 119}), picture.at(3, 0));

    // Alpha 111 in both: 14 gives 14 + 224, 15 gives 15 + 240.
    const BlockWord highest = {0xE4E4E4E4, 7u << 12 | 7u << 28};
    picture = decode(k_MOXTCIIAt4bpp, {highest}, 4, 4);
    EXPECT_EQ(238, picture.at(0, 0)[3]);
    EXPECT_EQ(255, picture.at(3, 0)[3]);
}

TEST_P(MOXTCIIDecoding, AHardCellOfFourBitsWithTheModeFlagShowsThePalette)
{
    for (uint32_t uiCode = 0; uiCode < 4; ++uiCode)
    {
        const auto block = [&](uint32_t ui32Colours) { return BlockWord{everyPixel(uiCode), ui32Colours | k_ui32ModeBit}; };
        const CPicture picture =
            decode(k_MOXTCIIAt4bpp,
                   {block(k_ui32RedsOfP | k_ui32HardBit), block(k_ui32RedsOfQ), block(k_ui32RedsOfR), block(k_ui32RedsOfS)}, 8, 8);
        for (uint32_t y = 0; y < 4; ++y)
            for (uint32_t x = y == 0 ? 1 : 0; x < 4; ++x)
                EXPECT_EQ((Pixel{paletteRed(x, y, uiCode), 0, 0, 255}), picture.at(x + 2, y + 2)) << uiCode << " at " << x << ", " << y;
    }
}

TEST_P(MOXTCIIDecoding, TheCentrePixelOfAHardBlockTakesTheStandardWeightsThoughTheModeFlagIsSet)
{
    constexpr int k_aiWeights[] = {0, 3, 5, 8};
    for (uint32_t uiCode = 0; uiCode < 4; ++uiCode)
    {
        const BlockWord block = {everyPixel(uiCode), blackAndWhite(k_MOXTCIIAt4bpp) | k_ui32ModeBit | k_ui32HardBit};
        const CPicture picture = decode(k_MOXTCIIAt4bpp, {block, block, block, block}, 8, 8);
        EXPECT_EQ(grey(k_aiWeights[uiCode]), picture.at(2, 2)) << uiCode;
        EXPECT_EQ(grey(k_aiWeights[uiCode]), picture.at(6, 6)) << uiCode;
    }
}

TEST_P(MOXTCIIDecoding, ThePaletteOfAHardCellAtTheCornerWraps)
{
    // The hard block is the last one: its cell reaches over both edges, so P is at (1, 1), Q at (0, 1), R at (1, 0), S at (0, 0).
    const auto block = [&](uint32_t ui32Colours) { return BlockWord{everyPixel(2), ui32Colours | k_ui32ModeBit}; };
    const CPicture picture = decode(
        k_MOXTCIIAt4bpp, {block(k_ui32RedsOfS), block(k_ui32RedsOfR), block(k_ui32RedsOfQ), block(k_ui32RedsOfP | k_ui32HardBit)}, 8, 8);
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = y == 0 ? 1 : 0; x < 4; ++x)
            EXPECT_EQ(paletteRed(x, y, 2), picture.redAt((x + 6) % 8, (y + 6) % 8)) << x << ", " << y;
}

TEST_P(MOXTCIIDecoding, AHardCellWithoutTheModeFlagBlendsTheColoursOfTheBlockThatHoldsThePixel)
{
    constexpr int k_aiWeights[] = {0, 3, 5, 8};
    for (uint32_t uiCode = 0; uiCode < 4; ++uiCode)
    {
        const auto block = [&](uint32_t ui32Colours) { return BlockWord{everyPixel(uiCode), ui32Colours}; };
        const CPicture picture =
            decode(k_MOXTCIIAt4bpp,
                   {block(k_ui32RedsOfP | k_ui32HardBit), block(k_ui32RedsOfQ), block(k_ui32RedsOfR), block(k_ui32RedsOfS)}, 8, 8);
        const int w = k_aiWeights[uiCode];
        for (uint32_t y = 2; y < 6; ++y)
        {
            for (uint32_t x = 2; x < 6; ++x)
            {
                const int iLeft = y < 4 ? mix(8, 16, w) : mix(57, 66, w);
                const int iRight = y < 4 ? mix(41, 49, w) : mix(24, 33, w);
                EXPECT_EQ((Pixel{x < 4 ? iLeft : iRight, 0, 0, 255}), picture.at(x, y)) << uiCode << " at " << x << ", " << y;
            }
        }
    }
}

TEST_P(MOXTCIIDecoding, TheModeFlagOfTheBlockThatHoldsThePixelChoosesBetweenPaletteAndBlend)
{
    // Only Q has the mode flag.
    const auto block = [&](uint32_t ui32Colours) { return BlockWord{everyPixel(1), ui32Colours}; };
    const CPicture picture = decode(
        k_MOXTCIIAt4bpp,
        {block(k_ui32RedsOfP | k_ui32HardBit), block(k_ui32RedsOfQ | k_ui32ModeBit), block(k_ui32RedsOfR), block(k_ui32RedsOfS)}, 8, 8);
    for (uint32_t y = 2; y < 4; ++y)
    {
        for (uint32_t x = 4; x < 6; ++x)
            EXPECT_EQ(paletteRed(x - 2, y - 2, 1), picture.redAt(x, y)) << x << ", " << y;
        for (uint32_t x = 2; x < 4; ++x)
            EXPECT_EQ(mix(8, 16, 3), picture.redAt(x, y)) << x << ", " << y;
    }
}

TEST_P(MOXTCIIDecoding, OnlyTheHardFlagOfTheCellsUpperLeftBlockCounts)
{
    // All but P are hard: the cell from P's centre stays smooth. Code 0: A, reds 0, 31, 0, 0.
    const BlockWord P = {0, reds(0, 0)};
    const BlockWord Q = {0, reds(31, 0) | k_ui32HardBit};
    const BlockWord other = {0, reds(0, 0) | k_ui32HardBit};
    const CPicture picture = decode(k_MOXTCIIAt4bpp, {P, Q, other, other}, 8, 8);
    // Quarters of 31 across, P's row down: 124, 1 + 62; 248, 3 + 124; 372, 5 + 186; a quarter less each row.
    EXPECT_EQ(0, picture.redAt(2, 2));
    EXPECT_EQ(63, picture.redAt(3, 2));
    EXPECT_EQ(127, picture.redAt(4, 2));
    EXPECT_EQ(191, picture.redAt(5, 2));
    // Half of half: 31 * 2 * 2 = 124.
    EXPECT_EQ(63, picture.redAt(4, 4));
    // The cell from Q's centre is hard: pure colours, Q's up to the edge of the picture and P's past it.
    EXPECT_EQ(255, picture.redAt(6, 2));
    EXPECT_EQ(255, picture.redAt(7, 2));
    EXPECT_EQ(0, picture.redAt(0, 2));
    EXPECT_EQ(0, picture.redAt(1, 2));
}

TEST_P(MOXTCIIDecoding, AHardColourKeepsItsStoredAlpha)
{
    // A alpha 111, 14: 238. B alpha 000, 1: 17.
    const BlockWord block = {0xE4E4E4E4, 7u << 12 | k_ui32HardBit};
    const CPicture picture = decode(k_MOXTCIIAt4bpp, {block}, 4, 4);
    EXPECT_EQ((Pixel{0, 0, 0, 238}), picture.at(0, 2));
    EXPECT_EQ((Pixel{0, 0, 0, mix(238, 17, 5)}), picture.at(2, 2));
    EXPECT_EQ((Pixel{0, 0, 0, 17}), picture.at(3, 2));
}

TEST_P(MOXTCIIDecoding, AHardCellOfTwoBitsBlendsTheColoursOfTheBlockThatHoldsThePixel)
{
    // Direct bits: the upper two rows of each block are A, the lower two B.
    const auto block = [&](uint32_t ui32Colours) { return BlockWord{0xFFFF0000, ui32Colours}; };
    const CPicture picture = decode(
        k_MOXTCIIAt2bpp, {block(k_ui32RedsOfP | k_ui32HardBit), block(k_ui32RedsOfQ), block(k_ui32RedsOfR), block(k_ui32RedsOfS)}, 16, 8);
    for (uint32_t x = 4; x < 8; ++x)
    {
        EXPECT_EQ(16, picture.redAt(x, 2)) << x; // P.B
        EXPECT_EQ(16, picture.redAt(x, 3)) << x;
        EXPECT_EQ(57, picture.redAt(x, 4)) << x; // R.A
        EXPECT_EQ(57, picture.redAt(x, 5)) << x;
    }
    for (uint32_t x = 8; x < 12; ++x)
    {
        EXPECT_EQ(49, picture.redAt(x, 2)) << x; // Q.B
        EXPECT_EQ(24, picture.redAt(x, 5)) << x; // S.A
    }
}

TEST_P(MOXTCIIDecoding, AHardCellOfTwoBitsWithTheModeFlagTakesWeightsBetweenCodesAndNoPalette)
{
    struct Row
    {
        uint32_t ui32Modulation;
        int aiUpper[4]; ///< weights of pixels (4, 2) to (7, 2): code, between, code, between
        int aiLower[4]; ///< of (4, 3) to (7, 3): between, code, between, code
    };
    constexpr Row k_aRows[] = {
        {k_ui32Horizontal, {8, (8 + 5 + 1) / 2, 5, (5 + 3 + 1) / 2}, {(8 + 5 + 1) / 2, 5, (5 + 3 + 1) / 2, 3}},
        {k_ui32Vertical, {8, (3 + 5 + 1) / 2, 5, (0 + 3 + 1) / 2}, {(8 + 5 + 1) / 2, 5, (5 + 8 + 1) / 2, 3}},
        {k_ui32BothAxes,
         {8, (3 + 5 + 8 + 5 + 2) / 4, 5, (0 + 3 + 5 + 3 + 2) / 4},
         {(8 + 5 + 8 + 5 + 2) / 4, 5, (5 + 8 + 5 + 3 + 2) / 4, 3}},
    };
    for (const Row& row : k_aRows)
    {
        const BlockWord block = {row.ui32Modulation, blackAndWhite(k_MOXTCIIAt2bpp) | k_ui32ModeBit | k_ui32HardBit};
        const CPicture picture = decode(k_MOXTCIIAt2bpp, {block, block, block, block}, 16, 8);
        for (uint32_t x = 0; x < 4; ++x)
        {
            EXPECT_EQ(grey(row.aiUpper[x]), picture.at(x + 4, 2)) << row.ui32Modulation << " at " << x;
            EXPECT_EQ(grey(row.aiLower[x]), picture.at(x + 12, 7)) << row.ui32Modulation << " at " << x;
        }
    }
}

TEST_P(MOXTCIIDecoding, OneBlockColumnIsItsOwnNeighbour)
{
    constexpr int k_aiExpected[] = {127, 191, 255, 191, 127, 63, 0, 63}; // 31 by quarters down the picture
    const std::vector<BlockWord> blocks = {{0, reds(31, 0)}, {0, reds(0, 0)}};
    const CPicture at4bpp = decode(k_MOXTCIIAt4bpp, blocks, 4, 8);
    const CPicture at2bpp = decode(k_MOXTCIIAt2bpp, blocks, 8, 8);
    for (uint32_t y = 0; y < 8; ++y)
    {
        for (uint32_t x = 0; x < 4; ++x)
            EXPECT_EQ((Pixel{k_aiExpected[y], 0, 0, 255}), at4bpp.at(x, y)) << x << ", " << y;
        for (uint32_t x = 0; x < 8; ++x)
            EXPECT_EQ((Pixel{k_aiExpected[y], 0, 0, 255}), at2bpp.at(x, y)) << x << ", " << y;
    }
}

TEST_P(MOXTCIIDecoding, OneBlockRowIsItsOwnNeighbour)
{
    constexpr int k_aiQuarters[] = {127, 191, 255, 191, 127, 63, 0, 63};
    // 31 by eighths: 124 each of 992, 0 + 31, 1 + 62, 2 + 93, 3 + 124, 4 + 155, 5 + 186, 6 + 217, 7 + 248.
    constexpr int k_aiEighths[] = {127, 159, 191, 223, 255, 223, 191, 159, 127, 95, 63, 31, 0, 31, 63, 95};
    const std::vector<BlockWord> blocks = {{0, reds(31, 0)}, {0, reds(0, 0)}};
    const CPicture at4bpp = decode(k_MOXTCIIAt4bpp, blocks, 8, 4);
    const CPicture at2bpp = decode(k_MOXTCIIAt2bpp, blocks, 16, 4);
    for (uint32_t y = 0; y < 4; ++y)
    {
        for (uint32_t x = 0; x < 8; ++x)
            EXPECT_EQ(k_aiQuarters[x], at4bpp.redAt(x, y)) << x << ", " << y;
        for (uint32_t x = 0; x < 16; ++x)
            EXPECT_EQ(k_aiEighths[x], at2bpp.redAt(x, y)) << x << ", " << y;
    }
}

TEST_P(MOXTCIIDecoding, OnePixelIsTheFirstOfItsBlockWhichIsAllFourAround)
{
    // A red 31, B green 31; the first pixel's code is 1, all others' 0.
    const uint32_t ui32Colours = opaqueColours(k_MOXTCIIAt4bpp, {31, 0, 0}, {0, 31, 0});
    EXPECT_EQ((Pixel{255 * 5 / 8, 255 * 3 / 8, 0, 255}), decode(k_MOXTCIIAt4bpp, {{1, ui32Colours}}, 1, 1).at(0, 0));
    EXPECT_EQ((Pixel{255 * 4 / 8, 255 * 4 / 8, 0, 255}), decode(k_MOXTCIIAt4bpp, {{1, ui32Colours | k_ui32ModeBit}}, 1, 1).at(0, 0));
    EXPECT_EQ((Pixel{0, 255, 0, 255}), decode(k_MOXTCIIAt2bpp, {{1, ui32Colours}}, 1, 1).at(0, 0));

    // Hard: two down and two to the right of the centre, where the palette has P.A, S.B, R.A, Q.B.
    for (uint32_t uiCode = 0; uiCode < 4; ++uiCode)
    {
        const BlockWord hard = {uiCode, ui32Colours | k_ui32ModeBit | k_ui32HardBit};
        EXPECT_EQ(uiCode % 2 == 0 ? (Pixel{255, 0, 0, 255}) : (Pixel{0, 255, 0, 255}), decode(k_MOXTCIIAt4bpp, {hard}, 1, 1).at(0, 0))
            << uiCode;
    }
}

TEST_P(MOXTCIIDecoding, AnOddSizeIsTheTopLeftOfThePaddedPicture)
{
    // 5 by 3 of 8 by 4: 31 by quarters across, alike in every row.
    constexpr int k_aiExpected[] = {127, 191, 255, 191, 127};
    const CPicture at4bpp = decode(k_MOXTCIIAt4bpp, {{0, reds(31, 0)}, {0, reds(0, 0)}}, 5, 3);
    for (uint32_t y = 0; y < 3; ++y)
        for (uint32_t x = 0; x < 5; ++x)
            EXPECT_EQ((Pixel{k_aiExpected[x], 0, 0, 255}), at4bpp.at(x, y)) << x << ", " << y;

    // 9 by 5 of 16 by 8, with red in the last block: shares 4 3 2 1 0 1 2 3 4 in eighths, 2 1 0 1 2 in quarters.
    constexpr int k_aiAcross[] = {4, 3, 2, 1, 0, 1, 2, 3, 4};
    constexpr int k_aiDown[] = {2, 1, 0, 1, 2};
    const CPicture at2bpp = decode(k_MOXTCIIAt2bpp, {{0, reds(0, 0)}, {0, reds(0, 0)}, {0, reds(0, 0)}, {0, reds(31, 0)}}, 9, 5);
    for (uint32_t y = 0; y < 5; ++y)
    {
        for (uint32_t x = 0; x < 9; ++x)
        {
            const int iSum = 31 * k_aiAcross[x] * k_aiDown[y];
            EXPECT_EQ((Pixel{(iSum >> 7) + (iSum >> 2), 0, 0, 255}), at2bpp.at(x, y)) << x << ", " << y;
        }
    }
}

TEST_P(MOXTCIIDecoding, BlocksOfAPictureThatIsNotSquareGoRowAfterRow)
{
    // Reds 0 to 5 of 5 bits: 0, 8, 16, 24, 33, 41, at the centres.
    constexpr int k_aiExpected[] = {0, 8, 16, 24, 33, 41};
    std::vector<BlockWord> blocks;
    for (uint32_t ui = 0; ui < 6; ++ui)
        blocks.push_back({0, reds(ui, 0)});
    const CPicture wide = decode(k_MOXTCIIAt4bpp, blocks, 12, 8);
    const CPicture high = decode(k_MOXTCIIAt2bpp, blocks, 16, 12);
    for (uint32_t ui = 0; ui < 6; ++ui)
    {
        EXPECT_EQ(k_aiExpected[ui], wide.redAt(ui % 3 * 4 + 2, ui / 3 * 4 + 2)) << ui;
        EXPECT_EQ(k_aiExpected[ui], high.redAt(ui % 2 * 8 + 4, ui / 2 * 4 + 2)) << ui;
    }
}

TEST(MOXTCIIDecoderReference, TakesTheMortonOrderToo)
{
    const std::vector<uint8_t> data = toBytes({{0, reds(1, 0)}, {0, reds(2, 0)}, {0, reds(3, 0)}, {0, reds(4, 0)}});
    CPicture picture(8, 8);
    ASSERT_TRUE(DecompressMOXTCIIReference(data.data(), data.size(), picture.data(), 8, 8, false, false));
    EXPECT_EQ(8, picture.redAt(2, 2));
    EXPECT_EQ(16, picture.redAt(2, 6));
    EXPECT_EQ(24, picture.redAt(6, 2));
    EXPECT_EQ(33, picture.redAt(6, 6));
}

TEST(MOXTCIIDecoderReference, RefusesAWidthOfZeroAndWritesNothingForAHeightOfZero)
{
    const std::vector<uint8_t> data(64);
    uint8_t ui8Byte = 77;
    for (const bool b2bpp : {false, true})
    {
        EXPECT_FALSE(DecompressMOXTCIIReference(data.data(), data.size(), &ui8Byte, 0, 4, true, b2bpp));
        EXPECT_TRUE(DecompressMOXTCIIReference(data.data(), data.size(), &ui8Byte, 4, 0, true, b2bpp));
    }
    EXPECT_EQ(77, ui8Byte);
}

TEST(MOXTCIIDecoderReference, BlocksPastShortDataCountAsZeroAndTheirPixelsAreNothing)
{
    // The upper row of blocks alone, and 7 bytes of the third.
    std::vector<uint8_t> data = toBytes({{0, reds(31, 0)}, {0, reds(31, 0)}, {0, reds(31, 0)}});
    data.resize(23);
    data.shrink_to_fit();
    CPicture picture(8, 8);
    ASSERT_TRUE(DecompressMOXTCIIReference(data.data(), data.size(), picture.data(), 8, 8, true, false));
    for (uint32_t x = 0; x < 8; ++x)
    {
        EXPECT_EQ((Pixel{255, 0, 0, 255}), picture.at(x, 2)) << x;
        // Three quarters of 31 and of alpha 15: 372, 5 + 186, and 180, 11 + 180.
        EXPECT_EQ((Pixel{191, 0, 0, 191}), picture.at(x, 3)) << x;
        for (uint32_t y = 4; y < 8; ++y)
            EXPECT_EQ(k_aNothing, picture.at(x, y)) << x << ", " << y;
    }
}

TEST(MOXTCIIDecoderReference, OfNoDataIsNothingEverywhere)
{
    for (const Format& format : {k_MOXTCIIAt2bpp, k_MOXTCIIAt4bpp})
    {
        const CPicture picture = decodePlainly(format, {}, 9, 5);
        for (uint32_t y = 0; y < 5; ++y)
            for (uint32_t x = 0; x < 9; ++x)
                EXPECT_EQ(k_aNothing, picture.at(x, y));
    }
}
