#pragma once

#include <fstream>

#include <sys/resource.h>

// The sanitisers' own memory does not fit below a limit: tests with one are left out where HALVANE_SANITISED is set.
#include "Support/Sanitised.h"

#ifndef HALVANE_SANITISED

namespace testsupport
{

/// While it lives, the process gets little more memory than it has.
class CMemoryLimit
{
public:
    CMemoryLimit()
    {
        ::getrlimit(RLIMIT_AS, &m_Earlier);
        rlim_t uiPages = 0;
        std::ifstream("/proc/self/statm") >> uiPages;
        const rlimit limit = {uiPages * 4096 + k_uiSlack, m_Earlier.rlim_max};
        ::setrlimit(RLIMIT_AS, &limit);
    }
    CMemoryLimit(const CMemoryLimit&) = delete;
    CMemoryLimit& operator=(const CMemoryLimit&) = delete;
    ~CMemoryLimit() { ::setrlimit(RLIMIT_AS, &m_Earlier); }

private:
    static constexpr rlim_t k_uiSlack = 16 << 20;
    rlimit m_Earlier = {};
};

} // namespace testsupport

#endif
