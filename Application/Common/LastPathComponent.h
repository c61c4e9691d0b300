#pragma once

#include <QtCore/QString>

/// What stands behind the last "/" or "\\" of a path, whichever comes later; all of it where there is neither, nothing behind a
/// final one.
[[nodiscard]] QString getLastPathComponent(const QString& strPath);
