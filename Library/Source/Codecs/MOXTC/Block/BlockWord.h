#pragma once

#include <cstddef>
#include <cstdint>

#include "Core/ByteOrder.h"

namespace moxtexture
{

constexpr size_t k_uiBlockBytes = 8;      ///< of every block, of both generations and rates
constexpr uint32_t k_uiBlockHeight = 4;   ///< pixels
constexpr uint32_t k_uiMaxBlockWidth = 8; ///< pixels

/// Pixels across a block.
[[nodiscard]] constexpr uint32_t getBlockWidth(bool b2bpp)
{
    return b2bpp ? 8 : 4;
}

/// The 64 bits of a block: modulation codes, then two colours with the flags among them.
struct BlockWord
{
    uint32_t ui32Modulation = 0;
    uint32_t ui32Colours = 0;
};

/// Flags of BlockWord::ui32Colours.
constexpr uint32_t k_ui32ModeFlag = 1;                    ///< 4bpp: punch-through codes; 2bpp: codes of every other pixel
constexpr uint32_t k_ui32OpaqueAFlag = uint32_t{1} << 15; ///< MOXTC1: colour A has no alpha
constexpr uint32_t k_ui32HardFlag = uint32_t{1} << 15;    ///< MOXTCII: the cell from this block's centre is not interpolated
constexpr uint32_t k_ui32OpaqueFlag = uint32_t{1} << 31;  ///< MOXTC1: colour B has no alpha; MOXTCII: neither colour has

/// Flags of BlockWord::ui32Modulation at 2bpp with the mode flag; they take the places of low bits of codes.
constexpr uint32_t k_ui32OneAxisFlag = 1;                  ///< pixels between are rebuilt along one axis, not both
constexpr uint32_t k_ui32VerticalFlag = uint32_t{1} << 20; ///< with k_ui32OneAxisFlag: along the vertical one

/// @param pBlock  k_uiBlockBytes bytes, two little-endian numbers, modulation first; no alignment needed
[[nodiscard]] inline BlockWord loadBlock(const uint8_t* pBlock)
{
    return {loadLE<uint32_t>(pBlock), loadLE<uint32_t>(pBlock + 4)};
}

inline void storeBlock(uint8_t* pBlock, const BlockWord& block)
{
    storeLE(pBlock, block.ui32Modulation);
    storeLE(pBlock + 4, block.ui32Colours);
}

} // namespace moxtexture
