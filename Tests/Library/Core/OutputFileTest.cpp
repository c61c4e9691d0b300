#include "Core/OutputFile.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using testsupport::CTemporaryFolder;
using testsupport::readText;
namespace fs = std::filesystem;

namespace
{

mode_t modeOf(const std::string& strPath)
{
    struct stat status = {};
    EXPECT_EQ(0, ::lstat(strPath.c_str(), &status)) << strPath;
    return status.st_mode & 07777;
}

void writeText(const std::string& strPath, const std::string& strText)
{
    std::ofstream(strPath, std::ios::binary) << strText;
}

class OutputFile : public testing::Test
{
protected:
    const CTemporaryFolder m_Folder;
};

} // namespace

TEST_F(OutputFile, WritesInAPrivateFolderBesideTheTargetUnderTheTargetsName)
{
    const COutputFile output(m_Folder.path("new.mox"));
    ASSERT_TRUE(output.isReady());
    EXPECT_EQ(m_Folder.path(), fs::path(output.getFolder()).parent_path().string());
    EXPECT_EQ(0700u, modeOf(output.getFolder()));
    EXPECT_EQ(output.getFolder() + "/new.mox", output.getWritePath());
    EXPECT_FALSE(fs::exists(output.getWritePath()));
    EXPECT_EQ("", output.getReason());
}

TEST_F(OutputFile, CommitPutsTheFileInPlaceAndRemovesTheFolder)
{
    COutputFile output(m_Folder.path("new.mox"));
    writeText(output.getWritePath(), "text");
    EXPECT_TRUE(output.commit()) << output.getReason();
    EXPECT_EQ("text", readText(m_Folder.path("new.mox")));
    EXPECT_EQ(1u, m_Folder.count());
    EXPECT_EQ("", output.getFolder());
    EXPECT_FALSE(output.commit()) << "nothing is left to put in place";
}

TEST_F(OutputFile, AnEarlierFileStaysUntilTheNewOneTakesItsPlace)
{
    m_Folder.write("a.mox", "earlier");
    COutputFile output(m_Folder.path("a.mox"));
    writeText(output.getWritePath(), "new");
    EXPECT_EQ("earlier", readText(m_Folder.path("a.mox")));
    EXPECT_TRUE(output.commit());
    EXPECT_EQ("new", readText(m_Folder.path("a.mox")));
}

TEST_F(OutputFile, WithoutACommitNothingIsLeftOfTheNewFile)
{
    m_Folder.write("a.mox", "earlier");
    {
        const COutputFile output(m_Folder.path("a.mox"));
        writeText(output.getWritePath(), "new");
        fs::create_directory(output.getFolder() + "/more");
        writeText(output.getFolder() + "/more/still", "x");
    }
    EXPECT_EQ("earlier", readText(m_Folder.path("a.mox")));
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(OutputFile, ALinkThatStandsInTheFolderIsRemovedAndNotFollowed)
{
    m_Folder.write("other", "other");
    {
        const COutputFile output(m_Folder.path("a.mox"));
        fs::create_symlink(m_Folder.path(), output.getFolder() + "/link");
    }
    EXPECT_EQ("other", readText(m_Folder.path("other")));
}

TEST_F(OutputFile, AFileThatWasNotWrittenIsEmptyOrIsNoFileIsRefused)
{
    m_Folder.write("a.mox", "earlier");
    {
        COutputFile output(m_Folder.path("a.mox"));
        EXPECT_FALSE(output.commit());
        EXPECT_THAT(output.getReason(), StartsWith("No file was written"));
    }
    {
        COutputFile output(m_Folder.path("a.mox"));
        writeText(output.getWritePath(), "");
        EXPECT_FALSE(output.commit());
        EXPECT_THAT(output.getReason(), EndsWith("is empty"));
    }
    {
        COutputFile output(m_Folder.path("a.mox"));
        fs::create_directory(output.getWritePath());
        EXPECT_FALSE(output.commit());
        EXPECT_THAT(output.getReason(), EndsWith("is not a regular file"));
    }
    {
        COutputFile output(m_Folder.path("a.mox"));
        fs::create_symlink("/etc/passwd", output.getWritePath());
        EXPECT_FALSE(output.commit());
    }
    EXPECT_EQ("earlier", readText(m_Folder.path("a.mox")));
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(OutputFile, TheCallersCheckSeesTheWrittenFileAndMayRefuseIt)
{
    m_Folder.write("a.mox", "earlier");
    std::string strSeen;
    const auto check = [&](const std::string& strPath, std::string& strReason)
    {
        strSeen = readText(strPath);
        strReason = "not good enough";
        return false;
    };
    COutputFile output(m_Folder.path("a.mox"));
    writeText(output.getWritePath(), "new");
    EXPECT_FALSE(output.commit(check));
    EXPECT_EQ("new", strSeen);
    EXPECT_EQ("not good enough", output.getReason());
    EXPECT_EQ("earlier", readText(m_Folder.path("a.mox")));
    EXPECT_FALSE(output.commit()) << "refused once is refused for good";
    EXPECT_EQ("not good enough", output.getReason());
}

TEST_F(OutputFile, ACheckThatPassesLetsTheFileThroughAndOneWithoutAReasonIsGivenOne)
{
    COutputFile output(m_Folder.path("a.mox"));
    writeText(output.getWritePath(), "new");
    EXPECT_TRUE(output.commit([](const std::string&, std::string&) { return true; }));

    COutputFile refused(m_Folder.path("a.mox"));
    writeText(refused.getWritePath(), "newer");
    EXPECT_FALSE(refused.commit([](const std::string&, std::string&) { return false; }));
    EXPECT_THAT(refused.getReason(), HasSubstr("did not pass its check"));
    EXPECT_EQ("new", readText(m_Folder.path("a.mox")));
}

TEST_F(OutputFile, TheEarlierFilesPermissionsAreKept)
{
    m_Folder.write("a.mox", "earlier");
    ASSERT_EQ(0, ::chmod(m_Folder.path("a.mox").c_str(), 0640));
    COutputFile output(m_Folder.path("a.mox"));
    writeText(output.getWritePath(), "new");
    ASSERT_TRUE(output.commit());
    EXPECT_EQ(0640u, modeOf(m_Folder.path("a.mox")));
}

TEST_F(OutputFile, ANewFileHasThePermissionsThatTheMaskLeaves)
{
    const mode_t earlierMask = ::umask(027);
    COutputFile output(m_Folder.path("a.mox"));
    writeText(output.getWritePath(), "new");
    EXPECT_TRUE(output.commit());
    ::umask(earlierMask);
    EXPECT_EQ(0640u, modeOf(m_Folder.path("a.mox"))); // 0666 without 027
}

TEST_F(OutputFile, ALinkAtTheTargetStaysAndItsFileIsReplaced)
{
    fs::create_directory(m_Folder.path("there"));
    m_Folder.write("there/real.bin", "earlier");
    fs::create_symlink("there/real.bin", m_Folder.path("one.mox")); // told from the link's own folder
    fs::create_symlink(m_Folder.path("one.mox"), m_Folder.path("two.mox"));

    COutputFile output(m_Folder.path("two.mox"));
    ASSERT_TRUE(output.isReady()) << output.getReason();
    EXPECT_THAT(output.getWritePath(), EndsWith("/two.mox")) << "the name decides how it is written";
    EXPECT_EQ(m_Folder.path("there"), fs::path(output.getFolder()).parent_path().string());
    writeText(output.getWritePath(), "new");
    ASSERT_TRUE(output.commit());
    EXPECT_TRUE(fs::is_symlink(m_Folder.path("one.mox")));
    EXPECT_TRUE(fs::is_symlink(m_Folder.path("two.mox")));
    EXPECT_EQ("new", readText(m_Folder.path("there/real.bin")));
}

TEST_F(OutputFile, ALinkThatLeadsToNoFileYetGetsOne)
{
    fs::create_symlink("later.mox", m_Folder.path("a.mox"));
    COutputFile output(m_Folder.path("a.mox"));
    writeText(output.getWritePath(), "new");
    ASSERT_TRUE(output.commit()) << output.getReason();
    EXPECT_EQ("new", readText(m_Folder.path("later.mox")));
}

TEST_F(OutputFile, LinksInACircleAreRefused)
{
    fs::create_symlink("b.mox", m_Folder.path("a.mox"));
    fs::create_symlink("a.mox", m_Folder.path("b.mox"));
    const COutputFile output(m_Folder.path("a.mox"));
    EXPECT_FALSE(output.isReady());
    EXPECT_THAT(output.getReason(), HasSubstr("Cannot follow the link"));
}

TEST_F(OutputFile, AFolderADeviceAndNamesOfNoFileAreNoTargets)
{
    fs::create_directory(m_Folder.path("folder.mox"));
    EXPECT_THAT(COutputFile(m_Folder.path("folder.mox")).getReason(), EndsWith("is a folder"));
    fs::create_symlink("/dev/null", m_Folder.path("link.mox"));
    EXPECT_THAT(COutputFile(m_Folder.path("link.mox")).getReason(), EndsWith("is not a regular file"));
    for (const std::string& strPath : {std::string(), m_Folder.path() + "/", m_Folder.path("."), m_Folder.path("..")})
    {
        COutputFile output(strPath);
        EXPECT_FALSE(output.isReady()) << strPath;
        EXPECT_THAT(output.getReason(), EndsWith("names no file"));
        EXPECT_FALSE(output.commit());
    }
}

TEST_F(OutputFile, AFolderThatIsNotThereOrCannotBeWrittenGivesAReason)
{
    const COutputFile missing(m_Folder.path("missing/a.mox"));
    EXPECT_FALSE(missing.isReady());
    EXPECT_THAT(missing.getReason(), HasSubstr("No such file or directory"));
    EXPECT_EQ("", missing.getFolder());

    const COutputFile forbidden("/proc/a.mox"); // also to root
    EXPECT_FALSE(forbidden.isReady());
    EXPECT_NE("", forbidden.getReason());

    m_Folder.write("file", "x");
    const COutputFile inFile(m_Folder.path("file/a.mox"));
    EXPECT_FALSE(inFile.isReady());
    EXPECT_THAT(inFile.getReason(), HasSubstr("Not a directory"));
}

/// Root may write everything: while one of these lives, the process is somebody without rights.
class CNotAsRoot
{
public:
    CNotAsRoot()
    {
        constexpr uid_t uiNobody = 65534;
        if (m_bRoot && ::setresuid(uiNobody, uiNobody, 0) != 0)
            std::abort();
    }
    CNotAsRoot(const CNotAsRoot&) = delete;
    CNotAsRoot& operator=(const CNotAsRoot&) = delete;
    ~CNotAsRoot()
    {
        if (m_bRoot && ::setresuid(0, 0, 0) != 0)
            std::abort();
    }

private:
    bool m_bRoot = ::geteuid() == 0;
};

TEST_F(OutputFile, AReadOnlyFileIsNotReplaced)
{
    m_Folder.write("a.mox", "earlier");
    ASSERT_EQ(0, ::chmod(m_Folder.path("a.mox").c_str(), 0444));
    ASSERT_EQ(0, ::chmod(m_Folder.path().c_str(), 0777)); // a folder that anybody may write in: the file alone refuses
    const CNotAsRoot user;
    const COutputFile output(m_Folder.path("a.mox"));
    EXPECT_FALSE(output.isReady());
    EXPECT_THAT(output.getReason(), HasSubstr("Permission denied"));
}

TEST_F(OutputFile, ATargetThatBecameAFolderMeanwhileFailsWithAReason)
{
    COutputFile output(m_Folder.path("a.mox"));
    writeText(output.getWritePath(), "new");
    fs::create_directory(m_Folder.path("a.mox"));
    EXPECT_FALSE(output.commit());
    EXPECT_THAT(output.getReason(), HasSubstr("Cannot put"));
    EXPECT_TRUE(fs::is_directory(m_Folder.path("a.mox")));
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(OutputFile, ANameWithoutAFolderIsWrittenInTheCurrentOne)
{
    const fs::path earlier = fs::current_path();
    fs::current_path(m_Folder.path());
    COutputFile output("a.mox");
    writeText(output.getWritePath(), "new");
    EXPECT_TRUE(output.commit()) << output.getReason();
    fs::current_path(earlier);
    EXPECT_EQ("new", readText(m_Folder.path("a.mox")));
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(OutputFile, AnyBytesMayStandInAName)
{
    const std::string strPath = m_Folder.path("T\xC3\xBCr \xFF .mox");
    COutputFile output(strPath);
    writeText(output.getWritePath(), "new");
    EXPECT_TRUE(output.commit()) << output.getReason();
    EXPECT_EQ("new", readText(strPath));
}

TEST_F(OutputFile, WrittenByAFunctionItIsInPlaceWhereTheFunctionGaveTrue)
{
    COutputFile output(m_Folder.path("new.mox"));
    EXPECT_TRUE(output.writeBy(
        [](const std::string& strPath)
        {
            writeText(strPath, "whole");
            return true;
        }));
    EXPECT_EQ("whole", readText(m_Folder.path("new.mox")));
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(OutputFile, AFunctionThatGivesFalseLeavesTheEarlierFileAndNoReason)
{
    const std::string strPath = m_Folder.write("old.mox", std::string("old"));
    {
        COutputFile output(strPath);
        EXPECT_FALSE(output.writeBy(
            [](const std::string& strWritePath)
            {
                writeText(strWritePath, "half");
                return false;
            }));
        EXPECT_EQ("", output.getReason());
    }
    EXPECT_EQ("old", readText(strPath));
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(OutputFile, AFunctionIsNotCalledWhereNothingCanBeWritten)
{
    COutputFile output(m_Folder.path("missing/new.mox"));
    bool bCalled = false;
    EXPECT_FALSE(output.writeBy(
        [&](const std::string&)
        {
            bCalled = true;
            return true;
        }));
    EXPECT_FALSE(bCalled);
    EXPECT_NE("", output.getReason());
}
