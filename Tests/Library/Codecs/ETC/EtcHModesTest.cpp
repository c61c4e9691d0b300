#include "Codecs/ETC/EtcHModes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Codecs/ETC/EtcDecodeA1.h"
#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcFastModes.h"
#include "Core/Diagnostics.h"
#include "EtcModeTests.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcHModes.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;
using namespace etctest;

namespace
{

std::vector<std::string> g_remarks;

/// Gathers the library's remarks while it lives.
class CRemarks
{
public:
    CRemarks()
    {
        g_remarks.clear();
        setDiagnosticsHook([](const char* pszText) { g_remarks.emplace_back(pszText); });
    }
    ~CRemarks() { setDiagnosticsHook(nullptr); }
};

EtcColourPair numbers(uint32_t uiFirst, uint32_t uiSecond)
{
    return {colourOfNumber444(uiFirst), colourOfNumber444(uiSecond)};
}

/// What the punch-through encoder makes of two colours in H mode.
EtcModeFit fitHA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& levels)
{
    EtcModeFit fit = bestFitH(measureModesA1(pixels, alphas, levels), levels);
    chooseIndicesHA1(pixels, alphas, fit);
    return fit;
}

// Each needs one of the two clusterings, or tells that the first of equally good ones stays.
constexpr IndependentBlock k_aIndependentRefinements[] = {
    {{0x23D46D, 0x45D45C, 0x45D46D, 0x23C34B, 0x45B25C, 0x34D44B, 0x23C35C, 0x45C34B, 0x23D44B, 0x45C34B, 0x45D44B, 0x23B26D, 0x45C34B,
      0x34C35C, 0x34B26D, 0x23D46D},
     {0xA6069632, 0xDA057EEE}},
    {{0x54F4FE, 0xA94ED9, 0x182375, 0x882B20, 0x0DAADB, 0x23CFF9, 0x193F3E, 0x703844, 0x95E04C, 0x5D5ED3, 0x52226D, 0x1637C2, 0x248F1D,
      0x3CCC44, 0x05DD2E, 0xA1FAFA},
     {0xA9F3A64E, 0x88AF3F8A}},
    {{0x6D123C, 0x6A153C, 0x6A153C, 0x6A1239, 0x6A1239, 0x6D1539, 0x6D153C, 0x6D1239, 0x6A1539, 0x6A1539, 0x6A1539, 0x6D153C, 0x6D1539,
      0x6D153C, 0x6D1239, 0x6A1539},
     {0xB015B092, 0x00000000}},
    {{0x9B3E1D, 0x69CB50, 0x000B37, 0xE3D144, 0x2B9961, 0xE6EEC9, 0xDC4022, 0x4268DB, 0xF67BF7, 0x382D6C, 0x0D9FA7, 0x704BA1, 0x987137,
      0xF44E2F, 0x0ECF03, 0xFB12AA},
     {0x6BF31BBE, 0x6D528BC9}},
};

} // namespace

TEST(EtcHModes, ColoursAreOrderedByTheir12BitNumbers)
{
    EXPECT_EQ(orderForH(numbers(0x123, 0x124)), numbers(0x123, 0x124));
    EXPECT_EQ(orderForH(numbers(0x200, 0x1FF)), numbers(0x1FF, 0x200));
}

TEST(EtcHModes, EqualColoursArePartedByOne)
{
    EXPECT_EQ(orderForH(numbers(0x888, 0x888)), numbers(0x887, 0x888));
    EXPECT_EQ(orderForH(numbers(0x100, 0x100)), numbers(0x0FF, 0x100));
    EXPECT_EQ(orderForH(numbers(0xFFF, 0xFFF)), numbers(0xFFE, 0xFFF));
    EXPECT_EQ(orderForH(numbers(0, 0)), numbers(0, 1));
}

TEST(EtcHModes, ABlackBlockHasTheColours0And1)
{
    // Paint 1 is 0 - 3, clamped to 0: no error. The distance index 0 is even, as the ascending order says.
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords compact;
            EXPECT_EQ(hFast(flatEtcBlock(0, 0, 0), compact), 0u);
            EXPECT_EQ(compact, (EtcBlockWords{1u << 2, 0x0000FFFF}));
        });
}

TEST(EtcHModes, AnExactBlockIsFound)
{
    // Levels 4 and 8 are 68 and 136, and distance index 3 is 16.
    const EtcPixels block = rowsOfGreys({84, 52, 152, 120});
    forEachInstructionSet([&] { expectFit(hBlockError(block, greyLevels(4, 8)), {greyLevels(4, 8), 3, 0xE4E4E4E4, 0}); });
}

TEST(EtcHModes, EqualErrorsKeepTheFirstPaintAndDistance)
{
    // All paints are 1 off by some distance; level 0 clamps to 0 at every distance, and paint 1 comes before paint 3.
    forEachInstructionSet([&] { expectFit(hBlockError(flatEtcBlock(0, 0, 0), greyLevels(0, 0)), {greyLevels(0, 0), 0, 0x55555555, 0}); });
}

TEST(EtcHModes, WhiteIsExactAtWhitePlusADistance)
{
    // 255 + 3 is clamped to 255, paint 2.
    const EtcPixels white = flatEtcBlock(255, 255, 255);
    forEachInstructionSet([&] { expectFit(hBlockError(white, greyLevels(4, 15)), {greyLevels(4, 15), 0, 0xAAAAAAAA, 0}); });
}

TEST(EtcHModes, WeightsAre299And587And114)
{
    // Level 8 less 3 is 133. One pixel off by 1, 2 and 3: 1 + 4 + 9 plain, 299 + 587 * 4 + 114 * 9 = 3673 weighted.
    EtcPixels block = flatEtcBlock(133, 133, 133);
    block.aui8Red[5] = 132;
    block.aui8Green[5] = 131;
    block.aui8Blue[5] = 130;
    forEachInstructionSet(
        [&]
        {
            EXPECT_EQ(hBlockError(block, greyLevels(8, 15)).uiError, 14u);
            EXPECT_EQ(hBlockErrorWeighted(block, greyLevels(8, 15)).uiError, 3673u);
        });
}

TEST(EtcHModes, AnOddDistanceTurnsAscendingColoursRound)
{
    EtcModeFit fit{numbers(0x123, 0x456), 5, 0xE4E4E4E4, 7};
    settleHOrder(fit);
    expectFit(fit, {numbers(0x456, 0x123), 5, 0x4E4E4E4E, 7}); // paints 0, 1, 2, 3 become 2, 3, 0, 1
    settleHOrder(fit);
    expectFit(fit, {numbers(0x456, 0x123), 5, 0x4E4E4E4E, 7});
    fit.uiDistance = 4;
    settleHOrder(fit);
    expectFit(fit, {numbers(0x123, 0x456), 4, 0xE4E4E4E4, 7});
    settleHOrder(fit);
    expectFit(fit, {numbers(0x123, 0x456), 4, 0xE4E4E4E4, 7});
}

TEST(EtcHModes, PackingLeavesTheLowBitOfTheDistanceOut)
{
    EtcModeFit fit;
    fit.levels = numbers(0x123, 0x456);
    fit.uiDistance = 5;
    fit.ui32Indices = 2u << 2 | 1u << 8; // pixel (1, 0) has index 2, pixel (0, 1) index 1
    // 0x123456 * 4 + 2
    EXPECT_EQ(packH(fit), (EtcBlockWords{0x48D15A, 0x00100002}));
}

TEST(EtcHModes, TheErrorIsThatOfTheDecodedBlock)
{
    for (const EtcPixels& block : makeEtcTestBlocks(21, 4500))
    {
        EtcBlockWords compact;
        const uint32_t uiError = hFast(block, compact);
        ASSERT_EQ(blockErrorRGB(block, decodeEtcPixelsH(compact)), uiError);
        const uint32_t uiWeighted = hFastPerceptual(block, compact);
        ASSERT_NEAR(1000.0 * blockErrorPerceptual(block, decodeEtcPixelsH(compact)), uiWeighted, 1e-3);
    }
}

TEST(EtcHModesA1, APixelWithAlphaTakesTheStoredIndex2WithoutError)
{
    // On purpose the reverse of T mode. All pixels have alpha: no error at the first distance, 3, whose left out paint is number 2 as
    // the colours ascend.
    EtcAlphas alphas;
    alphas.aui8.fill(255);
    const EtcPixels block = flatEtcBlock(10, 20, 30);
    forEachInstructionSet([&] { expectFit(fitHA1(block, alphas, greyLevels(4, 8)), {greyLevels(4, 8), 0, 0xAAAAAAAA, 0}); });
    // Descending colours leave number 0 out, which settling turns to 2.
    forEachInstructionSet(
        [&]
        {
            EtcModeFit fit = fitHA1(block, alphas, greyLevels(8, 4));
            expectFit(fit, {greyLevels(8, 4), 0, 0x00000000, 0});
            settleHOrder(fit);
            expectFit(fit, {greyLevels(4, 8), 0, 0xAAAAAAAA, 0});
        });
}

TEST(EtcHModesA1, APixelOfAlpha0ChoosesAmongTheOtherPaints)
{
    // Levels 4 and 8 are 68 and 136. 152 is level 8 plus 16, which is left out at the even distance indices; at index 3 (16), where the
    // first colour's sum is left out, it is exact. The pixels at 52 and 120 are 68 - 16 and 136 - 16.
    EtcAlphas alphas;
    alphas.aui8.fill(0);
    alphas.aui8[0] = 255;
    const EtcPixels block = rowsOfGreys({52, 152, 120, 120});
    forEachInstructionSet(
        [&]
        {
            EtcModeFit fit = fitHA1(block, alphas, greyLevels(4, 8));
            expectFit(fit, {greyLevels(4, 8), 3, 0xF9F9F9F8, 0});
            settleHOrder(fit); // 0 becomes 2, as the stored index of pixel 0 must be
            expectFit(fit, {greyLevels(8, 4), 3, 0x53535352, 0});
        });
}

TEST(EtcHModesA1, AnAlphaBetween0And255IsToldOncePerPixel)
{
    const CRemarks remarks;
    EtcAlphas alphas;
    alphas.aui8.fill(255);
    alphas.aui8[3] = 0;
    static_cast<void>(fitFastModesA1(flatEtcBlock(1, 2, 3), alphas, greyLevels(70, 140)));
    EXPECT_TRUE(g_remarks.empty());
    alphas.aui8[7] = 1;
    alphas.aui8[8] = 254;
    static_cast<void>(fitFastModesA1(flatEtcBlock(1, 2, 3), alphas, greyLevels(70, 140)));
    EXPECT_EQ(g_remarks, std::vector<std::string>(2, "INVALID ALPHA DATA!!\n"));
}

TEST(EtcHModesA1, APixelWithAlphaIsStoredAsTransparent)
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(22, 900);
    testsupport::CSeededRandom random(4);
    for (const EtcPixels& block : blocks)
    {
        EtcAlphas alphas;
        for (uint8_t& ui8Alpha : alphas.aui8)
            ui8Alpha = random.below(2) == 0 ? 0 : 255;
        EtcModeFit fit = fitHA1(block, alphas, orderForH(quantise444Pair(lbgHalfIntensity(block))));
        settleHOrder(fit);
        EtcAlphas decodedAlphas;
        static_cast<void>(decodeEtcPixelsA1H(packH(fit), decodedAlphas));
        for (size_t i = 0; i < 16; ++i)
            ASSERT_EQ(decodedAlphas.aui8[i], 255 - alphas.aui8[i]);
    }
}

TEST(EtcHModes, RefinementsAreThoseOfAnIndependentProgram)
{
    for (const IndependentBlock& block : k_aIndependentRefinements)
        forEachInstructionSet([&] { EXPECT_EQ(stuffH(hRefine(blockOfColours(block.aui32Colours))), block.words); });
}

TEST(EtcHModes, GiveTheReferenceFitsOnEveryKindOfBlock)
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(23, 9000);
    expectReferenceFits(blocks, hBlockError, etcreference::hBlockError);
    expectReferenceFits(blocks, hBlockErrorWeighted, etcreference::hBlockErrorWeighted);
    const std::vector<EtcAlphas> alphas = makeEtcTestAlphas(24, 9000);
    expectReferenceFitsA1(blocks, alphas, fitHA1, etcreference::hBlockErrorA1);
}

TEST(EtcHModes, GiveTheReferenceBlocksOnEveryKindOfBlock)
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(25, 9000);
    expectReferenceBlocks(blocks, hFast, etcreference::hFast);
    expectReferenceBlocks(blocks, hFastPerceptual, etcreference::hFastPerceptual);
    std::vector<EtcBlockWords> expected;
    for (const EtcPixels& block : blocks)
        expected.push_back(etcreference::hRefine(block));
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
                ASSERT_EQ(hRefine(blocks[i]), expected[i]) << "block " << i;
        });
}
