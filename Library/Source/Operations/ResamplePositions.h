#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "Texture/SurfaceSize.h"

namespace moxtexture
{

/// True if any axis grows: all axes then take the positions of an enlargement.
[[nodiscard]] constexpr bool growsOnAnyAxis(const SurfaceSize& source, const SurfaceSize& destination)
{
    return destination.uiWidth > source.uiWidth || destination.uiHeight > source.uiHeight || destination.uiDepth > source.uiDepth;
}

/// Where the pixels of a destination axis lie on the source axis.
class CResampleAxis
{
public:
    /// @param uiSource, uiDestination  sizes of the axis, 1 or more
    /// @param bGrows                   growsOnAnyAxis() of the two surfaces
    CResampleAxis(uint32_t uiSource, uint32_t uiDestination, bool bGrows)
        : m_dRatio(static_cast<double>(uiSource) / static_cast<double>(uiDestination)),
          m_dShrink(uiSource > uiDestination ? 1.0 / m_dRatio : 0.0),
          m_uiSource(uiSource),
          m_uiDestination(uiDestination),
          m_bGrows(bGrows)
    {
    }

    /// The source pixel that destination pixel i copies.
    /// On purpose in doubles: with 30 pixels to 22, pixel 11 gives 14, as 11 times the ratio falls short of 15.
    [[nodiscard]] uint32_t getNearestIndex(uint32_t i) const
    {
        return std::min(static_cast<uint32_t>(static_cast<double>(i) * m_dRatio), m_uiSource - 1);
    }

    /// The place of destination pixel i on the source axis, in source pixels.
    [[nodiscard]] float getPosition(uint32_t i) const
    {
        return static_cast<float>(m_bGrows ? static_cast<double>(i) * m_dRatio : downscalePosition(i));
    }

private:
    /// 2 i + 0.5 for halving, the middle of the two source pixels.
    /// On purpose: an axis that keeps its size gets i + 1 - 2 i / (n - 1), from 1 for the first pixel to n - 2 for the last.
    [[nodiscard]] double downscalePosition(uint32_t i) const
    {
        if (m_uiDestination == 1)
            return 0.0;
        const double t = static_cast<double>(i) / (static_cast<double>(m_uiDestination) - 1.0);
        return (1.0 - t) * (1.0 - m_dShrink) + t * m_dShrink - 2.0 * t + (t + static_cast<double>(i)) * m_dRatio;
    }

    double m_dRatio;
    double m_dShrink; ///< destination / source, or 0 for an axis that does not shrink
    uint32_t m_uiSource;
    uint32_t m_uiDestination;
    bool m_bGrows;
};

/// The source pixels along one axis that make a destination pixel, and how far the last but half of them is reached.
template <size_t uiTaps>
struct AxisTaps
{
    std::array<uint32_t, uiTaps> auiIndex;
    float fFraction;
};

/// @param fPosition  on the source axis, in pixels
/// @param uiSize     of the source axis; indices are clamped to 0 and uiSize - 1
/// @param fFirst     the first tap, counted from the position; the others follow at whole steps
template <size_t uiTaps>
[[nodiscard]] inline AxisTaps<uiTaps> makeAxisTaps(float fPosition, uint32_t uiSize, float fFirst)
{
    const float fLast = static_cast<float>(uiSize - 1);
    AxisTaps<uiTaps> taps;
    for (size_t i = 0; i < uiTaps; ++i)
    {
        const float fTap = std::clamp(fPosition + (fFirst + static_cast<float>(i)), 0.0f, fLast);
        // Clamped once more as a number of its own: from 2^24 on a float may lie past the last pixel.
        taps.auiIndex[i] = static_cast<uint32_t>(std::min<uint64_t>(static_cast<uint64_t>(fTap), uiSize - 1));
    }
    taps.fFraction = fPosition - static_cast<float>(static_cast<int64_t>(fPosition));
    return taps;
}

} // namespace moxtexture
