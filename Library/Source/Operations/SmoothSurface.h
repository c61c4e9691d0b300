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

    std::array<float, size_t{iSize} * iSize * iDepth> afWeights;
    float fScale; ///< 1 / sum of the weights
};

inline constexpr SmoothingKernel<3, 1> k_SmoothingKernel2D = {{1, 2, 1, 2, 4, 2, 1, 2, 1}, 1.0f / 16.0f};
inline constexpr SmoothingKernel<3, 3> k_SmoothingKernel3D = {
    {1, 2, 1, 2, 4, 2, 1, 2, 1, 2, 4, 2, 4, 8, 4, 2, 4, 2, 1, 2, 1, 2, 4, 2, 1, 2, 1}, 1.0f / 64.0f};

/// Smooths a surface with the 3 by 3 kernel, or with the 3 by 3 by 3 kernel if it has more than one slice.
///
/// Pixels past an edge are those of the edge. Values times weights are summed as floats from the first weight to the last; the
/// sum is scaled and cut to the element, for floats kept as it is. A NaN stays one, with any bits.
///
/// @param pSource, pDestination  of that size, four elements a pixel; they do not overlap
/// @return false where memory for the work is refused
template <typename T>
[[nodiscard]] bool smoothSurface(const T* pSource, T* pDestination, const SurfaceSize& size);

/// The same in plain loops: what smoothSurface() has to equal.
template <typename T>
void smoothSurfaceReference(const T* pSource, T* pDestination, const SurfaceSize& size);

} // namespace moxtexture
