#include <algorithm>
#include <cstring>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "Codecs/MOXTC/MOXTCCompress.h"
#include "Codecs/MOXTC/MOXTCDecompress.h"
#include "Conversion/CodecTable.h"
#include "Conversion/CompressSurface.h"
#include "Conversion/DecompressSurface.h"
#include "Conversion/Transcode.h"
#include "Formats/FormatNames.h"
#include "Library/Conversion/EnlargedLevel.h"
#include "Support/SeededPictures.h"
#include "Texture/SurfaceWalk.h"

// The six MOXTC formats on the whole road between formats; what the codec does with one surface is tested beside it.

using namespace moxtexture;

namespace
{

using Bytes = std::vector<uint8_t>;

struct Row
{
    EMOXTPixelFormat eFormat;
    bool b2bpp, bII;
    bool bOpaque; ///< the alpha of pixels is 255 before they are encoded
    uint32_t uiLeastWidth, uiLeastHeight;
};

constexpr Row k_aRows[] = {
    {ePF_MOXTC_2bpp_RGB, true, false, true, 16, 8}, {ePF_MOXTC_2bpp_RGBA, true, false, false, 16, 8},
    {ePF_MOXTC_4bpp_RGB, false, false, true, 8, 8}, {ePF_MOXTC_4bpp_RGBA, false, false, false, 8, 8},
    {ePF_MOXTCII_2bpp, true, true, false, 8, 4},    {ePF_MOXTCII_4bpp, false, true, false, 4, 4},
};

struct Shape
{
    uint32_t uiWidth, uiHeight;
    uint32_t uiDepth = 1, uiLevels = 1, uiMembers = 1, uiFaces = 1;
};

CMOXTextureHeader makeHeader(MOXPixelWord pixelFormat, const Shape& shape)
{
    return {pixelFormat,   shape.uiHeight, shape.uiWidth,
            shape.uiDepth, shape.uiLevels, shape.uiMembers,
            shape.uiFaces, eCS_Linear,     eCT_UnsignedNormalisedByte,
            false};
}

/// Seeded noise of the whole block, so that no two surfaces are alike.
CMOXTexture makeNoise(MOXPixelWord pixelFormat, const Shape& shape)
{
    CMOXTexture texture(makeHeader(pixelFormat, shape));
    const Bytes bytes = testsupport::CSeededRandom(texture.getBlockSize()).bytes(texture.getBlockSize());
    std::memcpy(texture.getDataPtr(), bytes.data(), bytes.size());
    return texture;
}

Bytes surfaceOf(const CMOXTexture& texture, uint32_t uiLevel, uint32_t uiMember = 0, uint32_t uiFace = 0)
{
    const uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
    return {pSurface, pSurface + texture.getDataSize(uiLevel, false, false)};
}

[[nodiscard]] bool toFormat(CMOXTexture& texture, MOXPixelWord pixelFormat, uint32_t uiQuality = 0)
{
    return Transcode(texture, pixelFormat, eCT_UnsignedNormalisedByte, eCS_Linear, uiQuality, false);
}

/// The blocks of 8-bit RGBA pixels, by the codec itself.
Bytes blocksOf(const Row& row, Bytes pixels, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiQuality = 0)
{
    if (row.bOpaque)
        for (size_t i = 3; i < pixels.size(); i += 4)
            pixels[i] = 255;
    Bytes blocks(MOXTCCompress(nullptr, nullptr, uiWidth, uiHeight, !row.bOpaque, row.b2bpp, row.bII, uiQuality));
    EXPECT_EQ(blocks.size(), MOXTCCompress(pixels.data(), blocks.data(), uiWidth, uiHeight, !row.bOpaque, row.b2bpp, row.bII, uiQuality));
    return blocks;
}

/// The pixels of blocks, by the codec itself.
Bytes pixelsOf(const Row& row, const uint8_t* pBlocks, uint32_t uiWidth, uint32_t uiHeight)
{
    Bytes pixels(size_t{uiWidth} * uiHeight * 4);
    EXPECT_EQ(pixels.size(), MOXTCDecompress(pBlocks, pixels.data(), uiWidth, uiHeight, row.b2bpp, row.bII));
    return pixels;
}

} // namespace

TEST(MoxtcFormats, HaveTheirEntriesAndDecodeSmallSurfacesAsTheyAre)
{
    for (const Row& row : k_aRows)
    {
        const CodecRow* pRow = findCodec(row.eFormat);
        ASSERT_NE(nullptr, pRow) << row.eFormat;
        EXPECT_NE(nullptr, pRow->pCompress) << row.eFormat;
        EXPECT_NE(nullptr, pRow->pDecompress) << row.eFormat;
        EXPECT_FALSE(pRow->bTakesDepth) << row.eFormat;
        EXPECT_TRUE(pRow->bDecodesSmallSurface) << row.eFormat;
    }
}

TEST(MoxtcFormats, AreEncodedAtBothFastQualitiesByTheCodecWithTheirOwnRateAndGeneration)
{
    const Bytes picture = testsupport::makePicture(64, 32);
    for (const Row& row : k_aRows)
        for (const uint32_t uiQuality : {0u, 1u})
        {
            SCOPED_TRACE(getFormatName(row.eFormat) + " at " + std::to_string(uiQuality));
            CMOXTexture texture(makeHeader(k_RGBA8, {64, 32}), picture.data());
            ASSERT_TRUE(toFormat(texture, row.eFormat, uiQuality));
            EXPECT_EQ(MOXPixelWord(row.eFormat), texture.getPixelFormat());
            EXPECT_EQ(row.b2bpp ? 512u : 1024u, texture.getBlockSize()); // 2048 pixels
            EXPECT_EQ(blocksOf(row, picture, 64, 32, uiQuality), surfaceOf(texture, 0));

            const Bytes blocks = surfaceOf(texture, 0);
            ASSERT_TRUE(toFormat(texture, k_RGBA8));
            EXPECT_EQ(pixelsOf(row, blocks.data(), 64, 32), surfaceOf(texture, 0));
        }
}

TEST(MoxtcFormats, OfARateAndGenerationDifferInNothingButAlpha)
{
    // Opaque pixels give the same blocks with and without alpha in the format's name.
    Bytes picture = testsupport::makePicture(32, 32);
    for (size_t i = 3; i < picture.size(); i += 4)
        picture[i] = 255;
    const auto encode = [&](MOXPixelWord format)
    {
        CMOXTexture texture(makeHeader(k_RGBA8, {32, 32}), picture.data());
        EXPECT_TRUE(toFormat(texture, format, 1));
        return surfaceOf(texture, 0);
    };
    EXPECT_EQ(encode(ePF_MOXTC_2bpp_RGBA), encode(ePF_MOXTC_2bpp_RGB));
    EXPECT_EQ(encode(ePF_MOXTC_4bpp_RGBA), encode(ePF_MOXTC_4bpp_RGB));
    EXPECT_NE(encode(ePF_MOXTC_4bpp_RGBA), encode(ePF_MOXTCII_4bpp));
}

TEST(MoxtcFormats, WithoutAlphaAreOpaqueWhateverTheAlphaOfThePixelsAndTheOthersKeepIt)
{
    // One colour of alpha 0. MOXTCII 2bpp gives every pixel colour B, whose alpha has a low bit of 1 of 15: 17 of 255.
    Bytes pixels;
    for (int i = 0; i < 16 * 16; ++i)
        pixels.insert(pixels.end(), {255, 0, 255, 0});
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(getFormatName(row.eFormat));
        const CMOXTexture source(makeHeader(k_RGBA8, {16, 16}), pixels.data());
        CMOXTexture target(makeHeader(row.eFormat, {16, 16}));
        ASSERT_EQ(target.getBlockSize(), compressSurface(source, target, row.eFormat, 0, 0, 0, 1, false));
        EXPECT_EQ(pixels, surfaceOf(source, 0)) << "the source is not written to";

        ASSERT_TRUE(toFormat(target, k_RGBA8));
        const uint8_t* pDecoded = target.getDataPtr();
        EXPECT_EQ(255, pDecoded[0]);
        EXPECT_EQ(0, pDecoded[1]);
        EXPECT_EQ(255, pDecoded[2]);
        for (size_t i = 3; i < pixels.size(); i += 4)
            ASSERT_EQ(row.bOpaque ? 255 : (row.eFormat == ePF_MOXTCII_2bpp ? 17 : 0), pDecoded[i]) << i;
    }
}

TEST(MoxtcFormats, TakeEachFlatSurfaceForItself)
{
    // The eight corners of the colour cube are exact in every format, and a level of one colour stays so down to the smallest surface.
    constexpr Shape shape = {64, 64, 1, 3, 2, 6};
    const CMOXTextureHeader header = makeHeader(k_RGBA8, shape);
    CMOXTexture original(header);
    uint32_t uiColour = 0;
    walkSurfaces(header,
                 [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                 {
                     uint8_t* pSurface = original.getDataPtr(uiLevel, uiMember, uiFace);
                     for (uint32_t i = 0; i < original.getDataSize(uiLevel, false, false); ++i)
                         pSurface[i] = i % 4 == 3 || ((uiColour >> i % 4) & 1) != 0 ? 255 : 0;
                     uiColour = (uiColour + 5) % 8;
                     return true;
                 });
    for (const Row& row : k_aRows)
        for (const uint32_t uiQuality : {0u, 1u})
        {
            SCOPED_TRACE(getFormatName(row.eFormat) + " at " + std::to_string(uiQuality));
            CMOXTexture texture = original;
            ASSERT_TRUE(toFormat(texture, row.eFormat, uiQuality));
            ASSERT_TRUE(toFormat(texture, k_RGBA8));
            walkSurfaces(header,
                         [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                         {
                             EXPECT_EQ(surfaceOf(original, uiLevel, uiMember, uiFace), surfaceOf(texture, uiLevel, uiMember, uiFace))
                                 << uiLevel << ' ' << uiMember << ' ' << uiFace;
                             return true;
                         });
        }
}

TEST(MoxtcFormats, TakeChainsDownToOnePixelOfPicturesCubesAndArraysEnlargedWhereALevelIsTooSmall)
{
    constexpr Shape aShapes[] = {{32, 32, 1, 6, 1, 1}, {16, 64, 1, 7, 1, 6}, {64, 16, 1, 7, 3, 1},
                                 {32, 32, 1, 6, 2, 6}, {1, 1, 1, 1, 1, 1},   {1, 2, 1, 2, 2, 6}};
    for (const Shape& shape : aShapes)
        for (const Row& row : k_aRows)
        {
            SCOPED_TRACE(getFormatName(row.eFormat) + " " + std::to_string(shape.uiWidth) + " by " + std::to_string(shape.uiHeight));
            const CMOXTexture original = makeNoise(k_RGBA8, shape);
            CMOXTexture encoded = original;
            ASSERT_TRUE(toFormat(encoded, row.eFormat));
            CMOXTexture decoded = encoded;
            ASSERT_TRUE(toFormat(decoded, k_RGBA8));
            walkSurfaces(
                original,
                [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                {
                    const uint32_t uiWidth = original.getWidth(uiLevel), uiHeight = original.getHeight(uiLevel);
                    const uint32_t uiRaisedWidth = std::max(uiWidth, row.uiLeastWidth);
                    const uint32_t uiRaisedHeight = std::max(uiHeight, row.uiLeastHeight);
                    const Bytes blocks = blocksOf(
                        row, conversiontest::enlargeLevel(original, row.uiLeastWidth, row.uiLeastHeight, 4, uiLevel, uiMember, uiFace),
                        uiRaisedWidth, uiRaisedHeight);
                    EXPECT_EQ(blocks, surfaceOf(encoded, uiLevel, uiMember, uiFace)) << uiLevel << ' ' << uiMember << ' ' << uiFace;

                    // Decoded it is the corner of the enlarged picture.
                    const Bytes raised = pixelsOf(row, blocks.data(), uiRaisedWidth, uiRaisedHeight);
                    Bytes corner;
                    for (size_t y = 0; y < uiHeight; ++y)
                        corner.insert(corner.end(), &raised[y * uiRaisedWidth * 4], &raised[y * uiRaisedWidth * 4] + uiWidth * 4);
                    EXPECT_EQ(corner, surfaceOf(decoded, uiLevel, uiMember, uiFace)) << uiLevel << ' ' << uiMember << ' ' << uiFace;
                    return true;
                });
        }
}

TEST(MoxtcFormats, TakeTheSlicesOfAVolumeOneAfterTheOther)
{
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(getFormatName(row.eFormat));
        const CMOXTexture original = makeNoise(k_RGBA8, {16, 16, 3});
        CMOXTexture texture = original;
        ASSERT_TRUE(toFormat(texture, row.eFormat, 1));
        Bytes expected;
        for (size_t z = 0; z < 3; ++z)
        {
            const uint8_t* pSlice = original.getDataPtr() + z * 16 * 16 * 4;
            const Bytes blocks = blocksOf(row, Bytes(pSlice, pSlice + 16 * 16 * 4), 16, 16, 1);
            expected.insert(expected.end(), blocks.begin(), blocks.end());
        }
        EXPECT_EQ(expected, surfaceOf(texture, 0));
    }
}

TEST(MoxtcFormats, OfTheSecondGenerationTakeEverySizeByPaddingAndTheFirstRefusesWhatItsOrderDoesNotFill)
{
    struct Size
    {
        uint32_t uiWidth, uiHeight;
        bool b2bpp, b4bpp; ///< whether MOXTC1 takes it at that rate
    };
    constexpr Size aSizes[] = {
        {64, 64, true, true},   {16, 128, true, true},  {48, 8, true, true}, // 6 by 2 and 12 by 2 blocks: rows of squares
        {24, 8, false, true},                           // 6 by 2 at 4bpp; at 2bpp 3 by 2, where a texture has room for 4 by 2
        {24, 24, false, false},                         // 3 by 6 and 6 by 6, which leave their order's squares unfilled
        {48, 48, false, false}, {32, 12, false, false}, // 4 by 3 and 8 by 3
        {20, 8, false, false},                          // no whole blocks at 2bpp; at 4bpp 5 by 2, where a texture has room for 6 by 2
        {17, 33, false, false}, {9, 16, true, false},   // narrower than the smallest surface of 2bpp, which is 16 wide: enlarged to that
    };
    for (const Size& size : aSizes)
        for (const Row& row : k_aRows)
        {
            SCOPED_TRACE(getFormatName(row.eFormat) + " " + std::to_string(size.uiWidth) + " by " + std::to_string(size.uiHeight));
            const bool bTakes = row.bII || (row.b2bpp ? size.b2bpp : size.b4bpp);
            const CMOXTexture texture = makeNoise(k_RGBA8, {size.uiWidth, size.uiHeight});
            for (const uint32_t uiQuality : {0u, 1u})
            {
                CMOXTexture encoded = texture;
                EXPECT_EQ(bTakes, toFormat(encoded, row.eFormat, uiQuality));
                EXPECT_EQ(encoded.getDataSize(), encoded.getBlockSize());
            }
        }
}

TEST(MoxtcFormats, HaveNoOtherQualitiesYet)
{
    for (const Row& row : k_aRows)
        for (const uint32_t uiQuality : {2u, 3u, 4u, 5u, 0xFFFFFFFFu})
        {
            CMOXTexture texture = makeNoise(k_RGBA8, {32, 32});
            EXPECT_FALSE(toFormat(texture, row.eFormat, uiQuality)) << row.eFormat << ' ' << uiQuality;
        }
}

TEST(MoxtcFormats, DecodeAnyBytesOfAnySize)
{
    for (const Row& row : k_aRows)
        for (uint32_t uiHeight = 1; uiHeight <= 34; ++uiHeight)
            for (uint32_t uiWidth = 1; uiWidth <= 34; ++uiWidth)
            {
                CMOXTexture texture = makeNoise(row.eFormat, {uiWidth, uiHeight});
                ASSERT_TRUE(toFormat(texture, k_RGBA8)) << row.eFormat << ' ' << uiWidth << ' ' << uiHeight;
                ASSERT_EQ(uiWidth * uiHeight * 4, texture.getBlockSize());
                ASSERT_EQ(texture.getDataSize(), texture.getBlockSize());
            }
}

TEST(MoxtcFormats, DecodeNothingPastTheSurfaceThatIsDecoded)
{
    // Grids of 5 by 5 blocks, for which a texture has room for 36. The places of (4, 2), (4, 3) and (4, 4) in MOXTC1's order are 36,
    // 37 and 48, so they lie in the second member's blocks, or past the texture.
    for (const Row& row : k_aRows)
    {
        SCOPED_TRACE(getFormatName(row.eFormat));
        const uint32_t uiBlockWidth = row.b2bpp ? 8 : 4;
        CMOXTexture texture = makeNoise(row.eFormat, {5 * uiBlockWidth, 20, 1, 1, 2});
        CMOXTexture changed = texture;
        uint8_t* pSecond = changed.getDataPtr(0, 1, 0);
        for (uint32_t i = 0; i < changed.getDataSize(0, false, false); ++i)
            pSecond[i] = static_cast<uint8_t>(~pSecond[i]);
        ASSERT_TRUE(toFormat(texture, k_RGBA8));
        ASSERT_TRUE(toFormat(changed, k_RGBA8));
        EXPECT_EQ(surfaceOf(texture, 0, 0), surfaceOf(changed, 0, 0));
        EXPECT_NE(surfaceOf(texture, 0, 1), surfaceOf(changed, 0, 1));
        if (row.bII)
            continue;
        for (const uint32_t uiMember : {0u, 1u})
            for (size_t y = 8; y < 20; ++y)
            {
                const uint8_t* pRow = texture.getDataPtr(0, uiMember, 0) + (y * 5 + 4) * uiBlockWidth * 4;
                EXPECT_EQ(Bytes(size_t{uiBlockWidth} * 4), Bytes(pRow, pRow + size_t{uiBlockWidth} * 4)) << uiMember << ' ' << y;
            }
    }
}

TEST(MoxtcFormats, LeavePixelsPastTheLastWholeBlockZero)
{
    // 20 by 10 pixels: 2 by 2 whole blocks of 8 by 4, or 5 by 2 of 4 by 4.
    for (const Row& row : k_aRows)
    {
        if (row.bII)
            continue;
        CMOXTexture texture = makeNoise(row.eFormat, {20, 10});
        ASSERT_TRUE(toFormat(texture, k_RGBA8));
        const size_t uiWhole = row.b2bpp ? 16 : 20;
        for (size_t y = 0; y < 10; ++y)
            for (size_t x = 0; x < 20; ++x)
            {
                const uint8_t* pPixel = texture.getDataPtr() + (y * 20 + x) * 4;
                if (x >= uiWhole || y >= 8)
                {
                    EXPECT_EQ(Bytes(4), Bytes(pPixel, pPixel + 4)) << row.eFormat << ' ' << x << ' ' << y;
                }
            }
    }
}

TEST(MoxtcFormats, AreReadByTheCodecAsFarAsATextureHoldsThem)
{
    for (const Row& row : k_aRows)
        for (uint32_t uiHeight = 1; uiHeight <= 70; ++uiHeight)
            for (uint32_t uiWidth = 1; uiWidth <= 70; ++uiWidth)
                ASSERT_EQ(makeHeader(row.eFormat, {uiWidth, uiHeight}).getDataSize(),
                          getMOXTCDataSize(uiWidth, uiHeight, row.b2bpp, row.bII))
                    << row.eFormat << ' ' << uiWidth << ' ' << uiHeight;
}

TEST(MoxtcFormats, KeepTheChannelTypeOfTheirIntermediateAndTakeTheColourSpaceAskedFor)
{
    for (const Row& row : k_aRows)
    {
        CMOXTexture texture(makeHeader(k_RGBA8, {16, 16}), Bytes(1024, 255).data());
        texture.setOrientation(2);
        ASSERT_TRUE(Transcode(texture, row.eFormat, eCT_SignedShort, eCS_sRGB, 0, false));
        EXPECT_EQ(eCT_UnsignedNormalisedByte, texture.getChannelType()) << row.eFormat;
        EXPECT_EQ(eCS_sRGB, texture.getColourSpace()) << row.eFormat;
        EXPECT_EQ(2u, texture.getOrientation(eAxisY)) << row.eFormat;
    }
}

TEST(MoxtcFormats, GoFromOneToAnotherThroughPixels)
{
    const Bytes picture = testsupport::makePicture(32, 32);
    for (const Row& from : k_aRows)
        for (const Row& to : k_aRows)
        {
            CMOXTexture texture(makeHeader(k_RGBA8, {32, 32}), picture.data());
            ASSERT_TRUE(toFormat(texture, from.eFormat));
            const Bytes pixels = pixelsOf(from, texture.getDataPtr(), 32, 32);
            // The texture has the target's encoding already: the road decodes it and encodes it again all the same.
            ASSERT_TRUE(toFormat(texture, to.eFormat));
            EXPECT_EQ(blocksOf(to, pixels, 32, 32), surfaceOf(texture, 0)) << from.eFormat << " to " << to.eFormat;
        }
}
