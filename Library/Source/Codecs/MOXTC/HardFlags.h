#pragma once

#include <cstdint>

namespace moxtexture
{

/// A colour edge must be farther than this for a hard block, in squared distance over four channels of 8 bits.
constexpr int32_t k_iHardFlagLeastDistance = 4095;

/// Finds the MOXTCII blocks next to a colour edge that no ramp can follow: there the decoder shall not interpolate colours.
///
/// With R the right and D the lower neighbour (both wrap) and distances squared over all four channels, a block is hard if
/// max(min(|A - R.A|, |B - R.B|), min(|A - D.A|, |B - D.B|)) > max(|A - B| / 4, 4095).
///
/// @param pui8ColourA, pui8ColourB  one colour a block, four bytes of any order, rows of uiBlocksX without padding
/// @param uiBlocksX, uiBlocksY      size of the grid in blocks; nothing is done for 0
/// @param pui8Flags                 one byte a block in the same order: 1 hard, 0 not
void findHardFlags(const uint8_t* pui8ColourA, const uint8_t* pui8ColourB, uint32_t uiBlocksX, uint32_t uiBlocksY, uint8_t* pui8Flags);

} // namespace moxtexture
