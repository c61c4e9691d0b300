#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtWidgets/QMainWindow>

#include "Common/Preferences.h"
#include "Display/ViewModes.h"
#include "Documents/DocumentKinds.h"
#include "Documents/PixelReadout.h"
#include "MainWindow/ActionRules.h"
#include "Texture/CMOXTexture.h"

class AboutBoxDialog;
class CDisplayDock;
class CSurfacesDock;
class CTexInfoDock;
class CTexViewWindow;
class CTexViewWindowSingle;
class CToolBoxDock;
class QLabel;
class QMdiSubWindow;
class QMenu;
class QSlider;
class QUrl;
class RecentFiles;
struct OpenedTexture;
namespace Ui
{
class MainWindowClass;
}

/// The window that owns all others: settings, recent files, docks, dialogs, and the area with the open textures. It knows which
/// texture is active, brings every command and every signal of a dock to it, and refreshes what is shown after each change.
///
/// Failures end in message boxes, memory that is refused among them; no slot throws.
class CMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit CMainWindow(QWidget* pParent = nullptr);
    /// Stores the layout of the window in the settings.
    ~CMainWindow() override;

signals:
    void signalUpdateTextureInfo(const std::string* originalName, const moxtexture::CMOXTextureHeader* original,
                                 const std::string* compressedName, const moxtexture::CMOXTextureHeader* compressed);
    void signalUpdateTextureList(QList<QString> listNames, QList<QString> fullNames,
                                 QList<moxtexture::CMOXTextureHeader*> listTextureHeaders);
    void signalUpdateDiffParams(int diffType, float fBrightness, float fTolerance, float fBlend);
    void signalNewActiveWindow(bool hasWindow, bool isDiff);
    void signalUpdateDisplayColour(const QString& strInRed, const QString& strInGreen, const QString& strInBlue, const QString& strInAlpha,
                                   const QString& strOutRed, const QString& strOutGreen, const QString& strOutBlue,
                                   const QString& strOutAlpha, const QString& strDiffRed, const QString& strDiffGreen,
                                   const QString& strDiffBlue, const QString& strDiffAlpha);
    void signalCurrentSurfaceUpdated(uint32_t mipMapLevel, uint32_t arrayMember, uint32_t face);
    void signalPaddingUpdated(unsigned int oldPadding);
    void signalBGColourUpdated(QColor newBGColour);
    void signalGridShown(bool showGrid);
    void signalGridSizeUpdated(unsigned int newGridSize);

public slots:
    /// A message from another program: a path, two of them, or only the wish to see the window, which is raised in any case.
    void slotAppMessageRecieved(const QString& message);
    void slotOpenFileDialog();
    void slotReload();
    void slotSave();
    void slotSaveAs();
    void slotSaveAsLegacy();
    void slotSaveImage();
    void slotClose();
    void slotCloseAll();
    void slotExit();
    /// Opens a texture or an image; one that is open already is activated.
    void slotOpenFile(const QString& string);
    void slotOpenRecentFileWithData(const QString& string, const QByteArray& data);
    /// Opens the first file and, if that is open then, the second.
    void slotOpenDiff(const QString& file1, const QString& file2);
    void slotMousePositionUpdated();
    void slotUpdateZoomFromViewWindow();
    void slotUpdateZoomFromSlider();
    void slotUndo();
    void slotRedo();
    void slotEncode();
    void slotPadData2();
    void slotPadData4();
    void slotPadData8();
    void slotChangeBackgroundColour();
    void slotChangeGridSize();
    void slotShowGrid(bool bShow);
    void slotTileWindows();
    void slotCascadeWindows();
    void slotFitTexture();
    void slotHelp();
    void slotMOXSpec();
    /// @param bForceShow  false: only if the user wants it at start-up
    void slotAboutBox(bool bForceShow = true);
    void slotFeedback();
    /// Makes a sub window the active one for everything here; null where there is none.
    void slotSubWindowChanged(QMdiSubWindow* pSubWindow);
    void slotTextureUpdated();
    void slotTextureChosen(const QString& filename, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace);
    void slotLoadToCurrentSurface();
    void slotSyncZoomSliders(int position);
    void slotChangeViewMode(ETextureViewModes eMode);
    void slotChangeColourMask(bool bRed, bool bGreen, bool bBlue, bool bAlpha);
    void onColourSpaceChanged(int image, moxtexture::EMOXTColourSpace colourSpace);

protected:
    void changeEvent(QEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;

private:
    static constexpr int k_iMessageTime = 10000; ///< of a message in the status bar, in milliseconds

    // Construction
    void loadPreferences();
    void createRecentFilesMenu();
    void createDocks();
    void createStatusBar();
    void colourArea();
    void restoreLayout();
    void storeLayout();
    void connectActions();
    void connectDocks();
    void findRuledActions();

    // What is active
    [[nodiscard]] static CTexViewWindow* getView(const QMdiSubWindow* pSubWindow);
    [[nodiscard]] CTexViewWindowSingle* getCurrentSingle() const;
    [[nodiscard]] QMdiSubWindow* getSubWindow(const CTexViewWindow* pView) const;
    [[nodiscard]] QMdiSubWindow* getCurrentSubWindow() const;
    [[nodiscard]] QMdiSubWindow* findSubWindow(const QString& strName) const;
    void followActivation(QMdiSubWindow* pSubWindow);
    void rebind(CTexViewWindow* pView);
    void forgetView(const CTexViewWindow* pView);
    void showNoView();
    void showView(CTexViewWindow& view);
    void activate(QMdiSubWindow* pSubWindow);

    // What is shown of it
    [[nodiscard]] ActiveState getActiveState() const;
    void updateActions();
    void updateTextureList();
    void updateStatusBar();
    void updateAll();
    void updatePositionLabels();
    void showColours(const ColourTexts& texts);
    void updateZoomDisplay();
    void setZoomSliders(int iPosition);

    // Opening
    QMdiSubWindow* openFile(const QString& strPath);
    QMdiSubWindow* openTextureWindow(moxtexture::CMOXTexture display, moxtexture::CMOXTexture stored, const QString& strName,
                                     EDocumentKind eKind, QMdiSubWindow* pEncodedFrom, bool bForceNew);
    QMdiSubWindow* addView(CTexViewWindowSingle* pView, const QString& strName);
    QMdiSubWindow* reloadFile(const std::string& strName);
    QMdiSubWindow* encodeAgain(QMdiSubWindow* pSource);
    QMdiSubWindow* encodeCurrent();
    QMdiSubWindow* askAndEncode();
    [[nodiscard]] QStringList askForFiles(bool bMultiple);
    void openDropped(const QUrl& url);
    void openVirtualFile(const QByteArray& descriptor, const QByteArray& contents);
    void loadToSurface(CTexViewWindowSingle& view, const QString& strPath);

    // Editing, saving and closing
    void stepThroughEdits(void (CTexViewWindowSingle::*pStep)());
    template <typename Save>
    void runSave(Save save);
    [[nodiscard]] bool mayCloseAll();
    void tellNothingWritten(const QString& strPath);

    // Failures
    void showCritical(const QString& strTitle, const QString& strText, const QString& strInformativeText = {});
    void showNoMemory();
    bool showIfNotOpened(const OpenedTexture& opened, const char* pLoadFailureTitle);

    std::unique_ptr<Ui::MainWindowClass> m_pForm;
    Preferences m_Preferences;
    std::unique_ptr<RecentFiles> m_pRecentFiles;
    uint32_t m_ui32LegacySaveApi = 2; ///< that of the last encode

    /// The widget in the active sub window; null without one. forgetView() keeps it from outliving what it points to.
    CTexViewWindow* m_pCurrentView = nullptr;
    /// The windows as the list of textures was last given: a name alone may be borne by two.
    std::vector<QPointer<QMdiSubWindow>> m_aListedWindows;
    std::vector<std::pair<QObject*, ActionRule>> m_aRuledActions;
    bool m_bEncoding = false;

    CSurfacesDock* m_pSurfacesDock = nullptr;
    CTexInfoDock* m_pTexInfoDock = nullptr;
    CDisplayDock* m_pDisplayDock = nullptr;
    CToolBoxDock* m_pToolBoxDock = nullptr;
    AboutBoxDialog* m_pAboutBox = nullptr;
    QMenu* m_pContextMenu = nullptr; ///< the commands of the tool bar
    QLabel* m_pPositionLabel = nullptr;
    QLabel* m_pSurfaceLabel = nullptr;
    QLabel* m_pSizeLabel = nullptr;
    QLabel* m_pZoomLabel = nullptr;
    QSlider* m_pZoomSlider = nullptr;
};
