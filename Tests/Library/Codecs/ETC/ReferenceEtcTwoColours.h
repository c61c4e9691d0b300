#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcTwoColours.h"

/// The clustering of two colours, step by step and slow. The library's forms must give the same bytes.
namespace etcreference
{

enum class EClusterSpace
{
    eHalfIntensity,
    eNoIntensity,
    eRGB
};

using ClusterPoint = std::array<double, 3>;

inline ClusterPoint toClusterSpace(const ClusterPoint& rgb, EClusterSpace eSpace)
{
    if (eSpace == EClusterSpace::eRGB)
        return rgb;
    return {(rgb[0] + rgb[1] + rgb[2]) / std::sqrt(3.0), (rgb[0] - rgb[1]) / std::sqrt(2.0),
            (rgb[0] + rgb[1] - 2.0 * rgb[2]) / std::sqrt(6.0)};
}

inline ClusterPoint fromClusterSpace(const ClusterPoint& p, EClusterSpace eSpace)
{
    if (eSpace == EClusterSpace::eRGB)
        return p;
    ClusterPoint rgb = {p[0] / std::sqrt(3.0) + p[1] / std::sqrt(2.0) + p[2] / std::sqrt(6.0),
                        p[0] / std::sqrt(3.0) - p[1] / std::sqrt(2.0) + p[2] / std::sqrt(6.0),
                        p[0] / std::sqrt(3.0) + 0.0 * p[1] - 2.0 * p[2] / std::sqrt(6.0)};
    for (double& fChannel : rgb)
        fChannel = std::min(std::max(fChannel, 0.0), 255.0);
    return rgb;
}

inline double clusterDistance(const ClusterPoint& a, const ClusterPoint& b, EClusterSpace eSpace)
{
    const double fFirstWeight = eSpace == EClusterSpace::eHalfIntensity ? 0.5 : eSpace == EClusterSpace::eNoIntensity ? 0.0 : 1.0;
    double fSum = fFirstWeight * ((a[0] - b[0]) * (a[0] - b[0]));
    fSum = fSum + (a[1] - b[1]) * (a[1] - b[1]);
    fSum = fSum + (a[2] - b[2]) * (a[2] - b[2]);
    return fSum;
}

/// Tells how a run went, for tests that look at the branches.
struct ClusterTrace
{
    int iSeeds = 0;
    int iIterations = 0;
    double fBestError = 0.0;
};

inline moxtexture::EtcColourPair clusterTwoColours(const moxtexture::EtcPixels& pixels, EClusterSpace eSpace, bool bSeedsAgainOnRepeat,
                                                   ClusterTrace* pTrace = nullptr)
{
    uint32_t ui32State = 10000;
    const auto random = [&]
    {
        ui32State = ui32State * 214013u + 2531011u;
        return static_cast<double>((ui32State >> 16) & 0x7FFFu);
    };

    std::array<ClusterPoint, 16> aPoints{};
    ClusterPoint maximum = {-512.0, -512.0, -512.0};
    ClusterPoint minimum = {512.0, 512.0, 512.0};
    for (size_t i = 0; i < 16; ++i)
    {
        aPoints[i] = toClusterSpace(
            {static_cast<double>(pixels.aui8Red[i]), static_cast<double>(pixels.aui8Green[i]), static_cast<double>(pixels.aui8Blue[i])},
            eSpace);
        for (size_t c = 0; c < 3; ++c)
        {
            maximum[c] = std::max(maximum[c], aPoints[i][c]);
            minimum[c] = std::min(minimum[c], aPoints[i][c]);
        }
    }

    double fBestError = 12582912.0;
    double fPreviousError = 12582912.0;
    std::array<ClusterPoint, 2> best{};
    bool bSeedAgain = true;
    for (int iSeed = 0; iSeed < 10 && bSeedAgain; ++iSeed)
    {
        bSeedAgain = false;
        std::array<ClusterPoint, 2> centres{};
        for (ClusterPoint& centre : centres)
            for (size_t c = 0; c < 3; ++c)
                centre[c] = random() / 32767.0 * (maximum[c] - minimum[c]) + minimum[c];
        if (pTrace)
            ++pTrace->iSeeds;

        bool bIterateAgain = true;
        for (int iIteration = 0; iIteration < 10 && bIterateAgain; ++iIteration)
        {
            if (pTrace)
                ++pTrace->iIterations;
            if (eSpace == EClusterSpace::eRGB)
                for (ClusterPoint& centre : centres)
                    for (double& fChannel : centre)
                        fChannel = static_cast<double>(static_cast<int>(fChannel + 0.5));

            double fError = 0.0;
            std::array<size_t, 16> aCentre{};
            int n0 = 0;
            for (size_t i = 0; i < 16; ++i)
            {
                const double d0 = clusterDistance(aPoints[i], centres[0], eSpace);
                const double d1 = clusterDistance(aPoints[i], centres[1], eSpace);
                if (d1 > d0)
                {
                    aCentre[i] = 0;
                    fError = fError + d0;
                    ++n0;
                }
                else
                {
                    aCentre[i] = 1;
                    fError = fError + d1;
                }
            }

            if (fError == 0.0)
            {
                bIterateAgain = false;
                bSeedAgain = false;
            }
            if (fError == fPreviousError)
            {
                bIterateAgain = false;
                bSeedAgain = bSeedsAgainOnRepeat;
            }
            fPreviousError = fError;
            if (fBestError > fError)
            {
                fBestError = fError;
                best = centres;
            }
            if (n0 != 0 && n0 != 16)
            {
                for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
                {
                    ClusterPoint sum = {0.0, 0.0, 0.0};
                    for (size_t i = 0; i < 16; ++i)
                        if (aCentre[i] == uiCentre)
                            for (size_t c = 0; c < 3; ++c)
                                sum[c] = sum[c] + aPoints[i][c];
                    for (size_t c = 0; c < 3; ++c)
                        centres[uiCentre][c] = sum[c] / static_cast<double>(uiCentre == 0 ? n0 : 16 - n0);
                }
            }
            else
            {
                bIterateAgain = false;
                bSeedAgain = true;
            }
        }
    }
    if (pTrace)
        pTrace->fBestError = fBestError;

    moxtexture::EtcColourPair colours{};
    for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
    {
        const ClusterPoint rgb = fromClusterSpace(best[uiCentre], eSpace);
        for (size_t c = 0; c < 3; ++c)
            colours[uiCentre][c] = static_cast<uint8_t>(rgb[c] + 0.5);
    }
    return colours;
}

inline moxtexture::EtcColourPair lbgHalfIntensity(const moxtexture::EtcPixels& pixels)
{
    return clusterTwoColours(pixels, EClusterSpace::eHalfIntensity, false);
}

inline moxtexture::EtcColourPair lbgNoIntensityT(const moxtexture::EtcPixels& pixels)
{
    return clusterTwoColours(pixels, EClusterSpace::eNoIntensity, false);
}

inline moxtexture::EtcColourPair lbgNoIntensityH(const moxtexture::EtcPixels& pixels)
{
    return clusterTwoColours(pixels, EClusterSpace::eNoIntensity, true);
}

inline moxtexture::EtcColourPair lbgRGBT(const moxtexture::EtcPixels& pixels)
{
    return clusterTwoColours(pixels, EClusterSpace::eRGB, false);
}

inline moxtexture::EtcColourPair lbgRGBH(const moxtexture::EtcPixels& pixels)
{
    return clusterTwoColours(pixels, EClusterSpace::eRGB, true);
}

inline moxtexture::EtcColourPair quantise444Pair(const moxtexture::EtcColourPair& bytes)
{
    moxtexture::EtcColourPair levels{};
    for (size_t i = 0; i < 2; ++i)
        for (size_t c = 0; c < 3; ++c)
            levels[i][c] = static_cast<uint8_t>(std::min((15 * int{bytes[i][c]} + 120) / 255, 255));
    return levels;
}

} // namespace etcreference
