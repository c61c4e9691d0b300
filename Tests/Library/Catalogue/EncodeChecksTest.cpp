#include "Catalogue/EncodeChecks.h"

#include <gtest/gtest.h>

#include <string>

#include "Formats/FormatNames.h"

using namespace moxtexture;

namespace
{

EncodeCheck check(MOXPixelWord pixelFormat, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth = 1, bool bASTCEncoderFound = false)
{
    const CMOXTextureHeader header(k_RGBA8, uiHeight, uiWidth, uiDepth, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    return checkEncode(header, pixelFormat, bASTCEncoderFound);
}

void expectCheck(const EncodeCheck& expected, const EncodeCheck& found, const std::string& strWhat)
{
    EXPECT_EQ(expected.ePage, found.ePage) << strWhat;
    EXPECT_EQ(expected.bValid, found.bValid) << strWhat;
    EXPECT_EQ(expected.bWarning, found.bWarning) << strWhat;
}

EMOXTPixelFormat number(uint32_t uiFormat)
{
    return static_cast<EMOXTPixelFormat>(uiFormat);
}

} // namespace

TEST(EncodeChecks, MoxtcWantsPowersOfTwo)
{
    for (uint32_t i = 0; i <= 3; ++i)
    {
        const std::string strName = getFormatName(number(i));
        expectCheck({eEncodePageMOXTC, true, false}, check(number(i), 64, 64), strName);
        expectCheck({eEncodePageMOXTC, true, false}, check(number(i), 1, 1), strName);
        expectCheck({eEncodePageNPOTError, false, false}, check(number(i), 100, 100), strName);
        expectCheck({eEncodePageNPOTError, false, false}, check(number(i), 64, 100), strName);
        expectCheck({eEncodePageNPOTError, false, false}, check(number(i), 100, 64), strName);
        // The depth plays no part.
        expectCheck({eEncodePageMOXTC, true, false}, check(number(i), 64, 64, 3), strName);
    }
}

TEST(EncodeChecks, MoxtcWarnsOfRectanglesAndTakesThem)
{
    for (uint32_t i = 0; i <= 3; ++i)
    {
        expectCheck({eEncodePageMOXTC, true, true}, check(number(i), 128, 64), getFormatName(number(i)));
        expectCheck({eEncodePageMOXTC, true, true}, check(number(i), 64, 128), getFormatName(number(i)));
    }
}

TEST(EncodeChecks, MoxtcIITakesAnySizeWithoutAWord)
{
    for (const EMOXTPixelFormat eFormat : {ePF_MOXTCII_2bpp, ePF_MOXTCII_4bpp})
    {
        expectCheck({eEncodePageMOXTC, true, false}, check(eFormat, 100, 100), getFormatName(eFormat));
        expectCheck({eEncodePageMOXTC, true, false}, check(eFormat, 128, 64), getFormatName(eFormat));
        expectCheck({eEncodePageMOXTC, true, false}, check(eFormat, 7, 13), getFormatName(eFormat));
    }
}

TEST(EncodeChecks, EtcWarnsOfOtherSizesThanPowersOfTwoAndTakesThem)
{
    for (const EMOXTPixelFormat eFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGBA})
    {
        expectCheck({eEncodePageETC, true, false}, check(eFormat, 64, 64), getFormatName(eFormat));
        expectCheck({eEncodePageETC, true, false}, check(eFormat, 128, 64), getFormatName(eFormat));
        expectCheck({eEncodePageETC, true, true}, check(eFormat, 100, 64), getFormatName(eFormat));
        expectCheck({eEncodePageETC, true, true}, check(eFormat, 64, 100), getFormatName(eFormat));
    }
}

TEST(EncodeChecks, TheOtherEtcFormatsHaveNothingToShow)
{
    for (const EMOXTPixelFormat eFormat : {ePF_ETC2_RGB_A1, ePF_EAC_R11, ePF_EAC_RG11})
        for (const uint32_t uiSize : {1u, 64u, 100u, 101u})
            expectCheck({eEncodePageEmpty, true, false}, check(eFormat, uiSize, uiSize), getFormatName(eFormat));
}

TEST(EncodeChecks, AstcNeedsItsEncoder)
{
    for (uint32_t i = ePF_ASTC_4x4; i <= ePF_ASTC_6x6x6; ++i)
        for (const uint32_t uiSize : {1u, 64u, 101u})
        {
            expectCheck({eEncodePageASTC, true, false}, check(number(i), uiSize, uiSize, 1, true), getFormatName(number(i)));
            expectCheck({eEncodePageASTCError, false, false}, check(number(i), uiSize, uiSize, 1, false), getFormatName(number(i)));
        }
}

TEST(EncodeChecks, BcLeavesThePageAsItWasAndTakesAnySize)
{
    for (uint32_t i = ePF_BC1; i <= ePF_BC7; ++i)
        for (const uint32_t uiSize : {1u, 6u, 64u, 101u})
            expectCheck({eEncodePageUnchanged, true, false}, check(number(i), uiSize, uiSize), getFormatName(number(i)));
}

TEST(EncodeChecks, PairFormatsWantAnEvenWidth)
{
    for (const EMOXTPixelFormat eFormat : {ePF_2_Planar_RGBG_8_8_8_8, ePF_2_Planar_GRGB_8_8_8_8, ePF_UYVY, ePF_YUY2})
    {
        const std::string strName = getFormatName(eFormat);
        expectCheck({eEncodePageEmpty, true, false}, check(eFormat, 6, 6), strName);
        expectCheck({eEncodePageEmpty, true, false}, check(eFormat, 6, 7, 5), strName);
        expectCheck({eEncodePageSizeError, false, false}, check(eFormat, 7, 6), strName);
        // Not above the block of 2 by 1: the rest is made up.
        expectCheck({eEncodePageEmpty, true, false}, check(eFormat, 1, 1), strName);
    }
}

TEST(EncodeChecks, OneBitAPixelWantsWholeBytesOfARowAboveTheFirst)
{
    expectCheck({eEncodePageEmpty, true, false}, check(ePF_1bpp, 5, 3), "below a byte");
    expectCheck({eEncodePageEmpty, true, false}, check(ePF_1bpp, 8, 3), "a byte");
    expectCheck({eEncodePageSizeError, false, false}, check(ePF_1bpp, 9, 3), "nine");
    expectCheck({eEncodePageEmpty, true, false}, check(ePF_1bpp, 16, 3), "two bytes");
}

TEST(EncodeChecks, LayoutsTakeAnySize)
{
    for (const MOXPixelWord pixelFormat :
         {k_RGBA8, k_RGBA32, layout("rgb", 5, 6, 5), layout("r", 8), MOXPixelWord(ePF_Shared_Exponent_RGB999_E5)})
        for (const uint32_t uiSize : {1u, 64u, 101u})
            expectCheck({eEncodePageEmpty, true, false}, check(pixelFormat, uiSize, uiSize, 7), getFormatName(pixelFormat));
}
