#pragma once

#include <array>
#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcPunchThroughSearch.h"

namespace moxtexture
{

/// The base colours of both splits for a differential punch-through block, which are the same in both of its modes. Pixels with an
/// alpha below 128 hardly count in the means of the halves.
struct EtcDifferentialStartA1
{
    EtcDifferentialStartA1(const EtcPixels& pixels, const EtcAlphas& alphas);

    uint32_t ui32Transparent = 0;          ///< a bit x * 4 + y for each pixel with an alpha below 128
    std::array<EtcColourPair, 2> aaLevels; ///< 5-bit levels of left and right, top and bottom
    EtcSplitBases bases;                   ///< the same as bytes
};

/// What a search for a differential punch-through block found.
struct EtcDifferentialA1
{
    EtcBlockWords block;
    uint32_t uiError; ///< sum of the squared differences of the pixels with an alpha of 128 or more
};

/// Searches a differential block of the punch-through format. Pixels with an alpha below 128 do not count in the error and get the
/// index that means transparent.
/// @param bTransparentMode  whether the opaque bit is clear, so that one index means transparent and another the base colour
[[nodiscard]] EtcDifferentialA1 differentialBlockA1(const EtcPixels& pixels, const EtcDifferentialStartA1& start, bool bTransparentMode);

/// Encodes a punch-through block: differential, T and H with transparent pixels; if there are none (no alpha below 128), the
/// opaque modes too. A later one replaces what stands if its error is strictly less.
/// @param block  gets the words of the block, ready to be stored
void etcFastBlockETC2A1(const EtcPixels& pixels, const EtcAlphas& alphas, EtcBlockWords& block);

} // namespace moxtexture
