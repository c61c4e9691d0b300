#pragma once

#include <cstdint>

namespace moxtexture
{

/// Encodes one surface of 32-bit RGBA pixels into blocks of the DXT family, by one fit a block without refinement.
///
/// @param pSource       uiHeight rows of uiWidth pixels, red in the lowest byte, without padding; no alignment needed
/// @param pDestination  blocks in row order, room for the padded size: the bytes that are returned
/// @param uiWidth, uiHeight  a size that is no multiple of 4 is padded: column c at or beyond the width repeats column
///                      c + width - padded width, rows likewise, and a side of 1 pixel repeats that pixel
/// @param uiType        1 BC1 (alpha below 128 is transparent), 2 DXT2, 3 BC2, 4 DXT4, 5 BC3; DXT2 and DXT4 are encoded as BC2
///                      and BC3, nothing is multiplied by alpha
/// @return bytes written: padded width times padded height, half of it for type 1; the product of the sizes as given (half of
///         it for type 1), with nothing done, if a pointer is null; 0, with nothing done, for a width or height of 0 and for any other
///         type. Modulo 2^32
///
/// Published: EXT_texture_compression_s3tc. Keeps no state; any thread may call it.
[[nodiscard]] uint32_t bcCompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiType);

/// The plain form, which gives the same bytes.
[[nodiscard]] uint32_t bcCompressImageReference(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight,
                                                uint32_t uiType);

} // namespace moxtexture
