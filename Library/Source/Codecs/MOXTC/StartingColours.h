#pragma once

#include <cstdint>

#include "Codecs/MOXTC/CompressorImages.h"

namespace moxtexture
{

/// Sets colourA and colourB of every block to the two pixels farthest from each other, of the first such pair in row order.
///
/// The darker one becomes A (orderByLuminance).
/// @param bOverlap  looks at a window of twice the block's size, centred on the block and wrapping at the picture's edges, instead of
///                  at the block alone
///
/// The fast form gives the same colours as the reference.
void findStartingColoursReference(CompressorImages& images, bool bOverlap);
void findStartingColours(CompressorImages& images, bool bOverlap);

/// Exchanges two pixels if the first is the brighter one. Brightness is (30 red + 59 green + 11 blue) / 100 without its fraction; where
/// that is equal, the pixel of the greater number (so first of all the greater alpha) counts as the brighter.
void orderByLuminance(uint32_t& uiColourA, uint32_t& uiColourB);

} // namespace moxtexture
