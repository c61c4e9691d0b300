#include "Codecs/ETC/EtcDecompressImage.h"

#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcFormats.h"
#include "Core/ByteOrder.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using testing::Each;
using testing::ElementsAre;
using testsupport::CSeededRandom;
using Bytes = std::vector<uint8_t>;

namespace
{

size_t countBlocks(uint32_t uiWidth, uint32_t uiHeight)
{
    return size_t{(uiWidth + 3) / 4} * ((uiHeight + 3) / 4);
}

Bytes decode(decltype(&etcDecompressImage) decoder, const Bytes& blocks, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiFormat,
             bool bSigned = false)
{
    Bytes pixels(size_t{uiWidth} * uiHeight * findEtcFormat(uiFormat)->uiPixelBytes);
    EXPECT_EQ(pixels.size(), decoder(blocks.data(), pixels.data(), uiWidth, uiHeight, uiFormat, bSigned));
    return pixels;
}

std::vector<uint16_t> decodeWords(const Bytes& blocks, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiFormat, bool bSigned)
{
    const Bytes pixels = decode(etcDecompressImage, blocks, uiWidth, uiHeight, uiFormat, bSigned);
    std::vector<uint16_t> words(pixels.size() / 2);
    for (size_t i = 0; i < words.size(); ++i)
        words[i] = loadLE<uint16_t>(pixels.data() + 2 * i);
    return words;
}

void expectReferenceBytes(const Bytes& blocks, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiFormat)
{
    for (const bool bSigned : {false, true})
    {
        const Bytes expected = decode(etcDecompressImageReference, blocks, uiWidth, uiHeight, uiFormat, bSigned);
        forEachInstructionSet(
            [&]
            {
                EXPECT_TRUE(expected == decode(etcDecompressImage, blocks, uiWidth, uiHeight, uiFormat, bSigned))
                    << uiFormat << ": " << uiWidth << " * " << uiHeight << (bSigned ? ", signed" : "");
            });
    }
}

/// A flat block of individual mode: 4-bit level uiLevel in every channel, table 0, all indices 0 (2 is added).
Bytes greyBlock(uint8_t uiLevel)
{
    const auto uiByte = static_cast<uint8_t>(uiLevel * 17);
    return {uiByte, uiByte, uiByte, 0, 0, 0, 0, 0};
}

Bytes join(const std::vector<Bytes>& parts)
{
    Bytes all;
    for (const Bytes& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace

TEST(EtcDecompressImage, GivesTheBytesOfTheSurfaceForEachFormat)
{
    const std::pair<uint32_t, uint32_t> aExpected[] = {{ePF_ETC1, 75},         {ePF_ETC2_RGB, 75}, {ePF_ETC2_RGBA, 100},
                                                       {ePF_ETC2_RGB_A1, 100}, {ePF_EAC_R11, 50},  {ePF_EAC_RG11, 100}};
    for (const auto& [uiFormat, uiBytes] : aExpected)
    {
        const Bytes blocks(size_t{4} * 16);
        Bytes pixels(uiBytes, 7);
        EXPECT_EQ(uiBytes, etcDecompressImage(blocks.data(), pixels.data(), 5, 5, uiFormat, false));
    }
}

TEST(EtcDecompressImage, GivesTheSizeAndTouchesNothingForANullPointer)
{
    Bytes bytes(64, 7);
    for (const auto decoder : {etcDecompressImage, etcDecompressImageReference})
    {
        EXPECT_EQ(75u, decoder(nullptr, bytes.data(), 5, 5, ePF_ETC1, false));
        EXPECT_EQ(48u, decoder(bytes.data(), nullptr, 4, 4, ePF_ETC2_RGB, false));
        EXPECT_EQ(105u * 4, decoder(nullptr, nullptr, 7, 15, ePF_EAC_RG11, true));
    }
    EXPECT_THAT(bytes, Each(7));
}

TEST(EtcDecompressImage, AnyOtherFormatGivesZeroAndWritesNothing)
{
    Bytes bytes(256, 7);
    for (const auto decoder : {etcDecompressImage, etcDecompressImageReference})
        for (const uint32_t uiFormat : {0u, 5u, 7u, 15u, 21u, 27u, 38u, 51u, 1000u, 0xFFFFFFFFu})
        {
            EXPECT_EQ(0u, decoder(bytes.data(), bytes.data() + 128, 4, 4, uiFormat, false)) << uiFormat;
            EXPECT_EQ(0u, decoder(nullptr, nullptr, 4, 4, uiFormat, false)) << uiFormat;
        }
    EXPECT_THAT(bytes, Each(7));
}

TEST(EtcDecompressImage, ASurfaceWithoutPixelsGivesZeroAndWritesNothing)
{
    Bytes bytes(64, 7);
    for (const EtcFormatRow& form : k_aEtcFormats)
        for (const auto& [uiWidth, uiHeight] : {std::pair{0u, 4u}, {4u, 0u}, {0u, 0u}})
            EXPECT_EQ(0u, etcDecompressImage(bytes.data(), bytes.data(), uiWidth, uiHeight, form.uiFormat, false));
    EXPECT_THAT(bytes, Each(7));
}

TEST(EtcDecompressImage, ASizeThatDoesNotFitTheResultGivesZero)
{
    // 65536 * 65535 pixels of 4 bytes are 2^34 less 2^18; 32768 * 32767 are 2^32 less 2^17.
    EXPECT_EQ(0u, etcDecompressImage(nullptr, nullptr, 65536, 65535, ePF_ETC2_RGBA, false));
    EXPECT_EQ(0u, etcDecompressImage(nullptr, nullptr, 0xFFFFFFFF, 0xFFFFFFFF, ePF_EAC_R11, false));
    EXPECT_EQ(0xFFFE0000u, etcDecompressImage(nullptr, nullptr, 32768, 32767, ePF_ETC2_RGBA, false));
    EXPECT_EQ(0u, etcDecompressImage(nullptr, nullptr, 32768, 32768, ePF_ETC2_RGBA, false));
    // The greatest that fit, 2^32 - 1 = 286331153 * 5 * 3 and 2^32 - 2 = (2^31 - 1) * 2, and the next.
    EXPECT_EQ(0xFFFFFFFFu, etcDecompressImage(nullptr, nullptr, 286331153, 5, ePF_ETC1, false));
    EXPECT_EQ(0u, etcDecompressImage(nullptr, nullptr, 286331154, 5, ePF_ETC1, false));
    EXPECT_EQ(0xFFFFFFFEu, etcDecompressImage(nullptr, nullptr, 1, 0x7FFFFFFF, ePF_EAC_R11, false));
    EXPECT_EQ(0u, etcDecompressImage(nullptr, nullptr, 1, 0x80000000, ePF_EAC_R11, false));
    Bytes bytes(16, 7);
    EXPECT_EQ(0u, etcDecompressImage(bytes.data(), bytes.data(), 65536, 65536, ePF_EAC_R11, false));
    EXPECT_THAT(bytes, Each(7));
}

TEST(EtcDecompressImage, AnImageOfOnePixelIsOneBlockOfWhichOnePixelIsWritten)
{
    // The level 5 is the byte 85, index 0 of table 0 adds 2.
    Bytes pixels(16, 7);
    EXPECT_EQ(3u, etcDecompressImage(greyBlock(5).data(), pixels.data(), 1, 1, ePF_ETC1, false));
    EXPECT_THAT(pixels, ElementsAre(87, 87, 87, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7));
}

TEST(EtcDecompressImage, AFiveByThreeImageIsTwoBlocks)
{
    Bytes pixels(46, 7);
    const Bytes blocks = join({greyBlock(1), greyBlock(2)});
    EXPECT_EQ(45u, etcDecompressImage(blocks.data(), pixels.data(), 5, 3, ePF_ETC1, false));
    for (uint32_t i = 0; i < 45; ++i)
        EXPECT_EQ(i / 3 % 5 < 4 ? 17 + 2 : 34 + 2, pixels[i]) << i;
    EXPECT_EQ(7, pixels[45]);
}

TEST(EtcDecompressImage, BlocksGoRowByRow)
{
    // 9 by 6 pixels: three blocks in each of two rows.
    const Bytes blocks = join({greyBlock(0), greyBlock(1), greyBlock(2), greyBlock(3), greyBlock(4), greyBlock(5)});
    const Bytes pixels = decode(etcDecompressImage, blocks, 9, 6, ePF_ETC2_RGB);
    for (uint32_t y = 0; y < 6; ++y)
        for (uint32_t x = 0; x < 9; ++x)
            EXPECT_EQ((y / 4 * 3 + x / 4) * 17 + 2, pixels[(y * 9 + x) * 3 + 1]) << x << ", " << y;
}

TEST(EtcDecompressImage, AnETC1StreamWhoseSumsOverflowIsReadAsETC2)
{
    // Base 31 and delta 3 in red: T mode. Bits 28 and 27 are the upper bits of red's first level, 25 and 24 the lower ones: 1111.
    // Green and blue of the first colour are the levels 2 and 3, the second colour 4, 5, 6; index 0 everywhere is the first colour.
    const Bytes block = {0xFB, 0x23, 0x45, 0x62, 0, 0, 0, 0};
    const Bytes pixels = decode(etcDecompressImage, block, 1, 1, ePF_ETC1);
    EXPECT_THAT(pixels, ElementsAre(255, 34, 51));
    EXPECT_EQ(decode(etcDecompressImage, block, 4, 4, ePF_ETC2_RGB), decode(etcDecompressImage, block, 4, 4, ePF_ETC1));
}

TEST(EtcDecompressImage, TheAlphaBlockOfARGBABlockComesFirst)
{
    // Alpha 100 with multiplier 1 and table 0, all indices 0: 100 - 3.
    const Bytes block = join({{100, 0x10, 0, 0, 0, 0, 0, 0}, greyBlock(5)});
    EXPECT_THAT(decode(etcDecompressImage, block, 1, 2, ePF_ETC2_RGBA), ElementsAre(87, 87, 87, 97, 87, 87, 87, 97));
}

TEST(EtcDecompressImage, APunchThroughImageHasItsAlphaInTheFourthByte)
{
    // Opaque bit clear, all deltas 0, base level 16 in every channel (132 = 16 * 8 + 16 / 4). The msb of pixel (0, 0) alone is set,
    // so it is transparent; (1, 0) has index 0, without a modifier.
    const Bytes block = {0x80, 0x80, 0x80, 0x00, 0x00, 0x01, 0x00, 0x00};
    EXPECT_THAT(decode(etcDecompressImage, block, 2, 1, ePF_ETC2_RGB_A1), ElementsAre(0, 0, 0, 0, 132, 132, 132, 255));
}

TEST(EtcDecompressImage, RedAndGreenOfRG11AreTheEvenAndTheOddWords)
{
    // Multiplier 0, table 13, index 4 (bits 100 100 ...) adds 0: (0 * 8 + 4) * 32 + 0 and (255 * 8 + 4) * 32 + (2044 >> 6).
    const Bytes red = {0, 0x0D, 0x92, 0x49, 0x24, 0x92, 0x49, 0x24};
    const Bytes green = {255, 0x0D, 0x92, 0x49, 0x24, 0x92, 0x49, 0x24};
    EXPECT_THAT(decodeWords(join({red, green}), 2, 1, ePF_EAC_RG11, false), ElementsAre(128, 65439, 128, 65439));
    EXPECT_THAT(decodeWords(red, 2, 1, ePF_EAC_R11, false), ElementsAre(128, 128));
}

TEST(EtcDecompressImage, TheSignedFlagCountsForEACOnly)
{
    // The stored base 255 is -1: -1 * 8 = -8, and -(8 * 32 + 0) = -256.
    const Bytes block = {255, 0x0D, 0x92, 0x49, 0x24, 0x92, 0x49, 0x24};
    EXPECT_THAT(decodeWords(block, 1, 1, ePF_EAC_R11, true), ElementsAre(65536 - 256));
    // Beside it the stored base 128, -128, which counts as -127: 1016 * 32 + 1016 / 32 = 32543 below 0.
    const Bytes least = {128, 0x0D, 0x92, 0x49, 0x24, 0x92, 0x49, 0x24};
    EXPECT_THAT(decodeWords(join({block, least}), 1, 1, ePF_EAC_RG11, true), ElementsAre(65536 - 256, 65536 - 32543));
    for (const uint32_t uiFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGBA, ePF_ETC2_RGB_A1})
    {
        const Bytes blocks = CSeededRandom(uiFormat).bytes(256);
        EXPECT_EQ(decode(etcDecompressImage, blocks, 16, 16, uiFormat, false), decode(etcDecompressImage, blocks, 16, 16, uiFormat, true));
    }
}

TEST(EtcDecompressImage, GivesTheReferenceBytesAtEverySmallSize)
{
    for (const EtcFormatRow& form : k_aEtcFormats)
        for (uint32_t uiWidth = 1; uiWidth <= 21; ++uiWidth)
            for (uint32_t uiHeight = 1; uiHeight <= 9; ++uiHeight)
            {
                const size_t uiBytes = countBlocks(uiWidth, uiHeight) * form.uiBlockBytes;
                expectReferenceBytes(CSeededRandom(uiWidth * 16 + uiHeight).bytes(uiBytes), uiWidth, uiHeight, form.uiFormat);
            }
}

TEST(EtcDecompressImage, GivesTheReferenceBytesOfManyRandomBlocks)
{
    for (const EtcFormatRow& form : k_aEtcFormats)
        expectReferenceBytes(CSeededRandom(form.uiFormat).bytes(countBlocks(512, 512) * form.uiBlockBytes), 512, 512, form.uiFormat);
}

TEST(EtcDecompressImage, GivesTheReferenceBytesForEveryBaseAndSecondByteOfAnAlphaOrElevenBitBlock)
{
    // 65536 blocks with the indices 0 to 7 twice.
    Bytes blocks;
    for (uint32_t i = 0; i < 65536; ++i)
    {
        const Bytes block = {static_cast<uint8_t>(i), static_cast<uint8_t>(i >> 8), 0x05, 0x39, 0x77, 0x05, 0x39, 0x77};
        blocks.insert(blocks.end(), block.begin(), block.end());
    }
    expectReferenceBytes(blocks, 1024, 1024, ePF_EAC_R11);
    expectReferenceBytes(blocks, 512, 1024, ePF_EAC_RG11);
    expectReferenceBytes(blocks, 512, 1024, ePF_ETC2_RGBA);
}

TEST(EtcDecompressImage, GivesTheReferenceBytesForEveryBaseAndDeltaOfAChannel)
{
    // The byte of one channel takes every value and the others random ones, with and without the diff bit.
    CSeededRandom random(11);
    for (uint32_t uiChannel = 0; uiChannel < 3; ++uiChannel)
    {
        Bytes blocks;
        for (uint32_t i = 0; i < 4096; ++i)
        {
            Bytes block = random.bytes(8);
            block[uiChannel] = static_cast<uint8_t>(i);
            blocks.insert(blocks.end(), block.begin(), block.end());
        }
        expectReferenceBytes(blocks, 256, 256, ePF_ETC2_RGB);
        expectReferenceBytes(blocks, 256, 256, ePF_ETC2_RGB_A1);
    }
}

TEST(EtcDecompressImage, BuffersNeedNoAlignmentAndNothingBesideTheSurfaceIsWritten)
{
    for (const EtcFormatRow& form : k_aEtcFormats)
        for (const uint32_t uiWidth : {16u, 13u})
        {
            const Bytes blocks = CSeededRandom(form.uiFormat).bytes(countBlocks(uiWidth, 8) * form.uiBlockBytes + 1);
            const Bytes shifted(blocks.begin() + 1, blocks.end());
            const Bytes expected = decode(etcDecompressImageReference, shifted, uiWidth, 8, form.uiFormat);
            forEachInstructionSet(
                [&]
                {
                    Bytes pixels(expected.size() + 2, 7);
                    EXPECT_EQ(expected.size(), etcDecompressImage(blocks.data() + 1, pixels.data() + 1, uiWidth, 8, form.uiFormat, false));
                    EXPECT_EQ(7, pixels.front());
                    EXPECT_EQ(7, pixels.back());
                    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), pixels.begin() + 1));
                });
        }
}
