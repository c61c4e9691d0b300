#pragma once

#include <cstdint>
#include <string>

#include "Display/ViewModes.h"

/// A zoom is a position 0 to 10 of a slider; each step doubles the factor, from 0.125 to 128.
inline constexpr int32_t k_i32ZoomPositionCount = 11;
/// Where the factor is 1: where a view starts, and the least that a cube view takes.
inline constexpr int32_t k_i32DefaultZoomPosition = 3;

/// Screen pixels a texel. Positions outside 0 to 10 count as the nearest of them.
[[nodiscard]] float getZoomFactor(int32_t i32Position);

/// The position that a view takes when it is asked for another: 0 to 10, and in a cube view not below 3.
[[nodiscard]] int32_t clampZoomPosition(int32_t i32Position, ETextureViewModes eMode);

/// "0.125 : 1", "0.5 : 1", "16 : 1".
[[nodiscard]] std::string getZoomText(float fZoom);
/// In place of a zoom text where no view is active.
[[nodiscard]] std::string getNoZoomText();
