#pragma once

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

// Each of these splits a block's pixels into two clusters by two-means iteration (Linde, Buzo, Gray) from random first centres
// and gives the centres as bytes. Every call draws the same random numbers, so equal blocks give equal colours. They differ in
// the space in which distances are measured, and in whether an error that repeats ends the search or only this attempt.
//
// The transformed space has the axes intensity (R + G + B) / sqrt(3), (R - G) / sqrt(2) and (R + G - 2 B) / sqrt(6).

/// Transformed space, the square along intensity counts half; ends at a repeated error.
EtcColourPair lbgHalfIntensity(const EtcPixels& pixels);

/// Transformed space without the intensity; ends at a repeated error.
EtcColourPair lbgNoIntensityT(const EtcPixels& pixels);

/// Transformed space without the intensity; starts again at a repeated error, ten times at the most.
EtcColourPair lbgNoIntensityH(const EtcPixels& pixels);

/// R, G, B with centres rounded to whole numbers; ends at a repeated error.
EtcColourPair lbgRGBT(const EtcPixels& pixels);

/// R, G, B with centres rounded to whole numbers; starts again at a repeated error, ten times at the most.
EtcColourPair lbgRGBH(const EtcPixels& pixels);

/// The nearest levels of four bits to two colours given as bytes.
EtcColourPair quantise444Pair(const EtcColourPair& bytes);

} // namespace moxtexture
