#include "MainWindow/CMainWindow.h"

#include <set>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QVBoxLayout>

#include "Application/Common/OpenedUrls.h"
#include "Application/MainWindow/MainWindowFixture.h"
#include "MainWindow/ActionRules.h"

namespace
{

using testsupport::CDialogAnswers;

struct ActionRow
{
    const char* pName;
    const char* pText;
    const char* pToolTip; ///< null: none of its own
    const char* pShortcut;
    bool bStart;  ///< enabled in an empty window
    bool bSingle; ///< enabled with a texture open
    const char* pIcon;
};

// Written down from the description of the form. What is not built yet is disabled in both states.
constexpr ActionRow k_aActions[] = {
    {"Act_New", "New...", "Create a new texture", "Ctrl+N", false, false, "NewFile"},
    {"Act_Open", "Open...", "Open an image or texture file", "Ctrl+O", true, true, "OpenFile"},
    {"Act_Create_Cube_Map", "Create Cubemap...", nullptr, "", false, false, nullptr},
    {"Act_Create_Array", "Create Texture Array...", "Combine multiple textures into a single array.", "", false, false, nullptr},
    {"Act_Font_To_Bitmap", "Create Font Texture...", nullptr, "", false, false, nullptr},
    {"Act_Wrap_Raw_Data", "Wrap Raw Data...", nullptr, "", false, false, nullptr},
    {"Act_Reload", "Reload Texture", "Reload Texture", "Ctrl+R; F5", false, true, nullptr},
    {"Act_Save", "Save...", "Save the current texture", "Ctrl+S", false, true, "SaveFile"},
    {"Act_Save_As", "Save As...", nullptr, "", false, true, nullptr},
    {"Act_Save_Legacy", "Save As Legacy...", "Save As A Legacy MOX (Version 2)", "", false, true, nullptr},
    {"Act_Save_Image", "Save Image...", nullptr, "Ctrl+Alt+S", false, true, nullptr},
    {"Act_Close", "Close", "Close the current texture", "", false, true, "Close"},
    {"Act_Close_All", "Close All", nullptr, "", false, true, nullptr},
    {"Act_Exit", "Exit", nullptr, "Alt+F4", true, true, nullptr},
    {"Act_Undo", "Undo", "Undo the previous action", "Ctrl+Z", false, false, "Undo"},
    {"Act_Redo", "Redo", "Redo a previously undone action", "Ctrl+Y", false, false, "Redo"},
    {"Act_Encode", "Encode", "Encode the current texture to a new format", "Ctrl+E", false, true, "EncodeTexture"},
    {"Act_Align2", "Align to 2 Byte Boundary", nullptr, "", true, true, nullptr},
    {"Act_Align4", "Align to 4 Byte Boundary", nullptr, "", true, true, nullptr},
    {"Act_Align8", "Align to 8 Byte Boundary", nullptr, "", true, true, nullptr},
    {"Act_Show_Grid", "Show Grid", nullptr, "Ctrl+G", false, true, nullptr},
    {"Act_Change_Grid_Size", "Change Grid Size...", nullptr, "", false, true, nullptr},
    {"Act_Change_BG_Colour", "Change Background Colour...", nullptr, "", false, true, nullptr},
    {"Act_Errors", "Error Metrics", "Display various error metrics for an encoded texture", "Ctrl+Shift+E", false, false, "MetricsStats"},
    {"Act_LeftDiff", "Select Diff Input", nullptr, "Ctrl+D", false, false, "DiffInput"},
    {"Act_RightDiff", "Diff Against <Input>", nullptr, "Ctrl+Shift+D", false, false, "DiffAgainst"},
    {"Act_Tile_Windows", "Tile Windows", nullptr, "", true, true, nullptr},
    {"Act_Cascade_Windows", "Cascade Windows", nullptr, "", true, true, nullptr},
    {"Act_Fit_Window", "Fit Window To Texture", nullptr, "", true, true, nullptr},
    {"Act_Help", "Halvane Help", nullptr, "F1", true, true, nullptr},
    {"Act_MOXFileFormatSpec", "MOX File Format Specification", nullptr, "Ctrl+F1", true, true, nullptr},
    {"Act_Feedback", "Feedback", nullptr, "", true, true, nullptr},
    {"Act_Updates", "Check for Updates", nullptr, "", false, false, nullptr},
    {"Act_About", "About Halvane", nullptr, "", true, true, nullptr},
    {"Act_Clear_Recent_Files", "Clear Recent Files...", nullptr, "", true, true, nullptr},
    {"Act_BreakDiff", "Split Windows", nullptr, "", false, false, nullptr},
};

/// Texts of a menu, "--" for a separator.
std::vector<std::string> textsOf(const QList<QAction*>& actions)
{
    std::vector<std::string> texts;
    for (const QAction* pAction : actions)
        texts.push_back(pAction->isSeparator() ? "--" : QString(pAction->text()).remove('&').toStdString());
    return texts;
}

using CMainWindowTest = MainWindowTest;
using Texts = std::vector<std::string>;

TEST_F(CMainWindowTest, HasEveryCommandWithItsTextTipShortcutAndIcon)
{
    for (const ActionRow& row : k_aActions)
    {
        const QAction& command = action(row.pName);
        EXPECT_EQ(row.pText, command.text().toStdString());
        // Without a tip of its own a command has its text for one, less the points.
        const std::string strText = row.pText;
        const std::string strTip = row.pToolTip != nullptr ? row.pToolTip : strText.substr(0, strText.find("..."));
        EXPECT_EQ(strTip, command.toolTip().toStdString());
        EXPECT_EQ(row.pShortcut, QKeySequence::listToString(command.shortcuts(), QKeySequence::PortableText).toStdString()) << row.pName;
        EXPECT_EQ(row.pIcon == nullptr, command.icon().isNull()) << row.pName;
        EXPECT_EQ(row.pName == std::string("Act_Show_Grid"), command.isCheckable()) << row.pName;
        if (row.pIcon == nullptr)
            continue;
        const QPixmap expected(QString(":/Icons/Icons/MainWindow/%1_24.png").arg(row.pIcon));
        ASSERT_FALSE(expected.isNull()) << row.pName;
        EXPECT_EQ(expected.toImage(), command.icon().pixmap(24, 24).toImage()) << row.pName;
    }
    const QPixmap icon(":/AppIcons/Halvane_256.png");
    ASSERT_FALSE(icon.isNull());
    EXPECT_EQ(icon.toImage(), window().windowIcon().pixmap(icon.size()).toImage());
}

TEST_F(CMainWindowTest, HasNoCommandBeyondThose)
{
    size_t uiCount = 0;
    for (const QAction* pAction : window().findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly))
        uiCount += pAction->objectName().startsWith("Act_") ? 1 : 0;
    EXPECT_EQ(std::size(k_aActions), uiCount);
}

TEST_F(CMainWindowTest, EnablesAtItsStartWhatNeedsNoTexture)
{
    for (const ActionRow& row : k_aActions)
        EXPECT_EQ(row.bStart, action(row.pName).isEnabled()) << row.pName;
    EXPECT_FALSE(menu("Menu_Edit").isEnabled());
    EXPECT_FALSE(menu("Menu_Align").isEnabled());
    EXPECT_FALSE(menu("Menu_Window").isEnabled());
    EXPECT_TRUE(menu("Menu_File").isEnabled());
    EXPECT_TRUE(menu("Menu_View").isEnabled());
    EXPECT_TRUE(menu("Menu_Help").isEnabled());
}

TEST_F(CMainWindowTest, EnablesMoreWhenATextureIsOpenAndLessWhenItIsClosed)
{
    openView(png("a.png"));
    for (const ActionRow& row : k_aActions)
        EXPECT_EQ(row.bSingle, action(row.pName).isEnabled()) << row.pName;
    for (const char* pMenu : {"Menu_Edit", "Menu_Align", "Menu_Window"})
        EXPECT_TRUE(menu(pMenu).isEnabled()) << pMenu;

    action("Act_Close").trigger();
    settle();
    for (const ActionRow& row : k_aActions)
        EXPECT_EQ(row.bStart, action(row.pName).isEnabled()) << row.pName;
    for (const char* pMenu : {"Menu_Edit", "Menu_Align", "Menu_Window"})
        EXPECT_FALSE(menu(pMenu).isEnabled()) << pMenu;
}

TEST_F(CMainWindowTest, HasARuleForEachCommandThatIsInAMenu)
{
    std::set<std::string> ruled;
    for (const ActionRule& rule : getActionRules())
    {
        EXPECT_NE(nullptr, window().findChild<QObject*>(rule.pName)) << rule.pName;
        ruled.insert(rule.pName);
    }
    for (const ActionRow& row : k_aActions)
    {
        const bool bInNoMenu = row.pName == std::string("Act_Clear_Recent_Files") || row.pName == std::string("Act_BreakDiff");
        EXPECT_EQ(bInNoMenu, ruled.count(row.pName) == 0) << row.pName;
    }
}

TEST_F(CMainWindowTest, OrdersItsMenus)
{
    EXPECT_EQ(Texts({"File", "Edit", "View", "Window", "Help"}), textsOf(window().menuBar()->actions()));
    EXPECT_EQ(Texts({"New...", "Open Recent", "Open...", "--", "Create Cubemap...", "Create Texture Array...", "Create Font Texture...",
                     "Wrap Raw Data...", "Reload Texture", "--", "Save...", "Save As...", "Save As Legacy...", "Save Image...", "--",
                     "Close", "Close All", "--", "Exit"}),
              textsOf(menu("Menu_File").actions()));
    EXPECT_EQ(Texts({"Undo", "Redo", "--", "Encode", "--", "Align Texture Data"}), textsOf(menu("Menu_Edit").actions()));
    EXPECT_EQ(Texts({"Align to 2 Byte Boundary", "Align to 4 Byte Boundary", "Align to 8 Byte Boundary"}),
              textsOf(menu("Menu_Align").actions()));
    EXPECT_EQ(Texts({"Show Grid", "Change Grid Size...", "Change Background Colour...", "--", "Error Metrics", "Select Diff Input",
                     "Diff Against <Input>", "--", "Toolbox", "Surface Browser", "Texture Information", "Display Options", "--",
                     "Quick Access Bar"}),
              textsOf(menu("Menu_View").actions()));
    EXPECT_EQ(Texts({"Tile Windows", "Cascade Windows", "--", "Fit Window To Texture"}), textsOf(menu("Menu_Window").actions()));
    EXPECT_EQ(Texts({"Halvane Help", "MOX File Format Specification", "--", "Feedback", "Check for Updates", "--", "About Halvane"}),
              textsOf(menu("Menu_Help").actions()));
}

TEST_F(CMainWindowTest, HasAToolBarAndAContextMenuOfTheSameCommands)
{
    auto* pBar = window().findChild<QToolBar*>("Toolbar");
    ASSERT_NE(nullptr, pBar);
    EXPECT_EQ("Quick Access Bar", pBar->windowTitle());
    EXPECT_EQ(Qt::TopToolBarArea, window().toolBarArea(pBar));
    const Texts expected = {"New...",
                            "Open...",
                            "Save...",
                            "Close",
                            "--",
                            "Undo",
                            "Redo",
                            "--",
                            "Encode",
                            "--",
                            "Select Diff Input",
                            "Diff Against <Input>",
                            "Error Metrics"};
    EXPECT_EQ(expected, textsOf(pBar->actions()));
    EXPECT_EQ(expected, textsOf(menu("Menu_Context").actions()));
}

TEST_F(CMainWindowTest, OpensItsContextMenuOverTheTexturesAlone)
{
    const QMenu& context = menu("Menu_Context");
    const QPoint inside = area().mapTo(&window(), area().rect().center());
    QTest::mouseMove(&area(), area().rect().center());
    QTest::mouseClick(area().viewport(), Qt::RightButton, {}, area().viewport()->rect().center());
    EXPECT_TRUE(context.isVisible());
    QTest::mouseClick(&window(), Qt::LeftButton, {}, inside);
    EXPECT_FALSE(context.isVisible());

    auto* pBar = window().statusBar();
    QTest::mouseMove(pBar, pBar->rect().center());
    QMouseEvent press(QEvent::MouseButtonPress, pBar->mapTo(&window(), pBar->rect().center()), Qt::RightButton, Qt::RightButton, {});
    QApplication::sendEvent(&window(), &press);
    EXPECT_FALSE(context.isVisible());
}

TEST_F(CMainWindowTest, OpensItsContextMenuOverAView)
{
    CTexViewWindowSingle& view = openView(png("a.png", 64, 64));
    QTest::mouseMove(&view, {20, 20});
    QTest::mouseClick(&view, Qt::RightButton, {}, {20, 20});
    EXPECT_TRUE(menu("Menu_Context").isVisible());
    EXPECT_EQ(view.mapToGlobal({20, 20}), menu("Menu_Context").pos());
    menu("Menu_Context").hide();
}

TEST_F(CMainWindowTest, PutsItsDocksToTheLeftInTabsAndTheToolboxToTheRight)
{
    const auto dock = [&](const char* pTitle) -> QDockWidget*
    {
        for (QDockWidget* pDock : window().findChildren<QDockWidget*>())
            if (pDock->windowTitle() == pTitle)
                return pDock;
        return nullptr;
    };
    QDockWidget* pSurfaces = dock("Surface Browser");
    ASSERT_NE(nullptr, pSurfaces);
    EXPECT_EQ(Qt::LeftDockWidgetArea, window().dockWidgetArea(pSurfaces));
    EXPECT_EQ(QList<QDockWidget*>({dock("Texture Information"), dock("Display Options")}), window().tabifiedDockWidgets(pSurfaces));
    EXPECT_EQ(Qt::RightDockWidgetArea, window().dockWidgetArea(dock("Toolbox")));
    EXPECT_EQ(QMainWindow::AnimatedDocks | QMainWindow::ForceTabbedDocks | QMainWindow::VerticalTabs, window().dockOptions());
}

TEST_F(CMainWindowTest, FillsItsCentreWithTheAreaOfTextures)
{
    auto* pLayout = qobject_cast<QVBoxLayout*>(window().centralWidget()->layout());
    ASSERT_NE(nullptr, pLayout);
    EXPECT_EQ(QMargins(0, 0, 0, 0), pLayout->contentsMargins());
    EXPECT_EQ(&area(), pLayout->itemAt(0)->widget());
    EXPECT_EQ(Qt::ScrollBarAsNeeded, area().horizontalScrollBarPolicy());
    EXPECT_EQ(Qt::ScrollBarAsNeeded, area().verticalScrollBarPolicy());
    EXPECT_TRUE(window().acceptDrops());
}

TEST_F(CMainWindowTest, NeverScrollsTheAreaByTheWheel)
{
    CTexViewWindowSingle& view = openView(png("a.png", 2000, 2000));
    qobject_cast<QMdiSubWindow*>(view.parentWidget())->setGeometry(0, 0, 2000, 2000);
    settle();
    for (QScrollBar* pBar : {area().horizontalScrollBar(), area().verticalScrollBar()})
    {
        ASSERT_GT(pBar->maximum(), 0);
        const int iValue = pBar->value();
        QWheelEvent wheel(QPointF(2, 2), QPointF(2, 2), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(pBar, &wheel);
        EXPECT_EQ(iValue, pBar->value());
    }
}

TEST_F(CMainWindowTest, StartsWithADisabledStatusBar)
{
    EXPECT_FALSE(window().statusBar()->isEnabled());
    EXPECT_EQ("1 : 1", labelText("ZoomLabel"));
    EXPECT_EQ(3, zoomSlider().value());
    EXPECT_EQ(0, zoomSlider().minimum());
    EXPECT_EQ(10, zoomSlider().maximum());
    EXPECT_EQ(Qt::Horizontal, zoomSlider().orientation());
    for (const char* pName : {"PositionLabel", "SurfaceLabel", "SizeLabel"})
        EXPECT_EQ(210, label(pName).minimumWidth()) << pName;

    // From left to right.
    int iLast = -1;
    for (const char* pName :
         {"PositionLabel", "line", "SurfaceLabel", "line_2", "SizeLabel", "line_3", "line_4", "ZoomLabel", "ZoomSlider"})
    {
        const auto* pWidget = window().statusBar()->findChild<QWidget*>(pName);
        ASSERT_NE(nullptr, pWidget) << pName;
        EXPECT_GT(pWidget->x(), iLast) << pName;
        iLast = pWidget->x();
    }
}

TEST_F(CMainWindowTest, FindsItsLayoutAgainAtTheNextStart)
{
    window().findChild<QToolBar*>("Toolbar")->hide();
    QDockWidget* pToolbox = window().findChild<QDockWidget*>("Dock_Toolbox");
    ASSERT_NE(nullptr, pToolbox);
    window().addDockWidget(Qt::BottomDockWidgetArea, pToolbox);
    pToolbox->hide();
    window().setGeometry(10, 20, 770, 740);
    settle();

    restart();
    EXPECT_TRUE(window().findChild<QToolBar*>("Toolbar")->isHidden());
    EXPECT_EQ(Qt::BottomDockWidgetArea, window().dockWidgetArea(window().findChild<QDockWidget*>("Dock_Toolbox")));
    EXPECT_TRUE(window().findChild<QDockWidget*>("Dock_Toolbox")->isHidden());
    EXPECT_EQ(QRect(10, 20, 770, 740), window().geometry());
}

TEST_F(CMainWindowTest, PassesOverALayoutThatWasDamaged)
{
    window().findChild<QToolBar*>("Toolbar")->hide();
    window().setGeometry(10, 20, 770, 740);
    settle();
    m_pWindow.reset();
    struct Layout
    {
        std::vector<uint8_t> state, geometry;
        uint32_t ui32StateCheck = 0, ui32GeometryCheck = 0;
    };
    Layout good;
    Preferences settings("Halvane");
    std::string strError;
    ASSERT_TRUE(settings.load(strError, false)) << strError;
    ASSERT_EQ(Preferences::eDone, settings.getData("Main/State", good.state));
    ASSERT_EQ(Preferences::eDone, settings.getUint("Main/StateCheck", good.ui32StateCheck));
    ASSERT_EQ(Preferences::eDone, settings.getData("Main/Geometry", good.geometry));
    ASSERT_EQ(Preferences::eDone, settings.getUint("Main/GeometryCheck", good.ui32GeometryCheck));

    // What is restored of a layout: the state, the geometry.
    const auto restored = [&](const Layout& layout)
    {
        settings.setData("Main/State", layout.state.data(), layout.state.size());
        settings.setUint("Main/StateCheck", layout.ui32StateCheck);
        settings.setData("Main/Geometry", layout.geometry.data(), layout.geometry.size());
        settings.setUint("Main/GeometryCheck", layout.ui32GeometryCheck);
        EXPECT_TRUE(settings.save(true));
        const CMainWindow window;
        return std::pair(window.findChild<QToolBar*>("Toolbar")->isHidden(), window.geometry() == QRect(10, 20, 770, 740));
    };
    ASSERT_EQ(std::pair(true, true), restored(good));

    constexpr size_t uiChanges = 36;
    for (size_t i = 0; i < uiChanges; ++i)
    {
        Layout damaged = good;
        damaged.state[i * damaged.state.size() / uiChanges] ^= 0xFF;
        EXPECT_EQ(std::pair(false, true), restored(damaged)) << i;
        damaged = good;
        damaged.geometry[i * damaged.geometry.size() / uiChanges] ^= 0x7F;
        EXPECT_EQ(std::pair(true, false), restored(damaged)) << i;
    }
    Layout wrong = good;
    wrong.ui32StateCheck ^= 1u;
    wrong.geometry.clear();
    EXPECT_EQ(std::pair(false, false), restored(wrong));
    EXPECT_EQ(std::pair(true, true), restored(good));
}

TEST_F(CMainWindowTest, OffersADockToggleThatWorks)
{
    QDockWidget* pToolbox = window().findChild<QDockWidget*>("Dock_Toolbox");
    ASSERT_TRUE(pToolbox->isVisible());
    for (QAction* pAction : menu("Menu_View").actions())
        if (pAction->text() == "Toolbox")
            pAction->trigger();
    EXPECT_FALSE(pToolbox->isVisible());
}

TEST_F(CMainWindowTest, ShowsTheSplashAtStartOnlyIfTheUserWantsIt)
{
    auto* pAbout = window().findChild<QDialog*>("AboutBoxClass");
    ASSERT_NE(nullptr, pAbout);
    window().slotAboutBox(false);
    EXPECT_TRUE(pAbout->isVisible());
    pAbout->hide();

    pAbout->findChild<QCheckBox*>("ShowAtStartUpCB")->click();
    window().slotAboutBox(false);
    EXPECT_FALSE(pAbout->isVisible());
    action("Act_About").trigger();
    EXPECT_TRUE(pAbout->isVisible());
    pAbout->hide();
    EXPECT_EQ("Halvane 4.23.0 (SDK build 19.2@5581729)", pAbout->findChild<QLabel*>("AppVersionLabel")->text().toStdString());
    EXPECT_EQ(std::string("FreeType Project version 2.4.7 |\nMOX Texture Library version 4.23 | Qt version ") + qVersion(),
              pAbout->findChild<QLabel*>("UsesLabel")->text().toStdString());
}

TEST_F(CMainWindowTest, SendsFeedbackThroughADialogWithItsVersion)
{
    std::string strText;
    CDialogAnswers answers;
    answers.thenDo(
        [&](QDialog& dialog)
        {
            for (const auto* pBox : dialog.findChildren<QWidget*>("RequiredText"))
                strText =
                    (pBox->property("plainText").isValid() ? pBox->property("plainText") : pBox->property("text")).toString().toStdString();
            dialog.accept();
        });
    action("Act_Feedback").trigger();
    EXPECT_EQ("Halvane 4.23.0", strText);
}

TEST_F(CMainWindowTest, GoesOnWithoutSettingsThatCannotBeLoaded)
{
    m_pWindow.reset();
    testsupport::CEnvironmentKeeper::set("XDG_CONFIG_HOME", m_Files.write("file", "in the way"));
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Ok);
    start();
    ASSERT_EQ(1u, answers.seen().size());
    EXPECT_EQ("Could not load preferences", answers.seen()[0].strTitle);
    EXPECT_EQ(QMessageBox::Warning, answers.seen()[0].eIcon);
    EXPECT_EQ(QMessageBox::Ok, answers.seen()[0].buttons);
    EXPECT_EQ("ERROR: Failed to create the folder \"" + m_Files.path("file") +
                  "/Larkfield Systems\": File exists.\nContinuing without preferences",
              answers.seen()[0].strText);

    openView(png("a.png"));
    EXPECT_EQ(1, windowCount());
}

TEST_F(CMainWindowTest, GoesOnWithoutSettingsOfAWrongStructureAndLeavesThemAlone)
{
    m_pWindow.reset();
    const std::string strFile = m_Config.path("Larkfield Systems/Halvane.plist");
    const std::string strWrong = "<plist version=\"1.0\"><dict><string>x</string></dict></plist>";
    m_Config.write("Larkfield Systems/Halvane.plist", strWrong);
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Ok);
    start();
    ASSERT_EQ(1u, answers.seen().size());
    EXPECT_EQ("Could not load preferences", answers.seen()[0].strTitle);
    EXPECT_EQ("ERROR: Missing <key> tag\n\nContinuing without preferences", answers.seen()[0].strText);
    openView(png("a.png"));
    m_pWindow.reset();
    EXPECT_EQ(strWrong, testsupport::readText(strFile));
}

TEST_F(CMainWindowTest, OpensTheDocumentsThatItsSettingsName)
{
    m_pWindow.reset();
    const std::string strManual = m_Files.write("manual.html", "text"), strFormat = m_Files.write("format.pdf", "text");
    Preferences settings("Halvane");
    std::string strError;
    ASSERT_TRUE(settings.load(strError, false)) << strError;
    settings.setText("OpenDocs/Document", strManual);
    settings.setText("OpenDocs/FileFormat", strFormat);
    ASSERT_TRUE(settings.save());
    start();
    const COpenedUrls opened({"file"});
    action("Act_Help").trigger();
    action("Act_MOXFileFormatSpec").trigger();
    EXPECT_EQ("file://" + strManual + "\nfile://" + strFormat + "\n", opened.seen().toStdString());
}

TEST_F(CMainWindowTest, GoesAwayWithTexturesOpen)
{
    openView(png("a.png"));
    CTexViewWindowSingle& view = openView(png("b.png"));
    edit(view);
    m_pWindow.reset();
    EXPECT_EQ(nullptr, m_pWindow.get());
}

} // namespace
