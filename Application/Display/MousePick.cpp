#include "Display/MousePick.h"

#include <algorithm>
#include <limits>

#include "Display/CubeBasis.h"
#include "Display/DrawSurface.h"
#include "Display/ScaledPlace.h"

namespace
{

int32_t toPixel(int64_t i64Texel)
{
    return static_cast<int32_t>(std::min(i64Texel, int64_t{std::numeric_limits<int32_t>::max()}));
}

void pickSingle(const MousePickView& view, int32_t x, int32_t y, MousePick& pick)
{
    const ViewOffset offset =
        clampSingleOffset(view.uiSurfaceWidth, view.uiSurfaceHeight, view.uiPictureWidth, view.uiPictureHeight, view.offset, view.fZoom);
    const float fInverseZoom = 1.0f / view.fZoom;
    pick.i32PixelX = toPixel(getTexel(int64_t{offset.x} + x, fInverseZoom));
    pick.i32PixelY = toPixel(getTexel(int64_t{offset.y} + y, fInverseZoom));
    pick.uiCubeFace = view.uiFace;
    pick.bInside = pick.i32PixelX < int64_t{view.uiSurfaceWidth} && pick.i32PixelY < int64_t{view.uiSurfaceHeight};
}

void pickTiled(const MousePickView& view, int32_t x, int32_t y, MousePick& pick)
{
    const float fInverseZoom = 1.0f / view.fZoom;
    pick.i32PixelX = toPixel(getTexelTiled(int64_t{view.offset.x} + x, fInverseZoom, view.uiSurfaceWidth));
    pick.i32PixelY = toPixel(getTexelTiled(int64_t{view.offset.y} + y, fInverseZoom, view.uiSurfaceHeight));
    pick.uiCubeFace = view.uiFace;
}

void pickCube(const MousePickView& view, int32_t x, int32_t y, MousePick& pick)
{
    const ViewOffset offset = {view.offset.x, std::clamp(view.offset.y, -k_i32MaximumCubePitch, k_i32MaximumCubePitch)};
    const CubeBasis basis = makeCubeBasis(view.uiPictureWidth, view.uiPictureHeight, offset, view.fZoom);
    const CubeTexel texel = pickCubeTexel(basis, x, y, view.uiSurfaceWidth, view.uiSurfaceHeight);
    pick.i32PixelX = toPixel(texel.uiX);
    pick.i32PixelY = toPixel(texel.uiY);
    pick.uiCubeFace = texel.uiFace;
}

} // namespace

MousePick pickMousePixel(const MousePickView& view, int32_t x, int32_t y, const MousePick& previous)
{
    MousePick pick = previous;
    pick.bInside = x >= 0 && y >= 0 && x <= int64_t{view.uiPictureWidth} && y <= int64_t{view.uiPictureHeight};
    if (!pick.bInside)
        return pick;
    if (view.uiSurfaceWidth == 0 || view.uiSurfaceHeight == 0 || view.uiPictureWidth == 0 || view.uiPictureHeight == 0)
    {
        pick.bInside = false;
        return pick;
    }
    if (view.eMode == eViewTiled)
        pickTiled(view, x, y, pick);
    else if (view.eMode == eViewCube)
        pickCube(view, x, y, pick);
    else
        pickSingle(view, x, y, pick);
    return pick;
}
