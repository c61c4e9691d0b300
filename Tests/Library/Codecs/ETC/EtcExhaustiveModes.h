#pragma once

#include <vector>

#include <gtest/gtest.h>

#include "Codecs/ETC/EtcErrors.h"
#include "EtcTestBlocks.h"
#include "Support/EveryInstructionSet.h"
#include "Support/Sanitised.h"

/// What the tests of both exhaustive searches of colour pairs share.
namespace etctest
{

using moxtexture::EtcBlockWords;
using PairSearch = uint32_t (*)(const EtcPixels&, uint32_t, EtcBlockWords&);

/// Blocks of all kinds; noise and extremes, on which the reference takes up to fifty times as long, one each. Fewer under the
/// sanitisers.
inline std::vector<EtcPixels> makeBlocksForReference(uint32_t uiSeed)
{
    const std::vector<EtcPixels> all = makeEtcTestBlocks(uiSeed, 9 * testsupport::fewerIfSanitised(6));
    std::vector<EtcPixels> blocks;
    for (size_t i = 0; i < all.size(); ++i)
        if (i < 9 || (i % 9 != 1 && i % 9 != 7))
            blocks.push_back(all[i]);
    return blocks;
}

/// The same words and errors where only the fast search bounds the errors.
inline void expectReferenceBlocks(PairSearch search, PairSearch reference, uint32_t uiSeed)
{
    for (const EtcPixels& pixels : makeBlocksForReference(uiSeed))
    {
        EtcBlockWords expected;
        const uint32_t uiExpected = reference(pixels, UINT32_MAX, expected);
        forEachInstructionSet(
            [&]
            {
                EtcBlockWords words;
                EXPECT_EQ(uiExpected, search(pixels, UINT32_MAX, words));
                EXPECT_EQ(expected.ui32High, words.ui32High);
                EXPECT_EQ(expected.ui32Low, words.ui32Low);
            });
    }
}

/// A bound that no pair stays below gives the fast search's block and its error, above the bound.
inline void expectFastBlockAtTightBounds(PairSearch search, uint32_t (*fast)(const EtcPixels&, EtcBlockWords&))
{
    for (const EtcPixels& pixels : makeEtcTestBlocks(52, 27))
    {
        EtcBlockWords fastWords;
        const uint32_t uiFast = fast(pixels, fastWords);
        EtcBlockWords words;
        const uint32_t uiLeast = search(pixels, UINT32_MAX, words);
        EXPECT_LE(uiLeast, uiFast);
        for (const uint32_t uiBound : {uint32_t{0}, uiLeast})
        {
            EXPECT_EQ(uiFast, search(pixels, uiBound, words));
            EXPECT_EQ(fastWords.ui32High, words.ui32High);
            EXPECT_EQ(fastWords.ui32Low, words.ui32Low);
        }
    }
}

/// The returned errors are those of the decoded blocks.
template <typename Decode>
void expectErrorsOfDecodedBlocks(PairSearch plain, PairSearch perceptual, Decode decode)
{
    for (const EtcPixels& pixels : makeEtcTestBlocks(53, 45))
    {
        EtcBlockWords words;
        const uint32_t uiPlain = plain(pixels, UINT32_MAX, words);
        EXPECT_EQ(uiPlain, static_cast<uint32_t>(moxtexture::blockErrorRGB(pixels, decode(words))));
        const uint32_t uiPerceptual = perceptual(pixels, UINT32_MAX, words);
        EXPECT_NEAR(uiPerceptual, 1000.0 * moxtexture::blockErrorPerceptual(pixels, decode(words)), 0.001);
    }
}

/// What the mode itself painted is found again without error.
template <typename Decode>
void expectOwnBlocksFound(PairSearch plain, PairSearch perceptual, Decode decode, uint32_t ui32HighBits)
{
    CSeededRandom random(54);
    for (int i = 0; i < 60; ++i)
    {
        const EtcBlockWords painted = {random.below(1u << ui32HighBits), random.below(65536) << 16 | random.below(65536)};
        const EtcPixels pixels = decode(painted);
        for (const PairSearch search : {plain, perceptual})
        {
            EtcBlockWords words;
            EXPECT_EQ(0u, search(pixels, UINT32_MAX, words)) << painted.ui32High;
            const EtcPixels decoded = decode(words);
            EXPECT_EQ(pixels.aui8Red, decoded.aui8Red);
            EXPECT_EQ(pixels.aui8Green, decoded.aui8Green);
            EXPECT_EQ(pixels.aui8Blue, decoded.aui8Blue);
        }
    }
}

} // namespace etctest
