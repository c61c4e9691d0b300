#pragma once

#include <cstdint>
#include <vector>

#include "Codecs/MOXTC/CompressorImages.h"

namespace moxtexture
{

/// A step of colour must be longer than this for a hard block: squared distance over four channels of 8 bits.
constexpr int32_t k_iHardFlagLeastDistance = 4095;

/// Finds the MOXTCII blocks beside a colour edge that no ramp can follow: there the decoder shall not interpolate colours.
///
/// With R the right and D the lower neighbour (both wrap) and distances squared over all four channels, a block is hard if
/// max(min(|A - R.A|, |B - R.B|), min(|A - D.A|, |B - D.B|)) > max(|A - B| / 4, 4095).
///
/// @param images  its colourA and colourB; nothing else is looked at
/// @return one byte a block, in rows: 1 hard, 0 not
[[nodiscard]] std::vector<uint8_t> findHardFlags(const CompressorImages& images);

} // namespace moxtexture
