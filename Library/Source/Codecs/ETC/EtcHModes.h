#pragma once

#include "Codecs/ETC/EtcModeErrors.h"
#include "Codecs/ETC/EtcModeFit.h"

namespace moxtexture
{

// H mode: a pixel takes one of four paints, the first colour plus and minus a distance (paints 0, 1), the second colour plus and
// minus it (paints 2, 3), each channel clamped. The low bit of the distance is not stored: it is the order of the two colours
// read as 12-bit numbers, red on top. Equal errors keep the earlier paint and the smaller distance. Nothing here keeps state;
// any thread may call it.

/// Puts two colours of 4-bit levels in the order in which H mode is searched: the first strictly below the second. Of two equal
/// ones the first goes down by one, or where it is 0 the second goes up by one.
EtcColourPair orderForH(const EtcColourPair& levels);

/// The best distance and indices for two colours of 4-bit levels, in the order given; plain squared error, or weighted by 299,
/// 587 and 114. The fit may still need settleHOrder.
EtcModeFit hBlockError(const EtcPixels& pixels, const EtcColourPair& levels);
EtcModeFit hBlockErrorWeighted(const EtcPixels& pixels, const EtcColourPair& levels);

/// The parts of hBlockError: the best of what measureModes gives for these levels, without indices; and the indices of such a fit.
/// With measureModesA1 and chooseIndicesHA1 they serve punch-through. On purpose that is the reverse of what T mode does: a pixel with
/// alpha takes the paint that will be stored as index 2 and has no error, a pixel with alpha 0 chooses among the other three.
EtcModeFit bestFitH(const EtcModeErrors& errors, const EtcColourPair& levels);
void chooseIndicesH(const EtcPixels& pixels, bool bWeighted, EtcModeFit& fit);
void chooseIndicesHA1(const EtcPixels& pixels, const EtcAlphas& alphas, EtcModeFit& fit);

/// Tells by writeDiagnostic of each pixel whose alpha is neither 0 nor 255.
void tellInvalidAlphas(const EtcAlphas& alphas);

/// Makes the order of the colours say the low bit of the distance: where it does not, the colours change places and so do paints
/// 0, 1 with 2, 3.
void settleHOrder(EtcModeFit& fit);

/// The block before stuffing: the high word holds the two 12-bit colours and the upper two bits of the distance in 26 bits, the
/// first colour on top; the low word the indices in stored form. The order of the fit's colours must be settled.
EtcBlockWords packH(const EtcModeFit& fit);

/// The H block of the two colours that lbgHalfIntensity finds.
/// @param halfIntensity  lbgHalfIntensity(pixels), for callers that need it elsewhere too
/// @param compact        receives the block before stuffing
/// @return the squared error, in the Perceptual form weighted by 299, 587 and 114
uint32_t hFast(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact);
uint32_t hFast(const EtcPixels& pixels, EtcBlockWords& compact);
uint32_t hFastPerceptual(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact);
uint32_t hFastPerceptual(const EtcPixels& pixels, EtcBlockWords& compact);

/// The best H block over the clusterings without intensity and in RGB, by squared error (plain in every quality).
/// @return the block before stuffing; the caller decodes and measures it
EtcBlockWords hRefine(const EtcPixels& pixels);

} // namespace moxtexture
