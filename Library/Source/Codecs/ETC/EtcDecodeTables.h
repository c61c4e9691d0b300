#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcTables.h"

namespace moxtexture
{

inline constexpr uint8_t k_uiNoByte = 0x80; ///< makes a shuffle give 0

/// How the colours of a block lie in the eight places of its palette.
enum EEtcPaletteKind
{
    eEtcPaletteHalves, ///< index 0 to 3 of the first half, then of the second
    eEtcPaletteT,      ///< in places 0 to 3 the first colour, then the second three times
    eEtcPaletteH,      ///< in places 0 to 3 the first colour twice, then the second twice
};

/// The tables of EtcTables.h and the places of bits in a block, as the vector code of EtcDecodeRowSimd loads them.
struct EtcDecodeTables
{
    /// From the two colours (blue, green, red from byte 0 and from byte 4 on) to words of the palette, by kind and channel.
    alignas(16) uint8_t aaauiSpread[3][3][16];
    /// Modifiers of a half by table and index as stored; the same for blocks that may be transparent.
    alignas(16) int16_t aaiHalf[8][4];
    alignas(16) int16_t aaiHalfA1[8][4];
    /// Modifiers of the palettes of T and H by distance index.
    alignas(16) int16_t aaiT[8][8];
    alignas(16) int16_t aaiH[8][8];
    /// The byte of the indices' low word that has each pixel's lsb and msb, and the bit within both.
    alignas(16) uint8_t auiLsbByte[16];
    alignas(16) uint8_t auiMsbByte[16];
    alignas(16) uint8_t auiBit[16];
    /// What the second half adds to a pixel's index, without and with flip.
    alignas(16) uint8_t aauiSecondHalf[2][16];
    /// Modifiers of alpha and 11-bit blocks at multiplier 1, by table and index.
    alignas(16) int16_t aaiAlpha[16][8];
    /// For each pixel the bytes of such a block that have its index, as a word whose first bits are left over, and the factor that
    /// moves the index to the top.
    alignas(16) uint8_t auiIndexBytes[32];
    alignas(16) uint16_t auiIndexFactor[16];
};

constexpr EtcDecodeTables makeEtcDecodeTables()
{
    EtcDecodeTables tables{};
    for (uint32_t uiChannel = 0; uiChannel < 3; ++uiChannel)
        for (uint32_t uiPlace = 0; uiPlace < 8; ++uiPlace)
        {
            const auto uiFirst = static_cast<uint8_t>(2 - uiChannel);
            const auto uiSecond = static_cast<uint8_t>(6 - uiChannel);
            tables.aaauiSpread[eEtcPaletteHalves][uiChannel][2 * uiPlace] = uiPlace < 4 ? uiFirst : uiSecond;
            tables.aaauiSpread[eEtcPaletteT][uiChannel][2 * uiPlace] = uiPlace < 1 ? uiFirst : uiSecond;
            tables.aaauiSpread[eEtcPaletteH][uiChannel][2 * uiPlace] = uiPlace < 2 ? uiFirst : uiSecond;
            for (uint32_t uiKind = 0; uiKind < 3; ++uiKind)
                tables.aaauiSpread[uiKind][uiChannel][2 * uiPlace + 1] = k_uiNoByte;
        }
    for (uint32_t uiTable = 0; uiTable < 8; ++uiTable)
    {
        const auto iDistance = static_cast<int16_t>(k_aui8EtcDistances[uiTable]);
        tables.aaiT[uiTable][1] = iDistance;
        tables.aaiT[uiTable][3] = static_cast<int16_t>(-iDistance);
        for (uint32_t uiIndex = 0; uiIndex < 4; ++uiIndex)
        {
            const auto iModifier = static_cast<int16_t>(k_aaiEtcModifiers[uiTable][k_aui8EtcPositionOfIndex[uiIndex]]);
            tables.aaiHalf[uiTable][uiIndex] = iModifier;
            tables.aaiHalfA1[uiTable][uiIndex] = uiIndex == 0 ? int16_t{0} : iModifier;
            tables.aaiH[uiTable][uiIndex] = uiIndex % 2 == 0 ? iDistance : static_cast<int16_t>(-iDistance);
        }
    }
    for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
        for (uint32_t uiIndex = 0; uiIndex < 8; ++uiIndex)
            tables.aaiAlpha[uiTable][uiIndex] = static_cast<int16_t>(getEtcAlphaModifier(uiTable, uiIndex));
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
        {
            const uint32_t uiPixel = y * 4 + x;
            const uint32_t uiBit = etcIndexBit(x, y);
            tables.auiLsbByte[uiPixel] = static_cast<uint8_t>(uiBit / 8);
            tables.auiMsbByte[uiPixel] = static_cast<uint8_t>(2 + uiBit / 8);
            tables.auiBit[uiPixel] = static_cast<uint8_t>(1u << uiBit % 8);
            tables.aauiSecondHalf[0][uiPixel] = x < 2 ? 0 : 4;
            tables.aauiSecondHalf[1][uiPixel] = y < 2 ? 0 : 4;
            const uint32_t uiFirstByte = 2 + 3 * uiBit / 8;
            tables.auiIndexBytes[2 * uiPixel] = uiFirstByte < 7 ? static_cast<uint8_t>(uiFirstByte + 1) : k_uiNoByte;
            tables.auiIndexBytes[2 * uiPixel + 1] = static_cast<uint8_t>(uiFirstByte);
            tables.auiIndexFactor[uiPixel] = static_cast<uint16_t>(1u << 3 * uiBit % 8);
        }
    return tables;
}

inline constexpr EtcDecodeTables k_etcDecodeTables = makeEtcDecodeTables();

} // namespace moxtexture
