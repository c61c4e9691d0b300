#pragma once

#include <new>
#include <utility>

/// Runs what a command does. No exception may leave a slot, and memory refused on the way is a failure like any other.
/// @return false if memory was refused; what was done until then stays
template <typename Work>
[[nodiscard]] bool runWithinMemory(Work&& work)
{
    try
    {
        std::forward<Work>(work)();
        return true;
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}
