#pragma once

#include <algorithm>
#include <cstdint>

// Where a screen pixel lies on a scaled surface. A place is offset + position on one axis, in screen pixels from the surface's
// first one; a zoom is a power of two. Surfaces of 2^24 texels and more lose the lowest bits of a place, as floats do.

/// truncate(size * zoom): a surface's or a grid's size on the screen. Up to 2^39.
[[nodiscard]] inline int64_t scaleSize(uint32_t uiSize, float fZoom)
{
    return static_cast<int64_t>(static_cast<double>(uiSize) * static_cast<double>(fZoom));
}

/// truncate(place * (1 / zoom)).
[[nodiscard]] inline int64_t getTexel(int64_t i64Place, float fInverseZoom)
{
    return static_cast<int64_t>(static_cast<float>(i64Place) * fInverseZoom);
}

/// The texel at a place on the surface; a place that was rounded past its end counts as its end.
[[nodiscard]] inline uint32_t getTexelWithin(int64_t i64Place, float fInverseZoom, uint32_t uiSize)
{
    return static_cast<uint32_t>(std::min(getTexel(i64Place, fInverseZoom), int64_t{uiSize} - 1));
}

/// The texel at any place on the surface repeated without end.
[[nodiscard]] inline uint32_t getTexelTiled(int64_t i64Place, float fInverseZoom, uint32_t uiSize)
{
    const int64_t i64Texel = getTexel(i64Place, fInverseZoom) % int64_t{uiSize};
    return static_cast<uint32_t>(i64Texel < 0 ? i64Texel + uiSize : i64Texel);
}

/// Whether a grid line of this step runs through the place; the steps 0 and 1 have none.
[[nodiscard]] inline bool isOnGridLine(int64_t i64Place, int64_t i64Step)
{
    return i64Step > 1 && i64Place % i64Step == 0;
}
