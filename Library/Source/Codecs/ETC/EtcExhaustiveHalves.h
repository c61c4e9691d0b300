#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcMeasure.h"
#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcTables.h"

namespace moxtexture
{

/// The best that the search of individual mode knows of each half, by EEtcHalf.
struct EtcBestHalves
{
    std::array<EtcColour, 4> levels{}; ///< of 4 bits
    std::array<uint32_t, 4> auiErrors{};

    uint32_t columnsError() const { return auiErrors[eEtcLeft] + auiErrors[eEtcRight]; }
    uint32_t rowsError() const { return auiErrors[eEtcTop] + auiErrors[eEtcBottom]; }
};

/// What the search of differential mode has come to.
struct EtcBestPair
{
    EtcColour levels0{}; ///< of 5 bits
    EtcColour levels1{};
    bool bFlip = false;
    uint32_t uiError = 0; ///< the least met, which need not be that of these colours
};

/// Replaces what a half has by the first colour of least error, where it is less. In vectors, the same for every instruction set.
///
/// @param best     what the search starts from
/// @param uiBound  not above the error of the start's better split. A pair of red and green is left out while the bound, lowered
///                 to every better block that is found, is not above what the two channels alone cost in the cheapest half.
template <EEtcMeasure eMeasure>
void improveHalves(const EtcPixels& pixels, uint32_t uiBound, EtcBestHalves& best);

/// Goes through all pairs of colours and keeps what EtcExhaustiveDifferential.h says. In vectors, the same for every instruction
/// set. Memory refused throws std::bad_alloc.
///
/// @param best     what the search starts from; a pair has an effect only if it is below its error
/// @param uiBound  not above the start's error. Pairs of red and green whose two channels alone reach it in every half are left
///                 out, and first colours that reach it (lowered to every better pair that is met) both at left and on top.
template <EEtcMeasure eMeasure>
void improvePair(const EtcPixels& pixels, uint32_t uiBound, EtcBestPair& best);

/// How a mode keeps its two colours.
struct EtcHalfColours
{
    uint32_t (*expand)(uint32_t uiLevel); ///< a level to a byte
    EtcBlockWords (*pack)(const EtcColour& levels0, const EtcColour& levels1, bool bFlip, uint32_t uiTable0, uint32_t uiTable1,
                          uint32_t ui32Indices);
};

inline constexpr EtcHalfColours k_EtcIndividual = {expandEtc4, packIndividual};
inline constexpr EtcHalfColours k_EtcDifferential = {expandEtc5, packDifferential};

/// The block of two colours (levels), its tables and indices found by the pixels.
template <EEtcMeasure eMeasure>
EtcBlockWords packEtcHalves(const EtcPixels& pixels, const EtcHalfColours& mode, const EtcColour& levels0, const EtcColour& levels1,
                            bool bFlip)
{
    EtcColour bytes0{};
    EtcColour bytes1{};
    for (size_t uiChannel = 0; uiChannel < bytes0.size(); ++uiChannel)
    {
        bytes0[uiChannel] = static_cast<uint8_t>(mode.expand(levels0[uiChannel]));
        bytes1[uiChannel] = static_cast<uint8_t>(mode.expand(levels1[uiChannel]));
    }
    const EtcHalfFit<uint32_t> fit0 = EtcMeasure<eMeasure>::fitHalf(pixels, bFlip ? eEtcTop : eEtcLeft, bytes0);
    const EtcHalfFit<uint32_t> fit1 = EtcMeasure<eMeasure>::fitHalf(pixels, bFlip ? eEtcBottom : eEtcRight, bytes1);
    return mode.pack(levels0, levels1, bFlip, fit0.uiTable, fit1.uiTable, fit0.ui32Indices | fit1.ui32Indices);
}

/// A channel's bytes by table, modifier and level: the expanded level plus the modifier, clamped.
template <size_t k_uiLevels>
using EtcPaintBytes = std::array<std::array<std::array<uint8_t, k_uiLevels>, 4>, 8>;

/// @tparam k_uiLevels  16 or 32
template <size_t k_uiLevels>
constexpr EtcPaintBytes<k_uiLevels> makeEtcPaintBytes()
{
    static_assert(k_uiLevels == 16 || k_uiLevels == 32);
    EtcPaintBytes<k_uiLevels> bytes{};
    for (size_t uiTable = 0; uiTable < bytes.size(); ++uiTable)
        for (size_t uiModifier = 0; uiModifier < bytes[0].size(); ++uiModifier)
            for (uint32_t uiLevel = 0; uiLevel < k_uiLevels; ++uiLevel)
            {
                const uint32_t uiBase = k_uiLevels == 16 ? expandEtc4(uiLevel) : expandEtc5(uiLevel);
                const int32_t iByte = static_cast<int32_t>(uiBase) + k_aaiEtcModifiers[uiTable][uiModifier];
                bytes[uiTable][uiModifier][uiLevel] = static_cast<uint8_t>(iByte < 0 ? 0 : iByte > 255 ? 255 : iByte);
            }
    return bytes;
}

} // namespace moxtexture
