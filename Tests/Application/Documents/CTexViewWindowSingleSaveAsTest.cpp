#include <QtTest/QSignalSpy>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <gtest/gtest.h>

#include "Application/Common/TestPreferences.h"
#include "Application/Documents/SavingAView.h"
#include "Support/FileSizeLimit.h"

using namespace moxtexture;
using namespace testsupport;

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
