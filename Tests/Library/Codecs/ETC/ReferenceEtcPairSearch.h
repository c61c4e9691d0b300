#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "ReferenceEtcTModes.h"

/// The exhaustive searches of T and H mode's colour pairs, written out: every table in full, then one sum after the other.
namespace etcreference
{

/// Two colours of twelve bits (R, G, B nibbles, red uppermost) and the error of their best distance.
struct FoundPair
{
    uint32_t uiFirst = 0;
    uint32_t uiSecond = 0;
    uint32_t uiError = 0;
    bool bImproved = false;
};

/// The paints of one colour: how often the distance is added to it.
using PaintSigns = std::vector<int>;

/// Squared errors of one channel's paints at every pixel, weighted.
inline std::array<uint32_t, 16> paintSquares(const std::array<uint8_t, 16>& aui8Pixels, uint32_t uiLevel, int iOffset, int iWeight)
{
    std::array<uint32_t, 16> squares{};
    const int iPaint = clampByte(expandFour(static_cast<int>(uiLevel)) + iOffset);
    for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
        squares[uiPixel] = static_cast<uint32_t>(iWeight * (iPaint - aui8Pixels[uiPixel]) * (iPaint - aui8Pixels[uiPixel]));
    return squares;
}

/// Least errors over a colour's paints for every colour of `uiChannels` channels (red, then green, then blue), every distance and
/// every pixel. Channels that are left out count nothing.
class PairTable
{
public:
    PairTable(const moxtexture::EtcPixels& pixels, const std::array<int, 3>& weights, const PaintSigns& signs, uint32_t uiChannels)
        : m_errors((size_t{1} << (4 * uiChannels)) * 8 * 16, UINT32_MAX)
    {
        const std::array<uint8_t, 16>* const planes[] = {&pixels.aui8Red, &pixels.aui8Green, &pixels.aui8Blue};
        const uint32_t uiColours = 1u << (4 * uiChannels);
        for (size_t uiDistance = 0; uiDistance < 8; ++uiDistance)
            for (const int iSign : signs)
            {
                std::array<std::array<std::array<uint32_t, 16>, 16>, 3> squares{};
                for (uint32_t c = 0; c < uiChannels; ++c)
                    for (uint32_t uiLevel = 0; uiLevel < 16; ++uiLevel)
                        squares[c][uiLevel] = paintSquares(*planes[c], uiLevel, iSign * k_aiDistances[uiDistance], weights[c]);
                for (uint32_t uiColour = 0; uiColour < uiColours; ++uiColour)
                {
                    std::array<uint32_t, 16> sums{};
                    for (uint32_t c = 0; c < uiChannels; ++c)
                        for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
                            sums[uiPixel] += squares[c][uiColour >> (4 * (uiChannels - 1 - c)) & 15][uiPixel];
                    uint32_t* const pRow = &m_errors[(uiColour * 8 + uiDistance) * 16];
                    for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
                        pRow[uiPixel] = std::min(pRow[uiPixel], sums[uiPixel]);
                }
            }
    }

    const uint32_t* row(uint32_t uiColour, size_t uiDistance) const { return &m_errors[(uiColour * 8 + uiDistance) * 16]; }

private:
    std::vector<uint32_t> m_errors;
};

/// Least over the distances of the sum over the pixels of the lesser entry, or uiBound where no sum stays below it.
inline uint32_t pairError(const PairTable& first, uint32_t uiFirst, const PairTable& second, uint32_t uiSecond, uint32_t uiBound)
{
    for (size_t uiDistance = 0; uiDistance < 8; ++uiDistance)
    {
        const uint32_t* const pFirst = first.row(uiFirst, uiDistance);
        const uint32_t* const pSecond = second.row(uiSecond, uiDistance);
        uint32_t uiSum = 0;
        for (size_t uiPixel = 0; uiPixel < 16 && uiSum < uiBound; ++uiPixel)
            uiSum += std::min(pFirst[uiPixel], pSecond[uiPixel]);
        uiBound = std::min(uiBound, uiSum);
    }
    return uiBound;
}

/// @param bOrdered  the second colour starts at the first one, and is never equal to it when whole
inline FoundPair searchPairs(const moxtexture::EtcPixels& pixels, const std::array<int, 3>& weights, const PaintSigns& firstSigns,
                             const PaintSigns& secondSigns, bool bOrdered, uint32_t uiBound)
{
    const PairTable firstRed(pixels, weights, firstSigns, 1);
    const PairTable firstGreen(pixels, weights, firstSigns, 2);
    const PairTable firstBlue(pixels, weights, firstSigns, 3);
    const PairTable secondRed(pixels, weights, secondSigns, 1);
    const PairTable secondGreen(pixels, weights, secondSigns, 2);
    const PairTable secondBlue(pixels, weights, secondSigns, 3);

    FoundPair best;
    best.uiError = uiBound;
    for (uint32_t r1 = 0; r1 < 16; ++r1)
        for (uint32_t r2 = bOrdered ? r1 : 0; r2 < 16; ++r2)
        {
            if (pairError(firstRed, r1, secondRed, r2, best.uiError) >= best.uiError)
                continue;
            for (uint32_t g1 = 0; g1 < 16; ++g1)
                for (uint32_t g2 = 0; g2 < 16; ++g2)
                {
                    const uint32_t rg1 = r1 << 4 | g1;
                    const uint32_t rg2 = r2 << 4 | g2;
                    if (bOrdered && rg1 > rg2)
                        continue;
                    if (pairError(firstGreen, rg1, secondGreen, rg2, best.uiError) >= best.uiError)
                        continue;
                    for (uint32_t b1 = 0; b1 < 16; ++b1)
                        for (uint32_t b2 = 0; b2 < 16; ++b2)
                        {
                            const uint32_t uiFirst = rg1 << 4 | b1;
                            const uint32_t uiSecond = rg2 << 4 | b2;
                            if (bOrdered && uiFirst >= uiSecond)
                                continue;
                            const uint32_t uiError = pairError(firstBlue, uiFirst, secondBlue, uiSecond, best.uiError);
                            if (uiError < best.uiError)
                                best = {uiFirst, uiSecond, uiError, true};
                        }
                }
        }
    return best;
}

inline moxtexture::EtcColour levelsOfTwelveBits(uint32_t uiNumber)
{
    return {static_cast<uint8_t>(uiNumber / 256), static_cast<uint8_t>(uiNumber / 16 % 16), static_cast<uint8_t>(uiNumber % 16)};
}

} // namespace etcreference
