#include "Codecs/BC/BcPrincipalAxis.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace moxtexture;

TEST(BcPrincipalAxis, IsTheEigenvectorOfTheGreatestEigenvalue)
{
    // The covariance of colours along (2, 1, 2) / 3: the outer product of (2, 1, 2) with itself.
    const BcColour axis = findBcPrincipalAxis({4, 2, 4, 1, 2, 4});
    EXPECT_NEAR(2.0f / 3.0f, axis.fRed, 1e-6f);
    EXPECT_NEAR(1.0f / 3.0f, axis.fGreen, 1e-6f);
    EXPECT_NEAR(2.0f / 3.0f, axis.fBlue, 1e-6f);
}

TEST(BcPrincipalAxis, EndsAtTheFirstStepThatMovesLessThanTheTolerance)
{
    // Red grows ten times as fast as green, so after n steps green is 10^-n: the step from 10^-5 to 10^-6 moves by 0.9e-5.
    const BcColour axis = findBcPrincipalAxis({10, 0, 0, 1, 0, 0});
    EXPECT_NEAR(1.0f, axis.fRed, 1e-6f);
    EXPECT_NEAR(1e-6f, axis.fGreen, 1e-8f);
    EXPECT_EQ(0.0f, axis.fBlue);
}

TEST(BcPrincipalAxis, EndsAfterAHundredSteps)
{
    // Green falls behind by 1 % a step, far from any end: after 100 steps by 1.01^-100 = 0.36971, after 99 by 0.37341.
    const BcColour axis = findBcPrincipalAxis({1.01f, 0, 0, 1, 0, 0});
    EXPECT_NEAR(0.36971f, axis.fGreen / axis.fRed, 1e-3f);
    EXPECT_NEAR(1.0f, axis.fRed * axis.fRed + axis.fGreen * axis.fGreen, 1e-6f);
}

TEST(BcPrincipalAxis, StaysAtItsStartWhereTheProductIsZero)
{
    // Red and green change against each other, so that (1, 1, 1) is in the null space.
    const BcColour axis = findBcPrincipalAxis({5, -5, 0, 5, 0, 0});
    EXPECT_EQ(1.0f, axis.fRed);
    EXPECT_EQ(1.0f, axis.fGreen);
    EXPECT_EQ(1.0f, axis.fBlue);
}

TEST(BcPrincipalAxis, TheSquaredToleranceDecidesAsTheRootDoes)
{
    EXPECT_FALSE(std::sqrt(k_fBcSquaredAxisTolerance) < k_fBcAxisTolerance);
    EXPECT_TRUE(std::sqrt(std::nextafter(k_fBcSquaredAxisTolerance, 0.0f)) < k_fBcAxisTolerance);
}
