#include "Codecs/Packed/SharedExponent.h"

#include <algorithm>
#include <cmath>

#include "Codecs/Packed/PackedRows.h"
#include "Core/ByteOrder.h"

namespace moxtexture
{

namespace
{

constexpr float k_fGreatest = 65408.0f; ///< 511 * 2^7

float clampChannel(float fValue)
{
    // NaN is not above 0.
    return fValue > 0.0f ? std::min(fValue, k_fGreatest) : 0.0f;
}

/// The exponent that a normal float has, and -127 of 0 and of denormal ones.
int getExponent(float fValue)
{
    return static_cast<int>(loadLE<uint32_t>(&fValue) >> 23) - 127;
}

uint32_t roundChannel(float fValue, float fScale)
{
    return static_cast<uint32_t>(std::floor(fValue / fScale + 0.5f));
}

uint32_t encodePixel(float fRed, float fGreen, float fBlue)
{
    fRed = clampChannel(fRed);
    fGreen = clampChannel(fGreen);
    fBlue = clampChannel(fBlue);
    const float fMost = std::max({fRed, fGreen, fBlue});
    const int iExponent = std::max(getExponent(fMost), -16);
    auto uiShared = static_cast<uint32_t>(iExponent + 16);
    float fScale = std::ldexp(1.0f, iExponent - 8);
    if (roundChannel(fMost, fScale) == 512)
    {
        fScale *= 2.0f;
        ++uiShared;
    }
    return roundChannel(fRed, fScale) | roundChannel(fGreen, fScale) << 9 | roundChannel(fBlue, fScale) << 18 | uiShared << 27;
}

uint32_t convertSurface(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiBitsPerPixel,
                        decltype(&encodeExponentPixels) convertRun)
{
    if (pSource == nullptr || pTarget == nullptr)
        return 0;
    convertRun(pSource, pTarget, size_t{uiWidth} * uiHeight);
    return countBytes(uiWidth, uiHeight, uiBitsPerPixel);
}

} // namespace

void encodeExponentPixelsReference(const uint8_t* pFloats, uint8_t* pWords, size_t uiCount)
{
    for (size_t i = 0; i < uiCount; ++i)
    {
        const uint8_t* pPixel = pFloats + 12 * i;
        storeLE(pWords + 4 * i, encodePixel(loadLE<float>(pPixel), loadLE<float>(pPixel + 4), loadLE<float>(pPixel + 8)));
    }
}

void decodeExponentPixelsReference(const uint8_t* pWords, uint8_t* pFloats, size_t uiCount)
{
    for (size_t i = 0; i < uiCount; ++i)
    {
        const auto uiWord = loadLE<uint32_t>(pWords + 4 * i);
        const float fFactor = std::ldexp(1.0f, static_cast<int>(uiWord >> 27) - 24);
        for (uint32_t uiChannel = 0; uiChannel < 3; ++uiChannel)
            storeLE(pFloats + 12 * i + 4 * size_t{uiChannel}, static_cast<float>(uiWord >> 9 * uiChannel & 0x1FF) * fFactor);
    }
}

uint32_t encodeSharedExponent(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight)
{
    return convertSurface(pSource, pTarget, uiWidth, uiHeight, 32, encodeExponentPixels);
}

uint32_t decodeSharedExponent(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight)
{
    return convertSurface(pSource, pTarget, uiWidth, uiHeight, 96, decodeExponentPixels);
}

uint32_t encodeSharedExponentReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight)
{
    return convertSurface(pSource, pTarget, uiWidth, uiHeight, 32, encodeExponentPixelsReference);
}

uint32_t decodeSharedExponentReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight)
{
    return convertSurface(pSource, pTarget, uiWidth, uiHeight, 96, decodeExponentPixelsReference);
}

} // namespace moxtexture
