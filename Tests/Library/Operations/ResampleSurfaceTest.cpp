#include "Operations/ResampleSurface.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

#include "Operations/ChannelKind.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using testsupport::CSeededRandom;

namespace
{

size_t countElements(const SurfaceSize& size)
{
    return size.getPixelIndex(0, 0, size.uiDepth) * k_uiWorkingChannels;
}

template <typename T>
std::vector<T> makeElements(CSeededRandom& random, size_t uiCount)
{
    std::vector<T> elements(uiCount);
    for (T& element : elements)
    {
        // A quarter of them at the ends of the range.
        const uint32_t uiChoice = random.below(8);
        element = uiChoice == 0 ? T(0) : uiChoice == 1 ? std::numeric_limits<T>::max() : static_cast<T>(random.next32());
    }
    return elements;
}

/// Ordinary values, negative ones, very large and very small ones; none that is no number.
template <>
std::vector<float> makeElements<float>(CSeededRandom& random, size_t uiCount)
{
    constexpr float afHard[] = {0.0f, -0.0f, -1.5f, 1e-40f, 3.4028235e38f, -3.4028235e38f, 16777217.0f, 1e10f};
    std::vector<float> elements(uiCount);
    for (float& fElement : elements)
        fElement = random.below(4) == 0 ? afHard[random.below(8)] : random.nextFloat() * 4.0f - 1.0f;
    return elements;
}

/// Expects the plain form's bytes of the fast one, with every instruction set.
template <typename T>
void expectPlainForm(const std::vector<T>& source, const SurfaceSize& from, const SurfaceSize& to, EResizeMode eMode)
{
    SCOPED_TRACE(testing::Message() << from.uiWidth << "x" << from.uiHeight << "x" << from.uiDepth << " to " << to.uiWidth << "x"
                                    << to.uiHeight << "x" << to.uiDepth << " mode " << eMode);
    std::vector<T> expected(countElements(to), T(77));
    ASSERT_TRUE(resampleSurfaceReference(source.data(), expected.data(), from, to, eMode));
    forEachInstructionSet(
        [&]
        {
            std::vector<T> actual(countElements(to), T(99));
            ASSERT_TRUE(resampleSurface(source.data(), actual.data(), from, to, eMode));
            if (std::memcmp(expected.data(), actual.data(), expected.size() * sizeof(T)) == 0)
                return;
            for (size_t i = 0; i < expected.size(); ++i)
                ASSERT_EQ(expected[i], actual[i]) << "element " << i;
            FAIL() << "equal numbers with other bits";
        });
}

template <typename T>
class ResampleOfEveryKind : public testing::Test
{
protected:
    void expectEqual(uint64_t ui64Seed, const SurfaceSize& from, const SurfaceSize& to)
    {
        CSeededRandom random(ui64Seed);
        const std::vector<T> source = makeElements<T>(random, countElements(from));
        for (const EResizeMode eMode : {eResizeNearest, eResizeLinear, eResizeCubic})
            expectPlainForm(source, from, to, eMode);
    }
};

using Kinds = testing::Types<uint8_t, uint16_t, uint32_t, float>;
TYPED_TEST_SUITE(ResampleOfEveryKind, Kinds);

using Bytes = std::vector<uint8_t>;

/// A row or column of pixels with the number in all four channels.
template <typename T>
std::vector<T> pixelsOf(std::initializer_list<T> values)
{
    std::vector<T> elements;
    for (const T value : values)
        elements.insert(elements.end(), k_uiWorkingChannels, value);
    return elements;
}

template <typename T>
std::vector<T> resample(const std::vector<T>& source, const SurfaceSize& from, const SurfaceSize& to, EResizeMode eMode)
{
    std::vector<T> result(countElements(to));
    EXPECT_TRUE(resampleSurface(source.data(), result.data(), from, to, eMode));
    std::vector<T> plain(countElements(to));
    EXPECT_TRUE(resampleSurfaceReference(source.data(), plain.data(), from, to, eMode));
    EXPECT_EQ(plain, result);
    return result;
}

template <typename T>
std::vector<T> resizeByStages(const std::vector<T>& source, const SurfaceSize& from, const SurfaceSize& to, EResizeMode eMode)
{
    std::vector<T> result(countElements(to));
    EXPECT_TRUE(resizeSurface(source.data(), result.data(), from, to, eMode));
    return result;
}

} // namespace

// ---- the fast form against the plain one ----

TYPED_TEST(ResampleOfEveryKind, EqualsThePlainFormOnEveryPairOfSmallSizes)
{
    for (uint32_t uiFrom = 1; uiFrom <= 9; ++uiFrom)
        for (uint32_t uiTo = 1; uiTo <= 9; ++uiTo)
        {
            this->expectEqual(uiFrom, {uiFrom, 5, 1}, {uiTo, 7, 1});
            this->expectEqual(uiFrom, {7, uiFrom, 1}, {3, uiTo, 1});
            this->expectEqual(uiFrom, {6, 4, uiFrom}, {5, 4, uiTo});
        }
}

TYPED_TEST(ResampleOfEveryKind, EqualsThePlainFormWhenHalving)
{
    this->expectEqual(1, {64, 64, 1}, {32, 32, 1});
    this->expectEqual(2, {62, 2, 1}, {31, 1, 1});
    this->expectEqual(3, {2, 62, 1}, {1, 31, 1});
    this->expectEqual(4, {34, 18, 6}, {17, 9, 3});
    this->expectEqual(5, {35, 19, 7}, {17, 9, 3});
}

TYPED_TEST(ResampleOfEveryKind, EqualsThePlainFormOnRowsOfSeveralTiles)
{
    this->expectEqual(1, {2050, 4, 1}, {1025, 2, 1});
    this->expectEqual(2, {1024, 3, 1}, {1537, 3, 1});
    this->expectEqual(3, {513, 2, 2}, {512, 2, 2});
    this->expectEqual(4, {1, 3, 1}, {1100, 1, 1});
}

TYPED_TEST(ResampleOfEveryKind, EqualsThePlainFormOnColumnsOfSeveralBands)
{
    this->expectEqual(1, {10, 200, 1}, {5, 100, 1});
    this->expectEqual(2, {9, 97, 1}, {9, 65, 1});
    this->expectEqual(3, {3, 70, 1}, {2, 70, 1});
    this->expectEqual(4, {2, 500, 1}, {2, 33, 1});
    this->expectEqual(5, {4, 80, 5}, {3, 66, 3});
}

TYPED_TEST(ResampleOfEveryKind, EqualsThePlainFormWithOneAxisUpAndAnotherDown)
{
    this->expectEqual(1, {40, 20, 1}, {20, 40, 1});
    this->expectEqual(2, {30, 30, 4}, {22, 31, 2});
    this->expectEqual(3, {17, 5, 2}, {9, 5, 3});
    this->expectEqual(4, {9, 100, 1}, {18, 7, 1});
}

TYPED_TEST(ResampleOfEveryKind, EqualsThePlainFormForFarApartSizes)
{
    this->expectEqual(1, {200, 150, 1}, {3, 2, 1});
    this->expectEqual(2, {3, 2, 1}, {200, 150, 1});
    this->expectEqual(3, {31, 1, 1}, {31, 1, 1});
    this->expectEqual(4, {2, 2, 2}, {13, 11, 9});
}

TEST(ResampleOfFloats, EqualsThePlainFormWithInfinitiesAndWhatIsNoNumber)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float afHard[] = {kInfinity, -kInfinity, std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::quiet_NaN()};
    const SurfaceSize from = {24, 17, 3};
    CSeededRandom random(5);
    std::vector<float> source = makeElements<float>(random, countElements(from));
    for (float& fElement : source)
        if (random.below(50) == 0)
            fElement = afHard[random.below(4)];
    for (const SurfaceSize& to : {SurfaceSize{12, 8, 1}, SurfaceSize{48, 34, 6}, SurfaceSize{24, 17, 3}, SurfaceSize{11, 20, 2}})
        for (const EResizeMode eMode : {eResizeNearest, eResizeLinear, eResizeCubic})
            expectPlainForm(source, from, to, eMode);
}

// ---- nearest ----

TEST(ResampleNearest, EnlargingTwoByTwoRepeatsEachPixelTwice)
{
    const Bytes source = pixelsOf<uint8_t>({10, 20, 30, 40});
    const Bytes expected = pixelsOf<uint8_t>({10, 10, 20, 20, 10, 10, 20, 20, 30, 30, 40, 40, 30, 30, 40, 40});
    EXPECT_EQ(expected, resample(source, {2, 2, 1}, {4, 4, 1}, eResizeNearest));
}

TEST(ResampleNearest, CutsTheProductWithTheRatioInDoubles)
{
    // 30 / 22 in doubles is a little below 15 / 11, so that pixel 11 reads 14 and not 15.
    Bytes source;
    for (uint8_t i = 0; i < 30; ++i)
        source.insert(source.end(), 4, i);
    const Bytes result = resample(source, {30, 1, 1}, {22, 1, 1}, eResizeNearest);
    EXPECT_EQ(13, result[4 * 10]); // 13.64
    EXPECT_EQ(14, result[4 * 11]);
    EXPECT_EQ(16, result[4 * 12]); // 16.36
}

TEST(ResampleNearest, CopiesPixelsBitForBit)
{
    // A signalling NaN, an infinity, a negative zero, and a NaN with a payload.
    const std::vector<uint32_t> bits = {0x7F800001, 0xFF800000, 0x80000000, 0xFFC12345};
    std::vector<float> source(4 * 20);
    for (size_t i = 0; i < source.size(); ++i)
        std::memcpy(&source[i], &bits[i % 4], sizeof(float));
    std::vector<float> result(4 * 40);
    ASSERT_TRUE(resampleSurface(source.data(), result.data(), {20, 1, 1}, {40, 1, 1}, eResizeNearest));
    std::vector<uint32_t> resultBits(result.size());
    std::memcpy(resultBits.data(), result.data(), sizeof(float) * result.size());
    for (size_t i = 0; i < resultBits.size(); ++i)
        EXPECT_EQ(bits[i % 4], resultBits[i]);
}

// ---- linear ----

TEST(ResampleLinear, HalvingIsTheMeanOfFourCut)
{
    // 15 / 4 = 3.75, 1019 / 4 = 254.75, 3 / 4 = 0.75, 46 / 4 = 11.5
    const Bytes source = pixelsOf<uint8_t>({1, 2, 255, 255, 4, 8, 255, 254, 0, 0, 10, 11, 0, 3, 12, 13});
    EXPECT_EQ(pixelsOf<uint8_t>({3, 254, 0, 11}), resample(source, {4, 4, 1}, {2, 2, 1}, eResizeLinear));
}

TEST(ResampleLinear, AnAxisDownToOnePixelTakesTheFirst)
{
    EXPECT_EQ(pixelsOf<uint8_t>({10}), resample(pixelsOf<uint8_t>({10, 20}), {2, 1, 1}, {1, 1, 1}, eResizeLinear));
    EXPECT_EQ(pixelsOf<uint8_t>({10}), resample(pixelsOf<uint8_t>({10, 20}), {1, 1, 2}, {1, 1, 1}, eResizeLinear));
}

TEST(ResampleLinear, DoublingReadsAtHalfStepsAndRepeatsTheLastPixel)
{
    EXPECT_EQ(pixelsOf<uint8_t>({10, 15, 21, 21}), resample(pixelsOf<uint8_t>({10, 21}), {2, 1, 1}, {4, 1, 1}, eResizeLinear));
    EXPECT_EQ(pixelsOf<uint8_t>({10, 15, 21, 21}), resample(pixelsOf<uint8_t>({10, 21}), {1, 2, 1}, {1, 4, 1}, eResizeLinear));
    EXPECT_EQ(pixelsOf<uint8_t>({10, 15, 21, 21}), resample(pixelsOf<uint8_t>({10, 21}), {1, 1, 2}, {1, 1, 4}, eResizeLinear));
}

TEST(ResampleLinear, FiveToThreeReadsAtTwoFifthsTwoAndThreeAndThreeFifths)
{
    // 0.4 of 11; 22; 33 + 0.6 of 11
    const Bytes source = pixelsOf<uint8_t>({0, 11, 22, 33, 44});
    EXPECT_EQ(pixelsOf<uint8_t>({4, 22, 39}), resample(source, {5, 1, 1}, {3, 1, 1}, eResizeLinear));
}

TEST(ResampleLinear, AnAxisThatKeepsItsSizeWhileAnotherShrinksIsDrawnTogether)
{
    // Rows at 1, 4 / 3, 5 / 3 and 2: 30, 30 + 31 / 3 = 40.3, 30 + 62 / 3 = 50.7, 61.
    const Bytes source = pixelsOf<uint8_t>({0, 0, 30, 30, 61, 61, 90, 90});
    EXPECT_EQ(pixelsOf<uint8_t>({30, 40, 50, 61}), resample(source, {2, 4, 1}, {1, 4, 1}, eResizeLinear));
}

TEST(ResampleLinear, OneAxisUpGivesTheOtherTheProductWithTheRatio)
{
    // Width 4 to 2 reads at 0 and 2, not in the middle of two.
    const Bytes source = pixelsOf<uint8_t>({1, 2, 3, 4});
    EXPECT_EQ(pixelsOf<uint8_t>({1, 3, 1, 3}), resample(source, {4, 1, 1}, {2, 2, 1}, eResizeLinear));
}

TEST(ResampleLinear, FloatsAreClampedOnlyToZeroAndTheLargestFloat)
{
    constexpr float kLargest = std::numeric_limits<float>::max();
    const std::vector<float> source = pixelsOf<float>({-4.0f, 1000.5f, kLargest});
    // -4; (-4 + 1000.5) / 2; 1000.5; half the largest, as the 500.25 are lost; the largest twice
    const std::vector<float> expected = pixelsOf<float>({0.0f, 498.25f, 1000.5f, kLargest / 2, kLargest, kLargest});
    EXPECT_EQ(expected, resample(source, {3, 1, 1}, {6, 1, 1}, eResizeLinear));
}

TEST(ResampleLinear, TheLargestIntegerStaysWhatItIs)
{
    const std::vector<uint32_t> source = pixelsOf<uint32_t>({0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF});
    EXPECT_EQ(pixelsOf<uint32_t>({0xFFFFFFFF, 0xFFFFFFFF}), resample(source, {4, 1, 1}, {2, 1, 1}, eResizeLinear));
}

TEST(ResampleLinear, ChannelsDoNotMix)
{
    const Bytes source = {0, 10, 100, 250, 2, 20, 200, 252};
    const Bytes expected = {0, 10, 100, 250, 1, 15, 150, 251, 2, 20, 200, 252, 2, 20, 200, 252};
    EXPECT_EQ(expected, resample(source, {2, 1, 1}, {4, 1, 1}, eResizeLinear));
}

// ---- cubic ----

TEST(ResampleCubic, DoublingGivesTheSplineHalfWay)
{
    // Half way the spline is (9 (b + c) - a - d) / 16:
    // (900 - 200) / 16 = 43.75, (2700 - 50) / 16 = 165.6, (2250 - 150) / 16 = 131.25, (900 - 250) / 16 = 40.6
    const Bytes source = pixelsOf<uint8_t>({0, 100, 200, 50});
    const Bytes expected = pixelsOf<uint8_t>({0, 43, 100, 165, 200, 131, 50, 40});
    EXPECT_EQ(expected, resample(source, {4, 1, 1}, {8, 1, 1}, eResizeCubic));
    EXPECT_EQ(expected, resample(source, {1, 4, 1}, {1, 8, 1}, eResizeCubic));
    EXPECT_EQ(expected, resample(source, {1, 1, 4}, {1, 1, 8}, eResizeCubic));
}

TEST(ResampleCubic, OvershootIsClampedToTheChannel)
{
    // 9 * 510 / 16 = 286.9 and -510 / 16 = -31.9 at pixel 3
    EXPECT_EQ(255, resample(pixelsOf<uint8_t>({0, 255, 255, 0}), {4, 1, 1}, {8, 1, 1}, eResizeCubic)[12]);
    EXPECT_EQ(0, resample(pixelsOf<uint8_t>({255, 0, 0, 255}), {4, 1, 1}, {8, 1, 1}, eResizeCubic)[12]);
    EXPECT_EQ(286.875f, resample(pixelsOf<float>({0, 255, 255, 0}), {4, 1, 1}, {8, 1, 1}, eResizeCubic)[12]);
    EXPECT_EQ(0.0f, resample(pixelsOf<float>({255, 0, 0, 255}), {4, 1, 1}, {8, 1, 1}, eResizeCubic)[12]);
}

TEST(ResampleCubic, NothingIsClampedBetweenTheAxes)
{
    // Row 1 overshoots to 286.875 along x; 9 / 16 of it is 161.4, of a clamped 255 it would be 143.
    const Bytes source = pixelsOf<uint8_t>({0, 0, 0, 0, 0, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(161, resample(source, {4, 4, 1}, {8, 8, 1}, eResizeCubic)[4 * (3 * 8 + 3)]);
}

TEST(ResampleCubic, ShrinkingSmoothesTheSourceFirst)
{
    // One row is its own neighbour above and below, so that it is smoothed by 1 2 1 over 4: 0 0 40 80 40 0.
    // Half way at 0.5: (0 - 40) / 16 < 0; at 2.5: (9 * 120 - 0 - 40) / 16 = 65; at 4.5: (9 * 40 - 80 - 0) / 16 = 17.5.
    const Bytes source = pixelsOf<uint8_t>({0, 0, 0, 160, 0, 0});
    EXPECT_EQ(pixelsOf<uint8_t>({0, 65, 17}), resample(source, {6, 1, 1}, {3, 1, 1}, eResizeCubic));
}

TEST(ResampleCubic, OneAxisUpLeavesTheSourceUnsmoothed)
{
    const Bytes source = pixelsOf<uint8_t>({0, 0, 0, 160, 0, 0});
    EXPECT_EQ(pixelsOf<uint8_t>({0, 0, 0, 0, 0, 0}), resample(source, {6, 1, 1}, {3, 2, 1}, eResizeCubic)); // reads 0, 2, 4
}

// ---- what is refused ----

TEST(ResampleSurface, RefusesNullPointersEmptySizesAndUnknownFilters)
{
    Bytes bytes(64);
    const uint8_t* pNull = nullptr;
    uint8_t* pNullTarget = nullptr;
    EXPECT_FALSE(resampleSurface(pNull, bytes.data(), {1, 1, 1}, {1, 1, 1}, eResizeNearest));
    EXPECT_FALSE(resampleSurface(bytes.data(), pNullTarget, {1, 1, 1}, {1, 1, 1}, eResizeLinear));
    EXPECT_FALSE(resampleSurface(bytes.data(), bytes.data() + 32, {1, 0, 1}, {1, 1, 1}, eResizeLinear));
    EXPECT_FALSE(resampleSurface(bytes.data(), bytes.data() + 32, {1, 1, 1}, {1, 1, 0}, eResizeLinear));
    EXPECT_FALSE(resampleSurface(bytes.data(), bytes.data() + 32, {1, 1, 1}, {2, 1, 1}, static_cast<EResizeMode>(3)));
    EXPECT_FALSE(resizeSurface(pNull, bytes.data(), {1, 1, 1}, {1, 1, 1}, eResizeNearest));
}

// ---- stages ----

TEST(ResizeSurface, AChangeOfMoreThanTwoGoesByStagesOfTwo)
{
    CSeededRandom random(11);
    const Bytes source = makeElements<uint8_t>(random, 4 * 100 * 3);
    for (const EResizeMode eMode : {eResizeNearest, eResizeLinear, eResizeCubic})
    {
        Bytes staged = resample(source, {100, 3, 1}, {50, 6, 1}, eMode);
        staged = resample(staged, {50, 6, 1}, {25, 12, 1}, eMode);
        staged = resample(staged, {25, 12, 1}, {12, 20, 1}, eMode);
        staged = resample(staged, {12, 20, 1}, {10, 20, 1}, eMode);
        EXPECT_EQ(staged, resizeByStages(source, {100, 3, 1}, {10, 20, 1}, eMode));
    }
}

TEST(ResizeSurface, AStageThatHalvesNeverGoesBelowTheTarget)
{
    const Bytes source = pixelsOf<uint8_t>({0, 9, 18, 27, 36, 45, 54});
    EXPECT_EQ(resample(source, {7, 1, 1}, {5, 1, 1}, eResizeLinear), resizeByStages(source, {7, 1, 1}, {5, 1, 1}, eResizeLinear));
}

TEST(ResizeSurface, TheSameSizeIsACopy)
{
    const Bytes source = pixelsOf<uint8_t>({1, 2, 3, 4});
    EXPECT_EQ(source, resizeByStages(source, {2, 2, 1}, {2, 2, 1}, eResizeCubic));
}

TEST(ResizeSurface, AStageThatNoTextureCouldHoldIsRefused)
{
    // After eight stages 256 * 2^14 * 256 pixels of four bytes.
    const SurfaceSize from = {1, 1u << 22, 1};
    const SurfaceSize to = {256, 1, 256};
    const Bytes source(countElements(from));
    Bytes target(countElements(to));
    EXPECT_FALSE(resizeSurface(source.data(), target.data(), from, to, eResizeNearest));
}
