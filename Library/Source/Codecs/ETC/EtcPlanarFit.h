#pragma once

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// The three colours of a planar block, of 6, 7 and 6 bits: at pixels (0, 0), (4, 0) and (0, 4).
struct EtcPlanarLevels
{
    EtcColour origin;
    EtcColour horizontal;
    EtcColour vertical;
};

/// The compact planar words.
[[nodiscard]] EtcBlockWords packPlanar(const EtcPlanarLevels& levels);

/// Fits the plane of least squares to each channel of a block, clamps its three colours to bytes and rounds them to their levels.
/// @return the compact planar words
[[nodiscard]] EtcBlockWords planarFit(const EtcPixels& pixels);

} // namespace moxtexture
