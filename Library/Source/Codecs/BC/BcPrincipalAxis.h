#pragma once

#include <array>
#include <cstdint>

#include "Codecs/BC/BcColours.h"

namespace moxtexture
{

/// The iteration ends when a step moves the vector by less than this, or after this many steps.
constexpr float k_fBcAxisTolerance = 1e-5f;
constexpr uint32_t k_uiBcAxisSteps = 100;

/// The least float whose square root is not below the tolerance: a comparison of squares that decides alike.
constexpr float k_fBcSquaredAxisTolerance = 0x1.b7cdfap-34f;

/// The upper triangle of a symmetric matrix over red, green and blue: RR, RG, RB, GG, GB, BB.
using BcCovariance = std::array<float, 6>;

/// The direction in which colours spread most, by power iteration from (1, 1, 1).
///
/// Each step multiplies by the matrix and normalises (times 1 / length, not divided by it). Where that product is 0, the vector stays: a
/// matrix that has (1, 1, 1) in its null space gives (1, 1, 1), which is not of unit length.
[[nodiscard]] BcColour findBcPrincipalAxis(const BcCovariance& covariance);

} // namespace moxtexture
