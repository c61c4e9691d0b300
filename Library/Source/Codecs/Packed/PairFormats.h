#pragma once

#include <cstdint>

#include "Formats/PixelFormats.h"

namespace moxtexture
{

/// Encodes one surface of 32-bit RGBA pixels in pairs that share red and blue, the first pixel's, and have a green each:
/// ePF_2_Planar_RGBG_8_8_8_8 holds R G0 B G1, ePF_2_Planar_GRGB_8_8_8_8 holds G0 R G1 B. Alpha is dropped.
///
/// @param pSource   uiHeight rows of uiWidth pixels, red in the lowest byte, without padding; no alignment needed
/// @param pTarget   uiHeight rows of 4 * ceil(uiWidth / 2) bytes; of an odd width the last pair of each row is not written
/// @return width times height times 2, modulo 2^32, also where an odd width leaves out a column; 0, with nothing done, for any
///         other format and for a null pointer
///
/// Keeps no state; any thread may call it.
[[nodiscard]] uint32_t encodePairFormat(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                        EMOXTPixelFormat eFormat);

/// Decodes what encodePairFormat writes; alpha is 255.
///
/// @param pSource   uiHeight rows of 4 * ceil(uiWidth / 2) bytes
/// @param pTarget   uiHeight rows of uiWidth pixels; the last pixel of each row of an odd width stays as it is
/// @return width times height times 4, modulo 2^32; 0, with nothing done, for any other format and for a null pointer
[[nodiscard]] uint32_t decodePairFormat(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                        EMOXTPixelFormat eFormat);

/// The plain forms, which give the same bytes.
[[nodiscard]] uint32_t encodePairFormatReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                                 EMOXTPixelFormat eFormat);
[[nodiscard]] uint32_t decodePairFormatReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                                 EMOXTPixelFormat eFormat);

} // namespace moxtexture
