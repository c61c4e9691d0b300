#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "Codecs/ETC/EtcModePaints.h"

namespace moxtexture
{

// What T and H mode cost with two colours, for all eight distances at once; and the paints of the pixels for one choice of them.
// The vector code behind EtcTModes and EtcHModes.

/// Sums over a block of the squared error of each pixel's nearest paint, by distance index.
struct EtcModeErrors
{
    alignas(32) std::array<uint32_t, 8> aui32T;        ///< T mode, the first colour being paint 0
    alignas(32) std::array<uint32_t, 8> aui32TSwapped; ///< T mode, the second colour being paint 0
    alignas(32) std::array<uint32_t, 8> aui32H;        ///< H mode
};

/// The first distance of the least error.
struct EtcLeastError
{
    uint32_t uiDistance;
    uint32_t uiError;
};

[[nodiscard]] constexpr EtcLeastError firstLeast(const std::array<uint32_t, 8>& aui32Errors)
{
    // In one number, so that the first of equal errors is the least and nothing branches.
    uint64_t ui64Least = uint64_t{aui32Errors[0]} << 3;
    for (uint32_t uiDistance = 1; uiDistance < 8; ++uiDistance)
        ui64Least = std::min(ui64Least, uint64_t{aui32Errors[uiDistance]} << 3 | uiDistance);
    return {static_cast<uint32_t>(ui64Least & 7), static_cast<uint32_t>(ui64Least >> 3)};
}

/// @param levels     4-bit levels of the two colours
/// @param bWeighted  squares weighted by 299, 587 and 114
[[nodiscard]] EtcModeErrors measureModes(const EtcPixels& pixels, const EtcColourPair& levels, bool bWeighted);

/// The same for punch-through blocks. In T mode paint 2 is left out, and pixels of alpha 0 have no error. In H mode the paint that
/// will be stored as index 2 is left out, and pixels of another alpha than 0 have no error.
[[nodiscard]] EtcModeErrors measureModesA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& levels);

/// The pixels whose alpha isn't 0, bit y * 4 + x each.
[[nodiscard]] uint32_t pixelsWithAlpha(const EtcAlphas& alphas);

constexpr uint32_t k_uiNoEtcPaint = 4;

/// The first of the nearest paints of each pixel.
/// @param uiFixedPaint   the paint that pixels take by their alpha only, so that no other pixel takes it; or k_uiNoEtcPaint
/// @param ui32FixedPixels  bit y * 4 + x for each pixel that takes it
/// @return pixel (x, y) at bits (y * 4 + x) * 2 and above
[[nodiscard]] uint32_t choosePaints(const EtcPixels& pixels, const EtcModePaints& paints, bool bWeighted,
                                    uint32_t uiFixedPaint = k_uiNoEtcPaint, uint32_t ui32FixedPixels = 0);

} // namespace moxtexture
