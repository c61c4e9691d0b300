#pragma once

#include "Codecs/MOXTC/Block/BlockStrip.h"

namespace moxtexture
{

/// Unpacks the first uiCount words of a strip, k_uiStripBlocks at most, into its other fields; those of one generation or rate are
/// left alone for the other.
///
/// The weight of pixel (2, 2) of a hard 4bpp block is that of the standard table: it is the one pixel of a hard cell with the mode
/// flag that shows no colour of the palette.
void unpackStrip(BlockStrip& strip, size_t uiCount, bool b2bpp, bool bII);

/// The same, plainly.
void unpackStripReference(BlockStrip& strip, size_t uiCount, bool b2bpp, bool bII);

} // namespace moxtexture
