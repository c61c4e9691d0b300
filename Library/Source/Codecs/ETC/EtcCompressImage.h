#pragma once

#include <cstdint>

namespace moxtexture
{

/// Encodes one surface into ETC1, ETC2 or EAC blocks, one after the other on the calling thread.
///
/// @param pSource       uiHeight rows of uiWidth pixels without padding: R, G, B bytes (ETC1, ETC2 RGB), R, G, B, A bytes (ETC2
///                      RGBA, ETC2 RGB A1), a 16-bit word (EAC R11) or two, red first (EAC RG11); no alignment needed
/// @param pDestination  blocks in row order, room for the bytes that are returned
/// @param uiWidth, uiHeight  a size that is no multiple of 4 is padded as getPaddingSource says
/// @param uiQuality     an EEtcQuality
/// @param uiFormat      an EMOXTPixelFormat
/// @param bSigned       the words are signed; for EAC only
/// @return bytes of the blocks: padded width times padded height, half of it for ETC1, ETC2 RGB, ETC2 RGB A1 and EAC R11. The
///         same, with nothing done, if a pointer is null or a size is 0, and this for any quality, flag and format (as for a
///         format of 16 bytes a block). Else 0, with nothing done, for a quality above 5, for a format that isn't one of these
///         and, at a quality below 4, for bSigned with a format that isn't EAC. 0 too where the bytes don't fit 32 bits
[[nodiscard]] uint32_t etcCompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight,
                                        uint32_t uiQuality, uint32_t uiFormat, bool bSigned);

} // namespace moxtexture
