#include "Codecs/ETC/EtcFastModes.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcTModes.h"
#include "EtcModeTests.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcHModes.h"
#include "ReferenceEtcTModes.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;
using namespace etctest;

namespace
{

/// A block's clusters, and for some blocks twice the same colour or two by chance.
EtcColourPair bytesForBlock(const EtcPixels& block, size_t uiNumber)
{
    EtcColourPair bytes = etcreference::lbgHalfIntensity(block);
    if (uiNumber % 5 == 0)
        bytes[1] = bytes[0];
    if (uiNumber % 5 == 1)
        std::swap(bytes[0], bytes[1]);
    return bytes;
}

struct Expected
{
    uint32_t uiErrorT;
    uint32_t uiErrorH;
    EtcBlockWords t;
    EtcBlockWords h;
};

Expected expectedOf(const EtcModeFit& t, EtcModeFit h)
{
    etcreference::settleHOrder(h);
    return {t.uiError, h.uiError, etcreference::packT(t), etcreference::packH(h)};
}

} // namespace

TEST(EtcFastModes, GiveWhatTheTwoModesGiveByThemselves)
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(31, 9000);
    for (const bool bWeighted : {false, true})
    {
        std::vector<Expected> expected;
        for (size_t i = 0; i < blocks.size(); ++i)
        {
            const EtcColourPair levels = etcreference::quantise444Pair(bytesForBlock(blocks[i], i));
            const EtcColourPair ordered = etcreference::orderForH(levels);
            expected.push_back(
                bWeighted ? expectedOf(etcreference::tBlockErrorWeighted(blocks[i], levels),
                                       etcreference::hBlockErrorWeighted(blocks[i], ordered))
                          : expectedOf(etcreference::tBlockError(blocks[i], levels), etcreference::hBlockError(blocks[i], ordered)));
        }
        forEachInstructionSet(
            [&]
            {
                for (size_t i = 0; i < blocks.size(); ++i)
                {
                    const EtcFastModes fits = fitFastModes(blocks[i], bytesForBlock(blocks[i], i), bWeighted);
                    ASSERT_EQ(fits.t.uiError, expected[i].uiErrorT) << "block " << i;
                    ASSERT_EQ(fits.h.uiError, expected[i].uiErrorH) << "block " << i;
                    ASSERT_EQ(makeFastT(blocks[i], fits.t, bWeighted), expected[i].t) << "block " << i;
                    ASSERT_EQ(makeFastH(blocks[i], fits.h, bWeighted), expected[i].h) << "block " << i;
                }
            });
    }
}

TEST(EtcFastModes, GiveWhatTheTwoModesOfPunchThroughGiveByThemselves)
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(32, 9000);
    const std::vector<EtcAlphas> alphas = makeEtcTestAlphas(33, 9000);
    std::vector<Expected> expected;
    for (size_t i = 0; i < blocks.size(); ++i)
    {
        const EtcColourPair levels = etcreference::quantise444Pair(bytesForBlock(blocks[i], i));
        expected.push_back(expectedOf(etcreference::tBlockErrorA1(blocks[i], alphas[i], levels),
                                      etcreference::hBlockErrorA1(blocks[i], alphas[i], etcreference::orderForH(levels))));
    }
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
            {
                const EtcFastModes fits = fitFastModesA1(blocks[i], alphas[i], bytesForBlock(blocks[i], i));
                ASSERT_EQ(fits.t.uiError, expected[i].uiErrorT) << "block " << i;
                ASSERT_EQ(fits.h.uiError, expected[i].uiErrorH) << "block " << i;
                ASSERT_EQ(makeFastTA1(blocks[i], alphas[i], fits.t), expected[i].t) << "block " << i;
                ASSERT_EQ(makeFastHA1(blocks[i], alphas[i], fits.h), expected[i].h) << "block " << i;
            }
        });
}
