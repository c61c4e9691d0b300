#include <algorithm>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>

#include "Application/MainWindow/MainWindowFixture.h"
#include "Formats/FormatNames.h"

using namespace moxtexture;
using testsupport::CDialogAnswers;
using testsupport::dataOf;
using testsupport::makeBytes;

namespace
{

class CMainWindowEncodeTest : public MainWindowTest
{
protected:
    /// Chooses a format of an API in the encode dialog and accepts it.
    /// @param iMOXTCMode  place in the box of MOXTC's qualities; negative: as it stands
    static std::function<void(QDialog&)> choose(const std::string& strFormat, bool bMIPMaps = false,
                                                const QString& strApi = "DirectX 11 (11_1)", int iMOXTCMode = -1)
    {
        return [=](QDialog& dialog)
        {
            if (iMOXTCMode >= 0)
                dialog.findChild<QComboBox*>("Combo_MOXTCMode")->setCurrentIndex(iMOXTCMode);
            dialog.findChild<QComboBox*>("Combo_API")->setCurrentText(strApi);
            dialog.findChild<QCheckBox*>("Check_MIPMap")->setChecked(bMIPMaps);
            auto* pTable = dialog.findChild<QTableWidget*>("Table_FilteredFormats");
            for (int i = 0; i < pTable->rowCount(); ++i)
                if (pTable->item(i, 0)->text().toStdString() == strFormat)
                {
                    pTable->setCurrentCell(i, 0);
                    return dialog.findChild<QPushButton*>("Butt_Encode")->click();
                }
            ADD_FAILURE() << "no row " << strFormat;
            dialog.reject();
        };
    }

    CTexViewWindowSingle& encode(const std::string& strFormat, bool bMIPMaps = false, const QString& strApi = "DirectX 11 (11_1)",
                                 int iMOXTCMode = -1)
    {
        const int iCount = windowCount();
        CDialogAnswers answers;
        answers.thenDo(choose(strFormat, bMIPMaps, strApi, iMOXTCMode));
        action("Act_Encode").trigger();
        EXPECT_EQ(1u, answers.seen().size());
        EXPECT_EQ(iCount + 1, windowCount());
        return *lastView();
    }

    /// Encodes and expects that to fail, with nothing changed.
    void expectCannotEncode(const std::function<void(QDialog&)>& choice)
    {
        const int iCount = windowCount();
        const std::vector<uint8_t> pixels = dataOf(getCurrent().getWorkingTexture());
        CDialogAnswers answers;
        answers.thenDo(choice).thenPress(QMessageBox::Ok);
        action("Act_Encode").trigger();
        ASSERT_EQ(2u, answers.seen().size());
        EXPECT_EQ("Cannot Encode", answers.seen()[1].strTitle);
        EXPECT_EQ("Unable to encode the texture - unknown reason. Please contact Bluedesk for support.", answers.seen()[1].strText);
        EXPECT_EQ(iCount, windowCount());
        EXPECT_EQ(nullptr, window().findChild<QDialog*>("Dialog_WaitNotice"));
        EXPECT_EQ(pixels, dataOf(getCurrent().getWorkingTexture()));
        EXPECT_FALSE(area().currentSubWindow()->windowTitle().contains('*'));
    }

    CTexViewWindowSingle& getCurrent() const { return *viewOf(area().currentSubWindow()); }

    static QMdiSubWindow* subWindowOf(const CTexViewWindowSingle& view) { return qobject_cast<QMdiSubWindow*>(view.parentWidget()); }
};

TEST_F(CMainWindowEncodeTest, OpensTheResultInAWindowOfItsOwn)
{
    const std::string strPath = png("photo.png", 8, 8, QColor(255, 0, 0));
    CTexViewWindowSingle& source = openView(strPath);
    CTexViewWindowSingle& encoded = encode("BC1");
    EXPECT_EQ(strPath + " (Encoded:BC1)", subWindowOf(encoded)->objectName().toStdString());
    EXPECT_EQ("photo.png (Encoded:BC1) *", subWindowOf(encoded)->windowTitle().toStdString());
    EXPECT_EQ(subWindowOf(encoded), area().currentSubWindow());
    EXPECT_EQ(uint32_t{eDocumentEncoded}, encoded.getSourceKind());
    EXPECT_EQ(subWindowOf(source), encoded.getEncodedFrom());
    EXPECT_EQ(MOXPixelWord(ePF_BC1), encoded.getStoredTexture().getPixelFormat());
    EXPECT_EQ(k_RGBA8, encoded.getWorkingTexture().getPixelFormat());
    EXPECT_EQ(dataOf(source.getWorkingTexture()), dataOf(encoded.getWorkingTexture())); // one colour that BC1 can say
    EXPECT_EQ(1u, encoded.getStoredTexture().getNumMIPLevels());
}

TEST_F(CMainWindowEncodeTest, MakesMIPMapsIfAsked)
{
    openView(png("photo.png", 8, 8));
    EXPECT_EQ(4u, encode("BC1", true).getStoredTexture().getNumMIPLevels());
}

TEST_F(CMainWindowEncodeTest, NamesTheResultAfterTheModifiedSource)
{
    const std::string strPath = mox("a.mox", makeBytes(4, 4));
    edit(openView(strPath));
    EXPECT_EQ(strPath + " * (Encoded:BC1)", subWindowOf(encode("BC1"))->objectName().toStdString());
}

TEST_F(CMainWindowEncodeTest, GivesTheResultThePaddingOfTheSource)
{
    openView(png("photo.png"));
    action("Act_Align8").trigger();
    EXPECT_EQ(8u, encode("BC1").getPadding());
}

TEST_F(CMainWindowEncodeTest, OpensNothingAfterACancel)
{
    openView(png("photo.png"));
    CDialogAnswers answers;
    answers.thenReject();
    action("Act_Encode").trigger();
    EXPECT_EQ(1, windowCount());
    EXPECT_EQ(1u, answers.seen().size());
}

TEST_F(CMainWindowEncodeTest, HasNoChoiceOfADifferenceViewYet)
{
    openView(png("photo.png"));
    CDialogAnswers answers;
    bool bHidden = false;
    answers.thenDo(
        [&](QDialog& dialog)
        {
            bHidden = dialog.findChild<QCheckBox*>("Check_Diff")->isHidden();
            dialog.reject();
        });
    action("Act_Encode").trigger();
    EXPECT_TRUE(bHidden);
}

TEST_F(CMainWindowEncodeTest, MakesEveryETCAndEACFormatWithItsLevels)
{
    // White is exact in each of them; EAC has no blue, and with one channel no green.
    CTexViewWindowSingle& source = openView(png("photo.png", 8, 8, QColor(255, 255, 255)));
    for (const char* pcFormat : {"ETC1", "ETC2 RGB", "ETC2 RGBA", "ETC2 RGB A1", "EAC R11", "EAC RG11"})
    {
        area().setActiveSubWindow(subWindowOf(source));
        CTexViewWindowSingle& encoded = encode(pcFormat, true, "OpenGL ES 3");
        EXPECT_EQ(pcFormat, getFormatName(encoded.getStoredTexture().getPixelFormat()));
        EXPECT_EQ(4u, encoded.getStoredTexture().getNumMIPLevels());
        const MOXPixelWord format = encoded.getStoredTexture().getPixelFormat();
        const uint8_t* pPixel = encoded.getWorkingTexture().getDataPtr();
        EXPECT_EQ(255, pPixel[0]) << pcFormat;
        EXPECT_EQ(format == ePF_EAC_R11 ? 0 : 255, pPixel[1]) << pcFormat;
        EXPECT_EQ(format == ePF_EAC_R11 || format == ePF_EAC_RG11 ? 0 : 255, pPixel[2]) << pcFormat;
        EXPECT_EQ(255, pPixel[3]) << pcFormat;
    }
}

TEST_F(CMainWindowEncodeTest, MakesEveryMOXTCFormatAtBothFastQualitiesWithItsLevels)
{
    CTexViewWindowSingle& source = openView(png("photo.png", 32, 32, QColor(255, 0, 0)));
    for (const char* pcFormat : {"MOXTC 2bpp RGBA", "MOXTC 2bpp RGB", "MOXTCII 2bpp", "MOXTC 4bpp RGBA", "MOXTC 4bpp RGB", "MOXTCII 4bpp"})
        for (const int iMode : {0, 1})
        {
            area().setActiveSubWindow(subWindowOf(source));
            CTexViewWindowSingle& encoded = encode(pcFormat, true, "OpenGL ES 2", iMode);
            EXPECT_EQ(pcFormat, getFormatName(encoded.getStoredTexture().getPixelFormat()));
            EXPECT_EQ(6u, encoded.getStoredTexture().getNumMIPLevels());
            const std::vector<uint8_t> top = dataOf(source.getWorkingTexture());
            EXPECT_TRUE(std::equal(top.begin(), top.end(), encoded.getWorkingTexture().getDataPtr())) << "a colour that all of them hold";
        }
}

TEST_F(CMainWindowEncodeTest, TellsThatMOXTCHasNoSlowerQualitiesYet)
{
    openView(png("photo.png", 32, 32));
    for (const int iMode : {2, 3, 4})
        expectCannotEncode(choose("MOXTCII 4bpp", false, "OpenGL ES 2", iMode));
}

TEST_F(CMainWindowEncodeTest, EncodesWhatWasActiveWhenTheDialogCameUp)
{
    const std::string strFirst = png("first.png", 8, 8), strOther = png("other.png", 4, 4);
    openView(strFirst);
    CDialogAnswers answers;
    answers.thenDo(
        [&](QDialog& dialog)
        {
            window().slotAppMessageRecieved(QString::fromStdString(strOther));
            choose("BC1")(dialog);
        });
    action("Act_Encode").trigger();
    ASSERT_EQ(3, windowCount());
    EXPECT_EQ(strFirst + " (Encoded:BC1)", subWindows().back()->objectName().toStdString());
}

TEST_F(CMainWindowEncodeTest, MayEncodeTwiceUnderOneName)
{
    CTexViewWindowSingle& source = openView(png("photo.png", 8, 8));
    encode("BC1");
    area().setActiveSubWindow(subWindowOf(source));
    encode("BC1");
    EXPECT_EQ(3, windowCount());
    EXPECT_EQ(subWindows()[1]->objectName(), subWindows()[2]->objectName());
}

TEST_F(CMainWindowEncodeTest, ReloadsAFileAsItIsNow)
{
    const std::string strPath = png("a.png", 4, 4, QColor(1, 1, 1));
    CTexViewWindowSingle& old = openView(strPath);
    edit(old);
    png("a.png", 6, 5, QColor(2, 2, 2));
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes);
    action("Act_Reload").trigger();
    settle();
    ASSERT_EQ(1u, answers.seen().size());
    EXPECT_EQ("Reload File", answers.seen()[0].strTitle);
    EXPECT_EQ("Are you sure you wish to reload? This will discard all changes and revert to the current version of the source.",
              answers.seen()[0].strText);
    EXPECT_EQ(QMessageBox::Yes | QMessageBox::No, answers.seen()[0].buttons);
    EXPECT_EQ(QMessageBox::Yes, answers.seen()[0].eDefaultButton);
    ASSERT_EQ(1, windowCount());
    EXPECT_EQ(6u, lastView()->getWorkingTexture().getWidth());
    EXPECT_EQ(strPath, subWindows().front()->objectName().toStdString());
    EXPECT_EQ("a.png", subWindows().front()->windowTitle().toStdString());
    EXPECT_EQ("Size: 6 x 5\t", labelText("SizeLabel"));
}

TEST_F(CMainWindowEncodeTest, ReloadsAMaximisedTexture)
{
    const std::string strPath = png("a.png", 4, 4);
    subWindowOf(openView(strPath))->showMaximized();
    png("a.png", 6, 5);
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes);
    action("Act_Reload").trigger();
    settle();
    ASSERT_EQ(1, windowCount());
    EXPECT_TRUE(subWindows().front()->isVisible());
    EXPECT_TRUE(subWindows().front()->isMaximized());
    EXPECT_EQ(subWindows().front(), area().currentSubWindow());
    EXPECT_TRUE(action("Act_Save").isEnabled());
    EXPECT_EQ("Size: 6 x 5\t", labelText("SizeLabel"));
}

TEST_F(CMainWindowEncodeTest, ReloadsATextureInItsPlace)
{
    openView(png("other.png", 4, 4));
    QMdiSubWindow* pOther = subWindows().front();
    const QRect otherPlace = pOther->geometry();
    subWindowOf(openView(png("a.png", 4, 4)))->setGeometry(30, 40, 250, 160);
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes).thenPress(QMessageBox::Yes);
    action("Act_Reload").trigger();
    settle();
    ASSERT_EQ(2, windowCount());
    EXPECT_EQ(QRect(30, 40, 250, 160), area().currentSubWindow()->geometry());
    EXPECT_FALSE(area().currentSubWindow()->isMaximized());

    // With another one below, and back to the size of before.
    area().currentSubWindow()->showMaximized();
    action("Act_Reload").trigger();
    settle();
    ASSERT_EQ(2, windowCount());
    EXPECT_NE(pOther, area().currentSubWindow());
    EXPECT_TRUE(area().currentSubWindow()->isMaximized());
    EXPECT_FALSE(pOther->isMaximized());
    EXPECT_EQ(otherPlace, pOther->geometry());
}

TEST_F(CMainWindowEncodeTest, ReloadsAMinimisedTexture)
{
    openView(png("a.png", 40, 30));
    subWindows().front()->showMinimized();
    const QSize minimised = subWindows().front()->size();
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes);
    action("Act_Reload").trigger();
    settle();
    ASSERT_EQ(1u, answers.seen().size());
    ASSERT_EQ(1, windowCount());
    EXPECT_FALSE(subWindows().front()->isMinimized());
    EXPECT_GT(subWindows().front()->height(), minimised.height());
}

TEST_F(CMainWindowEncodeTest, ReloadsByThePlainRoute)
{
    CTexViewWindowSingle& view = openView(mox("a.mox", testsupport::makeFloats({2.0f, 0.0f, 0.0f, 1.0f})));
    ASSERT_EQ(k_RGBA32, view.getWorkingTexture().getPixelFormat());
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes);
    action("Act_Reload").trigger();
    settle();
    EXPECT_EQ(k_RGBA8, lastView()->getWorkingTexture().getPixelFormat());
}

TEST_F(CMainWindowEncodeTest, KeepsATextureWhoseReloadIsDeclined)
{
    const CTexViewWindowSingle* pView = &openView(png("a.png"));
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::No);
    action("Act_Reload").trigger();
    EXPECT_EQ(pView, lastView());
    EXPECT_TRUE(subWindows().front()->isVisible());
}

TEST_F(CMainWindowEncodeTest, KeepsATextureWhoseFileIsGoneAlsoBesideOthers)
{
    const std::string strPath = png("a.png");
    openView(png("other.png"));
    CTexViewWindowSingle& view = openView(strPath);
    edit(view, 77);
    QFile::remove(QString::fromStdString(strPath));
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes).thenPress(QMessageBox::Ok);
    action("Act_Reload").trigger();
    settle();
    ASSERT_EQ(2u, answers.seen().size());
    EXPECT_EQ("Could not reload file", answers.seen()[1].strTitle);
    EXPECT_EQ("Cannot open file, as it does not exist at specified location.\nHas it been renamed, moved or deleted?",
              answers.seen()[1].strText);
    ASSERT_EQ(2, windowCount());
    EXPECT_EQ(&view, lastView());
    EXPECT_EQ(77, view.getWorkingTexture().getDataPtr()[0]);
    EXPECT_TRUE(subWindowOf(view)->isVisible());
    EXPECT_EQ(subWindowOf(view), area().currentSubWindow());
}

TEST_F(CMainWindowEncodeTest, ReloadsAnEncodedTextureByEncodingItsSourceAgain)
{
    const std::string strPath = png("photo.png", 8, 8);
    CTexViewWindowSingle& source = openView(strPath);
    encode("BC1");
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes).thenDo(choose("BC3"));
    action("Act_Reload").trigger();
    settle();
    EXPECT_EQ(2u, answers.seen().size());
    ASSERT_EQ(2, windowCount()); // no prompt for the old result, which is gone
    EXPECT_EQ(&source, viewOf(subWindows().front()));
    EXPECT_EQ(strPath + " (Encoded:BC3)", subWindows().back()->objectName().toStdString());
}

TEST_F(CMainWindowEncodeTest, KeepsAnEncodedTextureWhenEncodingAgainIsCancelled)
{
    openView(png("photo.png", 8, 8));
    CTexViewWindowSingle& encoded = encode("BC1");
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes).thenReject();
    action("Act_Reload").trigger();
    settle();
    EXPECT_EQ(2, windowCount());
    EXPECT_EQ(&encoded, lastView());
    EXPECT_TRUE(subWindowOf(encoded)->isVisible());
    EXPECT_EQ(subWindowOf(encoded), area().currentSubWindow());
}

TEST_F(CMainWindowEncodeTest, TellsThatTheSourceOfAnEncodedTextureIsClosed)
{
    CTexViewWindowSingle& source = openView(png("photo.png", 8, 8));
    CTexViewWindowSingle& encoded = encode("BC1");
    subWindowOf(source)->close();
    settle();
    ASSERT_EQ(1, windowCount());
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Yes).thenPress(QMessageBox::Ok);
    action("Act_Reload").trigger();
    ASSERT_EQ(2u, answers.seen().size());
    EXPECT_EQ("Could not recreate texture", answers.seen()[1].strTitle);
    EXPECT_EQ("Texture was encoded from another window which no longer exists.\nUnable to recreate texture.", answers.seen()[1].strText);
    EXPECT_EQ(QMessageBox::Critical, answers.seen()[1].eIcon);
    EXPECT_EQ(&encoded, lastView());
    EXPECT_TRUE(subWindowOf(encoded)->isVisible());
}

TEST_F(CMainWindowEncodeTest, AsksBeforeAnEncodedTextureIsClosedUnsaved)
{
    openView(png("photo.png", 8, 8));
    encode("BC1");
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Cancel);
    action("Act_Close").trigger();
    settle();
    EXPECT_EQ(2, windowCount());
    answers.thenPress(QMessageBox::No);
    action("Act_Close").trigger();
    settle();
    EXPECT_EQ(1, windowCount());
}

} // namespace
