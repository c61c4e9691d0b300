#include "Formats/ChannelTypes.h"

#include <gtest/gtest.h>

#include <string>

#include "Formats/FormatNames.h"

using namespace moxtexture;

namespace
{

struct ExpectedType
{
    EMOXTChannelType eType;
    const char* strEnumerator;
    uint32_t uiNumber;
    const char* strLongName;
    const char* strShortName;
    uint32_t uiStorageBits;
    bool bSigned;
};

#define ROW(enumerator, number, longName, shortName, bits, isSigned)                                                                       \
    {                                                                                                                                      \
        enumerator, #enumerator, number, longName, shortName, bits, isSigned                                                               \
    }
// clang-format off
constexpr ExpectedType k_aExpected[] = {
    ROW(eCT_UnsignedNormalisedByte, 0, "Unsigned Normalised Byte", "UNorm", 8, false),
    ROW(eCT_SignedNormalisedByte, 1, "Signed Normalised Byte", "SNorm", 8, true),
    ROW(eCT_UnsignedByte, 2, "Unsigned Byte", "UInt", 8, false),
    ROW(eCT_SignedByte, 3, "Signed Byte", "SInt", 8, true),
    ROW(eCT_UnsignedNormalisedShort, 4, "Unsigned Normalised Short", "UNorm", 16, false),
    ROW(eCT_SignedNormalisedShort, 5, "Signed Normalised Short", "SNorm", 16, true),
    ROW(eCT_UnsignedShort, 6, "Unsigned Short", "UInt", 16, false),
    ROW(eCT_SignedShort, 7, "Signed Short", "SInt", 16, true),
    ROW(eCT_UnsignedNormalisedInteger, 8, "Unsigned Normalised Integer", "UNorm", 32, false),
    ROW(eCT_SignedNormalisedInteger, 9, "Signed Normalised Integer", "SNorm", 32, true),
    ROW(eCT_UnsignedInteger, 10, "Unsigned Integer", "UInt", 32, false),
    ROW(eCT_SignedInteger, 11, "Signed Integer", "SInt", 32, true),
    ROW(eCT_SignedFloatingPoint, 12, "Signed Floating Point", "Float", 32, true),
    ROW(eCT_UnsignedFloatingPoint, 13, "Unsigned Floating Point", "UFloat", 32, false),
};
// clang-format on
#undef ROW

} // namespace

TEST(ChannelTypes, EveryNumberHasItsNamesAndStorage)
{
    ASSERT_EQ(14u, std::size(k_aExpected));
    ASSERT_EQ(14u, k_uiChannelTypeCount);
    for (const ExpectedType& expected : k_aExpected)
    {
        SCOPED_TRACE(expected.strLongName);
        EXPECT_EQ(expected.uiNumber, expected.eType);
        EXPECT_EQ(expected.strLongName, getChannelTypeName(expected.eType, false));
        EXPECT_EQ(expected.strShortName, getChannelTypeName(expected.eType, true));
        EXPECT_EQ(expected.uiStorageBits, getStorageBits(expected.eType));
        EXPECT_EQ(expected.bSigned, isSignedChannelType(expected.eType));
    }
}

TEST(ChannelTypes, AnEnumeratorIsTheLongNameWithoutBlanks)
{
    for (const ExpectedType& expected : k_aExpected)
    {
        std::string strEnumerator = "eCT_";
        for (const char c : std::string(expected.strLongName))
            if (c != ' ')
                strEnumerator += c;
        EXPECT_EQ(strEnumerator, expected.strEnumerator);
    }
}

TEST(ChannelTypes, OtherNumbersHaveNoNameNoStorageAndNoSign)
{
    for (const uint32_t uiNumber : {14u, 15u, 32u, 33u, 0x80000001u, 0xFFFFFFFFu})
    {
        const auto eType = static_cast<EMOXTChannelType>(uiNumber);
        EXPECT_EQ("", getChannelTypeName(eType, false)) << uiNumber;
        EXPECT_EQ("", getChannelTypeName(eType, true)) << uiNumber;
        EXPECT_EQ(0u, getStorageBits(eType)) << uiNumber;
        EXPECT_FALSE(isSignedChannelType(eType)) << uiNumber;
    }
}

TEST(ChannelNames, EachLetterHasItsNumber)
{
    EXPECT_EQ(1u, eChannelRed);
    EXPECT_EQ(2u, eChannelGreen);
    EXPECT_EQ(3u, eChannelBlue);
    EXPECT_EQ(4u, eChannelAlpha);
    EXPECT_EQ(5u, eChannelLuminance);
    EXPECT_EQ(6u, eChannelIntensity);
    EXPECT_EQ(7u, eChannelUnspecified);
    EXPECT_EQ(eChannelRed, getChannelName('r'));
    EXPECT_EQ(eChannelGreen, getChannelName('g'));
    EXPECT_EQ(eChannelBlue, getChannelName('b'));
    EXPECT_EQ(eChannelAlpha, getChannelName('a'));
    EXPECT_EQ(eChannelLuminance, getChannelName('l'));
    EXPECT_EQ(eChannelIntensity, getChannelName('i'));
    EXPECT_EQ(eChannelUnspecified, getChannelName('x'));
}

TEST(ChannelNames, EveryOtherLetterIsNoChannel)
{
    EXPECT_EQ(0u, eChannelNone);
    const std::string strLetters = "rgbalix";
    for (int i = 0; i < 256; ++i)
    {
        if (strLetters.find(static_cast<char>(i)) == std::string::npos)
        {
            EXPECT_EQ(eChannelNone, getChannelName(static_cast<char>(i))) << i;
        }
    }
}

TEST(Enumerations, OfSpacesAxesAndFiltersHaveTheNumbersOfFilesAndLists)
{
    EXPECT_EQ(0u, eCS_Linear);
    EXPECT_EQ(1u, eCS_sRGB);
    EXPECT_EQ(0u, eAxisX);
    EXPECT_EQ(1u, eAxisY);
    EXPECT_EQ(2u, eAxisZ);
    EXPECT_EQ(0u, eResizeNearest);
    EXPECT_EQ(1u, eResizeLinear);
    EXPECT_EQ(2u, eResizeCubic);
}
