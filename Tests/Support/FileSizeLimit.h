#pragma once

#include <csignal>

#include <sys/resource.h>

namespace testsupport
{

/// The longest file that this process may write, until it goes out of scope: a full disk, for root as for anybody.
class CFileSizeLimit
{
public:
    explicit CFileSizeLimit(rlim_t uiBytes) : m_pEarlierHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_Earlier);
        const rlimit limit = {uiBytes, m_Earlier.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    CFileSizeLimit(const CFileSizeLimit&) = delete;
    CFileSizeLimit& operator=(const CFileSizeLimit&) = delete;
    ~CFileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_Earlier);
        std::signal(SIGXFSZ, m_pEarlierHandler);
    }

private:
    rlimit m_Earlier = {};
    void (*m_pEarlierHandler)(int);
};

} // namespace testsupport
