// Commands that change how a texture is looked at, or one step of it, and those of the Window and Help menus.

#include <QtWidgets/QColorDialog>

#include "Common/AboutBoxDialog.h"
#include "Common/FeedbackDialog.h"
#include "Common/OpenDocument.h"
#include "Dialogs/CGridSizeSelect.h"
#include "Documents/CTexViewWindowSingle.h"
#include "MainWindow/CMainWindow.h"
#include "MainWindow/MemoryGuard.h"
#include "MainWindow/ProductVersion.h"
#include "ui_CMainWindow.h"

namespace
{

constexpr char k_acDocumentationFolder[] = "../../Documentation/";

} // namespace

void CMainWindow::stepThroughEdits(void (CTexViewWindowSingle::*pStep)())
{
    CTexViewWindowSingle* pView = getCurrentSingle();
    if (pView == nullptr)
        return;
    if (!runWithinMemory([&] { (pView->*pStep)(); }))
        showNoMemory();
    updateAll();
}

void CMainWindow::slotUndo()
{
    stepThroughEdits(&CTexViewWindowSingle::undo);
}

void CMainWindow::slotRedo()
{
    stepThroughEdits(&CTexViewWindowSingle::redo);
}

void CMainWindow::slotPadData2()
{
    emit signalPaddingUpdated(2);
}

void CMainWindow::slotPadData4()
{
    emit signalPaddingUpdated(4);
}

void CMainWindow::slotPadData8()
{
    emit signalPaddingUpdated(8);
}

void CMainWindow::slotShowGrid(bool bShow)
{
    emit signalGridShown(bShow);
}

void CMainWindow::slotChangeBackgroundColour()
{
    if (m_pCurrentView == nullptr)
        return;
    const QColor colour = QColorDialog::getColor(m_pCurrentView->getBGColour(), this, "Change Background Colour...");
    if (colour.isValid())
        emit signalBGColourUpdated(colour);
}

void CMainWindow::slotChangeGridSize()
{
    if (m_pCurrentView == nullptr)
        return;
    CGridSizeSelect dialog(m_pCurrentView->getGridSize(), this);
    if (dialog.exec() == QDialog::Accepted)
        emit signalGridSizeUpdated(dialog.getGridSize());
}

void CMainWindow::slotChangeViewMode(ETextureViewModes eMode)
{
    if (m_pCurrentView == nullptr)
        return;
    m_pCurrentView->slotChangeViewMode(eMode);
    updateStatusBar();
}

void CMainWindow::slotChangeColourMask(bool bRed, bool bGreen, bool bBlue, bool bAlpha)
{
    if (m_pCurrentView != nullptr)
        m_pCurrentView->slotChangeColourMask(bRed, bGreen, bBlue, bAlpha);
}

void CMainWindow::onColourSpaceChanged(int image, moxtexture::EMOXTColourSpace colourSpace)
{
    if (m_pCurrentView != nullptr)
        m_pCurrentView->getStoredTexture(static_cast<uint32_t>(image)).setColourSpace(colourSpace);
}

void CMainWindow::slotTileWindows()
{
    m_pForm->MdiArea->tileSubWindows();
}

void CMainWindow::slotCascadeWindows()
{
    m_pForm->MdiArea->cascadeSubWindows();
}

void CMainWindow::slotFitTexture()
{
    if (m_pCurrentView != nullptr)
        m_pCurrentView->fitTexture();
}

void CMainWindow::slotHelp()
{
    openDocument(this, &m_Preferences, "Halvane User Manual.html", k_acDocumentationFolder, "Document");
}

void CMainWindow::slotMOXSpec()
{
    openDocument(this, &m_Preferences, "MOX File Format.Specification.pdf", k_acDocumentationFolder, "FileFormat");
}

void CMainWindow::slotAboutBox(bool bForceShow)
{
    if (bForceShow || m_pAboutBox->getShowAtStartUp())
        m_pAboutBox->showCentred();
}

void CMainWindow::slotFeedback()
{
    FeedbackDialog(k_acProductNameAndVersion, this).exec();
}
