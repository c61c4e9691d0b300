#pragma once

#include <array>
#include <cstdint>

namespace moxtexture
{

/// The sixteen alphas of a block in stored order: pixel (x, y) at x * 4 + y. The searches leave their sums in this order.
using EtcStoredAlphas = std::array<uint8_t, 16>;

/// What an alpha block says but for its indices: byte 0 and byte 1.
struct EtcAlphaChoice
{
    int32_t iBase = 128;
    uint32_t uiRow = 0;
};

/// Where a search looks.
struct EtcAlphaScales
{
    int32_t aiSteps[3];    ///< from base to base, at each scale
    int32_t iFirstReach;   ///< bases to either side of the mean, at the first scale
    int32_t iLaterReach;   ///< steps to either side of the row's best base so far, at the later scales
    uint32_t uiFirstRow;   ///< of alphaModifierTable
    uint32_t uiRowsBehind; ///< up to this row, which is left out
};

/// Searches the rows in order until one fits exactly, at each the bases of the three scales.
///
/// A pixel up to the base takes the nearest of the four negative modifiers, one above the base the nearest of the others. The
/// first least sum of squares wins.
///
/// On purpose: the sum of a base stands as soon as it exceeds the best one, wherever in the block that is, and the row's best base,
/// round which the next scale looks, is found among such sums too.
///
/// @param iMean  the rounded mean of the alphas
[[nodiscard]] EtcAlphaChoice searchAlphaRows(const EtcStoredAlphas& alphas, int32_t iMean, const EtcAlphaScales& scales);

} // namespace moxtexture
