#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Core/Workers.h"

namespace moxtexture
{

/// Blocks uiX0 to uiX1 - 1 of the rows uiY0 to uiY1 - 1.
struct BlockRegion
{
    uint32_t uiX0, uiX1, uiY0, uiY1;
};

/// The thread count for a grid: 64, the processors or the blocks, whichever is least.
[[nodiscard]] uint32_t getMOXTCThreadCount(uint32_t uiBlocksX, uint32_t uiBlocksY);

/// Tiles of one size, row by row: floor(sqrt(uiThreadCount)) columns (T) and uiThreadCount / T rows; an axis with fewer blocks than
/// tiles is not divided.
///
/// On purpose: tile sizes truncate, and the blocks of the remainder at the right and below belong to no tile.
///
/// @param uiThreadCount  1 or more
[[nodiscard]] std::vector<BlockRegion> getMOXTCTiles(uint32_t uiThreadCount, uint32_t uiBlocksX, uint32_t uiBlocksY);

/// Runs a compressor's refinement passes, a tile to a thread.
///
/// The result depends on the tiles, and through them on getProcessorCount(), but not on how the threads take turns: the tiles of one
/// stage write their own blocks only, and read what changes between stages only.
template <typename TCompressor>
class CMOXTCThreadDriver
{
public:
    /// The compressor, which must outlive the driver, is of either generation.
    explicit CMOXTCThreadDriver(TCompressor& compressor)
        : m_compressor(compressor), m_uiThreadCount(getMOXTCThreadCount(compressor.getBlocksX(), compressor.getBlocksY()))
    {
    }

    [[nodiscard]] uint32_t getThreadCount() const { return m_uiThreadCount; }

    /// All passes: colours by tiles, upscaling by the caller, then, in every pass whose number is a multiple of the compressor's
    /// modulation interval (0: in none), modulation by tiles.
    void run()
    {
        const std::vector<BlockRegion> tiles = getMOXTCTiles(m_uiThreadCount, m_compressor.getBlocksX(), m_compressor.getBlocksY());
        const auto forEachTile = [&](auto work) { runTasks(tiles.size(), m_uiThreadCount, [&](size_t uiTile) { work(tiles[uiTile]); }); };

        const uint32_t uiInterval = m_compressor.getModulationInterval();
        for (uint32_t uiPass = 0; uiPass < m_compressor.getIterations(); ++uiPass)
        {
            forEachTile([&](const BlockRegion& tile) { m_compressor.OptimiseColours(tile.uiX0, tile.uiX1, tile.uiY0, tile.uiY1); });
            m_compressor.UpscaleColours();
            if (uiInterval != 0 && uiPass % uiInterval == 0)
                forEachTile([&](const BlockRegion& tile) { m_compressor.OptimiseModulation(tile.uiX0, tile.uiX1, tile.uiY0, tile.uiY1); });
        }
    }

private:
    TCompressor& m_compressor;
    uint32_t m_uiThreadCount;
};

} // namespace moxtexture
