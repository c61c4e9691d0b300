#include "Codecs/Packed/PackedYUV.h"

#include <algorithm>

#include "Codecs/Packed/PairPlaces.h"

namespace moxtexture
{

namespace
{

constexpr PairOrders k_orders = {ePF_UYVY, ePF_YUY2};

// Weights of each sum add up to 0.859 at most, so results lie within 16 to 240 and need no clamp.

uint8_t getLuma(const uint8_t* pPixel)
{
    const float fSum = 0.257f * pPixel[0] + 0.504f * pPixel[1] + 0.098f * pPixel[2] + 16.5f;
    return static_cast<uint8_t>(fSum);
}

uint8_t getU(const uint8_t* pPixel)
{
    const float fSum = 0.439f * pPixel[2] - (0.148f * pPixel[0] + 0.291f * pPixel[1]) + 128.5f;
    return static_cast<uint8_t>(fSum);
}

uint8_t getV(const uint8_t* pPixel)
{
    const float fSum = 0.439f * pPixel[0] - 0.368f * pPixel[1] - 0.071f * pPixel[2] + 128.5f;
    return static_cast<uint8_t>(fSum);
}

uint8_t toByte(int32_t i32Sum)
{
    return static_cast<uint8_t>(std::clamp(i32Sum >> 8, 0, 255));
}

void decodePixel(int32_t y, int32_t u, int32_t v, uint8_t* pPixel)
{
    const int32_t i32Luma = (y - 16) * 298 + 128;
    pPixel[0] = toByte(i32Luma + (v - 128) * 409);
    pPixel[1] = toByte(i32Luma + (128 - u) * 100 + (128 - v) * 208);
    pPixel[2] = toByte(i32Luma + (u - 128) * 517);
    pPixel[3] = 255;
}

} // namespace

void encodeYUVPairsReference(const uint8_t* pPixels, uint8_t* pPairs, size_t uiPairCount, bool bLumaFirst)
{
    const PairPlaces places(bLumaFirst);
    for (size_t i = 0; i < uiPairCount; ++i)
    {
        const uint8_t* pFirst = pPixels + i * k_uiPairPixelBytes;
        const uint8_t* pSecond = pFirst + 4;
        uint8_t* pPair = pPairs + i * k_uiPairBytes;
        pPair[places.uiOwn0] = getLuma(pFirst);
        pPair[places.uiOwn1] = getLuma(pSecond);
        pPair[places.uiShared0] = getU(pFirst);
        pPair[places.uiShared1] = getV(pSecond);
    }
}

void decodeYUVPairsReference(const uint8_t* pPairs, uint8_t* pPixels, size_t uiPairCount, bool bLumaFirst)
{
    const PairPlaces places(bLumaFirst);
    for (size_t i = 0; i < uiPairCount; ++i)
    {
        const uint8_t* pPair = pPairs + i * k_uiPairBytes;
        uint8_t* pFirst = pPixels + i * k_uiPairPixelBytes;
        decodePixel(pPair[places.uiOwn0], pPair[places.uiShared0], pPair[places.uiShared1], pFirst);
        decodePixel(pPair[places.uiOwn1], pPair[places.uiShared0], pPair[places.uiShared1], pFirst + 4);
    }
}

uint32_t encodePackedYUV(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, EMOXTPixelFormat eFormat)
{
    return encodePairs(k_orders, eFormat, pSource, pTarget, uiWidth, uiHeight, encodeYUVPairs);
}

uint32_t decodePackedYUV(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, EMOXTPixelFormat eFormat)
{
    return decodePairs(k_orders, eFormat, pSource, pTarget, uiWidth, uiHeight, decodeYUVPairs);
}

uint32_t encodePackedYUVReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, EMOXTPixelFormat eFormat)
{
    return encodePairs(k_orders, eFormat, pSource, pTarget, uiWidth, uiHeight, encodeYUVPairsReference);
}

uint32_t decodePackedYUVReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, EMOXTPixelFormat eFormat)
{
    return decodePairs(k_orders, eFormat, pSource, pTarget, uiWidth, uiHeight, decodeYUVPairsReference);
}

} // namespace moxtexture
