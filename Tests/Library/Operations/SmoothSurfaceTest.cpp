#include "Operations/SmoothSurface.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

#include "Operations/ChannelKind.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

/// A surface of zeros but for one pixel, smoothed; the first channel of each pixel.
template <typename T>
std::vector<T> smoothPoint(const SurfaceSize& size, size_t uiPixel, T value)
{
    const size_t uiPixelCount = size.getPixelIndex(0, 0, size.uiDepth);
    std::vector<T> source(uiPixelCount * k_uiWorkingChannels);
    std::vector<T> smoothed(source.size());
    source[uiPixel * k_uiWorkingChannels] = value;
    EXPECT_TRUE(smoothRows(source.data(), size, 0, size.uiHeight, smoothed.data()));
    std::vector<T> red;
    for (size_t i = 0; i < uiPixelCount; ++i)
        red.push_back(smoothed[i * k_uiWorkingChannels]);
    return red;
}

template <typename T>
class SmoothingOfEveryKind : public testing::Test
{
};

using Kinds = testing::Types<uint8_t, uint16_t, uint32_t, float>;
TYPED_TEST_SUITE(SmoothingOfEveryKind, Kinds);

} // namespace

TEST(SmoothSurface, SpreadsAPointBySixteenths)
{
    const std::vector<uint8_t> expected = {10, 20, 10, 20, 40, 20, 10, 20, 10};
    EXPECT_EQ(expected, smoothPoint<uint8_t>({3, 3, 1}, 4, 160));
}

TEST(SmoothSurface, RepeatsThePixelsOfTheEdge)
{
    // The corner counts 4 + 2 + 2 + 1 sixteenths of itself.
    const std::vector<uint8_t> expected = {90, 30, 0, 30, 10, 0};
    EXPECT_EQ(expected, smoothPoint<uint8_t>({3, 2, 1}, 0, 160));
    EXPECT_EQ((std::vector<uint8_t>{160}), smoothPoint<uint8_t>({1, 1, 1}, 0, 160));
}

TEST(SmoothSurface, SpreadsAPointBySixtyFourthsWhereThereAreSlices)
{
    const std::vector<uint8_t> expected = {1, 2, 1, 2, 4, 2, 1, 2, 1, 2, 4, 2, 4, 8, 4, 2, 4, 2, 1, 2, 1, 2, 4, 2, 1, 2, 1};
    EXPECT_EQ(expected, smoothPoint<uint8_t>({3, 3, 3}, 13, 64));
}

TEST(SmoothSurface, CutsIntegersAndKeepsFloats)
{
    EXPECT_EQ((std::vector<uint16_t>{11, 3}), smoothPoint<uint16_t>({2, 1, 1}, 0, 15)); // 11.25 and 3.75
    EXPECT_EQ((std::vector<float>{-11.25f, -3.75f}), smoothPoint<float>({2, 1, 1}, 0, -15.0f));
}

TEST(SmoothSurface, TheLargestIntegerStaysWhatItIs)
{
    EXPECT_EQ((std::vector<uint32_t>{0xFFFFFFFF}), smoothPoint<uint32_t>({1, 1, 1}, 0, 0xFFFFFFFF));
}

TYPED_TEST(SmoothingOfEveryKind, EqualsThePlainForm)
{
    testsupport::CSeededRandom random(3);
    for (const SurfaceSize& size : {SurfaceSize{1, 1, 1}, SurfaceSize{2, 1, 1}, SurfaceSize{1, 7, 1}, SurfaceSize{33, 9, 1},
                                    SurfaceSize{1030, 3, 1}, SurfaceSize{512, 2, 2}, SurfaceSize{513, 3, 3}, SurfaceSize{5, 4, 7}})
    {
        SCOPED_TRACE(testing::Message() << size.uiWidth << "x" << size.uiHeight << "x" << size.uiDepth);
        std::vector<TypeParam> source(size.getPixelIndex(0, 0, size.uiDepth) * k_uiWorkingChannels);
        for (TypeParam& element : source)
            element = std::is_integral_v<TypeParam> ? static_cast<TypeParam>(random.next32())
                                                    : static_cast<TypeParam>(random.nextFloat() - 0.25f);
        source[0] = std::numeric_limits<TypeParam>::max();
        source.back() = std::numeric_limits<TypeParam>::lowest();

        std::vector<TypeParam> expected(source.size());
        smoothSurfaceReference(source.data(), expected.data(), size);
        forEachInstructionSet(
            [&]
            {
                std::vector<TypeParam> actual(source.size());
                ASSERT_TRUE(smoothRows(source.data(), size, 0, size.uiHeight, actual.data()));
                EXPECT_EQ(expected, actual);
                EXPECT_EQ(0, std::memcmp(expected.data(), actual.data(), expected.size() * sizeof(TypeParam)));
            });
    }
}

TEST(SmoothSurface, ARangeOfRowsIsThatPartOfTheWhole)
{
    const SurfaceSize size = {7, 9, 2};
    const std::vector<uint8_t> source = testsupport::CSeededRandom(4).bytes(size.getPixelIndex(0, 0, 2) * k_uiWorkingChannels);
    std::vector<uint8_t> whole(source.size());
    smoothSurfaceReference(source.data(), whole.data(), size);
    for (uint32_t uiFirst = 0; uiFirst < 9; ++uiFirst)
        for (uint32_t uiCount = 1; uiFirst + uiCount <= 9; ++uiCount)
        {
            const SurfaceSize part = {7, uiCount, 2};
            std::vector<uint8_t> rows(part.getPixelIndex(0, 0, 2) * k_uiWorkingChannels);
            ASSERT_TRUE(smoothRows(source.data(), size, uiFirst, uiCount, rows.data()));
            for (uint32_t z = 0; z < 2; ++z)
                EXPECT_EQ(0, std::memcmp(whole.data() + 4 * size.getPixelIndex(0, uiFirst, z),
                                         rows.data() + 4 * part.getPixelIndex(0, 0, z), size_t{4} * 7 * uiCount));
        }
}
