#include <cmath>

#include <gtest/gtest.h>

#include "Pixels/ColourSpaceMapping.h"

using namespace moxtexture;

TEST(ColourSpaceMapping, HalfOfLinearLightIsAPowerAboveTheKnee)
{
    // 0.5 to the power 0.41666666 is 0.74915354; times 1.0556 is 0.79080648; less 0.0556 is 0.73520648.
    EXPECT_NEAR(0.73520648, linearToSRGB(0.5f), 2e-7);
}

TEST(ColourSpaceMapping, BelowTheKneeItIsALine)
{
    EXPECT_EQ(0.003f * 12.92f, linearToSRGB(0.003f));
    EXPECT_EQ(0.00304f * 12.92f, linearToSRGB(0.00304f));
    EXPECT_EQ(-1.0f * 12.92f, linearToSRGB(-1.0f));
    EXPECT_EQ(0.03f / 12.92f, sRGBToLinear(0.03f));
    EXPECT_EQ(0.03928f / 12.92f, sRGBToLinear(0.03928f));
}

TEST(ColourSpaceMapping, JustAboveTheKneeItIsThePower)
{
    const float fLinear = std::nextafter(0.00304f, 1.0f);
    EXPECT_NEAR(std::pow(0.00304, 0.41666666) * 1.0556 - 0.0556, linearToSRGB(fLinear), 1e-7);
    EXPECT_NE(fLinear * 12.92f, linearToSRGB(fLinear));
    const float fEncoded = std::nextafter(0.03928f, 1.0f);
    EXPECT_NEAR(std::pow((0.03928 + 0.0556) / 1.0556, 2.4), sRGBToLinear(fEncoded), 1e-8);
    EXPECT_NE(fEncoded / 12.92f, sRGBToLinear(fEncoded));
}

TEST(ColourSpaceMapping, WhiteStaysWhite)
{
    EXPECT_NEAR(1.0f, linearToSRGB(1.0f), 1e-7f);
    EXPECT_NEAR(1.0f, sRGBToLinear(1.0f), 1e-7f);
}

TEST(ColourSpaceMapping, OnlyTheTwoKnownSpacesAct)
{
    const auto eOther = static_cast<EMOXTColourSpace>(2);
    EXPECT_EQ(EColourMapping::eNone, getColourMapping(eCS_Linear, eCS_Linear));
    EXPECT_EQ(EColourMapping::eNone, getColourMapping(eCS_sRGB, eCS_sRGB));
    EXPECT_EQ(EColourMapping::eLinearToSRGB, getColourMapping(eCS_sRGB, eCS_Linear));
    EXPECT_EQ(EColourMapping::eSRGBToLinear, getColourMapping(eCS_Linear, eCS_sRGB));
    EXPECT_EQ(EColourMapping::eNone, getColourMapping(eOther, eCS_Linear));
    EXPECT_EQ(EColourMapping::eNone, getColourMapping(eCS_Linear, eOther));
}

TEST(ColourSpaceMapping, ColoursAndGreysHaveASpaceAndAlphaHasNone)
{
    for (const EChannelName eName : {eChannelRed, eChannelGreen, eChannelBlue, eChannelLuminance, eChannelIntensity})
        EXPECT_TRUE(isColourChannel(eName)) << eName;
    for (const EChannelName eName : {eChannelNone, eChannelAlpha, eChannelUnspecified})
        EXPECT_FALSE(isColourChannel(eName)) << eName;
}
