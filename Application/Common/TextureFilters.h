#pragma once

#include <QtCore/QString>

/// Title of the dialogs that ask for a texture or image to open.
constexpr char k_acOpenSourceTitle[] = "Open Source File";

/// @return the name filters of those dialogs, in QFileDialog's form; the first takes every kind of file that the program reads
[[nodiscard]] QString getTextureOpenFilter();
