#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "ReferenceEtcPlanarFit.h"

/// The search of all planar codewords: three loops, pixel after pixel.
namespace etcreference
{

inline int planarByte(int iLevel, int iBits)
{
    return iBits == 6 ? iLevel << 2 | iLevel >> 4 : iLevel << 1 | iLevel >> 6;
}

inline int64_t planarPixelError(const std::array<uint8_t, 16>& values, int x, int y, int o, int h, int v, uint32_t uiWeight)
{
    const int iSum = x * (h - o) + y * (v - o) + 4 * o + 2;
    const int iDecoded = std::min(std::max(iSum >> 2, 0), 255);
    const int iDifference = iDecoded - values[static_cast<size_t>(y * 4 + x)];
    return int64_t{iDifference * iDifference} * uiWeight;
}

/// The first least error at or under the bound, in the order of the loops; nothing if all are above it.
inline std::optional<std::array<uint32_t, 3>> searchPlanarChannel(const std::array<uint8_t, 16>& values, int iBits, uint32_t uiWeight,
                                                                  uint64_t ui64Bound)
{
    std::optional<std::array<uint32_t, 3>> best;
    // The greatest error that is still taken: the bound, then one less than the best.
    int64_t i64Limit = static_cast<int64_t>(ui64Bound);
    for (int iOrigin = 0; iOrigin < 1 << iBits; ++iOrigin)
    {
        const int o = planarByte(iOrigin, iBits);
        if (planarPixelError(values, 0, 0, o, 0, 0, uiWeight) > i64Limit)
            continue;
        // The pixels below the first, by the vertical level.
        std::vector<int64_t> columns;
        for (int iVertical = 0; iVertical < 1 << iBits; ++iVertical)
        {
            columns.push_back(0);
            for (int y = 1; y < 4; ++y)
                columns.back() += planarPixelError(values, 0, y, o, 0, planarByte(iVertical, iBits), uiWeight);
        }
        for (int iHorizontal = 0; iHorizontal < 1 << iBits; ++iHorizontal)
        {
            const int h = planarByte(iHorizontal, iBits);
            int64_t i64Row = 0;
            for (int x = 0; x < 4 && i64Row <= i64Limit; ++x)
                i64Row += planarPixelError(values, x, 0, o, h, 0, uiWeight);
            if (i64Row > i64Limit)
                continue;
            for (int iVertical = 0; iVertical < 1 << iBits; ++iVertical)
            {
                int64_t i64Error = i64Row + columns[static_cast<size_t>(iVertical)];
                for (int y = 1; y < 4 && i64Error <= i64Limit; ++y)
                    for (int x = 1; x < 4; ++x)
                        i64Error += planarPixelError(values, x, y, o, h, planarByte(iVertical, iBits), uiWeight);
                if (i64Error <= i64Limit)
                {
                    i64Limit = i64Error - 1;
                    best = {static_cast<uint32_t>(iOrigin), static_cast<uint32_t>(iHorizontal), static_cast<uint32_t>(iVertical)};
                }
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
