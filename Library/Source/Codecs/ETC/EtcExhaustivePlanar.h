#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Finds the planar block of least squared error, over all codewords of each channel. Of several such the one with the least
/// level at the origin wins, then the one with the least horizontal, then the one with the least vertical level.
///
/// A channel is searched within a limit, the lesser of the two that are given: its least error may be equal to the limit, but not
/// above.
///
/// @param uiBound  error of the whole block
/// @param uiErrorRed, uiErrorGreen, uiErrorBlue  sums of squared differences that a channel is known to reach, as planarFit's
/// @param compact  gets the compact planar words
/// @return false, with compact as it was, if some channel has no codewords within its limit; the block is then worse than uiBound
[[nodiscard]] bool searchPlanarExhaustive(const EtcPixels& pixels, uint32_t uiBound, uint32_t uiErrorRed, uint32_t uiErrorGreen,
                                          uint32_t uiErrorBlue, EtcBlockWords& compact);

/// The same with errors weighted by 299, 587 and 114.
/// @param uiBound  weighted error of the whole block
/// @param uiErrorRed, uiErrorGreen, uiErrorBlue  sums of squared differences without weights: the search multiplies them itself
[[nodiscard]] bool searchPlanarExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, uint32_t uiErrorRed, uint32_t uiErrorGreen,
                                                    uint32_t uiErrorBlue, EtcBlockWords& compact);

} // namespace moxtexture
