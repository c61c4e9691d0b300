#include "Codecs/ETC/EtcTwoColours.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "EtcModeTests.h"
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

/// A block and its two colours by each of k_aVariants, as a program of its own finds them, which shares nothing with this one.
struct IndependentColours
{
    std::array<uint32_t, 16> aui32Block;
    uint32_t aaui32Found[5][2];
};

// Together these tell every variant's numbers of attempts and iterations, to which centre a tie goes, that the first of equal errors
// stays the best, that an error may repeat that of the attempt before, which variants start again at one, and that all do after an
// attempt that leaves a centre empty, even where its error repeats that of another such.
constexpr IndependentColours k_aIndependentColours[] = {
    {{0xF60076, 0x94E69B, 0x44EEB0, 0x5627AC, 0x922902, 0xDF99CF, 0xA69FFB, 0x5331C3, 0x620E90, 0xB1A9D3, 0x198325, 0xC27DFC, 0x5C3633,
      0xE0F3BE, 0x716530, 0xC25E13},
     {{0xA66AC1, 0x707F46}, {0x98538B, 0x74D38C}, {0x9F59C2, 0x7E8E55}, {0x7D3B4A, 0xA0ABCD}, {0x7D3B4A, 0xA0ABCD}}},
    {{0x99999A, 0x9A9A9A, 0x99999A, 0x999999, 0x999B99, 0x9B9999, 0x999B99, 0x9A9A99, 0x999B99, 0x9A9B9A, 0x9B9999, 0x9A9B99, 0x9B9A99,
      0x9B9A99, 0x9B999B, 0x9A9999},
     {{0x9A9999, 0x999B99}, {0x9A9999, 0x999B99}, {0x9A9999, 0x999B99}, {0x9B9B99, 0x9A9A99}, {0x9B9999, 0x999A99}}},
    {{0xE6557B, 0x5134DE, 0xC19681, 0xF4A133, 0x6AA214, 0x0D0597, 0xA3E6C8, 0xA0CC20, 0x20A2E9, 0x39806E, 0xF0B684, 0x5D6A9D, 0x657EB8,
      0x298F2D, 0xE52EAD, 0x74C79D},
     {{0x5759B0, 0xA6A863}, {0x6275B0, 0xAD9B4C}, {0x4D80A2, 0xC88D5E}, {0xA6A863, 0x5759B0}, {0x3C679D, 0xBB9E71}}},
    {{0x100818, 0x181008, 0x101818, 0x181808, 0x100000, 0x081800, 0x101010, 0x100800, 0x081800, 0x181810, 0x100800, 0x081000, 0x181000,
      0x100018, 0x000010, 0x180018},
     {{0x0F0815, 0x111003}, {0x0F0815, 0x111003}, {0x111106, 0x0E0216}, {0x111106, 0x0E0216}, {0x100F02, 0x100A15}}},
    {{0x0C5981, 0x0EEB94, 0x597DD8, 0x43B72D, 0x4B6F50, 0x2EEDE6, 0x5F56BE, 0xFE72A1, 0x859326, 0x4EF376, 0xD30105, 0x32D9F1, 0x755D1E,
      0x7B4F4E, 0xA1D7F2, 0xC1F822},
     {{0x707C92, 0x61D34D}, {0xAC723A, 0x45AEA4}, {0xAC723A, 0x45AEA4}, {0x937A3B, 0x44B5BD}, {0x937A3B, 0x44B5BD}}},
    {{0x54053B, 0x0988F4, 0xBE820B, 0x046764, 0xB4C1A3, 0xFADFA4, 0x7E645A, 0x969CA7, 0x005DBE, 0x331E02, 0x8296A0, 0xAE2C4E, 0x8EFA2E,
      0x1D9C74, 0xB02BA6, 0x27D0AA},
     {{0x238DA3, 0x98755F}, {0x596D83, 0xC2C94A}, {0x967865, 0x108BA4}, {0xA98F74, 0x1F687E}, {0xA98F74, 0x1F687E}}},
    {{0x002412, 0x122424, 0x241212, 0x241200, 0x120024, 0x122412, 0x122424, 0x121212, 0x120000, 0x121224, 0x241224, 0x002412, 0x000000,
      0x122400, 0x120024, 0x121200},
     {{0x171221, 0x0E1608}, {0x160B12, 0x0C2415}, {0x160B12, 0x0C2415}, {0x191B12, 0x0B0E14}, {0x171221, 0x0E1608}}},
    {{0xC1B585, 0xB9CA87, 0xC6C08D, 0xC1BF90, 0xB9C092, 0xBFC890, 0xCBB495, 0xC9CA83, 0xC4B396, 0xBBBD82, 0xC4C890, 0xBDB57F, 0xC8C692,
      0xBAB481, 0xCBBB82, 0xCCC390},
     {{0xC4C091, 0xC0BD83}, {0xC5BA8B, 0xBFC68A}, {0xC2C089, 0xC8B496}, {0xC5C48C, 0xBFB78A}, {0xC3C58E, 0xC2B687}}},
    {{0x5AD5D7, 0x5414A8, 0x06A457, 0x4BBC7E, 0x15D650, 0xA76D7C, 0xF6908A, 0xF67252, 0x217FE8, 0x47C056, 0x0A301D, 0x111CFF, 0xED0CFC,
      0x86918D, 0xC3F53C, 0x2C9FC1},
     {{0x826BB4, 0x3FAF4E}, {0x9257AE, 0x40B26E}, {0xA647AA, 0x44AA7D}, {0x90A969, 0x4160B3}, {0xCC8085, 0x2D8793}}},
    {{0x4D00E7, 0x9A9A4D, 0x009A4D, 0xE79A9A, 0x009A4D, 0x9AE74D, 0xE79A9A, 0x004D9A, 0x9A9A9A, 0xE7004D, 0x4D004D, 0xE79A9A, 0xE74D00,
      0x4D9A9A, 0x9A9A00, 0x00E7E7},
     {{0xB1646C, 0x27A780}, {0xBB4D79, 0x4DA36F}, {0x1A809A, 0xB97B5C}, {0xC5895E, 0x216E8F}, {0xC5895E, 0x216E8F}}},
    {{0x00002E, 0x2E0000, 0x2E1700, 0x002E17, 0x172E17, 0x2E172E, 0x170017, 0x2E0017, 0x170000, 0x2E0017, 0x2E002E, 0x2E0000, 0x002E00,
      0x170000, 0x00172E, 0x2E2E17},
     {{0x240413, 0x0E2917}, {0x240413, 0x0E2917}, {0x280811, 0x05201C}, {0x2E0C14, 0x0C1414}, {0x280811, 0x05201C}}},
    {{0x8FD59A, 0x937BD9, 0x0854E6, 0xB4F609, 0x7B9454, 0xB763E4, 0xB42A86, 0xA99D6B, 0xC93E36, 0x75BD3A, 0xC7AC3B, 0x90DB1A, 0x9CD056,
      0x0A5828, 0x06FD35, 0x7E438E},
     {{0x816C8B, 0x86D731}, {0x816C8B, 0x86D731}, {0x8153BE, 0x84B242}, {0x90BB45, 0x6D54A5}, {0x7DBD44, 0x8D50A8}}},
    {{0x111010, 0x111010, 0x111110, 0x111010, 0x111010, 0x101010, 0x111010, 0x111010, 0x111010, 0x111010, 0x111010, 0x111010, 0x111010,
      0x111010, 0x111010, 0x111010},
     {{0x111010, 0x111110}, {0x111010, 0x111110}, {0x111010, 0x111110}, {0x111010, 0x101010}, {0x111010, 0x101010}}},
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

TEST(EtcTwoColours, TheGreatestRandomNumberStandsForTheWholeRange)
{
    // 32694 / 32767 * 224 = 223.50096, of 32768 it were 223.494; 20150 / 32767 * 224 = 137.75.
    std::array<uint8_t, 16> aui8{};
    for (size_t i = 0; i < 16; ++i)
        aui8[i] = static_cast<uint8_t>(i < 15 ? i * 14 : 224);
    for (const auto pVariant : {lbgNoIntensityT, lbgNoIntensityH})
        forEachInstructionSet([&] { EXPECT_EQ(pVariant(greys(aui8)), greyPair(224, 138)); });
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

TEST(EtcTwoColours, GiveTheColoursOfAnIndependentProgram)
{
    for (const IndependentColours& colours : k_aIndependentColours)
        for (size_t uiVariant = 0; uiVariant < std::size(k_aVariants); ++uiVariant)
        {
            SCOPED_TRACE(k_aVariants[uiVariant].pszName);
            const auto& [uiFirst, uiSecond] = colours.aaui32Found[uiVariant];
            const EtcColourPair expected = {etctest::colourOf(uiFirst), etctest::colourOf(uiSecond)};
            const EtcPixels block = etctest::blockOfColours(colours.aui32Block);
            forEachInstructionSet([&] { EXPECT_EQ(k_aVariants[uiVariant].pLibrary(block), expected); });
        }
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
