#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "Pixels/SmallFloats.h"

using namespace moxtexture;

namespace
{

constexpr float k_fInfinity = std::numeric_limits<float>::infinity();

/// The value of a half by its definition, with the leading one that this library gives to exponent 0 as well.
float valueOfHalf(uint32_t ui32Code)
{
    const int iExponent = static_cast<int>((ui32Code >> 10) & 31) - 15;
    const double fMagnitude = std::ldexp(1.0 + (ui32Code & 1023) / 1024.0, iExponent);
    return static_cast<float>((ui32Code & 0x8000) != 0 ? -fMagnitude : fMagnitude);
}

} // namespace

TEST(SmallFloats, EveryFiniteHalfReadsAsItsDefinitionWithALeadingOne)
{
    for (uint32_t i = 1; i < 0x10000; ++i)
    {
        if ((i & 0x7C00) != 0x7C00)
        {
            ASSERT_EQ(valueOfHalf(i), readHalf(i)) << i;
        }
    }
}

TEST(SmallFloats, AHalfOfZeroBitsIsZeroAndAlsoUnsigned)
{
    EXPECT_EQ(0u, bitsFromFloat(readHalf(0)));
    EXPECT_EQ(0u, bitsFromFloat(readUnsignedSmallFloat<k_uiHalfMantissa>(0)));
    EXPECT_EQ(0u, bitsFromFloat(readUnsignedSmallFloat<k_uiFloat11Mantissa>(0)));
    EXPECT_EQ(0u, bitsFromFloat(readUnsignedSmallFloat<k_uiFloat10Mantissa>(0)));
}

TEST(SmallFloats, TheNegativeZeroOfAHalfReadsAsADenormal)
{
    EXPECT_EQ(-std::ldexp(1.0f, -15), readHalf(0x8000));
    EXPECT_EQ(0.0f, readUnsignedSmallFloat<k_uiHalfMantissa>(0x8000)); // that bit is none of an unsigned half's
}

TEST(SmallFloats, ExponentThirtyOneIsInfinityOrNotANumber)
{
    EXPECT_EQ(k_fInfinity, readHalf(0x7C00));
    EXPECT_EQ(-k_fInfinity, readHalf(0xFC00));
    EXPECT_TRUE(std::isnan(readHalf(0x7E00)));
    EXPECT_EQ(0x7F800000u | 1u << 13, bitsFromFloat(readHalf(0x7C01)));
    EXPECT_EQ(k_fInfinity, readUnsignedSmallFloat<k_uiFloat11Mantissa>(31u << 6));
    EXPECT_EQ(k_fInfinity, readUnsignedSmallFloat<k_uiFloat10Mantissa>(31u << 5));
}

TEST(SmallFloats, FieldsOfElevenAndTenBitsHaveTheirMantissaBelowFiveBitsOfExponent)
{
    EXPECT_EQ(1.0f, readUnsignedSmallFloat<k_uiFloat11Mantissa>(15u << 6));
    EXPECT_EQ(1.0f + 1.0f / 64, readUnsignedSmallFloat<k_uiFloat11Mantissa>(15u << 6 | 1));
    EXPECT_EQ(1.5f, readUnsignedSmallFloat<k_uiFloat11Mantissa>(15u << 6 | 32));
    EXPECT_EQ(2.0f, readUnsignedSmallFloat<k_uiFloat10Mantissa>(16u << 5));
    EXPECT_EQ(2.0f * (1.0f + 31.0f / 32), readUnsignedSmallFloat<k_uiFloat10Mantissa>(16u << 5 | 31));
    EXPECT_EQ(std::ldexp(1.0f + 1.0f / 32, -15), readUnsignedSmallFloat<k_uiFloat10Mantissa>(1));
}

TEST(SmallFloats, ANormalHalfIsWrittenAsItWasRead)
{
    for (uint32_t i = 0; i < 0x10000; ++i)
    {
        const uint32_t uiExponent = (i >> 10) & 31;
        if (uiExponent != 0 && uiExponent != 31)
        {
            ASSERT_EQ(i, writeSmallFloat<k_uiHalfMantissa>(readHalf(i)));
        }
    }
}

TEST(SmallFloats, TheMantissaIsCutNotRounded)
{
    EXPECT_EQ(0x3C00u, writeSmallFloat<k_uiHalfMantissa>(1.0f + 1023.0f / 1048576)); // just below 1 + 1/1024
    EXPECT_EQ(0x3BFFu, writeSmallFloat<k_uiHalfMantissa>(0.99999f));
    EXPECT_EQ(15u << 6 | 63, writeSmallFloat<k_uiFloat11Mantissa>(1.99999f));
    EXPECT_EQ(15u << 5 | 31, writeSmallFloat<k_uiFloat10Mantissa>(1.99999f));
}

TEST(SmallFloats, SmallNumbersBecomeAZeroOfTheirSign)
{
    EXPECT_EQ(0x0400u, writeSmallFloat<k_uiHalfMantissa>(std::ldexp(1.0f, -14)));
    EXPECT_EQ(0x0000u, writeSmallFloat<k_uiHalfMantissa>(std::nextafter(std::ldexp(1.0f, -14), 0.0f)));
    EXPECT_EQ(0x8000u, writeSmallFloat<k_uiHalfMantissa>(-std::ldexp(1.0f, -15)));
    EXPECT_EQ(0x8000u, writeSmallFloat<k_uiHalfMantissa>(-0.0f));
    EXPECT_EQ(0x0000u, writeSmallFloat<k_uiHalfMantissa>(std::numeric_limits<float>::denorm_min()));
    EXPECT_EQ(0x800u, writeSmallFloat<k_uiFloat11Mantissa>(-1e-30f));
}

TEST(SmallFloats, LargeNumbersSaturateWithAllMantissaBits)
{
    EXPECT_EQ(0x7BFFu, writeSmallFloat<k_uiHalfMantissa>(65504.0f));
    EXPECT_EQ(0x7BFFu, writeSmallFloat<k_uiHalfMantissa>(65536.0f));
    EXPECT_EQ(0xFBFFu, writeSmallFloat<k_uiHalfMantissa>(-1e30f));
    EXPECT_EQ(30u << 6 | 63, writeSmallFloat<k_uiFloat11Mantissa>(1e30f));
    EXPECT_EQ(30u << 5 | 31, writeSmallFloat<k_uiFloat10Mantissa>(1e30f));
}

TEST(SmallFloats, InfinityAndNotANumberKeepTheTopOfTheirMantissaUnderExponentThirty)
{
    EXPECT_EQ(0x7800u, writeSmallFloat<k_uiHalfMantissa>(k_fInfinity));
    EXPECT_EQ(0xF800u, writeSmallFloat<k_uiHalfMantissa>(-k_fInfinity));
    EXPECT_EQ(0x7A00u, writeSmallFloat<k_uiHalfMantissa>(floatFromBits(0x7FC00000)));
    EXPECT_EQ(30u << 6 | 32, writeSmallFloat<k_uiFloat11Mantissa>(floatFromBits(0x7FC00000)));
    EXPECT_EQ(30u << 5, writeSmallFloat<k_uiFloat10Mantissa>(k_fInfinity));
}

TEST(SmallFloats, TheSignOfAnUnsignedFloatLandsOneBitAboveItsField)
{
    EXPECT_EQ(0x800u | 15u << 6, writeSmallFloat<k_uiFloat11Mantissa>(-1.0f));
    EXPECT_EQ(0x400u | 15u << 5, writeSmallFloat<k_uiFloat10Mantissa>(-1.0f));
}
