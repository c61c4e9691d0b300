#include "Codecs/ETC/EtcPairSearch.h"

#include <gtest/gtest.h>

#include "EtcTestBlocks.h"
#include "ReferenceEtcExhaustiveH.h"
#include "ReferenceEtcExhaustiveT.h"
#include "Support/EveryInstructionSet.h"
#include "Support/Sanitised.h"

using namespace moxtexture;

namespace
{

constexpr EtcPair k_nothing = {0xFFFFFFFF, 0xFFFFFFFF};
constexpr std::array<uint32_t, 3> k_auiPlain = {1, 1, 1};
constexpr std::array<uint32_t, 3> k_auiPerceptual = {299, 587, 114};

struct Found
{
    uint32_t uiError = 0;
    EtcPair pair = k_nothing;
};

Found find(const EtcPixels& pixels, EEtcPairKind eKind, uint32_t uiBound, const std::array<uint32_t, 3>& auiWeights = k_auiPlain)
{
    Found found;
    found.uiError = findLeastPair(pixels, eKind, auiWeights, uiBound, found.pair);
    return found;
}

void expectPair(uint32_t uiError, uint32_t uiFirst, uint32_t uiSecond, const Found& found)
{
    EXPECT_EQ(uiError, found.uiError);
    EXPECT_EQ(uiFirst, found.pair.uiFirst);
    EXPECT_EQ(uiSecond, found.pair.uiSecond);
}

/// Eight pixels of grey a above eight of grey b.
EtcPixels twoGreys(uint8_t a, uint8_t b)
{
    EtcPixels pixels = etctest::flatEtcBlock(a, a, a);
    for (auto* const pPlane : etctest::planesOf(pixels))
        std::fill(pPlane->begin() + 8, pPlane->end(), b);
    return pixels;
}

} // namespace

TEST(EtcPairSearch, APlaceCountsRedsThenGreensThenBlues)
{
    EXPECT_EQ(0x142536u, placeOfPair({0x123, 0x456}));
    EXPECT_EQ(0u, placeOfPair({0, 0}));
}

TEST(EtcPairSearch, BlackIsPaintedByTheFirstPairOfAll)
{
    // 0 - 3 is cut off at 0, so colour 000 paints black without error beside any other colour.
    forEachInstructionSet(
        [&]
        {
            expectPair(0, 0x000, 0x001, find(etctest::flatEtcBlock(0, 0, 0), eEtcPairsH, 1));
            expectPair(0, 0x000, 0x000, find(etctest::flatEtcBlock(0, 0, 0), eEtcPairsT, 1));
        });
}

TEST(EtcPairSearch, WhiteIsPaintedByTheFirstPairThatReachesIt)
{
    // 12 * 17 + 64 = 268 is cut off at 255, 11 * 17 + 64 = 251 stays below. Red counts before green, and green before blue. In T
    // mode the colour of one paint can be white itself, which lets the other one be black.
    forEachInstructionSet(
        [&]
        {
            expectPair(0, 0x000, 0xCCC, find(etctest::flatEtcBlock(255, 255, 255), eEtcPairsH, 1));
            expectPair(0, 0x000, 0xFFF, find(etctest::flatEtcBlock(255, 255, 255), eEtcPairsT, 1));
        });
}

TEST(EtcPairSearch, TheColourOfThreePaintsComesFirstInTMode)
{
    // Grey 0x88 + 3 is no colour of one paint, and only 888 reaches it by a distance; then any colour does beside it. Greys 0x11 and
    // 0x88 have a colour each, and the colour of three paints goes before the other one: 000 reaches neither, so it is 111.
    forEachInstructionSet(
        [&]
        {
            expectPair(0, 0x888, 0x000, find(twoGreys(0x88, 0x8B), eEtcPairsT, 1));
            expectPair(0, 0x111, 0x888, find(twoGreys(0x88, 0x11), eEtcPairsT, 1));
        });
}

TEST(EtcPairSearch, HModePaintsEachColourOnBothSides)
{
    // Grey 28 is 17 + 11, 34 - 6 or 51 - 23; grey 96 is 85 + 11, 102 - 6 or 119 - 23: three pairs, of which the first red decides.
    // Grey 74 is 51 + 23, so that colour 333 paints it and 28, whatever colour stands beside it.
    forEachInstructionSet(
        [&]
        {
            expectPair(0, 0x111, 0x555, find(twoGreys(28, 96), eEtcPairsH, 1));
            expectPair(0, 0x000, 0x333, find(twoGreys(28, 74), eEtcPairsH, 1));
        });
}

TEST(EtcPairSearch, OnlyAnErrorBelowTheBoundIsFound)
{
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(41, 18))
        for (const EEtcPairKind eKind : {eEtcPairsT, eEtcPairsH})
        {
            const Found least = find(pixels, eKind, 3121200);
            ASSERT_LT(least.uiError, 3121200u);
            const Found again = find(pixels, eKind, least.uiError + 1);
            expectPair(least.uiError, least.pair.uiFirst, least.pair.uiSecond, again);
            expectPair(least.uiError, k_nothing.uiFirst, k_nothing.uiSecond, find(pixels, eKind, least.uiError));
            expectPair(0, k_nothing.uiFirst, k_nothing.uiSecond, find(pixels, eKind, 0));
        }
}

TEST(EtcPairSearch, TheFirstColourIsStrictlyBelowTheSecondInHMode)
{
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(42, 90))
    {
        const Found found = find(pixels, eEtcPairsH, UINT32_MAX);
        EXPECT_LT(found.pair.uiFirst, found.pair.uiSecond);
    }
}

TEST(EtcPairSearch, EveryBoundGivesTheReferencePairs)
{
    // Bounds on both sides of 65536, where the sums change to coarser units, and far above every error. A block meets every other
    // one by one measure and the rest by the other.
    const std::vector<EtcPixels> blocks = etctest::makeEtcTestBlocks(43, testsupport::fewerIfSanitised(9));
    for (size_t i = 0; i < blocks.size(); ++i)
        for (const bool bPerceptual : {false, true})
        {
            const EtcPixels& pixels = blocks[i];
            const uint32_t auiBounds[] = {300, 65534, 65535, 65536, bPerceptual ? 1040400000u : 65537u};
            for (size_t uiPlace = (i + (bPerceptual ? 1 : 0)) % 2; uiPlace < std::size(auiBounds); uiPlace += 2)
            {
                const uint32_t uiBound = auiBounds[uiPlace];
                const auto& aiWeights = bPerceptual ? etcreference::k_aiPerceptualWeights : etcreference::k_aiPlainWeights;
                const auto& auiWeights = bPerceptual ? k_auiPerceptual : k_auiPlain;
                const etcreference::FoundPair pairT = etcreference::searchPairsT(pixels, aiWeights, uiBound);
                const etcreference::FoundPair pairH = etcreference::searchPairsH(pixels, aiWeights, uiBound);
                forEachInstructionSet(
                    [&]
                    {
                        expectPair(pairT.uiError, pairT.bImproved ? pairT.uiFirst : k_nothing.uiFirst,
                                   pairT.bImproved ? pairT.uiSecond : k_nothing.uiSecond, find(pixels, eEtcPairsT, uiBound, auiWeights));
                        expectPair(pairH.uiError, pairH.bImproved ? pairH.uiFirst : k_nothing.uiFirst,
                                   pairH.bImproved ? pairH.uiSecond : k_nothing.uiSecond, find(pixels, eEtcPairsH, uiBound, auiWeights));
                    });
            }
        }
}
