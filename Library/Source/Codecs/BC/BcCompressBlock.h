#pragma once

#include <cstdint>

#include "Codecs/BC/BcBlockRow.h"

namespace moxtexture
{

/// The 2-bit indices of the block last encoded, the first pixel in the lowest bits; 0 before the first block of a surface.
///
/// On purpose: they are handed on from block to block. An index that the fit leaves out, because a clamped end point puts the
/// pixel too far beyond both, keeps what the block before has at that place.
struct BcIndexSlots
{
    uint32_t uiBits = 0;

    void setSlot(uint32_t uiPixel, uint32_t uiIndex) { uiBits = (uiBits & ~(3u << 2 * uiPixel)) | uiIndex << 2 * uiPixel; }
};

/// Encodes the colours of a block of sixteen pixels: as they are if there are one or two of them in 5:6:5, else by one fit of
/// the principal axis.
///
/// @param bOneBitAlpha  a pixel with alpha below 128 makes the block take the form of three colours, in which such pixels
///                      have the index of transparent black (BC1)
/// @param slots         in: those of the block before; out: those of this one
/// @return the 8 bytes of the block: colour 0, colour 1, indices, from the lowest bits up
///
/// Arithmetic is in 32-bit floats. Published: the S3TC extension's DXT1 colour block.
[[nodiscard]] uint64_t bcCompressBlock(const BcPixels& pixels, bool bOneBitAlpha, BcIndexSlots& slots);

/// Writes the colour part of every block of a row (row.pParts is that of the first block).
///
/// The fast form fits several blocks side by side, each in the reference's order of operations, and gives the same bytes.
/// Any thread may call them.
void bcColourRowReference(const BcRowToEncode& row, bool bOneBitAlpha, BcIndexSlots& slots);
void bcColourRow(const BcRowToEncode& row, bool bOneBitAlpha, BcIndexSlots& slots);

} // namespace moxtexture
