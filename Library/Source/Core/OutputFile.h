#pragma once

#include <functional>
#include <string>

namespace moxtexture
{

/// Writing a file so that an earlier one of that name survives any failure.
///
/// The file is made under its own name in a private folder beside the target, checked, and renamed into place:
///
///     COutputFile output(getSavedPath(strPath));
///     if (!output.writeBy([&](const std::string& strWritePath) { return saveTexture(texture, strWritePath); }))
///         return false; // output.getReason() tells what went wrong, unless it was the saving
///
/// Where the target is a link, the link stays and the file that it leads to is replaced. Only regular files are replaced.
/// One thread uses it; the target's folder may change hands meanwhile without harm.
class COutputFile
{
public:
    /// A further check of the finished file, which may give a reason for its refusal.
    using Check = std::function<bool(const std::string& strWrittenPath, std::string& strReason)>;

    /// Makes the private folder (mode 0700), which nothing else may read or write.
    explicit COutputFile(const std::string& strTargetPath);
    COutputFile(const COutputFile&) = delete;
    COutputFile& operator=(const COutputFile&) = delete;
    /// Removes the private folder with all that is in it; a target that was not committed to stays as it was.
    ~COutputFile();

    /// False if nothing can be written for that target; getReason() tells why.
    [[nodiscard]] bool isReady() const { return !m_strFolder.empty(); }
    /// One line without a full stop; empty while nothing has failed here.
    [[nodiscard]] const std::string& getReason() const { return m_strReason; }
    /// Where to write: a file that does not exist yet, of the target's name as it was given.
    [[nodiscard]] const std::string& getWritePath() const { return m_strWritePath; }
    /// The private folder, for whoever must remove it when the process is told to stop; empty where there is none.
    [[nodiscard]] const std::string& getFolder() const { return m_strFolder; }

    /// Puts the written file in place of the target and removes the private folder. The file must be a regular one that is not
    /// empty and passes the check. Where it replaces an earlier file it is on the disk before it takes that file's name, and has
    /// its permissions; without one it has those that its writer gave it.
    /// @return false with a reason; the target is as it was then
    [[nodiscard]] bool commit(const Check& check = nullptr);

    /// All of it in one: lets write make the file at the path that it is given, and puts it in place where that gave true.
    /// @return false with the target as it was; without a reason where only write knows it
    [[nodiscard]] bool writeBy(const std::function<bool(const std::string& strWritePath)>& write);

private:
    bool prepare(const std::string& strTargetPath);
    bool finish(const Check& check);
    bool matchEarlierFile(int iDescriptor, bool& bReplaces);
    bool fail(std::string strReason);
    bool failWith(const std::string& strWhat, int iError);
    void removeFolder();

    std::string m_strTarget; // links resolved
    std::string m_strFolder;
    std::string m_strWritePath;
    std::string m_strReason;
};

} // namespace moxtexture
