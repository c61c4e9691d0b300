#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace moxtexture
{

/// The number of processors that this process may use, 1 or more.
[[nodiscard]] uint32_t getProcessorCount();

/// Calls task(0) to task(uiTaskCount - 1), each once, on up to uiThreadCount threads, and returns when all have ended.
///
/// Tasks start in the order of their numbers; with a thread count of 0 or 1 they run on the calling thread.
/// A task must not throw.
void runTasks(size_t uiTaskCount, uint32_t uiThreadCount, const std::function<void(size_t)>& task);

} // namespace moxtexture
