// Saving and closing.

#include <QtGui/QCloseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMdiSubWindow>

#include "Common/LastPathComponent.h"
#include "Documents/CTexViewWindowSingle.h"
#include "Documents/SaveFailure.h"
#include "MainWindow/CMainWindow.h"
#include "MainWindow/MemoryGuard.h"
#include "ui_CMainWindow.h"

namespace
{

/// What a save gave: 1 done, 0 failed, also for want of memory, -1 cancelled.
template <typename Save>
int runSaveWithinMemory(Save save)
{
    int iResult = 0;
    return runWithinMemory([&] { iResult = save(); }) ? iResult : 0;
}

} // namespace

template <typename Save>
void CMainWindow::runSave(Save save)
{
    const QPointer<CTexViewWindowSingle> pView = getCurrentSingle();
    if (!pView)
        return;
    if (runSaveWithinMemory([&] { return save(*pView); }) == 0)
        showSaveFailure(this);
    slotSubWindowChanged(getCurrentSubWindow());
}

void CMainWindow::slotSave()
{
    runSave([](CTexViewWindowSingle& view) { return view.save(); });
}

void CMainWindow::slotSaveAs()
{
    runSave([this](CTexViewWindowSingle& view) { return view.saveAs(false, m_ui32LegacySaveApi); });
}

void CMainWindow::slotSaveAsLegacy()
{
    runSave([this](CTexViewWindowSingle& view) { return view.saveAs(true, m_ui32LegacySaveApi); });
}

void CMainWindow::slotSaveImage()
{
    const QPointer<CTexViewWindow> pView = m_pCurrentView;
    if (!pView)
        return;
    if (runSaveWithinMemory([&] { return pView->saveImage(); }) == 0)
        showCritical("An Error Has Occurred", "An unknown error has occurred, please contact Bluedesk for support");
    updateAll();
}

void CMainWindow::tellNothingWritten(const QString& strPath)
{
    // The name last: where there is no room for all of it, the reason can still be read.
    const QString strReason = "No file was written: a name must end in .mox, .ktx or .dds (%1)";
    m_pForm->StatusBar->showMessage(strReason.arg(getLastPathComponent(strPath)), k_iMessageTime);
}

void CMainWindow::slotClose()
{
    if (QMdiSubWindow* pSubWindow = getCurrentSubWindow())
        pSubWindow->close();
}

void CMainWindow::slotCloseAll()
{
    m_pForm->MdiArea->closeAllSubWindows();
}

void CMainWindow::slotExit()
{
    close();
}

void CMainWindow::closeEvent(QCloseEvent* pEvent)
{
    // A dialog, or an encode, is at work on a view that must not go away beneath it; only the desktop itself can ask now.
    if (m_bEncoding || QApplication::activeModalWidget() != nullptr || !mayCloseAll())
        return pEvent->ignore();
    m_pForm->MdiArea->closeAllSubWindows();
    const QList<QMdiSubWindow*> left = m_pForm->MdiArea->subWindowList();
    if (left.isEmpty())
        return QMainWindow::closeEvent(pEvent);
    for (QMdiSubWindow* pSubWindow : left)
        if (CTexViewWindow* pView = getView(pSubWindow))
            pView->setDiscardOnClose(false);
    pEvent->ignore();
}

/// Asks for every view what it would ask when it is closed, and closes none, so that one cancelled prompt keeps all of them open.
/// Afterwards they close without asking.
bool CMainWindow::mayCloseAll()
{
    std::vector<QPointer<CTexViewWindow>> aAgreed;
    const QList<QMdiSubWindow*> windows = m_pForm->MdiArea->subWindowList();
    for (QMdiSubWindow* pSubWindow : windows)
    {
        CTexViewWindow* pView = getView(pSubWindow);
        if (pView == nullptr)
            continue;
        QCloseEvent question;
        QApplication::sendEvent(pView, &question);
        if (!question.isAccepted())
            return false;
        aAgreed.emplace_back(pView);
    }
    for (const QPointer<CTexViewWindow>& pView : aAgreed)
        if (pView)
            pView->setDiscardOnClose(true);
    return true;
}
