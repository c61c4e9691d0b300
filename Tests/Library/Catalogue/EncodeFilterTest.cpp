#include "Catalogue/EncodeFilter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Catalogue/ApiGroups.h"
#include "Formats/FormatNames.h"

using namespace moxtexture;

namespace
{

size_t countOf(const EncodeFilter& filter)
{
    return filterCatalogue(filter).size();
}

/// Counts under each place of one part of the filter, from 1 on.
template <size_t uiCount>
void expectCounts(const size_t (&auiExpected)[uiCount], uint32_t EncodeFilter::*pPart, uint32_t uiFirstPlace = 1)
{
    for (uint32_t i = 0; i < uiCount; ++i)
    {
        EncodeFilter filter;
        filter.*pPart = uiFirstPlace + i;
        EXPECT_EQ(auiExpected[i], countOf(filter)) << "place " << uiFirstPlace + i;
    }
}

std::vector<std::string> namesOf(const EncodeFilter& filter)
{
    std::vector<std::string> names;
    for (const PixelEncoding& encoding : filterCatalogue(filter))
        names.push_back(getFormatName(encoding.pixelFormat) + "/" + getChannelTypeName(encoding.eChannelType, true) + "/" +
                        getColourSpaceName(encoding.eColourSpace, true));
    return names;
}

} // namespace

// All counts were taken from the list of formats by a separate script.

TEST(EncodeFilter, ThatAsksForNothingPassesEveryRecord)
{
    EXPECT_EQ(146u, countOf({}));
}

TEST(EncodeFilter, ByApiGoesByItsBit)
{
    expectCounts({14, 23, 124, 18, 27, 65, 65, 110}, &EncodeFilter::uiAPI);
}

TEST(EncodeFilter, ByAnyCompressedSelectsStorageClass0)
{
    EncodeFilter filter;
    filter.uiBitsPerPixel = 1;
    EXPECT_EQ(79u, countOf(filter));
    for (const CMOXSearchObject& record : getEncodeCatalogue())
        EXPECT_EQ(record.uiStorageClass == 0, passesFilter(record, filter)) << getFormatName(record.pixelFormat);
}

TEST(EncodeFilter, ByBitRateGoesByItsPlaceInTheList)
{
    expectCounts({2, 2, 2, 2, 1, 2, 2, 4, 4, 10, 2, 2, 4, 2, 4, 15, 2, 2, 2, 2, 16, 17, 5, 21, 5, 8, 3, 3}, &EncodeFilter::uiBitsPerPixel,
                 2);
}

TEST(EncodeFilter, ByChannelsGoesByTheirBit)
{
    expectCounts({65, 68, 74, 87}, &EncodeFilter::uiChannelCount);
}

TEST(EncodeFilter, ByChannelsPassesARecordOfAllCountsWhateverIsAsked)
{
    const CMOXSearchObject* pRecord = findInCatalogue({ePF_ASTC_6x6, eCT_UnsignedNormalisedByte, eCS_sRGB});
    ASSERT_NE(nullptr, pRecord);
    ASSERT_EQ(30u, pRecord->uiChannelCounts);
    for (uint32_t i = 0; i <= 4; ++i)
    {
        EncodeFilter filter;
        filter.uiChannelCount = i;
        EXPECT_TRUE(passesFilter(*pRecord, filter)) << i;
    }
}

TEST(EncodeFilter, ByTypeGoesByTheShortName)
{
    expectCounts({101, 10, 13, 12, 2, 8}, &EncodeFilter::uiTypeGroup);
    for (uint32_t i = 0; i < k_uiChannelTypeCount; ++i)
    {
        const char* const aGroups[] = {"UNorm", "SNorm", "UInt", "SInt", "UFloat", "Float"};
        const auto eType = static_cast<EMOXTChannelType>(i);
        ASSERT_LT(getTypeGroup(eType), std::size(aGroups));
        EXPECT_EQ(getChannelTypeName(eType, true), aGroups[getTypeGroup(eType)]);
    }
    EXPECT_EQ(eTypeGroupOther, getTypeGroup(static_cast<EMOXTChannelType>(14)));
    EXPECT_EQ(eTypeGroupOther, getTypeGroup(static_cast<EMOXTChannelType>(0xFFFFFFFF)));
}

TEST(EncodeFilter, ByAlphaTakesYesBeforeNo)
{
    expectCounts({87, 59}, &EncodeFilter::uiHasAlpha);
}

TEST(EncodeFilter, ByColourSpaceTakesLinearBeforeSRGB)
{
    expectCounts({106, 40}, &EncodeFilter::uiColourSpace);
}

TEST(EncodeFilter, WantsAllOfItsPartsAtOnceAndKeepsTheOrderOfTheCatalogue)
{
    EncodeFilter filter;
    filter.uiAPI = 2; // OpenGL ES 2
    filter.uiColourSpace = 2;
    EXPECT_EQ((std::vector<std::string>{"MOXTCII 2bpp/UNorm/sRGB", "MOXTCII 4bpp/UNorm/sRGB", "MOXTC 2bpp RGBA/UNorm/sRGB",
                                        "MOXTC 2bpp RGB/UNorm/sRGB", "MOXTC 4bpp RGBA/UNorm/sRGB", "MOXTC 4bpp RGB/UNorm/sRGB"}),
              namesOf(filter));

    filter.uiAPI = 3; // OpenGL ES 3
    filter.uiColourSpace = 1;
    filter.uiBitsPerPixel = findBitRate("8") + 2;
    filter.uiChannelCount = 1;
    filter.uiTypeGroup = 1;
    filter.uiHasAlpha = 2;
    EXPECT_EQ((std::vector<std::string>{"R 8 /UNorm/lRGB", "L 8 /UNorm/lRGB"}), namesOf(filter));
    filter.uiHasAlpha = 1;
    EXPECT_EQ((std::vector<std::string>{"ASTC 4x4/UNorm/lRGB", "A 8 /UNorm/lRGB"}), namesOf(filter));
}

TEST(EncodeFilter, PastTheEndOfAListPassesNothing)
{
    for (uint32_t EncodeFilter::*pPart : {&EncodeFilter::uiAPI, &EncodeFilter::uiBitsPerPixel, &EncodeFilter::uiChannelCount,
                                          &EncodeFilter::uiTypeGroup, &EncodeFilter::uiHasAlpha, &EncodeFilter::uiColourSpace})
        for (const uint32_t uiPlace : {30u, 32u, 33u, 64u, 0xFFFFFFFFu})
        {
            EncodeFilter filter;
            filter.*pPart = uiPlace;
            EXPECT_EQ(0u, countOf(filter)) << uiPlace;
        }
}

TEST(FindInCatalogue, FindsEveryRecordByWhatItEncodesTo)
{
    for (const CMOXSearchObject& record : getEncodeCatalogue())
        EXPECT_EQ(&record, findInCatalogue(getEncoding(record)));
}

TEST(FindInCatalogue, FindsNothingThatIsNotOffered)
{
    EXPECT_EQ(nullptr, findInCatalogue({ePF_BC4, eCT_UnsignedNormalisedByte, eCS_Linear}));
    EXPECT_EQ(nullptr, findInCatalogue({ePF_ETC1, eCT_UnsignedNormalisedByte, eCS_sRGB}));
    EXPECT_EQ(nullptr, findInCatalogue({ePF_BC1, eCT_SignedByte, eCS_Linear}));
    EXPECT_EQ(nullptr, findInCatalogue({ePF_BC1, static_cast<EMOXTChannelType>(99), eCS_Linear}));
    EXPECT_EQ(nullptr, findInCatalogue({MOXPixelWord(0xFFFFFFFFFFFFFFFFu), eCT_UnsignedNormalisedByte, eCS_Linear}));
}
