#include "Codecs/BC/BcCompressBlock.h"

#include <algorithm>

#include "Codecs/BC/BcColours.h"
#include "Codecs/BC/BcPrincipalAxis.h"

namespace moxtexture
{

namespace
{

constexpr uint32_t k_uiTransparentIndex = 3;

/// A block's pixels as the encoder works with them.
struct BlockColours
{
    std::array<BcColour, k_uiBcPixels> colours;
    std::array<uint32_t, k_uiBcPixels> aui565;
    std::array<bool, k_uiBcPixels> abTransparent; ///< all false unless the block has the 1-bit alpha form
    bool bAnyTransparent;
};

/// The two colours that a block stores, each in 5:6:5.
struct StoredColours
{
    uint32_t uiColour0;
    uint32_t uiColour1;
};

/// An end point of the fitted line, and what it becomes in the block.
struct EndPoint
{
    BcColour colour;
    uint32_t ui565;
};

BlockColours splitPixels(const BcPixels& pixels, bool bOneBitAlpha)
{
    BlockColours block{};
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
    {
        const uint32_t uiPixel = pixels[i];
        block.colours[i] = {static_cast<float>(uiPixel & 0xFF), static_cast<float>(uiPixel >> 8 & 0xFF),
                            static_cast<float>(uiPixel >> 16 & 0xFF)};
        block.aui565[i] = quantise565(block.colours[i]);
        block.abTransparent[i] = bOneBitAlpha && uiPixel >> 24 < 128;
        block.bAnyTransparent = block.bAnyTransparent || block.abTransparent[i];
    }
    return block;
}

/// The first two distinct 5:6:5 values of a block, and how many there are: 1, 2, or 3 for more than two.
struct DistinctColours
{
    uint32_t uiFirst;
    uint32_t uiSecond;
    uint32_t uiCount;
};

DistinctColours findDistinctColours(const std::array<uint32_t, k_uiBcPixels>& aui565)
{
    DistinctColours distinct{aui565[0], aui565[0], 1};
    for (const uint32_t ui565 : aui565)
    {
        if (ui565 == distinct.uiFirst || ui565 == distinct.uiSecond)
            continue;
        if (distinct.uiCount == 2)
        {
            distinct.uiCount = 3;
            break;
        }
        distinct.uiSecond = ui565;
        distinct.uiCount = 2;
    }
    return distinct;
}

/// A single colour shares its block with 0, on the side that gives the form wanted.
StoredColours encodeOneColour(const BlockColours& block, BcIndexSlots& slots)
{
    const uint32_t ui565 = block.aui565[0];
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
    {
        const uint32_t uiIndex = block.bAnyTransparent ? 1 : 0;
        slots.setSlot(i, block.abTransparent[i] ? k_uiTransparentIndex : uiIndex);
    }
    return block.bAnyTransparent ? StoredColours{0, ui565} : StoredColours{ui565, 0};
}

StoredColours encodeTwoColours(const BlockColours& block, const DistinctColours& distinct, BcIndexSlots& slots)
{
    const auto [uiLesser, uiGreater] = std::minmax(distinct.uiFirst, distinct.uiSecond);
    const StoredColours stored = block.bAnyTransparent ? StoredColours{uiLesser, uiGreater} : StoredColours{uiGreater, uiLesser};
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
    {
        const uint32_t uiIndex = block.aui565[i] == stored.uiColour1 ? 1 : 0;
        slots.setSlot(i, block.abTransparent[i] ? k_uiTransparentIndex : uiIndex);
    }
    return stored;
}

BcColour findMean(const std::array<BcColour, k_uiBcPixels>& colours)
{
    BcColour sum{0.0f, 0.0f, 0.0f};
    for (const BcColour& colour : colours)
        sum = {sum.fRed + colour.fRed, sum.fGreen + colour.fGreen, sum.fBlue + colour.fBlue};
    return sum * 0.0625f;
}

/// Sums of products, not divided by their number: only the direction counts.
BcCovariance findCovariance(const std::array<BcColour, k_uiBcPixels>& deviations)
{
    BcCovariance sums{};
    for (const auto& [r, g, b] : deviations)
    {
        const BcCovariance products{r * r, r * g, r * b, g * g, g * b, b * b};
        for (size_t i = 0; i < sums.size(); ++i)
            sums[i] += products[i];
    }
    return sums;
}

EndPoint makeEndPoint(const BcColour& mean, const BcColour& axis, float p)
{
    const auto onLine = [p](float fMean, float fAxis) { return std::clamp(fMean + p * fAxis, 0.0f, 255.0f); };
    const BcColour colour{onLine(mean.fRed, axis.fRed), onLine(mean.fGreen, axis.fGreen), onLine(mean.fBlue, axis.fBlue)};
    return {colour, quantise565(colour)};
}

/// The end points of the fitted line, that of the least projection first.
std::array<EndPoint, 2> fitLine(const std::array<BcColour, k_uiBcPixels>& colours)
{
    const BcColour mean = findMean(colours);
    std::array<BcColour, k_uiBcPixels> deviations;
    std::transform(colours.begin(), colours.end(), deviations.begin(), [&mean](const BcColour& colour) { return colour - mean; });
    const BcColour axis = findBcPrincipalAxis(findCovariance(deviations));

    float fLeast = 0.0f;
    float fGreatest = 0.0f;
    for (const BcColour& deviation : deviations)
    {
        const float p = dotProduct(axis, deviation);
        if (p < fLeast)
            fLeast = p;
        if (p > fGreatest)
            fGreatest = p;
    }
    return {makeEndPoint(mean, axis, fLeast), makeEndPoint(mean, axis, fGreatest)};
}

/// The index at the place fSteps along the way from colour 0 (0) to colour 1 (the last step), truncated; negative if that
/// place is none of the steps.
///
/// Compared as float: a short way between end points can make steps beyond any integer's range.
int getIndexAt(float fSteps, bool bThreeColours)
{
    static constexpr std::array<int8_t, 4> k_aIndexOfFour{0, 2, 3, 1};
    static constexpr std::array<int8_t, 4> k_aIndexOfThree{0, 2, 1, -1};
    if (!(fSteps > -1.0f && fSteps < 4.0f))
        return -1;
    const auto uiStep = static_cast<size_t>(static_cast<int>(fSteps));
    return bThreeColours ? k_aIndexOfThree[uiStep] : k_aIndexOfFour[uiStep];
}

StoredColours encodeFit(const BlockColours& block, BcIndexSlots& slots)
{
    const std::array<EndPoint, 2> ends = fitLine(block.colours);
    const bool bThreeColours = block.bAnyTransparent;
    const bool bLeastIsLesser = ends[0].ui565 <= ends[1].ui565;
    const EndPoint& end0 = ends[bLeastIsLesser == bThreeColours ? 0 : 1];
    const EndPoint& end1 = ends[bLeastIsLesser == bThreeColours ? 1 : 0];
    if (end0.ui565 == end1.ui565)
    {
        slots.uiBits = 0;
        return {end0.ui565, end1.ui565};
    }

    const BcColour way = end1.colour - end0.colour;
    // On purpose: times the reciprocal, before the product with a pixel. A division would round otherwise, in rare blocks to another step.
    const BcColour scaledWay = way * (1.0f / dotProduct(way, way));
    const float fLastStep = bThreeColours ? 2.0f : 3.0f;
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
    {
        const float t = dotProduct(block.colours[i] - end0.colour, scaledWay);
        const int iIndex =
            block.abTransparent[i] ? static_cast<int>(k_uiTransparentIndex) : getIndexAt(fLastStep * t + 0.5f, bThreeColours);
        if (iIndex >= 0)
            slots.setSlot(i, static_cast<uint32_t>(iIndex));
    }
    return {end0.ui565, end1.ui565};
}

StoredColours encodeColours(const BlockColours& block, BcIndexSlots& slots)
{
    const DistinctColours distinct = findDistinctColours(block.aui565);
    if (distinct.uiCount == 1)
        return encodeOneColour(block, slots);
    if (distinct.uiCount == 2)
        return encodeTwoColours(block, distinct, slots);
    return encodeFit(block, slots);
}

} // namespace

uint64_t bcCompressBlock(const BcPixels& pixels, bool bOneBitAlpha, BcIndexSlots& slots)
{
    const StoredColours stored = encodeColours(splitPixels(pixels, bOneBitAlpha), slots);
    return stored.uiColour0 | stored.uiColour1 << 16 | static_cast<uint64_t>(slots.uiBits) << 32;
}

void bcColourRowReference(const BcRowToEncode& row, bool bOneBitAlpha, BcIndexSlots& slots)
{
    for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; ++uiBlock)
        storeLE(row.pParts + uiBlock * row.uiBlockBytes, bcCompressBlock(loadBcPixels(row, uiBlock), bOneBitAlpha, slots));
}

} // namespace moxtexture
