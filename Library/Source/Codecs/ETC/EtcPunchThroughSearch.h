#pragma once

#include <array>
#include <cstdint>

#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

// The choice of tables and indices behind differentialBlockA1.

/// The bytes of both base colours of the two splits: left and right, top and bottom.
using EtcSplitBases = std::array<std::array<std::array<uint8_t, 3>, 2>, 2>;

/// A split with its tables and indices.
struct EtcSplitA1
{
    bool bFlip;
    std::array<uint32_t, 2> auiTables;
    uint32_t ui32Indices; ///< both planes
    uint32_t uiError;     ///< of the pixels that are not transparent
};

/// Finds the better split, the unflipped one of equals, and for each of its halves the first table of least error.
/// @param ui32Transparent   a bit x * 4 + y for each pixel without an error, which gets index 2
/// @param bTransparentMode  whether table position 1 is left out and position 2 is the base colour itself
[[nodiscard]] EtcSplitA1 findSplitA1(const EtcPixels& pixels, uint32_t ui32Transparent, const EtcSplitBases& bases, bool bTransparentMode);

} // namespace moxtexture
