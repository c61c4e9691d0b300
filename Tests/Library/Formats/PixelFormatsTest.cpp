#include "Formats/PixelFormats.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>

using namespace moxtexture;

namespace
{

struct ExpectedFormat
{
    EMOXTPixelFormat eFormat;
    const char* strEnumerator;
    uint32_t uiNumber;
    const char* strName;
    uint32_t uiBitsPerPixel, uiMinX, uiMinY, uiMinZ;
};

#define ROW(enumerator, number, name, bits, x, y, z)                                                                                       \
    {                                                                                                                                      \
        enumerator, #enumerator, number, name, bits, x, y, z                                                                               \
    }
// clang-format off
constexpr ExpectedFormat k_aExpected[] = {
    ROW(ePF_MOXTC_2bpp_RGB, 0, "MOXTC 2bpp RGB", 2, 16, 8, 1),
    ROW(ePF_MOXTC_2bpp_RGBA, 1, "MOXTC 2bpp RGBA", 2, 16, 8, 1),
    ROW(ePF_MOXTC_4bpp_RGB, 2, "MOXTC 4bpp RGB", 4, 8, 8, 1),
    ROW(ePF_MOXTC_4bpp_RGBA, 3, "MOXTC 4bpp RGBA", 4, 8, 8, 1),
    ROW(ePF_MOXTCII_2bpp, 4, "MOXTCII 2bpp", 2, 8, 4, 1),
    ROW(ePF_MOXTCII_4bpp, 5, "MOXTCII 4bpp", 4, 4, 4, 1),
    ROW(ePF_ETC1, 6, "ETC1", 4, 4, 4, 1),
    ROW(ePF_BC1, 7, "BC1", 4, 4, 4, 1),
    ROW(ePF_DXT2, 8, "DXT2", 8, 4, 4, 1),
    ROW(ePF_BC2, 9, "BC2", 8, 4, 4, 1),
    ROW(ePF_DXT4, 10, "DXT4", 8, 4, 4, 1),
    ROW(ePF_BC3, 11, "BC3", 8, 4, 4, 1),
    ROW(ePF_BC4, 12, "BC4", 4, 4, 4, 1),
    ROW(ePF_BC5, 13, "BC5", 8, 4, 4, 1),
    ROW(ePF_BC6, 14, "BC6", 0, 1, 1, 1),
    ROW(ePF_BC7, 15, "BC7", 0, 1, 1, 1),
    ROW(ePF_UYVY, 16, "UYVY", 16, 2, 1, 1),
    ROW(ePF_YUY2, 17, "YUY2", 16, 2, 1, 1),
    ROW(ePF_1bpp, 18, "1bpp", 1, 8, 1, 1),
    ROW(ePF_Shared_Exponent_RGB999_E5, 19, "Shared Exponent RGB999 E5", 32, 1, 1, 1),
    ROW(ePF_2_Planar_RGBG_8_8_8_8, 20, "2-Planar RGBG 8 8 8 8", 16, 2, 1, 1),
    ROW(ePF_2_Planar_GRGB_8_8_8_8, 21, "2-Planar GRGB 8 8 8 8", 16, 2, 1, 1),
    ROW(ePF_ETC2_RGB, 22, "ETC2 RGB", 4, 4, 4, 1),
    ROW(ePF_ETC2_RGBA, 23, "ETC2 RGBA", 8, 4, 4, 1),
    ROW(ePF_ETC2_RGB_A1, 24, "ETC2 RGB A1", 4, 4, 4, 1),
    ROW(ePF_EAC_R11, 25, "EAC R11", 4, 4, 4, 1),
    ROW(ePF_EAC_RG11, 26, "EAC RG11", 8, 4, 4, 1),
    ROW(ePF_ASTC_4x4, 27, "ASTC 4x4", 0, 4, 4, 1),
    ROW(ePF_ASTC_5x4, 28, "ASTC 5x4", 0, 5, 4, 1),
    ROW(ePF_ASTC_5x5, 29, "ASTC 5x5", 0, 5, 5, 1),
    ROW(ePF_ASTC_6x5, 30, "ASTC 6x5", 0, 6, 5, 1),
    ROW(ePF_ASTC_6x6, 31, "ASTC 6x6", 0, 6, 6, 1),
    ROW(ePF_ASTC_8x5, 32, "ASTC 8x5", 0, 8, 5, 1),
    ROW(ePF_ASTC_8x6, 33, "ASTC 8x6", 0, 8, 6, 1),
    ROW(ePF_ASTC_8x8, 34, "ASTC 8x8", 0, 8, 8, 1),
    ROW(ePF_ASTC_10x5, 35, "ASTC 10x5", 0, 10, 5, 1),
    ROW(ePF_ASTC_10x6, 36, "ASTC 10x6", 0, 10, 6, 1),
    ROW(ePF_ASTC_10x8, 37, "ASTC 10x8", 0, 10, 8, 1),
    ROW(ePF_ASTC_10x10, 38, "ASTC 10x10", 0, 10, 10, 1),
    ROW(ePF_ASTC_12x10, 39, "ASTC 12x10", 0, 12, 10, 1),
    ROW(ePF_ASTC_12x12, 40, "ASTC 12x12", 0, 12, 12, 1),
    ROW(ePF_ASTC_3x3x3, 41, "ASTC 3x3x3", 0, 3, 3, 3),
    ROW(ePF_ASTC_4x3x3, 42, "ASTC 4x3x3", 0, 4, 3, 3),
    ROW(ePF_ASTC_4x4x3, 43, "ASTC 4x4x3", 0, 4, 4, 3),
    ROW(ePF_ASTC_4x4x4, 44, "ASTC 4x4x4", 0, 4, 4, 4),
    ROW(ePF_ASTC_5x4x4, 45, "ASTC 5x4x4", 0, 5, 4, 4),
    ROW(ePF_ASTC_5x5x4, 46, "ASTC 5x5x4", 0, 5, 5, 4),
    ROW(ePF_ASTC_5x5x5, 47, "ASTC 5x5x5", 0, 5, 5, 5),
    ROW(ePF_ASTC_6x5x5, 48, "ASTC 6x5x5", 0, 6, 5, 5),
    ROW(ePF_ASTC_6x6x5, 49, "ASTC 6x6x5", 0, 6, 6, 5),
    ROW(ePF_ASTC_6x6x6, 50, "ASTC 6x6x6", 0, 6, 6, 6),
};
// clang-format on
#undef ROW

} // namespace

TEST(PixelFormats, EveryNumberHasItsNameBitsAndSmallestSurface)
{
    ASSERT_EQ(51u, std::size(k_aExpected));
    ASSERT_EQ(51u, ePF_Count);
    for (const ExpectedFormat& expected : k_aExpected)
    {
        SCOPED_TRACE(expected.strName);
        EXPECT_EQ(expected.uiNumber, expected.eFormat);
        const PixelFormatRow& row = getPixelFormatRow(expected.uiNumber);
        EXPECT_STREQ(expected.strName, row.strName);
        EXPECT_EQ(expected.uiBitsPerPixel, row.uiBitsPerPixel);
        EXPECT_EQ(expected.uiMinX, row.uiMinX);
        EXPECT_EQ(expected.uiMinY, row.uiMinY);
        EXPECT_EQ(expected.uiMinZ, row.uiMinZ);
    }
}

TEST(PixelFormats, AnEnumeratorIsTheNameWithUnderscores)
{
    for (const ExpectedFormat& expected : k_aExpected)
    {
        std::string strEnumerator = std::string("ePF_") + expected.strName;
        for (char& c : strEnumerator)
            if (std::isalnum(static_cast<unsigned char>(c)) == 0)
                c = '_';
        EXPECT_EQ(strEnumerator, expected.strEnumerator);
    }
}

TEST(PixelFormats, NumbersWithoutAFormatHaveNoNameNoBitsAndAPixelAsSmallestSurface)
{
    for (const uint32_t uiNumber : {51u, 52u, 0x61u, 255u, 256u, 0xFFFFFFFFu})
    {
        SCOPED_TRACE(uiNumber);
        const PixelFormatRow& row = getPixelFormatRow(uiNumber);
        EXPECT_STREQ("", row.strName);
        EXPECT_EQ(0u, row.uiBitsPerPixel);
        EXPECT_EQ(1u, row.uiMinX);
        EXPECT_EQ(1u, row.uiMinY);
        EXPECT_EQ(1u, row.uiMinZ);
    }
}

TEST(PixelFormats, TheAstcFormatsAreTheNumbersFrom27To50)
{
    for (uint32_t i = 0; i < 60; ++i)
        EXPECT_EQ(i >= 27 && i <= 50, isASTC(i)) << i;
    EXPECT_FALSE(isASTC(0xFFFFFFFF));
}
