#include "Formats/D3DFormatTable.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "Support/DdsTables.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

/// 0 where the plain header cannot name it.
uint32_t numberWritten(MOXPixelWord pixelFormat, uint32_t uiType, EMOXTColourSpace eSpace = eCS_Linear)
{
    const D3DFormatRow* pRow = findD3DFormat(PixelEncoding{pixelFormat, static_cast<EMOXTChannelType>(uiType), eSpace});
    return pRow != nullptr ? pRow->ui32Number : 0;
}

D3DPixelFormat masks(uint32_t uiFlags, uint32_t uiBits, const std::array<uint32_t, 4>& aui32Masks)
{
    // In such files the FourCC field may hold anything.
    return {uiFlags, 0x30315844, uiBits, aui32Masks};
}

} // namespace

TEST(D3DFormatTable, EveryNumberIsReadAsItsLayoutAndType)
{
    for (const D3DReadRow& expected : k_aD3DReadRows)
    {
        SCOPED_TRACE(expected.uiNumber);
        const D3DFormatRow* pRow = findD3DFormat(expected.uiNumber);
        ASSERT_NE(nullptr, pRow);
        EXPECT_EQ(expected.pixelFormat, pRow->pixelFormat);
        EXPECT_EQ(expected.uiType, pRow->eChannelType);
        EXPECT_FALSE(pRow->isFourCC());
    }
}

TEST(D3DFormatTable, EveryFourCCIsReadAsItsFormat)
{
    for (const FourCCRow& expected : k_aFourCCRows)
    {
        SCOPED_TRACE(expected.strLetters);
        const D3DFormatRow* pRow = findD3DFormat(expected.uiNumber);
        ASSERT_NE(nullptr, pRow);
        EXPECT_EQ(MOXPixelWord(uint64_t{expected.uiFormat}), pRow->pixelFormat);
        EXPECT_EQ(0u, pRow->eChannelType);
        EXPECT_EQ(expected.bPreMultiplied, pRow->bPreMultiplied);
        EXPECT_TRUE(pRow->isFourCC());
    }
}

TEST(D3DFormatTable, NoOtherNumberIsKnown)
{
    std::set<uint32_t> known;
    for (const D3DReadRow& row : k_aD3DReadRows)
        known.insert(row.uiNumber);
    for (uint32_t uiNumber = 0; uiNumber < 70000; ++uiNumber)
        EXPECT_EQ(known.count(uiNumber) != 0, findD3DFormat(uiNumber) != nullptr) << uiNumber;
    EXPECT_EQ(nullptr, findD3DFormat(makeFourCC("DX10")));
    EXPECT_EQ(nullptr, findD3DFormat(makeFourCC("ATI2")));
}

TEST(D3DFormatTable, EveryLayoutIsWrittenUnderItsNumber)
{
    for (const D3DWriteRow& expected : k_aD3DWriteRows)
        EXPECT_EQ(expected.uiNumber, numberWritten(expected.pixelFormat, expected.uiType)) << expected.uiNumber << " " << expected.uiType;
}

TEST(D3DFormatTable, NoLayoutIsWrittenWithATypeThatIsNotListed)
{
    std::set<uint64_t> layouts;
    for (const D3DReadRow& row : k_aD3DReadRows)
        layouts.insert(row.pixelFormat.getWord());
    for (const D3DWriteRow& row : k_aD3DWriteRows)
        layouts.insert(row.pixelFormat.getWord());
    for (const DXGIRow& row : k_aDXGIRows)
        if (!row.pixelFormat.isCompressed())
            layouts.insert(row.pixelFormat.getWord());
    for (const uint64_t uiLayout : layouts)
    {
        for (uint32_t uiType = 0; uiType < 16; ++uiType)
        {
            uint32_t uiExpected = 0;
            for (const D3DWriteRow& row : k_aD3DWriteRows)
                if (row.uiType == uiType && row.pixelFormat.getWord() == uiLayout)
                    uiExpected = row.uiNumber;
            EXPECT_EQ(uiExpected, numberWritten(MOXPixelWord(uiLayout), uiType)) << std::hex << uiLayout << " " << uiType;
            EXPECT_EQ(uiExpected, numberWritten(MOXPixelWord(uiLayout), uiType, eCS_sRGB)) << "the plain header knows of no space";
        }
    }
    EXPECT_EQ(0u, numberWritten(k_RGBA8, 0));
    EXPECT_EQ(0u, numberWritten(layout("rg", 16, 16), 12));
}

TEST(D3DFormatTable, NumberedFormatsAreWrittenAsTheirFourCCWhateverTypeAndSpace)
{
    for (const FourCCRow& row : k_aFourCCRows)
        for (uint32_t uiType = 0; uiType < 14; ++uiType)
            EXPECT_EQ(row.uiNumber, numberWritten(MOXPixelWord(uint64_t{row.uiFormat}), uiType, eCS_sRGB)) << row.strLetters;
    EXPECT_EQ(0x32435450u, numberWritten(ePF_MOXTC_2bpp_RGB, 0)) << "PTC2, without alpha";
    EXPECT_EQ(0x34435450u, numberWritten(ePF_MOXTC_4bpp_RGB, 0)) << "PTC4, without alpha";
}

TEST(D3DFormatTable, NumberedFormatsWithoutAFourCCAreNotWritten)
{
    const std::set<uint32_t> written = {0, 1, 2, 3, 7, 8, 9, 10, 11, 16, 17, 20, 21};
    for (uint32_t uiFormat = 0; uiFormat < 60; ++uiFormat)
        EXPECT_EQ(written.count(uiFormat) != 0, numberWritten(MOXPixelWord(uint64_t{uiFormat}), 0) != 0) << uiFormat;
}

TEST(D3DFormatMasks, EveryRowIsReadWithItsAlphaFlag)
{
    // Without the flag the alpha mask of these is not looked at, and they are what their colour masks alone stand for.
    const std::map<uint32_t, uint32_t> withoutFlag = {{21, 22}, {25, 24}, {32, 33}};
    for (const D3DMaskRow& row : k_aD3DMaskRows)
    {
        const auto other = withoutFlag.find(row.uiNumber);
        const uint32_t uiWithout = row.cAlphaFlag != 'y' ? row.uiNumber : other != withoutFlag.end() ? other->second : 0;
        EXPECT_EQ(uiWithout, findD3DNumber(masks(row.uiReadFlag, row.uiBits, row.aui32Masks))) << row.uiNumber;
        const uint32_t uiWith = row.cAlphaFlag != 'n' ? row.uiNumber : 0;
        EXPECT_EQ(uiWith, findD3DNumber(masks(row.uiReadFlag | 1, row.uiBits, row.aui32Masks))) << row.uiNumber;
    }
}

TEST(D3DFormatMasks, EveryMaskThatARowTellsCounts)
{
    for (const D3DMaskRow& row : k_aD3DMaskRows)
    {
        for (size_t i = 0; i < 4; ++i)
        {
            D3DMaskRow other = row;
            other.aui32Masks[i] ^= 0x01000000;
            const uint32_t uiFlags = row.uiReadFlag | (row.cAlphaFlag == 'y' ? 1 : 0);
            const uint32_t uiExpected = row.aui32Masks[i] != 0 ? 0 : row.uiNumber;
            EXPECT_EQ(uiExpected, findD3DNumber(masks(uiFlags, row.uiBits, other.aui32Masks))) << row.uiNumber << " mask " << i;
        }
    }
}

TEST(D3DFormatMasks, TheBitCountCounts)
{
    for (const D3DMaskRow& row : k_aD3DMaskRows)
        for (const uint32_t uiFlags : {row.uiReadFlag, row.uiReadFlag | 1})
            for (const uint32_t uiBits : {0u, row.uiBits + 1, 0xFFFFFFFFu})
                EXPECT_EQ(0u, findD3DNumber(masks(uiFlags, uiBits, row.aui32Masks))) << row.uiNumber;
}

TEST(D3DFormatMasks, TwoSignedChannelsWithATwoBitAlphaMaskAreNothing)
{
    EXPECT_EQ(0u, findD3DNumber(masks(0x80000, 32, {0xFFFF, 0xFFFF0000, 0, 0xC0000000})));
    EXPECT_EQ(64u, findD3DNumber(masks(0x80000, 32, {0xFFFF, 0xFFFF0000, 0, 0x80000000})));
}

TEST(D3DFormatMasks, OfSeveralKindsTheFirstCounts)
{
    const std::array<uint32_t, 4> aui32Bump = {0xFF, 0xFF00, 0xFF0000, 0xFF000000};
    EXPECT_EQ(32u, findD3DNumber(masks(0x41 | 0x40000 | 0x80000, 32, aui32Bump)));
    EXPECT_EQ(62u, findD3DNumber(masks(0x40000 | 0x80000 | 0x20000, 32, aui32Bump)));
    EXPECT_EQ(63u, findD3DNumber(masks(0x80000 | 0x20000 | 2, 32, aui32Bump)));
    EXPECT_EQ(50u, findD3DNumber(masks(0x20000 | 2, 8, {0xFF, 0, 0, 0xFF})));
    EXPECT_EQ(0u, findD3DNumber(masks(0x40 | 2, 8, {0, 0, 0, 0xFF}))) << "the first kind has no such masks";
    EXPECT_EQ(0u, findD3DNumber(masks(0, 8, {0, 0, 0, 0xFF}))) << "no kind at all";
}

TEST(D3DFormatMasks, TheFourCCFlagGoesBeforeAllMasks)
{
    D3DPixelFormat format = masks(0x41 | 4, 32, {0xFF0000, 0xFF00, 0xFF, 0xFF000000});
    format.ui32FourCC = 0x31545844;
    EXPECT_EQ(0x31545844u, findD3DNumber(format));
    format.ui32FourCC = 116;
    EXPECT_EQ(116u, findD3DNumber(format));
}

TEST(D3DFormatMasks, EveryRowIsWrittenWithItsFlagsAndMasksAndTheFieldOfTheFourCCKeepsDX10)
{
    for (const D3DWriteRow& written : k_aD3DWriteRows)
    {
        SCOPED_TRACE(written.uiNumber);
        const D3DFormatRow* pRow =
            findD3DFormat(PixelEncoding{written.pixelFormat, static_cast<EMOXTChannelType>(written.uiType), eCS_Linear});
        ASSERT_NE(nullptr, pRow);
        const D3DPixelFormat format = describeD3DFormat(*pRow);

        const D3DMaskRow* pMasks = nullptr;
        for (const D3DMaskRow& row : k_aD3DMaskRows)
            if (row.uiNumber == written.uiNumber)
                pMasks = &row;
        if (pMasks == nullptr)
        {
            EXPECT_TRUE(written.uiNumber == 36 || (written.uiNumber >= 111 && written.uiNumber <= 116));
            EXPECT_EQ(4u, format.ui32Flags);
            EXPECT_EQ(written.uiNumber, format.ui32FourCC);
            EXPECT_EQ(0u, format.ui32BitCount);
            EXPECT_EQ((std::array<uint32_t, 4>{}), format.aui32Masks);
            continue;
        }
        EXPECT_EQ(pMasks->uiWrittenFlags, format.ui32Flags);
        EXPECT_EQ(0x30315844u, format.ui32FourCC);
        EXPECT_EQ(pMasks->uiBits, format.ui32BitCount);
        EXPECT_EQ(pMasks->aui32Masks, format.aui32Masks);
        EXPECT_EQ(written.uiNumber, findD3DNumber(format)) << "and is read back";
    }
}
