#include "Formats/DXGIFormatTable.h"

#include <gtest/gtest.h>

#include <set>

using namespace moxtexture;

namespace
{

struct ExpectedRow
{
    uint32_t uiNumber;
    MOXPixelWord pixelFormat;
    uint32_t uiType;
    uint32_t uiSpace;
};

const ExpectedRow k_aExpected[] = {
    {2, layout("rgba", 32, 32, 32, 32), 12, 0},
    {3, layout("rgba", 32, 32, 32, 32), 10, 0},
    {4, layout("rgba", 32, 32, 32, 32), 11, 0},
    {6, layout("rgb", 32, 32, 32), 12, 0},
    {7, layout("rgb", 32, 32, 32), 10, 0},
    {8, layout("rgb", 32, 32, 32), 11, 0},
    {10, layout("rgba", 16, 16, 16, 16), 12, 0},
    {11, layout("rgba", 16, 16, 16, 16), 4, 0},
    {12, layout("rgba", 16, 16, 16, 16), 6, 0},
    {13, layout("rgba", 16, 16, 16, 16), 5, 0},
    {14, layout("rgba", 16, 16, 16, 16), 7, 0},
    {16, layout("rg", 32, 32), 12, 0},
    {17, layout("rg", 32, 32), 10, 0},
    {18, layout("rg", 32, 32), 11, 0},
    {24, layout("rgba", 10, 10, 10, 2), 8, 0},
    {25, layout("rgba", 10, 10, 10, 2), 10, 0},
    {26, layout("bgr", 10, 11, 11), 13, 0},
    {28, layout("rgba", 8, 8, 8, 8), 0, 0},
    {29, layout("rgba", 8, 8, 8, 8), 0, 1},
    {30, layout("rgba", 8, 8, 8, 8), 2, 0},
    {31, layout("rgba", 8, 8, 8, 8), 1, 0},
    {32, layout("rgba", 8, 8, 8, 8), 3, 0},
    {34, layout("rg", 16, 16), 12, 0},
    {35, layout("rg", 16, 16), 4, 0},
    {36, layout("rg", 16, 16), 6, 0},
    {37, layout("rg", 16, 16), 5, 0},
    {38, layout("rg", 16, 16), 7, 0},
    {41, layout("r", 32), 12, 0},
    {42, layout("r", 32), 10, 0},
    {43, layout("r", 32), 11, 0},
    {49, layout("rg", 8, 8), 0, 0},
    {50, layout("rg", 8, 8), 2, 0},
    {51, layout("rg", 8, 8), 1, 0},
    {52, layout("rg", 8, 8), 3, 0},
    {54, layout("r", 16), 12, 0},
    {56, layout("r", 16), 4, 0},
    {57, layout("r", 16), 6, 0},
    {58, layout("r", 16), 5, 0},
    {59, layout("r", 16), 7, 0},
    {61, layout("r", 8), 0, 0},
    {62, layout("r", 8), 2, 0},
    {63, layout("r", 8), 1, 0},
    {64, layout("r", 8), 3, 0},
    {65, layout("r", 8), 0, 0},
    {66, MOXPixelWord(uint64_t{18}), 0, 0},
    {67, MOXPixelWord(uint64_t{19}), 12, 0},
    {68, MOXPixelWord(uint64_t{20}), 0, 0},
    {69, MOXPixelWord(uint64_t{21}), 0, 0},
    {71, MOXPixelWord(uint64_t{7}), 8, 0},
    {72, MOXPixelWord(uint64_t{7}), 8, 1},
    {74, MOXPixelWord(uint64_t{9}), 8, 0},
    {75, MOXPixelWord(uint64_t{9}), 8, 1},
    {77, MOXPixelWord(uint64_t{11}), 8, 0},
    {78, MOXPixelWord(uint64_t{11}), 8, 1},
    {80, MOXPixelWord(uint64_t{12}), 8, 1},
    {81, MOXPixelWord(uint64_t{12}), 9, 0},
    {83, MOXPixelWord(uint64_t{13}), 8, 0},
    {84, MOXPixelWord(uint64_t{13}), 9, 0},
    {85, layout("rgb", 5, 6, 5), 4, 0},
    {86, layout("argb", 1, 5, 5, 5), 4, 0},
    {87, layout("bgra", 8, 8, 8, 8), 0, 0},
    {88, layout("bgrx", 8, 8, 8, 8), 0, 0},
    {91, layout("bgra", 8, 8, 8, 8), 0, 1},
    {93, layout("bgrx", 8, 8, 8, 8), 0, 1},
    {96, MOXPixelWord(uint64_t{15}), 12, 1},
    {98, MOXPixelWord(uint64_t{15}), 8, 0},
    {99, MOXPixelWord(uint64_t{15}), 8, 1},
    {107, MOXPixelWord(uint64_t{17}), 8, 0},
    {111, layout("ai", 4, 4), 0, 0},
    {112, layout("ia", 4, 4), 0, 0},
    {115, layout("argb", 4, 4, 4, 4), 4, 0},
};

uint32_t numberWritten(MOXPixelWord pixelFormat, uint32_t uiType, EMOXTColourSpace eSpace)
{
    const DXGIFormatRow* pRow = findDXGIFormat(PixelEncoding{pixelFormat, static_cast<EMOXTChannelType>(uiType), eSpace});
    return pRow != nullptr ? pRow->ui32Number : 0;
}

} // namespace

TEST(DXGIFormatTable, EveryNumberIsReadAsItsFormatTypeAndSpace)
{
    for (const ExpectedRow& expected : k_aExpected)
    {
        SCOPED_TRACE(expected.uiNumber);
        const DXGIFormatRow* pRow = findDXGIFormat(expected.uiNumber);
        ASSERT_NE(nullptr, pRow);
        EXPECT_EQ(expected.pixelFormat, pRow->pixelFormat);
        EXPECT_EQ(expected.uiType, pRow->eChannelType);
        EXPECT_EQ(expected.uiSpace, pRow->eColourSpace);
    }
}

TEST(DXGIFormatTable, NoOtherNumberIsKnown)
{
    std::set<uint32_t> known;
    for (const ExpectedRow& row : k_aExpected)
        known.insert(row.uiNumber);
    for (uint32_t uiNumber = 0; uiNumber < 1000; ++uiNumber)
        EXPECT_EQ(known.count(uiNumber) != 0, findDXGIFormat(uiNumber) != nullptr) << uiNumber;
    EXPECT_EQ(nullptr, findDXGIFormat(0xFFFFFFFF));
}

TEST(DXGIFormatTable, EveryRowIsWrittenUnderItsNumberButTheSecondOfOneByte)
{
    for (const ExpectedRow& row : k_aExpected)
        EXPECT_EQ(row.uiNumber == 65 ? 61 : row.uiNumber,
                  numberWritten(row.pixelFormat, row.uiType, static_cast<EMOXTColourSpace>(row.uiSpace)))
            << row.uiNumber;
}

TEST(DXGIFormatTable, ALayoutThatHasNoRowOfItsSpaceTakesTheOther)
{
    EXPECT_EQ(2u, numberWritten(layout("rgba", 32, 32, 32, 32), 12, eCS_sRGB));
    EXPECT_EQ(31u, numberWritten(k_RGBA8, 1, eCS_sRGB));
    EXPECT_EQ(61u, numberWritten(layout("r", 8), 0, eCS_sRGB));
}

TEST(DXGIFormatTable, ALayoutNeverTakesARowOfAnotherType)
{
    EXPECT_EQ(0u, numberWritten(k_RGBA8, 8, eCS_Linear));
    EXPECT_EQ(0u, numberWritten(layout("rgb", 5, 6, 5), 8, eCS_Linear));
    EXPECT_EQ(0u, numberWritten(layout("rgb", 8, 8, 8), 0, eCS_Linear)) << "no row at all";
}

TEST(DXGIFormatTable, ANumberedFormatTakesARowOfAnotherTypeFirstOfItsOwnSpace)
{
    EXPECT_EQ(71u, numberWritten(ePF_BC1, 0, eCS_Linear));
    EXPECT_EQ(72u, numberWritten(ePF_BC1, 0, eCS_sRGB));
    EXPECT_EQ(80u, numberWritten(ePF_BC4, 8, eCS_sRGB));
    EXPECT_EQ(81u, numberWritten(ePF_BC4, 8, eCS_Linear)) << "80 is sRGB";
    EXPECT_EQ(80u, numberWritten(ePF_BC4, 9, eCS_sRGB));
    EXPECT_EQ(83u, numberWritten(ePF_BC5, 0, eCS_sRGB)) << "neither type nor space";
    EXPECT_EQ(68u, numberWritten(ePF_2_Planar_RGBG_8_8_8_8, 8, eCS_sRGB));
}

TEST(DXGIFormatTable, NumberedFormatsWithoutARowAreNotWritten)
{
    const std::set<uint32_t> written = {7, 9, 11, 12, 13, 15, 17, 18, 19, 20, 21};
    for (uint32_t uiFormat = 0; uiFormat < 60; ++uiFormat)
        EXPECT_EQ(written.count(uiFormat) != 0, numberWritten(MOXPixelWord(uint64_t{uiFormat}), 0, eCS_Linear) != 0) << uiFormat;
}
