#include "Docks/CSurfacesDock.h"

#include <algorithm>

#include <QtCore/QScopedValueRollback>

#include "Docks/CSurfacesTree.h"

#include "ui_CSurfacesDock.h"

namespace
{

QTreeWidgetItem* getSelectedItem(const QTreeWidget& tree)
{
    const QList<QTreeWidgetItem*> selected = tree.selectedItems();
    return selected.isEmpty() ? nullptr : selected.front();
}

} // namespace

CSurfacesDock::CSurfacesDock(QWidget* pParent) : QDockWidget(pParent), m_pForm(new Ui::Surfaces_Dock)
{
    m_pForm->setupUi(this);
    m_LateUpdate.setSingleShot(true);
    connect(m_pForm->Tree_Surfaces, &QTreeWidget::itemSelectionChanged, this, &CSurfacesDock::slotTextureClicked);
    connect(m_pForm->Tree_Surfaces, &CSurfacesTree::signalSelectedAgain, this, &CSurfacesDock::slotTextureClicked);
    connect(m_pForm->Tree_Surfaces, &CSurfacesTree::signalLoadToCurrentSurface, this, &CSurfacesDock::slotLoadToCurrentSurface);
    connect(&m_LateUpdate, &QTimer::timeout, this, &CSurfacesDock::showList);
}

CSurfacesDock::~CSurfacesDock() = default;

int CSurfacesDock::getClickedIndex() const
{
    QTreeWidgetItem* pItem = getSelectedItem(*m_pForm->Tree_Surfaces);
    if (pItem == nullptr)
        return -1;
    while (pItem->parent() != nullptr)
        pItem = pItem->parent();

    // The tree may still show the list before the last one.
    const int iShown = m_pForm->Tree_Surfaces->indexOfTopLevelItem(pItem);
    const auto hasItsName = [&](const SurfacesTreeEntry& entry) { return entry.strFullName == pItem->toolTip(0); };
    if (static_cast<size_t>(iShown) < m_aGiven.size() && hasItsName(m_aGiven[static_cast<size_t>(iShown)]))
        return iShown;
    const auto found = std::find_if(m_aGiven.begin(), m_aGiven.end(), hasItsName);
    return found != m_aGiven.end() ? static_cast<int>(found - m_aGiven.begin()) : -1;
}

void CSurfacesDock::slotUpdateTextureList(QList<QString> listNames, QList<QString> fullNames,
                                          QList<moxtexture::CMOXTextureHeader*> listTextureHeaders)
{
    if (listNames.size() != fullNames.size() || listNames.size() != listTextureHeaders.size() || listTextureHeaders.contains(nullptr))
        return;

    m_aGiven.clear();
    for (int i = 0; i < listNames.size(); ++i)
        m_aGiven.emplace_back(listNames[i], fullNames[i], *listTextureHeaders[i]);

    if (!m_bSelecting && !m_bTelling)
        return showList();
    // The tree stays under the click. Should no update have followed it, then this one is another's and must not be lost.
    m_bSelecting = false;
    if (m_aGiven != m_pForm->Tree_Surfaces->getEntries())
        m_LateUpdate.start();
    else
        m_LateUpdate.stop();
}

void CSurfacesDock::showList()
{
    m_LateUpdate.stop();
    m_pForm->Tree_Surfaces->setEntries(m_aGiven);
}

void CSurfacesDock::slotTextureClicked()
{
    const QTreeWidgetItem* pItem = getSelectedItem(*m_pForm->Tree_Surfaces);
    if (pItem == nullptr)
        return;

    // From the surface up to its texture; the indices come in the order face, member, level.
    std::vector<uint32_t> auiPath;
    for (; pItem->parent() != nullptr; pItem = pItem->parent())
        auiPath.push_back(static_cast<uint32_t>(pItem->parent()->indexOfChild(const_cast<QTreeWidgetItem*>(pItem))));
    std::reverse(auiPath.begin(), auiPath.end());
    auiPath.resize(3, 0);

    m_bSelecting = true;
    const QScopedValueRollback<bool> telling(m_bTelling, true);
    emit signalTextureClicked(pItem->toolTip(0), auiPath[0], auiPath[1], auiPath[2]);
}

void CSurfacesDock::slotLoadToCurrentSurface()
{
    emit signalLoadToCurrentSurface();
}
