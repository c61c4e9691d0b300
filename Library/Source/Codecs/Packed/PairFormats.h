#pragma once

#include <cstdint>

#include "Formats/PixelFormats.h"

namespace moxtexture
{

/// Encodes one surface of 32-bit RGBA pixels in pairs that share red and blue, the first pixel's, and have a green each:
/// ePF_2_Planar_RGBG_8_8_8_8 holds R G0 B G1, ePF_2_Planar_GRGB_8_8_8_8 holds G0 R G1 B. Alpha is dropped.
///
/// Sizes, odd widths, results and failures are those of encodePackedYUV.
[[nodiscard]] uint32_t encodePairFormat(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                        EMOXTPixelFormat eFormat);

/// Decodes what encodePairFormat writes, as decodePackedYUV does; alpha is 255.
[[nodiscard]] uint32_t decodePairFormat(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                        EMOXTPixelFormat eFormat);

/// The plain forms, which give the same bytes.
[[nodiscard]] uint32_t encodePairFormatReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                                 EMOXTPixelFormat eFormat);
[[nodiscard]] uint32_t decodePairFormatReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                                 EMOXTPixelFormat eFormat);

} // namespace moxtexture
