#pragma once

#include "Formats/ChannelTypes.h"
#include "Operations/ResamplePositions.h"

namespace moxtexture
{

/// Resamples one surface in one step.
///
/// Nearest copies pixels whole. Linear reads the eight pixels around a position (sampleLinear), cubic 64 (sampleCubic); where no
/// axis grows, cubic reads the source smoothed (SmoothSurface.h). CResampleAxis tells the positions.
/// T is uint8_t, uint16_t, uint32_t or float, four of them a pixel; rows and slices follow each other without gaps.
///
/// @param pSource       pixels of the source size
/// @param pDestination  gets pixels of the destination size; does not overlap the source
/// @return false for a null pointer, a size of 0, an unknown filter, or memory refused
template <typename T>
[[nodiscard]] bool resampleSurface(const T* pSource, T* pDestination, const SurfaceSize& source, const SurfaceSize& destination,
                                   EResizeMode eMode);

/// The same in plain loops over the samplers: what resampleSurface() has to equal, bit for bit.
template <typename T>
[[nodiscard]] bool resampleSurfaceReference(const T* pSource, T* pDestination, const SurfaceSize& source, const SurfaceSize& destination,
                                            EResizeMode eMode);

/// Resizes one surface by stages, in each of which an axis at most doubles or halves: 1000 to 100 goes through 500, 250 and 125.
///
/// Parameters as resampleSurface().
/// @return also false where a surface between the first and the last would take 4 GiB or more, which no texture can
template <typename T>
[[nodiscard]] bool resizeSurface(const T* pSource, T* pDestination, const SurfaceSize& source, const SurfaceSize& destination,
                                 EResizeMode eMode);

} // namespace moxtexture
