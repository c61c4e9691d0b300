#include "Docks/CSurfacesTree.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include <QtGui/QContextMenuEvent>
#include <QtGui/QHelpEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolTip>

#include "Support/SeededPictures.h"

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
    aTexts.reserve(static_cast<size_t>(pItem->childCount()));
    for (int i = 0; i < pItem->childCount(); ++i)
        aTexts.push_back(textOf(pItem->child(i)));
    return aTexts;
}

SurfacesTreeEntry entryOf(const QString& strName, const CMOXTextureHeader& header)
{
    return SurfacesTreeEntry(strName + " shown", strName, header);
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

    /// What is not hidden below closed items, from the top.
    std::vector<std::string> shownTexts() const
    {
        std::vector<std::string> aTexts;
        for (QTreeWidgetItem* pItem = m_Tree.topLevelItem(0); pItem != nullptr; pItem = m_Tree.itemBelow(pItem))
            aTexts.push_back(textOf(pItem));
        return aTexts;
    }

    /// All items with their tips, indented by depth.
    static std::vector<std::string> everyItem(const QTreeWidget& tree)
    {
        std::vector<std::string> aTexts;
        const std::function<void(const QTreeWidgetItem*, const std::string&)> add =
            [&](const QTreeWidgetItem* pItem, const std::string& str)
        {
            aTexts.push_back(str + textOf(pItem) + "|" + pItem->toolTip(0).toStdString());
            for (int i = 0; i < pItem->childCount(); ++i)
                add(pItem->child(i), str + "  ");
        };
        for (int i = 0; i < tree.topLevelItemCount(); ++i)
            add(tree.topLevelItem(i), "");
        return aTexts;
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

TEST_F(SurfacesTree, ShowsTheLastListAlone)
{
    showOne(makeHeader(2, 1, 1));
    m_Tree.setEntries({SurfacesTreeEntry("a", "a", makeHeader(1, 1, 1)), SurfacesTreeEntry("b", "b", makeHeader(1, 1, 1))});
    EXPECT_EQ((std::vector<std::string>{"a (64 x 16)", "b (64 x 16)"}), shownTexts());
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

TEST_F(SurfacesTree, LeavesItsItemsToAListThatIsTheSame)
{
    const std::vector<SurfacesTreeEntry> aEntries = {entryOf("a", makeHeader(3, 2, 6)), entryOf("b", makeHeader(2, 2000, 1))};
    m_Tree.setEntries(aEntries);
    m_Tree.expandItem(m_Tree.topLevelItem(1));
    m_Tree.expandItem(m_Tree.topLevelItem(1)->child(1));
    QList<QTreeWidgetItem*> items = m_Tree.findItems("*", Qt::MatchWildcard | Qt::MatchRecursive);
    ASSERT_EQ(2 + 3 + 6 + 36 + 2 + 2000, items.size());
    QSignalSpy inserted(m_Tree.model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(m_Tree.model(), &QAbstractItemModel::rowsRemoved);
    m_Tree.setEntries(std::vector<SurfacesTreeEntry>(aEntries));
    EXPECT_EQ(items, m_Tree.findItems("*", Qt::MatchWildcard | Qt::MatchRecursive));
    EXPECT_EQ(0, inserted.size() + removed.size());
}

TEST_F(SurfacesTree, KeepsWhatIsOpenAndSelectedWhenASizeChanges)
{
    m_Tree.setEntries({entryOf("a", makeHeader(1, 1, 1)), entryOf("b", makeHeader(3, 2, 6))});
    QTreeWidgetItem* pTop = m_Tree.topLevelItem(1);
    m_Tree.expandItem(pTop);
    m_Tree.expandItem(pTop->child(1));
    m_Tree.expandItem(pTop->child(2));
    m_Tree.setCurrentItem(pTop->child(1)->child(1));
    QSignalSpy selections(&m_Tree, &QTreeWidget::itemSelectionChanged);
    int iCurrents = 0;
    QObject::connect(&m_Tree, &QTreeWidget::currentItemChanged, &m_Tree, [&] { ++iCurrents; });
    QSignalSpy again(&m_Tree, &CSurfacesTree::signalSelectedAgain);

    m_Tree.setEntries({entryOf("a", makeHeader(1, 1, 1)), entryOf("b", makeHeader(3, 2, 6, 100, 40))});
    EXPECT_EQ((std::vector<std::string>{"a shown (64 x 16)", "b shown (100 x 40)", "Level 0: (100 x 40)", "Level 1: (50 x 20)", "Surface 0",
                                        "Surface 1", "Level 2: (25 x 10)", "Surface 0", "Surface 1"}),
              shownTexts());
    QTreeWidgetItem* pSelected = m_Tree.topLevelItem(1)->child(1)->child(1);
    EXPECT_EQ(QList<QTreeWidgetItem*>({pSelected}), m_Tree.selectedItems());
    EXPECT_EQ(pSelected, m_Tree.currentItem());
    EXPECT_EQ(0, selections.size() + iCurrents + again.size());
}

TEST_F(SurfacesTree, KeepsTheItemsOfATextureThatIsOnlyRenamed)
{
    m_Tree.setEntries({SurfacesTreeEntry("a", "/a", makeHeader(2, 1, 1))});
    QTreeWidgetItem* pTop = m_Tree.topLevelItem(0);
    QTreeWidgetItem* pLevel = pTop->child(1);
    m_Tree.setCurrentItem(pLevel);
    m_Tree.setEntries({SurfacesTreeEntry("a *", "/a", makeHeader(2, 1, 1))});
    EXPECT_EQ("a * (64 x 16)", textOf(pTop));
    EXPECT_EQ(pLevel, m_Tree.topLevelItem(0)->child(1));
    EXPECT_TRUE(pLevel->isSelected());
}

TEST_F(SurfacesTree, RenamesFacesWithTheTexturesOrder)
{
    CMOXTextureHeader header = makeHeader(1, 1, 2);
    QTreeWidgetItem* pTop = showOne(header);
    header.addMetaData(MetaDataBlock(CMOXTextureHeader::k_ui32NativeFourCC, eMetaDataCubeMapOrder, "zY", 2));
    EXPECT_EQ(pTop, showOne(header));
    EXPECT_EQ((std::vector<std::string>{"Face -Z", "Face +Y"}), childTexts(pTop->child(0)->child(0)));
}

TEST_F(SurfacesTree, KeepsTheOthersAsTheyAreWhenOneIsClosed)
{
    const SurfacesTreeEntry a = entryOf("a", makeHeader(2, 1, 1)), b = entryOf("b", makeHeader(3, 1, 1)),
                            c = entryOf("c", makeHeader(2, 1, 1));
    m_Tree.setEntries({a, b, c});
    m_Tree.expandItem(m_Tree.topLevelItem(0));
    m_Tree.expandItem(m_Tree.topLevelItem(1));
    m_Tree.setCurrentItem(m_Tree.topLevelItem(1)->child(2));
    m_Tree.setEntries({b, c});
    EXPECT_EQ((std::vector<std::string>{"b shown (64 x 16)", "Level 0: (64 x 16)", "Level 1: (32 x 8)", "Level 2: (16 x 4)",
                                        "c shown (64 x 16)"}),
              shownTexts());
    EXPECT_EQ(QList<QTreeWidgetItem*>({m_Tree.topLevelItem(0)->child(2)}), m_Tree.selectedItems());
}

TEST_F(SurfacesTree, SelectsNothingInPlaceOfATextureThatIsClosed)
{
    const SurfacesTreeEntry a = entryOf("a", makeHeader(2, 1, 1)), b = entryOf("b", makeHeader(2, 1, 1));
    m_Tree.setEntries({a, b});
    m_Tree.setCurrentItem(m_Tree.topLevelItem(0)->child(1));
    QSignalSpy selections(&m_Tree, &QTreeWidget::itemSelectionChanged);
    m_Tree.setEntries({b});
    EXPECT_TRUE(m_Tree.selectedItems().isEmpty());
    EXPECT_EQ(nullptr, m_Tree.currentItem());
    EXPECT_EQ(0, selections.size());
}

TEST_F(SurfacesTree, TellsTexturesOfOneNameApartByTheirOrder)
{
    const SurfacesTreeEntry same = entryOf("same", makeHeader(2, 1, 1)), other = entryOf("other", makeHeader(2, 1, 1));
    m_Tree.setEntries({same, other, same});
    m_Tree.expandItem(m_Tree.topLevelItem(2));
    m_Tree.setEntries({other, same});
    EXPECT_TRUE(m_Tree.topLevelItem(1)->isExpanded());
    m_Tree.setEntries({other, same, same});
    EXPECT_TRUE(m_Tree.topLevelItem(1)->isExpanded());
    EXPECT_FALSE(m_Tree.topLevelItem(2)->isExpanded());
}

TEST_F(SurfacesTree, SelectsNothingInPlaceOfALevelThatIsGone)
{
    m_Tree.setEntries({entryOf("a", makeHeader(3, 1, 1))});
    m_Tree.expandItem(m_Tree.topLevelItem(0));
    m_Tree.setCurrentItem(m_Tree.topLevelItem(0)->child(2));
    m_Tree.setEntries({entryOf("a", makeHeader(2, 1, 1))});
    EXPECT_TRUE(m_Tree.selectedItems().isEmpty());
    EXPECT_EQ(m_Tree.topLevelItem(0), m_Tree.currentItem()); // where keys go on from
    EXPECT_TRUE(m_Tree.topLevelItem(0)->isExpanded());
    m_Tree.setEntries({entryOf("a", makeHeader(1, 1, 1))});
    EXPECT_EQ((std::vector<std::string>{"a shown (64 x 16)"}), shownTexts());
}

TEST_F(SurfacesTree, KeepsASelectionBelowAClosedItemWithoutOpeningIt)
{
    m_Tree.setEntries({entryOf("a", makeHeader(2, 2000, 1))});
    m_Tree.expandItem(m_Tree.topLevelItem(0));
    m_Tree.expandItem(m_Tree.topLevelItem(0)->child(1));
    m_Tree.setCurrentItem(m_Tree.topLevelItem(0)->child(1)->child(1999));
    m_Tree.collapseItem(m_Tree.topLevelItem(0)->child(1));
    const QTreeWidgetItem* pCurrent = m_Tree.currentItem();
    ASSERT_EQ("Surface 1999", textOf(pCurrent));
    m_Tree.setEntries({entryOf("a", makeHeader(2, 2000, 1, 8, 8))});
    EXPECT_EQ((std::vector<std::string>{"a shown (8 x 8)", "Level 0: (8 x 8)", "Level 1: (4 x 4)"}), shownTexts());
    EXPECT_TRUE(m_Tree.topLevelItem(0)->child(1)->child(1999)->isSelected());
}

TEST_F(SurfacesTree, StaysWhereItIsScrolledTo)
{
    m_Tree.setEntries({entryOf("a", makeHeader(2, 200, 1))});
    m_Tree.expandAll();
    m_Tree.setCurrentItem(m_Tree.topLevelItem(0));
    m_Tree.verticalScrollBar()->setValue(m_Tree.verticalScrollBar()->maximum() / 2);
    const int iScroll = m_Tree.verticalScrollBar()->value();
    ASSERT_GT(iScroll, 0);
    m_Tree.setEntries({entryOf("a", makeHeader(2, 200, 1, 8, 8))});
    QApplication::processEvents();
    EXPECT_EQ(iScroll, m_Tree.verticalScrollBar()->value());
    EXPECT_TRUE(m_Tree.hasAutoScroll());
}

TEST_F(SurfacesTree, StaysBoundedWhenWhatWasOpenIsOpenedAgain)
{
    // Two levels of 40000 members can't both be listed whole: 65536 - 2 - 40000 = 25534 are left to the second.
    m_Tree.setEntries({entryOf("a", makeHeader(2, 40000, 1))});
    for (int i = 0; i < 2; ++i)
        m_Tree.expandItem(m_Tree.topLevelItem(0)->child(i));
    for (const uint32_t uiWidth : {10u, 20u})
    {
        m_Tree.setEntries({entryOf("a", makeHeader(2, 40000, 1, uiWidth))});
        EXPECT_EQ(40000, m_Tree.topLevelItem(0)->child(0)->childCount());
        EXPECT_EQ(25534 + 1, m_Tree.topLevelItem(0)->child(1)->childCount());
    }
    // An item of a list that is shorter now is not mistaken for the note at its end.
    m_Tree.setCurrentItem(m_Tree.topLevelItem(0)->child(1)->child(25533));
    m_Tree.setEntries({entryOf("a", makeHeader(3, 40000, 1))});
    EXPECT_EQ("14467 more are not listed", textOf(m_Tree.topLevelItem(0)->child(1)->child(25533)));
    EXPECT_TRUE(m_Tree.selectedItems().isEmpty());
}

TEST_F(SurfacesTree, KeepsTheBoundOfATextureWhoseNeighbourIsClosed)
{
    const SurfacesTreeEntry a = entryOf("a", makeHeader(1, 1, 1)), b = entryOf("b", makeHeader(2, 40000, 1));
    m_Tree.setEntries({a, b});
    m_Tree.expandItem(m_Tree.topLevelItem(1)->child(0));
    m_Tree.setEntries({b});
    m_Tree.expandItem(m_Tree.topLevelItem(0)->child(1));
    EXPECT_EQ(25534 + 1, m_Tree.topLevelItem(0)->child(1)->childCount());
}

TEST_F(SurfacesTree, HoldsWhatANewTreeHoldsAfterAnyChange)
{
    testsupport::CSeededRandom random(97);
    std::vector<SurfacesTreeEntry> aEntries;
    for (int iRound = 0; iRound < 300; ++iRound)
    {
        const auto uiPlace = static_cast<std::ptrdiff_t>(random.below(static_cast<uint32_t>(aEntries.size()) + 1));
        const CMOXTextureHeader header =
            makeHeader(1 + random.below(4), 1 + random.below(3), 1 + random.below(6), 1 + random.below(64), 1 + random.below(64));
        const SurfacesTreeEntry entry = entryOf("name " + QString::number(random.below(4)), header);
        if (random.below(3) == 0 && aEntries.size() < 6)
            aEntries.insert(aEntries.begin() + uiPlace, entry);
        else if (static_cast<size_t>(uiPlace) < aEntries.size() && random.below(2) == 0)
            aEntries[static_cast<size_t>(uiPlace)] = entry;
        else if (static_cast<size_t>(uiPlace) < aEntries.size())
            aEntries.erase(aEntries.begin() + uiPlace);

        m_Tree.setEntries(aEntries);
        CSurfacesTree fresh;
        fresh.setEntries(aEntries);
        ASSERT_EQ(everyItem(fresh), everyItem(m_Tree)) << "round " << iRound;

        const QList<QTreeWidgetItem*> items = m_Tree.findItems("*", Qt::MatchWildcard | Qt::MatchRecursive);
        for (int i = 0; i < 3 && !items.isEmpty(); ++i)
            m_Tree.expandItem(items[static_cast<int>(random.below(static_cast<uint32_t>(items.size())))]);
        if (!items.isEmpty())
            m_Tree.setCurrentItem(items[static_cast<int>(random.below(static_cast<uint32_t>(items.size())))]);
    }
}

TEST_F(SurfacesTree, TellsOfThePressOnTheSelectedItemAlone)
{
    m_Tree.setEntries({entryOf("a", makeHeader(2, 1, 1)), entryOf("b", makeHeader(1, 1, 1))});
    QSignalSpy again(&m_Tree, &CSurfacesTree::signalSelectedAgain);
    const QTreeWidgetItem* pItem = m_Tree.topLevelItem(0);
    QTest::mousePress(m_Tree.viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(pItem));
    EXPECT_EQ(0, again.size()); // selected by this press
    QTest::mousePress(m_Tree.viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(pItem));
    EXPECT_EQ(1, again.size());
    QTest::mousePress(m_Tree.viewport(), Qt::RightButton, Qt::NoModifier, placeOf(pItem));
    menu().hide();
    EXPECT_EQ(2, again.size());

    // The arrow opens the item, and nothing else.
    const QPoint arrow(m_Tree.visualItemRect(pItem).left() - m_Tree.indentation() / 2, placeOf(pItem).y());
    QTest::mouseClick(m_Tree.viewport(), Qt::LeftButton, Qt::NoModifier, arrow);
    EXPECT_TRUE(pItem->isExpanded());
    EXPECT_EQ(2, again.size());
    QTest::mousePress(m_Tree.viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(m_Tree.topLevelItem(1)));
    EXPECT_EQ(2, again.size());
}

TEST_F(SurfacesTree, TellsOfTheEnterAndMenuKeysOnTheSelectedItem)
{
    m_Tree.setCurrentItem(showOne(makeHeader(2, 1, 1)));
    QSignalSpy again(&m_Tree, &CSurfacesTree::signalSelectedAgain);
    QTest::keyClick(&m_Tree, Qt::Key_Return);
    EXPECT_EQ(1, again.size());
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(m_Tree.viewport(), &event);
    menu().hide();
    EXPECT_EQ(2, again.size());
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

TEST_F(SurfacesTree, SelectsWhatItsMenuIsForBesideTheItemToo)
{
    m_Tree.setEntries({entryOf("a", makeHeader(2, 1, 1)), entryOf("b", makeHeader(2, 1, 1))});
    m_Tree.setCurrentItem(m_Tree.topLevelItem(0));
    const QTreeWidgetItem* pItem = m_Tree.topLevelItem(1);
    const QPoint arrow(m_Tree.visualItemRect(pItem).left() - m_Tree.indentation() / 2, placeOf(pItem).y());
    QTest::mousePress(m_Tree.viewport(), Qt::RightButton, Qt::NoModifier, arrow);
    EXPECT_TRUE(menu().isVisible());
    menu().hide();
    EXPECT_TRUE(pItem->isSelected());
    EXPECT_FALSE(m_Tree.topLevelItem(0)->isSelected());
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
