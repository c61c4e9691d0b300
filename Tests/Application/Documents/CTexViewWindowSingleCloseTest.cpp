#include <gtest/gtest.h>

#include "Application/Documents/SavingAView.h"
#include "Support/FileSizeLimit.h"

using namespace moxtexture;
using namespace testsupport;

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
