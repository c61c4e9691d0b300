#pragma once

#include <algorithm>
#include <cstdint>

#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcTables.h"
#include "Codecs/ETC/EtcTryTables.h"

// The search of modifiers as one would tell it, candidate by candidate.
namespace etcreference
{

using moxtexture::EEtcHalf;
using moxtexture::EtcColour;
using moxtexture::EtcHalfFit;
using moxtexture::EtcPixels;

struct HalfArea
{
    uint32_t uiX, uiY, uiWidth, uiHeight;
};

inline HalfArea areaOf(EEtcHalf eHalf)
{
    switch (eHalf)
    {
    case moxtexture::eEtcLeft:
        return {0, 0, 2, 4};
    case moxtexture::eEtcRight:
        return {2, 0, 2, 4};
    case moxtexture::eEtcTop:
        return {0, 0, 4, 2};
    default:
        return {0, 2, 4, 2};
    }
}

/// @param weighDifferences  (dR, dG, dB) -> E
/// @param start  what the first table has to be below
template <typename E, typename Measure>
EtcHalfFit<E> tryAllTablesBy(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base, E start, Measure weighDifferences)
{
    const HalfArea area = areaOf(eHalf);
    EtcHalfFit<E> best;
    best.error = start;
    for (uint32_t uiTable = 0; uiTable < 8; ++uiTable)
    {
        uint32_t ui32Msb = 0;
        uint32_t ui32Lsb = 0;
        E sum = 0;
        for (uint32_t x = area.uiX; x < area.uiX + area.uiWidth; ++x)
            for (uint32_t y = area.uiY; y < area.uiY + area.uiHeight; ++y)
            {
                const size_t uiPixel = moxtexture::etcPixelIndex(x, y);
                uint32_t uiBestPosition = 0;
                E least = 0;
                for (uint32_t uiPosition = 0; uiPosition < 4; ++uiPosition)
                {
                    const int32_t iModifier = moxtexture::k_aaiEtcModifiers[uiTable][uiPosition];
                    const int32_t iRed = pixels.aui8Red[uiPixel] - std::clamp(base[0] + iModifier, 0, 255);
                    const int32_t iGreen = pixels.aui8Green[uiPixel] - std::clamp(base[1] + iModifier, 0, 255);
                    const int32_t iBlue = pixels.aui8Blue[uiPixel] - std::clamp(base[2] + iModifier, 0, 255);
                    const E error = weighDifferences(iRed, iGreen, iBlue);
                    if (uiPosition == 0 || error < least)
                    {
                        least = error;
                        uiBestPosition = uiPosition;
                    }
                }
                sum += least;
                const uint32_t uiIndex = moxtexture::k_aui8EtcIndexOfPosition[uiBestPosition];
                ui32Msb |= (uiIndex >> 1) << (x * 4 + y);
                ui32Lsb |= (uiIndex & 1) << (x * 4 + y);
            }
        if (sum < best.error)
            best = {uiTable, ui32Msb << 16 | ui32Lsb, sum};
    }
    return best;
}

inline EtcHalfFit<uint32_t> tryAllTables(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    return tryAllTablesBy(pixels, eHalf, base, moxtexture::k_uiEtcMaxPlainError,
                          [](int32_t iRed, int32_t iGreen, int32_t iBlue)
                          { return static_cast<uint32_t>(iRed * iRed + iGreen * iGreen + iBlue * iBlue); });
}

inline EtcHalfFit<float> tryAllTablesPerceptual(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    return tryAllTablesBy(pixels, eHalf, base, 3.1212e6f,
                          [](int32_t iRed, int32_t iGreen, int32_t iBlue)
                          {
                              return 0.299f * static_cast<float>(iRed * iRed) + 0.587f * static_cast<float>(iGreen * iGreen) +
                                     0.114f * static_cast<float>(iBlue * iBlue);
                          });
}

inline EtcHalfFit<uint32_t> tryAllTablesWeighted(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
{
    return tryAllTablesBy(pixels, eHalf, base, moxtexture::k_uiEtcMaxPerceptualError,
                          [](int32_t iRed, int32_t iGreen, int32_t iBlue)
                          { return static_cast<uint32_t>(299 * iRed * iRed + 587 * iGreen * iGreen + 114 * iBlue * iBlue); });
}

} // namespace etcreference
