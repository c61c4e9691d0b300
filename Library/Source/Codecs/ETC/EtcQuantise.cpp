#include "Codecs/ETC/EtcQuantise.h"

#include <algorithm>

namespace moxtexture
{

namespace
{

struct FourBits
{
    static constexpr int32_t k_iTop = 15;
    static uint8_t expand(uint32_t uiLevel) { return static_cast<uint8_t>(expandEtc4(uiLevel)); }
    static uint8_t roundDown(float fMean) { return static_cast<uint8_t>(double{fMean} / 17.0); }
    // A ten-thousandth moves no mean, as these are multiples of 1/8.
    static uint8_t roundToNearest(float fMean) { return static_cast<uint8_t>(double{fMean} / 17.0 + 0.5 + double{1e-4f}); }
};

struct FiveBits
{
    static constexpr int32_t k_iTop = 31;
    static uint8_t expand(uint32_t uiLevel) { return static_cast<uint8_t>(expandEtc5(uiLevel)); }
    static uint8_t roundDown(float fMean) { return static_cast<uint8_t>(fMean / 8.225806f); } // 255 / 31
    static uint8_t roundToNearest(float fMean) { return roundEtcLevel(fMean * 31.0f / 255.0f); }
};

template <typename Bits>
EtcQuantised expandColour(const EtcColour& levels)
{
    return {levels, {Bits::expand(levels[0]), Bits::expand(levels[1]), Bits::expand(levels[2])}};
}

template <typename Bits>
EtcQuantised quantiseNearest(const EtcMean& mean)
{
    return expandColour<Bits>({Bits::roundToNearest(mean[0]), Bits::roundToNearest(mean[1]), Bits::roundToNearest(mean[2])});
}

/// The levels below and above a mean.
struct ChannelChoice
{
    uint8_t aui8Levels[2];
    float afErrors[2];
};

template <typename Bits>
ChannelChoice getChoice(float fMean)
{
    ChannelChoice choice;
    choice.aui8Levels[0] = Bits::roundDown(fMean);
    choice.aui8Levels[1] = static_cast<uint8_t>(std::min(choice.aui8Levels[0] + 1, Bits::k_iTop));
    for (size_t i = 0; i < 2; ++i)
        choice.afErrors[i] = static_cast<float>(Bits::expand(choice.aui8Levels[i])) - fMean;
    return choice;
}

/// Low or high for red, green and blue, in the order of the choices.
constexpr size_t k_aauiChoices[8][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 0}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}};

float square(float f)
{
    return f * f;
}

/// @param afWeights  of the squares for red and green, red and blue, green and blue
/// @param bWithLimit  settle greys by k_fEtcGreyLimit
template <typename Bits>
EtcQuantised quantiseCombined(const EtcMean& mean, const float (&afWeights)[3], bool bWithLimit)
{
    const ChannelChoice aChannels[3] = {getChoice<Bits>(mean[0]), getChoice<Bits>(mean[1]), getChoice<Bits>(mean[2])};
    const auto cost = [&](const size_t(&auiChoice)[3])
    {
        const float fRed = aChannels[0].afErrors[auiChoice[0]];
        const float fGreen = aChannels[1].afErrors[auiChoice[1]];
        const float fBlue = aChannels[2].afErrors[auiChoice[2]];
        return afWeights[0] * square(fRed - fGreen) + afWeights[1] * square(fRed - fBlue) + afWeights[2] * square(fGreen - fBlue);
    };
    size_t uiBest = 0;
    float fLeast = cost(k_aauiChoices[0]);
    for (size_t uiChoice = 1; uiChoice < 8; ++uiChoice)
    {
        const float fCost = cost(k_aauiChoices[uiChoice]);
        if (fCost >= fLeast)
            continue;
        fLeast = fCost;
        uiBest = uiChoice;
    }
    if (bWithLimit && (uiBest == 0 || uiBest == 7))
    {
        const float fLowErrors = square(aChannels[0].afErrors[0]) + square(aChannels[1].afErrors[0]) + square(aChannels[2].afErrors[0]);
        uiBest = fLowErrors > k_fEtcGreyLimit ? 7 : 0;
    }

    EtcColour levels;
    for (size_t c = 0; c < 3; ++c)
        levels[c] = aChannels[c].aui8Levels[k_aauiChoices[uiBest][c]];
    return expandColour<Bits>(levels);
}

constexpr float k_afAlike[3] = {1.0f, 1.0f, 1.0f};

} // namespace

EtcMean etcHalfMean(const EtcPixels& pixels, EEtcHalf eHalf)
{
    const bool bColumns = eHalf == eEtcLeft || eHalf == eEtcRight;
    const size_t uiX = eHalf == eEtcRight ? 2 : 0;
    const size_t uiY = eHalf == eEtcBottom ? 2 : 0;
    const size_t uiWidth = bColumns ? 2 : 4;
    uint32_t aui[3] = {};
    for (size_t i = 0; i < 8; ++i)
    {
        const size_t uiPixel = etcPixelIndex(uiX + i % uiWidth, uiY + i / uiWidth);
        aui[0] += pixels.aui8Red[uiPixel];
        aui[1] += pixels.aui8Green[uiPixel];
        aui[2] += pixels.aui8Blue[uiPixel];
    }
    return {static_cast<float>(aui[0]) * 0.125f, static_cast<float>(aui[1]) * 0.125f, static_cast<float>(aui[2]) * 0.125f};
}

EtcQuantised quantiseNearest555(const EtcMean& mean)
{
    return quantiseNearest<FiveBits>(mean);
}

EtcQuantised quantiseNearest444(const EtcMean& mean)
{
    return quantiseNearest<FourBits>(mean);
}

EtcQuantised quantiseCombined444(const EtcMean& mean)
{
    return quantiseCombined<FourBits>(mean, k_afAlike, true);
}

EtcQuantised quantiseCombined555(const EtcMean& mean)
{
    return quantiseCombined<FiveBits>(mean, k_afAlike, false);
}

EtcQuantised quantiseCombined444Perceptual(const EtcMean& mean)
{
    return quantiseCombined<FourBits>(mean, k_afEtcHueWeights, false);
}

EtcQuantised quantiseCombined555Perceptual(const EtcMean& mean)
{
    return quantiseCombined<FiveBits>(mean, k_afEtcHueWeights, false);
}

bool isEtcDifferential(const EtcColour& levels0, const EtcColour& levels1)
{
    return std::equal(levels0.begin(), levels0.end(), levels1.begin(),
                      [](uint8_t ui8First, uint8_t ui8Second) { return ui8Second + 4 >= ui8First && ui8Second <= ui8First + 3; });
}

} // namespace moxtexture
