#include "Codecs/ETC/EtcTwoColours.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "EtcTestBlocks.h"
#include "ReferenceEtcTwoColours.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;

namespace
{

struct Variant
{
    const char* pszName;
    EtcColourPair (*pLibrary)(const EtcPixels&);
    EtcColourPair (*pReference)(const EtcPixels&);
    etcreference::EClusterSpace eSpace;
    bool bSeedsAgain;
};

constexpr Variant k_aVariants[] = {
    {"lbgHalfIntensity", lbgHalfIntensity, etcreference::lbgHalfIntensity, etcreference::EClusterSpace::eHalfIntensity, false},
    {"lbgNoIntensityT", lbgNoIntensityT, etcreference::lbgNoIntensityT, etcreference::EClusterSpace::eNoIntensity, false},
    {"lbgNoIntensityH", lbgNoIntensityH, etcreference::lbgNoIntensityH, etcreference::EClusterSpace::eNoIntensity, true},
    {"lbgRGBT", lbgRGBT, etcreference::lbgRGBT, etcreference::EClusterSpace::eRGB, false},
    {"lbgRGBH", lbgRGBH, etcreference::lbgRGBH, etcreference::EClusterSpace::eRGB, true},
};

EtcPixels greys(const std::array<uint8_t, 16>& aui8)
{
    return {aui8, aui8, aui8};
}

EtcColourPair greyPair(uint8_t ui8First, uint8_t ui8Second)
{
    return {EtcColour{ui8First, ui8First, ui8First}, EtcColour{ui8Second, ui8Second, ui8Second}};
}

/// Blocks of few levels and of symmetric ramps: distances and errors that tie.
std::vector<EtcPixels> makeTiedBlocks(uint32_t uiSeed, size_t uiCount)
{
    testsupport::CSeededRandom random(uiSeed);
    std::vector<EtcPixels> blocks(uiCount);
    for (EtcPixels& block : blocks)
    {
        const uint32_t uiLevels = 2 + random.below(3);
        const uint32_t uiStep = 1 + random.below(80);
        const bool bRamp = random.below(3) == 0;
        for (auto* const pPlane : etctest::planesOf(block))
            for (uint32_t i = 0; i < 16; ++i)
                (*pPlane)[i] = static_cast<uint8_t>((bRamp ? i % 4 % uiLevels : random.below(uiLevels)) * uiStep);
    }
    return blocks;
}

} // namespace

TEST(EtcTwoColours, AFlatBlockGivesItsColourTwiceAfterTenEmptyAttempts)
{
    const EtcPixels flat = etctest::flatEtcBlock(17, 130, 201);
    for (const Variant& variant : k_aVariants)
    {
        SCOPED_TRACE(variant.pszName);
        etcreference::ClusterTrace trace;
        const EtcColourPair reference = etcreference::clusterTwoColours(flat, variant.eSpace, variant.bSeedsAgain, &trace);
        EXPECT_EQ(trace.iSeeds, 10);
        EXPECT_EQ(trace.iIterations, 10);
        EXPECT_EQ(trace.fBestError, 0.0);
        const EtcColourPair expected = {EtcColour{17, 130, 201}, EtcColour{17, 130, 201}};
        EXPECT_EQ(reference, expected);
        forEachInstructionSet([&] { EXPECT_EQ(variant.pLibrary(flat), expected); });
    }
}

TEST(EtcTwoColours, TwoCallsOnABlockGiveTheSameWhateverRanBefore)
{
    const std::vector<EtcPixels> blocks = etctest::makeEtcTestBlocks(5, 50);
    for (const Variant& variant : k_aVariants)
    {
        SCOPED_TRACE(variant.pszName);
        const EtcColourPair first = variant.pLibrary(blocks[0]);
        for (const EtcPixels& block : blocks)
        {
            static_cast<void>(variant.pLibrary(block));
            EXPECT_EQ(variant.pLibrary(blocks[0]), first);
        }
    }
}

TEST(EtcTwoColours, BlackAndWhiteComeInTheOrderOfTheSeeds)
{
    // The first random numbers are 32694, 12743, 11816 and 20150, 935, 23032 of 32767. In the transformed space centre 0 starts at
    // 0.998 of the way to white and centre 1 at 0.615. In RGB they start at (254, 99, 92) and (157, 7, 179); white is at 50906 from
    // the first and 76884 from the second, black at 82781 and 56739.
    std::array<uint8_t, 16> aui8{};
    for (size_t i = 8; i < 16; ++i)
        aui8[i] = 255;
    for (const auto pVariant : {lbgHalfIntensity, lbgRGBT, lbgRGBH})
        forEachInstructionSet([&] { EXPECT_EQ(pVariant(greys(aui8)), greyPair(255, 0)); });
}

TEST(EtcTwoColours, WithoutIntensityGreysKeepTheSeedsOfTheFirstAttempt)
{
    // All distances are 0, so every pixel ties and goes to centre 1, ten times over, and the first attempt stays the best: the greys
    // 32694 / 32767 * 150 = 149.67 and 20150 / 32767 * 150 = 92.24.
    std::array<uint8_t, 16> aui8{};
    for (size_t i = 0; i < 16; ++i)
        aui8[i] = static_cast<uint8_t>(i * 10);
    for (const auto pVariant : {lbgNoIntensityT, lbgNoIntensityH})
        forEachInstructionSet([&] { EXPECT_EQ(pVariant(greys(aui8)), greyPair(150, 92)); });
}

TEST(EtcTwoColours, RGBCentresAreRoundedHalvesUp)
{
    // From seeds (101, 39, 36) and (62, 3, 71) the light pixels go to centre 0 and the black ones to centre 1.
    const auto block = [](size_t uiHundreds)
    {
        std::array<uint8_t, 16> aui8{};
        for (size_t i = 0; i < 8; ++i)
            aui8[i] = i < uiHundreds ? 100 : 101;
        return greys(aui8);
    };
    for (const auto pVariant : {lbgRGBT, lbgRGBH})
        forEachInstructionSet(
            [&]
            {
                EXPECT_EQ(pVariant(block(4)), greyPair(101, 0)); // mean 100.5
                EXPECT_EQ(pVariant(block(6)), greyPair(100, 0)); // mean 100.25
            });
}

TEST(EtcTwoColours, LevelsAreTheNearestOfSixteen)
{
    // (15 c + 120) / 255 changes halfway between the multiples of 17.
    const EtcColourPair bytes = {EtcColour{0, 8, 9}, EtcColour{25, 26, 255}};
    const EtcColourPair expected = {EtcColour{0, 0, 1}, EtcColour{1, 2, 15}};
    EXPECT_EQ(quantise444Pair(bytes), expected);
    for (uint32_t ui = 0; ui < 256; ++ui)
    {
        const auto ui8 = static_cast<uint8_t>(ui);
        const EtcColourPair pair = greyPair(ui8, ui8);
        EXPECT_EQ(quantise444Pair(pair), etcreference::quantise444Pair(pair));
        EXPECT_LE(std::abs(quantise444Pair(pair)[0][0] * 17 - static_cast<int>(ui)), 8);
    }
}

TEST(EtcTwoColours, AnEndedAttemptStartsAgainOnlyInTheVariantsForH)
{
    // Otherwise the equality below would prove less than it seems to.
    int iSeedsForT = 0;
    int iSeedsForH = 0;
    const std::vector<EtcPixels> blocks = etctest::makeEtcTestBlocks(6, 90);
    for (const EtcPixels& block : blocks)
    {
        etcreference::ClusterTrace traceT;
        etcreference::ClusterTrace traceH;
        static_cast<void>(etcreference::clusterTwoColours(block, etcreference::EClusterSpace::eRGB, false, &traceT));
        static_cast<void>(etcreference::clusterTwoColours(block, etcreference::EClusterSpace::eRGB, true, &traceH));
        iSeedsForT += traceT.iSeeds;
        iSeedsForH += traceH.iSeeds;
        EXPECT_LE(traceH.fBestError, traceT.fBestError);
    }
    EXPECT_GT(iSeedsForH, 3 * iSeedsForT);
}

TEST(EtcTwoColours, GiveTheReferenceColoursOnEveryKindOfBlock)
{
    std::vector<EtcPixels> blocks = etctest::makeEtcTestBlocks(7, 18000);
    const std::vector<EtcPixels> tied = makeTiedBlocks(8, 6000);
    blocks.insert(blocks.end(), tied.begin(), tied.end());
    for (const Variant& variant : k_aVariants)
    {
        SCOPED_TRACE(variant.pszName);
        std::vector<EtcColourPair> expected;
        for (const EtcPixels& block : blocks)
            expected.push_back(variant.pReference(block));
        forEachInstructionSet(
            [&]
            {
                for (size_t i = 0; i < blocks.size(); ++i)
                    ASSERT_EQ(variant.pLibrary(blocks[i]), expected[i]) << "block " << i;
            });
    }
}
