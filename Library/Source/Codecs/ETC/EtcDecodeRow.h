#pragma once

#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// A row of whole blocks to be decoded.
struct EtcRowToDecode
{
    const uint8_t* pBlocks; ///< without bytes between them; no alignment needed
    size_t uiBlockCount;    ///< 1 or more
    uint8_t* pPixels;       ///< the first of four rows of 4 * uiBlockCount pixels; no alignment needed
    size_t uiPitch;         ///< bytes from one row of pixels to the next, at least those of a row
};

/// Writes all pixels of the row, and nothing else.
using EtcRowDecoder = void (*)(const EtcRowToDecode& row);

/// The routine for a format of EtcFormats.h, in its fast and in its plain form, which give the same bytes; null for any other.
/// @param bSigned  counts for EAC only
[[nodiscard]] EtcRowDecoder findEtcRowDecoder(uint32_t uiFormat, bool bSigned);
[[nodiscard]] EtcRowDecoder findEtcRowDecoderReference(uint32_t uiFormat, bool bSigned);

} // namespace moxtexture
