#pragma once

#include <QtCore/QString>

class QWidget;

/// What a save dialog shows.
struct SaveQuestion
{
    QString strTitle;
    QString strStart;  ///< the path proposed
    QString strFilter; ///< name filters in QFileDialog's form
    QString strSelectedFilter;
};

/// Asks for a file to write. A name without a point gets strEnding, or where that is empty the extension of the filter chosen; where
/// a file of the completed name exists, which the dialog could not ask about, that is asked here.
/// @return the path, empty after a cancel
[[nodiscard]] QString askSaveName(QWidget* pParent, const SaveQuestion& question, const QString& strEnding = QString());
