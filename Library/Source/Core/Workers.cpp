#include "Core/Workers.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <thread>
#include <vector>

namespace moxtexture
{
namespace
{

/// 0: the machine's own. The one number here that a process keeps, since every division of work must see the same one.
std::atomic<uint32_t> g_uiProcessorCount{0};

} // namespace

uint32_t getProcessorCount()
{
    const uint32_t uiCount = g_uiProcessorCount;
    return uiCount != 0 ? uiCount : std::max(1u, std::thread::hardware_concurrency());
}

void setProcessorCount(uint32_t uiCount)
{
    g_uiProcessorCount = uiCount;
}

void runTasks(size_t uiTaskCount, uint32_t uiThreadCount, const std::function<void(size_t)>& task)
{
    std::atomic<size_t> uiNext{0};
    const auto work = [&]
    {
        for (size_t i = uiNext++; i < uiTaskCount; i = uiNext++)
            task(i);
    };

    const size_t uiHelperCount = std::min<size_t>(std::max(1u, uiThreadCount), uiTaskCount) - (uiTaskCount > 0 ? 1 : 0);
    std::vector<std::thread> helpers;
    helpers.reserve(uiHelperCount);
    try
    {
        for (size_t i = 0; i < uiHelperCount; ++i)
            helpers.emplace_back(work);
    }
    catch (const std::exception&)
    {
        // No more threads or memory to be had: those that run do all of it.
    }
    work();
    for (std::thread& helper : helpers)
        helper.join();
}

} // namespace moxtexture
