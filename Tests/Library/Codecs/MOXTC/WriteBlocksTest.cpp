#include "Codecs/MOXTC/WriteBlocks.h"

#include <gtest/gtest.h>

#include <array>

using namespace moxtexture;

namespace
{

using Codes4bpp = std::array<uint8_t, 16>;
using Codes2bpp = std::array<uint8_t, 32>;

constexpr uint32_t rgba(uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, uint32_t uiAlpha)
{
    return uiRed | uiGreen << 8 | uiBlue << 16 | uiAlpha << 24;
}

/// A grid of blocks whose colours are all 0.
CompressorImages makeGrid(uint32_t uiBlocksX, uint32_t uiBlocksY, bool b2bpp)
{
    CompressorImages images;
    images.uiBlocksX = uiBlocksX;
    images.uiBlocksY = uiBlocksY;
    images.ui8BlockWidth = b2bpp ? 8 : 4;
    images.colourA.resize(images.getBlockCount());
    images.colourB.resize(images.getBlockCount());
    return images;
}

uint32_t modulationOf(bool b2bpp, const uint8_t* pui8Codes, uint32_t uiMode)
{
    return makeBlockWord(makeGrid(1, 1, b2bpp), nullptr, 0, {pui8Codes, uiMode}).ui32Modulation;
}

enum class EGeneration
{
    eMOXTC1,
    eMOXTCIISoft,
    eMOXTCIIHard,
};

uint32_t coloursOf(EGeneration eGeneration, uint32_t uiColourA, uint32_t uiColourB, bool b2bpp = false, uint32_t uiMode = 0)
{
    CompressorImages images = makeGrid(1, 1, b2bpp);
    images.colourA[0] = uiColourA;
    images.colourB[0] = uiColourB;
    const Codes2bpp codes{};
    const uint8_t ui8Hard = eGeneration == EGeneration::eMOXTCIIHard ? 1 : 0;
    return makeBlockWord(images, eGeneration == EGeneration::eMOXTC1 ? nullptr : &ui8Hard, 0, {codes.data(), uiMode}).ui32Colours;
}

// The same two colours in every test of packing:
//   A opaque       r 255 > 31, g 8 > 1, b 31 > 1 (4 bits)        31 << 10 | 1 << 5 | 1 << 1                 = 0x7C22
//   A translucent  a 191 > 5, r 255 > 15, g 47 > 2, b 127 > 3    5 << 12 | 15 << 8 | 2 << 4 | 3 << 1        = 0x5F26
//   B opaque       r 128 > 16, g 71 > 8, b 255 > 31              16 << 26 | 8 << 21 | 31 << 16              = 0x411F0000
//   B translucent  a 254 > 7, r 16 > 1, g 239 > 14, b 48 > 3     7 << 28 | 1 << 24 | 14 << 20 | 3 << 16     = 0x71E30000
constexpr uint32_t k_uiOpaqueA = rgba(255, 8, 31, 255);
constexpr uint32_t k_uiTranslucentA = rgba(255, 47, 127, 191);
constexpr uint32_t k_uiOpaqueB = rgba(128, 71, 255, 255);
constexpr uint32_t k_uiTranslucentB = rgba(16, 239, 48, 254);

} // namespace

TEST(WriteBlocks, PacksTwoBitsAPixelAt4bppInEitherMode)
{
    const Codes4bpp codes{0, 1, 2, 3,  // 0 | 1 << 2 | 2 << 4 | 3 << 6 = 0xE4
                          3, 2, 1, 0,  // 3 | 2 << 2 | 1 << 4          = 0x1B
                          0, 0, 0, 0,  //
                          3, 3, 3, 3}; // 0xFF
    EXPECT_EQ(0xFF001BE4u, modulationOf(false, codes.data(), 0));
    EXPECT_EQ(0xFF001BE4u, modulationOf(false, codes.data(), 1));
}

TEST(WriteBlocks, PacksOneBitAPixelInMode0At2bpp)
{
    Codes2bpp codes{};
    codes[0] = codes[7] = codes[3 * 8 + 1] = 3;
    EXPECT_EQ(uint32_t{1} | 1u << 7 | 1u << 25, modulationOf(true, codes.data(), 0));
}

TEST(WriteBlocks, PacksTheStoredPositionsInOrderInModes1To3)
{
    Codes2bpp codes{};
    codes[2] = 1;                               // the second stored of row 0: bits 2 and 3
    codes[8 + 1] = 2;                           // the first stored of row 1: bits 8 and 9
    codes[3 * 8 + 7] = 3;                       // the last of all: bits 30 and 31
    codes[1] = codes[8] = codes[3 * 8 + 6] = 3; // not stored
    EXPECT_EQ(0xC0000204u, modulationOf(true, codes.data(), 1));
    EXPECT_EQ(0xC0000205u, modulationOf(true, codes.data(), 2));
    EXPECT_EQ(0xC0100205u, modulationOf(true, codes.data(), 3));
}

TEST(WriteBlocks, SetsAndClearsTheBitsThatChooseTheSubMode)
{
    Codes2bpp all;
    all.fill(3);
    EXPECT_EQ(0xFFFFFFFEu, modulationOf(true, all.data(), 1)); // clears bit 0
    EXPECT_EQ(0xFFEFFFFFu, modulationOf(true, all.data(), 2)); // sets bit 0, clears bit 20
    EXPECT_EQ(0xFFFFFFFFu, modulationOf(true, all.data(), 3)); // sets both
    const Codes2bpp none{};
    EXPECT_EQ(0u, modulationOf(true, none.data(), 1));
    EXPECT_EQ(1u, modulationOf(true, none.data(), 2));
    EXPECT_EQ(0x00100001u, modulationOf(true, none.data(), 3));
}

TEST(WriteBlocks, LeavesBit20ToTheCodeOfItsPixelInMode1)
{
    Codes2bpp codes{};
    codes[2 * 8 + 4] = 1;
    EXPECT_EQ(1u << 20, modulationOf(true, codes.data(), 1));
}

TEST(WriteBlocks, SetTheModeFlagForEveryModeBut0)
{
    for (const EGeneration eGeneration : {EGeneration::eMOXTC1, EGeneration::eMOXTCIISoft, EGeneration::eMOXTCIIHard})
    {
        EXPECT_EQ(0u, coloursOf(eGeneration, 0, 0, false, 0) & 1);
        EXPECT_EQ(1u, coloursOf(eGeneration, 0, 0, false, 1) & 1);
        EXPECT_EQ(0u, coloursOf(eGeneration, 0, 0, true, 0) & 1);
        for (uint32_t uiMode = 1; uiMode < 4; ++uiMode)
            EXPECT_EQ(1u, coloursOf(eGeneration, 0, 0, true, uiMode) & 1);
    }
}

TEST(WriteBlocks, PackEachColourByItsOwnAlphaInMOXTC1)
{
    constexpr uint32_t uiOpaqueFlagA = 0x8000;
    constexpr uint32_t uiOpaqueFlagB = 0x80000000;
    EXPECT_EQ(0x411F7C22u | uiOpaqueFlagA | uiOpaqueFlagB, coloursOf(EGeneration::eMOXTC1, k_uiOpaqueA, k_uiOpaqueB));
    EXPECT_EQ(0x71E37C22u | uiOpaqueFlagA, coloursOf(EGeneration::eMOXTC1, k_uiOpaqueA, k_uiTranslucentB));
    EXPECT_EQ(0x411F5F26u | uiOpaqueFlagB, coloursOf(EGeneration::eMOXTC1, k_uiTranslucentA, k_uiOpaqueB));
    EXPECT_EQ(0x71E35F26u, coloursOf(EGeneration::eMOXTC1, k_uiTranslucentA, k_uiTranslucentB));
}

TEST(WriteBlocks, PackBothColoursAlikeInMOXTCII)
{
    EXPECT_EQ(0x411F7C22u | 0x80000000, coloursOf(EGeneration::eMOXTCIISoft, k_uiOpaqueA, k_uiOpaqueB));
    // One translucent colour makes both so. A: a 7, r 15, g 0, b 0 is 0x7F00. B: a 7, r 8, g 4, b 15 is 0x784F0000.
    EXPECT_EQ(0x71E37F00u, coloursOf(EGeneration::eMOXTCIISoft, k_uiOpaqueA, k_uiTranslucentB));
    EXPECT_EQ(0x784F5F26u, coloursOf(EGeneration::eMOXTCIISoft, k_uiTranslucentA, k_uiOpaqueB));
    EXPECT_EQ(0x71E35F26u, coloursOf(EGeneration::eMOXTCIISoft, k_uiTranslucentA, k_uiTranslucentB));
}

TEST(WriteBlocks, PutTheHardFlagWhereMOXTC1HasTheOpacityOfA)
{
    EXPECT_EQ(0x411F7C22u | 0x80008000, coloursOf(EGeneration::eMOXTCIIHard, k_uiOpaqueA, k_uiOpaqueB));
    EXPECT_EQ(0x71E35F26u | 0x8000, coloursOf(EGeneration::eMOXTCIIHard, k_uiTranslucentA, k_uiTranslucentB));
}

TEST(WriteBlocks, GoInMortonOrderOrInRows)
{
    // The bit of y is the lowest, then the low bit of x; the rest of x goes above: 0 2 4 6 / 1 3 5 7.
    constexpr std::array<size_t, 8> auiMortonPlaces{0, 2, 4, 6, 1, 3, 5, 7};
    CompressorImages images = makeGrid(4, 2, false);
    const std::array<uint8_t, 8> aui8Hard{0, 1, 0, 1, 1, 0, 1, 0};
    for (uint32_t i = 0; i < 8; ++i)
        images.colourA[i] = rgba(i * 16, 0, 0, 0); // translucent, red i
    // Every block's first code is its number modulo 4.
    std::array<Codes4bpp, 8> codes{};
    for (uint8_t i = 0; i < 8; ++i)
        codes[i][0] = i % 4;
    const auto getModulation = [&](size_t uiBlock) { return ChosenModulation{codes[uiBlock].data(), 0}; };

    std::array<uint8_t, 64> morton{};
    writeBlocks(images, nullptr, true, morton.data(), getModulation);
    std::array<uint8_t, 64> rows{};
    writeBlocks(images, aui8Hard.data(), false, rows.data(), getModulation);
    for (uint32_t i = 0; i < 8; ++i)
    {
        const BlockWord inMorton = loadBlock(morton.data() + 8 * auiMortonPlaces[i]);
        EXPECT_EQ(i << 8, inMorton.ui32Colours) << "block " << i;
        EXPECT_EQ(i % 4, inMorton.ui32Modulation) << "block " << i;
        const BlockWord inRows = loadBlock(rows.data() + 8 * size_t{i});
        EXPECT_EQ(i << 8 | uint32_t{aui8Hard[i]} << 15, inRows.ui32Colours) << "block " << i;
        EXPECT_EQ(i % 4, inRows.ui32Modulation) << "block " << i;
    }
}
