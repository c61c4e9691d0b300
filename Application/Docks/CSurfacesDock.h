#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtWidgets/QDockWidget>

#include "Docks/SurfacesTreeEntry.h"

namespace Ui
{
class Surfaces_Dock;
}

/// All open textures with their surfaces, as a tree in which one can be chosen.
class CSurfacesDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit CSurfacesDock(QWidget* pParent = nullptr);
    ~CSurfacesDock() override;

    /// The position, in the list that was last given, of the texture that the selected item belongs to; -1 without a selection.
    /// It tells apart what bears the same name.
    [[nodiscard]] int getClickedIndex() const;

signals:
    /// The user selected a surface, or the selected one again. @param filename  the full name, as it was given with the list
    void signalTextureClicked(const QString& filename, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace);
    /// Asked for in the context menu, after the click that selects the surface.
    void signalLoadToCurrentSurface();

public slots:
    /// Brings the tree up to date, but for the first call after a selection and those while it is told: they come of the selection
    /// itself, and the tree stays. Where such a call did bring something new, the tree follows once control is back in the event loop.
    /// Lists of different lengths, or with a null among the headers, change nothing.
    /// @param listNames  what is shown; fullNames  unique names, shown as tool tips; listTextureHeaders  read during the call only
    void slotUpdateTextureList(QList<QString> listNames, QList<QString> fullNames,
                               QList<moxtexture::CMOXTextureHeader*> listTextureHeaders);
    void slotTextureClicked();
    void slotLoadToCurrentSurface();

private:
    void showList();

    std::unique_ptr<Ui::Surfaces_Dock> m_pForm;
    std::vector<SurfacesTreeEntry> m_aGiven; ///< the list as it was last given
    QTimer m_LateUpdate;                     ///< runs where the tree stayed as it was although the list had changed
    bool m_bSelecting = false;               ///< set by a click, cleared by the next list
    bool m_bTelling = false;                 ///< while signalTextureClicked() is being told: the tree must not go from under it
};
