#pragma once

#include <cstdint>

#include "Codecs/ETC/EacValues.h"

namespace moxtexture
{

/// What the first two bytes of an 11-bit block say; each base as eacValue takes it.
struct EacChoice
{
    uint32_t uiBase = 0;
    uint32_t uiTable = 0;
    uint32_t uiMultiplier = 0;
};

/// The choice with the least sum of squared distances on the circle of 65536, the first one of equals with bases outermost, then
/// tables, then multipliers: of all 65536.
///
/// @param aui16Pixels  in any order
[[nodiscard]] EacChoice searchEacBlock(const uint16_t (&aui16Pixels)[16], const EacValues& values);

} // namespace moxtexture
