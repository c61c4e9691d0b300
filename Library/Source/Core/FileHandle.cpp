#include "Core/FileHandle.h"

#include <algorithm>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace moxtexture
{
namespace
{

/// @return a descriptor, or -1
int openDescriptor(const std::string& strPath)
{
    // Non-blocking matters only to pipes, where opening would wait for somebody to write.
    return ::open(strPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
}

bool isRegular(const struct stat& status)
{
    return S_ISREG(status.st_mode);
}

} // namespace

CFileHandle CFileHandle::openForReading(const std::string& strPath)
{
    const int iDescriptor = openDescriptor(strPath);
    if (iDescriptor < 0)
        return {};
    struct stat status = {};
    std::FILE* pFile = ::fstat(iDescriptor, &status) == 0 && isRegular(status) ? ::fdopen(iDescriptor, "rb") : nullptr;
    if (pFile == nullptr)
        ::close(iDescriptor);
    return CFileHandle(pFile);
}

CFileHandle CFileHandle::openForWriting(const std::string& strPath)
{
    return CFileHandle(std::fopen(strPath.c_str(), "wbe"));
}

bool CFileHandle::close()
{
    if (!m_pFile)
        return false;
    std::FILE* pFile = m_pFile.release();
    const bool bGood = std::ferror(pFile) == 0;
    return std::fclose(pFile) == 0 && bGood;
}

bool canOpenForReading(const std::string& strPath)
{
    const int iDescriptor = openDescriptor(strPath);
    if (iDescriptor < 0)
        return false;
    ::close(iDescriptor);
    return true;
}

bool isRegularFile(const std::string& strPath)
{
    struct stat status = {};
    return ::stat(strPath.c_str(), &status) == 0 && isRegular(status);
}

bool finishWriting(CFileHandle& file, bool bWritten, const std::string& strPath)
{
    if (file.close() && bWritten)
        return true;
    if (isRegularFile(strPath))
        std::remove(strPath.c_str());
    return false;
}

bool getFileSize(std::FILE* pFile, uint64_t& ui64Size)
{
    if (::fseeko(pFile, 0, SEEK_END) != 0)
        return false;
    const off_t iEnd = ::ftello(pFile);
    if (iEnd < 0 || ::fseeko(pFile, 0, SEEK_SET) != 0)
        return false;
    ui64Size = static_cast<uint64_t>(iEnd);
    return true;
}

bool readWholeFile(std::FILE* pFile, std::vector<uint8_t>& bytes, uint64_t ui64MostBytes)
{
    constexpr size_t uiStep = 1 << 20;
    bytes.clear();
    uint64_t ui64Size = 0;
    // The end that a folder claims to have is beyond what a vector may hold.
    if (!getFileSize(pFile, ui64Size) || ui64Size > ui64MostBytes || ui64Size > bytes.max_size() - 1)
        return false;
    bytes.reserve(ui64Size); // addresses, no memory yet
    while (bytes.size() != ui64Size)
    {
        const size_t uiStart = bytes.size();
        const size_t uiCount = std::min<size_t>(uiStep, ui64Size - uiStart);
        bytes.resize(uiStart + uiCount);
        if (std::fread(bytes.data() + uiStart, 1, uiCount, pFile) != uiCount)
        {
            std::vector<uint8_t>().swap(bytes);
            return false;
        }
    }
    return true;
}

} // namespace moxtexture
