#pragma once

#include <array>
#include <cstdint>

#include "Codecs/BC/BcBlockRow.h"

namespace moxtexture
{

/// The alphas of a block in row order.
using BcAlphas = std::array<uint8_t, k_uiBcPixels>;

/// Encodes the alphas of a block by two end points and an index of three bits a pixel.
///
/// The end points are the greatest and the least alpha, so only the form of eight values is ever made; a flat block has all
/// indices 0.
///
/// @param pPart  8 bytes: alpha 0, alpha 1, 48 bits of indices with the first pixel in the lowest
void bcAlphaBlock(const BcAlphas& alphas, uint8_t* pPart);

/// Encodes the upper four bits of each alpha: 8 bytes, the first pixel in the lowest bits.
void bcExplicitAlphaBlock(const BcAlphas& alphas, uint8_t* pPart);

/// The alphas of an 8-byte part with two end points. Divisions drop their fraction.
[[nodiscard]] BcAlphas decodeBcAlphaBlock(const uint8_t* pPart);

/// The alphas of an 8-byte part with four bits a pixel, each times 17.
[[nodiscard]] BcAlphas decodeBcExplicitAlphaBlock(const uint8_t* pPart);

/// Writes the alpha part of every block of a row (row.pParts is that of the first block).
///
/// The fast form gives the same bytes as the reference. Nothing is kept from block to block; any thread may call them.
void bcAlphaRowReference(const BcRowToEncode& row, bool bExplicit);
void bcAlphaRow(const BcRowToEncode& row, bool bExplicit);

} // namespace moxtexture
