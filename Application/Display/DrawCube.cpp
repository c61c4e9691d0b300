#include "Display/DrawCube.h"

#include <algorithm>
#include <cstring>

#include "Display/CubeBasis.h"
#include "Display/DrawRow.h"
#include "Display/PickCubeRow.h"

namespace
{

alignas(4) constexpr uint8_t k_aui8MissingTexel[4] = {};

/// A cube without texels is one of missing faces.
CubeFaces withoutEmptyFaces(const CubeFaces& faces)
{
    return faces.uiWidth != 0 && faces.uiHeight != 0 ? faces : CubeFaces{1, 1, {}};
}

/// Fetches texels by face and number; every texel of a missing face is the one that stands in for it.
class CFaceTexels
{
public:
    explicit CFaceTexels(const CubeFaces& faces)
    {
        for (size_t i = 0; i < faces.apui8Pixels.size(); ++i)
        {
            const bool bMissing = faces.apui8Pixels[i] == nullptr;
            m_apui8Faces[i] = bMissing ? k_aui8MissingTexel : faces.apui8Pixels[i];
            m_aui32Mask[i] = bMissing ? 0 : 0xFFFFFFFF;
        }
    }

    [[nodiscard]] const uint8_t* getTexel(uint32_t uiFace, uint32_t ui32Texel) const
    {
        return m_apui8Faces[uiFace] + size_t{4} * (ui32Texel & m_aui32Mask[uiFace]);
    }

private:
    const uint8_t* m_apui8Faces[6];
    uint32_t m_aui32Mask[6];
};

} // namespace

void drawCubeReference(const CubeFaces& givenFaces, const TargetImage& target, ViewOffset offset, float fZoom,
                       const CMOXDrawPixel& drawPixel)
{
    const CubeFaces faces = withoutEmptyFaces(givenFaces);
    const CubeBasis basis = makeCubeBasis(target.uiWidth, target.uiHeight, offset, fZoom);
    for (uint32_t y = 0; y < target.uiHeight; ++y)
        for (uint32_t x = 0; x < target.uiWidth; ++x)
        {
            const CubeTexel texel = pickCubeTexel(basis, static_cast<int32_t>(x), static_cast<int32_t>(y), faces.uiWidth, faces.uiHeight);
            const uint8_t* pui8Face = faces.apui8Pixels[texel.uiFace];
            const size_t uiTexel = size_t{texel.uiY} * faces.uiWidth + texel.uiX;
            drawPixel.draw(target.pui8Pixels + 4 * (size_t{y} * target.uiWidth + x),
                           pui8Face != nullptr ? pui8Face + 4 * uiTexel : k_aui8MissingTexel);
        }
}

void drawCube(const CubeFaces& givenFaces, const TargetImage& target, ViewOffset offset, float fZoom, const CMOXDrawPixel& drawPixel,
              EPixelOrder eOrder)
{
    const CubeFaces faces = withoutEmptyFaces(givenFaces);
    const CubeBasis basis = makeCubeBasis(target.uiWidth, target.uiHeight, offset, fZoom);
    const CFaceTexels texels(faces);
    const DrawRowFunction drawRow = getDrawRow(drawPixel);

    // Strips from top to bottom: where the view is turned, a row crosses the face's rows, and a strip's texels stay in the cache.
    constexpr uint32_t k_uiStripSize = 256;
    uint32_t aui32Faces[k_uiStripSize];
    uint32_t aui32Texels[k_uiStripSize];
    for (uint32_t x = 0; x < target.uiWidth; x += k_uiStripSize)
        for (uint32_t y = 0; y < target.uiHeight; ++y)
        {
            const uint32_t uiCount = std::min(target.uiWidth - x, k_uiStripSize);
            pickCubeRow(basis, static_cast<int32_t>(x), static_cast<int32_t>(y), faces.uiWidth, faces.uiHeight, aui32Faces, aui32Texels,
                        uiCount);
            uint8_t* pui8Piece = target.pui8Pixels + 4 * (size_t{y} * target.uiWidth + x);
            for (size_t i = 0; i < uiCount; ++i)
                std::memcpy(pui8Piece + 4 * i, texels.getTexel(aui32Faces[i], aui32Texels[i]), 4);
            drawRow(drawPixel, pui8Piece, pui8Piece, uiCount);
            if (eOrder == EPixelOrder::eScreen)
                swapRowForScreen(pui8Piece, uiCount);
        }
}
