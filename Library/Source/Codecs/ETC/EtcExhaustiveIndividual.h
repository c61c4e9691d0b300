#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Searches all 4-bit colours of both halves of both splits for the individual block of least squared error.
///
/// Starts from the levels of the halves' means. Of colours that serve a half equally well the first in the order red, green, blue
/// (blue fastest) is kept, and left and right stand unless top and bottom cost strictly less.
///
/// @param uiBound  an error that is already reached. Colours that cannot come below it in any half are left out, so what is found
///                 at or above it need not be the least. Which ones are left out is part of the result (see the .cpp).
/// @return the error of the block, above uiBound where nothing better turned up
///
/// Keeps no state. Memory: some 150 KiB of stack.
[[nodiscard]] uint32_t searchIndividualExhaustive(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words);

/// The same over squared errors weighted 299, 587 and 114, which is 1000 times blockErrorPerceptual.
[[nodiscard]] uint32_t searchIndividualExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words);

} // namespace moxtexture
