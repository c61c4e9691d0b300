#pragma once

#include <string>

class Preferences;

/// Where file dialogs start: folders that are remembered under "FileIO/LoadPath", "FileIO/SavePath", "FileIO/FontPath" and
/// "FileIO/TextPath".

/// @param strKey  the whole key
/// @return empty if nothing is remembered, or without preferences
[[nodiscard]] std::string getFileIOPath(const Preferences* pPreferences, const std::string& strKey);

/// Remembers the folder of a file's path, that is what stands before its last separator; nothing is remembered without preferences.
/// The preferences are not saved.
void setFileIOPath(Preferences* pPreferences, const std::string& strKey, const std::string& strPath);
