#include "Codecs/BC/BcDecompress.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "Codecs/BC/BcAlphaBlock.h"
#include "Codecs/BC/BcColours.h"
#include "Core/Bits.h"

namespace moxtexture
{

namespace
{

constexpr size_t k_uiPixelBytes = 4;

BcPixels decodeColours(const uint8_t* pPart, EBcColourForm eForm)
{
    const BcPalette palette = makeBcPalette(loadLE<uint16_t>(pPart), loadLE<uint16_t>(pPart + 2), eForm);
    const auto uiIndices = loadLE<uint32_t>(pPart + 4);
    BcPixels pixels;
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
        pixels[i] = palette[uiIndices >> 2 * i & 3];
    return pixels;
}

BcPixels decodeBlock(const uint8_t* pBlock, uint32_t uiType)
{
    if (!hasBcAlphaPart(uiType))
        return decodeColours(pBlock, EBcColourForm::eByOrder);
    const bool bExplicit = hasExplicitAlpha(uiType);
    const BcAlphas alphas = bExplicit ? decodeBcExplicitAlphaBlock(pBlock) : decodeBcAlphaBlock(pBlock);
    BcPixels pixels = decodeColours(pBlock + k_uiBcPartBytes, bExplicit ? EBcColourForm::eAlwaysFourColour : EBcColourForm::eByOrder);
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
        pixels[i] = (pixels[i] & 0x00FFFFFF) | static_cast<uint32_t>(alphas[i]) << 24;
    return pixels;
}

uint32_t decompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiType,
                         decltype(&bcDecodeRow) decodeRow)
{
    if (!isBcType(uiType) || uiWidth == 0 || uiHeight == 0)
        return 0;
    const size_t uiRowBytes = uiWidth * k_uiPixelBytes;
    const auto uiResult = static_cast<uint32_t>(uiRowBytes * uiHeight);
    if (pSource == nullptr || pDestination == nullptr)
        return uiResult;

    const size_t uiBlockBytes = getBcBlockBytes(uiType);
    const size_t uiBlockCount = roundUpToMultiple(uiWidth, k_uiBcSide) / k_uiBcSide;
    const size_t uiPaddedRowBytes = uiBlockCount * k_uiBcRowBytes;
    // Rows of blocks that reach beyond the surface are decoded aside.
    std::vector<uint8_t> padded;
    if (uiRowBytes != uiPaddedRowBytes || uiHeight % k_uiBcSide != 0)
        padded.resize(uiPaddedRowBytes * k_uiBcSide);
    for (uint32_t uiRowsLeft = uiHeight; uiRowsLeft > 0;)
    {
        const uint32_t uiRows = std::min(uiRowsLeft, k_uiBcSide);
        if (uiRowBytes == uiPaddedRowBytes && uiRows == k_uiBcSide)
        {
            decodeRow({pDestination, uiRowBytes, pSource, uiBlockBytes, uiBlockCount}, uiType);
        }
        else
        {
            decodeRow({padded.data(), uiPaddedRowBytes, pSource, uiBlockBytes, uiBlockCount}, uiType);
            for (uint32_t y = 0; y < uiRows; ++y)
                std::memcpy(pDestination + y * uiRowBytes, padded.data() + y * uiPaddedRowBytes, uiRowBytes);
        }
        pSource += uiBlockCount * uiBlockBytes;
        pDestination += uiRows * uiRowBytes;
        uiRowsLeft -= uiRows;
    }
    return uiResult;
}

} // namespace

void bcDecodeRowReference(const BcRowToDecode& row, uint32_t uiType)
{
    for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; ++uiBlock)
    {
        const BcPixels pixels = decodeBlock(row.pParts + uiBlock * row.uiBlockBytes, uiType);
        for (uint32_t i = 0; i < k_uiBcPixels; ++i)
            storeLE(row.pPixels + i / k_uiBcSide * row.uiPitch + uiBlock * k_uiBcRowBytes + i % k_uiBcSide * k_uiPixelBytes, pixels[i]);
    }
}

uint32_t bcDecompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiType)
{
    return decompressImage(pSource, pDestination, uiWidth, uiHeight, uiType, bcDecodeRow);
}

uint32_t bcDecompressImageReference(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiType)
{
    return decompressImage(pSource, pDestination, uiWidth, uiHeight, uiType, bcDecodeRowReference);
}

} // namespace moxtexture
