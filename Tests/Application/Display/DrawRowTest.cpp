#include "Display/DrawRow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

namespace
{

constexpr std::array<uint8_t, 4> k_aMasks[] = {{255, 255, 255, 255}, {255, 255, 255, 0}, {255, 0, 0, 255}, {0, 255, 0, 0},
                                               {0, 0, 255, 255},     {0, 0, 0, 255},     {0, 0, 0, 0}};

template <typename DrawPixel>
class DrawRowOf : public testing::Test
{
};
using DrawPixels = testing::Types<CMOXDrawPixelBlend, CMOXDrawPixelPreMultBlend, CMOXDrawPixelAlphaAsGrey>;
TYPED_TEST_SUITE(DrawRowOf, DrawPixels);

/// Writes each byte before it reads the next one.
class CDrawPixelReversed : public CMOXDrawPixel
{
public:
    void draw(uint8_t* dst, const uint8_t* src) const override
    {
        for (uint32_t c = 0; c < 4; ++c)
            dst[c] = src[3 - c];
    }
};

} // namespace

TYPED_TEST(DrawRowOf, GivesTheReferenceBytesForEverySourceValueAtEveryAlpha)
{
    std::vector<uint8_t> source;
    for (uint32_t uiAlpha = 0; uiAlpha < 256; ++uiAlpha)
        for (uint32_t uiValue = 0; uiValue < 256; ++uiValue)
            for (const uint32_t uiByte : {uiValue, 255 - uiValue, uiValue ^ 0x55, uiAlpha})
                source.push_back(static_cast<uint8_t>(uiByte));
    TypeParam drawPixel;
    std::vector<uint8_t> expected(source.size());
    for (const uint8_t ui8BG : std::initializer_list<uint8_t>{0, 1, 2, 127, 128, 160, 253, 254, 255})
    {
        drawPixel.setBGColour({ui8BG, static_cast<uint8_t>(ui8BG ^ 0x0F), static_cast<uint8_t>(255 - ui8BG), 90});
        drawRowReference(drawPixel, source.data(), expected.data(), source.size() / 4);
        forEachInstructionSet(
            [&]
            {
                std::vector<uint8_t> drawn(source.size());
                getDrawRow(drawPixel)(drawPixel, source.data(), drawn.data(), source.size() / 4);
                EXPECT_EQ(expected, drawn) << int{ui8BG};
            });
    }
}

TYPED_TEST(DrawRowOf, GivesTheReferenceBytesAtEveryLengthAndMaskAndNoMore)
{
    testsupport::CSeededRandom random(1);
    for (size_t uiCount = 0; uiCount < 70; ++uiCount)
        for (const std::array<uint8_t, 4>& aui8Mask : k_aMasks)
        {
            const std::vector<uint8_t> source = random.bytes(4 * uiCount);
            TypeParam drawPixel;
            drawPixel.setBGColour({7, 160, 255, 31});
            drawPixel.setMask(aui8Mask);
            std::vector<uint8_t> expected(4 * uiCount + 64, 0xCD);
            drawRowReference(drawPixel, source.data(), expected.data(), uiCount);
            forEachInstructionSet(
                [&]
                {
                    std::vector<uint8_t> drawn(expected.size(), 0xCD);
                    getDrawRow(drawPixel)(drawPixel, source.data(), drawn.data(), uiCount);
                    EXPECT_EQ(expected, drawn) << uiCount;
                    std::copy(source.begin(), source.end(), drawn.begin());
                    getDrawRow(drawPixel)(drawPixel, drawn.data(), drawn.data(), uiCount);
                    EXPECT_EQ(expected, drawn) << uiCount << " in place";
                });
        }
}

TEST(DrawRow, GoesThroughTheFunctorOfAnUnknownClass)
{
    const CDrawPixelReversed drawPixel;
    std::vector<uint8_t> pixels = {1, 2, 3, 4, 5, 6, 7, 8};
    getDrawRow(drawPixel)(drawPixel, pixels.data(), pixels.data(), 2);
    EXPECT_EQ((std::vector<uint8_t>{4, 3, 2, 1, 8, 7, 6, 5}), pixels);
}

TEST(SwapRowForScreen, SwapsRedAndBlueAndIsOpaque)
{
    for (const auto swap : {swapRowForScreenReference, swapRowForScreen})
    {
        std::vector<uint8_t> pixels = {1, 2, 3, 4, 250, 251, 252, 0};
        swap(pixels.data(), 2);
        EXPECT_EQ((std::vector<uint8_t>{3, 2, 1, 255, 252, 251, 250, 255}), pixels);
    }
}

TEST(SwapRowForScreen, GivesTheReferenceBytesAtEveryLength)
{
    testsupport::CSeededRandom random(2);
    for (size_t uiCount = 0; uiCount < 70; ++uiCount)
    {
        const std::vector<uint8_t> source = random.bytes(4 * uiCount + 8);
        std::vector<uint8_t> expected = source;
        swapRowForScreenReference(expected.data(), uiCount);
        forEachInstructionSet(
            [&]
            {
                std::vector<uint8_t> drawn = source;
                swapRowForScreen(drawn.data(), uiCount);
                EXPECT_EQ(expected, drawn) << uiCount;
            });
    }
}
