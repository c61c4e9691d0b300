#pragma once

#include <array>
#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcTryTables.h"

namespace moxtexture
{

/// Red, green, blue; 0 to 255.
using EtcMean = std::array<float, 3>;

/// A colour in the levels that a block stores, and as the bytes to which they expand.
struct EtcQuantised
{
    EtcColour levels;
    EtcColour bytes;
};

// The search of EtcFastBlock.h has these quantisers for a whole block in lanes (EtcQuantiseSimd.h); what they give is the same.

/// The mean colour of a half; exact, as it is a multiple of 1/8.
[[nodiscard]] EtcMean etcHalfMean(const EtcPixels& pixels, EEtcHalf eHalf);

/// A non-negative number to the nearest whole one, halves up.
[[nodiscard]] constexpr uint8_t roundEtcLevel(float fValue)
{
    const float fRaised = fValue + 0.5f;
    return static_cast<uint8_t>(fRaised);
}

/// The nearest 5-bit levels of each channel on its own.
[[nodiscard]] EtcQuantised quantiseNearest555(const EtcMean& mean);

/// The nearest 4-bit levels of each channel on its own.
[[nodiscard]] EtcQuantised quantiseNearest444(const EtcMean& mean);

/// Take for each channel the level below or above the mean, so that the three channels are off by much the same, which keeps
/// the hue: the least sum of the squared differences between their errors. Among equal choices the first stays, in the order
/// LLL, HLL, LHL, LLH, HHL, HLH, LHH, HHH of low and high for red, green and blue.
///
/// On purpose: the 4-bit form, where all three are low or all are high, settles between these two by the errors of the low
/// levels alone, against a fixed limit; the 5-bit form does not.
[[nodiscard]] EtcQuantised quantiseCombined444(const EtcMean& mean);
[[nodiscard]] EtcQuantised quantiseCombined555(const EtcMean& mean);

/// The same with weights for how well the eye tells the differences; without the limit in either form.
[[nodiscard]] EtcQuantised quantiseCombined444Perceptual(const EtcMean& mean);
[[nodiscard]] EtcQuantised quantiseCombined555Perceptual(const EtcMean& mean);

/// The weights of the perceptual forms, of the squared differences between red and green, red and blue, green and blue.
inline constexpr float k_afEtcHueWeights[3] = {0.175513f, 0.034086f, 0.066918f};

/// The limit of quantiseCombined444: the sum of the squared errors of the low levels above which grey goes up.
constexpr float k_fEtcGreyLimit = 192.0f;

/// Whether the second colour lies within reach of a differential block's offsets from the first, -4 to 3 in each channel.
/// @param levels0, levels1  of 5 bits
[[nodiscard]] bool isEtcDifferential(const EtcColour& levels0, const EtcColour& levels1);

} // namespace moxtexture
