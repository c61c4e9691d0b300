#include "Codecs/ETC/EtcAlphaBlock.h"

#include <algorithm>
#include <cstring>

#include "Codecs/ETC/EacBlock.h"
#include "Codecs/ETC/EtcAlphaSearch.h"
#include "Codecs/ETC/EtcTables.h"

namespace moxtexture
{

namespace
{

EtcStoredAlphas putInStoredOrder(const EtcAlphas& alphas)
{
    EtcStoredAlphas stored;
    for (size_t x = 0; x < 4; ++x)
        for (size_t y = 0; y < 4; ++y)
            stored[x * 4 + y] = alphas.aui8[etcPixelIndex(x, y)];
    return stored;
}

int32_t getRoundedMean(const EtcStoredAlphas& alphas)
{
    int32_t iSum = 0;
    for (const uint8_t ui8Alpha : alphas)
        iSum += ui8Alpha;
    return (iSum + 8) >> 4;
}

bool isFlat(const EtcAlphas& alphas)
{
    // The same bytes in all places are the same bytes one place on.
    return std::memcmp(alphas.aui8.data(), alphas.aui8.data() + 1, alphas.aui8.size() - 1) == 0;
}

/// The first of the nearest values, for each pixel.
std::array<uint8_t, 16> findIndices(const EtcStoredAlphas& alphas, const EtcAlphaChoice& choice)
{
    std::array<uint8_t, 16> indices{};
    std::array<uint8_t, 16> leasts;
    leasts.fill(255);
    for (uint8_t k = 0; k < 8; ++k)
    {
        const auto ui8Value = static_cast<uint8_t>(std::clamp(choice.iBase + alphaModifierTable[choice.uiRow][k], 0, 255));
        for (size_t i = 0; i < 16; ++i)
        {
            const auto ui8Distance = static_cast<uint8_t>(std::max(ui8Value, alphas[i]) - std::min(ui8Value, alphas[i]));
            indices[i] = ui8Distance < leasts[i] ? k : indices[i];
            leasts[i] = std::min(leasts[i], ui8Distance);
        }
    }
    return indices;
}

void writeBlock(const EtcStoredAlphas& alphas, const EtcAlphaChoice& choice, uint8_t* pui8Destination)
{
    pui8Destination[0] = static_cast<uint8_t>(choice.iBase);
    pui8Destination[1] = static_cast<uint8_t>(choice.uiRow);
    writeEacIndices(pui8Destination, findIndices(alphas, choice));
}

/// The rows round the one whose farthest modifier is about the greatest distance from the mean.
EtcAlphaScales getFastScales(const EtcStoredAlphas& alphas, int32_t iMean)
{
    const auto [least, greatest] = std::minmax_element(alphas.begin(), alphas.end());
    const int32_t iFarthest = std::max(iMean - *least, *greatest - iMean);
    const int32_t iRow = std::min(iFarthest * 255 / 160 - 4, 255);
    return {{16, 4, 1}, 64, 2, static_cast<uint32_t>(std::max(iRow - 15, 0)), static_cast<uint32_t>(std::clamp(iRow + 15, 0, 255))};
}

/// Every row.
EtcAlphaScales getThoroughScales(const EtcStoredAlphas&, int32_t)
{
    return {{32, 4, 1}, 4 * 32, 4, 0, 256};
}

using GetScales = EtcAlphaScales (*)(const EtcStoredAlphas& alphas, int32_t iMean);

void encodeBlock(const EtcAlphas& alphas, GetScales pGetScales, uint8_t* pui8Destination)
{
    if (isFlat(alphas))
    {
        // What the search comes to: row 0 has only zeros and is tried first, and the scales come to every base.
        pui8Destination[0] = alphas.aui8[0];
        std::fill_n(pui8Destination + 1, k_uiEacBlockBytes - 1, uint8_t{0});
        return;
    }
    const EtcStoredAlphas stored = putInStoredOrder(alphas);
    const int32_t iMean = getRoundedMean(stored);
    writeBlock(stored, searchAlphaRows(stored, iMean, pGetScales(stored, iMean)), pui8Destination);
}

} // namespace

void alphaBlockFast(const EtcAlphas& alphas, uint8_t* pui8Destination)
{
    encodeBlock(alphas, getFastScales, pui8Destination);
}

void alphaBlockThorough(const EtcAlphas& alphas, uint8_t* pui8Destination)
{
    encodeBlock(alphas, getThoroughScales, pui8Destination);
}

} // namespace moxtexture
