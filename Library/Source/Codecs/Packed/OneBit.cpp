#include "Codecs/Packed/OneBit.h"

#include <algorithm>
#include <cstring>

#include "Codecs/Packed/PackedRows.h"

namespace moxtexture
{

namespace
{

constexpr uint32_t k_uiBytePixels = 8;
constexpr size_t k_uiBytePixelBytes = 32; ///< of the RGBA pixels of a byte

/// The pixels of every byte.
struct BytePixels
{
    uint8_t aaui[256][k_uiBytePixelBytes];
};

constexpr BytePixels makeBytePixels()
{
    BytePixels pixels{};
    for (uint32_t uiByte = 0; uiByte < 256; ++uiByte)
        for (uint32_t i = 0; i < k_uiBytePixelBytes; ++i)
            pixels.aaui[uiByte][i] = i % 4 == 3 || (uiByte >> i / 4 & 1) != 0 ? 255 : 0;
    return pixels;
}

constexpr BytePixels k_bytePixels = makeBytePixels();

uint32_t encodeSurface(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, decltype(&encodeBits) encodeRun)
{
    if (pSource == nullptr || pTarget == nullptr)
        return 0;
    packRows({uiWidth, uiHeight, k_uiBytePixels, 1}, pSource, pTarget, encodeRun);
    return countBytes(uiWidth, uiHeight, 1);
}

} // namespace

void encodeBitsReference(const uint8_t* pPixels, uint8_t* pBits, size_t uiByteCount)
{
    std::fill_n(pBits, uiByteCount, uint8_t{0});
    for (size_t i = 0; i < k_uiBytePixels * uiByteCount; ++i)
    {
        const uint8_t* pPixel = pPixels + 4 * i;
        if ((pPixel[0] + pPixel[1] + pPixel[2]) / 3 >= 128)
            pBits[i / k_uiBytePixels] = static_cast<uint8_t>(pBits[i / k_uiBytePixels] | 1u << i % k_uiBytePixels);
    }
}

uint32_t encodeOneBit(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight)
{
    return encodeSurface(pSource, pTarget, uiWidth, uiHeight, encodeBits);
}

uint32_t encodeOneBitReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight)
{
    return encodeSurface(pSource, pTarget, uiWidth, uiHeight, encodeBitsReference);
}

uint32_t decodeOneBit(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight)
{
    if (pSource == nullptr || pTarget == nullptr)
        return 0;
    const PackedRows rows(uiWidth, uiHeight, k_uiBytePixels, 1);
    unpackRows(rows, pSource, pTarget,
               [](const uint8_t* pBits, uint8_t* pPixels, size_t uiByteCount)
               {
                   for (size_t i = 0; i < uiByteCount; ++i)
                       std::memcpy(pPixels + i * k_uiBytePixelBytes, k_bytePixels.aaui[pBits[i]], k_uiBytePixelBytes);
               });
    if (!rows.bFits)
        for (size_t y = 0; y < rows.uiRowCount; ++y)
        {
            const uint8_t uiLast = pSource[y * rows.uiPackedPitch + rows.uiWholeGroups];
            std::memcpy(pTarget + y * rows.uiPixelPitch + rows.uiWholeGroups * k_uiBytePixelBytes, k_bytePixels.aaui[uiLast],
                        size_t{uiWidth % k_uiBytePixels} * 4);
        }
    return countBytes(uiWidth, uiHeight, 32);
}

uint32_t decodeOneBitReference(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight)
{
    if (pSource == nullptr || pTarget == nullptr)
        return 0;
    const PackedRows rows(uiWidth, uiHeight, k_uiBytePixels, 1);
    for (size_t y = 0; y < uiHeight; ++y)
        for (size_t x = 0; x < uiWidth; ++x)
        {
            const bool bSet = (pSource[y * rows.uiPackedPitch + x / k_uiBytePixels] >> x % k_uiBytePixels & 1) != 0;
            uint8_t* pPixel = pTarget + y * rows.uiPixelPitch + 4 * x;
            std::fill_n(pPixel, 3, static_cast<uint8_t>(bSet ? 255 : 0));
            pPixel[3] = 255;
        }
    return countBytes(uiWidth, uiHeight, 32);
}

} // namespace moxtexture
