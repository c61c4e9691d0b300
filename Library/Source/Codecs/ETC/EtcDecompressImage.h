#pragma once

#include <cstdint>

namespace moxtexture
{

/// Decodes one surface of ETC1, ETC2 or EAC blocks.
///
/// @param pSource       blocks in row order, ceil(width / 4) to a row; no alignment needed
/// @param pDestination  uiHeight rows of uiWidth pixels without padding: R, G, B bytes (ETC1, ETC2 RGB), R, G, B, A bytes (ETC2
///                      RGBA, ETC2 RGB A1), a 16-bit word (EAC R11) or two, red first (EAC RG11); no alignment needed
/// @param uiFormat      an EMOXTPixelFormat; ETC1 is read as ETC2 RGB, so an overflowing sum makes a block T, H or planar
/// @param bSigned       the words are signed; counts for EAC only
/// @return bytes of the decoded surface; the same, with nothing done, if a pointer is null; 0, with nothing done, for any other
///         format and for a surface whose bytes don't fit 32 bits
///
/// Every block is a legal one. Published: Khronos Data Format Specification, chapters ETC1, ETC2 and EAC.
/// Keeps no state; any thread may call it.
[[nodiscard]] uint32_t etcDecompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight,
                                          uint32_t uiFormat, bool bSigned);

/// The plain form, block by block, which gives the same bytes.
[[nodiscard]] uint32_t etcDecompressImageReference(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight,
                                                   uint32_t uiFormat, bool bSigned);

} // namespace moxtexture
