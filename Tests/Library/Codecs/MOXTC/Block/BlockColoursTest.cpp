#include "Codecs/MOXTC/Block/BlockColours.h"

#include <gmock/gmock.h>

using namespace moxtexture;
using testing::ElementsAre;

namespace
{

/// Fields of a colour word at their places.
uint32_t opaqueA(uint32_t uiRed5, uint32_t uiGreen5, uint32_t uiBlue4)
{
    return uiRed5 << 10 | uiGreen5 << 5 | uiBlue4 << 1;
}
uint32_t translucentA(uint32_t uiAlpha3, uint32_t uiRed4, uint32_t uiGreen4, uint32_t uiBlue3)
{
    return uiAlpha3 << 12 | uiRed4 << 8 | uiGreen4 << 4 | uiBlue3 << 1;
}
uint32_t opaqueB(uint32_t uiRed5, uint32_t uiGreen5, uint32_t uiBlue5)
{
    return uiRed5 << 26 | uiGreen5 << 21 | uiBlue5 << 16;
}
uint32_t translucentB(uint32_t uiAlpha3, uint32_t uiRed4, uint32_t uiGreen4, uint32_t uiBlue4)
{
    return uiAlpha3 << 28 | uiRed4 << 24 | uiGreen4 << 20 | uiBlue4 << 16;
}

constexpr uint32_t k_ui32Bit15 = 0x8000;
constexpr uint32_t k_ui32Bit31 = 0x80000000;
constexpr bool k_abGenerations[] = {false, true};

/// The bits of the other colour and both low flags set: they must not leak in.
constexpr uint32_t k_ui32NoiseForA = 0x7FFF0001;
constexpr uint32_t k_ui32NoiseForB = 0x00007FFF;

std::array<uint8_t, 4> unpackA(uint32_t ui32Colours, bool bII)
{
    return unpackColourA(ui32Colours, bII).aui8;
}
std::array<uint8_t, 4> unpackB(uint32_t ui32Colours, bool bII)
{
    return unpackColourB(ui32Colours, bII).aui8;
}

/// @return the packed word of two colours of 8-bit red, green, blue, alpha
uint32_t pack(const std::array<uint8_t, 4>& a, const std::array<uint8_t, 4>& b, bool bII)
{
    return packColours(a.data(), b.data(), bII);
}

} // namespace

TEST(BlockColours, AnOpaqueColourAHasFiveFiveAndFourBits)
{
    // Blue 1011 becomes 10110 | 1 = 23.
    EXPECT_THAT(unpackA(opaqueA(22, 9, 11) | k_ui32Bit15 | k_ui32NoiseForA, false), ElementsAre(22, 9, 23, 15));
    EXPECT_THAT(unpackA(opaqueA(22, 9, 11) | k_ui32Bit31 | k_ui32NoiseForA, true), ElementsAre(22, 9, 23, 15));
}

TEST(BlockColours, ATranslucentColourAHasFourFourAndThreeBitsAndAlphaOfThreeWithTheLowBitClear)
{
    // Red 1101 becomes 11010 | 1 = 27, green 0110 becomes 01100 | 0 = 12, blue 101 becomes 10100 | 10 = 22, alpha 101 becomes 1010.
    for (const bool bII : k_abGenerations)
        EXPECT_THAT(unpackA(translucentA(5, 13, 6, 5) | k_ui32NoiseForA, bII), ElementsAre(27, 12, 22, 10));
}

TEST(BlockColours, AnOpaqueColourBHasFiveBitsEach)
{
    for (const bool bII : k_abGenerations)
        EXPECT_THAT(unpackB(opaqueB(17, 30, 5) | k_ui32Bit31 | k_ui32NoiseForB, bII), ElementsAre(17, 30, 5, 15));
}

TEST(BlockColours, ATranslucentColourBHasFourBitsEachAndTheLowBitOfAlphaSetInTheSecondGenerationOnly)
{
    // Red 1001 becomes 10010 | 1 = 19, green 0011 becomes 00110 | 0 = 6, blue 1111 becomes 11110 | 1 = 31, alpha 110 becomes 110x.
    EXPECT_THAT(unpackB(translucentB(6, 9, 3, 15) | k_ui32NoiseForB, false), ElementsAre(19, 6, 31, 12));
    EXPECT_THAT(unpackB(translucentB(6, 9, 3, 15) | k_ui32NoiseForB, true), ElementsAre(19, 6, 31, 13));
}

TEST(BlockColours, TheHighestTranslucentAlphaOfBIsFifteenInTheSecondGenerationWhereThatOfAIsFourteen)
{
    EXPECT_EQ(14, unpackA(translucentA(7, 0, 0, 0), true)[3]);
    EXPECT_EQ(15, unpackB(translucentB(7, 0, 0, 0), true)[3]);
    EXPECT_EQ(1, unpackB(translucentB(0, 0, 0, 0), true)[3]);
    EXPECT_EQ(14, unpackB(translucentB(7, 0, 0, 0), false)[3]);
    EXPECT_EQ(0, unpackB(translucentB(0, 0, 0, 0), false)[3]);
}

TEST(BlockColours, TheFirstGenerationHasAnOpacityFlagForEachColour)
{
    const uint32_t ui32Fields = translucentA(2, 0, 0, 0) | translucentB(3, 0, 0, 0);
    EXPECT_EQ(4, unpackA(ui32Fields | k_ui32Bit31, false)[3]);
    EXPECT_EQ(15, unpackB(ui32Fields | k_ui32Bit31, false)[3]);
    EXPECT_EQ(15, unpackA(ui32Fields | k_ui32Bit15, false)[3]);
    EXPECT_EQ(6, unpackB(ui32Fields | k_ui32Bit15, false)[3]);
}

TEST(BlockColours, TheSecondGenerationHasOneOpacityFlagForBothColours)
{
    const uint32_t ui32Fields = translucentA(2, 0, 0, 0) | translucentB(3, 0, 0, 0);
    EXPECT_EQ(15, unpackA(ui32Fields | k_ui32Bit31, true)[3]);
    EXPECT_EQ(15, unpackB(ui32Fields | k_ui32Bit31, true)[3]);
    // Bit 15 is the flag of hard transitions.
    EXPECT_EQ(4, unpackA(ui32Fields | k_ui32Bit15, true)[3]);
    EXPECT_EQ(7, unpackB(ui32Fields | k_ui32Bit15, true)[3]);
}

TEST(BlockColours, ExpandToEightBitsByRepeatingTheHighBits)
{
    // 10110 becomes 10110101 = 181, 00001 becomes 00001000 = 8, alpha 1010 becomes 10101010 = 170.
    EXPECT_THAT(expandColour({{22, 1, 31, 10}}), ElementsAre(181, 8, 255, 170));
    EXPECT_THAT(expandColour({{0, 4, 30, 15}}), ElementsAre(0, 33, 247, 255));
}

TEST(BlockColours, OpaquePairsKeepTheTopBits)
{
    // 0xFF, 0x87, 0x4F: 31, 16 and the top four bits of 01001111 for A; 0x10, 0xE7, 0x4F: 2, 28, 9 for B.
    EXPECT_EQ(k_ui32Bit15 | k_ui32Bit31 | opaqueA(31, 16, 4) | opaqueB(2, 28, 9),
              pack({0xFF, 0x87, 0x4F, 255}, {0x10, 0xE7, 0x4F, 255}, false));
    EXPECT_EQ(k_ui32Bit31 | opaqueA(31, 16, 4) | opaqueB(2, 28, 9), pack({0xFF, 0x87, 0x4F, 255}, {0x10, 0xE7, 0x4F, 255}, true));
}

TEST(BlockColours, TranslucentPairsKeepThreeBitsOfAlpha)
{
    // Alpha 254 is 111, 0x5F is 010.
    for (const bool bII : k_abGenerations)
        EXPECT_EQ(translucentA(7, 15, 8, 2) | translucentB(2, 1, 14, 4), pack({0xFF, 0x87, 0x4F, 254}, {0x10, 0xE7, 0x4F, 0x5F}, bII));
}

TEST(BlockColours, OneOpaqueColourStaysOpaqueAloneInTheFirstGeneration)
{
    EXPECT_EQ(k_ui32Bit15 | opaqueA(31, 16, 4) | translucentB(7, 1, 14, 4), pack({0xFF, 0x87, 0x4F, 255}, {0x10, 0xE7, 0x4F, 254}, false));
    EXPECT_EQ(k_ui32Bit31 | translucentA(7, 15, 8, 2) | opaqueB(2, 28, 9), pack({0xFF, 0x87, 0x4F, 254}, {0x10, 0xE7, 0x4F, 255}, false));
}

TEST(BlockColours, OneOpaqueColourBecomesTranslucentInTheSecondGeneration)
{
    EXPECT_EQ(translucentA(7, 15, 8, 2) | translucentB(7, 1, 14, 4), pack({0xFF, 0x87, 0x4F, 255}, {0x10, 0xE7, 0x4F, 254}, true));
    EXPECT_EQ(translucentA(7, 15, 8, 2) | translucentB(7, 1, 14, 4), pack({0xFF, 0x87, 0x4F, 254}, {0x10, 0xE7, 0x4F, 255}, true));
}

TEST(BlockColours, EveryWordThatUnpacksIsPackedAgainFromItsExpandedColours)
{
    // What is unpacked has its stored bits on top, so cutting off gives them back; only the flags of bits 0 and 15 are no colours.
    for (const bool bII : k_abGenerations)
    {
        for (uint32_t ui = 0; ui < 0x10000; ++ui)
        {
            const uint32_t ui32Colours = (ui << 16 | (ui * 40503u & 0xFFFF)) & (bII ? ~0x8001u : ~1u);
            const auto a = expandColour(unpackColourA(ui32Colours, bII));
            const auto b = expandColour(unpackColourB(ui32Colours, bII));
            // A translucent alpha of 15 would come back as opaque; the second generation's B alone has it, and A then never has it.
            ASSERT_EQ(ui32Colours, packColours(a.data(), b.data(), bII)) << ui;
        }
    }
}
