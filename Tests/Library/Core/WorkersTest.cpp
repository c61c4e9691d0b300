#include "Core/Workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <numeric>
#include <set>
#include <thread>
#include <vector>

#include "Support/ProcessorCount.h"

using namespace moxtexture;

TEST(ProcessorCount, IsOneOrMore)
{
    EXPECT_GE(getProcessorCount(), 1u);
}

TEST(ProcessorCount, IsWhatWasSetUntilZeroBringsTheMachinesOwnBack)
{
    const uint32_t uiOwn = getProcessorCount();
    {
        const testsupport::CProcessorCount six(6);
        EXPECT_EQ(6u, getProcessorCount());
        setProcessorCount(1000);
        EXPECT_EQ(1000u, getProcessorCount()) << "more than the machine has";
    }
    EXPECT_EQ(uiOwn, getProcessorCount());
}

TEST(ProcessorCount, IsTheSameOnEveryThread)
{
    const testsupport::CProcessorCount three(3);
    std::vector<uint32_t> counts(8);
    runTasks(counts.size(), 4, [&](size_t i) { counts[i] = getProcessorCount(); });
    EXPECT_EQ(std::vector<uint32_t>(8, 3), counts);
}

TEST(RunTasks, CallsEveryTaskOnceWithAnyNumberOfThreads)
{
    for (const uint32_t uiThreads : {0u, 1u, 2u, 3u, 8u, 50u})
        for (const size_t uiTasks : {size_t{0}, size_t{1}, size_t{2}, size_t{7}, size_t{1000}})
        {
            std::vector<std::atomic<int>> counts(uiTasks);
            runTasks(uiTasks, uiThreads, [&](size_t i) { ++counts.at(i); });
            for (size_t i = 0; i < uiTasks; ++i)
                ASSERT_EQ(1, counts[i]) << "task " << i << " of " << uiTasks << " on " << uiThreads << " threads";
        }
}

TEST(RunTasks, StaysOnTheCallingThreadInOrderWhereItMayNotHaveMore)
{
    for (const uint32_t uiThreads : {0u, 1u})
    {
        std::vector<size_t> order;
        runTasks(5, uiThreads,
                 [&, caller = std::this_thread::get_id()](size_t i)
                 {
                     EXPECT_EQ(caller, std::this_thread::get_id());
                     order.push_back(i);
                 });
        EXPECT_EQ((std::vector<size_t>{0, 1, 2, 3, 4}), order);
    }
}

TEST(RunTasks, RunsAsManyTasksAtATimeAsItMayHaveThreads)
{
    // Each task waits for all the others: this ends only if all four run at the same time.
    constexpr size_t uiTasks = 4;
    std::mutex mutex;
    std::condition_variable arrived;
    std::set<std::thread::id> threads;
    runTasks(uiTasks, uiTasks,
             [&](size_t)
             {
                 std::unique_lock<std::mutex> lock(mutex);
                 threads.insert(std::this_thread::get_id());
                 arrived.notify_all();
                 arrived.wait(lock, [&] { return threads.size() == uiTasks; });
             });
    EXPECT_EQ(uiTasks, threads.size());
}

TEST(RunTasks, ReturnsOnlyWhenAllTasksHaveEnded)
{
    std::vector<uint32_t> results(64);
    runTasks(results.size(), 4, [&](size_t i) { results[i] = static_cast<uint32_t>(i) + 1; });
    EXPECT_EQ(64u * 65 / 2, std::accumulate(results.begin(), results.end(), 0u)); // read without a lock
}
