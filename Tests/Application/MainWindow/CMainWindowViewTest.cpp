#include <QtWidgets/QColorDialog>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QSpinBox>

#include "Application/MainWindow/MainWindowFixture.h"

using namespace moxtexture;
using testsupport::CDialogAnswers;
using testsupport::dataOf;
using testsupport::makeBytes;

namespace
{

class CMainWindowViewTest : public MainWindowTest
{
protected:
    static QMdiSubWindow* subWindowOf(const CTexViewWindowSingle& view) { return qobject_cast<QMdiSubWindow*>(view.parentWidget()); }
};

TEST_F(CMainWindowViewTest, UndoesAndRedoesOneEdit)
{
    CTexViewWindowSingle& view = openView(mox("a.mox", makeBytes(2, 2, 3)));
    edit(view, 50);
    window().slotTextureUpdated();
    EXPECT_TRUE(action("Act_Undo").isEnabled());
    action("Act_Undo").trigger();
    EXPECT_EQ(dataOf(makeBytes(2, 2, 3)), dataOf(view.getWorkingTexture()));
    EXPECT_FALSE(action("Act_Undo").isEnabled());
    EXPECT_TRUE(action("Act_Redo").isEnabled());
    action("Act_Redo").trigger();
    EXPECT_EQ(std::vector<uint8_t>(16, 50), dataOf(view.getWorkingTexture()));
    EXPECT_TRUE(action("Act_Undo").isEnabled());
    EXPECT_FALSE(action("Act_Redo").isEnabled());
}

TEST_F(CMainWindowViewTest, EnablesUndoForTheViewThatHasIt)
{
    CTexViewWindowSingle& first = openView(mox("a.mox", makeBytes(2, 2)));
    edit(first);
    window().slotTextureUpdated();
    openView(png("b.png"));
    EXPECT_FALSE(action("Act_Undo").isEnabled());
    area().setActiveSubWindow(subWindowOf(first));
    EXPECT_TRUE(action("Act_Undo").isEnabled());
}

TEST_F(CMainWindowViewTest, ShowsTheGridOfTheActiveViewAndKeepsItForTheNext)
{
    CTexViewWindowSingle& first = openView(png("a.png"));
    QAction& grid = action("Act_Show_Grid");
    EXPECT_FALSE(grid.isChecked());
    grid.trigger();
    EXPECT_TRUE(first.isGridShown());
    CTexViewWindowSingle& second = openView(png("b.png"));
    EXPECT_TRUE(second.isGridShown());
    EXPECT_TRUE(grid.isChecked());
    grid.trigger();
    EXPECT_FALSE(second.isGridShown());
    EXPECT_TRUE(first.isGridShown());
    area().setActiveSubWindow(subWindowOf(first));
    EXPECT_TRUE(grid.isChecked());
    EXPECT_FALSE(second.isGridShown()); // the mark changed, not the other view
}

TEST_F(CMainWindowViewTest, AsksForTheSizeOfTheGrid)
{
    CTexViewWindowSingle& view = openView(png("a.png"));
    CDialogAnswers answers;
    int iPreset = 0;
    answers
        .thenDo(
            [&](QDialog& dialog)
            {
                EXPECT_EQ("Grid Size", dialog.windowTitle().toStdString());
                auto* pSpin = dialog.findChild<QSpinBox*>();
                iPreset = pSpin->value();
                pSpin->setValue(13);
                dialog.accept();
            })
        .thenDo(
            [&](QDialog& dialog)
            {
                auto* pSpin = dialog.findChild<QSpinBox*>();
                iPreset = pSpin->value();
                pSpin->setValue(20);
                dialog.reject();
            });
    action("Act_Change_Grid_Size").trigger();
    EXPECT_EQ(4, iPreset);
    EXPECT_EQ(13u, view.getGridSize());
    action("Act_Change_Grid_Size").trigger();
    EXPECT_EQ(13, iPreset);
    EXPECT_EQ(13u, view.getGridSize());
    restart();
    EXPECT_EQ(13u, openView(png("b.png")).getGridSize());
}

TEST_F(CMainWindowViewTest, AsksForTheColourOfTheBackground)
{
    CTexViewWindowSingle& view = openView(png("a.png"));
    CDialogAnswers answers;
    QColor preset;
    answers
        .thenDo(
            [&](QDialog& dialog)
            {
                EXPECT_EQ("Change Background Colour...", dialog.windowTitle().toStdString());
                auto& colours = dynamic_cast<QColorDialog&>(dialog);
                preset = colours.currentColor();
                colours.setCurrentColor(QColor(1, 2, 3));
                colours.accept();
            })
        .thenReject();
    action("Act_Change_BG_Colour").trigger();
    EXPECT_EQ(QColor(160, 160, 160), preset);
    EXPECT_EQ(QColor(1, 2, 3), view.getBGColour());
    action("Act_Change_BG_Colour").trigger();
    EXPECT_EQ(QColor(1, 2, 3), view.getBGColour());
    EXPECT_EQ(QColor(1, 2, 3), openView(png("b.png")).getBGColour());
}

TEST_F(CMainWindowViewTest, SetsTheColourSpaceOfTheStoredTextureWhenTheUserChoosesOne)
{
    CTexViewWindowSingle& view = openView(png("a.png"));
    ASSERT_EQ(eCS_Linear, view.getStoredTexture().getColourSpace());
    auto* pBox = window().findChild<QDockWidget*>("Dock_TexInfo")->findChild<QComboBox*>("Combo_ColourSpace");
    ASSERT_NE(nullptr, pBox);
    EXPECT_EQ(1, pBox->currentIndex()); // filling the box told nobody
    pBox->setCurrentIndex(0);
    emit pBox->activated(0);
    EXPECT_EQ(eCS_sRGB, view.getStoredTexture().getColourSpace());
    EXPECT_EQ(eCS_Linear, view.getWorkingTexture().getColourSpace());

    // Another texture's dock does not touch this one.
    CTexViewWindowSingle& other = openView(png("b.png"));
    EXPECT_EQ(eCS_Linear, other.getStoredTexture().getColourSpace());
    window().onColourSpaceChanged(1, eCS_sRGB);
    EXPECT_EQ(eCS_sRGB, other.getStoredTexture().getColourSpace());
}

TEST_F(CMainWindowViewTest, TilesAndCascadesItsWindows)
{
    CTexViewWindowSingle& first = openView(png("a.png"));
    CTexViewWindowSingle& second = openView(png("b.png"));
    window().resize(1180, 760);
    settle();
    action("Act_Tile_Windows").trigger();
    const QRect one = subWindowOf(first)->geometry(), two = subWindowOf(second)->geometry();
    EXPECT_FALSE(one.intersects(two));
    EXPECT_EQ(area().viewport()->width() * area().viewport()->height(), one.width() * one.height() + two.width() * two.height());
    action("Act_Cascade_Windows").trigger();
    EXPECT_TRUE(subWindowOf(first)->geometry().intersects(subWindowOf(second)->geometry()));
    EXPECT_NE(subWindowOf(first)->pos(), subWindowOf(second)->pos());
}

TEST_F(CMainWindowViewTest, FitsAWindowToItsTexture)
{
    CTexViewWindowSingle& view = openView(png("a.png", 120, 90));
    const QSize fitted = view.size();
    EXPECT_EQ(QSize(120, 90), view.findChild<QLabel*>("Label_ViewPanel")->size());
    subWindowOf(view)->resize(400, 300);
    EXPECT_NE(fitted, view.size());
    action("Act_Fit_Window").trigger();
    EXPECT_EQ(fitted, view.size());
    zoomSlider().setValue(4);
    action("Act_Fit_Window").trigger();
    EXPECT_EQ(QSize(240, 180), view.findChild<QLabel*>("Label_ViewPanel")->size());
}

} // namespace
