#pragma once

#include <QtCore/QStringList>

#include "Common/OpenRequest.h"

/// What the program's arguments ask for, the program's own name being the first of them. On purpose: the one after it is skipped, so
/// that a single path opens nothing; two words open the second, with three the second and the third are compared. Further ones are
/// dropped.
[[nodiscard]] OpenRequest readStartUpArguments(const QStringList& arguments);
