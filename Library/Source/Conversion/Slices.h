#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "Conversion/CodecTable.h"
#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// The size of a surface, raised to the smallest that a format can hold.
struct SurfaceSize
{
    uint32_t uiWidth, uiHeight, uiDepth;

    [[nodiscard]] size_t getPixelCount() const { return size_t{uiWidth} * uiHeight * uiDepth; }
    friend bool operator==(const SurfaceSize& a, const SurfaceSize& b)
    {
        return a.uiWidth == b.uiWidth && a.uiHeight == b.uiHeight && a.uiDepth == b.uiDepth;
    }
};

inline SurfaceSize getSurfaceSize(const CMOXTextureHeader& header, uint32_t uiMIPLevel)
{
    return {header.getWidth(uiMIPLevel), header.getHeight(uiMIPLevel), header.getDepth(uiMIPLevel)};
}

inline SurfaceSize raiseToMinimum(SurfaceSize size, EMOXTPixelFormat eFormat)
{
    uint32_t x;
    uint32_t y;
    uint32_t z;
    CMOXTextureHeader::getMinDimensions(eFormat, x, y, z);
    return {std::max(size.uiWidth, x), std::max(size.uiHeight, y), std::max(size.uiDepth, z)};
}

/// Runs a codec over a surface: at once if it takes a depth, else slice by slice.
///
/// @param uiSourceSlice, uiTargetSlice  bytes from one depth slice to the next
/// @return the bytes that the codec told, added up; 0 if it failed on any slice
inline uint32_t runCodec(CodecEntry pEntry, bool bTakesDepth, const uint8_t* pSource, size_t uiSourceSlice, uint8_t* pTarget,
                         size_t uiTargetSlice, CodecSurface surface, const SurfaceSize& size)
{
    surface.uiWidth = size.uiWidth;
    surface.uiHeight = size.uiHeight;
    if (bTakesDepth)
    {
        surface.uiDepth = size.uiDepth;
        return pEntry(pSource, pTarget, surface);
    }
    uint32_t uiBytes = 0;
    for (uint32_t z = 0; z < size.uiDepth; ++z)
    {
        const uint32_t uiSliceBytes = pEntry(pSource + z * uiSourceSlice, pTarget + z * uiTargetSlice, surface);
        if (uiSliceBytes == 0)
            return 0;
        uiBytes += uiSliceBytes;
    }
    return uiBytes;
}

} // namespace moxtexture
