// Which texture is active, and what is shown of it: commands, status bar, docks, titles.

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMdiSubWindow>
#include <QtWidgets/QSlider>

#include "Display/ZoomScale.h"
#include "Docks/CDisplayDock.h"
#include "Docks/CSurfacesDock.h"
#include "Docks/CToolBoxDock.h"
#include "Documents/CTexViewWindowSingle.h"
#include "Documents/PixelReadout.h"
#include "MainWindow/CMainWindow.h"
#include "ui_CMainWindow.h"

namespace
{

// What the difference controls are reset to when a single view becomes active.
constexpr int k_iDefaultDiffMode = 0;
constexpr float k_fDefaultBrightness = 1.0f, k_fDefaultTolerance = 0.1f, k_fDefaultBlend = 50.0f;

/// By the type that the object really has: a menu is no action, but is enabled like one.
void enable(QObject* pObject, bool bEnabled)
{
    if (auto* pAction = qobject_cast<QAction*>(pObject))
        pAction->setEnabled(bEnabled);
    else if (auto* pWidget = qobject_cast<QWidget*>(pObject))
        pWidget->setEnabled(bEnabled);
}

} // namespace

CTexViewWindow* CMainWindow::getView(const QMdiSubWindow* pSubWindow)
{
    return pSubWindow == nullptr ? nullptr : qobject_cast<CTexViewWindow*>(pSubWindow->widget());
}

CTexViewWindowSingle* CMainWindow::getCurrentSingle() const
{
    return qobject_cast<CTexViewWindowSingle*>(m_pCurrentView);
}

QMdiSubWindow* CMainWindow::getSubWindow(const CTexViewWindow* pView) const
{
    const QList<QMdiSubWindow*> windows = m_pForm->MdiArea->subWindowList();
    for (QMdiSubWindow* pSubWindow : windows)
        if (pView != nullptr && getView(pSubWindow) == pView)
            return pSubWindow;
    return nullptr;
}

QMdiSubWindow* CMainWindow::getCurrentSubWindow() const
{
    return getSubWindow(m_pCurrentView);
}

QMdiSubWindow* CMainWindow::findSubWindow(const QString& strName) const
{
    const QList<QMdiSubWindow*> windows = m_pForm->MdiArea->subWindowList();
    for (QMdiSubWindow* pSubWindow : windows)
        if (pSubWindow->objectName() == strName)
            return pSubWindow;
    return nullptr;
}

/// The area tells of no active window also while this window is minimised, but has one all the same.
void CMainWindow::followActivation(QMdiSubWindow* pSubWindow)
{
    slotSubWindowChanged(pSubWindow != nullptr ? pSubWindow : m_pForm->MdiArea->currentSubWindow());
}

void CMainWindow::slotSubWindowChanged(QMdiSubWindow* pSubWindow)
{
    CTexViewWindow* pView = getView(pSubWindow);
    if (pView == nullptr || pView != m_pCurrentView)
        showColours({}); // until the mouse is over that one
    rebind(pView);
    if (pView == nullptr)
        showNoView();
    else
        showView(*pView);
    slotMousePositionUpdated();
    updateActions();
}

void CMainWindow::rebind(CTexViewWindow* pView)
{
    if (m_pCurrentView != nullptr)
        disconnect(this, nullptr, m_pCurrentView, nullptr);
    m_pCurrentView = pView;
    // While nobody listens: the view must not be told what it tells.
    m_pForm->Act_Show_Grid->setChecked(pView != nullptr && pView->isGridShown());
    if (pView == nullptr)
        return;
    connect(this, &CMainWindow::signalCurrentSurfaceUpdated, pView, &CTexViewWindow::slotUpdateCurrentSurface);
    connect(this, &CMainWindow::signalPaddingUpdated, pView, &CTexViewWindow::slotUpdatePadding);
    connect(this, &CMainWindow::signalBGColourUpdated, pView, &CTexViewWindow::slotUpdateBGColour);
    connect(this, &CMainWindow::signalGridShown, pView, &CTexViewWindow::slotUpdateGridShown);
    connect(this, &CMainWindow::signalGridSizeUpdated, pView, &CTexViewWindow::slotUpdateGridSize);
}

/// A view is being destroyed; by now it is no more than a widget, so its pointer is only compared.
void CMainWindow::forgetView(const CTexViewWindow* pView)
{
    if (m_pCurrentView != pView)
        return;
    m_pCurrentView = nullptr;
    slotSubWindowChanged(nullptr);
}

void CMainWindow::showNoView()
{
    emit signalUpdateTextureInfo(nullptr, nullptr, nullptr, nullptr);
    emit signalNewActiveWindow(false, false);
    m_pDisplayDock->setColourMask(true, true, true, true);
    m_pDisplayDock->setViewMode(eViewSingle);
    m_pToolBoxDock->slotUpdateTexture(nullptr);
    m_pSizeLabel->setText("Size:\t");
    m_pPositionLabel->clear();
    m_pSurfaceLabel->clear();
    m_pDisplayDock->setPositionText(QString());
    m_pForm->StatusBar->setEnabled(false);
    setZoomSliders(k_i32DefaultZoomPosition);
    updateZoomDisplay();
}

void CMainWindow::showView(CTexViewWindow& view)
{
    updateAll();
    const std::array<uint8_t, 4>& mask = view.getColourMask();
    m_pDisplayDock->setColourMask(mask[0] != 0, mask[1] != 0, mask[2] != 0, mask[3] != 0);
    m_pDisplayDock->setViewMode(view.getViewMode());
    emit signalUpdateDiffParams(k_iDefaultDiffMode, k_fDefaultBrightness, k_fDefaultTolerance, k_fDefaultBlend);
    slotUpdateZoomFromViewWindow();
    const std::string strTitle = view.getFullTitle().toStdString();
    emit signalUpdateTextureInfo(&strTitle, &view.getWorkingTexture(), nullptr, nullptr);
    emit signalNewActiveWindow(true, view.isDiff());
    m_pToolBoxDock->slotUpdateTexture(&view.getWorkingTexture());
    m_pForm->StatusBar->setEnabled(true);
}

void CMainWindow::activate(QMdiSubWindow* pSubWindow)
{
    m_pForm->MdiArea->setActiveSubWindow(pSubWindow);
    pSubWindow->setFocus();
    // The area tells of it only while this window is the desktop's active one.
    if (m_pCurrentView != getView(pSubWindow))
        slotSubWindowChanged(pSubWindow);
}

ActiveState CMainWindow::getActiveState() const
{
    ActiveState state;
    state.bHasView = m_pCurrentView != nullptr;
    state.bIsDiff = state.bHasView && m_pCurrentView->isDiff();
    if (const CTexViewWindowSingle* pSingle = getCurrentSingle())
    {
        state.bCanUndo = pSingle->canUndo();
        state.bCanRedo = pSingle->canRedo();
    }
    return state;
}

void CMainWindow::updateActions()
{
    const ActiveState state = getActiveState();
    for (const auto& [pObject, rule] : m_aRuledActions)
        enable(pObject, isAllowed(rule, state));
}

void CMainWindow::updateTextureList()
{
    QList<QString> titles, names;
    QList<moxtexture::CMOXTextureHeader*> headers;
    m_aListedWindows.clear();
    const QList<QMdiSubWindow*> windows = m_pForm->MdiArea->subWindowList(QMdiArea::CreationOrder);
    for (QMdiSubWindow* pSubWindow : windows)
    {
        CTexViewWindow* pView = getView(pSubWindow);
        if (pView == nullptr)
            continue;
        titles << pView->getViewTitle();
        names << pSubWindow->objectName();
        headers << &pView->getWorkingTexture();
        m_aListedWindows.emplace_back(pSubWindow);
    }
    emit signalUpdateTextureList(titles, names, headers);
}

void CMainWindow::updateStatusBar()
{
    if (m_pCurrentView == nullptr)
        return;
    const moxtexture::CMOXTexture& texture = m_pCurrentView->getWorkingTexture();
    m_pSizeLabel->setText(QString("Size: %1 x %2\t").arg(texture.getWidth()).arg(texture.getHeight()));
    updatePositionLabels();
    m_pToolBoxDock->slotUpdateTexture(&texture);
    m_pCurrentView->repaint();
    if (QMdiSubWindow* pSubWindow = getCurrentSubWindow())
        pSubWindow->setWindowTitle(m_pCurrentView->getViewTitle());
}

void CMainWindow::updateAll()
{
    updateActions();
    updateTextureList();
    updateStatusBar();
}

void CMainWindow::slotTextureUpdated()
{
    updateAll();
}

void CMainWindow::updatePositionLabels()
{
    if (m_pCurrentView == nullptr)
        return;
    const ReadoutPlace place = m_pCurrentView->getReadoutPlace();
    if (place.bMouseInside)
        m_pPositionLabel->setText(getPositionText(place));
    const moxtexture::CMOXTextureHeader& header = m_pCurrentView->getWorkingTexture();
    m_pSurfaceLabel->setText(getSurfaceText(header, place));
    m_pDisplayDock->setPositionText(getDockPositionText(header, place));
}

void CMainWindow::slotMousePositionUpdated()
{
    updatePositionLabels();
    uint32_t aui32Values[4] = {};
    if (m_pCurrentView == nullptr || !m_pCurrentView->isMouseInside() || !m_pCurrentView->getMousePixelValue(aui32Values))
        return;
    showColours(getColourTexts(aui32Values, m_pCurrentView->getWorkingTexture().getChannelType()));
}

void CMainWindow::showColours(const ColourTexts& texts)
{
    emit signalUpdateDisplayColour(texts[0], texts[1], texts[2], texts[3], texts[4], texts[5], texts[6], texts[7], texts[8], texts[9],
                                   texts[10], texts[11]);
}

void CMainWindow::updateZoomDisplay()
{
    const QString strText = QString::fromStdString(m_pCurrentView != nullptr ? getZoomText(m_pCurrentView->getZoom()) : getNoZoomText());
    m_pZoomLabel->setText(strText);
    m_pDisplayDock->setZoomText(strText);
}

void CMainWindow::setZoomSliders(int iPosition)
{
    const QSignalBlocker blocker(m_pZoomSlider);
    m_pZoomSlider->setValue(iPosition);
    m_pDisplayDock->setZoomPosition(iPosition);
}

void CMainWindow::slotUpdateZoomFromViewWindow()
{
    setZoomSliders(m_pCurrentView != nullptr ? m_pCurrentView->getZoomPosition() : k_i32DefaultZoomPosition);
    updateZoomDisplay();
}

void CMainWindow::slotUpdateZoomFromSlider()
{
    if (m_pCurrentView != nullptr)
        m_pCurrentView->slotUpdateZoomScalePosition(m_pZoomSlider->value());
    slotUpdateZoomFromViewWindow();
}

void CMainWindow::slotSyncZoomSliders(int position)
{
    {
        const QSignalBlocker blocker(m_pZoomSlider);
        m_pZoomSlider->setValue(position);
    }
    slotUpdateZoomFromSlider();
}

void CMainWindow::slotTextureChosen(const QString& filename, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace)
{
    // The click tells the place in the list, which finds the right one of two windows with one name.
    const int iIndex = m_pSurfacesDock->getClickedIndex();
    QMdiSubWindow* pSubWindow = nullptr;
    if (iIndex >= 0 && static_cast<size_t>(iIndex) < m_aListedWindows.size())
        pSubWindow = m_aListedWindows[static_cast<size_t>(iIndex)];
    if (pSubWindow == nullptr || pSubWindow->objectName() != filename)
        pSubWindow = findSubWindow(filename);
    if (pSubWindow == nullptr)
        return updateTextureList();

    if (pSubWindow == getCurrentSubWindow())
        slotSubWindowChanged(pSubWindow);
    else
        activate(pSubWindow);
    emit signalCurrentSurfaceUpdated(uiMIPLevel, uiArrayMember, uiFace);
    updatePositionLabels();
}
