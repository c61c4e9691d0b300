#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class MOXPreferencesImpl;

/// A user's settings: a property list in one file per application, kept in memory as a parsed document.
///
/// Keys are paths of dictionaries, "Main/State": empty pieces count for nothing, so "/Main//State/" is the same. A getter that
/// does not end in eDone leaves its output as it is, or writes the default where one is given, so that a caller can preset a
/// field and read over it. Setters make the dictionaries that are missing, and change an existing value's type to theirs.
/// The file is written by save() alone. While it is watched and nothing is unsaved, every access first reads it anew where another
/// process has changed it; as long as that cannot be read, accesses end in eNoDocument, and the values stay for when it can be.
///
/// Copies share one document and all that is noted about it. For the main thread only.
class Preferences
{
public:
    enum EResult
    {
        eDone,
        eKeyNotFound,
        eEmptyKey,
        eTypeMismatch, ///< another type than asked for, or a value that cannot be read
        eNoDocument    ///< not loaded, or the file has changed into one that cannot be loaded
    };

    /// @param strApplicationName  the file's base name
    /// @param ui32Domain          1 for the settings of the machine, anything else for those of the user
    explicit Preferences(const std::string& strApplicationName, uint32_t ui32Domain = 0);
    /// With a file layer of its own; null means that nothing can be loaded or saved.
    Preferences(const std::string& strApplicationName, uint32_t ui32Domain, std::unique_ptr<MOXPreferencesImpl> pImpl);

    /// Reads the file, which is made where it is missing. A file that is no property list at all loads as an empty one; one that
    /// cannot be read, or is larger than settings ever are, does not load.
    ///
    /// @param strError  takes what to show; empty after success
    /// @param bWatch    notice later changes of the file
    /// @return false if there is no file to be had, or the list's structure is wrong; there are no settings then, and save() leaves
    ///         the file alone
    [[nodiscard]] bool load(std::string& strError, bool bWatch);

    /// Writes what is unsaved, or everything if forced. The old file is whole until the new one takes its place at once.
    /// @return false if that failed, or nothing is loaded; what was unsaved stays so
    bool save(bool bForce = false);

    EResult getText(const std::string& strKey, std::string& strValue) const;
    EResult getInt(const std::string& strKey, int32_t& i32Value) const;
    EResult getUint(const std::string& strKey, uint32_t& ui32Value) const;
    EResult getReal(const std::string& strKey, double& dValue) const;
    EResult getBool(const std::string& strKey, bool& bValue) const;

    EResult getText(const std::string& strKey, std::string& strValue, const std::string& strDefault) const;
    EResult getInt(const std::string& strKey, int32_t& i32Value, int32_t i32Default) const;
    EResult getUint(const std::string& strKey, uint32_t& ui32Value, uint32_t ui32Default) const;
    EResult getReal(const std::string& strKey, double& dValue, double dDefault) const;
    EResult getBool(const std::string& strKey, bool& bValue, bool bDefault) const;

    EResult getData(const std::string& strKey, std::vector<uint8_t>& bytes) const;
    EResult getTextArray(const std::string& strKey, std::vector<std::string>& values) const;
    EResult getIntArray(const std::string& strKey, std::vector<int32_t>& values) const;
    EResult getUintArray(const std::string& strKey, std::vector<uint32_t>& values) const;
    EResult getRealArray(const std::string& strKey, std::vector<double>& values) const;
    EResult getBoolArray(const std::string& strKey, std::vector<bool>& values) const;

    EResult setText(const std::string& strKey, const std::string& strValue);
    EResult setInt(const std::string& strKey, int32_t i32Value);
    EResult setUint(const std::string& strKey, uint32_t ui32Value);
    EResult setReal(const std::string& strKey, double dValue);
    EResult setBool(const std::string& strKey, bool bValue);

    EResult setData(const std::string& strKey, const uint8_t* pui8Bytes, size_t uiSize);
    EResult setTextArray(const std::string& strKey, const std::vector<std::string>& values);
    EResult setIntArray(const std::string& strKey, const std::vector<int32_t>& values);
    EResult setUintArray(const std::string& strKey, const std::vector<uint32_t>& values);
    EResult setRealArray(const std::string& strKey, const std::vector<double>& values);
    EResult setBoolArray(const std::string& strKey, const std::vector<bool>& values);

private:
    struct Shared;

    std::shared_ptr<Shared> m_pShared;
};
