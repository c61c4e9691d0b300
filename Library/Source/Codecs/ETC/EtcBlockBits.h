#pragma once

#include <array>
#include <cstdint>

namespace moxtexture
{

/// The two words of a colour block, in host order; the bit numbers of the Khronos Data Format Specification (ETC1, ETC2) apply
/// to them. A stream stores each most significant byte first, the high word before the low one.
struct EtcBlockWords
{
    uint32_t ui32High = 0;
    uint32_t ui32Low = 0;
};

constexpr bool operator==(const EtcBlockWords& a, const EtcBlockWords& b)
{
    return a.ui32High == b.ui32High && a.ui32Low == b.ui32Low;
}

constexpr bool operator!=(const EtcBlockWords& a, const EtcBlockWords& b)
{
    return !(a == b);
}

/// Red, green, blue: either levels of 4 or 5 bits (6 and 7 in planar mode) or bytes, as the user says.
using EtcColour = std::array<uint8_t, 3>;

/// Two colours of a block, as bytes or as levels; the user says which.
using EtcColourPair = std::array<EtcColour, 2>;

/// The diff bit of the high word; in punch-through blocks the opaque bit.
constexpr uint32_t k_ui32EtcDiffBit = 2;
constexpr uint32_t k_ui32EtcFlipBit = 1;

[[nodiscard]] inline uint32_t loadEtcWord(const uint8_t* pui8)
{
    return static_cast<uint32_t>(pui8[0]) << 24 | static_cast<uint32_t>(pui8[1]) << 16 | static_cast<uint32_t>(pui8[2]) << 8 | pui8[3];
}

/// Reads the 8 bytes of a colour block of a stream; no alignment needed.
[[nodiscard]] inline EtcBlockWords loadEtcBlock(const uint8_t* pui8Block)
{
    return {loadEtcWord(pui8Block), loadEtcWord(pui8Block + 4)};
}

/// Writes the 8 bytes of a colour block into a stream; no alignment needed.
void storeEtcBlock(uint8_t* pui8Block, const EtcBlockWords& words);

/// A level of 4, 5, 6 or 7 bits as a byte: its bits, repeated from the top.
[[nodiscard]] constexpr uint32_t expandEtc4(uint32_t uiLevel)
{
    return uiLevel << 4 | uiLevel;
}

[[nodiscard]] constexpr uint32_t expandEtc5(uint32_t uiLevel)
{
    return uiLevel << 3 | uiLevel >> 2;
}

[[nodiscard]] constexpr uint32_t expandEtc6(uint32_t uiLevel)
{
    return uiLevel << 2 | uiLevel >> 4;
}

[[nodiscard]] constexpr uint32_t expandEtc7(uint32_t uiLevel)
{
    return uiLevel << 1 | uiLevel >> 6;
}

/// The bit of the planes of indices that belongs to pixel (x, y): its lsb at this bit of the low word, its msb 16 above.
[[nodiscard]] constexpr uint32_t etcIndexBit(uint32_t uiX, uint32_t uiY)
{
    return uiX * 4 + uiY;
}

/// The index (0 to 3) of pixel (x, y).
/// @param ui32Indices  the low word: msb plane in the upper, lsb plane in the lower 16 bits
[[nodiscard]] constexpr uint32_t getEtcIndex(uint32_t ui32Indices, uint32_t uiX, uint32_t uiY)
{
    const uint32_t uiBit = etcIndexBit(uiX, uiY);
    return (ui32Indices >> (uiBit + 16) & 1) << 1 | (ui32Indices >> uiBit & 1);
}

/// Packs a block of individual mode.
///
/// @param levels0, levels1  4-bit levels of the first half (left, or top if bFlip) and the second
/// @param uiTable0, uiTable1  modifier tables of the halves, 0 to 7
/// @param ui32Indices  the low word as it stands: msb plane in the upper, lsb plane in the lower 16 bits, pixel (x, y) at bit
///                     x * 4 + y of each
[[nodiscard]] EtcBlockWords packIndividual(const EtcColour& levels0, const EtcColour& levels1, bool bFlip, uint32_t uiTable0,
                                           uint32_t uiTable1, uint32_t ui32Indices);

/// The same for differential mode.
/// @param levels0, levels1  5-bit levels; the second's less the first's must lie in -4 to 3
[[nodiscard]] EtcBlockWords packDifferential(const EtcColour& levels0, const EtcColour& levels1, bool bFlip, uint32_t uiTable0,
                                             uint32_t uiTable1, uint32_t ui32Indices);

/// The deltas of a differential block as read: 5-bit bases and the sums with the 3-bit signed deltas, each sum as an 8-bit value,
/// so that one that is no level (above 31, or negative) is above 31.
struct EtcDifferentialLevels
{
    EtcColour bases;
    EtcColour sums;
};

[[nodiscard]] EtcDifferentialLevels readEtcDifferentialLevels(uint32_t ui32High);

/// T, H and planar blocks in compact form, without the bits that must make a sum overflow. The searches pack and measure these.
///
/// T       high word: R0, G0, B0, R1, G1, B1 of 4 bits each, then the 3 bits of the distance index, in bits 26 to 0
/// H       high word: R0, G0, B0, R1, G1, B1 of 4 bits each, then the upper 2 bits of the distance index, in bits 25 to 0
/// both    low word: the indices as in every other block
/// planar  R O, G O, B O, R H, G H, B H, R V, G V, B V of 6, 7, 6, 6, 7, 6, 6, 7, 6 bits from the high word's most significant bit
///         on: the high word ends with G H, the low word has B H in its bits 31 to 26 and zeros in its lowest 7
///
/// @param bOpaqueBit  bit 1 of the result: clear in punch-through blocks that may have transparent pixels
[[nodiscard]] EtcBlockWords stuffT(const EtcBlockWords& compact, bool bOpaqueBit = true);
[[nodiscard]] EtcBlockWords stuffH(const EtcBlockWords& compact, bool bOpaqueBit = true);
[[nodiscard]] EtcBlockWords stuffPlanar(const EtcBlockWords& compact, bool bOpaqueBit = true);

/// A field moved within a word: uiCount bits (31 at most), from bit uiFrom up to bit uiTo up.
[[nodiscard]] constexpr uint32_t moveEtcBits(uint32_t ui32Word, uint32_t uiCount, uint32_t uiFrom, uint32_t uiTo)
{
    return (ui32Word >> uiFrom & ((1u << uiCount) - 1)) << uiTo;
}

/// The compact form of a block that is known to be of the mode.
[[nodiscard]] constexpr EtcBlockWords compactT(const EtcBlockWords& words)
{
    const uint32_t ui32High = words.ui32High;
    return {moveEtcBits(ui32High, 2, 27, 25) | moveEtcBits(ui32High, 24, 2, 1) | moveEtcBits(ui32High, 1, 0, 0), words.ui32Low};
}

[[nodiscard]] constexpr EtcBlockWords compactH(const EtcBlockWords& words)
{
    const uint32_t ui32High = words.ui32High;
    return {moveEtcBits(ui32High, 7, 24, 19) | moveEtcBits(ui32High, 2, 19, 17) | moveEtcBits(ui32High, 16, 2, 1) |
                moveEtcBits(ui32High, 1, 0, 0),
            words.ui32Low};
}

[[nodiscard]] constexpr EtcBlockWords compactPlanar(const EtcBlockWords& words)
{
    const uint32_t ui32High = words.ui32High;
    const uint32_t ui32Compact = moveEtcBits(ui32High, 7, 24, 25) | moveEtcBits(ui32High, 7, 16, 18) | moveEtcBits(ui32High, 2, 11, 16) |
                                 moveEtcBits(ui32High, 8, 2, 8) | moveEtcBits(ui32High, 1, 0, 7) | words.ui32Low >> 25;
    return {ui32Compact, words.ui32Low << 7};
}

} // namespace moxtexture
