#include "Codecs/ETC/EtcMatrix.h"

#include <gtest/gtest.h>

#include <string>

#include "Core/Diagnostics.h"

namespace
{

using namespace moxtexture;

std::string g_strReceived;

void receive(const char* pszText)
{
    g_strReceived += pszText;
}

TEST(EtcMatrix, AProductHasTheRowsOfTheLeftAndTheColumnsOfTheRight)
{
    const EtcMatrix left{2, 3, {1, 2, 3, 4, 5, 6}};
    const EtcMatrix right{3, 1, {10, 20, 30}};
    EtcMatrix product;
    ASSERT_TRUE(multiplyMatrices(left, right, product));
    EXPECT_EQ(2u, product.uiRows);
    EXPECT_EQ(1u, product.uiColumns);
    EXPECT_EQ(140.0, product.at(0, 0)); // 10 + 40 + 90
    EXPECT_EQ(320.0, product.at(1, 0)); // 40 + 100 + 180
}

TEST(EtcMatrix, AProductMayTakeThePlaceOfAFactor)
{
    EtcMatrix a{2, 2, {1, 2, 3, 4}};
    const EtcMatrix b{2, 2, {0, 1, 1, 0}};
    ASSERT_TRUE(multiplyMatrices(a, b, a));
    EXPECT_EQ(2.0, a.at(0, 0));
    EXPECT_EQ(1.0, a.at(0, 1));
    EXPECT_EQ(4.0, a.at(1, 0));
    EXPECT_EQ(3.0, a.at(1, 1));
}

TEST(EtcMatrix, ASumRunsOverAscendingNumbers)
{
    // 2^53 + 1 rounds to 2^53, so that the order tells: (1 + 1) + 2^53 keeps both, (2^53 + 1) + 1 loses both.
    constexpr double fBig = 9007199254740992.0;
    const EtcMatrix left{1, 3, {1, 1, fBig}};
    const EtcMatrix reversed{1, 3, {fBig, 1, 1}};
    const EtcMatrix ones{3, 1, {1, 1, 1}};
    EtcMatrix product;
    ASSERT_TRUE(multiplyMatrices(left, ones, product));
    EXPECT_EQ(fBig + 2, product.at(0, 0));
    ASSERT_TRUE(multiplyMatrices(reversed, ones, product));
    EXPECT_EQ(fBig, product.at(0, 0));
}

TEST(EtcMatrix, FactorsThatDoNotFitAreToldAndLeaveTheProductAlone)
{
    g_strReceived.clear();
    setDiagnosticsHook(receive);
    const EtcMatrix left{2, 3, {1, 2, 3, 4, 5, 6}};
    EtcMatrix product{1, 1, {7}};
    EXPECT_FALSE(multiplyMatrices(left, left, product));
    setDiagnosticsHook(nullptr);
    EXPECT_EQ("Cannot multiply matrices -- dimensions do not agree.\n", g_strReceived);
    EXPECT_EQ(1u, product.uiRows);
    EXPECT_EQ(7.0, product.at(0, 0));
}

TEST(EtcMatrix, AProductThatAMatrixCannotHoldIsRefused)
{
    EtcMatrix column{7, 1, {}};
    EtcMatrix row{1, 7, {}};
    EtcMatrix product;
    EXPECT_FALSE(multiplyMatrices(column, row, product)); // 49 values
    EXPECT_TRUE(multiplyMatrices(row, column, product));
}

} // namespace
