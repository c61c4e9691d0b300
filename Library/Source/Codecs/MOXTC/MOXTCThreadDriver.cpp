#include "Codecs/MOXTC/MOXTCThreadDriver.h"

#include <algorithm>

namespace moxtexture
{

uint32_t getMOXTCThreadCount(uint32_t uiBlocksX, uint32_t uiBlocksY)
{
    constexpr uint32_t uiMostThreads = 64;
    const uint64_t uiBlockCount = uint64_t{uiBlocksX} * uiBlocksY;
    return static_cast<uint32_t>(std::min<uint64_t>(std::min(uiMostThreads, getProcessorCount()), uiBlockCount));
}

std::vector<BlockRegion> getMOXTCTiles(uint32_t uiThreadCount, uint32_t uiBlocksX, uint32_t uiBlocksY)
{
    if (uiThreadCount == 0)
        return {};
    uint32_t uiColumns = 1;
    while ((uiColumns + 1) * (uiColumns + 1) <= uiThreadCount)
        ++uiColumns;
    uint32_t uiRows = uiThreadCount / uiColumns;
    if (uiColumns > uiBlocksX)
        uiColumns = 1;
    if (uiRows > uiBlocksY)
        uiRows = 1;

    const uint32_t uiTileWidth = uiBlocksX / uiColumns;
    const uint32_t uiTileHeight = uiBlocksY / uiRows;
    std::vector<BlockRegion> tiles;
    tiles.reserve(size_t{uiColumns} * uiRows);
    for (uint32_t j = 0; j < uiRows; ++j)
        for (uint32_t i = 0; i < uiColumns; ++i)
            tiles.push_back({i * uiTileWidth, (i + 1) * uiTileWidth, j * uiTileHeight, (j + 1) * uiTileHeight});
    return tiles;
}

} // namespace moxtexture
