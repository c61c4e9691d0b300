#pragma once

#include <cstddef>

// HALVANE_SANITISED is set where AddressSanitizer is built in.
#if defined(__SANITIZE_ADDRESS__)
#define HALVANE_SANITISED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HALVANE_SANITISED
#endif
#endif

namespace testsupport
{

/// How many cases a comparison with slow plain loops goes through: a sixth under the sanitisers, where the loops take many times
/// as long, and which look for other faults than wrong results. Never 0.
constexpr size_t fewerIfSanitised(size_t uiCount)
{
#ifdef HALVANE_SANITISED
    return (uiCount + 5) / 6;
#else
    return uiCount;
#endif
}

} // namespace testsupport
