#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Library/Pixels/PixelSamples.h"
#include "Pixels/Dither.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;
using testing::Each;
using testing::ElementsAre;

namespace
{

constexpr MOXPixelWord k_RGB555 = layout("rgb", 5, 5, 5);

/// A surface whose red channel is given, row by row, the other channels 0.
std::vector<uint8_t> makeRed(const std::vector<uint8_t>& reds)
{
    std::vector<uint8_t> pixels;
    for (const uint8_t uiRed : reds)
        pixels.insert(pixels.end(), {uiRed, 0, 0, 0});
    return pixels;
}

std::vector<uint8_t> getChannel(const std::vector<uint8_t>& pixels, size_t uiChannel)
{
    std::vector<uint8_t> values;
    for (size_t i = uiChannel; i < pixels.size(); i += 4)
        values.push_back(pixels[i]);
    return values;
}

std::vector<uint8_t> ditherReds(MOXPixelWord format, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth,
                                const std::vector<uint8_t>& reds)
{
    std::vector<uint8_t> pixels = makeRed(reds);
    std::vector<uint8_t> plain = pixels;
    ditherSurface(pixels.data(), format, uiWidth, uiHeight, uiDepth);
    ditherSurfaceReference(plain.data(), format, uiWidth, uiHeight, uiDepth);
    EXPECT_EQ(plain, pixels);
    return getChannel(pixels, 0);
}

} // namespace

TEST(Dither, TheBrightestByteStaysAndGivesNoError)
{
    EXPECT_THAT(ditherReds(k_RGB555, 2, 2, 1, {255, 0, 0, 0}), ElementsAre(255, 0, 0, 0)); // 248 + 7
}

TEST(Dither, AnErrorOfFourGivesTwoToTheRightAndOneToBothPixelsBelow)
{
    // 6 + 2, 7 + 1 and 7 + 1 all reach 8, the lowest byte that shows 8.
    EXPECT_THAT(ditherReds(k_RGB555, 2, 2, 1, {4, 6, 7, 7}), ElementsAre(0, 8, 8, 8));
    // One less each, and nothing reaches it.
    EXPECT_THAT(ditherReds(k_RGB555, 2, 1, 1, {4, 5}), ElementsAre(0, 0));
    EXPECT_THAT(ditherReds(k_RGB555, 1, 2, 1, {4, 6}), ElementsAre(0, 0));
}

TEST(Dither, NegativeErrorsAreCutTowardsZeroAndClampedAtBlack)
{
    // At 1 bit 128 shows 128 + 64 = 192: error -64, so -32 to the right and -16 below. 20 - 32 is clamped to 0.
    EXPECT_THAT(ditherReds(layout("rgb", 1, 1, 1), 2, 1, 1, {128, 20}), ElementsAre(192, 0));
    // 254 at 5 bits shows 255: the error -1 halved is 0.
    EXPECT_THAT(ditherReds(k_RGB555, 2, 2, 1, {254, 8, 8, 8}), ElementsAre(255, 8, 8, 8));
}

TEST(Dither, ErrorsArriveFromTheUpperLeftThenTheLeftThenAbove)
{
    // At 1 bit: 100 shows 50, error 50 (25, 12). 128 shows 192, error -64 (-32, -16). 200 shows 128 + 100 = 228, error -28 (-14, -7).
    // Pixel (1, 0) is 175 + 25 = 200 and pixel (0, 1) is 116 + 12 = 128. Pixel (1, 1) receives 12, then -32, then -7.
    constexpr MOXPixelWord oneBit = layout("r", 1);
    // 60 + 12 - 32 - 7 = 33 shows 16.
    EXPECT_THAT(ditherReds(oneBit, 2, 2, 1, {100, 175, 116, 60}), ElementsAre(50, 228, 192, 16));
    // 10 + 12 - 32 is cut to 0, which stays.
    EXPECT_THAT(ditherReds(oneBit, 2, 2, 1, {100, 175, 116, 10}), ElementsAre(50, 228, 192, 0));
    // 250 + 12 is cut to 255, less 39 is 216, which shows 128 + 108. In another order nothing would be cut: 223 shows 128 + 111.
    EXPECT_THAT(ditherReds(oneBit, 2, 2, 1, {100, 175, 116, 250}), ElementsAre(50, 228, 192, 236));
}

TEST(Dither, NothingCrossesDepthSlices)
{
    // Two slices of one pixel: were there a row between them, 7 + 1 would show 8.
    EXPECT_THAT(ditherReds(k_RGB555, 1, 1, 2, {4, 7}), ElementsAre(0, 0));
    EXPECT_THAT(ditherReds(k_RGB555, 1, 2, 2, {4, 7, 4, 7}), ElementsAre(0, 8, 0, 8));
}

TEST(Dither, EachChannelHasItsOwnBits)
{
    std::vector<uint8_t> pixel = {100, 100, 100, 100};
    ditherSurface(pixel.data(), layout("rgba", 5, 6, 8, 1), 1, 1, 1);
    // 96 + 3; 100 + 1; as it was; 0 + 50
    EXPECT_THAT(pixel, ElementsAre(99, 101, 100, 50));
}

TEST(Dither, NullAndEmptySurfacesAreLeft)
{
    ditherSurface(nullptr, k_RGB555, 4, 4, 1);
    ditherSurfaceReference(nullptr, k_RGB555, 4, 4, 1);
    std::vector<uint8_t> pixel = {100, 100, 100, 100};
    ditherSurface(pixel.data(), k_RGB555, 0, 4, 1);
    ditherSurface(pixel.data(), k_RGB555, 4, 0, 1);
    ditherSurface(pixel.data(), k_RGB555, 1, 1, 0);
    EXPECT_THAT(pixel, Each(100));
}

TEST(Dither, BitsOfLayoutsGoByTheirLetters)
{
    EXPECT_THAT(getDitherBits(layout("bgr", 5, 6, 4)), ElementsAre(4, 6, 5, 0));
    EXPECT_THAT(getDitherBits(layout("l", 3)), ElementsAre(3, 3, 3, 0));
    EXPECT_THAT(getDitherBits(layout("ai", 2, 6)), ElementsAre(6, 6, 6, 2));
    EXPECT_THAT(getDitherBits(layout("xrgb", 1, 5, 5, 5)), ElementsAre(5, 5, 5, 1));
    EXPECT_THAT(getDitherBits(layout("rz", 5, 5)), ElementsAre(5, 0, 0, 0));
}

TEST(Dither, BitsOfNumberedFormats)
{
    const auto bits = [](uint32_t uiFormat) { return getDitherBits(static_cast<EMOXTPixelFormat>(uiFormat)); };
    for (const uint32_t i : {0u, 2u})
        EXPECT_THAT(bits(i), ElementsAre(5, 5, 5, 0)) << i;
    for (const uint32_t i : {1u, 3u, 4u, 5u})
        EXPECT_THAT(bits(i), ElementsAre(4, 4, 4, 3)) << i;
    for (const uint32_t i : {6u, 23u})
        EXPECT_THAT(bits(i), ElementsAre(4, 4, 4, 4)) << i;
    EXPECT_THAT(bits(7), ElementsAre(5, 6, 5, 1));
    for (const uint32_t i : {8u, 9u, 10u, 11u})
        EXPECT_THAT(bits(i), ElementsAre(5, 6, 5, 8)) << i;
    EXPECT_THAT(bits(12), ElementsAre(8, 0, 0, 0));
    EXPECT_THAT(bits(13), ElementsAre(8, 8, 0, 0));
    EXPECT_THAT(bits(14), ElementsAre(16, 16, 16, 0));
    for (const uint32_t i : {15u, 16u, 17u, 20u, 21u})
        EXPECT_THAT(bits(i), ElementsAre(8, 8, 8, 0)) << i;
    EXPECT_THAT(bits(18), ElementsAre(1, 1, 1, 0));
    EXPECT_THAT(bits(19), ElementsAre(14, 14, 14, 0));
    EXPECT_THAT(bits(22), ElementsAre(4, 4, 4, 0));
    EXPECT_THAT(bits(24), ElementsAre(5, 5, 5, 1));
    EXPECT_THAT(bits(25), ElementsAre(11, 0, 0, 0));
    EXPECT_THAT(bits(26), ElementsAre(11, 11, 0, 0));
    for (const uint32_t i : {27u, 50u, 51u, 99u, 0xFFFFFFFFu})
        EXPECT_THAT(bits(i), ElementsAre(0, 0, 0, 0)) << i;
}

TEST(Dither, FormatsWithoutBitsBetweenOneAndSevenLeaveThePictureAsItIs)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(16, 16);
    for (const MOXPixelWord format : {MOXPixelWord(ePF_ASTC_4x4), MOXPixelWord(ePF_BC6), MOXPixelWord(ePF_EAC_R11), k_RGBA8, k_RGBA16})
    {
        std::vector<uint8_t> pixels = picture;
        ditherSurface(pixels.data(), format, 16, 16, 1);
        EXPECT_EQ(picture, pixels);
    }
}

TEST(Dither, GivesTheReferenceBytesForEveryShapeAndBitCount)
{
    testsupport::CSeededRandom random(5);
    struct Shape
    {
        uint32_t uiWidth, uiHeight, uiDepth;
    };
    constexpr Shape aShapes[] = {{1, 1, 1},   {3, 1, 1},   {1, 9, 1},   {2, 2, 2},   {7, 5, 3},
                                 {33, 17, 1}, {255, 8, 1}, {256, 9, 1}, {600, 11, 2}};
    forEachInstructionSet(
        [&]
        {
            for (const Shape& shape : aShapes)
                for (uint8_t uiBits = 0; uiBits <= 8; ++uiBits)
                {
                    const MOXPixelWord format =
                        layout("rgba", uiBits, static_cast<uint8_t>(uiBits % 7 + 1), 5, static_cast<uint8_t>(8 - uiBits));
                    const std::vector<uint8_t> picture = random.bytes(size_t{shape.uiWidth} * shape.uiHeight * shape.uiDepth * 4);
                    std::vector<uint8_t> expected = picture;
                    std::vector<uint8_t> pixels = picture;
                    ditherSurfaceReference(expected.data(), format, shape.uiWidth, shape.uiHeight, shape.uiDepth);
                    ditherSurface(pixels.data(), format, shape.uiWidth, shape.uiHeight, shape.uiDepth);
                    ASSERT_EQ(expected, pixels)
                        << shape.uiWidth << "x" << shape.uiHeight << "x" << shape.uiDepth << ", " << +uiBits << " bits";
                }
        });
}
