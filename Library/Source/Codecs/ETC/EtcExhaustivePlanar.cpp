#include "Codecs/ETC/EtcExhaustivePlanar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcPlanarFit.h"

namespace moxtexture
{

namespace
{

// Every block of every level would be 2^21 for green alone. Most are ruled out by the plane before it is rounded and clamped: its
// distance from the pixels is a quadratic form of the three levels, so that the blocks that can stay within an error lie in an
// ellipsoid. Decoding rounds a pixel by 3/8 at the most about a shifted plane, which moves the distance by 3/8 times the root of the
// number of pixels at the most. The three pixels nearest the far corner may be clamped, which no quadratic form tells: where they
// are, the form of the other thirteen counts, which lie within the triangle of the levels.

using ChannelValues = std::array<uint8_t, 16>;

uint8_t pixelAt(const ChannelValues& values, int32_t x, int32_t y)
{
    return values[etcPixelIndex(static_cast<size_t>(x), static_cast<size_t>(y))];
}

constexpr double k_fFarthestRounding = 0.375;
constexpr double k_fMargin = 1.0; ///< in sixteenths of a squared error, far above what the doubles round

/// The levels of one channel of a planar block.
struct ChannelLevels
{
    uint32_t uiOrigin;
    uint32_t uiHorizontal;
    uint32_t uiVertical;
};

/// Levels of 6 or 7 bits.
template <uint32_t uiBits>
struct Level
{
    static_assert(uiBits == 6 || uiBits == 7);
    static constexpr uint32_t k_uiCount = 1u << uiBits;

    static constexpr int32_t toByte(uint32_t uiLevel)
    {
        return static_cast<int32_t>(uiBits == 6 ? expandEtc6(uiLevel) : expandEtc7(uiLevel));
    }

    /// The first level whose byte is not below the given one.
    static constexpr uint32_t atLeast(uint32_t uiByte)
    {
        const uint32_t uiLevel = uiByte >> (8 - uiBits);
        return toByte(uiLevel) < static_cast<int32_t>(uiByte) ? uiLevel + 1 : uiLevel;
    }
};

/// Bytes from fLow to fHigh; none if fHigh is below fLow.
struct Interval
{
    double fLow = 1.0;
    double fHigh = 0.0;

    bool isEmpty() const { return fHigh < fLow; }
};

/// Where fA * t^2 + 2 * fB * t + fC is not above 0; fA is above 0.
Interval solve(double fA, double fB, double fC)
{
    const double fDiscriminant = fB * fB - fA * fC;
    if (fDiscriminant < 0.0)
        return {};
    const double fRoot = std::sqrt(fDiscriminant);
    return {(-fB - fRoot) / fA, (-fB + fRoot) / fA};
}

/// Sixteen times the squared distance of some of the pixels from the shifted plane through O, H and V:
/// sum of (a O + b H + c V - t)^2, a = 4 - x - y, b = x, c = y, t = 4 times the pixel less 1/2.
class PlaneDistance
{
public:
    /// @param iReach  the greatest x + y of a pixel that counts
    PlaneDistance(const ChannelValues& values, int32_t iReach)
    {
        for (int32_t y = 0; y < 4; ++y)
            for (int32_t x = 0; x < 4 && x + y <= iReach; ++x)
                add(4 - x - y, x, y, 4 * pixelAt(values, x, y) - 0.5);
        m_fRounding = 4.0 * k_fFarthestRounding * std::sqrt(m_fCount);
        // The least over V of the whole is a form in O and H.
        m_fFlatOO = m_fOO - m_fOV * m_fOV / m_fVV;
        m_fFlatOH = m_fOH - m_fOV * m_fHV / m_fVV;
        m_fFlatHH = m_fHH - m_fHV * m_fHV / m_fVV;
        m_fFlatO = m_fO - m_fOV * m_fV / m_fVV;
        m_fFlatH = m_fH - m_fHV * m_fV / m_fVV;
        m_fFlatOne = m_fOne - m_fV * m_fV / m_fVV;
    }

    /// Takes all levels from now on whose decoded pixels may have a squared error up to this one.
    void setLimit(uint32_t uiError)
    {
        const double fDistance = 4.0 * std::sqrt(uiError) + m_fRounding;
        m_fLimit = fDistance * fDistance + k_fMargin;
    }

    Interval getHorizontals(double fOrigin) const
    {
        return solve(m_fFlatHH, m_fFlatOH * fOrigin + m_fFlatH, (m_fFlatOO * fOrigin + 2.0 * m_fFlatO) * fOrigin + m_fFlatOne - m_fLimit);
    }

    Interval getVerticals(double fOrigin, double fHorizontal) const
    {
        const double fConstant = (m_fOO * fOrigin + 2.0 * m_fO) * fOrigin +
                                 (m_fHH * fHorizontal + 2.0 * (m_fOH * fOrigin + m_fH)) * fHorizontal + m_fOne - m_fLimit;
        return solve(m_fVV, m_fOV * fOrigin + m_fHV * fHorizontal + m_fV, fConstant);
    }

private:
    void add(double fA, double fB, double fC, double fT)
    {
        m_fOO += fA * fA;
        m_fOH += fA * fB;
        m_fOV += fA * fC;
        m_fHH += fB * fB;
        m_fHV += fB * fC;
        m_fVV += fC * fC;
        m_fO -= fA * fT;
        m_fH -= fB * fT;
        m_fV -= fC * fT;
        m_fOne += fT * fT;
        m_fCount += 1.0;
    }

    double m_fOO = 0, m_fOH = 0, m_fOV = 0, m_fHH = 0, m_fHV = 0, m_fVV = 0;
    double m_fO = 0, m_fH = 0, m_fV = 0, m_fOne = 0, m_fCount = 0;
    double m_fFlatOO, m_fFlatOH, m_fFlatHH, m_fFlatO, m_fFlatH, m_fFlatOne;
    double m_fRounding;
    double m_fLimit = 0.0;
};

/// The bytes V with which no pixel of the far corner is clamped.
Interval findUnclamped(int32_t iOrigin, int32_t iHorizontal)
{
    Interval interval{-1e9, 1e9};
    for (const auto& [x, y] : {std::array{2, 3}, std::array{3, 2}, std::array{3, 3}})
    {
        const int32_t iRest = (4 - x - y) * iOrigin + x * iHorizontal;
        interval.fLow = std::max(interval.fLow, static_cast<double>(-2 - iRest) / y);
        interval.fHigh = std::min(interval.fHigh, static_cast<double>(1021 - iRest) / y);
    }
    return interval;
}

/// @param iValue  a decoded value in quarters, with the half that rounds
uint32_t squaredError(int32_t iValue, uint8_t ui8Pixel)
{
    const int32_t iDifference = std::clamp(iValue >> 2, 0, 255) - ui8Pixel;
    return static_cast<uint32_t>(iDifference * iDifference);
}

/// Searches one channel.
template <uint32_t uiBits>
class ChannelSearch
{
public:
    /// @param uiBound  the greatest squared error that may be found
    ChannelSearch(const ChannelValues& values, uint32_t uiBound) : m_values(values), m_near(values, 4), m_all(values, 6)
    {
        // No error is greater than the start, and one more is still a number.
        setBest(std::min(uiBound, k_uiEtcMaxPlainError) + 1);
    }

    /// Finds the first levels of least error in the order of origin, horizontal, vertical.
    /// @return false if every error is above the bound
    bool run(ChannelLevels& found)
    {
        for (uint32_t uiOrigin = 0; uiOrigin < L::k_uiCount && m_uiBest > 0; ++uiOrigin)
        {
            const int32_t iOrigin = L::toByte(uiOrigin);
            if (squaredError(4 * iOrigin + 2, m_values[0]) >= m_uiBest)
                continue;
            const Interval horizontals = m_near.getHorizontals(iOrigin);
            for (uint32_t i = firstLevel(horizontals); i < L::k_uiCount && L::toByte(i) <= horizontals.fHigh; ++i)
                tryHorizontal(uiOrigin, i);
        }
        if (m_bFound)
            found = m_found;
        return m_bFound;
    }

private:
    using L = Level<uiBits>;

    void setBest(uint32_t uiBest)
    {
        m_uiBest = uiBest;
        m_near.setLimit(uiBest > 0 ? uiBest - 1 : 0);
        m_all.setLimit(uiBest > 0 ? uiBest - 1 : 0);
    }

    /// The first level of an interval; the count of levels if it is empty or beyond them.
    static uint32_t firstLevel(const Interval& interval)
    {
        if (interval.isEmpty() || interval.fLow > 255.0)
            return L::k_uiCount;
        return L::atLeast(static_cast<uint32_t>(std::ceil(std::max(interval.fLow, 0.0))));
    }

    void tryHorizontal(uint32_t uiOrigin, uint32_t uiHorizontal)
    {
        const int32_t iOrigin = L::toByte(uiOrigin);
        const int32_t iHorizontal = L::toByte(uiHorizontal);
        const Interval near = m_near.getVerticals(iOrigin, iHorizontal);
        if (near.isEmpty())
            return;
        uint32_t uiRow = 0;
        for (int32_t x = 0; x < 4; ++x)
            uiRow += squaredError(x * (iHorizontal - iOrigin) + 4 * iOrigin + 2, pixelAt(m_values, x, 0));
        if (uiRow >= m_uiBest)
            return;
        const Interval unclamped = findUnclamped(iOrigin, iHorizontal);
        const Interval all = m_all.getVerticals(iOrigin, iHorizontal);
        // In ascending order: clamped at 0, not clamped, clamped at 255.
        tryVerticals({near.fLow, std::min(near.fHigh, unclamped.fLow)}, uiOrigin, uiHorizontal, uiRow);
        tryVerticals({std::max(all.fLow, unclamped.fLow), std::min(all.fHigh, unclamped.fHigh)}, uiOrigin, uiHorizontal, uiRow);
        tryVerticals({std::max(near.fLow, unclamped.fHigh), near.fHigh}, uiOrigin, uiHorizontal, uiRow);
    }

    void tryVerticals(const Interval& interval, uint32_t uiOrigin, uint32_t uiHorizontal, uint32_t uiRow)
    {
        for (uint32_t i = firstLevel(interval); i < L::k_uiCount && L::toByte(i) <= interval.fHigh; ++i)
        {
            const uint32_t uiError = addRows(L::toByte(uiOrigin), L::toByte(uiHorizontal), L::toByte(i), uiRow);
            if (uiError < m_uiBest)
            {
                setBest(uiError);
                m_found = {uiOrigin, uiHorizontal, i};
                m_bFound = true;
            }
        }
    }

    /// The three lower rows, added to uiSum; it stops after a row when the sum is too great.
    uint32_t addRows(int32_t iOrigin, int32_t iHorizontal, int32_t iVertical, uint32_t uiSum) const
    {
        for (int32_t y = 1; y < 4 && uiSum < m_uiBest; ++y)
        {
            const int32_t iStart = y * (iVertical - iOrigin) + 4 * iOrigin + 2;
            for (int32_t x = 0; x < 4; ++x)
                uiSum += squaredError(x * (iHorizontal - iOrigin) + iStart, pixelAt(m_values, x, y));
        }
        return uiSum;
    }

    const ChannelValues& m_values;
    PlaneDistance m_near;
    PlaneDistance m_all;
    uint32_t m_uiBest = 0;
    ChannelLevels m_found{};
    bool m_bFound = false;
};

/// @param uiRed, uiGreen, uiBlue  the greatest squared error of each channel that may be found
bool searchChannels(const EtcPixels& pixels, uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, EtcBlockWords& compact)
{
    ChannelLevels red, green, blue;
    if (!ChannelSearch<6>(pixels.aui8Red, uiRed).run(red) || !ChannelSearch<7>(pixels.aui8Green, uiGreen).run(green) ||
        !ChannelSearch<6>(pixels.aui8Blue, uiBlue).run(blue))
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
