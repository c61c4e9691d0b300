#pragma once

#include "Common/MOXPreferencesImpl.h"

/// Preferences files below the XDG configuration folder: the user's in XDG_CONFIG_HOME, else in ".config" of the home folder; the
/// machine's in the first folder of XDG_CONFIG_DIRS, else in /etc/xdg.
///
/// A link in a file's place stays, and the file that it leads to is replaced. An atomic write waits about a second for one of another
/// process, and fails where that takes longer.
class MOXPreferencesLinux : public MOXPreferencesImpl
{
public:
    MOXPreferencesLinux() = default;
    ~MOXPreferencesLinux() override;

    [[nodiscard]] bool getPathToFile(std::string& strFolder, uint32_t ui32Domain) override;
    [[nodiscard]] std::unique_ptr<MOXPreferencesFile> openFile(const std::string& strName, bool bForWrite, uint32_t ui32Domain,
                                                               bool bAtomic, std::string& strError) override;
    [[nodiscard]] bool closeFile(MOXPreferencesFile& file, bool bAtomic) override;
    [[nodiscard]] bool getModificationTime(const std::string& strName, uint32_t ui32Domain, uint32_t& ui32Time) override;

private:
    void keepSeen(std::FILE* pFile);

    /// The file that was read or written last stays open, so that its number in the file system is no other file's: a file that
    /// takes its place then differs in that, however quickly it comes. A descriptor, or -1.
    int m_iSeen = -1;
};
