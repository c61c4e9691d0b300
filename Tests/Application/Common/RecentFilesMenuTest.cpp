#include "Common/RecentFilesMenu.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolTip>
#include <gtest/gtest.h>

#include "Common/RecentFiles.h"

namespace
{

/// An open menu of one recent file and one other entry, both with a tool tip.
class RecentFilesMenuTips : public testing::Test
{
protected:
    RecentFilesMenuTips() : m_Menu("Open Recent")
    {
        m_pRecent = addAction("/pictures/photo.png");
        m_pRecent->setProperty(k_acRecentFileProperty, "/pictures/photo.png");
        m_pOther = addAction("another tip");
        m_Menu.popup({10, 10});
    }
    ~RecentFilesMenuTips() override { QToolTip::hideText(); }

    QAction* addAction(const QString& strToolTip)
    {
        QAction* pAction = m_Menu.addAction("entry");
        pAction->setToolTip(strToolTip);
        return pAction;
    }

    /// As the window system asks for a tool tip where the mouse rests.
    bool askForTip()
    {
        QHelpEvent event(QEvent::ToolTip, {1, 1}, {50, 60});
        event.ignore();
        const bool bDone = QCoreApplication::sendEvent(&m_Menu, &event);
        m_bAccepted = event.isAccepted();
        return bDone;
    }

    void moveMouse(const QPoint& place)
    {
        QMouseEvent event(QEvent::MouseMove, place, m_Menu.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&m_Menu, &event);
    }

    RecentFilesMenu m_Menu;
    QAction* m_pRecent;
    QAction* m_pOther;
    bool m_bAccepted = false;
};

} // namespace

TEST_F(RecentFilesMenuTips, BearsItsTitle)
{
    EXPECT_EQ("Open Recent", m_Menu.title());
}

TEST_F(RecentFilesMenuTips, ShowsThePathOfTheActiveRecentFile)
{
    m_Menu.setActiveAction(m_pRecent);
    EXPECT_TRUE(askForTip());
    EXPECT_EQ("/pictures/photo.png", QToolTip::text());
}

TEST_F(RecentFilesMenuTips, ShowsAPathLetterByLetter)
{
    m_pRecent->setToolTip("/pictures/<b>bold</b>.png");
    m_Menu.setActiveAction(m_pRecent);
    EXPECT_TRUE(askForTip());
    EXPECT_EQ("/pictures/&lt;b&gt;bold&lt;/b&gt;.png", QToolTip::text());
}

TEST_F(RecentFilesMenuTips, HidesTheTipOverAnotherEntry)
{
    m_Menu.setActiveAction(m_pRecent);
    askForTip();
    m_Menu.setActiveAction(m_pOther);
    askForTip();
    EXPECT_FALSE(m_bAccepted);
    // Qt hides a tip only after a while.
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
}

TEST_F(RecentFilesMenuTips, ShowsNothingWithoutAnActiveEntry)
{
    m_Menu.setActiveAction(nullptr);
    askForTip();
    EXPECT_FALSE(m_bAccepted);
    EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(RecentFilesMenuTips, KeepsTheActiveEntryWhileTheMouseIsOverIt)
{
    moveMouse(m_Menu.actionGeometry(m_pRecent).center());
    EXPECT_EQ(m_pRecent, m_Menu.activeAction());
    moveMouse(m_Menu.actionGeometry(m_pRecent).center() + QPoint(1, 0));
    EXPECT_EQ(m_pRecent, m_Menu.activeAction());
}

TEST_F(RecentFilesMenuTips, NoEntryStaysActiveOnceTheMouseHasLeftIt)
{
    moveMouse(m_Menu.actionGeometry(m_pRecent).center());
    askForTip();
    moveMouse({m_Menu.width() + 100, m_Menu.height() + 100});
    EXPECT_EQ(nullptr, m_Menu.activeAction());
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
}
