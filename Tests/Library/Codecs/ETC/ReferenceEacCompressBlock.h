#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Codecs/ETC/EacBlock.h"

/// The search of 11-bit blocks as one loop over everything, in doubles, with a table of all values: what the library ships equals
/// it byte for byte.
namespace etcreference
{

/// 256 bases by 16 tables by 16 multipliers by 8 indices.
inline std::vector<uint16_t> makeEacValues(bool bSigned)
{
    std::vector<uint16_t> values;
    values.reserve(256 * 16 * 16 * 8);
    for (uint32_t uiBase = 0; uiBase < 256; ++uiBase)
        for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
            for (uint32_t uiMultiplier = 0; uiMultiplier < 16; ++uiMultiplier)
                for (uint32_t uiIndex = 0; uiIndex < 8; ++uiIndex)
                    values.push_back(moxtexture::eacValue(uiBase, uiTable, uiMultiplier, uiIndex, bSigned));
    return values;
}

inline const std::vector<uint16_t>& getEacValues(bool bSigned)
{
    static const std::vector<uint16_t> unsignedValues = makeEacValues(false);
    static const std::vector<uint16_t> signedValues = makeEacValues(true);
    return bSigned ? signedValues : unsignedValues;
}

inline double squareOnCircle(uint16_t ui16Pixel, uint16_t ui16Value)
{
    const double fDifference = static_cast<int16_t>(static_cast<uint16_t>(ui16Pixel - ui16Value));
    return fDifference * fDifference;
}

inline double eacBlockError(const uint16_t (&aui16Pixels)[16], const uint16_t* pui16Candidates, double fBound)
{
    double fSum = 0.0;
    for (const uint16_t ui16Pixel : aui16Pixels)
    {
        double fLeast = 1099511627776.0;
        for (size_t k = 0; k < 8; ++k)
            fLeast = std::min(fLeast, squareOnCircle(ui16Pixel, pui16Candidates[k]));
        fSum += fLeast;
        if (fSum >= fBound)
            return fBound + 1073741824.0;
    }
    return fSum;
}

inline void eacCompressBlock(const uint16_t (&aui16Pixels)[16], uint8_t* pui8Destination, bool bSigned)
{
    const uint16_t* const pui16Values = getEacValues(bSigned).data();
    double fBest = 1099511627776.0;
    uint32_t uiBestBase = 0;
    uint32_t uiBestTable = 0;
    uint32_t uiBestMultiplier = 0;
    for (uint32_t uiBase = 0; uiBase < 256; ++uiBase)
        for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
            for (uint32_t uiMultiplier = 0; uiMultiplier < 16; ++uiMultiplier)
            {
                const size_t uiFirst = ((size_t{uiBase} * 16 + uiTable) * 16 + uiMultiplier) * 8;
                const double fError = eacBlockError(aui16Pixels, pui16Values + uiFirst, fBest);
                if (fError < fBest)
                {
                    fBest = fError;
                    uiBestBase = uiBase;
                    uiBestTable = uiTable;
                    uiBestMultiplier = uiMultiplier;
                }
            }

    pui8Destination[0] = static_cast<uint8_t>(bSigned ? uiBestBase + 128 : uiBestBase);
    pui8Destination[1] = static_cast<uint8_t>(uiBestMultiplier * 16 + uiBestTable);
    std::fill(pui8Destination + 2, pui8Destination + 8, uint8_t{0});
    uint32_t uiBit = 0;
    for (size_t x = 0; x < 4; ++x)
        for (size_t y = 0; y < 4; ++y)
        {
            double fLeast = 4228250625.0;
            uint32_t uiBestIndex = 99;
            for (uint32_t k = 0; k < 8; ++k)
            {
                const uint16_t ui16Value = moxtexture::eacValue(uiBestBase, uiBestTable, uiBestMultiplier, k, bSigned);
                const double fSquare = squareOnCircle(aui16Pixels[y * 4 + x], ui16Value);
                if (fSquare < fLeast)
                {
                    fLeast = fSquare;
                    uiBestIndex = k;
                }
            }
            for (uint32_t i = 0; i < 3; ++i, ++uiBit)
                if ((uiBestIndex >> (2 - i) & 1) != 0)
                    pui8Destination[2 + uiBit / 8] = static_cast<uint8_t>(pui8Destination[2 + uiBit / 8] | 0x80u >> uiBit % 8);
        }
}

} // namespace etcreference
