#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QMimeData;

/// Formats of a file that is dropped by its contents, as from a mail client, and is on no disk yet.
constexpr char k_acFileDescriptorFormat[] = "application/x-qt-windows-mime;value=\"FileGroupDescriptor\"";
constexpr char k_acFileContentsFormat[] = "application/x-qt-windows-mime;value=\"FileContents\"";

/// Both formats are there.
[[nodiscard]] bool hasVirtualFile(const QMimeData& data);

/// The name of the first file that a descriptor tells of: the single-byte text of up to 260 bytes at byte 76, to the first zero.
///
/// What is dropped is as hostile as any file: of a path only the last component counts, whichever separator it has.
/// @return empty where that is no name for a file of a folder: nothing, "." or ".."
[[nodiscard]] QString getDescriptorFileName(const QByteArray& descriptor);

/// Writes a file into a fresh folder below the process's folder for temporary files, where it stays.
///
/// @param strName  without a path
/// @return its path; empty without a name, or where the folder or the file can't be made
[[nodiscard]] QString storeDroppedFile(const QString& strName, const QByteArray& contents);
