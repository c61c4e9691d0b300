#include "Docks/CSurfacesDock.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

#include "Docks/CSurfacesTree.h"

using namespace moxtexture;

namespace
{

struct Click
{
    std::string strName;
    uint32_t uiLevel, uiMember, uiFace;
    int iIndex; ///< as the dock gives it during the signal

    friend bool operator==(const Click& a, const Click& b)
    {
        return a.strName == b.strName && a.uiLevel == b.uiLevel && a.uiMember == b.uiMember && a.uiFace == b.uiFace && a.iIndex == b.iIndex;
    }
};

class SurfacesDock : public testing::Test
{
protected:
    SurfacesDock()
    {
        QObject::connect(&m_Dock, &CSurfacesDock::signalTextureClicked, &m_Dock,
                         [this](const QString& strName, uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                         {
                             m_aClicks.push_back({strName.toStdString(), uiLevel, uiMember, uiFace, m_Dock.getClickedIndex()});
                             m_Answer();
                         });
        m_Dock.resize(250, 500);
        m_Dock.show();
    }

    /// Titles are "Title of " and the name.
    void update(const QList<QString>& names)
    {
        QList<QString> titles;
        QList<CMOXTextureHeader*> headers;
        for (const QString& strName : names)
        {
            titles << "Title of " + strName;
            headers << &m_Header;
        }
        m_Dock.slotUpdateTextureList(titles, names, headers);
    }

    CSurfacesTree& tree() const { return *m_Dock.findChild<CSurfacesTree*>("Tree_Surfaces"); }
    void click(QTreeWidgetItem* pItem) const { tree().setCurrentItem(pItem); }

    CMOXTextureHeader m_Header{k_RGBA8, 8, 8, 1, 3, 4, 6, eCS_Linear, eCT_UnsignedNormalisedByte, false};
    CSurfacesDock m_Dock;
    std::vector<Click> m_aClicks;
    std::function<void()> m_Answer = [] {}; ///< what the listener does with a click
};

} // namespace

TEST_F(SurfacesDock, HasItsTitleAndTree)
{
    EXPECT_EQ("Surface Browser", m_Dock.windowTitle().toStdString());
    EXPECT_EQ("Surfaces_Dock", m_Dock.objectName().toStdString());
    EXPECT_NE(nullptr, m_Dock.findChild<CSurfacesTree*>("Tree_Surfaces"));
}

TEST_F(SurfacesDock, ShowsTheListThatItIsGiven)
{
    update({"a", "b"});
    ASSERT_EQ(2, tree().topLevelItemCount());
    EXPECT_EQ("Title of a (8 x 8)", tree().topLevelItem(0)->text(0).toStdString());
    EXPECT_EQ("b", tree().topLevelItem(1)->toolTip(0).toStdString());
    update({});
    EXPECT_EQ(0, tree().topLevelItemCount());
}

TEST_F(SurfacesDock, IgnoresListsOfDifferentLengths)
{
    update({"a"});
    m_Dock.slotUpdateTextureList({"x", "y"}, {"x"}, {&m_Header});
    m_Dock.slotUpdateTextureList({"x"}, {"x", "y"}, {&m_Header});
    m_Dock.slotUpdateTextureList({"x"}, {"x"}, {});
    m_Dock.slotUpdateTextureList({"x"}, {"x"}, {nullptr});
    ASSERT_EQ(1, tree().topLevelItemCount());
    EXPECT_EQ("a", tree().topLevelItem(0)->toolTip(0).toStdString());
}

TEST_F(SurfacesDock, ReadsHeadersDuringTheCallOnly)
{
    {
        CMOXTextureHeader header(k_RGBA8, 8, 8, 1, 2, 2000, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
        m_Dock.slotUpdateTextureList({"a"}, {"a"}, {&header});
    }
    tree().expandItem(tree().topLevelItem(0));
    tree().expandItem(tree().topLevelItem(0)->child(1));
    EXPECT_EQ(2000, tree().topLevelItem(0)->child(1)->childCount());
}

TEST_F(SurfacesDock, TellsTheSurfaceByTheDepthOfTheItem)
{
    update({"a", "b"});
    QTreeWidgetItem* pTop = tree().topLevelItem(1);
    click(pTop);
    click(pTop->child(2));
    click(pTop->child(2)->child(3));
    click(pTop->child(2)->child(3)->child(5));
    EXPECT_EQ((std::vector<Click>{{"b", 0, 0, 0, 1}, {"b", 2, 0, 0, 1}, {"b", 2, 3, 0, 1}, {"b", 2, 3, 5, 1}}), m_aClicks);
}

TEST_F(SurfacesDock, TellsNothingWhenTheSelectionGoes)
{
    update({"a"});
    click(tree().topLevelItem(0));
    tree().clearSelection();
    EXPECT_EQ(1u, m_aClicks.size());
    EXPECT_EQ(-1, m_Dock.getClickedIndex());
}

TEST_F(SurfacesDock, KnowsWhichOfTwoTexturesOfOneNameWasClicked)
{
    update({"same", "other", "same"});
    EXPECT_EQ(-1, m_Dock.getClickedIndex());
    click(tree().topLevelItem(2)->child(1));
    click(tree().topLevelItem(0));
    EXPECT_EQ((std::vector<Click>{{"same", 1, 0, 0, 2}, {"same", 0, 0, 0, 0}}), m_aClicks);
}

TEST_F(SurfacesDock, FindsTheClickedTextureInANewerListThanTheTreeShows)
{
    update({"a", "b"});
    click(tree().topLevelItem(1));
    update({"b"}); // the tree stays for now
    EXPECT_EQ(2, tree().topLevelItemCount());
    EXPECT_EQ(0, m_Dock.getClickedIndex());
    click(tree().topLevelItem(0));
    EXPECT_EQ(-1, m_Dock.getClickedIndex());
}

TEST_F(SurfacesDock, LeavesTheTreeToTheFirstUpdateAfterAClick)
{
    update({"a", "b"});
    QTreeWidgetItem* pItem = tree().topLevelItem(1)->child(1);
    click(pItem);
    update({"a", "b"});
    EXPECT_EQ(pItem, tree().topLevelItem(1)->child(1));
    EXPECT_TRUE(pItem->isSelected());
    QApplication::processEvents();
    EXPECT_TRUE(pItem->isSelected());

    update({"x", "a", "b"}); // but not to the second
    EXPECT_EQ(3, tree().topLevelItemCount());
}

TEST_F(SurfacesDock, LeavesTheTreeToUpdatesThatComeWhileAClickIsTold)
{
    update({"a", "b"});
    m_Answer = [this]
    {
        update({"a", "b"});
        update({"a", "b"});
    };
    QTreeWidgetItem* pItem = tree().topLevelItem(0)->child(1);
    click(pItem);
    QApplication::processEvents();
    EXPECT_EQ(pItem, tree().topLevelItem(0)->child(1));
    EXPECT_TRUE(pItem->isSelected());

    m_Answer = [] {};
    update({"a", "b", "c"}); // the click is over
    EXPECT_EQ(3, tree().topLevelItemCount());
}

// A click that no update follows must not swallow the next real one.
TEST_F(SurfacesDock, FollowsALateUpdateOnceTheEventLoopRuns)
{
    update({"a", "b"});
    click(tree().topLevelItem(1));
    QApplication::processEvents();
    update({"a", "b", "c"});
    EXPECT_EQ(2, tree().topLevelItemCount());
    QApplication::processEvents();
    EXPECT_EQ(3, tree().topLevelItemCount());
    update({});
    EXPECT_EQ(0, tree().topLevelItemCount());
}

TEST_F(SurfacesDock, DoesNotFollowALateUpdateThatIsOutdated)
{
    update({"a"});
    click(tree().topLevelItem(0));
    update({"a", "b"}); // late
    update({"a"});      // at once
    QTreeWidgetItem* pItem = tree().topLevelItem(0);
    QApplication::processEvents();
    EXPECT_EQ(1, tree().topLevelItemCount());
    EXPECT_EQ(pItem, tree().topLevelItem(0));
}

TEST_F(SurfacesDock, SeesEveryChangeThatTheTreeShows)
{
    CMOXTextureHeader changed = m_Header;
    const std::function<void()> aChanges[] = {[&] { changed.setWidth(9); }, [&] { changed.setHeight(9); },
                                              [&] { changed.setNumMIPLevels(1); }, [&] { changed.setNumArrayMembers(1); },
                                              [&] { changed.setNumFaces(1); }};
    for (const auto& change : aChanges)
    {
        update({"a"});
        tree().clearSelection(); // else the click would change nothing
        click(tree().topLevelItem(0));
        const QTreeWidgetItem* pItem = tree().topLevelItem(0);
        EXPECT_TRUE(pItem->isSelected());
        QSignalSpy changes(tree().model(), &QAbstractItemModel::rowsRemoved);
        change();
        m_Dock.slotUpdateTextureList({"Title of a"}, {"a"}, {&changed});
        EXPECT_EQ(0, changes.size());
        QApplication::processEvents();
        EXPECT_EQ(1, changes.size());
    }
}

TEST_F(SurfacesDock, KeepsTheSelectionThroughAnUpdateWithoutTellingIt)
{
    update({"a", "b"});
    click(tree().topLevelItem(1)->child(2)->child(3));
    update({"a", "b"}); // of the click itself
    ASSERT_EQ(1u, m_aClicks.size());

    m_Header.setWidth(100);
    m_Header.setHeight(40);
    update({"b"});
    ASSERT_EQ(1, tree().topLevelItemCount());
    EXPECT_EQ("Level 2: (25 x 10)", tree().topLevelItem(0)->child(2)->text(0).toStdString());
    EXPECT_TRUE(tree().topLevelItem(0)->child(2)->child(3)->isSelected());
    EXPECT_EQ(0, m_Dock.getClickedIndex());
    EXPECT_EQ(1u, m_aClicks.size());

    // Nor does what was restored keep the next update from being shown.
    update({"b", "c"});
    EXPECT_EQ(2, tree().topLevelItemCount());
}

// With another texture shown meanwhile, the selected surface must be within reach of a click.
TEST_F(SurfacesDock, TellsTheSelectedSurfaceAgainWhenItIsClickedAgain)
{
    update({"a", "b"});
    QTreeWidgetItem* pItem = tree().topLevelItem(1);
    for (const Qt::MouseButton eButton : {Qt::LeftButton, Qt::LeftButton, Qt::RightButton})
    {
        QTest::mouseClick(tree().viewport(), eButton, Qt::NoModifier, tree().visualItemRect(pItem).center());
        tree().findChild<QMenu*>()->hide();
        update({"a", "b"});
    }
    EXPECT_EQ((std::vector<Click>{{"b", 0, 0, 0, 1}, {"b", 0, 0, 0, 1}, {"b", 0, 0, 0, 1}}), m_aClicks);
}

TEST_F(SurfacesDock, ClosingAllWindowsEmptiesTheTreeEvenAfterAClick)
{
    update({"a"});
    click(tree().topLevelItem(0));
    update({});
    QApplication::processEvents();
    EXPECT_EQ(0, tree().topLevelItemCount());
    EXPECT_EQ(-1, m_Dock.getClickedIndex());
}

TEST_F(SurfacesDock, SelectsWhatIsClickedWithEitherButton)
{
    update({"a", "b"});
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, Qt::NoModifier, tree().visualItemRect(tree().topLevelItem(1)).center());
    QTest::mousePress(tree().viewport(), Qt::RightButton, Qt::NoModifier, tree().visualItemRect(tree().topLevelItem(0)).center());
    tree().findChild<QMenu*>()->hide();
    EXPECT_EQ((std::vector<Click>{{"b", 0, 0, 0, 1}, {"a", 0, 0, 0, 0}}), m_aClicks);
}

TEST_F(SurfacesDock, PassesOnTheMenuEntry)
{
    int iCalls = 0;
    QObject::connect(&m_Dock, &CSurfacesDock::signalLoadToCurrentSurface, &m_Dock, [&] { ++iCalls; });
    tree().findChild<QMenu*>()->actions().front()->trigger();
    EXPECT_EQ(1, iCalls);
}
