#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Codecs/MOXTC/Block/BlockWord.h"

namespace moxtexture
{

constexpr size_t k_uiStripCells = 128;                 ///< most cells of a strip
constexpr size_t k_uiStripBlocks = k_uiStripCells + 1; ///< the blocks left and right of them
constexpr size_t k_uiStripGroup = 16;                  ///< most blocks that a vector holds
constexpr size_t k_uiStripPlaces = k_uiStripBlocks + k_uiStripGroup - k_uiStripBlocks % k_uiStripGroup;
constexpr size_t k_uiStripRowBytes = k_uiStripPlaces * k_uiMaxBlockWidth;

/// Set in a weight that punches through; the weight is in the bits below.
constexpr uint8_t k_ui8PunchThroughBit = 0x80;

/// Blocks side by side, each unpacked once; see unpackStrip. Two strips, one below the other, make a row of cells.
///
/// Arrays have room for whole vectors; what stands past the blocks of a strip is of no meaning.
struct BlockStrip
{
    /// What is unpacked.
    alignas(64) std::array<BlockWord, k_uiStripPlaces> aWords = {};

    /// By block: colour A, then colour B, each red, green, blue, alpha as in BlockColour, but alpha twice that: below 32, too.
    alignas(64) std::array<std::array<uint16_t, 8>, k_uiStripPlaces> aaui16Colours = {};

    /// MOXTCII: colour A and colour B of a block in 8 bits a channel, red in the lowest byte.
    alignas(64) std::array<std::array<uint32_t, 2>, k_uiStripPlaces> aaui32Expanded = {};

    /// MOXTCII: 1 for a hard block, else 0.
    alignas(64) std::array<uint32_t, k_uiStripPlaces> aui32Hard = {};

    /// By pixel, a row after the other: weights of colour B, 0 to 8, perhaps with k_ui8PunchThroughBit. At 2bpp 0 where none is stored.
    alignas(64) std::array<std::array<uint8_t, k_uiStripRowBytes>, k_uiBlockHeight> aaui8Weights = {};

    /// 2bpp: the mode of the block, for each of its 8 columns.
    alignas(64) std::array<uint8_t, k_uiStripRowBytes> aui8Modes = {};
};

} // namespace moxtexture
