#pragma once

#include <array>
#include <cstdint>

#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

// T and H mode paint a block with two colours of 4-bit levels and one of eight distances. In H mode both colours are painted with
// the distance added and with it taken away; in T mode the first one so and as it is, the second one only as it is. Which pair and
// distance have the least error is one search for both.

enum EEtcPairKind
{
    eEtcPairsT,
    eEtcPairsH
};

/// Two colours of twelve bits: levels of red (uppermost), green and blue.
struct EtcPair
{
    uint32_t uiFirst = 0;  ///< in T mode the colour of three paints
    uint32_t uiSecond = 0; ///< in T mode the colour of one paint
};

/// The place of a pair in the order of the search: red 1, red 2, green 1, green 2, blue 1, blue 2, the last fastest.
constexpr uint32_t placeOfPair(const EtcPair& pair)
{
    uint32_t uiPlace = 0;
    for (uint32_t uiShift = 12; uiShift > 0;)
    {
        uiShift -= 4;
        uiPlace = uiPlace << 8 | (pair.uiFirst >> uiShift & 15) << 4 | (pair.uiSecond >> uiShift & 15);
    }
    return uiPlace;
}

/// Finds the pair of least error over all distances; of equal ones that of the first place. In H mode only pairs whose first
/// colour is strictly below the second count.
///
/// @param auiWeights  of the squared differences in red, green and blue; 587 at the most
/// @param uiBound     only errors strictly below it count
/// @param pair        receives the pair; left alone where no error is below uiBound
/// @return the error, or uiBound
///
/// Its tables take 290 KiB of the stack. Keeps no state.
uint32_t findLeastPair(const EtcPixels& pixels, EEtcPairKind eKind, const std::array<uint32_t, 3>& auiWeights, uint32_t uiBound,
                       EtcPair& pair);

} // namespace moxtexture
