#include "Docks/CElidedLabel.h"

#include <gtest/gtest.h>

#include <QtGui/QHelpEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

namespace
{

constexpr char k_acLong[] = "a name that is far too long for a narrow column of a dock";

void askForToolTip(QWidget& widget)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), widget.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&widget, &event);
}

} // namespace

TEST(ElidedLabel, KeepsItsTextWhileItShowsLess)
{
    CElidedLabel label;
    label.setText(k_acLong);
    label.resize(100, 20);
    EXPECT_EQ(QString(k_acLong), label.text());
    EXPECT_NE(label.text(), label.getShownText());
    EXPECT_TRUE(label.getShownText().startsWith("a"));
    EXPECT_TRUE(label.getShownText().endsWith("k"));
    label.setElideMode(Qt::ElideRight);
    EXPECT_TRUE(label.getShownText().startsWith("a"));
    EXPECT_FALSE(label.getShownText().endsWith("k"));
    label.resize(2000, 20);
    EXPECT_EQ(label.text(), label.getShownText());
}

TEST(ElidedLabel, CanBeNarrowerThanItsText)
{
    CElidedLabel label;
    label.setText(k_acLong);
    EXPECT_LT(label.minimumSizeHint().width(), 100);
    EXPECT_GE(label.sizeHint().width(), label.fontMetrics().horizontalAdvance(k_acLong));
}

TEST(ElidedLabel, TakesNoTextForMarkUp)
{
    CElidedLabel label;
    EXPECT_EQ(Qt::PlainText, label.textFormat());
}

TEST(ElidedLabel, TellsACutTextInATip)
{
    CElidedLabel label;
    label.setText(k_acLong);
    label.resize(100, 20);
    label.show();
    askForToolTip(label);
    EXPECT_EQ(QString(k_acLong), QToolTip::text());
    QToolTip::hideText();
}

TEST(ElidedLabel, PrefersTheTipThatItWasGiven)
{
    CElidedLabel label;
    label.setText(k_acLong);
    label.setToolTip("/the/whole/<b>path");
    label.resize(100, 20);
    label.show();
    askForToolTip(label);
    EXPECT_TRUE(QToolTip::text().contains("&lt;b&gt;")); // letter by letter, as no mark-up
    QToolTip::hideText();
}

TEST(ElidedLabel, DrawsOnlyWithinItself)
{
    CElidedLabel label;
    label.setText("Text");
    label.resize(60, 20);
    const QImage drawn = label.grab().toImage();
    label.setText("");
    const QImage empty = label.grab().toImage();
    EXPECT_EQ(drawn.size(), empty.size());
    EXPECT_NE(drawn, empty);
}
