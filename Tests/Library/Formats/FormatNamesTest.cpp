#include "Formats/FormatNames.h"

#include <gtest/gtest.h>

using namespace moxtexture;

TEST(FormatName, OfALayoutIsItsLettersAndBitsInUpperCaseWithABlankAtTheEnd)
{
    EXPECT_EQ("RGBA 8 8 8 8 ", getFormatName(k_RGBA8));
    EXPECT_EQ("RG 16 16 ", getFormatName(layout("rg", 16, 16)));
    EXPECT_EQ("BGR 10 11 11 ", getFormatName(layout("bgr", 10, 11, 11)));
    EXPECT_EQ("A 8 ", getFormatName(layout("a", 8)));
    EXPECT_EQ("XRGB 8 8 8 8 ", getFormatName(layout("xrgb", 8, 8, 8, 8)));
}

TEST(FormatName, LettersEndAtTheFirstMissingOneAndMissingBitCountsAreLeftOut)
{
    EXPECT_EQ("R 5 6 ", getFormatName(MOXPixelWord('r', 0, 'b', 'a', 5, 0, 6, 0)));
    EXPECT_EQ(" 8 ", getFormatName(MOXPixelWord(0, 'g', 0, 0, 8, 0, 0, 0)));
    EXPECT_EQ("R 255 ", getFormatName(layout("r", 255)));
}

TEST(FormatName, OfANumberIsTheNameOfTheFormat)
{
    EXPECT_EQ("MOXTC 2bpp RGB", getFormatName(ePF_MOXTC_2bpp_RGB));
    EXPECT_EQ("ETC2 RGB A1", getFormatName(ePF_ETC2_RGB_A1));
    EXPECT_EQ("ASTC 6x6x6", getFormatName(ePF_ASTC_6x6x6));
    EXPECT_EQ("", getFormatName(ePF_Count));
    EXPECT_EQ("", getFormatName(MOXPixelWord(uint64_t{0x61})));
    EXPECT_EQ("", getFormatName(MOXPixelWord(uint64_t{0xFFFFFFFF})));
}

TEST(FormatName, TheFirstBitCountAloneTellsALayout)
{
    // No bits for the first letter, so the lower half counts as a number: 7 is a format, "rg" none.
    EXPECT_EQ("BC1", getFormatName(MOXPixelWord(uint64_t{0x0000080000000007})));
    EXPECT_EQ("", getFormatName(MOXPixelWord('r', 'g', 0, 0, 0, 8, 0, 0)));
}

TEST(ColourSpaceName, IsLongOrShort)
{
    EXPECT_EQ("Linear RGB", getColourSpaceName(eCS_Linear, false));
    EXPECT_EQ("lRGB", getColourSpaceName(eCS_Linear, true));
    EXPECT_EQ("sRGB", getColourSpaceName(eCS_sRGB, false));
    EXPECT_EQ("sRGB", getColourSpaceName(eCS_sRGB, true));
}

TEST(ColourSpaceName, OfOtherValuesIsEmpty)
{
    for (const uint32_t uiValue : {2u, 3u, 0xFFFFFFFFu})
    {
        EXPECT_EQ("", getColourSpaceName(static_cast<EMOXTColourSpace>(uiValue), false));
        EXPECT_EQ("", getColourSpaceName(static_cast<EMOXTColourSpace>(uiValue), true));
    }
}

TEST(CubeFaceName, IsASignAndTheAxis)
{
    const char* const apExpected[6] = {"+X", "-X", "+Y", "-Y", "+Z", "-Z"};
    for (uint32_t i = 0; i < 6; ++i)
    {
        EXPECT_EQ(apExpected[i], getCubeFaceName(i, "XxYyZz"));
        EXPECT_EQ(apExpected[i], getCubeFaceName(i, "")); // the usual order
    }
}

TEST(CubeFaceName, FollowsTheOrder)
{
    EXPECT_EQ("-Z", getCubeFaceName(0, "zZxXyY"));
    EXPECT_EQ("+Y", getCubeFaceName(5, "zZxXyY"));
}

TEST(CubeFaceName, OfNoFaceIsNA)
{
    EXPECT_EQ("N/A", getCubeFaceName(6, "XxYyZz"));
    EXPECT_EQ("N/A", getCubeFaceName(6, ""));
    EXPECT_EQ("N/A", getCubeFaceName(6, "XxYyZzXx"));
    EXPECT_EQ("N/A", getCubeFaceName(0xFFFFFFFF, ""));
    EXPECT_EQ("N/A", getCubeFaceName(2, "Xx")); // an order that ends before it
}
