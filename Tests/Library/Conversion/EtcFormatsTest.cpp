#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Codecs/ETC/EtcCompressImage.h"
#include "Codecs/ETC/EtcDecompressImage.h"
#include "Conversion/CodecTable.h"
#include "Conversion/CompressSurface.h"
#include "Conversion/DecompressSurface.h"
#include "Conversion/Transcode.h"
#include "Core/ByteOrder.h"
#include "Formats/FormatNames.h"
#include "Library/Conversion/EnlargedLevel.h"
#include "Support/SeededPictures.h"
#include "Texture/SurfaceWalk.h"

// ETC1, ETC2 and EAC on the whole road between formats; what the codec does with one surface is tested beside it.

using namespace moxtexture;
using conversiontest::enlargeLevel;

namespace
{

using Bytes = std::vector<uint8_t>;

struct Row
{
    EMOXTPixelFormat eFormat;
    uint32_t uiPixelBytes; ///< of what the encoder takes and the decoder gives
    uint32_t uiBlockBytes; ///< of 4 by 4 pixels
};

constexpr Row k_aRows[] = {
    {ePF_ETC1, 3, 8}, {ePF_ETC2_RGB, 3, 8}, {ePF_ETC2_RGBA, 4, 16}, {ePF_ETC2_RGB_A1, 4, 8}, {ePF_EAC_R11, 2, 8}, {ePF_EAC_RG11, 4, 16},
};

constexpr bool isEAC(const Row& row)
{
    return row.eFormat == ePF_EAC_R11 || row.eFormat == ePF_EAC_RG11;
}

struct Shape
{
    uint32_t uiWidth, uiHeight;
    uint32_t uiDepth = 1, uiLevels = 1, uiMembers = 1, uiFaces = 1;
};

CMOXTextureHeader makeHeader(MOXPixelWord pixelFormat, const Shape& shape, EMOXTChannelType eType = eCT_UnsignedNormalisedByte)
{
    return {pixelFormat,     shape.uiHeight, shape.uiWidth, shape.uiDepth, shape.uiLevels,
            shape.uiMembers, shape.uiFaces,  eCS_Linear,    eType,         false};
}

/// Seeded noise of the whole block, so that no two surfaces are alike.
CMOXTexture makeNoise(MOXPixelWord pixelFormat, const Shape& shape, EMOXTChannelType eType = eCT_UnsignedNormalisedByte)
{
    CMOXTexture texture(makeHeader(pixelFormat, shape, eType));
    const Bytes bytes = testsupport::CSeededRandom(texture.getBlockSize()).bytes(texture.getBlockSize());
    std::memcpy(texture.getDataPtr(), bytes.data(), bytes.size());
    return texture;
}

/// Noise in what the format's encoder takes.
CMOXTexture makeSource(const Row& row, const Shape& shape, bool bSigned = false)
{
    const Intermediate intermediate = getIntermediate(row.eFormat, bSigned ? eCT_SignedNormalisedInteger : eCT_UnsignedNormalisedInteger);
    return makeNoise(intermediate.pixelFormat, shape, intermediate.eChannelType);
}

Bytes surfaceOf(const CMOXTexture& texture, uint32_t uiLevel = 0, uint32_t uiMember = 0, uint32_t uiFace = 0)
{
    const uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
    return {pSurface, pSurface + texture.getDataSize(uiLevel, false, false)};
}

[[nodiscard]] bool toFormat(CMOXTexture& texture, MOXPixelWord pixelFormat, uint32_t uiQuality = 0,
                            EMOXTChannelType eType = eCT_UnsignedNormalisedByte)
{
    return Transcode(texture, pixelFormat, eType, eCS_Linear, uiQuality, false);
}

/// The blocks of pixels, by the codec itself.
Bytes blocksOf(const Row& row, const Bytes& pixels, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiQuality = 0, bool bSigned = false)
{
    Bytes blocks(size_t{(uiWidth + 3) / 4} * ((uiHeight + 3) / 4) * row.uiBlockBytes);
    EXPECT_EQ(size_t{uiWidth} * uiHeight * row.uiPixelBytes, pixels.size());
    EXPECT_EQ(blocks.size(), etcCompressImage(pixels.data(), blocks.data(), uiWidth, uiHeight, uiQuality, row.eFormat, bSigned));
    return blocks;
}

/// The pixels of blocks, by the codec itself.
Bytes pixelsOf(const Row& row, const Bytes& blocks, uint32_t uiWidth, uint32_t uiHeight, bool bSigned = false)
{
    Bytes pixels(size_t{uiWidth} * uiHeight * row.uiPixelBytes);
    EXPECT_EQ(pixels.size(), etcDecompressImage(blocks.data(), pixels.data(), uiWidth, uiHeight, row.eFormat, bSigned));
    return pixels;
}

} // namespace

TEST(EtcFormats, HaveTheirEntriesAndDecodeWholeBlocksOfSmallSurfaces)
{
    for (const Row& row : k_aRows)
    {
        const CodecRow* pRow = findCodec(row.eFormat);
        ASSERT_NE(nullptr, pRow) << row.eFormat;
        EXPECT_NE(nullptr, pRow->pCompress) << row.eFormat;
        EXPECT_NE(nullptr, pRow->pDecompress) << row.eFormat;
        EXPECT_FALSE(pRow->bTakesDepth) << row.eFormat;
        EXPECT_FALSE(pRow->bDecodesSmallSurface) << row.eFormat;
    }
}

TEST(EtcFormats, AreEncodedAtEachQualityFromTheirIntermediateForm)
{
    constexpr Shape shape = {13, 7};
    const Bytes picture = testsupport::makePicture(shape.uiWidth, shape.uiHeight);
    for (const Row& row : k_aRows)
    {
        // Bytes go in as they are; 255 becomes 65535, which is 257 times as much.
        Bytes source;
        for (size_t i = 0; i < picture.size(); i += 4)
            for (size_t uiByte = 0; uiByte < row.uiPixelBytes; ++uiByte)
                source.push_back(picture[i + (isEAC(row) ? uiByte / 2 : uiByte)]);
        for (const uint32_t uiQuality : {0u, 1u, 2u, 3u})
        {
            SCOPED_TRACE(getFormatName(row.eFormat) + " at " + std::to_string(uiQuality));
            CMOXTexture texture(makeHeader(k_RGBA8, shape), picture.data());
            ASSERT_TRUE(toFormat(texture, row.eFormat, uiQuality));
            EXPECT_EQ(MOXPixelWord(row.eFormat), texture.getPixelFormat());
            EXPECT_EQ(8 * row.uiBlockBytes, texture.getBlockSize()); // 4 by 2 blocks
            EXPECT_EQ(blocksOf(row, source, shape.uiWidth, shape.uiHeight, uiQuality), surfaceOf(texture));
        }
    }
}

TEST(EtcFormats, OfEACWithASignTakeAndGiveSignedWords)
{
    // 0, 51, 102 and 255 of 255 are 0, 6553.4, 13106.8 and 32767 of 32767, rounded.
    constexpr uint8_t aui8Bytes[] = {0, 51, 102, 255};
    constexpr uint16_t aui16Words[] = {0, 6553, 13107, 32767};
    const CMOXTextureHeader header = makeHeader(k_RGBA8, {4, 4});
    CMOXTexture picture(header);
    Bytes red, redGreen;
    for (size_t i = 0; i < 16; ++i)
    {
        uint8_t* pPixel = picture.getDataPtr() + 4 * i;
        pPixel[0] = aui8Bytes[i % 4];
        pPixel[1] = aui8Bytes[i / 4];
        const uint16_t ui16Red = aui16Words[i % 4], ui16Green = aui16Words[i / 4];
        for (Bytes* pBytes : {&red, &redGreen})
            pBytes->insert(pBytes->end(), {static_cast<uint8_t>(ui16Red), static_cast<uint8_t>(ui16Red >> 8)});
        redGreen.insert(redGreen.end(), {static_cast<uint8_t>(ui16Green), static_cast<uint8_t>(ui16Green >> 8)});
    }
    for (const Row& row : k_aRows)
        if (isEAC(row))
        {
            CMOXTexture texture = picture;
            ASSERT_TRUE(toFormat(texture, row.eFormat, 0, eCT_SignedNormalisedInteger));
            EXPECT_EQ(eCT_SignedNormalisedShort, texture.getChannelType());
            const Bytes blocks = blocksOf(row, row.eFormat == ePF_EAC_R11 ? red : redGreen, 4, 4, 0, true);
            EXPECT_EQ(blocks, surfaceOf(texture));

            ASSERT_EQ(4 * 4 * row.uiPixelBytes, decompressTexture(texture));
            EXPECT_EQ(eCT_SignedNormalisedShort, texture.getChannelType());
            EXPECT_EQ(pixelsOf(row, blocks, 4, 4, true), surfaceOf(texture));
        }
}

TEST(EtcFormats, KeepTheTypeOfTheIntermediateWhateverIsAskedFor)
{
    for (const Row& row : k_aRows)
        for (const EMOXTChannelType eType :
             {eCT_UnsignedNormalisedByte, eCT_SignedByte, eCT_SignedNormalisedInteger, eCT_SignedFloatingPoint, eCT_UnsignedFloatingPoint})
        {
            CMOXTexture texture = makeNoise(k_RGBA8, {4, 4});
            ASSERT_TRUE(toFormat(texture, row.eFormat, 0, eType));
            const EMOXTChannelType eWords = isSignedChannelType(eType) ? eCT_SignedNormalisedShort : eCT_UnsignedNormalisedShort;
            EXPECT_EQ(isEAC(row) ? eWords : eCT_UnsignedNormalisedByte, texture.getChannelType()) << row.eFormat << ' ' << eType;
        }
}

TEST(EtcFormats, OfBytesTakeNoNoticeOfASignThatATextureClaims)
{
    for (const Row& row : k_aRows)
        if (!isEAC(row))
        {
            SCOPED_TRACE(getFormatName(row.eFormat));
            CMOXTexture claims = makeNoise(row.eFormat, {12, 8}, eCT_SignedNormalisedByte);
            const Bytes blocks = surfaceOf(claims);
            ASSERT_EQ(12 * 8 * row.uiPixelBytes, decompressTexture(claims));
            EXPECT_EQ(eCT_UnsignedNormalisedByte, claims.getChannelType());
            EXPECT_EQ(pixelsOf(row, blocks, 12, 8), surfaceOf(claims));

            // A source with a sign is refused by the codec itself, so the flag must not have got there.
            const CMOXTexture source = makeSource(row, {8, 8});
            CMOXTexture target(makeHeader(row.eFormat, {8, 8}));
            EXPECT_EQ(target.getBlockSize(), compressSurface(source, target, row.eFormat, 0, 0, 0, 0, true));
        }
}

TEST(EtcFormats, TakeChainsDownToOnePixelOfPicturesCubesAndArraysEnlargedWhereALevelIsTooSmall)
{
    constexpr Shape aShapes[] = {{16, 16, 1, 5, 1, 1}, {8, 16, 1, 5, 1, 6}, {13, 6, 1, 4, 3, 1}, {3, 3, 1, 1, 2, 6}, {1, 1, 1, 1, 1, 1}};
    for (const Shape& shape : aShapes)
        for (const Row& row : k_aRows)
        {
            SCOPED_TRACE(getFormatName(row.eFormat) + " " + std::to_string(shape.uiWidth) + " by " + std::to_string(shape.uiHeight));
            const CMOXTexture original = makeSource(row, shape);
            CMOXTexture encoded = original;
            ASSERT_TRUE(toFormat(encoded, row.eFormat));
            CMOXTexture decoded = encoded;
            ASSERT_EQ(original.getBlockSize(), decompressTexture(decoded));
            walkSurfaces(original,
                         [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                         {
                             const uint32_t uiWidth = original.getWidth(uiLevel), uiHeight = original.getHeight(uiLevel);
                             const uint32_t uiRaisedWidth = std::max(uiWidth, 4u), uiRaisedHeight = std::max(uiHeight, 4u);
                             const Bytes level = enlargeLevel(original, 4, 4, row.uiPixelBytes, uiLevel, uiMember, uiFace);
                             const Bytes blocks = blocksOf(row, level, uiRaisedWidth, uiRaisedHeight);
                             EXPECT_EQ(blocks, surfaceOf(encoded, uiLevel, uiMember, uiFace))
                                 << uiLevel << ' ' << uiMember << ' ' << uiFace;

                             // Decoded it is the corner of the enlarged picture.
                             const Bytes raised = pixelsOf(row, blocks, uiRaisedWidth, uiRaisedHeight);
                             Bytes corner;
                             for (size_t y = 0; y < uiHeight; ++y)
                             {
                                 const auto pRow = raised.begin() + static_cast<ptrdiff_t>(y * uiRaisedWidth * row.uiPixelBytes);
                                 corner.insert(corner.end(), pRow, pRow + uiWidth * row.uiPixelBytes);
                             }
                             EXPECT_EQ(corner, surfaceOf(decoded, uiLevel, uiMember, uiFace))
                                 << uiLevel << ' ' << uiMember << ' ' << uiFace;
                             return true;
                         });
        }
}

TEST(EtcFormats, TakeTheSlicesOfAVolumeOneAfterTheOther)
{
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(getFormatName(row.eFormat));
        const CMOXTexture original = makeSource(row, {8, 5, 3});
        const size_t uiSlice = size_t{8} * 5 * row.uiPixelBytes;
        Bytes expected;
        for (size_t z = 0; z < 3; ++z)
        {
            const uint8_t* pSlice = original.getDataPtr() + z * uiSlice;
            const Bytes blocks = blocksOf(row, Bytes(pSlice, pSlice + uiSlice), 8, 5);
            expected.insert(expected.end(), blocks.begin(), blocks.end());
        }
        CMOXTexture texture = original;
        ASSERT_TRUE(toFormat(texture, row.eFormat));
        EXPECT_EQ(expected, surfaceOf(texture));
    }
}

TEST(EtcFormats, TakeTheNumbers4And5AsTheSlowQualitiesAndNoneAboveThem)
{
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(getFormatName(row.eFormat));
        const auto encode = [&](uint32_t uiQuality)
        {
            CMOXTexture texture = makeNoise(k_RGBA8, {8, 4});
            EXPECT_TRUE(toFormat(texture, row.eFormat, uiQuality));
            return surfaceOf(texture);
        };
        EXPECT_EQ(encode(2), encode(4));
        EXPECT_EQ(encode(3), encode(5));
        for (const uint32_t uiQuality : {6u, 7u, 0xFFFFFFFFu})
        {
            CMOXTexture texture = makeNoise(k_RGBA8, {8, 4});
            EXPECT_FALSE(toFormat(texture, row.eFormat, uiQuality)) << uiQuality;
        }
    }
}

TEST(EtcFormats, DecodeAnyBytesOfAnySize)
{
    for (const Row& row : k_aRows)
        for (uint32_t uiHeight = 1; uiHeight <= 17; ++uiHeight)
            for (uint32_t uiWidth = 1; uiWidth <= 17; ++uiWidth)
            {
                CMOXTexture texture = makeNoise(row.eFormat, {uiWidth, uiHeight});
                ASSERT_EQ(uiWidth * uiHeight * row.uiPixelBytes, decompressTexture(texture));
                ASSERT_EQ(texture.getDataSize(), texture.getBlockSize());
            }
}

TEST(EtcFormats, ComeBackNearToWhatTheyWere)
{
    // A smooth picture, in which every format has its channels right to some hundredths; what it has no channel for comes back as 0, and
    // alpha as 255.
    constexpr uint32_t uiSide = 32;
    CMOXTexture picture(makeHeader(k_RGBA8, {uiSide, uiSide}));
    for (uint32_t i = 0; i < uiSide * uiSide; ++i)
    {
        uint8_t* pPixel = picture.getDataPtr() + size_t{4} * i;
        const uint32_t x = i % uiSide, y = i / uiSide;
        pPixel[0] = static_cast<uint8_t>(8 * x);
        pPixel[1] = static_cast<uint8_t>(8 * y);
        pPixel[2] = static_cast<uint8_t>(4 * (x + y));
        pPixel[3] = 255;
    }
    for (const Row& row : k_aRows)
        for (const uint32_t uiQuality : {0u, 1u})
        {
            CMOXTexture texture = picture;
            ASSERT_TRUE(toFormat(texture, row.eFormat, uiQuality));
            ASSERT_TRUE(toFormat(texture, k_RGBA8));
            for (uint32_t i = 0; i < 4 * uiSide * uiSide; ++i)
            {
                const uint32_t uiChannels = row.eFormat == ePF_EAC_R11 ? 1 : (row.eFormat == ePF_EAC_RG11 ? 2 : 4);
                const int iExpected = i % 4 < uiChannels || i % 4 == 3 ? picture.getDataPtr()[i] : 0;
                ASSERT_NEAR(iExpected, texture.getDataPtr()[i], 24) << getFormatName(row.eFormat) << ' ' << uiQuality << ' ' << i;
            }
        }
}
