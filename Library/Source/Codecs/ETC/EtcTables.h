#pragma once

#include <array>
#include <cstdint>

namespace moxtexture
{

/// Distances of T and H mode by distance index.
inline constexpr uint8_t k_aui8EtcDistances[8] = {3, 6, 11, 16, 23, 32, 41, 64};

/// What a pixel adds to its base colour, by table number and table position: growing from position 0 to 3.
inline constexpr int32_t k_aaiEtcModifiers[8][4] = {
    {-8, -2, 2, 8},     {-17, -5, 5, 17},   {-29, -9, 9, 29},     {-42, -13, 13, 42},
    {-60, -18, 18, 60}, {-80, -24, 24, 80}, {-106, -33, 33, 106}, {-183, -47, 47, 183},
};

/// From a pixel's index as stored (its bit of the msb plane times 2 plus its bit of the lsb plane) to the table position.
inline constexpr uint8_t k_aui8EtcPositionOfIndex[4] = {2, 3, 1, 0};

/// From a table position to the index that is stored.
inline constexpr uint8_t k_aui8EtcIndexOfPosition[4] = {3, 2, 0, 1};

/// The negative half of the modifiers of alpha and 11-bit blocks at multiplier 1, by table, the furthest first.
inline constexpr int32_t k_aaiEtcAlphaBases[16][4] = {
    {-15, -9, -6, -3}, {-13, -10, -7, -3}, {-13, -8, -5, -2}, {-13, -6, -4, -2}, {-12, -8, -6, -3}, {-11, -9, -7, -3},
    {-11, -8, -7, -4}, {-11, -8, -5, -3},  {-10, -8, -6, -2}, {-10, -8, -5, -2}, {-10, -8, -4, -2}, {-10, -7, -5, -2},
    {-10, -7, -4, -3}, {-10, -3, -2, -1},  {-9, -8, -6, -4},  {-9, -7, -5, -3},
};

/// The modifier of index uiIndex (0 to 7) of an alpha or 11-bit block's table at multiplier 1: four negative ones, then the four
/// positive ones, the nearest first in both.
constexpr int32_t getEtcAlphaModifier(uint32_t uiTable, uint32_t uiIndex)
{
    const int32_t iNegative = k_aaiEtcAlphaBases[uiTable][3 - uiIndex % 4];
    return uiIndex < 4 ? iNegative : -iNegative - 1;
}

constexpr std::array<std::array<int32_t, 8>, 256> makeAlphaModifierTable()
{
    std::array<std::array<int32_t, 8>, 256> table{};
    for (uint32_t uiRow = 0; uiRow < 256; ++uiRow)
        for (uint32_t uiIndex = 0; uiIndex < 8; ++uiIndex)
            table[uiRow][uiIndex] = static_cast<int32_t>(uiRow / 16) * getEtcAlphaModifier(uiRow % 16, uiIndex);
    return table;
}

/// The modifiers of an 8-bit alpha block by its byte 1 (multiplier times 16 + table) and index.
inline constexpr std::array<std::array<int32_t, 8>, 256> alphaModifierTable = makeAlphaModifierTable();

} // namespace moxtexture
