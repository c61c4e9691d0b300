#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QTreeWidget>

#include "Application/MainWindow/MainWindowFixture.h"

using namespace moxtexture;
using testsupport::makeBytes;

namespace
{

class CMainWindowStatusTest : public MainWindowTest
{
protected:
    QWidget& dock(const char* pName) const { return *window().findChild<QDockWidget*>(pName); }
    QLabel& dockLabel(const char* pName) const { return *dock("Dock_Display").findChild<QLabel*>(pName); }
    QSlider& dockSlider() const { return *dock("Dock_Display").findChild<QSlider*>("ZoomSlider"); }
    QTreeWidget& tree() const { return *window().findChild<QTreeWidget*>("Tree_Surfaces"); }
    static QMdiSubWindow* subWindowOf(const CTexViewWindowSingle& view) { return qobject_cast<QMdiSubWindow*>(view.parentWidget()); }

    /// Both sliders and both labels show one zoom.
    void expectZoom(int iPosition, const std::string& strText) const
    {
        EXPECT_EQ(iPosition, zoomSlider().value());
        EXPECT_EQ(iPosition, dockSlider().value());
        EXPECT_EQ(strText, labelText("ZoomLabel"));
        EXPECT_EQ(strText, dockLabel("ZoomLabel").text().toStdString());
    }

    static void turnWheel(QWidget& widget, int iDelta)
    {
        const QPointF position(2, 2);
        QWheelEvent wheel(position, QPointF(widget.mapToGlobal(position.toPoint())), QPoint(), QPoint(0, iDelta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &wheel);
    }
};

TEST_F(CMainWindowStatusTest, ShowsTheSizeOfTheActiveTexture)
{
    CTexViewWindowSingle& first = openView(png("a.png", 5, 3));
    EXPECT_TRUE(window().statusBar()->isEnabled());
    EXPECT_EQ("Size: 5 x 3\t", labelText("SizeLabel"));
    openView(png("b.png", 7, 9));
    EXPECT_EQ("Size: 7 x 9\t", labelText("SizeLabel"));
    area().setActiveSubWindow(subWindowOf(first));
    EXPECT_EQ("Size: 5 x 3\t", labelText("SizeLabel"));
}

TEST_F(CMainWindowStatusTest, ShowsNothingAfterTheLastTextureIsClosed)
{
    openView(mox("a.mox", makeBytes(4, 4, 0, 3)));
    zoomSlider().setValue(6);
    action("Act_Close").trigger();
    settle();
    EXPECT_EQ(0, windowCount());
    EXPECT_FALSE(window().statusBar()->isEnabled());
    EXPECT_EQ("Size:\t", labelText("SizeLabel"));
    EXPECT_EQ("", labelText("PositionLabel"));
    EXPECT_EQ("", labelText("SurfaceLabel"));
    EXPECT_EQ("", dockLabel("PositionLabel").text().toStdString());
    expectZoom(3, "  :  ");
    EXPECT_EQ(0, tree().topLevelItemCount());
    EXPECT_FALSE(action("Act_Show_Grid").isChecked());
}

TEST_F(CMainWindowStatusTest, SignalsThatThereIsNoTextureAnyMore)
{
    openView(png("a.png"));
    bool bToldOfNone = false;
    QObject::connect(&window(), &CMainWindow::signalUpdateTextureInfo,
                     [&](auto* pName, auto* pHeader, auto* pOther, auto* pOtherHeader)
                     { bToldOfNone = !pName && !pHeader && !pOther && !pOtherHeader; });
    QSignalSpy active(&window(), &CMainWindow::signalNewActiveWindow);
    action("Act_Close").trigger();
    settle();
    EXPECT_TRUE(bToldOfNone);
    ASSERT_FALSE(active.isEmpty());
    EXPECT_EQ(QList<QVariant>({false, false}), active.back());
}

TEST_F(CMainWindowStatusTest, SignalsWhatIsKnownOfAnActiveTexture)
{
    std::string strName;
    uint32_t ui32Width = 0;
    bool bSecond = true;
    QObject::connect(&window(), &CMainWindow::signalUpdateTextureInfo,
                     [&](const std::string* pName, const CMOXTextureHeader* pHeader, const std::string*, const CMOXTextureHeader* pOther)
                     {
                         strName = *pName;
                         ui32Width = pHeader->getWidth();
                         bSecond = pOther != nullptr;
                     });
    QSignalSpy active(&window(), &CMainWindow::signalNewActiveWindow), diff(&window(), &CMainWindow::signalUpdateDiffParams);
    const std::string strPath = png("a.png", 21, 4);
    openView(strPath);
    EXPECT_EQ(strPath, strName);
    EXPECT_EQ(21u, ui32Width);
    EXPECT_FALSE(bSecond);
    EXPECT_EQ(QList<QVariant>({true, false}), active.back());
    EXPECT_EQ(QList<QVariant>({0, 1.0f, 0.1f, 50.0f}), diff.back());
}

TEST_F(CMainWindowStatusTest, ListsItsTexturesInTheOrderOfTheirOpening)
{
    QList<QString> titles, names;
    std::vector<uint32_t> widths;
    QObject::connect(&window(), &CMainWindow::signalUpdateTextureList,
                     [&](const QList<QString>& listNames, const QList<QString>& fullNames, const QList<CMOXTextureHeader*>& headers)
                     {
                         titles = listNames;
                         names = fullNames;
                         widths.clear();
                         for (const CMOXTextureHeader* pHeader : headers)
                             widths.push_back(pHeader->getWidth());
                     });
    const std::string strFirst = png("a.png", 5, 5), strSecond = png("b.png", 6, 6);
    CTexViewWindowSingle& first = openView(strFirst);
    openView(strSecond);
    area().setActiveSubWindow(subWindowOf(first));
    edit(first);
    window().slotTextureUpdated();
    EXPECT_EQ(QList<QString>({"a.png *", "b.png"}), titles);
    EXPECT_EQ(QList<QString>({QString::fromStdString(strFirst), QString::fromStdString(strSecond)}), names);
    EXPECT_EQ(std::vector<uint32_t>({5, 6}), widths);
    ASSERT_EQ(2, tree().topLevelItemCount());
    EXPECT_EQ("a.png * (5 x 5)", tree().topLevelItem(0)->text(0).toStdString());
}

TEST_F(CMainWindowStatusTest, SyncsBothZoomSlidersAndLabelsAtEveryPosition)
{
    CTexViewWindowSingle& view = openView(png("a.png"));
    const std::string astrTexts[] = {"0.125 : 1", "0.25 : 1", "0.5 : 1", "1 : 1",  "2 : 1",  "4 : 1",
                                     "8 : 1",     "16 : 1",   "32 : 1",  "64 : 1", "128 : 1"};
    expectZoom(3, "1 : 1");
    for (int i = 0; i <= 10; ++i)
    {
        zoomSlider().setValue(i);
        EXPECT_EQ(i, view.getZoomPosition());
        expectZoom(i, astrTexts[i]);
    }
    for (int i = 10; i >= 0; --i)
    {
        window().slotSyncZoomSliders(i);
        EXPECT_EQ(i, view.getZoomPosition());
        expectZoom(i, astrTexts[i]);
    }
}

TEST_F(CMainWindowStatusTest, FollowsTheSliderOfTheDisplayDock)
{
    CTexViewWindowSingle& view = openView(png("a.png"));
    QTest::keyClick(&dockSlider(), Qt::Key_Right);
    EXPECT_EQ(4, view.getZoomPosition());
    expectZoom(4, "2 : 1");
}

TEST_F(CMainWindowStatusTest, FollowsTheWheelOverAView)
{
    CTexViewWindowSingle& view = openView(png("a.png"));
    turnWheel(view, 120);
    expectZoom(4, "2 : 1");
    turnWheel(view, -360);
    expectZoom(3, "1 : 1"); // one step, however far it turns
    turnWheel(view, -1);
    expectZoom(2, "0.5 : 1");
    for (int i = 0; i < 5; ++i)
        turnWheel(view, -120);
    expectZoom(0, "0.125 : 1");
}

TEST_F(CMainWindowStatusTest, SnapsTheSlidersBackInACubeView)
{
    CTexViewWindowSingle& view = openView(mox("a.mox", makeBytes(4, 4, 0, 1, 1, 6)));
    window().slotChangeViewMode(eViewCube);
    zoomSlider().setValue(1);
    EXPECT_EQ(3, view.getZoomPosition());
    expectZoom(3, "1 : 1");
    zoomSlider().setValue(5);
    expectZoom(5, "4 : 1");
}

TEST_F(CMainWindowStatusTest, ShowsTheZoomOfTheViewThatBecomesActive)
{
    CTexViewWindowSingle& first = openView(png("a.png"));
    zoomSlider().setValue(7);
    openView(png("b.png"));
    expectZoom(3, "1 : 1");
    area().setActiveSubWindow(subWindowOf(first));
    expectZoom(7, "16 : 1");
}

TEST_F(CMainWindowStatusTest, KeepsTheSlidersAtTheirPlaceWithoutAView)
{
    window().slotSyncZoomSliders(8);
    expectZoom(3, "  :  ");
}

TEST_F(CMainWindowStatusTest, GivesTheDockTheMaskAndTheModeOfTheActiveView)
{
    CTexViewWindowSingle& first = openView(png("a.png"));
    auto& red = *dock("Dock_Display").findChild<QCheckBox*>("Check_RedSelect");
    auto& alpha = *dock("Dock_Display").findChild<QCheckBox*>("Check_AlphaSelect");
    auto& mode = *dock("Dock_Display").findChild<QComboBox*>("Combo_DisplayMode");
    red.click();
    mode.setCurrentIndex(1);
    EXPECT_EQ((std::array<uint8_t, 4>{0, 255, 255, 255}), first.getColourMask());
    EXPECT_EQ(eViewTiled, first.getViewMode());

    CTexViewWindowSingle& second = openView(png("b.png"));
    EXPECT_TRUE(red.isChecked());
    EXPECT_EQ(0, mode.currentIndex());
    alpha.click();
    EXPECT_EQ((std::array<uint8_t, 4>{255, 255, 255, 0}), second.getColourMask());
    EXPECT_EQ((std::array<uint8_t, 4>{0, 255, 255, 255}), first.getColourMask());

    area().setActiveSubWindow(subWindowOf(first));
    EXPECT_FALSE(red.isChecked());
    EXPECT_TRUE(alpha.isChecked());
    EXPECT_EQ(1, mode.currentIndex());

    subWindowOf(first)->close();
    subWindowOf(second)->close();
    settle();
    EXPECT_TRUE(red.isChecked());
    EXPECT_TRUE(alpha.isChecked());
    EXPECT_EQ(0, mode.currentIndex());
}

TEST_F(CMainWindowStatusTest, ShowsThePixelUnderTheMouse)
{
    // Byte n of the texture is 7n modulo 256: the pixel at (3, 2) of eight columns begins with byte 76.
    CTexViewWindowSingle& view = openView(mox("a.mox", makeBytes(64, 64)));
    QSignalSpy colours(&window(), &CMainWindow::signalUpdateDisplayColour);
    auto* pLabel = view.findChild<QLabel*>("Label_ViewPanel");
    ASSERT_NE(nullptr, pLabel);
    QTest::mouseMove(pLabel, {5, 5});
    QTest::mouseMove(pLabel, {3, 2});
    EXPECT_EQ("Position: 3, 2", labelText("PositionLabel"));
    EXPECT_EQ("3, 2\n", dockLabel("PositionLabel").text().toStdString());
    ASSERT_FALSE(colours.isEmpty());
    // (2 * 64 + 3) * 4 = 524; 524 * 7 = 3668 = 14 * 256 + 84.
    const QStringList expected = {"84", "91", "98", "105", "", "", "", "", "", "", "", ""};
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(expected[i], colours.back()[i].toString()) << i;

    // Outside the picture the status bar keeps its text.
    QTest::mouseMove(window().statusBar(), {5, 5});
    view.updateMousePosition(-100, -100);
    window().slotMousePositionUpdated();
    EXPECT_EQ("Position: 3, 2", labelText("PositionLabel"));
}

TEST_F(CMainWindowStatusTest, ForgetsTheColourOfTheTextureThatWasActiveBefore)
{
    CTexViewWindowSingle& first = openView(mox("a.mox", makeBytes(64, 64)));
    CTexViewWindowSingle& second = openView(mox("b.mox", makeBytes(64, 64)));
    QSignalSpy colours(&window(), &CMainWindow::signalUpdateDisplayColour);
    auto* pLabel = second.findChild<QLabel*>("Label_ViewPanel");
    QTest::mouseMove(pLabel, {5, 5});
    QTest::mouseMove(pLabel, {3, 2});
    ASSERT_FALSE(colours.isEmpty());
    ASSERT_NE("", colours.back()[0].toString());

    // What only refreshes the same texture keeps it.
    QTest::mouseMove(window().statusBar(), {5, 5});
    const int iCount = colours.size();
    window().slotSubWindowChanged(subWindowOf(second));
    for (int i = iCount; i < colours.size(); ++i)
        EXPECT_NE("", colours[i][0].toString());

    area().setActiveSubWindow(subWindowOf(first));
    ASSERT_FALSE(colours.isEmpty());
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ("", colours.back()[i].toString()) << i;
}

TEST_F(CMainWindowStatusTest, KeepsTheZoomSliderNarrowAndFollowsItsKeys)
{
    CTexViewWindowSingle& view = openView(png("a.png"));
    window().resize(1180, 760);
    settle();
    EXPECT_EQ(160, zoomSlider().width());
    QTest::keyClick(&zoomSlider(), Qt::Key_Right);
    EXPECT_EQ(4, view.getZoomPosition());
    QTest::keyClick(&zoomSlider(), Qt::Key_PageDown);
    EXPECT_EQ(3, view.getZoomPosition());
}

TEST_F(CMainWindowStatusTest, ShowsThePartsOfTheSurfaceThatThereAreMoreOf)
{
    CTexViewWindowSingle& view = openView(mox("plain.mox", makeBytes(4, 4)));
    EXPECT_EQ("", labelText("SurfaceLabel"));
    CTexViewWindowSingle& many = openView(mox("many.mox", makeBytes(4, 4, 0, 3, 2, 6)));
    EXPECT_EQ("MIP Map: 0   Surface: 0   Face: +X", labelText("SurfaceLabel"));
    EXPECT_EQ("\nFace: ", dockLabel("PositionLabel").text().toStdString()); // no name while the mouse is outside
    emit window().signalCurrentSurfaceUpdated(2, 1, 3);
    window().slotTextureUpdated();
    EXPECT_EQ("MIP Map: 2   Surface: 1   Face: -Y", labelText("SurfaceLabel"));
    EXPECT_EQ(2u, many.getMIPLevel());
    EXPECT_EQ(0u, view.getMIPLevel());
    openView(mox("levels.mox", makeBytes(4, 4, 0, 2)));
    EXPECT_EQ("MIP Map: 0   ", labelText("SurfaceLabel"));
}

TEST_F(CMainWindowStatusTest, ShowsTheSurfaceThatIsChosenInTheTree)
{
    CTexViewWindowSingle& first = openView(mox("first.mox", makeBytes(4, 4, 0, 3, 1, 6)));
    CTexViewWindowSingle& second = openView(mox("second.mox", makeBytes(8, 8, 0, 4)));
    ASSERT_EQ(2, tree().topLevelItemCount());

    // In the active window ...
    tree().setCurrentItem(tree().topLevelItem(1)->child(3));
    EXPECT_EQ(3u, second.getMIPLevel());
    EXPECT_EQ("MIP Map: 3   ", labelText("SurfaceLabel"));
    EXPECT_EQ(subWindowOf(second), area().currentSubWindow());
    // ... and in another, which is activated without the tree being built anew.
    QTreeWidgetItem* pFace = tree().topLevelItem(0)->child(1)->child(0)->child(4);
    tree().setCurrentItem(pFace);
    EXPECT_EQ(subWindowOf(first), area().currentSubWindow());
    EXPECT_EQ(1u, first.getMIPLevel());
    EXPECT_EQ(0u, first.getArrayMember());
    EXPECT_EQ(4u, first.getFace());
    EXPECT_EQ(3u, second.getMIPLevel());
    EXPECT_EQ("MIP Map: 1   Face: +Z", labelText("SurfaceLabel"));
    settle();
    EXPECT_EQ(QList<QTreeWidgetItem*>({pFace}), tree().selectedItems());
}

TEST_F(CMainWindowStatusTest, FindsTheRightOneOfTwoWindowsWithOneName)
{
    CTexViewWindowSingle& first = openView(mox("first.mox", makeBytes(4, 4, 0, 3)));
    CTexViewWindowSingle& second = openView(mox("second.mox", makeBytes(4, 4, 0, 3)));
    subWindowOf(second)->setObjectName(subWindowOf(first)->objectName());
    window().slotTextureUpdated();
    tree().setCurrentItem(tree().topLevelItem(1)->child(2));
    EXPECT_EQ(2u, second.getMIPLevel());
    EXPECT_EQ(0u, first.getMIPLevel());
    settle();
    tree().setCurrentItem(tree().topLevelItem(0)->child(1));
    EXPECT_EQ(1u, first.getMIPLevel());
    EXPECT_EQ(2u, second.getMIPLevel());
    EXPECT_EQ(subWindowOf(first), area().currentSubWindow());
}

TEST_F(CMainWindowStatusTest, IgnoresTheChoiceOfATextureThatIsGone)
{
    CTexViewWindowSingle& view = openView(mox("a.mox", makeBytes(4, 4, 0, 3)));
    window().slotTextureChosen("no such window", 1, 0, 0);
    EXPECT_EQ(0u, view.getMIPLevel());
    EXPECT_EQ(subWindowOf(view), area().currentSubWindow());
}

TEST_F(CMainWindowStatusTest, TellsOnlyTheActiveViewOfItsSettings)
{
    CTexViewWindowSingle& first = openView(png("a.png"));
    CTexViewWindowSingle& second = openView(png("b.png"));
    emit window().signalPaddingUpdated(4);
    EXPECT_EQ(4u, second.getPadding());
    EXPECT_EQ(0u, first.getPadding());
    area().setActiveSubWindow(subWindowOf(first));
    emit window().signalPaddingUpdated(8);
    EXPECT_EQ(8u, first.getPadding());
    EXPECT_EQ(4u, second.getPadding());
}

TEST_F(CMainWindowStatusTest, SurvivesAViewThatIsDestroyedWithoutBeingClosed)
{
    openView(png("a.png"));
    CTexViewWindowSingle& view = openView(png("b.png"));
    delete subWindowOf(view);
    settle();
    EXPECT_EQ(1, windowCount());
    EXPECT_EQ(1, tree().topLevelItemCount());
    delete subWindows().front();
    settle();
    EXPECT_EQ(0, tree().topLevelItemCount());
    EXPECT_FALSE(action("Act_Save").isEnabled());
    EXPECT_FALSE(window().statusBar()->isEnabled());
}

TEST_F(CMainWindowStatusTest, AViewThatIsDestroyedWithItsGridShownIsNotToldOfTheMarksEnd)
{
    openView(png("a.png"));
    action("Act_Show_Grid").trigger();
    delete subWindows().front();
    settle();
    EXPECT_FALSE(action("Act_Show_Grid").isChecked());
    EXPECT_TRUE(openView(png("b.png")).isGridShown()); // the setting is what the user chose last
    action("Act_Show_Grid").trigger();                 // off, as the other tests know it
}

TEST_F(CMainWindowStatusTest, KeepsItsTextureWhileAnotherWindowIsActive)
{
    openView(png("a.png"));
    QDialog other;
    other.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_TRUE(action("Act_Save").isEnabled());
    EXPECT_EQ("Size: 16 x 8\t", labelText("SizeLabel"));
    other.close();
    window().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    EXPECT_TRUE(action("Act_Save").isEnabled());
}

TEST_F(CMainWindowStatusTest, HasItsTextureAgainAfterItWasMinimised)
{
    openView(png("a.png"));
    window().showMinimized();
    settle();
    window().showNormal();
    window().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    EXPECT_TRUE(action("Act_Save").isEnabled());
    EXPECT_TRUE(window().statusBar()->isEnabled());
    EXPECT_EQ("Size: 16 x 8\t", labelText("SizeLabel"));
}

} // namespace
