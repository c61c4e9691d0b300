#include "Documents/CTexViewWindowSingle.h"

#include <utility>

#include <QtGui/QCloseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMdiArea>
#include <QtWidgets/QMdiSubWindow>
#include <QtWidgets/QMessageBox>

#include "Common/FileIOPaths.h"
#include "Documents/AskSaveName.h"
#include "Documents/SaveDecision.h"
#include "Documents/SaveFailure.h"
#include "Formats/FormatNames.h"
#include "ui_CTexViewWindowSingle.h"

using namespace moxtexture;

namespace
{

/// What the legacy writer gets where a save turns into a save under another name, which is never a legacy one.
constexpr uint32_t k_ui32DefaultLegacyApi = 2;

/// The hour-glass while something long runs.
class CWaitCursor
{
public:
    CWaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    ~CWaitCursor() { QApplication::restoreOverrideCursor(); }
};

} // namespace

CTexViewWindowSingle::CTexViewWindowSingle(CMOXTexture stored, CMOXTexture working, const std::string& strName, Preferences* pPreferences,
                                           uint32_t ui32SourceKind, QMdiSubWindow* pEncodedFrom, QWidget* pParent)
    : CTexViewWindow(strName, pPreferences, pParent),
      m_pForm(std::make_unique<Ui::Widget_SingleViewWindow>()),
      m_Document(std::move(stored), std::move(working), ui32SourceKind),
      m_pEncodedFrom(pEncodedFrom)
{
    m_pForm->setupUi(this);
    m_Picture.pLabel = m_pForm->Label_ViewPanel;
    m_Picture.pTexture = &m_Document.getDisplay();
    if (m_Document.rebuildDisplay())
        CTexViewWindow::fitTexture();
    else
        setError("Halvane was unable to convert this texture for display.");
}

CTexViewWindowSingle::~CTexViewWindowSingle() = default;

bool CTexViewWindowSingle::getMousePixelValue(uint32_t (&aui32Values)[4], uint32_t)
{
    return readPixelValue(m_Document.getWorking(), getMIPLevel(), getArrayMember(), getCubeFace(), getPixelX(), getPixelY(), aui32Values);
}

CMOXTexture& CTexViewWindowSingle::getWorkingTexture(uint32_t)
{
    return m_Document.getWorking();
}

CMOXTexture& CTexViewWindowSingle::getStoredTexture(uint32_t)
{
    return m_Document.getStored();
}

void CTexViewWindowSingle::updateMousePosition(int x, int y)
{
    locateMouse(x, y, *m_pForm->Label_ViewPanel, m_Document.getWorking());
}

bool CTexViewWindowSingle::isPictureUnderMouse() const
{
    return m_pForm->Label_ViewPanel->underMouse();
}

void CTexViewWindowSingle::updateDisplay(bool bForce)
{
    drawIfNeeded(&m_Picture, 1, bForce);
}

// Editing

void CTexViewWindowSingle::textureChanged()
{
    redraw(m_bTextureDirty);
}

bool CTexViewWindowSingle::beginEdit()
{
    return m_Document.beginEdit();
}

void CTexViewWindowSingle::endEdit()
{
    m_Document.endEdit();
    textureChanged();
}

void CTexViewWindowSingle::undo()
{
    if (m_Document.undo())
        textureChanged();
}

void CTexViewWindowSingle::redo()
{
    if (m_Document.redo())
        textureChanged();
}

// Saving

int CTexViewWindowSingle::bringStoredUpToDate()
{
    if (!m_Document.isModified() && !m_Document.isStoredBehind())
        return eSaveDone;
    const QString strFormat = QString::fromStdString(getFormatName(m_Document.getStored().getPixelFormat()));
    const auto eAnswer = QMessageBox::question(
        this, "Texture Modified",
        "The texture you're trying to save has been modified since last encoding. To continue, it will be re-compressed to the format of "
        "the stored compressed format (" +
            strFormat + "). Default compression options will be used.",
        QMessageBox::Yes | QMessageBox::Abort);
    if (eAnswer != QMessageBox::Yes)
        return eSaveCancelled;
    const CWaitCursor cursor;
    return m_Document.encodeStored() ? eSaveDone : eSaveFailed;
}

int CTexViewWindowSingle::save()
{
    m_bWroteNothing = false;
    if (decideSave(QString::fromStdString(getName())) == ESaveRoad::eAskForName)
        return saveAs(false, k_ui32DefaultLegacyApi);
    const int iReady = bringStoredUpToDate();
    if (iReady != eSaveDone)
        return iReady;
    const CWaitCursor cursor;
    if (!m_Document.write(getName(), getPadding()))
        return eSaveFailed;
    m_Document.markSaved();
    return eSaveDone;
}

QString CTexViewWindowSingle::suggestName(const char* pcEnding) const
{
    return suggestSaveName(QString::fromStdString(getName()), pcEnding,
                           QString::fromStdString(getFileIOPath(getPreferences(), "FileIO/SavePath")));
}

int CTexViewWindowSingle::saveAs(bool bLegacy, uint32_t ui32LegacyApi)
{
    m_bWroteNothing = false;
    const QString strPath = askSaveName(
        this, {"Save Texture", suggestName(".mox"),
               bLegacy ? "Moxwell Texture V2 (*.mox)" : "Moxwell Textures (*.mox);;Khronos Textures (*.ktx);;Direct Draw Surfaces (*.dds)",
               "Moxwell Textures (*.mox)"});
    return strPath.isEmpty() ? int{eSaveCancelled} : writeAs(strPath, bLegacy, ui32LegacyApi);
}

int CTexViewWindowSingle::writeAs(const QString& strPath, bool bLegacy, uint32_t ui32LegacyApi)
{
    const ESaveRoad eRoad = decideSaveAs(strPath, bLegacy);
    if (eRoad == ESaveRoad::eWriteNothing)
    {
        // On purpose: the document takes the name over and counts as saved. Whoever listens tells the user.
        m_bWroteNothing = true;
        emit signalNothingWritten(strPath);
        return takeSavedName(strPath);
    }
    const int iReady = bringStoredUpToDate();
    if (iReady != eSaveDone)
        return iReady;
    const CWaitCursor cursor;
    const std::string strName = strPath.toStdString();
    const bool bWritten =
        eRoad == ESaveRoad::eWriteLegacy ? m_Document.writeLegacy(strName, ui32LegacyApi) : m_Document.write(strName, getPadding());
    return bWritten ? takeSavedName(strPath) : int{eSaveFailed};
}

int CTexViewWindowSingle::takeSavedName(const QString& strPath)
{
    setName(strPath.toStdString());
    m_Document.setSourceKind(eDocumentFile);
    m_Document.markSaved();
    return eSaveDone;
}

int CTexViewWindowSingle::saveImage()
{
    const QString strPath =
        askSaveName(this,
                    {"Save Image", suggestName(".png"), "Portable Network Graphics (*.png);;Bitmap Files (*.bmp);;JPEG Files (*.jpg)",
                     "Portable Network Graphics (*.png)"},
                    ".png");
    if (strPath.isEmpty())
        return eSaveCancelled;
    const CWaitCursor cursor;
    if (!m_Document.writeImage(strPath.toStdString(), getMIPLevel(), getArrayMember(), getFace()))
        return eSaveFailed;
    // On purpose: the document goes by the image's name from now on, though it is as unsaved as it was.
    setName(strPath.toStdString());
    m_Document.setSourceKind(eDocumentFile);
    return eSaveDone;
}

bool CTexViewWindowSingle::wouldAskToClose() const
{
    return !isDiscardedOnClose() && (m_Document.isModified() || m_Document.isNeverSaved() || m_Document.isColourSpaceUnsaved());
}

/// Whoever closes several windows closes some that another one covers; the user must see which one a question is about.
void CTexViewWindowSingle::showBeforeQuestion()
{
    auto* pSubWindow = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (pSubWindow != nullptr && pSubWindow->mdiArea() != nullptr)
        pSubWindow->mdiArea()->setActiveSubWindow(pSubWindow);
}

bool CTexViewWindowSingle::mayClose()
{
    if (!wouldAskToClose())
        return true;
    showBeforeQuestion();
    const auto eAnswer = QMessageBox::question(this, "Texture Modified", "Do you wish to save this texture before closing?",
                                               QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (eAnswer != QMessageBox::Yes)
        return eAnswer == QMessageBox::No;
    const int iSaved = save();
    if (iSaved == eSaveFailed)
        showSaveFailure(this);
    return iSaved == eSaveDone;
}

void CTexViewWindowSingle::closeEvent(QCloseEvent* pEvent)
{
    if (mayClose())
        CTexViewWindow::closeEvent(pEvent);
    else
        pEvent->ignore();
}
