#include "Docks/CSurfacesTree.h"

#include <algorithm>

#include <QtGui/QContextMenuEvent>
#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QMenu>

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

} // namespace

CSurfacesTree::CSurfacesTree(QWidget* pParent)
    : QTreeWidget(pParent), m_pMenu(new QMenu(this)), m_pLoadAction(m_pMenu->addAction("Load file to surface..."))
{
    setColumnCount(1);
    setHeaderHidden(true);
    setTextElideMode(Qt::ElideMiddle); // both the end of a long name and the size stay legible
    setIndentation(k_iIndentation);
    setUniformRowHeights(true);
    m_pMenu->setObjectName("Menu_Surfaces");
    m_pLoadAction->setObjectName("Act_Load_To_Surface");
    connect(m_pLoadAction, &QAction::triggered, this, &CSurfacesTree::slotLoadToCurrentSurface);
    connect(this, &QTreeWidget::itemExpanded, this, &CSurfacesTree::fillItem);
}

void CSurfacesTree::setEntries(const std::vector<SurfacesTreeEntry>& aEntries)
{
    clear();
    m_aEntries = aEntries;
    m_auiItemsLeft.assign(aEntries.size(), k_uiMaxItems);
    for (uint32_t i = 0; i < aEntries.size(); ++i)
    {
        const SurfacesTreeEntry& entry = aEntries[i];
        const QString strSize =
            QString::asprintf(" (%d x %d)", static_cast<int>(entry.shape.getWidth()), static_cast<int>(entry.shape.getHeight()));
        auto* pItem = new QTreeWidgetItem(this, {entry.strName + strSize});
        pItem->setToolTip(0, entry.strFullName);
        addChildren(pItem, i, eDepthTexture, hasFewItems(entry, k_uiItemsAtOnce));
    }
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
    const QTreeWidgetItem* pItem = itemAt(pEvent->pos());
    if (pEvent->button() == Qt::RightButton && pItem != nullptr && !pItem->isDisabled())
        m_pMenu->popup(pEvent->globalPos());
    else
        m_pMenu->hide();
    // Selects the item, which makes its surface the target of the menu.
    QTreeWidget::mousePressEvent(pEvent);
}

void CSurfacesTree::contextMenuEvent(QContextMenuEvent* pEvent)
{
    // The mouse has opened the menu when it was pressed.
    const QList<QTreeWidgetItem*> selected = selectedItems();
    if (pEvent->reason() == QContextMenuEvent::Keyboard && !selected.isEmpty())
        m_pMenu->popup(viewport()->mapToGlobal(visualItemRect(selected.front()).bottomLeft()));
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
