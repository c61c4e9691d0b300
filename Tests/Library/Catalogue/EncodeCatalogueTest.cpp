#include "Catalogue/EncodeCatalogue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <iterator>
#include <set>
#include <string>
#include <tuple>

#include "Catalogue/ApiGroups.h"
#include "Formats/FormatNames.h"
#include "Formats/PixelFormats.h"
#include "Texture/CMOXTextureHeader.h"

#include "CatalogueTable.h"

using namespace moxtexture;

namespace
{

std::string describe(const CMOXSearchObject& record)
{
    return getFormatName(record.pixelFormat) + "/" + getChannelTypeName(record.eChannelType, false) + "/" +
           getColourSpaceName(record.eColourSpace, true);
}

template <typename Test>
size_t countWhere(Test test)
{
    size_t uiCount = 0;
    for (const CMOXSearchObject& record : getEncodeCatalogue())
        uiCount += test(record) ? 1 : 0;
    return uiCount;
}

std::string getBitRate(const CMOXSearchObject& record)
{
    return std::string(k_aBitsPerPixel.at(record.uiBitRateIndex));
}

bool hasLetter(MOXPixelWord pixelFormat, char cLetter)
{
    for (unsigned int i = 0; i < 4; ++i)
        if (pixelFormat.getChannelLetter(i) == cLetter)
            return true;
    return false;
}

/// In lower case, without the blank that ends the name of a layout.
std::string getComparedName(std::string strName)
{
    for (char& c : strName)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    if (!strName.empty() && strName.back() == ' ')
        strName.pop_back();
    return strName;
}

} // namespace

TEST(EncodeCatalogue, HoldsEveryRecordFieldByField)
{
    const auto& records = getEncodeCatalogue();
    ASSERT_EQ(std::size(k_aCatalogueTable), records.size());
    for (size_t i = 0; i < records.size(); ++i)
    {
        const CatalogueTableRow& row = k_aCatalogueTable[i];
        const CMOXSearchObject& record = records[i];
        SCOPED_TRACE("record " + std::to_string(i) + ": " + row.strName);
        EXPECT_EQ(getComparedName(row.strName), getComparedName(getFormatName(record.pixelFormat)));
        EXPECT_EQ(row.uiChannelType, static_cast<uint32_t>(record.eChannelType));
        EXPECT_EQ(row.uiAPIs, record.uiAPIs);
        EXPECT_EQ(row.uiStorageClass, record.uiStorageClass);
        EXPECT_EQ(row.uiChannelCounts, record.uiChannelCounts);
        EXPECT_EQ(row.uiHasAlpha, record.uiHasAlpha);
        EXPECT_EQ(row.strColourSpace, getColourSpaceName(record.eColourSpace, true));
        ASSERT_LT(record.uiBitRateIndex, k_aBitsPerPixel.size());
        EXPECT_EQ(row.strBitsPerPixel, k_aBitsPerPixel[record.uiBitRateIndex]);
    }
}

TEST(EncodeCatalogue, HoldsItsRecordsInTheOrderInWhichTheyAreOffered)
{
    const auto& records = getEncodeCatalogue();
    ASSERT_EQ(146u, records.size());
    EXPECT_EQ("MOXTC 2bpp RGBA/Unsigned Normalised Byte/lRGB", describe(records[0]));
    EXPECT_EQ("MOXTC 2bpp RGB/Unsigned Normalised Byte/lRGB", describe(records[1]));
    EXPECT_EQ("MOXTCII 2bpp/Unsigned Normalised Byte/lRGB", describe(records[2]));
    EXPECT_EQ("MOXTCII 2bpp/Unsigned Normalised Byte/sRGB", describe(records[3]));
    EXPECT_EQ("MOXTC 4bpp RGBA/Unsigned Normalised Byte/lRGB", describe(records[4]));
    EXPECT_EQ("MOXTC 2bpp RGBA/Unsigned Normalised Byte/sRGB", describe(records[8]));
    EXPECT_EQ("BC1/Unsigned Normalised Byte/lRGB", describe(records[12]));
    EXPECT_EQ("BC1/Unsigned Normalised Byte/sRGB", describe(records[13]));
    EXPECT_EQ("ETC1/Unsigned Normalised Byte/lRGB", describe(records[18]));
    EXPECT_EQ("R 32 /Signed Integer/lRGB", describe(records[145]));
}

TEST(EncodeCatalogue, OffersNothingTwice)
{
    std::set<std::tuple<uint64_t, uint32_t, uint32_t>> seen;
    for (const CMOXSearchObject& record : getEncodeCatalogue())
        EXPECT_TRUE(seen.emplace(record.pixelFormat.getWord(), record.eChannelType, record.eColourSpace).second) << describe(record);
}

// The sums were taken over the list of formats by a separate script: a wrong figure in any row shows in one of them.
TEST(EncodeCatalogue, AddsUpColumnByColumn)
{
    uint32_t uiTypes = 0, uiAPIs = 0, uiClasses = 0, uiCounts = 0, uiAlpha = 0, uiSRGB = 0, uiRates = 0;
    for (const CMOXSearchObject& record : getEncodeCatalogue())
    {
        uiTypes += record.eChannelType;
        uiAPIs += record.uiAPIs;
        uiClasses += record.uiStorageClass;
        uiCounts += record.uiChannelCounts;
        uiAlpha += record.uiHasAlpha;
        uiSRGB += record.eColourSpace;
        uiRates += record.uiBitRateIndex;
    }
    EXPECT_EQ(390u, uiTypes);
    EXPECT_EQ(21452u, uiAPIs);
    EXPECT_EQ(116u, uiClasses);
    EXPECT_EQ(2386u, uiCounts);
    EXPECT_EQ(87u, uiAlpha);
    EXPECT_EQ(40u, uiSRGB);
    EXPECT_EQ(2474u, uiRates);
}

TEST(EncodeCatalogue, OffersEachApiItsFormats)
{
    constexpr size_t auiExpected[] = {14, 23, 124, 18, 27, 65, 65, 110};
    for (uint32_t i = 0; i < k_aApiGroups.size(); ++i)
        EXPECT_EQ(auiExpected[i], countWhere([&](const CMOXSearchObject& record) { return ((record.uiAPIs >> i) & 1) != 0; }))
            << k_aApiGroups[i];
}

TEST(EncodeCatalogue, TellsTheBitRateThatTheFormatHas)
{
    for (const CMOXSearchObject& record : getEncodeCatalogue())
    {
        SCOPED_TRACE(describe(record));
        const double fShown = std::strtod(getBitRate(record).c_str(), nullptr);
        if (record.pixelFormat.isCompressed() && isASTC(record.pixelFormat.getFormat()))
        {
            uint32_t x = 0, y = 0, z = 0;
            CMOXTextureHeader::getMinDimensions(record.pixelFormat, x, y, z);
            EXPECT_NEAR(128.0 / (x * y * z), fShown, 0.0051);
        }
        else
            EXPECT_EQ(CMOXTextureHeader::getBitsPerPixel(record.pixelFormat), fShown);
    }
}

TEST(EncodeCatalogue, SaysOfALayoutThatItHasAlphaWhereItHasTheLetter)
{
    for (const CMOXSearchObject& record : getEncodeCatalogue())
    {
        if (!record.pixelFormat.isCompressed())
        {
            EXPECT_EQ(hasLetter(record.pixelFormat, 'a') ? 1u : 0u, record.uiHasAlpha) << describe(record);
        }
    }
}

TEST(EncodeCatalogue, GroupsStorageByWidth)
{
    EXPECT_EQ(79u, countWhere([](const CMOXSearchObject& record) { return record.uiStorageClass == 0; }));
    EXPECT_EQ(31u, countWhere([](const CMOXSearchObject& record) { return record.uiStorageClass == 1; }));
    EXPECT_EQ(23u, countWhere([](const CMOXSearchObject& record) { return record.uiStorageClass == 2; }));
    EXPECT_EQ(13u, countWhere([](const CMOXSearchObject& record) { return record.uiStorageClass == 3; }));
    for (const CMOXSearchObject& record : getEncodeCatalogue())
    {
        if (!record.pixelFormat.isCompressed())
        {
            EXPECT_NE(0u, record.uiStorageClass) << describe(record);
        }
    }
}

TEST(EncodeCatalogue, ListsAllFourChannelCountsForAstcAlone)
{
    for (const CMOXSearchObject& record : getEncodeCatalogue())
        EXPECT_EQ(record.pixelFormat.isCompressed() && isASTC(record.pixelFormat.getFormat()), record.uiChannelCounts == 30)
            << describe(record);
}

TEST(EncodeCatalogue, Lists48BitRgbWithTheFormatsOfTwoChannels)
{
    EXPECT_EQ(5u, countWhere([](const CMOXSearchObject& record)
                             { return record.pixelFormat == layout("rgb", 16, 16, 16) && record.uiChannelCounts == 4; }));
}

TEST(DefaultChannelType, IsTheUNormTypeOfTheFormatWhereItHasOne)
{
    EXPECT_EQ(eCT_UnsignedNormalisedByte, getDefaultChannelType(k_RGBA8));
    EXPECT_EQ(eCT_UnsignedNormalisedShort, getDefaultChannelType(k_RGBA16));
    EXPECT_EQ(eCT_UnsignedNormalisedShort, getDefaultChannelType(layout("rgb", 5, 6, 5)));
    EXPECT_EQ(eCT_UnsignedNormalisedInteger, getDefaultChannelType(layout("rgba", 10, 10, 10, 2)));
    EXPECT_EQ(eCT_UnsignedNormalisedInteger, getDefaultChannelType(ePF_EAC_R11));
    // The first row of 8-bit red is the unsigned byte; its normalised one comes third.
    EXPECT_EQ(eCT_UnsignedNormalisedByte, getDefaultChannelType(layout("r", 8)));
}

TEST(DefaultChannelType, IsElseThatOfTheFirstRecord)
{
    EXPECT_EQ(eCT_SignedFloatingPoint, getDefaultChannelType(k_RGBA32));
    EXPECT_EQ(eCT_UnsignedFloatingPoint, getDefaultChannelType(layout("bgr", 10, 11, 11)));
    EXPECT_EQ(eCT_UnsignedFloatingPoint, getDefaultChannelType(ePF_Shared_Exponent_RGB999_E5));
}

TEST(DefaultChannelType, IsTheFirstTypeForAFormatThatIsNotOffered)
{
    EXPECT_EQ(eCT_UnsignedNormalisedByte, getDefaultChannelType(layout("xrgb", 8, 8, 8, 8)));
    EXPECT_EQ(eCT_UnsignedNormalisedByte, getDefaultChannelType(ePF_BC7));
}
