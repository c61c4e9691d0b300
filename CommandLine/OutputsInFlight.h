#pragma once

#include <functional>
#include <mutex>
#include <set>
#include <string>

namespace moxtexture
{

/// The output files that are being written: each appears under its name whole or not at all, also where the program is
/// interrupted. Any thread may call it.
class COutputsInFlight
{
public:
    /// Lets write make a file in a private folder beside strPath, and moves it into place when that succeeded.
    ///
    /// @param write  takes the path of the file to make and gives false for failure
    /// @param strReason  takes what went wrong, and nothing where that is known to write alone
    /// @return false if the file could not be made or put in place; an earlier file at strPath stands as it was then
    [[nodiscard]] bool write(const std::string& strPath, const std::function<bool(const std::string&)>& write, std::string& strReason);

    /// Removes all that is half written; no file is begun any more. For a process that is about to end.
    void abandon();

private:
    std::mutex m_Mutex;
    std::set<std::string> m_Folders;
    bool m_bAbandoned = false;
};

} // namespace moxtexture
