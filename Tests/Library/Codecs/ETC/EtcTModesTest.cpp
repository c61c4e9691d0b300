#include "Codecs/ETC/EtcTModes.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "Codecs/ETC/EtcDecodeA1.h"
#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "EtcModeTests.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcTModes.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;
using namespace etctest;

namespace
{

/// Every four pixels of a row by index: 0, 1, 2, 3.
constexpr uint32_t k_ui32EachPaint = 0xE4E4E4E4;

// Each needs one of the three clusterings, or tells that the first of equally good ones stays.
constexpr IndependentBlock k_aIndependentRefinements[] = {
    {{0x23D46D, 0x45D45C, 0x45D46D, 0x23C34B, 0x45B25C, 0x34D44B, 0x23C35C, 0x45C34B, 0x23D44B, 0x45C34B, 0x45D44B, 0x23B26D, 0x45C34B,
      0x34C35C, 0x34B26D, 0x23D46D},
     {0x06C64C53, 0x34EA31FA}},
    {{0x9A2D74, 0x7969C4, 0x6F9046, 0x69563C, 0xF971E0, 0x9C8228, 0x5FEE30, 0xB1F307, 0x9A0754, 0x519FC2, 0x8EF0AC, 0x4463E4, 0x63340A,
      0xFF5C96, 0x0F658A, 0x528DCC},
     {0xEB9286AE, 0xC8550C87}},
    {{0xF58603, 0xF56403, 0xF58603, 0xF58625, 0xF56403, 0xD38625, 0xF58603, 0xF58625, 0xD36403, 0xF58603, 0xD36425, 0xF58625, 0xF58603,
      0xF58603, 0xF56425, 0xF58625},
     {0xFA80E726, 0x0C36F416}},
    {{0x25A29B, 0x259F98, 0x28A298, 0x25A298, 0x28A29B, 0x289F9B, 0x28A29B, 0x289F98, 0x259F98, 0x25A29B, 0x289F98, 0x259F9B, 0x289F98,
      0x28A298, 0x25A29B, 0x25A298},
     {0x06A92992, 0x0000FFFF}},
    {{0x1F9309, 0x1F900C, 0x1F930C, 0x1F9309, 0x1C900C, 0x1F9009, 0x1F930C, 0x1C9309, 0x1F9309, 0x1F900C, 0x1F9309, 0x1C900C, 0x1C900C,
      0x1F9009, 0x1F9309, 0x1C900C},
     {0x06912913, 0xFFFFFFFF}},
    {{0xA26E3C, 0xA26F3B, 0xA26E3B, 0xA36F3C, 0xA36F3B, 0xA26F3B, 0xA26E3B, 0xA26F3C, 0xA36E3B, 0xA26F3C, 0xA36E3B, 0xA36F3C, 0xA36F3B,
      0xA36E3B, 0xA36E3C, 0xA36F3C},
     {0xF273A743, 0xFFFFFFFF}},
};

/// What the punch-through encoder makes of two colours in T mode.
EtcModeFit fitTA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& levels)
{
    EtcModeFit fit = bestFitT(measureModesA1(pixels, alphas, levels), levels);
    chooseIndicesTA1(pixels, alphas, fit);
    return fit;
}

} // namespace

TEST(EtcTModes, AnExactBlockIsFoundInTheOrderGiven)
{
    // Level 8 is 136; at distance index 3 (16) its paints are 152, 136 and 120.
    const EtcPixels block = rowsOfGreys({0, 152, 136, 120});
    forEachInstructionSet([&] { expectFit(tBlockError(block, greyLevels(0, 8)), {greyLevels(0, 8), 3, k_ui32EachPaint, 0}); });
}

TEST(EtcTModes, TheColoursLeaveInTheOrderThatWins)
{
    const EtcPixels block = rowsOfGreys({0, 152, 136, 120});
    forEachInstructionSet([&] { expectFit(tBlockError(block, greyLevels(8, 0)), {greyLevels(0, 8), 3, k_ui32EachPaint, 0}); });
}

TEST(EtcTModes, EqualErrorsKeepTheFirstOrderDistanceAndPaint)
{
    forEachInstructionSet(
        [&] {
            expectFit(tBlockError(flatEtcBlock(136, 136, 136), greyLevels(8, 8)), {greyLevels(8, 8), 0, 0x00000000, 0});
        });
    // 136 is a paint of both orders: the second colour, number 2, of the order given.
    forEachInstructionSet(
        [&] {
            expectFit(tBlockError(flatEtcBlock(136, 136, 136), greyLevels(0, 8)), {greyLevels(0, 8), 0, 0xAAAAAAAA, 0});
        });
}

TEST(EtcTModes, AFixedOrderIsNotTurnedRound)
{
    // The first colour is 136, the second 0, 3 or (clamped) 0 at distance index 0; up to 64 at index 7. The best for 120 is 136, for
    // 152 too, and for 0 the second colour itself: 16^2 * 3 = 768 a pixel for two pixels of each row.
    const EtcPixels block = rowsOfGreys({0, 152, 136, 120});
    forEachInstructionSet(
        [&]
        {
            // 0 is nearest to 0 at the colour itself (paint 2), before the clamped difference (paint 3).
            expectFit(tBlockErrorFixedOrder(block, greyLevels(8, 0)), {greyLevels(8, 0), 0, 0x02020202, 8 * 768});
            expectFit(tBlockErrorFixedOrder(block, greyLevels(0, 8)), {greyLevels(0, 8), 3, k_ui32EachPaint, 0});
            expectFit(tBlockErrorFixedOrderWeighted(block, greyLevels(8, 0)), {greyLevels(8, 0), 0, 0x02020202, 8 * 256 * 1000});
        });
}

TEST(EtcTModes, PaintsAreClampedAtBothEnds)
{
    // 255 + 64 is 255, 0 - 64 is 0: white at level 15 is paint 1 as well as paint 2, and paint 1 comes first.
    const EtcPixels block = rowsOfGreys({0, 255, 255, 191});
    forEachInstructionSet([&] { expectFit(tBlockError(block, greyLevels(0, 15)), {greyLevels(0, 15), 7, 0xD4D4D4D4, 0}); });
}

TEST(EtcTModes, WeightsAre299And587And114)
{
    // One pixel off the flat colour by 1, 2 and 3: 1 + 4 + 9 plain, 299 + 587 * 4 + 114 * 9 = 3673 weighted. Colour 0 is nearest.
    EtcPixels block = flatEtcBlock(136, 136, 136);
    block.aui8Red[5] = 137;
    block.aui8Green[5] = 138;
    block.aui8Blue[5] = 139;
    const EtcColourPair levels = greyLevels(8, 15);
    forEachInstructionSet(
        [&]
        {
            EXPECT_EQ(tBlockErrorFixedOrder(block, levels).uiError, 14u);
            EXPECT_EQ(tBlockErrorFixedOrderWeighted(block, levels).uiError, 3673u);
        });
}

TEST(EtcTModes, WeightedErrorsReachTheirGreatestWithoutLoss)
{
    // White pixels and black colours; the furthest distance leaves 191: 16 * 1000 * 191^2. 299 * 191^2 is above 2^23.
    forEachInstructionSet(
        [&]
        {
            expectFit(tBlockErrorWeighted(flatEtcBlock(255, 255, 255), greyLevels(0, 0)),
                      {greyLevels(0, 0), 7, 0x55555555, 16u * 1000u * 191u * 191u});
        });
}

TEST(EtcTModesA1, APixelOfAlpha0TakesIndex2WithoutError)
{
    // Without paint 2 the order given leaves 3 * 3^2 = 27 a pixel; the other order has 136 as paint 0.
    EtcAlphas alphas;
    alphas.aui8.fill(255);
    const EtcPixels block = flatEtcBlock(136, 136, 136);
    forEachInstructionSet([&] { expectFit(fitTA1(block, alphas, greyLevels(0, 8)), {greyLevels(8, 0), 0, 0, 0}); });
    // Pixels 0 and 15 transparent, whatever their colour.
    alphas.aui8[0] = 0;
    alphas.aui8[15] = 0;
    EtcPixels holes = block;
    holes.aui8Red[0] = 255;
    holes.aui8Blue[15] = 1;
    forEachInstructionSet([&] { expectFit(fitTA1(holes, alphas, greyLevels(0, 8)), {greyLevels(8, 0), 0, 0x80000002, 0}); });
}

TEST(EtcTModesA1, AlphasAbove0ChooseAmongTheOtherPaints)
{
    // 1 and 127 are no holes to this search. With both colours 136 the pixels at 136 are painted exactly by number 0, those at 139 and
    // 133 by numbers 1 and 3.
    const EtcPixels block = rowsOfGreys({136, 139, 136, 133});
    EtcAlphas alphas;
    alphas.aui8.fill(1);
    alphas.aui8[4] = 127;
    alphas.aui8[8] = 128;
    forEachInstructionSet([&] { expectFit(fitTA1(block, alphas, greyLevels(8, 8)), {greyLevels(8, 8), 0, 0xC4C4C4C4, 0}); });
}

TEST(EtcTModesA1, ATransparentBlockHasNoError)
{
    EtcAlphas alphas;
    alphas.aui8.fill(0);
    forEachInstructionSet(
        [&] {
            expectFit(fitTA1(flatEtcBlock(1, 2, 3), alphas, greyLevels(4, 9)), {greyLevels(4, 9), 0, 0xAAAAAAAA, 0});
        });
}

TEST(EtcTModes, PackingPutsTheFirstRedOnTop)
{
    EtcModeFit fit;
    fit.levels = {EtcColour{1, 2, 3}, EtcColour{4, 5, 6}};
    fit.uiDistance = 5;
    fit.ui32Indices = 2u << 2 | 1u << 8; // pixel (1, 0) has index 2, pixel (0, 1) index 1
    // 0x123456 * 8 + 5; the upper bit of (1, 0) at 16 + 4, the lower one of (0, 1) at 1
    EXPECT_EQ(packT(fit), (EtcBlockWords{0x91A2B5, 0x00100002}));
}

TEST(EtcTModes, TheErrorIsThatOfTheDecodedBlock)
{
    for (const EtcPixels& block : makeEtcTestBlocks(11, 4500))
    {
        EtcBlockWords compact;
        const uint32_t uiError = tFast(block, compact);
        ASSERT_EQ(blockErrorRGB(block, decodeEtcPixelsT(compact)), uiError);
        const uint32_t uiWeighted = tFastPerceptual(block, compact);
        ASSERT_NEAR(1000.0 * blockErrorPerceptual(block, decodeEtcPixelsT(compact)), uiWeighted, 1e-3);
        ASSERT_LE(blockErrorRGB(block, decodeEtcPixelsT(tRefine(block))), uiError);
    }
}

TEST(EtcTModesA1, TheErrorIsThatOfTheDecodedBlock)
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(12, 4500);
    testsupport::CSeededRandom random(3);
    for (const EtcPixels& block : blocks)
    {
        EtcAlphas alphas;
        for (uint8_t& ui8Alpha : alphas.aui8)
            ui8Alpha = random.below(3) == 0 ? 0 : 255;
        const EtcModeFit fit = fitTA1(block, alphas, quantise444Pair(lbgHalfIntensity(block)));
        EtcAlphas decodedAlphas;
        const EtcPixels decoded = decodeEtcPixelsA1T(packT(fit), decodedAlphas);
        ASSERT_EQ(blockErrorRGBA(block, alphas, decoded), fit.uiError);
        ASSERT_EQ(decodedAlphas.aui8, alphas.aui8);
    }
}

TEST(EtcTModes, RefinementsAreThoseOfAnIndependentProgram)
{
    for (const IndependentBlock& block : k_aIndependentRefinements)
        forEachInstructionSet([&] { EXPECT_EQ(stuffT(tRefine(blockOfColours(block.aui32Colours))), block.words); });
}

TEST(EtcTModes, GiveTheReferenceFitsOnEveryKindOfBlock)
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(13, 9000);
    expectReferenceFits(blocks, tBlockError, etcreference::tBlockError);
    expectReferenceFits(blocks, tBlockErrorWeighted, etcreference::tBlockErrorWeighted);
    expectReferenceFits(blocks, tBlockErrorFixedOrder, etcreference::tBlockErrorFixedOrder);
    expectReferenceFits(blocks, tBlockErrorFixedOrderWeighted, etcreference::tBlockErrorFixedOrderWeighted);
}

TEST(EtcTModesA1, GiveTheReferenceFitsOnEveryKindOfBlock)
{
    const std::vector<EtcAlphas> alphas = makeEtcTestAlphas(14, 9000);
    expectReferenceFitsA1(makeEtcTestBlocks(14, 9000), alphas, fitTA1, etcreference::tBlockErrorA1);
}

TEST(EtcTModes, GiveTheReferenceBlocksOnEveryKindOfBlock)
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(15, 9000);
    expectReferenceBlocks(blocks, tFast, etcreference::tFast);
    expectReferenceBlocks(blocks, tFastPerceptual, etcreference::tFastPerceptual);
    std::vector<EtcBlockWords> expected;
    for (const EtcPixels& block : blocks)
        expected.push_back(etcreference::tRefine(block));
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
            {
                ASSERT_EQ(tRefine(blocks[i]), expected[i]) << "block " << i;
                ASSERT_EQ(tRefine(blocks[i], lbgHalfIntensity(blocks[i])), expected[i]) << "block " << i;
            }
        });
}
