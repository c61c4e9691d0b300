#pragma once

#include <cstdint>

#include "Codecs/BC/BcBlockRow.h"

namespace moxtexture
{

/// Decodes one surface of blocks of the DXT family into 32-bit RGBA pixels.
///
/// @param pSource       blocks in row order, ceil(width / 4) to a row, 8 bytes each for type 1 and else 16; no alignment needed
/// @param pDestination  uiHeight rows of uiWidth pixels, red in the lowest byte, without padding
/// @param uiType        1 BC1, 2 DXT2, 3 BC2, 4 DXT4, 5 BC3, as in bcCompressImage; nothing is divided by alpha
/// @return bytes written: width times height times 4, modulo 2^32; the same, with nothing done, if a pointer is null; 0, with
///         nothing done, for a width or height of 0 and for any other type
///
/// Every block is a legal one. Published: EXT_texture_compression_s3tc. On purpose otherwise: see makeBcPalette.
/// Keeps no state; any thread may call it.
[[nodiscard]] uint32_t bcDecompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight,
                                         uint32_t uiType);

/// The plain form, which gives the same bytes.
[[nodiscard]] uint32_t bcDecompressImageReference(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight,
                                                  uint32_t uiType);

/// Decodes the whole blocks of a row (row.pParts is the first block with its alpha part, if the type has one).
///
/// The fast form gives the same bytes as the reference.
void bcDecodeRowReference(const BcRowToDecode& row, uint32_t uiType);
void bcDecodeRow(const BcRowToDecode& row, uint32_t uiType);

} // namespace moxtexture
