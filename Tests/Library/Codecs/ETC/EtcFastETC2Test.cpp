#include "Codecs/ETC/EtcFastETC2.h"

#include <gtest/gtest.h>

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcFastBlock.h"
#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcTModes.h"
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
