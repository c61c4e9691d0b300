#include "Codecs/ETC/EtcAverageCandidates.h"

#include <gtest/gtest.h>

#include "EtcTestBlocks.h"
#include "ReferenceEtcExhaustiveHalves.h"
#include "Support/EveryInstructionSet.h"
#include "Support/Sanitised.h"

namespace
{

using namespace moxtexture;

/// Two flat halves: left and right, or top and bottom.
EtcPixels greyHalves(uint8_t ui8First, uint8_t ui8Second, bool bFlip)
{
    EtcPixels pixels{};
    for (size_t i = 0; i < 16; ++i)
    {
        const uint8_t ui8Grey = (bFlip ? i >= 8 : i % 4 >= 2) ? ui8Second : ui8First;
        pixels.aui8Red[i] = pixels.aui8Green[i] = pixels.aui8Blue[i] = ui8Grey;
    }
    return pixels;
}

EtcColour grey(uint8_t ui8Level)
{
    return {ui8Level, ui8Level, ui8Level};
}

void expectEqual(const EtcAverageCandidate& expected, const EtcAverageCandidate& actual)
{
    EXPECT_EQ(expected.levels, actual.levels);
    EXPECT_EQ(expected.auiErrors, actual.auiErrors);
    EXPECT_EQ(expected.bFlip, actual.bFlip);
    EXPECT_EQ(expected.uiError, actual.uiError);
}

template <EEtcMeasure eMeasure>
void expectReferenceCandidates()
{
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(81, testsupport::fewerIfSanitised(4500)))
    {
        const EtcAverageCandidate individual = etcreference::averageCandidate<eMeasure>(pixels, true);
        const EtcAverageCandidate differential = etcreference::averageCandidate<eMeasure>(pixels, false);
        forEachInstructionSet(
            [&]
            {
                expectEqual(individual, etcAverageIndividual<eMeasure>(pixels));
                expectEqual(differential, etcAverageDifferential<eMeasure>(pixels));
            });
        ASSERT_FALSE(::testing::Test::HasFailure());
    }
}

} // namespace

TEST(EtcAverageCandidates, GiveTheReferenceOnEveryKindOfBlock)
{
    expectReferenceCandidates<EEtcMeasure::ePlain>();
}

TEST(EtcAverageCandidates, GiveTheReferenceByThePerceptualMeasure)
{
    expectReferenceCandidates<EEtcMeasure::ePerceptual>();
}

TEST(EtcAverageCandidates, IndividualLevelsAreTheNearestToTheMean)
{
    // 127 * 15 / 255 = 7.47, 128 * 15 / 255 = 7.53.
    const EtcAverageCandidate candidate = etcAverageIndividual<EEtcMeasure::ePlain>(greyHalves(127, 128, false));
    EXPECT_EQ(grey(7), candidate.levels[eEtcLeft]);
    EXPECT_EQ(grey(8), candidate.levels[eEtcRight]);
    // Both halves of the other split have the mean 127.5, which is just half way: 7.5 goes up.
    EXPECT_EQ(grey(8), candidate.levels[eEtcTop]);
    EXPECT_EQ(grey(8), candidate.levels[eEtcBottom]);
}

TEST(EtcAverageCandidates, ErrorsAreThoseOfTheHalvesUnderTheirBestTable)
{
    // Base 119 reaches 121 and 127, so that 127 costs nothing; 136 - 8 is 128.
    const EtcAverageCandidate exact = etcAverageIndividual<EEtcMeasure::ePlain>(greyHalves(127, 128, false));
    EXPECT_EQ(0u, exact.auiErrors[eEtcLeft]);
    EXPECT_EQ(0u, exact.auiErrors[eEtcRight]);
    // From 136 no table reaches both 127 and 128 (136 - 8 is 128, 136 - 9 is 127): four pixels miss by 1 in three channels.
    EXPECT_EQ(12u, exact.auiErrors[eEtcTop]);
    EXPECT_EQ(12u, exact.auiErrors[eEtcBottom]);
    EXPECT_FALSE(exact.bFlip);
    EXPECT_EQ(0u, exact.uiError);

    const EtcAverageCandidate weighted = etcAverageIndividual<EEtcMeasure::ePerceptual>(greyHalves(127, 128, false));
    EXPECT_EQ(4000u, weighted.auiErrors[eEtcTop]);
}

TEST(EtcAverageCandidates, TheSplitIsFlippedOnlyIfItCostsLess)
{
    EXPECT_TRUE(etcAverageIndividual<EEtcMeasure::ePlain>(greyHalves(127, 128, true)).bFlip);
    EXPECT_TRUE(etcAverageDifferential<EEtcMeasure::ePlain>(greyHalves(120, 136, true)).bFlip);
    const EtcAverageCandidate flat = etcAverageIndividual<EEtcMeasure::ePlain>(greyHalves(100, 100, false));
    EXPECT_EQ(flat.auiErrors[eEtcLeft] + flat.auiErrors[eEtcRight], flat.auiErrors[eEtcTop] + flat.auiErrors[eEtcBottom]);
    EXPECT_FALSE(flat.bFlip);
}

TEST(EtcAverageCandidates, DifferentialLevelsWithinReachAreThoseOfTheHalves)
{
    // 100 * 31 / 255 = 12.16, 132 * 31 / 255 = 16.05, 68 * 31 / 255 = 8.27, 125 * 31 / 255 = 15.2.
    const EtcAverageCandidate up = etcAverageDifferential<EEtcMeasure::ePlain>(greyHalves(100, 125, false));
    EXPECT_EQ(grey(12), up.levels[eEtcLeft]);
    EXPECT_EQ(grey(15), up.levels[eEtcRight]);
    const EtcAverageCandidate down = etcAverageDifferential<EEtcMeasure::ePlain>(greyHalves(100, 68, true));
    EXPECT_EQ(grey(12), down.levels[eEtcTop]);
    EXPECT_EQ(grey(8), down.levels[eEtcBottom]);
}

TEST(EtcAverageCandidates, DifferentialLevelsOutOfReachBecomeOneForBothHalves)
{
    // 12 and 16 are 4 apart; the mean of the means is 116, 116 * 31 / 255 = 14.1.
    const EtcAverageCandidate up = etcAverageDifferential<EEtcMeasure::ePlain>(greyHalves(100, 132, false));
    EXPECT_EQ(grey(14), up.levels[eEtcLeft]);
    EXPECT_EQ(grey(14), up.levels[eEtcRight]);
    // 12 and 7 (60 * 31 / 255 = 7.29) are 5 apart; 80 * 31 / 255 = 9.73.
    const EtcAverageCandidate down = etcAverageDifferential<EEtcMeasure::ePlain>(greyHalves(100, 60, true));
    EXPECT_EQ(grey(10), down.levels[eEtcTop]);
    EXPECT_EQ(grey(10), down.levels[eEtcBottom]);
}

TEST(EtcAverageCandidates, OneChannelOutOfReachMovesAllThree)
{
    EtcPixels pixels = greyHalves(100, 125, false);
    for (size_t i = 0; i < 16; ++i)
        pixels.aui8Blue[i] = i % 4 >= 2 ? 255 : 0;
    // Red and green: 112.5 * 31 / 255 = 13.68; blue: 127.5 * 31 / 255 = 15.5, which goes up.
    const EtcAverageCandidate candidate = etcAverageDifferential<EEtcMeasure::ePlain>(pixels);
    EXPECT_EQ((EtcColour{14, 14, 16}), candidate.levels[eEtcLeft]);
    EXPECT_EQ((EtcColour{14, 14, 16}), candidate.levels[eEtcRight]);
}
