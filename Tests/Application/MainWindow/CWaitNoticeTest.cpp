#include "MainWindow/CWaitNotice.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <gtest/gtest.h>

namespace
{

TEST(CWaitNotice, IsOnTheScreenWhenItIsMadeAndHoldsNothingUp)
{
    QWidget parent;
    parent.show();
    {
        const CWaitNotice notice("One moment", &parent);
        EXPECT_TRUE(notice.isVisible());
        EXPECT_FALSE(notice.isModal());
        EXPECT_NE(nullptr, qobject_cast<QHBoxLayout*>(notice.layout()));
        ASSERT_NE(nullptr, notice.findChild<QLabel*>());
        EXPECT_EQ("One moment", notice.findChild<QLabel*>()->text());
        EXPECT_EQ(nullptr, QApplication::activeModalWidget());
    }
    EXPECT_EQ(nullptr, parent.findChild<CWaitNotice*>());
}

} // namespace
