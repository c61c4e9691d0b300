#include "Codecs/ETC/EtcCompressImage.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "Codecs/ETC/EacBlock.h"
#include "Codecs/ETC/EacCompressBlock.h"
#include "Codecs/ETC/EtcAlphaBlock.h"
#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcDecompressImage.h"
#include "Codecs/ETC/EtcExhaustiveBlock.h"
#include "Codecs/ETC/EtcFastBlock.h"
#include "Codecs/ETC/EtcFastETC2.h"
#include "Codecs/ETC/EtcFormats.h"
#include "Codecs/ETC/EtcPunchThrough.h"
#include "Codecs/ETC/EtcQuality.h"
#include "Core/ByteOrder.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using testing::Each;
using testsupport::CSeededRandom;
using Bytes = std::vector<uint8_t>;

namespace
{

constexpr uint32_t k_auiQualities[] = {eEtcFast, eEtcFastPerceptual, eEtcSlow, eEtcSlowPerceptual, 4, 5};

size_t pixelBytes(uint32_t uiFormat)
{
    return findEtcFormat(uiFormat)->uiPixelBytes;
}

/// Slopes with noise, in the form that the format is encoded from: no two blocks alike, and alphas on both sides of 128.
Bytes makePixels(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiFormat)
{
    CSeededRandom random(uiFormat);
    Bytes pixels;
    for (uint32_t y = 0; y < uiHeight; ++y)
        for (uint32_t x = 0; x < uiWidth; ++x)
            for (uint32_t i = 0; i < pixelBytes(uiFormat); ++i)
                pixels.push_back(static_cast<uint8_t>(30 * (i + 1) + 9 * x + 5 * y + random.below(40)));
    return pixels;
}

Bytes encode(const Bytes& pixels, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiQuality, uint32_t uiFormat, bool bSigned = false)
{
    const uint32_t uiBytes = etcCompressImage(nullptr, nullptr, uiWidth, uiHeight, uiQuality, uiFormat, bSigned);
    Bytes blocks(uiBytes);
    EXPECT_EQ(uiBytes, etcCompressImage(pixels.data(), blocks.data(), uiWidth, uiHeight, uiQuality, uiFormat, bSigned));
    return blocks;
}

/// What a column or row of a padded side is taken from: 5 pixels, say, are 0 1 2 3 4 and then 2 3 4 once more.
uint32_t sourceOf(uint32_t uiPlace, uint32_t uiSize)
{
    const uint32_t uiPadded = (uiSize + 3) / 4 * 4;
    return uiPlace < uiSize ? uiPlace : uiPlace + uiSize - uiPadded;
}

/// The bytes of the sixteen pixels of a block, uiBytes each.
std::vector<Bytes> takeBlock(const Bytes& pixels, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiX, uint32_t uiY, size_t uiBytes)
{
    std::vector<Bytes> block;
    for (uint32_t y = uiY; y < uiY + 4; ++y)
        for (uint32_t x = uiX; x < uiX + 4; ++x)
        {
            const size_t uiFirst = (size_t{sourceOf(y, uiHeight)} * uiWidth + sourceOf(x, uiWidth)) * uiBytes;
            block.emplace_back(pixels.begin() + static_cast<ptrdiff_t>(uiFirst),
                               pixels.begin() + static_cast<ptrdiff_t>(uiFirst + uiBytes));
        }
    return block;
}

EtcPixels coloursOf(const std::vector<Bytes>& block)
{
    EtcPixels pixels;
    for (size_t i = 0; i < 16; ++i)
    {
        pixels.aui8Red[i] = block[i][0];
        pixels.aui8Green[i] = block[i][1];
        pixels.aui8Blue[i] = block[i][2];
    }
    return pixels;
}

EtcAlphas alphasOf(const std::vector<Bytes>& block)
{
    EtcAlphas alphas;
    for (size_t i = 0; i < 16; ++i)
        alphas.aui8[i] = block[i][3];
    return alphas;
}

Bytes toStream(const EtcBlockWords& words)
{
    Bytes bytes(8);
    for (size_t i = 0; i < 8; ++i)
        bytes[i] = static_cast<uint8_t>((i < 4 ? words.ui32High : words.ui32Low) >> (24 - 8 * (i % 4)));
    return bytes;
}

Bytes encodeColours(const EtcPixels& pixels, uint32_t uiQuality, bool bETC2)
{
    EtcBlockWords words;
    switch (uiQuality)
    {
    case 0:
        bETC2 ? etcFastBlockETC2(pixels, words) : static_cast<void>(etcFastBlockETC1(pixels, words));
        break;
    case 1:
        bETC2 ? etcFastBlockETC2Perceptual(pixels, words) : static_cast<void>(etcFastBlockETC1Perceptual(pixels, words));
        break;
    case 2:
    case 4:
        bETC2 ? etcExhaustiveBlockETC2(pixels, words) : etcExhaustiveBlockETC1(pixels, words);
        break;
    default:
        bETC2 ? etcExhaustiveBlockETC2Perceptual(pixels, words) : etcExhaustiveBlockETC1Perceptual(pixels, words);
    }
    return toStream(words);
}

Bytes encodeAlphas(const EtcAlphas& alphas, uint32_t uiQuality)
{
    Bytes bytes(8);
    uiQuality < 2 ? alphaBlockFast(alphas, bytes.data()) : alphaBlockThorough(alphas, bytes.data());
    return bytes;
}

Bytes encodeWords(const std::vector<Bytes>& block, size_t uiChannel, bool bSigned)
{
    uint16_t aui16Pixels[16];
    for (size_t i = 0; i < 16; ++i)
        aui16Pixels[i] = static_cast<uint16_t>(block[i][2 * uiChannel] | block[i][2 * uiChannel + 1] << 8);
    Bytes bytes(8);
    eacCompressBlock(aui16Pixels, bytes.data(), bSigned);
    return bytes;
}

Bytes encodeBlock(const std::vector<Bytes>& block, uint32_t uiQuality, uint32_t uiFormat, bool bSigned)
{
    Bytes first, second;
    if (uiFormat == ePF_ETC1 || uiFormat == ePF_ETC2_RGB)
        first = encodeColours(coloursOf(block), uiQuality, uiFormat == ePF_ETC2_RGB);
    if (uiFormat == ePF_ETC2_RGBA)
    {
        first = encodeAlphas(alphasOf(block), uiQuality);
        second = encodeColours(coloursOf(block), uiQuality, true);
    }
    if (uiFormat == ePF_ETC2_RGB_A1)
    {
        EtcBlockWords words;
        etcFastBlockETC2A1(coloursOf(block), alphasOf(block), words);
        first = toStream(words);
    }
    if (uiFormat == ePF_EAC_R11 || uiFormat == ePF_EAC_RG11)
        first = encodeWords(block, 0, bSigned);
    if (uiFormat == ePF_EAC_RG11)
        second = encodeWords(block, 1, bSigned);
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// Every block of an image by the encoder that its format and quality have.
Bytes encodeBlocks(const Bytes& pixels, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiQuality, uint32_t uiFormat, bool bSigned = false)
{
    Bytes all;
    for (uint32_t y = 0; y < uiHeight; y += 4)
        for (uint32_t x = 0; x < uiWidth; x += 4)
        {
            const Bytes block = encodeBlock(takeBlock(pixels, uiWidth, uiHeight, x, y, pixelBytes(uiFormat)), uiQuality, uiFormat, bSigned);
            all.insert(all.end(), block.begin(), block.end());
        }
    return all;
}

} // namespace

TEST(EtcCompressImage, GivesHalfThePaddedPixelsForEightByteBlocksAndElseAllOfThem)
{
    for (const uint32_t uiFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGB_A1, ePF_EAC_R11})
        EXPECT_EQ(8u * 12 / 2, etcCompressImage(nullptr, nullptr, 5, 9, eEtcFast, uiFormat, false));
    for (const uint32_t uiFormat : {ePF_ETC2_RGBA, ePF_EAC_RG11})
        EXPECT_EQ(8u * 12, etcCompressImage(nullptr, nullptr, 5, 9, eEtcFast, uiFormat, false));
}

TEST(EtcCompressImage, TheSizeIsToldForANullPointerOrAnEmptySurfaceBeforeAnythingIsRefused)
{
    Bytes bytes(256, 7);
    EXPECT_EQ(8u, etcCompressImage(nullptr, bytes.data(), 4, 4, eEtcFast, ePF_ETC1, false));
    EXPECT_EQ(8u, etcCompressImage(bytes.data(), nullptr, 4, 4, eEtcFast, ePF_ETC1, false));
    // A quality that isn't one, a flag that doesn't go with the format, and formats of other folders (16 bytes a block).
    EXPECT_EQ(8u, etcCompressImage(nullptr, nullptr, 4, 4, 6, ePF_ETC1, false));
    EXPECT_EQ(8u, etcCompressImage(nullptr, nullptr, 4, 4, eEtcFast, ePF_ETC2_RGB, true));
    EXPECT_EQ(64u, etcCompressImage(nullptr, nullptr, 8, 8, eEtcFast, ePF_BC1, false));
    EXPECT_EQ(64u, etcCompressImage(nullptr, nullptr, 8, 8, eEtcFast, 1000, false));
    for (const auto& [uiWidth, uiHeight] : {std::pair{0u, 4u}, {4u, 0u}, {0u, 0u}})
        EXPECT_EQ(0u, etcCompressImage(bytes.data(), bytes.data() + 128, uiWidth, uiHeight, eEtcFast, ePF_ETC1, false));
    EXPECT_THAT(bytes, Each(7));
}

TEST(EtcCompressImage, ASizeThatDoesNotFitTheResultGivesZero)
{
    // 65536 * 65536 pixels are 2^31 bytes at half a byte each, and 2^32 at one.
    EXPECT_EQ(0x80000000u, etcCompressImage(nullptr, nullptr, 65536, 65536, eEtcFast, ePF_ETC1, false));
    EXPECT_EQ(0u, etcCompressImage(nullptr, nullptr, 65536, 65536, eEtcFast, ePF_ETC2_RGBA, false));
    EXPECT_EQ(0u, etcCompressImage(nullptr, nullptr, 0xFFFFFFFF, 0xFFFFFFFF, eEtcFast, ePF_ETC1, false));
    // Four rows less are 2^32 - 2^18 bytes; four more aren't 2^18, which is what 32 bits would keep.
    EXPECT_EQ(0xFFFC0000u, etcCompressImage(nullptr, nullptr, 65536, 65529, eEtcFast, ePF_EAC_RG11, false));
    EXPECT_EQ(0u, etcCompressImage(nullptr, nullptr, 65536, 65537, eEtcFast, ePF_EAC_RG11, false));
    EXPECT_EQ(0u, etcCompressImage(nullptr, nullptr, 0xFFFFFFFC, 0xFFFFFFFF, eEtcFast, ePF_ETC1, false));
    Bytes bytes(256, 7);
    EXPECT_EQ(0u, etcCompressImage(bytes.data(), bytes.data(), 65536, 65536, eEtcFast, ePF_ETC2_RGBA, false));
    EXPECT_THAT(bytes, Each(7));
}

TEST(EtcCompressImage, AnyOtherQualityOrFormatGivesZeroAndWritesNothing)
{
    const Bytes pixels(64);
    Bytes blocks(64, 7);
    for (const uint32_t uiQuality : {6u, 7u, 100u, 0xFFFFFFFFu})
        for (const EtcFormatRow& form : k_aEtcFormats)
            EXPECT_EQ(0u, etcCompressImage(pixels.data(), blocks.data(), 4, 4, uiQuality, form.uiFormat, false));
    for (const uint32_t uiQuality : k_auiQualities)
        for (const uint32_t uiFormat : {0u, 5u, 7u, 21u, 27u, 32u, 38u, 57u, 0xFFFFFFFFu})
            EXPECT_EQ(0u, etcCompressImage(pixels.data(), blocks.data(), 4, 4, uiQuality, uiFormat, false)) << uiFormat;
    EXPECT_THAT(blocks, Each(7));
}

TEST(EtcCompressImage, TheSignedFlagIsForEACOnlyBelowQualityFour)
{
    const Bytes pixels = makePixels(4, 4, ePF_ETC2_RGBA);
    Bytes blocks(16, 7);
    for (const uint32_t uiFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGBA, ePF_ETC2_RGB_A1})
        for (uint32_t uiQuality = 0; uiQuality < 4; ++uiQuality)
            EXPECT_EQ(0u, etcCompressImage(pixels.data(), blocks.data(), 4, 4, uiQuality, uiFormat, true));
    EXPECT_THAT(blocks, Each(7));
    EXPECT_EQ(8u, etcCompressImage(pixels.data(), blocks.data(), 4, 4, eEtcFast, ePF_EAC_R11, true));
    EXPECT_EQ(16u, etcCompressImage(pixels.data(), blocks.data(), 4, 4, eEtcFast, ePF_EAC_RG11, true));
    // On purpose: at 4 and 5 nobody asks.
    for (const uint32_t uiQuality : {4u, 5u})
        EXPECT_EQ(encode(pixels, 4, 4, uiQuality, ePF_ETC1, false), encode(pixels, 4, 4, uiQuality, ePF_ETC1, true));
}

TEST(EtcCompressImage, FourByFourPixelsAreOneBlock)
{
    for (const EtcFormatRow& form : k_aEtcFormats)
    {
        const Bytes pixels = makePixels(4, 4, form.uiFormat);
        Bytes blocks(form.uiBlockBytes + 1, 7);
        EXPECT_EQ(form.uiBlockBytes, etcCompressImage(pixels.data(), blocks.data(), 4, 4, eEtcFast, form.uiFormat, false));
        EXPECT_EQ(7, blocks.back());
        blocks.pop_back();
        EXPECT_EQ(encodeBlocks(pixels, 4, 4, eEtcFast, form.uiFormat), blocks);
    }
}

TEST(EtcCompressImage, EveryFormatAndFastQualityHasItsEncoderInEveryBlockAndAtEveryEdge)
{
    for (const uint32_t uiFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGBA, ePF_ETC2_RGB_A1})
        for (const uint32_t uiQuality : {eEtcFast, eEtcFastPerceptual})
            for (const auto& [uiWidth, uiHeight] : {std::pair{16u, 8u}, {6u, 4u}, {5u, 8u}, {8u, 7u}, {13u, 11u}})
            {
                const Bytes pixels = makePixels(uiWidth, uiHeight, uiFormat);
                EXPECT_EQ(encodeBlocks(pixels, uiWidth, uiHeight, uiQuality, uiFormat),
                          encode(pixels, uiWidth, uiHeight, uiQuality, uiFormat))
                    << uiFormat << " at " << uiQuality << ", " << uiWidth << " * " << uiHeight;
            }
}

TEST(EtcCompressImage, EveryFormatAndSlowQualityHasItsEncoder)
{
    for (const uint32_t uiFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGBA, ePF_ETC2_RGB_A1})
        for (const uint32_t uiQuality : {eEtcSlow, eEtcSlowPerceptual})
        {
            const Bytes pixels = makePixels(5, 4, uiFormat);
            EXPECT_EQ(encodeBlocks(pixels, 5, 4, uiQuality, uiFormat), encode(pixels, 5, 4, uiQuality, uiFormat)) << uiFormat;
        }
}

TEST(EtcCompressImage, EveryQualityOfAColourFormatGivesBlocksOfItsOwn)
{
    for (const uint32_t uiFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGBA})
    {
        const Bytes pixels = makePixels(12, 12, uiFormat);
        std::vector<Bytes> streams;
        for (uint32_t uiQuality = 0; uiQuality < 4; ++uiQuality)
        {
            streams.push_back(encode(pixels, 12, 12, uiQuality, uiFormat));
            for (uint32_t uiOther = 0; uiOther < uiQuality; ++uiOther)
                EXPECT_NE(streams[uiOther], streams[uiQuality]) << uiFormat << " at " << uiOther << " and " << uiQuality;
        }
    }
    const Bytes pixels = makePixels(12, 12, ePF_ETC1);
    EXPECT_NE(encode(pixels, 12, 12, eEtcFast, ePF_ETC1), encode(pixels, 12, 12, eEtcFast, ePF_ETC2_RGB));
}

TEST(EtcCompressImage, AlphaBlocksAreThoroughAtTheSlowQualitiesOnly)
{
    const Bytes pixels = makePixels(16, 16, ePF_ETC2_RGBA);
    std::vector<Bytes> alphaBlocks(4);
    for (uint32_t uiQuality = 0; uiQuality < 4; ++uiQuality)
    {
        const Bytes blocks = encode(pixels, 16, 16, uiQuality, ePF_ETC2_RGBA);
        for (size_t i = 0; i < blocks.size(); ++i)
            if (i % 16 < 8)
                alphaBlocks[uiQuality].push_back(blocks[i]);
    }
    EXPECT_EQ(alphaBlocks[eEtcFast], alphaBlocks[eEtcFastPerceptual]);
    EXPECT_EQ(alphaBlocks[eEtcSlow], alphaBlocks[eEtcSlowPerceptual]);
    EXPECT_NE(alphaBlocks[eEtcFast], alphaBlocks[eEtcSlow]);
}

TEST(EtcCompressImage, QualitiesFourAndFiveAreThoseOfTwoAndThree)
{
    for (const uint32_t uiFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGBA, ePF_ETC2_RGB_A1, ePF_EAC_R11})
    {
        const Bytes pixels = makePixels(4, 4, uiFormat);
        EXPECT_EQ(encode(pixels, 4, 4, eEtcSlow, uiFormat), encode(pixels, 4, 4, 4, uiFormat)) << uiFormat;
        EXPECT_EQ(encode(pixels, 4, 4, eEtcSlowPerceptual, uiFormat), encode(pixels, 4, 4, 5, uiFormat)) << uiFormat;
    }
}

TEST(EtcCompressImage, WordsAreEncodedAlikeAtEveryQualityInBothSigns)
{
    for (const uint32_t uiFormat : {ePF_EAC_R11, ePF_EAC_RG11})
        for (const bool bSigned : {false, true})
        {
            const Bytes pixels = makePixels(6, 5, uiFormat);
            const Bytes expected = encodeBlocks(pixels, 6, 5, eEtcFast, uiFormat, bSigned);
            for (const uint32_t uiQuality : k_auiQualities)
                EXPECT_EQ(expected, encode(pixels, 6, 5, uiQuality, uiFormat, bSigned)) << uiFormat << " at " << uiQuality;
        }
}

TEST(EtcCompressImage, PunchThroughIsEncodedAlikeAtEveryQuality)
{
    const Bytes pixels = makePixels(16, 16, ePF_ETC2_RGB_A1);
    const Bytes expected = encode(pixels, 16, 16, eEtcFast, ePF_ETC2_RGB_A1);
    for (const uint32_t uiQuality : k_auiQualities)
        EXPECT_EQ(expected, encode(pixels, 16, 16, uiQuality, ePF_ETC2_RGB_A1)) << uiQuality;
}

TEST(EtcCompressImage, EdgeBlocksRepeatThePixelsThatEndAtTheEdge)
{
    // Encoding the padded image, made by hand, gives the same blocks: columns 0 to 4 and 2 to 4, rows 0 to 5 and 4, 5.
    constexpr uint32_t k_auiColumns[] = {0, 1, 2, 3, 4, 2, 3, 4};
    constexpr uint32_t k_auiRows[] = {0, 1, 2, 3, 4, 5, 4, 5};
    for (const EtcFormatRow& form : k_aEtcFormats)
    {
        const Bytes pixels = CSeededRandom(form.uiFormat).bytes(5 * 6 * form.uiPixelBytes);
        Bytes padded;
        for (const uint32_t y : k_auiRows)
            for (const uint32_t x : k_auiColumns)
                for (size_t i = 0; i < form.uiPixelBytes; ++i)
                    padded.push_back(pixels[(y * 5 + x) * form.uiPixelBytes + i]);
        EXPECT_EQ(encode(padded, 8, 8, eEtcFast, form.uiFormat), encode(pixels, 5, 6, eEtcFast, form.uiFormat)) << form.uiFormat;
    }
}

TEST(EtcCompressImage, SurfacesBelowABlockAreOneBlock)
{
    for (const EtcFormatRow& form : k_aEtcFormats)
        for (uint32_t uiWidth = 1; uiWidth < 4; ++uiWidth)
            for (uint32_t uiHeight = 1; uiHeight < 4; ++uiHeight)
            {
                // Flat, so that every padding is the same.
                const Bytes pixels(size_t{uiWidth} * uiHeight * form.uiPixelBytes, 200);
                const Bytes whole(16 * form.uiPixelBytes, 200);
                EXPECT_EQ(encode(whole, 4, 4, eEtcFast, form.uiFormat), encode(pixels, uiWidth, uiHeight, eEtcFast, form.uiFormat));
            }
}

TEST(EtcCompressImage, AFlatImageOfAByteThatIsALevelAndItsModifierDecodesToItself)
{
    // 0x88 + 2 = 138 is level 8 of four bits, or 132 + 5 = 137 one of five: 138 has an exact block.
    for (const uint32_t uiFormat : {ePF_ETC1, ePF_ETC2_RGB})
    {
        const Bytes pixels(size_t{12} * 8 * 3, 138);
        const Bytes blocks = encode(pixels, 12, 8, eEtcSlow, uiFormat);
        Bytes decoded(pixels.size());
        EXPECT_EQ(decoded.size(), etcDecompressImage(blocks.data(), decoded.data(), 12, 8, uiFormat, false));
        EXPECT_THAT(decoded, Each(138));
    }
}

TEST(EtcCompressImage, ABlockWhoseHalvesAreFarApartIsIndividual)
{
    // Left half black, right half white: 31 levels apart in every channel, yet the two halves decode to their own colours.
    Bytes pixels;
    for (uint32_t i = 0; i < 16; ++i)
        pixels.insert(pixels.end(), 3, i % 4 < 2 ? 0 : 255);
    for (const uint32_t uiQuality : {eEtcFast, eEtcFastPerceptual})
    {
        const Bytes block = encode(pixels, 4, 4, uiQuality, ePF_ETC1);
        EXPECT_EQ(0, block[3] & 2);
        EXPECT_EQ(0x0F, block[0]);
        EXPECT_EQ(0x0F, block[1]);
        EXPECT_EQ(0x0F, block[2]);
    }
}

TEST(EtcCompressImage, BuffersNeedNoAlignment)
{
    for (const EtcFormatRow& form : k_aEtcFormats)
    {
        const Bytes pixels = makePixels(8, 4, form.uiFormat);
        Bytes shifted = pixels;
        shifted.insert(shifted.begin(), 0);
        const Bytes expected = encode(pixels, 8, 4, eEtcFast, form.uiFormat);
        Bytes blocks(expected.size() + 1);
        EXPECT_EQ(expected.size(), etcCompressImage(shifted.data() + 1, blocks.data() + 1, 8, 4, eEtcFast, form.uiFormat, false));
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), blocks.begin() + 1));
    }
}
