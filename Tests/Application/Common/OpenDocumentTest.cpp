#include "Common/OpenDocument.h"

#include <memory>
#include <string>
#include <vector>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtWidgets/QFileDialog>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OpenedUrls.h"
#include "Support/QtSupport.h"
#include "Support/TemporaryFolder.h"
#include "TestPreferences.h"

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::CDialogAnswers;
using testsupport::CTemporaryFolder;

const QString k_strName = "Some Manual.html";

/// The working folder for a while.
class CWorkingFolder
{
public:
    explicit CWorkingFolder(const std::string& strPath) : m_strBefore(QDir::currentPath())
    {
        QDir::setCurrent(QString::fromStdString(strPath));
    }
    CWorkingFolder(const CWorkingFolder&) = delete;
    CWorkingFolder& operator=(const CWorkingFolder&) = delete;
    ~CWorkingFolder() { QDir::setCurrent(m_strBefore); }

private:
    QString m_strBefore;
};

class OpenDocument : public testing::Test
{
protected:
    void open()
    {
        openDocument(nullptr, m_pPreferences, k_strName, m_strFolder, "Document",
                     [this](const QString& strPath)
                     {
                         m_aTried.push_back(strPath.toStdString());
                         return m_bDesktopTakesIt;
                     });
    }

    std::string stored() const
    {
        std::string strPath;
        m_Preferences.getText("OpenDocs/Document", strPath);
        return strPath;
    }

    CTemporaryFolder m_Folder;
    CTemporaryFolder m_Elsewhere;
    CWorkingFolder m_WorkingFolder{m_Elsewhere.path()};
    CTestPreferences m_Preferences;
    Preferences* m_pPreferences = &m_Preferences;
    /// Relative to the program, as the Help menu has it.
    QString m_strFolder = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(QString::fromStdString(m_Folder.path())) + '/';
    CDialogAnswers m_Answers;
    std::vector<std::string> m_aTried;
    bool m_bDesktopTakesIt = true;
};

} // namespace

TEST_F(OpenDocument, ADocumentInTheFolderBesideTheProgramOpens)
{
    const std::string strDocument = m_Folder.write("Some Manual.html", std::string("x"));
    open();
    EXPECT_THAT(m_aTried, ElementsAre(strDocument));
    EXPECT_THAT(m_Answers.seen(), IsEmpty());
    EXPECT_EQ("", stored()); // only what the user located is remembered
}

TEST_F(OpenDocument, TheWorkingFolderComesBeforeTheFolderBesideTheProgram)
{
    m_Folder.write("Some Manual.html", std::string("x"));
    const std::string strFirst = m_Elsewhere.write("Some Manual.html", std::string("x"));
    open();
    EXPECT_THAT(m_aTried, ElementsAre(strFirst));
}

TEST_F(OpenDocument, ADocumentInThePackagesDataFolderOpens)
{
    const QDir prefix(QCoreApplication::applicationDirPath() + "/..");
    const QString strData = "share/halvane/" + QString::fromStdString(m_Folder.path()).section('/', -1);
    ASSERT_TRUE(prefix.mkpath(strData));
    const QString strDocument = prefix.absoluteFilePath(strData + '/' + k_strName);
    ASSERT_TRUE(QFile(strDocument).open(QIODevice::WriteOnly));
    open();
    EXPECT_THAT(m_aTried, ElementsAre(QDir::cleanPath(strDocument).toStdString()));
    EXPECT_TRUE(QFile::remove(strDocument));
    prefix.rmpath(strData);
}

TEST_F(OpenDocument, WhereItWasFoundByHandComesFirst)
{
    m_Folder.write("Some Manual.html", std::string("x"));
    const std::string strKept = m_Elsewhere.write("kept elsewhere.html", std::string("x"));
    m_Preferences.setText("OpenDocs/Document", strKept);
    open();
    EXPECT_THAT(m_aTried, ElementsAre(strKept));
}

TEST_F(OpenDocument, APlaceThatIsGoneIsPassedOver)
{
    const std::string strDocument = m_Folder.write("Some Manual.html", std::string("x"));
    m_Preferences.setText("OpenDocs/Document", m_Elsewhere.path("gone.html"));
    open();
    EXPECT_THAT(m_aTried, ElementsAre(strDocument));
}

TEST_F(OpenDocument, ADocumentThatIsNowhereIsAskedFor)
{
    open();
    EXPECT_THAT(m_aTried, IsEmpty());
    ASSERT_EQ(1U, m_Answers.seen().size());
    const CDialogAnswers::Seen& box = m_Answers.seen()[0];
    EXPECT_EQ("Documentation File Not Found", box.strTitle);
    EXPECT_EQ("Please locate the file: Some Manual.html", box.strText);
    EXPECT_EQ(QMessageBox::Warning, box.eIcon);
    EXPECT_EQ(QMessageBox::Ok | QMessageBox::Cancel, box.buttons);
    EXPECT_EQ(QMessageBox::Ok, box.eDefaultButton);
}

TEST_F(OpenDocument, ADesktopThatTakesNoDocumentLeadsToTheQuestion)
{
    const std::string strFirst = m_Elsewhere.write("Some Manual.html", std::string("x"));
    const std::string strSecond = m_Folder.write("Some Manual.html", std::string("x"));
    m_bDesktopTakesIt = false;
    open();
    EXPECT_THAT(m_aTried, ElementsAre(strFirst, strSecond));
    ASSERT_EQ(1U, m_Answers.seen().size());
    EXPECT_EQ("Documentation File Not Found", m_Answers.seen()[0].strTitle);
}

TEST_F(OpenDocument, TheFileThatTheUserLocatesOpensAndIsRemembered)
{
    const std::string strLocated = m_Elsewhere.write("located.html", std::string("x"));
    m_Answers.thenPress(QMessageBox::Ok).thenChoose({QString::fromStdString(strLocated)});
    open();
    EXPECT_THAT(m_aTried, ElementsAre(strLocated));
    EXPECT_EQ(2U, m_Answers.seen().size());
    EXPECT_EQ(strLocated, stored());

    std::string strLater;
    m_Preferences.startAgain().getText("OpenDocs/Document", strLater);
    EXPECT_EQ(strLocated, strLater);
}

TEST_F(OpenDocument, TheFileDialogOffersDocuments)
{
    QStringList filters;
    QString strTitle;
    m_Answers.thenPress(QMessageBox::Ok)
        .thenDo(
            [&](QDialog& dialog)
            {
                filters = dynamic_cast<QFileDialog&>(dialog).nameFilters();
                strTitle = dialog.windowTitle();
                dialog.reject();
            });
    open();
    EXPECT_EQ(QStringList({"HTML document (*.html)", "Portable Document Format (*.pdf)"}), filters);
    EXPECT_EQ("Open Source File", strTitle);
}

TEST_F(OpenDocument, AFileThatDoesNotOpenIsToldAndAskedForAgain)
{
    const QString strLocated = QString::fromStdString(m_Elsewhere.write("located.html", std::string("x")));
    m_bDesktopTakesIt = false;
    m_Answers.thenPress(QMessageBox::Ok).thenChoose({strLocated});
    m_Answers.thenPress(QMessageBox::Ok).thenChoose({strLocated});
    m_Answers.thenPress(QMessageBox::Cancel);
    open();
    EXPECT_THAT(m_aTried, ElementsAre(strLocated.toStdString(), strLocated.toStdString()));
    ASSERT_EQ(5U, m_Answers.seen().size());
    for (const size_t uiBox : {2U, 4U})
    {
        EXPECT_EQ("File Open Failed", m_Answers.seen()[uiBox].strTitle);
        EXPECT_EQ(QMessageBox::Warning, m_Answers.seen()[uiBox].eIcon);
        EXPECT_EQ(QMessageBox::Ok | QMessageBox::Cancel, m_Answers.seen()[uiBox].buttons);
        EXPECT_EQ(QMessageBox::Ok, m_Answers.seen()[uiBox].eDefaultButton);
    }
    EXPECT_EQ("", stored());
}

TEST_F(OpenDocument, ACancelledFileDialogEndsTheQuestions)
{
    m_Answers.thenPress(QMessageBox::Ok).thenReject();
    open();
    EXPECT_EQ(2U, m_Answers.seen().size());
    EXPECT_EQ("", stored());
}

TEST_F(OpenDocument, ACancelledBoxOpensNoFileDialog)
{
    m_Answers.thenPress(QMessageBox::Cancel);
    open();
    EXPECT_EQ(1U, m_Answers.seen().size());
}

TEST_F(OpenDocument, WithoutPreferencesNothingIsRemembered)
{
    const std::string strLocated = m_Elsewhere.write("located.html", std::string("x"));
    m_pPreferences = nullptr;
    m_Answers.thenPress(QMessageBox::Ok).thenChoose({QString::fromStdString(strLocated)});
    open();
    EXPECT_THAT(m_aTried, ElementsAre(strLocated));
    EXPECT_EQ("", stored());
}

TEST(OpenLocalFile, HandsTheFileToTheDesktop)
{
    const COpenedUrls opened({"file"});
    EXPECT_TRUE(openLocalFile("/a folder/50% #1.html"));
    EXPECT_EQ(QUrl::fromLocalFile("/a folder/50% #1.html").toString() + '\n', opened.seen());
}
