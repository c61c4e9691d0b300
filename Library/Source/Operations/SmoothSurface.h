#pragma once

#include <array>
#include <cstdint>

#include "Operations/ResamplePositions.h"

namespace moxtexture
{

/// Weights of a kernel with an odd number of pixels on every axis, x fastest, then y, then z.
template <int iSize, int iDepth>
struct SmoothingKernel
{
    static_assert(iSize % 2 == 1 && iDepth % 2 == 1, "a kernel needs a middle");
    static constexpr int kSize = iSize;
    static constexpr int kDepth = iDepth;
    static constexpr size_t kRows = size_t{iSize} * iDepth;

    std::array<float, kRows * iSize> afWeights;
    float fScale; ///< 1 / sum of the weights
};

inline constexpr SmoothingKernel<3, 1> k_SmoothingKernel2D = {{1, 2, 1, 2, 4, 2, 1, 2, 1}, 1.0f / 16.0f};
inline constexpr SmoothingKernel<3, 3> k_SmoothingKernel3D = {
    {1, 2, 1, 2, 4, 2, 1, 2, 1, 2, 4, 2, 4, 8, 4, 2, 4, 2, 1, 2, 1, 2, 4, 2, 1, 2, 1}, 1.0f / 64.0f};

/// Rows of a surface, in all of its slices, smoothed with the 3 by 3 kernel, or with the 3 by 3 by 3 kernel if it has more than one
/// slice.
///
/// Pixels past an edge of the surface are those of the edge. Values times weights are summed as floats from the first weight to
/// the last; the sum is scaled and cut to the element, for floats kept as it is. A NaN stays one, with any bits.
///
/// @param pSource       the whole surface, four elements a pixel
/// @param uiFirstRow    the first of uiRowCount rows, all within the surface
/// @param pDestination  gets uiRowCount rows of each slice; does not overlap the source
/// @return false where memory for the work is refused
template <typename T>
[[nodiscard]] bool smoothRows(const T* pSource, const SurfaceSize& size, uint32_t uiFirstRow, uint32_t uiRowCount, T* pDestination);

/// All rows in plain loops: what smoothRows() has to equal.
template <typename T>
void smoothSurfaceReference(const T* pSource, T* pDestination, const SurfaceSize& size);

} // namespace moxtexture
