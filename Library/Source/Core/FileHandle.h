#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace moxtexture
{

/// An open file, closed with its owner. Paths are bytes, UTF-8 from the program, and go to the system as they are.
class CFileHandle
{
public:
    CFileHandle() = default;

    /// Opens a regular file for reading in binary mode. Anything else (a folder, a pipe, a device) counts as not to be opened:
    /// whoever reads a file here needs its size and seeks in it. Never waits, not even for a pipe without a writer.
    [[nodiscard]] static CFileHandle openForReading(const std::string& strPath);

    /// Opens a file for writing in binary mode; an earlier one is emptied.
    [[nodiscard]] static CFileHandle openForWriting(const std::string& strPath);

    [[nodiscard]] bool isOpen() const { return m_pFile != nullptr; }
    [[nodiscard]] std::FILE* get() const { return m_pFile.get(); }

    /// Closes the file, which writes what is still kept back.
    /// @return false if that, or any write before it, failed
    [[nodiscard]] bool close();

private:
    struct Close
    {
        void operator()(std::FILE* pFile) const { std::fclose(pFile); }
    };

    explicit CFileHandle(std::FILE* pFile) : m_pFile(pFile) {}

    std::unique_ptr<std::FILE, Close> m_pFile;
};

/// True if the path leads to something that may be opened for reading, be it a file or not.
[[nodiscard]] bool canOpenForReading(const std::string& strPath);

/// True if the path, links followed, leads to a regular file.
[[nodiscard]] bool isRegularFile(const std::string& strPath);

/// The end of writing a file: closes it, and removes it if anything failed. A device that was written to is not removed.
///
/// @param bWritten  false if the writer knows of a failure
/// @param strPath   where the file was opened
/// @return true if the whole file is there
[[nodiscard]] bool finishWriting(CFileHandle& file, bool bWritten, const std::string& strPath);

/// Writes a file straight to a path; an earlier one there is emptied first.
///
/// @param write  called with the open std::FILE*; gives false if anything failed
/// @return false if the file cannot be opened (write is not called then) or is not there as a whole, see finishWriting()
template <typename Write>
[[nodiscard]] bool writeFile(const std::string& strPath, Write write)
{
    CFileHandle file = CFileHandle::openForWriting(strPath);
    if (!file.isOpen())
        return false;
    const bool bWritten = write(file.get());
    return finishWriting(file, bWritten, strPath);
}

/// Bytes of an open file. The file stands at its start then.
/// @return false for what has no end to seek to
[[nodiscard]] bool getFileSize(std::FILE* pFile, uint64_t& ui64Size);

/// All bytes of an open file, whatever its position.
///
/// What a file claims to hold is touched no faster than it arrives: one that claims much and delivers little takes little.
/// @param ui64MostBytes  a longer file is refused unread; a file with a hole in it is of any length, yet takes no room on the disk
/// @return false, with an empty vector, for a file that is too long or delivers less than its size. Where the memory is refused it
///         throws std::bad_alloc
[[nodiscard]] bool readWholeFile(std::FILE* pFile, std::vector<uint8_t>& bytes, uint64_t ui64MostBytes = UINT64_MAX);

} // namespace moxtexture
