#include "Operations/Border.h"

#include <cstring>
#include <limits>

#include "Operations/ChannelKind.h"
#include "Operations/MovePixels.h"

namespace moxtexture
{
namespace
{

/// A surface with a frame around it.
template <size_t uiPixelBytes>
struct FramedSurface
{
    uint8_t* pPixels;
    SurfaceSize size;  ///< with the frame
    SurfaceSize inner; ///< without
    uint32_t uiBorderX = (size.uiWidth - inner.uiWidth) / 2;
    uint32_t uiBorderY = (size.uiHeight - inner.uiHeight) / 2;
    uint32_t uiBorderZ = (size.uiDepth - inner.uiDepth) / 2;

    [[nodiscard]] uint8_t* at(uint32_t x, uint32_t y, uint32_t z) const { return pPixels + size.getPixelIndex(x, y, z) * uiPixelBytes; }

    /// Copies a row over the inner width.
    void copyRow(uint32_t uiTo, uint32_t uiToSlice, uint32_t uiFrom, uint32_t uiFromSlice) const
    {
        std::memcpy(at(uiBorderX, uiTo, uiToSlice), at(uiBorderX, uiFrom, uiFromSlice), inner.uiWidth * uiPixelBytes);
    }

    /// Copies a slice over the inner rectangle.
    void copySlice(uint32_t uiTo, uint32_t uiFrom) const
    {
        for (uint32_t y = uiBorderY; y < uiBorderY + inner.uiHeight; ++y)
            copyRow(y, uiTo, y, uiFrom);
    }
};

/// What lies around the inner surface, step by step: a later step reads what an earlier one has written.
template <size_t uiPixelBytes>
void fillFrame(const FramedSurface<uiPixelBytes>& framed)
{
    const uint32_t uiBorderX = framed.uiBorderX;
    const uint32_t uiBorderY = framed.uiBorderY;
    const uint32_t uiBorderZ = framed.uiBorderZ;
    const uint32_t uiLastSlice = uiBorderZ + framed.inner.uiDepth - 1;

    // Both loops start at 1, as a slice is not copied to itself.
    for (uint32_t i = 1; i < uiBorderZ; ++i)
        framed.copySlice(uiBorderZ - i, uiBorderZ + i); // on purpose one slice off: slice 0 stays empty
    for (uint32_t i = 1; i < uiBorderZ; ++i)
        framed.copySlice(uiLastSlice - i, uiLastSlice + i); // on purpose inwards: the frame behind stays empty

    const uint32_t uiBottom = framed.size.uiHeight - uiBorderY;
    const uint32_t uiRight = framed.size.uiWidth - uiBorderX;
    for (uint32_t z = 0; z < framed.size.uiDepth; ++z)
    {
        for (uint32_t i = 0; i < uiBorderY; ++i)
            framed.copyRow(uiBorderY - 1 - i, z, uiBorderY + i, z);
        for (uint32_t i = 0; i < uiBorderY; ++i)
            framed.copyRow(uiBottom + i, z, uiBottom - 1 - i, z);
        for (uint32_t y = 0; y < framed.size.uiHeight; ++y)
        {
            // Left and right in turn: a frame wider than the surface mirrors what the other side already has.
            uint8_t* pRow = framed.at(0, y, z);
            for (size_t i = 0; i < uiBorderX; ++i)
            {
                std::memcpy(pRow + (uiBorderX - 1 - i) * uiPixelBytes, pRow + (uiBorderX + i) * uiPixelBytes, uiPixelBytes);
                std::memcpy(pRow + (uiRight + i) * uiPixelBytes, pRow + (uiRight - 1 - i) * uiPixelBytes, uiPixelBytes);
            }
        }
    }
}

/// uiSize and a border on both sides; false if that passes 32 bits.
bool addBorder(uint32_t uiSize, uint32_t uiBorder, uint32_t& uiSum)
{
    const uint64_t ui64Sum = uiSize + 2 * uint64_t{uiBorder};
    uiSum = static_cast<uint32_t>(ui64Sum);
    return ui64Sum <= std::numeric_limits<uint32_t>::max();
}

} // namespace

bool Border(CMOXTexture& texture, uint32_t uiBorderX, uint32_t uiBorderY, uint32_t uiBorderZ)
{
    return withWholePixel(
        texture,
        [&](auto pixel)
        {
            if (uiBorderX == 0 && uiBorderY == 0 && uiBorderZ == 0)
                return true;
            const SurfaceSize inner = getSurfaceSize(texture);
            SurfaceSize size;
            if (!addBorder(inner.uiWidth, uiBorderX, size.uiWidth) || !addBorder(inner.uiHeight, uiBorderY, size.uiHeight) ||
                !addBorder(inner.uiDepth, uiBorderZ, size.uiDepth))
                return false;

            CMOXTextureHeader header = texture;
            header.setWidth(size.uiWidth);
            header.setHeight(size.uiHeight);
            header.setDepth(size.uiDepth);
            header.setNumMIPLevels(1);
            if (!replaceSurfaces(texture, header,
                                 [&](const uint8_t* pSource, uint8_t* pTarget, uint32_t)
                                 {
                                     copyBox(pSource, inner, pTarget, size, uiBorderX, uiBorderY, uiBorderZ, sizeof(pixel));
                                     fillFrame<sizeof(pixel)>({pTarget, size, inner});
                                     return true;
                                 }))
                return false;
            texture.setBorder(uiBorderX, uiBorderY, uiBorderZ);
            return true;
        });
}

} // namespace moxtexture
