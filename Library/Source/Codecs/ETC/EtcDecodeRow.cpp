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

/// Decodes the blocks of a place into sixteen pixels in row order.
template <uint32_t kFormat, bool kSigned>
void decodePatch(const uint8_t* pBlocks, uint8_t* pPatch)
{
    if constexpr (kFormat == ePF_ETC2_RGB)
    {
        etcDecodeBlockETC2(loadEtcBlock(pBlocks), pPatch, 4, 0, 0);
    }
    else if constexpr (kFormat == ePF_ETC2_RGBA)
    {
        interleave(decodeEtcPixelsETC2(loadEtcBlock(pBlocks + k_uiEacBlockBytes)), decodeEtcAlphas(pBlocks), pPatch);
    }
    else if constexpr (kFormat == ePF_ETC2_RGB_A1)
    {
        EtcAlphas alphas;
        const EtcPixels pixels = decodeEtcPixelsA1(loadEtcBlock(pBlocks), alphas);
        interleave(pixels, alphas, pPatch);
    }
    else
    {
        // A block a channel, one after the other.
        constexpr size_t kChannels = findEtcFormat(kFormat)->uiBlockBytes / k_uiEacBlockBytes;
        for (size_t uiChannel = 0; uiChannel < kChannels; ++uiChannel)
        {
            const std::array<uint16_t, 16> values = decodeEacValues(pBlocks + uiChannel * k_uiEacBlockBytes, kSigned);
            for (size_t i = 0; i < 16; ++i)
                storeLE(pPatch + (i * kChannels + uiChannel) * sizeof(uint16_t), values[i]);
        }
    }
}

struct RowDecoders
{
    template <uint32_t kFormat, bool kSigned>
    static void decodeRow(const EtcRowToDecode& row)
    {
        constexpr EtcFormatRow kForm = *findEtcFormat(kFormat);
        constexpr size_t kPatchRowBytes = 4 * kForm.uiPixelBytes;
        for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; ++uiBlock)
        {
            uint8_t aui8Patch[4 * kPatchRowBytes];
            decodePatch<kFormat, kSigned>(row.pBlocks + uiBlock * kForm.uiBlockBytes, aui8Patch);
            for (size_t y = 0; y < 4; ++y)
                std::memcpy(row.pPixels + y * row.uiPitch + uiBlock * kPatchRowBytes, aui8Patch + y * kPatchRowBytes, kPatchRowBytes);
        }
    }
};

} // namespace

EtcRowDecoder findEtcRowDecoderReference(uint32_t uiFormat, bool bSigned)
{
    return chooseEtcRowDecoder<RowDecoders>(uiFormat, bSigned);
}

} // namespace moxtexture
