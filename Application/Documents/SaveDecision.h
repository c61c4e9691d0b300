#pragma once

#include <cstdint>

#include <QtCore/QString>

/// How a save ended, as the windows' save functions tell it.
enum ESaveResult : int
{
    eSaveCancelled = -1,
    eSaveFailed = 0,
    eSaveDone = 1,
};

/// What a save does with a file name.
enum class ESaveRoad : uint32_t
{
    eAskForName,   ///< not a name that save() writes to
    eWriteNothing, ///< the name is taken over, no file is written
    eWriteLegacy,
    eWrite,
};

/// The text behind the last point of a name; empty without a point or with a final one. Case stays as it is.
[[nodiscard]] QString getSaveExtension(const QString& strName);

/// "mox", "dds" and "ktx", in lower case only: on purpose, though the writers take any case.
[[nodiscard]] bool isSaveExtension(const QString& strExtension);

/// eWrite or eAskForName.
[[nodiscard]] ESaveRoad decideSave(const QString& strName);

/// Of the name chosen in a save dialog: eWrite, eWriteLegacy or eWriteNothing.
[[nodiscard]] ESaveRoad decideSaveAs(const QString& strChosenName, bool bLegacy);

/// A chosen name whose last component has no point gets the extension of the filter, "Khronos Textures (*.ktx)": the text from
/// the filter's last point to its last ")".
[[nodiscard]] QString addFilterExtension(const QString& strChosenName, const QString& strFilter);

/// Where a save dialog starts: the path proposed for a document.
///
/// @param strName      path or generated name of the document
/// @param strEnding    with its point, ".mox"
/// @param strSavePath  the folder to take where the document's own does not exist
/// @return the folder, "/", the last component without its extension, and strEnding. An extension is three or four letters or digits
///         behind the last point; a name without one counts up to its first point
[[nodiscard]] QString suggestSaveName(const QString& strName, const QString& strEnding, const QString& strSavePath);
