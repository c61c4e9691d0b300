#pragma once

#include <cstddef>
#include <cstdint>

#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

/// Sizes in pixels of one surface.
struct SurfaceSize
{
    uint32_t uiWidth = 1;
    uint32_t uiHeight = 1;
    uint32_t uiDepth = 1;

    [[nodiscard]] constexpr size_t getPixelCount() const { return size_t{uiWidth} * uiHeight * uiDepth; }

    /// The pixel at a place, counted from the first; rows follow each other without a gap, then slices.
    [[nodiscard]] constexpr size_t getPixelIndex(uint32_t x, uint32_t y, uint32_t z) const
    {
        return (size_t{z} * uiHeight + y) * uiWidth + x;
    }

    [[nodiscard]] constexpr bool isEmpty() const { return uiWidth == 0 || uiHeight == 0 || uiDepth == 0; }

    friend constexpr bool operator==(const SurfaceSize& a, const SurfaceSize& b)
    {
        return a.uiWidth == b.uiWidth && a.uiHeight == b.uiHeight && a.uiDepth == b.uiDepth;
    }
    friend constexpr bool operator!=(const SurfaceSize& a, const SurfaceSize& b) { return !(a == b); }
};

/// Of a MIP level; all 0 if the texture has no such level.
[[nodiscard]] inline SurfaceSize getSurfaceSize(const CMOXTextureHeader& header, uint32_t uiMIPLevel = 0)
{
    return {header.getWidth(uiMIPLevel), header.getHeight(uiMIPLevel), header.getDepth(uiMIPLevel)};
}

} // namespace moxtexture
