#include "Codecs/Packed/PairFormats.h"

#include "Codecs/Packed/PairPlaces.h"
#include "Core/ByteOrder.h"

namespace moxtexture
{

namespace
{

constexpr PairOrders k_orders = {ePF_2_Planar_RGBG_8_8_8_8, ePF_2_Planar_GRGB_8_8_8_8};

void encodeRunReference(const uint8_t* pPixels, uint8_t* pPairs, size_t uiPairCount, bool bGreenFirst)
{
    const PairPlaces places(bGreenFirst);
    for (size_t i = 0; i < uiPairCount; ++i)
    {
        const uint8_t* pFirst = pPixels + i * k_uiPairPixelBytes;
        uint8_t* pPair = pPairs + i * k_uiPairBytes;
        pPair[places.uiShared0] = pFirst[0];
        pPair[places.uiOwn0] = pFirst[1];
        pPair[places.uiShared1] = pFirst[2];
        pPair[places.uiOwn1] = pFirst[4 + 1];
    }
}

void decodeRunReference(const uint8_t* pPairs, uint8_t* pPixels, size_t uiPairCount, bool bGreenFirst)
{
    const PairPlaces places(bGreenFirst);
    for (size_t i = 0; i < uiPairCount; ++i)
    {
        const uint8_t* pPair = pPairs + i * k_uiPairBytes;
        uint8_t* pFirst = pPixels + i * k_uiPairPixelBytes;
        uint8_t* pSecond = pFirst + 4;
        pFirst[0] = pSecond[0] = pPair[places.uiShared0];
        pFirst[1] = pPair[places.uiOwn0];
        pSecond[1] = pPair[places.uiOwn1];
        pFirst[2] = pSecond[2] = pPair[places.uiShared1];
        pFirst[3] = pSecond[3] = 255;
    }
}

// The fast form works on whole words, of which compilers make vectors.

/// R G0 B G1 from G0 R G1 B, and back.
constexpr uint32_t changeOrder(uint32_t uiPair)
{
    return (uiPair & 0x00FF00FF) << 8 | (uiPair >> 8 & 0x00FF00FF);
}

void encodeRun(const uint8_t* pPixels, uint8_t* pPairs, size_t uiPairCount, bool bGreenFirst)
{
    for (size_t i = 0; i < uiPairCount; ++i)
    {
        const auto uiFirst = loadLE<uint32_t>(pPixels + i * k_uiPairPixelBytes);
        const auto uiSecond = loadLE<uint32_t>(pPixels + i * k_uiPairPixelBytes + 4);
        const uint32_t uiPair = (uiFirst & 0x00FFFFFF) | (uiSecond & 0x0000FF00) << 16;
        storeLE(pPairs + i * k_uiPairBytes, bGreenFirst ? changeOrder(uiPair) : uiPair);
    }
}

void decodeRun(const uint8_t* pPairs, uint8_t* pPixels, size_t uiPairCount, bool bGreenFirst)
{
    for (size_t i = 0; i < uiPairCount; ++i)
    {
        const auto uiStored = loadLE<uint32_t>(pPairs + i * k_uiPairBytes);
        const uint32_t uiPair = bGreenFirst ? changeOrder(uiStored) : uiStored;
        const uint32_t uiShared = (uiPair & 0x00FF00FF) | 0xFF000000;
        storeLE(pPixels + i * k_uiPairPixelBytes, uiShared | (uiPair & 0x0000FF00));
        storeLE(pPixels + i * k_uiPairPixelBytes + 4, uiShared | (uiPair >> 16 & 0x0000FF00));
    }
}

} // namespace

uint32_t encodePairFormat(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, EMOXTPixelFormat eFormat)
{
    return encodePairs(k_orders, eFormat, pSource, pTarget, uiWidth, uiHeight, encodeRun);
}

uint32_t decodePairFormat(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, EMOXTPixelFormat eFormat)
{
    return decodePairs(k_orders, eFormat, pSource, pTarget, uiWidth, uiHeight, decodeRun);
}

uint32_t encodePairFormatReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, EMOXTPixelFormat eFormat)
{
    return encodePairs(k_orders, eFormat, pSource, pTarget, uiWidth, uiHeight, encodeRunReference);
}

uint32_t decodePairFormatReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, EMOXTPixelFormat eFormat)
{
    return decodePairs(k_orders, eFormat, pSource, pTarget, uiWidth, uiHeight, decodeRunReference);
}

} // namespace moxtexture
