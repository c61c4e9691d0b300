#pragma once

#include <algorithm>
#include <cstring>

#include "Operations/MovePixels.h"

namespace moxtexture
{

/// Turns each slice of a surface by a quarter, pixel by pixel: what rotateSurface() has to equal.
///
/// Clockwise, (x, y) goes to (height - 1 - y, x), else to (y, width - 1 - x).
///
/// @param pSource, pTarget  pixels of uiPixelBytes each, at any address; they do not overlap
/// @param size              of the source; the target's width is its height, and the other way round
template <size_t uiPixelBytes>
void rotateSurfaceReference(const uint8_t* pSource, uint8_t* pTarget, const SurfaceSize& size, bool bClockwise)
{
    const SurfaceSize targetSize = {size.uiHeight, size.uiWidth, size.uiDepth};
    for (uint32_t z = 0; z < size.uiDepth; ++z)
        for (uint32_t y = 0; y < size.uiHeight; ++y)
            for (uint32_t x = 0; x < size.uiWidth; ++x)
            {
                const size_t uiPlace = bClockwise ? targetSize.getPixelIndex(size.uiHeight - 1 - y, x, z)
                                                  : targetSize.getPixelIndex(y, size.uiWidth - 1 - x, z);
                std::memcpy(pTarget + uiPlace * uiPixelBytes, pSource + size.getPixelIndex(x, y, z) * uiPixelBytes, uiPixelBytes);
            }
}

/// As rotateSurfaceReference(): square tiles are turned in a buffer, so that rows of both surfaces are touched in runs. Without it,
/// one column of a picture as wide as a power of two falls into a few lines of the cache.
template <size_t uiPixelBytes>
void rotateSurface(const uint8_t* pSource, uint8_t* pTarget, const SurfaceSize& size, bool bClockwise)
{
    constexpr size_t uiTile = 256 / uiPixelBytes;
    uint8_t aaui8Turned[uiTile][uiTile * uiPixelBytes]; // rows of the target
    const size_t uiWidth = size.uiWidth;
    const size_t uiHeight = size.uiHeight;

    const auto turnTile = [&](const uint8_t* pSlice, uint8_t* pTargetSlice, size_t uiLeft, size_t uiTop)
    {
        const size_t uiColumns = std::min(uiTile, uiWidth - uiLeft);
        const size_t uiRows = std::min(uiTile, uiHeight - uiTop);
        for (size_t y = 0; y < uiRows; ++y)
        {
            const uint8_t* pRow = pSlice + ((uiTop + y) * uiWidth + uiLeft) * uiPixelBytes;
            const size_t uiPlace = (bClockwise ? uiRows - 1 - y : y) * uiPixelBytes;
            for (size_t x = 0; x < uiColumns; ++x)
                std::memcpy(&aaui8Turned[x][uiPlace], pRow + x * uiPixelBytes, uiPixelBytes);
        }
        const size_t uiTargetLeft = bClockwise ? uiHeight - uiTop - uiRows : uiTop;
        for (size_t x = 0; x < uiColumns; ++x)
        {
            const size_t uiTargetRow = bClockwise ? uiLeft + x : uiWidth - 1 - uiLeft - x;
            std::memcpy(pTargetSlice + (uiTargetRow * uiHeight + uiTargetLeft) * uiPixelBytes, aaui8Turned[x], uiRows * uiPixelBytes);
        }
    };

    const size_t uiSliceBytes = uiWidth * uiHeight * uiPixelBytes;
    for (size_t z = 0; z < size.uiDepth; ++z)
        for (size_t uiTop = 0; uiTop < uiHeight; uiTop += uiTile)
            for (size_t uiLeft = 0; uiLeft < uiWidth; uiLeft += uiTile)
                turnTile(pSource + z * uiSliceBytes, pTarget + z * uiSliceBytes, uiLeft, uiTop);
}

} // namespace moxtexture
