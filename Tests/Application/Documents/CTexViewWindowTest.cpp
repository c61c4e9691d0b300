#include "Documents/CTexViewWindow.h"

#include <memory>

#include <QtGui/QCursor>
#include <QtGui/QWindow>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMdiArea>
#include <QtWidgets/QMdiSubWindow>
#include <gtest/gtest.h>

#include "Application/Common/TestPreferences.h"
#include "Application/Documents/DocumentSupport.h"
#include "Documents/CTexViewWindowSingle.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

/// How often a widget was painted.
class CPaintCount : public QObject
{
public:
    explicit CPaintCount(QWidget& widget) { widget.installEventFilter(this); }
    int take() { return std::exchange(m_iCount, 0); }

protected:
    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        m_iCount += pEvent->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_iCount = 0;
};

/// A single view of 64 by 64 screen pixels on the screen, at zoom 1 : 1.
class ViewWindow : public testing::Test
{
protected:
    void show(CMOXTexture texture, Preferences* pPreferences = nullptr)
    {
        m_pView = std::make_unique<CTexViewWindowSingle>(texture, texture, "/somewhere/picture.mox", pPreferences, eDocumentFile, nullptr,
                                                         nullptr);
        m_pView->resize(64, 64);
        m_pView->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_pView.get()));
        ASSERT_EQ(QSize(64, 64), label().size());
        moveMouse(-10, -10);
        moveMouse(0, 0); // enters the window
    }

    QLabel& label() { return *m_pView->findChild<QLabel*>("Label_ViewPanel"); }
    QRgb shownAt(int x, int y) { return label().pixmap(Qt::ReturnByValue).toImage().pixel(x, y); }

    void moveMouse(int x, int y)
    {
        QCursor::setPos(m_pView->mapToGlobal(QPoint(x, y)));
        QApplication::processEvents();
    }
    void press(int x, int y, Qt::MouseButton eButton = Qt::LeftButton)
    {
        QTest::mousePress(m_pView->windowHandle(), eButton, {}, QPoint(x, y));
    }
    void release(int x, int y, Qt::MouseButton eButton = Qt::LeftButton)
    {
        QTest::mouseRelease(m_pView->windowHandle(), eButton, {}, QPoint(x, y));
    }
    void drag(int iFromX, int iFromY, int iToX, int iToY)
    {
        moveMouse(iFromX, iFromY);
        press(iFromX, iFromY);
        moveMouse(iToX, iToY);
        release(iToX, iToY);
    }
    void turnWheel(int iDelta)
    {
        const QPoint place(32, 32);
        QWheelEvent event(place, m_pView->mapToGlobal(place), QPoint(), QPoint(0, iDelta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(m_pView.get(), &event);
    }
    QPoint offset() const { return {m_pView->getOffsetX(), m_pView->getOffsetY()}; }
    QPoint pixel() const { return {m_pView->getPixelX(), m_pView->getPixelY()}; }

    std::unique_ptr<CTexViewWindowSingle> m_pView;
};

CMOXTexture makeCube(uint32_t uiSize = 8)
{
    CMOXTexture texture = makeBytes(uiSize, uiSize, 0, 1, 1, 6);
    for (uint32_t uiFace = 0; uiFace < 6; ++uiFace)
        std::memset(texture.getDataPtr(0, 0, uiFace), static_cast<int>(10 * uiFace + 200), size_t{4} * uiSize * uiSize);
    return texture;
}

} // namespace

TEST_F(ViewWindow, StartsWithTheDefaults)
{
    show(makeBytes(8, 8));
    EXPECT_EQ(eViewSingle, m_pView->getViewMode());
    EXPECT_EQ(3, m_pView->getZoomPosition());
    EXPECT_EQ(1.0f, m_pView->getZoom());
    EXPECT_EQ((std::array<uint8_t, 4>{255, 255, 255, 255}), m_pView->getColourMask());
    EXPECT_EQ(0u, m_pView->getMIPLevel());
    EXPECT_EQ(0u, m_pView->getArrayMember());
    EXPECT_EQ(0u, m_pView->getFace());
    EXPECT_EQ(0u, m_pView->getCubeFace());
    EXPECT_EQ(QColor(160, 160, 160, 255), m_pView->getBGColour());
    EXPECT_FALSE(m_pView->isGridShown());
    EXPECT_EQ(4u, m_pView->getGridSize());
    EXPECT_EQ(0u, m_pView->getPadding());
    EXPECT_FALSE(m_pView->isModified());
    EXPECT_EQ(0, m_pView->getChangeCount());
    EXPECT_FALSE(m_pView->isDiff());
    EXPECT_FALSE(m_pView->hasError());
    EXPECT_EQ("", m_pView->getError());
    EXPECT_EQ("/somewhere/picture.mox", m_pView->getName());
}

// Titles

TEST(ViewTitle, IsTheLastComponentOfTheNameByEitherSeparator)
{
    const auto titleOf = [](const char* pcName)
    {
        const CTexViewWindowSingle view(makeBytes(1, 1), makeBytes(1, 1), pcName, nullptr, eDocumentFile, nullptr, nullptr);
        return view.getViewTitle().toStdString() + '|' + view.getFullTitle().toStdString();
    };
    EXPECT_EQ("c.mox|/a/b/c.mox", titleOf("/a/b/c.mox"));
    EXPECT_EQ("c.mox|D:\\a/b\\c.mox", titleOf("D:\\a/b\\c.mox"));
    EXPECT_EQ("d|a\\c/d", titleOf("a\\c/d"));
    EXPECT_EQ("New Texture 1|New Texture 1", titleOf("New Texture 1"));
    EXPECT_EQ("|/a/", titleOf("/a/"));
    EXPECT_EQ("\xE6\x97\xA5.mox|/\xE6\x97\xA5.mox", titleOf("/\xE6\x97\xA5.mox"));
}

TEST(ViewTitle, HasAMarkWhileThereAreChanges)
{
    CTexViewWindowSingle view(makeBytes(1, 1), makeBytes(1, 1), "/a/b.mox", nullptr, eDocumentFile, nullptr, nullptr);
    EXPECT_EQ("b.mox", view.getViewTitle());
    view.beginEdit();
    view.endEdit();
    EXPECT_EQ("b.mox *", view.getViewTitle());
    EXPECT_EQ("/a/b.mox *", view.getFullTitle());
    view.undo();
    EXPECT_EQ("b.mox", view.getViewTitle());
    const CTexViewWindowSingle made(makeBytes(1, 1), makeBytes(1, 1), "New Texture 1", nullptr, eDocumentNew, nullptr, nullptr);
    EXPECT_EQ("New Texture 1 *", made.getViewTitle());
}

// Settings

TEST_F(ViewWindow, ColourGridSizeAndGridRepaintAtOnce)
{
    CMOXTexture texture = makeBytes(8, 8);
    fill(texture, 255);
    for (uint32_t i = 0; i < 64; ++i)
        texture.getDataPtr()[4 * i] = 0; // cyan
    show(texture);
    CPaintCount paints(*m_pView);
    m_pView->slotUpdateBGColour(QColor(1, 2, 3));
    EXPECT_LE(1, paints.take());
    EXPECT_EQ(qRgb(1, 2, 3), shownAt(60, 60));
    m_pView->slotUpdateGridShown(true);
    EXPECT_LE(1, paints.take());
    EXPECT_EQ(qRgb(255, 255, 255), shownAt(4, 1));
    m_pView->slotUpdateGridSize(3);
    EXPECT_LE(1, paints.take());
    EXPECT_EQ(qRgb(0, 255, 255), shownAt(4, 1));
    EXPECT_EQ(qRgb(255, 255, 255), shownAt(3, 1));
    EXPECT_TRUE(m_pView->isGridShown());
    EXPECT_EQ(3u, m_pView->getGridSize());
    EXPECT_EQ(QColor(1, 2, 3), m_pView->getBGColour());
}

TEST_F(ViewWindow, PaddingIsStoredWithoutARepaint)
{
    show(makeBytes(8, 8));
    QApplication::processEvents();
    CPaintCount paints(*m_pView);
    m_pView->slotUpdatePadding(8);
    QApplication::processEvents();
    EXPECT_EQ(0, paints.take());
    EXPECT_EQ(8u, m_pView->getPadding());
}

TEST_F(ViewWindow, EachOfTheThreeSettingsKeepsAllOfThemOnDisk)
{
    CTestPreferences preferences;
    show(makeBytes(8, 8), &preferences);

    uint32_t ui32Value = 0;
    bool bValue = true;
    m_pView->slotUpdateGridSize(16);
    const CTestPreferences first = preferences.startAgain();
    EXPECT_EQ(Preferences::eDone, first.getUint("TexViewWindow/GridSize", ui32Value));
    EXPECT_EQ(16u, ui32Value);
    EXPECT_EQ(Preferences::eDone, first.getBool("TexViewWindow/GridShown", bValue));
    EXPECT_FALSE(bValue);
    EXPECT_EQ(Preferences::eDone, first.getUint("TexViewWindow/BackgroundColour", ui32Value));
    EXPECT_EQ(0xFFA0A0A0u, ui32Value);

    m_pView->slotUpdateGridShown(true);
    EXPECT_EQ(Preferences::eDone, preferences.startAgain().getBool("TexViewWindow/GridShown", bValue));
    EXPECT_TRUE(bValue);
    m_pView->slotUpdateBGColour(QColor(1, 2, 3, 4));
    EXPECT_EQ(Preferences::eDone, preferences.startAgain().getUint("TexViewWindow/BackgroundColour", ui32Value));
    EXPECT_EQ(0x04010203u, ui32Value);
}

TEST_F(ViewWindow, TheNextWindowTakesTheSettingsOfTheLastTouched)
{
    CTestPreferences preferences;
    preferences.setUint("TexViewWindow/GridSize", 32);
    preferences.setBool("TexViewWindow/GridShown", true);
    preferences.setUint("TexViewWindow/BackgroundColour", 0x80102030);
    show(makeBytes(8, 8), &preferences);
    EXPECT_EQ(32u, m_pView->getGridSize());
    EXPECT_TRUE(m_pView->isGridShown());
    EXPECT_EQ(QColor(0x10, 0x20, 0x30, 0x80), m_pView->getBGColour());
}

TEST_F(ViewWindow, TheMaskIsAllOrNothingAChannel)
{
    CMOXTexture texture = makeBytes(8, 8);
    fill(texture, 255);
    show(texture);
    m_pView->slotChangeColourMask(true, false, true, false);
    EXPECT_EQ((std::array<uint8_t, 4>{255, 0, 255, 0}), m_pView->getColourMask());
    EXPECT_EQ(qRgb(255, 0, 255), shownAt(1, 1));
}

TEST_F(ViewWindow, TheCurrentSurfaceIsTheOneDrawn)
{
    CMOXTexture texture = makeBytes(8, 8, 0, 2, 2, 3);
    fill(texture, 255);
    uint8_t* pSurface = texture.getDataPtr(1, 1, 2);
    pSurface[0] = 1;
    pSurface[1] = 2;
    pSurface[2] = 3;
    show(texture);
    m_pView->slotUpdateCurrentSurface(1, 1, 2);
    EXPECT_EQ(1u, m_pView->getMIPLevel());
    EXPECT_EQ(1u, m_pView->getArrayMember());
    EXPECT_EQ(2u, m_pView->getFace());
    EXPECT_EQ(qRgb(1, 2, 3), shownAt(0, 0));
    EXPECT_EQ(qRgb(160, 160, 160), shownAt(4, 0)) << "the level is 4 by 4";
}

// Zoom

TEST_F(ViewWindow, ZoomPositionsAreClamped)
{
    show(makeBytes(8, 8));
    m_pView->slotUpdateZoomScalePosition(-1);
    EXPECT_EQ(0, m_pView->getZoomPosition());
    EXPECT_EQ(0.125f, m_pView->getZoom());
    m_pView->slotUpdateZoomScalePosition(11);
    EXPECT_EQ(10, m_pView->getZoomPosition());
    EXPECT_EQ(128.0f, m_pView->getZoom());
}

TEST_F(ViewWindow, ACubeNeverZoomsOutBelowOneToOne)
{
    show(makeCube());
    m_pView->slotChangeViewMode(eViewCube);
    m_pView->slotUpdateZoomScalePosition(2);
    EXPECT_EQ(3, m_pView->getZoomPosition());
    turnWheel(-120);
    EXPECT_EQ(3, m_pView->getZoomPosition());
    turnWheel(120);
    EXPECT_EQ(4, m_pView->getZoomPosition());
    m_pView->slotUpdateZoomScalePosition(-5);
    EXPECT_EQ(3, m_pView->getZoomPosition());
    EXPECT_EQ(1.0f, m_pView->getZoom());
}

TEST_F(ViewWindow, TheWheelGoesOneStepWhateverItsDelta)
{
    show(makeBytes(8, 8));
    QSignalSpy zoomed(m_pView.get(), &CTexViewWindow::signalZoomScaleUpdated);
    turnWheel(120);
    EXPECT_EQ(4, m_pView->getZoomPosition());
    turnWheel(1200);
    EXPECT_EQ(5, m_pView->getZoomPosition());
    turnWheel(-1);
    EXPECT_EQ(4, m_pView->getZoomPosition());
    turnWheel(0);
    EXPECT_EQ(4, m_pView->getZoomPosition());
    EXPECT_EQ(4, zoomed.count());
}

TEST_F(ViewWindow, TheSliderEmitsNoZoomSignal)
{
    show(makeBytes(8, 8));
    QSignalSpy zoomed(m_pView.get(), &CTexViewWindow::signalZoomScaleUpdated);
    m_pView->slotUpdateZoomScalePosition(5);
    EXPECT_EQ(0, zoomed.count());
}

TEST_F(ViewWindow, ZoomingKeepsTheTexelUnderTheMouse)
{
    show(makeBytes(256, 256));
    moveMouse(10, 20);
    ASSERT_EQ(QPoint(10, 20), pixel());
    turnWheel(120); // 0 + 10 * 1
    EXPECT_EQ(QPoint(10, 20), offset());
    turnWheel(120); // 10 + 10 * 2: the texel's left edge stays at 10 * 4 - 30 = 10 on the screen
    EXPECT_EQ(QPoint(30, 60), offset());
    turnWheel(-120); // 30 - 10 * 4 / 2
    EXPECT_EQ(QPoint(10, 20), offset());
    turnWheel(-120);
    EXPECT_EQ(QPoint(0, 0), offset());
}

TEST_F(ViewWindow, OffsetsOfAZoomAreTruncated)
{
    show(makeBytes(256, 256));
    moveMouse(11, 13);
    m_pView->slotUpdateZoomScalePosition(2); // 0 - 5.5 and 0 - 6.5: drawn at 0
    EXPECT_EQ(QPoint(0, 0), offset());
    m_pView->slotUpdateZoomScalePosition(3); // 0 + 11 * 0.5 = 5.5, 0 + 13 * 0.5 = 6.5
    EXPECT_EQ(QPoint(5, 6), offset());
    m_pView->slotUpdateZoomScalePosition(4);
    EXPECT_EQ(QPoint(16, 19), offset());
    m_pView->slotUpdateZoomScalePosition(3);
    EXPECT_EQ(QPoint(5, 6), offset());
}

TEST_F(ViewWindow, AtTheLastPositionTheWheelMovesNothing)
{
    show(makeBytes(256, 256));
    moveMouse(10, 20);
    m_pView->slotUpdateZoomScalePosition(10);
    const QPoint before = offset();
    EXPECT_NE(QPoint(0, 0), before);
    QSignalSpy zoomed(m_pView.get(), &CTexViewWindow::signalZoomScaleUpdated);
    turnWheel(120);
    EXPECT_EQ(before, offset());
    EXPECT_EQ(10, m_pView->getZoomPosition());
    EXPECT_EQ(1, zoomed.count());
}

TEST_F(ViewWindow, TilesAndCubesKeepTheirOffsetWhenZoomed)
{
    show(makeCube());
    for (const ETextureViewModes eMode : {eViewTiled, eViewCube})
    {
        m_pView->slotChangeViewMode(eMode);
        moveMouse(5, 6);
        m_pView->slotUpdateZoomScalePosition(5);
        EXPECT_EQ(QPoint(0, 0), offset()) << eMode;
        m_pView->slotUpdateZoomScalePosition(3);
    }
}

// Dragging

TEST_F(ViewWindow, DraggingMovesThePicture)
{
    show(makeBytes(256, 256));
    drag(40, 40, 30, 35);
    EXPECT_EQ(QPoint(10, 5), offset());
    // The byte of red at texel 10, 5: number (5 * 256 + 10) * 4 = 5160, times 7 is 36120 = 141 * 256 + 24.
    uint32_t aui32Values[4] = {};
    moveMouse(0, 0);
    EXPECT_EQ(QPoint(10, 5), pixel());
    ASSERT_TRUE(m_pView->getMousePixelValue(aui32Values));
    EXPECT_EQ(24u, aui32Values[0]);
}

TEST_F(ViewWindow, ADragEndsWithTheLeftButtonOnly)
{
    show(makeBytes(256, 256));
    moveMouse(40, 40);
    press(40, 40);
    press(40, 40, Qt::RightButton);
    release(40, 40, Qt::RightButton);
    moveMouse(30, 30);
    EXPECT_EQ(QPoint(10, 10), offset());
    release(30, 30);
    moveMouse(20, 20);
    EXPECT_EQ(QPoint(10, 10), offset());
}

TEST_F(ViewWindow, ADragEndsWhereTheReleaseWentElsewhere)
{
    show(makeBytes(256, 256));
    moveMouse(40, 40);
    press(40, 40);
    const auto move = [&](int x, int y, Qt::MouseButtons buttons)
    {
        QMouseEvent event(QEvent::MouseMove, QPointF(x, y), Qt::NoButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(m_pView.get(), &event);
    };
    move(35, 35, Qt::LeftButton);
    EXPECT_EQ(QPoint(5, 5), offset());
    move(30, 30, Qt::NoButton); // a box took the release
    EXPECT_EQ(QPoint(5, 5), offset());
    move(25, 25, Qt::LeftButton); // pressed outside
    EXPECT_EQ(QPoint(5, 5), offset());
    release(25, 25);
}

TEST_F(ViewWindow, OtherButtonsDragNothing)
{
    show(makeBytes(256, 256));
    moveMouse(40, 40);
    press(40, 40, Qt::RightButton);
    moveMouse(30, 30);
    EXPECT_EQ(QPoint(0, 0), offset());
    release(30, 30, Qt::RightButton);
}

TEST_F(ViewWindow, APressOffThePictureDragsNothing)
{
    show(makeBytes(256, 256));
    moveMouse(40, 40);
    label().setAttribute(Qt::WA_UnderMouse, false);
    press(40, 40);
    moveMouse(30, 30);
    EXPECT_EQ(QPoint(0, 0), offset());
    release(30, 30);
}

TEST_F(ViewWindow, ASingleSurfaceIsNotDraggedPastItsEdges)
{
    show(makeBytes(100, 80));
    drag(10, 10, 60, 60);
    EXPECT_EQ(QPoint(0, 0), offset());
    drag(60, 60, 5, 5); // 55 each; 100 - 64 = 36 and 80 - 64 = 16 are the most
    EXPECT_EQ(QPoint(36, 16), offset());
}

TEST_F(ViewWindow, TilesAreDraggedIntoNegativeOffsets)
{
    show(makeBytes(16, 16));
    m_pView->slotChangeViewMode(eViewTiled);
    drag(10, 10, 30, 40);
    EXPECT_EQ(QPoint(-20, -30), offset());
    moveMouse(3, 4); // 3 - 20 = -17 and 4 - 30 = -26, modulo 16: -1 and -10, plus 16
    EXPECT_EQ(QPoint(15, 6), pixel());
    EXPECT_TRUE(m_pView->isMouseInside());
}

TEST_F(ViewWindow, ACubesPitchStopsAtThePoles)
{
    show(makeCube());
    m_pView->slotChangeViewMode(eViewCube);
    for (int i = 0; i < 12; ++i)
        drag(60, 60, 5, 5);
    EXPECT_EQ(QPoint(12 * 55, 512), offset());
}

// The read-out

TEST_F(ViewWindow, EveryMoveTellsWhereTheMouseIs)
{
    show(makeBytes(32, 32));
    QSignalSpy moved(m_pView.get(), &CTexViewWindow::signalMousePositionUpdated);
    moveMouse(10, 20);
    EXPECT_EQ(1, moved.count());
    EXPECT_TRUE(m_pView->isMouseInside());
    EXPECT_EQ(QPoint(10, 20), pixel());
    const ReadoutPlace place = m_pView->getReadoutPlace();
    EXPECT_TRUE(place.bMouseInside);
    EXPECT_EQ(10, place.i32PixelX);
    EXPECT_EQ(20, place.i32PixelY);
    moveMouse(31, 31);
    EXPECT_TRUE(m_pView->isMouseInside());
    moveMouse(32, 5);
    EXPECT_FALSE(m_pView->isMouseInside()) << "beyond the picture";
    EXPECT_FALSE(m_pView->getReadoutPlace().bMouseInside);
    uint32_t aui32Values[4] = {};
    EXPECT_FALSE(m_pView->getMousePixelValue(aui32Values));
}

TEST_F(ViewWindow, TheMouseIsNotInsideUnlessThePictureIsUnderIt)
{
    show(makeBytes(32, 32));
    moveMouse(10, 20);
    EXPECT_TRUE(m_pView->isMouseInside());
    label().setAttribute(Qt::WA_UnderMouse, false);
    m_pView->updateMousePosition(5, 5);
    EXPECT_FALSE(m_pView->isMouseInside());
    EXPECT_EQ(QPoint(10, 20), pixel());
}

TEST_F(ViewWindow, PlacesOutsideTheLabelAreNotInside)
{
    show(makeBytes(256, 256));
    moveMouse(10, 20);
    for (const QPoint place : {QPoint(-1, 5), QPoint(5, -1), QPoint(65, 5), QPoint(5, 65)})
    {
        m_pView->updateMousePosition(place.x(), place.y());
        EXPECT_FALSE(m_pView->isMouseInside()) << place.x() << ", " << place.y();
    }
}

TEST_F(ViewWindow, TheReadOutGoesByZoomAndLevel)
{
    show(makeBytes(32, 32, 0, 2));
    m_pView->slotUpdateZoomScalePosition(4);
    m_pView->slotUpdateCurrentSurface(1, 0, 0);
    moveMouse(11, 31);
    EXPECT_EQ(QPoint(5, 15), pixel());
    EXPECT_TRUE(m_pView->isMouseInside());
    moveMouse(11, 32); // the level has 16 rows of two screen pixels
    EXPECT_FALSE(m_pView->isMouseInside());
}

TEST_F(ViewWindow, ValuesAreThoseOfTheWorkingTexture)
{
    const CMOXTexture floats = makeFloats({0.25f, 2.0f, -1.0f, 1.0f});
    show(floats);
    m_pView->slotUpdateZoomScalePosition(6);
    moveMouse(4, 4);
    uint32_t aui32Values[4] = {};
    ASSERT_TRUE(m_pView->getMousePixelValue(aui32Values));
    EXPECT_EQ("2.000000", formatChannelValue(aui32Values[1], floats.getChannelType()));
    EXPECT_EQ("-1.000000", formatChannelValue(aui32Values[2], floats.getChannelType()));
}

TEST_F(ViewWindow, ASingleViewReadsTheFaceThatItShows)
{
    show(makeCube());
    m_pView->slotUpdateCurrentSurface(0, 0, 2);
    moveMouse(3, 3);
    EXPECT_EQ(2u, m_pView->getCubeFace());
    uint32_t aui32Values[4] = {};
    ASSERT_TRUE(m_pView->getMousePixelValue(aui32Values));
    EXPECT_EQ(220u, aui32Values[0]);
}

TEST_F(ViewWindow, ACubeReadsTheFaceUnderTheMouse)
{
    show(makeCube());
    m_pView->slotChangeViewMode(eViewCube);
    // 64 pixels square, not turned: x = -1 + 32 / 32 = 0, y = 1 - 32 / 32 = 0, z = 1, the middle of the face +Z: (0 + 1) * 8 / 2.
    moveMouse(32, 32);
    EXPECT_TRUE(m_pView->isMouseInside());
    EXPECT_EQ(4u, m_pView->getCubeFace());
    EXPECT_EQ(QPoint(4, 4), pixel());
    uint32_t aui32Values[4] = {};
    ASSERT_TRUE(m_pView->getMousePixelValue(aui32Values));
    EXPECT_EQ(240u, aui32Values[0]);
}

TEST_F(ViewWindow, ChangingToACubeFindsTheFaceByThePresentPixelWhereThereIsOne)
{
    show(makeCube(64));
    m_pView->slotUpdateZoomScalePosition(5);
    moveMouse(20, 12);
    ASSERT_EQ(QPoint(5, 3), pixel());
    // On purpose: the texel is taken for a place of the window. x = -1 + 5 / 32, y = 1 - 3 / 32, z = 4: face +Z with u = -0.2109375,
    // 0.7890625 * 32 = 25.25, and v = -0.2265625, 0.7734375 * 32 = 24.75.
    m_pView->slotChangeViewMode(eViewCube);
    EXPECT_TRUE(m_pView->isMouseInside());
    EXPECT_EQ(4u, m_pView->getCubeFace());
    EXPECT_EQ(QPoint(25, 24), pixel());
}

TEST_F(ViewWindow, ChangingToACubeFindsTheFaceByTheMiddleElse)
{
    show(makeCube());
    moveMouse(32, 32);
    ASSERT_FALSE(m_pView->isMouseInside());
    // On purpose: the middle texel, 4, 4, is taken for a place of the window. x = -1 + 4 / 32, y = 1 - 4 / 32, z = 1: face +Z with
    // u = -0.875, (0.125 * 8) / 2 = 0.5, texel 0, 0.
    m_pView->slotChangeViewMode(eViewCube);
    EXPECT_TRUE(m_pView->isMouseInside());
    EXPECT_EQ(4u, m_pView->getCubeFace());
    EXPECT_EQ(QPoint(0, 0), pixel());
    EXPECT_EQ(eViewCube, m_pView->getViewMode());
}

TEST_F(ViewWindow, AnUnchangedViewIsNotDrawnAgain)
{
    show(makeBytes(8, 8));
    const qint64 i64Drawn = label().pixmap(Qt::ReturnByValue).cacheKey();
    m_pView->repaint();
    m_pView->updateDisplay(false);
    EXPECT_EQ(i64Drawn, label().pixmap(Qt::ReturnByValue).cacheKey());
    m_pView->updateDisplay(true);
    EXPECT_NE(i64Drawn, label().pixmap(Qt::ReturnByValue).cacheKey());
    EXPECT_EQ(QSize(8, 8), label().pixmap(Qt::ReturnByValue).size());
}

// In a sub window

namespace
{

class ViewInAnArea : public testing::Test
{
protected:
    void show(uint32_t uiWidth, uint32_t uiHeight)
    {
        m_pView = new CTexViewWindowSingle(makeBytes(uiWidth, uiHeight), makeBytes(uiWidth, uiHeight), "a.mox", nullptr, eDocumentFile,
                                           nullptr, nullptr);
        m_Area.resize(1200, 900);
        m_pSubWindow = m_Area.addSubWindow(m_pView);
        m_Area.show();
        m_pView->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Area));
    }
    QSize labelSize()
    {
        QApplication::processEvents();
        return m_pView->findChild<QLabel*>("Label_ViewPanel")->size();
    }

    QMdiArea m_Area;
    QMdiSubWindow* m_pSubWindow = nullptr;
    CTexViewWindowSingle* m_pView = nullptr;
};

} // namespace

TEST_F(ViewInAnArea, FittingGivesTheLabelThePicturesSizeAtItsZoom)
{
    show(300, 200);
    m_pSubWindow->resize(500, 500);
    EXPECT_NE(QSize(300, 200), labelSize());
    m_pView->fitTexture();
    EXPECT_EQ(QSize(300, 200), labelSize());
    m_pView->slotUpdateZoomScalePosition(4);
    EXPECT_EQ(QSize(300, 200), labelSize());
    m_pView->fitTexture();
    EXPECT_EQ(QSize(600, 400), labelSize());
}

TEST_F(ViewInAnArea, AMaximisedWindowStaysAsItIs)
{
    show(300, 200);
    m_pSubWindow->showMaximized();
    const QSize size = labelSize();
    m_pView->fitTexture();
    EXPECT_EQ(size, labelSize());
    EXPECT_TRUE(m_pSubWindow->isMaximized());
}

TEST_F(ViewInAnArea, ALargePictureCanBeShrunkBelowItsPixels)
{
    show(1000, 800);
    m_pView->fitTexture();
    EXPECT_EQ(QSize(1000, 800), labelSize());
    m_pSubWindow->resize(200, 150);
    EXPECT_EQ(QSize(200, 150), m_pSubWindow->size());
    EXPECT_GE(200, labelSize().width());
    EXPECT_GE(150, labelSize().height());
    EXPECT_EQ(labelSize(), m_pView->findChild<QLabel*>("Label_ViewPanel")->pixmap(Qt::ReturnByValue).size());
}
