#pragma once

#include <cstddef>
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

    /// Shows the list, one top item an entry.
    ///
    /// What is open, selected and scrolled to stays as far as it is still there, and none of that is told by a signal. A texture is
    /// known again by its full name and its place among the others. Nothing happens where the list is the one that is shown.
    void setEntries(const std::vector<SurfacesTreeEntry>& aEntries);
    [[nodiscard]] const std::vector<SurfacesTreeEntry>& getEntries() const { return m_aEntries; }

signals:
    void signalLoadToCurrentSurface();
    /// The selected item was pressed or activated once more, or its menu asked for by key. As the selection outlives an update,
    /// the surface that is shown may have become another one since.
    void signalSelectedAgain();

public slots:
    void slotLoadToCurrentSurface();

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    bool viewportEvent(QEvent* pEvent) override;

private:
    /// Where an item stands: its texture, and from there down the index among the children at each depth.
    struct ItemPlace
    {
        size_t uiTop = SIZE_MAX; ///< past all textures for no item
        std::vector<int> aiPath;
    };

    void fillItem(QTreeWidgetItem* pItem);
    void addChildren(QTreeWidgetItem* pItem, uint32_t uiTop, uint32_t uiDepth, bool bWhole);
    void addAllChildren(QTreeWidgetItem* pItem, uint32_t uiTop);
    void renewChildren(QTreeWidgetItem* pItem, uint32_t uiTop);
    void updateItems(const std::vector<SurfacesTreeEntry>& aEntries, const std::vector<size_t>& auiOldPlaces);

    [[nodiscard]] ItemPlace getPlace(const QTreeWidgetItem* pItem) const;
    /// The item at a path, or the last one on the way; fills what lies on the way. @param bWhole  whether the path's end was reached
    QTreeWidgetItem* findItem(QTreeWidgetItem* pTop, const std::vector<int>& aiPath, bool& bWhole);
    void tellPressedAgain(const QTreeWidgetItem* pItem);

    QMenu* m_pMenu;
    QAction* m_pLoadAction;
    std::vector<SurfacesTreeEntry> m_aEntries;
    std::vector<uint32_t> m_auiItemsLeft; ///< how many more items each texture may get
    bool m_bPressedSelected = false;      ///< while a press is handled: it went to the selected item
};
