#include "Codecs/ETC/EtcFastBlock.h"

#include <gtest/gtest.h>

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcFastBlock.h"
#include "Support/EveryInstructionSet.h"

namespace
{

using namespace moxtexture;
using namespace etctest;

/// Two flat halves: left and right, or top and bottom.
EtcPixels halves(const EtcColour& first, const EtcColour& second, bool bFlip = false)
{
    EtcPixels pixels;
    for (size_t i = 0; i < 16; ++i)
    {
        const bool bSecond = bFlip ? i >= 8 : i % 4 >= 2;
        const EtcColour& colour = bSecond ? second : first;
        pixels.aui8Red[i] = colour[0];
        pixels.aui8Green[i] = colour[1];
        pixels.aui8Blue[i] = colour[2];
    }
    return pixels;
}

/// Two columns of black, then two of greys.
EtcPixels blackAndColumns(uint8_t ui8Third, uint8_t ui8Fourth)
{
    EtcPixels pixels;
    for (auto* const pPlane : planesOf(pixels))
        for (size_t i = 0; i < 16; ++i)
            (*pPlane)[i] = i % 4 < 2 ? 0 : i % 4 == 2 ? ui8Third : ui8Fourth;
    return pixels;
}

/// Two greys by turns across and down.
EtcPixels chequered(uint8_t ui8First, uint8_t ui8Second)
{
    EtcPixels pixels;
    for (auto* const pPlane : planesOf(pixels))
        for (size_t i = 0; i < 16; ++i)
            (*pPlane)[i] = (i / 4 + i) % 2 == 0 ? ui8First : ui8Second;
    return pixels;
}

/// Both forms are to give this block.
void expectBlock(const EtcPixels& pixels, uint32_t ui32High, uint32_t ui32Low, double fPlainError, double fPerceptualError)
{
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(fPlainError, etcFastBlockETC1(pixels, words));
            EXPECT_EQ(ui32High, words.ui32High);
            EXPECT_EQ(ui32Low, words.ui32Low);
            EXPECT_DOUBLE_EQ(fPerceptualError, etcFastBlockETC1Perceptual(pixels, words));
            EXPECT_EQ(ui32High, words.ui32High);
            EXPECT_EQ(ui32Low, words.ui32Low);
        });
}

/// On all kinds of blocks and every instruction set.
void expectReferenceBlocks(double (*pEncode)(const EtcPixels&, EtcBlockWords&), double (*pReference)(const EtcPixels&, EtcBlockWords&))
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(55, 20000);
    std::vector<EtcBlockWords> expected(blocks.size());
    std::vector<double> errors(blocks.size());
    for (size_t i = 0; i < blocks.size(); ++i)
        errors[i] = pReference(blocks[i], expected[i]);
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
            {
                EtcBlockWords words;
                const double fError = pEncode(blocks[i], words);
                ASSERT_EQ(errors[i], fError) << "block " << i;
                ASSERT_EQ(expected[i].ui32High, words.ui32High) << "block " << i;
                ASSERT_EQ(expected[i].ui32Low, words.ui32Low) << "block " << i;
            }
        });
}

} // namespace

TEST(EtcFastBlock, HalvesFarApartAreIndividual)
{
    // Levels 0 and 15, tables 0. Black: 0 - 8 is clamped, position 0, index 3. White: 255 + 2 is clamped, position 2, index 0.
    expectBlock(halves({0, 0, 0}, {255, 255, 255}), 0x0F0F0F00, 0x00FF00FF, 0, 0);
}

TEST(EtcFastBlock, TheSplitThatFitsBetterIsFlipped)
{
    // Levels 0 and 15 of red. Black: index 3, for y of 0 and 1, which are bits 0 and 1 of each column's four.
    // Red: 255 - 2 misses by 2 in one channel, 255 + 2 in two, so position 1, index 2. Errors 8 * 4 and 32 * 0.299.
    expectBlock(halves({0, 0, 0}, {255, 0, 0}, true), 0x0F000001, 0xFFFF3333, 32, 9.568);
}

TEST(EtcFastBlock, MoreThanThreeLevelsInOneChannelAreIndividualNotClamped)
{
    // 33 is level 4 of 5 bits, one too many from 0. In 4 bits it is 33 / 17 = 1.94, level 2 (34).
    // 34 - 2 = 32 misses by 1 in red, green and blue stay 0: position 1, index 2. Errors 8 and 8 * 0.299.
    expectBlock(halves({0, 0, 0}, {33, 0, 0}), 0x02000000, 0xFFFF00FF, 8, 2.392);
}

TEST(EtcFastBlock, ThreeLevelsAreDifferential)
{
    // 24 is level 3 of 5 bits: 24 - 2 = 22 misses by 2, position 1, index 2. Errors 8 * 4 and 32 * 0.299.
    expectBlock(halves({0, 0, 0}, {24, 0, 0}), 0x03000002, 0xFFFF00FF, 32, 9.568);
}

TEST(EtcFastBlock, FourLevelsDownAreDifferential)
{
    // 33 is level 4, -4 from it is 0: the offset's bits are 100. 33 - 2 = 31 misses by 2, index 2.
    expectBlock(halves({33, 0, 0}, {0, 0, 0}), 0x24000002, 0xFFFFFF00, 32, 9.568);
}

TEST(EtcFastBlock, EqualErrorsKeepLeftAndRight)
{
    // Every split of a flat block is the same. 100 is level 12 (99), and 99 + 2 = 101 misses by 1: index 0. 3 * 16 pixels.
    expectBlock(flatEtcBlock(100, 100, 100), 0x60606002, 0x00000000, 48, 16);
}

TEST(EtcFastBlock, EqualErrorsKeepTheFirstSearch)
{
    // 129 is nearest to level 16 (132), and 132 - 2 = 130 misses by 1: table 0, index 2. The second search takes level 15 (123),
    // and with 123 + 5 = 128 of table 1 misses by 1 too.
    expectBlock(flatEtcBlock(129, 129, 129), 0x80808002, 0xFFFF0000, 48, 16);
}

TEST(EtcFastBlock, TheSecondSearchReplacesAWorseFirst)
{
    // 128 is nearest to level 16 (132), and 132 - 5 = 127 misses by 1. Level 15 (123) meets it with + 5: table 1, index 0.
    expectBlock(flatEtcBlock(128, 128, 128), 0x78787826, 0x00000000, 0, 0);
}

TEST(EtcFastBlock, AMeanHalfwayBetweenLevelsGoesUp)
{
    // All halves have the mean 127.5, which is level 15.5: 16 (132), whose - 5 of table 1 meets 127 and misses 128 by 1: index 2.
    // The second search takes 15 (123), whose + 5 is as good. 3 * 8 pixels.
    expectBlock(chequered(127, 128), 0x80808026, 0xFFFF0000, 24, 8);
}

TEST(EtcFastBlock, FiveBitsKeepTheLowLevelsOfGrey)
{
    // All halves have the mean 131.5, nearest to 132, from which 130 and 134 miss 131 by 1 and 132 by 2. The level below is 123, off
    // by 8.5 in each channel, and 123 + 8 of table 0 misses 132 by 1 only: index 1. 3 * 8 pixels.
    expectBlock(chequered(131, 132), 0x78787802, 0x0000FFFF, 24, 8);
}

TEST(EtcFastBlock, FourBitsAtTheLimitOfGreyStayLow)
{
    // The right mean is 127, off by 8 from 119 in each channel: 3 * 64 = 192, the limit itself. 119 - 9 = 110 of table 2 misses 107
    // by 3 (index 2), 119 + 29 misses 147 by 1 (index 1): 3 * 4 * (9 + 1). The level above, 136, would miss by 0 and 2.
    expectBlock(blackAndColumns(107, 147), 0x07070708, 0x0FFFF0FF, 120, 40);
}

TEST(EtcFastBlock, FourBitsAboveTheLimitOfGreyGoUpInThePlainFormOnly)
{
    // The last pixel makes the right mean 127.25, which is nearest to 119 still, but off by 8.25: 3 * 68.0625 = 204.1875.
    // 136 - 29 of table 2 meets 107 (index 3), 136 + 9 = 145 misses 147 by 2 and 149 by 4 (index 0): 3 * (3 * 4 + 16).
    // 119 misses them by 3, 1 and 1 as above.
    EtcPixels pixels = blackAndColumns(107, 147);
    for (auto* const pPlane : planesOf(pixels))
        (*pPlane)[15] = 149;
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(84.0, etcFastBlockETC1(pixels, words));
            EXPECT_EQ(0x08080808u, words.ui32High);
            EXPECT_EQ(0x0FFF0FFFu, words.ui32Low);
            EXPECT_DOUBLE_EQ(40.0, etcFastBlockETC1Perceptual(pixels, words));
            EXPECT_EQ(0x07070708u, words.ui32High);
            EXPECT_EQ(0x0FFFF0FFu, words.ui32Low);
        });
}

TEST(EtcFastBlock, ReturnsWhatTheDecodedBlockMeasures)
{
    for (const EtcPixels& pixels : makeEtcTestBlocks(56, 900))
    {
        EtcBlockWords words;
        const double fPlain = etcFastBlockETC1(pixels, words);
        EXPECT_EQ(blockErrorRGB(pixels, decodeEtcPixelsETC1(words)), fPlain);
        const double fPerceptual = etcFastBlockETC1Perceptual(pixels, words);
        EXPECT_EQ(blockErrorPerceptual(pixels, decodeEtcPixelsETC1(words)), fPerceptual);
    }
}

TEST(EtcFastBlock, GivesTheReferencesBlocks)
{
    expectReferenceBlocks(etcFastBlockETC1, etcreference::etcFastBlockETC1);
}

TEST(EtcFastBlock, GivesTheReferencesPerceptualBlocks)
{
    expectReferenceBlocks(etcFastBlockETC1Perceptual, etcreference::etcFastBlockETC1Perceptual);
}
