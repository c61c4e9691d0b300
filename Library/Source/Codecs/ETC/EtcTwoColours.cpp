#include "Codecs/ETC/EtcTwoColours.h"

#include <algorithm>
#include <cmath>

#include "Codecs/ETC/EtcRandom.h"

namespace moxtexture
{

namespace
{

using Point = std::array<double, 3>;

struct HalfIntensity
{
    static constexpr bool k_bRGB = false;
    static constexpr double k_fFirstWeight = 0.5;
};

struct NoIntensity
{
    static constexpr bool k_bRGB = false;
    static constexpr double k_fFirstWeight = 0.0;
};

struct RGB
{
    static constexpr bool k_bRGB = true;
    static constexpr double k_fFirstWeight = 1.0;
};

constexpr uint32_t k_uiSeed = 10000;
constexpr uint32_t k_uiMostAttempts = 10;
constexpr uint32_t k_uiMostIterations = 10;
constexpr double k_fStartError = 3.0 * 16.0 * 512.0 * 512.0;

const double k_fRoot2 = std::sqrt(2.0);
const double k_fRoot3 = std::sqrt(3.0);
const double k_fRoot6 = std::sqrt(6.0);

Point toTransformed(double fRed, double fGreen, double fBlue)
{
    return {(fRed + fGreen + fBlue) / k_fRoot3, (fRed - fGreen) / k_fRoot2, (fRed + fGreen - 2.0 * fBlue) / k_fRoot6};
}

Point fromTransformed(const Point& p)
{
    const double i = p[0] / k_fRoot3;
    const double c2 = p[2] / k_fRoot6;
    return {i + p[1] / k_fRoot2 + c2, i - p[1] / k_fRoot2 + c2, i - 2.0 * p[2] / k_fRoot6};
}

template <typename Space>
double distance(const Point& a, const Point& b)
{
    const double d0 = a[0] - b[0];
    const double d1 = a[1] - b[1];
    const double d2 = a[2] - b[2];
    return Space::k_fFirstWeight * (d0 * d0) + d1 * d1 + d2 * d2;
}

template <typename Space>
EtcColourPair cluster(const EtcPixels& pixels, bool bStartsAgain)
{
    std::array<Point, 16> points;
    Point most{-512.0, -512.0, -512.0};
    Point least{512.0, 512.0, 512.0};
    for (size_t i = 0; i < 16; ++i)
    {
        const double fRed = pixels.aui8Red[i];
        const double fGreen = pixels.aui8Green[i];
        const double fBlue = pixels.aui8Blue[i];
        points[i] = Space::k_bRGB ? Point{fRed, fGreen, fBlue} : toTransformed(fRed, fGreen, fBlue);
        for (size_t c = 0; c < 3; ++c)
        {
            most[c] = std::max(most[c], points[i][c]);
            least[c] = std::min(least[c], points[i][c]);
        }
    }

    CEtcRandom random(k_uiSeed);
    double fBest = k_fStartError;
    double fPrevious = k_fStartError;
    std::array<Point, 2> best{};
    bool bSeed = true;
    for (uint32_t uiAttempt = 0; uiAttempt < k_uiMostAttempts && bSeed; ++uiAttempt)
    {
        bSeed = false;
        std::array<Point, 2> centres;
        for (Point& centre : centres)
            for (size_t c = 0; c < 3; ++c)
                centre[c] = random.next() / double{CEtcRandom::k_uiMaximum} * (most[c] - least[c]) + least[c];

        bool bIterate = true;
        for (uint32_t uiIteration = 0; uiIteration < k_uiMostIterations && bIterate; ++uiIteration)
        {
            if constexpr (Space::k_bRGB)
                for (Point& centre : centres)
                    for (double& fChannel : centre)
                        fChannel = static_cast<int32_t>(fChannel + 0.5);

            std::array<Point, 2> sums{};
            std::array<uint32_t, 2> auiCounts{};
            double fError = 0.0;
            for (const Point& point : points)
            {
                const double d0 = distance<Space>(point, centres[0]);
                const double d1 = distance<Space>(point, centres[1]);
                const size_t uiNearest = d1 > d0 ? 0 : 1;
                fError += std::min(d0, d1);
                ++auiCounts[uiNearest];
                for (size_t c = 0; c < 3; ++c)
                    sums[uiNearest][c] += point[c];
            }

            if (fError == 0.0)
                bIterate = false;
            if (fError == fPrevious)
            {
                bIterate = false;
                bSeed = bStartsAgain;
            }
            fPrevious = fError;
            if (fBest > fError)
            {
                fBest = fError;
                best = centres;
            }
            if (auiCounts[0] == 0 || auiCounts[1] == 0)
            {
                bIterate = false;
                bSeed = true;
                continue;
            }
            for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
                for (size_t c = 0; c < 3; ++c)
                    centres[uiCentre][c] = sums[uiCentre][c] / auiCounts[uiCentre];
        }
    }

    EtcColourPair colours;
    for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
    {
        const Point rgb = Space::k_bRGB ? best[uiCentre] : fromTransformed(best[uiCentre]);
        for (size_t c = 0; c < 3; ++c)
            colours[uiCentre][c] = static_cast<uint8_t>(std::clamp(rgb[c], 0.0, 255.0) + 0.5);
    }
    return colours;
}

} // namespace

EtcColourPair lbgHalfIntensity(const EtcPixels& pixels)
{
    return cluster<HalfIntensity>(pixels, false);
}

EtcColourPair lbgNoIntensityT(const EtcPixels& pixels)
{
    return cluster<NoIntensity>(pixels, false);
}

EtcColourPair lbgNoIntensityH(const EtcPixels& pixels)
{
    return cluster<NoIntensity>(pixels, true);
}

EtcColourPair lbgRGBT(const EtcPixels& pixels)
{
    return cluster<RGB>(pixels, false);
}

EtcColourPair lbgRGBH(const EtcPixels& pixels)
{
    return cluster<RGB>(pixels, true);
}

EtcColourPair quantise444Pair(const EtcColourPair& bytes)
{
    EtcColourPair levels;
    for (size_t uiColour = 0; uiColour < 2; ++uiColour)
        for (size_t c = 0; c < 3; ++c)
            levels[uiColour][c] = static_cast<uint8_t>((15 * bytes[uiColour][c] + 120) / 255);
    return levels;
}

} // namespace moxtexture
