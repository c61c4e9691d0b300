#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Core/ByteOrder.h"

namespace moxtexture
{

constexpr uint32_t k_uiBcSide = 4;    ///< pixels along a side of a block
constexpr uint32_t k_uiBcPixels = 16; ///< pixels of a block

constexpr size_t k_uiBcPartBytes = 8;                     ///< a colour part or an alpha part
constexpr size_t k_uiBcRowBytes = size_t{k_uiBcSide} * 4; ///< one row of a block in 32-bit RGBA

/// The kinds of block by the number that the entries take.
constexpr uint32_t k_uiBcType1 = 1; ///< BC1: a colour part alone
constexpr uint32_t k_uiBcType2 = 2; ///< DXT2: explicit alpha, then colours
constexpr uint32_t k_uiBcType3 = 3; ///< BC2: the same
constexpr uint32_t k_uiBcType4 = 4; ///< DXT4: interpolated alpha, then colours
constexpr uint32_t k_uiBcType5 = 5; ///< BC3: the same

[[nodiscard]] constexpr bool isBcType(uint32_t uiType)
{
    return uiType >= k_uiBcType1 && uiType <= k_uiBcType5;
}

[[nodiscard]] constexpr bool hasBcAlphaPart(uint32_t uiType)
{
    return uiType != k_uiBcType1;
}

[[nodiscard]] constexpr bool hasExplicitAlpha(uint32_t uiType)
{
    return uiType == k_uiBcType2 || uiType == k_uiBcType3;
}

[[nodiscard]] constexpr size_t getBcBlockBytes(uint32_t uiType)
{
    return hasBcAlphaPart(uiType) ? 2 * k_uiBcPartBytes : k_uiBcPartBytes;
}

/// A row of blocks, as pixels and encoded. The template's two pointers say which side is read and which is written.
///
/// pPixels points to the first of four rows of 32-bit RGBA pixels (red in the lowest byte), uiPitch bytes apart, each
/// 4 * uiBlockCount pixels long. pParts points to the 8 bytes of the first block that the called routine deals with, its
/// alpha part or its colour part; those of the next block follow uiBlockBytes further on. Nothing needs an alignment.
template <typename PixelByte, typename PartByte>
struct BcBlockRow
{
    PixelByte* pPixels;
    size_t uiPitch;
    PartByte* pParts;
    size_t uiBlockBytes;
    size_t uiBlockCount;

    /// The same row from block uiBlock on, uiCount blocks long.
    [[nodiscard]] BcBlockRow part(size_t uiBlock, size_t uiCount) const
    {
        return {pPixels + uiBlock * k_uiBcRowBytes, uiPitch, pParts + uiBlock * uiBlockBytes, uiBlockBytes, uiCount};
    }
};

using BcRowToEncode = BcBlockRow<const uint8_t, uint8_t>;
using BcRowToDecode = BcBlockRow<uint8_t, const uint8_t>;

/// The sixteen pixels of a block in row order, red in the lowest byte.
using BcPixels = std::array<uint32_t, k_uiBcPixels>;

[[nodiscard]] inline BcPixels loadBcPixels(const BcRowToEncode& row, size_t uiBlock)
{
    BcPixels pixels;
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
        pixels[i] = loadLE<uint32_t>(row.pPixels + i / k_uiBcSide * row.uiPitch + uiBlock * k_uiBcRowBytes + i % k_uiBcSide * size_t{4});
    return pixels;
}

} // namespace moxtexture
