#include "Codecs/MOXTC/OptimiseColours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace moxtexture
{
namespace
{

using Channels = std::array<float, 4>;

/// Means over the pixels of a block: w is the weight of B as a fraction, d what the source has more than the blend.
struct BlockMeans
{
    Channels difference{};         ///< d
    Channels weightedDifference{}; ///< d * w
    float fWeight = 0;             ///< w
    float fSquaredWeight = 0;      ///< w * w
};

Channels toChannels(uint32_t uiPixel)
{
    Channels channels;
    for (uint32_t c = 0; c < 4; ++c)
        channels[c] = static_cast<float>(getChannel(uiPixel, c));
    return channels;
}

float clampToByte(float fValue)
{
    return std::clamp(fValue, 0.0f, 255.0f);
}

uint32_t toPixel(const Channels& channels)
{
    uint32_t uiPixel = 0;
    for (uint32_t c = 0; c < 4; ++c)
        uiPixel |= static_cast<uint32_t>(clampToByte(channels[c])) << 8 * c;
    return uiPixel;
}

template <typename Record>
BlockMeans findMeans(const CompressorImages& images, const Record& record, uint32_t uiBlockX, uint32_t uiBlockY)
{
    const auto weights = getBlockWeights(record);
    const size_t uiFirst = images.getFirstPixel(uiBlockX, uiBlockY);
    BlockMeans means;
    for (size_t i = 0; i < Record::k_uiPixels; ++i)
    {
        const size_t uiPlace = uiFirst + i / Record::k_uiBlockWidth * images.uiWidth + i % Record::k_uiBlockWidth;
        const Channels source = toChannels(images.source[uiPlace]);
        const Channels a = toChannels(images.upscaledA[uiPlace]);
        const Channels b = toChannels(images.upscaledB[uiPlace]);
        const float fWeight = static_cast<float>(weights[i]) * 0.125f;
        for (size_t c = 0; c < 4; ++c)
        {
            const float fDifference = source[c] - a[c] * (1.0f - fWeight) - b[c] * fWeight;
            means.difference[c] += fDifference;
            means.weightedDifference[c] += fDifference * fWeight;
        }
        means.fWeight += fWeight;
        means.fSquaredWeight += fWeight * fWeight;
    }

    constexpr float fShare = 1.0f / Record::k_uiPixels;
    for (size_t c = 0; c < 4; ++c)
    {
        means.difference[c] *= fShare;
        means.weightedDifference[c] *= fShare;
    }
    means.fWeight *= fShare;
    means.fSquaredWeight *= fShare;
    return means;
}

/// All weights are alike: the two colours share one shift by that weight, and then move towards each other.
void shiftTogether(const BlockMeans& means, Channels& a, Channels& b)
{
    const float fWeight = means.fWeight;
    for (size_t c = 0; c < 4; ++c)
    {
        const float fA = clampToByte(a[c] + means.difference[c] * (1.0f - fWeight));
        const float fB = clampToByte(b[c] + means.difference[c] * fWeight);
        const float fGap = std::fabs(fB - fA) < 1.0f ? 0.0f : fB - fA;
        a[c] = fA + fGap * fWeight / 2.0f;
        b[c] = fB - fGap * (1.0f - fWeight) / 2.0f;
    }
}

/// Each colour by the line through the differences over the weights.
void shiftByLine(const BlockMeans& means, float fVariance, Channels& a, Channels& b)
{
    const auto limit = [](float fShift) { return std::clamp(fShift, -k_fMostColourShift, k_fMostColourShift); };
    for (size_t c = 0; c < 4; ++c)
    {
        const float fSlope = (means.weightedDifference[c] - means.difference[c] * means.fWeight) / fVariance;
        const float fShiftA = means.difference[c] - fSlope * means.fWeight;
        // On purpose: B's starts from the shift of A as it is before its limit.
        const float fShiftB = fShiftA + fSlope;
        a[c] += limit(fShiftA);
        b[c] += limit(fShiftB);
    }
}

void moveColours(const BlockMeans& means, uint32_t& uiColourA, uint32_t& uiColourB)
{
    float fSquaredShift = 0;
    for (const float fDifference : means.difference)
        fSquaredShift += fDifference * fDifference;
    if (fSquaredShift < k_fLeastSquaredShift)
        return;

    Channels a = toChannels(uiColourA);
    Channels b = toChannels(uiColourB);
    const float fVariance = means.fSquaredWeight - means.fWeight * means.fWeight;
    if (fVariance < k_fLeastWeightVariance)
        shiftTogether(means, a, b);
    else
        shiftByLine(means, fVariance, a, b);
    uiColourA = toPixel(a);
    uiColourB = toPixel(b);
}

template <typename Record>
void optimiseRegion(CompressorImages& images, const std::vector<Record>& blockData, const BlockRegion& region)
{
    for (uint32_t y = region.uiY0; y < region.uiY1; ++y)
    {
        for (uint32_t x = region.uiX0; x < region.uiX1; ++x)
        {
            const size_t uiBlock = images.getBlockIndex(x, y);
            moveColours(findMeans(images, blockData[uiBlock], x, y), images.colourA[uiBlock], images.colourB[uiBlock]);
        }
    }
}

} // namespace

void optimiseColoursReference(CompressorImages& images, const std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region)
{
    optimiseRegion(images, blockData, region);
}

void optimiseColoursReference(CompressorImages& images, const std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region)
{
    optimiseRegion(images, blockData, region);
}

} // namespace moxtexture
