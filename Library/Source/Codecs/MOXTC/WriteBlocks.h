#pragma once

#include <cstddef>
#include <cstdint>

#include "Codecs/MOXTC/Block/BlockOrder.h"
#include "Codecs/MOXTC/Block/BlockWord.h"
#include "Codecs/MOXTC/CompressorImages.h"

namespace moxtexture
{

/// packColours for pixels as numbers, red in the lowest byte.
[[nodiscard]] uint32_t packPixels(uint32_t uiColourA, uint32_t uiColourB, bool bII);

/// What a compressor has chosen for the pixels of one block.
struct ChosenModulation
{
    const uint8_t* pui8Codes; ///< 0 to 3 for each pixel, in rows of the block: 16 at 4bpp, 32 at 2bpp
    uint32_t uiMode;          ///< 4bpp: 0 standard, 1 punch-through; 2bpp: 0 direct, 1 both neighbours, 2 horizontal, 3 vertical
};

/// The 64 bits of a block in rows: modulation and mode flag by the chosen mode, the block's colours by their alpha (packColours).
///
/// @param pui8HardFlags  null for MOXTC1; for MOXTCII one byte a block, not 0 for a hard one
[[nodiscard]] BlockWord makeBlockWord(const CompressorImages& images, const uint8_t* pui8HardFlags, size_t uiBlock,
                                      const ChosenModulation& modulation);

/// Writes all blocks of the pictures, k_uiBlockBytes each.
///
/// @param pui8HardFlags  as for makeBlockWord
/// @param bMorton        in Morton order, which must be complete for the grid (isOrderComplete); otherwise in rows
/// @param getModulation  gives the ChosenModulation for the number of a block in rows
template <typename GetModulation>
void writeBlocks(const CompressorImages& images, const uint8_t* pui8HardFlags, bool bMorton, uint8_t* pui8Target,
                 const GetModulation& getModulation)
{
    size_t uiBlock = 0;
    for (uint32_t y = 0; y < images.uiBlocksY; ++y)
        for (uint32_t x = 0; x < images.uiBlocksX; ++x, ++uiBlock)
        {
            const size_t uiPlace = bMorton ? static_cast<size_t>(getBlockIndexMorton(x, y, images.uiBlocksX, images.uiBlocksY)) : uiBlock;
            storeBlock(pui8Target + uiPlace * k_uiBlockBytes, makeBlockWord(images, pui8HardFlags, uiBlock, getModulation(uiBlock)));
        }
}

} // namespace moxtexture
