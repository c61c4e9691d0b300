#include <limits>

#include <gtest/gtest.h>

#include "Pixels/Greys.h"
#include "Pixels/SmallFloats.h"

using namespace moxtexture;

TEST(Greys, LuminanceIsWeightedAndIntensityIsTheMean)
{
    EXPECT_FLOAT_EQ(0.4295f, getLuminanceOf(0.5f, 0.25f, 2.0f)); // 0.1063 + 0.1788 + 0.1444
    EXPECT_EQ(0.2126f, getLuminanceOf(1.0f, 0.0f, 0.0f));
    EXPECT_EQ(0.5f, getMeanOf(0.25f, 0.25f, 1.0f, 3.0f));
    EXPECT_EQ(0.75f, getMeanOf(0.5f, 1.0f, 0.0f, 2.0f));
}

TEST(Greys, TheMeanOfNoColoursIsZero)
{
    EXPECT_EQ(0.0f, getMeanOf(0.0f, 0.0f, 0.0f, 0.0f));
}

TEST(Greys, NotANumberHasTheSameBitsWhereverItComesFrom)
{
    const float fInfinity = std::numeric_limits<float>::infinity();
    const float fFirst = floatFromBits(0xFFC12345);
    const float fSecond = floatFromBits(0x7FE54321);
    EXPECT_EQ(0x7FC00000u, bitsFromFloat(getLuminanceOf(fFirst, fSecond, 0.0f)));
    EXPECT_EQ(0x7FC00000u, bitsFromFloat(getLuminanceOf(fInfinity, -fInfinity, fSecond)));
    EXPECT_EQ(0x7FC00000u, bitsFromFloat(getMeanOf(fSecond, fFirst, 0.0f, 3.0f)));
    EXPECT_EQ(0x7FC00000u, bitsFromFloat(getMeanOf(fInfinity, 0.0f, -fInfinity, 3.0f)));
}
