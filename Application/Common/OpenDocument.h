#pragma once

#include <functional>

#include <QtCore/QString>

class Preferences;
class QWidget;

/// Hands a local file to the desktop; @return whether it took it.
using DocumentOpener = std::function<bool(const QString& strPath)>;

/// Opens a local file by the program that the desktop has for it. @return false where there is none
[[nodiscard]] bool openLocalFile(const QString& strPath);

/// Opens one of the program's documents. Where it was found by hand before is tried first, then the working folder, the folder
/// given, and the package's data folder. If all fail the user is asked to locate it, until a file opens or the user gives up; the
/// file that opened is remembered.
///
/// @param pPreferences    may be null: then nothing is remembered
/// @param strFolder       relative to the program's own folder
/// @param strSettingName  tells this document's place in the preferences from that of others
void openDocument(QWidget* pParent, Preferences* pPreferences, const QString& strFileName, const QString& strFolder,
                  const QString& strSettingName, const DocumentOpener& opener = openLocalFile);
