#pragma once

#include <cstdint>

namespace moxtexture
{

/// Encodes one channel of an EAC R11 or RG11 block by a search over every base, table and multiplier; the first least wins.
///
/// The measure is the sum over the pixels of the squared distance to the nearest of the eight values.
/// On purpose: distances are taken on a circle of 65536 steps, for unsigned data too, so 65535 and 0 are one step apart.
///
/// @param aui16Pixels      row order, pixel (x, y) at y * 4 + x; signed data as their bit patterns
/// @param pui8Destination  8 bytes, no alignment needed: base, multiplier and table, 48 bits of indices (x outer, y inner)
///
/// Keeps no state; any thread may call it.
void eacCompressBlock(const uint16_t (&aui16Pixels)[16], uint8_t* pui8Destination, bool bSigned);

} // namespace moxtexture
