#include "CommandLine/OutputsInFlight.h"

#include <filesystem>
#include <system_error>

#include "Core/OutputFile.h"

namespace moxtexture
{

bool COutputsInFlight::write(const std::string& strPath, const std::function<bool(const std::string&)>& write, std::string& strReason)
{
    // Making the folder and listing it are one step for abandon(), and so are taking it off the list and removing it.
    std::unique_lock<std::mutex> lock(m_Mutex);
    if (m_bAbandoned)
    {
        strReason = "interrupted";
        return false;
    }
    COutputFile file(strPath);
    const std::string strFolder = file.getFolder();
    m_Folders.insert(strFolder);
    lock.unlock();

    const bool bInPlace = file.writeBy(write);
    strReason = file.getReason();

    lock.lock();
    m_Folders.erase(strFolder);
    return bInPlace;
}

void COutputsInFlight::abandon()
{
    const std::lock_guard<std::mutex> lock(m_Mutex);
    m_bAbandoned = true;
    for (const std::string& strFolder : m_Folders)
    {
        if (strFolder.empty())
            continue; // a target that could not be begun

        // A writer may make its file between the removal of what was there and that of the folder; it can do so only once.
        std::error_code error;
        for (int iTry = 0; iTry < 3 && (iTry == 0 || error); ++iTry)
            std::filesystem::remove_all(strFolder, error);
    }
}

} // namespace moxtexture
