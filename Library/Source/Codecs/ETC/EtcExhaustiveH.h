#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Finds the best H block among all pairs of 4-bit colours and all distances.
///
/// Of pairs with equal errors the first in the order red 1, red 2, green 1, green 2, blue 1, blue 2 (last fastest) is kept, the
/// first colour's twelve bits strictly below the second's.
/// @param uiBound  only a pair whose error is strictly below it, and below that of hFast, is an improvement
/// @param compact  receives the compact H words (see packH) of the best pair, or those of hFast where no pair improves
/// @return the squared error of that block; above uiBound when nothing better turned up
///
/// Takes 290 KiB of the stack and no other memory. Keeps no state.
uint32_t searchHExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact);

/// The same over squared errors weighted 299, 587 and 114, which is 1000 times the perceptual error; starts from hFastPerceptual.
uint32_t searchHExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact);

} // namespace moxtexture
