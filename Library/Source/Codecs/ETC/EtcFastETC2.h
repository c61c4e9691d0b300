#pragma once

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcTwoColours.h"

namespace moxtexture
{

/// Encodes an opaque ETC2 block with the fast searches: the ETC1 modes first, then planar, T and H, each of which replaces what
/// stands if its error is strictly less; then a refinement of T or H, where that one stands.
/// @param block  gets the words of the block, ready to be stored
void etcFastBlockETC2(const EtcPixels& pixels, EtcBlockWords& block);

/// The same with perceptual errors, a thousand times blockErrorPerceptual.
///
/// On purpose: the refinement is the plain one, and its plain error is compared with the perceptual error of what stands, so that
/// it nearly always replaces it.
void etcFastBlockETC2Perceptual(const EtcPixels& pixels, EtcBlockWords& block);

/// The part of etcFastBlockETC2 that follows the ETC1 modes: planar, T, H and refinement.
/// @param halfIntensity  lbgHalfIntensity(pixels)
/// @param fError  the error of the block that stands
/// @param block   the words of that block; replaced by a better one's, ready to be stored, with bit 1 set
void etcTryPlanarTH(const EtcPixels& pixels, const EtcColourPair& halfIntensity, double fError, EtcBlockWords& block);

} // namespace moxtexture
