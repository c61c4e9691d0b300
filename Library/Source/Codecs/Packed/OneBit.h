#pragma once

#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// Encodes one surface of 32-bit RGBA pixels with one bit a pixel, the first of eight in the lowest bit: set where
/// (red + green + blue) / 3, in integers, is at least 128.
///
/// @param pSource   uiHeight rows of uiWidth pixels, red in the lowest byte, without padding; no alignment needed
/// @param pTarget   uiHeight rows of ceil(uiWidth / 8) bytes; the last byte of each row is not written where the width has no
///                  eight pixels for it
/// @return width times height / 8, modulo 2^32, also where pixels are left out; 0, with nothing done, for a null pointer
///
/// Keeps no state; any thread may call it.
[[nodiscard]] uint32_t encodeOneBit(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight);

/// Decodes what encodeOneBit writes: white for a set bit and else black, alpha 255.
///
/// @param pSource   uiHeight rows of ceil(uiWidth / 8) bytes, so also of surfaces narrower than 8
/// @param pTarget   uiHeight rows of uiWidth pixels
/// @return bytes written: width times height times 4, modulo 2^32; 0, with nothing done, for a null pointer
[[nodiscard]] uint32_t decodeOneBit(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight);

/// The plain forms, which give the same bytes.
[[nodiscard]] uint32_t encodeOneBitReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight);
[[nodiscard]] uint32_t decodeOneBitReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight);

/// A run of 8 * uiByteCount pixels to uiByteCount bytes. The fast form gives the same bytes as the reference.
void encodeBitsReference(const uint8_t* pPixels, uint8_t* pBits, size_t uiByteCount);
void encodeBits(const uint8_t* pPixels, uint8_t* pBits, size_t uiByteCount);

} // namespace moxtexture
