#include "Formats/GLFormatTable.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace moxtexture;

namespace
{

struct Expected
{
    uint32_t uiInternal;
    uint64_t uiWord; ///< letters in bytes 0 to 3, bits in bytes 4 to 7, or a format's number
    uint32_t uiChannelType;
    bool bSRGB;
};

/// Letters and their bit counts, one for all or one each.
uint64_t word(const std::string& strLetters, const std::vector<uint8_t>& bits)
{
    uint64_t uiWord = 0;
    for (size_t i = 0; i < strLetters.size(); ++i)
        uiWord |= uint64_t{static_cast<uint8_t>(strLetters[i])} << (8 * i) | uint64_t{bits.size() == 1 ? bits[0] : bits[i]} << (32 + 8 * i);
    return uiWord;
}

/// Every internal format that alone tells the encoding.
std::vector<Expected> expectedRows()
{
    std::vector<Expected> rows = {
        {10768, word("rgb", {3, 3, 2}), 0, false},
        {32828, word("a", {8}), 0, false},
        {32830, word("a", {16}), 0, false},
        {32832, word("l", {8}), 0, false},
        {32834, word("l", {16}), 0, false},
        {32837, word("la", {8}), 0, false},
        {32849, word("rgb", {8}), 0, false},
        {32850, word("rgbx", {10, 10, 10, 2}), 8, false},
        {32852, word("rgb", {16}), 4, false},
        {32854, word("rgba", {4}), 4, false},
        {32855, word("rgba", {5, 5, 5, 1}), 4, false},
        {32856, 0x0808080861626772u, 0, false},
        {32857, word("abgr", {2, 10, 10, 10}), 8, false},
        {32859, word("rgba", {16}), 4, false},
        {33321, word("r", {8}), 0, false},
        {33323, word("rg", {8}), 0, false},
        {33322, word("r", {16}), 4, false},
        {33324, 0x0000101000006772u, 4, false},
        {33325, word("r", {16}), 12, false},
        {33326, word("r", {32}), 12, false},
        {33327, word("rg", {16}), 12, false},
        {33328, word("rg", {32}), 12, false},
        {33329, word("r", {8}), 3, false},
        {33330, word("r", {8}), 2, false},
        {33331, word("r", {16}), 7, false},
        {33332, word("r", {16}), 6, false},
        {33333, word("r", {32}), 11, false},
        {33334, word("r", {32}), 10, false},
        {33335, word("rg", {8}), 3, false},
        {33336, word("rg", {8}), 2, false},
        {33337, word("rg", {16}), 7, false},
        {33338, word("rg", {16}), 6, false},
        {33339, word("rg", {32}), 11, false},
        {33340, word("rg", {32}), 10, false},
        {33776, 7, 0, false},
        {33778, 9, 0, false},
        {33779, 11, 0, false},
        {34836, 0x2020202061626772u, 12, false},
        {34837, word("rgb", {32}), 12, false},
        {34838, word("a", {32}), 12, false},
        {34840, word("l", {32}), 12, false},
        {34841, word("la", {32}), 12, false},
        {34842, word("rgba", {16}), 12, false},
        {34843, word("rgb", {16}), 12, false},
        {34844, word("a", {16}), 12, false},
        {34846, word("l", {16}), 12, false},
        {34847, word("la", {16}), 12, false},
        {35412, 0, 0, true},
        {35413, 2, 0, true},
        {35414, 1, 0, true},
        {35415, 3, 0, true},
        {35840, 2, 0, false},
        {35841, 0, 0, false},
        {35842, 3, 0, false},
        {35843, 1, 0, false},
        {35898, word("bgr", {10, 11, 11}), 13, false},
        {35901, 19, 13, false},
        {35905, word("rgb", {8}), 0, true},
        {35907, word("rgba", {8}), 0, true},
        {36194, word("rgb", {5, 6, 5}), 4, false},
        {36196, 6, 0, false},
        {36208, word("rgba", {32}), 11, false},
        {36209, word("rgb", {32}), 10, false},
        {36214, word("rgba", {16}), 6, false},
        {36215, word("rgb", {16}), 6, false},
        {36220, word("rgba", {8}), 2, false},
        {36221, word("rgb", {8}), 2, false},
        {36226, word("rgba", {32}), 10, false},
        {36227, word("rgb", {32}), 11, false},
        {36232, word("rgba", {16}), 7, false},
        {36233, word("rgb", {16}), 7, false},
        {36238, word("rgba", {8}), 3, false},
        {36239, word("rgb", {8}), 3, false},
        {36756, word("r", {8}), 1, false},
        {36757, word("rg", {8}), 1, false},
        {36758, word("rgb", {8}), 1, false},
        {36759, word("rgba", {8}), 1, false},
        {36760, word("r", {16}), 5, false},
        {36761, word("rg", {16}), 5, false},
        {36762, word("rgb", {16}), 5, false},
        {36763, word("rgba", {16}), 5, false},
        {36884, word("a", {8}), 1, false},
        {36885, word("l", {8}), 1, false},
        {36886, word("la", {8}), 1, false},
        {36888, word("a", {16}), 1, false},
        {36889, word("l", {16}), 1, false},
        {36975, word("rgba", {10, 10, 10, 2}), 10, false},
        {37175, 4, 0, false},
        {37176, 5, 0, false},
        {37488, 25, 0, false},
        {37489, 25, 1, false},
        {37490, 26, 0, false},
        {37491, 26, 1, false},
        {37492, 22, 0, false},
        {37493, 22, 0, true},
        {37494, 24, 0, false},
        {37495, 24, 0, true},
        {37496, 23, 0, false},
        {37497, 23, 0, true},
        {37872, 4, 0, true},
        {37873, 5, 0, true},
    };
    for (uint32_t i = 0; i < 14; ++i)
    {
        rows.push_back({37808 + i, 27 + i, 0, false});
        rows.push_back({37840 + i, 27 + i, 0, true});
    }
    for (uint32_t i = 0; i < 10; ++i)
    {
        rows.push_back({37824 + i, 41 + i, 0, false});
        rows.push_back({37856 + i, 41 + i, 0, true});
    }
    return rows;
}

PixelEncoding encodingOf(uint64_t uiWord, uint32_t uiChannelType, bool bSRGB = false)
{
    return {MOXPixelWord(uiWord), static_cast<EMOXTChannelType>(uiChannelType), bSRGB ? eCS_sRGB : eCS_Linear};
}

PixelEncoding encodingOf(const Expected& row)
{
    return encodingOf(row.uiWord, row.uiChannelType, row.bSRGB);
}

using Numbers = std::vector<uint32_t>;

/// glType, glTypeSize, glFormat, glInternalFormat, glBaseInternalFormat: the order of the file; empty for nothing.
Numbers numbersOf(const PixelEncoding& encoding)
{
    const auto format = findGLFormat(encoding);
    if (!format)
        return {};
    return {format->ui32Type, format->ui32TypeSize, format->ui32Format, format->ui32InternalFormat, format->ui32BaseInternalFormat};
}

Numbers numbersOf(uint64_t uiWord, uint32_t uiChannelType, bool bSRGB = false)
{
    return numbersOf(encodingOf(uiWord, uiChannelType, bSRGB));
}

struct UnsizedExpected
{
    uint32_t uiInternal;
    std::string strLetters;
};
const UnsizedExpected k_aUnsized[] = {{6403, "r"}, {6406, "a"}, {6407, "rgb"}, {6408, "rgba"}, {6409, "l"}, {6410, "la"}, {33319, "rg"}};

struct ElementExpected
{
    uint32_t uiType;
    uint8_t uiBits;
    uint32_t uiChannelType;
};
const ElementExpected k_aElements[] = {{5120, 8, 1}, {5121, 8, 0}, {5122, 16, 5}, {5123, 16, 4}, {5124, 32, 9}, {5125, 32, 8}};

} // namespace

TEST(GLFormatTable, EverySizedNumberGivesItsEncodingWhateverTheType)
{
    for (const Expected& row : expectedRows())
    {
        SCOPED_TRACE(row.uiInternal);
        for (const uint32_t uiType : {0u, 5121u, 5126u, 33640u})
        {
            const auto encoding = findGLFormat(row.uiInternal, uiType);
            ASSERT_TRUE(encoding);
            EXPECT_EQ(encodingOf(row), *encoding);
        }
    }
}

TEST(GLFormatTable, EverySizedNumberIsWrittenForItsEncoding)
{
    for (const Expected& row : expectedRows())
    {
        SCOPED_TRACE(row.uiInternal);
        const Numbers numbers = numbersOf(encodingOf(row));
        ASSERT_EQ(5u, numbers.size());
        EXPECT_EQ(row.uiInternal, numbers[3]);
    }
}

TEST(GLFormatTable, UnsizedNumbersTakeTheirElementsFromTheType)
{
    for (const UnsizedExpected& format : k_aUnsized)
    {
        for (const ElementExpected& element : k_aElements)
        {
            SCOPED_TRACE(format.strLetters + " " + std::to_string(element.uiType));
            const auto encoding = findGLFormat(format.uiInternal, element.uiType);
            ASSERT_TRUE(encoding);
            EXPECT_EQ(encodingOf(word(format.strLetters, {element.uiBits}), element.uiChannelType), *encoding);
        }
        for (const uint32_t uiType : {0u, 5119u, 5126u, 5131u, 33640u})
            EXPECT_FALSE(findGLFormat(format.uiInternal, uiType)) << format.strLetters << " " << uiType;
    }
}

TEST(GLFormatTable, PackedTypesBelongToOneUnsizedNumber)
{
    EXPECT_EQ(encodingOf(word("rgb", {5, 6, 5}), 4), findGLFormat(6407, 33635));
    EXPECT_EQ(encodingOf(word("rgb", {3, 3, 2}), 0), findGLFormat(6407, 32818));
    EXPECT_EQ(encodingOf(word("rgba", {4}), 4), findGLFormat(6408, 32819));
    EXPECT_EQ(encodingOf(word("rgba", {5, 5, 5, 1}), 4), findGLFormat(6408, 32820));
    EXPECT_FALSE(findGLFormat(6408, 33635));
    EXPECT_FALSE(findGLFormat(6408, 32818));
    EXPECT_FALSE(findGLFormat(6407, 32819));
    EXPECT_FALSE(findGLFormat(6407, 32820));
    EXPECT_FALSE(findGLFormat(6403, 33635));
}

TEST(GLFormatTable, BlueFirstIsReadWithBytesOnly)
{
    EXPECT_EQ(encodingOf(word("bgra", {8}), 0), findGLFormat(32993, 5121));
    EXPECT_FALSE(findGLFormat(32993, 0));
    EXPECT_FALSE(findGLFormat(32993, 5123));
    EXPECT_EQ((Numbers{5121, 1, 32993, 32993, 32993}), numbersOf(word("bgra", {8}), 0));
}

TEST(GLFormatTable, NumbersThatOthersWriteAreReadAndNotWritten)
{
    EXPECT_EQ(encodingOf(7, 0), findGLFormat(33777, 0));
    EXPECT_EQ(encodingOf(7, 0, true), findGLFormat(35916, 0));
    EXPECT_EQ(encodingOf(7, 0, true), findGLFormat(35917, 0));
    EXPECT_EQ(encodingOf(9, 0, true), findGLFormat(35918, 0));
    EXPECT_EQ(encodingOf(11, 0, true), findGLFormat(35919, 0));
    for (const bool bSRGB : {false, true})
    {
        EXPECT_EQ((Numbers{0, 1, 0, 33776, 6407}), numbersOf(7, 0, bSRGB));
        EXPECT_EQ((Numbers{0, 1, 0, 33778, 6408}), numbersOf(9, 0, bSRGB));
        EXPECT_EQ((Numbers{0, 1, 0, 33779, 6408}), numbersOf(11, 0, bSRGB));
    }
}

TEST(GLFormatTable, NoOtherNumberIsRead)
{
    std::vector<bool> known(65536);
    for (const Expected& row : expectedRows())
        known[row.uiInternal] = true;
    for (const UnsizedExpected& format : k_aUnsized)
        known[format.uiInternal] = true;
    for (const uint32_t uiInternal : {32993u, 33777u, 35916u, 35917u, 35918u, 35919u})
        known[uiInternal] = true;
    for (uint32_t i = 0; i < 65536; ++i)
        EXPECT_EQ(known[i], findGLFormat(i, 5121).has_value()) << i;
    EXPECT_FALSE(findGLFormat(0xFFFFFFFF, 5121));
    EXPECT_FALSE(findGLFormat(37808 + 0x80000000u, 5121));
}

TEST(GLFormatTable, WholeElementsAreWrittenWithTheTypeOfTheirChannelType)
{
    // r, rg, rgb and rgba of each channel type that has sized rows.
    struct Elements
    {
        uint32_t uiChannelType;
        uint8_t uiBits;
        uint32_t uiType, uiTypeSize;
        Numbers internal; ///< r, rg, rgb, rgba
        Numbers base;
    };
    const Numbers plain = {6403, 33319, 6407, 6408};
    const Numbers integer = {36244, 33320, 36248, 36249};
    const Elements aElements[] = {
        {0, 8, 5121, 1, {33321, 33323, 32849, 32856}, plain},     {1, 8, 5120, 1, {36756, 36757, 36758, 36759}, plain},
        {2, 8, 5121, 1, {33330, 33336, 36221, 36220}, integer},   {3, 8, 5120, 1, {33329, 33335, 36239, 36238}, integer},
        {4, 16, 5123, 2, {33322, 33324, 32852, 32859}, plain},    {5, 16, 5122, 2, {36760, 36761, 36762, 36763}, plain},
        {6, 16, 5123, 2, {33332, 33338, 36215, 36214}, integer},  {7, 16, 5122, 2, {33331, 33337, 36233, 36232}, integer},
        {10, 32, 5125, 4, {33334, 33340, 36209, 36226}, integer}, {11, 32, 5124, 4, {33333, 33339, 36227, 36208}, integer},
        {12, 16, 5131, 2, {33325, 33327, 34843, 34842}, plain},   {12, 32, 5126, 4, {33326, 33328, 34837, 34836}, plain},
    };
    const std::string astrLetters[] = {"r", "rg", "rgb", "rgba"};
    for (const Elements& elements : aElements)
    {
        for (size_t i = 0; i < 4; ++i)
        {
            SCOPED_TRACE(astrLetters[i] + " of channel type " + std::to_string(elements.uiChannelType));
            EXPECT_EQ((Numbers{elements.uiType, elements.uiTypeSize, elements.base[i], elements.internal[i], elements.base[i]}),
                      numbersOf(word(astrLetters[i], {elements.uiBits}), elements.uiChannelType));
        }
    }
}

TEST(GLFormatTable, LuminanceAndAlphaAreWrittenWithTheirLetters)
{
    EXPECT_EQ((Numbers{5121, 1, 6406, 32828, 6406}), numbersOf(word("a", {8}), 0));
    EXPECT_EQ((Numbers{5121, 1, 6409, 32832, 6409}), numbersOf(word("l", {8}), 0));
    EXPECT_EQ((Numbers{5121, 1, 6410, 32837, 6410}), numbersOf(word("la", {8}), 0));
    EXPECT_EQ((Numbers{5120, 1, 6406, 36884, 6406}), numbersOf(word("a", {8}), 1));
    EXPECT_EQ((Numbers{5120, 1, 6409, 36885, 6409}), numbersOf(word("l", {8}), 1));
    EXPECT_EQ((Numbers{5120, 1, 6410, 36886, 6410}), numbersOf(word("la", {8}), 1));
    EXPECT_EQ((Numbers{5131, 2, 6406, 34844, 6406}), numbersOf(word("a", {16}), 12));
    EXPECT_EQ((Numbers{5131, 2, 6409, 34846, 6409}), numbersOf(word("l", {16}), 12));
    EXPECT_EQ((Numbers{5131, 2, 6410, 34847, 6410}), numbersOf(word("la", {16}), 12));
    EXPECT_EQ((Numbers{5126, 4, 6406, 34838, 6406}), numbersOf(word("a", {32}), 12));
    EXPECT_EQ((Numbers{5126, 4, 6409, 34840, 6409}), numbersOf(word("l", {32}), 12));
    EXPECT_EQ((Numbers{5126, 4, 6410, 34841, 6410}), numbersOf(word("la", {32}), 12));
    // 16 bits of a byte type: the type tells.
    EXPECT_EQ((Numbers{5121, 1, 6406, 32830, 6406}), numbersOf(word("a", {16}), 0));
    EXPECT_EQ((Numbers{5121, 1, 6409, 32834, 6409}), numbersOf(word("l", {16}), 0));
    EXPECT_EQ((Numbers{5120, 1, 6406, 36888, 6406}), numbersOf(word("a", {16}), 1));
    EXPECT_EQ((Numbers{5120, 1, 6409, 36889, 6409}), numbersOf(word("l", {16}), 1));
}

TEST(GLFormatTable, PackedPixelsAreWrittenWithTheirPackedType)
{
    EXPECT_EQ((Numbers{33635, 2, 6407, 36194, 6407}), numbersOf(word("rgb", {5, 6, 5}), 4));
    EXPECT_EQ((Numbers{32819, 2, 6408, 32854, 6408}), numbersOf(word("rgba", {4}), 4));
    EXPECT_EQ((Numbers{32820, 2, 6408, 32855, 6408}), numbersOf(word("rgba", {5, 5, 5, 1}), 4));
    EXPECT_EQ((Numbers{32818, 1, 6407, 10768, 6407}), numbersOf(word("rgb", {3, 3, 2}), 0));
    EXPECT_EQ((Numbers{33640, 4, 6408, 32857, 6408}), numbersOf(word("abgr", {2, 10, 10, 10}), 8));
    EXPECT_EQ((Numbers{35899, 4, 6407, 35898, 6407}), numbersOf(word("bgr", {10, 11, 11}), 13));
    // Red in the high bits: 0x8036, UNSIGNED_INT_10_10_10_2, which OpenGL allows with RGBA and RGBA_INTEGER and not with RGB.
    EXPECT_EQ((Numbers{32822, 4, 6408, 32850, 6407}), numbersOf(word("rgbx", {10, 10, 10, 2}), 8));
    EXPECT_EQ((Numbers{32822, 4, 36249, 36975, 36249}), numbersOf(word("rgba", {10, 10, 10, 2}), 10));
}

TEST(GLFormatTable, AnUnsizedNumberIsWrittenOnlyWhereThereIsNoSizedOne)
{
    // Normalised 32-bit elements have no sized number under any letters,
    for (const UnsizedExpected& format : k_aUnsized)
    {
        EXPECT_EQ((Numbers{5125, 4, format.uiInternal, format.uiInternal, format.uiInternal}), numbersOf(word(format.strLetters, {32}), 8));
        EXPECT_EQ((Numbers{5124, 4, format.uiInternal, format.uiInternal, format.uiInternal}), numbersOf(word(format.strLetters, {32}), 9));
    }
    // normalised 16-bit elements none under these.
    for (const UnsizedExpected& format : {UnsizedExpected{6406, "a"}, UnsizedExpected{6409, "l"}, UnsizedExpected{6410, "la"}})
    {
        EXPECT_EQ((Numbers{5123, 2, format.uiInternal, format.uiInternal, format.uiInternal}), numbersOf(word(format.strLetters, {16}), 4));
        EXPECT_EQ((Numbers{5122, 2, format.uiInternal, format.uiInternal, format.uiInternal}), numbersOf(word(format.strLetters, {16}), 5));
    }
}

TEST(GLFormatTable, WhatAnUnsizedNumberGivesIsReadBackEqualFromWhatIsWritten)
{
    for (const UnsizedExpected& format : k_aUnsized)
    {
        for (const ElementExpected& element : k_aElements)
        {
            SCOPED_TRACE(format.strLetters + " " + std::to_string(element.uiType));
            const PixelEncoding encoding = encodingOf(word(format.strLetters, {element.uiBits}), element.uiChannelType);
            const auto written = findGLFormat(encoding);
            ASSERT_TRUE(written);
            EXPECT_EQ(encoding, findGLFormat(written->ui32InternalFormat, written->ui32Type));
        }
    }
}

TEST(GLFormatTable, TheColourSpaceCountsForBytesOfRgbAndRgbaAndElseIsLost)
{
    EXPECT_EQ((Numbers{5121, 1, 6407, 35905, 6407}), numbersOf(word("rgb", {8}), 0, true));
    EXPECT_EQ((Numbers{5121, 1, 6408, 35907, 6408}), numbersOf(word("rgba", {8}), 0, true));
    EXPECT_EQ((Numbers{5121, 1, 36249, 36220, 36249}), numbersOf(word("rgba", {8}), 2, true));
    EXPECT_EQ((Numbers{5123, 2, 6408, 32859, 6408}), numbersOf(word("rgba", {16}), 4, true));
    EXPECT_EQ((Numbers{5121, 1, 6403, 33321, 6403}), numbersOf(word("r", {8}), 0, true));
}

TEST(GLFormatTable, EveryNumberedFormatIsWrittenAsBlocks)
{
    struct Blocks
    {
        uint32_t uiFormat, uiLinear, uiSRGB, uiBase;
    };
    std::vector<Blocks> formats = {
        {0, 35841, 35412, 6407},  {1, 35843, 35414, 6408},   {2, 35840, 35413, 6407},  {3, 35842, 35415, 6408},  {4, 37175, 37872, 6408},
        {5, 37176, 37873, 6408},  {6, 36196, 36196, 6407},   {7, 33776, 33776, 6407},  {8, 33778, 33778, 6408},  {9, 33778, 33778, 6408},
        {10, 33779, 33779, 6408}, {11, 33779, 33779, 6408},  {22, 37492, 37493, 6407}, {23, 37496, 37497, 6408}, {24, 37494, 37495, 6408},
        {25, 37488, 37488, 6403}, {26, 37490, 37490, 33319},
    };
    for (uint32_t i = 27; i <= 40; ++i)
        formats.push_back({i, 37808 + i - 27, 37840 + i - 27, 6408});
    for (uint32_t i = 41; i <= 50; ++i)
        formats.push_back({i, 37824 + i - 41, 37856 + i - 41, 6408});
    for (const Blocks& blocks : formats)
    {
        SCOPED_TRACE(blocks.uiFormat);
        for (const uint32_t uiChannelType : {0u, 2u, 8u, 13u, 99u})
        {
            EXPECT_EQ((Numbers{0, 1, 0, blocks.uiLinear, blocks.uiBase}), numbersOf(blocks.uiFormat, uiChannelType));
            EXPECT_EQ((Numbers{0, 1, 0, blocks.uiSRGB, blocks.uiBase}), numbersOf(blocks.uiFormat, uiChannelType, true));
        }
        // A sign counts for the two EAC formats, whose numbers are one higher then.
        const uint32_t uiStep = blocks.uiFormat == 25 || blocks.uiFormat == 26 ? 1 : 0;
        for (const uint32_t uiChannelType : {1u, 3u, 5u, 12u})
            EXPECT_EQ((Numbers{0, 1, 0, blocks.uiSRGB + uiStep, blocks.uiBase}), numbersOf(blocks.uiFormat, uiChannelType, true));
    }
    for (const bool bSRGB : {false, true})
        EXPECT_EQ((Numbers{35902, 4, 6407, 35901, 6407}), numbersOf(19, 13, bSRGB));
}

TEST(GLFormatTable, TheTwoPreMultipliedBlockFormatsAreWrittenUnderTheNumbersOfTheOthers)
{
    EXPECT_EQ(encodingOf(9, 0), findGLFormat(33778, 0));
    EXPECT_EQ(encodingOf(11, 0), findGLFormat(33779, 0));
    EXPECT_EQ(33778u, numbersOf(8, 0).at(3));
    EXPECT_EQ(33779u, numbersOf(10, 0).at(3));
}

TEST(GLFormatTable, AnUnknownColourSpaceCountsAsLinear)
{
    PixelEncoding encoding = encodingOf(0, 0);
    encoding.eColourSpace = static_cast<EMOXTColourSpace>(7);
    EXPECT_EQ(35841u, numbersOf(encoding).at(3));
}

TEST(GLFormatTable, EncodingsWithoutARowGiveNothing)
{
    for (const uint64_t uiFormat : {12u, 13u, 14u, 15u, 16u, 17u, 18u, 20u, 21u, 51u, 52u})
        EXPECT_TRUE(numbersOf(uiFormat, 0).empty()) << uiFormat;
    EXPECT_TRUE(numbersOf(0xFFFFFFFFu, 0).empty());
    EXPECT_TRUE(numbersOf(word("argb", {8}), 0).empty());
    EXPECT_TRUE(numbersOf(word("abgr", {8}), 0).empty());
    EXPECT_TRUE(numbersOf(word("xrgb", {8}), 0).empty());
    EXPECT_TRUE(numbersOf(word("rgb", {8}), 8).empty());
    EXPECT_TRUE(numbersOf(word("i", {8}), 0).empty());
    EXPECT_TRUE(numbersOf(word("abgr", {2, 10, 10, 10}), 10).empty());
    EXPECT_TRUE(numbersOf(word("rgba", {8}), 99).empty());
    EXPECT_TRUE(numbersOf(~uint64_t{0}, 0).empty());
}
