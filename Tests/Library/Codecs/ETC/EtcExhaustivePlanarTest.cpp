#include "Codecs/ETC/EtcExhaustivePlanar.h"

#include <gtest/gtest.h>

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcPlanarFit.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcExhaustivePlanar.h"

namespace
{

using namespace moxtexture;

constexpr std::array<uint32_t, 3> k_auiPlain = {1, 1, 1};
constexpr std::array<uint32_t, 3> k_auiPerceptual = {299, 587, 114};
constexpr EtcBlockWords k_untouched = {0x12345678, 0x9ABCDEF0};

uint32_t channelError(const std::array<uint8_t, 16>& a, const std::array<uint8_t, 16>& b)
{
    int32_t iSum = 0;
    for (size_t i = 0; i < 16; ++i)
        iSum += (a[i] - b[i]) * (a[i] - b[i]);
    return static_cast<uint32_t>(iSum);
}

std::array<uint32_t, 3> channelErrors(const EtcPixels& a, const EtcPixels& b)
{
    return {channelError(a.aui8Red, b.aui8Red), channelError(a.aui8Green, b.aui8Green), channelError(a.aui8Blue, b.aui8Blue)};
}

std::array<uint32_t, 3> fitErrors(const EtcPixels& pixels)
{
    return channelErrors(pixels, decodeEtcPixelsPlanar(planarFit(pixels)));
}

void expectReference(const EtcPixels& pixels, uint32_t uiBound, const std::array<uint32_t, 3>& errors, bool bPerceptual)
{
    const auto expected = etcreference::searchPlanarExhaustive(pixels, uiBound, errors, bPerceptual ? k_auiPerceptual : k_auiPlain);
    EtcBlockWords actual = k_untouched;
    const auto search = bPerceptual ? searchPlanarExhaustivePerceptual : searchPlanarExhaustive;
    ASSERT_EQ(expected.has_value(), search(pixels, uiBound, errors[0], errors[1], errors[2], actual));
    ASSERT_EQ(expected.value_or(k_untouched).ui32High, actual.ui32High);
    ASSERT_EQ(expected.value_or(k_untouched).ui32Low, actual.ui32Low);
}

TEST(EtcExhaustivePlanar, FindsTheFirstLeastBlockOfAllCodewords)
{
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(811, 600))
        ASSERT_NO_FATAL_FAILURE(expectReference(pixels, k_uiEtcMaxPlainError, fitErrors(pixels), false));
}

TEST(EtcExhaustivePlanar, FindsTheFirstLeastBlockByWeightedErrors)
{
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(812, 300))
        ASSERT_NO_FATAL_FAILURE(expectReference(pixels, k_uiEtcMaxPerceptualError, fitErrors(pixels), true));
}

TEST(EtcExhaustivePlanar, FindsWhatABoundOfTheWholeBlockLeaves)
{
    testsupport::CSeededRandom random(813);
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(814, 300))
    {
        const std::array<uint32_t, 3> errors = fitErrors(pixels);
        const uint32_t uiMost = std::max({errors[0], errors[1], errors[2]});
        ASSERT_NO_FATAL_FAILURE(expectReference(pixels, random.below(uiMost + 2), errors, false));
        ASSERT_NO_FATAL_FAILURE(expectReference(pixels, 299 * random.below(uiMost + 2) + random.below(299), errors, true));
    }
}

TEST(EtcExhaustivePlanar, FindsTheLeastBlockWithLimitsFarAboveTheFit)
{
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(815, 24))
    {
        std::array<uint32_t, 3> errors = fitErrors(pixels);
        for (uint32_t& uiError : errors)
            uiError = uiError * 3 + 500;
        ASSERT_NO_FATAL_FAILURE(expectReference(pixels, k_uiEtcMaxPlainError, errors, false));
    }
}

TEST(EtcExhaustivePlanar, WithoutLimitsItIsTheLeastOfAll)
{
    // Two channels are flat, where the reference ends soon.
    EtcPixels pixels = etctest::flatEtcBlock(0, 255, 0);
    testsupport::CSeededRandom random(816);
    for (uint8_t& ui8Value : pixels.aui8Red)
        ui8Value = static_cast<uint8_t>(random.below(2) * 255);
    constexpr uint32_t uiAll = UINT32_MAX;
    EtcBlockWords actual = k_untouched;
    ASSERT_TRUE(searchPlanarExhaustive(pixels, uiAll, uiAll, uiAll, uiAll, actual));
    const auto red = etcreference::searchPlanarChannel(pixels.aui8Red, 6, 1, uiAll);
    ASSERT_TRUE(red.has_value());
    EXPECT_EQ(etcreference::packPlanarLevels(*red, {127, 127, 127}, {0, 0, 0}), actual);
}

TEST(EtcExhaustivePlanar, FindsABlockThatIsPlanarWithoutError)
{
    testsupport::CSeededRandom random(817);
    for (int i = 0; i < 200; ++i)
    {
        EtcPlanarLevels levels;
        for (EtcColour* const pColour : {&levels.origin, &levels.horizontal, &levels.vertical})
            *pColour = {static_cast<uint8_t>(random.below(64)), static_cast<uint8_t>(random.below(128)),
                        static_cast<uint8_t>(random.below(64))};
        const EtcPixels pixels = decodeEtcPixelsPlanar(packPlanar(levels));
        const std::array<uint32_t, 3> errors = fitErrors(pixels);
        EtcBlockWords found = k_untouched;
        ASSERT_TRUE(searchPlanarExhaustive(pixels, k_uiEtcMaxPlainError, errors[0], errors[1], errors[2], found));
        ASSERT_EQ(0.0, blockErrorRGB(pixels, decodeEtcPixelsPlanar(found)));
    }
}

TEST(EtcExhaustivePlanar, AnErrorEqualToTheLimitIsFoundAndOneAboveIsNot)
{
    // 101 is 6-bit level 25 and 100 is 7-bit level 50, so the block is exact at a limit of 0. Nothing else is: at O = 101 pixel (3, 0)
    // is (406 + 3 (H - 101)) / 4, which is 101 for H from 101 - 2/3 to 101 + 1/3 alone.
    EtcBlockWords found = k_untouched;
    ASSERT_TRUE(searchPlanarExhaustive(etctest::flatEtcBlock(101, 100, 101), 0, 0, 0, 0, found));
    EXPECT_EQ(packPlanar({{25, 50, 25}, {25, 50, 25}, {25, 50, 25}}), found);

    // No 6-bit level is 100: 24 is 97 and 25 is 101, so pixel (0, 0) is off by 1 at least.
    for (const EtcPixels& pixels :
         {etctest::flatEtcBlock(100, 100, 101), etctest::flatEtcBlock(101, 100, 100), etctest::flatEtcBlock(101, 101, 101)})
    {
        // 7-bit levels 50 and 51 are 100 and 102.
        found = k_untouched;
        EXPECT_FALSE(searchPlanarExhaustive(pixels, 0, 0, 0, 0, found));
        EXPECT_EQ(k_untouched, found);
    }
}

TEST(EtcExhaustivePlanar, OfTheTwoPlanesOfASymmetricBlockTheOneWithTheLesserHorizontalLevelIsFound)
{
    // Where a block does not change when its rows and columns change places, two planes with H and V exchanged have the same error.
    testsupport::CSeededRandom random(818);
    int iUnequal = 0;
    for (int i = 0; i < 100; ++i)
    {
        EtcPixels pixels;
        for (auto* const pPlane : etctest::planesOf(pixels))
        {
            const uint32_t uiBase = 20 + random.below(100);
            for (size_t y = 0; y < 4; ++y)
                for (size_t x = 0; x <= y; ++x)
                    (*pPlane)[etcPixelIndex(x, y)] = (*pPlane)[etcPixelIndex(y, x)] =
                        static_cast<uint8_t>(uiBase + 10 * (x + y) + random.below(6));
        }
        const std::array<uint32_t, 3> errors = fitErrors(pixels);
        EtcBlockWords found = k_untouched;
        ASSERT_TRUE(searchPlanarExhaustive(pixels, k_uiEtcMaxPlainError, errors[0], errors[1], errors[2], found));
        // From the top: the three levels of the origin in 19 bits, then the horizontal and the vertical ones of 6, 7 and 6 bits.
        const uint64_t ui64Levels = uint64_t{found.ui32High} << 32 | found.ui32Low;
        const std::array<uint64_t, 3> aui64Horizontal = {ui64Levels >> 39 & 63, ui64Levels >> 32 & 127, ui64Levels >> 26 & 63};
        const std::array<uint64_t, 3> aui64Vertical = {ui64Levels >> 20 & 63, ui64Levels >> 13 & 127, ui64Levels >> 7 & 63};
        for (size_t c = 0; c < 3; ++c)
        {
            ASSERT_LE(aui64Horizontal[c], aui64Vertical[c]);
            iUnequal += aui64Horizontal[c] < aui64Vertical[c] ? 1 : 0;
        }
    }
    EXPECT_GT(iUnequal, 20);
}

TEST(EtcExhaustivePlanar, WeightsCountInTheBoundOfTheBlockOnly)
{
    // 101 is 6-bit level 25 and 100 is 7-bit level 50. The other way round neither has a level: pixel (0, 0) is off by 1 at least.
    const std::array<uint8_t, 3> aui8Exact = {101, 100, 101};
    const std::array<uint8_t, 3> aui8Between = {100, 101, 100};
    for (size_t c = 0; c < 3; ++c)
    {
        EtcPixels pixels = etctest::flatEtcBlock(aui8Exact[0], aui8Exact[1], aui8Exact[2]);
        std::array<uint8_t, 16>& values = *etctest::planesOf(pixels)[c];
        values.fill(aui8Between[c]);
        std::array<std::array<uint32_t, 3>, 3> aaui32Levels = {{{25, 25, 25}, {50, 50, 50}, {25, 25, 25}}};
        const auto least = etcreference::searchPlanarChannel(values, c == 1 ? 7 : 6, 1, 1000);
        ASSERT_TRUE(least.has_value());
        aaui32Levels[c] = *least;
        const EtcBlockWords expected = etcreference::packPlanarLevels(aaui32Levels[0], aaui32Levels[1], aaui32Levels[2]);
        std::array<uint32_t, 3> errors = channelErrors(pixels, decodeEtcPixelsPlanar(expected));
        const uint32_t uiBound = k_auiPerceptual[c] * errors[c];
        ASSERT_GT(uiBound, 0u);
        EtcBlockWords found = k_untouched;
        EXPECT_TRUE(searchPlanarExhaustivePerceptual(pixels, uiBound, errors[0], errors[1], errors[2], found));
        EXPECT_EQ(expected, found);
        EXPECT_FALSE(searchPlanarExhaustivePerceptual(pixels, uiBound - 1, errors[0], errors[1], errors[2], found));
        --errors[c];
        EXPECT_FALSE(searchPlanarExhaustivePerceptual(pixels, uiBound, errors[0], errors[1], errors[2], found));
    }
}

} // namespace
