#pragma once

#include <cstdio>

namespace moxtexture
{

/// Where the program's own error lines and progress go: standard error.
[[nodiscard]] std::FILE* getErrorStream();

/// From here on what libraries write to `stderr` is dropped: an error of this program is one line, and its own. (The PNG library
/// tells of every broken file there, and Qt gives no way to stop it.) What goes to the descriptor itself still gets through.
void dropErrorsOfLibraries();

} // namespace moxtexture
