#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "ReferenceEtcPlanarFit.h"

/// The search of all planar codewords: three loops, pixel after pixel.
namespace etcreference
{

inline int planarByte(int iLevel, int iBits)
{
    return iBits == 6 ? iLevel << 2 | iLevel >> 4 : iLevel << 1 | iLevel >> 6;
}

inline uint64_t planarPixelError(const std::array<uint8_t, 16>& values, int x, int y, int o, int h, int v, uint32_t uiWeight)
{
    const int iSum = x * (h - o) + y * (v - o) + 4 * o + 2;
    const int iDecoded = std::min(std::max(iSum >> 2, 0), 255);
    const int iDifference = iDecoded - values[static_cast<size_t>(y * 4 + x)];
    return static_cast<uint64_t>(iDifference * iDifference) * uiWeight;
}

/// The first least error at or under the bound, in the order of the loops; nothing if all are above it.
inline std::optional<std::array<uint32_t, 3>> searchPlanarChannel(const std::array<uint8_t, 16>& values, int iBits, uint32_t uiWeight,
                                                                  uint64_t ui64Bound)
{
    std::optional<std::array<uint32_t, 3>> best;
    uint64_t ui64Best = UINT64_MAX;
    for (int iOrigin = 0; iOrigin < 1 << iBits; ++iOrigin)
        for (int iHorizontal = 0; iHorizontal < 1 << iBits; ++iHorizontal)
        {
            const int o = planarByte(iOrigin, iBits);
            const int h = planarByte(iHorizontal, iBits);
            uint64_t ui64Row = 0;
            for (int x = 0; x < 4; ++x)
                ui64Row += planarPixelError(values, x, 0, o, h, 0, uiWeight);
            if (ui64Row > ui64Bound)
                continue;
            for (int iVertical = 0; iVertical < 1 << iBits; ++iVertical)
            {
                const int v = planarByte(iVertical, iBits);
                uint64_t ui64Error = ui64Row;
                for (int y = 1; y < 4 && ui64Error <= ui64Bound; ++y)
                    for (int x = 0; x < 4; ++x)
                        ui64Error += planarPixelError(values, x, y, o, h, v, uiWeight);
                if (ui64Error <= ui64Bound && ui64Error < ui64Best)
                {
                    ui64Best = ui64Error;
                    best = {static_cast<uint32_t>(iOrigin), static_cast<uint32_t>(iHorizontal), static_cast<uint32_t>(iVertical)};
                }
            }
        }
    return best;
}

/// @param channelErrors  plain squares
/// @param weights  1, 1, 1 or 299, 587, 114
inline std::optional<moxtexture::EtcBlockWords> searchPlanarExhaustive(const moxtexture::EtcPixels& pixels, uint32_t uiBound,
                                                                       const std::array<uint32_t, 3>& channelErrors,
                                                                       const std::array<uint32_t, 3>& weights)
{
    const auto bound = [&](size_t c) { return std::min(uint64_t{uiBound}, uint64_t{channelErrors[c]} * weights[c]); };
    const auto red = searchPlanarChannel(pixels.aui8Red, 6, weights[0], bound(0));
    const auto green = searchPlanarChannel(pixels.aui8Green, 7, weights[1], bound(1));
    const auto blue = searchPlanarChannel(pixels.aui8Blue, 6, weights[2], bound(2));
    if (!red || !green || !blue)
        return std::nullopt;
    return packPlanarLevels(*red, *green, *blue);
}

} // namespace etcreference
