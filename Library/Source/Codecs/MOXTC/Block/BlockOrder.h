#pragma once

#include <algorithm>
#include <cstdint>

namespace moxtexture
{

/// Place of block (x, y) in data in rows, as MOXTCII has it.
[[nodiscard]] constexpr uint64_t getBlockIndexRaster(uint32_t x, uint32_t y, uint32_t uiXBlocks)
{
    return uint64_t{uiXBlocks} * y + x;
}

/// Place of block (x, y) in MOXTC1 data: a row or column of squares whose blocks go in Morton order, bits of y below those of x.
///
/// The shorter axis decides how many bits pair up; the rest of the longer axis's coordinate stands above the pairs. A grid whose
/// shorter axis has 1 block pairs none. No two blocks share a place, but in a grid that isOrderComplete refuses some places are
/// uiXBlocks * uiYBlocks or more.
///
/// @param x, y  below uiXBlocks and uiYBlocks, which are 1 or more
[[nodiscard]] constexpr uint64_t getBlockIndexMorton(uint32_t x, uint32_t y, uint32_t uiXBlocks, uint32_t uiYBlocks)
{
    const uint32_t uiShorter = std::min(uiXBlocks, uiYBlocks);
    uint64_t ui64Index = 0;
    uint32_t uiPairs = 0;
    for (uint64_t ui64Bit = 1; ui64Bit < uiShorter; ui64Bit <<= 1, ++uiPairs)
    {
        ui64Index |= uint64_t{(y >> uiPairs) & 1} << (2 * uiPairs);
        ui64Index |= uint64_t{(x >> uiPairs) & 1} << (2 * uiPairs + 1);
    }
    const uint64_t ui64Longer = uiYBlocks < uiXBlocks ? x : y;
    // 32 pairs are only reached by grids of more than 2^31 blocks a side, which leave nothing above the pairs.
    return uiPairs >= 32 ? ui64Index : ui64Index | (ui64Longer >> uiPairs) << (2 * uiPairs);
}

/// Whether the Morton order fills the grid: every place is below uiXBlocks * uiYBlocks. True for an empty grid.
[[nodiscard]] constexpr bool isOrderComplete(uint32_t uiXBlocks, uint32_t uiYBlocks)
{
    // The index rises with each coordinate, so the last corner has the highest.
    return uiXBlocks == 0 || uiYBlocks == 0 ||
           getBlockIndexMorton(uiXBlocks - 1, uiYBlocks - 1, uiXBlocks, uiYBlocks) < uint64_t{uiXBlocks} * uiYBlocks;
}

} // namespace moxtexture
