#include "Operations/ResamplePositions.h"

#include <gtest/gtest.h>

using namespace moxtexture;

namespace
{

std::array<uint32_t, 2> twoTaps(float fPosition, uint32_t uiSize)
{
    return makeAxisTaps<2>(fPosition, uiSize, 0.0f).auiIndex;
}

std::array<uint32_t, 4> fourTaps(float fPosition, uint32_t uiSize)
{
    return makeAxisTaps<4>(fPosition, uiSize, -1.0f).auiIndex;
}

} // namespace

TEST(ResampleAxis, GrowingAxesReadAtThePixelTimesTheRatio)
{
    const CResampleAxis axis(3, 6, true);
    for (uint32_t i = 0; i < 6; ++i)
        EXPECT_EQ(0.5f * static_cast<float>(i), axis.getPosition(i));
    EXPECT_EQ(4.0f, CResampleAxis(8, 4, true).getPosition(2)); // another axis grows
}

TEST(ResampleAxis, HalvingReadsExactlyBetweenTwoPixelsAtEverySize)
{
    for (const uint32_t uiSize : {2u, 3u, 10u, 333u, 1024u, 4097u, 100000u})
    {
        const CResampleAxis axis(2 * uiSize, uiSize, false);
        for (uint32_t i = 0; i < uiSize; ++i)
            ASSERT_EQ(2.0f * static_cast<float>(i) + 0.5f, axis.getPosition(i)) << i << " of " << uiSize;
    }
}

TEST(ResampleAxis, OneDestinationPixelReadsTheFirst)
{
    EXPECT_EQ(0.0f, CResampleAxis(7, 1, false).getPosition(0));
    EXPECT_EQ(0.0f, CResampleAxis(1, 1, false).getPosition(0));
}

TEST(ResampleAxis, FiveToThreeReadsAtTwoFifthsTwoAndThreeAndThreeFifths)
{
    const CResampleAxis axis(5, 3, false);
    EXPECT_FLOAT_EQ(0.4f, axis.getPosition(0)); // 1 - k
    EXPECT_FLOAT_EQ(2.0f, axis.getPosition(1)); // 0.2 + 0.3 - 1 + 1.5 * 5 / 3
    EXPECT_FLOAT_EQ(3.6f, axis.getPosition(2)); // 0.6 - 2 + 3 * 5 / 3
}

TEST(ResampleAxis, AnAxisThatKeepsItsSizeRunsFromOneToTheLastButOne)
{
    const CResampleAxis axis(5, 5, false);
    const float afExpected[] = {1.0f, 1.5f, 2.0f, 2.5f, 3.0f}; // i + 1 - i / 2
    for (uint32_t i = 0; i < 5; ++i)
        EXPECT_EQ(afExpected[i], axis.getPosition(i));
    // Two pixels change places.
    EXPECT_EQ(1.0f, CResampleAxis(2, 2, false).getPosition(0));
    EXPECT_EQ(0.0f, CResampleAxis(2, 2, false).getPosition(1));
}

TEST(ResampleAxis, NearestCutsInDoubles)
{
    const CResampleAxis axis(30, 22, false);
    EXPECT_EQ(14u, axis.getNearestIndex(11));
    EXPECT_EQ(28u, axis.getNearestIndex(21));
}

TEST(ResampleAxis, NearestStaysWithinTheSourceForEveryPairOfSizes)
{
    for (uint32_t uiSource = 1; uiSource < 80; ++uiSource)
        for (uint32_t uiDestination = 1; uiDestination < 80; ++uiDestination)
            ASSERT_LT(CResampleAxis(uiSource, uiDestination, true).getNearestIndex(uiDestination - 1), uiSource);
    EXPECT_LT(CResampleAxis(0xFFFFFFFF, 0xFFFFFFFE, true).getNearestIndex(0xFFFFFFFD), 0xFFFFFFFF);
}

TEST(AxisTaps, AreThePixelsAroundThePositionWithinTheAxis)
{
    EXPECT_EQ((std::array<uint32_t, 2>{2, 3}), twoTaps(2.25f, 5));
    EXPECT_EQ((std::array<uint32_t, 2>{4, 4}), twoTaps(4.5f, 5));
    EXPECT_EQ((std::array<uint32_t, 2>{0, 0}), twoTaps(0.5f, 1));
    EXPECT_EQ((std::array<uint32_t, 4>{1, 2, 3, 4}), fourTaps(2.25f, 6));
    EXPECT_EQ((std::array<uint32_t, 4>{0, 0, 1, 2}), fourTaps(0.75f, 6));
    EXPECT_EQ((std::array<uint32_t, 4>{3, 4, 4, 4}), fourTaps(4.5f, 5));
    EXPECT_EQ(0.25f, makeAxisTaps<2>(2.25f, 5, 0.0f).fFraction);
}

TEST(AxisTaps, StayWithinAnAxisWhoseLastPixelIsNoFloat)
{
    // 2^24 + 3 rounds up to 2^24 + 4 as a float.
    constexpr uint32_t kSize = (1u << 24) + 4;
    for (const uint32_t uiIndex : fourTaps(16777220.0f, kSize))
        EXPECT_LT(uiIndex, kSize);
    EXPECT_EQ(0xFFFFFFFEu, twoTaps(4294967296.0f, 0xFFFFFFFF)[1]);
}
