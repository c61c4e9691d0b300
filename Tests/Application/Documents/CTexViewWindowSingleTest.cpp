#include "Documents/CTexViewWindowSingle.h"

#include <memory>

#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMdiSubWindow>
#include <gtest/gtest.h>

#include "Application/Common/TestPreferences.h"
#include "Application/Documents/DocumentSupport.h"
#include "Files/LoadTexture.h"
#include "Support/FileSizeLimit.h"
#include "Support/QtSupport.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

constexpr char k_acReencode[] =
    "The texture you're trying to save has been modified since last encoding. To continue, it will be re-compressed to the format of the "
    "stored compressed format (BGR 8 8 8 ). Default compression options will be used.";
constexpr char k_acSaveFilter[] = "Moxwell Textures (*.mox);;Khronos Textures (*.ktx);;Direct Draw Surfaces (*.dds)";

/// 2 by 2 pixels of three bytes.
CMOXTexture makeStored()
{
    CMOXTexture stored(CMOXTextureHeader(layout("bgr", 8, 8, 8), 2, 2, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    fill(stored, 5);
    return stored;
}

class SavingAView : public testing::Test
{
protected:
    void open(const std::string& strName, uint32_t ui32Kind = eDocumentFile, Preferences* pPreferences = nullptr)
    {
        m_pView = std::make_unique<CTexViewWindowSingle>(makeStored(), makeBytes(2, 2), strName, pPreferences, ui32Kind, nullptr, nullptr);
    }

    /// Leaves every byte of the working texture at uiByte.
    void edit(uint8_t uiByte)
    {
        ASSERT_TRUE(m_pView->beginEdit());
        fill(m_pView->getWorkingTexture(), uiByte);
        m_pView->endEdit();
    }

    void expectState(const std::string& strName, bool bModified, int32_t i32Changes, uint32_t ui32Kind)
    {
        EXPECT_EQ(strName, m_pView->getName());
        EXPECT_EQ(bModified, m_pView->isModified());
        EXPECT_EQ(i32Changes, m_pView->getChangeCount());
        EXPECT_EQ(ui32Kind, m_pView->getSourceKind());
    }

    std::string path(const char* pcName) const { return m_Folder.path(pcName); }

    static std::vector<uint8_t> twelveOf(uint8_t uiByte) { return std::vector<uint8_t>(12, uiByte); }

    CDialogAnswers& thenChoose(const std::string& strPath) { return m_Answers.thenChoose({QString::fromStdString(strPath)}); }
    /// Notes what the next file dialog proposes, and cancels it.
    void thenLookAndCancel()
    {
        m_Answers.thenDo(
            [this](QDialog& dialog)
            {
                auto& files = dynamic_cast<QFileDialog&>(dialog);
                m_strStart = files.directory().filePath(files.findChild<QLineEdit*>("fileNameEdit")->text()).toStdString();
                m_strFilter = files.nameFilters().join(";;").toStdString();
                m_strSelectedFilter = files.selectedNameFilter().toStdString();
                EXPECT_EQ(QFileDialog::AcceptSave, files.acceptMode());
                dialog.reject();
            });
    }

    void expectBox(size_t uiIndex, const std::string& strTitle, const std::string& strText, QMessageBox::StandardButtons buttons)
    {
        ASSERT_LT(uiIndex, m_Answers.seen().size());
        const CDialogAnswers::Seen& seen = m_Answers.seen()[uiIndex];
        EXPECT_EQ(strTitle, seen.strTitle);
        EXPECT_EQ(strText, seen.strText);
        EXPECT_EQ(buttons, seen.buttons);
    }

    const CTemporaryFolder m_Folder;
    CDialogAnswers m_Answers;
    std::unique_ptr<CTexViewWindowSingle> m_pView;
    std::string m_strStart;
    std::string m_strFilter;
    std::string m_strSelectedFilter;
};

} // namespace

// The window

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

// Save

TEST_F(SavingAView, AnUnmodifiedTextureIsWrittenAsItIsStored)
{
    open(path("a.mox"));
    EXPECT_EQ(1, m_pView->save());
    EXPECT_TRUE(m_Answers.seen().empty());
    EXPECT_EQ(twelveOf(5), dataOf(CMOXTexture(path("a.mox"))));
    EXPECT_FALSE(m_pView->wroteNothing());
    expectState(path("a.mox"), false, 0, eDocumentFile);
}

TEST_F(SavingAView, AModifiedTextureIsEncodedAnewAfterAQuestion)
{
    open(path("a.mox"));
    edit(9);
    m_Answers.thenPress(QMessageBox::Yes);
    EXPECT_EQ(1, m_pView->save());
    ASSERT_EQ(1u, m_Answers.seen().size());
    expectBox(0, "Texture Modified", k_acReencode, QMessageBox::Yes | QMessageBox::Abort);

    const CMOXTexture saved(path("a.mox"));
    EXPECT_EQ(layout("bgr", 8, 8, 8), saved.getPixelFormat());
    EXPECT_EQ(twelveOf(9), dataOf(saved));
    EXPECT_FALSE(m_pView->canUndo());
    EXPECT_FALSE(m_pView->canRedo());
    expectState(path("a.mox"), false, 0, eDocumentFile);
}

TEST_F(SavingAView, WithoutAYesNothingIsEncodedOrWritten)
{
    open(path("a.mox"));
    edit(9);
    m_Answers.thenPress(QMessageBox::Abort).thenReject();
    EXPECT_EQ(-1, m_pView->save());
    EXPECT_EQ(-1, m_pView->save());
    EXPECT_EQ(2u, m_Answers.seen().size());
    EXPECT_EQ(0u, m_Folder.count());
    EXPECT_EQ(twelveOf(5), dataOf(m_pView->getStoredTexture()));
    EXPECT_TRUE(m_pView->canUndo());
    expectState(path("a.mox"), true, 1, eDocumentFile);
}

TEST_F(SavingAView, AFailedSaveKeepsNameCountsAndTheOldFile)
{
    m_Folder.write("a.mox", std::string("old"));
    open(path("a.mox"), eDocumentEncoded);
    edit(9);
    m_Answers.thenPress(QMessageBox::Yes);
    const CFileSizeLimit limit(32);
    EXPECT_EQ(0, m_pView->save());
    EXPECT_EQ("old", readText(path("a.mox")));
    EXPECT_EQ(1u, m_Folder.count());
    expectState(path("a.mox"), true, 3, eDocumentEncoded);
}

TEST_F(SavingAView, AFailedEncodingIsAFailedSaveWithTheUndoKept)
{
    CMOXTextureHeader header = makeBytes(2, 2);
    header.setPixelFormat(ePF_BC7); // which has no encoder
    m_pView = std::make_unique<CTexViewWindowSingle>(CMOXTexture(header), makeBytes(2, 2), path("a.mox"), nullptr, eDocumentFile, nullptr,
                                                     nullptr);
    edit(9);
    m_Answers.thenPress(QMessageBox::Yes);
    EXPECT_EQ(0, m_pView->save());
    EXPECT_EQ(0u, m_Folder.count());
    EXPECT_TRUE(m_pView->canUndo());
    expectState(path("a.mox"), true, 1, eDocumentFile);
}

TEST_F(SavingAView, PaddingTakesEffectAtTheNextSave)
{
    open(path("a.mox"));
    m_pView->slotUpdatePadding(64);
    EXPECT_EQ(0u, m_pView->getStoredTexture().getMetaDataSize());
    EXPECT_EQ(1, m_pView->save());
    // 52 + 12 are 64 already, so the record gets one whole step.
    EXPECT_EQ(12u + 64, m_pView->getStoredTexture().getMetaDataSize());
    EXPECT_EQ(12u + 64, m_pView->getWorkingTexture().getMetaDataSize());
    EXPECT_EQ(52u + 12 + 64 + 12, readBytes(path("a.mox")).size());
}

TEST_F(SavingAView, NamesWithOtherExtensionsAskForAnother)
{
    for (const char* pcName : {"photo.png", "photo.DDS", "photo", "photo."})
    {
        open(path(pcName));
        thenLookAndCancel();
        EXPECT_EQ(-1, m_pView->save()) << pcName;
        EXPECT_EQ("Save Texture", m_Answers.seen().back().strTitle);
        EXPECT_EQ(path("photo.mox"), m_strStart);
        EXPECT_EQ(k_acSaveFilter, m_strFilter);
    }
    EXPECT_EQ(0u, m_Folder.count());
}

// Save As

TEST_F(SavingAView, SaveAsProposesTheBaseNameInTheDocumentsFolder)
{
    open(path("photo.small.mox"));
    thenLookAndCancel();
    EXPECT_EQ(-1, m_pView->saveAs(false, 2));
    EXPECT_EQ("Save Texture", m_Answers.seen().back().strTitle);
    EXPECT_EQ(path("photo.small.mox"), m_strStart);
    EXPECT_EQ(k_acSaveFilter, m_strFilter);
    EXPECT_EQ("Moxwell Textures (*.mox)", m_strSelectedFilter);
    expectState(path("photo.small.mox"), false, 0, eDocumentFile);
}

TEST_F(SavingAView, SaveAsStartsInTheSavePathWhereTheFolderIsGone)
{
    CTestPreferences preferences;
    preferences.setText("FileIO/SavePath", m_Folder.path());
    open("/no such folder/photo.png", eDocumentFile, &preferences);
    thenLookAndCancel();
    EXPECT_EQ(-1, m_pView->saveAs(false, 2));
    EXPECT_EQ(path("photo.mox"), m_strStart);
}

TEST_F(SavingAView, SaveAsTakesTheNameOverAndMakesAFileOfIt)
{
    open("New Texture 1", eDocumentNew);
    thenChoose(path("b.mox"));
    EXPECT_EQ(1, m_pView->saveAs(false, 2));
    EXPECT_EQ(twelveOf(5), dataOf(CMOXTexture(path("b.mox"))));
    expectState(path("b.mox"), false, 0, eDocumentFile);
    EXPECT_EQ("b.mox", m_pView->getViewTitle());
    EXPECT_TRUE(m_pView->close());
    EXPECT_EQ(1u, m_Answers.seen().size()) << "no longer unsaved";
}

TEST_F(SavingAView, ANameWithoutAPointGetsTheFiltersExtension)
{
    open(path("a.png"));
    thenChoose(path("b"));
    EXPECT_EQ(1, m_pView->saveAs(false, 2));
    expectState(path("b.mox"), false, 0, eDocumentFile);
    EXPECT_EQ(twelveOf(5), dataOf(CMOXTexture(path("b.mox"))));
}

TEST_F(SavingAView, AnExistingFileOfTheCompletedNameIsAskedAbout)
{
    m_Folder.write("b.mox", std::string("old"));
    open(path("a.png"));
    thenChoose(path("b")).thenPress(QMessageBox::No);
    EXPECT_EQ(-1, m_pView->saveAs(false, 2));
    EXPECT_EQ("old", readText(path("b.mox")));
    EXPECT_EQ("b.mox already exists.\nDo you want to replace it?", m_Answers.seen().back().strText);
    expectState(path("a.png"), false, 0, eDocumentFile);

    thenChoose(path("b")).thenPress(QMessageBox::Yes);
    EXPECT_EQ(1, m_pView->saveAs(false, 2));
    EXPECT_EQ(twelveOf(5), dataOf(CMOXTexture(path("b.mox"))));
}

TEST_F(SavingAView, SaveAsEncodesAModifiedTextureAnewAfterAQuestion)
{
    open(path("a.png"));
    edit(9);
    thenChoose(path("b.mox")).thenPress(QMessageBox::Abort);
    EXPECT_EQ(-1, m_pView->saveAs(false, 2));
    expectBox(1, "Texture Modified", k_acReencode, QMessageBox::Yes | QMessageBox::Abort);
    EXPECT_EQ(0u, m_Folder.count());
    expectState(path("a.png"), true, 1, eDocumentFile);

    thenChoose(path("b.mox")).thenPress(QMessageBox::Yes);
    EXPECT_EQ(1, m_pView->saveAs(false, 2));
    EXPECT_EQ(twelveOf(9), dataOf(CMOXTexture(path("b.mox"))));
    EXPECT_FALSE(m_pView->canUndo());
    expectState(path("b.mox"), false, 0, eDocumentFile);
}

TEST_F(SavingAView, ANameEndingOtherwiseWritesNothingAndCountsAsSaved)
{
    for (const char* pcName : {"b.png", "b.DDS", "b."})
    {
        open(path("a.mox"), eDocumentNew);
        edit(9);
        QSignalSpy nothing(m_pView.get(), &CTexViewWindowSingle::signalNothingWritten);
        thenChoose(path(pcName));
        EXPECT_EQ(1, m_pView->saveAs(false, 2));
        EXPECT_TRUE(m_pView->wroteNothing());
        ASSERT_EQ(1, nothing.count());
        EXPECT_EQ(path(pcName), nothing.front().front().toString().toStdString());
        EXPECT_EQ(0u, m_Folder.count());
        EXPECT_TRUE(m_pView->canUndo());
        expectState(path(pcName), false, 0, eDocumentFile);
    }
    EXPECT_EQ(3u, m_Answers.seen().size()) << "and asks nothing";
}

TEST_F(SavingAView, EditsThatASaveDidNotWriteAreEncodedByTheNextOne)
{
    open(path("a.mox"));
    edit(9);
    thenChoose(path("b.png"));
    EXPECT_EQ(1, m_pView->saveAs(false, 2));
    expectState(path("b.png"), false, 0, eDocumentFile);
    EXPECT_EQ("b.png", m_pView->getViewTitle());

    thenChoose(path("c.mox")).thenPress(QMessageBox::Yes);
    EXPECT_EQ(1, m_pView->saveAs(false, 2));
    ASSERT_EQ(3u, m_Answers.seen().size());
    expectBox(2, "Texture Modified", k_acReencode, QMessageBox::Yes | QMessageBox::Abort);
    EXPECT_EQ(twelveOf(9), dataOf(CMOXTexture(path("c.mox"))));

    EXPECT_EQ(1, m_pView->save());
    EXPECT_EQ(3u, m_Answers.seen().size()) << "it is up to date now";
}

TEST_F(SavingAView, EditsUndoneAfterASaveThatWroteNothingAskNoMore)
{
    open(path("a.mox"));
    edit(9);
    thenChoose(path("b.png"));
    EXPECT_EQ(1, m_pView->saveAs(false, 2));
    m_pView->undo();
    thenChoose(path("c.mox"));
    EXPECT_EQ(1, m_pView->saveAs(false, 2));
    EXPECT_EQ(2u, m_Answers.seen().size());
    EXPECT_EQ(twelveOf(5), dataOf(CMOXTexture(path("c.mox"))));
}

TEST_F(SavingAView, ALaterSaveThatWritesIsNoLongerNothing)
{
    open(path("a.mox"));
    thenChoose(path("b.png"));
    EXPECT_EQ(1, m_pView->saveAs(false, 2));
    EXPECT_TRUE(m_pView->wroteNothing());
    thenChoose(path("b.mox"));
    EXPECT_EQ(1, m_pView->save());
    EXPECT_FALSE(m_pView->wroteNothing());
}

TEST_F(SavingAView, AFailedSaveAsKeepsTheOldName)
{
    open(path("a.png"), eDocumentWrapped);
    thenChoose(path("b.mox"));
    const CFileSizeLimit limit(32);
    EXPECT_EQ(0, m_pView->saveAs(false, 2));
    EXPECT_EQ(0u, m_Folder.count());
    expectState(path("a.png"), false, 2, eDocumentWrapped);
}

TEST_F(SavingAView, LegacyOffersTheOldContainerAlone)
{
    open(path("a.mox"));
    thenLookAndCancel();
    EXPECT_EQ(-1, m_pView->saveAs(true, 2));
    EXPECT_EQ("Save Texture", m_Answers.seen().back().strTitle);
    EXPECT_EQ(path("a.mox"), m_strStart);
    EXPECT_EQ("Moxwell Texture V2 (*.mox)", m_strFilter);
    EXPECT_EQ("Moxwell Texture V2 (*.mox)", m_strSelectedFilter);
}

TEST_F(SavingAView, LegacyTakesTheNameOverAndIsReadBack)
{
    open(path("photo.png"), eDocumentNew);
    m_pView->getStoredTexture() = makeBytes(4, 2, 3);
    thenChoose(path("b"));
    EXPECT_EQ(1, m_pView->saveAs(true, 2));
    EXPECT_EQ(52, readBytes(path("b.mox"))[0]) << "the header of version 2";
    EXPECT_EQ(dataOf(makeBytes(4, 2, 3)), dataOf(CMOXTexture(path("b.mox"))));
    expectState(path("b.mox"), false, 0, eDocumentFile);
    EXPECT_FALSE(m_pView->wouldAskToClose());
}

TEST_F(SavingAView, LegacyGoesByItsApiAndDropsThePadding)
{
    open(path("a.mox"));
    m_pView->getStoredTexture() = makeBytes(4, 2, 3);
    m_pView->slotUpdatePadding(8);
    for (const auto& [ui32Api, uiType] : {std::pair(1u, 18), std::pair(6u, 97), std::pair(7u, 152)})
    {
        const std::string strPath = path(std::to_string(ui32Api).c_str()) + ".mox";
        thenChoose(strPath);
        EXPECT_EQ(1, m_pView->saveAs(true, ui32Api));
        EXPECT_EQ(uiType, readBytes(strPath)[16]) << ui32Api;
        EXPECT_EQ(52u + 32, readBytes(strPath).size()) << ui32Api;
        EXPECT_EQ(0u, m_pView->getStoredTexture().getMetaDataSize());
    }
}

TEST_F(SavingAView, LegacyFailsWhereTheApiHasNoTypeAndTheNameStays)
{
    open(path("a.mox"), eDocumentEncoded); // three bytes, blue first: no API of these has it
    for (const uint32_t ui32Api : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u})
    {
        thenChoose(path("b.mox"));
        EXPECT_EQ(0, m_pView->saveAs(true, ui32Api)) << ui32Api;
        EXPECT_EQ(0u, m_Folder.count());
        expectState(path("a.mox"), false, 2, eDocumentEncoded);
    }
}

TEST_F(SavingAView, LegacyEncodesAModifiedTextureAnewAfterAQuestion)
{
    open(path("a.mox"));
    m_pView->getStoredTexture() = makeBytes(2, 2, 3);
    edit(9);
    thenChoose(path("b.mox")).thenPress(QMessageBox::Abort);
    EXPECT_EQ(-1, m_pView->saveAs(true, 2));
    EXPECT_EQ(0u, m_Folder.count());
    thenChoose(path("b.mox")).thenPress(QMessageBox::Yes);
    EXPECT_EQ(1, m_pView->saveAs(true, 2));
    EXPECT_EQ(std::vector<uint8_t>(16, 9), dataOf(CMOXTexture(path("b.mox"))));
    EXPECT_FALSE(m_pView->canUndo());
}

TEST_F(SavingAView, ASaveAfterALegacyOneWritesThePresentVersion)
{
    open(path("a.mox"));
    m_pView->getStoredTexture() = makeBytes(4, 2, 3);
    thenChoose(path("b.mox"));
    EXPECT_EQ(1, m_pView->saveAs(true, 2));
    EXPECT_EQ(1, m_pView->save());
    EXPECT_EQ('M', readBytes(path("b.mox"))[0]);
    EXPECT_EQ(1u, m_Answers.seen().size());
}

TEST_F(SavingAView, SaveWritesToTheContainerOfItsName)
{
    for (const auto& [pcName, pcStart] : {std::pair("a.ktx", "\xABKTX"), std::pair("a.dds", "DDS ")})
    {
        open(path(pcName));
        m_pView->getStoredTexture() = makeBytes(4, 2, 3);
        EXPECT_EQ(1, m_pView->save()) << pcName;
        EXPECT_EQ(pcStart, readText(path(pcName)).substr(0, 4));
        EXPECT_EQ(dataOf(makeBytes(4, 2, 3)), dataOf(CMOXTexture(path(pcName))));
        expectState(path(pcName), false, 0, eDocumentFile);
    }
    EXPECT_TRUE(m_Answers.seen().empty());
}

TEST_F(SavingAView, TheFilterChoosesTheContainerOfANameWithoutAPoint)
{
    for (const auto& [pcFilter, pcName] :
         {std::pair("Khronos Textures (*.ktx)", "b.ktx"), std::pair("Direct Draw Surfaces (*.dds)", "b.dds")})
    {
        open(path("a.mox"));
        m_pView->getStoredTexture() = makeBytes(4, 2, 3);
        m_Answers.thenDo(
            [this, pcFilter = pcFilter](QDialog& dialog)
            {
                auto& files = dynamic_cast<QFileDialog&>(dialog);
                files.selectNameFilter(pcFilter);
                files.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(path("b")));
                QMetaObject::invokeMethod(&files, "accept");
            });
        EXPECT_EQ(1, m_pView->saveAs(false, 2));
        expectState(path(pcName), false, 0, eDocumentFile);
        EXPECT_EQ(dataOf(makeBytes(4, 2, 3)), dataOf(CMOXTexture(path(pcName))));
    }
}

TEST_F(SavingAView, AContainerThatHasNothingForTheEncodingFailsAndTheNameStays)
{
    open(path("a.mox"), eDocumentWrapped); // three bytes, blue first
    thenChoose(path("b.dds"));
    EXPECT_EQ(0, m_pView->saveAs(false, 2));
    EXPECT_EQ(0u, m_Folder.count());
    expectState(path("a.mox"), false, 2, eDocumentWrapped);
}

// Save Image

TEST_F(SavingAView, SaveImageProposesAPng)
{
    open(path("photo.small.mox"));
    thenLookAndCancel();
    EXPECT_EQ(-1, m_pView->saveImage());
    EXPECT_EQ("Save Image", m_Answers.seen().back().strTitle);
    EXPECT_EQ(path("photo.small.png"), m_strStart);
    EXPECT_EQ("Portable Network Graphics (*.png);;Bitmap Files (*.bmp);;JPEG Files (*.jpg)", m_strFilter);
    EXPECT_EQ("Portable Network Graphics (*.png)", m_strSelectedFilter);
    expectState(path("photo.small.mox"), false, 0, eDocumentFile);
}

TEST_F(SavingAView, SaveImageStartsInTheSavePathWhereTheFolderIsGone)
{
    CTestPreferences preferences;
    preferences.setText("FileIO/SavePath", m_Folder.path());
    open("/no such folder/photo.mox", eDocumentFile, &preferences);
    thenLookAndCancel();
    EXPECT_EQ(-1, m_pView->saveImage());
    EXPECT_EQ(path("photo.png"), m_strStart);
}

TEST_F(SavingAView, AnImageIsTheWorkingSurfaceAndItsNameTheDocuments)
{
    open(path("a.mox"), eDocumentNew);
    edit(9);
    m_pView->getWorkingTexture().getDataPtr()[0] = 200;
    thenChoose(path("b.png"));
    EXPECT_EQ(1, m_pView->saveImage());
    const QImage image(QString::fromStdString(path("b.png")));
    EXPECT_EQ(QSize(2, 2), image.size());
    EXPECT_EQ(qRgba(200, 9, 9, 9), image.pixel(0, 0));
    EXPECT_EQ(qRgba(9, 9, 9, 9), image.pixel(1, 1));
    expectState(path("b.png"), true, 3, eDocumentFile);
    EXPECT_TRUE(m_pView->canUndo());
}

TEST_F(SavingAView, AnImageIsTheCurrentSurface)
{
    const CMOXTexture working = makeBytes(4, 4, 0, 2, 2, 2);
    m_pView = std::make_unique<CTexViewWindowSingle>(working, working, path("a.mox"), nullptr, eDocumentFile, nullptr, nullptr);
    m_pView->slotUpdateCurrentSurface(1, 1, 1);
    thenChoose(path("b.bmp"));
    EXPECT_EQ(1, m_pView->saveImage());
    const QImage image(QString::fromStdString(path("b.bmp")));
    EXPECT_EQ(QSize(2, 2), image.size());
    const uint8_t* pSurface = working.getDataPtr(1, 1, 1);
    EXPECT_EQ(qRgb(pSurface[0], pSurface[1], pSurface[2]) & 0xFFFFFF, image.pixel(0, 0) & 0xFFFFFF);
}

TEST_F(SavingAView, AnImagesNameWithoutAPointBecomesAPngWhateverTheFilter)
{
    open(path("a.mox"));
    m_Answers.thenDo(
        [this](QDialog& dialog)
        {
            auto& files = dynamic_cast<QFileDialog&>(dialog);
            files.selectNameFilter("Bitmap Files (*.bmp)");
            files.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(path("b")));
            QMetaObject::invokeMethod(&files, "accept");
        });
    EXPECT_EQ(1, m_pView->saveImage());
    EXPECT_FALSE(QImage(QString::fromStdString(path("b.png"))).isNull());
    EXPECT_EQ(1u, m_Folder.count());
    expectState(path("b.png"), false, 0, eDocumentFile);
}

TEST_F(SavingAView, AFailedImageKeepsNameAndKind)
{
    open(path("a.mox"), eDocumentNew);
    thenChoose(path("b.xyz"));
    EXPECT_EQ(0, m_pView->saveImage());
    EXPECT_EQ(0u, m_Folder.count());
    expectState(path("a.mox"), false, 2, eDocumentNew);
}

// Closing

TEST_F(SavingAView, AFileWithoutChangesClosesWithoutAQuestion)
{
    open(path("a.mox"));
    EXPECT_TRUE(m_pView->close());
    edit(9);
    m_pView->undo();
    EXPECT_TRUE(m_pView->close());
    EXPECT_TRUE(m_Answers.seen().empty());
}

TEST_F(SavingAView, ChangesAndUnsavedKindsAskBeforeClosing)
{
    for (const uint32_t ui32Kind : {0u, 1u, 2u, 3u, 4u, 5u, 6u})
    {
        open(path("a.mox"), ui32Kind);
        if (ui32Kind == eDocumentFile)
            edit(9);
        m_Answers.thenPress(QMessageBox::Cancel);
        EXPECT_FALSE(m_pView->close()) << ui32Kind;
        expectBox(m_Answers.seen().size() - 1, "Texture Modified", "Do you wish to save this texture before closing?",
                  QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        m_Answers.thenReject();
        EXPECT_FALSE(m_pView->close()) << "escaped";
        m_Answers.thenPress(QMessageBox::No);
        EXPECT_TRUE(m_pView->close());
    }
    EXPECT_EQ(21u, m_Answers.seen().size());
    EXPECT_EQ(0u, m_Folder.count());
}

TEST_F(SavingAView, AnUnsavedKindUndoneThroughItsFirstEditStillAsks)
{
    open(path("a.mox"), eDocumentEncoded);
    edit(9);
    m_pView->undo();
    m_Answers.thenPress(QMessageBox::No);
    EXPECT_TRUE(m_pView->close());
    EXPECT_EQ(1u, m_Answers.seen().size());
}

TEST_F(SavingAView, AnEditStillAsksAfterAnUndoOfOneThatWasBegunOnly)
{
    open(path("a.mox"));
    edit(9);
    ASSERT_TRUE(m_pView->beginEdit());
    m_pView->undo();
    EXPECT_EQ("a.mox *", m_pView->getViewTitle());
    m_Answers.thenPress(QMessageBox::Cancel);
    EXPECT_FALSE(m_pView->close());
    EXPECT_EQ(1u, m_Answers.seen().size());
}

TEST_F(SavingAView, AColourSpaceThatIsNotSavedAsksBeforeClosing)
{
    open(path("a.mox"));
    m_pView->getStoredTexture().setColourSpace(eCS_sRGB);
    expectState(path("a.mox"), false, 0, eDocumentFile);
    EXPECT_EQ("a.mox", m_pView->getViewTitle());
    EXPECT_TRUE(m_pView->wouldAskToClose());
    m_Answers.thenPress(QMessageBox::Cancel);
    EXPECT_FALSE(m_pView->close());
    expectBox(0, "Texture Modified", "Do you wish to save this texture before closing?",
              QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);

    m_Answers.thenPress(QMessageBox::Yes);
    EXPECT_TRUE(m_pView->close());
    EXPECT_EQ(2u, m_Answers.seen().size()) << "nothing is encoded for it";
    EXPECT_EQ(eCS_sRGB, CMOXTexture(path("a.mox")).getColourSpace());
    EXPECT_EQ(twelveOf(5), dataOf(CMOXTexture(path("a.mox"))));
    EXPECT_FALSE(m_pView->wouldAskToClose());
}

TEST_F(SavingAView, AColourSpaceThatWasChosenBackAsksNothing)
{
    open(path("a.mox"));
    m_pView->getStoredTexture().setColourSpace(eCS_sRGB);
    m_pView->getStoredTexture().setColourSpace(eCS_Linear);
    EXPECT_FALSE(m_pView->wouldAskToClose());
    EXPECT_TRUE(m_pView->close());
    EXPECT_TRUE(m_Answers.seen().empty());
}

TEST_F(SavingAView, ADiscardedWindowAsksNothing)
{
    open(path("a.mox"), eDocumentNew);
    edit(9);
    m_pView->setDiscardOnClose(true);
    EXPECT_TRUE(m_pView->close());
    EXPECT_TRUE(m_Answers.seen().empty());
}

TEST_F(SavingAView, YesAtClosingSaves)
{
    open(path("a.mox"), eDocumentEncoded);
    m_Answers.thenPress(QMessageBox::Yes);
    EXPECT_TRUE(m_pView->close());
    EXPECT_EQ(twelveOf(5), dataOf(CMOXTexture(path("a.mox"))));
}

TEST_F(SavingAView, YesAtClosingWithAnUnknownExtensionAsksForAName)
{
    open(path("photo.png"));
    edit(9);
    m_Answers.thenPress(QMessageBox::Yes);
    thenLookAndCancel();
    EXPECT_FALSE(m_pView->close());
    EXPECT_EQ("Save Texture", m_Answers.seen().back().strTitle);

    m_Answers.thenPress(QMessageBox::Yes);
    thenChoose(path("b.mox")).thenPress(QMessageBox::Yes);
    EXPECT_TRUE(m_pView->close());
    EXPECT_EQ(twelveOf(9), dataOf(CMOXTexture(path("b.mox"))));
}

TEST_F(SavingAView, ADeclinedEncodingKeepsTheWindowOpen)
{
    open(path("a.mox"));
    edit(9);
    m_Answers.thenPress(QMessageBox::Yes).thenPress(QMessageBox::Abort);
    EXPECT_FALSE(m_pView->close());
    EXPECT_EQ(2u, m_Answers.seen().size()) << "and nothing more is said";
}

TEST_F(SavingAView, AFailedSaveIsToldAndKeepsTheWindowOpen)
{
    open(path("a.mox"), eDocumentNew);
    m_Answers.thenPress(QMessageBox::Yes).thenPress(QMessageBox::Ok);
    const CFileSizeLimit limit(32);
    EXPECT_FALSE(m_pView->close());
    expectBox(1, "An Error Has Occurred",
              "An unknown error has occurred, please try a different texture file type, or contact Bluedesk for support", QMessageBox::Ok);
    EXPECT_EQ(QMessageBox::Critical, m_Answers.seen().back().eIcon);
}
