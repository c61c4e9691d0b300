#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "Codecs/ETC/EtcQuantise.h"
#include "ReferenceEtcTryTables.h"

// The quantisers as one would tell them.
namespace etcreference
{

using moxtexture::EtcMean;
using moxtexture::EtcQuantised;

inline uint8_t expand4(uint32_t uiLevel)
{
    return static_cast<uint8_t>(uiLevel * 16 | uiLevel);
}

inline uint8_t expand5(uint32_t uiLevel)
{
    return static_cast<uint8_t>(uiLevel << 3 | uiLevel >> 2);
}

inline EtcMean halfMean(const EtcPixels& pixels, EEtcHalf eHalf)
{
    const HalfArea area = areaOf(eHalf);
    EtcMean mean = {};
    for (uint32_t y = area.uiY; y < area.uiY + area.uiHeight; ++y)
        for (uint32_t x = area.uiX; x < area.uiX + area.uiWidth; ++x)
        {
            const size_t uiPixel = moxtexture::etcPixelIndex(x, y);
            mean[0] += pixels.aui8Red[uiPixel];
            mean[1] += pixels.aui8Green[uiPixel];
            mean[2] += pixels.aui8Blue[uiPixel];
        }
    for (float& fChannel : mean)
        fChannel *= 0.125f;
    return mean;
}

inline EtcQuantised quantiseNearest555(const EtcMean& mean)
{
    EtcQuantised result;
    for (size_t c = 0; c < 3; ++c)
    {
        result.levels[c] = static_cast<uint8_t>(mean[c] * 31.0f / 255.0f + 0.5f);
        result.bytes[c] = expand5(result.levels[c]);
    }
    return result;
}

inline EtcQuantised quantiseNearest444(const EtcMean& mean)
{
    EtcQuantised result;
    for (size_t c = 0; c < 3; ++c)
    {
        result.levels[c] = static_cast<uint8_t>(double{mean[c]} / 17.0 + 0.5 + double{0.0001f});
        result.bytes[c] = expand4(result.levels[c]);
    }
    return result;
}

/// @param weights  of the squares of (red - green), (red - blue), (green - blue)
inline EtcQuantised quantiseCombined(const EtcMean& mean, bool b4Bit, const std::array<float, 3>& weights, bool bWithLimit)
{
    EtcColour low, high;
    std::array<float, 3> lowError, highError;
    for (size_t c = 0; c < 3; ++c)
    {
        low[c] = b4Bit ? static_cast<uint8_t>(double{mean[c]} / 17.0) : static_cast<uint8_t>(mean[c] / 8.225806f);
        high[c] = static_cast<uint8_t>(std::min(low[c] + 1, b4Bit ? 15 : 31));
        lowError[c] = static_cast<float>(b4Bit ? expand4(low[c]) : expand5(low[c])) - mean[c];
        highError[c] = static_cast<float>(b4Bit ? expand4(high[c]) : expand5(high[c])) - mean[c];
    }

    constexpr bool k_abHigh[8][3] = {{false, false, false}, {true, false, false}, {false, true, false}, {false, false, true},
                                     {true, true, false},   {true, false, true},  {false, true, true},  {true, true, true}};
    size_t uiBest = 0;
    float fLeast = 0.0f;
    for (size_t uiChoice = 0; uiChoice < 8; ++uiChoice)
    {
        const float fRed = k_abHigh[uiChoice][0] ? highError[0] : lowError[0];
        const float fGreen = k_abHigh[uiChoice][1] ? highError[1] : lowError[1];
        const float fBlue = k_abHigh[uiChoice][2] ? highError[2] : lowError[2];
        const float fCost = weights[0] * ((fRed - fGreen) * (fRed - fGreen)) + weights[1] * ((fRed - fBlue) * (fRed - fBlue)) +
                            weights[2] * ((fGreen - fBlue) * (fGreen - fBlue));
        if (uiChoice == 0 || fCost < fLeast)
        {
            fLeast = fCost;
            uiBest = uiChoice;
        }
    }
    if (bWithLimit && (uiBest == 0 || uiBest == 7))
        uiBest = double{lowError[0] * lowError[0] + lowError[1] * lowError[1] + lowError[2] * lowError[2]} > 192.0 ? size_t{7} : size_t{0};

    EtcQuantised result;
    for (size_t c = 0; c < 3; ++c)
    {
        result.levels[c] = k_abHigh[uiBest][c] ? high[c] : low[c];
        result.bytes[c] = b4Bit ? expand4(result.levels[c]) : expand5(result.levels[c]);
    }
    return result;
}

constexpr std::array<float, 3> k_aPlainWeights = {1.0f, 1.0f, 1.0f};
constexpr std::array<float, 3> k_aPerceptualWeights = {0.175513f, 0.034086f, 0.066918f};

inline EtcQuantised quantiseCombined444(const EtcMean& mean)
{
    return quantiseCombined(mean, true, k_aPlainWeights, true);
}

inline EtcQuantised quantiseCombined555(const EtcMean& mean)
{
    return quantiseCombined(mean, false, k_aPlainWeights, false);
}

inline EtcQuantised quantiseCombined444Perceptual(const EtcMean& mean)
{
    return quantiseCombined(mean, true, k_aPerceptualWeights, false);
}

inline EtcQuantised quantiseCombined555Perceptual(const EtcMean& mean)
{
    return quantiseCombined(mean, false, k_aPerceptualWeights, false);
}

} // namespace etcreference
