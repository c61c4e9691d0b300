#include "Codecs/MOXTC/ImagePadding.h"

#include <gtest/gtest.h>

#include "Core/ByteOrder.h"

using namespace moxtexture;

namespace
{

using Pixels = std::vector<uint32_t>;

/// Pads a picture of numbers.
Pixels pad(const Pixels& pixels, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiPaddedWidth, uint32_t uiPaddedHeight)
{
    std::vector<uint8_t> bytes(pixels.size() * 4);
    for (size_t i = 0; i < pixels.size(); ++i)
        storeLE(bytes.data() + 4 * i, pixels[i]);
    const std::vector<uint8_t> padded = padImage(bytes.data(), uiWidth, uiHeight, uiPaddedWidth, uiPaddedHeight);
    Pixels result(padded.size() / 4);
    for (size_t i = 0; i < result.size(); ++i)
        result[i] = loadLE<uint32_t>(padded.data() + 4 * i);
    return result;
}

} // namespace

TEST(ImagePadding, RepeatsTheLastColumnsAsABlock)
{
    // A margin of 3: columns 5, 6, 7 are columns 2, 3, 4, not three times column 4.
    EXPECT_EQ((Pixels{1, 2, 3, 4, 5, 3, 4, 5}), pad({1, 2, 3, 4, 5}, 5, 1, 8, 1));
}

TEST(ImagePadding, RepeatsTheLastRowsAsABlock)
{
    EXPECT_EQ((Pixels{1, 2, 3, 4, 5, 6, 5, 6}), pad({1, 2, 3, 4, 5, 6}, 1, 6, 1, 8));
}

TEST(ImagePadding, RepeatsPaddedRowsSoThatTheCornerIsTheLastColumnsOfTheLastRows)
{
    EXPECT_EQ((Pixels{11, 12, 13, 13,   //
                      21, 22, 23, 23,   //
                      31, 32, 33, 33,   //
                      31, 32, 33, 33}), //
              pad({11, 12, 13,          //
                   21, 22, 23,          //
                   31, 32, 33},
                  3, 3, 4, 4));
    EXPECT_EQ((Pixels{11, 12, 11, 12,   //
                      21, 22, 21, 22,   //
                      11, 12, 11, 12,   //
                      21, 22, 21, 22}), //
              pad({11, 12, 21, 22}, 2, 2, 4, 4));
}

TEST(ImagePadding, TakesTheWholeMarginOfEightWideBlocksFromTheLastColumns)
{
    // 9 columns to 16: a margin of 7, from column 2 on.
    EXPECT_EQ((Pixels{1, 2, 3, 4, 5, 6, 7, 8, 9, 3, 4, 5, 6, 7, 8, 9}), pad({1, 2, 3, 4, 5, 6, 7, 8, 9}, 9, 1, 16, 1));
}

TEST(ImagePadding, StartsOverWhereAPictureIsShorterThanItsMargin)
{
    EXPECT_EQ((Pixels{7, 7, 7, 7}), pad({7}, 1, 1, 4, 1));
    EXPECT_EQ((Pixels{1, 2, 3, 2, 3, 1, 2, 3}), pad({1, 2, 3}, 3, 1, 8, 1)); // ends with the last column
    EXPECT_EQ((Pixels{7, 7, 7, 7}), pad({7}, 1, 1, 1, 4));
}

TEST(ImagePadding, LeavesAPictureOfTheRightSizeAsItIs)
{
    EXPECT_EQ((Pixels{1, 2, 3, 4}), pad({1, 2, 3, 4}, 2, 2, 2, 2));
}

TEST(ImagePadding, HasZerosForAPictureWithoutPixels)
{
    EXPECT_EQ((Pixels{0, 0}), pad({}, 0, 1, 2, 1));
    EXPECT_EQ((Pixels{0, 0}), pad({}, 1, 0, 1, 2));
}

TEST(ImagePadding, KeepsAllFourBytesOfAPixel)
{
    EXPECT_EQ((Pixels{0x89ABCDEF, 0x89ABCDEF}), pad({0x89ABCDEF}, 1, 1, 2, 1));
}
