#include "Common/MOXPreferencesLinux.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include <QtCore/QThread>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Common/Fnv1.h"
#include "Common/PlistDocument.h"
#include "Core/FileHandle.h"

namespace fs = std::filesystem;

namespace
{

constexpr const char* k_strFolderName = "Larkfield Systems";
constexpr uint32_t k_ui32Machine = 1;

/// For the user alone, as the settings tell what files he opened.
constexpr mode_t k_FolderMode = 0700;
constexpr mode_t k_FileMode = 0600;

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds k_LongestWait(1); ///< for another process that writes

struct LinuxFile : MOXPreferencesFile
{
    ~LinuxFile() override
    {
        // Before the file is closed, as its name may be that of another process's file then.
        if (!strTemporary.empty())
            ::unlink(strTemporary.c_str());
        static_cast<void>(close());
    }

    bool close()
    {
        std::FILE* pOpen = std::exchange(pFile, nullptr);
        if (!bForWrite)
            return reading.close();
        return pOpen != nullptr && std::fclose(pOpen) == 0;
    }

    bool bForWrite = false;
    moxtexture::CFileHandle reading;
    std::string strTarget;    ///< of writing
    std::string strTemporary; ///< what is written until it takes the target's name; empty where there is none (any more)
};

/// A folder that a variable of the environment names; empty if it names none. Relative ones count for nothing, as XDG's rules say.
std::string folderVariable(const char* strName)
{
    const char* pValue = std::getenv(strName);
    return pValue != nullptr && *pValue == '/' ? pValue : "";
}

std::string machineFolder()
{
    const std::string strFolders = folderVariable("XDG_CONFIG_DIRS");
    return strFolders.empty() ? "/etc/xdg" : strFolders.substr(0, strFolders.find(':'));
}

/// @return empty if the user has none
std::string userFolder()
{
    std::string strFolder = folderVariable("XDG_CONFIG_HOME");
    if (!strFolder.empty())
        return strFolder;
    std::string strHome = folderVariable("HOME");
    const passwd* pUser = strHome.empty() ? ::getpwuid(::getuid()) : nullptr;
    if (pUser != nullptr && pUser->pw_dir != nullptr)
        strHome = pUser->pw_dir;
    return strHome.empty() ? "" : strHome + "/.config";
}

/// @return 0, or the error number
int makeFolder(const fs::path& path)
{
    std::error_code error;
    if (fs::is_directory(path, error))
        return 0;
    if (path.has_relative_path())
        if (const int iError = makeFolder(path.parent_path()))
            return iError;
    if (::mkdir(path.c_str(), k_FolderMode) == 0)
        return 0;
    const int iError = errno;
    return iError == EEXIST && fs::is_directory(path, error) ? 0 : iError;
}

std::string pathOf(const std::string& strFolder, const std::string& strName)
{
    return strFolder + "/" + strName + ".plist";
}

void foldNumber(std::string& strBytes, uint64_t ui64Number)
{
    strBytes.append(reinterpret_cast<const char*>(&ui64Number), sizeof ui64Number);
}

/// The time to the nanosecond is that of the system's clock tick, which several changes may share: so the file's own number counts,
/// too. The time of its last renaming does not, so that a file has its number before it takes its name.
uint32_t foldTime(const struct stat& status)
{
    std::string strBytes;
    foldNumber(strBytes, static_cast<uint64_t>(status.st_mtim.tv_sec));
    foldNumber(strBytes, static_cast<uint64_t>(status.st_mtim.tv_nsec));
    foldNumber(strBytes, status.st_ino);
    foldNumber(strBytes, status.st_dev);
    foldNumber(strBytes, static_cast<uint64_t>(status.st_size));
    return fnv1(strBytes);
}

bool readTime(std::FILE* pFile, uint32_t& ui32Time)
{
    struct stat status = {};
    if (::fstat(::fileno(pFile), &status) != 0)
        return false;
    ui32Time = foldTime(status);
    return true;
}

/// Opens a file that appears only if it was not there, with the whole template in it.
bool makeNewFile(const std::string& strPath)
{
    const int iDescriptor = ::open(strPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, k_FileMode);
    if (iDescriptor < 0)
        return errno == EEXIST; // another process was quicker
    const std::string& strTemplate = PlistDocument::getTemplate();
    const bool bWritten = ::write(iDescriptor, strTemplate.data(), strTemplate.size()) == static_cast<ssize_t>(strTemplate.size());
    if (::close(iDescriptor) == 0 && bWritten)
        return true;
    ::unlink(strPath.c_str());
    return false;
}

bool lockUntil(int iDescriptor, Clock::time_point end)
{
    constexpr unsigned long ulStep = 5; // milliseconds
    while (::flock(iDescriptor, LOCK_EX | LOCK_NB) != 0)
    {
        if (errno != EWOULDBLOCK || Clock::now() >= end)
            return false;
        QThread::msleep(ulStep);
    }
    return true;
}

/// Opens the file beside the target in which the new content is made. Another process that writes one is waited for, but not
/// for ever, as the user waits, too: its file takes the target's name, whole, before this one begins a file of that name itself. What one
/// left behind as it died is overwritten.
/// @return a descriptor, or -1
int openTemporary(const std::string& strPath)
{
    const Clock::time_point end = Clock::now() + k_LongestWait;
    for (;;)
    {
        const int iDescriptor = ::open(strPath.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, k_FileMode);
        if (iDescriptor < 0)
            return -1;
        const bool bLocked = lockUntil(iDescriptor, end);
        struct stat opened = {};
        struct stat named = {};
        const bool bKnown = bLocked && ::fstat(iDescriptor, &opened) == 0;
        const bool bStillNamed = ::lstat(strPath.c_str(), &named) == 0 && opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
        if (bKnown && bStillNamed && S_ISREG(opened.st_mode) && ::ftruncate(iDescriptor, 0) == 0)
            return iDescriptor;
        ::close(iDescriptor);
        if (!bKnown || bStillNamed)
            return -1;
    }
}

std::unique_ptr<LinuxFile> openForReading(const std::string& strPath)
{
    auto pFile = std::make_unique<LinuxFile>();
    pFile->reading = moxtexture::CFileHandle::openForReading(strPath);
    pFile->pFile = pFile->reading.get();
    if (pFile->pFile == nullptr || !readTime(pFile->pFile, pFile->ui32Time))
        return nullptr;
    return pFile;
}

std::unique_ptr<LinuxFile> openForWriting(const std::string& strPath, bool bAtomic)
{
    auto pFile = std::make_unique<LinuxFile>();
    pFile->bForWrite = true;
    std::error_code error;
    const fs::path target = fs::canonical(strPath, error);
    pFile->strTarget = error ? strPath : target.string();

    int iDescriptor = -1;
    if (bAtomic)
    {
        const std::string strTemporary = pFile->strTarget + ".tmp";
        iDescriptor = openTemporary(strTemporary);
        if (iDescriptor >= 0)
            pFile->strTemporary = strTemporary;
    }
    else
    {
        iDescriptor = ::open(pFile->strTarget.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC, k_FileMode);
    }
    if (iDescriptor < 0)
        return nullptr;
    pFile->pFile = ::fdopen(iDescriptor, "wb");
    if (pFile->pFile == nullptr)
    {
        ::close(iDescriptor);
        return nullptr;
    }
    return pFile;
}

/// The permissions of the file that it replaces are the user's choice.
void matchMode(int iDescriptor, const std::string& strTarget)
{
    struct stat earlier = {};
    if (::stat(strTarget.c_str(), &earlier) == 0)
        static_cast<void>(::fchmod(iDescriptor, earlier.st_mode & 0777) == 0);
}

/// The content is on the disk before it takes the old one's name, also where the power fails.
bool finishContent(LinuxFile& file)
{
    if (file.pFile == nullptr || std::fflush(file.pFile) != 0 || ::fsync(::fileno(file.pFile)) != 0)
        return false;
    return std::ferror(file.pFile) == 0 && readTime(file.pFile, file.ui32Time);
}

} // namespace

MOXPreferencesLinux::~MOXPreferencesLinux()
{
    keepSeen(nullptr);
}

bool MOXPreferencesLinux::getPathToFile(std::string& strFolder, uint32_t ui32Domain)
{
    const std::string strBase = ui32Domain == k_ui32Machine ? machineFolder() : userFolder();
    if (strBase.empty())
        return false;
    strFolder = strBase + "/" + k_strFolderName;
    return true;
}

std::unique_ptr<MOXPreferencesFile> MOXPreferencesLinux::openFile(const std::string& strName, bool bForWrite, uint32_t ui32Domain,
                                                                  bool bAtomic, std::string& strError)
{
    strError = "Failed to open preference file.";
    std::string strFolder;
    if (!getPathToFile(strFolder, ui32Domain))
        return nullptr;
    const std::string strPath = pathOf(strFolder, strName);
    std::unique_ptr<LinuxFile> pFile = bForWrite ? nullptr : openForReading(strPath);
    if (pFile == nullptr)
    {
        if (const int iError = makeFolder(strFolder))
        {
            strError = "Failed to create the folder \"" + strFolder + "\": " + std::generic_category().message(iError) + ".";
            return nullptr;
        }
        if (bForWrite)
            pFile = openForWriting(strPath, bAtomic);
        else if (makeNewFile(strPath))
            pFile = openForReading(strPath);
    }
    if (pFile != nullptr && !bForWrite)
        keepSeen(pFile->pFile);
    if (pFile != nullptr)
        strError.clear();
    return pFile;
}

bool MOXPreferencesLinux::closeFile(MOXPreferencesFile& file, bool bAtomic)
{
    auto& linuxFile = static_cast<LinuxFile&>(file);
    if (!linuxFile.bForWrite)
        return linuxFile.close();
    if (!finishContent(linuxFile))
        return false;
    if (bAtomic)
    {
        matchMode(::fileno(linuxFile.pFile), linuxFile.strTarget);
        // Before the lock goes, for which the next process waits.
        if (::rename(linuxFile.strTemporary.c_str(), linuxFile.strTarget.c_str()) != 0)
            return false;
        linuxFile.strTemporary.clear();
        ::flock(::fileno(linuxFile.pFile), LOCK_UN); // which would last as long as any copy of the descriptor
    }
    keepSeen(linuxFile.pFile);
    return linuxFile.close();
}

bool MOXPreferencesLinux::getModificationTime(const std::string& strName, uint32_t ui32Domain, uint32_t& ui32Time)
{
    std::string strFolder;
    struct stat status = {};
    if (!getPathToFile(strFolder, ui32Domain) || ::stat(pathOf(strFolder, strName).c_str(), &status) != 0)
        return false;
    ui32Time = foldTime(status);
    return true;
}

void MOXPreferencesLinux::keepSeen(std::FILE* pFile)
{
    if (m_iSeen >= 0)
        ::close(m_iSeen);
    m_iSeen = pFile != nullptr ? ::fcntl(::fileno(pFile), F_DUPFD_CLOEXEC, 0) : -1;
}
