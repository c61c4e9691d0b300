#include "Core/PrivateTemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace moxtexture
{
namespace
{

namespace fs = std::filesystem;

/// @return empty if no folder can be made in there
std::string makeFolderIn(const char* strParent)
{
    if (strParent == nullptr || *strParent == '\0')
        return {};
    // Absolute, so that a change of the working folder does not lose it.
    std::error_code error;
    const fs::path parent = fs::absolute(strParent, error);
    std::string strFolder = (parent / "halvane-XXXXXX").string();
    return !error && ::mkdtemp(strFolder.data()) != nullptr ? strFolder : "";
}

} // namespace

CPrivateTemporaryFolder::CPrivateTemporaryFolder()
{
    for (const char* strVariable : {"TEMP", "TMP", "TMPDIR"})
        if (m_strPath.empty())
            m_strPath = makeFolderIn(std::getenv(strVariable));
    if (m_strPath.empty())
        m_strPath = makeFolderIn("/tmp");
    if (m_strPath.empty())
        return;

    const char* pOldTemp = std::getenv("TEMP");
    m_bHadTemp = pOldTemp != nullptr;
    m_strOldTemp = m_bHadTemp ? pOldTemp : "";
    ::setenv("TEMP", m_strPath.c_str(), 1);
}

CPrivateTemporaryFolder::~CPrivateTemporaryFolder()
{
    if (m_strPath.empty())
        return;
    remove();
    if (m_bHadTemp)
        ::setenv("TEMP", m_strOldTemp.c_str(), 1);
    else
        ::unsetenv("TEMP");
}

void CPrivateTemporaryFolder::remove() const
{
    if (m_strPath.empty())
        return;
    // Other threads may still make a file in there while it is emptied, but not for long.
    constexpr int iMostTries = 10;
    std::error_code error;
    for (int i = 0; i < iMostTries && (i == 0 || error); ++i)
        fs::remove_all(m_strPath, error);
}

} // namespace moxtexture
