#include "Display/CPictureLabel.h"

#include <gtest/gtest.h>

#include <QtWidgets/QVBoxLayout>

TEST(CPictureLabel, HasNoFrameLineAndThePictureInItsCorner)
{
    const CPictureLabel label;
    EXPECT_EQ(0, label.lineWidth());
    EXPECT_EQ(Qt::AlignLeft | Qt::AlignTop, label.alignment());
}

TEST(CPictureLabel, AsksForTheSizeOfItsPicture)
{
    CPictureLabel label;
    label.setPixmap(QPixmap(123, 45));
    EXPECT_EQ(QSize(123, 45), label.sizeHint());
}

TEST(CPictureLabel, AsksForTheSizeOfItsTextAsLongAsItHasNoPicture)
{
    CPictureLabel label;
    label.setText("Texture Goes Here");
    EXPECT_EQ(static_cast<QLabel&>(label).QLabel::sizeHint(), label.sizeHint());
    EXPECT_LT(10, label.sizeHint().width());
}

TEST(CPictureLabel, CanBeShrunkBelowItsPicture)
{
    QWidget window;
    auto* pLayout = new QVBoxLayout(&window);
    pLayout->setContentsMargins(0, 0, 0, 0);
    auto* pLabel = new CPictureLabel(&window);
    pLayout->addWidget(pLabel);
    pLabel->setPixmap(QPixmap(400, 300));
    EXPECT_EQ(QSize(1, 1), pLabel->minimumSizeHint());
    window.resize(40, 30);
    window.show();
    pLayout->activate();
    EXPECT_EQ(QSize(40, 30), window.size());
    EXPECT_EQ(QSize(40, 30), pLabel->size());
}
