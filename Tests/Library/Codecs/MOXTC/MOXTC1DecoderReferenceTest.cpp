#include "Codecs/MOXTC/MOXTC1DecoderReference.h"

#include <utility>

#include "MoxtcTestPictures.h"

using namespace moxtexture;
using namespace moxtctest;

namespace
{

constexpr Pixel k_aUntouched = {CPicture::k_ui8Untouched, CPicture::k_ui8Untouched, CPicture::k_ui8Untouched, CPicture::k_ui8Untouched};
constexpr Pixel k_aNothing = {0, 0, 0, 0};

/// Red of 5 bits as 8.
int widen(uint32_t uiRed)
{
    return static_cast<int>(uiRed << 3 | uiRed >> 2);
}

/// A block that shows its colour A, opaque with this red of 5 bits.
BlockWord redBlock(uint32_t uiRed)
{
    return {0, opaqueColours(k_MOXTC1At4bpp, {uiRed, 0, 0}, {0, 0, 0})};
}

/// Blocks of red 0, 1, 2, ..., 31, 0, 1, ... in the order of the data.
std::vector<BlockWord> makeRedBlocks(uint32_t uiCount)
{
    std::vector<BlockWord> blocks;
    for (uint32_t ui = 0; ui < uiCount; ++ui)
        blocks.push_back(redBlock(ui % 32));
    return blocks;
}

} // namespace

class MOXTC1Decoding : public MoxtcDecoding
{
};
INSTANTIATE_MOXTC_DECODING(MOXTC1Decoding);

TEST_P(MOXTC1Decoding, PunchThroughIsHalfTheWayWithAlphaZeroAndKeepsTheColour)
{
    // Codes 0 1 2 3 in each row, with the mode flag: 0, 4, 4 and transparent, 8.
    const BlockWord block = {0xE4E4E4E4, blackAndWhite(k_MOXTC1At4bpp) | k_ui32ModeBit};
    const CPicture picture = decode(k_MOXTC1At4bpp, {block, block, block, block}, 8, 8);
    for (uint32_t y = 0; y < 8; ++y)
    {
        EXPECT_EQ(grey(0), picture.at(0, y));
        EXPECT_EQ(grey(4), picture.at(1, y));
        EXPECT_EQ((Pixel{127, 127, 127, 0}), picture.at(2, y));
        EXPECT_EQ(grey(8), picture.at(3, y));
    }
}

TEST_P(MOXTC1Decoding, EachPixelGoesByTheModeOfItsOwnBlock)
{
    const BlockWord standard = {everyPixel(2), blackAndWhite(k_MOXTC1At4bpp)};
    const BlockWord punched = {everyPixel(2), blackAndWhite(k_MOXTC1At4bpp) | k_ui32ModeBit};
    const CPicture picture = decode(k_MOXTC1At4bpp, twoByTwo(k_MOXTC1At4bpp, standard, punched, standard, standard), 8, 8);
    for (uint32_t y = 0; y < 8; ++y)
        for (uint32_t x = 0; x < 8; ++x)
            EXPECT_EQ(x >= 4 && y < 4 ? (Pixel{127, 127, 127, 0}) : grey(5), picture.at(x, y)) << x << ", " << y;
}

TEST_P(MOXTC1Decoding, EachColourIsOpaqueOrTranslucentForItself)
{
    // A opaque and black; B alpha 011, 6 of 15: 96, 6 + 96 = 102.
    const BlockWord opaqueA = {0xE4E4E4E4, k_ui32Bit15 | 3u << 28};
    CPicture picture = decode(k_MOXTC1At4bpp, {opaqueA, opaqueA, opaqueA, opaqueA}, 8, 8);
    EXPECT_EQ((Pixel{0, 0, 0, 255}), picture.at(4, 0));
    EXPECT_EQ((Pixel{0, 0, 0, (255 * 5 + 102 * 3) / 8}), picture.at(5, 0));
    EXPECT_EQ((Pixel{0, 0, 0, 102}), picture.at(7, 0));

    // A alpha 010, 4 of 15: 64, 4 + 64 = 68; B opaque and black.
    const BlockWord opaqueB = {0xE4E4E4E4, 2u << 12 | k_ui32Bit31};
    picture = decode(k_MOXTC1At4bpp, {opaqueB, opaqueB, opaqueB, opaqueB}, 8, 8);
    EXPECT_EQ((Pixel{0, 0, 0, 68}), picture.at(4, 0));
    EXPECT_EQ((Pixel{0, 0, 0, (68 * 3 + 255 * 5) / 8}), picture.at(6, 0));
    EXPECT_EQ((Pixel{0, 0, 0, 255}), picture.at(7, 0));
}

TEST_P(MOXTC1Decoding, BlocksOfAWidePictureAreARowOfSquares)
{
    // 4 by 2 blocks: down, then to the right, square after square. Centres stand at 2, 6, 10, 14 and 2, 6.
    const CPicture picture = decode(k_MOXTC1At4bpp, makeRedBlocks(8), 16, 8);
    for (uint32_t ui = 0; ui < 8; ++ui)
        EXPECT_EQ(widen(ui), picture.redAt(ui / 2 * 4 + 2, ui % 2 * 4 + 2)) << ui;
}

TEST_P(MOXTC1Decoding, BlocksOfAHighPictureAreAColumnOfSquares)
{
    constexpr uint32_t k_auiX[] = {0, 0, 1, 1, 0, 0, 1, 1};
    constexpr uint32_t k_auiY[] = {0, 1, 0, 1, 2, 3, 2, 3};
    CPicture picture = decode(k_MOXTC1At4bpp, makeRedBlocks(8), 8, 16);
    for (uint32_t ui = 0; ui < 8; ++ui)
        EXPECT_EQ(widen(ui), picture.redAt(k_auiX[ui] * 4 + 2, k_auiY[ui] * 4 + 2)) << ui;
    picture = decode(k_MOXTC1At2bpp, makeRedBlocks(8), 16, 16);
    for (uint32_t ui = 0; ui < 8; ++ui)
        EXPECT_EQ(widen(ui), picture.redAt(k_auiX[ui] * 8 + 4, k_auiY[ui] * 4 + 2)) << ui;
}

TEST_P(MOXTC1Decoding, BlocksOfASquarePictureAreInMortonOrder)
{
    constexpr uint32_t k_auiX[] = {0, 0, 1, 1, 0, 0, 1, 1, 2, 2, 3, 3, 2, 2, 3, 3};
    constexpr uint32_t k_auiY[] = {0, 1, 0, 1, 2, 3, 2, 3, 0, 1, 0, 1, 2, 3, 2, 3};
    const CPicture picture = decode(k_MOXTC1At4bpp, makeRedBlocks(16), 16, 16);
    for (uint32_t ui = 0; ui < 16; ++ui)
        EXPECT_EQ(widen(ui), picture.redAt(k_auiX[ui] * 4 + 2, k_auiY[ui] * 4 + 2)) << ui;
}

TEST_P(MOXTC1Decoding, ASmallSurfaceIsTheTopLeftOfTheSmallestPicture)
{
    // Red 31 in the first of the four blocks: 31 times both shares, in quarters or eighths from pixel 0 on.
    constexpr int k_aiQuarters[] = {2, 3, 4, 3, 2, 1, 0, 1};
    constexpr int k_aiEighths[] = {4, 5, 6, 7, 8, 7, 6, 5};
    const std::vector<BlockWord> blocks = {redBlock(31), redBlock(0), redBlock(0), redBlock(0)};
    for (const auto& [uiWidth, uiHeight] : {std::pair{4u, 4u}, {1u, 1u}, {3u, 8u}, {8u, 2u}, {7u, 5u}, {2u, 1u}})
    {
        const CPicture at4bpp = decode(k_MOXTC1At4bpp, blocks, uiWidth, uiHeight);
        const CPicture at2bpp = decode(k_MOXTC1At2bpp, blocks, uiWidth, uiHeight);
        for (uint32_t y = 0; y < uiHeight; ++y)
        {
            for (uint32_t x = 0; x < uiWidth; ++x)
            {
                const int iSum4 = 31 * k_aiQuarters[x] * k_aiQuarters[y];
                EXPECT_EQ((Pixel{(iSum4 >> 6) + (iSum4 >> 1), 0, 0, 255}), at4bpp.at(x, y)) << x << ", " << y;
                const int iSum2 = 31 * k_aiEighths[x] * k_aiQuarters[y];
                EXPECT_EQ((Pixel{(iSum2 >> 7) + (iSum2 >> 2), 0, 0, 255}), at2bpp.at(x, y)) << x << ", " << y;
            }
        }
    }
}

TEST_P(MOXTC1Decoding, EachAxisIsRaisedAlone)
{
    // 4bpp, 16 by 4: four block columns and the least two rows. 4 by 16: two columns and four rows.
    const CPicture wide = decode(k_MOXTC1At4bpp, makeRedBlocks(8), 16, 4);
    for (uint32_t ui = 0; ui < 4; ++ui)
        EXPECT_EQ(widen(2 * ui), wide.redAt(4 * ui + 2, 2)) << ui;
    const CPicture high = decode(k_MOXTC1At4bpp, makeRedBlocks(8), 4, 16);
    EXPECT_EQ(widen(0), high.redAt(2, 2));
    EXPECT_EQ(widen(1), high.redAt(2, 6));
    EXPECT_EQ(widen(4), high.redAt(2, 10));
    EXPECT_EQ(widen(5), high.redAt(2, 14));
}

TEST_P(MOXTC1Decoding, PixelsPastTheLastWholeBlockStayAsTheyWere)
{
    // Stored as 32 by 16 pixels, 16 blocks, of which the first four are the whole ones.
    const CPicture picture = decode(k_MOXTC1At2bpp, makeRedBlocks(16), 20, 10);
    for (uint32_t y = 0; y < 10; ++y)
        for (uint32_t x = 0; x < 20; ++x)
            EXPECT_EQ(x >= 16 || y >= 8, picture.at(x, y) == k_aUntouched) << x << ", " << y;
    // The first pixel wraps to the last whole block: the mean of reds 0, 1, 2, 3 by quarters, 6 * 8 of 32: 0 + 12.
    EXPECT_EQ(12, picture.redAt(0, 0));
}

TEST_P(MOXTC1Decoding, BlocksThatTheOrderPutsPastTheGridComeFromTheSurfacesFurtherData)
{
    // 3 by 3 blocks, stored as 16 by 16 pixels: (2, 1) is the tenth of 16 blocks, (2, 2) the thirteenth.
    constexpr uint32_t k_auiPlaces[3][3] = {{0, 2, 8}, {1, 3, 9}, {4, 6, 12}};
    const CPicture picture = decode(k_MOXTC1At4bpp, makeRedBlocks(16), 12, 12);
    for (uint32_t y = 0; y < 3; ++y)
        for (uint32_t x = 0; x < 3; ++x)
            EXPECT_EQ((Pixel{widen(k_auiPlaces[y][x]), 0, 0, 255}), picture.at(4 * x + 2, 4 * y + 2)) << x << ", " << y;
}

TEST_P(MOXTC1Decoding, PixelsOfBlocksThatTheOrderPutsPastTheDataAreNothing)
{
    // 5 by 5 blocks, stored as 24 by 24 pixels, 36 blocks. (4, 1) has place 32 + 1, (4, 2) 32 + 4, (4, 3) 32 + 5, (4, 4) 32 + 16.
    const CPicture picture = decode(k_MOXTC1At4bpp, makeRedBlocks(36), 20, 20);
    for (uint32_t y = 0; y < 20; ++y)
        for (uint32_t x = 0; x < 20; ++x)
            EXPECT_EQ(x >= 16 && y >= 8, picture.at(x, y) == k_aNothing) << x << ", " << y;
    EXPECT_EQ(widen(33 % 32), picture.redAt(18, 6));
    EXPECT_EQ(widen(16), picture.redAt(2, 18));
}

TEST(MOXTC1DecoderReference, GivesTheBytesOfTheSurfacesBlocks)
{
    const std::vector<uint8_t> data(128);
    CPicture picture(16, 16);
    EXPECT_EQ(32u, DecompressMOXTCReference(data.data(), data.size(), true, 16, 8, picture.data()));
    EXPECT_EQ(32u, DecompressMOXTCReference(data.data(), data.size(), false, 8, 8, picture.data()));
    EXPECT_EQ(128u, DecompressMOXTCReference(data.data(), data.size(), false, 16, 16, picture.data()));
    EXPECT_EQ(8u, DecompressMOXTCReference(data.data(), data.size(), false, 4, 4, picture.data()));
    EXPECT_EQ(0u, DecompressMOXTCReference(data.data(), data.size(), false, 0, 4, picture.data()));
    EXPECT_EQ(0u, DecompressMOXTCReference(data.data(), data.size(), false, 4, 0, picture.data()));
}

TEST(MOXTC1DecoderReference, BlocksPastShortDataCountAsZeroAndTheirPixelsAreNothing)
{
    // The blocks of the left column alone.
    const CPicture picture = decodePlainly(k_MOXTC1At4bpp, {redBlock(31), redBlock(31)}, 8, 8);
    for (uint32_t y = 0; y < 8; ++y)
    {
        EXPECT_EQ((Pixel{255, 0, 0, 255}), picture.at(2, y));
        // Three quarters of 31 and of alpha 15: 372, 5 + 186, and 180, 11 + 180.
        EXPECT_EQ((Pixel{191, 0, 0, 191}), picture.at(1, y));
        EXPECT_EQ((Pixel{191, 0, 0, 191}), picture.at(3, y));
        for (uint32_t x = 4; x < 8; ++x)
            EXPECT_EQ(k_aNothing, picture.at(x, y)) << x << ", " << y;
    }
}

TEST(MOXTC1DecoderReference, PixelsOfBlocksThatTheOrderPutsPastShortDataAreNothing)
{
    // 3 by 3 blocks and just nine in the data: (2, 1) would be the tenth, (2, 2) the thirteenth.
    const CPicture picture = decodePlainly(k_MOXTC1At4bpp, makeRedBlocks(9), 12, 12);
    for (uint32_t y = 0; y < 12; ++y)
        for (uint32_t x = 0; x < 12; ++x)
            EXPECT_EQ(x >= 8 && y >= 4, picture.at(x, y) == k_aNothing) << x << ", " << y;
    EXPECT_EQ(widen(8), picture.redAt(10, 2));
    EXPECT_EQ(widen(6), picture.redAt(6, 10));
}

TEST(MOXTC1DecoderReference, OfNoDataIsNothingEverywhere)
{
    for (const Format& format : {k_MOXTC1At2bpp, k_MOXTC1At4bpp})
    {
        const CPicture picture = decodePlainly(format, {}, 16, 8);
        for (uint32_t y = 0; y < 8; ++y)
            for (uint32_t x = 0; x < 16; ++x)
                EXPECT_EQ(k_aNothing, picture.at(x, y));
    }
}
