#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcTwoColours.h"

namespace moxtexture
{

/// What the search for a block in T or H mode found: all that the block stores, and its error.
struct EtcModeFit
{
    EtcColourPair levels{};   ///< 4-bit levels, in the order in which they are stored
    uint32_t uiDistance = 0;  ///< 0 to 7, a row of k_aui8EtcDistances
    uint32_t ui32Indices = 0; ///< the paint of pixel (x, y) at bits (y * 4 + x) * 2 and above
    uint32_t uiError = 0;     ///< squared error, plain or weighted by 299, 587, 114 as the search says
};

/// Indices in the order of the pixels' rows as the stored form has them: the upper bits of all pixels in the upper 16 bits of the
/// word, the lower bits in the lower 16, pixel (x, y) at bit x * 4 + y of each.
uint32_t indexToBlockOrder(uint32_t ui32Indices);

} // namespace moxtexture
