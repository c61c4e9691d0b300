#include "Codecs/ETC/EtcExhaustivePlanar.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "Codecs/ETC/EtcPlanarFit.h"

namespace moxtexture
{

namespace
{

using ChannelValues = std::array<uint8_t, 16>;

/// The levels of one channel of a planar block.
struct ChannelLevels
{
    uint32_t uiOrigin;
    uint32_t uiHorizontal;
    uint32_t uiVertical;
};

template <uint32_t uiBits>
constexpr int32_t expand(uint32_t uiLevel)
{
    static_assert(uiBits == 6 || uiBits == 7);
    return static_cast<int32_t>(uiBits == 6 ? expandEtc6(uiLevel) : expandEtc7(uiLevel));
}

/// @param iValue  a decoded value in quarters, with the half that rounds
uint32_t squaredError(int32_t iValue, uint8_t ui8Pixel)
{
    const int32_t iDifference = std::clamp(iValue >> 2, 0, 255) - ui8Pixel;
    return static_cast<uint32_t>(iDifference * iDifference);
}

/// The pixels of one row or column from the second on, which the origin and one other level give.
uint32_t edgeError(const ChannelValues& values, size_t uiStep, int32_t iOrigin, int32_t iOther)
{
    uint32_t uiSum = 0;
    for (int32_t i = 1; i < 4; ++i)
        uiSum += squaredError(i * (iOther - iOrigin) + 4 * iOrigin + 2, values[static_cast<size_t>(i) * uiStep]);
    return uiSum;
}

/// The nine pixels that all three levels give, added to uiSum; stops at a row end at or above uiLimit.
uint32_t addInnerError(const ChannelValues& values, int32_t iOrigin, int32_t iHorizontal, int32_t iVertical, uint32_t uiSum,
                       uint32_t uiLimit)
{
    const int32_t iAcross = iHorizontal - iOrigin;
    for (int32_t y = 1; y < 4 && uiSum < uiLimit; ++y)
    {
        const int32_t iStart = y * (iVertical - iOrigin) + 4 * iOrigin + 2;
        for (int32_t x = 1; x < 4; ++x)
            uiSum += squaredError(x * iAcross + iStart, values[static_cast<size_t>(y * 4 + x)]);
    }
    return uiSum;
}

/// The first levels of least error in the order of origin, horizontal, vertical.
/// @return false if every error is above uiBound
template <uint32_t uiBits>
bool searchChannel(const ChannelValues& values, uint32_t uiBound, ChannelLevels& found)
{
    constexpr uint32_t uiLevels = 1u << uiBits;
    uint32_t uiBest = uiBound + 1;
    for (uint32_t uiOrigin = 0; uiOrigin < uiLevels; ++uiOrigin)
    {
        const int32_t iOrigin = expand<uiBits>(uiOrigin);
        const uint32_t uiOriginError = squaredError(4 * iOrigin + 2, values[0]);
        if (uiOriginError >= uiBest)
            continue;
        std::array<uint32_t, uiLevels> auiRow;
        std::array<uint32_t, uiLevels> auiColumn;
        for (uint32_t i = 0; i < uiLevels; ++i)
        {
            auiRow[i] = uiOriginError + edgeError(values, 1, iOrigin, expand<uiBits>(i));
            auiColumn[i] = edgeError(values, 4, iOrigin, expand<uiBits>(i));
        }
        const uint32_t uiLeastColumn = *std::min_element(auiColumn.begin(), auiColumn.end());
        for (uint32_t uiHorizontal = 0; uiHorizontal < uiLevels; ++uiHorizontal)
        {
            if (auiRow[uiHorizontal] + uiLeastColumn >= uiBest)
                continue;
            for (uint32_t uiVertical = 0; uiVertical < uiLevels; ++uiVertical)
            {
                const uint32_t uiError = addInnerError(values, iOrigin, expand<uiBits>(uiHorizontal), expand<uiBits>(uiVertical),
                                                       auiRow[uiHorizontal] + auiColumn[uiVertical], uiBest);
                if (uiError < uiBest)
                {
                    uiBest = uiError;
                    found = {uiOrigin, uiHorizontal, uiVertical};
                }
            }
        }
    }
    return uiBest <= uiBound;
}

/// @param uiRed, uiGreen, uiBlue  the greatest squared error of each channel that may be found
bool searchChannels(const EtcPixels& pixels, uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, EtcBlockWords& compact)
{
    ChannelLevels red, green, blue;
    if (!searchChannel<6>(pixels.aui8Red, uiRed, red) || !searchChannel<7>(pixels.aui8Green, uiGreen, green) ||
        !searchChannel<6>(pixels.aui8Blue, uiBlue, blue))
        return false;
    const auto colour = [&](uint32_t ChannelLevels::*pLevel) {
        return EtcColour{static_cast<uint8_t>(red.*pLevel), static_cast<uint8_t>(green.*pLevel), static_cast<uint8_t>(blue.*pLevel)};
    };
    compact = packPlanar({colour(&ChannelLevels::uiOrigin), colour(&ChannelLevels::uiHorizontal), colour(&ChannelLevels::uiVertical)});
    return true;
}

} // namespace

bool searchPlanarExhaustive(const EtcPixels& pixels, uint32_t uiBound, uint32_t uiErrorRed, uint32_t uiErrorGreen, uint32_t uiErrorBlue,
                            EtcBlockWords& compact)
{
    return searchChannels(pixels, std::min(uiBound, uiErrorRed), std::min(uiBound, uiErrorGreen), std::min(uiBound, uiErrorBlue), compact);
}

bool searchPlanarExhaustivePerceptual(const EtcPixels& pixels, uint32_t uiBound, uint32_t uiErrorRed, uint32_t uiErrorGreen,
                                      uint32_t uiErrorBlue, EtcBlockWords& compact)
{
    // A weight is the same in all of a channel's terms, so the squares without it have the same least levels, and w * e <= b is
    // e <= b / w rounded down.
    return searchChannels(pixels, std::min(uiBound / 299, uiErrorRed), std::min(uiBound / 587, uiErrorGreen),
                          std::min(uiBound / 114, uiErrorBlue), compact);
}

} // namespace moxtexture
