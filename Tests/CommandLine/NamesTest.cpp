#include "CommandLine/Names.h"

#include <gtest/gtest.h>

#include "Formats/FormatNames.h"
#include "Support/CatalogueLayouts.h"

using namespace moxtexture;

namespace
{

uint64_t wordOf(std::string_view strWord)
{
    const std::optional<MOXPixelWord> pixelFormat = parseFormat(strWord);
    return pixelFormat ? pixelFormat->getWord() : UINT64_MAX;
}

} // namespace

TEST(FormatWord, IsTheNameInAnyCaseWithBlanksHyphensAndUnderscoresAlike)
{
    EXPECT_EQ(ePF_MOXTC_4bpp_RGBA, wordOf("MOXTC 4bpp RGBA"));
    EXPECT_EQ(ePF_MOXTC_4bpp_RGBA, wordOf("moxtc-4bpp-rgba"));
    EXPECT_EQ(ePF_ETC2_RGB_A1, wordOf("etc2_rgb_a1"));
    EXPECT_EQ(ePF_ASTC_6x5, wordOf("astc-6x5"));
    EXPECT_EQ(ePF_BC1, wordOf("bc1"));
    EXPECT_EQ(ePF_2_Planar_RGBG_8_8_8_8, wordOf("2-planar-rgbg-8-8-8-8"));
    EXPECT_EQ(ePF_Shared_Exponent_RGB999_E5, wordOf("  Shared__Exponent -RGB999 E5 "));
}

TEST(FormatWord, IsUnderstoodForEveryFormatWithANameAndEveryLayout)
{
    for (uint32_t i = 0; i < ePF_Count; ++i)
        EXPECT_EQ(i, wordOf(getFormatName(static_cast<EMOXTPixelFormat>(i))));
    for (const testsupport::CatalogueLayout& row : testsupport::k_aCatalogueLayouts)
        EXPECT_EQ(row.getFormat().getWord(), wordOf(getFormatName(row.getFormat())));
}

TEST(FormatWord, IsALayoutAsLetterAndBitCountInStorageOrder)
{
    EXPECT_EQ(0x0808080861626772u, wordOf("r8g8b8a8"));
    EXPECT_EQ(layout("bgr", 10, 11, 11).getWord(), wordOf("b10g11r11"));
    EXPECT_EQ(layout("rgb", 5, 6, 5).getWord(), wordOf("R5G6B5"));
    EXPECT_EQ(layout("l", 8).getWord(), wordOf("l8"));
    EXPECT_EQ(layout("xrgb", 8, 8, 8, 8).getWord(), wordOf("x8r8g8b8"));
    EXPECT_EQ(layout("i", 32).getWord(), wordOf("i32"));
}

TEST(FormatWord, IsNotALayoutThatNoPixelCanHave)
{
    for (const char* strWord : {"r8r8", "r0g8", "r33", "r64", "r8g8b8a8x8", "r5", "r8g8b8a", "8r", "r", "q8", "r8 g8", "r+8", "r8,g8",
                                "r999999999999", "rgba 8 8 8", "rgba 8 8 8 8 8", "rgba", "rgba 8 8 8 7", "rgba8888"})
        EXPECT_EQ(UINT64_MAX, wordOf(strWord)) << strWord;
}

TEST(FormatWord, IsNeitherEmptyNorANumberNorPartOfAName)
{
    for (const char* strWord : {"", " ", "-", "7", "51", "bc", "bc11", "moxtc", "moxtc4bpprgba", "bc1\n"})
        EXPECT_EQ(UINT64_MAX, wordOf(strWord)) << strWord;
}

TEST(ChannelTypeWord, IsTheNumberOrTheLongNameWithoutBlanks)
{
    EXPECT_EQ(eCT_UnsignedNormalisedByte, parseChannelType("0"));
    EXPECT_EQ(eCT_UnsignedFloatingPoint, parseChannelType("13"));
    EXPECT_EQ(eCT_UnsignedNormalisedByte, parseChannelType("UnsignedNormalisedByte"));
    EXPECT_EQ(eCT_SignedFloatingPoint, parseChannelType("signedfloatingpoint"));
    EXPECT_EQ(eCT_SignedNormalisedInteger, parseChannelType("Signed Normalised Integer"));
    for (const char* strWord : {"14", "-1", "", "UNorm", "1.0", "unsignednormalised", "4294967296"})
        EXPECT_FALSE(parseChannelType(strWord)) << strWord;
}

TEST(ColourSpaceWord, IsOneOfTheTwoShortNames)
{
    EXPECT_EQ(eCS_Linear, parseColourSpace("lrgb"));
    EXPECT_EQ(eCS_sRGB, parseColourSpace("srgb"));
    EXPECT_EQ(eCS_sRGB, parseColourSpace("sRGB"));
    for (const char* strWord : {"", "rgb", "linear", "0"})
        EXPECT_FALSE(parseColourSpace(strWord)) << strWord;
}

TEST(QualityWord, IsANumberOrATextOfTheFormatsFamily)
{
    EXPECT_EQ(2u, parseQuality("Normal (Good Quality)", ePF_MOXTC_4bpp_RGBA));
    EXPECT_EQ(4u, parseQuality("very high (best quality)", ePF_MOXTCII_2bpp));
    EXPECT_EQ(3u, parseQuality("Slow Perceptual", ePF_ETC1));
    EXPECT_EQ(3u, parseQuality("Thorough", ePF_ASTC_4x4));
    EXPECT_EQ(4u, parseQuality("4", ePF_ASTC_4x4));
    // "Fast" is the second of ASTC and the first of ETC.
    EXPECT_EQ(1u, parseQuality("fast", ePF_ASTC_4x4));
    EXPECT_EQ(0u, parseQuality("fast", ePF_ETC2_RGB));
}

TEST(QualityWord, OfAnotherFamilyOrPastTheEndIsNotUnderstood)
{
    EXPECT_FALSE(parseQuality("Thorough", ePF_ETC1));
    EXPECT_FALSE(parseQuality("5", ePF_MOXTC_2bpp_RGB));
    EXPECT_FALSE(parseQuality("4", ePF_ETC1));
    EXPECT_FALSE(parseQuality("-1", ePF_ETC1));
    EXPECT_FALSE(parseQuality("", ePF_ETC1));
    EXPECT_FALSE(parseQuality("Fast", ePF_BC1));
}

TEST(QualityWord, IsAnyNumberForAFormatWithOneQuality)
{
    EXPECT_EQ(7u, parseQuality("7", ePF_BC1));
    EXPECT_EQ(0u, parseQuality("0", k_RGBA8));
}

TEST(QualityWord, OfSomeFormatIsToldFromOneOfNone)
{
    EXPECT_TRUE(isQualityOfSomeFormat("thorough"));
    EXPECT_TRUE(isQualityOfSomeFormat("9"));
    EXPECT_FALSE(isQualityOfSomeFormat("best"));
    EXPECT_FALSE(isQualityOfSomeFormat(""));
}

TEST(NumberWord, IsDigitsAndNothingElse)
{
    EXPECT_EQ(0u, parseUnsigned("0"));
    EXPECT_EQ(4294967295u, parseUnsigned("4294967295"));
    for (const char* strWord : {"", "4294967296", "-1", "+1", " 1", "1 ", "1x", "0x10", "1e3", "1.0", "99999999999999999999999"})
        EXPECT_FALSE(parseUnsigned(strWord)) << strWord;
}

TEST(FilterWord, IsOneOfThree)
{
    EXPECT_EQ(eResizeNearest, parseFilter("nearest"));
    EXPECT_EQ(eResizeLinear, parseFilter("linear"));
    EXPECT_EQ(eResizeCubic, parseFilter("Cubic"));
    EXPECT_FALSE(parseFilter("lanczos"));
}

TEST(CanHold, IsFalseForFloatsInChannelsThatAreNoneOfTheirWidths)
{
    EXPECT_TRUE(canHold(k_RGBA32, eCT_SignedFloatingPoint));
    EXPECT_TRUE(canHold(k_RGBA16, eCT_SignedFloatingPoint));
    EXPECT_FALSE(canHold(k_RGBA8, eCT_SignedFloatingPoint));
    EXPECT_TRUE(canHold(layout("bgr", 10, 11, 11), eCT_UnsignedFloatingPoint));
    EXPECT_TRUE(canHold(k_RGBA16, eCT_UnsignedFloatingPoint));
    EXPECT_FALSE(canHold(k_RGBA32, eCT_UnsignedFloatingPoint));
    EXPECT_FALSE(canHold(layout("rgba", 16, 16, 16, 8), eCT_SignedFloatingPoint));
    EXPECT_TRUE(canHold(ePF_BC1, eCT_SignedFloatingPoint));
    EXPECT_TRUE(canHold(k_RGBA8, eCT_SignedInteger));
}

TEST(OneLine, HasNoLineEndsAndNothingThatMovesACursor)
{
    EXPECT_EQ("Cannot open. Was it moved?", toOneLine("Cannot open.\nWas it moved?"));
    EXPECT_EQ("a?[2Jb?", toOneLine("a\033[2Jb\x7F"));
    EXPECT_EQ("gr\xC3\xBC\xC3\x9F"
              "e",
              toOneLine("gr\xC3\xBC\xC3\x9F"
                        "e"));
}
