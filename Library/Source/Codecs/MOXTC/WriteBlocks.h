#pragma once

#include <cstddef>
#include <cstdint>

#include "Codecs/MOXTC/Block/BlockOrder.h"
#include "Codecs/MOXTC/Block/BlockWord.h"

namespace moxtexture
{

/// What a compressor has chosen for the pixels of one block.
struct ChosenModulation
{
    const uint8_t* pui8Codes; ///< 0 to 3 for each pixel, rows of the block one after the other: 16 at 4bpp, 32 at 2bpp
    uint32_t uiMode;          ///< 4bpp: 0 standard, 1 punch-through; 2bpp: 0 direct, 1 both neighbours, 2 horizontal, 3 vertical
};

/// The low-resolution pictures of a compressor, and how its blocks are written.
struct BlockGrid
{
    uint32_t uiBlocksX, uiBlocksY;
    const uint8_t* pui8ColourA;   ///< RGBA of a block in four bytes, rows of uiBlocksX without padding
    const uint8_t* pui8ColourB;   ///< likewise
    const uint8_t* pui8HardFlags; ///< a byte a block, not 0 for hard: MOXTCII; null: MOXTC1
    bool b2bpp;
    bool bMorton; ///< Morton order, which must be complete for the grid (isOrderComplete); otherwise rows
};

/// The 64 bits of one block: modulation and mode flag by the chosen mode, colours by their alpha (packColours).
[[nodiscard]] BlockWord makeBlockWord(const BlockGrid& grid, size_t uiBlock, const ChosenModulation& modulation);

/// Writes the grid's blocks, 8 bytes each, to pui8Target; getModulation(uiBlock) gives the ChosenModulation of a block in rows.
template <typename GetModulation>
void writeBlocks(const BlockGrid& grid, uint8_t* pui8Target, GetModulation&& getModulation)
{
    size_t uiBlock = 0;
    for (uint32_t y = 0; y < grid.uiBlocksY; ++y)
        for (uint32_t x = 0; x < grid.uiBlocksX; ++x, ++uiBlock)
        {
            const size_t uiPlace = grid.bMorton ? getBlockIndexMorton(x, y, grid.uiBlocksX, grid.uiBlocksY) : uiBlock;
            storeBlock(pui8Target + 8 * uiPlace, makeBlockWord(grid, uiBlock, getModulation(uiBlock)));
        }
}

} // namespace moxtexture
