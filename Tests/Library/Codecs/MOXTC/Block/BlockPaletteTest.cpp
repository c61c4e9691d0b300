#include "Codecs/MOXTC/Block/BlockPalette.h"

#include <string>

#include <gmock/gmock.h>

using namespace moxtexture;
using testing::ElementsAre;

TEST(BlockPalette, HasTheColoursOfPThenSThenQThenRExpandedToEightBits)
{
    const auto block = [](uint32_t uiA, uint32_t uiB) { return BlockWord{0, k_ui32OpaqueFlag | uiA << 10 | uiB << 26}; };
    // Red 1 to 8 of 5 bits, in eighths of 64: 8, 16, 24, then 33, 41, 49, 57, 66 with the high bits below.
    const BlockPalette palette = makeBlockPalette({block(1, 2), block(5, 6), block(7, 8), block(3, 4)});
    std::array<int, 8> aiReds = {};
    for (size_t i = 0; i < palette.size(); ++i)
    {
        aiReds[i] = palette[i][0];
        EXPECT_EQ(255, palette[i][3]);
    }
    EXPECT_THAT(aiReds, ElementsAre(8, 16, 24, 33, 41, 49, 57, 66));
}

TEST(BlockPalette, HasTheTranslucentAlphaOfTheSecondGeneration)
{
    // Alpha 111 of A is 1110, of B 1111.
    const BlockWord block = {0, uint32_t{7} << 12 | uint32_t{7} << 28};
    const BlockPalette palette = makeBlockPalette({block, block, block, block});
    EXPECT_EQ(0xEE, palette[0][3]);
    EXPECT_EQ(0xFF, palette[1][3]);
}

TEST(BlockPalette, EveryPixelButTheCentreHasFourColours)
{
    const std::string astrRows[4][4] = {
        {"", "0145", "0145", "0145"},
        {"0167", "0147", "0145", "2145"},
        {"0167", "0167", "0365", "2345"},
        {"0167", "0367", "2367", "2365"},
    };
    for (uint32_t y = 0; y < 4; ++y)
    {
        for (uint32_t x = 0; x < 4; ++x)
        {
            if (x == 0 && y == 0)
                continue;
            std::string strColours;
            for (uint32_t uiCode = 0; uiCode < 4; ++uiCode)
                strColours += std::to_string(getPaletteIndex(x, y, uiCode));
            EXPECT_EQ(astrRows[y][x], strColours) << x << ", " << y;
        }
    }
}
