#pragma once

#include "Codecs/ETC/EtcModeErrors.h"
#include "Codecs/ETC/EtcModeFit.h"

namespace moxtexture
{

// T mode: a pixel takes one of four paints, the first colour (paint 0), the second colour plus a distance, the second colour,
// the second colour minus the distance (paints 1, 2, 3), each channel clamped. Equal errors keep the earlier paint, the smaller
// distance and the order of colours tried first. Nothing here keeps state; any thread may call it.

/// The best distance and indices for two colours of 4-bit levels, tried as given and then the other way round.
/// @return the levels in the order that won, and the squared error
EtcModeFit tBlockError(const EtcPixels& pixels, const EtcColourPair& levels);

/// The same with the squares weighted by 299, 587 and 114.
EtcModeFit tBlockErrorWeighted(const EtcPixels& pixels, const EtcColourPair& levels);

/// As tBlockError, with the colours only as given: the first is paint 0.
EtcModeFit tBlockErrorFixedOrder(const EtcPixels& pixels, const EtcColourPair& levels);
EtcModeFit tBlockErrorFixedOrderWeighted(const EtcPixels& pixels, const EtcColourPair& levels);

/// The parts of tBlockError: the best of what measureModes gives for these levels, without indices; and the indices of such a fit.
/// With measureModesA1 and chooseIndicesTA1 they serve punch-through: a pixel whose alpha is 0 takes index 2 (transparent) and has no
/// error, every other pixel chooses among paints 0, 1 and 3.
EtcModeFit bestFitT(const EtcModeErrors& errors, const EtcColourPair& levels);
void chooseIndicesT(const EtcPixels& pixels, bool bWeighted, EtcModeFit& fit);
void chooseIndicesTA1(const EtcPixels& pixels, const EtcAlphas& alphas, EtcModeFit& fit);

/// The block before stuffing: the high word holds the six levels and the distance in 27 bits, the first red on top; the low word
/// the indices in stored form.
EtcBlockWords packT(const EtcModeFit& fit);

/// The T block of the two colours that lbgHalfIntensity finds.
/// @param halfIntensity  lbgHalfIntensity(pixels), for callers that need it elsewhere too
/// @param compact        receives the block before stuffing
/// @return the squared error, in the Perceptual form weighted by 299, 587 and 114
uint32_t tFast(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact);
uint32_t tFast(const EtcPixels& pixels, EtcBlockWords& compact);
uint32_t tFastPerceptual(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact);
uint32_t tFastPerceptual(const EtcPixels& pixels, EtcBlockWords& compact);

/// The best T block over three ways of clustering, by squared error (plain in every quality).
/// @return the block before stuffing; the caller decodes and measures it
EtcBlockWords tRefine(const EtcPixels& pixels, const EtcColourPair& halfIntensity);
EtcBlockWords tRefine(const EtcPixels& pixels);

} // namespace moxtexture
