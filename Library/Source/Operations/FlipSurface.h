#pragma once

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "Formats/ChannelTypes.h"
#include "Operations/ChannelKind.h"
#include "Operations/MovePixels.h"

namespace moxtexture
{

/// Mirrors a surface in place along an axis, pixel by pixel: what flipSurface() has to equal.
///
/// @param pPixels  size.uiWidth * uiHeight * uiDepth pixels of uiPixelBytes, at any address
/// @param uiAxis   an EMOXTAxis; other numbers do nothing
template <size_t uiPixelBytes>
void flipSurfaceReference(uint8_t* pPixels, const SurfaceSize& size, uint32_t uiAxis)
{
    for (uint32_t z = 0; z < size.uiDepth; ++z)
        for (uint32_t y = 0; y < size.uiHeight; ++y)
            for (uint32_t x = 0; x < size.uiWidth; ++x)
            {
                const uint32_t auiPlace[3] = {x, y, z};
                const uint32_t auiSize[3] = {size.uiWidth, size.uiHeight, size.uiDepth};
                if (uiAxis > eAxisZ || auiPlace[uiAxis] >= auiSize[uiAxis] / 2)
                    continue;
                uint32_t auiOther[3] = {x, y, z};
                auiOther[uiAxis] = auiSize[uiAxis] - 1 - auiPlace[uiAxis];
                uint8_t* pFirst = pPixels + size.getPixelIndex(x, y, z) * uiPixelBytes;
                uint8_t* pSecond = pPixels + size.getPixelIndex(auiOther[0], auiOther[1], auiOther[2]) * uiPixelBytes;
                std::swap_ranges(pFirst, pFirst + uiPixelBytes, pSecond);
            }
}

/// Exchanges two runs of bytes that do not overlap.
inline void swapRuns(uint8_t* pFirst, uint8_t* pSecond, size_t uiSize)
{
    uint8_t aui8Held[2048];
    while (uiSize != 0)
    {
        const size_t uiStep = std::min(uiSize, sizeof(aui8Held));
        std::memcpy(aui8Held, pFirst, uiStep);
        std::memcpy(pFirst, pSecond, uiStep);
        std::memcpy(pSecond, aui8Held, uiStep);
        pFirst += uiStep;
        pSecond += uiStep;
        uiSize -= uiStep;
    }
}

/// Turns the order of a row of pixels around, four from both ends at a time: a loop that compilers make vectors of.
template <size_t uiPixelBytes>
void reverseRow(uint8_t* pRow, size_t uiCount)
{
    using Word = std::conditional_t<uiPixelBytes == 4, uint32_t, std::conditional_t<uiPixelBytes == 8, uint64_t, WholePixel<uiPixelBytes>>>;
    static_assert(sizeof(Word) == uiPixelBytes);
    constexpr size_t uiStep = 4;
    uint8_t* pLeft = pRow;
    uint8_t* pRight = pRow + uiCount * uiPixelBytes;
    for (; uiCount >= 2 * uiStep; uiCount -= 2 * uiStep)
    {
        pRight -= uiStep * uiPixelBytes;
        Word aLeft[uiStep];
        Word aRight[uiStep];
        std::memcpy(aLeft, pLeft, sizeof(aLeft));
        std::memcpy(aRight, pRight, sizeof(aRight));
        Word aNewLeft[uiStep];
        Word aNewRight[uiStep];
        for (size_t i = 0; i < uiStep; ++i)
        {
            aNewLeft[i] = aRight[uiStep - 1 - i];
            aNewRight[i] = aLeft[uiStep - 1 - i];
        }
        std::memcpy(pLeft, aNewLeft, sizeof(aNewLeft));
        std::memcpy(pRight, aNewRight, sizeof(aNewRight));
        pLeft += uiStep * uiPixelBytes;
    }
    for (; uiCount >= 2; uiCount -= 2)
    {
        pRight -= uiPixelBytes;
        swapRuns(pLeft, pRight, uiPixelBytes);
        pLeft += uiPixelBytes;
    }
}

/// As flipSurfaceReference(): rows are turned around, or exchanged whole, or slices are.
template <size_t uiPixelBytes>
void flipSurface(uint8_t* pPixels, const SurfaceSize& size, uint32_t uiAxis)
{
    const size_t uiRowBytes = size_t{size.uiWidth} * uiPixelBytes;
    const size_t uiSliceBytes = uiRowBytes * size.uiHeight;
    if (uiAxis == eAxisX)
    {
        for (size_t i = 0; i < size_t{size.uiHeight} * size.uiDepth; ++i)
            reverseRow<uiPixelBytes>(pPixels + i * uiRowBytes, size.uiWidth);
    }
    else if (uiAxis == eAxisY)
    {
        for (size_t z = 0; z < size.uiDepth; ++z)
            for (size_t i = 0; i < size.uiHeight / 2; ++i)
                swapRuns(pPixels + z * uiSliceBytes + i * uiRowBytes, pPixels + z * uiSliceBytes + (size.uiHeight - 1 - i) * uiRowBytes,
                         uiRowBytes);
    }
    else if (uiAxis == eAxisZ)
    {
        for (size_t i = 0; i < size.uiDepth / 2; ++i)
            swapRuns(pPixels + i * uiSliceBytes, pPixels + (size.uiDepth - 1 - i) * uiSliceBytes, uiSliceBytes);
    }
}

} // namespace moxtexture
