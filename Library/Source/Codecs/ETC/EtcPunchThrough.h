#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// What a search for a differential punch-through block found.
struct EtcDifferentialA1
{
    EtcBlockWords block;
    uint32_t uiError; ///< sum of the squared differences of the pixels with an alpha of 128 or more
};

/// Searches a differential block of the punch-through format. Pixels with an alpha below 128 hardly count in the means of the
/// halves and not at all in the error, and get the index that means transparent.
/// @param bTransparentMode  whether the opaque bit is clear, so that one index means transparent and another the base colour
[[nodiscard]] EtcDifferentialA1 differentialBlockA1(const EtcPixels& pixels, const EtcAlphas& alphas, bool bTransparentMode);

/// Encodes a punch-through block: differential, T and H with transparent pixels; if there are none (no alpha below 128), the
/// opaque modes too. A later one replaces what stands if its error is strictly less.
/// @param block  gets the words of the block, ready to be stored
void etcFastBlockETC2A1(const EtcPixels& pixels, const EtcAlphas& alphas, EtcBlockWords& block);

} // namespace moxtexture
