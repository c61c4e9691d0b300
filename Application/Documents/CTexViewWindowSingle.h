#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <QtCore/QPointer>
#include <QtWidgets/QMdiSubWindow>

#include "Display/DisplayRoutine.h"
#include "Documents/CTexViewWindow.h"
#include "Documents/TextureDocument.h"

namespace Ui
{
class Widget_SingleViewWindow;
}

/// The window of one open texture: its document, shown in one label, with edits, undo and saving.
class CTexViewWindowSingle : public CTexViewWindow
{
    Q_OBJECT

public:
    /// @param stored, working  moved in: a caller that keeps neither costs no copy
    /// @param ui32SourceKind   of EDocumentKind
    /// @param pEncodedFrom     for an encoded document the sub window it came from; forgotten when that goes
    CTexViewWindowSingle(moxtexture::CMOXTexture stored, moxtexture::CMOXTexture working, const std::string& strName,
                         Preferences* pPreferences, uint32_t ui32SourceKind, QMdiSubWindow* pEncodedFrom, QWidget* pParent);
    ~CTexViewWindowSingle() override;

    bool getMousePixelValue(uint32_t (&aui32Values)[4], uint32_t uiIndex = 0) override;
    moxtexture::CMOXTexture& getWorkingTexture(uint32_t uiIndex = 0) override;
    moxtexture::CMOXTexture& getStoredTexture(uint32_t uiIndex = 0) override;
    int saveImage() override;
    void updateMousePosition(int x, int y) override;
    void updateDisplay(bool bForce) override;
    [[nodiscard]] bool isModified() const override { return m_Document.isModified(); }
    [[nodiscard]] int32_t getChangeCount() const override { return m_Document.getChangeCount(); }
    /// Closing would bring up a question.
    [[nodiscard]] bool wouldAskToClose() const;

    /// @return false where memory is refused: nothing is kept for undo then, and the edit should not begin
    bool beginEdit();
    void endEdit();
    void undo();
    void redo();
    [[nodiscard]] bool canUndo() const { return m_Document.canUndo(); }
    [[nodiscard]] bool canRedo() const { return m_Document.canRedo(); }

    /// Writes the document to its name, or runs saveAs() for a name without one of the savable extensions.
    /// @return 1 done, 0 failed, -1 cancelled
    int save();
    /// Asks for a name and writes the document to it.
    /// @param ui32LegacyApi  only counts where bLegacy
    /// @return 1 done, 0 failed, -1 cancelled
    int saveAs(bool bLegacy, uint32_t ui32LegacyApi);
    /// The last save ended with an extension that writes no file, though it counts as done.
    [[nodiscard]] bool wroteNothing() const { return m_bWroteNothing; }

    [[nodiscard]] uint32_t getSourceKind() const { return m_Document.getSourceKind(); }
    /// Null once that window is gone.
    [[nodiscard]] QMdiSubWindow* getEncodedFrom() const { return m_pEncodedFrom; }

signals:
    /// A save took the name over but wrote no file, because of its extension. Also comes where the window then closes.
    void signalNothingWritten(const QString& strPath);

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    [[nodiscard]] bool isPictureUnderMouse() const override;

private:
    void textureChanged();
    void showBeforeQuestion();
    bool mayClose();
    int bringStoredUpToDate();
    int writeAs(const QString& strPath, bool bLegacy, uint32_t ui32LegacyApi);
    int takeSavedName(const QString& strPath);
    [[nodiscard]] QString suggestName(const char* pcEnding) const;

    std::unique_ptr<Ui::Widget_SingleViewWindow> m_pForm;
    CTextureDocument m_Document;
    DisplayPicture m_Picture;
    QPointer<QMdiSubWindow> m_pEncodedFrom;
    bool m_bWroteNothing = false;
};
