#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Catalogue/EncodeChecks.h"
#include "Conversion/CodecTable.h"
#include "Conversion/CompressSurface.h"
#include "Conversion/DecompressSurface.h"
#include "Conversion/Transcode.h"
#include "Core/ByteOrder.h"
#include "Formats/FormatNames.h"
#include "Support/SeededPictures.h"

// The packed formats on the whole road between formats; what their codecs do with one surface is tested beside them.

using namespace moxtexture;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr EMOXTPixelFormat k_aePairFormats[] = {ePF_UYVY, ePF_YUY2, ePF_2_Planar_RGBG_8_8_8_8, ePF_2_Planar_GRGB_8_8_8_8};
constexpr EMOXTPixelFormat k_aeFormats[] = {
    ePF_UYVY, ePF_YUY2, ePF_2_Planar_RGBG_8_8_8_8, ePF_2_Planar_GRGB_8_8_8_8, ePF_1bpp, ePF_Shared_Exponent_RGB999_E5};

struct Shape
{
    uint32_t uiWidth, uiHeight;
    uint32_t uiDepth = 1, uiLevels = 1, uiMembers = 1, uiFaces = 1;
};

CMOXTextureHeader makeHeader(MOXPixelWord pixelFormat, EMOXTChannelType eType, const Shape& shape)
{
    return {pixelFormat,     shape.uiHeight, shape.uiWidth, shape.uiDepth, shape.uiLevels,
            shape.uiMembers, shape.uiFaces,  eCS_Linear,    eType,         false};
}

CMOXTexture makeTexture(MOXPixelWord pixelFormat, const Shape& shape, const Bytes& bytes,
                        EMOXTChannelType eType = eCT_UnsignedNormalisedByte)
{
    const CMOXTextureHeader header = makeHeader(pixelFormat, eType, shape);
    EXPECT_EQ(header.getDataSize(), bytes.size());
    return CMOXTexture(header, bytes.data());
}

Bytes bytesOf(const CMOXTexture& texture)
{
    return {texture.getDataPtr(), texture.getDataPtr() + texture.getBlockSize()};
}

Bytes surfaceOf(const CMOXTexture& texture, uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
{
    const uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
    return {pSurface, pSurface + texture.getDataSize(uiLevel, false, false)};
}

[[nodiscard]] bool toFormat(CMOXTexture& texture, MOXPixelWord pixelFormat, bool bDither = false)
{
    return Transcode(texture, pixelFormat, eCT_UnsignedNormalisedByte, eCS_Linear, 0, bDither);
}

/// What the format makes of 8-bit RGBA, and what comes of that as 8-bit RGBA.
void expectThereAndBack(EMOXTPixelFormat eFormat, const Shape& shape, const Bytes& pixels, const Bytes& packed, const Bytes& unpacked)
{
    SCOPED_TRACE(getFormatName(eFormat));
    CMOXTexture texture = makeTexture(k_RGBA8, shape, pixels);
    ASSERT_TRUE(toFormat(texture, eFormat));
    EXPECT_EQ(MOXPixelWord(eFormat), texture.getPixelFormat());
    EXPECT_EQ(packed, bytesOf(texture));
    ASSERT_TRUE(toFormat(texture, k_RGBA8));
    EXPECT_EQ(k_RGBA8, texture.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, texture.getChannelType());
    EXPECT_EQ(unpacked, bytesOf(texture));
}

/// Grey RGBA pixels.
Bytes grey(const Bytes& values, uint8_t uiAlpha = 255)
{
    Bytes pixels;
    for (const uint8_t uiValue : values)
        pixels.insert(pixels.end(), {uiValue, uiValue, uiValue, uiAlpha});
    return pixels;
}

/// Opaque black and white, white at each x.
Bytes blackAndWhite(const std::string& strPixels)
{
    Bytes values;
    for (const char c : strPixels)
        values.push_back(c == 'x' ? 255 : 0);
    return grey(values);
}

Bytes exponentWord(uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, uint32_t uiExponent)
{
    Bytes bytes(4);
    storeLE(bytes.data(), uiRed | uiGreen << 9 | uiBlue << 18 | uiExponent << 27);
    return bytes;
}

Bytes join(const std::vector<Bytes>& parts)
{
    Bytes all;
    for (const Bytes& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

Bytes floats(const std::vector<float>& values)
{
    Bytes bytes(4 * values.size());
    for (size_t i = 0; i < values.size(); ++i)
        storeLE(&bytes[4 * i], values[i]);
    return bytes;
}

// Red and blue, then green and a mixed colour.
const Bytes k_fourColours = {255, 0, 0, 10, 0, 0, 255, 20, 0, 255, 0, 30, 10, 20, 200, 40};

} // namespace

TEST(PackedFormats, HaveTheirEntriesAndOnlyOneBitDecodesSmallSurfacesAsTheyAre)
{
    for (const EMOXTPixelFormat eFormat : k_aeFormats)
    {
        const CodecRow* pRow = findCodec(eFormat);
        ASSERT_NE(nullptr, pRow) << eFormat;
        EXPECT_NE(nullptr, pRow->pCompress) << eFormat;
        EXPECT_NE(nullptr, pRow->pDecompress) << eFormat;
        EXPECT_FALSE(pRow->bTakesDepth) << eFormat;
        EXPECT_EQ(eFormat == ePF_1bpp, pRow->bDecodesSmallSurface) << eFormat;
    }
}

TEST(PackedFormats, YUVByHand)
{
    // Y = 0.257 r + 0.504 g + 0.098 b + 16.5, U of the left pixel 0.439 b - 0.148 r - 0.291 g + 128.5, V of the right one
    // 0.439 r - 0.368 g - 0.071 b + 128.5:
    // red 82.035, 90.76; blue 41.49, 110.395; green 145.02, 54.295; (10, 20, 200): Y 48.75, V 4.39 - 7.36 - 14.2 + 128.5 = 111.33.
    // Back: U, V = 90, 110 add -18 * 409 = -7362, 38 * 100 + 18 * 208 = 7544, -38 * 517 = -19646.
    //   Y = 82: 66 * 298 + 128 = 19796: 12434, 27340, 150 over 256 are 48, 106, 0.  Y = 41: 7578: 216, 15122, below 0: 0, 59, 0.
    // U, V = 54, 111 add -17 * 409 = -6953, 74 * 100 + 17 * 208 = 10936, -74 * 517 = -38258.
    //   Y = 145: 129 * 298 + 128 = 38570: 31617, 49506, 312: 123, 193, 1.           Y = 48: 9664: 2711, 20600, below 0: 10, 80, 0.
    const Bytes unpacked = {48, 106, 0, 255, 0, 59, 0, 255, 123, 193, 1, 255, 10, 80, 0, 255};
    expectThereAndBack(ePF_UYVY, {2, 2}, k_fourColours, {90, 82, 110, 41, 54, 145, 111, 48}, unpacked);
    expectThereAndBack(ePF_YUY2, {2, 2}, k_fourColours, {82, 90, 41, 110, 145, 54, 48, 111}, unpacked);
}

TEST(PackedFormats, PairsByHand)
{
    const Bytes unpacked = {255, 0, 0, 255, 255, 0, 0, 255, 0, 255, 0, 255, 0, 20, 0, 255};
    expectThereAndBack(ePF_2_Planar_RGBG_8_8_8_8, {2, 2}, k_fourColours, {255, 0, 0, 0, 0, 255, 0, 20}, unpacked);
    expectThereAndBack(ePF_2_Planar_GRGB_8_8_8_8, {2, 2}, k_fourColours, {0, 255, 0, 0, 255, 0, 20, 0}, unpacked);
}

TEST(PackedFormats, OneBitByHand)
{
    // Means 128, 127, 85, 170, 0, 255, 127, 128: bits 0, 3, 5 and 7.
    const Bytes pixels = {128, 128, 128, 0, 127, 127, 127, 0, 255, 0,   0, 0, 255, 255, 0, 0,
                          0,   0,   0,   0, 255, 255, 255, 0, 255, 128, 0, 0, 255, 129, 0, 0};
    expectThereAndBack(ePF_1bpp, {8, 1}, pixels, {0xA9}, blackAndWhite("x..x.x.x"));
}

TEST(PackedFormats, SharedExponentByHand)
{
    // 1.0 is 256 steps of 2^-8, e = 16. (10, 20, 200) / 255: the greatest, 0.784, has the exponent -1, so e = 15 and 512 steps in 1:
    // 20.08, 40.16, 401.57 round to 20, 40, 402. Back, over 512 and times 255: 9.96, 19.92, 200.2.
    const Bytes packed =
        join({exponentWord(256, 0, 0, 16), exponentWord(0, 0, 256, 16), exponentWord(0, 256, 0, 16), exponentWord(20, 40, 402, 15)});
    expectThereAndBack(ePF_Shared_Exponent_RGB999_E5, {2, 2}, k_fourColours, packed,
                       {255, 0, 0, 255, 0, 0, 255, 255, 0, 255, 0, 255, 10, 20, 200, 255});
}

TEST(PackedFormats, ValuesAboveOneReachTheSharedExponentAndComeBackAndAreClampedForDisplay)
{
    // The greatest has the exponent 1: e = 17, 128 steps in 1. 384, 64.5 up to 65, 0.128 down to 0. 65408 is 511 * 2^7.
    const Bytes pixels = floats({3.0f, 0.50390625f, 0.001f, 0.25f, 65408.0f, -1.0f, 1e9f, 0.0f});
    CMOXTexture texture = makeTexture(k_RGBA32, {2, 1}, pixels, eCT_SignedFloatingPoint);
    ASSERT_TRUE(Transcode(texture, ePF_Shared_Exponent_RGB999_E5, eCT_UnsignedFloatingPoint, eCS_Linear, 0, false));
    EXPECT_EQ(join({exponentWord(384, 65, 0, 17), exponentWord(511, 0, 511, 31)}), bytesOf(texture));
    CMOXTexture display = texture;
    ASSERT_TRUE(Transcode(texture, k_RGBA32, eCT_SignedFloatingPoint, eCS_Linear, 0, false));
    EXPECT_EQ(floats({3.0f, 0.5078125f, 0.0f, 1.0f, 65408.0f, 0.0f, 65408.0f, 1.0f}), bytesOf(texture));
    // 0.5078125 * 255 + 0.5 = 129.99.
    ASSERT_TRUE(toFormat(display, k_RGBA8));
    EXPECT_EQ((Bytes{255, 129, 0, 255, 255, 0, 255, 255}), bytesOf(display));
}

TEST(PackedFormats, KeepTheChannelTypeOfTheirIntermediateAndTakeTheColourSpaceAskedFor)
{
    for (const EMOXTPixelFormat eFormat : k_aeFormats)
    {
        CMOXTexture texture = makeTexture(k_RGBA8, {8, 1}, grey(Bytes(8, 128)));
        texture.setOrientation(2);
        ASSERT_TRUE(Transcode(texture, eFormat, eCT_SignedShort, eCS_sRGB, 0, false));
        EXPECT_EQ(eFormat == ePF_Shared_Exponent_RGB999_E5 ? eCT_SignedFloatingPoint : eCT_UnsignedNormalisedByte, texture.getChannelType())
            << eFormat;
        EXPECT_EQ(eCS_sRGB, texture.getColourSpace()) << eFormat;
        EXPECT_EQ(2u, texture.getOrientation(eAxisY)) << eFormat;
    }
}

TEST(PackedFormats, UnpackAlikeWhateverChannelTypeAFileGaveThem)
{
    for (uint32_t uiType = eCT_UnsignedNormalisedByte; uiType <= eCT_UnsignedFloatingPoint; ++uiType)
    {
        CMOXTexture yuv = makeTexture(ePF_YUY2, {2, 1}, {235, 128, 16, 128}, static_cast<EMOXTChannelType>(uiType));
        ASSERT_TRUE(toFormat(yuv, k_RGBA8));
        EXPECT_EQ(blackAndWhite("x."), bytesOf(yuv)) << uiType;
        CMOXTexture light =
            makeTexture(ePF_Shared_Exponent_RGB999_E5, {1, 1}, exponentWord(256, 128, 0, 17), static_cast<EMOXTChannelType>(uiType));
        ASSERT_TRUE(Transcode(light, k_RGBA32, eCT_SignedFloatingPoint, eCS_Linear, 0, false));
        EXPECT_EQ(floats({2.0f, 1.0f, 0.0f, 1.0f}), bytesOf(light)) << uiType;
    }
}

TEST(PackedFormats, TheColourSpaceIsChangedBeforePacking)
{
    // Linear 128 is 188 in sRGB: Y = 0.859 * 188 + 16.5 = 177.99, U = V = 128.
    CMOXTexture texture = makeTexture(k_RGBA8, {2, 1}, grey({128, 128}));
    ASSERT_TRUE(Transcode(texture, ePF_UYVY, eCT_UnsignedNormalisedByte, eCS_sRGB, 0, false));
    EXPECT_EQ((Bytes{128, 177, 128, 177}), bytesOf(texture));
}

TEST(PackedFormats, ChannelsOfOtherLayoutsArriveByName)
{
    CMOXTexture bgra = makeTexture(layout("bgra", 8, 8, 8, 8), {2, 1}, {1, 2, 3, 4, 5, 6, 7, 8});
    ASSERT_TRUE(toFormat(bgra, ePF_2_Planar_RGBG_8_8_8_8));
    EXPECT_EQ((Bytes{3, 2, 1, 6}), bytesOf(bgra));
    ASSERT_TRUE(toFormat(bgra, layout("bgr", 8, 8, 8)));
    EXPECT_EQ((Bytes{1, 2, 3, 1, 6, 3}), bytesOf(bgra));

    CMOXTexture luminance = makeTexture(layout("l", 8), {8, 1}, {0, 127, 128, 255, 0, 255, 0, 0});
    ASSERT_TRUE(toFormat(luminance, ePF_1bpp));
    EXPECT_EQ((Bytes{0x2C}), bytesOf(luminance));
    ASSERT_TRUE(toFormat(luminance, layout("i", 8)));
    EXPECT_EQ((Bytes{0, 0, 255, 255, 0, 255, 0, 0}), bytesOf(luminance));
}

TEST(PackedFormats, OnePackedFormatGoesToAnotherThroughPixels)
{
    // U = V = 128 and Y: (Y - 16) * 298 + 128 over 256 of 16, 235, 126: 0, 255, (110 * 298 + 128 = 32908) 128.
    CMOXTexture texture = makeTexture(ePF_UYVY, {8, 1}, {128, 16, 128, 235, 128, 126, 128, 126, 128, 235, 128, 16, 128, 16, 128, 16});
    CMOXTexture bits = texture;
    ASSERT_TRUE(toFormat(bits, ePF_1bpp));
    EXPECT_EQ((Bytes{0x1E}), bytesOf(bits));
    // 128: Y = 0.859 * 128 + 16.5 = 126.45.
    ASSERT_TRUE(toFormat(texture, ePF_YUY2));
    EXPECT_EQ((Bytes{16, 128, 235, 128, 126, 128, 126, 128, 235, 128, 16, 128, 16, 128, 16, 128}), bytesOf(texture));
}

TEST(PackedFormats, DitherGivesOneBitAPixelItsShadesThroughTheIntensity)
{
    // Without, the mean decides: (255 + 45 + 0) / 3 = 100 in each.
    Bytes pixels;
    for (int i = 0; i < 8; ++i)
        pixels.insert(pixels.end(), {255, 45, 0, 255});
    CMOXTexture plain = makeTexture(k_RGBA8, {8, 1}, pixels);
    CMOXTexture dithered = plain;
    ASSERT_TRUE(toFormat(plain, ePF_1bpp));
    EXPECT_EQ((Bytes{0}), bytesOf(plain));
    // With one bit a value v becomes (v & 128) + v / 2, and half of the error goes to the right:
    // 100: 50, error 50; 125: 62, 63; 131: 193, -62; 69: 34, 35; 117: 58, 59; 129: 192, -63; 69: 34, 35; 117: 58.
    ASSERT_TRUE(toFormat(dithered, ePF_1bpp, true));
    EXPECT_EQ((Bytes{0x24}), bytesOf(dithered));
}

TEST(PackedFormats, DitherLeavesTheOthersAsTheyAre)
{
    const CMOXTexture source = makeTexture(k_RGBA8, {16, 16}, testsupport::makePicture(16, 16));
    for (const EMOXTPixelFormat eFormat : k_aeFormats)
    {
        if (eFormat == ePF_1bpp)
            continue;
        CMOXTexture plain = source;
        CMOXTexture dithered = source;
        ASSERT_TRUE(toFormat(plain, eFormat));
        ASSERT_TRUE(toFormat(dithered, eFormat, true));
        EXPECT_EQ(bytesOf(plain), bytesOf(dithered)) << eFormat;
    }
}

TEST(PackedFormats, EverySurfaceOfCubesArraysAndVolumesComesBackDownToOnePixel)
{
    // Black and white, which every one of the formats holds without loss where both pixels of a pair are alike.
    constexpr Shape aShapes[] = {{16, 8, 1, 5, 1, 6}, {8, 32, 1, 6, 3, 6}, {8, 4, 4, 4, 2, 1}, {16, 3, 5, 5, 1, 1}, {1, 9, 1, 4, 2, 6}};
    testsupport::CSeededRandom random(41);
    for (const Shape& shape : aShapes)
    {
        CMOXTexture original(makeHeader(k_RGBA8, eCT_UnsignedNormalisedByte, shape));
        for (uint32_t uiLevel = 0; uiLevel < shape.uiLevels; ++uiLevel)
            for (uint32_t uiMember = 0; uiMember < shape.uiMembers; ++uiMember)
                for (uint32_t uiFace = 0; uiFace < shape.uiFaces; ++uiFace)
                {
                    const uint32_t uiPair = original.getWidth(uiLevel) > 1 ? 8 : 4;
                    uint8_t* pSurface = original.getDataPtr(uiLevel, uiMember, uiFace);
                    for (uint32_t i = 0; i < original.getDataSize(uiLevel, false, false); i += 4)
                    {
                        std::memset(pSurface + i, i % uiPair != 0 ? pSurface[i - 4] : static_cast<int>(random.below(2) * 255), 3);
                        pSurface[i + 3] = 255;
                    }
                }

        for (const EMOXTPixelFormat eFormat : k_aeFormats)
        {
            SCOPED_TRACE(getFormatName(eFormat));
            CMOXTexture texture = original;
            ASSERT_TRUE(toFormat(texture, eFormat));
            EXPECT_EQ(texture.getDataSize(), texture.getBlockSize());
            ASSERT_TRUE(toFormat(texture, k_RGBA8));
            for (uint32_t uiMember = 0; uiMember < shape.uiMembers; ++uiMember)
                for (uint32_t uiFace = 0; uiFace < shape.uiFaces; ++uiFace)
                    for (uint32_t uiLevel = 0; uiLevel < shape.uiLevels; ++uiLevel)
                        EXPECT_EQ(surfaceOf(original, uiLevel, uiMember, uiFace), surfaceOf(texture, uiLevel, uiMember, uiFace))
                            << uiLevel << ' ' << uiMember << ' ' << uiFace;
        }
    }
}

TEST(PackedFormats, TheSlicesOfAVolumeLieOneAfterTheOther)
{
    const CMOXTexture source = makeTexture(k_RGBA8, {2, 1, 2}, k_fourColours);
    CMOXTexture pairs = source;
    ASSERT_TRUE(toFormat(pairs, ePF_UYVY));
    EXPECT_EQ((Bytes{90, 82, 110, 41, 54, 145, 111, 48}), bytesOf(pairs));
    // Two slices of 4 by 2: a byte a row.
    CMOXTexture bits = makeTexture(k_RGBA8, {4, 2, 2},
                                   blackAndWhite("x..."
                                                 ".x.."
                                                 "..x."
                                                 "...x"));
    ASSERT_TRUE(toFormat(bits, ePF_1bpp));
    ASSERT_EQ(4u, bits.getBlockSize());
    ASSERT_TRUE(toFormat(bits, k_RGBA8));
    EXPECT_EQ(blackAndWhite("x....x....x....x"), bytesOf(bits));
}

TEST(PackedFormats, OfASingleColumnTheOtherPixelOfAPairIsWhateverFollows)
{
    // Red above blue: the upper pair is red and blue, the lower one blue and, past the end, black without alpha.
    // Blue, black: U = 0.439 * 255 + 128.5 = 240.445, Y0 = 41.49, V = 128.5, Y1 = 16.5.
    const CMOXTexture source = makeTexture(k_RGBA8, {1, 2}, {255, 0, 0, 255, 0, 0, 255, 255});
    CMOXTexture texture = source;
    ASSERT_TRUE(toFormat(texture, ePF_UYVY));
    EXPECT_EQ((Bytes{90, 82, 110, 41, 240, 41, 128, 16}), bytesOf(texture));
    // Back, the left pixel of each. U, V = 240, 128 add 0, -112 * 100, 112 * 517 = 57904 to 25 * 298 + 128 = 7578: 29, below 0, 255.
    ASSERT_TRUE(toFormat(texture, k_RGBA8));
    EXPECT_EQ((Bytes{48, 106, 0, 255, 29, 0, 255, 255}), bytesOf(texture));

    texture = source;
    ASSERT_TRUE(toFormat(texture, ePF_2_Planar_GRGB_8_8_8_8));
    EXPECT_EQ((Bytes{0, 255, 0, 0, 0, 0, 0, 255}), bytesOf(texture));
    ASSERT_TRUE(toFormat(texture, k_RGBA8));
    EXPECT_EQ(bytesOf(source), bytesOf(texture));
}

TEST(PackedFormats, RowsBelowAByteAreAByteEach)
{
    // Each byte starts with its row and runs on into the pixels that follow.
    CMOXTexture texture = makeTexture(k_RGBA8, {5, 2},
                                      blackAndWhite("x..xx"
                                                    ".xx.x"));
    ASSERT_TRUE(toFormat(texture, ePF_1bpp));
    EXPECT_EQ((Bytes{0x01 + 0x08 + 0x10 + 0x40 + 0x80, 0x02 + 0x04 + 0x10}), bytesOf(texture));
    ASSERT_TRUE(toFormat(texture, k_RGBA8));
    EXPECT_EQ(blackAndWhite("x..xx.xx.x"), bytesOf(texture));
}

TEST(PackedFormats, PackingAnOddWidthFailsAndNothingCrossesARowsEnd)
{
    // The last column is left out; no pair is made of it and the next row's first pixel. The texture is spoiled: it holds what was packed.
    Bytes pixels = grey({0, 0, 255, 255, 255, 0});
    CMOXTexture texture = makeTexture(k_RGBA8, {3, 2}, pixels);
    EXPECT_FALSE(toFormat(texture, ePF_UYVY));
    EXPECT_EQ(MOXPixelWord(ePF_UYVY), texture.getPixelFormat());
    EXPECT_EQ((Bytes{128, 16, 128, 16, 0, 0, 0, 0, 128, 235, 128, 235, 0, 0, 0, 0}), bytesOf(texture));

    texture = makeTexture(k_RGBA8, {3, 2}, pixels);
    EXPECT_FALSE(toFormat(texture, ePF_2_Planar_GRGB_8_8_8_8));
    EXPECT_EQ((Bytes{0, 0, 0, 0, 0, 0, 0, 0, 255, 255, 255, 255, 0, 0, 0, 0}), bytesOf(texture));
}

TEST(PackedFormats, PackingRowsOfNoWholeBytesFailsAndNothingCrossesARowsEnd)
{
    CMOXTexture texture = makeTexture(k_RGBA8, {12, 2},
                                      blackAndWhite("x.x.x.x.xxxx"
                                                    ".xxxxxxxxxxx"));
    EXPECT_FALSE(toFormat(texture, ePF_1bpp));
    EXPECT_EQ((Bytes{0x55, 0, 0xFE, 0}), bytesOf(texture));
}

TEST(PackedFormats, OneLevelThatDoesNotFitFailsTheWholeChain)
{
    const auto packs = [](EMOXTPixelFormat eFormat, const Shape& shape)
    {
        CMOXTexture texture(makeHeader(k_RGBA8, eCT_UnsignedNormalisedByte, shape));
        return toFormat(texture, eFormat);
    };
    for (const EMOXTPixelFormat eFormat : k_aePairFormats)
    {
        EXPECT_TRUE(packs(eFormat, {6, 6, 1, 1, 2, 6})) << eFormat;
        EXPECT_FALSE(packs(eFormat, {6, 6, 1, 2, 2, 6})) << eFormat; // 6, 3
        EXPECT_FALSE(packs(eFormat, {5, 4, 2})) << eFormat;
    }
    EXPECT_TRUE(packs(ePF_1bpp, {24, 6, 1, 1, 2, 6}));
    EXPECT_FALSE(packs(ePF_1bpp, {24, 6, 1, 2, 2, 6})); // 24, 12
    EXPECT_TRUE(packs(ePF_1bpp, {7, 7, 1, 3}));         // each a byte a row
    EXPECT_TRUE(packs(ePF_Shared_Exponent_RGB999_E5, {13, 7, 3, 4, 2, 6}));
}

TEST(PackedFormats, UnpackingAnOddWidthLeavesItsLastColumnEmpty)
{
    // Files hold such textures; a row has room for the pair that it begins, whose bytes here would be grey and white.
    const Bytes expected = {0, 0, 0, 255, 255, 255, 255, 255, 0, 0, 0, 0, 255, 255, 255, 255, 0, 0, 0, 255, 0, 0, 0, 0};
    CMOXTexture texture = makeTexture(ePF_YUY2, {3, 2}, {16, 128, 235, 128, 99, 128, 99, 128, 235, 128, 16, 128, 235, 128, 235, 128});
    EXPECT_TRUE(toFormat(texture, k_RGBA8));
    EXPECT_EQ(expected, bytesOf(texture));

    texture = makeTexture(ePF_2_Planar_RGBG_8_8_8_8, {3, 2}, {1, 2, 3, 4, 99, 99, 99, 99, 5, 6, 7, 8, 99, 99, 99, 99});
    EXPECT_TRUE(toFormat(texture, k_RGBA8));
    EXPECT_EQ((Bytes{1, 2, 3, 255, 1, 4, 3, 255, 0, 0, 0, 0, 5, 6, 7, 255, 5, 8, 7, 255, 0, 0, 0, 0}), bytesOf(texture));
}

TEST(PackedFormats, UnpackingBitsReachesTheLastPixelOfEveryRow)
{
    CMOXTexture texture = makeTexture(ePF_1bpp, {12, 2}, {0x55, 0xF9, 0xFE, 0x0F});
    EXPECT_TRUE(toFormat(texture, k_RGBA8));
    EXPECT_EQ(blackAndWhite("x.x.x.x.x..x"
                            ".xxxxxxxxxxx"),
              bytesOf(texture));
}

TEST(PackedFormats, WhatTheUserMayChooseConvertsAndNothingElseDoes)
{
    for (const EMOXTPixelFormat eFormat : k_aeFormats)
        for (uint32_t uiWidth = 1; uiWidth <= 33; ++uiWidth)
            for (const uint32_t uiHeight : {1u, 2u, 5u})
            {
                CMOXTexture texture(makeHeader(k_RGBA8, eCT_UnsignedNormalisedByte, {uiWidth, uiHeight}));
                const bool bValid = checkEncode(texture, eFormat, false).bValid;
                EXPECT_EQ(bValid, toFormat(texture, eFormat)) << getFormatName(eFormat) << ' ' << uiWidth << ' ' << uiHeight;
            }
}

TEST(PackedFormats, FromAnyToAnyAndOfAnyShapeTheWidthsOfAllLevelsDecide)
{
    testsupport::CSeededRandom random(43);
    std::vector<MOXPixelWord> formats(std::begin(k_aeFormats), std::end(k_aeFormats));
    formats.insert(formats.end(), {k_RGBA8, k_RGBA32, layout("rgb", 5, 6, 5), MOXPixelWord(ePF_BC1)});
    const auto anyFormat = [&] { return formats[random.below(static_cast<uint32_t>(formats.size()))]; };
    for (int i = 0; i < 3000; ++i)
    {
        const Shape shape = {1 + random.below(40), 1 + random.below(6), 1 + random.below(3),
                             1 + random.below(7),  1 + random.below(3), random.below(2) == 0 ? 1u : 6u};
        const MOXPixelWord from = anyFormat();
        const MOXPixelWord to = anyFormat();
        CMOXTexture texture(makeHeader(from, from == k_RGBA32 ? eCT_SignedFloatingPoint : eCT_UnsignedNormalisedByte, shape));
        const Bytes bytes = random.bytes(texture.getBlockSize());
        std::memcpy(texture.getDataPtr(), bytes.data(), bytes.size());

        uint32_t uiLeast = 1, uiLeastHeight = 1, uiLeastDepth = 1;
        CMOXTextureHeader::getMinDimensions(to, uiLeast, uiLeastHeight, uiLeastDepth);
        bool bFits = true;
        for (uint32_t uiLevel = 0; uiLevel < shape.uiLevels && to != ePF_BC1; ++uiLevel)
            bFits = bFits && (texture.getWidth(uiLevel) <= uiLeast || texture.getWidth(uiLevel) % uiLeast == 0);
        EXPECT_EQ(bFits, toFormat(texture, to, random.below(2) == 1))
            << getFormatName(from) << " to " << getFormatName(to) << ' ' << shape.uiWidth << ' ' << shape.uiLevels;
        EXPECT_EQ(to, texture.getPixelFormat());
        EXPECT_EQ(texture.getDataSize(), texture.getBlockSize());
    }
}

TEST(PackedFormats, AResultOfFourGiBIsRefusedAndLeavesTheTextureAsItWas)
{
    // 128 MiB of bits are 4 GiB of pixels.
    CMOXTexture texture(makeHeader(ePF_1bpp, eCT_UnsignedNormalisedByte, {65536, 16384}));
    texture.getDataPtr()[77] = 0x5A;
    EXPECT_FALSE(toFormat(texture, k_RGBA8));
    EXPECT_EQ(MOXPixelWord(ePF_1bpp), texture.getPixelFormat());
    EXPECT_EQ(1u << 27, texture.getBlockSize());
    EXPECT_EQ(0x5A, texture.getDataPtr()[77]);
}

TEST(PackedFormats, ASurfaceThatIsNotThereIsNeitherPackedNorUnpacked)
{
    constexpr uint32_t aMissing[][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (const EMOXTPixelFormat eFormat : k_aeFormats)
    {
        const Intermediate intermediate = getIntermediate(eFormat, eCT_UnsignedNormalisedByte);
        CMOXTexture pixels(makeHeader(intermediate.pixelFormat, intermediate.eChannelType, {8, 2}));
        CMOXTexture packed(makeHeader(eFormat, intermediate.eChannelType, {8, 2}));
        EXPECT_EQ(packed.getBlockSize(), compressSurface(pixels, packed, eFormat, 0, 0, 0, 0, false)) << eFormat;
        EXPECT_EQ(pixels.getBlockSize(), decompressSurface(packed, pixels, eFormat, 0, 0, 0, false)) << eFormat;
        for (const auto& [uiMember, uiFace, uiLevel] : aMissing)
        {
            EXPECT_EQ(0u, compressSurface(pixels, packed, eFormat, uiMember, uiFace, uiLevel, 0, false)) << eFormat;
            EXPECT_EQ(0u, decompressSurface(packed, pixels, eFormat, uiMember, uiFace, uiLevel, false)) << eFormat;
        }
    }
}
