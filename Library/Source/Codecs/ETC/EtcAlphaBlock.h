#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Encodes the alphas of an ETC2 RGBA block: a base, a row of modifiers (multiplier and table) and an index of three bits a pixel.
///
/// Both search the base for one row after the other, coarsely round the mean first and then finer round the best so far, and keep
/// the first least sum of squares. The fast one tries some thirty rows that suit the greatest distance from the mean, the thorough
/// one all 256. A flat block is met exactly.
///
/// On purpose: a pass over the pixels that is left early still counts with the sum it had reached when the row has nothing better.
/// This steers the finer bases of the row, so it shows in the bytes.
///
/// @param pui8Destination  8 bytes, no alignment needed: base, row, 48 bits of indices (x outer, y inner, first bit on top)
///
/// Keeps no state; any thread may call them.
void alphaBlockFast(const EtcAlphas& alphas, uint8_t* pui8Destination);
void alphaBlockThorough(const EtcAlphas& alphas, uint8_t* pui8Destination);

} // namespace moxtexture
