#pragma once

#include <string>

namespace moxtexture
{

/// A folder for this process's temporary files, which nobody else may look into (mode 0700), so that no name that can be guessed
/// stands in a folder that others write to.
///
/// It is made inside the folder that TEMP or TMP names, the first of them in which that works, else inside the system's temporary
/// folder; then TEMP names it for this process and its children. To be made before threads start, as it changes the environment.
class CPrivateTemporaryFolder
{
public:
    CPrivateTemporaryFolder();
    CPrivateTemporaryFolder(const CPrivateTemporaryFolder&) = delete;
    CPrivateTemporaryFolder& operator=(const CPrivateTemporaryFolder&) = delete;
    /// Removes the folder and gives TEMP its old value.
    ~CPrivateTemporaryFolder();

    /// Absolute; empty if none could be made, with TEMP as it was.
    [[nodiscard]] const std::string& getPath() const { return m_strPath; }

    /// Removes the folder with all that is in it, for a process that is about to end without destructors. Any thread may call it.
    void remove() const;

private:
    std::string m_strPath;
    std::string m_strOldTemp;
    bool m_bHadTemp = false;
};

} // namespace moxtexture
