#include "Core/SignalWatcher.h"

#include <atomic>
#include <thread>
#include <utility>

#include <pthread.h>

namespace moxtexture
{

struct CSignalWatcher::Watch
{
    std::function<void(int)> onSignal;
    std::atomic<bool> bEnding{false};
    std::thread thread;
};

namespace
{

constexpr int k_aiWatched[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};

bool isIgnored(int iSignal)
{
    struct sigaction action = {};
    return sigaction(iSignal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

/// Programs that are started from here die of these signals as they would anywhere; a mask would go on into them.
void letThroughInChild()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int iSignal : k_aiWatched)
        sigaddset(&signals, iSignal);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

} // namespace

CSignalWatcher::CSignalWatcher(std::function<void(int)> onSignal) : m_pWatch(std::make_unique<Watch>())
{
    m_pWatch->onSignal = std::move(onSignal);
    [[maybe_unused]] static const int iOnce = pthread_atfork(nullptr, nullptr, letThroughInChild);

    sigset_t blocked;
    sigset_t awaited;
    sigemptyset(&awaited);
    // A blocked signal is queued even where it is set to be ignored, so those are left alone altogether.
    for (const int iSignal : k_aiWatched)
        if (!isIgnored(iSignal))
            sigaddset(&awaited, iSignal);
    blocked = awaited;
    sigaddset(&awaited, SIGUSR2); // blocked on the watching thread alone: how the destructor wakes it
    pthread_sigmask(SIG_BLOCK, &blocked, &m_OldMask);

    // The new thread takes over the mask of this one; SIGUSR2 must be in it from its first instruction on.
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &awaited, &before);
    m_pWatch->thread = std::thread(
        [pWatch = m_pWatch.get(), awaited]
        {
            int iSignal = 0;
            while (sigwait(&awaited, &iSignal) != 0 || (iSignal == SIGUSR2 && !pWatch->bEnding))
            {
            }
            if (!pWatch->bEnding)
                pWatch->onSignal(iSignal);
        });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

CSignalWatcher::~CSignalWatcher()
{
    m_pWatch->bEnding = true;
    pthread_kill(m_pWatch->thread.native_handle(), SIGUSR2);
    m_pWatch->thread.join();
    pthread_sigmask(SIG_SETMASK, &m_OldMask, nullptr);
}

} // namespace moxtexture
