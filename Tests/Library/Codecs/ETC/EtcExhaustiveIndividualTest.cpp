#include "Codecs/ETC/EtcExhaustiveIndividual.h"

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "EtcExhaustiveHalvesTests.h"
#include "ReferenceEtcExhaustiveHalves.h"

namespace
{

using namespace moxtexture;

constexpr uint32_t (*k_pReference)(const EtcPixels&, uint32_t,
                                   EtcBlockWords&) = etcreference::searchIndividualExhaustive<EEtcMeasure::ePlain>;
constexpr uint32_t (*k_pPerceptualReference)(const EtcPixels&, uint32_t,
                                             EtcBlockWords&) = etcreference::searchIndividualExhaustive<EEtcMeasure::ePerceptual>;

} // namespace

TEST(EtcExhaustiveIndividual, GivesTheReferenceBlocks)
{
    const auto blocks = etctest::makeBlocksForSlowSearch(82, 60);
    etctest::expectReferenceSearches(searchIndividualExhaustive, k_pReference, etcFastBlockETC1, 1.0, blocks);
}

TEST(EtcExhaustiveIndividual, GivesTheReferenceBlocksByThePerceptualMeasure)
{
    const auto blocks = etctest::makeBlocksForSlowSearch(83, 60);
    etctest::expectReferenceSearches(searchIndividualExhaustivePerceptual, k_pPerceptualReference, etcFastBlockETC1Perceptual, 1000.0,
                                     blocks);
}

TEST(EtcExhaustiveIndividual, GivesTheErrorOfTheDecodedBlock)
{
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(84, 900))
    {
        EtcBlockWords words;
        const uint32_t uiPlain = searchIndividualExhaustive(pixels, UINT32_MAX, words);
        EXPECT_EQ(0u, words.ui32High & k_ui32EtcDiffBit);
        EXPECT_EQ(uiPlain, blockErrorRGB(pixels, decodeEtcPixelsETC1(words)));
        const uint32_t uiPerceptual = searchIndividualExhaustivePerceptual(pixels, UINT32_MAX, words);
        EXPECT_NEAR(uiPerceptual, 1000.0 * blockErrorPerceptual(pixels, decodeEtcPixelsETC1(words)), 0.001);
    }
}

TEST(EtcExhaustiveIndividual, BlocksOfOneChannelGiveTheReferenceBlocks)
{
    const auto blocks = etctest::makeBlocksOfOneChannel(98, 90);
    etctest::expectReferenceSearches(searchIndividualExhaustive, k_pReference, etcFastBlockETC1, 1.0, blocks);
}

TEST(EtcExhaustiveIndividual, AColourThatIsBetterByOneAloneIsFound)
{
    // A half comes from an error of 1 to 0.
    EtcPixels pixels = etctest::flatEtcBlock(255, 255, 255);
    for (const size_t i : {size_t{1}, size_t{3}, size_t{4}})
        pixels.aui8Green[i] = 253;
    etctest::expectReferenceSearch(searchIndividualExhaustive, k_pReference, pixels, UINT32_MAX);
}

TEST(EtcExhaustiveIndividual, ErrorsAboutTheLimitOfSixteenBitsGiveTheReferenceBlocks)
{
    const auto getStart = [](const EtcPixels& pixels) { return etcAverageIndividual<EEtcMeasure::ePlain>(pixels).uiError; };
    for (const EtcPixels& pixels : etctest::makeBlocksAboutSixteenBits(96, 24, getStart))
        for (const uint32_t uiBound : {UINT32_MAX, uint32_t{50000}})
            etctest::expectReferenceSearch(searchIndividualExhaustive, k_pReference, pixels, uiBound);
}

TEST(EtcExhaustiveIndividual, FindsEveryBlockThatTheModePainted)
{
    etctest::CSeededRandom random(85);
    for (int i = 0; i < 300; ++i)
    {
        const EtcPixels pixels = decodeEtcPixelsETC1({random.next32() & ~k_ui32EtcDiffBit, random.next32()});
        EtcBlockWords words;
        EXPECT_EQ(0u, searchIndividualExhaustive(pixels, UINT32_MAX, words));
        EXPECT_EQ(pixels.aui8Green, decodeEtcPixelsETC1(words).aui8Green);
        EXPECT_EQ(0u, searchIndividualExhaustivePerceptual(pixels, UINT32_MAX, words));
        EXPECT_EQ(pixels.aui8Blue, decodeEtcPixelsETC1(words).aui8Blue);
    }
}

TEST(EtcExhaustiveIndividual, UnderABoundOfZeroTheMeansStand)
{
    // A flat grey of 100: level 6 (5.88), byte 102. Table 0: 102 - 2 is exact, position 1, index 2: the msb plane.
    const EtcPixels exact = etctest::flatEtcBlock(100, 100, 100);
    // A flat grey of 30: level 2 (1.76), byte 34. Table 0: 34 - 2 is off by 2; table 1: 34 - 5 is off by 1, position 1.
    const EtcPixels near = etctest::flatEtcBlock(30, 30, 30);
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(0u, searchIndividualExhaustive(exact, 0, words));
            EXPECT_EQ(0x66666600u, words.ui32High);
            EXPECT_EQ(0xFFFF0000u, words.ui32Low);
            EXPECT_EQ(48u, searchIndividualExhaustive(near, 0, words));
            EXPECT_EQ(0x22222224u, words.ui32High);
            EXPECT_EQ(0xFFFF0000u, words.ui32Low);
            EXPECT_EQ(16000u, searchIndividualExhaustivePerceptual(near, 0, words));
            EXPECT_EQ(0x22222224u, words.ui32High);
        });
}

TEST(EtcExhaustiveIndividual, ColoursWhoseRedAndGreenReachTheBoundInEveryHalfAreLeftOut)
{
    // Red and blue 30, green 31: no modifier gives both exactly, as no two bytes of levels follow each other. So red and green cost a
    // half 8 at the least: 17 + 13 in all three (table 3, position 2, index 0), which is off by 1 in green. The means' level 2, byte
    // 34, less 5 (table 1, position 1, index 2) is off by 1, 2 and 1, which costs a half 48.
    const EtcPixels pixels = etctest::flatEtcBlock(30, 31, 30);
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(96u, searchIndividualExhaustive(pixels, 8, words));
            EXPECT_EQ(0x22222224u, words.ui32High);
            EXPECT_EQ(0xFFFF0000u, words.ui32Low);
            EXPECT_EQ(16u, searchIndividualExhaustive(pixels, 9, words));
            EXPECT_EQ(0x1111116Cu, words.ui32High);
            EXPECT_EQ(0u, words.ui32Low);
        });
}

TEST(EtcExhaustiveIndividual, OfEqualColoursTheFirstStands)
{
    // A grey of 30 is 17 + 13 (table 3, position 2, index 0), the only exact one below the means' level 2, byte 34. Both halves
    // take it from red to blue, and the tables that come later (0 - ..., 51 - ...) are no nearer.
    const EtcPixels pixels = etctest::flatEtcBlock(30, 30, 30);
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(0u, searchIndividualExhaustive(pixels, UINT32_MAX, words));
            EXPECT_EQ(0x1111116Cu, words.ui32High);
            EXPECT_EQ(0u, words.ui32Low);
        });
}
