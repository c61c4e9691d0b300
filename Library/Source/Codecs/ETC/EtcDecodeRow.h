#pragma once

#include <cstddef>
#include <cstdint>

#include "Formats/PixelFormats.h"

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

/// Either of them.
/// @tparam Decoders  has the routine of each format as a static member decodeRow<format, signed>
template <class Decoders, bool kSigned>
[[nodiscard]] constexpr EtcRowDecoder chooseEtcRowDecoder(uint32_t uiFormat)
{
    switch (uiFormat)
    {
    case ePF_ETC1: // on purpose: what overflows is T, H or planar here too
    case ePF_ETC2_RGB:
        return Decoders::template decodeRow<ePF_ETC2_RGB, false>;
    case ePF_ETC2_RGBA:
        return Decoders::template decodeRow<ePF_ETC2_RGBA, false>;
    case ePF_ETC2_RGB_A1:
        return Decoders::template decodeRow<ePF_ETC2_RGB_A1, false>;
    case ePF_EAC_R11:
        return Decoders::template decodeRow<ePF_EAC_R11, kSigned>;
    case ePF_EAC_RG11:
        return Decoders::template decodeRow<ePF_EAC_RG11, kSigned>;
    default:
        return nullptr;
    }
}

template <class Decoders>
[[nodiscard]] constexpr EtcRowDecoder chooseEtcRowDecoder(uint32_t uiFormat, bool bSigned)
{
    return bSigned ? chooseEtcRowDecoder<Decoders, true>(uiFormat) : chooseEtcRowDecoder<Decoders, false>(uiFormat);
}

} // namespace moxtexture
