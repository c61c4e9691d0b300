#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// Writes sixteen values in row order into a plane of one value a pixel, as a patch of 4 by 4 whose first is (uiX, uiY).
/// @param uiStride  values from one row of the plane to the next
template <typename T>
inline void writeEtcPlanePatch(const std::array<T, 16>& values, T* pPlane, uint32_t uiStride, uint32_t uiX, uint32_t uiY)
{
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
            pPlane[(uiY + y) * uiStride + uiX + x] = values[y * 4 + x];
}

} // namespace moxtexture
