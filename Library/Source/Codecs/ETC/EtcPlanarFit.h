#pragma once

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Fits the plane of least squares to each channel of a block, with its three colours at pixels (0, 0), (4, 0) and (0, 4), and
/// rounds them to 6 bits for red and blue and 7 bits for green.
/// @return the compact planar words
EtcBlockWords planarFit(const EtcPixels& pixels);

} // namespace moxtexture
