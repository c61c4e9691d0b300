#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcTables.h"

/// The searches of alpha blocks step by step, slow and plain: what the library ships equals them byte for byte.
namespace etcreference
{

inline int32_t clampAlpha(int32_t iValue)
{
    return std::clamp(iValue, 0, 255);
}

struct AlphaChoice
{
    int32_t iBase = 128;
    int32_t iRow = -3;
    int32_t iSum = 1000000000;
};

struct AlphaScans
{
    int32_t iLowEnd; ///< the scan for pixels at or below the base tries the indices before this
    int32_t iScales[3];
    int32_t iFirstReach;  ///< bases to either side of the mean, at the first scale
    int32_t iLaterSteps;  ///< steps to either side of the best base, at the later scales
    bool bLeaving = true; ///< false in a test that shows what leaving the pixels early does
};

inline int32_t squareOf(int32_t iValue)
{
    return iValue * iValue;
}

/// The least square of one pixel by the scan that its side of the base takes.
inline int32_t scanPixel(int32_t iPixel, int32_t iBase, const std::array<int32_t, 8>& row, int32_t iLowEnd)
{
    int32_t iBest = 1000000000;
    if (iPixel <= iBase)
    {
        for (int32_t k = 0; k < iLowEnd; ++k)
        {
            const int32_t iSquare = squareOf(clampAlpha(iBase + row[static_cast<size_t>(k)]) - iPixel);
            if (iSquare >= iBest)
                break;
            iBest = iSquare;
        }
    }
    else
    {
        for (int32_t k = 7; k >= 4; --k)
        {
            const int32_t iSquare = squareOf(clampAlpha(iBase + row[static_cast<size_t>(k)]) - iPixel);
            if (iSquare > iBest)
                break;
            iBest = iSquare;
        }
    }
    return iBest;
}

inline void tryAlphaRow(const moxtexture::EtcAlphas& alphas, int32_t iRow, int32_t iMean, const AlphaScans& scans, AlphaChoice& best)
{
    const std::array<int32_t, 8>& row = moxtexture::alphaModifierTable[static_cast<size_t>(iRow)];
    int32_t iPreviousBase = iMean;
    int32_t iRowBest = 1000000000;
    for (size_t uiScale = 0; uiScale < 3; ++uiScale)
    {
        const int32_t iScale = scans.iScales[uiScale];
        const int32_t iCentre = uiScale == 0 ? iMean : iPreviousBase;
        const int32_t iReach = uiScale == 0 ? scans.iFirstReach : scans.iLaterSteps * iScale;
        const int32_t iStart = clampAlpha(iCentre - iReach);
        const int32_t iEnd = clampAlpha(iCentre + iReach);
        for (int32_t iBase = iStart; iBase <= iEnd; iBase += iScale)
        {
            int32_t iSum = 0;
            bool bLeft = false;
            for (size_t x = 0; x < 4 && !bLeft; ++x)
                for (size_t y = 0; y < 4 && !bLeft; ++y)
                {
                    iSum += scanPixel(alphas.aui8[y * 4 + x], iBase, row, scans.iLowEnd);
                    bLeft = scans.bLeaving && iSum > best.iSum;
                }
            if (iSum < iRowBest)
            {
                iRowBest = iSum;
                iPreviousBase = iBase;
            }
            if (iSum < best.iSum)
                best = {iBase, iRow, iSum};
        }
    }
}

inline int32_t meanAlpha(const moxtexture::EtcAlphas& alphas)
{
    int32_t iSum = 0;
    for (const uint8_t ui8Alpha : alphas.aui8)
        iSum += ui8Alpha;
    return static_cast<int32_t>(static_cast<float>(iSum) * 0.0625f + 0.5f);
}

inline void writeAlphaBlock(const moxtexture::EtcAlphas& alphas, const AlphaChoice& best, uint8_t* pui8Destination)
{
    pui8Destination[0] = static_cast<uint8_t>(best.iBase);
    pui8Destination[1] = static_cast<uint8_t>(best.iRow);
    std::fill(pui8Destination + 2, pui8Destination + 8, uint8_t{0});
    uint32_t uiBit = 0;
    for (size_t x = 0; x < 4; ++x)
        for (size_t y = 0; y < 4; ++y)
        {
            int32_t iLeast = 1000000;
            uint32_t uiIndex = 0;
            for (uint32_t k = 0; k < 8; ++k)
            {
                const int32_t iModifier = moxtexture::alphaModifierTable[static_cast<size_t>(best.iRow)][k];
                const int32_t iSquare = squareOf(clampAlpha(best.iBase + iModifier) - alphas.aui8[y * 4 + x]);
                if (iSquare < iLeast)
                {
                    iLeast = iSquare;
                    uiIndex = k;
                }
            }
            for (uint32_t i = 0; i < 3; ++i, ++uiBit)
                if ((uiIndex >> (2 - i) & 1) != 0)
                    pui8Destination[2 + uiBit / 8] = static_cast<uint8_t>(pui8Destination[2 + uiBit / 8] | 0x80u >> uiBit % 8);
        }
}

inline AlphaChoice searchAlphaFast(const moxtexture::EtcAlphas& alphas, bool bLeaving = true)
{
    const AlphaScans scans = {4, {16, 4, 1}, 64, 2, bLeaving};
    const int32_t iMean = meanAlpha(alphas);
    int32_t iMaxDistance = -2;
    for (const uint8_t ui8Alpha : alphas.aui8)
        iMaxDistance = std::max(iMaxDistance, std::abs(iMean - ui8Alpha));
    const int32_t iApproximateRow = std::min(iMaxDistance * 255 / 160 - 4, 255);
    const int32_t iStart = std::max(iApproximateRow - 15, 0);
    const int32_t iEnd = std::clamp(iApproximateRow + 15, 0, 255);
    AlphaChoice best;
    for (int32_t iRow = iStart; iRow < iEnd && best.iSum > 0; ++iRow)
        tryAlphaRow(alphas, iRow, iMean, scans, best);
    return best;
}

inline AlphaChoice searchAlphaThorough(const moxtexture::EtcAlphas& alphas)
{
    constexpr AlphaScans scans = {5, {32, 4, 1}, 128, 4};
    const int32_t iMean = meanAlpha(alphas);
    AlphaChoice best;
    for (int32_t iRow = 0; iRow < 256 && best.iSum > 0; ++iRow)
        tryAlphaRow(alphas, iRow, iMean, scans, best);
    return best;
}

inline void alphaBlockFast(const moxtexture::EtcAlphas& alphas, uint8_t* pui8Destination)
{
    writeAlphaBlock(alphas, searchAlphaFast(alphas), pui8Destination);
}

inline void alphaBlockThorough(const moxtexture::EtcAlphas& alphas, uint8_t* pui8Destination)
{
    writeAlphaBlock(alphas, searchAlphaThorough(alphas), pui8Destination);
}

} // namespace etcreference
