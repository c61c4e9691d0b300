#pragma once

#include <array>
#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcMeasure.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// From where an exhaustive search starts: the halves' mean colours as levels, and what each half then costs.
struct EtcAverageCandidate
{
    std::array<EtcColour, 4> levels{};   ///< of 4 bits (individual) or 5 (differential), by EEtcHalf
    std::array<uint32_t, 4> auiErrors{}; ///< of the halves' eight pixels under the best table, by EEtcHalf
    bool bFlip = false;                  ///< top and bottom together cost strictly less than left and right
    uint32_t uiError = 0;                ///< of the cheaper split
};

/// The nearest 4-bit levels of each half's mean.
template <EEtcMeasure eMeasure>
[[nodiscard]] EtcAverageCandidate etcAverageIndividual(const EtcPixels& pixels);

/// The nearest 5-bit levels of each half's mean; if the second half's levels are out of reach of a differential block (-4 to 3
/// from the first's), then both halves of the split take the level of the mean of their means.
template <EEtcMeasure eMeasure>
[[nodiscard]] EtcAverageCandidate etcAverageDifferential(const EtcPixels& pixels);

} // namespace moxtexture
