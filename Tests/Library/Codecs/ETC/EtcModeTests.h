#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

#include "Codecs/ETC/EtcModeFit.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcTwoColours.h"
#include "Support/EveryInstructionSet.h"

/// What the tests of T and H mode share.
namespace etctest
{

using moxtexture::EtcBlockWords;
using moxtexture::EtcColour;
using moxtexture::EtcColourPair;
using moxtexture::EtcModeFit;

inline EtcColourPair greyLevels(uint8_t ui8First, uint8_t ui8Second)
{
    return {EtcColour{ui8First, ui8First, ui8First}, EtcColour{ui8Second, ui8Second, ui8Second}};
}

/// Four rows alike.
inline EtcPixels rowsOfGreys(const std::array<uint8_t, 4>& aui8)
{
    EtcPixels pixels;
    for (auto* const pPlane : planesOf(pixels))
        for (size_t i = 0; i < 16; ++i)
            (*pPlane)[i] = aui8[i % 4];
    return pixels;
}

/// A colour of 0xRRGGBB.
inline EtcColour colourOf(uint32_t ui32)
{
    return {static_cast<uint8_t>(ui32 >> 16), static_cast<uint8_t>(ui32 >> 8 & 255), static_cast<uint8_t>(ui32 & 255)};
}

/// A block from its pixels, row after row, each 0xRRGGBB.
inline EtcPixels blockOfColours(const std::array<uint32_t, 16>& aui32)
{
    EtcPixels pixels;
    for (size_t i = 0; i < 16; ++i)
    {
        const EtcColour colour = colourOf(aui32[i]);
        pixels.aui8Red[i] = colour[0];
        pixels.aui8Green[i] = colour[1];
        pixels.aui8Blue[i] = colour[2];
    }
    return pixels;
}

/// A block and the words that a program of its own, which shares nothing with this one, stores for it.
struct IndependentBlock
{
    std::array<uint32_t, 16> aui32Colours;
    EtcBlockWords words;
};

inline void expectFit(const EtcModeFit& fit, const EtcModeFit& expected)
{
    EXPECT_EQ(fit.levels, expected.levels);
    EXPECT_EQ(fit.uiDistance, expected.uiDistance);
    EXPECT_EQ(fit.ui32Indices, expected.ui32Indices);
    EXPECT_EQ(fit.uiError, expected.uiError);
}

/// Levels for a block: those of its clusters, or by chance, so that far and equal colours are met too.
inline EtcColourPair levelsForBlock(const EtcPixels& block, size_t uiNumber)
{
    if (uiNumber % 2 == 0)
        return etcreference::quantise444Pair(etcreference::lbgHalfIntensity(block));
    CSeededRandom random(uiNumber);
    EtcColourPair levels;
    for (EtcColour& colour : levels)
        for (uint8_t& ui8Level : colour)
            ui8Level = static_cast<uint8_t>(random.below(16));
    if (uiNumber % 8 == 1)
        levels[1] = levels[0];
    return levels;
}

/// Compares fits of every block, for every instruction set.
/// @param library, reference  give the fit of a block and its number
template <typename Library, typename Reference>
void expectSameFits(const std::vector<EtcPixels>& blocks, Library library, Reference reference)
{
    std::vector<EtcModeFit> expected;
    for (size_t i = 0; i < blocks.size(); ++i)
        expected.push_back(reference(blocks[i], i));
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
            {
                expectFit(library(blocks[i], i), expected[i]);
                ASSERT_FALSE(::testing::Test::HasFailure()) << "block " << i;
            }
        });
}

template <typename Library, typename Reference>
void expectReferenceFits(const std::vector<EtcPixels>& blocks, Library library, Reference reference)
{
    expectSameFits(
        blocks, [&](const EtcPixels& block, size_t i) { return library(block, levelsForBlock(block, i)); },
        [&](const EtcPixels& block, size_t i) { return reference(block, levelsForBlock(block, i)); });
}

template <typename Library, typename Reference>
void expectReferenceFitsA1(const std::vector<EtcPixels>& blocks, const std::vector<EtcAlphas>& alphas, Library library, Reference reference)
{
    expectSameFits(
        blocks, [&](const EtcPixels& block, size_t i) { return library(block, alphas[i], levelsForBlock(block, i)); },
        [&](const EtcPixels& block, size_t i) { return reference(block, alphas[i], levelsForBlock(block, i)); });
}

using BlockSearch = uint32_t (*)(const EtcPixels&, EtcBlockWords&);

/// Compares words and errors of every block, for every instruction set.
inline void expectReferenceBlocks(const std::vector<EtcPixels>& blocks, BlockSearch pLibrary, BlockSearch pReference)
{
    std::vector<EtcBlockWords> expected(blocks.size());
    std::vector<uint32_t> aui32Errors;
    for (size_t i = 0; i < blocks.size(); ++i)
        aui32Errors.push_back(pReference(blocks[i], expected[i]));
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
            {
                EtcBlockWords compact;
                ASSERT_EQ(pLibrary(blocks[i], compact), aui32Errors[i]) << "block " << i;
                ASSERT_EQ(compact, expected[i]) << "block " << i;
            }
        });
}

} // namespace etctest
