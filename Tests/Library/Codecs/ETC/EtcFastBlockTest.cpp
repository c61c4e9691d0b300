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
