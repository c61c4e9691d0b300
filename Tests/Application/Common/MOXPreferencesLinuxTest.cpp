#include "Common/MOXPreferencesLinux.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Common/PlistDocument.h"
#include "Common/Preferences.h"
#include "Support/Environment.h"
#include "Support/FileSizeLimit.h"
#include "Support/TemporaryFolder.h"

using namespace testsupport;

namespace fs = std::filesystem;

namespace
{

constexpr uint32_t k_ui32User = 0;
constexpr uint32_t k_ui32Machine = 1;

class MOXPreferencesLinuxTest : public testing::Test
{
protected:
    MOXPreferencesLinuxTest() { set("XDG_CONFIG_HOME", m_Folder.path("config")); }

    static void set(const char* strName, const std::optional<std::string>& value) { CEnvironmentKeeper::set(strName, value); }

    static std::string folderOf(uint32_t ui32Domain)
    {
        MOXPreferencesLinux layer;
        std::string strFolder;
        return layer.getPathToFile(strFolder, ui32Domain) ? strFolder : "none";
    }
    std::string folder() const { return m_Folder.path("config/Larkfield Systems"); }
    std::string path() const { return folder() + "/Test.plist"; }
    /// Files in the folder.
    size_t count() const { return static_cast<size_t>(std::distance(fs::directory_iterator(folder()), fs::directory_iterator())); }

    static std::string load(Preferences& preferences, bool bWatch = false)
    {
        std::string strError;
        return preferences.load(strError, bWatch) ? "" : strError;
    }
    static std::string getText(const Preferences& preferences, const std::string& strKey)
    {
        std::string strValue = "none";
        preferences.getText(strKey, strValue);
        return strValue;
    }
    static void write(const std::string& strPath, const std::string& strText)
    {
        std::ofstream(strPath, std::ios::binary | std::ios::trunc) << strText;
    }

    CTemporaryFolder m_Folder;
    CEnvironmentKeeper m_Keeper{"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "HOME"};
};

/// Of the last change: in a second of its own.
void setTime(const std::string& strPath, long iNanoseconds)
{
    const timespec times[2] = {{1000000000, iNanoseconds}, {1000000000, iNanoseconds}};
    EXPECT_EQ(0, ::utimensat(AT_FDCWD, strPath.c_str(), times, 0)) << strPath;
}

mode_t modeOf(const std::string& strPath)
{
    struct stat status = {};
    EXPECT_EQ(0, ::stat(strPath.c_str(), &status)) << strPath;
    return status.st_mode & 0777;
}

} // namespace

// Places

TEST_F(MOXPreferencesLinuxTest, KeepsTheUsersFileInTheConfigurationFolder)
{
    set("XDG_CONFIG_HOME", "/some/where:else");
    EXPECT_EQ("/some/where:else/Larkfield Systems", folderOf(k_ui32User));
    EXPECT_EQ("/some/where:else/Larkfield Systems", folderOf(2));
    set("HOME", "/home/me");
    for (const std::optional<std::string>& none : {std::optional<std::string>(), std::optional<std::string>("")})
    {
        set("XDG_CONFIG_HOME", none);
        EXPECT_EQ("/home/me/.config/Larkfield Systems", folderOf(k_ui32User));
    }
}

TEST_F(MOXPreferencesLinuxTest, PassesOverARelativeConfigurationFolder)
{
    set("HOME", "/home/me");
    set("XDG_CONFIG_HOME", "config");
    EXPECT_EQ("/home/me/.config/Larkfield Systems", folderOf(k_ui32User));
}

TEST_F(MOXPreferencesLinuxTest, KnowsTheHomeFolderWithoutTheEnvironment)
{
    set("XDG_CONFIG_HOME", {});
    set("HOME", {});
    const std::string strFolder = folderOf(k_ui32User);
    EXPECT_EQ('/', strFolder.front());
    EXPECT_TRUE(fs::path(strFolder).parent_path().filename() == ".config") << strFolder;
}

TEST_F(MOXPreferencesLinuxTest, KeepsTheMachinesFileInTheFirstFolderForAllUsers)
{
    set("XDG_CONFIG_DIRS", {});
    EXPECT_EQ("/etc/xdg/Larkfield Systems", folderOf(k_ui32Machine));
    set("XDG_CONFIG_DIRS", "/first:/second");
    EXPECT_EQ("/first/Larkfield Systems", folderOf(k_ui32Machine));
}

// Reading

TEST_F(MOXPreferencesLinuxTest, MakesAMissingFileFromTheTemplateForTheUserAlone)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    EXPECT_EQ("none", getText(preferences, "a"));
    EXPECT_EQ(PlistDocument::getTemplate(), readText(path()));
    EXPECT_EQ(0600u, modeOf(path()));
    EXPECT_EQ(0700u, modeOf(folder()));
    EXPECT_EQ(0700u, modeOf(m_Folder.path("config")));
    EXPECT_EQ(1u, count());
}

TEST_F(MOXPreferencesLinuxTest, TellsOfAFolderThatCannotBeMade)
{
    m_Folder.write("config", std::string("a file"));
    Preferences preferences("Test");
    EXPECT_EQ("ERROR: Failed to create the folder \"" + folder() + "\": File exists.", load(preferences));
    EXPECT_EQ("a file", readText(m_Folder.path("config")));
}

TEST_F(MOXPreferencesLinuxTest, TellsOfAFileThatCannotBeOpened)
{
    fs::create_directories(path());
    Preferences preferences("Test");
    EXPECT_EQ("ERROR: Failed to open preference file.", load(preferences));
}

TEST_F(MOXPreferencesLinuxTest, DoesNotWaitForAPipe)
{
    fs::create_directories(folder());
    ASSERT_EQ(0, ::mkfifo(path().c_str(), 0600));
    Preferences preferences("Test");
    EXPECT_EQ("ERROR: Failed to open preference file.", load(preferences));
}

TEST_F(MOXPreferencesLinuxTest, SurvivesHostileFiles)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    std::string strDeep;
    for (int i = 0; i < 200000; ++i)
        strDeep += "<dict><key>a</key>";
    std::string strWide = "<plist><dict>";
    for (int i = 0; i < 100000; ++i)
        strWide += "<key>a</key><true/>";
    for (const std::string& strText :
         {std::string(), std::string(1000, '\0'), strDeep, strDeep + "<true/>", strWide, "<plist>" + strDeep, strWide + "</dict></plist>",
          std::string(3 << 20, '<'), std::string("<!DOCTYPE"), std::string("&#x0;"), std::string("\xFF\xFE<\0p\0>\0", 8),
          std::string("<plist><![CDATA["), std::string("<plist a='")})
    {
        write(path(), strText);
        load(preferences);
        getText(preferences, "a/b");
        preferences.setText("a/b", "x");
        preferences.save();
        EXPECT_EQ("", load(preferences));
        EXPECT_EQ("x", getText(preferences, "a/b"));
    }
}

// Replacing

TEST_F(MOXPreferencesLinuxTest, PutsTheNewFileInTheOldOnesPlaceAtOnce)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    preferences.setText("a", "old");
    EXPECT_TRUE(preferences.save());
    const std::string strOld = readText(path());
    // A process that has the old file open keeps it whole: it was renamed over, not written over.
    std::ifstream reader(path(), std::ios::binary);
    preferences.setText("a", "new");
    EXPECT_TRUE(preferences.save());
    EXPECT_EQ(strOld, std::string(std::istreambuf_iterator<char>(reader), {}));
    EXPECT_NE(strOld, readText(path()));
    EXPECT_EQ(1u, count());
}

TEST_F(MOXPreferencesLinuxTest, WritesBesideTheFileUntilItIsWhole)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    MOXPreferencesLinux layer;
    std::string strError;
    {
        const auto pFile = layer.openFile("Test", true, k_ui32User, true, strError);
        ASSERT_NE(nullptr, pFile);
        std::fputs("half", pFile->pFile);
        std::fflush(pFile->pFile);
        EXPECT_EQ("half", readText(path() + ".tmp"));
        EXPECT_EQ(PlistDocument::getTemplate(), readText(path()));
    } // given up
    EXPECT_EQ(PlistDocument::getTemplate(), readText(path()));
    EXPECT_EQ(1u, count());
}

TEST_F(MOXPreferencesLinuxTest, LeavesTheOldFileAndNoOtherWhereADiskIsFull)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    preferences.setText("a", std::string(10000, 'x'));
    {
        const CFileSizeLimit limit(5000);
        EXPECT_FALSE(preferences.save());
    }
    EXPECT_EQ(PlistDocument::getTemplate(), readText(path()));
    EXPECT_EQ(1u, count());
    EXPECT_TRUE(preferences.save());
    EXPECT_EQ(1u, count());
    EXPECT_EQ("", load(preferences));
    EXPECT_EQ(std::string(10000, 'x'), getText(preferences, "a"));
}

TEST_F(MOXPreferencesLinuxTest, FailsWhereTheNewFileCannotBePutInPlace)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    preferences.setText("a", "b");
    fs::remove(path());
    fs::create_directories(path() + "/in the way");
    EXPECT_FALSE(preferences.save());
    EXPECT_EQ(1u, count());
    fs::remove_all(path());
    EXPECT_TRUE(preferences.save());
    EXPECT_EQ("", load(preferences));
    EXPECT_EQ("b", getText(preferences, "a"));
}

TEST_F(MOXPreferencesLinuxTest, FailsWhereSomethingElseHasTheNameOfTheNewFile)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    preferences.setText("a", "b");
    fs::create_directory(path() + ".tmp");
    EXPECT_FALSE(preferences.save());
    fs::remove(path() + ".tmp");
    fs::create_symlink(m_Folder.write("other", std::string("precious")), path() + ".tmp");
    EXPECT_FALSE(preferences.save());
    EXPECT_EQ("precious", readText(m_Folder.path("other")));
    fs::remove(path() + ".tmp");
    ASSERT_EQ(0, ::mkfifo((path() + ".tmp").c_str(), 0600));
    EXPECT_FALSE(preferences.save());
    EXPECT_EQ(PlistDocument::getTemplate(), readText(path()));
}

TEST_F(MOXPreferencesLinuxTest, StartsFromTheTemplateWhereACrashLeftTheNewFileAlone)
{
    fs::create_directories(folder());
    write(path() + ".tmp", "<plist><dict><key>a</key><string>a longer text than the template with what follows it</string></dict></plist>");
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    EXPECT_EQ(PlistDocument::getTemplate(), readText(path()));
    EXPECT_TRUE(preferences.save(true));
    EXPECT_EQ(1u, count());
    EXPECT_EQ(std::string::npos, readText(path()).find("longer"));
}

TEST_F(MOXPreferencesLinuxTest, MakesAFolderAnewThatWasRemoved)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    preferences.setText("a", "b");
    fs::remove_all(m_Folder.path("config"));
    EXPECT_TRUE(preferences.save());
    EXPECT_EQ("", load(preferences));
    EXPECT_EQ("b", getText(preferences, "a"));
}

TEST_F(MOXPreferencesLinuxTest, KeepsTheFilesPermissions)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    ASSERT_EQ(0, ::chmod(path().c_str(), 0644));
    EXPECT_TRUE(preferences.save(true));
    EXPECT_EQ(0644u, modeOf(path()));
}

TEST_F(MOXPreferencesLinuxTest, ReplacesWhatALinkLeadsTo)
{
    fs::create_directories(folder());
    fs::create_symlink(m_Folder.write("kept elsewhere", std::string("<plist/>")), path());
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    preferences.setText("a", "b");
    EXPECT_TRUE(preferences.save());
    EXPECT_TRUE(fs::is_symlink(path()));
    EXPECT_NE(std::string::npos, readText(m_Folder.path("kept elsewhere")).find("<string>b</string>"));
    EXPECT_EQ(1u, count());
}

TEST_F(MOXPreferencesLinuxTest, WritesWithoutASecondFileWhereThatIsAsked)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    MOXPreferencesLinux layer;
    std::string strError;
    const auto pFile = layer.openFile("Test", true, k_ui32User, false, strError);
    ASSERT_NE(nullptr, pFile);
    EXPECT_EQ("", strError);
    std::fputs("direct", pFile->pFile);
    EXPECT_TRUE(layer.closeFile(*pFile, false));
    EXPECT_EQ("direct", readText(path()));
    EXPECT_EQ(1u, count());
}

TEST_F(MOXPreferencesLinuxTest, LetsWritersInOneAfterTheOther)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    MOXPreferencesLinux layer;
    std::string strError;
    const auto pFirst = layer.openFile("Test", true, k_ui32User, true, strError);
    ASSERT_NE(nullptr, pFirst);
    std::fputs("first", pFirst->pFile);

    const std::string strTemporary = path() + ".tmp";
    const int iOther = ::open(strTemporary.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_LE(0, iOther);
    EXPECT_EQ(-1, ::flock(iOther, LOCK_EX | LOCK_NB)); // the second has to wait
    EXPECT_TRUE(layer.closeFile(*pFirst, true));
    EXPECT_EQ(0, ::flock(iOther, LOCK_EX | LOCK_NB)); // and goes on before the first one's layer is gone
    ::close(iOther);
    EXPECT_EQ("first", readText(path()));
}

TEST_F(MOXPreferencesLinuxTest, GivesASaveUpWhereAnotherWriterDoesNotEnd)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    preferences.setText("a", "b");
    const int iStuck = ::open((path() + ".tmp").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_LE(0, iStuck);
    ASSERT_EQ(0, ::flock(iStuck, LOCK_EX));
    EXPECT_FALSE(preferences.save()); // and not for ever
    EXPECT_EQ(PlistDocument::getTemplate(), readText(path()));
    ::close(iStuck);
    EXPECT_TRUE(preferences.save()); // as it was still unsaved
    EXPECT_EQ("", load(preferences));
    EXPECT_EQ("b", getText(preferences, "a"));
}

TEST_F(MOXPreferencesLinuxTest, LeavesALargeFileAlone)
{
    fs::create_directories(folder());
    const std::string strLarge(9 << 20, '<');
    write(path(), strLarge);
    Preferences preferences("Test");
    EXPECT_EQ("ERROR: Failed to open preference file.", load(preferences));
    preferences.setText("a", "b");
    EXPECT_FALSE(preferences.save(true));
    EXPECT_TRUE(strLarge == readText(path()));
}

TEST_F(MOXPreferencesLinuxTest, StandsWholeWhileManyProcessesWrite)
{
    constexpr int iProcesses = 4;
    constexpr int iSaves = 20;
    constexpr int iTries = 30;
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    std::vector<pid_t> processes;
    for (int iProcess = 0; iProcess < iProcesses; ++iProcess)
    {
        processes.push_back(::fork());
        if (processes.back() != 0)
            continue;
        bool bGood = true;
        // Of differing lengths, so that two writers of one file would show.
        for (int i = 0; i < iSaves; ++i)
        {
            preferences.setText("a", std::string(static_cast<size_t>(1000 * iProcess + i + 1), static_cast<char>('a' + iProcess)));
            // A save that gave the others up is made again.
            bool bSaved = false;
            for (int iTry = 0; iTry < iTries && !bSaved; ++iTry)
                bSaved = preferences.save();
            bGood = bGood && bSaved;
        }
        ::_exit(bGood ? 0 : 1);
    }
    bool bAllWhole = true;
    for (const pid_t process : processes)
    {
        int iState = -1;
        while (::waitpid(process, &iState, WNOHANG) == 0)
        {
            Preferences reader("Test");
            const std::string strValue = load(reader).empty() ? getText(reader, "a") : "";
            const bool bWhole = strValue == "none" || (!strValue.empty() && strValue == std::string(strValue.size(), strValue.front()));
            bAllWhole = bAllWhole && bWhole;
        }
        EXPECT_EQ(0, iState);
    }
    EXPECT_TRUE(bAllWhole);
    EXPECT_EQ(1u, count());
}

// Time

TEST_F(MOXPreferencesLinuxTest, HasNoTimeForAMissingFile)
{
    MOXPreferencesLinux layer;
    uint32_t ui32Time = 7;
    EXPECT_FALSE(layer.getModificationTime("Test", k_ui32User, ui32Time));
    EXPECT_EQ(7u, ui32Time);
}

TEST_F(MOXPreferencesLinuxTest, GivesAFileThatIsReadOrWrittenItsTime)
{
    MOXPreferencesLinux layer;
    std::string strError;
    const auto pRead = layer.openFile("Test", false, k_ui32User, false, strError);
    ASSERT_NE(nullptr, pRead);
    uint32_t ui32Time = 0;
    EXPECT_TRUE(layer.getModificationTime("Test", k_ui32User, ui32Time));
    EXPECT_EQ(ui32Time, pRead->ui32Time);
    EXPECT_TRUE(layer.closeFile(*pRead, false));

    const auto pWritten = layer.openFile("Test", true, k_ui32User, true, strError);
    ASSERT_NE(nullptr, pWritten);
    EXPECT_TRUE(layer.closeFile(*pWritten, true));
    EXPECT_TRUE(layer.getModificationTime("Test", k_ui32User, ui32Time));
    EXPECT_EQ(ui32Time, pWritten->ui32Time);
}

TEST_F(MOXPreferencesLinuxTest, ShowsEveryReplacementOfOneLengthAndTime)
{
    Preferences reader("Test");
    EXPECT_EQ("", load(reader, true));
    setTime(path(), 5);
    getText(reader, "a");
    for (int i = 0; i < 40; ++i)
    {
        // More than one of them between two looks: the number of a file that is gone may come again.
        std::string strValue;
        for (int iFile = 0; iFile <= i % 4; ++iFile)
        {
            strValue = std::to_string(1000 + 10 * i + iFile);
            write(path() + ".new", "<plist><dict><key>a</key><string>" + strValue + "</string></dict></plist>");
            setTime(path() + ".new", 5);
            fs::rename(path() + ".new", path());
        }
        EXPECT_EQ(strValue, getText(reader, "a"));
    }
}

TEST_F(MOXPreferencesLinuxTest, ShowsATimeThatDiffersInANanosecond)
{
    Preferences preferences("Test");
    EXPECT_EQ("", load(preferences));
    MOXPreferencesLinux layer;
    uint32_t aui32Times[3] = {};
    const long aiNanoseconds[3] = {5, 6, 5};
    for (int i = 0; i < 3; ++i)
    {
        setTime(path(), aiNanoseconds[i]);
        EXPECT_TRUE(layer.getModificationTime("Test", k_ui32User, aui32Times[i]));
    }
    EXPECT_NE(aui32Times[0], aui32Times[1]);
    EXPECT_EQ(aui32Times[0], aui32Times[2]);
}
