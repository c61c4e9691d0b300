#include "Catalogue/ApiGroups.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

using namespace moxtexture;

TEST(ApiGroups, StandInTheOrderOfTheirBits)
{
    ASSERT_EQ(8u, k_aApiGroups.size());
    EXPECT_EQ("OpenGL ES 1", k_aApiGroups.front());
    EXPECT_EQ("OpenGL", k_aApiGroups[3]);
    EXPECT_EQ("DirectX 11 (10_1)", k_aApiGroups[5]);
    EXPECT_EQ("Vulkan", k_aApiGroups.back());
}

TEST(BitsPerPixel, GrowFromHalfABitToFourFloats)
{
    ASSERT_EQ(28u, k_aBitsPerPixel.size());
    EXPECT_EQ("0.59", k_aBitsPerPixel.front());
    EXPECT_EQ("128", k_aBitsPerPixel.back());
    for (size_t i = 1; i < k_aBitsPerPixel.size(); ++i)
        EXPECT_LT(std::strtod(std::string(k_aBitsPerPixel[i - 1]).c_str(), nullptr),
                  std::strtod(std::string(k_aBitsPerPixel[i]).c_str(), nullptr))
            << i;
}

TEST(BitsPerPixel, AreFoundByTheirText)
{
    EXPECT_EQ(0u, findBitRate("0.59"));
    EXPECT_EQ(15u, findBitRate("4"));
    EXPECT_EQ(27u, findBitRate("128"));
    EXPECT_EQ(28u, findBitRate("12"));
}
