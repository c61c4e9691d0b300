#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Finds the best T block among all pairs of 4-bit colours and all distances.
///
/// One colour gives three paints (itself, and a distance above and below it), the other gives one. Of pairs with equal errors the
/// first in the order red, green, blue is kept, where each stands for the channel of the colour of three paints and then that of
/// the colour of one paint (last fastest).
/// @param uiBound  only a pair whose error is strictly below it, and below that of tFast, is an improvement
/// @param compact  receives the compact T words (see packT) of the best pair, or those of tFast where no pair improves
/// @return the squared error of that block; above uiBound when nothing better turned up
///
/// Takes 290 KiB of the stack and no other memory. Keeps no state.
uint32_t searchTExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact);

/// The same over squared errors weighted 299, 587 and 114, which is 1000 times the perceptual error; starts from tFastPerceptual.
uint32_t searchTExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact);

} // namespace moxtexture
