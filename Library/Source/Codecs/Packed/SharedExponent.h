#pragma once

#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// Encodes one surface of three 32-bit floats a pixel, red first, as 32-bit words: nine bits each of red, green and blue from the
/// lowest bit, then five bits of the exponent that they share.
///
/// @param pSource   uiWidth * uiHeight pixels of 12 bytes; values are clamped to 0 to 65408, NaN to 0; no alignment needed
/// @param pTarget   uiWidth * uiHeight little-endian words
/// @return bytes written: width times height times 4, modulo 2^32; 0, with nothing done, for a null pointer
///
/// Published: EXT_texture_shared_exponent. Keeps no state; any thread may call it.
[[nodiscard]] uint32_t encodeSharedExponent(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight);

/// Decodes what encodeSharedExponent writes; every word is a legal one.
///
/// @return bytes written: width times height times 12, modulo 2^32; 0, with nothing done, for a null pointer
[[nodiscard]] uint32_t decodeSharedExponent(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight);

/// The plain forms, which give the same bytes.
[[nodiscard]] uint32_t encodeSharedExponentReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight);
[[nodiscard]] uint32_t decodeSharedExponentReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight);

/// A run of uiCount pixels. The fast form gives the same bytes as the reference.
void encodeExponentPixelsReference(const uint8_t* pFloats, uint8_t* pWords, size_t uiCount);
void encodeExponentPixels(const uint8_t* pFloats, uint8_t* pWords, size_t uiCount);
void decodeExponentPixelsReference(const uint8_t* pWords, uint8_t* pFloats, size_t uiCount);
void decodeExponentPixels(const uint8_t* pWords, uint8_t* pFloats, size_t uiCount);

} // namespace moxtexture
