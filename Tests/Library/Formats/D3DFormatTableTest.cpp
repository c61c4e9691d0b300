#include "Formats/D3DFormatTable.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

using namespace moxtexture;

namespace
{

/// 0 where the plain header cannot name it.
uint32_t numberWritten(MOXPixelWord pixelFormat, uint32_t uiType, EMOXTColourSpace eSpace = eCS_Linear)
{
    const D3DFormatRow* pRow = findD3DFormat(PixelEncoding{pixelFormat, static_cast<EMOXTChannelType>(uiType), eSpace});
    return pRow != nullptr ? pRow->ui32Number : 0;
}

struct ReadRow
{
    uint32_t uiNumber;
    MOXPixelWord pixelFormat;
    uint32_t uiType;
};

// clang-format off
const ReadRow k_aReadRows[] = {
    { 20, layout("rgb", 8, 8, 8), 8 },
    { 21, layout("argb", 8, 8, 8, 8), 8 },
    { 22, layout("xrgb", 8, 8, 8, 8), 8 },
    { 23, layout("rgb", 5, 6, 5), 8 },
    { 24, layout("xrgb", 1, 5, 5, 5), 8 },
    { 25, layout("argb", 1, 5, 5, 5), 8 },
    { 26, layout("argb", 4, 4, 4, 4), 8 },
    { 27, layout("rgb", 3, 3, 2), 8 },
    { 28, layout("a", 8), 8 },
    { 29, layout("argb", 8, 3, 3, 2), 8 },
    { 30, layout("argb", 4, 4, 4, 4), 8 },
    { 31, layout("abgr", 2, 10, 10, 10), 8 },
    { 32, layout("abgr", 8, 8, 8, 8), 8 },
    { 33, layout("xbgr", 8, 8, 8, 8), 8 },
    { 34, layout("gr", 16, 16), 8 },
    { 35, layout("argb", 2, 10, 10, 10), 8 },
    { 36, layout("abgr", 16, 16, 16, 16), 8 },
    { 50, layout("l", 8), 8 },
    { 51, layout("al", 8, 8), 8 },
    { 52, layout("al", 4, 4), 8 },
    { 60, layout("gr", 8, 8), 9 },
    { 61, layout("lgr", 6, 5, 5), 9 },
    { 62, layout("xlgr", 8, 8, 8, 8), 9 },
    { 63, layout("abgr", 8, 8, 8, 8), 9 },
    { 64, layout("gr", 16, 16), 9 },
    { 67, layout("abgr", 2, 10, 10, 10), 9 },
    { 81, layout("l", 16), 8 },
    { 110, layout("abgr", 16, 16, 16, 16), 9 },
    { 111, layout("r", 32), 12 },
    { 112, layout("gr", 16, 16), 12 },
    { 113, layout("rgba", 16, 16, 16, 16), 12 },
    { 114, layout("r", 32), 12 },
    { 115, layout("gr", 32, 32), 12 },
    { 116, layout("abgr", 32, 32, 32, 32), 12 },
};

struct LetterRow
{
    const char* strLetters;
    uint32_t uiNumber; ///< the same letters, worked by hand: the first is the lowest byte
    uint32_t uiFormat;
    bool bPreMultiplied;
};

const LetterRow k_aLetterRows[] = {
    { "DXT1", 0x31545844, 7, false },
    { "DXT2", 0x32545844, 8, true },
    { "DXT3", 0x33545844, 9, false },
    { "DXT4", 0x34545844, 10, true },
    { "DXT5", 0x35545844, 11, false },
    { "PTC2", 0x32435450, 1, false },
    { "PTC4", 0x34435450, 3, false },
    { "UYVY", 0x59565955, 16, false },
    { "YUY2", 0x32595559, 17, false },
    { "RGBG", 0x47424752, 20, false },
    { "GRGB", 0x42475247, 21, false },
};

struct WriteRow
{
    uint32_t uiType;
    MOXPixelWord pixelFormat;
    uint32_t uiNumber;
};

const WriteRow k_aWriteRows[] = {
    { 0, layout("rgb", 8, 8, 8), 20 },      { 0, layout("argb", 8, 8, 8, 8), 21 },     { 0, layout("rgb", 3, 3, 2), 27 },
    { 0, layout("a", 8), 28 },              { 0, layout("l", 8), 50 },                 { 0, layout("al", 4, 4), 52 },
    { 0, layout("al", 8, 8), 51 },
    { 4, layout("rgb", 5, 6, 5), 23 },      { 4, layout("argb", 1, 5, 5, 5), 25 },     { 4, layout("xrgb", 1, 5, 5, 5), 24 },
    { 4, layout("argb", 4, 4, 4, 4), 26 },  { 4, layout("argb", 8, 3, 3, 2), 29 },     { 4, layout("gr", 16, 16), 34 },
    { 4, layout("abgr", 16, 16, 16, 16), 36 }, { 4, layout("l", 16), 81 },
    { 8, layout("rgb", 8, 8, 8), 20 },      { 8, layout("argb", 8, 8, 8, 8), 21 },     { 8, layout("rgb", 5, 6, 5), 23 },
    { 8, layout("xrgb", 1, 5, 5, 5), 24 },  { 8, layout("argb", 1, 5, 5, 5), 25 },     { 8, layout("argb", 4, 4, 4, 4), 26 },
    { 8, layout("rgb", 3, 3, 2), 27 },      { 8, layout("a", 8), 28 },                 { 8, layout("argb", 8, 3, 3, 2), 29 },
    { 8, layout("abgr", 2, 10, 10, 10), 31 }, { 8, layout("gr", 16, 16), 34 },         { 8, layout("argb", 2, 10, 10, 10), 35 },
    { 8, layout("abgr", 16, 16, 16, 16), 36 }, { 8, layout("l", 8), 50 },              { 8, layout("al", 8, 8), 51 },
    { 8, layout("al", 4, 4), 52 },          { 8, layout("l", 16), 81 },
    { 9, layout("gr", 8, 8), 60 },          { 9, layout("lgr", 6, 5, 5), 61 },         { 9, layout("xlgr", 8, 8, 8, 8), 62 },
    { 9, layout("abgr", 8, 8, 8, 8), 63 },  { 9, layout("gr", 16, 16), 64 },           { 9, layout("abgr", 2, 10, 10, 10), 67 },
    { 12, layout("r", 16), 111 },           { 12, layout("r", 32), 114 },              { 12, layout("gr", 16, 16), 112 },
    { 12, layout("rgba", 16, 16, 16, 16), 113 }, { 12, layout("abgr", 32, 32, 32, 32), 116 }, { 12, layout("rg", 32, 32), 115 },
};

struct MaskRow
{
    uint32_t uiNumber;
    uint32_t uiReadFlag;         ///< the kind of masks
    uint32_t uiBits;
    char cAlphaFlag;             ///< read: 'y', 'n' or '?' for any
    std::array<uint32_t, 4> aui32Masks;
    uint32_t uiWrittenFlags;     ///< 0: not written
};

const MaskRow k_aMaskRows[] = {
    { 27, 64,       8, '?', { 0xE0, 0x1C, 0x3, 0 },                       64 },
    { 26, 64,      16, 'y', { 0xF00, 0xF0, 0xF, 0xF000 },                 65 },
    { 29, 64,      16, 'y', { 0xE0, 0x1C, 0x3, 0xFF00 },                  65 },
    { 25, 64,      16, 'y', { 0x7C00, 0x3E0, 0x1F, 0x8000 },              65 },
    { 23, 64,      16, 'n', { 0xF800, 0x7E0, 0x1F, 0 },                   64 },
    { 24, 64,      16, 'n', { 0x7C00, 0x3E0, 0x1F, 0 },                   64 },
    { 20, 64,      24, '?', { 0xFF0000, 0xFF00, 0xFF, 0 },                64 },
    { 21, 64,      32, 'y', { 0xFF0000, 0xFF00, 0xFF, 0xFF000000 },       65 },
    { 22, 64,      32, 'n', { 0xFF0000, 0xFF00, 0xFF, 0 },                0 },
    { 31, 64,      32, 'y', { 0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000 },   65 },
    { 32, 64,      32, 'y', { 0xFF, 0xFF00, 0xFF0000, 0xFF000000 },       0 },
    { 33, 64,      32, 'n', { 0xFF, 0xFF00, 0xFF0000, 0 },                0 },
    { 35, 64,      32, 'y', { 0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000 },   65 },
    { 34, 64,      32, 'n', { 0xFFFF, 0xFFFF0000, 0, 0 },                 64 },
    { 62, 0x40000, 32, '?', { 0xFF, 0xFF00, 0xFF0000, 0 },                0x40000 },
    { 61, 0x40000, 16, '?', { 0x1F, 0x3E0, 0xFC00, 0 },                   0x40000 },
    { 63, 0x80000, 32, '?', { 0xFF, 0xFF00, 0xFF0000, 0xFF000000 },       0x80000 },
    { 67, 0x80000, 32, '?', { 0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000 },   0x80001 },
    { 64, 0x80000, 32, '?', { 0xFFFF, 0xFFFF0000, 0, 0 },                 0x80000 },
    { 60, 0x80000, 16, '?', { 0xFF, 0xFF00, 0, 0 },                       0x80000 },
    { 50, 0x20000,  8, 'n', { 0xFF, 0, 0, 0 },                            0x20000 },
    { 51, 0x20000, 16, 'y', { 0xFF, 0, 0, 0xFF00 },                       0x20001 },
    { 52, 0x20000,  8, 'y', { 0xF, 0, 0, 0xF0 },                          0x20001 },
    { 81, 0x20000, 16, 'n', { 0xFFFF, 0, 0, 0 },                          0x20000 },
    { 28, 2,        8, '?', { 0, 0, 0, 0xFF },                            2 },
};
// clang-format on

D3DPixelFormat masks(uint32_t uiFlags, uint32_t uiBits, const std::array<uint32_t, 4>& aui32Masks)
{
    // In such files the FourCC field may hold anything.
    return {uiFlags, 0x30315844, uiBits, aui32Masks};
}

} // namespace

TEST(D3DFormatTable, EveryNumberIsReadAsItsLayoutAndType)
{
    for (const ReadRow& expected : k_aReadRows)
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
    for (const LetterRow& expected : k_aLetterRows)
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
    for (const ReadRow& row : k_aReadRows)
        known.insert(row.uiNumber);
    for (uint32_t uiNumber = 0; uiNumber < 70000; ++uiNumber)
        EXPECT_EQ(known.count(uiNumber) != 0, findD3DFormat(uiNumber) != nullptr) << uiNumber;
    EXPECT_EQ(nullptr, findD3DFormat(makeFourCC("DX10")));
    EXPECT_EQ(nullptr, findD3DFormat(makeFourCC("ATI2")));
}

TEST(D3DFormatTable, EveryLayoutIsWrittenUnderItsNumber)
{
    for (const WriteRow& expected : k_aWriteRows)
        EXPECT_EQ(expected.uiNumber, numberWritten(expected.pixelFormat, expected.uiType)) << expected.uiNumber << " " << expected.uiType;
}

TEST(D3DFormatTable, NoLayoutIsWrittenWithATypeThatIsNotListed)
{
    for (const ReadRow& layoutRow : k_aReadRows)
    {
        for (uint32_t uiType = 0; uiType < 14; ++uiType)
        {
            uint32_t uiExpected = 0;
            for (const WriteRow& row : k_aWriteRows)
                if (row.uiType == uiType && row.pixelFormat == layoutRow.pixelFormat)
                    uiExpected = row.uiNumber;
            EXPECT_EQ(uiExpected, numberWritten(layoutRow.pixelFormat, uiType)) << layoutRow.uiNumber << " " << uiType;
        }
    }
    EXPECT_EQ(0u, numberWritten(k_RGBA8, 0));
    EXPECT_EQ(0u, numberWritten(layout("rg", 16, 16), 12));
}

TEST(D3DFormatTable, NumberedFormatsAreWrittenAsTheirFourCCWhateverTypeAndSpace)
{
    for (const LetterRow& row : k_aLetterRows)
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
    for (const MaskRow& row : k_aMaskRows)
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
    for (const MaskRow& row : k_aMaskRows)
    {
        for (size_t i = 0; i < 4; ++i)
        {
            MaskRow other = row;
            other.aui32Masks[i] ^= 0x01000000;
            const uint32_t uiFlags = row.uiReadFlag | (row.cAlphaFlag == 'y' ? 1 : 0);
            const uint32_t uiExpected = row.aui32Masks[i] != 0 ? 0 : row.uiNumber;
            EXPECT_EQ(uiExpected, findD3DNumber(masks(uiFlags, row.uiBits, other.aui32Masks))) << row.uiNumber << " mask " << i;
        }
    }
}

TEST(D3DFormatMasks, TheBitCountCounts)
{
    for (const MaskRow& row : k_aMaskRows)
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
    for (const WriteRow& written : k_aWriteRows)
    {
        SCOPED_TRACE(written.uiNumber);
        const D3DFormatRow* pRow =
            findD3DFormat(PixelEncoding{written.pixelFormat, static_cast<EMOXTChannelType>(written.uiType), eCS_Linear});
        ASSERT_NE(nullptr, pRow);
        const D3DPixelFormat format = describeD3DFormat(*pRow);

        const MaskRow* pMasks = nullptr;
        for (const MaskRow& row : k_aMaskRows)
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
