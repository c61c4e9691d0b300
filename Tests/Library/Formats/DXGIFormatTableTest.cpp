#include "Formats/DXGIFormatTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "Support/DdsTables.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

uint32_t numberWritten(MOXPixelWord pixelFormat, uint32_t uiType, EMOXTColourSpace eSpace)
{
    const DXGIFormatRow* pRow = findDXGIFormat(PixelEncoding{pixelFormat, static_cast<EMOXTChannelType>(uiType), eSpace});
    return pRow != nullptr ? pRow->ui32Number : 0;
}

} // namespace

TEST(DXGIFormatTable, EveryNumberIsReadAsItsFormatTypeAndSpace)
{
    for (const DXGIRow& expected : k_aDXGIRows)
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
    for (const DXGIRow& row : k_aDXGIRows)
        known.insert(row.uiNumber);
    for (uint32_t uiNumber = 0; uiNumber < 1000; ++uiNumber)
        EXPECT_EQ(known.count(uiNumber) != 0, findDXGIFormat(uiNumber) != nullptr) << uiNumber;
    EXPECT_EQ(nullptr, findDXGIFormat(0xFFFFFFFF));
}

TEST(DXGIFormatTable, EveryRowIsWrittenUnderItsNumberButTheSecondOfOneByte)
{
    for (const DXGIRow& row : k_aDXGIRows)
        EXPECT_EQ(row.uiNumber == 65 ? 61 : row.uiNumber,
                  numberWritten(row.pixelFormat, row.uiType, static_cast<EMOXTColourSpace>(row.uiSpace)))
            << row.uiNumber;
}

TEST(DXGIFormatTable, EveryFormatWithEveryTypeAndSpaceTakesTheRowThatIsNearest)
{
    // How near a row is: exact, then what a number or a layout may do without. 65 is never written.
    const auto nearness = [](const DXGIRow& row, MOXPixelWord pixelFormat, uint32_t uiType, uint32_t uiSpace)
    {
        if (row.pixelFormat != pixelFormat || row.uiNumber == 65)
            return 0;
        const bool bSpace = row.uiSpace == uiSpace;
        if (row.uiType == uiType)
            return bSpace ? 4 : pixelFormat.isCompressed() ? 1 : 3;
        return !pixelFormat.isCompressed() ? 0 : bSpace ? 2 : 1;
    };
    for (const DXGIRow& formatRow : k_aDXGIRows)
    {
        for (uint32_t uiType = 0; uiType < 16; ++uiType)
        {
            for (uint32_t uiSpace = 0; uiSpace < 3; ++uiSpace)
            {
                uint32_t uiExpected = 0;
                int iBest = 0;
                for (const DXGIRow& row : k_aDXGIRows)
                {
                    const int iNearness = nearness(row, formatRow.pixelFormat, uiType, uiSpace);
                    if (iNearness > iBest)
                        uiExpected = row.uiNumber;
                    iBest = std::max(iBest, iNearness);
                }
                EXPECT_EQ(uiExpected, numberWritten(formatRow.pixelFormat, uiType, static_cast<EMOXTColourSpace>(uiSpace)))
                    << formatRow.uiNumber << " with type " << uiType << " in space " << uiSpace;
            }
        }
    }
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
