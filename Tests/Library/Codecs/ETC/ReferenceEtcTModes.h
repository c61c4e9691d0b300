#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "Codecs/ETC/EtcModeFit.h"
#include "Codecs/ETC/EtcPixels.h"
#include "ReferenceEtcTwoColours.h"

/// T and H mode step by step: every paint of every pixel at every distance. The library's forms must give the same fits.
namespace etcreference
{

constexpr int k_aiDistances[8] = {3, 6, 11, 16, 23, 32, 41, 64};
constexpr std::array<int, 3> k_aiPlainWeights = {1, 1, 1};
constexpr std::array<int, 3> k_aiPerceptualWeights = {299, 587, 114};
constexpr double k_fMaximumError = 1.0404e9;

/// Six 4-bit values, R0 G0 B0 R1 G1 B1.
using SixLevels = std::array<int, 6>;

inline SixLevels toSixLevels(const moxtexture::EtcColourPair& levels)
{
    return {levels[0][0], levels[0][1], levels[0][2], levels[1][0], levels[1][1], levels[1][2]};
}

inline moxtexture::EtcColourPair fromSixLevels(const SixLevels& six)
{
    moxtexture::EtcColourPair levels{};
    for (size_t i = 0; i < 6; ++i)
        levels[i / 3][i % 3] = static_cast<uint8_t>(six[i]);
    return levels;
}

inline int clampByte(int i)
{
    return std::min(std::max(i, 0), 255);
}

inline int expandFour(int iLevel)
{
    return iLevel * 16 | iLevel;
}

inline std::array<int, 3> pixelAt(const moxtexture::EtcPixels& pixels, size_t x, size_t y)
{
    return {pixels.aui8Red[y * 4 + x], pixels.aui8Green[y * 4 + x], pixels.aui8Blue[y * 4 + x]};
}

using FourPaints = std::array<std::array<int, 3>, 4>;

inline double paintError(const std::array<int, 3>& pixel, const std::array<int, 3>& paint, const std::array<int, 3>& weights)
{
    double fError = 0.0;
    for (size_t c = 0; c < 3; ++c)
        fError += static_cast<double>(weights[c]) * (pixel[c] - paint[c]) * (pixel[c] - paint[c]);
    return fError;
}

inline FourPaints paintsOfT(const SixLevels& six, int iDistance)
{
    FourPaints paints{};
    for (size_t c = 0; c < 3; ++c)
    {
        const int iFirst = expandFour(six[c]);
        const int iSecond = expandFour(six[3 + c]);
        paints[0][c] = iFirst;
        paints[1][c] = clampByte(iSecond + iDistance);
        paints[2][c] = iSecond;
        paints[3][c] = clampByte(iSecond - iDistance);
    }
    return paints;
}

inline FourPaints paintsOfH(const SixLevels& six, int iDistance)
{
    FourPaints paints{};
    for (size_t c = 0; c < 3; ++c)
        for (size_t uiColour = 0; uiColour < 2; ++uiColour)
        {
            paints[uiColour * 2][c] = clampByte(expandFour(six[uiColour * 3 + c]) + iDistance);
            paints[uiColour * 2 + 1][c] = clampByte(expandFour(six[uiColour * 3 + c]) - iDistance);
        }
    return paints;
}

struct Painted
{
    double fError = 0.0;
    uint32_t ui32Indices = 0;
};

/// Sums over the block what `choose(pixel, x, y, rfError)` finds: the index, and the error that goes with it.
template <typename Choose>
Painted paintBlock(const moxtexture::EtcPixels& pixels, Choose choose)
{
    Painted painted;
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            double fError = 0.0;
            const uint32_t uiIndex = choose(pixelAt(pixels, x, y), y * 4 + x, fError);
            painted.fError += fError;
            painted.ui32Indices |= uiIndex << (y * 4 + x) * 2;
        }
    return painted;
}

inline uint32_t nearestPaint(const std::array<int, 3>& pixel, const FourPaints& paints, const std::array<int, 3>& weights, double& fLeast)
{
    fLeast = k_fMaximumError;
    uint32_t uiNearest = 0;
    for (uint32_t uiPaint = 0; uiPaint < 4; ++uiPaint)
    {
        const double fError = paintError(pixel, paints[uiPaint], weights);
        if (fError < fLeast)
        {
            fLeast = fError;
            uiNearest = uiPaint;
        }
    }
    return uiNearest;
}

/// @param pAlphas  for punch-through, else null
inline moxtexture::EtcModeFit tBlockErrorOfOrders(const moxtexture::EtcPixels& pixels, const moxtexture::EtcAlphas* pAlphas,
                                                  const moxtexture::EtcColourPair& levels, const std::array<int, 3>& weights, int iOrders)
{
    SixLevels six = toSixLevels(levels);
    double fBest = k_fMaximumError;
    moxtexture::EtcModeFit best{};
    int iBestOrder = 0;
    for (int iOrder = 0; iOrder < iOrders; ++iOrder)
    {
        if (iOrder == 1)
            std::swap_ranges(six.begin(), six.begin() + 3, six.begin() + 3);
        for (uint32_t d = 0; d < 8; ++d)
        {
            const FourPaints paints = paintsOfT(six, k_aiDistances[d]);
            const Painted painted = paintBlock(pixels,
                                               [&](const std::array<int, 3>& pixel, size_t uiPixel, double& fError) -> uint32_t
                                               {
                                                   if (!pAlphas)
                                                       return etcreference::nearestPaint(pixel, paints, weights, fError);
                                                   fError = 0.0;
                                                   uint32_t uiIndex = 2;
                                                   if (pAlphas->aui8[uiPixel] != 0)
                                                   {
                                                       fError = k_fMaximumError;
                                                       for (const uint32_t uiPaint : {0u, 1u, 3u})
                                                           if (paintError(pixel, paints[uiPaint], weights) < fError)
                                                           {
                                                               fError = paintError(pixel, paints[uiPaint], weights);
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
                iBestOrder = iOrder;
            }
        }
    }
    if (iOrders == 2 && iBestOrder == 0)
        std::swap_ranges(six.begin(), six.begin() + 3, six.begin() + 3);
    best.levels = fromSixLevels(six);
    best.uiError = static_cast<uint32_t>(fBest);
    return best;
}

inline moxtexture::EtcModeFit tBlockError(const moxtexture::EtcPixels& pixels, const moxtexture::EtcColourPair& levels)
{
    return etcreference::tBlockErrorOfOrders(pixels, nullptr, levels, k_aiPlainWeights, 2);
}

inline moxtexture::EtcModeFit tBlockErrorWeighted(const moxtexture::EtcPixels& pixels, const moxtexture::EtcColourPair& levels)
{
    return etcreference::tBlockErrorOfOrders(pixels, nullptr, levels, k_aiPerceptualWeights, 2);
}

inline moxtexture::EtcModeFit tBlockErrorFixedOrder(const moxtexture::EtcPixels& pixels, const moxtexture::EtcColourPair& levels)
{
    return etcreference::tBlockErrorOfOrders(pixels, nullptr, levels, k_aiPlainWeights, 1);
}

inline moxtexture::EtcModeFit tBlockErrorFixedOrderWeighted(const moxtexture::EtcPixels& pixels, const moxtexture::EtcColourPair& levels)
{
    return etcreference::tBlockErrorOfOrders(pixels, nullptr, levels, k_aiPerceptualWeights, 1);
}

inline moxtexture::EtcModeFit tBlockErrorA1(const moxtexture::EtcPixels& pixels, const moxtexture::EtcAlphas& alphas,
                                            const moxtexture::EtcColourPair& levels)
{
    return etcreference::tBlockErrorOfOrders(pixels, &alphas, levels, k_aiPlainWeights, 2);
}

inline uint32_t indexToBlockOrder(uint32_t ui32Indices)
{
    uint32_t ui32Stored = 0;
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
        {
            const uint32_t uiIndex = ui32Indices >> (y * 4 + x) * 2 & 3;
            ui32Stored |= (uiIndex / 2) << (16 + x * 4 + y);
            ui32Stored |= (uiIndex % 2) << (x * 4 + y);
        }
    return ui32Stored;
}

inline moxtexture::EtcBlockWords packT(const moxtexture::EtcModeFit& fit)
{
    uint32_t ui32Compact = 0;
    for (const int iLevel : toSixLevels(fit.levels))
        ui32Compact = ui32Compact * 16 + static_cast<uint32_t>(iLevel);
    return {ui32Compact * 8 + fit.uiDistance, indexToBlockOrder(fit.ui32Indices)};
}

inline uint32_t tFast(const moxtexture::EtcPixels& pixels, moxtexture::EtcBlockWords& compact)
{
    const moxtexture::EtcModeFit fit =
        etcreference::tBlockError(pixels, etcreference::quantise444Pair(etcreference::lbgHalfIntensity(pixels)));
    compact = etcreference::packT(fit);
    return fit.uiError;
}

inline uint32_t tFastPerceptual(const moxtexture::EtcPixels& pixels, moxtexture::EtcBlockWords& compact)
{
    const moxtexture::EtcModeFit fit =
        etcreference::tBlockErrorWeighted(pixels, etcreference::quantise444Pair(etcreference::lbgHalfIntensity(pixels)));
    compact = etcreference::packT(fit);
    return fit.uiError;
}

inline moxtexture::EtcBlockWords tRefine(const moxtexture::EtcPixels& pixels)
{
    moxtexture::EtcModeFit best = etcreference::tBlockError(pixels, etcreference::quantise444Pair(etcreference::lbgNoIntensityT(pixels)));
    const moxtexture::EtcModeFit second =
        etcreference::tBlockError(pixels, etcreference::quantise444Pair(etcreference::lbgHalfIntensity(pixels)));
    if (second.uiError < best.uiError)
        best = second;
    const moxtexture::EtcModeFit third = etcreference::tBlockError(pixels, etcreference::quantise444Pair(etcreference::lbgRGBT(pixels)));
    if (third.uiError < best.uiError)
        best = third;
    return etcreference::packT(best);
}

} // namespace etcreference
