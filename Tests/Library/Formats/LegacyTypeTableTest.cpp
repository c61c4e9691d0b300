#include "Formats/LegacyTypeTable.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

#include "Support/LegacyTypeRows.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

const LegacyReadRow* findRead(uint32_t uiType)
{
    const auto isIt = [&](const LegacyReadRow& row) { return row.uiType == uiType; };
    const auto* pRow = std::find_if(std::begin(k_aLegacyRead), std::end(k_aLegacyRead), isIt);
    return pRow != std::end(k_aLegacyRead) ? pRow : nullptr;
}

/// What an API is asked for, with 0 for what it does not ask: the row that writes it, if any, has the same there.
LegacyNumbers asAsked(const LegacyNumbers& numbers, uint32_t uiApi)
{
    LegacyNumbers asked = numbers;
    const bool bNumber = numbers.uiWord >> 32 == 0;
    if (uiApi <= 5 || bNumber)
        asked.bPreMultiplied = false;
    if (uiApi <= 5)
        asked.uiColourSpace = 0;
    if (!bNumber)
        return asked;
    const bool bBC = numbers.uiWord >= 7 && numbers.uiWord <= 13;
    if (uiApi != 6 || !bBC)
        asked.uiChannelType = asked.uiColourSpace = 0;
    // BC4 and BC5 of api 6 have one number a type, and its colour space is the table's.
    if (uiApi == 6 && (numbers.uiWord == 12 || numbers.uiWord == 13))
        asked.uiColourSpace = numbers.uiWord == 12 && numbers.uiChannelType == 8 ? 1 : 0;
    return asked;
}

/// The type by the rows alone; -1 if there is none.
int32_t typeByRows(const LegacyNumbers& numbers, uint32_t uiApi)
{
    const uint32_t uiFamily = uiApi == 2 || uiApi == 4 ? 1 : uiApi == 5 ? 3 : uiApi;
    const PixelEncoding asked = encodingOf(asAsked(numbers, uiApi));
    const auto isIt = [&](const LegacyWrittenRow& row) { return row.uiApi == uiFamily && encodingOf(row.numbers) == asked; };
    const auto* pRow = std::find_if(std::begin(k_aLegacyWritten), std::end(k_aLegacyWritten), isIt);
    return pRow != std::end(k_aLegacyWritten) ? pRow->iType : -1;
}

/// Every word of the tables, every format number and some words that no table has.
std::vector<uint64_t> wordsOfAllKinds()
{
    std::vector<uint64_t> words;
    for (const LegacyReadRow& row : k_aLegacyRead)
        words.push_back(row.numbers.uiWord);
    for (const LegacyWrittenRow& row : k_aLegacyWritten)
        words.push_back(row.numbers.uiWord);
    for (uint64_t i = 0; i <= 60; ++i)
        words.push_back(i);
    // "rgba" in half a byte each too much, "r" of 24 bits, "argb" with its bits the other way round, "xbgr" 1 5 5 5.
    for (const uint64_t uiWord : {0x0909090961626772u, 0x0000001800000072u, 0x0105050562677261u, 0x0505050172676278u})
        words.push_back(uiWord);
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

PixelEncoding typed(MOXPixelWord format, EMOXTChannelType eType, EMOXTColourSpace eSpace = eCS_Linear, bool bPreMultiplied = false)
{
    return {format, eType, eSpace, bPreMultiplied};
}

} // namespace

TEST(LegacyTypes, EveryNumberOfTheTableGivesItsEncoding)
{
    EXPECT_EQ(154u, std::size(k_aLegacyRead));
    for (const LegacyReadRow& row : k_aLegacyRead)
        EXPECT_EQ(encodingOf(row.numbers), legacyTypeToFormat(row.uiType)) << row.uiType;
}

TEST(LegacyTypes, NumbersThatNameNoTypeGiveNoFormatAndChannelType14)
{
    for (uint32_t i = 0; i < 300; ++i)
    {
        if (findRead(i) == nullptr)
        {
            EXPECT_EQ(encodingOf({51, 14, 0, false}), legacyTypeToFormat(i)) << i;
        }
    }
    EXPECT_EQ(encodingOf({51, 14, 0, false}), legacyTypeToFormat(0xFFFFFFFF));
}

TEST(LegacyTypes, Type12IsFormat1)
{
    EXPECT_EQ(typed(ePF_MOXTC_2bpp_RGBA, eCT_UnsignedNormalisedByte), legacyTypeToFormat(12));
}

TEST(LegacyTypes, EveryEncodingOfAnApiIsWrittenAsItsType)
{
    for (const LegacyWrittenRow& row : k_aLegacyWritten)
        EXPECT_EQ(row.iType, formatToLegacyType(encodingOf(row.numbers), row.uiApi)) << row.uiApi << ": " << row.numbers.uiWord;
}

TEST(LegacyTypes, EveryEncodingThatThereIsHasTheTypeOfItsRowOrNone)
{
    for (uint32_t uiApi = 1; uiApi <= 7; ++uiApi)
    {
        for (const uint64_t uiWord : wordsOfAllKinds())
        {
            for (uint32_t uiType = 0; uiType <= 14; ++uiType)
            {
                for (const uint32_t uiSpace : {0u, 1u, 2u})
                {
                    for (const bool bPreMultiplied : {false, true})
                    {
                        const LegacyNumbers numbers = {uiWord, uiType, uiSpace, bPreMultiplied};
                        ASSERT_EQ(typeByRows(numbers, uiApi), formatToLegacyType(encodingOf(numbers), uiApi))
                            << "api " << uiApi << ", word " << std::hex << uiWord << ", type " << std::dec << uiType << ", space "
                            << uiSpace << (bPreMultiplied ? ", pre-multiplied" : "");
                    }
                }
            }
        }
    }
}

TEST(LegacyTypes, TheApisOfAFamilyWriteAlike)
{
    for (const LegacyWrittenRow& row : k_aLegacyWritten)
    {
        const PixelEncoding encoding = encodingOf(row.numbers);
        const int32_t iGL = formatToLegacyType(encoding, 1);
        EXPECT_EQ(iGL, formatToLegacyType(encoding, 2));
        EXPECT_EQ(iGL, formatToLegacyType(encoding, 4));
        EXPECT_EQ(formatToLegacyType(encoding, 3), formatToLegacyType(encoding, 5));
    }
}

TEST(LegacyTypes, OtherApisWriteNothing)
{
    for (const LegacyWrittenRow& row : k_aLegacyWritten)
        for (const uint32_t uiApi : {0u, 8u, 9u, 0xFFFFFFFFu})
            EXPECT_EQ(-1, formatToLegacyType(encodingOf(row.numbers), uiApi)) << uiApi;
}

TEST(LegacyTypes, WhatIsWrittenIsReadBackAsItWasButForTheRowsThatDiffer)
{
    // api 6 and 7 ask for everything of a layout, so all of it comes back.
    for (const LegacyWrittenRow& row : k_aLegacyWritten)
    {
        if (row.uiApi >= 6)
        {
            EXPECT_EQ(encodingOf(row.numbers), legacyTypeToFormat(static_cast<uint32_t>(row.iType))) << row.iType;
        }
    }
    EXPECT_EQ(layout("l", 8), legacyTypeToFormat(22).pixelFormat);
    EXPECT_EQ(layout("la", 8, 8), legacyTypeToFormat(23).pixelFormat);
    EXPECT_EQ(layout("gr", 32, 32), legacyTypeToFormat(52).pixelFormat);
    EXPECT_EQ(layout("argb", 2, 10, 10, 10), legacyTypeToFormat(44).pixelFormat);
    EXPECT_EQ(MOXPixelWord(ePF_MOXTC_2bpp_RGBA), legacyTypeToFormat(24).pixelFormat);
}

TEST(LegacyTypes, TheOlderApisAskForNeitherColourSpaceNorPreMultiplication)
{
    for (const LegacyWrittenRow& row : k_aLegacyWritten)
    {
        if (row.uiApi > 3)
            continue;
        PixelEncoding encoding = encodingOf(row.numbers);
        encoding.eColourSpace = eCS_sRGB;
        EXPECT_EQ(row.iType, formatToLegacyType(encoding, row.uiApi));
        encoding.bPreMultiplied = true;
        EXPECT_EQ(row.iType, formatToLegacyType(encoding, row.uiApi));
    }
}

TEST(LegacyTypes, NumberedFormatsAreNotAskedForTheirChannelTypeButTheBCFormatsOfApi6)
{
    for (const LegacyWrittenRow& row : k_aLegacyWritten)
    {
        PixelEncoding encoding = encodingOf(row.numbers);
        if (!encoding.pixelFormat.isCompressed())
            continue;
        const bool bAsked = row.uiApi == 6 && encoding.pixelFormat.getFormat() <= ePF_BC5;
        encoding.eChannelType = eCT_SignedFloatingPoint;
        EXPECT_EQ(bAsked ? -1 : row.iType, formatToLegacyType(encoding, row.uiApi)) << row.iType;
    }
}

TEST(LegacyTypes, Api6AsksTheColourSpaceOfBC1ToBC3Only)
{
    EXPECT_EQ(134, formatToLegacyType(typed(ePF_BC4, eCT_UnsignedNormalisedInteger, eCS_Linear), 6));
    EXPECT_EQ(136, formatToLegacyType(typed(ePF_BC5, eCT_UnsignedNormalisedInteger, eCS_sRGB), 6));
    EXPECT_EQ(135, formatToLegacyType(typed(ePF_BC4, eCT_SignedNormalisedInteger, eCS_sRGB), 6));
    EXPECT_EQ(126, formatToLegacyType(typed(ePF_2_Planar_RGBG_8_8_8_8, eCT_UnsignedNormalisedByte, eCS_sRGB), 6));
    EXPECT_EQ(129, formatToLegacyType(typed(ePF_BC1, eCT_UnsignedNormalisedInteger, eCS_sRGB), 6));
}

TEST(LegacyTypes, WhereSeveralNumbersHaveOneRowTheLowestIsWritten)
{
    EXPECT_EQ(43, formatToLegacyType(typed(layout("argb", 2, 10, 10, 10), eCT_UnsignedNormalisedInteger), 3)); // 43, 44
    EXPECT_EQ(48, formatToLegacyType(typed(layout("r", 16), eCT_SignedFloatingPoint), 6));                     // 48, 114
    EXPECT_EQ(51, formatToLegacyType(typed(layout("r", 32), eCT_SignedFloatingPoint), 6));                     // 51, 107
    EXPECT_EQ(98, formatToLegacyType(typed(k_RGBA8, eCT_UnsignedNormalisedByte, eCS_sRGB), 6));                // 98, 145
    EXPECT_EQ(119, formatToLegacyType(typed(layout("r", 8), eCT_UnsignedNormalisedByte), 6));                  // 119, 123
    EXPECT_EQ(97, formatToLegacyType(typed(k_RGBA8, eCT_UnsignedNormalisedByte), 6)); // of 18, 97, 152 the api's own
}

TEST(LegacyTypes, EncodingsWithoutATypeOfTheApiAreRefused)
{
    const auto eByte = eCT_UnsignedNormalisedByte;
    const auto eShort = eCT_UnsignedNormalisedShort;
    for (uint32_t uiApi = 1; uiApi <= 7; ++uiApi)
    {
        for (const EMOXTPixelFormat eFormat : {ePF_BC6, ePF_BC7, ePF_ETC2_RGB, ePF_EAC_R11, ePF_ASTC_4x4, ePF_Count})
            EXPECT_EQ(-1, formatToLegacyType(typed(eFormat, eByte), uiApi)) << eFormat;
        EXPECT_EQ(-1, formatToLegacyType(typed(layout("rgba", 9, 9, 9, 5), eByte), uiApi));
    }
    // Each first as it is written.
    EXPECT_EQ(18, formatToLegacyType(typed(k_RGBA8, eByte), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(k_RGBA8, eShort), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(k_RGBA8, eCT_SignedNormalisedByte), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("l", 8), eByte), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(ePF_BC1, eByte), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(ePF_ETC1, eByte), 3));
    EXPECT_EQ(-1, formatToLegacyType(typed(k_RGBA8, eByte), 3));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("argb", 8, 8, 8, 8), eCT_UnsignedByte), 3));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("gr", 32, 32), eCT_SignedFloatingPoint), 3));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("bgr", 10, 11, 11), eCT_UnsignedFloatingPoint), 6));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("abgr", 8, 8, 8, 8), eCT_SignedNormalisedInteger), 6));
    EXPECT_EQ(-1, formatToLegacyType(typed(ePF_BC1, eByte), 6));
    EXPECT_EQ(-1, formatToLegacyType(typed(ePF_Shared_Exponent_RGB999_E5, eCT_SignedFloatingPoint), 6));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("rgbx", 8, 8, 8, 8), eByte, eCS_Linear, true), 7));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("a", 8), eByte, eCS_sRGB), 7));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("rgb", 5, 6, 5), eShort, eCS_Linear), 7));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("rgb", 5, 6, 5), eShort, eCS_sRGB, true), 7));
}
