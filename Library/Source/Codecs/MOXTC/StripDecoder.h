#pragma once

#include "Codecs/MOXTC/Block/BlockGrid.h"

namespace moxtexture
{

/// Compressed data and how their blocks are laid out. The data stay the caller's.
struct BlockSource
{
    const uint8_t* pBlocks; ///< no alignment needed
    size_t uiSize;          ///< bytes, which may be fewer than the grid needs
    BlockCounts counts;     ///< 1 or more each way
    EBlockOrder eOrder;
    bool b2bpp;
    bool bII;
};

/// Where a decoded picture goes: red, green, blue, alpha of 8 bits, rows without padding.
struct PixelTarget
{
    uint8_t* pPixels;
    uint32_t uiWidth;  ///< pixels, 1 or more
    uint32_t uiHeight; ///< rows, 1 or more
};

/// Decodes the grid and writes the top left of it that the target has; pixels of the target past the grid stay as they are. Blocks
/// that the data don't hold count as all zero, and their own pixels become 0.
///
/// It goes by rows of cells, in strips of columns that bound what memory it takes; every block of a strip is unpacked once.
void decodeStrips(const BlockSource& source, const PixelTarget& target);

} // namespace moxtexture
