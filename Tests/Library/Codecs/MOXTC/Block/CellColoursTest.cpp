#include "Codecs/MOXTC/Block/CellColours.h"

#include <gmock/gmock.h>

using namespace moxtexture;
using testing::ElementsAre;

TEST(CellColours, AtThePixelOfACentreAreTheColourOfThatBlock)
{
    const CellColours colours = {{{22, 1, 31, 10}}, {{1, 2, 3, 4}}, {{5, 6, 7, 8}}, {{9, 10, 11, 12}}};
    // 16 * 22 = 352: 5 + 176. 16 * 1: 0 + 8. 16 * 31 = 496: 7 + 248. 16 * 10 = 160: 10 + 160.
    EXPECT_THAT(interpolateCell(colours, 0, 0, false), ElementsAre(181, 8, 255, 170));
    // 32 * 22 = 704: 5 + 176, and so on: the same.
    EXPECT_THAT(interpolateCell(colours, 0, 0, true), ElementsAre(181, 8, 255, 170));
}

TEST(CellColours, AreInterpolatedBetweenTheFourBlocksAtFourBits)
{
    const CellColours colours = {{{31, 0, 0, 0}}, {{0, 31, 0, 14}}, {{0, 0, 31, 0}}, {{0, 0, 0, 15}}};
    // Pixel (1, 3): weights 3 * 1 of P, 1 * 1 of Q, 3 * 3 of R, 1 * 3 of S, of 16.
    // Red 93: 1 + 46. Green 31: 0 + 15. Blue 279: 4 + 139. Alpha 14 + 45 = 59: 3 + 59.
    EXPECT_THAT(interpolateCell(colours, 1, 3, false), ElementsAre(47, 15, 143, 62));
}

TEST(CellColours, AreInterpolatedBetweenTheFourBlocksAtTwoBits)
{
    const CellColours colours = {{{31, 0, 0, 0}}, {{0, 31, 0, 14}}, {{0, 0, 31, 0}}, {{0, 0, 0, 15}}};
    // Pixel (5, 1): weights 3 * 3 of P, 5 * 3 of Q, 3 * 1 of R, 5 * 1 of S, of 32.
    // Red 279: 2 + 69. Green 465: 3 + 116. Blue 93: 0 + 23. Alpha 210 + 75 = 285: 8 + 142.
    EXPECT_THAT(interpolateCell(colours, 5, 1, true), ElementsAre(71, 119, 23, 150));
}

TEST(CellColours, BlendInEighthsAndCutOff)
{
    // 3: (5 * 10 + 3 * 200) / 8 = 650 / 8, (5 * 200 + 3 * 10) / 8 = 1030 / 8.
    EXPECT_THAT(blendColours({10, 200, 255, 0}, {200, 10, 255, 1}, 3), ElementsAre(81, 128, 255, 0));
    EXPECT_THAT(blendColours({10, 200, 255, 0}, {200, 10, 255, 1}, 0), ElementsAre(10, 200, 255, 0));
    EXPECT_THAT(blendColours({10, 200, 255, 0}, {200, 10, 255, 1}, 8), ElementsAre(200, 10, 255, 1));
}

TEST(CellColours, UnpackOfEachBlockInItsPlace)
{
    // Opaque colours of both generations; red alone: A in bits 14 to 10, B in bits 30 to 26.
    const auto block = [](uint32_t uiA, uint32_t uiB) {
        return BlockWord{0, k_ui32OpaqueFlag | k_ui32OpaqueAFlag | uiA << 10 | uiB << 26};
    };
    const CellBlocks blocks = {block(1, 11), block(2, 12), block(3, 13), block(4, 14)};
    for (const bool bII : {false, true})
    {
        const CellColours a = unpackCellColoursA(blocks, bII);
        EXPECT_THAT((std::array<int, 4>{a.P.aui8[0], a.Q.aui8[0], a.R.aui8[0], a.S.aui8[0]}), ElementsAre(1, 2, 3, 4));
        const CellColours b = unpackCellColoursB(blocks, bII);
        EXPECT_THAT((std::array<int, 4>{b.P.aui8[0], b.Q.aui8[0], b.R.aui8[0], b.S.aui8[0]}), ElementsAre(11, 12, 13, 14));
    }
}
