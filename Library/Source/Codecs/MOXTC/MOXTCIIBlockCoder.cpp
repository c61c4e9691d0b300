#include "Codecs/MOXTC/MOXTCIIBlockCoder.h"

#include <algorithm>
#include <cmath>

#include "Codecs/MOXTC/Block/Modulation.h"
#include "Codecs/MOXTC/CompressorImages.h"
#include "Codecs/MOXTC/StartingColours.h"
#include "Codecs/MOXTC/WriteBlocks.h"

namespace moxtexture
{
namespace
{

constexpr uint32_t k_uiChannels = 4;

/// A place or a direction in the space of red, green, blue and alpha.
using Vector = std::array<float, k_uiChannels>;
using Matrix = std::array<Vector, k_uiChannels>;

using Codes = std::array<uint8_t, k_uiCodedPixels>;

/// Red, green, blue, alpha in this order: every float path adds so.
float dotProduct(const Vector& a, const Vector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

Vector subtract(const Vector& a, const Vector& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2], a[3] - b[3]};
}

Vector toVector(uint32_t uiPixel)
{
    Vector v;
    for (uint32_t c = 0; c < k_uiChannels; ++c)
        v[c] = static_cast<float>(getChannel(uiPixel, c));
    return v;
}

constexpr uint32_t getAlpha(uint32_t uiPixel)
{
    return uiPixel >> 24;
}

/// Equal in red, green, blue and alpha, but that no alpha and full alpha count as one.
bool isSameColour(uint32_t uiPixel, uint32_t uiOther)
{
    const auto isExtreme = [](uint32_t ui) { return getAlpha(ui) == 0 || getAlpha(ui) > 254; };
    return uiPixel == uiOther || (((uiPixel ^ uiOther) & 0xFFFFFF) == 0 && isExtreme(uiPixel) && isExtreme(uiOther));
}

/// The first pixels met of the first two colours of a block, and how many colours there are: 1, 2, or 3 for more than two.
struct DistinctColours
{
    uint32_t uiFirst;
    uint32_t uiSecond;
    uint32_t uiCount;
};

DistinctColours findDistinctColours(const CodedPixels& pixels)
{
    DistinctColours distinct{pixels[0], pixels[0], 1};
    for (const uint32_t uiPixel : pixels)
    {
        if (isSameColour(uiPixel, distinct.uiFirst) || isSameColour(uiPixel, distinct.uiSecond))
            continue;
        if (distinct.uiCount == 2)
        {
            distinct.uiCount = 3;
            break;
        }
        distinct.uiSecond = uiPixel;
        distinct.uiCount = 2;
    }
    return distinct;
}

BlockWord makeBlock(uint32_t uiColourA, uint32_t uiColourB, const Codes& codes, bool bPunchThrough)
{
    return {packModulation4bpp(codes.data()), packPixels(uiColourA, uiColourB, true) | (bPunchThrough ? k_ui32ModeFlag : k_ui32HardFlag)};
}

/// Fills the codes of a block by a function of the pixel.
template <typename GetCode>
Codes makeCodes(const CodedPixels& pixels, const GetCode& getCode)
{
    Codes codes{};
    std::transform(pixels.begin(), pixels.end(), codes.begin(), [&](uint32_t uiPixel) { return static_cast<uint8_t>(getCode(uiPixel)); });
    return codes;
}

BlockWord codeOneColour(const CodedPixels& pixels, uint32_t uiColour, bool bPunchThrough)
{
    const auto getCode = [&](uint32_t uiPixel) { return !bPunchThrough ? 0 : getAlpha(uiPixel) != 0 ? 1 : int{k_ui8PunchThroughCode}; };
    return makeBlock(uiColour, uiColour, makeCodes(pixels, getCode), bPunchThrough);
}

BlockWord codeTwoColours(const CodedPixels& pixels, const DistinctColours& distinct, bool bPunchThrough)
{
    const auto getCode = [&](uint32_t uiPixel)
    {
        if (bPunchThrough && getAlpha(uiPixel) == 0)
            return int{k_ui8PunchThroughCode};
        return isSameColour(uiPixel, distinct.uiSecond) ? 3 : 0;
    };
    return makeBlock(distinct.uiFirst, distinct.uiSecond, makeCodes(pixels, getCode), bPunchThrough);
}

/// 256 times the covariance of the channels, made of integers: all sums are exact as floats, in whatever order.
Matrix findCovariance(const CodedPixels& pixels)
{
    Matrix covariance;
    for (uint32_t c = 0; c < k_uiChannels; ++c)
        for (uint32_t d = 0; d < k_uiChannels; ++d)
        {
            int32_t iSumC = 0;
            int32_t iSumD = 0;
            int32_t iProducts = 0;
            for (const uint32_t uiPixel : pixels)
            {
                iSumC += getChannel(uiPixel, c);
                iSumD += getChannel(uiPixel, d);
                iProducts += getChannel(uiPixel, c) * getChannel(uiPixel, d);
            }
            covariance[c][d] = static_cast<float>(16 * iProducts - iSumC * iSumD);
        }
    return covariance;
}

/// The direction in which the colours spread most, by power iteration from all ones.
///
/// Where a step gives 0, the vector stays: one that was never normalised does so if the covariance maps all ones to 0.
Vector findPrincipalAxis(const Matrix& covariance)
{
    Vector axis{1.0f, 1.0f, 1.0f, 1.0f};
    for (uint32_t uiRound = 0; uiRound < k_uiAxisRounds; ++uiRound)
    {
        Vector next;
        for (uint32_t c = 0; c < k_uiChannels; ++c)
            next[c] = dotProduct(covariance[c], axis);
        const float fLength = std::sqrt(dotProduct(next, next));
        if (fLength == 0.0f)
            break;
        const float fFactor = 1.0f / fLength;
        for (float& f : next)
            f *= fFactor;
        const Vector change = subtract(next, axis);
        axis = next;
        if (std::sqrt(dotProduct(change, change)) < k_fAxisTolerance)
            break;
    }
    return axis;
}

uint32_t makeEndPoint(const Vector& mean, const Vector& axis, float t)
{
    uint32_t uiPixel = 0;
    for (uint32_t c = 0; c < k_uiChannels; ++c)
        uiPixel |= static_cast<uint32_t>(std::clamp(mean[c] + t * axis[c], 0.0f, 255.0f)) << 8 * c;
    return uiPixel;
}

/// The code of a place on the way from A (t = 0) to B (t = 1), by the thresholds between the weights 0, 3, 5 and 8.
int getCodeByThreshold(float t)
{
    if (t < 0.1875f)
        return 0;
    if (t < 0.5f)
        return 1;
    return t < 0.8175f ? 2 : 3;
}

/// On purpose: a pixel half-way gets the code that punches through, and one of alpha 0 the code of half-way, other than in blocks of
/// one or two colours.
int getCodeOfPunchThroughBlock(uint32_t uiPixel, float t)
{
    if (getAlpha(uiPixel) == 0)
        return 1;
    const float fPlace = std::trunc(2.0f * t + 0.5f);
    if (fPlace < 1.0f)
        return 0;
    return fPlace < 2.0f ? 2 : 3;
}

BlockWord codeManyColours(const CodedPixels& pixels, bool bPunchThrough)
{
    Vector mean{};
    for (const uint32_t uiPixel : pixels)
        for (uint32_t c = 0; c < k_uiChannels; ++c)
            mean[c] += static_cast<float>(getChannel(uiPixel, c));
    for (float& f : mean)
        f *= 0.0625f;

    const Vector axis = findPrincipalAxis(findCovariance(pixels));
    std::array<float, k_uiCodedPixels> projections;
    std::transform(pixels.begin(), pixels.end(), projections.begin(),
                   [&](uint32_t uiPixel) { return dotProduct(subtract(toVector(uiPixel), mean), axis); });
    const auto [pLeast, pGreatest] = std::minmax_element(projections.begin(), projections.end());
    uint32_t uiColourA = makeEndPoint(mean, axis, *pLeast);
    uint32_t uiColourB = makeEndPoint(mean, axis, *pGreatest);
    orderByLuminance(uiColourA, uiColourB);

    const Vector a = toVector(uiColourA);
    const Vector way = subtract(toVector(uiColourB), a);
    const float fSquaredWay = dotProduct(way, way);
    const auto getCode = [&](uint32_t uiPixel)
    {
        const float t = fSquaredWay == 0.0f ? 0.0f : dotProduct(subtract(toVector(uiPixel), a), way) / fSquaredWay;
        return bPunchThrough ? getCodeOfPunchThroughBlock(uiPixel, t) : getCodeByThreshold(t);
    };
    return makeBlock(uiColourA, uiColourB, makeCodes(pixels, getCode), bPunchThrough);
}

} // namespace

BlockWord codeMOXTCIIBlock(const CodedPixels& pixels)
{
    const bool bPunchThrough = std::any_of(pixels.begin(), pixels.end(), [](uint32_t uiPixel) { return getAlpha(uiPixel) == 0; });
    const DistinctColours distinct = findDistinctColours(pixels);
    if (distinct.uiCount == 1)
        return codeOneColour(pixels, distinct.uiFirst, bPunchThrough);
    if (distinct.uiCount == 2)
        return codeTwoColours(pixels, distinct, bPunchThrough);
    return codeManyColours(pixels, bPunchThrough);
}

void codeMOXTCIIBlocksReference(const uint8_t* pui8Source, uint32_t uiWidth, uint32_t uiHeight, uint8_t* pui8Target)
{
    CodedPixels pixels;
    for (uint32_t y = 0; y < uiHeight; y += k_uiBlockHeight)
        for (uint32_t x = 0; x < uiWidth; x += getBlockWidth(false), pui8Target += k_uiBlockBytes)
        {
            for (uint32_t i = 0; i < k_uiCodedPixels; ++i)
                pixels[i] = loadLE<uint32_t>(pui8Source + 4 * ((size_t{y} + i / 4) * uiWidth + x + i % 4));
            storeBlock(pui8Target, codeMOXTCIIBlock(pixels));
        }
}

} // namespace moxtexture
