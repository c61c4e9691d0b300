#pragma once

#include <cstddef>

namespace testsupport
{

/// Bytes of the largest block that operator new was asked for in this program since the number was last set.
size_t& getLargestRequest();

} // namespace testsupport
