#include "Codecs/BC/BcColours.h"

#include <gmock/gmock.h>

#include "BcTestBlocks.h"

using namespace moxtexture;
using bctest::rgba;
using testing::ElementsAre;

TEST(BcColours, QuantisingKeepsTheUpperBitsOfEachChannel)
{
    EXPECT_EQ(0xFFFFu, quantise565({255, 255, 255}));
    EXPECT_EQ(0x0000u, quantise565({7, 3, 7}));
    EXPECT_EQ(0x0821u, quantise565({8, 4, 8}));
    // 200 is 25 eighths, 100 is 25 quarters, 50 is 6 eighths and 2: 25 << 11 | 25 << 5 | 6.
    EXPECT_EQ(25u << 11 | 25u << 5 | 6u, quantise565({200, 100, 50}));
}

TEST(BcColours, QuantisingTruncatesFractions)
{
    EXPECT_EQ(0x0000u, quantise565({7.999f, 3.999f, 7.999f}));
    EXPECT_EQ(0xFFFFu, quantise565({255.0f, 254.5f, 248.1f}));
}

TEST(BcColours, ExpansionRepeatsTheUpperBitsBelow)
{
    EXPECT_EQ(rgba(0, 0, 0), expand565(0));
    EXPECT_EQ(rgba(255, 255, 255), expand565(0xFFFF));
    // Red 10000 becomes 10000100, green 100000 becomes 10000010, blue 00100 becomes 00100001.
    EXPECT_EQ(rgba(0x84, 0, 0), expand565(0x8000));
    EXPECT_EQ(rgba(0, 0x82, 0), expand565(0x0400));
    EXPECT_EQ(rgba(0, 0, 0x21), expand565(0x0004));
}

TEST(BcColours, TheThirdsAreFortyTwoAndTwentyTwoSixtyFourths)
{
    // 42 * 255 >> 6 is 167, 22 * 255 >> 6 is 87; true thirds would be 170 and 85.
    EXPECT_THAT(makeBcPalette(0xFFFF, 0, EBcColourForm::eByOrder),
                ElementsAre(rgba(255, 255, 255), rgba(0, 0, 0), rgba(167, 167, 167), rgba(87, 87, 87)));
    // 5:6:5 of (16, 0, 0) is 2 << 11 and expands to 16; (8, 0, 0) is 1 << 11: (42 * 16 + 22 * 8) >> 6 is 13, the other 10.
    EXPECT_THAT(makeBcPalette(2 << 11, 1 << 11, EBcColourForm::eByOrder),
                ElementsAre(rgba(16, 0, 0), rgba(8, 0, 0), rgba(13, 0, 0), rgba(10, 0, 0)));
}

TEST(BcColours, ALesserOrEqualFirstColourMakesTheFormOfThree)
{
    EXPECT_THAT(makeBcPalette(0, 0xFFFF, EBcColourForm::eByOrder),
                ElementsAre(rgba(0, 0, 0), rgba(255, 255, 255), rgba(127, 127, 127), 0u));
    EXPECT_THAT(makeBcPalette(1 << 11, 1 << 11, EBcColourForm::eByOrder), ElementsAre(rgba(8, 0, 0), rgba(8, 0, 0), rgba(8, 0, 0), 0u));
}

TEST(BcColours, TheFormOfFourCanBeTakenWhateverTheOrder)
{
    EXPECT_THAT(makeBcPalette(0, 0xFFFF, EBcColourForm::eAlwaysFourColour),
                ElementsAre(rgba(0, 0, 0), rgba(255, 255, 255), rgba(87, 87, 87), rgba(167, 167, 167)));
}
