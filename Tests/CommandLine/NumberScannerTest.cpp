#include "CommandLine/NumberScanner.h"

#include <gtest/gtest.h>

using namespace moxtexture;

TEST(NumberScanner, ReadsNumbersAndSeparatorsFromLeftToRight)
{
    CNumberScanner scanner("64x32+-4+0");
    uint32_t uiWidth = 0, uiHeight = 0;
    int32_t x = 0, y = 0;
    EXPECT_TRUE(scanner.read(uiWidth) && scanner.skip('x') && scanner.read(uiHeight));
    EXPECT_TRUE(scanner.skip('+') && scanner.read(x) && scanner.skip('+') && scanner.read(y));
    EXPECT_TRUE(scanner.isAtEnd());
    EXPECT_EQ(64u, uiWidth);
    EXPECT_EQ(32u, uiHeight);
    EXPECT_EQ(-4, x);
    EXPECT_EQ(0, y);
}

TEST(NumberScanner, StaysWhereItIsAtWhatDoesNotFit)
{
    CNumberScanner scanner("x4");
    uint32_t uiValue = 7;
    EXPECT_FALSE(scanner.read(uiValue));
    EXPECT_FALSE(scanner.skip(','));
    EXPECT_EQ(7u, uiValue);
    EXPECT_TRUE(scanner.skip('x'));
    EXPECT_TRUE(scanner.read(uiValue));
    EXPECT_EQ(4u, uiValue);
    EXPECT_FALSE(scanner.skip('x'));
    EXPECT_FALSE(scanner.read(uiValue));
}

TEST(NumberScanner, TakesNoNumberThatDoesNotFitItsKind)
{
    uint32_t uiValue = 0;
    int32_t iValue = 0;
    EXPECT_FALSE(CNumberScanner("4294967296").read(uiValue));
    EXPECT_FALSE(CNumberScanner("-1").read(uiValue));
    EXPECT_FALSE(CNumberScanner("2147483648").read(iValue));
    EXPECT_TRUE(CNumberScanner("-2147483648").read(iValue));
    EXPECT_EQ(INT32_MIN, iValue);
    EXPECT_FALSE(CNumberScanner("+1").read(iValue));
    EXPECT_FALSE(CNumberScanner("").read(iValue));
}
