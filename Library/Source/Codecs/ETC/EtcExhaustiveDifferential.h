#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Searches all pairs of 5-bit colours that a differential block can hold, for both splits.
///
/// Starts from the levels of the halves' means. First colours are tried in the order red, green, blue (blue fastest), second
/// colours in the same order for each of them; of equal errors the first stays.
///
/// On purpose: a pair of top and bottom lowers the error that a later pair must beat, and the error that is returned, but its
/// colours are not kept. The block is that of the last pair of left and right that was the best so far, never flipped, and may so
/// be worse than the error that is returned.
///
/// @param uiBound  an error that is already reached. Colours that cannot come below it in any half are left out, so what is found
///                 at or above it need not be the least. Which ones are left out is part of the result (see the .cpp).
/// @return the least error met, above uiBound where nothing better turned up
///
/// Keeps no state. Takes up to 1.3 MiB from the heap for the search; refused, it throws std::bad_alloc.
[[nodiscard]] uint32_t searchDifferentialExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words);

/// The same over squared errors weighted 299, 587 and 114, which is 1000 times blockErrorPerceptual.
///
/// On purpose otherwise than in the plain form: a pair of top and bottom that is the best so far also flips the block, which yet
/// keeps the colours found for left and right (or for the halves' means).
[[nodiscard]] uint32_t searchDifferentialExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words);

} // namespace moxtexture
