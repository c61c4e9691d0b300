#pragma once

#include <cstdint>

#include "Display/PixelImage.h"
#include "Display/ViewModes.h"

/// What of a view decides which texel is under the mouse.
struct MousePickView
{
    ETextureViewModes eMode = eViewSingle;
    float fZoom = 1.0f;
    ViewOffset offset;
    uint32_t uiFace = 0;         ///< the face that is shown, where it is one
    uint32_t uiPictureWidth = 0; ///< the target that was drawn, in pixels
    uint32_t uiPictureHeight = 0;
    uint32_t uiSurfaceWidth = 0; ///< the MIP level that is shown, in texels
    uint32_t uiSurfaceHeight = 0;
};

struct MousePick
{
    bool bInside = false;
    int32_t i32PixelX = 0;
    int32_t i32PixelY = 0;
    uint32_t uiCubeFace = 0;
};

/// The texel under a place on the picture, exactly the one that is drawn there; in single mode at zooms below 1 also the one that
/// would be, where the rest of the surface is too small for a screen pixel.
///
/// @param x, y  from the picture's left upper corner in screen pixels (the label's frame taken off)
/// @param previous  the view's last pick: what is not found anew stays
/// @return bInside false off the picture or its surface; beyond the surface the pixel is where it would be, were there more
///
/// On purpose: a tiled view tells no face, so the last one stays.
[[nodiscard]] MousePick pickMousePixel(const MousePickView& view, int32_t x, int32_t y, const MousePick& previous = {});
