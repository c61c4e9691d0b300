#pragma once

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Encodes a block in ETC1's two modes quickly.
///
/// The base colours are the mean colours of the halves, quantised in two ways: each channel to its nearest level, and all three
/// together so that the hue stays (EtcQuantise.h). Both splits are tried with each, left and right first; a split whose bases lie
/// near enough becomes differential, any other individual. The least error wins, of equals the earlier.
///
/// Keeps no state, allocates nothing.
/// @return blockErrorRGB() of the block that was made
[[nodiscard]] double etcFastBlockETC1(const EtcPixels& pixels, EtcBlockWords& words);

/// The same by the perceptual measure.
/// @return blockErrorPerceptual() of the block that was made
[[nodiscard]] double etcFastBlockETC1Perceptual(const EtcPixels& pixels, EtcBlockWords& words);

} // namespace moxtexture
