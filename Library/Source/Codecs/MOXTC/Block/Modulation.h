#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Codecs/MOXTC/Block/CellColours.h"

namespace moxtexture
{

constexpr size_t k_uiMaxBlockPixels = size_t{k_uiMaxBlockWidth} * k_uiBlockHeight;

/// Weights of colour B in eighths, by code.
using WeightTable = std::array<uint8_t, 4>;

constexpr WeightTable k_aui8StandardWeights = {0, 3, 5, 8};
/// 4bpp with the mode flag; 14 stands for weight 4 with alpha 0.
constexpr WeightTable k_aui8PunchThroughWeightsMOXTC1 = {0, 4, 14, 8};
/// 4bpp with the mode flag; code 2 makes the whole pixel 0.
constexpr WeightTable k_aui8PunchThroughWeightsMOXTCII = {0, 4, 4, 8};

constexpr uint8_t k_ui8PunchThroughOffset = 10; ///< a weight above it is this much too high and clears the alpha
constexpr uint8_t k_ui8PunchThroughCode = 2;    ///< with the mode flag at 4bpp

/// How the codes of a block are to be read.
constexpr uint8_t k_ui8ModeDirect = 0;       ///< every pixel has its code, from the standard table
constexpr uint8_t k_ui8ModePunchThrough = 1; ///< 4bpp: every pixel has its code, from a punch-through table
constexpr uint8_t k_ui8ModeBothAxes = 1;     ///< 2bpp: every other pixel, the rest from four neighbours
constexpr uint8_t k_ui8ModeHorizontal = 2;   ///< 2bpp: the rest from the neighbours left and right
constexpr uint8_t k_ui8ModeVertical = 3;     ///< 2bpp: the rest from the neighbours above and below

/// Whether a 2bpp block of a mode other than direct has a code for this pixel.
[[nodiscard]] constexpr bool isStoredPosition(uint32_t x, uint32_t y)
{
    return ((x ^ y) & 1) == 0;
}

struct BlockModulation
{
    /// Codes 0 to 3 of pixel (x, y) at y * block width + x; 0 for a pixel that isn't stored. Direct 2bpp blocks have 0 and 3 only.
    std::array<uint8_t, k_uiMaxBlockPixels> aui8Codes = {};
    uint8_t ui8Mode = k_ui8ModeDirect;
};

[[nodiscard]] BlockModulation unpackModulation(const BlockWord& block, bool b2bpp);

/// @param pCodes  16 codes, 0 to 3, in rows of 4
[[nodiscard]] uint32_t packModulation4bpp(const uint8_t* pCodes);

/// 2bpp, direct: one bit a pixel.
///
/// @param pCodes  32 codes, 0 or 3, in rows of 8
[[nodiscard]] uint32_t packModulationDirect(const uint8_t* pCodes);

/// 2bpp, every other pixel. The flags of the mode take the low bit of pixel (0, 0)'s code and, in the modes of one axis, that of
/// pixel (4, 2)'s.
///
/// @param pCodes   32 codes, 0 to 3, in rows of 8; those at positions that aren't stored are not read
/// @param ui8Mode  k_ui8ModeBothAxes, k_ui8ModeHorizontal or k_ui8ModeVertical
[[nodiscard]] uint32_t packModulationInterpolated(const uint8_t* pCodes, uint8_t ui8Mode);

/// Codes and modes of the four blocks around a cell: P at (0, 0), Q a block to its right, R below, S below and to the right.
class CModulationMap
{
public:
    static constexpr uint32_t k_uiWidth = 2 * k_uiMaxBlockWidth;
    static constexpr uint32_t k_uiHeight = 2 * k_uiBlockHeight;

    CModulationMap() = default;
    CModulationMap(const CellBlocks& blocks, bool b2bpp);

    uint8_t getCode(uint32_t x, uint32_t y) const { return m_aui8Codes[y * k_uiWidth + x]; }
    uint8_t getMode(uint32_t x, uint32_t y) const { return m_aui8Modes[y * k_uiWidth + x]; }

    /// The standard table at a position that has a code.
    uint8_t getStandardWeight(uint32_t x, uint32_t y) const { return k_aui8StandardWeights[getCode(x, y)]; }

    /// The weight at a position of 2bpp blocks, from the neighbours where it has no code of its own.
    ///
    /// @param x, y  not on the rim of the map
    uint8_t getWeight2bpp(uint32_t x, uint32_t y) const;

private:
    std::array<uint8_t, size_t{k_uiWidth}* k_uiHeight> m_aui8Codes = {};
    std::array<uint8_t, size_t{k_uiWidth}* k_uiHeight> m_aui8Modes = {};
};

} // namespace moxtexture
