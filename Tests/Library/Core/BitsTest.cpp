#include "Core/Bits.h"

#include <gtest/gtest.h>

using namespace moxtexture;

TEST(IsPowerOfTwo, IsTrueForExactlyOneSetBit)
{
    for (uint32_t i = 0; i < 32; ++i)
        EXPECT_TRUE(isPowerOfTwo(1u << i)) << i;
    for (const uint32_t uiValue : {0u, 3u, 5u, 6u, 7u, 12u, 0x80000001u, 0xFFFFFFFFu})
        EXPECT_FALSE(isPowerOfTwo(uiValue)) << uiValue;
}

TEST(RoundUpToMultiple, GivesTheNextMultipleOrTheValueItself)
{
    EXPECT_EQ(0u, roundUpToMultiple(0, 4));
    EXPECT_EQ(4u, roundUpToMultiple(1, 4));
    EXPECT_EQ(4u, roundUpToMultiple(4, 4));
    EXPECT_EQ(8u, roundUpToMultiple(5, 4));
    EXPECT_EQ(7u, roundUpToMultiple(7, 1));
    EXPECT_EQ(12u, roundUpToMultiple(11, 6)); // a step that is no power of two
}

TEST(RoundUpToMultiple, DoesNotWrapAtTheLargest32BitSize)
{
    EXPECT_EQ(0x100000000u, roundUpToMultiple(0xFFFFFFFF, 16));
    EXPECT_EQ(4294967304u, roundUpToMultiple(4294967293, 12)); // 4294967292 is 12 * 357913941
}

TEST(WrappingCount, CountsAsUnsignedNumbersDo)
{
    CWrappingCount count = 5;
    count += 7;
    EXPECT_EQ(12u, count.getValue());
    count *= 10;
    EXPECT_EQ(120u, count.getValue());
    count /= 16;
    EXPECT_EQ(7u, count.getValue());
    EXPECT_EQ(26u, (CWrappingCount(2) * 3 + 20).getValue());
    EXPECT_FALSE(count.hasWrapped());
}

TEST(WrappingCount, TellsOfASumThatWrapped)
{
    const CWrappingCount largest = ~uint64_t{0};
    EXPECT_FALSE((largest + 0).hasWrapped());
    EXPECT_TRUE((largest + 1).hasWrapped());
    EXPECT_EQ(0u, (largest + 1).getValue());
}

TEST(WrappingCount, TellsOfAProductThatWrapped)
{
    const CWrappingCount half = uint64_t{1} << 63;
    EXPECT_FALSE((half * 1).hasWrapped());
    EXPECT_TRUE((half * 2).hasWrapped());
    EXPECT_EQ(0u, (half * 2).getValue());
}

TEST(WrappingCount, DoesNotForgetThatItHasWrapped)
{
    const CWrappingCount wrapped = CWrappingCount(uint64_t{1} << 63) * 2;
    EXPECT_TRUE((wrapped * 0).hasWrapped());
    EXPECT_TRUE((CWrappingCount(0) * wrapped).hasWrapped());
    EXPECT_TRUE((CWrappingCount(1) + wrapped).hasWrapped());
    CWrappingCount divided = wrapped;
    divided /= 8;
    EXPECT_TRUE(divided.hasWrapped());
}
