#include "Common/RecentFiles.h"

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <QtCore/QStandardPaths>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"
#include "TestPreferences.h"

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::CTemporaryFolder;

constexpr uint32_t k_ui32Ten = 10;

/// A list as the program has it, and files to put into it.
class RecentFilesList : public testing::Test
{
protected:
    RecentFilesList() { start(eRecentFilesSkipMissing); }

    void start(uint32_t ui32Options, const QString& strPrefix = {})
    {
        m_pMenu = std::make_unique<QMenu>();
        m_pRecent = std::make_unique<RecentFiles>(&m_Preferences, k_ui32Ten, strPrefix, ui32Options);
    }

    /// Makes a file, and tells of its opening.
    QString add(const std::string& strName)
    {
        QString strPath = QString::fromStdString(m_Folder.write(strName, std::string("x")));
        m_pRecent->addFile(strPath, {});
        return strPath;
    }

    void store(const std::vector<std::string>& files) { m_Preferences.setTextArray("Recent files", files); }

    std::vector<std::string> stored(const std::string& strKey = "Recent files") const
    {
        std::vector<std::string> files;
        m_Preferences.getTextArray(strKey, files);
        return files;
    }

    std::string path(const std::string& strName) const { return m_Folder.path(strName); }
    void remove(const std::string& strName) const { std::remove(path(strName).c_str()); }

    std::vector<QAction*> shownActions() const
    {
        std::vector<QAction*> shown;
        for (QAction* pAction : m_pMenu->actions())
            if (pAction->property("ARecentFile").isValid())
                shown.push_back(pAction);
        return shown;
    }
    std::vector<std::string> shown() const
    {
        std::vector<std::string> paths;
        for (const QAction* pAction : shownActions())
            paths.push_back(pAction->property("ARecentFile").toString().toStdString());
        return paths;
    }
    std::vector<std::string> texts() const
    {
        std::vector<std::string> result;
        for (const QAction* pAction : shownActions())
            result.push_back(pAction->text().toStdString());
        return result;
    }

    /// As a user opens and leaves the menu.
    void openMenu()
    {
        m_pMenu->popup({0, 0});
        m_pMenu->close();
    }
    QAction* clearAction() const { return m_pMenu->actions().back(); }

    CTemporaryFolder m_Folder;
    CTestPreferences m_Preferences;
    std::unique_ptr<QMenu> m_pMenu;
    std::unique_ptr<RecentFiles> m_pRecent;
};

QString repeated(int iCount)
{
    return QString(iCount, 'a');
}

} // namespace

TEST(ShortPath, FortyFiveCharactersStayWhole)
{
    const QString strPath = "/folder/" + repeated(32) + "/file"; // 8 + 32 + 5
    ASSERT_EQ(45, strPath.size());
    EXPECT_EQ(strPath, getShortPath(strPath));
}

TEST(ShortPath, FortySixCharactersAreShortened)
{
    const QString strPath = "/folder/" + repeated(33) + "/file";
    ASSERT_EQ(46, strPath.size());
    // The first "/" is character 0; the next at or after 0 + 1 + 1 is that behind "folder".
    EXPECT_EQ("/.../" + repeated(33) + "/file", getShortPath(strPath));
}

TEST(ShortPath, AsMuchGoesAsIsTooMuch)
{
    const QString strPath = "/one/two/three/" + repeated(40) + "/file"; // 60 characters, 15 too many
    ASSERT_EQ(60, strPath.size());
    // At or after character 16 the next "/" is the last one.
    EXPECT_EQ("/.../file", getShortPath(strPath));
}

TEST(ShortPath, ASeparatorJustAsFarAsIsTooMuchEndsTheGap)
{
    const QString strPath = "/aaaaa/" + repeated(43) + "/x"; // 52 characters, 7 too many: the second "/" is wanted at 8 or later
    ASSERT_EQ(52, strPath.size());
    EXPECT_EQ("/.../x", getShortPath(strPath));
    const QString strNext = "/aaaaaaa/" + repeated(41) + "/x"; // the same length; this one's stands at 8
    ASSERT_EQ(52, strNext.size());
    EXPECT_EQ("/.../" + repeated(41) + "/x", getShortPath(strNext));
}

TEST(ShortPath, AFileBelowTheRootLosesTheStartOfItsName)
{
    EXPECT_EQ("/..." + repeated(44), getShortPath("/" + repeated(47))); // 48 characters: 3 go
}

TEST(ShortPath, ANameWithoutASeparatorLosesItsStart)
{
    EXPECT_EQ("..." + repeated(45), getShortPath(repeated(46)));
}

TEST(ShortPath, ACharacterOfTwoHalvesIsNotCut)
{
    const QString strFace = QString::fromUtf8("\xF0\x9F\x98\x80");
    ASSERT_EQ(2, strFace.size());
    EXPECT_EQ("..." + repeated(44), getShortPath(strFace + repeated(44))); // one character too many, but that is half of one
}

TEST_F(RecentFilesList, TheNewestFileStandsFirst)
{
    add("a.mox");
    add("b.mox");
    EXPECT_THAT(stored(), ElementsAre(path("b.mox"), path("a.mox")));
}

TEST_F(RecentFilesList, AnEleventhFileDropsTheOldest)
{
    for (int i = 1; i <= 11; ++i)
        add(std::to_string(i));
    EXPECT_THAT(stored(), ElementsAre(path("11"), path("10"), path("9"), path("8"), path("7"), path("6"), path("5"), path("4"), path("3"),
                                      path("2")));
}

TEST_F(RecentFilesList, AKnownFileMovesToTheFrontAndStandsThereOnce)
{
    add("a");
    add("b");
    add("c");
    add("a");
    EXPECT_THAT(stored(), ElementsAre(path("a"), path("c"), path("b")));
}

TEST_F(RecentFilesList, APathWithSlashesAndTheSameWithBackslashesAreOneEntry)
{
    start(eRecentFilesNone);
    m_pRecent->addFile("/pictures/a.mox", {});
    m_pRecent->addFile("/pictures/b.mox", {});
    m_pRecent->addFile("\\pictures\\a.mox", {});
    EXPECT_THAT(stored(), ElementsAre("\\pictures\\a.mox", "/pictures/b.mox"));
    m_pRecent->addFile("/pictures\\a.mox", {});
    EXPECT_THAT(stored(), ElementsAre("/pictures\\a.mox", "/pictures/b.mox"));
}

TEST_F(RecentFilesList, PathsThatDifferInCaseAreTwo)
{
    start(eRecentFilesNone);
    m_pRecent->addFile("/a", {});
    m_pRecent->addFile("/A", {});
    EXPECT_THAT(stored(), ElementsAre("/A", "/a"));
}

TEST_F(RecentFilesList, APathIsKeptAsItIsGiven)
{
    const QString strPath = add("a  file of \xC3\xA4 & <b>.mox ");
    EXPECT_THAT(stored(), ElementsAre(strPath.toStdString()));
    m_pRecent->setMenu(m_pMenu.get());
    openMenu();
    EXPECT_THAT(shown(), ElementsAre(strPath.toStdString()));
}

TEST_F(RecentFilesList, AFileThatDoesNotExistIsNotTaken)
{
    m_pRecent->addFile(QString::fromStdString(path("never")), {});
    EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(RecentFilesList, AFileThatDoesNotExistIsTakenWhereTheOptionsAllowIt)
{
    start(eRecentFilesNone);
    m_pRecent->setMenu(m_pMenu.get());
    m_pRecent->addFile("/never", {});
    openMenu();
    openMenu();
    EXPECT_THAT(shown(), ElementsAre("/never"));
}

TEST_F(RecentFilesList, SavesEachChangeAtOnce)
{
    add("a");
    std::vector<std::string> files;
    m_Preferences.startAgain().getTextArray("Recent files", files);
    EXPECT_THAT(files, ElementsAre(path("a")));

    m_pRecent->clear();
    m_Preferences.startAgain().getTextArray("Recent files", files);
    EXPECT_THAT(files, IsEmpty());
}

TEST_F(RecentFilesList, ThePrefixStandsBeforeTheKey)
{
    start(eRecentFilesNone, "Second");
    m_pRecent->addFile("/a", {});
    EXPECT_THAT(stored("Second/Recent files"), ElementsAre("/a"));
    EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(RecentFilesList, TheMenuEndsWithTheSeparatorAndTheEntryThatClears)
{
    m_pMenu->addAction("already there");
    m_pRecent->setMenu(m_pMenu.get());
    add("a");
    const QList<QAction*> actions = m_pMenu->actions();
    ASSERT_EQ(4, actions.size());
    EXPECT_EQ("already there", actions[0]->text());
    EXPECT_TRUE(actions[1]->property("ARecentFile").isValid());
    EXPECT_TRUE(actions[2]->isSeparator());
    EXPECT_EQ("TheRecentFileSeparator", actions[2]->objectName());
    EXPECT_EQ("Clear recent files", actions[3]->text());
}

TEST_F(RecentFilesList, AnEntryShowsItsNumberItsShortFormAndItsPath)
{
    add("a.mox");
    const QString strNewest = add("x%1 & y.mox");
    m_pRecent->setMenu(m_pMenu.get());
    const std::vector<QAction*> actions = shownActions();
    ASSERT_EQ(2U, actions.size());
    EXPECT_EQ("1 " + getShortPath(strNewest).replace("&", "&&"), actions[0]->text());
    EXPECT_EQ(strNewest, actions[0]->toolTip());
    EXPECT_EQ(strNewest, actions[0]->property("ARecentFile").toString());
    EXPECT_EQ("2 " + getShortPath(QString::fromStdString(path("a.mox"))), actions[1]->text());
}

TEST_F(RecentFilesList, AnAmpersandIsShownAsOne)
{
    start(eRecentFilesNone);
    m_pRecent->addFile("/a&b", {});
    m_pRecent->setMenu(m_pMenu.get());
    EXPECT_THAT(texts(), ElementsAre("1 /a&&b")); // a single one would underline the letter
}

TEST_F(RecentFilesList, ATabIsShownAsABlank)
{
    const QString strPath = add("a\tb\tc.mox");
    m_pRecent->setMenu(m_pMenu.get());
    EXPECT_EQ("1 " + getShortPath(strPath).replace('\t', ' '), shownActions()[0]->text());
    EXPECT_FALSE(shownActions()[0]->text().contains('\t'));
    EXPECT_EQ(strPath, shownActions()[0]->toolTip());
}

TEST_F(RecentFilesList, ANameWithACarriageReturnOutlivesTheProgram)
{
    add("a\rb.mox");
    std::vector<std::string> files;
    m_Preferences.startAgain().getTextArray("Recent files", files);
    EXPECT_THAT(files, ElementsAre(path("a\rb.mox")));
}

TEST_F(RecentFilesList, NoMoreThanTheMostFilesAreTakenFromTheSettings)
{
    start(eRecentFilesNone);
    std::vector<std::string> files;
    for (int i = 0; i < 60000; ++i)
        files.push_back("/" + std::to_string(i));
    store(files);
    m_pRecent->setMenu(m_pMenu.get());
    files.resize(10);
    EXPECT_EQ(files, shown());
}

TEST_F(RecentFilesList, TheMenuFollowsTheListWhenItOpens)
{
    start(eRecentFilesNone);
    store({"/a", "/b"});
    m_pRecent->setMenu(m_pMenu.get());
    EXPECT_THAT(texts(), ElementsAre("1 /a", "2 /b"));
    const std::vector<QAction*> before = shownActions();

    store({"/c", "/a", "/b"});
    openMenu();
    EXPECT_THAT(texts(), ElementsAre("1 /c", "2 /a", "3 /b"));
    EXPECT_EQ(before[0], shownActions()[0]); // entries take new files
    EXPECT_EQ(before[1], shownActions()[1]);

    store({"/b"});
    openMenu();
    EXPECT_THAT(texts(), ElementsAre("1 /b"));
    EXPECT_EQ("/b", shownActions()[0]->toolTip());
}

TEST_F(RecentFilesList, AFileDeletedOnDiskLeavesTheListAtTheNextOpeningOfTheMenu)
{
    for (const char* pName : {"a", "b", "c", "d"})
        add(pName);
    m_pRecent->setMenu(m_pMenu.get());
    remove("c");
    remove("b");
    EXPECT_THAT(shown(), ElementsAre(path("d"), path("c"), path("b"), path("a")));

    openMenu();
    EXPECT_THAT(shown(), ElementsAre(path("d"), path("a")));
    EXPECT_THAT(stored(), ElementsAre(path("d"), path("a")));
    EXPECT_EQ("1", texts()[0].substr(0, 1));
    EXPECT_EQ("2", texts()[1].substr(0, 1)); // the numbers close up

    std::vector<std::string> files;
    m_Preferences.startAgain().getTextArray("Recent files", files);
    EXPECT_THAT(files, ElementsAre(path("d"), path("a")));
}

TEST_F(RecentFilesList, AFileThatIsMissingAtTheStartStaysUntilTheMenuOpens)
{
    store({"/never/there"});
    m_pRecent->setMenu(m_pMenu.get());
    EXPECT_THAT(stored(), ElementsAre("/never/there")); // a disk that comes a moment later is no reason to forget it
    EXPECT_THAT(shown(), ElementsAre("/never/there"));
    add("a");
    EXPECT_THAT(stored(), ElementsAre(path("a"), "/never/there"));
    openMenu();
    EXPECT_THAT(stored(), ElementsAre(path("a")));
}

TEST_F(RecentFilesList, TheListDoesNotEmptyItselfHoweverOftenTheMenuOpens)
{
    m_pRecent->setMenu(m_pMenu.get());
    add("a");
    add("b");
    for (int i = 0; i < 3; ++i)
        openMenu();
    EXPECT_THAT(stored(), ElementsAre(path("b"), path("a")));
    EXPECT_THAT(shown(), ElementsAre(path("b"), path("a")));
}

TEST_F(RecentFilesList, TheMenuIsEnabledWhileThereAreFiles)
{
    m_pRecent->setMenu(m_pMenu.get());
    EXPECT_FALSE(m_pMenu->isEnabled());
    EXPECT_FALSE(m_pMenu->menuAction()->isEnabled());
    add("a");
    EXPECT_TRUE(m_pMenu->isEnabled()); // at once: a disabled menu would never open to find out
    EXPECT_TRUE(m_pMenu->menuAction()->isEnabled());
    remove("a");
    m_pRecent->refresh();
    EXPECT_FALSE(m_pMenu->isEnabled());
}

TEST_F(RecentFilesList, TheEntryThatClearsEmptiesListAndMenu)
{
    m_pRecent->setMenu(m_pMenu.get());
    add("a");
    add("b");
    clearAction()->trigger();
    EXPECT_THAT(stored(), IsEmpty());
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_FALSE(m_pMenu->isEnabled());
    add("b");
    EXPECT_THAT(shown(), ElementsAre(path("b")));
    EXPECT_TRUE(m_pMenu->isEnabled());
}

TEST_F(RecentFilesList, WhatTheMenuShowsStaysWhileThePreferencesCannotBeRead)
{
    CTestPreferences watched = m_Preferences.startAgain();
    RecentFiles recent(&watched, k_ui32Ten, {}, eRecentFilesSkipMissing);
    recent.setMenu(m_pMenu.get());
    const std::string strFile = m_Folder.write("a", std::string("x"));
    recent.addFile(QString::fromStdString(strFile), {});

    const QString strPlist = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Larkfield Systems/" +
                             QString::fromStdString(watched.getName()) + ".plist";
    const std::string strGood = testsupport::readText(strPlist.toStdString());
    ASSERT_NE(std::string::npos, strGood.find(strFile)) << strPlist.toStdString();
    std::ofstream(strPlist.toStdString()) << "<plist version=\"1.0\"><dict><string>no key</string></dict></plist>";
    recent.refresh();
    recent.addFile(QString::fromStdString(m_Folder.write("b", std::string("x"))), {});
    recent.clear();
    EXPECT_THAT(shown(), ElementsAre(strFile));
    EXPECT_TRUE(m_pMenu->isEnabled());
}

TEST_F(RecentFilesList, AValueThatIsNoListIsReplacedByTheNextFile)
{
    m_Preferences.setText("Recent files", "not a list");
    m_pRecent->setMenu(m_pMenu.get());
    add("a");
    EXPECT_THAT(stored(), ElementsAre(path("a")));
    EXPECT_THAT(shown(), ElementsAre(path("a")));
}

TEST_F(RecentFilesList, AChosenEntryTellsItsPath)
{
    m_pRecent->setMenu(m_pMenu.get());
    add("a");
    add("b");
    QSignalSpy spy(m_pRecent.get(), &RecentFiles::triggered);
    shownActions()[1]->trigger();
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ(path("a"), spy[0][0].toString().toStdString());
    EXPECT_TRUE(spy[0][1].toByteArray().isEmpty());
}

TEST_F(RecentFilesList, AChosenEntryMayChangeTheMenuThatItStandsIn)
{
    m_pRecent->setMenu(m_pMenu.get());
    add("a");
    add("b");
    std::string strSeen;
    QObject::connect(m_pRecent.get(), &RecentFiles::triggered,
                     [&](const QString& strPath, const QByteArray&)
                     {
                         m_pRecent->clear();
                         m_pRecent->refresh();
                         strSeen = strPath.toStdString();
                     });
    shownActions()[0]->trigger();
    EXPECT_EQ(path("b"), strSeen);
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(RecentFilesList, DataIsKeptUnderTheHashOfThePathAndHandedBack)
{
    start(eRecentFilesNone);
    m_pRecent->setMenu(m_pMenu.get());
    const QByteArray data("\0\1\xFFq", 4);
    m_pRecent->addFile("a", data);
    std::vector<uint8_t> kept;
    // The published FNV-1 value of "a" is 0x050c5d7e.
    EXPECT_EQ(Preferences::eDone, m_Preferences.getData("84696446", kept));
    EXPECT_EQ(std::vector<uint8_t>({0, 1, 255, 'q'}), kept);

    QSignalSpy spy(m_pRecent.get(), &RecentFiles::triggered);
    shownActions()[0]->trigger();
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ(data, spy[0][1].toByteArray());
}

TEST_F(RecentFilesList, TheKeyOfDataBearsThePrefix)
{
    start(eRecentFilesNone, "Second");
    m_pRecent->addFile("a", "data");
    std::vector<uint8_t> kept;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getData("Second/84696446", kept));
}

TEST_F(RecentFilesList, NothingIsChosenWithoutASender)
{
    QSignalSpy spy(m_pRecent.get(), &RecentFiles::triggered);
    m_pRecent->fileSelected();
    EXPECT_EQ(0, spy.count());
}

TEST_F(RecentFilesList, AMenuWithoutItsSeparatorIsLeftAlone)
{
    m_pRecent->setMenu(m_pMenu.get());
    delete m_pMenu->findChild<QAction*>("TheRecentFileSeparator");
    add("a");
    m_pRecent->refresh();
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_THAT(stored(), ElementsAre(path("a")));
}

TEST_F(RecentFilesList, TheListOutlivesItsMenu)
{
    m_pRecent->setMenu(m_pMenu.get());
    m_pMenu.reset();
    add("a");
    m_pRecent->refresh();
    EXPECT_THAT(stored(), ElementsAre(path("a")));
}

TEST(RecentFilesWithoutPreferences, StayEmpty)
{
    QMenu menu;
    RecentFiles recent(nullptr, k_ui32Ten, {}, eRecentFilesNone);
    recent.setMenu(&menu);
    recent.addFile("/a", "data");
    recent.clear();
    recent.refresh();
    EXPECT_EQ(2, menu.actions().size());
}
