#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Operations/ResamplePositions.h"

namespace moxtexture
{

/// The inner loops of resampleSurface(), for the best instruction set at hand. Counts of pixels or floats may be 0.
///
/// T is the element, uiTaps 2 for the linear and 4 for the cubic filter. They compute as interpolateLinear() and interpolateCubic()
/// do, operation by operation, and allow any address and any value.
template <typename T, size_t uiTaps>
struct ResampleKernels
{
    /// Along x: pOut gets four floats for each of uiCount entries of pTaps, made of the pixels of pRow that they name.
    void (*resampleRow)(const T* pRow, const AxisTaps<uiTaps>* pTaps, size_t uiCount, float* pOut);

    /// Along y or z: between equal places of the rows, all at one fraction; uiCount floats.
    void (*blendRows)(const std::array<const float*, uiTaps>& pRows, float fFraction, size_t uiCount, float* pOut);

    /// The same, then clamped to the channel and cut to elements.
    void (*blendRowsToElements)(const std::array<const float*, uiTaps>& pRows, float fFraction, size_t uiCount, T* pOut);

    /// The linear filter at fractions of one half along x and y, where all its floats are exact and whole numbers do the same:
    /// pOut gets uiCount pixels, each a quarter of the sum of two neighbours in both rows, cut. Null for other kinds and filters.
    void (*halveRows)(const T* pRow0, const T* pRow1, size_t uiCount, T* pOut);
};

/// The inner loops of smoothRows().
template <typename T>
struct SmoothKernels
{
    /// uiCount elements as floats.
    void (*toFloats)(const T* pElements, size_t uiCount, float* pOut);

    /// One row: uiCount elements, from uiRowCount rows of uiCount + 8 floats that start a pixel to the left.
    /// @param pWeights  three for each row
    void (*smoothRow)(const float* const* pRows, const float* pWeights, size_t uiRowCount, float fScale, size_t uiCount, T* pOut);
};

template <typename T, size_t uiTaps>
[[nodiscard]] const ResampleKernels<T, uiTaps>& getResampleKernels();

template <typename T>
[[nodiscard]] const SmoothKernels<T>& getSmoothKernels();

} // namespace moxtexture
