#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

/// A preferences file that is open. Its destructor closes it; what was written and not closed with success is dropped.
struct MOXPreferencesFile
{
    MOXPreferencesFile() = default;
    MOXPreferencesFile(const MOXPreferencesFile&) = delete;
    MOXPreferencesFile& operator=(const MOXPreferencesFile&) = delete;
    virtual ~MOXPreferencesFile() = default;

    std::FILE* pFile = nullptr; ///< null where nothing could be opened
    /// The file's time in the sense of getModificationTime(): of what is read, from before its first byte is; of what was written,
    /// once it is closed.
    uint32_t ui32Time = 0;
};

/// Where preferences files lie and how they are replaced: the file layer, with one implementation per platform.
///
/// A file is named by its base name, without folder and extension. The domain is 1 for the machine's file, anything else for the
/// user's.
class MOXPreferencesImpl
{
public:
    MOXPreferencesImpl() = default;
    MOXPreferencesImpl(const MOXPreferencesImpl&) = delete;
    MOXPreferencesImpl& operator=(const MOXPreferencesImpl&) = delete;

    /// The folder of the settings, in UTF-8 and without a separator at its end, whether it exists or not.
    /// @return false if there is no such folder for this user
    [[nodiscard]] virtual bool getPathToFile(std::string& strFolder, uint32_t ui32Domain) = 0;

    /// Opens a file. For reading, one that is missing is made from the template of a new file, and its folder with it.
    ///
    /// @param bForWrite  for writing; what is written takes the old content's place
    /// @param bAtomic    writes go to a file beside it until closeFile() puts that in its place
    /// @param strError   takes the reason where nothing could be opened
    /// @return null, or a handle with a null pFile, then
    [[nodiscard]] virtual std::unique_ptr<MOXPreferencesFile> openFile(const std::string& strName, bool bForWrite, uint32_t ui32Domain,
                                                                       bool bAtomic, std::string& strError) = 0;

    /// Ends reading, or writing with the same bAtomic as at its start.
    /// @return false if anything of what was written did not reach its place: with bAtomic the old file is whole then
    [[nodiscard]] virtual bool closeFile(MOXPreferencesFile& file, bool bAtomic) = 0;

    /// A number that differs after every change of the file.
    /// @return false, with ui32Time as it was, if there is no file
    [[nodiscard]] virtual bool getModificationTime(const std::string& strName, uint32_t ui32Domain, uint32_t& ui32Time) = 0;

    virtual ~MOXPreferencesImpl() = default;
};
