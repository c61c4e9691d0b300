#include "Codecs/MOXTC/Block/HardCells.h"

#include <string>

#include <gmock/gmock.h>

#include "CellRowPicture.h"

using namespace moxtexture;
using moxtctest::CCellRowPicture;

namespace
{

/// Colours of the palette by code, at the pixels right and down from the cell's centre, which has none.
const std::string k_astrPalette[4][4] = {
    {"", "0145", "0145", "0145"},
    {"0167", "0147", "0145", "2145"},
    {"0167", "0167", "0365", "2345"},
    {"0167", "0367", "2367", "2365"},
};

constexpr uint32_t k_ui32Untouched = 0xABABABAB;

/// Two cells, the second of which is hard; its blocks' colours are numbered from 100 in the order of the palette: of P, S, Q, R.
CCellRowPicture makePicture(uint32_t ui32Modulation)
{
    CCellRowPicture picture(2, false);
    picture.upper().aui32Hard[1] = 1;
    for (BlockStrip* pStrip : {&picture.upper(), &picture.lower()})
        pStrip->aWords.fill({ui32Modulation, k_ui32ModeFlag});
    picture.upper().aaui32Expanded[1] = {100, 101};
    picture.lower().aaui32Expanded[2] = {102, 103};
    picture.upper().aaui32Expanded[2] = {104, 105};
    picture.lower().aaui32Expanded[1] = {106, 107};
    return picture;
}

void paint(CCellRowPicture& picture)
{
    const CHardCellPainter painter;
    painter.paint(picture.getRow());
}

} // namespace

TEST(HardCells, ShowTheColourOfThePaletteForEveryPlaceAndCode)
{
    for (uint32_t uiCode = 0; uiCode < 4; ++uiCode)
    {
        CCellRowPicture picture = makePicture(uiCode * 0x55555555);
        paint(picture);
        for (size_t y = 0; y < 4; ++y)
        {
            for (size_t x = 0; x < 4; ++x)
            {
                EXPECT_EQ(k_ui32Untouched, picture.pixelAt(x, y)) << "in the smooth cell";
                const uint32_t uiExpected =
                    x == 0 && y == 0 ? k_ui32Untouched : 100 + static_cast<uint32_t>(k_astrPalette[y][x][uiCode] - '0');
                EXPECT_EQ(uiExpected, picture.pixelAt(4 + x, y)) << x << ", " << y << " code " << uiCode;
            }
        }
    }
}

TEST(HardCells, TakeTheirCodesFromTheNearQuadrantsOfTheBlocks)
{
    // Of each block one pixel has code 1, the others 0: P's (3, 3), Q's (0, 2), R's (2, 1), S's (1, 0).
    CCellRowPicture picture = makePicture(0);
    picture.upper().aWords[1].ui32Modulation = 1u << 2 * (3 * 4 + 3);
    picture.upper().aWords[2].ui32Modulation = 1u << 2 * (2 * 4 + 0);
    picture.lower().aWords[1].ui32Modulation = 1u << 2 * (1 * 4 + 2);
    picture.lower().aWords[2].ui32Modulation = 1u << 2 * (0 * 4 + 1);
    paint(picture);
    EXPECT_EQ(101u, picture.pixelAt(4 + 1, 1));
    EXPECT_EQ(101u, picture.pixelAt(4 + 2, 0));
    EXPECT_EQ(103u, picture.pixelAt(4 + 3, 2));
    // (0, 3): of colours 0 1 6 7.
    EXPECT_EQ(101u, picture.pixelAt(4 + 0, 3));
    EXPECT_EQ(100u, picture.pixelAt(4 + 1, 0));
    EXPECT_EQ(102u, picture.pixelAt(4 + 3, 3));
}

TEST(HardCells, LeavePixelsOfBlocksWithoutTheModeFlag)
{
    for (size_t uiBlock = 0; uiBlock < 4; ++uiBlock)
    {
        CCellRowPicture picture = makePicture(0);
        for (size_t i = 0; i < 4; ++i)
            (i / 2 == 0 ? picture.upper() : picture.lower()).aWords[1 + i % 2].ui32Colours = i == uiBlock ? 0 : k_ui32ModeFlag;
        paint(picture);
        for (size_t y = 0; y < 4; ++y)
        {
            for (size_t x = 0; x < 4; ++x)
            {
                const bool bLeft = y / 2 * 2 + x / 2 == uiBlock || (x == 0 && y == 0);
                EXPECT_EQ(bLeft, picture.pixelAt(4 + x, y) == k_ui32Untouched) << x << ", " << y << " without " << uiBlock;
            }
        }
    }
}
