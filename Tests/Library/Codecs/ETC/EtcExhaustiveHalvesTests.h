#pragma once

#include <gtest/gtest.h>

#include "Codecs/ETC/EtcFastBlock.h"
#include "EtcTestBlocks.h"
#include "Support/EveryInstructionSet.h"
#include "Support/Sanitised.h"

/// What the tests of the searches of individual and of differential mode share.
namespace etctest
{

using moxtexture::EtcBlockWords;
using HalfSearch = uint32_t (*)(const EtcPixels&, uint32_t, EtcBlockWords&);

/// Of every kind of block, but few of those kinds that take the plain loops long: random, two colours, extreme. Fewer under the
/// sanitisers.
inline std::vector<EtcPixels> makeBlocksForSlowSearch(uint32_t uiSeed, size_t uiOfEachKind)
{
    constexpr size_t uiKinds = 9;
    constexpr bool abLong[uiKinds] = {false, true, false, false, false, false, true, true, false};
    const std::vector<EtcPixels> all = makeEtcTestBlocks(uiSeed, uiKinds * testsupport::fewerIfSanitised(uiOfEachKind));
    std::vector<EtcPixels> blocks;
    for (size_t i = 0; i < all.size(); ++i)
        if (!abLong[i % uiKinds] || i / uiKinds % 6 == 0)
            blocks.push_back(all[i]);
    return blocks;
}

/// Little noise in one channel, the others 0 or 255, where most modifiers are cut off: what the channels cost on their own is then
/// what the halves cost, so that errors come right up to the limits. Fewer under the sanitisers.
inline std::vector<EtcPixels> makeBlocksOfOneChannel(uint32_t uiSeed, size_t uiCount)
{
    CSeededRandom random(uiSeed);
    std::vector<EtcPixels> blocks(testsupport::fewerIfSanitised(uiCount));
    for (size_t i = 0; i < blocks.size(); ++i)
    {
        paintExtreme(random, blocks[i]);
        for (auto* const pPlane : planesOf(blocks[i]))
            pPlane->fill(pPlane->front());
        const auto iBase = static_cast<int32_t>(random.below(256));
        for (uint8_t& ui8Value : *planesOf(blocks[i])[i % 3])
            ui8Value = toByte(iBase + around(random, 1 + static_cast<int32_t>(i % 4)));
    }
    return blocks;
}

/// Noise that gets stronger, those blocks whose start costs a little less or more than 65535. Fewer under the sanitisers.
/// @param getStart  pixels -> error
template <typename GetStart>
std::vector<EtcPixels> makeBlocksAboutSixteenBits(uint32_t uiSeed, size_t uiCount, GetStart getStart)
{
    CSeededRandom random(uiSeed);
    std::vector<EtcPixels> blocks;
    uiCount = testsupport::fewerIfSanitised(uiCount);
    for (int32_t iReach = 60; blocks.size() < uiCount; iReach = iReach < 127 ? iReach + 1 : 60)
    {
        EtcPixels pixels;
        for (auto* const pPlane : planesOf(pixels))
            for (uint8_t& ui8Value : *pPlane)
                ui8Value = toByte(128 + around(random, iReach));
        const uint32_t uiStart = getStart(pixels);
        if (uiStart > 64500 && uiStart < 66500)
            blocks.push_back(pixels);
    }
    return blocks;
}

inline void expectReferenceSearch(HalfSearch search, HalfSearch reference, const EtcPixels& pixels, uint32_t uiBound)
{
    EtcBlockWords expected;
    const uint32_t uiExpected = reference(pixels, uiBound, expected);
    forEachInstructionSet(
        [&]
        {
            EtcBlockWords words;
            EXPECT_EQ(uiExpected, search(pixels, uiBound, words));
            EXPECT_EQ(expected.ui32High, words.ui32High);
            EXPECT_EQ(expected.ui32Low, words.ui32Low);
        });
}

/// The same words and errors as the reference's: without a bound, with the fast search's error and less than that, and with what
/// the search itself finds, where it depends on the bound alone what stands. Every kind of block meets each of these bounds.
/// @param fScale  of the fast search's error to the search's
inline void expectReferenceSearches(HalfSearch search, HalfSearch reference, double (*fast)(const EtcPixels&, EtcBlockWords&),
                                    double fScale, const std::vector<EtcPixels>& blocks)
{
    for (size_t i = 0; i < blocks.size(); ++i)
    {
        SCOPED_TRACE(i);
        EtcBlockWords words;
        const auto uiFast = static_cast<uint32_t>(fast(blocks[i], words) * fScale);
        const uint32_t uiLeast = search(blocks[i], UINT32_MAX, words);
        const uint32_t auiBounds[] = {UINT32_MAX, uiFast, uiFast / 4 * 3, uiFast / 2, uiLeast, uiLeast + 1, uiLeast / 8 * 7, uiLeast / 3};
        expectReferenceSearch(search, reference, blocks[i], auiBounds[(i + i / 6) % 8]);
        ASSERT_FALSE(::testing::Test::HasFailure());
    }
}

} // namespace etctest
