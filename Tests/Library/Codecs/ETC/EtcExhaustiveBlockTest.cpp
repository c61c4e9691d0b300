#include "Codecs/ETC/EtcExhaustiveBlock.h"

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "EtcExhaustiveHalvesTests.h"
#include "ReferenceEtcExhaustiveBlock.h"

// The shipped searches, where only their order and the choice are to be looked at.
#include "Codecs/ETC/EtcExhaustiveDifferential.h"
#include "Codecs/ETC/EtcExhaustiveH.h"
#include "Codecs/ETC/EtcExhaustiveIndividual.h"
#include "Codecs/ETC/EtcExhaustivePlanar.h"
#include "Codecs/ETC/EtcExhaustiveT.h"

namespace
{

using namespace moxtexture;

struct ShippedSearches
{
    template <EEtcMeasure eMeasure>
    static constexpr auto individual = eMeasure == EEtcMeasure::ePlain ? searchIndividualExhaustive : searchIndividualExhaustivePerceptual;
    template <EEtcMeasure eMeasure>
    static constexpr auto differential =
        eMeasure == EEtcMeasure::ePlain ? searchDifferentialExhaustive : searchDifferentialExhaustivePerceptual;
    template <EEtcMeasure eMeasure>
    static constexpr auto h = eMeasure == EEtcMeasure::ePlain ? searchHExhaustive : searchHExhaustivePerceptual;
    template <EEtcMeasure eMeasure>
    static constexpr auto t = eMeasure == EEtcMeasure::ePlain ? searchTExhaustive : searchTExhaustivePerceptual;

    template <EEtcMeasure eMeasure>
    static bool planar(const EtcPixels& pixels, uint32_t uiBound, const std::array<uint32_t, 3>& errors, EtcBlockWords& compact)
    {
        const auto search = eMeasure == EEtcMeasure::ePlain ? searchPlanarExhaustive : searchPlanarExhaustivePerceptual;
        return search(pixels, uiBound, errors[0], errors[1], errors[2], compact);
    }
};

using Encoder = void (*)(const EtcPixels&, EtcBlockWords&);

void expectReferenceBlocks(Encoder encode, Encoder reference, const std::vector<EtcPixels>& blocks)
{
    for (size_t i = 0; i < blocks.size(); ++i)
    {
        EtcBlockWords expected, words;
        reference(blocks[i], expected);
        encode(blocks[i], words);
        ASSERT_EQ(expected.ui32High, words.ui32High) << "block " << i;
        ASSERT_EQ(expected.ui32Low, words.ui32Low) << "block " << i;
    }
}

} // namespace

TEST(EtcExhaustiveBlock, ETC1GivesTheReferenceBlocks)
{
    const auto blocks = etctest::makeBlocksForSlowSearch(91, 5);
    expectReferenceBlocks(etcExhaustiveBlockETC1, etcreference::etcExhaustiveBlockETC1<>, blocks);
    expectReferenceBlocks(etcExhaustiveBlockETC1Perceptual, etcreference::etcExhaustiveBlockETC1Perceptual<>, blocks);
}

TEST(EtcExhaustiveBlock, ETC2GivesTheReferenceBlocks)
{
    // The kinds of block in turn by one measure and the other. Each search has its own comparison.
    const auto blocks = etctest::makeEtcTestBlocks(92, testsupport::fewerIfSanitised(9));
    for (size_t i = 0; i < blocks.size(); ++i)
        if (i % 2 == 0)
            expectReferenceBlocks(etcExhaustiveBlockETC2, etcreference::etcExhaustiveBlockETC2<>, {blocks[i]});
        else
            expectReferenceBlocks(etcExhaustiveBlockETC2Perceptual, etcreference::etcExhaustiveBlockETC2Perceptual<>, {blocks[i]});
}

TEST(EtcExhaustiveBlock, ETC1TakesTheBlocksInOrder)
{
    const auto blocks = etctest::makeEtcTestBlocks(93, testsupport::fewerIfSanitised(450));
    expectReferenceBlocks(etcExhaustiveBlockETC1, etcreference::etcExhaustiveBlockETC1<ShippedSearches>, blocks);
    expectReferenceBlocks(etcExhaustiveBlockETC1Perceptual, etcreference::etcExhaustiveBlockETC1Perceptual<ShippedSearches>, blocks);
}

TEST(EtcExhaustiveBlock, ETC2TakesTheBlocksInOrder)
{
    const auto blocks = etctest::makeEtcTestBlocks(94, testsupport::fewerIfSanitised(135));
    expectReferenceBlocks(etcExhaustiveBlockETC2, etcreference::etcExhaustiveBlockETC2<ShippedSearches>, blocks);
    expectReferenceBlocks(etcExhaustiveBlockETC2Perceptual, etcreference::etcExhaustiveBlockETC2Perceptual<ShippedSearches>, blocks);
}

TEST(EtcExhaustiveBlock, EqualErrorsKeepTheBlockThatTheOrderSays)
{
    // A flat 8 is 0 + 8 exactly (table 0, position 3, index 1: the lsb plane). The fast search finds it in a differential block, the
    // search of individual mode in its own; the means' 5-bit level is 1, which is off by 2.
    const EtcPixels pixels = etctest::flatEtcBlock(8, 8, 8);
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            etcExhaustiveBlockETC1(pixels, words); // differential, individual, fast
            EXPECT_EQ(0u, words.ui32High);
            EXPECT_EQ(0xFFFFu, words.ui32Low);
            for (const Encoder encode : {etcExhaustiveBlockETC1Perceptual, etcExhaustiveBlockETC2, etcExhaustiveBlockETC2Perceptual})
            {
                encode(pixels, words); // fast first
                EXPECT_EQ(2u, words.ui32High);
                EXPECT_EQ(0xFFFFu, words.ui32Low);
            }
        });
}

TEST(EtcExhaustiveBlock, ASearchThatComesEarlierLeavesNothingToTheLaterOnes)
{
    // A flat grey of 30 is 17 + 13 in individual mode and 90 - 60 in differential mode, which returns that as an error of rows and
    // keeps the means' level 4, byte 33, off by 1 (table 0, position 1, index 2). The other modes and the fast search come to 1 at
    // the nearest. What is searched first finds its 0, and then nothing is below the bound: ETC1 searches individual mode first,
    // the others differential mode, by the perceptual measure with the flip bit.
    const EtcPixels pixels = etctest::flatEtcBlock(30, 30, 30);
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            etcExhaustiveBlockETC1(pixels, words);
            EXPECT_EQ(0x1111116Cu, words.ui32High);
            EXPECT_EQ(0u, words.ui32Low);
            etcExhaustiveBlockETC2(pixels, words);
            EXPECT_EQ(0x20202002u, words.ui32High);
            EXPECT_EQ(0xFFFF0000u, words.ui32Low);
            for (const Encoder encode : {etcExhaustiveBlockETC1Perceptual, etcExhaustiveBlockETC2Perceptual})
            {
                encode(pixels, words);
                EXPECT_EQ(0x20202003u, words.ui32High);
                EXPECT_EQ(0xFFFF0000u, words.ui32Low);
            }
        });
}

TEST(EtcExhaustiveBlock, OfTheModesThatETC2AddsPlanarStandsBeforeHAndHBeforeT)
{
    // A flat grey of 28 is a plane (7 of six bits, 14 of seven), and 34 - 6 in T and H mode. Under the bound of 0 that they give
    // the fast search's levels stand in the other modes, 3 (byte 24) and 2 (byte 34), which are off by 1. 37 is 34 + 3 in T and H
    // mode, no plane (36 and 40), and off by 1 from levels 4 (byte 33) and 2 again.
    for (const Encoder encode : {etcExhaustiveBlockETC2, etcExhaustiveBlockETC2Perceptual})
        for (const uint8_t ui8Grey : {uint8_t{28}, uint8_t{37}})
        {
            const EtcPixels pixels = etctest::flatEtcBlock(ui8Grey, ui8Grey, ui8Grey);
            EtcBlockWords words;
            EXPECT_NE(0.0, etcFastBlockETC1(pixels, words));
            encode(pixels, words);
            EXPECT_EQ(0.0, blockErrorRGB(pixels, decodeEtcPixelsETC2(words)));
            ASSERT_NE(0u, words.ui32High & k_ui32EtcDiffBit);
            EXPECT_EQ(ui8Grey == 28 ? eEtcPlanar : eEtcH, getEtcDifferentialMode(words.ui32High));
        }
}

TEST(EtcExhaustiveBlock, IndividualStandsBeforePlanarAndBehindItByThePerceptualMeasure)
{
    // A flat grey of 12 is 17 - 5 from the level of its mean in individual mode (table 1, position 1, index 2) and a plane (3 of six
    // bits, 6 of seven). The fast search's level 1, byte 8, reaches 13, and T and H mode 17 - 6.
    const EtcPixels pixels = etctest::flatEtcBlock(12, 12, 12);
    EtcBlockWords words;
    etcExhaustiveBlockETC2(pixels, words);
    EXPECT_EQ(0x11111124u, words.ui32High);
    EXPECT_EQ(0xFFFF0000u, words.ui32Low);
    etcExhaustiveBlockETC2Perceptual(pixels, words);
    ASSERT_NE(0u, words.ui32High & k_ui32EtcDiffBit);
    EXPECT_EQ(eEtcPlanar, getEtcDifferentialMode(words.ui32High));
    EXPECT_EQ(0.0, blockErrorRGB(pixels, decodeEtcPixelsETC2(words)));
}

TEST(EtcExhaustiveBlock, ADifferentialBlockThatWonByTheErrorOfRowsIsWorseThanTheFastOne)
{
    // Greys of 97 above and 121 below: a pair of rows costs nothing, as EtcExhaustiveDifferentialTest.cpp works out, and the upright
    // block made from its colours ties with the fast search's flipped one, which is exact, and stands.
    EtcPixels pixels{};
    for (size_t i = 0; i < 16; ++i)
        pixels.aui8Red[i] = pixels.aui8Green[i] = pixels.aui8Blue[i] = i < 8 ? 97 : 121;
    EtcBlockWords words;
    EXPECT_EQ(0.0, etcFastBlockETC1(pixels, words));
    etcExhaustiveBlockETC1(pixels, words);
    EXPECT_EQ(0x6363632Au, words.ui32High);
    EXPECT_EQ(0xFF3333CCu, words.ui32Low);
    EXPECT_EQ(1104.0, blockErrorRGB(pixels, decodeEtcPixelsETC1(words)));
}

TEST(EtcExhaustiveBlock, ETC2IsNeverWorseThanWhatTheModesWithoutTheOddityReach)
{
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(95, testsupport::fewerIfSanitised(45)))
    {
        EtcBlockWords words;
        etcExhaustiveBlockETC2(pixels, words);
        const bool bDifferential = (words.ui32High & k_ui32EtcDiffBit) != 0 && getEtcDifferentialMode(words.ui32High) == eEtcDifferential;
        if (bDifferential)
            continue;
        EtcBlockWords other;
        EXPECT_LE(blockErrorRGB(pixels, decodeEtcPixelsETC2(words)), etcFastBlockETC1(pixels, other));
        EXPECT_LE(blockErrorRGB(pixels, decodeEtcPixelsETC2(words)), searchIndividualExhaustive(pixels, UINT32_MAX, other));
        EXPECT_LE(blockErrorRGB(pixels, decodeEtcPixelsETC2(words)), searchTExhaustive(pixels, UINT32_MAX, other));
        EXPECT_LE(blockErrorRGB(pixels, decodeEtcPixelsETC2(words)), searchHExhaustive(pixels, UINT32_MAX, other));
    }
}
