#include "Dialogs/CGridSizeSelect.h"

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

namespace
{

QSpinBox& spinBoxOf(const QDialog& dialog)
{
    return *dialog.findChild<QSpinBox*>();
}

} // namespace

TEST(GridSizeSelect, SaysWhatItAsksFor)
{
    const CGridSizeSelect dialog(4);
    EXPECT_EQ(QString("Grid Size"), dialog.windowTitle());
    const auto* pLabel = dialog.findChild<QLabel*>("Label_GridSize");
    ASSERT_NE(nullptr, pLabel);
    EXPECT_EQ(QString("Grid Size:"), pLabel->text());
    EXPECT_EQ(&spinBoxOf(dialog), pLabel->buddy());
    EXPECT_EQ(1, spinBoxOf(dialog).minimum());
    EXPECT_EQ(QString(" pixels"), spinBoxOf(dialog).suffix());
}

TEST(GridSizeSelect, StartsWithTheSizeGiven)
{
    EXPECT_EQ(4u, CGridSizeSelect(4).getGridSize());
    EXPECT_EQ(37u, CGridSizeSelect(37).getGridSize());
    EXPECT_EQ(16384u, CGridSizeSelect(16384).getGridSize());
}

TEST(GridSizeSelect, BringsImpossibleSizesIntoItsRange)
{
    EXPECT_EQ(1u, CGridSizeSelect(0).getGridSize());
    EXPECT_EQ(16384u, CGridSizeSelect(0xFFFFFFFF).getGridSize());
}

TEST(GridSizeSelect, GivesWhatIsTypedAndAccepted)
{
    CGridSizeSelect dialog(4);
    dialog.show();
    QTest::keyClicks(&spinBoxOf(dialog), "12");
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(QDialog::Accepted, dialog.result());
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(12u, dialog.getGridSize());
}

TEST(GridSizeSelect, CanBeCancelled)
{
    CGridSizeSelect dialog(4);
    dialog.show();
    QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(QDialog::Rejected, dialog.result());
}
