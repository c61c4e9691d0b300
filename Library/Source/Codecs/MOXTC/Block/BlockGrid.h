#pragma once

#include <cstddef>
#include <cstdint>

#include "Codecs/MOXTC/Block/BlockOrder.h"
#include "Codecs/MOXTC/Block/BlockWord.h"

namespace moxtexture
{

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
    CBlockGrid(const uint8_t* pBlocks, size_t uiSize, uint32_t uiXBlocks, uint32_t uiYBlocks, EBlockOrder eOrder)
        : m_pBlocks(pBlocks), m_ui64Count(uiSize / k_uiBlockBytes), m_uiXBlocks(uiXBlocks), m_uiYBlocks(uiYBlocks), m_eOrder(eOrder)
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
