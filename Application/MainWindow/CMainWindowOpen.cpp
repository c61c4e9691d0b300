// Opening: files by dialog, menu, drop and message; reloading; loading into a surface.

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QMdiSubWindow>
#include <QtWidgets/QMessageBox>

#include "Common/AppMessage.h"
#include "Common/FileIOPaths.h"
#include "Common/NativeFunctions.h"
#include "Common/RecentFiles.h"
#include "Common/TextureFilters.h"
#include "Dialogs/ConformPrompts.h"
#include "Documents/CTexViewWindowSingle.h"
#include "Documents/LoadToSurface.h"
#include "MainWindow/CMainWindow.h"
#include "MainWindow/DroppedFiles.h"
#include "MainWindow/MemoryGuard.h"
#include "MainWindow/OpenedTexture.h"
#include "ui_CMainWindow.h"

namespace
{

constexpr char k_acLoadPathKey[] = "FileIO/LoadPath";

} // namespace

void CMainWindow::slotAppMessageRecieved(const QString& message)
{
    const OpenRequest request = readAppMessage(message);
    if (request.eKind == OpenRequest::eTwo)
        slotOpenDiff(request.strFirst, request.strSecond);
    else if (request.eKind == OpenRequest::eOne)
        slotOpenFile(request.strFirst);
    activateWindow();
    showNormal();
    raise();
}

QStringList CMainWindow::askForFiles(bool bMultiple)
{
    const QString strFolder = QString::fromStdString(getFileIOPath(&m_Preferences, k_acLoadPathKey));
    QStringList files = NativeFunctions().getOpenFileNames(this, k_acOpenSourceTitle, strFolder, getTextureOpenFilter(), bMultiple);
    files.removeAll(QString());
    if (!files.isEmpty())
    {
        setFileIOPath(&m_Preferences, k_acLoadPathKey, files.front().toStdString());
        m_Preferences.save(); // what is unsaved would keep the changes of another process out
    }
    return files;
}

void CMainWindow::slotOpenFileDialog()
{
    const QStringList files = askForFiles(true);
    for (const QString& strFile : files)
        slotOpenFile(strFile);
}

void CMainWindow::slotOpenRecentFileWithData(const QString& string, const QByteArray&)
{
    slotOpenFile(string);
}

void CMainWindow::slotOpenDiff(const QString& file1, const QString& file2)
{
    if (openFile(file1) != nullptr)
        openFile(file2);
}

void CMainWindow::slotOpenFile(const QString& string)
{
    openFile(string);
}

/// @return the window of the file, also of one that was open already; null if it could not be opened
QMdiSubWindow* CMainWindow::openFile(const QString& strPath)
{
    if (strPath.isEmpty())
        return nullptr;
    const std::string strName = resolveLinks(strPath.toStdString());
    OpenedTexture opened = openTexture(strName, EDisplayRoute::eOpen);
    if (opened.eEnd == EOpenEnd::eDone || opened.eEnd == EOpenEnd::eNotConverted)
        m_pRecentFiles->addFile(QString::fromStdString(strName), QByteArray());
    if (!showIfNotOpened(opened, "Could not load file"))
        return nullptr;
    return openTextureWindow(std::move(opened.display), std::move(opened.stored), QString::fromStdString(strName), eDocumentFile, nullptr,
                             false);
}

/// @return the window of that name; null, with a message where there is something to tell, if there is none
QMdiSubWindow* CMainWindow::openTextureWindow(moxtexture::CMOXTexture display, moxtexture::CMOXTexture stored, const QString& strName,
                                              EDocumentKind eKind, QMdiSubWindow* pEncodedFrom, bool bForceNew)
{
    if (QMdiSubWindow* pOpen = bForceNew ? nullptr : findSubWindow(strName))
    {
        activate(pOpen);
        return pOpen;
    }
    if (display.getDataSize() == 0 || stored.getDataSize() == 0)
        return nullptr;

    CTexViewWindowSingle* pView = nullptr;
    if (!runWithinMemory(
            [&]
            {
                pView = new CTexViewWindowSingle(std::move(stored), std::move(display), strName.toStdString(), &m_Preferences, eKind,
                                                 pEncodedFrom, this);
            }))
    {
        showNoMemory();
        return nullptr;
    }
    if (pView->hasError())
    {
        const QString strError = pView->getError();
        delete pView;
        showCritical("Could not open texture", strError);
        return nullptr;
    }
    return addView(pView, strName);
}

QMdiSubWindow* CMainWindow::addView(CTexViewWindowSingle* pView, const QString& strName)
{
    connect(pView, &CTexViewWindow::signalMousePositionUpdated, this, &CMainWindow::slotMousePositionUpdated);
    connect(pView, &CTexViewWindow::signalZoomScaleUpdated, this, &CMainWindow::slotUpdateZoomFromViewWindow);
    connect(pView, &CTexViewWindowSingle::signalNothingWritten, this, &CMainWindow::tellNothingWritten);
    connect(pView, &QObject::destroyed, this,
            [this, pView](QObject* pDying)
            {
                disconnect(this, nullptr, pDying, nullptr); // what is unset for it, the grid's mark above all, is not for it to hear
                forgetView(pView);
            });
    // Later: its sub window may be on its way out, too, and must not be looked at.
    connect(pView, &QObject::destroyed, this, &CMainWindow::slotTextureUpdated, Qt::QueuedConnection);

    QMdiSubWindow* pSubWindow = m_pForm->MdiArea->addSubWindow(pView);
    pSubWindow->setWindowTitle(pView->getViewTitle());
    pSubWindow->setObjectName(strName);
    pSubWindow->show();
    pSubWindow->activateWindow();
    m_pForm->MdiArea->setActiveSubWindow(pSubWindow);
    slotSubWindowChanged(pSubWindow);
    return pSubWindow;
}

void CMainWindow::slotReload()
{
    const QPointer<CTexViewWindowSingle> pView = getCurrentSingle();
    const QPointer<QMdiSubWindow> pSubWindow = getCurrentSubWindow();
    if (!pView || !pSubWindow)
        return;
    const auto eAnswer = QMessageBox::question(
        this, "Reload File",
        "Are you sure you wish to reload? This will discard all changes and revert to the current version of the source.",
        QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
    if (eAnswer != QMessageBox::Yes || !pView || !pSubWindow)
        return;

    const bool bMaximised = pSubWindow->isMaximized();
    const bool bOpened = !pSubWindow->isMinimized() && !pSubWindow->isShaded();
    const QRect place = pSubWindow->geometry();
    pSubWindow->hide();
    QMdiSubWindow* pReplacement = nullptr;
    if (pView->getSourceKind() == eDocumentFile)
        pReplacement = reloadFile(pView->getName());
    else if (pView->getSourceKind() == eDocumentEncoded)
        pReplacement = encodeAgain(pView->getEncodedFrom());

    if (!pView || !pSubWindow)
        return;
    if (pReplacement == nullptr)
    {
        pSubWindow->show();
        return activate(pSubWindow);
    }
    pView->setDiscardOnClose(true);
    pSubWindow->close();
    if (bMaximised)
        pReplacement->showMaximized();
    else if (bOpened)
        pReplacement->setGeometry(place);
}

QMdiSubWindow* CMainWindow::reloadFile(const std::string& strName)
{
    OpenedTexture opened = openTexture(strName, EDisplayRoute::ePlain);
    if (!showIfNotOpened(opened, "Could not reload file"))
        return nullptr;
    return openTextureWindow(std::move(opened.display), std::move(opened.stored), QString::fromStdString(strName), eDocumentFile, nullptr,
                             true);
}

QMdiSubWindow* CMainWindow::encodeAgain(QMdiSubWindow* pSource)
{
    if (pSource == nullptr || !m_pForm->MdiArea->subWindowList().contains(pSource))
    {
        showCritical("Could not recreate texture",
                     "Texture was encoded from another window which no longer exists.\nUnable to recreate texture.");
        return nullptr;
    }
    activate(pSource);
    return encodeCurrent();
}

void CMainWindow::slotLoadToCurrentSurface()
{
    const QPointer<CTexViewWindowSingle> pView = getCurrentSingle();
    if (!pView)
        return;
    // On purpose before the dialog: one that is cancelled costs the older state, too.
    if (!pView->beginEdit())
        return showNoMemory();
    const QStringList files = askForFiles(false);
    if (pView && !files.isEmpty())
        loadToSurface(*pView, files.front());
    updateAll();
}

void CMainWindow::loadToSurface(CTexViewWindowSingle& view, const QString& strPath)
{
    const auto conform = [this](const moxtexture::CMOXTextureHeader& reference, moxtexture::CMOXTexture& texture) {
        return conformTextures({this, &reference}, &texture, 1, false, true, true, true, true);
    };
    if (loadIntoSurface(view.getWorkingTexture(), view.getMIPLevel(), view.getArrayMember(), view.getFace(), strPath.toStdString(),
                        conform))
        view.endEdit();
    else
        m_pForm->StatusBar->showMessage("Nothing was loaded to the surface.", k_iMessageTime);
}

void CMainWindow::dragEnterEvent(QDragEnterEvent* pEvent)
{
    if (pEvent->mimeData()->hasUrls() || hasVirtualFile(*pEvent->mimeData()))
        pEvent->acceptProposedAction();
}

void CMainWindow::dropEvent(QDropEvent* pEvent)
{
    const QMimeData& dropped = *pEvent->mimeData();
    if (dropped.hasUrls())
    {
        const QList<QUrl> urls = dropped.urls();
        for (const QUrl& url : urls)
            openDropped(url);
        pEvent->acceptProposedAction();
    }
    else if (hasVirtualFile(dropped))
    {
        openVirtualFile(dropped.data(QLatin1String(k_acFileDescriptorFormat)), dropped.data(QLatin1String(k_acFileContentsFormat)));
        pEvent->acceptProposedAction();
    }
}

void CMainWindow::openDropped(const QUrl& url)
{
    if (url.isLocalFile())
        slotOpenFile(url.toLocalFile());
    else
        m_pForm->StatusBar->showMessage("Only files can be opened: " + url.toDisplayString(), k_iMessageTime);
}

void CMainWindow::openVirtualFile(const QByteArray& descriptor, const QByteArray& contents)
{
    const QString strPath = storeDroppedFile(getDescriptorFileName(descriptor), contents);
    if (strPath.isEmpty())
        showCritical("Could not load file", "The dropped file could not be written to the folder for temporary files.");
    else
        slotOpenFile(strPath);
}

void CMainWindow::showNoMemory()
{
    showCritical("Could not open texture window", "Halvane was unable to allocate enough memory to create a texture window.");
}

/// Tells the user why a file is not there to be shown.
/// @return true if it is
bool CMainWindow::showIfNotOpened(const OpenedTexture& opened, const char* pLoadFailureTitle)
{
    switch (opened.eEnd)
    {
    case EOpenEnd::eDone:
        return true;
    case EOpenEnd::eNotLoaded:
        showCritical(pLoadFailureTitle, QString::fromStdString(opened.strError));
        return false;
    case EOpenEnd::eNotConverted:
        showCritical(QString(), "This file cannot be opened.", opened.bIsASTC ? "Please check that astcenc.exe is in PATH." : "");
        return false;
    case EOpenEnd::eNoMemory:
        break;
    }
    showNoMemory();
    return false;
}
