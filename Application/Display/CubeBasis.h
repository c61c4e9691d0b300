#pragma once

#include <cstdint>

#include "Display/PixelImage.h"

/// A direction from the middle of the cube, not of length 1.
struct CubeDirection
{
    float fX = 0.0f;
    float fY = 0.0f;
    float fZ = 0.0f;
};

/// The directions of a cube view's pixels: of the left upper one, and what a step to the right or down adds.
struct CubeBasis
{
    CubeDirection origin;
    CubeDirection du; ///< its Y is 0
    CubeDirection dv;

    /// origin + x * du + y * dv, in that order, in float.
    [[nodiscard]] CubeDirection getDirection(int32_t x, int32_t y) const
    {
        const float fPixelX = static_cast<float>(x);
        const float fPixelY = static_cast<float>(y);
        return {origin.fX + fPixelX * du.fX + fPixelY * dv.fX, origin.fY + fPixelX * du.fY + fPixelY * dv.fY,
                origin.fZ + fPixelX * du.fZ + fPixelY * dv.fZ};
    }
};

/// Offsets beyond this, up or down, would turn the view past the poles.
inline constexpr int32_t k_i32MaximumCubePitch = 512;

/// The geometry of a cube view. All of it is float arithmetic, operations from left to right.
///
/// @param uiWidth, uiHeight  of the target in pixels, 1 or more
/// @param offset   steps of 1/512 of a quarter turn (of 0.5 * 3.1415925): x turns to the side, y up and down; y is taken as it is
/// @param fZoom    distance of the screen from the middle, where half the shorter side is 1
[[nodiscard]] CubeBasis makeCubeBasis(uint32_t uiWidth, uint32_t uiHeight, ViewOffset offset, float fZoom);

/// Where a direction meets the cube.
struct CubePick
{
    uint32_t uiFace = 0; ///< +X, -X, +Y, -Y, +Z, -Z
    float fU = 0.0f;     ///< -1 to 1 from left to right; NaN for the direction 0, 0, 0
    float fV = 0.0f;     ///< -1 to 1 from top to bottom
};
[[nodiscard]] CubePick pickCubeFace(const CubeDirection& direction);

/// A texel of a face.
struct CubeTexel
{
    uint32_t uiFace = 0;
    uint32_t uiX = 0;
    uint32_t uiY = 0;
};

/// The texel that a pixel of a cube view shows: the nearest, by truncate((u + 1) * width * 0.5).
///
/// @param uiFaceWidth, uiFaceHeight  of the six faces in texels, 1 or more
[[nodiscard]] CubeTexel pickCubeTexel(const CubeBasis& basis, int32_t x, int32_t y, uint32_t uiFaceWidth, uint32_t uiFaceHeight);
