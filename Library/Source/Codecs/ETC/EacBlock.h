#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcTables.h"

namespace moxtexture
{

/// Alpha blocks and 11-bit blocks: byte 0 is the base, byte 1 the multiplier (upper four bits) and the table, bytes 2 to 7 are
/// sixteen indices of 3 bits, most significant bit first, column by column: (0, 0), (0, 1), (0, 2), (0, 3), (1, 0) and so on.
constexpr size_t k_uiEacBlockBytes = 8;

/// The sixteen indices of a block in stored order (pixel (x, y) at x * 4 + y).
[[nodiscard]] std::array<uint8_t, 16> readEacIndices(const uint8_t* pui8Block);

/// Writes bytes 2 to 7 of a block from such indices, each 0 to 7.
void writeEacIndices(uint8_t* pui8Block, const std::array<uint8_t, 16>& indices);

/// One value of an 11-bit block, extended to 16 bits.
///
/// @param uiBase  0 to 255: the stored byte; for signed data that byte, read as signed, with 128 added
/// @param uiTable, uiMultiplier  0 to 15; @param uiIndex  0 to 7
/// @return 0 to 65535; for signed data the bits of a signed number from -32767 to 32767
/// Published: Khronos Data Format Specification, chapter EAC.
[[nodiscard]] constexpr uint16_t eacValue(uint32_t uiBase, uint32_t uiTable, uint32_t uiMultiplier, uint32_t uiIndex, bool bSigned)
{
    const int32_t iScale = uiMultiplier != 0 ? static_cast<int32_t>(uiMultiplier) * 8 : 1;
    const int32_t iOffset = getEtcAlphaModifier(uiTable, uiIndex) * iScale;
    if (!bSigned)
    {
        const int32_t iSum = static_cast<int32_t>(uiBase) * 8 + 4 + iOffset;
        const int32_t iValue = iSum < 0 ? 0 : iSum > 2047 ? 2047 : iSum;
        return static_cast<uint16_t>(iValue * 32 + (iValue >> 6));
    }
    const int32_t iBase = uiBase == 0 ? -127 : static_cast<int32_t>(uiBase) - 128;
    const int32_t iSum = iBase * 8 + iOffset;
    const int32_t iMagnitude = iSum < 0 ? -iSum : iSum;
    const int32_t iLimited = iMagnitude > 1023 ? 1023 : iMagnitude;
    const int32_t iExtended = iLimited * 32 + (iLimited >> 5);
    return static_cast<uint16_t>(iSum < 0 ? -iExtended : iExtended);
}

/// The base that eacValue takes, from byte 0 of a block.
[[nodiscard]] constexpr uint32_t getEacBase(uint8_t ui8Stored, bool bSigned)
{
    return bSigned ? ui8Stored ^ 0x80u : ui8Stored;
}

/// The alphas of an 8-bit alpha block: base + modifier, clamped to 0 to 255.
[[nodiscard]] EtcAlphas decodeEtcAlphas(const uint8_t* pui8Block);

/// The sixteen values of an 11-bit block in row order: pixel (x, y) at y * 4 + x.
[[nodiscard]] std::array<uint16_t, 16> decodeEacValues(const uint8_t* pui8Block, bool bSigned);

/// Decode a block into a plane of one byte or one 16-bit word a pixel, as a patch of 4 by 4 pixels whose first is (uiX, uiY).
///
/// @param uiStride  pixels from one row of the plane to the next
/// Any 64 bits are a block. No state.
void etcDecodeAlphaBlock(const uint8_t* pui8Block, uint8_t* pui8Plane, uint32_t uiStride, uint32_t uiX, uint32_t uiY);
void eacDecodeBlock(const uint8_t* pui8Block, uint16_t* pui16Plane, uint32_t uiStride, uint32_t uiX, uint32_t uiY, bool bSigned);

} // namespace moxtexture
