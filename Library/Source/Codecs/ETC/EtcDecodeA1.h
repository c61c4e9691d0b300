#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Decodes a punch-through block: RGB with one bit of alpha. Bit 1 of the high word is its opaque bit.
/// @param alphas  every pixel of it is written: 0 (then red, green and blue are 0) or 255
[[nodiscard]] EtcPixels decodeEtcPixelsA1(const EtcBlockWords& words, EtcAlphas& alphas);

/// The same for a block that is known to be of differential mode; its opaque bit counts.
[[nodiscard]] EtcPixels decodeEtcPixelsA1Differential(const EtcBlockWords& words, EtcAlphas& alphas);

/// T and H mode with the opaque bit clear, from the compact forms of EtcBlockBits.h (which have no such bit).
[[nodiscard]] EtcPixels decodeEtcPixelsA1T(const EtcBlockWords& compact, EtcAlphas& alphas);
[[nodiscard]] EtcPixels decodeEtcPixelsA1H(const EtcBlockWords& compact, EtcAlphas& alphas);

/// Decodes a punch-through block as a patch of 4 by 4 pixels whose first is (uiX, uiY).
///
/// @param pui8Image  3 bytes a pixel, R, G, B
/// @param pui8Alpha  a plane of one byte a pixel
/// @param uiStride   pixels from one row to the next, in both
/// Published: Khronos Data Format Specification, chapter ETC2. Any 64 bits are a block. No state.
void etcDecodeBlockA1(const EtcBlockWords& words, uint8_t* pui8Image, uint8_t* pui8Alpha, uint32_t uiStride, uint32_t uiX, uint32_t uiY);

} // namespace moxtexture
