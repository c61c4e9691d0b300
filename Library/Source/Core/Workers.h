#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace moxtexture
{

/// The number of processors that work is divided for, 1 or more: the machine's own unless setProcessorCount has been told another.
[[nodiscard]] uint32_t getProcessorCount();

/// Sets the count for the whole process; 0 brings the machine's own back.
///
/// For the start of a program and for tests: results that depend on the division of work change with it. Any thread may call it.
void setProcessorCount(uint32_t uiCount);

/// Calls task(0) to task(uiTaskCount - 1), each once, on up to uiThreadCount threads, and returns when all have ended.
///
/// Tasks start in the order of their numbers; with a thread count of 0 or 1 they run on the calling thread.
/// A task must not throw.
void runTasks(size_t uiTaskCount, uint32_t uiThreadCount, const std::function<void(size_t)>& task);

} // namespace moxtexture
