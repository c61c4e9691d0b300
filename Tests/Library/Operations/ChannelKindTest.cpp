#include "Operations/ChannelKind.h"

#include <gtest/gtest.h>

#include <limits>

using namespace moxtexture;

namespace
{

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

CMOXTextureHeader headerOf(uint64_t ui64Word, EMOXTChannelType eType)
{
    return {MOXPixelWord(ui64Word), 1, 1, 1, 1, 1, 1, eCS_Linear, eType, false};
}

/// Bytes of an element, negative for a float; 0 where the header is not in working form.
int getKind(uint64_t ui64Word, EMOXTChannelType eType)
{
    int iKind = 0;
    const bool bDone = withChannelKind(headerOf(ui64Word, eType),
                                       [&](auto element)
                                       {
                                           iKind = std::numeric_limits<decltype(element)>::is_integer ? static_cast<int>(sizeof(element))
                                                                                                      : -static_cast<int>(sizeof(element));
                                           return true;
                                       });
    EXPECT_EQ(iKind != 0, bDone);
    return iKind;
}

} // namespace

TEST(ChannelKind, TheMaximaOfTheFourKindsAreTheLargestElementsOrTwoToTheThirtySecond)
{
    EXPECT_EQ(255.0f, ChannelKind<uint8_t>::kMaximum);
    EXPECT_EQ(65535.0f, ChannelKind<uint16_t>::kMaximum);
    EXPECT_EQ(4294967296.0f, ChannelKind<uint32_t>::kMaximum);
    EXPECT_EQ(3.4028235e38f, ChannelKind<float>::kMaximum);
}

TEST(ChannelKind, FloatsAreCutToWholeNumbersAndNotRounded)
{
    EXPECT_EQ(1, ChannelKind<uint8_t>::clampToElement(1.999f));
    EXPECT_EQ(0, ChannelKind<uint8_t>::clampToElement(0.999f));
    EXPECT_EQ(254, ChannelKind<uint8_t>::clampToElement(254.99f));
    EXPECT_EQ(65534, ChannelKind<uint16_t>::clampToElement(65534.9f));
    EXPECT_EQ(7u, ChannelKind<uint32_t>::clampToElement(7.5f));
}

TEST(ChannelKind, ValuesPastEitherEndGiveTheEnd)
{
    EXPECT_EQ(0, ChannelKind<uint8_t>::clampToElement(-0.5f));
    EXPECT_EQ(0, ChannelKind<uint8_t>::clampToElement(-kInfinity));
    EXPECT_EQ(255, ChannelKind<uint8_t>::clampToElement(255.5f));
    EXPECT_EQ(255, ChannelKind<uint8_t>::toElement(1e30f));
    EXPECT_EQ(65535, ChannelKind<uint16_t>::clampToElement(kInfinity));
}

TEST(ChannelKind, TwoToTheThirtySecondBecomesTheLargestInteger)
{
    EXPECT_EQ(0xFFFFFFFFu, ChannelKind<uint32_t>::clampToElement(4294967296.0f));
    EXPECT_EQ(0xFFFFFFFFu, ChannelKind<uint32_t>::toElement(kInfinity));
    EXPECT_EQ(0xFFFFFF00u, ChannelKind<uint32_t>::clampToElement(4294967040.0f)); // the next float below 2^32
    EXPECT_EQ(0x80000000u, ChannelKind<uint32_t>::clampToElement(2147483648.0f));
}

TEST(ChannelKind, FloatsKeepTheirFractionAndAreClampedOnlyToZeroAndTheLargestFloat)
{
    EXPECT_EQ(0.75f, ChannelKind<float>::clampToElement(0.75f));
    EXPECT_EQ(1e30f, ChannelKind<float>::clampToElement(1e30f));
    EXPECT_EQ(0.0f, ChannelKind<float>::clampToElement(-1.0f));
    EXPECT_EQ(3.4028235e38f, ChannelKind<float>::clampToElement(kInfinity));
    EXPECT_EQ(-1.5f, ChannelKind<float>::toElement(-1.5f));
}

TEST(ChannelKind, WhatIsNoNumberBecomesZero)
{
    EXPECT_EQ(0, ChannelKind<uint8_t>::clampToElement(kNaN));
    EXPECT_EQ(0, ChannelKind<uint16_t>::toElement(kNaN));
    EXPECT_EQ(0u, ChannelKind<uint32_t>::clampToElement(kNaN));
    EXPECT_EQ(0.0f, ChannelKind<float>::clampToElement(kNaN));
}

TEST(ChannelKind, TheFourLayoutsOfTheWorkingFormAreKnown)
{
    EXPECT_EQ(1, getKind(0x0808080861626772, eCT_UnsignedNormalisedByte));
    EXPECT_EQ(2, getKind(0x1010101061626772, eCT_UnsignedNormalisedShort));
    EXPECT_EQ(4, getKind(0x2020202061626772, eCT_UnsignedNormalisedInteger));
    EXPECT_EQ(-4, getKind(0x2020202061626772, eCT_SignedFloatingPoint));
}

TEST(ChannelKind, EveryOtherPairOfFormatAndTypeIsRefused)
{
    const uint64_t aui64Words[] = {0x0808080861626772, 0x1010101061626772, 0x2020202061626772, 0x0808080861726762, 0x0008080800626772, 7};
    int iAccepted = 0;
    for (const uint64_t ui64Word : aui64Words)
        for (uint32_t uiType = 0; uiType < 16; ++uiType)
            iAccepted += getKind(ui64Word, static_cast<EMOXTChannelType>(uiType)) != 0;
    EXPECT_EQ(4, iAccepted);
}

TEST(ChannelKind, TheResultIsThatOfTheOperation)
{
    EXPECT_FALSE(withChannelKind(headerOf(0x0808080861626772, eCT_UnsignedNormalisedByte), [](auto) { return false; }));
    EXPECT_TRUE(withChannelKind(headerOf(0x0808080861626772, eCT_UnsignedNormalisedByte), [](auto) { return true; }));
}

TEST(WholePixel, HasTheBytesOfThePixel)
{
    const auto getSize = [](uint64_t ui64Word, EMOXTChannelType eType)
    {
        size_t uiSize = 0;
        EXPECT_TRUE(withWholePixel(headerOf(ui64Word, eType),
                                   [&](auto pixel)
                                   {
                                       uiSize = sizeof(pixel);
                                       return true;
                                   }));
        return uiSize;
    };
    EXPECT_EQ(4u, getSize(0x0808080861626772, eCT_UnsignedNormalisedByte));
    EXPECT_EQ(8u, getSize(0x1010101061626772, eCT_UnsignedNormalisedShort));
    EXPECT_EQ(16u, getSize(0x2020202061626772, eCT_UnsignedNormalisedInteger));
    EXPECT_EQ(16u, getSize(0x2020202061626772, eCT_SignedFloatingPoint));
    EXPECT_FALSE(withWholePixel(headerOf(7, eCT_UnsignedNormalisedByte), [](auto) { return true; }));
}
