#pragma once

#include "ReferenceEtcTModes.h"

namespace etcreference
{

inline uint32_t twelveBits(const SixLevels& six, size_t uiColour)
{
    return static_cast<uint32_t>((six[uiColour * 3] * 16 + six[uiColour * 3 + 1]) * 16 + six[uiColour * 3 + 2]);
}

inline void writeTwelveBits(SixLevels& six, size_t uiColour, uint32_t uiNumber)
{
    six[uiColour * 3] = static_cast<int>(uiNumber / 256);
    six[uiColour * 3 + 1] = static_cast<int>(uiNumber / 16 % 16);
    six[uiColour * 3 + 2] = static_cast<int>(uiNumber % 16);
}

inline moxtexture::EtcColourPair orderForH(const moxtexture::EtcColourPair& levels)
{
    SixLevels six = toSixLevels(levels);
    uint32_t c0 = twelveBits(six, 0);
    uint32_t c1 = twelveBits(six, 1);
    if (c0 > c1)
        std::swap(c0, c1);
    if (c0 == c1)
    {
        if (c0 != 0)
            c0 = c1 - 1;
        else
            c1 = c0 + 1;
    }
    writeTwelveBits(six, 0, c0);
    writeTwelveBits(six, 1, c1);
    return fromSixLevels(six);
}

inline moxtexture::EtcModeFit hBlockErrorOfWeights(const moxtexture::EtcPixels& pixels, const moxtexture::EtcColourPair& levels,
                                                   const std::array<int, 3>& weights)
{
    double fBest = k_fMaximumError;
    moxtexture::EtcModeFit best{};
    best.levels = levels;
    for (uint32_t d = 0; d < 8; ++d)
    {
        const FourPaints paints = paintsOfH(toSixLevels(levels), k_aiDistances[d]);
        const Painted painted = paintBlock(pixels, [&](const std::array<int, 3>& pixel, size_t, double& fError)
                                           { return etcreference::nearestPaint(pixel, paints, weights, fError); });
        if (painted.fError < fBest)
        {
            fBest = painted.fError;
            best.uiDistance = d;
            best.ui32Indices = painted.ui32Indices;
        }
    }
    best.uiError = static_cast<uint32_t>(fBest);
    return best;
}

inline moxtexture::EtcModeFit hBlockError(const moxtexture::EtcPixels& pixels, const moxtexture::EtcColourPair& levels)
{
    return etcreference::hBlockErrorOfWeights(pixels, levels, k_aiPlainWeights);
}

inline moxtexture::EtcModeFit hBlockErrorWeighted(const moxtexture::EtcPixels& pixels, const moxtexture::EtcColourPair& levels)
{
    return etcreference::hBlockErrorOfWeights(pixels, levels, k_aiPerceptualWeights);
}

/// Without the remark on alphas between 0 and 255.
inline moxtexture::EtcModeFit hBlockErrorA1(const moxtexture::EtcPixels& pixels, const moxtexture::EtcAlphas& alphas,
                                            const moxtexture::EtcColourPair& levels)
{
    const SixLevels six = toSixLevels(levels);
    double fBest = k_fMaximumError;
    moxtexture::EtcModeFit best{};
    best.levels = levels;
    for (uint32_t d = 0; d < 8; ++d)
    {
        const FourPaints paints = paintsOfH(six, k_aiDistances[d]);
        const uint32_t q = (d & 1) ^ (twelveBits(six, 0) < twelveBits(six, 1) ? 1u : 0u);
        const Painted painted =
            paintBlock(pixels,
                       [&](const std::array<int, 3>& pixel, size_t uiPixel, double& fLeast)
                       {
                           const bool bHasAlpha = alphas.aui8[uiPixel] != 0;
                           fLeast = k_fMaximumError;
                           uint32_t uiIndex = 0;
                           for (uint32_t uiPaint = 0; uiPaint < 4; ++uiPaint)
                           {
                               double fError = 0.0;
                               if (uiPaint == 2 * q)
                                   fError = bHasAlpha ? 0.0 : k_fMaximumError;
                               else
                                   fError = bHasAlpha ? k_fMaximumError : paintError(pixel, paints[uiPaint], k_aiPlainWeights);
                               if (fError < fLeast)
                               {
                                   fLeast = fError;
                                   uiIndex = uiPaint;
                               }
                           }
                           return uiIndex;
                       });
        if (painted.fError < fBest)
        {
            fBest = painted.fError;
            best.uiDistance = d;
            best.ui32Indices = painted.ui32Indices;
        }
    }
    best.uiError = static_cast<uint32_t>(fBest);
    return best;
}

inline void settleHOrder(moxtexture::EtcModeFit& fit)
{
    const SixLevels six = toSixLevels(fit.levels);
    const uint32_t uiNotBelow = twelveBits(six, 0) < twelveBits(six, 1) ? 0 : 1;
    if (uiNotBelow != (fit.uiDistance & 1))
    {
        std::swap(fit.levels[0], fit.levels[1]);
        fit.ui32Indices ^= 0xAAAAAAAAu;
    }
}

inline moxtexture::EtcBlockWords packH(const moxtexture::EtcModeFit& fit)
{
    const SixLevels six = toSixLevels(fit.levels);
    return {(twelveBits(six, 0) * 4096 + twelveBits(six, 1)) * 4 + fit.uiDistance / 2, indexToBlockOrder(fit.ui32Indices)};
}

inline uint32_t hFast(const moxtexture::EtcPixels& pixels, moxtexture::EtcBlockWords& compact)
{
    moxtexture::EtcModeFit fit =
        etcreference::hBlockError(pixels, etcreference::orderForH(etcreference::quantise444Pair(etcreference::lbgHalfIntensity(pixels))));
    etcreference::settleHOrder(fit);
    compact = etcreference::packH(fit);
    return fit.uiError;
}

inline uint32_t hFastPerceptual(const moxtexture::EtcPixels& pixels, moxtexture::EtcBlockWords& compact)
{
    moxtexture::EtcModeFit fit = etcreference::hBlockErrorWeighted(
        pixels, etcreference::orderForH(etcreference::quantise444Pair(etcreference::lbgHalfIntensity(pixels))));
    etcreference::settleHOrder(fit);
    compact = etcreference::packH(fit);
    return fit.uiError;
}

inline moxtexture::EtcBlockWords hRefine(const moxtexture::EtcPixels& pixels)
{
    moxtexture::EtcModeFit best =
        etcreference::hBlockError(pixels, etcreference::orderForH(etcreference::quantise444Pair(etcreference::lbgNoIntensityH(pixels))));
    const moxtexture::EtcModeFit second =
        etcreference::hBlockError(pixels, etcreference::orderForH(etcreference::quantise444Pair(etcreference::lbgNoIntensityH(pixels))));
    if (second.uiError < best.uiError)
        best = second;
    const moxtexture::EtcModeFit third =
        etcreference::hBlockError(pixels, etcreference::orderForH(etcreference::quantise444Pair(etcreference::lbgRGBH(pixels))));
    if (third.uiError < best.uiError)
        best = third;
    etcreference::settleHOrder(best);
    return etcreference::packH(best);
}

} // namespace etcreference
