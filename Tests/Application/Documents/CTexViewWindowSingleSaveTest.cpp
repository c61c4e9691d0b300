#include <memory>

#include <gtest/gtest.h>

#include "Application/Documents/SavingAView.h"
#include "Support/FileSizeLimit.h"

using namespace moxtexture;
using namespace testsupport;

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
