#include "Common/FileIOPaths.h"

#include "Application/Common/MemoryPreferences.h"
#include "Common/Preferences.h"

#include <gtest/gtest.h>

namespace
{

class FileIOPaths : public testing::Test
{
protected:
    FileIOPaths()
    {
        std::string strError;
        EXPECT_TRUE(m_Preferences.load(strError, false)) << strError;
    }

    std::string folderOf(const std::string& strPath)
    {
        setFileIOPath(&m_Preferences, "FileIO/LoadPath", strPath);
        return getFileIOPath(&m_Preferences, "FileIO/LoadPath");
    }

    MemoryPreferencesFile m_File;
    Preferences m_Preferences{"Test", 0, std::make_unique<CMemoryPreferences>(m_File)};
};

} // namespace

TEST_F(FileIOPaths, AreEmptyAtFirst)
{
    EXPECT_EQ("", getFileIOPath(&m_Preferences, "FileIO/SavePath"));
}

TEST_F(FileIOPaths, AreEmptyWithoutPreferences)
{
    setFileIOPath(nullptr, "FileIO/LoadPath", "/a/b.mox");
    EXPECT_EQ("", getFileIOPath(nullptr, "FileIO/LoadPath"));
}

TEST_F(FileIOPaths, KeepTheFolderOfAPath)
{
    EXPECT_EQ("/home/me/pictures", folderOf("/home/me/pictures/a.b.png"));
    EXPECT_EQ("pictures", folderOf("pictures/a.png"));
    EXPECT_EQ("C:\\pictures", folderOf("C:\\pictures\\a.png"));
    EXPECT_EQ("", folderOf("a.png"));
}

TEST_F(FileIOPaths, KeepTheRootAsAFolder)
{
    EXPECT_EQ("/", folderOf("/a.png"));
}

TEST_F(FileIOPaths, TakeABackslashInANameForALetter)
{
    EXPECT_EQ("/home/me", folderOf("/home/me/a\\b.png"));
}

TEST_F(FileIOPaths, AreKeptApartByTheirKeys)
{
    setFileIOPath(&m_Preferences, "FileIO/LoadPath", "/a/x");
    setFileIOPath(&m_Preferences, "FileIO/FontPath", "/b/x");
    EXPECT_EQ("/a", getFileIOPath(&m_Preferences, "FileIO/LoadPath"));
    EXPECT_EQ("/b", getFileIOPath(&m_Preferences, "FileIO/FontPath"));
}
