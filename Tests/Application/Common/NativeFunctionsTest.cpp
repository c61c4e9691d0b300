#include "Common/NativeFunctions.h"

#include <memory>
#include <string>

#include <QtCore/QFileInfo>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QWidget>
#include <gtest/gtest.h>

#include "Common/NativeFunctionsImpl.h"
#include "OpenedUrls.h"
#include "Support/QtSupport.h"
#include "Support/TemporaryFolder.h"

namespace
{

using testsupport::CDialogAnswers;
using testsupport::CTemporaryFolder;

QString pathIn(const CTemporaryFolder& folder, const std::string& strName)
{
    return QString::fromStdString(folder.path(strName));
}

/// Answers with what it was asked.
class CEcho : public NativeFunctionsImpl
{
public:
    explicit CEcho(QString& strShown) : m_strShown(strShown) {}

    QStringList getOpenFileNames(QWidget* pParent, const QString& strTitle, const QString& strFolder, const QString& strFilter,
                                 bool bMultiple, QString* pSelectedFilter, QFileDialog::Options options) override
    {
        *pSelectedFilter = "chosen";
        return {pParent->objectName(), strTitle, strFolder, strFilter, QString::number(bMultiple), QString::number(options)};
    }
    QString getSaveFileName(QWidget* pParent, const QString& strTitle, const QString& strFolder, const QString& strFilter,
                            QString* pSelectedFilter, QFileDialog::Options options) override
    {
        *pSelectedFilter = "chosen";
        return QStringList({pParent->objectName(), strTitle, strFolder, strFilter, QString::number(options)}).join(' ');
    }
    void showInFolder(const QString& strPath) override { m_strShown = strPath; }

private:
    QString& m_strShown;
};

} // namespace

TEST(NativeFunctions, HandsEveryArgumentToTheLayerBelow)
{
    QString strShown;
    NativeFunctions functions(std::make_unique<CEcho>(strShown));
    QWidget parent;
    parent.setObjectName("parent");
    const QFileDialog::Options options = QFileDialog::DontResolveSymlinks; // the value 2

    QString strFilter;
    EXPECT_EQ(QStringList({"parent", "title", "folder", "filter", "1", "2"}),
              functions.getOpenFileNames(&parent, "title", "folder", "filter", true, &strFilter, options));
    EXPECT_EQ("chosen", strFilter);

    strFilter.clear();
    EXPECT_EQ("parent title folder filter 2", functions.getSaveFileName(&parent, "title", "folder", "filter", &strFilter, options));
    EXPECT_EQ("chosen", strFilter);

    functions.showInFolder("/some/path");
    EXPECT_EQ("/some/path", strShown);
}

TEST(NativeFunctions, OpensSeveralFilesWhereSeveralAreWanted)
{
    const CTemporaryFolder folder;
    folder.write("one.mox", std::string("1"));
    folder.write("two.mox", std::string("2"));
    CDialogAnswers answers;
    answers.thenChoose({pathIn(folder, "one.mox"), pathIn(folder, "two.mox")});
    EXPECT_EQ(QStringList({pathIn(folder, "one.mox"), pathIn(folder, "two.mox")}),
              NativeFunctions().getOpenFileNames(nullptr, "Which ones", QString::fromStdString(folder.path()), "All Files (*)", true));
    ASSERT_EQ(1U, answers.seen().size());
    EXPECT_EQ("Which ones", answers.seen()[0].strTitle);
}

TEST(NativeFunctions, OpensOneFileWhereOneIsWanted)
{
    const CTemporaryFolder folder;
    folder.write("one.mox", std::string("1"));
    CDialogAnswers answers;
    answers.thenChoose({pathIn(folder, "one.mox")});
    EXPECT_EQ(QStringList(pathIn(folder, "one.mox")),
              NativeFunctions().getOpenFileNames(nullptr, "Which one", QString::fromStdString(folder.path()), "All Files (*)", false));
}

TEST(NativeFunctions, ACancelledDialogForSeveralFilesGivesNone)
{
    CDialogAnswers answers;
    answers.thenReject();
    EXPECT_TRUE(NativeFunctions().getOpenFileNames(nullptr, "Which ones", {}, "All Files (*)", true).isEmpty());
}

TEST(NativeFunctions, ACancelledDialogForOneFileGivesAListOfOneEmptyText)
{
    CDialogAnswers answers;
    answers.thenReject();
    EXPECT_EQ(QStringList(QString()), NativeFunctions().getOpenFileNames(nullptr, "Which one", {}, "All Files (*)", false));
}

TEST(NativeFunctions, StartsWithTheSelectedFilterAndTellsTheChosenOne)
{
    const CTemporaryFolder folder;
    folder.write("one.dds", std::string("1"));
    QString strFilter = "Two (*.dds)";
    QString strStartedWith;
    CDialogAnswers answers;
    answers.thenDo(
        [&](QDialog& dialog)
        {
            auto& files = dynamic_cast<QFileDialog&>(dialog);
            strStartedWith = files.selectedNameFilter();
            files.selectNameFilter("Three (*.dds *.ktx)");
            files.selectFile(pathIn(folder, "one.dds"));
            files.findChild<QLineEdit*>("fileNameEdit")->setText(pathIn(folder, "one.dds"));
            QMetaObject::invokeMethod(&files, "accept");
        });
    const QStringList chosen = NativeFunctions().getOpenFileNames(nullptr, "Which one", QString::fromStdString(folder.path()),
                                                                  "One (*.mox);;Two (*.dds);;Three (*.dds *.ktx)", false, &strFilter);
    EXPECT_EQ(QStringList(pathIn(folder, "one.dds")), chosen);
    EXPECT_EQ("Two (*.dds)", strStartedWith);
    EXPECT_EQ("Three (*.dds *.ktx)", strFilter);
}

TEST(NativeFunctions, GivesTheNameToSaveTo)
{
    const CTemporaryFolder folder;
    CDialogAnswers answers;
    answers.thenChoose({pathIn(folder, "new.mox")});
    EXPECT_EQ(pathIn(folder, "new.mox"),
              NativeFunctions().getSaveFileName(nullptr, "Where to", QString::fromStdString(folder.path()), "All Files (*)"));
    ASSERT_EQ(1U, answers.seen().size());
    EXPECT_EQ("Where to", answers.seen()[0].strTitle);
}

TEST(NativeFunctions, AsksBeforeAFileIsWrittenOver)
{
    const CTemporaryFolder folder;
    folder.write("old.mox", std::string("1"));
    const auto chooseOld = [&](QDialog& dialog)
    {
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(pathIn(folder, "old.mox"));
        // After the answer: the question comes up inside of this call, and needs an answer of its own.
        QMetaObject::invokeMethod(&dialog, "accept", Qt::QueuedConnection);
    };
    CDialogAnswers answers;
    answers.thenDo(chooseOld).thenPress(QMessageBox::Yes);
    EXPECT_EQ(pathIn(folder, "old.mox"),
              NativeFunctions().getSaveFileName(nullptr, "Where to", QString::fromStdString(folder.path()), "All Files (*)"));
    ASSERT_EQ(2U, answers.seen().size());
    EXPECT_EQ(QMessageBox::Yes | QMessageBox::No, answers.seen()[1].buttons);
}

TEST(NativeFunctions, ACancelledSaveGivesAnEmptyName)
{
    CDialogAnswers answers;
    answers.thenReject();
    EXPECT_TRUE(NativeFunctions().getSaveFileName(nullptr, "Where to", {}, "All Files (*)").isEmpty());
}

TEST(NativeFunctions, ShowsTheFolderOfAFile)
{
    const CTemporaryFolder folder;
    const std::string strFile = folder.write("a picture #1.mox", std::string("1"));
    const COpenedUrls opened({"file"});
    NativeFunctions().showInFolder(QString::fromStdString(strFile));
    EXPECT_EQ("file://" + folder.path() + "\n", opened.seen().toStdString());
}

TEST(NativeFunctions, ShowsAFolderItself)
{
    const CTemporaryFolder folder;
    const COpenedUrls opened({"file"});
    NativeFunctions().showInFolder(QString::fromStdString(folder.path()));
    EXPECT_EQ("file://" + folder.path() + "\n", opened.seen().toStdString());
}
