#include "Core/SignalWatcher.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

using namespace moxtexture;

namespace
{

constexpr int k_aiWatched[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};

/// For a process of its own: sends itself the signals and never returns unless the watcher ends it.
[[noreturn]] void watchAndSend(std::initializer_list<int> signals)
{
    const CSignalWatcher watcher([](int iSignal) { _exit(128 + iSignal); });
    for (const int iSignal : signals)
        kill(getpid(), iSignal);
    for (;;)
        pause();
}

sigset_t getMask()
{
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    return mask;
}

} // namespace

TEST(SignalWatcherDeathTest, HandsOverEachOfItsSignals)
{
    for (const int iSignal : k_aiWatched)
        EXPECT_EXIT(watchAndSend({iSignal}), testing::ExitedWithCode(128 + iSignal), "") << iSignal;
}

TEST(SignalWatcherDeathTest, LeavesASignalIgnoredThatWasIgnoredBefore)
{
    const auto watch = []
    {
        std::signal(SIGHUP, SIG_IGN);
        watchAndSend({SIGHUP, SIGTERM});
    };
    EXPECT_EXIT(watch(), testing::ExitedWithCode(128 + SIGTERM), "");
}

TEST(SignalWatcherDeathTest, LeavesOtherSignalsTheirUsualEffect)
{
    EXPECT_EXIT(watchAndSend({SIGUSR2}), testing::KilledBySignal(SIGUSR2), "");
}

TEST(SignalWatcher, GivesTheMaskBackAndEndsItsThread)
{
    const sigset_t before = getMask();
    {
        const CSignalWatcher watcher([](int) { ADD_FAILURE(); });
        const sigset_t during = getMask();
        for (const int iSignal : k_aiWatched)
            EXPECT_EQ(1, sigismember(&during, iSignal)) << iSignal;
        EXPECT_EQ(0, sigismember(&during, SIGUSR2));
    }
    const sigset_t after = getMask();
    for (int iSignal = 1; iSignal < 32; ++iSignal)
        EXPECT_EQ(sigismember(&before, iSignal), sigismember(&after, iSignal)) << iSignal;
}

TEST(SignalWatcherDeathTest, LetsAProcessThatIsForkedDieOfThem)
{
    for (const int iSignal : k_aiWatched)
    {
        const auto forkAndSend = [iSignal]
        {
            const CSignalWatcher watcher([](int) { _exit(1); });
            const pid_t child = fork();
            if (child == 0)
                for (;;)
                    pause();
            kill(child, iSignal);
            int iState = 0;
            waitpid(child, &iState, 0);
            _exit(WIFSIGNALED(iState) && WTERMSIG(iState) == iSignal ? 0 : 2);
        };
        EXPECT_EXIT(forkAndSend(), testing::ExitedWithCode(0), "") << iSignal;
    }
}
