#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Codecs/MOXTC/CompressorImages.h"
#include "Codecs/MOXTC/RefinementPasses.h"
#include "Core/Workers.h"

namespace moxtexture
{

/// The thread count for a grid: 64, the processors or the blocks, whichever is least.
[[nodiscard]] uint32_t getMOXTCThreadCount(uint32_t uiBlocksX, uint32_t uiBlocksY);

/// Tiles of one size, row by row. T threads have floor(sqrt(T)) columns of tiles and T / columns rows, each without its fraction; an axis
/// with fewer blocks than tiles is not divided.
///
/// On purpose: tile sizes truncate, and the blocks of the remainder at the right and below belong to no tile.
///
/// @param uiThreadCount  0 gives no tiles
[[nodiscard]] std::vector<BlockRegion> getMOXTCTiles(uint32_t uiThreadCount, uint32_t uiBlocksX, uint32_t uiBlocksY);

/// Runs a compressor's refinement passes, a tile to a thread.
///
/// The result depends on the tiles, and through them on getProcessorCount(), but not on how the threads take turns: the tiles of one
/// stage write their own blocks only, and read what changes between stages only.
template <typename TCompressor>
class CMOXTCThreadDriver
{
public:
    /// The compressor, MOXTCCompressor or MOXTCIICompressor, must outlive the driver.
    explicit CMOXTCThreadDriver(TCompressor& compressor)
        : m_Compressor(compressor), m_uiThreadCount(getMOXTCThreadCount(compressor.getBlocksX(), compressor.getBlocksY()))
    {
    }

    [[nodiscard]] uint32_t getThreadCount() const { return m_uiThreadCount; }

    /// All passes (runRefinementPasses), what is done by tiles on one thread a tile; returns when all have ended.
    void run()
    {
        const std::vector<BlockRegion> tiles = getMOXTCTiles(m_uiThreadCount, m_Compressor.getBlocksX(), m_Compressor.getBlocksY());
        runRefinementPasses(m_Compressor, [&](const auto& step)
                            { runTasks(tiles.size(), m_uiThreadCount, [&](size_t uiTile) { step(tiles[uiTile]); }); });
    }

private:
    TCompressor& m_Compressor;
    uint32_t m_uiThreadCount;
};

} // namespace moxtexture
