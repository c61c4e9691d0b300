#pragma once

#include <csignal>
#include <functional>
#include <memory>

namespace moxtexture
{

/// Waits on a thread of its own for SIGINT, SIGTERM, SIGHUP, SIGQUIT or SIGXCPU and hands the first of them to a function, which,
/// unlike a signal handler, may do anything.
///
/// To be made before any other thread starts: it blocks those signals for the calling thread and all threads that come after.
/// Processes that are forked off it let them through again.
/// A signal that the process was started to ignore (as nohup does) stays ignored. The destructor ends the wait and gives the
/// calling thread its old signal mask back.
class CSignalWatcher
{
public:
    /// @param onSignal  takes the number of the signal; called once at most, on the watching thread
    explicit CSignalWatcher(std::function<void(int)> onSignal);
    CSignalWatcher(const CSignalWatcher&) = delete;
    CSignalWatcher& operator=(const CSignalWatcher&) = delete;
    ~CSignalWatcher();

private:
    struct Watch;

    sigset_t m_OldMask{};
    std::unique_ptr<Watch> m_pWatch;
};

} // namespace moxtexture
