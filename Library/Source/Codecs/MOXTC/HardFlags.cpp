#include "Codecs/MOXTC/HardFlags.h"

#include <algorithm>
#include <cstddef>

namespace moxtexture
{

std::vector<uint8_t> findHardFlags(const CompressorImages& images)
{
    // The shorter of two steps, from A to A and from B to B: an edge shows in both.
    const auto getStep = [&images](size_t uiFrom, size_t uiTo)
    {
        return std::min(getSquaredDistance(images.colourA[uiFrom], images.colourA[uiTo]),
                        getSquaredDistance(images.colourB[uiFrom], images.colourB[uiTo]));
    };

    std::vector<uint8_t> flags(images.getBlockCount());
    for (uint32_t y = 0; y < images.uiBlocksY; ++y)
        for (uint32_t x = 0; x < images.uiBlocksX; ++x)
        {
            const size_t uiBlock = images.getBlockIndex(x, y);
            const int32_t iRight = getStep(uiBlock, images.getBlockIndex(x + 1 < images.uiBlocksX ? x + 1 : 0, y));
            const int32_t iDown = getStep(uiBlock, images.getBlockIndex(x, y + 1 < images.uiBlocksY ? y + 1 : 0));
            const int32_t iOwn = getSquaredDistance(images.colourA[uiBlock], images.colourB[uiBlock]);
            flags[uiBlock] = std::max(iRight, iDown) > std::max(iOwn / 4, k_iHardFlagLeastDistance) ? 1 : 0;
        }
    return flags;
}

} // namespace moxtexture
