#include "Codecs/MOXTC/Block/BlockPalette.h"

#include <cstddef>

namespace moxtexture
{

namespace
{

/// By y, x and code. The centre pixel has no colours here; its row is never read.
constexpr uint8_t k_aui8PaletteIndices[4][4][4] = {
    {{0, 0, 0, 0}, {0, 1, 4, 5}, {0, 1, 4, 5}, {0, 1, 4, 5}},
    {{0, 1, 6, 7}, {0, 1, 4, 7}, {0, 1, 4, 5}, {2, 1, 4, 5}},
    {{0, 1, 6, 7}, {0, 1, 6, 7}, {0, 3, 6, 5}, {2, 3, 4, 5}},
    {{0, 1, 6, 7}, {0, 3, 6, 7}, {2, 3, 6, 7}, {2, 3, 6, 5}},
};

} // namespace

BlockPalette makeBlockPalette(const CellBlocks& blocks)
{
    BlockPalette palette = {};
    size_t uiPlace = 0;
    for (const BlockWord& block : {blocks.P, blocks.S, blocks.Q, blocks.R})
    {
        palette[uiPlace++] = expandColour(unpackColourA(block.ui32Colours, true));
        palette[uiPlace++] = expandColour(unpackColourB(block.ui32Colours, true));
    }
    return palette;
}

uint32_t getPaletteIndex(uint32_t x, uint32_t y, uint32_t uiCode)
{
    return k_aui8PaletteIndices[y][x][uiCode];
}

} // namespace moxtexture
