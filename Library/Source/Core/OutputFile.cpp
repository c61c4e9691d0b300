#include "Core/OutputFile.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace moxtexture
{
namespace
{

namespace fs = std::filesystem;

/// Links of the last name only, also such that lead nowhere yet; those of the folders resolve by themselves.
/// @return 0, or the error number
int resolveLinks(fs::path& path)
{
    constexpr int iMostLinks = 40;
    std::error_code error;
    for (int i = 0; i < iMostLinks; ++i)
    {
        if (!fs::is_symlink(fs::symlink_status(path, error)))
            return 0;
        const fs::path target = fs::read_symlink(path, error);
        if (error)
            return error.value();
        path = path.parent_path() / target; // an absolute target replaces the whole
    }
    return ELOOP;
}

std::string folderOf(const fs::path& path)
{
    const fs::path folder = path.parent_path();
    return folder.empty() ? "." : folder.string();
}

/// Best done, not needed: after it the new name survives a loss of power, too.
void syncFolder(const std::string& strFolder)
{
    const int iDescriptor = ::open(strFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (iDescriptor < 0)
        return;
    static_cast<void>(::fsync(iDescriptor));
    ::close(iDescriptor);
}

} // namespace

COutputFile::COutputFile(const std::string& strTargetPath)
{
    if (!prepare(strTargetPath))
        m_strFolder.clear();
}

COutputFile::~COutputFile()
{
    removeFolder();
}

bool COutputFile::prepare(const std::string& strTargetPath)
{
    fs::path target(strTargetPath);
    const std::string strName = target.filename().string();
    if (strName.empty() || strName == "." || strName == "..")
        return fail("\"" + strTargetPath + "\" names no file");
    if (const int iError = resolveLinks(target))
        return failWith("Cannot follow the link \"" + strTargetPath + "\"", iError);

    struct stat status = {};
    if (::stat(target.c_str(), &status) == 0)
    {
        if (S_ISDIR(status.st_mode))
            return fail("\"" + strTargetPath + "\" is a folder");
        if (!S_ISREG(status.st_mode))
            return fail("\"" + strTargetPath + "\" is not a regular file");
        if (::access(target.c_str(), W_OK) != 0)
            return failWith("Cannot write \"" + strTargetPath + "\"", errno);
    }
    else if (errno != ENOENT)
    {
        return failWith("Cannot write \"" + strTargetPath + "\"", errno);
    }
    m_strTarget = target.string();

    const std::string strBeside = folderOf(target);
    m_strFolder = strBeside + "/.halvane-XXXXXX";
    if (::mkdtemp(m_strFolder.data()) == nullptr)
        return failWith("Cannot write in the folder \"" + strBeside + "\"", errno);
    m_strWritePath = m_strFolder + "/" + strName;
    return true;
}

bool COutputFile::commit(const Check& check)
{
    if (!isReady())
        return m_strReason.empty() ? fail("The file has been put in place already") : false;
    const bool bDone = finish(check);
    removeFolder();
    return bDone;
}

bool COutputFile::writeBy(const std::function<bool(const std::string& strWritePath)>& write)
{
    return isReady() && write(m_strWritePath) && commit();
}

bool COutputFile::finish(const Check& check)
{
    const int iDescriptor = ::open(m_strWritePath.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (iDescriptor < 0)
        return failWith("No file was written for \"" + m_strTarget + "\"", errno);

    struct stat status = {};
    std::string strReason;
    bool bGood = false;
    bool bReplaces = false;
    if (::fstat(iDescriptor, &status) != 0 || !S_ISREG(status.st_mode))
        fail("What was written for \"" + m_strTarget + "\" is not a regular file");
    else if (status.st_size == 0)
        fail("The file written for \"" + m_strTarget + "\" is empty");
    else if (check && !check(m_strWritePath, strReason))
        fail(strReason.empty() ? "The file written for \"" + m_strTarget + "\" did not pass its check" : strReason);
    // Waiting for the disk is for the earlier file's sake: where there is none, nothing can be lost but what was just made.
    else if (!matchEarlierFile(iDescriptor, bReplaces) || (bReplaces && ::fsync(iDescriptor) != 0))
        failWith("Cannot complete \"" + m_strTarget + "\"", errno);
    else if (::rename(m_strWritePath.c_str(), m_strTarget.c_str()) != 0)
        failWith("Cannot put \"" + m_strTarget + "\" in place", errno);
    else
        bGood = true;
    ::close(iDescriptor);
    if (bGood && bReplaces)
        syncFolder(folderOf(m_strTarget));
    return bGood;
}

/// @return false with errno set
bool COutputFile::matchEarlierFile(int iDescriptor, bool& bReplaces)
{
    struct stat earlier = {};
    bReplaces = ::stat(m_strTarget.c_str(), &earlier) == 0;
    if (!bReplaces)
        return errno == ENOENT;
    // The owner first, as a change of owner may take permissions away. Only some may give files away: no matter if not.
    static_cast<void>(::fchown(iDescriptor, earlier.st_uid, earlier.st_gid) == 0);
    return ::fchmod(iDescriptor, earlier.st_mode & 0777) == 0;
}

bool COutputFile::fail(std::string strReason)
{
    m_strReason = std::move(strReason);
    return false;
}

bool COutputFile::failWith(const std::string& strWhat, int iError)
{
    return fail(strWhat + ": " + std::generic_category().message(iError));
}

void COutputFile::removeFolder()
{
    std::error_code ignored;
    if (!m_strFolder.empty())
        fs::remove_all(m_strFolder, ignored);
    m_strFolder.clear();
}

} // namespace moxtexture
