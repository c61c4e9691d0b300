#pragma once

#include <cstdint>

#include "Codecs/MOXTC/Block/BlockWord.h"

namespace moxtexture
{

/// Encodes 16 pixels as one MOXTCII 4bpp block, without a look at other blocks.
///
/// The block carries the mode flag (punch-through) if any pixel has alpha 0, and otherwise the hard flag. One or two colours are kept
/// as they are, for more the end points of the principal axis stand in.
///
/// @param pui8Pixels  4 rows of 4 pixels, four bytes each, red first
[[nodiscard]] BlockWord codeMOXTCIIBlock(const uint8_t* pui8Pixels);

/// Encodes a picture block by block in rows: the fastest way to MOXTCII 4bpp.
///
/// @param pui8Source         uiHeight rows of uiWidth pixels, four bytes each, red first, without padding
/// @param uiWidth, uiHeight  multiples of 4
/// @param pui8Target         8 bytes a block
void MOXTCIICodeBlocks(const uint8_t* pui8Source, uint32_t uiWidth, uint32_t uiHeight, uint8_t* pui8Target);

} // namespace moxtexture
