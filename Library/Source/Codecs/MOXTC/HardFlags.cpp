#include "Codecs/MOXTC/HardFlags.h"

#include <algorithm>
#include <cstddef>

namespace moxtexture
{
namespace
{

int32_t squaredDistance(const uint8_t* pui8First, const uint8_t* pui8Second)
{
    int32_t iSum = 0;
    for (size_t i = 0; i < 4; ++i)
    {
        const int32_t iDifference = pui8First[i] - pui8Second[i];
        iSum += iDifference * iDifference;
    }
    return iSum;
}

} // namespace

void findHardFlags(const uint8_t* pui8ColourA, const uint8_t* pui8ColourB, uint32_t uiBlocksX, uint32_t uiBlocksY, uint8_t* pui8Flags)
{
    const auto place = [&](uint32_t x, uint32_t y) { return size_t{y} * uiBlocksX + x; };
    // The nearer of the two steps, from A to A and from B to B: an edge shows in both.
    const auto step = [&](size_t uiFrom, size_t uiTo)
    {
        return std::min(squaredDistance(pui8ColourA + 4 * uiFrom, pui8ColourA + 4 * uiTo),
                        squaredDistance(pui8ColourB + 4 * uiFrom, pui8ColourB + 4 * uiTo));
    };
    for (uint32_t y = 0; y < uiBlocksY; ++y)
        for (uint32_t x = 0; x < uiBlocksX; ++x)
        {
            const size_t uiBlock = place(x, y);
            const int32_t iRight = step(uiBlock, place(x + 1 < uiBlocksX ? x + 1 : 0, y));
            const int32_t iDown = step(uiBlock, place(x, y + 1 < uiBlocksY ? y + 1 : 0));
            const int32_t iOwn = squaredDistance(pui8ColourA + 4 * uiBlock, pui8ColourB + 4 * uiBlock);
            pui8Flags[uiBlock] = std::max(iRight, iDown) > std::max(iOwn / 4, k_iHardFlagLeastDistance) ? 1 : 0;
        }
}

} // namespace moxtexture
