#pragma once

#include <array>

#include "Display/CMOXDrawPixel.h"
#include "Display/PixelImage.h"

/// The six faces of a cube, alike in size: +X, -X, +Y, -Y, +Z, -Z.
struct CubeFaces
{
    uint32_t uiWidth = 0;
    uint32_t uiHeight = 0;
    std::array<const uint8_t*, 6> apui8Pixels = {}; ///< null for a face that is missing
};

/// Draws the cube as seen from its middle (makeCubeBasis() has the geometry), nearest texel, through the functor.
///
/// A missing face, and each face of a cube without texels, gives pixels of four zeros to the functor.
/// The plain form goes a pixel at a time through draw() and is the truth; the other gives the same bytes.
void drawCubeReference(const CubeFaces& faces, const TargetImage& target, ViewOffset offset, float fZoom, const CMOXDrawPixel& drawPixel);
void drawCube(const CubeFaces& faces, const TargetImage& target, ViewOffset offset, float fZoom, const CMOXDrawPixel& drawPixel,
              EPixelOrder eOrder = EPixelOrder::eRGBA);
