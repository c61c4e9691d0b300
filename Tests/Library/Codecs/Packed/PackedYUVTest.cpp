#include "Codecs/Packed/PackedYUV.h"

#include <gmock/gmock.h>

#include "PackedTestSurfaces.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace packedtest;
using testing::Each;
using testing::ElementsAre;

namespace
{

constexpr EMOXTPixelFormat k_aeFormats[] = {ePF_UYVY, ePF_YUY2};

Bytes encodeRow(const Bytes& pixels, EMOXTPixelFormat eFormat)
{
    const auto uiWidth = static_cast<uint32_t>(pixels.size() / 4);
    return convert(encodePackedYUVReference, pixels, pixels.size() / 2, uiWidth, 1, 16, eFormat);
}

Bytes decodeRow(const Bytes& pairs, EMOXTPixelFormat eFormat)
{
    const auto uiWidth = static_cast<uint32_t>(pairs.size() / 2);
    return convert(decodePackedYUVReference, pairs, pairs.size() * 2, uiWidth, 1, 32, eFormat);
}

} // namespace

TEST(PackedYUV, BlackIs16And128And128AndComesBackAsBlack)
{
    // Y = 16.5, U = V = 128.5. Back: (16 - 16) * 298 + 128 >> 8 = 0 in every channel.
    const Bytes black = {0, 0, 0, 255, 0, 0, 0, 255};
    EXPECT_THAT(encodeRow(black, ePF_UYVY), ElementsAre(128, 16, 128, 16));
    EXPECT_THAT(encodeRow(black, ePF_YUY2), ElementsAre(16, 128, 16, 128));
    EXPECT_EQ(black, decodeRow({128, 16, 128, 16}, ePF_UYVY));
    EXPECT_EQ(black, decodeRow({16, 128, 16, 128}, ePF_YUY2));
}

TEST(PackedYUV, WhiteIs235AndComesBackAs255)
{
    // Y = 0.859 * 255 + 16.5 = 235.545; U = 255 * (0.439 - 0.439) + 128.5, V likewise.
    // Back: 219 * 298 + 128 = 65390, over 256 is 255.4.
    const Bytes white(8, 255);
    EXPECT_THAT(encodeRow(white, ePF_UYVY), ElementsAre(128, 235, 128, 235));
    EXPECT_EQ(white, decodeRow({128, 235, 128, 235}, ePF_UYVY));
}

TEST(PackedYUV, UIsOfTheFirstPixelAndVOfTheSecond)
{
    // Red, then blue:
    // Y0 = 0.257 * 255 + 16.5 = 82.035          U = -0.148 * 255 + 128.5 = 90.76
    // Y1 = 0.098 * 255 + 16.5 = 41.49           V = -0.071 * 255 + 128.5 = 110.395
    const Bytes redAndBlue = {255, 0, 0, 255, 0, 0, 255, 255};
    EXPECT_THAT(encodeRow(redAndBlue, ePF_UYVY), ElementsAre(90, 82, 110, 41));
    EXPECT_THAT(encodeRow(redAndBlue, ePF_YUY2), ElementsAre(82, 90, 41, 110));
    // Blue, then red: U = 0.439 * 255 + 128.5 = 240.445, V the same.
    const Bytes blueAndRed = {0, 0, 255, 255, 255, 0, 0, 255};
    EXPECT_THAT(encodeRow(blueAndRed, ePF_UYVY), ElementsAre(240, 41, 240, 82));
}

TEST(PackedYUV, GreenAndMixedColoursByHand)
{
    // (0, 255, 0):    Y = 0.504 * 255 + 16.5 = 145.02; U = 128.5 - 0.291 * 255 = 54.295
    // (10, 20, 200):  Y = 2.57 + 10.08 + 19.6 + 16.5 = 48.75; V = 4.39 - 7.36 - 14.2 + 128.5 = 111.33
    EXPECT_THAT(encodeRow({0, 255, 0, 0, 10, 20, 200, 77}, ePF_UYVY), ElementsAre(54, 145, 111, 48));
}

TEST(PackedYUV, DecodingByHandWithClamps)
{
    // U = 100, Y0 = 120, V = 180, Y1 = 20. Shared: red 52 * 409 = 21268, green 28 * 100 - 52 * 208 = -8016, blue -28 * 517 = -14476.
    // Y0: 104 * 298 + 128 = 31120: red 52388 / 256 = 204.6, green 23104 / 256 = 90.25, blue 16644 / 256 = 65.02.
    // Y1:   4 * 298 + 128 = 1320:  red 22588 / 256 = 88.2,  green below 0,              blue below 0.
    const Bytes expected = {204, 90, 65, 255, 88, 0, 0, 255};
    EXPECT_EQ(expected, decodeRow({100, 120, 180, 20}, ePF_UYVY));
    EXPECT_EQ(expected, decodeRow({120, 100, 20, 180}, ePF_YUY2));
    // Y = 255: 239 * 298 + 128 = 71350 / 256 = 278.7, clamped. Y = 0: -4768 + 128, below 0.
    EXPECT_THAT(decodeRow({128, 255, 128, 0}, ePF_UYVY), ElementsAre(255, 255, 255, 255, 0, 0, 0, 255));
}

TEST(PackedYUV, TheLastColumnOfAnOddWidthIsLeftOutRowByRow)
{
    // Three black pixels, then three white ones; rows of two pairs, of which the second is not written.
    Bytes pixels(12, 0);
    pixels.insert(pixels.end(), 12, 255);
    const Bytes pairs = {128, 16, 128, 16, 7, 7, 7, 7, 128, 235, 128, 235, 7, 7, 7, 7};
    EXPECT_EQ(pairs, convert(encodePackedYUV, pixels, 16, 3, 2, 16, ePF_UYVY));
    EXPECT_EQ(pairs, convert(encodePackedYUVReference, pixels, 16, 3, 2, 16, ePF_UYVY));
    const Bytes decoded = {0, 0, 0, 255, 0, 0, 0, 255, 7, 7, 7, 7, 255, 255, 255, 255, 255, 255, 255, 255, 7, 7, 7, 7};
    EXPECT_EQ(decoded, convert(decodePackedYUV, pairs, 24, 3, 2, 32, ePF_UYVY));
    EXPECT_EQ(decoded, convert(decodePackedYUVReference, pairs, 24, 3, 2, 32, ePF_UYVY));
}

TEST(PackedYUV, OtherFormatsNullPointersAndEmptySurfacesGiveNothing)
{
    const Bytes source(64, 1);
    Bytes target(64, 7);
    for (const auto entry : {encodePackedYUV, decodePackedYUV, encodePackedYUVReference, decodePackedYUVReference})
    {
        for (const EMOXTPixelFormat eFormat : {ePF_BC7, ePF_1bpp, ePF_2_Planar_RGBG_8_8_8_8, ePF_Count})
            EXPECT_EQ(0u, entry(source.data(), target.data(), 2, 2, eFormat));
        EXPECT_EQ(0u, entry(nullptr, target.data(), 2, 2, ePF_UYVY));
        EXPECT_EQ(0u, entry(source.data(), nullptr, 2, 2, ePF_UYVY));
        for (const uint32_t uiOther : {0u, 2u, 3u})
        {
            EXPECT_EQ(0u, entry(source.data(), target.data(), 0, uiOther, ePF_YUY2));
            EXPECT_EQ(0u, entry(source.data(), target.data(), uiOther, 0, ePF_YUY2));
        }
    }
    EXPECT_THAT(target, Each(7));
}

TEST(PackedYUV, TheFastFormsGiveTheReferenceBytesAtEveryWidth)
{
    testsupport::CSeededRandom random(331);
    forEachInstructionSet(
        [&]
        {
            for (const EMOXTPixelFormat eFormat : k_aeFormats)
                for (uint32_t uiWidth = 1; uiWidth <= 70; ++uiWidth)
                {
                    const Bytes source = random.bytes(size_t{uiWidth} * 3 * 4 + 8);
                    const size_t uiRoom = (size_t{uiWidth} + 1) * 3 * 4;
                    EXPECT_EQ(convert(encodePackedYUVReference, source, uiRoom, uiWidth, 3, 16, eFormat),
                              convert(encodePackedYUV, source, uiRoom, uiWidth, 3, 16, eFormat));
                    EXPECT_EQ(convert(decodePackedYUVReference, source, uiRoom, uiWidth, 3, 32, eFormat),
                              convert(decodePackedYUV, source, uiRoom, uiWidth, 3, 32, eFormat));
                }
        });
}

TEST(PackedYUV, TheFastFormsGiveTheReferenceBytesOfEveryYUVAndOfManyColours)
{
    // For each Y the 65536 U and V, the second pixel with the opposite Y.
    constexpr uint32_t uiWidth = 2 * 65536;
    Bytes pairs(size_t{uiWidth} * 2);
    testsupport::CSeededRandom random(332);
    for (uint32_t uiLuma = 0; uiLuma < 256; uiLuma += 5)
    {
        for (uint32_t i = 0; i < uiWidth / 2; ++i)
        {
            pairs[4 * i] = static_cast<uint8_t>(i);
            pairs[4 * i + 1] = static_cast<uint8_t>(uiLuma);
            pairs[4 * i + 2] = static_cast<uint8_t>(i >> 8);
            pairs[4 * i + 3] = static_cast<uint8_t>(255 - uiLuma);
        }
        const Bytes pixels = random.bytes(size_t{uiWidth} * 4);
        const Bytes decoded = convert(decodePackedYUVReference, pairs, pixels.size(), uiWidth, 1, 32, ePF_UYVY);
        const Bytes encoded = convert(encodePackedYUVReference, pixels, pairs.size(), uiWidth, 1, 16, ePF_UYVY);
        forEachInstructionSet(
            [&]
            {
                EXPECT_TRUE(decoded == convert(decodePackedYUV, pairs, pixels.size(), uiWidth, 1, 32, ePF_UYVY));
                EXPECT_TRUE(encoded == convert(encodePackedYUV, pixels, pairs.size(), uiWidth, 1, 16, ePF_UYVY));
            });
    }
}
