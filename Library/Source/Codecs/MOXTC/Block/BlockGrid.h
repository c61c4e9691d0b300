#pragma once

#include <cstddef>
#include <cstdint>

#include "Codecs/MOXTC/Block/BlockOrder.h"
#include "Codecs/MOXTC/Block/CellColours.h"

namespace moxtexture
{

struct BlockCounts
{
    uint32_t uiX = 0;
    uint32_t uiY = 0;
};

/// Whole blocks of a MOXTC1 surface, raised to 16 x 8 pixels at 2bpp or 8 x 8 at 4bpp: 2 or more each way.
[[nodiscard]] constexpr BlockCounts getMOXTC1BlockCounts(uint32_t uiWidth, uint32_t uiHeight, bool b2bpp)
{
    constexpr uint32_t k_uiLeast = 2;
    return {std::max(uiWidth / getBlockWidth(b2bpp), k_uiLeast), std::max(uiHeight / k_uiBlockHeight, k_uiLeast)};
}

/// Blocks of a MOXTCII surface padded to whole ones.
[[nodiscard]] constexpr BlockCounts getMOXTCIIBlockCounts(uint32_t uiWidth, uint32_t uiHeight, bool b2bpp)
{
    const auto countBlocks = [](uint32_t uiPixels, uint32_t uiSide) { return uiPixels / uiSide + (uiPixels % uiSide != 0 ? 1 : 0); };
    return {countBlocks(uiWidth, getBlockWidth(b2bpp)), countBlocks(uiHeight, k_uiBlockHeight)};
}

enum class EBlockOrder
{
    eRaster,
    eMorton,
};

/// Compressed data looked at as a grid of blocks; never reads past the data. The data stay the caller's.
class CBlockGrid
{
public:
    /// @param pBlocks  uiSize bytes, which may be fewer than the grid needs
    CBlockGrid(const uint8_t* pBlocks, size_t uiSize, BlockCounts counts, EBlockOrder eOrder)
        : m_pBlocks(pBlocks), m_ui64Count(uiSize / k_uiBlockBytes), m_uiXBlocks(counts.uiX), m_uiYBlocks(counts.uiY), m_eOrder(eOrder)
    {
    }

    uint32_t getXBlocks() const { return m_uiXBlocks; }
    uint32_t getYBlocks() const { return m_uiYBlocks; }

    /// Whether the data hold the block: they may be short, and the Morton order of some grids has places past the grid's count.
    bool hasBlock(uint32_t x, uint32_t y) const { return getIndex(x, y) < m_ui64Count; }

    /// The block at (x, y), both inside the grid; all zero if the data do not hold it.
    BlockWord getBlock(uint32_t x, uint32_t y) const
    {
        const uint64_t ui64Index = getIndex(x, y);
        return ui64Index < m_ui64Count ? loadBlock(m_pBlocks + static_cast<size_t>(ui64Index) * k_uiBlockBytes) : BlockWord{};
    }

    /// The blocks around the cell from the centre of block (x, y), wrapping at the right and lower edges.
    CellBlocks getCellBlocks(uint32_t x, uint32_t y) const
    {
        const uint32_t uiRight = x + 1 == m_uiXBlocks ? 0 : x + 1;
        const uint32_t uiBelow = y + 1 == m_uiYBlocks ? 0 : y + 1;
        return {getBlock(x, y), getBlock(uiRight, y), getBlock(x, uiBelow), getBlock(uiRight, uiBelow)};
    }

private:
    uint64_t getIndex(uint32_t x, uint32_t y) const
    {
        return m_eOrder == EBlockOrder::eRaster ? getBlockIndexRaster(x, y, m_uiXBlocks)
                                                : getBlockIndexMorton(x, y, m_uiXBlocks, m_uiYBlocks);
    }

    const uint8_t* m_pBlocks;
    uint64_t m_ui64Count; ///< whole blocks in the data
    uint32_t m_uiXBlocks;
    uint32_t m_uiYBlocks;
    EBlockOrder m_eOrder;
};

} // namespace moxtexture
