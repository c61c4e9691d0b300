#pragma once

#include <cstdint>
#include <vector>

#include <QtWidgets/QTreeWidget>

#include "Docks/SurfacesTreeEntry.h"

class QAction;
class QMenu;

/// The tree of textures, MIP levels, array members and faces, with a context menu.
///
/// A texture of few surfaces gets all of its items at once. Otherwise the items below a level or member are made when it is opened,
/// and never more than k_uiMaxItems for one texture: what is left out is told by a last item that can't be chosen.
class CSurfacesTree : public QTreeWidget
{
    Q_OBJECT

public:
    static constexpr uint32_t k_uiItemsAtOnce = 1024;
    static constexpr uint32_t k_uiMaxItems = 65536;

    explicit CSurfacesTree(QWidget* pParent = nullptr);

    /// Clears the tree and builds it from the list, one top item an entry.
    void setEntries(const std::vector<SurfacesTreeEntry>& aEntries);
    [[nodiscard]] const std::vector<SurfacesTreeEntry>& getEntries() const { return m_aEntries; }

signals:
    void signalLoadToCurrentSurface();

public slots:
    void slotLoadToCurrentSurface();

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    bool viewportEvent(QEvent* pEvent) override;

private:
    void fillItem(QTreeWidgetItem* pItem);
    void addChildren(QTreeWidgetItem* pItem, uint32_t uiTop, uint32_t uiDepth, bool bWhole);

    QMenu* m_pMenu;
    QAction* m_pLoadAction;
    std::vector<SurfacesTreeEntry> m_aEntries;
    std::vector<uint32_t> m_auiItemsLeft; ///< how many more items each texture may get
};
