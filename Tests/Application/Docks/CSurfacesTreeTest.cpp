#include "Docks/CSurfacesTree.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include <QtGui/QContextMenuEvent>
#include <QtGui/QHelpEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolTip>

using namespace moxtexture;

namespace
{

CMOXTextureHeader makeHeader(uint32_t uiLevels, uint32_t uiMembers, uint32_t uiFaces, uint32_t uiWidth = 64, uint32_t uiHeight = 16)
{
    return CMOXTextureHeader(k_RGBA8, uiHeight, uiWidth, 1, uiLevels, uiMembers, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte, false);
}

std::string textOf(const QTreeWidgetItem* pItem)
{
    return pItem->text(0).toStdString();
}

std::vector<std::string> childTexts(const QTreeWidgetItem* pItem)
{
    std::vector<std::string> aTexts;
    for (int i = 0; i < pItem->childCount(); ++i)
        aTexts.push_back(textOf(pItem->child(i)));
    return aTexts;
}

/// All items below one, itself left out.
int countItems(const QTreeWidgetItem* pItem)
{
    int iCount = pItem->childCount();
    for (int i = 0; i < pItem->childCount(); ++i)
        iCount += countItems(pItem->child(i));
    return iCount;
}

class SurfacesTree : public testing::Test
{
protected:
    SurfacesTree()
    {
        m_Tree.resize(250, 400);
        m_Tree.show();
    }

    QTreeWidgetItem* showOne(const CMOXTextureHeader& header)
    {
        m_Tree.setEntries({SurfacesTreeEntry("name", "/full/name", header)});
        return m_Tree.topLevelItem(0);
    }

    QMenu& menu() const { return *m_Tree.findChild<QMenu*>(); }
    QPoint placeOf(const QTreeWidgetItem* pItem) const { return m_Tree.visualItemRect(pItem).center(); }

    CSurfacesTree m_Tree;
};

} // namespace

TEST_F(SurfacesTree, HasNoHeader)
{
    EXPECT_TRUE(m_Tree.isHeaderHidden());
    EXPECT_EQ(1, m_Tree.columnCount());
}

TEST_F(SurfacesTree, NamesATextureWithItsSizeAndTipsItsFullName)
{
    const QTreeWidgetItem* pItem = showOne(makeHeader(1, 1, 1));
    EXPECT_EQ("name (64 x 16)", textOf(pItem));
    EXPECT_EQ("/full/name", pItem->toolTip(0).toStdString());
}

TEST_F(SurfacesTree, TakesPercentSignsOfANameAsTheyAre)
{
    m_Tree.setEntries({SurfacesTreeEntry("100%d %1 %n", "x", makeHeader(1, 1, 1))});
    EXPECT_EQ("100%d %1 %n (64 x 16)", textOf(m_Tree.topLevelItem(0)));
}

TEST_F(SurfacesTree, OfAPlainTextureHasNoChildren)
{
    const QTreeWidgetItem* pItem = showOne(makeHeader(1, 1, 1));
    EXPECT_EQ(0, pItem->childCount());
}

TEST_F(SurfacesTree, ListsLevelsWithTheirSizes)
{
    const QTreeWidgetItem* pItem = showOne(makeHeader(7, 1, 1));
    EXPECT_EQ((std::vector<std::string>{"Level 0: (64 x 16)", "Level 1: (32 x 8)", "Level 2: (16 x 4)", "Level 3: (8 x 2)",
                                        "Level 4: (4 x 1)", "Level 5: (2 x 1)", "Level 6: (1 x 1)"}),
              childTexts(pItem));
    EXPECT_EQ(7, countItems(pItem));
}

TEST_F(SurfacesTree, OfACubeWithOneLevelHasOneLevelOneSurfaceAndSixFaces)
{
    const QTreeWidgetItem* pItem = showOne(makeHeader(1, 1, 6));
    EXPECT_EQ((std::vector<std::string>{"Level 0: (64 x 16)"}), childTexts(pItem));
    EXPECT_EQ((std::vector<std::string>{"Surface 0"}), childTexts(pItem->child(0)));
    EXPECT_EQ((std::vector<std::string>{"Face +X", "Face -X", "Face +Y", "Face -Y", "Face +Z", "Face -Z"}),
              childTexts(pItem->child(0)->child(0)));
}

TEST_F(SurfacesTree, NamesFacesByTheTexturesOwnOrder)
{
    CMOXTextureHeader header = makeHeader(1, 1, 3);
    header.addMetaData(MetaDataBlock(CMOXTextureHeader::k_ui32NativeFourCC, eMetaDataCubeMapOrder, "zY", 2));
    const QTreeWidgetItem* pItem = showOne(header);
    EXPECT_EQ((std::vector<std::string>{"Face -Z", "Face +Y", "Face N/A"}), childTexts(pItem->child(0)->child(0)));
}

TEST_F(SurfacesTree, OfAnArrayHasSurfacesWithoutFacesUnderEachLevel)
{
    const QTreeWidgetItem* pItem = showOne(makeHeader(2, 3, 1));
    ASSERT_EQ(2, pItem->childCount());
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ((std::vector<std::string>{"Surface 0", "Surface 1", "Surface 2"}), childTexts(pItem->child(i)));
    EXPECT_EQ(8, countItems(pItem));
}

TEST_F(SurfacesTree, IsBuiltAnewWithEveryList)
{
    showOne(makeHeader(2, 1, 1));
    m_Tree.setEntries({SurfacesTreeEntry("a", "a", makeHeader(1, 1, 1)), SurfacesTreeEntry("b", "b", makeHeader(1, 1, 1))});
    EXPECT_EQ(2, m_Tree.topLevelItemCount());
    m_Tree.setEntries({});
    EXPECT_EQ(0, m_Tree.topLevelItemCount());
}

TEST_F(SurfacesTree, FillsALargeTextureWhenItIsOpened)
{
    QTreeWidgetItem* pItem = showOne(makeHeader(12, 2048, 6));
    EXPECT_EQ(12, countItems(pItem));
    QTreeWidgetItem* pLevel = pItem->child(3);
    EXPECT_EQ(QTreeWidgetItem::ShowIndicator, pLevel->childIndicatorPolicy());
    m_Tree.expandItem(pItem);
    m_Tree.expandItem(pLevel);
    ASSERT_EQ(2048, pLevel->childCount());
    EXPECT_EQ("Surface 2047", textOf(pLevel->child(2047)));
    m_Tree.expandItem(pLevel->child(5));
    EXPECT_EQ((std::vector<std::string>{"Face +X", "Face -X", "Face +Y", "Face -Y", "Face +Z", "Face -Z"}), childTexts(pLevel->child(5)));
    // Closing and opening once more adds nothing.
    m_Tree.collapseItem(pLevel);
    m_Tree.expandItem(pLevel);
    EXPECT_EQ(12 + 2048 + 6, countItems(pItem));
}

TEST_F(SurfacesTree, OpensALargeTextureByItsArrowAndByKeys)
{
    QTreeWidgetItem* pItem = showOne(makeHeader(2, 2000, 1));
    m_Tree.setCurrentItem(pItem);
    QTest::keyClick(&m_Tree, Qt::Key_Right); // opens
    QTest::keyClick(&m_Tree, Qt::Key_Down);  // the first level
    QTest::keyClick(&m_Tree, Qt::Key_Right);
    EXPECT_EQ(2000, pItem->child(0)->childCount());
    EXPECT_EQ(0, pItem->child(1)->childCount());
}

TEST_F(SurfacesTree, FillsAllThatTheAsteriskOpens)
{
    QTreeWidgetItem* pItem = showOne(makeHeader(2, 2000, 1));
    m_Tree.setCurrentItem(pItem);
    QTest::keyClick(&m_Tree, Qt::Key_Asterisk);
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_TRUE(pItem->child(i)->isExpanded());
        EXPECT_EQ(2000, pItem->child(i)->childCount());
    }
}

TEST_F(SurfacesTree, IsBoundedWhateverAHeaderClaims)
{
    const uint32_t uiHuge = 0xFFFFFFFF;
    for (const CMOXTextureHeader& header :
         {makeHeader(uiHuge, 1, 1), makeHeader(1, 1000000, 1), makeHeader(1, 1, uiHuge), makeHeader(uiHuge, uiHuge, uiHuge)})
    {
        QTreeWidgetItem* pItem = showOne(header);
        const std::function<void(QTreeWidgetItem*)> openFirst = [&](QTreeWidgetItem* pParent)
        {
            m_Tree.expandItem(pParent);
            for (int i = 0; i < std::min(3, pParent->childCount()); ++i)
                openFirst(pParent->child(i));
        };
        openFirst(pItem);
        EXPECT_LE(countItems(pItem), static_cast<int>(CSurfacesTree::k_uiMaxItems) + 100); // some notes beside the items
        EXPECT_GE(countItems(pItem), static_cast<int>(CSurfacesTree::k_uiMaxItems));
    }
}

TEST_F(SurfacesTree, TellsWhatItLeavesOutInAnItemThatCannotBeChosen)
{
    QTreeWidgetItem* pItem = showOne(makeHeader(1, 1000000, 1));
    m_Tree.expandItem(pItem->child(0));
    const QTreeWidgetItem* pLevel = pItem->child(0);
    // One item of the budget is the level, so 65535 members are listed.
    ASSERT_EQ(65535 + 1, pLevel->childCount());
    EXPECT_EQ("Surface 65534", textOf(pLevel->child(65534)));
    QTreeWidgetItem* pNote = pLevel->child(65535);
    EXPECT_EQ("934465 more are not listed", textOf(pNote));
    EXPECT_EQ(Qt::NoItemFlags, pNote->flags() & (Qt::ItemIsSelectable | Qt::ItemIsEnabled));
    m_Tree.setCurrentItem(pNote);
    EXPECT_TRUE(m_Tree.selectedItems().isEmpty());
}

TEST_F(SurfacesTree, OfATextureWithoutLevelsHasNoChildren)
{
    const QTreeWidgetItem* pItem = showOne(makeHeader(0, 5, 6));
    EXPECT_EQ(0, pItem->childCount());
    EXPECT_EQ("name (0 x 0)", textOf(pItem));
}

TEST_F(SurfacesTree, OpensItsMenuWithTheRightButtonOverAnItem)
{
    const QTreeWidgetItem* pItem = showOne(makeHeader(1, 1, 1));
    QTest::mousePress(m_Tree.viewport(), Qt::RightButton, Qt::NoModifier, placeOf(pItem));
    EXPECT_TRUE(menu().isVisible());
    EXPECT_TRUE(pItem->isSelected());
    ASSERT_EQ(1, menu().actions().size());
    EXPECT_EQ("Load file to surface...", menu().actions().front()->text().toStdString());
    menu().hide();
}

TEST_F(SurfacesTree, HidesItsMenuWithAnyOtherPress)
{
    const QTreeWidgetItem* pItem = showOne(makeHeader(1, 1, 1));
    QTest::mousePress(m_Tree.viewport(), Qt::RightButton, Qt::NoModifier, placeOf(pItem));
    QTest::mousePress(m_Tree.viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(pItem));
    EXPECT_FALSE(menu().isVisible());

    QTest::mousePress(m_Tree.viewport(), Qt::RightButton, Qt::NoModifier, placeOf(pItem));
    QTest::mousePress(m_Tree.viewport(), Qt::RightButton, Qt::NoModifier, QPoint(100, 390)); // below all items
    EXPECT_FALSE(menu().isVisible());
}

TEST_F(SurfacesTree, OpensItsMenuByTheMenuKeyToo)
{
    const QTreeWidgetItem* pItem = showOne(makeHeader(1, 1, 1));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(m_Tree.viewport(), &event);
    EXPECT_FALSE(menu().isVisible()); // nothing selected
    m_Tree.setCurrentItem(const_cast<QTreeWidgetItem*>(pItem));
    QApplication::sendEvent(m_Tree.viewport(), &event);
    EXPECT_TRUE(menu().isVisible());
    menu().hide();
}

TEST_F(SurfacesTree, TellsOfItsMenuEntry)
{
    int iCalls = 0;
    QObject::connect(&m_Tree, &CSurfacesTree::signalLoadToCurrentSurface, &m_Tree, [&] { ++iCalls; });
    menu().actions().front()->trigger();
    EXPECT_EQ(1, iCalls);
}

TEST_F(SurfacesTree, TipsNamesLetterByLetter)
{
    m_Tree.setEntries({SurfacesTreeEntry("name", "/a/<b>bold</b>", makeHeader(1, 1, 1))});
    const QPoint place = placeOf(m_Tree.topLevelItem(0));
    QHelpEvent event(QEvent::ToolTip, place, m_Tree.viewport()->mapToGlobal(place));
    QApplication::sendEvent(m_Tree.viewport(), &event);
    EXPECT_TRUE(QToolTip::text().contains("&lt;b&gt;")) << QToolTip::text().toStdString();
    QToolTip::hideText();
}
