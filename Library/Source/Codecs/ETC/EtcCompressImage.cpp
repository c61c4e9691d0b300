#include "Codecs/ETC/EtcCompressImage.h"

#include <cstddef>

#include "Codecs/ETC/EacBlock.h"
#include "Codecs/ETC/EacCompressBlock.h"
#include "Codecs/ETC/EtcAlphaBlock.h"
#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcExhaustiveBlock.h"
#include "Codecs/ETC/EtcFastBlock.h"
#include "Codecs/ETC/EtcFastETC2.h"
#include "Codecs/ETC/EtcFormats.h"
#include "Codecs/ETC/EtcGather.h"
#include "Codecs/ETC/EtcPunchThrough.h"
#include "Codecs/ETC/EtcQuality.h"
#include "Core/Bits.h"

namespace moxtexture
{

namespace
{

using ColourEncoder = void (*)(const EtcPixels& pixels, EtcBlockWords& words);
using AlphaEncoder = void (*)(const EtcAlphas& alphas, uint8_t* pui8Destination);

/// The block encoders of a quality.
struct QualityRow
{
    ColourEncoder encodeETC1;
    ColourEncoder encodeETC2;
    AlphaEncoder encodeAlpha;
};

/// An encoder that also tells its error, which is of no interest here.
template <double (*kEncode)(const EtcPixels&, EtcBlockWords&)>
void encodeOnly(const EtcPixels& pixels, EtcBlockWords& words)
{
    static_cast<void>(kEncode(pixels, words));
}

constexpr QualityRow k_fast = {encodeOnly<etcFastBlockETC1>, etcFastBlockETC2, alphaBlockFast};
constexpr QualityRow k_fastPerceptual = {encodeOnly<etcFastBlockETC1Perceptual>, etcFastBlockETC2Perceptual, alphaBlockFast};
constexpr QualityRow k_slow = {etcExhaustiveBlockETC1, etcExhaustiveBlockETC2, alphaBlockThorough};
constexpr QualityRow k_slowPerceptual = {etcExhaustiveBlockETC1Perceptual, etcExhaustiveBlockETC2Perceptual, alphaBlockThorough};

/// By EEtcQuality.
constexpr const QualityRow* k_apQualities[] = {&k_fast, &k_fastPerceptual, &k_slow, &k_slowPerceptual, &k_slow, &k_slowPerceptual};
constexpr uint32_t k_uiQualityCount = sizeof(k_apQualities) / sizeof(k_apQualities[0]);

bool isEAC(uint32_t uiFormat)
{
    return uiFormat == ePF_EAC_R11 || uiFormat == ePF_EAC_RG11;
}

bool isAccepted(uint32_t uiQuality, uint32_t uiFormat, bool bSigned)
{
    if (uiQuality >= k_uiQualityCount || findEtcFormat(uiFormat) == nullptr)
        return false;
    return uiQuality >= eEtcSlowUnchecked || !bSigned || isEAC(uiFormat);
}

/// The bytes of the blocks, or 0 if they don't fit the result. A format without blocks of its own counts as one of 16 bytes.
uint32_t countBytes(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiFormat)
{
    const EtcFormatRow* const pForm = findEtcFormat(uiFormat);
    const uint64_t uiBlockBytes = pForm != nullptr ? pForm->uiBlockBytes : 16;
    // The only product that doesn't fit 64 bits is 2^64, which is 0 then: the answer for all that are too large.
    const uint64_t uiPaddedPixels = roundUpToMultiple(uiWidth, 4) * roundUpToMultiple(uiHeight, 4);
    const uint64_t uiBytes = uiPaddedPixels / 16 * uiBlockBytes;
    return static_cast<uint32_t>(uiBytes) == uiBytes ? static_cast<uint32_t>(uiBytes) : 0;
}

/// Calls encodeBlock(offsets, destination) for each block in the order of the stream, where offsets are those of its pixels.
template <typename EncodeBlock>
void encodeBlocks(const EtcSurface& surface, uint8_t* pDestination, size_t uiBlockBytes, EncodeBlock encodeBlock)
{
    for (uint64_t y = 0; y < surface.uiHeight; y += 4)
        for (uint64_t x = 0; x < surface.uiWidth; x += 4)
        {
            encodeBlock(getEtcBlockOffsets(surface, static_cast<uint32_t>(x), static_cast<uint32_t>(y)), pDestination);
            pDestination += uiBlockBytes;
        }
}

void encodeColours(const EtcSurface& surface, const EtcBlockOffsets& offsets, ColourEncoder encode, uint8_t* pBlock)
{
    EtcBlockWords words;
    encode(gatherEtcPixels(surface, offsets), words);
    storeEtcBlock(pBlock, words);
}

void encodePunchThrough(const EtcSurface& surface, const EtcBlockOffsets& offsets, uint8_t* pBlock)
{
    EtcBlockWords words;
    etcFastBlockETC2A1(gatherEtcPixels(surface, offsets), gatherEtcAlphas(surface, offsets), words);
    storeEtcBlock(pBlock, words);
}

/// A block a channel, red first.
void encodeWords(const EtcSurface& surface, const EtcBlockOffsets& offsets, size_t uiChannelCount, bool bSigned, uint8_t* pBlocks)
{
    for (size_t uiChannel = 0; uiChannel < uiChannelCount; ++uiChannel)
    {
        uint16_t aui16Pixels[16];
        gatherEacPixels(surface, offsets, uiChannel, aui16Pixels);
        eacCompressBlock(aui16Pixels, pBlocks + uiChannel * k_uiEacBlockBytes, bSigned);
    }
}

/// A surface of a format that is known, in blocks of uiBlockBytes.
void encodeSurface(const EtcSurface& surface, uint8_t* pDestination, size_t uiBlockBytes, uint32_t uiFormat, const QualityRow& quality,
                   bool bSigned)
{
    const auto encodeAll = [&](auto encodeBlock) { encodeBlocks(surface, pDestination, uiBlockBytes, encodeBlock); };
    switch (uiFormat)
    {
    case ePF_ETC1:
        return encodeAll([&](const EtcBlockOffsets& offsets, uint8_t* pBlock)
                         { encodeColours(surface, offsets, quality.encodeETC1, pBlock); });
    case ePF_ETC2_RGB:
        return encodeAll([&](const EtcBlockOffsets& offsets, uint8_t* pBlock)
                         { encodeColours(surface, offsets, quality.encodeETC2, pBlock); });
    case ePF_ETC2_RGBA:
        return encodeAll(
            [&](const EtcBlockOffsets& offsets, uint8_t* pBlock)
            {
                quality.encodeAlpha(gatherEtcAlphas(surface, offsets), pBlock);
                encodeColours(surface, offsets, quality.encodeETC2, pBlock + k_uiEacBlockBytes);
            });
    case ePF_ETC2_RGB_A1:
        return encodeAll([&](const EtcBlockOffsets& offsets, uint8_t* pBlock) { encodePunchThrough(surface, offsets, pBlock); });
    default:
        return encodeAll([&](const EtcBlockOffsets& offsets, uint8_t* pBlock)
                         { encodeWords(surface, offsets, uiBlockBytes / k_uiEacBlockBytes, bSigned, pBlock); });
    }
}

} // namespace

uint32_t etcCompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiQuality,
                          uint32_t uiFormat, bool bSigned)
{
    const uint32_t uiResult = countBytes(uiWidth, uiHeight, uiFormat);
    if (pSource == nullptr || pDestination == nullptr)
        return uiResult;
    if (uiResult == 0 || !isAccepted(uiQuality, uiFormat, bSigned))
        return 0;
    const EtcFormatRow& form = *findEtcFormat(uiFormat);
    encodeSurface({pSource, uiWidth, uiHeight, form.uiPixelBytes}, pDestination, form.uiBlockBytes, uiFormat, *k_apQualities[uiQuality],
                  bSigned);
    return uiResult;
}

} // namespace moxtexture
