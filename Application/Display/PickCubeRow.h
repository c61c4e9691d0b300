#pragma once

#include <cstddef>
#include <cstdint>

#include "Display/CubeBasis.h"

/// pickCubeTexel() for uiCount pixels of a row from x on.
///
/// @param uiFaceWidth, uiFaceHeight  of the six faces in texels, 1 or more, together at most 2^31 - 1 texels a face
/// @param pui32Faces   gets the face of each pixel
/// @param pui32Texels  gets the texel of each pixel, counted row by row from the face's first
void pickCubeRow(const CubeBasis& basis, int32_t x, int32_t y, uint32_t uiFaceWidth, uint32_t uiFaceHeight, uint32_t* pui32Faces,
                 uint32_t* pui32Texels, size_t uiCount);
void pickCubeRowReference(const CubeBasis& basis, int32_t x, int32_t y, uint32_t uiFaceWidth, uint32_t uiFaceHeight, uint32_t* pui32Faces,
                          uint32_t* pui32Texels, size_t uiCount);
