#include "Docks/CSurfacesTree.h"

#include <algorithm>
#include <utility>

#include <QtCore/QSignalBlocker>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>

#include "Docks/CSurfaceTitleDelegate.h"
#include "Docks/PlainToolTip.h"
#include "Formats/FormatNames.h"

namespace
{

constexpr int k_iIndentation = 14; // four levels in a narrow column

/// Depths in the tree, counted from the top.
enum EDepth : uint32_t
{
    eDepthTexture = 1,
    eDepthLevel = 2,
    eDepthMember = 3,
    eDepthFace = 4,
};

uint32_t getDepth(const QTreeWidgetItem* pItem)
{
    uint32_t uiDepth = 0;
    for (; pItem != nullptr; pItem = pItem->parent())
        ++uiDepth;
    return uiDepth;
}

/// How many items belong below one of that depth.
uint32_t countChildren(const SurfacesTreeEntry& entry, uint32_t uiDepth)
{
    const moxtexture::CMOXTextureHeader& shape = entry.shape;
    switch (uiDepth)
    {
    case eDepthTexture:
        return entry.hasSurfaces() ? shape.getNumMIPLevels() : 0;
    case eDepthLevel:
        return entry.hasMembers() ? shape.getNumArrayMembers() : 0;
    case eDepthMember:
        return shape.getNumFaces() > 1 ? shape.getNumFaces() : 0;
    default:
        return 0;
    }
}

QString getChildText(const SurfacesTreeEntry& entry, uint32_t uiDepth, uint32_t uiIndex)
{
    switch (uiDepth)
    {
    case eDepthTexture:
        return QString::asprintf("Level %u: (%u x %u)", uiIndex, entry.shape.getWidth(uiIndex), entry.shape.getHeight(uiIndex));
    case eDepthLevel:
        return QString::asprintf("Surface %d", static_cast<int>(uiIndex));
    default:
        return "Face " + QString::fromStdString(moxtexture::getCubeFaceName(uiIndex, entry.strCubeMapOrder));
    }
}

/// True where all items of a texture together are no more than uiLimit.
bool hasFewItems(const SurfacesTreeEntry& entry, uint64_t ui64Limit)
{
    // Each count is cut first, so that the products stay far below 2^64.
    const auto count = [&](uint32_t uiDepth) { return std::min<uint64_t>(countChildren(entry, uiDepth), ui64Limit + 1); };
    return count(eDepthTexture) * (1 + count(eDepthLevel) * (1 + count(eDepthMember))) <= ui64Limit;
}

QTreeWidgetItem* makeNote(uint32_t uiLeftOut)
{
    auto* pNote = new QTreeWidgetItem({QString::asprintf("%u more are not listed", uiLeftOut)});
    pNote->setFlags(Qt::NoItemFlags);
    return pNote;
}

QString getTitle(const SurfacesTreeEntry& entry)
{
    return entry.strName +
           QString::asprintf(" (%d x %d)", static_cast<int>(entry.shape.getWidth()), static_cast<int>(entry.shape.getHeight()));
}

constexpr size_t k_uiNoPlace = SIZE_MAX;

/// Of each new entry where the same texture stood, or k_uiNoPlace. The places grow: textures come at the end and go anywhere, but
/// never change their order.
std::vector<size_t> findOldPlaces(const std::vector<SurfacesTreeEntry>& aOld, const std::vector<SurfacesTreeEntry>& aNew)
{
    std::vector<size_t> auiPlaces(aNew.size(), k_uiNoPlace);
    auto from = aOld.begin();
    for (size_t i = 0; i < aNew.size(); ++i)
    {
        const auto found = std::find_if(from, aOld.end(), [&](const auto& old) { return old.strFullName == aNew[i].strFullName; });
        if (found == aOld.end())
            continue;
        auiPlaces[i] = static_cast<size_t>(found - aOld.begin());
        from = found + 1;
    }
    return auiPlaces;
}

/// The paths of all open items below one, parents before their children.
void collectOpenPaths(const QTreeWidgetItem& item, std::vector<int>& aiPath, std::vector<std::vector<int>>& aPaths)
{
    for (int i = 0; i < item.childCount(); ++i)
    {
        if (item.child(i)->childCount() == 0)
            continue; // isExpanded() searches all items beside it, which takes long for each of many
        aiPath.push_back(i);
        if (item.child(i)->isExpanded())
            aPaths.push_back(aiPath);
        collectOpenPaths(*item.child(i), aiPath, aPaths);
        aiPath.pop_back();
    }
}

} // namespace

CSurfacesTree::CSurfacesTree(QWidget* pParent)
    : QTreeWidget(pParent), m_pMenu(new QMenu(this)), m_pLoadAction(m_pMenu->addAction("Load file to surface..."))
{
    setColumnCount(1);
    setHeaderHidden(true);
    setItemDelegate(new CSurfaceTitleDelegate(this));
    setIndentation(k_iIndentation);
    setUniformRowHeights(true);
    m_pMenu->setObjectName("Menu_Surfaces");
    m_pLoadAction->setObjectName("Act_Load_To_Surface");
    connect(m_pLoadAction, &QAction::triggered, this, &CSurfacesTree::slotLoadToCurrentSurface);
    connect(this, &QTreeWidget::itemExpanded, this, &CSurfacesTree::fillItem);
    connect(this, &QTreeWidget::itemPressed, this, &CSurfacesTree::tellPressedAgain);
    connect(this, &QTreeWidget::itemActivated, this, &CSurfacesTree::signalSelectedAgain);
}

void CSurfacesTree::setEntries(const std::vector<SurfacesTreeEntry>& aEntries)
{
    if (aEntries == m_aEntries)
        return;

    // Neither what is restored nor what Qt selects in place of a removed item is a user's choice.
    const QSignalBlocker blocker(this);
    // Scrolling to the current item would also open what is closed above it.
    setAutoScroll(false);
    const int iScroll = verticalScrollBar()->value();
    const QList<QTreeWidgetItem*> selected = selectedItems();
    const ItemPlace oldSelected = getPlace(selected.isEmpty() ? nullptr : selected.front());
    const ItemPlace oldCurrent = getPlace(currentItem());
    selectionModel()->clear();

    const std::vector<size_t> auiOldPlaces = findOldPlaces(m_aEntries, aEntries);
    updateItems(aEntries, auiOldPlaces);

    for (size_t i = 0; i < auiOldPlaces.size(); ++i)
    {
        if (auiOldPlaces[i] == k_uiNoPlace)
            continue;
        bool bWhole = false;
        QTreeWidgetItem* pTop = topLevelItem(static_cast<int>(i));
        if (auiOldPlaces[i] == oldCurrent.uiTop)
            setCurrentItem(findItem(pTop, oldCurrent.aiPath, bWhole), 0, QItemSelectionModel::NoUpdate);
        if (auiOldPlaces[i] == oldSelected.uiTop)
        {
            QTreeWidgetItem* pItem = findItem(pTop, oldSelected.aiPath, bWhole);
            pItem->setSelected(bWhole);
        }
    }
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(iScroll);
    setAutoScroll(true);
}

void CSurfacesTree::updateItems(const std::vector<SurfacesTreeEntry>& aEntries, const std::vector<size_t>& auiOldPlaces)
{
    for (size_t i = m_aEntries.size(); i-- > 0;)
        if (std::find(auiOldPlaces.begin(), auiOldPlaces.end(), i) == auiOldPlaces.end())
            delete topLevelItem(static_cast<int>(i));

    const std::vector<SurfacesTreeEntry> aOldEntries = std::exchange(m_aEntries, aEntries);
    const std::vector<uint32_t> auiOldItemsLeft = std::exchange(m_auiItemsLeft, std::vector<uint32_t>(aEntries.size(), k_uiMaxItems));
    for (uint32_t i = 0; i < aEntries.size(); ++i)
    {
        const size_t uiOld = auiOldPlaces[i];
        if (uiOld == k_uiNoPlace)
        {
            auto* pItem = new QTreeWidgetItem({getTitle(aEntries[i])});
            pItem->setToolTip(0, aEntries[i].strFullName);
            insertTopLevelItem(static_cast<int>(i), pItem);
            addAllChildren(pItem, i);
            continue;
        }
        // The items that stay are in their old order, so that each has come to its place by now.
        QTreeWidgetItem* pItem = topLevelItem(static_cast<int>(i));
        pItem->setText(0, getTitle(aEntries[i]));
        if (aEntries[i].hasSurfacesOf(aOldEntries[uiOld]))
            m_auiItemsLeft[i] = auiOldItemsLeft[uiOld];
        else
            renewChildren(pItem, i);
    }
}

void CSurfacesTree::addAllChildren(QTreeWidgetItem* pItem, uint32_t uiTop)
{
    addChildren(pItem, uiTop, eDepthTexture, hasFewItems(m_aEntries[uiTop], k_uiItemsAtOnce));
}

void CSurfacesTree::renewChildren(QTreeWidgetItem* pItem, uint32_t uiTop)
{
    std::vector<std::vector<int>> aPaths;
    std::vector<int> aiPath;
    collectOpenPaths(*pItem, aiPath, aPaths);
    qDeleteAll(pItem->takeChildren());
    addAllChildren(pItem, uiTop);
    for (const std::vector<int>& aiOpen : aPaths)
    {
        bool bWhole = false;
        QTreeWidgetItem* pOpen = findItem(pItem, aiOpen, bWhole);
        if (!bWhole)
            continue;
        fillItem(pOpen);
        pOpen->setExpanded(pOpen->childCount() != 0);
    }
}

CSurfacesTree::ItemPlace CSurfacesTree::getPlace(const QTreeWidgetItem* pItem) const
{
    ItemPlace place;
    if (pItem == nullptr)
        return place;
    for (; pItem->parent() != nullptr; pItem = pItem->parent())
        place.aiPath.insert(place.aiPath.begin(), pItem->parent()->indexOfChild(const_cast<QTreeWidgetItem*>(pItem)));
    place.uiTop = static_cast<size_t>(indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(pItem)));
    return place;
}

QTreeWidgetItem* CSurfacesTree::findItem(QTreeWidgetItem* pTop, const std::vector<int>& aiPath, bool& bWhole)
{
    bWhole = true;
    QTreeWidgetItem* pItem = pTop;
    for (const int iIndex : aiPath)
    {
        fillItem(pItem);
        QTreeWidgetItem* pChild = pItem->child(iIndex);
        bWhole = pChild != nullptr && !pChild->isDisabled();
        if (!bWhole)
            break;
        pItem = pChild;
    }
    return pItem;
}

void CSurfacesTree::addChildren(QTreeWidgetItem* pItem, uint32_t uiTop, uint32_t uiDepth, bool bWhole)
{
    const SurfacesTreeEntry& entry = m_aEntries[uiTop];
    const uint32_t uiCount = countChildren(entry, uiDepth);
    const uint32_t uiShown = std::min(uiCount, m_auiItemsLeft[uiTop]);
    m_auiItemsLeft[uiTop] -= uiShown;

    QList<QTreeWidgetItem*> children;
    for (uint32_t i = 0; i < uiShown; ++i)
        children.append(new QTreeWidgetItem({getChildText(entry, uiDepth, i)}));
    if (uiShown != uiCount)
        children.append(makeNote(uiCount - uiShown));
    pItem->addChildren(children);

    if (countChildren(entry, uiDepth + 1) == 0)
        return;
    for (uint32_t i = 0; i < uiShown; ++i)
    {
        QTreeWidgetItem* pChild = pItem->child(static_cast<int>(i));
        if (bWhole)
            addChildren(pChild, uiTop, uiDepth + 1, true);
        else
            pChild->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    }
}

void CSurfacesTree::fillItem(QTreeWidgetItem* pItem)
{
    if (pItem->childCount() != 0)
        return;
    const QTreeWidgetItem* pTop = pItem;
    while (pTop->parent() != nullptr)
        pTop = pTop->parent();
    const int iTop = indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(pTop));
    addChildren(pItem, static_cast<uint32_t>(iTop), getDepth(pItem), false);
}

void CSurfacesTree::slotLoadToCurrentSurface()
{
    emit signalLoadToCurrentSurface();
}

void CSurfacesTree::mousePressEvent(QMouseEvent* pEvent)
{
    QTreeWidgetItem* pItem = itemAt(pEvent->pos());
    const bool bSelected = pItem != nullptr && pItem->isSelected();
    if (pEvent->button() == Qt::RightButton && pItem != nullptr && !pItem->isDisabled())
    {
        // Its surface becomes the target of the menu, even where the press is on the arrow beside the item.
        m_pMenu->popup(pEvent->globalPos());
        if (bSelected)
            emit signalSelectedAgain();
        else
            setCurrentItem(pItem);
        return;
    }
    m_pMenu->hide();
    m_bPressedSelected = bSelected;
    QTreeWidget::mousePressEvent(pEvent);
    m_bPressedSelected = false;
}

void CSurfacesTree::tellPressedAgain(const QTreeWidgetItem* pItem)
{
    if (m_bPressedSelected && pItem->isSelected())
        emit signalSelectedAgain();
}

void CSurfacesTree::contextMenuEvent(QContextMenuEvent* pEvent)
{
    // The mouse has opened the menu when it was pressed.
    const QList<QTreeWidgetItem*> selected = selectedItems();
    if (pEvent->reason() == QContextMenuEvent::Keyboard && !selected.isEmpty())
    {
        m_pMenu->popup(viewport()->mapToGlobal(visualItemRect(selected.front()).bottomLeft()));
        emit signalSelectedAgain(); // makes its surface the target of the menu
    }
    pEvent->accept();
}

bool CSurfacesTree::viewportEvent(QEvent* pEvent)
{
    if (pEvent->type() != QEvent::ToolTip)
        return QTreeWidget::viewportEvent(pEvent);
    const auto& help = static_cast<const QHelpEvent&>(*pEvent);
    const QTreeWidgetItem* pItem = itemAt(help.pos());
    const QString strText = pItem == nullptr ? QString() : pItem->toolTip(0).isEmpty() ? pItem->text(0) : pItem->toolTip(0);
    showPlainToolTip(help, viewport(), strText);
    return true;
}
