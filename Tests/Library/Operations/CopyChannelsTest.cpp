#include "Operations/CopyChannels.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>

#include "Library/Operations/NumberedTexture.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

constexpr float kLargest = 3.4028235e38f;

template <typename T>
using Pixel = std::array<T, 4>;

template <typename T>
CMOXTexture onePixel(const Pixel<T>& pixel)
{
    return CMOXTexture(headerOf<T>({}), pixel.data());
}

template <typename T>
Pixel<T> pixelOf(const CMOXTexture& texture, uint32_t uiLevel = 0, uint32_t uiMember = 0, uint32_t uiFace = 0)
{
    Pixel<T> pixel;
    std::memcpy(pixel.data(), texture.getDataPtr(uiLevel, uiMember, uiFace), sizeof(pixel));
    return pixel;
}

struct Pair
{
    EChannelName eTo;
    EChannelName eFrom;
};

bool copyPairs(CMOXTexture& destination, const CMOXTexture& source, const std::vector<Pair>& pairs)
{
    std::vector<EChannelName> to;
    std::vector<EChannelName> from;
    for (const Pair& pair : pairs)
    {
        to.push_back(pair.eTo);
        from.push_back(pair.eFrom);
    }
    return CopyChannels(destination, source, static_cast<uint32_t>(pairs.size()), to.data(), from.data());
}

/// A channel value of one kind, copied to another.
template <typename Destination, typename Source>
Destination converted(Source value)
{
    CMOXTexture destination = onePixel<Destination>({});
    EXPECT_TRUE(copyPairs(destination, onePixel<Source>({0, 0, 0, value}), {{eChannelAlpha, eChannelAlpha}}));
    return pixelOf<Destination>(destination)[3];
}

} // namespace

template <typename T>
class CopyChannelsOfEveryKind : public ::testing::Test
{
};
TYPED_TEST_SUITE(CopyChannelsOfEveryKind, ChannelKinds);

TYPED_TEST(CopyChannelsOfEveryKind, SwapsTwoChannelsOfOneTexture)
{
    CMOXTexture texture = onePixel<TypeParam>({10, 20, 30, 40});
    ASSERT_TRUE(copyPairs(texture, texture, {{eChannelRed, eChannelBlue}, {eChannelBlue, eChannelRed}}));
    EXPECT_EQ((Pixel<TypeParam>{30, 20, 10, 40}), pixelOf<TypeParam>(texture));
}

TYPED_TEST(CopyChannelsOfEveryKind, TurnsAllFourAround)
{
    CMOXTexture texture = onePixel<TypeParam>({10, 20, 30, 40});
    ASSERT_TRUE(copyPairs(
        texture, texture,
        {{eChannelGreen, eChannelRed}, {eChannelBlue, eChannelGreen}, {eChannelAlpha, eChannelBlue}, {eChannelRed, eChannelAlpha}}));
    EXPECT_EQ((Pixel<TypeParam>{40, 10, 20, 30}), pixelOf<TypeParam>(texture));
}

TYPED_TEST(CopyChannelsOfEveryKind, CopiesFromAnotherTextureAndLeavesTheOtherChannels)
{
    CMOXTexture texture = onePixel<TypeParam>({1, 2, 3, 4});
    const CMOXTexture source = onePixel<TypeParam>({10, 20, 30, 40});
    ASSERT_TRUE(copyPairs(texture, source, {{eChannelAlpha, eChannelGreen}}));
    EXPECT_EQ((Pixel<TypeParam>{1, 2, 3, 20}), pixelOf<TypeParam>(texture));
    EXPECT_EQ((Pixel<TypeParam>{10, 20, 30, 40}), pixelOf<TypeParam>(source));
}

TYPED_TEST(CopyChannelsOfEveryKind, WritesLuminanceAndIntensityToRedGreenAndBlue)
{
    for (const EChannelName eTo : {eChannelLuminance, eChannelIntensity})
    {
        CMOXTexture texture = onePixel<TypeParam>({1, 2, 3, 4});
        ASSERT_TRUE(copyPairs(texture, onePixel<TypeParam>({10, 20, 30, 40}), {{eTo, eChannelGreen}}));
        EXPECT_EQ((Pixel<TypeParam>{20, 20, 20, 4}), pixelOf<TypeParam>(texture));
    }
}

TEST(CopyChannels, FormsLuminanceFromWeightedChannels)
{
    // 0.2126 * 100 + 0.7152 * 150 + 0.0722 * 200 = 142.98, cut to 142; floats keep the fraction.
    CMOXTexture texture = onePixel<uint8_t>({100, 150, 200, 40});
    ASSERT_TRUE(copyPairs(texture, texture, {{eChannelAlpha, eChannelLuminance}}));
    EXPECT_EQ((Pixel<uint8_t>{100, 150, 200, 142}), pixelOf<uint8_t>(texture));
    CMOXTexture floats = onePixel<float>({100, 150, 200, 40});
    ASSERT_TRUE(copyPairs(floats, floats, {{eChannelAlpha, eChannelLuminance}}));
    EXPECT_NEAR(142.98f, pixelOf<float>(floats)[3], 0.0001f);
}

TEST(CopyChannels, FormsIntensityAsTheMean)
{
    CMOXTexture texture = onePixel<uint16_t>({1000, 2000, 2001, 7});
    ASSERT_TRUE(copyPairs(texture, texture, {{eChannelIntensity, eChannelIntensity}}));
    EXPECT_EQ((Pixel<uint16_t>{1667, 1667, 1667, 7}), pixelOf<uint16_t>(texture)); // 5001 / 3
    CMOXTexture floats = onePixel<float>({1, 1, 2, 7});
    ASSERT_TRUE(copyPairs(floats, floats, {{eChannelRed, eChannelIntensity}}));
    EXPECT_EQ((Pixel<float>{4.0f / 3.0f, 1, 2, 7}), pixelOf<float>(floats));
}

TEST(CopyChannels, FormsThemFromChannelsOfTheDestinationsMeasure)
{
    // A short counts 1 / 257 of a byte.
    CMOXTexture texture = onePixel<uint8_t>({0, 0, 0, 0});
    ASSERT_TRUE(copyPairs(texture, onePixel<uint16_t>({400, 400, 400, 0}), {{eChannelAlpha, eChannelIntensity}}));
    EXPECT_EQ(1, pixelOf<uint8_t>(texture)[3]); // 1.56
    ASSERT_TRUE(copyPairs(texture, onePixel<uint16_t>({500, 500, 600, 0}), {{eChannelAlpha, eChannelIntensity}}));
    EXPECT_EQ(2, pixelOf<uint8_t>(texture)[3]); // (1.95 + 1.95 + 2.33) / 3 = 2.08; of channels cut before it would be 1.33
}

TEST(CopyChannels, TheUnspecifiedChannelStandsForAlpha)
{
    CMOXTexture texture = onePixel<uint8_t>({1, 2, 3, 4});
    const CMOXTexture source = onePixel<uint8_t>({10, 20, 30, 40});
    ASSERT_TRUE(copyPairs(texture, source, {{eChannelRed, eChannelUnspecified}, {eChannelUnspecified, eChannelRed}}));
    EXPECT_EQ((Pixel<uint8_t>{40, 2, 3, 10}), pixelOf<uint8_t>(texture));
}

TEST(CopyChannels, SkipsPairsWithAnyOtherChannel)
{
    CMOXTexture texture = onePixel<uint8_t>({1, 2, 3, 4});
    const CMOXTexture source = onePixel<uint8_t>({10, 20, 30, 40});
    for (const uint32_t uiValue : {0u, 8u, 255u, 0xFFFFFFFFu})
    {
        const auto eOther = static_cast<EChannelName>(uiValue);
        EXPECT_TRUE(copyPairs(texture, source, {{eChannelRed, eOther}, {eOther, eChannelRed}, {eOther, eOther}}));
        EXPECT_EQ((Pixel<uint8_t>{1, 2, 3, 4}), pixelOf<uint8_t>(texture));
    }
}

TEST(CopyChannels, OfTwoCopiesIntoOneChannelTheLaterStays)
{
    CMOXTexture texture = onePixel<uint8_t>({1, 2, 3, 4});
    const CMOXTexture source = onePixel<uint8_t>({10, 20, 30, 40});
    ASSERT_TRUE(copyPairs(texture, source, {{eChannelRed, eChannelGreen}, {eChannelRed, eChannelBlue}}));
    EXPECT_EQ(30, pixelOf<uint8_t>(texture)[0]);
    ASSERT_TRUE(copyPairs(texture, source, {{eChannelGreen, eChannelAlpha}, {eChannelLuminance, eChannelRed}}));
    EXPECT_EQ((Pixel<uint8_t>{10, 10, 10, 4}), pixelOf<uint8_t>(texture));
    ASSERT_TRUE(copyPairs(texture, source, {{eChannelLuminance, eChannelRed}, {eChannelGreen, eChannelAlpha}}));
    EXPECT_EQ((Pixel<uint8_t>{10, 40, 10, 4}), pixelOf<uint8_t>(texture));
}

TEST(CopyChannels, OfNoPairsIsTrue)
{
    CMOXTexture texture = onePixel<uint8_t>({1, 2, 3, 4});
    EXPECT_TRUE(CopyChannels(texture, texture, 0, nullptr, nullptr));
    EXPECT_EQ((Pixel<uint8_t>{1, 2, 3, 4}), pixelOf<uint8_t>(texture));
}

TEST(CopyChannelsBetweenKinds, FullChannelsStayFull)
{
    EXPECT_EQ(65535, (converted<uint16_t, uint8_t>(255)));
    EXPECT_EQ(0xFFFFFFFFu, (converted<uint32_t, uint8_t>(255)));
    EXPECT_EQ(kLargest, (converted<float, uint8_t>(255)));
    EXPECT_EQ(255, (converted<uint8_t, uint16_t>(65535)));
    EXPECT_EQ(0xFFFFFFFFu, (converted<uint32_t, uint16_t>(65535)));
    EXPECT_EQ(kLargest, (converted<float, uint16_t>(65535)));
    EXPECT_EQ(255, (converted<uint8_t, uint32_t>(0xFFFFFFFF)));
    EXPECT_EQ(65535, (converted<uint16_t, uint32_t>(0xFFFFFFFF)));
    EXPECT_EQ(kLargest, (converted<float, uint32_t>(0xFFFFFFFF)));
    EXPECT_EQ(255, (converted<uint8_t, float>(kLargest)));
    EXPECT_EQ(65535, (converted<uint16_t, float>(kLargest)));
    EXPECT_EQ(0xFFFFFFFFu, (converted<uint32_t, float>(kLargest)));
}

TEST(CopyChannelsBetweenKinds, AShortIsCutToAByteAndNotRounded)
{
    EXPECT_EQ(0, (converted<uint8_t, uint16_t>(256))); // 256 * 255 / 65535 = 0.996
    EXPECT_EQ(1, (converted<uint8_t, uint16_t>(257)));
    EXPECT_EQ(1, (converted<uint8_t, uint16_t>(513))); // 1.996
    EXPECT_EQ(254, (converted<uint8_t, uint16_t>(65534)));
}

TEST(CopyChannelsBetweenKinds, AByteBecomesAShortTimes257)
{
    for (uint32_t i = 0; i < 256; ++i)
        EXPECT_EQ(i * 257, (converted<uint16_t, uint8_t>(static_cast<uint8_t>(i))));
}

TEST(CopyChannelsBetweenKinds, IntegersCountTo2ToThe32nd)
{
    EXPECT_EQ(127, (converted<uint8_t, uint32_t>(0x80000000))); // 127.5
    EXPECT_EQ(0, (converted<uint8_t, uint32_t>(0x01000000)));   // 255 / 256
    EXPECT_EQ(65537u, (converted<uint32_t, uint16_t>(1)));      // 65537.00002 as a float
    // 2^32 / 255 is 16843009.004; floats of that size are even numbers.
    EXPECT_EQ(16843010u, (converted<uint32_t, uint8_t>(1)));
    // 254 * 16843010 = 4278124540; floats of that size are multiples of 256.
    EXPECT_EQ(4278124544u, (converted<uint32_t, uint8_t>(254)));
}

TEST(CopyChannelsBetweenKinds, AFloatOfOneIsNearlyNothing)
{
    EXPECT_EQ(0, (converted<uint8_t, float>(1.0f)));
    EXPECT_EQ(0, (converted<uint16_t, float>(1.0f)));
    EXPECT_EQ(0u, (converted<uint32_t, float>(1.0f)));
}

TEST(CopyChannelsBetweenKinds, WhatDoesNotFitWrapsAndIsNotClamped)
{
    constexpr float fInfinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(1, (converted<uint8_t, float>(-kLargest)));                // -255
    EXPECT_EQ(1, (converted<uint16_t, float>(-kLargest)));               // -65535
    EXPECT_EQ(0x80000000u, (converted<uint32_t, float>(-kLargest / 2))); // -2^31
    EXPECT_EQ(0u, (converted<uint32_t, float>(-kLargest)));              // -2^32
    EXPECT_EQ(0, (converted<uint8_t, float>(fInfinity)));
    EXPECT_EQ(0u, (converted<uint32_t, float>(-fInfinity)));
    EXPECT_EQ(0, (converted<uint16_t, float>(std::numeric_limits<float>::quiet_NaN())));
}

TEST(CopyChannelsBetweenEqualKinds, IsExactWhereNoFloatHoldsTheNumber)
{
    EXPECT_EQ(0x12345679u, (converted<uint32_t, uint32_t>(0x12345679)));
    EXPECT_EQ(0xFFFFFFFFu, (converted<uint32_t, uint32_t>(0xFFFFFFFF)));
    EXPECT_EQ(0xFFFFFF7Fu, (converted<uint32_t, uint32_t>(0xFFFFFF7F)));
    EXPECT_EQ(std::numeric_limits<float>::infinity(), (converted<float, float>(std::numeric_limits<float>::infinity())));
    EXPECT_EQ(-1.5f, (converted<float, float>(-1.5f)));
}

TEST(CopyChannels, WhiteStaysWhiteAsLuminanceAndIntensity)
{
    for (const EChannelName eFrom : {eChannelLuminance, eChannelIntensity})
    {
        CMOXTexture integers = onePixel<uint32_t>({0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0});
        ASSERT_TRUE(copyPairs(integers, integers, {{eChannelAlpha, eFrom}}));
        EXPECT_EQ(0xFFFFFFFFu, pixelOf<uint32_t>(integers)[3]);
        CMOXTexture floats = onePixel<float>({});
        ASSERT_TRUE(copyPairs(floats, onePixel<uint16_t>({65535, 65535, 65535, 0}), {{eChannelAlpha, eFrom}}));
        EXPECT_EQ(kLargest, pixelOf<float>(floats)[3]); // and not infinity
    }
}

TEST(CopyChannels, TakesEveryLevelMemberAndFace)
{
    const Shape shape = {4, 2, 2, 2, 2, 2};
    CMOXTexture texture(headerOf<uint16_t>(shape));
    const CMOXTexture source = numberedTexture<uint8_t>(shape);
    ASSERT_TRUE(copyPairs(texture, source, {{eChannelGreen, eChannelRed}}));
    const uint8_t* pSource = source.getDataPtr();
    const uint16_t* pTarget = reinterpret_cast<const uint16_t*>(texture.getDataPtr());
    ASSERT_EQ(2 * source.getBlockSize(), texture.getBlockSize());
    for (uint32_t i = 0; i < source.getBlockSize(); ++i)
        EXPECT_EQ(i % 4 == 1 ? pSource[i - 1] * 257 : 0, pTarget[i]) << i;
}

TEST(CopyChannels, IsFalseForTexturesOfDifferentShapesAndChangesNothing)
{
    const Shape shape = {4, 4, 4, 1, 1, 1};
    const CMOXTexture source = numberedTexture<uint8_t>(shape);
    const Shape aOthers[] = {{3, 4, 4, 1, 1, 1}, {4, 3, 4, 1, 1, 1}, {4, 4, 3, 1, 1, 1},
                             {4, 4, 4, 2, 1, 1}, {4, 4, 4, 1, 2, 1}, {4, 4, 4, 1, 1, 6}};
    for (const Shape& other : aOthers)
    {
        CMOXTexture texture(headerOf<uint8_t>(other));
        EXPECT_FALSE(copyPairs(texture, source, {{eChannelRed, eChannelGreen}}));
        for (uint32_t i = 0; i < texture.getBlockSize(); ++i)
            ASSERT_EQ(0, texture.getDataPtr()[i]);
    }
}

TEST(CopyChannels, IsFalseWhereEitherIsOutsideTheWorkingForm)
{
    CMOXTexture foreign = foreignTexture();
    CMOXTexture working = numberedTexture<uint8_t>({2, 1});
    EXPECT_FALSE(copyPairs(foreign, working, {{eChannelRed, eChannelGreen}}));
    EXPECT_FALSE(copyPairs(working, foreign, {{eChannelRed, eChannelGreen}}));
    EXPECT_FALSE(copyPairs(foreign, foreign, {{eChannelRed, eChannelGreen}}));
    EXPECT_TRUE(isStillForeign(foreign));
    EXPECT_EQ((std::vector<int>{1, 2}), numbersOf<uint8_t>(working));
}

TEST(CopyChannels, IsFalseWhereASurfaceIsMissing)
{
    CMOXTexture texture = numberedTexture<uint8_t>({2, 1});
    CMOXTexture source = numberedTexture<uint8_t>({2, 1});
    source.releaseData();
    EXPECT_FALSE(copyPairs(texture, source, {{eChannelRed, eChannelGreen}}));
    EXPECT_FALSE(copyPairs(source, texture, {{eChannelRed, eChannelGreen}}));
}
