#include "Codecs/MOXTC/BlockRecords.h"

#include <cstddef>

#include "Codecs/MOXTC/Block/Modulation.h"

namespace moxtexture
{
namespace
{

using Weights2bpp = std::array<uint8_t, BlockRecord2bpp::k_uiPixels>;

/// Two opposite neighbours of a pixel, with uiBoth added before halving, or the only one with uiOne added.
uint32_t averagePair(const uint8_t* pBefore, const uint8_t* pAfter, uint32_t uiBoth, uint32_t uiOne)
{
    if (pBefore && pAfter)
        return (*pBefore + *pAfter + uiBoth) / 2;
    return (pBefore ? *pBefore : *pAfter) + uiOne;
}

/// Fills in the weights between the stored ones, which are there already.
void interpolateWeights(Weights2bpp& weights, uint8_t ui8Mode)
{
    constexpr size_t uiWidth = BlockRecord2bpp::k_uiBlockWidth;
    constexpr size_t uiHeight = BlockRecord2bpp::k_uiPixels / uiWidth;
    for (size_t y = 0; y < uiHeight; ++y)
    {
        for (size_t x = 0; x < uiWidth; ++x)
        {
            if (isStoredPosition(static_cast<uint32_t>(x), static_cast<uint32_t>(y)))
                continue;
            uint8_t* pWeight = &weights[y * uiWidth + x];
            const uint8_t* pUp = y > 0 ? pWeight - uiWidth : nullptr;
            const uint8_t* pDown = y + 1 < uiHeight ? pWeight + uiWidth : nullptr;
            const uint8_t* pLeft = x > 0 ? pWeight - 1 : nullptr;
            const uint8_t* pRight = x + 1 < uiWidth ? pWeight + 1 : nullptr;

            uint32_t uiWeight = 0;
            if (ui8Mode == k_ui8ModeBothAxes)
            {
                for (const uint8_t* pNeighbour : {pUp, pDown, pLeft, pRight})
                    uiWeight += pNeighbour ? *pNeighbour : 0u;
                const uint32_t uiCount = 4u - (pUp && pDown ? 0 : 1) - (pLeft && pRight ? 0 : 1);
                uiWeight = (uiWeight + uiCount / 2) / uiCount;
            }
            // On purpose: the axes of these two are exchanged.
            else if (ui8Mode == k_ui8ModeHorizontal)
                uiWeight = averagePair(pUp, pDown, 2, 2);
            else
                uiWeight = averagePair(pLeft, pRight, 1, 1);
            *pWeight = static_cast<uint8_t>(uiWeight);
        }
    }
}

} // namespace

Weights2bpp getBlockWeights(const BlockRecord2bpp& record)
{
    const bool bDirect = record.ui8Mode == k_ui8ModeDirect;
    const auto& codes = bDirect ? record.aui8DirectCodes : record.aui8InterpolatedCodes;
    Weights2bpp weights;
    for (size_t i = 0; i < weights.size(); ++i)
        weights[i] = k_aui8StandardWeights[codes[i]];
    if (!bDirect)
        interpolateWeights(weights, record.ui8Mode);
    return weights;
}

std::array<uint8_t, BlockRecord4bpp::k_uiPixels> getBlockWeights(const BlockRecord4bpp& record)
{
    const bool bStandard = record.uiMode == k_ui8ModeDirect;
    const auto& codes = bStandard ? record.aui8StandardCodes : record.aui8PunchThroughCodes;
    const WeightTable& table = bStandard ? k_aui8StandardWeights : k_aui8PunchThroughWeightsMOXTCII;
    std::array<uint8_t, BlockRecord4bpp::k_uiPixels> weights;
    for (size_t i = 0; i < weights.size(); ++i)
        weights[i] = table[codes[i]];
    return weights;
}

} // namespace moxtexture
