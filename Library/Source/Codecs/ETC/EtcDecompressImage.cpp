#include "Codecs/ETC/EtcDecompressImage.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "Codecs/ETC/EtcDecodeRow.h"
#include "Codecs/ETC/EtcFormats.h"

namespace moxtexture
{

namespace
{

constexpr size_t k_uiMostPixelBytes = 4;

struct Surface
{
    uint8_t* pPixels;
    uint32_t uiWidth;
    uint32_t uiHeight;
    size_t uiPixelBytes;
};

/// Decodes a block that may reach beyond the surface, and drops what does.
void decodeClipped(const uint8_t* pBlock, const Surface& surface, uint32_t uiX, uint32_t uiY, EtcRowDecoder decodeRow)
{
    uint8_t aui8Patch[16 * k_uiMostPixelBytes];
    const size_t uiPatchPitch = 4 * surface.uiPixelBytes;
    decodeRow({pBlock, 1, aui8Patch, uiPatchPitch});
    const size_t uiRowBytes = std::min(surface.uiWidth - uiX, 4u) * surface.uiPixelBytes;
    const size_t uiRows = std::min(surface.uiHeight - uiY, 4u);
    for (size_t y = 0; y < uiRows; ++y)
    {
        const size_t uiFirstPixel = (uiY + y) * surface.uiWidth + uiX;
        std::memcpy(surface.pPixels + uiFirstPixel * surface.uiPixelBytes, aui8Patch + y * uiPatchPitch, uiRowBytes);
    }
}

void decodeSurface(const uint8_t* pBlocks, const Surface& surface, size_t uiBlockBytes, EtcRowDecoder decodeRow)
{
    const size_t uiPitch = surface.uiWidth * surface.uiPixelBytes;
    for (uint32_t uiRow = 0; uiRow < (surface.uiHeight + 3ull) / 4; ++uiRow)
    {
        const uint32_t uiY = uiRow * 4;
        const uint32_t uiWholeBlocks = surface.uiHeight - uiY >= 4 ? surface.uiWidth / 4 : 0;
        if (uiWholeBlocks > 0)
            decodeRow({pBlocks, uiWholeBlocks, surface.pPixels + uiY * uiPitch, uiPitch});
        pBlocks += uiWholeBlocks * uiBlockBytes;
        for (uint64_t uiX = uint64_t{uiWholeBlocks} * 4; uiX < surface.uiWidth; uiX += 4)
        {
            decodeClipped(pBlocks, surface, static_cast<uint32_t>(uiX), uiY, decodeRow);
            pBlocks += uiBlockBytes;
        }
    }
}

/// The bytes of a surface, or 0 if they don't fit the result.
uint32_t countBytes(uint32_t uiWidth, uint32_t uiHeight, size_t uiPixelBytes)
{
    const uint64_t uiPixels = uint64_t{uiWidth} * uiHeight;
    return uiPixels <= std::numeric_limits<uint32_t>::max() / uiPixelBytes ? static_cast<uint32_t>(uiPixels * uiPixelBytes) : 0;
}

uint32_t decompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiFormat,
                         EtcRowDecoder decodeRow)
{
    const EtcFormatRow* const pForm = findEtcFormat(uiFormat);
    if (pForm == nullptr)
        return 0;
    const uint32_t uiResult = countBytes(uiWidth, uiHeight, pForm->uiPixelBytes);
    if (uiResult != 0 && pSource != nullptr && pDestination != nullptr)
        decodeSurface(pSource, {pDestination, uiWidth, uiHeight, pForm->uiPixelBytes}, pForm->uiBlockBytes, decodeRow);
    return uiResult;
}

} // namespace

uint32_t etcDecompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiFormat,
                            bool bSigned)
{
    return decompressImage(pSource, pDestination, uiWidth, uiHeight, uiFormat, findEtcRowDecoder(uiFormat, bSigned));
}

uint32_t etcDecompressImageReference(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiFormat,
                                     bool bSigned)
{
    return decompressImage(pSource, pDestination, uiWidth, uiHeight, uiFormat, findEtcRowDecoderReference(uiFormat, bSigned));
}

} // namespace moxtexture
