#include "Codecs/ETC/EtcFastETC2.h"

#include <gtest/gtest.h>

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcFastBlock.h"
#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcTModes.h"
#include "EtcModeTests.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcFastETC2.h"
#include "Support/EveryInstructionSet.h"

namespace
{

using namespace moxtexture;

enum class EMode
{
    eETC1,
    eT,
    eH,
    ePlanar
};

EMode modeOf(const EtcBlockWords& block)
{
    if ((block.ui32High & k_ui32EtcDiffBit) == 0)
        return EMode::eETC1;
    switch (getEtcDifferentialMode(block.ui32High))
    {
    case eEtcT:
        return EMode::eT;
    case eEtcH:
        return EMode::eH;
    case eEtcPlanar:
        return EMode::ePlanar;
    default:
        return EMode::eETC1;
    }
}

/// A block and the words that a program of its own, which shares nothing with this one, stores for it, plain and perceptual.
struct IndependentBlocks
{
    std::array<uint32_t, 16> aui32Colours;
    EtcBlockWords plain;
    EtcBlockWords perceptual;
};

// Planar, T and H mode win, refined or not; planar, H and T mode find equal errors.
constexpr IndependentBlocks k_aIndependentBlocks[] = {
    {{0x4E0A91, 0x4E0B92, 0x4F0B91, 0x4E0B92, 0x4F0A92, 0x4F0B92, 0x4E0A92, 0x4F0B91, 0x4E0B92, 0x4F0B91, 0x4F0B92, 0x4F0A91, 0x4F0B92,
      0x4E0A92, 0x4E0B92, 0x4F0A91},
     {0x0D195193, 0xFFFFFFFF},
     {0x0D195193, 0xFFFFFFFF}},
    {{0xB25303, 0xAA5B03, 0xAA5B0B, 0xAA5B03, 0xAA5B0B, 0xB25303, 0xB25B03, 0xB25B0B, 0xAA5B0B, 0xB25B03, 0xAA530B, 0xAA530B, 0xAA5B0B,
      0xB2530B, 0xB25B03, 0xB25B0B},
     {0xA8580802, 0x54310000},
     {0xF251A503, 0x0000BBFF}},
    {{0x6CB10F, 0x7DBC00, 0x65C800, 0xE26D37, 0xDB9230, 0x6DC118, 0xD96A00, 0x72CB00, 0x9CA403, 0xDD8435, 0x70C600, 0xE46314, 0xDB6B0D,
      0x7AAD25, 0x8BC51E, 0xD57513},
     {0x6B153D8A, 0x2DB5E719},
     {0x6B153D8A, 0x2DB5E719}},
    {{0x51317B, 0x50307B, 0x52307C, 0x50317C, 0x51307D, 0x50307B, 0x522F7D, 0x502F7B, 0x51307D, 0x51317C, 0x512F7D, 0x52307C, 0x50307B,
      0x50307D, 0x52307B, 0x51307D},
     {0xA8B0FBAA, 0x30FA861F},
     {0xA8B0FBAA, 0x30FA861F}},
    {{0x00BBD1, 0x7079B9, 0x08BAD0, 0x02AED3, 0x09BBD1, 0x00AFD2, 0x00AEC8, 0x00B6C9, 0x09BBCA, 0x09B6D3, 0x00B9CF, 0x03B6CB, 0x00B9CE,
      0x00B4CF, 0x00AED5, 0x627EBD},
     {0x0E7B0BC2, 0x7EA87BE7},
     {0x0E7B0BC2, 0x7EA87BE7}},
    {{0xCAAB9B, 0xC3A599, 0xC8B198, 0x0AF722, 0xCCA799, 0x18FB1F, 0x15F71E, 0x0AF427, 0xCAA89A, 0x07EC24, 0xC5A998, 0xCCA894, 0xCDB294,
      0xC7AD9E, 0x13ED29, 0xC5B1A3},
     {0x8F05654A, 0xC59F4456},
     {0x8F05654A, 0xC59F4456}},
};

void expectReference(void (*pEncode)(const EtcPixels&, EtcBlockWords&), void (*pReference)(const EtcPixels&, EtcBlockWords&),
                     const std::vector<EtcPixels>& blocks)
{
    std::vector<EtcBlockWords> expected(blocks.size());
    for (size_t i = 0; i < blocks.size(); ++i)
        pReference(blocks[i], expected[i]);
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
            {
                EtcBlockWords actual;
                pEncode(blocks[i], actual);
                ASSERT_EQ(expected[i].ui32High, actual.ui32High) << "block " << i;
                ASSERT_EQ(expected[i].ui32Low, actual.ui32Low) << "block " << i;
            }
        });
}

TEST(EtcFastETC2, GivesTheBlocksOfAnIndependentProgram)
{
    for (const IndependentBlocks& blocks : k_aIndependentBlocks)
        forEachInstructionSet(
            [&]
            {
                EtcBlockWords block;
                etcFastBlockETC2(etctest::blockOfColours(blocks.aui32Colours), block);
                EXPECT_EQ(blocks.plain, block);
                etcFastBlockETC2Perceptual(etctest::blockOfColours(blocks.aui32Colours), block);
                EXPECT_EQ(blocks.perceptual, block);
            });
}

TEST(EtcFastETC2, GivesTheBlocksOfTheReference)
{
    expectReference(etcFastBlockETC2, etcreference::etcFastBlockETC2, etctest::makeEtcTestBlocks(821, 20000));
}

TEST(EtcFastETC2, GivesTheBlocksOfThePerceptualReference)
{
    expectReference(etcFastBlockETC2Perceptual, etcreference::etcFastBlockETC2Perceptual, etctest::makeEtcTestBlocks(822, 20000));
}

TEST(EtcFastETC2, AGradientBecomesPlanar)
{
    EtcPixels pixels;
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            pixels.aui8Red[etcPixelIndex(x, y)] = static_cast<uint8_t>(20 + 30 * x);
            pixels.aui8Green[etcPixelIndex(x, y)] = static_cast<uint8_t>(200 - 30 * y);
            pixels.aui8Blue[etcPixelIndex(x, y)] = static_cast<uint8_t>(20 + 20 * x + 20 * y);
        }
    for (const auto encode : {etcFastBlockETC2, etcFastBlockETC2Perceptual})
    {
        EtcBlockWords block;
        encode(pixels, block);
        EXPECT_EQ(EMode::ePlanar, modeOf(block));
        EXPECT_LT(blockErrorRGB(pixels, decodeEtcPixelsETC2(block)), 16.0 * 3 * 2 * 2); // each channel within 2 of the gradient
    }
}

TEST(EtcFastETC2, WhatETC1GivesWithoutErrorStands)
{
    // 255 + 2 is clamped to 255, so the first table is exact; all later modes are no better.
    const EtcPixels pixels = etctest::flatEtcBlock(255, 255, 255);
    for (const auto encode : {etcFastBlockETC2, etcFastBlockETC2Perceptual})
    {
        EtcBlockWords block;
        EtcBlockWords blockETC1;
        encode(pixels, block);
        EXPECT_EQ(0.0, etcFastBlockETC1(pixels, blockETC1));
        EXPECT_EQ(blockETC1, block);
    }
}

TEST(EtcFastETC2, TwoMixedColoursBecomeTOrHWithBit1Set)
{
    // A chequerboard of two colours that the levels of 4 bits have, too far apart for one base colour.
    EtcPixels pixels = etctest::flatEtcBlock(255, 0, 0);
    for (size_t i = 0; i < 16; ++i)
        if ((i + i / 4) % 2 == 0)
        {
            pixels.aui8Red[i] = 0;
            pixels.aui8Blue[i] = 255;
        }
    for (const auto encode : {etcFastBlockETC2, etcFastBlockETC2Perceptual})
    {
        EtcBlockWords block;
        encode(pixels, block);
        EXPECT_TRUE(modeOf(block) == EMode::eT || modeOf(block) == EMode::eH);
        // T: one colour is exact, the other is its paint without distance. H: both are off by 3 in the channels that aren't clamped.
        EXPECT_EQ(0.0, blockErrorRGB(pixels, decodeEtcPixelsETC2(block)));
    }
}

TEST(EtcFastETC2, NoBlockIsWorseThanETC1AndEveryModeIsUsed)
{
    std::array<int, 4> aiCount{};
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(823, 4000))
    {
        EtcBlockWords block;
        EtcBlockWords blockETC1;
        etcFastBlockETC2(pixels, block);
        ASSERT_LE(blockErrorRGB(pixels, decodeEtcPixelsETC2(block)), etcFastBlockETC1(pixels, blockETC1));
        ++aiCount[static_cast<size_t>(modeOf(block))];
    }
    for (const int iCount : aiCount)
        EXPECT_GT(iCount, 20);
}

TEST(EtcFastETC2, ThePerceptualFormsRefinementIsPlainAndReplacesEvenABetterBlock)
{
    int iWorse = 0;
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(824, 4000))
    {
        EtcBlockWords block;
        etcFastBlockETC2Perceptual(pixels, block);
        const EMode eMode = modeOf(block);
        if (eMode != EMode::eT && eMode != EMode::eH)
            continue;
        EtcBlockWords compact;
        const bool bT = eMode == EMode::eT;
        static_cast<void>(bT ? tFastPerceptual(pixels, compact) : hFastPerceptual(pixels, compact));
        const EtcBlockWords fast = bT ? stuffT(compact) : stuffH(compact);
        const EtcBlockWords refined = bT ? stuffT(tRefine(pixels)) : stuffH(hRefine(pixels));
        const double fFast = 1000.0 * blockErrorPerceptual(pixels, decodeEtcPixelsETC2(fast));
        const double fRefined = blockErrorRGB(pixels, decodeEtcPixelsETC2(refined));
        ASSERT_EQ(fFast > fRefined ? refined : fast, block);
        if (1000.0 * blockErrorPerceptual(pixels, decodeEtcPixelsETC2(block)) > fFast)
            ++iWorse;
    }
    EXPECT_GT(iWorse, 20);
}

} // namespace
