#include "Documents/CTexViewWindowSingle.h"

#include <memory>

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMdiSubWindow>
#include <gtest/gtest.h>

#include "Application/Documents/SavingAView.h"

using namespace moxtexture;
using namespace testsupport;

TEST(SingleView, HasItsLabelAndNames)
{
    const CTexViewWindowSingle view(makeBytes(2, 2), makeBytes(2, 2), "a.mox", nullptr, eDocumentFile, nullptr, nullptr);
    EXPECT_EQ("Widget_SingleViewWindow", view.objectName());
    EXPECT_EQ("Texture", view.windowTitle());
    const auto* pLabel = view.findChild<QLabel*>("Label_ViewPanel");
    ASSERT_NE(nullptr, pLabel);
    EXPECT_EQ(0, pLabel->lineWidth());
    EXPECT_EQ(QSize(2, 2), pLabel->pixmap(Qt::ReturnByValue).size());
}

TEST(SingleView, IsDrawnAtFullSizeFromBirth)
{
    const CTexViewWindowSingle view(makeBytes(300, 200), makeBytes(300, 200), "a.mox", nullptr, eDocumentFile, nullptr, nullptr);
    EXPECT_EQ(QSize(300, 200), view.sizeHint());
}

TEST(SingleView, ABirthInASubWindowFitsIt)
{
    QMdiSubWindow subWindow;
    subWindow.resize(700, 700);
    auto* pView = new CTexViewWindowSingle(makeBytes(300, 200), makeBytes(300, 200), "a.mox", nullptr, eDocumentFile, nullptr, &subWindow);
    subWindow.setWidget(pView);
    EXPECT_GT(700, subWindow.width());
    EXPECT_GT(700, subWindow.height());
}

TEST(SingleView, TellsWhereItWasEncodedFrom)
{
    QMdiSubWindow source;
    const CTexViewWindowSingle view(makeBytes(2, 2), makeBytes(2, 2), "a.mox", nullptr, eDocumentEncoded, &source, nullptr);
    EXPECT_EQ(&source, view.getEncodedFrom());
    EXPECT_EQ(6u, view.getSourceKind());
}

TEST(SingleView, ForgetsWhereItWasEncodedFromWhenThatIsGone)
{
    auto pSource = std::make_unique<QMdiSubWindow>();
    const CTexViewWindowSingle view(makeBytes(2, 2), makeBytes(2, 2), "a.mox", nullptr, eDocumentEncoded, pSource.get(), nullptr);
    pSource.reset();
    EXPECT_EQ(nullptr, view.getEncodedFrom()) << "a later window may stand in the same place";
}

TEST(SingleView, MovesItsTexturesIn)
{
    CMOXTexture stored = makeBytes(2, 2);
    CMOXTexture working = makeBytes(2, 2);
    const uint8_t* pStored = stored.getDataPtr();
    const uint8_t* pWorking = working.getDataPtr();
    CTexViewWindowSingle view(std::move(stored), std::move(working), "a.mox", nullptr, eDocumentFile, nullptr, nullptr);
    EXPECT_EQ(pStored, view.getStoredTexture().getDataPtr());
    EXPECT_EQ(pWorking, view.getWorkingTexture().getDataPtr());
}

TEST(SingleView, ATextureThatCannotBeShownIsAnError)
{
    CMOXTextureHeader header = makeBytes(4, 4);
    header.setPixelFormat(ePF_BC7);
    const CTexViewWindowSingle view(makeBytes(4, 4), CMOXTexture(header), "a.mox", nullptr, eDocumentFile, nullptr, nullptr);
    EXPECT_TRUE(view.hasError());
    EXPECT_NE("", view.getError());
}

TEST(SingleView, EditsUndoAndRedoAreShownAtOnce)
{
    CMOXTexture black = makeBytes(2, 2);
    fill(black, 0);
    black.getDataPtr()[3] = 255;
    CTexViewWindowSingle view(black, black, "a.mox", nullptr, eDocumentFile, nullptr, nullptr);
    view.resize(8, 8);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    const auto shown = [&] { return view.findChild<QLabel*>("Label_ViewPanel")->pixmap(Qt::ReturnByValue).toImage().pixel(0, 0); };
    EXPECT_EQ(qRgb(0, 0, 0), shown());
    EXPECT_FALSE(view.canUndo());

    ASSERT_TRUE(view.beginEdit());
    fill(view.getWorkingTexture(), 255);
    EXPECT_EQ(qRgb(0, 0, 0), shown());
    view.endEdit();
    EXPECT_EQ(qRgb(255, 255, 255), shown());
    EXPECT_TRUE(view.canUndo());
    view.undo();
    EXPECT_EQ(qRgb(0, 0, 0), shown());
    EXPECT_TRUE(view.canRedo());
    view.redo();
    EXPECT_EQ(qRgb(255, 255, 255), shown());
}
