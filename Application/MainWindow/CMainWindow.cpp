#include "MainWindow/CMainWindow.h"

#include <initializer_list>
#include <string_view>

#include <QtGui/QMouseEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QFrame>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMdiSubWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>

#include "Common/AboutBoxDialog.h"
#include "Common/Fnv1.h"
#include "Common/RecentFiles.h"
#include "Common/RecentFilesMenu.h"
#include "Display/ZoomScale.h"
#include "Docks/CDisplayDock.h"
#include "Docks/CSurfacesDock.h"
#include "Docks/CTexInfoDock.h"
#include "Docks/CToolBoxDock.h"
#include "Documents/CTexViewWindow.h"
#include "MainWindow/AreaColour.h"
#include "MainWindow/CWheelEventEater.h"
#include "MainWindow/ProductVersion.h"
#include "Resources/Resources.h"
#include "ui_CMainWindow.h"

namespace
{

constexpr uint32_t k_ui32MaxRecentFiles = 10;
constexpr int k_iLabelWidth = 210;
constexpr int k_iZoomSliderWidth = 160;
constexpr double k_dMostOfScreen = 0.9; // at the first start, where the form is larger
constexpr char k_acStateKey[] = "Main/State";
constexpr char k_acGeometryKey[] = "Main/Geometry";

uint32_t getCheckValue(const std::vector<uint8_t>& bytes)
{
    return fnv1(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

std::string getCheckKey(const char* pKey)
{
    return std::string(pKey) + "Check";
}

/// @return empty unless the bytes are those that writeWhole() was given: others can end the program in the toolkit, which trusts them
QByteArray readWhole(const Preferences& preferences, const char* pKey)
{
    std::vector<uint8_t> bytes;
    uint32_t ui32Check = 0;
    if (preferences.getData(pKey, bytes) != Preferences::eDone || preferences.getUint(getCheckKey(pKey), ui32Check) != Preferences::eDone ||
        ui32Check != getCheckValue(bytes))
        return {};
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size())};
}

void writeWhole(Preferences& preferences, const char* pKey, const QByteArray& content)
{
    const std::vector<uint8_t> bytes(content.begin(), content.end());
    preferences.setData(pKey, bytes.data(), bytes.size());
    preferences.setUint(getCheckKey(pKey), getCheckValue(bytes));
}

QLabel* makeLabel(const char* pName, QWidget* pParent)
{
    auto* pLabel = new QLabel(pParent);
    pLabel->setObjectName(QLatin1String(pName));
    pLabel->setTextFormat(Qt::PlainText);
    return pLabel;
}

QFrame* makeSeparator(const char* pName, QWidget* pParent)
{
    auto* pLine = new QFrame(pParent);
    pLine->setObjectName(QLatin1String(pName));
    pLine->setFrameShape(QFrame::VLine);
    pLine->setFrameShadow(QFrame::Sunken);
    return pLine;
}

} // namespace

CMainWindow::CMainWindow(QWidget* pParent) : QMainWindow(pParent), m_Preferences(k_acProductName)
{
    initResources();
    m_pRecentFiles = std::make_unique<RecentFiles>(&m_Preferences, k_ui32MaxRecentFiles, QString(), eRecentFilesSkipMissing);
    loadPreferences();

    m_pForm = std::make_unique<Ui::MainWindowClass>();
    m_pForm->setupUi(this);
    createRecentFilesMenu();
    m_pForm->Act_Reload->setShortcuts({QKeySequence("Ctrl+R"), QKeySequence("F5")});
    m_pContextMenu = new QMenu(this);
    m_pContextMenu->setObjectName("Menu_Context");
    m_pContextMenu->addActions(m_pForm->Toolbar->actions());
    createDocks();
    createStatusBar();
    colourArea();
    restoreLayout();
    setAcceptDrops(true);
    m_pAboutBox =
        new AboutBoxDialog(k_acProductNameAndVersion, ":/SplashScreen/Halvane.png", &m_Preferences, QLatin1String(k_acProductUses), this);

    findRuledActions();
    updateActions();
    connectActions();
    connectDocks();
    auto* pEater = new CWheelEventEater(this);
    m_pForm->MdiArea->horizontalScrollBar()->installEventFilter(pEater);
    m_pForm->MdiArea->verticalScrollBar()->installEventFilter(pEater);
}

CMainWindow::~CMainWindow()
{
    // The widgets go last, and tell of it; by then nothing here is left to listen, nor are there settings for the views.
    disconnect(m_pForm->MdiArea, nullptr, this, nullptr);
    // Among the children are also those that were closed and wait for their end.
    for (CTexViewWindow* pView : findChildren<CTexViewWindow*>())
        disconnect(pView, nullptr, this, nullptr);
    qDeleteAll(m_pForm->MdiArea->findChildren<QMdiSubWindow*>());
    delete m_pAboutBox;
    storeLayout();
}

void CMainWindow::loadPreferences()
{
    std::string strError;
    if (m_Preferences.load(strError, true))
        return;
    QMessageBox box(QMessageBox::Warning, "Could not load preferences",
                    QString::fromStdString(strError) + "\nContinuing without preferences", QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void CMainWindow::createRecentFilesMenu()
{
    auto* pMenu = new RecentFilesMenu("Open Recent", this);
    pMenu->setObjectName("Menu_Recent");
    m_pForm->Menu_File->insertMenu(m_pForm->Act_Open, pMenu);
    m_pRecentFiles->setMenu(pMenu);
}

void CMainWindow::createDocks()
{
    m_pToolBoxDock = new CToolBoxDock(this);
    m_pSurfacesDock = new CSurfacesDock(this);
    m_pTexInfoDock = new CTexInfoDock(this);
    m_pDisplayDock = new CDisplayDock(this);
    addDockWidget(Qt::RightDockWidgetArea, m_pToolBoxDock);
    addDockWidget(Qt::LeftDockWidgetArea, m_pSurfacesDock);
    addDockWidget(Qt::LeftDockWidgetArea, m_pTexInfoDock);
    addDockWidget(Qt::LeftDockWidgetArea, m_pDisplayDock);
    tabifyDockWidget(m_pSurfacesDock, m_pTexInfoDock);
    tabifyDockWidget(m_pTexInfoDock, m_pDisplayDock);

    // The menu stays, as the separator between docks and tool bars is its own.
    QMenu* pToggles = createPopupMenu();
    pToggles->setObjectName("Menu_Toggles");
    m_pForm->Menu_View->addActions(pToggles->actions());
}

void CMainWindow::createStatusBar()
{
    QStatusBar* pBar = m_pForm->StatusBar;
    m_pPositionLabel = makeLabel("PositionLabel", pBar);
    m_pSurfaceLabel = makeLabel("SurfaceLabel", pBar);
    m_pSizeLabel = makeLabel("SizeLabel", pBar);
    m_pZoomLabel = makeLabel("ZoomLabel", pBar);
    m_pZoomSlider = new QSlider(Qt::Horizontal, pBar);
    m_pZoomSlider->setObjectName("ZoomSlider");
    m_pZoomSlider->setAccessibleName("Zoom");
    m_pZoomSlider->setRange(0, k_i32ZoomPositionCount - 1);
    m_pZoomSlider->setPageStep(1);
    m_pZoomSlider->setMaximumWidth(k_iZoomSliderWidth); // less in a narrow window
    m_pZoomLabel->setBuddy(m_pZoomSlider);

    for (QLabel* pLabel : {m_pPositionLabel, m_pSurfaceLabel, m_pSizeLabel})
        pLabel->setMinimumWidth(k_iLabelWidth);
    pBar->addWidget(m_pPositionLabel);
    pBar->addWidget(makeSeparator("line", pBar));
    pBar->addWidget(m_pSurfaceLabel);
    pBar->addWidget(makeSeparator("line_2", pBar));
    pBar->addWidget(m_pSizeLabel);
    pBar->addWidget(makeSeparator("line_3", pBar));
    pBar->addPermanentWidget(makeSeparator("line_4", pBar));
    pBar->addPermanentWidget(m_pZoomLabel);
    pBar->addPermanentWidget(m_pZoomSlider);

    // What a view starts with, until there is one.
    setZoomSliders(k_i32DefaultZoomPosition);
    const QString strZoom = QString::fromStdString(getZoomText(getZoomFactor(k_i32DefaultZoomPosition)));
    m_pZoomLabel->setText(strZoom);
    m_pDisplayDock->setZoomText(strZoom);
}

void CMainWindow::colourArea()
{
    m_pForm->MdiArea->setBackground(getAreaColour(palette()));
}

void CMainWindow::changeEvent(QEvent* pEvent)
{
    QMainWindow::changeEvent(pEvent);
    if (pEvent->type() == QEvent::PaletteChange && m_pForm)
        colourArea();
}

void CMainWindow::restoreLayout()
{
    restoreState(readWhole(m_Preferences, k_acStateKey));
    if (!restoreGeometry(readWhole(m_Preferences, k_acGeometryKey)))
        resize(size().boundedTo(screen()->availableSize() * k_dMostOfScreen));
}

void CMainWindow::storeLayout()
{
    writeWhole(m_Preferences, k_acStateKey, saveState());
    writeWhole(m_Preferences, k_acGeometryKey, saveGeometry());
    m_Preferences.save();
}

void CMainWindow::connectActions()
{
    const auto connectAction = [this](QAction* pAction, void (CMainWindow::*pSlot)())
    { connect(pAction, &QAction::triggered, this, pSlot); };
    connectAction(m_pForm->Act_Open, &CMainWindow::slotOpenFileDialog);
    connectAction(m_pForm->Act_Reload, &CMainWindow::slotReload);
    connectAction(m_pForm->Act_Save, &CMainWindow::slotSave);
    connectAction(m_pForm->Act_Save_As, &CMainWindow::slotSaveAs);
    connectAction(m_pForm->Act_Save_Legacy, &CMainWindow::slotSaveAsLegacy);
    connectAction(m_pForm->Act_Save_Image, &CMainWindow::slotSaveImage);
    connectAction(m_pForm->Act_Close, &CMainWindow::slotClose);
    connectAction(m_pForm->Act_Close_All, &CMainWindow::slotCloseAll);
    connectAction(m_pForm->Act_Exit, &CMainWindow::slotExit);
    connectAction(m_pForm->Act_Undo, &CMainWindow::slotUndo);
    connectAction(m_pForm->Act_Redo, &CMainWindow::slotRedo);
    connectAction(m_pForm->Act_Encode, &CMainWindow::slotEncode);
    connectAction(m_pForm->Act_Align2, &CMainWindow::slotPadData2);
    connectAction(m_pForm->Act_Align4, &CMainWindow::slotPadData4);
    connectAction(m_pForm->Act_Align8, &CMainWindow::slotPadData8);
    connectAction(m_pForm->Act_Change_Grid_Size, &CMainWindow::slotChangeGridSize);
    connectAction(m_pForm->Act_Change_BG_Colour, &CMainWindow::slotChangeBackgroundColour);
    connectAction(m_pForm->Act_Tile_Windows, &CMainWindow::slotTileWindows);
    connectAction(m_pForm->Act_Cascade_Windows, &CMainWindow::slotCascadeWindows);
    connectAction(m_pForm->Act_Fit_Window, &CMainWindow::slotFitTexture);
    connectAction(m_pForm->Act_Help, &CMainWindow::slotHelp);
    connectAction(m_pForm->Act_MOXFileFormatSpec, &CMainWindow::slotMOXSpec);
    connectAction(m_pForm->Act_Feedback, &CMainWindow::slotFeedback);
    connect(m_pForm->Act_Show_Grid, &QAction::toggled, this, &CMainWindow::slotShowGrid);
    // Not to the slot itself: the check mark that a command reports would be taken for its argument.
    connect(m_pForm->Act_About, &QAction::triggered, this, [this] { slotAboutBox(); });

    connect(m_pForm->MdiArea, &QMdiArea::subWindowActivated, this, &CMainWindow::followActivation);
    connect(m_pZoomSlider, &QSlider::valueChanged, this, &CMainWindow::slotUpdateZoomFromSlider);
    connect(m_pRecentFiles.get(), &RecentFiles::triggered, this, &CMainWindow::slotOpenRecentFileWithData);
}

void CMainWindow::connectDocks()
{
    connect(m_pSurfacesDock, &CSurfacesDock::signalTextureClicked, this, &CMainWindow::slotTextureChosen);
    connect(m_pSurfacesDock, &CSurfacesDock::signalLoadToCurrentSurface, this, &CMainWindow::slotLoadToCurrentSurface);
    connect(this, &CMainWindow::signalUpdateTextureList, m_pSurfacesDock, &CSurfacesDock::slotUpdateTextureList);
    connect(this, &CMainWindow::signalUpdateTextureInfo, m_pTexInfoDock, &CTexInfoDock::slotUpdateTextures);
    connect(m_pTexInfoDock, &CTexInfoDock::colourSpaceChanged, this, &CMainWindow::onColourSpaceChanged);
    connect(m_pDisplayDock->getZoomSlider(), &QSlider::sliderMoved, this, &CMainWindow::slotSyncZoomSliders);
    connect(m_pDisplayDock, &CDisplayDock::signalChangeColourMask, this, &CMainWindow::slotChangeColourMask);
    connect(m_pDisplayDock, &CDisplayDock::signalChangeViewMode, this, &CMainWindow::slotChangeViewMode);
    connect(this, &CMainWindow::signalNewActiveWindow, m_pDisplayDock, &CDisplayDock::slotActiveWindow);
    connect(this, &CMainWindow::signalNewActiveWindow, m_pToolBoxDock, &CToolBoxDock::slotActiveWindow);
    connect(this, &CMainWindow::signalUpdateDisplayColour, m_pDisplayDock, &CDisplayDock::slotUpdateColours);
    connect(this, &CMainWindow::signalUpdateDiffParams, m_pDisplayDock, &CDisplayDock::slotUpdateDiffParams);
}

void CMainWindow::findRuledActions()
{
    for (const ActionRule& rule : getActionRules())
    {
        auto* pObject = findChild<QObject*>(QLatin1String(rule.pName));
        Q_ASSERT(pObject != nullptr);
        m_aRuledActions.emplace_back(pObject, rule);
    }
}

void CMainWindow::showCritical(const QString& strTitle, const QString& strText, const QString& strInformativeText)
{
    QMessageBox box(QMessageBox::Critical, strTitle, strText, QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(strInformativeText);
    box.exec();
}
void CMainWindow::mousePressEvent(QMouseEvent* pEvent)
{
    QMainWindow::mousePressEvent(pEvent);
    const bool bOverTextures = m_pForm->MdiArea->underMouse() || (m_pCurrentView && m_pCurrentView->underMouse());
    if (pEvent->button() != Qt::RightButton)
        m_pContextMenu->hide();
    else if (bOverTextures)
        m_pContextMenu->popup(pEvent->globalPos());
}
