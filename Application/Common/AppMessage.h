#pragma once

#include "Common/OpenRequest.h"

/// Reads a message that came through the local socket: the program's name alone asks for nothing but the window, two paths joined
/// by "$!?" are opened and compared, anything else is one path. The window is to be raised after each of them.
///
/// Parts may be empty, and those behind the second are dropped.
[[nodiscard]] OpenRequest readAppMessage(const QString& strMessage);
