#pragma once

#include <cstddef>
#include <cstdint>

#include "Formats/PixelFormats.h"

namespace moxtexture
{

/// Encodes one surface of 32-bit RGBA pixels as YUV, two pixels in four bytes: ePF_UYVY holds U Y0 V Y1, ePF_YUY2 holds Y0 U Y1 V.
///
/// U is the first pixel's and V the second's, on purpose: nothing is averaged. Alpha is dropped.
///
/// @param pSource   uiHeight rows of uiWidth pixels, red in the lowest byte, without padding; no alignment needed
/// @param pTarget   uiHeight rows of 4 * ceil(uiWidth / 2) bytes; of an odd width the last pair of each row is not written
/// @return width times height times 2, modulo 2^32, also where an odd width leaves out a column; 0, with nothing done, for any
///         other format and for a null pointer
///
/// Keeps no state; any thread may call it.
[[nodiscard]] uint32_t encodePackedYUV(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                       EMOXTPixelFormat eFormat);

/// Decodes what encodePackedYUV writes; alpha is 255.
///
/// @param pSource   uiHeight rows of 4 * ceil(uiWidth / 2) bytes
/// @param pTarget   uiHeight rows of uiWidth pixels; the last pixel of each row of an odd width stays as it is
/// @return width times height times 4, modulo 2^32; 0, with nothing done, for any other format and for a null pointer
[[nodiscard]] uint32_t decodePackedYUV(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                       EMOXTPixelFormat eFormat);

/// The plain forms, which give the same bytes.
[[nodiscard]] uint32_t encodePackedYUVReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                                EMOXTPixelFormat eFormat);
[[nodiscard]] uint32_t decodePackedYUVReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                                EMOXTPixelFormat eFormat);

/// A run of uiPairCount pairs, 8 bytes a pair as pixels and 4 as YUV. The fast form gives the same bytes as the reference.
void encodeYUVPairsReference(const uint8_t* pPixels, uint8_t* pPairs, size_t uiPairCount, bool bLumaFirst);
void encodeYUVPairs(const uint8_t* pPixels, uint8_t* pPairs, size_t uiPairCount, bool bLumaFirst);
void decodeYUVPairsReference(const uint8_t* pPairs, uint8_t* pPixels, size_t uiPairCount, bool bLumaFirst);
void decodeYUVPairs(const uint8_t* pPairs, uint8_t* pPixels, size_t uiPairCount, bool bLumaFirst);

} // namespace moxtexture
