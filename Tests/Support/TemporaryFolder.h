#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace testsupport
{

/// A folder of a test's own, gone with all that is in it when the test ends.
class CTemporaryFolder
{
public:
    CTemporaryFolder()
    {
        std::string strName = (std::filesystem::temp_directory_path() / "halvane-test-XXXXXX").string();
        if (::mkdtemp(strName.data()) == nullptr)
            std::abort();
        m_Path = strName;
    }
    CTemporaryFolder(const CTemporaryFolder&) = delete;
    CTemporaryFolder& operator=(const CTemporaryFolder&) = delete;
    ~CTemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_Path, ignored);
    }

    std::string path() const { return m_Path.string(); }
    /// The path of a name in the folder, whether there is such a file or not.
    std::string path(const std::string& strName) const { return (m_Path / strName).string(); }

    /// Makes a file; @return its path
    std::string write(const std::string& strName, const std::vector<uint8_t>& bytes) const
    {
        std::ofstream(m_Path / strName, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return path(strName);
    }
    std::string write(const std::string& strName, const std::string& strText) const
    {
        return write(strName, std::vector<uint8_t>(strText.begin(), strText.end()));
    }

    /// How many files, folders and links are in the folder itself.
    size_t count() const
    {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(m_Path), std::filesystem::directory_iterator()));
    }

private:
    std::filesystem::path m_Path;
};

/// All bytes of a file; none if it cannot be read.
inline std::vector<uint8_t> readBytes(const std::string& strPath)
{
    std::ifstream stream(strPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

inline std::string readText(const std::string& strPath)
{
    const std::vector<uint8_t> bytes = readBytes(strPath);
    return {bytes.begin(), bytes.end()};
}

} // namespace testsupport
