#include "Codecs/ETC/EtcDecodeRow.h"

#include <cstring>

#include "Codecs/ETC/EacBlock.h"
#include "Codecs/ETC/EtcDecodeA1.h"
#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcFormats.h"
#include "Core/ByteOrder.h"

namespace moxtexture
{

namespace
{

/// Sixteen pixels in row order from planes of bytes.
void interleave(const EtcPixels& pixels, const EtcAlphas& alphas, uint8_t* pPatch)
{
    for (size_t i = 0; i < 16; ++i)
    {
        pPatch[4 * i] = pixels.aui8Red[i];
        pPatch[4 * i + 1] = pixels.aui8Green[i];
        pPatch[4 * i + 2] = pixels.aui8Blue[i];
        pPatch[4 * i + 3] = alphas.aui8[i];
    }
}

void decodeRGB(const uint8_t* pBlock, uint8_t* pPatch)
{
    etcDecodeBlockETC2(loadEtcBlock(pBlock), pPatch, 4, 0, 0);
}

void decodeRGBA(const uint8_t* pBlock, uint8_t* pPatch)
{
    const EtcAlphas alphas = decodeEtcAlphas(pBlock);
    interleave(decodeEtcPixelsETC2(loadEtcBlock(pBlock + k_uiEacBlockBytes)), alphas, pPatch);
}

void decodeA1(const uint8_t* pBlock, uint8_t* pPatch)
{
    EtcAlphas alphas;
    const EtcPixels pixels = decodeEtcPixelsA1(loadEtcBlock(pBlock), alphas);
    interleave(pixels, alphas, pPatch);
}

/// A block a channel, one after the other, into pixels of kChannels words.
template <size_t kChannels, bool kSigned>
void decodeWords(const uint8_t* pBlocks, uint8_t* pPatch)
{
    for (size_t uiChannel = 0; uiChannel < kChannels; ++uiChannel)
    {
        const std::array<uint16_t, 16> values = decodeEacValues(pBlocks + uiChannel * k_uiEacBlockBytes, kSigned);
        for (size_t i = 0; i < 16; ++i)
            storeLE(pPatch + (i * kChannels + uiChannel) * sizeof(uint16_t), values[i]);
    }
}

/// A row by way of a patch of sixteen pixels a block.
template <uint32_t kFormat, void (*kDecode)(const uint8_t*, uint8_t*)>
void decodeRow(const EtcRowToDecode& row)
{
    constexpr EtcFormatRow kForm = *findEtcFormat(kFormat);
    constexpr size_t kPatchRowBytes = 4 * kForm.uiPixelBytes;
    for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; ++uiBlock)
    {
        uint8_t aui8Patch[4 * kPatchRowBytes];
        kDecode(row.pBlocks + uiBlock * kForm.uiBlockBytes, aui8Patch);
        for (size_t y = 0; y < 4; ++y)
            std::memcpy(row.pPixels + y * row.uiPitch + uiBlock * kPatchRowBytes, aui8Patch + y * kPatchRowBytes, kPatchRowBytes);
    }
}

} // namespace

EtcRowDecoder findEtcRowDecoderReference(uint32_t uiFormat, bool bSigned)
{
    switch (uiFormat)
    {
    case ePF_ETC1:
    case ePF_ETC2_RGB:
        return decodeRow<ePF_ETC2_RGB, decodeRGB>;
    case ePF_ETC2_RGBA:
        return decodeRow<ePF_ETC2_RGBA, decodeRGBA>;
    case ePF_ETC2_RGB_A1:
        return decodeRow<ePF_ETC2_RGB_A1, decodeA1>;
    case ePF_EAC_R11:
        return bSigned ? decodeRow<ePF_EAC_R11, decodeWords<1, true>> : decodeRow<ePF_EAC_R11, decodeWords<1, false>>;
    case ePF_EAC_RG11:
        return bSigned ? decodeRow<ePF_EAC_RG11, decodeWords<2, true>> : decodeRow<ePF_EAC_RG11, decodeWords<2, false>>;
    default:
        return nullptr;
    }
}

} // namespace moxtexture
