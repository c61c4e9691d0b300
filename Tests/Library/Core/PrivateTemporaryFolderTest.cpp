#include "Core/PrivateTemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>

#include "Support/Environment.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace fs = std::filesystem;

namespace
{

class PrivateTemporaryFolder : public testing::Test
{
protected:
    PrivateTemporaryFolder()
    {
        for (const char* strName : {"TEMP", "TMP", "TMPDIR"})
            set(strName, {});
    }

    static void set(const char* strName, const std::optional<std::string>& value) { CEnvironmentKeeper::set(strName, value); }
    static std::optional<std::string> getTemp() { return CEnvironmentKeeper::get("TEMP"); }
    static std::string parentOf(const std::string& strPath) { return fs::path(strPath).parent_path().string(); }

    CTemporaryFolder m_Folder;
    CEnvironmentKeeper m_Keeper{"TEMP", "TMP", "TMPDIR"};
};

} // namespace

TEST_F(PrivateTemporaryFolder, IsMadeInTempForTheUserAlone)
{
    set("TEMP", m_Folder.path());
    const CPrivateTemporaryFolder folder;
    EXPECT_EQ(m_Folder.path(), parentOf(folder.getPath()));
    struct stat status = {};
    ASSERT_EQ(0, ::stat(folder.getPath().c_str(), &status));
    EXPECT_TRUE(S_ISDIR(status.st_mode));
    EXPECT_EQ(0700u, status.st_mode & 0777u);
}

TEST_F(PrivateTemporaryFolder, IsWhatTempNamesWhileItLives)
{
    set("TEMP", m_Folder.path());
    {
        const CPrivateTemporaryFolder folder;
        EXPECT_EQ(folder.getPath(), getTemp());
    }
    EXPECT_EQ(m_Folder.path(), getTemp());
}

TEST_F(PrivateTemporaryFolder, LeavesTempUnsetWhereItWas)
{
    set("TMP", m_Folder.path());
    {
        const CPrivateTemporaryFolder folder;
        EXPECT_EQ(m_Folder.path(), parentOf(folder.getPath()));
        EXPECT_EQ(folder.getPath(), getTemp());
    }
    EXPECT_EQ(std::nullopt, getTemp());
}

TEST_F(PrivateTemporaryFolder, GoesWithAllThatIsInIt)
{
    set("TEMP", m_Folder.path());
    {
        const CPrivateTemporaryFolder folder;
        fs::create_directories(folder.getPath() + "/a/b");
        fs::create_symlink(m_Folder.write("outside", std::string("stays")), folder.getPath() + "/a/link");
        EXPECT_EQ(2u, m_Folder.count());
    }
    EXPECT_EQ(1u, m_Folder.count());
    EXPECT_EQ("stays", readText(m_Folder.path("outside")));
}

TEST_F(PrivateTemporaryFolder, CanBeRemovedEarlier)
{
    set("TEMP", m_Folder.path());
    const CPrivateTemporaryFolder folder;
    fs::create_directory(folder.getPath() + "/a");
    folder.remove();
    EXPECT_EQ(0u, m_Folder.count());
    folder.remove();
}

TEST_F(PrivateTemporaryFolder, PassesOverATempThatIsNoFolderToWriteIn)
{
    for (const std::string& strBad : {std::string(), m_Folder.path("missing"), m_Folder.write("file", std::string("no folder"))})
    {
        set("TEMP", strBad);
        set("TMP", m_Folder.path());
        EXPECT_EQ(m_Folder.path(), parentOf(CPrivateTemporaryFolder().getPath())) << strBad;
    }
}

TEST_F(PrivateTemporaryFolder, IsInTheSystemsTemporaryFolderWhereNeitherIsSet)
{
    EXPECT_EQ("/tmp", parentOf(CPrivateTemporaryFolder().getPath()));
    set("TMPDIR", m_Folder.path());
    EXPECT_EQ(m_Folder.path(), parentOf(CPrivateTemporaryFolder().getPath()));
}

TEST_F(PrivateTemporaryFolder, StandsByAnAbsolutePathInARelativeTemp)
{
    const fs::path earlier = fs::current_path();
    fs::current_path(m_Folder.path());
    fs::create_directory("here");
    set("TEMP", "here");
    {
        const CPrivateTemporaryFolder folder;
        fs::current_path(earlier);
        EXPECT_EQ(m_Folder.path("here"), parentOf(folder.getPath()));
    }
    EXPECT_TRUE(fs::is_empty(m_Folder.path("here")));
}

TEST_F(PrivateTemporaryFolder, IsAnotherForEachOfTwo)
{
    set("TEMP", m_Folder.path());
    const CPrivateTemporaryFolder first;
    const CPrivateTemporaryFolder second;
    EXPECT_NE(first.getPath(), second.getPath());
    EXPECT_EQ(first.getPath(), parentOf(second.getPath())); // which TEMP names by then
}
