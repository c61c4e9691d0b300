#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "Codecs/ETC/EacBlock.h"

namespace moxtexture
{

/// All values that 11-bit blocks can have, for the encoder.
///
/// With a multiplier of 1 or more, base and modifier count in the same steps of 8, so a value depends on base + multiplier * modifier
/// alone: 691 places stand for the 245760 values of 15 multipliers. With multiplier 0 the modifiers are finer and have a table
/// of their own.
struct EacValues
{
    static constexpr int32_t k_iLeastPlace = -225;
    static constexpr int32_t k_iGreatestPlace = 255 + 210;
    static constexpr size_t k_uiPlaces = k_iGreatestPlace - k_iLeastPlace + 1;
    static constexpr int32_t k_iLeastModifier = -15;
    static constexpr size_t k_uiModifiers = 30;

    /// By base + multiplier * modifier - k_iLeastPlace.
    std::array<uint16_t, k_uiPlaces> aui16Places{};
    /// Multiplier 0: by base and modifier - k_iLeastModifier. Modifiers that no table has are left at 0.
    std::array<std::array<uint16_t, k_uiModifiers>, 256> aaui16Fine{};
    bool bSigned = false;

    /// What eacValue gives for the same arguments (uiBase as it takes it).
    [[nodiscard]] constexpr uint16_t get(uint32_t uiBase, uint32_t uiTable, uint32_t uiMultiplier, uint32_t uiIndex) const
    {
        const int32_t iModifier = getEtcAlphaModifier(uiTable, uiIndex);
        // Signed data have no base -128: it stands for -127.
        const uint32_t uiUsed = bSigned && uiBase == 0 ? 1 : uiBase;
        if (uiMultiplier == 0)
            return aaui16Fine[uiUsed][static_cast<size_t>(iModifier - k_iLeastModifier)];
        const int32_t iPlace = static_cast<int32_t>(uiUsed) + static_cast<int32_t>(uiMultiplier) * iModifier;
        return aui16Places[static_cast<size_t>(iPlace - k_iLeastPlace)];
    }
};

constexpr EacValues makeEacValues(bool bSigned)
{
    // Table 13 has the modifiers -1, 0 and 1. Fifteen places beyond the bases at either end all values are clamped.
    constexpr uint32_t uiTable = 13;
    constexpr uint32_t uiMinusOne = 0;
    constexpr uint32_t uiNothing = 4;
    constexpr uint32_t uiPlusOne = 5;
    EacValues values;
    values.bSigned = bSigned;
    for (int32_t iPlace = EacValues::k_iLeastPlace; iPlace <= EacValues::k_iGreatestPlace; ++iPlace)
    {
        const int32_t iBase = std::clamp(iPlace, 1, 255);
        const int32_t iSteps = std::clamp(iPlace - iBase, -15, 15);
        const uint32_t uiIndex = iSteps < 0 ? uiMinusOne : iSteps > 0 ? uiPlusOne : uiNothing;
        const auto uiMultiplier = static_cast<uint32_t>(iSteps < 0 ? -iSteps : iSteps > 0 ? iSteps : 1);
        values.aui16Places[static_cast<size_t>(iPlace - EacValues::k_iLeastPlace)] =
            eacValue(static_cast<uint32_t>(iBase), uiTable, uiMultiplier, uiIndex, bSigned);
    }
    for (uint32_t uiAnyTable = 0; uiAnyTable < 16; ++uiAnyTable)
        for (uint32_t uiIndex = 0; uiIndex < 8; ++uiIndex)
        {
            const auto uiColumn = static_cast<size_t>(getEtcAlphaModifier(uiAnyTable, uiIndex) - EacValues::k_iLeastModifier);
            if (values.aaui16Fine[255][uiColumn] != 0)
                continue;
            for (uint32_t uiBase = 0; uiBase < 256; ++uiBase)
                values.aaui16Fine[uiBase][uiColumn] = eacValue(uiBase, uiAnyTable, 0, uiIndex, bSigned);
        }
    return values;
}

inline constexpr EacValues eacValuesUnsigned = makeEacValues(false);
inline constexpr EacValues eacValuesSigned = makeEacValues(true);

} // namespace moxtexture
