#include <memory>

#include <QtGui/QImage>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <gtest/gtest.h>

#include "Application/Common/TestPreferences.h"
#include "Application/Documents/SavingAView.h"

using namespace moxtexture;
using namespace testsupport;

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
