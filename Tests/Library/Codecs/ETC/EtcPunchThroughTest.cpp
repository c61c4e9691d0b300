#include "Codecs/ETC/EtcPunchThrough.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "Codecs/ETC/EtcDecodeA1.h"
#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcFastModes.h"
#include "Core/Diagnostics.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcPunchThrough.h"
#include "Support/EveryInstructionSet.h"

namespace
{

using namespace moxtexture;

std::vector<std::string> g_astrReceived;

void receive(const char* pszText)
{
    g_astrReceived.emplace_back(pszText);
}

/// What etcFastBlockETC2A1 tells about a block.
std::vector<std::string> remarksOn(const EtcPixels& pixels, const EtcAlphas& alphas)
{
    g_astrReceived.clear();
    setDiagnosticsHook(receive);
    EtcBlockWords block;
    etcFastBlockETC2A1(pixels, alphas, block);
    setDiagnosticsHook(nullptr);
    return g_astrReceived;
}

EtcBlockWords encode(const EtcPixels& pixels, const EtcAlphas& alphas)
{
    EtcBlockWords block;
    etcFastBlockETC2A1(pixels, alphas, block);
    return block;
}

EtcDifferentialA1 findDifferential(const EtcPixels& pixels, const EtcAlphas& alphas, bool bTransparentMode)
{
    return differentialBlockA1(pixels, EtcDifferentialStartA1(pixels, alphas), bTransparentMode);
}

EtcAlphas flatAlphas(uint8_t ui8Alpha)
{
    EtcAlphas alphas;
    alphas.aui8.fill(ui8Alpha);
    return alphas;
}

/// Blocks with alphas of every kind; every third one with 0 and 255 alone, in which whole halves may be transparent.
struct TestBlocks
{
    TestBlocks(uint32_t uiSeed, size_t uiCount)
        : pixels(etctest::makeEtcTestBlocks(uiSeed, uiCount)), alphas(etctest::makeEtcTestAlphas(uiSeed + 1, uiCount))
    {
        testsupport::CSeededRandom random(uiSeed + 2);
        for (size_t i = 0; i < uiCount; i += 3)
        {
            const uint32_t uiAmong = 1 + random.below(16);
            for (uint8_t& ui8Alpha : alphas[i].aui8)
                ui8Alpha = random.below(uiAmong) == 0 ? 0 : 255;
        }
        for (size_t i = 1; i < uiCount; i += 11)
            alphas[i] = flatAlphas(255);
    }

    std::vector<EtcPixels> pixels;
    std::vector<EtcAlphas> alphas;
};

TEST(EtcPunchThrough, GivesTheBlocksOfTheReference)
{
    const TestBlocks blocks(831, 20000);
    std::vector<EtcBlockWords> expected(blocks.pixels.size());
    for (size_t i = 0; i < expected.size(); ++i)
        etcreference::etcFastBlockETC2A1(blocks.pixels[i], blocks.alphas[i], expected[i]);
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < expected.size(); ++i)
            {
                const EtcBlockWords actual = encode(blocks.pixels[i], blocks.alphas[i]);
                ASSERT_EQ(expected[i].ui32High, actual.ui32High) << "block " << i;
                ASSERT_EQ(expected[i].ui32Low, actual.ui32Low) << "block " << i;
            }
        });
}

TEST(EtcPunchThrough, GivesTheReferencesDifferentialBlocksInBothModes)
{
    const TestBlocks blocks(841, 20000);
    for (const bool bTransparentMode : {true, false})
    {
        std::vector<EtcDifferentialA1> expected(blocks.pixels.size());
        for (size_t i = 0; i < expected.size(); ++i)
            expected[i] = etcreference::differentialBlockA1(blocks.pixels[i], blocks.alphas[i], bTransparentMode);
        forEachInstructionSet(
            [&]
            {
                for (size_t i = 0; i < expected.size(); ++i)
                {
                    const EtcDifferentialA1 actual = findDifferential(blocks.pixels[i], blocks.alphas[i], bTransparentMode);
                    ASSERT_EQ(expected[i].block.ui32High, actual.block.ui32High) << "block " << i;
                    ASSERT_EQ(expected[i].block.ui32Low, actual.block.ui32Low) << "block " << i;
                    ASSERT_EQ(expected[i].uiError, actual.uiError) << "block " << i;
                }
            });
    }
}

TEST(EtcPunchThrough, AnOpaqueGradientBecomesPlanar)
{
    EtcPixels pixels;
    for (size_t i = 0; i < 16; ++i)
    {
        pixels.aui8Red[i] = static_cast<uint8_t>(20 + 30 * (i % 4));
        pixels.aui8Green[i] = static_cast<uint8_t>(200 - 30 * (i / 4));
        pixels.aui8Blue[i] = static_cast<uint8_t>(20 + 20 * (i % 4) + 20 * (i / 4));
    }
    const EtcBlockWords block = encode(pixels, flatAlphas(255));
    EXPECT_EQ(eEtcPlanar, getEtcDifferentialMode(block.ui32High));
    EXPECT_NE(0u, block.ui32High & k_ui32EtcDiffBit);
}

TEST(EtcPunchThrough, OpaqueBlocksReachEveryModeWithTheOpaqueBitSet)
{
    std::array<int, 4> aiSet{};
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(851, 4000))
    {
        const EtcBlockWords block = encode(pixels, flatAlphas(255));
        if (block.ui32High & k_ui32EtcDiffBit)
            ++aiSet[getEtcDifferentialMode(block.ui32High)];
        // Nothing of an opaque block may vanish: black pixels are no remedy that pays.
        EtcAlphas alphas;
        static_cast<void>(decodeEtcPixelsA1(block, alphas));
        EXPECT_EQ(flatAlphas(255).aui8, alphas.aui8);
    }
    EXPECT_GT(aiSet[eEtcDifferential], 20);
    EXPECT_GT(aiSet[eEtcT], 20);
    EXPECT_GT(aiSet[eEtcH], 20);
    EXPECT_GT(aiSet[eEtcPlanar], 20);
}

TEST(EtcPunchThrough, AWhollyTransparentBlockHasThePlainMeansAndNoError)
{
    // Each half has four pixels of 0 and four of 200, so its mean is 100. 100 / 8.225806 is 12.2: level 12 for all three channels,
    // which expands to 99. Every pixel takes table position 1, index 2: all upper bits set, all lower bits clear. The first table stands.
    EtcPixels pixels;
    for (auto* const pPlane : etctest::planesOf(pixels))
        for (size_t i = 0; i < 16; ++i)
            (*pPlane)[i] = (i + i / 4) % 2 == 0 ? 0 : 200;
    const EtcDifferentialA1 found = findDifferential(pixels, flatAlphas(0), true);
    EXPECT_EQ(0u, found.uiError);
    EXPECT_EQ(0x60606000u, found.block.ui32High); // 12 << 27 | 12 << 19 | 12 << 11
    EXPECT_EQ(0xFFFF0000u, found.block.ui32Low);
    EXPECT_EQ(found.block, encode(pixels, flatAlphas(0)));
    EXPECT_TRUE(remarksOn(pixels, flatAlphas(0)).empty());

    EtcAlphas decoded;
    static_cast<void>(decodeEtcPixelsA1(found.block, decoded));
    EXPECT_EQ(flatAlphas(0).aui8, decoded.aui8);
}

TEST(EtcPunchThrough, TransparentPixelsHardlyCountInTheMeans)
{
    // Left: seven pixels of 100 and a transparent one of 255. (700 + 0.0255) / 7.0001 is 100.002, level 12. Without its weight the
    // mean were 119.4, level 14.
    EtcPixels pixels = etctest::flatEtcBlock(100, 100, 100);
    pixels.aui8Red[0] = pixels.aui8Green[0] = pixels.aui8Blue[0] = 255;
    EtcAlphas alphas = flatAlphas(255);
    alphas.aui8[0] = 127;
    const EtcDifferentialA1 found = findDifferential(pixels, alphas, true);
    EXPECT_EQ(0x60606000u, found.block.ui32High);
    EXPECT_EQ(0x00010000u, found.block.ui32Low); // pixel (0, 0) has index 2, all others the base colour
    EXPECT_EQ(15u * 3, found.uiError);           // 99 in place of 100
}

TEST(EtcPunchThrough, ATransparentPixelWeighsATenThousandth)
{
    // In each half seven transparent pixels of 255 and one opaque pixel. The levels of a grey are those below its mean, and level 9
    // begins at 9 * 255 / 31, 74.03. (74 + 0.0007 * 255) / 1.0007 is 74.13, and with 73 it is 73.13.
    EtcAlphas alphas = flatAlphas(0);
    alphas.aui8[0] = alphas.aui8[15] = 255;
    for (const uint8_t ui8Grey : {uint8_t{73}, uint8_t{74}})
    {
        EtcPixels pixels = etctest::flatEtcBlock(255, 255, 255);
        for (auto* const pPlane : etctest::planesOf(pixels))
            (*pPlane)[0] = (*pPlane)[15] = ui8Grey;
        const uint32_t uiLevel = ui8Grey == 73 ? 8 : 9;
        EXPECT_EQ(uiLevel * 0x080808, findDifferential(pixels, alphas, true).block.ui32High >> 8);
    }
}

/// A grey block with one value in the left half and another in the right.
EtcPixels greyHalves(uint8_t ui8Left, uint8_t ui8Right)
{
    EtcPixels pixels = etctest::flatEtcBlock(ui8Left, ui8Left, ui8Left);
    for (size_t i = 0; i < 16; ++i)
        if (i % 4 >= 2)
            pixels.aui8Red[i] = pixels.aui8Green[i] = pixels.aui8Blue[i] = ui8Right;
    return pixels;
}

TEST(EtcPunchThrough, TheSecondColourIsBroughtWithinReachOfTheFirst)
{
    // 0 is level 0 and 41 (41 / 8.225806 is 4.98) level 4, which becomes 3. That is 24, and with table 1 24 + 17 is 41. The first half
    // is exact with table 0: 0 - 8 is clamped to 0.
    EtcDifferentialA1 found = findDifferential(greyHalves(0, 41), flatAlphas(255), false);
    EXPECT_EQ(0x03030306u, found.block.ui32High);
    EXPECT_EQ(0u, found.uiError);

    // 255 is level 31 and 205 (24.9) level 24, which becomes 27. That is 222, and 222 - 17 is 205.
    found = findDifferential(greyHalves(255, 205), flatAlphas(255), false);
    EXPECT_EQ(0xFCFCFC06u, found.block.ui32High); // 31 << 3 | 4
    EXPECT_EQ(0u, found.uiError);
}

TEST(EtcPunchThrough, AnAlphaOf128IsNeitherTransparentNorMeasured)
{
    // The search finds 99 for 100 in sixteen pixels, 48 in all; none of them counts in the measure, and no later block can have less
    // than the 0 that is measured.
    const EtcPixels pixels = etctest::flatEtcBlock(100, 100, 100);
    const EtcBlockWords block = encode(pixels, flatAlphas(128));
    EXPECT_EQ(0x60606000u, block.ui32High);
    EXPECT_EQ(0u, block.ui32Low); // the base colour
    std::vector<std::string> expected(16, "INVALID ALPHA DATA!!\n");
    expected.insert(expected.begin(), "testerr: 48, etcerr: 0.000000\n");
    EXPECT_EQ(expected, remarksOn(pixels, flatAlphas(128)));
}

TEST(EtcPunchThrough, EveryAlphaBut0And255IsToldOnceAPixel)
{
    const EtcPixels pixels = etctest::makeEtcTestBlocks(861, 1)[0];
    EtcAlphas alphas = flatAlphas(255);
    EXPECT_TRUE(remarksOn(pixels, alphas).empty());
    alphas.aui8 = {0, 255, 1, 127, 254, 129, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255};
    EXPECT_THAT(remarksOn(pixels, alphas), testing::ElementsAre("INVALID ALPHA DATA!!\n", "INVALID ALPHA DATA!!\n",
                                                                "INVALID ALPHA DATA!!\n", "INVALID ALPHA DATA!!\n"));
}

TEST(EtcPunchThrough, TellsWhatTheReferenceTells)
{
    const TestBlocks blocks(871, 1000);
    for (size_t i = 0; i < blocks.pixels.size(); ++i)
    {
        // The reference tells the errors that differ; alphas it leaves out.
        g_astrReceived.clear();
        setDiagnosticsHook(receive);
        EtcBlockWords block;
        etcreference::etcFastBlockETC2A1(blocks.pixels[i], blocks.alphas[i], block);
        setDiagnosticsHook(nullptr);
        std::vector<std::string> expected = g_astrReceived;
        for (const uint8_t ui8Alpha : blocks.alphas[i].aui8)
            if (ui8Alpha != 0 && ui8Alpha != 255)
                expected.emplace_back("INVALID ALPHA DATA!!\n");
        ASSERT_EQ(expected, remarksOn(blocks.pixels[i], blocks.alphas[i]));
    }
}

TEST(EtcPunchThrough, EqualErrorsKeepTheEarlierBlock)
{
    // Black is exact in every mode. Level 0 less 8 is clamped to 0, so table position 0, index 3, of the first table in the first block.
    const EtcBlockWords expected = {0, 0xFFFFFFFF};
    EXPECT_EQ(expected, encode(etctest::flatEtcBlock(0, 0, 0), flatAlphas(255)));
}

TEST(EtcPunchThrough, AnAlphaOf128LetsTheOpaqueModesInAndOneOf127KeepsThemOut)
{
    EtcPixels pixels;
    for (size_t i = 0; i < 16; ++i)
        pixels.aui8Red[i] = pixels.aui8Green[i] = pixels.aui8Blue[i] = static_cast<uint8_t>(20 + 24 * (i % 4) + 16 * (i / 4));
    EtcAlphas alphas = flatAlphas(255);
    alphas.aui8[6] = 128;
    EtcBlockWords block = encode(pixels, alphas);
    EXPECT_EQ(eEtcPlanar, getEtcDifferentialMode(block.ui32High));
    EXPECT_NE(0u, block.ui32High & k_ui32EtcDiffBit);
    alphas.aui8[6] = 127;
    block = encode(pixels, alphas);
    EXPECT_NE(eEtcPlanar, getEtcDifferentialMode(block.ui32High));
    EXPECT_EQ(0u, block.ui32High & k_ui32EtcDiffBit);
}

TEST(EtcPunchThrough, TheFlippedSplitStandsOnlyIfItIsStrictlyBetter)
{
    // Both splits of a flat block are alike. Rows of 99 and 66 (99 / 8.225806 is 12.04 and 66 / 8.225806 is 8.02: levels 12 and 8) are the
    // base colours of top and bottom, index 0. Left and right, 82 and 17 from it, would be off by 1 in eight pixels.
    EXPECT_EQ(0u, findDifferential(etctest::flatEtcBlock(99, 99, 99), flatAlphas(255), true).block.ui32High & k_ui32EtcFlipBit);
    EtcPixels pixels;
    for (auto* const pPlane : etctest::planesOf(pixels))
        for (size_t i = 0; i < 16; ++i)
            (*pPlane)[i] = i < 8 ? 99 : 66;
    const EtcDifferentialA1 rows = findDifferential(pixels, flatAlphas(255), true);
    EXPECT_EQ((EtcBlockWords{0x64646401, 0}), rows.block); // 12 << 3 | (8 - 12 & 7) in each channel, flipped
    EXPECT_EQ(0u, rows.uiError);
}

TEST(EtcPunchThrough, ABlockWithATransparentPixelHasNoPlanarModeAndAClearOpaqueBit)
{
    const TestBlocks blocks(881, 6000);
    int iSeen = 0;
    for (size_t i = 0; i < blocks.pixels.size(); ++i)
    {
        const std::array<uint8_t, 16>& aui8 = blocks.alphas[i].aui8;
        if (*std::min_element(aui8.begin(), aui8.end()) >= 128)
            continue;
        ++iSeen;
        const EtcBlockWords block = encode(blocks.pixels[i], blocks.alphas[i]);
        ASSERT_NE(eEtcPlanar, getEtcDifferentialMode(block.ui32High));
        ASSERT_EQ(0u, block.ui32High & k_ui32EtcDiffBit);
    }
    EXPECT_GT(iSeen, 3000);
}

TEST(EtcPunchThrough, TwoColoursWithHolesBecomeTAndKeepTheHoles)
{
    EtcPixels pixels = etctest::flatEtcBlock(255, 0, 0);
    EtcAlphas alphas = flatAlphas(255);
    for (size_t i = 0; i < 16; ++i)
    {
        if ((i + i / 4) % 2 == 0)
        {
            pixels.aui8Red[i] = 0;
            pixels.aui8Blue[i] = 255;
        }
        if (i % 5 == 0)
            alphas.aui8[i] = 0;
    }
    const EtcBlockWords block = encode(pixels, alphas);
    EXPECT_EQ(eEtcT, getEtcDifferentialMode(block.ui32High));
    EXPECT_EQ(0u, block.ui32High & k_ui32EtcDiffBit);
    EtcAlphas decodedAlphas;
    const EtcPixels decoded = decodeEtcPixelsA1(block, decodedAlphas);
    EXPECT_EQ(alphas.aui8, decodedAlphas.aui8);
    // One colour is exact, the other has to be off by the least distance, 3, in the two channels that are not clamped or the one.
    EXPECT_LE(blockErrorRGBA(pixels, alphas, decoded), 16.0 * 2 * 3 * 3);
}

TEST(EtcPunchThrough, AnHBlockPaintsPixelsWithAlphaTransparentAndIsMeasuredSo)
{
    // What the encoder takes for granted of the H search, so that it need not decode.
    const TestBlocks blocks(891, 3000);
    for (size_t i = 0; i < blocks.pixels.size(); ++i)
    {
        const EtcPixels& pixels = blocks.pixels[i];
        const EtcAlphas& alphas = blocks.alphas[i];
        const EtcModeFit fit = fitFastModesA1(pixels, alphas, lbgHalfIntensity(pixels)).h;
        const EtcBlockWords compact = makeFastHA1(pixels, alphas, fit);
        ASSERT_EQ(etcreference::hFastA1(pixels, alphas), compact);
        for (uint32_t y = 0; y < 4; ++y)
            for (uint32_t x = 0; x < 4; ++x)
                ASSERT_EQ(alphas.aui8[etcPixelIndex(x, y)] != 0, getEtcIndex(compact.ui32Low, x, y) == 2);
        EtcAlphas decodedAlphas;
        const EtcPixels black{};
        ASSERT_EQ(blockErrorRGBA(pixels, alphas, black), blockErrorRGBA(pixels, alphas, decodeEtcPixelsA1H(compact, decodedAlphas)));
    }
}

TEST(EtcPunchThrough, AnHBlockIsTakenWhereBlackIsLess)
{
    // Two dark pixels are measured; the bright ones with an alpha of 128 are not, and draw all colours of the other blocks to
    // themselves.
    testsupport::CSeededRandom random(901);
    int iTaken = 0;
    for (int i = 0; i < 2000; ++i)
    {
        EtcPixels pixels;
        EtcAlphas alphas = flatAlphas(128);
        for (std::array<uint8_t, 16>* const pPlane : {&pixels.aui8Red, &pixels.aui8Green, &pixels.aui8Blue})
            for (uint8_t& ui8Value : *pPlane)
                ui8Value = static_cast<uint8_t>(80 + random.below(2) * 100 + random.below(70));
        for (const uint32_t uiPixel : {random.below(8), 8 + random.below(8)})
        {
            pixels.aui8Red[uiPixel] = pixels.aui8Green[uiPixel] = pixels.aui8Blue[uiPixel] = static_cast<uint8_t>(random.below(40));
            alphas.aui8[uiPixel] = 255;
        }
        alphas.aui8[random.below(16)] = 0; // so that no opaque mode follows
        const EtcBlockWords block = encode(pixels, alphas);
        if (getEtcDifferentialMode(block.ui32High) != eEtcH)
            continue;
        ++iTaken;
        EtcAlphas ignored;
        const double fError = blockErrorRGBA(pixels, alphas, decodeEtcPixelsA1(block, ignored));
        const EtcBlockWords differential = findDifferential(pixels, alphas, true).block;
        ASSERT_LT(fError, blockErrorRGBA(pixels, alphas, decodeEtcPixelsA1(differential, ignored)));
        ASSERT_EQ(0u, block.ui32High & k_ui32EtcDiffBit);
        EtcBlockWords expected;
        etcreference::etcFastBlockETC2A1(pixels, alphas, expected);
        ASSERT_EQ(expected, block);
    }
    EXPECT_GT(iTaken, 20);
}

TEST(EtcPunchThrough, OpaqueModesHaveToBeatABlackHBlock)
{
    // As before without a transparent pixel, and with few colours, so that opaque modes come near.
    testsupport::CSeededRandom random(911);
    for (int i = 0; i < 3000; ++i)
    {
        EtcColour aColours[2];
        for (EtcColour& colour : aColours)
            colour = {static_cast<uint8_t>(random.below(256)), static_cast<uint8_t>(random.below(256)),
                      static_cast<uint8_t>(random.below(256))};
        EtcPixels pixels;
        EtcAlphas alphas = flatAlphas(128);
        for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
        {
            EtcColour colour = aColours[random.below(2)];
            if (random.below(8) == 0)
            {
                const auto ui8Dark = static_cast<uint8_t>(random.below(12));
                colour = {ui8Dark, ui8Dark, static_cast<uint8_t>(ui8Dark + random.below(12))};
                alphas.aui8[uiPixel] = 255;
            }
            pixels.aui8Red[uiPixel] = colour[0];
            pixels.aui8Green[uiPixel] = colour[1];
            pixels.aui8Blue[uiPixel] = colour[2];
        }
        EtcBlockWords expected;
        etcreference::etcFastBlockETC2A1(pixels, alphas, expected);
        ASSERT_EQ(expected, encode(pixels, alphas)) << "block " << i;
    }
}

} // namespace
