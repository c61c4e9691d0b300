#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// What the searches start their minima from: no block is worse.
constexpr uint32_t k_uiEtcMaxPlainError = 3121200;         ///< 16 * 3 * 255^2
constexpr uint32_t k_uiEtcMaxPerceptualError = 1040400000; ///< 1000 * 16 * 255^2
constexpr double k_fEtcMaxError = 1.0404e9;                ///< the same as a number with a fraction

/// The sum over the sixteen pixels of dR^2 + dG^2 + dB^2: a whole number, 0 to 3121200.
[[nodiscard]] double blockErrorRGB(const EtcPixels& pixels, const EtcPixels& decoded);

/// The sum, row by row, of each pixel's 0.299 dR^2 + 0.587 dG^2 + 0.114 dB^2 in doubles; the order of the sums is fixed.
[[nodiscard]] double blockErrorPerceptual(const EtcPixels& pixels, const EtcPixels& decoded);

/// As blockErrorRGB, over the pixels whose alpha is above 128 only.
[[nodiscard]] double blockErrorRGBA(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcPixels& decoded);

} // namespace moxtexture
