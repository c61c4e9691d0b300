#include "Codecs/MOXTC/Block/BlendCells.h"

#include <gmock/gmock.h>

#include "CellRowPicture.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using moxtctest::CCellRowPicture;

namespace
{

constexpr size_t k_uiRed = 0;
constexpr size_t k_uiAlpha = 3;
constexpr size_t k_uiOfB = 4; ///< from a channel of colour A to that of colour B

/// Runs the check on the pixels that each form makes, the fast one for every instruction set.
template <typename Check>
void forEveryForm(CCellRowPicture& picture, bool b2bpp, bool bII, Check check)
{
    blendCellsReference(picture.getRow(), b2bpp, bII);
    check();
    forEachInstructionSet(
        [&]
        {
            picture.clearPixels();
            blendCells(picture.getRow(), b2bpp, bII);
            check();
        });
}

/// Colour A black, colour B white, both opaque, in all blocks.
void fillBlackAndWhite(CCellRowPicture& picture)
{
    for (BlockStrip* pStrip : {&picture.upper(), &picture.lower()})
        pStrip->aaui16Colours.fill({0, 0, 0, 30, 31, 31, 31, 30});
}

} // namespace

TEST(BlendCells, ColoursFallOffLinearlyFromTheCorners)
{
    // 31 times what is left of 4 x 4 sixteenths: 496, 372, 248, 124; 279; 31. Then v / 64 + v / 2, each cut off.
    CCellRowPicture picture(1, false);
    picture.upper().aaui16Colours[0][k_uiRed] = 31;
    for (const bool bII : {false, true})
        forEveryForm(picture, false, bII,
                     [&]
                     {
                         EXPECT_EQ(255u, picture.channelAt(0, 0, k_uiRed));
                         EXPECT_EQ(191u, picture.channelAt(1, 0, k_uiRed));
                         EXPECT_EQ(127u, picture.channelAt(2, 0, k_uiRed));
                         EXPECT_EQ(63u, picture.channelAt(3, 0, k_uiRed));
                         EXPECT_EQ(191u, picture.channelAt(0, 1, k_uiRed));
                         EXPECT_EQ(143u, picture.channelAt(1, 1, k_uiRed));
                         EXPECT_EQ(15u, picture.channelAt(3, 3, k_uiRed));
                         EXPECT_EQ(0u, picture.channelAt(3, 3, k_uiAlpha));
                     });
}

TEST(BlendCells, ColoursOf2bppFallOffOverEightPixels)
{
    // 31 times what is left of 8 x 4: 992, 248, 31. Then v / 128 + v / 4.
    CCellRowPicture picture(1, true);
    picture.lower().aaui16Colours[0][k_uiRed] = 31;
    for (const bool bII : {false, true})
        forEveryForm(picture, true, bII,
                     [&]
                     {
                         EXPECT_EQ(0u, picture.channelAt(0, 0, k_uiRed));
                         // 31 * 8 * 3 = 744: 5 + 186; 31 * 4 * 2 = 248: 1 + 62; 31 * 1 * 3 = 93: 0 + 23; 31: 0 + 7.
                         EXPECT_EQ(191u, picture.channelAt(0, 3, k_uiRed));
                         EXPECT_EQ(63u, picture.channelAt(4, 2, k_uiRed));
                         EXPECT_EQ(23u, picture.channelAt(7, 3, k_uiRed));
                         EXPECT_EQ(7u, picture.channelAt(7, 1, k_uiRed));
                     });
}

TEST(BlendCells, AlphasHaveFourBits)
{
    // 4bpp: 240: 15 + 240; 15 * 9 = 135: 8 + 135; 15: 0 + 15. 2bpp: 480: 15 + 240; 15 * 8 = 120: 3 + 60; 15: 0 + 7.
    CCellRowPicture picture4(1, false);
    picture4.upper().aaui16Colours[0][k_uiAlpha] = 30;
    forEveryForm(picture4, false, false,
                 [&]
                 {
                     EXPECT_EQ(255u, picture4.channelAt(0, 0, k_uiAlpha));
                     EXPECT_EQ(143u, picture4.channelAt(1, 1, k_uiAlpha));
                     EXPECT_EQ(15u, picture4.channelAt(3, 3, k_uiAlpha));
                 });
    CCellRowPicture picture2(1, true);
    picture2.upper().aaui16Colours[0][k_uiAlpha] = 30;
    forEveryForm(picture2, true, false,
                 [&]
                 {
                     EXPECT_EQ(255u, picture2.channelAt(0, 0, k_uiAlpha));
                     EXPECT_EQ(63u, picture2.channelAt(4, 2, k_uiAlpha));
                     EXPECT_EQ(7u, picture2.channelAt(7, 3, k_uiAlpha));
                 });
}

TEST(BlendCells, WeightsAreEighthsCutOff)
{
    constexpr uint32_t k_auiUp[] = {0, 31, 63, 95, 127, 159, 191, 223, 255};
    for (const bool b2bpp : {false, true})
    {
        for (const bool bFromWhite : {false, true})
        {
            CCellRowPicture picture(2, b2bpp);
            for (BlockStrip* pStrip : {&picture.upper(), &picture.lower()})
                for (auto& colours : pStrip->aaui16Colours)
                    colours[bFromWhite ? k_uiRed : k_uiRed + k_uiOfB] = 31;
            for (uint8_t w = 0; w <= 8; ++w)
            {
                picture.weightAt(1, 2) = w;
                forEveryForm(picture, b2bpp, false,
                             [&] { EXPECT_EQ(bFromWhite ? k_auiUp[8 - w] : k_auiUp[w], picture.channelAt(1, 2, k_uiRed)) << uint32_t{w}; });
            }
        }
    }
}

TEST(BlendCells, PunchingThroughClearsTheAlphaOrAll)
{
    CCellRowPicture picture(2, false);
    fillBlackAndWhite(picture);
    picture.weightAt(6, 3) = 4 | k_ui8PunchThroughBit;
    picture.weightAt(5, 3) = 4;
    forEveryForm(picture, false, false,
                 [&]
                 {
                     EXPECT_EQ(0x007F7F7Fu, picture.pixelAt(6, 3));
                     EXPECT_EQ(0xFF7F7F7Fu, picture.pixelAt(5, 3));
                     EXPECT_EQ(0xFF000000u, picture.pixelAt(7, 3));
                 });
    forEveryForm(picture, false, true,
                 [&]
                 {
                     EXPECT_EQ(0u, picture.pixelAt(6, 3));
                     EXPECT_EQ(0xFF7F7F7Fu, picture.pixelAt(5, 3));
                 });
}

TEST(BlendCells, AHardCellHasTheColoursOfTheBlockThatHoldsThePixel)
{
    // 1, 9, 18, 31 of 5 bits are 8, 74, 148, 255 of 8.
    for (const bool b2bpp : {false, true})
    {
        CCellRowPicture picture(2, b2bpp);
        picture.upper().aaui16Colours[0][k_uiRed] = 1;
        picture.upper().aaui16Colours[1][k_uiRed] = 9;
        picture.lower().aaui16Colours[0][k_uiRed] = 18;
        picture.lower().aaui16Colours[1][k_uiRed] = 31;
        picture.upper().aui32Hard[0] = 1;
        const size_t uiHalf = getBlockWidth(b2bpp) / 2;
        forEveryForm(picture, b2bpp, true,
                     [&]
                     {
                         for (size_t i = 0; i < 2 * uiHalf; ++i)
                         {
                             for (const size_t y : {size_t{0}, size_t{1}})
                             {
                                 EXPECT_EQ(i < uiHalf ? 8u : 74u, picture.channelAt(i, y, k_uiRed)) << i;
                                 EXPECT_EQ(i < uiHalf ? 148u : 255u, picture.channelAt(i, y + 2, k_uiRed)) << i;
                             }
                         }
                         // The next cell is smooth: 9 at its corner, and half way down to 31, v is 16 * 20 (320 / 64 + 320 / 2) or 32 * 20.
                         EXPECT_EQ(74u, picture.channelAt(2 * uiHalf, 0, k_uiRed));
                         EXPECT_EQ(165u, picture.channelAt(2 * uiHalf, 2, k_uiRed));
                     });
        // The first generation has no hard cells.
        forEveryForm(picture, b2bpp, false, [&] { EXPECT_NE(8u, picture.channelAt(1, 1, k_uiRed)); });
    }
}

TEST(BlendCells, TheFastFormGivesTheSameForRowsOfEveryLength)
{
    testsupport::CSeededRandom random(1);
    for (const bool b2bpp : {false, true})
    {
        for (const bool bII : {false, true})
        {
            for (size_t uiCells = 1; uiCells <= k_uiStripCells; uiCells += uiCells < 20 ? 1 : 27)
            {
                CCellRowPicture picture(uiCells, b2bpp);
                for (BlockStrip* pStrip : {&picture.upper(), &picture.lower()})
                {
                    for (size_t i = 0; i <= uiCells; ++i)
                    {
                        // Every other block has extremes only.
                        for (size_t c = 0; c < 8; ++c)
                        {
                            const uint32_t uiMost = c % 4 == k_uiAlpha ? 15 : 31;
                            const uint32_t ui = i % 2 == 0 ? random.below(2) * uiMost : random.below(uiMost + 1);
                            pStrip->aaui16Colours[i][c] = static_cast<uint16_t>(c % 4 == k_uiAlpha ? 2 * ui : ui);
                        }
                        pStrip->aui32Hard[i] = random.below(2);
                    }
                }
                for (uint8_t& ui8 : picture.weights())
                    ui8 = static_cast<uint8_t>(random.below(9) | (b2bpp ? 0 : random.below(2) * k_ui8PunchThroughBit));

                blendCellsReference(picture.getRow(), b2bpp, bII);
                const std::vector<uint8_t> expected = picture.pixels();
                forEachInstructionSet(
                    [&]
                    {
                        picture.clearPixels();
                        blendCells(picture.getRow(), b2bpp, bII);
                        EXPECT_TRUE(expected == picture.pixels()) << uiCells << ' ' << b2bpp << ' ' << bII;
                    });
            }
        }
    }
}
