#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "Pixels/ChannelValues.h"

using namespace moxtexture;

namespace
{

constexpr float k_fNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float k_fInfinity = std::numeric_limits<float>::infinity();

float readUnsigned(uint64_t ui64Code, unsigned int uiBits)
{
    return readValue<EValueRule::eUnsigned>(ui64Code, uiBits);
}

float readElement(uint64_t ui64Code, unsigned int uiBits)
{
    return readValue<EValueRule::eSignedElement>(ui64Code, uiBits);
}

float readField(uint64_t ui64Code, unsigned int uiBits)
{
    return readValue<EValueRule::eSignedField>(ui64Code, uiBits);
}

} // namespace

TEST(ChannelValues, UnsignedCodesDivideByTheLargest)
{
    EXPECT_EQ(1.0f, readUnsigned(255, 8));
    EXPECT_EQ(100.0f / 255.0f, readUnsigned(100, 8));
    EXPECT_EQ(1.0f, readUnsigned(1, 1));
    EXPECT_EQ(9.0f / 31.0f, readUnsigned(9, 5));
    EXPECT_EQ(1.0f, readUnsigned(65535, 16));
    EXPECT_EQ(1.0f, readUnsigned(0xFFFFFFFF, 32));
    EXPECT_EQ(0.5f, readUnsigned(0x80000000, 32)); // the divisor is 2^32 as a float
}

TEST(ChannelValues, UnsignedCodesOfUpToSixteenBitsComeBack)
{
    for (unsigned int uiBits = 1; uiBits <= 16; ++uiBits)
        for (uint64_t i = 0; i <= getLowMask(uiBits); ++i)
            ASSERT_EQ(i, writeUnsigned(readUnsigned(i, uiBits), uiBits)) << uiBits;
}

TEST(ChannelValues, UnsignedValuesAreRoundedAndClamped)
{
    EXPECT_EQ(128u, writeUnsigned(0.5f, 8)); // 127.5 + 0.5
    EXPECT_EQ(127u, writeUnsigned(0.4999f, 8));
    EXPECT_EQ(0u, writeUnsigned(-3.0f, 8));
    EXPECT_EQ(0u, writeUnsigned(-0.0f, 8));
    EXPECT_EQ(255u, writeUnsigned(7.0f, 8));
    EXPECT_EQ(255u, writeUnsigned(k_fInfinity, 8));
    EXPECT_EQ(0u, writeUnsigned(-k_fInfinity, 8));
    EXPECT_EQ(0u, writeUnsigned(k_fNaN, 8));
}

TEST(ChannelValues, AFullUnsignedChannelSaturatesAtEveryWidth)
{
    for (unsigned int uiBits = 1; uiBits <= 64; ++uiBits)
    {
        EXPECT_EQ(getLowMask(uiBits), writeUnsigned(1.0f, uiBits)) << uiBits;
        EXPECT_EQ(getLowMask(uiBits), writeUnsigned(k_fInfinity, uiBits)) << uiBits;
        EXPECT_EQ(0u, writeUnsigned(k_fNaN, uiBits)) << uiBits;
    }
    EXPECT_EQ(0x80000000u, writeUnsigned(0.5f, 32));
}

TEST(ChannelValues, ASignedByteOfOnlyItsSignReadsAsNegativeZero)
{
    EXPECT_EQ(0x80000000u, bitsFromFloat(readElement(0x80, 8)));
}

TEST(ChannelValues, SignedElementsDivideByOneLessBelowZero)
{
    EXPECT_EQ(-127.0f / 126.0f, readElement(0xFF, 8));
    EXPECT_EQ(-1.0f / 126.0f, readElement(0x81, 8));
    EXPECT_EQ(1.0f, readElement(0x7F, 8));
    EXPECT_EQ(1.0f / 127.0f, readElement(1, 8));
    EXPECT_EQ(0.0f, readElement(0, 8));
    EXPECT_EQ(-32767.0f / 32766.0f, readElement(0xFFFF, 16));
    EXPECT_EQ(32767.0f / 32767.0f, readElement(0x7FFF, 16));
    EXPECT_EQ(1.0f, readElement(0x7FFFFFFF, 32));
    EXPECT_EQ(-1.0f, readElement(0xFFFFFFFF, 32)); // both are 2^31 as floats
}

TEST(ChannelValues, SignedFieldsDivideByAPowerOfTwoBelowZero)
{
    // The field is not extended: its sign counts as +1 in the divisor, 1 - 1 + 2^4.
    EXPECT_EQ(-15.0f / 16.0f, readField(0x1F, 5));
    EXPECT_EQ(-1.0f / 16.0f, readField(0x11, 5));
    EXPECT_EQ(0x80000000u, bitsFromFloat(readField(0x10, 5)));
    EXPECT_EQ(1.0f, readField(0x0F, 5));
    EXPECT_EQ(7.0f / 15.0f, readField(0x07, 5));
}

TEST(ChannelValues, SignedFieldsOfOneAndTwoBits)
{
    EXPECT_EQ(0u, bitsFromFloat(readField(0, 1))); // the divisor is 0
    EXPECT_EQ(0x80000000u, bitsFromFloat(readField(1, 1)));
    EXPECT_EQ(1.0f, readField(1, 2));
    EXPECT_EQ(-0.5f, readField(3, 2));
    EXPECT_EQ(0u, writeSigned(1.0f, 1));
    EXPECT_EQ(1u, writeSigned(-1.0f, 1));
    EXPECT_EQ(1u, writeSigned(1.0f, 2));
    EXPECT_EQ(2u, writeSigned(-1.0f, 2));
    EXPECT_EQ(3u, writeSigned(-0.5f, 2));
}

TEST(ChannelValues, SignedValuesAreWrittenAsSignAndMagnitude)
{
    EXPECT_EQ(0x7Fu, writeSigned(1.0f, 8));
    EXPECT_EQ(0x40u, writeSigned(0.5f, 8));  // 63.5 + 0.5
    EXPECT_EQ(0xC0u, writeSigned(-0.5f, 8)); // 64.5, and the sign
    EXPECT_EQ(0x80u, writeSigned(-1.0f, 8)); // the magnitude 128 lands on the sign
    EXPECT_EQ(0x00u, writeSigned(-0.0f, 8));
    EXPECT_EQ(0x8000u, writeSigned(-1.0f, 16));
    EXPECT_EQ(0x80u | 1, writeSigned(-1.0f / 128, 8));
}

TEST(ChannelValues, AFullSignedChannelStaysInItsField)
{
    for (unsigned int uiBits = 1; uiBits <= 64; ++uiBits)
    {
        EXPECT_EQ(getLowMask(uiBits - 1), writeSigned(1.0f, uiBits)) << uiBits;
        EXPECT_EQ(uint64_t{1} << (uiBits - 1), writeSigned(-1.0f, uiBits)) << uiBits;
    }
}

TEST(ChannelValues, SignedMagnitudesAboveOneAreNotClamped)
{
    EXPECT_EQ(254u, writeSigned(2.0f, 8));         // 2 * 127
    EXPECT_EQ(256u | 0x80, writeSigned(-2.0f, 8)); // 2 * 128, and the sign
    EXPECT_EQ(60u, writeSigned(4.0f, 5));          // 4 * 15: reaches above its five bits
    EXPECT_EQ(0x80u | 384, writeSigned(-3.0f, 8)); // 3 * 128
    EXPECT_EQ(65534u, writeSigned(2.0f, 16));      // 2 * 32767
    EXPECT_EQ(127u * 1000, writeSigned(1000.0f, 8));
}

TEST(ChannelValues, HugeSignedMagnitudesSaturate)
{
    EXPECT_EQ(0x7FFFFFFFu, writeSigned(1.0f, 32));
    EXPECT_EQ(0x7FFFFFFFu, writeSigned(1.5f, 32));
    EXPECT_EQ(0x7FFFFFFFu, writeSigned(k_fInfinity, 32));
    EXPECT_EQ(0x80000000u, writeSigned(-k_fInfinity, 32));
    EXPECT_EQ(0x80000000u, writeSigned(-1e30f, 32));
    EXPECT_EQ(0x7FFFFFFFu, writeSigned(1e30f, 8));
    EXPECT_EQ(0x80000080u, writeSigned(-1e30f, 8));
    EXPECT_EQ(0x7FFFFFFFu, writeSigned(k_fInfinity, 5));
}

TEST(ChannelValues, NotANumberIsZeroInASignedChannel)
{
    EXPECT_EQ(0u, writeSigned(k_fNaN, 8));
    EXPECT_EQ(0u, writeSigned(-k_fNaN, 32));
    EXPECT_EQ(0u, writeSigned(k_fInfinity, 1)); // infinity times 0
}

TEST(ChannelValues, RulesFollowTypeBitsAndPlace)
{
    EXPECT_EQ(EValueRule::eUnsigned, getReadRule(eCT_UnsignedByte, 8, true));
    EXPECT_EQ(EValueRule::eUnsigned, getReadRule(eCT_UnsignedInteger, 5, false));
    EXPECT_EQ(EValueRule::eSignedElement, getReadRule(eCT_SignedShort, 16, true));
    EXPECT_EQ(EValueRule::eSignedField, getReadRule(eCT_SignedShort, 8, false));
    EXPECT_EQ(EValueRule::eFloat32, getReadRule(eCT_SignedFloatingPoint, 32, true));
    EXPECT_EQ(EValueRule::eHalf, getReadRule(eCT_SignedFloatingPoint, 16, true));
    EXPECT_EQ(EValueRule::eUnsignedHalf, getReadRule(eCT_UnsignedFloatingPoint, 16, true));
    EXPECT_EQ(EValueRule::eFloat11, getReadRule(eCT_UnsignedFloatingPoint, 11, false));
    EXPECT_EQ(EValueRule::eFloat10, getReadRule(eCT_UnsignedFloatingPoint, 10, false));
    EXPECT_EQ(EValueRule::eNothing, getReadRule(eCT_UnsignedFloatingPoint, 8, false));
    EXPECT_EQ(EValueRule::eNothing, getReadRule(eCT_UnsignedFloatingPoint, 32, true));
    EXPECT_EQ(EValueRule::eNothing, getReadRule(static_cast<EMOXTChannelType>(14), 8, false));
}

TEST(ChannelValues, SignedFloatsOfElevenAndTenBitsCanBeReadButNotWritten)
{
    EXPECT_EQ(EValueRule::eFloat11, getReadRule(eCT_SignedFloatingPoint, 11, false));
    EXPECT_EQ(EValueRule::eNothing, getWriteRule(eCT_SignedFloatingPoint, 11, false));
    EXPECT_EQ(EValueRule::eFloat10, getReadRule(eCT_SignedFloatingPoint, 10, false));
    EXPECT_EQ(EValueRule::eNothing, getWriteRule(eCT_SignedFloatingPoint, 10, false));
    EXPECT_EQ(EValueRule::eHalf, getWriteRule(eCT_SignedFloatingPoint, 16, true));
}
