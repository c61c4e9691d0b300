#include "Codecs/MOXTC/HardFlags.h"

#include <gtest/gtest.h>

using namespace moxtexture;

namespace
{

using Flags = std::vector<uint8_t>;
using Colours = std::vector<uint32_t>;

constexpr uint32_t rgba(uint32_t uiRed, uint32_t uiGreen = 0, uint32_t uiBlue = 0, uint32_t uiAlpha = 0)
{
    return uiRed | uiGreen << 8 | uiBlue << 16 | uiAlpha << 24;
}

Flags findFlags(uint32_t uiBlocksX, uint32_t uiBlocksY, const Colours& colourA, const Colours& colourB)
{
    CompressorImages images;
    images.uiBlocksX = uiBlocksX;
    images.uiBlocksY = uiBlocksY;
    images.colourA = colourA;
    images.colourB = colourB;
    return findHardFlags(images);
}

/// A and B alike in every block.
Flags findFlags(uint32_t uiBlocksX, uint32_t uiBlocksY, const Colours& colours)
{
    return findFlags(uiBlocksX, uiBlocksY, colours, colours);
}

} // namespace

TEST(HardFlags, NeedAStepOfMoreThan4095Squared)
{
    // 64 * 64 = 4096; 63 * 63 + 11 * 11 + 2 * 2 + 1 * 1 = 4095.
    EXPECT_EQ((Flags{1, 1}), findFlags(2, 1, {rgba(0), rgba(64)}));
    EXPECT_EQ((Flags{0, 0}), findFlags(2, 1, {rgba(0), rgba(63, 11, 2, 1)}));
}

TEST(HardFlags, CountEveryChannel)
{
    EXPECT_EQ((Flags{1, 1}), findFlags(2, 1, {rgba(0), rgba(0, 64, 0, 0)}));
    EXPECT_EQ((Flags{1, 1}), findFlags(2, 1, {rgba(0), rgba(0, 0, 64, 0)}));
    EXPECT_EQ((Flags{1, 1}), findFlags(2, 1, {rgba(0), rgba(0, 0, 0, 64)}));
    EXPECT_EQ((Flags{1, 1}), findFlags(2, 1, {rgba(0), rgba(32, 32, 32, 32)})); // 4 * 1024
}

TEST(HardFlags, NeedTheStepInBothColours)
{
    EXPECT_EQ((Flags{0, 0}), findFlags(2, 1, {rgba(0), rgba(64)}, {rgba(64), rgba(64)}));
    EXPECT_EQ((Flags{0, 0}), findFlags(2, 1, {rgba(64), rgba(64)}, {rgba(0), rgba(64)}));
    // The shorter step decides: from A to A 100, from B to B 63.
    EXPECT_EQ((Flags{0, 0}), findFlags(2, 1, {rgba(0), rgba(100)}, {rgba(0), rgba(63)}));
    EXPECT_EQ((Flags{1, 1}), findFlags(2, 1, {rgba(0), rgba(100)}, {rgba(0), rgba(64)}));
}

TEST(HardFlags, NeedAStepOfMoreThanAQuarterOfTheBlocksOwnSpread)
{
    // Block 0 spreads over 200 * 200 / 4 = 10000. Steps of 100 * 100 are not more, 101 * 101 = 10201 are.
    // Block 1 has no spread, or one of (101 - 99) squared.
    EXPECT_EQ((Flags{0, 1}), findFlags(2, 1, {rgba(0), rgba(100)}, {rgba(200), rgba(100)}));
    EXPECT_EQ((Flags{1, 1}), findFlags(2, 1, {rgba(0), rgba(101)}, {rgba(200), rgba(99)}));
}

TEST(HardFlags, LookAtTheNeighbourBelowLikewise)
{
    EXPECT_EQ((Flags{1, 1}), findFlags(1, 2, {rgba(0), rgba(64)}));
    EXPECT_EQ((Flags{0, 1}), findFlags(1, 2, {rgba(0), rgba(100)}, {rgba(200), rgba(100)}));
}

TEST(HardFlags, WrapAtTheRightAndBelow)
{
    // Steps of 50 are soft, that of 100 from the last block round to the first is not.
    EXPECT_EQ((Flags{0, 0, 1}), findFlags(3, 1, {rgba(0), rgba(50), rgba(100)}));
    EXPECT_EQ((Flags{0, 0, 1}), findFlags(1, 3, {rgba(0), rgba(50), rgba(100)}));
}

TEST(HardFlags, AreSetToTheLeftOfAnIslandAboveItAndOnIt)
{
    Colours colours(9, rgba(10, 20, 30, 255));
    colours[4] = rgba(200, 20, 30, 255);
    EXPECT_EQ((Flags{0, 1, 0, //
                     1, 1, 0, //
                     0, 0, 0}),
              findFlags(3, 3, colours));
}

TEST(HardFlags, AreClearForASingleBlockWhichIsItsOwnNeighbour)
{
    EXPECT_EQ((Flags{0}), findFlags(1, 1, {rgba(0)}, {rgba(255, 255, 255, 255)}));
}
