#include "Codecs/ETC/EtcExhaustiveDifferential.h"

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "EtcExhaustiveHalvesTests.h"
#include "ReferenceEtcExhaustiveHalves.h"

namespace
{

using namespace moxtexture;

constexpr uint32_t (*k_pReference)(const EtcPixels&, uint32_t,
                                   EtcBlockWords&) = etcreference::searchDifferentialExhaustive<EEtcMeasure::ePlain>;
constexpr uint32_t (*k_pPerceptualReference)(const EtcPixels&, uint32_t,
                                             EtcBlockWords&) = etcreference::searchDifferentialExhaustive<EEtcMeasure::ePerceptual>;

/// Greys of 97 above and 121 below. Their 5-bit levels are 12 (11.79), byte 99, and 15 (14.7), byte 123, each less 2.
EtcPixels twoRows()
{
    EtcPixels pixels{};
    for (size_t i = 0; i < 16; ++i)
        pixels.aui8Red[i] = pixels.aui8Green[i] = pixels.aui8Blue[i] = i < 8 ? 97 : 121;
    return pixels;
}

} // namespace

TEST(EtcExhaustiveDifferential, GivesTheReferenceBlocks)
{
    const auto blocks = etctest::makeBlocksForSlowSearch(86, 18);
    etctest::expectReferenceSearches(searchDifferentialExhaustive, k_pReference, etcFastBlockETC1, 1.0, blocks);
}

TEST(EtcExhaustiveDifferential, GivesTheReferenceBlocksByThePerceptualMeasure)
{
    const auto blocks = etctest::makeBlocksForSlowSearch(87, 18);
    etctest::expectReferenceSearches(searchDifferentialExhaustivePerceptual, k_pPerceptualReference, etcFastBlockETC1Perceptual, 1000.0,
                                     blocks);
}

TEST(EtcExhaustiveDifferential, BlocksOfOneChannelGiveTheReferenceBlocks)
{
    const auto blocks = etctest::makeBlocksOfOneChannel(99, 24);
    etctest::expectReferenceSearches(searchDifferentialExhaustive, k_pReference, etcFastBlockETC1, 1.0, blocks);
}

TEST(EtcExhaustiveDifferential, ColoursWhoseRedAndGreenCostJustTheBoundAreLeftOut)
{
    EtcPixels pixels = etctest::flatEtcBlock(255, 255, 255);
    pixels.aui8Green = {66, 62, 65, 62, 63, 65, 66, 64, 65, 62, 64, 66, 66, 63, 62, 62};
    etctest::expectReferenceSearch(searchDifferentialExhaustive, k_pReference, pixels, 26);
}

TEST(EtcExhaustiveDifferential, AFirstColourThatOneHalfAllowsIsTriedForTheOther)
{
    // The half that is below the bound costs too much to matter itself.
    const EtcPixels pixels = {{88, 88, 90, 90, 87, 88, 91, 91, 91, 88, 88, 91, 91, 91, 91, 91},
                              {152, 152, 152, 152, 152, 154, 150, 151, 154, 152, 152, 154, 154, 153, 154, 153},
                              {72, 71, 72, 72, 72, 71, 74, 71, 72, 74, 72, 70, 70, 74, 70, 71}};
    for (uint32_t uiBound = 76; uiBound < 82; ++uiBound)
        etctest::expectReferenceSearch(searchDifferentialExhaustive, k_pReference, pixels, uiBound);
}

TEST(EtcExhaustiveDifferential, ErrorsAboutTheLimitOfSixteenBitsGiveTheReferenceBlocks)
{
    const auto getStart = [](const EtcPixels& pixels) { return etcAverageDifferential<EEtcMeasure::ePlain>(pixels).uiError; };
    uint32_t uiBound = 50000;
    for (const EtcPixels& pixels : etctest::makeBlocksAboutSixteenBits(97, 10, getStart))
    {
        uiBound = uiBound == 50000 ? UINT32_MAX : 50000;
        etctest::expectReferenceSearch(searchDifferentialExhaustive, k_pReference, pixels, uiBound);
    }
}

TEST(EtcExhaustiveDifferential, FindsEveryUprightBlockThatTheModePainted)
{
    etctest::CSeededRandom random(88);
    for (int i = 0; i < 300; ++i)
    {
        EtcColour levels0, levels1;
        for (size_t c = 0; c < 3; ++c)
        {
            levels0[c] = static_cast<uint8_t>(4 + random.below(25));
            levels1[c] = static_cast<uint8_t>(levels0[c] - 4 + random.below(8));
        }
        const EtcPixels pixels =
            decodeEtcPixelsETC1(packDifferential(levels0, levels1, false, random.below(8), random.below(8), random.next32()));
        EtcBlockWords words;
        EXPECT_EQ(0u, searchDifferentialExhaustive(pixels, UINT32_MAX, words));
        EXPECT_EQ(0u, searchDifferentialExhaustivePerceptual(pixels, UINT32_MAX, words));
    }
}

TEST(EtcExhaustiveDifferential, ThePlainBlockIsNeverFlippedAndMayCostMoreThanIsReturned)
{
    size_t uiDearer = 0;
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(89, 450))
    {
        EtcBlockWords words;
        const uint32_t uiError = searchDifferentialExhaustive(pixels, UINT32_MAX, words);
        EXPECT_EQ(k_ui32EtcDiffBit, words.ui32High & (k_ui32EtcDiffBit | k_ui32EtcFlipBit));
        const double fOwnError = blockErrorRGB(pixels, decodeEtcPixelsETC1(words));
        EXPECT_LE(uiError, fOwnError);
        uiDearer += uiError < fOwnError ? 1 : 0;
    }
    EXPECT_GT(uiDearer, 50u);
}

TEST(EtcExhaustiveDifferential, ThePerceptualBlockMayBeFlippedWithTheColoursOfLeftAndRight)
{
    size_t uiFlipped = 0;
    size_t uiDearer = 0;
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(90, 450))
    {
        EtcBlockWords words;
        const uint32_t uiError = searchDifferentialExhaustivePerceptual(pixels, UINT32_MAX, words);
        const double fOwnError = 1000.0 * blockErrorPerceptual(pixels, decodeEtcPixelsETC1(words));
        if ((words.ui32High & k_ui32EtcFlipBit) == 0)
        {
            EXPECT_NEAR(uiError, fOwnError, 0.001);
            continue;
        }
        ++uiFlipped;
        uiDearer += uiError + 1 < fOwnError ? 1 : 0;
    }
    EXPECT_GT(uiFlipped, 50u);
    EXPECT_GT(uiDearer, 50u);
}

TEST(EtcExhaustiveDifferential, UnderABoundOfZeroTheMeansStand)
{
    // A flat grey of 100: level 12 (12.16), byte 99. Table 0: 99 + 2 is off by 1, position 2, index 0.
    const EtcPixels pixels = etctest::flatEtcBlock(100, 100, 100);
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(48u, searchDifferentialExhaustive(pixels, 0, words));
            EXPECT_EQ(0x60606002u, words.ui32High);
            EXPECT_EQ(0u, words.ui32Low);
            EXPECT_EQ(16000u, searchDifferentialExhaustivePerceptual(pixels, 0, words));
            EXPECT_EQ(0x60606002u, words.ui32High);
            EXPECT_EQ(0u, words.ui32Low);
        });
}

TEST(EtcExhaustiveDifferential, APairOfTopAndBottomComesBeforeThatOfLeftAndRightAndDoesNotGiveItsColours)
{
    // A flat grey of 8: level 1 (0.97), byte 8, is off by 2 under table 0 (position 1, index 2). The first pair of all, 000 twice,
    // is exact by 0 + 8: at top and bottom, which lowers what left and right of the same pair would have to be below. So the means'
    // colours stand.
    const EtcPixels pixels = etctest::flatEtcBlock(8, 8, 8);
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(0u, searchDifferentialExhaustive(pixels, UINT32_MAX, words));
            EXPECT_EQ(0x08080802u, words.ui32High);
            EXPECT_EQ(0xFFFF0000u, words.ui32Low);
            EXPECT_EQ(0u, searchDifferentialExhaustivePerceptual(pixels, UINT32_MAX, words));
            EXPECT_EQ(0x08080803u, words.ui32High);
            EXPECT_EQ(0xFFFF0000u, words.ui32Low);
        });
}

TEST(EtcExhaustiveDifferential, ColoursThatReachTheBoundInEveryHalfAreLeftOut)
{
    // Red and blue 30, green 31: no modifier gives both exactly, as no two bytes of levels follow each other. So a half costs 8 at
    // the least: level 11, byte 90, less 60 in all three, which is off by 1 in green. The means' level 4, byte 33, less 2 is off by 1
    // in red and blue, which costs a half 16.
    const EtcPixels pixels = etctest::flatEtcBlock(30, 31, 30);
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(32u, searchDifferentialExhaustive(pixels, 8, words));
            EXPECT_EQ(16u, searchDifferentialExhaustive(pixels, 9, words));
            EXPECT_EQ(0x20202002u, words.ui32High);
            EXPECT_EQ(0xFFFF0000u, words.ui32Low);
        });
}

TEST(EtcExhaustiveDifferential, OfEqualPairsOfLeftAndRightTheFirstStands)
{
    // Greys of 8 at left and 10 at right, which no base reaches together. The first colour that reaches 8 is 000 (table 0,
    // position 3, index 1), the first that reaches 10 is 111 (byte 8, table 0, position 2, index 0): 0 has no modifier 10. Level 2,
    // byte 16, reaches 8 as well, but later. The means' level of both halves is 1 (0.97, 1.22).
    EtcPixels pixels{};
    for (size_t i = 0; i < 16; ++i)
        pixels.aui8Red[i] = pixels.aui8Green[i] = pixels.aui8Blue[i] = i % 4 < 2 ? 8 : 10;
    forEachInstructionSet(
        [&]
        {
            for (const auto search : {searchDifferentialExhaustive, searchDifferentialExhaustivePerceptual})
            {
                EtcBlockWords words;
                EXPECT_EQ(0u, search(pixels, UINT32_MAX, words));
                EXPECT_EQ(0x01010102u, words.ui32High);
                EXPECT_EQ(0x000000FFu, words.ui32Low);
            }
        });
}

TEST(EtcExhaustiveDifferential, MeansOfTopAndBottomGoIntoAnUprightPlainBlock)
{
    // Top and bottom cost nothing, which is returned; nothing is below that. The block has their levels, 12 and 12 + 3, for left and
    // right. Left, from 99: table 1 reaches 94 (position 1, index 2) and 116 (position 3, index 1). Right, from 123: table 2 reaches
    // 94 (position 0, index 3) and 114 (position 1, index 2).
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(0u, searchDifferentialExhaustive(twoRows(), UINT32_MAX, words));
            EXPECT_EQ(0x6363632Au, words.ui32High);
            EXPECT_EQ(0xFF3333CCu, words.ui32Low);
            EXPECT_EQ(12.0 * (9 + 25 + 9 + 49), blockErrorRGB(twoRows(), decodeEtcPixelsETC1(words)));
        });
}

TEST(EtcExhaustiveDifferential, MeansOfTopAndBottomFlipThePerceptualBlock)
{
    // Table 0 in both halves, position 1, index 2.
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(0u, searchDifferentialExhaustivePerceptual(twoRows(), UINT32_MAX, words));
            EXPECT_EQ(0x63636303u, words.ui32High);
            EXPECT_EQ(0xFFFF0000u, words.ui32Low);
        });
}
