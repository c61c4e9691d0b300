#include "Codecs/MOXTC/MOXTCDecompress.h"

#include "MoxtcTestPictures.h"

using namespace moxtexture;
using namespace moxtctest;

namespace
{

/// How much of the first of two blocks a pixel has, by its place along the axis: in quarters over blocks of 4 pixels, in eighths over
/// blocks of 8. The centre of a block is its third, or fifth, pixel, and the picture wraps.
constexpr int k_aiQuarters[] = {2, 3, 4, 3, 2, 1, 0, 1};
constexpr int k_aiEighths[] = {4, 5, 6, 7, 8, 7, 6, 5, 4, 3, 2, 1, 0, 1, 2, 3};

int shareAcross(const Format& format, uint32_t x)
{
    return format.b2bpp ? k_aiEighths[x] : k_aiQuarters[x];
}

/// A channel of 5 bits that is uiValue in the first of four blocks and 0 in the others.
int fadeOf5Bits(const Format& format, int iValue, uint32_t x, uint32_t y)
{
    const int v = iValue * shareAcross(format, x) * k_aiQuarters[y];
    return format.b2bpp ? (v >> 7) + (v >> 2) : (v >> 6) + (v >> 1);
}

/// The same of an alpha of 4 bits.
int fadeOfAlpha(const Format& format, int iValue, uint32_t x, uint32_t y)
{
    const int v = iValue * shareAcross(format, x) * k_aiQuarters[y];
    return format.b2bpp ? (v >> 5) + (v >> 1) : (v >> 4) + v;
}

uint32_t getWidthOfTwoBlocks(const Format& format)
{
    return format.b2bpp ? 16 : 8;
}

/// Two by two of the same block.
std::vector<BlockWord> fourOf(const BlockWord& block)
{
    return {block, block, block, block};
}

/// Above, below, left and right of the pixels without a code, row after row, among blocks of k_ui32CodesBetween on all sides.
struct Neighbours
{
    int iUp, iDown, iLeft, iRight;
};
constexpr Neighbours k_aNeighbours[4][4] = {
    {{0, 8, 0, 3}, {8, 5, 3, 5}, {5, 3, 5, 8}, {3, 0, 8, 0}}, // x 1, 3, 5, 7
    {{0, 3, 0, 8}, {3, 3, 8, 5}, {5, 8, 5, 3}, {8, 5, 3, 0}}, // x 0, 2, 4, 6
    {{8, 0, 3, 3}, {5, 8, 3, 8}, {3, 5, 8, 5}, {0, 3, 5, 3}},
    {{3, 0, 3, 0}, {3, 3, 0, 8}, {8, 5, 8, 5}, {5, 8, 5, 3}},
};
/// The weights of the others.
constexpr int k_aaiStored[4][4] = {{0, 3, 5, 8}, {8, 5, 3, 0}, {3, 3, 8, 5}, {0, 8, 5, 3}};

/// Expects pictures of both generations whose blocks all have this modulation, with weights from the neighbours by the rule.
template <typename Rule>
void expectWeightsBetween(decltype(&decodePlainly) decode, uint32_t ui32Modulation, Rule&& rule)
{
    for (const Format& format : {k_MOXTC1At2bpp, k_MOXTCIIAt2bpp})
    {
        const CPicture picture = decode(format, fourOf({ui32Modulation, blackAndWhite(format) | k_ui32ModeBit}), 16, 8);
        for (uint32_t y = 0; y < 8; ++y)
        {
            for (uint32_t x = 0; x < 16; ++x)
            {
                const bool bStored = (x % 2) == (y % 2);
                const uint32_t uiNth = x % 8 / 2;
                const int iWeight = bStored ? k_aaiStored[y % 4][uiNth] : rule(k_aNeighbours[y % 4][uiNth]);
                EXPECT_EQ(grey(iWeight), picture.at(x, y)) << format << " at " << x << ", " << y;
            }
        }
    }
}

} // namespace

INSTANTIATE_MOXTC_DECODING(MoxtcDecoding);

TEST_P(MoxtcDecoding, AColourFadesFromItsBlocksCentreToTheCentresAroundAndWrapsAtTheEdges)
{
    for (const Format& format : k_aFormats)
    {
        const BlockWord first = {0, opaqueColours(format, {31, 16, 0}, {0, 0, 0})};
        const BlockWord other = {0, opaqueColours(format, {0, 0, 0}, {31, 31, 31})};
        const CPicture picture = decode(format, twoByTwo(format, first, other, other, other), getWidthOfTwoBlocks(format), 8);
        for (uint32_t y = 0; y < 8; ++y)
        {
            for (uint32_t x = 0; x < getWidthOfTwoBlocks(format); ++x)
            {
                const Pixel expected = {fadeOf5Bits(format, 31, x, y), fadeOf5Bits(format, 16, x, y), 0, 255};
                EXPECT_EQ(expected, picture.at(x, y)) << format << " at " << x << ", " << y;
            }
        }
        // 31 * 1/2 * 1/2: 124 of 496 at 4bpp, 1 + 62; 248 of 992 at 2bpp, 1 + 62.
        EXPECT_EQ(63, picture.redAt(0, 0)) << format;
        EXPECT_EQ(255, picture.redAt(format.b2bpp ? 4 : 2, 2)) << format;
    }
}

TEST_P(MoxtcDecoding, EachBlockShowsItsOwnColoursAtItsCentre)
{
    for (const Format& format : k_aFormats)
    {
        // Red 1, 2, 4, 30 of 5 bits: 8, 16, 33, 247. The codes say B everywhere.
        const uint32_t ui32AllB = 0xFFFFFFFF;
        const auto block = [&](uint32_t uiRed) { return BlockWord{ui32AllB, opaqueColours(format, {0, 31, 0}, {uiRed, 0, 0})}; };
        const CPicture picture = decode(format, twoByTwo(format, block(1), block(2), block(4), block(30)), getWidthOfTwoBlocks(format), 8);
        const uint32_t uiLeft = format.b2bpp ? 4 : 2;
        const uint32_t uiRight = format.b2bpp ? 12 : 6;
        EXPECT_EQ((Pixel{8, 0, 0, 255}), picture.at(uiLeft, 2)) << format;
        EXPECT_EQ((Pixel{16, 0, 0, 255}), picture.at(uiRight, 2)) << format;
        EXPECT_EQ((Pixel{33, 0, 0, 255}), picture.at(uiLeft, 6)) << format;
        EXPECT_EQ((Pixel{247, 0, 0, 255}), picture.at(uiRight, 6)) << format;
    }
}

TEST_P(MoxtcDecoding, AlphaFadesAsTheColoursDo)
{
    for (const Format& format : k_aFormats)
    {
        // Translucent colours, A's alpha 111: 14 of 15.
        const BlockWord first = {0, 7u << 12};
        const CPicture picture = decode(format, twoByTwo(format, first, {}, {}, {}), getWidthOfTwoBlocks(format), 8);
        for (uint32_t y = 0; y < 8; ++y)
            for (uint32_t x = 0; x < getWidthOfTwoBlocks(format); ++x)
                EXPECT_EQ((Pixel{0, 0, 0, fadeOfAlpha(format, 14, x, y)}), picture.at(x, y)) << format << " at " << x << ", " << y;
        // 14 * 16: 14 + 224.
        EXPECT_EQ(238, picture.at(format.b2bpp ? 4 : 2, 2)[3]) << format;
    }
}

TEST_P(MoxtcDecoding, CodesOfFourBitsAreNothingThreeFiveAndEightEighths)
{
    for (const Format& format : {k_MOXTC1At4bpp, k_MOXTCIIAt4bpp})
    {
        // Codes 0 1 2 3 in each row, lowest first.
        const CPicture picture = decode(format, fourOf({0xE4E4E4E4, blackAndWhite(format)}), 8, 8);
        for (uint32_t y = 0; y < 8; ++y)
        {
            EXPECT_EQ(grey(0), picture.at(0, y)) << format;
            EXPECT_EQ(grey(3), picture.at(1, y)) << format;
            EXPECT_EQ(grey(5), picture.at(6, y)) << format;
            EXPECT_EQ(grey(8), picture.at(7, y)) << format;
        }
    }
}

TEST_P(MoxtcDecoding, DirectBitsOfTwoBitsAreColourAOrColourB)
{
    for (const Format& format : {k_MOXTC1At2bpp, k_MOXTCIIAt2bpp})
    {
        // Rows of 00000001, 00000010, 10000000 and 01010101, the leftmost pixel in the lowest bit.
        const CPicture picture = decode(format, fourOf({0x55800201, blackAndWhite(format)}), 16, 8);
        for (uint32_t x = 0; x < 16; ++x)
        {
            EXPECT_EQ(grey(x % 8 == 0 ? 8 : 0), picture.at(x, 0)) << format;
            EXPECT_EQ(grey(x % 8 == 1 ? 8 : 0), picture.at(x, 1)) << format;
            EXPECT_EQ(grey(x % 8 == 7 ? 8 : 0), picture.at(x, 6)) << format;
            EXPECT_EQ(grey(x % 2 == 0 ? 8 : 0), picture.at(x, 7)) << format;
        }
    }
}

TEST_P(MoxtcDecoding, PixelsBetweenCodesHaveTheMeanOfFourRoundedInTheModeOfBothAxes)
{
    expectWeightsBetween(GetParam(), k_ui32BothAxes, [](const Neighbours& n) { return (n.iUp + n.iDown + n.iLeft + n.iRight + 2) / 4; });
}

TEST_P(MoxtcDecoding, PixelsBetweenCodesHaveTheMeanOfLeftAndRightInTheHorizontalMode)
{
    expectWeightsBetween(GetParam(), k_ui32Horizontal, [](const Neighbours& n) { return (n.iLeft + n.iRight + 1) / 2; });
}

TEST_P(MoxtcDecoding, PixelsBetweenCodesHaveTheMeanOfUpAndDownInTheVerticalMode)
{
    expectWeightsBetween(GetParam(), k_ui32Vertical, [](const Neighbours& n) { return (n.iUp + n.iDown + 1) / 2; });
}

TEST_P(MoxtcDecoding, FlagsLeaveTheFirstPixelAndThatOfTheVerticalFlagOnlyTheEndsOfTheScale)
{
    struct Row
    {
        uint32_t ui32Modulation;
        int iFirst; ///< weight of pixel (0, 0)
        int iOther; ///< weight of pixel (4, 2)
    };
    // Bits 0 and 1 are the first pixel's, bits 20 and 21 the other's.
    constexpr Row k_aRows[] = {
        {0u << 20 | 0u, 0, 0}, {1u << 20 | 2u, 8, 3}, {2u << 20 | 0u, 0, 5}, {3u << 20 | 2u, 8, 8}, // both axes: 0 3 5 8
        {0u << 20 | 1u, 0, 0}, {2u << 20 | 3u, 8, 8},                                               // horizontal
        {1u << 20 | 1u, 0, 0}, {3u << 20 | 3u, 8, 8},                                               // vertical
    };
    for (const Format& format : {k_MOXTC1At2bpp, k_MOXTCIIAt2bpp})
    {
        for (const Row& row : k_aRows)
        {
            const CPicture picture = decode(format, fourOf({row.ui32Modulation, blackAndWhite(format) | k_ui32ModeBit}), 16, 8);
            EXPECT_EQ(grey(row.iFirst), picture.at(8, 4)) << format << " with " << row.ui32Modulation;
            EXPECT_EQ(grey(row.iOther), picture.at(4, 2)) << format << " with " << row.ui32Modulation;
        }
    }
}

TEST_P(MoxtcDecoding, APixelWithoutACodeTakesNeighboursFromOtherBlocksAndAcrossTheEdgesOfThePicture)
{
    for (const Format& format : {k_MOXTC1At2bpp, k_MOXTCIIAt2bpp})
    {
        // The first block has codes of 0 at every other pixel, those to the right and below are direct and all 8.
        const BlockWord first = {0, blackAndWhite(format) | k_ui32ModeBit};
        const BlockWord full = {0xFFFFFFFF, blackAndWhite(format)};
        const CPicture picture = decode(format, twoByTwo(format, first, full, full, first), 16, 8);
        EXPECT_EQ(grey((8 + 2) / 4), picture.at(3, 0)) << format;     // above, at the lower edge of the picture
        EXPECT_EQ(grey((8 + 8 + 2) / 4), picture.at(7, 0)) << format; // above and to the right
        EXPECT_EQ(grey((8 + 2) / 4), picture.at(0, 1)) << format;     // to the left, at the right edge of the picture
        EXPECT_EQ(grey((8 + 8 + 2) / 4), picture.at(0, 3)) << format; // to the left and below
        EXPECT_EQ(grey(0), picture.at(2, 1)) << format;
        EXPECT_EQ(grey(8), picture.at(8, 0)) << format;
    }
}

TEST_P(MoxtcDecoding, NeighbouringBlocksMayHaveDifferentModes)
{
    for (const Format& format : {k_MOXTC1At2bpp, k_MOXTCIIAt2bpp})
    {
        const auto block = [&](uint32_t ui32Modulation) { return BlockWord{ui32Modulation, blackAndWhite(format) | k_ui32ModeBit}; };
        const CPicture picture = decode(
            format, twoByTwo(format, block(k_ui32Horizontal), block(k_ui32BothAxes), block(k_ui32BothAxes), block(k_ui32Vertical)), 16, 8);
        // All have the same stored weights, so pixel (5, 0) of each has up 5, down 3, left 5, right 8.
        EXPECT_EQ(grey((5 + 8 + 1) / 2), picture.at(5, 0)) << format;
        EXPECT_EQ(grey((5 + 3 + 5 + 8 + 2) / 4), picture.at(13, 0)) << format;
        EXPECT_EQ(grey((5 + 3 + 5 + 8 + 2) / 4), picture.at(5, 4)) << format;
        EXPECT_EQ(grey((5 + 3 + 1) / 2), picture.at(13, 4)) << format;
    }
}

TEST(MOXTCDecompress, GivesTheSizeOfThePixelsIfAPointerIsNull)
{
    uint8_t ui8Byte = 77;
    for (const Format& format : k_aFormats)
    {
        EXPECT_EQ(64u * 32 * 4, MOXTCDecompress(nullptr, &ui8Byte, 64, 32, format.b2bpp, format.bII));
        EXPECT_EQ(5u * 3 * 4, MOXTCDecompress(&ui8Byte, nullptr, 5, 3, format.b2bpp, format.bII));
        EXPECT_EQ(4u, MOXTCDecompress(nullptr, nullptr, 1, 1, format.b2bpp, format.bII));
    }
    EXPECT_EQ(77, ui8Byte);
}

TEST(MOXTCDecompress, OfAnEmptySurfaceIsNothing)
{
    const std::vector<uint8_t> data(64);
    uint8_t ui8Byte = 77;
    for (const Format& format : k_aFormats)
    {
        EXPECT_EQ(0u, MOXTCDecompress(data.data(), &ui8Byte, 0, 8, format.b2bpp, format.bII));
        EXPECT_EQ(0u, MOXTCDecompress(data.data(), &ui8Byte, 8, 0, format.b2bpp, format.bII));
        EXPECT_EQ(0u, MOXTCDecompress(data.data(), &ui8Byte, 0xFFFFFFFF, 0, format.b2bpp, format.bII));
    }
    EXPECT_EQ(77, ui8Byte);
}

TEST(MOXTCDecompress, ReadsASurfaceOfTheFirstGenerationInMultiplesOfTheSmallestOne)
{
    EXPECT_EQ(32u, getMOXTCDataSize(16, 8, true, false));
    EXPECT_EQ(32u, getMOXTCDataSize(8, 8, true, false));
    EXPECT_EQ(32u, getMOXTCDataSize(1, 1, true, false));
    EXPECT_EQ(32u, getMOXTCDataSize(8, 8, false, false));
    EXPECT_EQ(32u, getMOXTCDataSize(4, 4, false, false));
    EXPECT_EQ(64u * 64 / 2, getMOXTCDataSize(64, 64, false, false));
    EXPECT_EQ(64u * 64 / 4, getMOXTCDataSize(64, 64, true, false));
    EXPECT_EQ(32u * 16 / 4, getMOXTCDataSize(23, 11, true, false));
    EXPECT_EQ(16u * 16 / 2, getMOXTCDataSize(12, 12, false, false));
    EXPECT_EQ(uint64_t{1} << 62, getMOXTCDataSize(0xFFFFFFFF, 0xFFFFFFFF, true, false));
}

TEST(MOXTCDecompress, ReadsBlocksOfThePaddedSurfaceInTheSecondGeneration)
{
    EXPECT_EQ(8u, getMOXTCDataSize(1, 1, true, true));
    EXPECT_EQ(8u, getMOXTCDataSize(1, 1, false, true));
    EXPECT_EQ(3u * 2 * 8, getMOXTCDataSize(9, 5, false, true));
    EXPECT_EQ(2u * 2 * 8, getMOXTCDataSize(9, 5, true, true));
}
