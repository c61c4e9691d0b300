#include <algorithm>

#include <QtGui/QCloseEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QMessageBox>

#include "Application/MainWindow/MainWindowFixture.h"

using namespace moxtexture;
using testsupport::CDialogAnswers;
using testsupport::dataOf;
using testsupport::makeBytes;

namespace
{

constexpr char k_acTitle[] = "An Error Has Occurred";
constexpr char k_acText[] = "An unknown error has occurred, please try a different texture file type, or contact Bluedesk for support";

class CMainWindowSaveTest : public MainWindowTest
{
protected:
    QString path(const char* pName) const { return QString::fromStdString(m_Files.path(pName)); }

    /// Whether the settings file has anything of the window's state or geometry.
    static bool isLayoutStored()
    {
        Preferences settings("Halvane");
        std::string strError;
        EXPECT_TRUE(settings.load(strError, false)) << strError;
        std::vector<uint8_t> bytes;
        const bool bState = settings.getData("Main/State", bytes) == Preferences::eDone;
        return settings.getData("Main/Geometry", bytes) == Preferences::eDone || bState;
    }

    static void expectSaveFailure(const CDialogAnswers& answers, const char* pText = k_acText)
    {
        ASSERT_FALSE(answers.seen().empty());
        const CDialogAnswers::Seen& seen = answers.seen().back();
        EXPECT_EQ(k_acTitle, seen.strTitle);
        EXPECT_EQ(pText, seen.strText);
        EXPECT_EQ(QMessageBox::Critical, seen.eIcon);
        EXPECT_EQ(QMessageBox::Ok, seen.buttons);
    }
};

TEST_F(CMainWindowSaveTest, SavesATextureToItsFile)
{
    const std::string strPath = mox("a.mox", makeBytes(2, 2));
    CTexViewWindowSingle& view = openView(strPath);
    edit(view, 7);
    window().slotTextureUpdated();
    EXPECT_EQ("a.mox *", subWindows().front()->windowTitle().toStdString());
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes);
    action("Act_Save").trigger();
    EXPECT_EQ("Texture Modified", answers.seen().at(0).strTitle);
    EXPECT_EQ("a.mox", subWindows().front()->windowTitle().toStdString());
    EXPECT_EQ(std::vector<uint8_t>(16, 7), dataOf(CMOXTexture(strPath)));
    EXPECT_FALSE(action("Act_Undo").isEnabled()); // the history ends at a save
}

TEST_F(CMainWindowSaveTest, AsksForANameWhenAnImageIsSaved)
{
    openView(png("a.png"));
    CDialogAnswers answers;
    answers.thenChoose({path("out.mox")});
    action("Act_Save").trigger();
    EXPECT_EQ("Save Texture", answers.seen().at(0).strTitle);
    EXPECT_EQ("out.mox", subWindows().front()->windowTitle().toStdString());
    EXPECT_EQ(m_Files.path("a.png"), subWindows().front()->objectName().toStdString()); // the name it was opened under stays
    EXPECT_EQ(16u * 8 * 4, CMOXTexture(m_Files.path("out.mox")).getDataSize());
}

TEST_F(CMainWindowSaveTest, ShowsNothingAfterACancel)
{
    openView(png("a.png"));
    for (const char* pAction : {"Act_Save", "Act_Save_As", "Act_Save_Legacy", "Act_Save_Image"})
    {
        CDialogAnswers answers;
        answers.thenReject();
        action(pAction).trigger();
        EXPECT_EQ(1u, answers.seen().size()) << pAction;
    }
}

TEST_F(CMainWindowSaveTest, FailsWithItsMessageWhereTheContainerHasNothingForTheEncoding)
{
    // Bytes with the blue one first: no number in a DDS, nor in version 2.
    const CMOXTextureHeader header(layout("bgr", 8, 8, 8), 2, 4, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    openView(mox("a.mox", CMOXTexture(header)));
    for (const auto& [pAction, pName] : {std::pair("Act_Save_As", "b.dds"), std::pair("Act_Save_Legacy", "b.mox")})
    {
        CDialogAnswers answers;
        answers.thenChoose({path(pName)}).thenPress(QMessageBox::Ok);
        action(pAction).trigger();
        EXPECT_EQ(2u, answers.seen().size()) << pName;
        expectSaveFailure(answers);
        EXPECT_FALSE(QFile::exists(path(pName))) << pName;
    }
    EXPECT_EQ("a.mox", subWindows().front()->windowTitle().toStdString());
    EXPECT_EQ(1u, m_Files.count());
}

TEST_F(CMainWindowSaveTest, SaysPlainlyThatNoFileWasWritten)
{
    openView(png("a.png"));
    CDialogAnswers answers;
    answers.thenChoose({path("b.png")});
    action("Act_Save_As").trigger();
    EXPECT_EQ(1u, answers.seen().size());
    EXPECT_FALSE(QFile::exists(path("b.png")));
    EXPECT_EQ("No file was written: a name must end in .mox, .ktx or .dds (b.png)", window().statusBar()->currentMessage().toStdString());
    // All of it can be read at the width that the window has at first.
    window().resize(1180, 760);
    settle();
    const auto* pFirstAtTheEnd = window().statusBar()->findChild<QWidget*>("line_4");
    EXPECT_GT(pFirstAtTheEnd->x(), window().statusBar()->fontMetrics().horizontalAdvance(window().statusBar()->currentMessage()) + 20);
    EXPECT_TRUE(window().statusBar()->isEnabled());
    EXPECT_EQ("b.png", subWindows().front()->windowTitle().toStdString());
}

TEST_F(CMainWindowSaveTest, SavesAnImageOfTheCurrentSurface)
{
    CTexViewWindowSingle& view = openView(png("a.png", 3, 2, QColor(50, 60, 70)));
    CDialogAnswers answers;
    answers.thenChoose({path("out.png")});
    action("Act_Save_Image").trigger();
    EXPECT_EQ("Save Image", answers.seen().at(0).strTitle);
    const QImage image(path("out.png"));
    EXPECT_EQ(QSize(3, 2), image.size());
    EXPECT_EQ(QColor(50, 60, 70), image.pixelColor(1, 1));
    EXPECT_EQ("out.png", subWindows().front()->windowTitle().toStdString());
    EXPECT_EQ(m_Files.path("out.png"), view.getName());
}

TEST_F(CMainWindowSaveTest, FailsToSaveAnImageWithAMessageOfItsOwn)
{
    openView(png("a.png"));
    CDialogAnswers answers;
    answers.thenChoose({path("out.nosuchkind")}).thenPress(QMessageBox::Ok);
    action("Act_Save_Image").trigger();
    expectSaveFailure(answers, "An unknown error has occurred, please contact Bluedesk for support");
}

TEST_F(CMainWindowSaveTest, DoesNothingWithoutATexture)
{
    CDialogAnswers answers;
    window().slotSave();
    window().slotSaveAs();
    window().slotSaveAsLegacy();
    window().slotSaveImage();
    window().slotClose();
    window().slotCloseAll();
    window().slotUndo();
    window().slotRedo();
    window().slotReload();
    window().slotEncode();
    window().slotFitTexture();
    window().slotChangeBackgroundColour();
    window().slotChangeGridSize();
    window().slotPadData2();
    window().slotTileWindows();
    window().slotCascadeWindows();
    window().onColourSpaceChanged(0, eCS_sRGB);
    window().slotChangeViewMode(eViewCube);
    window().slotChangeColourMask(true, false, true, false);
    EXPECT_TRUE(answers.seen().empty());
}

TEST_F(CMainWindowSaveTest, PadsTheNextSaveToTheBoundaryChosen)
{
    for (const uint32_t uiBoundary : {2u, 4u, 8u})
    {
        const std::string strPath = mox("a.mox", makeBytes(2, 2));
        CTexViewWindowSingle& view = openView(strPath);
        action(("Act_Align" + std::to_string(uiBoundary)).c_str()).trigger();
        EXPECT_EQ(uiBoundary, view.getPadding());
        action("Act_Save").trigger();
        // Where the data begins: the header of 52 bytes and the metadata behind it.
        EXPECT_EQ(0u, (52 + CMOXTexture(strPath).getMetaDataSize()) % uiBoundary);
        EXPECT_EQ(dataOf(makeBytes(2, 2)), dataOf(CMOXTexture(strPath)));
        action("Act_Close").trigger();
        settle();
    }
}

TEST_F(CMainWindowSaveTest, ClosesTheCurrentTextureOrAllOfThem)
{
    openView(png("a.png"));
    openView(png("b.png"));
    openView(png("c.png"));
    action("Act_Close").trigger();
    settle();
    ASSERT_EQ(2, windowCount());
    EXPECT_EQ(m_Files.path("b.png"), subWindows().back()->objectName().toStdString());
    action("Act_Close_All").trigger();
    settle();
    EXPECT_EQ(0, windowCount());
}

TEST_F(CMainWindowSaveTest, ShowsEachTextureThatCloseAllAsksAbout)
{
    edit(openView(mox("first.mox", makeBytes(2, 2))));
    edit(openView(mox("second.mox", makeBytes(3, 2))));
    std::vector<std::string> asked;
    const auto note = [&](QDialog& dialog)
    {
        ASSERT_NE(nullptr, area().activeSubWindow());
        asked.push_back(area().activeSubWindow()->objectName().toStdString());
        EXPECT_EQ("Size: " + std::to_string(viewOf(area().activeSubWindow())->getWorkingTexture().getWidth()) + " x 2\t",
                  labelText("SizeLabel"));
        dialog.reject();
    };
    CDialogAnswers answers;
    answers.thenDo(note).thenDo(note);
    action("Act_Close_All").trigger();
    std::sort(asked.begin(), asked.end());
    EXPECT_EQ(std::vector<std::string>({m_Files.path("first.mox"), m_Files.path("second.mox")}), asked);
    EXPECT_EQ(2, windowCount());
}

TEST_F(CMainWindowSaveTest, ClosesByTheExitCommand)
{
    openView(png("a.png"));
    action("Act_Exit").trigger();
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(0, windowCount());
}

TEST_F(CMainWindowSaveTest, StaysOpenWithAllItsWindowsWhenAPromptIsCancelled)
{
    openView(png("untouched.png"));
    edit(openView(mox("first.mox", makeBytes(2, 2))));
    edit(openView(mox("second.mox", makeBytes(2, 2))));
    std::vector<std::string> asked;
    const auto noteAndPress = [&](QMessageBox::StandardButton eButton)
    {
        return [&asked, eButton, this](QDialog& dialog)
        {
            asked.push_back(area().currentSubWindow()->objectName().toStdString());
            dynamic_cast<QMessageBox&>(dialog).button(eButton)->click();
        };
    };
    CDialogAnswers answers;
    answers.thenDo(noteAndPress(QMessageBox::No)).thenDo(noteAndPress(QMessageBox::Cancel));
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(3, windowCount());
    EXPECT_EQ(std::vector<std::string>({m_Files.path("first.mox"), m_Files.path("second.mox")}), asked);
    EXPECT_FALSE(isLayoutStored());

    // The "No" of before does not count for the next time.
    answers.thenPress(QMessageBox::No).thenPress(QMessageBox::No);
    EXPECT_TRUE(window().close());
    EXPECT_EQ(4u, answers.seen().size());
    EXPECT_EQ(0, windowCount());
    EXPECT_FALSE(window().isVisible());
    m_pWindow.reset();
    EXPECT_TRUE(isLayoutStored());
}

TEST_F(CMainWindowSaveTest, ShowsTheTextureThatItAsksAboutAlsoWhereItHasNoMark)
{
    openView(mox("first.mox", makeBytes(2, 2)));
    window().onColourSpaceChanged(0, eCS_sRGB);
    openView(mox("second.mox", makeBytes(2, 2)));
    CDialogAnswers answers;
    answers.thenDo(
        [this](QDialog& dialog)
        {
            EXPECT_EQ(m_Files.path("first.mox"), area().currentSubWindow()->objectName().toStdString());
            EXPECT_EQ("first.mox", area().currentSubWindow()->windowTitle().toStdString());
            dialog.reject();
        });
    EXPECT_FALSE(window().close());
    EXPECT_EQ(1u, answers.seen().size());
}

TEST_F(CMainWindowSaveTest, SavesWhatTheUserWantsSavedWhenItCloses)
{
    const std::string strPath = mox("a.mox", makeBytes(2, 2));
    edit(openView(strPath), 5);
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes).thenPress(QMessageBox::Yes);
    EXPECT_TRUE(window().close());
    EXPECT_EQ(2u, answers.seen().size()); // to save, and to encode anew for it
    EXPECT_EQ(std::vector<uint8_t>(16, 5), dataOf(CMOXTexture(strPath)));
}

TEST_F(CMainWindowSaveTest, DoesNotCloseBeneathADialog)
{
    openView(png("a.png"));
    CDialogAnswers answers;
    answers.thenDo(
        [&](QDialog& dialog)
        {
            QCloseEvent close;
            QApplication::sendEvent(&window(), &close);
            EXPECT_FALSE(close.isAccepted());
            EXPECT_EQ(1, windowCount());
            dialog.reject();
        });
    action("Act_Change_Grid_Size").trigger();
    EXPECT_EQ(1u, answers.seen().size());
    EXPECT_TRUE(window().isVisible());
}

} // namespace
