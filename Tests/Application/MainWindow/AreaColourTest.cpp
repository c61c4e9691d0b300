#include "MainWindow/AreaColour.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include "Application/MainWindow/MainWindowFixture.h"

namespace
{

constexpr int k_iViewGrey = 160; // around the picture of a new view

QPalette makePalette(const QColor& window)
{
    return QPalette(window, window);
}

TEST(AreaColour, IsALittleDarkerThanWindowsAreAndNotTheGreyOfAView)
{
    for (const QColor& window : {QColor(239, 240, 241), QColor(239, 239, 239), QColor(49, 54, 59), QColor(30, 30, 30)})
    {
        const int iArea = getAreaColour(makePalette(window)).lightness();
        EXPECT_LT(iArea, window.lightness());
        EXPECT_GT(iArea, window.lightness() * 3 / 4);
        EXPECT_GE(std::abs(iArea - k_iViewGrey), 30);
    }
}

TEST(AreaColour, IsReckonedFromTheWindowColourAlone)
{
    QPalette palette = makePalette(Qt::white);
    palette.setColor(QPalette::Dark, Qt::red);
    palette.setColor(QPalette::Base, Qt::green);
    // 255 * 100 / 120 = 212.5
    EXPECT_NEAR(212, getAreaColour(palette).red(), 1);
    EXPECT_EQ(getAreaColour(palette).red(), getAreaColour(palette).green());
    // 100 * 100 / 115 = 86.96
    EXPECT_NEAR(87, getAreaColour(makePalette(QColor(100, 100, 100))).red(), 1);
}

class AreaColourOfTheWindow : public MainWindowTest
{
protected:
    QColor shown() const { return area().viewport()->grab().toImage().pixelColor(area().viewport()->rect().center()); }
};

TEST_F(AreaColourOfTheWindow, FollowsThePalette)
{
    EXPECT_EQ(getAreaColour(window().palette()).rgb(), shown().rgb());
    for (const QColor& colour : {QColor(49, 54, 59), QColor(239, 240, 241)})
    {
        window().setPalette(makePalette(colour));
        EXPECT_EQ(getAreaColour(makePalette(colour)).rgb(), shown().rgb());
    }
}

} // namespace
