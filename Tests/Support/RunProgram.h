#pragma once

#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace testsupport
{

/// How a program ended, and all that it wrote.
struct ProgramRun
{
    int iStatus = -1; ///< exit status; -1 where a signal ended it
    int iSignal = 0;  ///< that signal
    std::string strOutput, strErrors;
};

/// A fault that a sanitiser finds ends a program with this status, so that it is taken for no status of the program's own.
inline constexpr int k_iSanitiserStatus = 86;

struct ProgramSetting
{
    std::string strFolder;                                        ///< to run in; empty for that of the test
    std::vector<std::pair<std::string, std::string>> environment; ///< beside that of the test
    bool bTerminal = false;                                       ///< standard error is a terminal of 80 columns, else a pipe
    std::string strOutputPath;                                    ///< a file for standard output; empty for a pipe
    std::vector<int> ignoredSignals;                              ///< as nohup does; others have their usual effect
};

/// A process with pipes at its standard output and standard error, nothing at its standard input.
class CRunningProgram
{
public:
    /// @param words  the program's path, then its arguments
    explicit CRunningProgram(const std::vector<std::string>& words, const ProgramSetting& setting = {});
    CRunningProgram(const CRunningProgram&) = delete;
    CRunningProgram& operator=(const CRunningProgram&) = delete;
    /// Kills it if it was not waited for.
    ~CRunningProgram();

    void signal(int iSignal) const;
    /// Stops the process and returns when it stands still; false if it has ended.
    bool freeze() const;
    [[nodiscard]] bool hasEnded() const;
    /// Its number, until wait() returns.
    [[nodiscard]] pid_t getProcess() const { return m_Process; }
    /// Reads to the end of its output and returns how it ended.
    ProgramRun wait();

private:
    pid_t m_Process = -1;
    int m_iOutput = -1, m_iErrors = -1;
};

/// Starts a program and waits for it.
ProgramRun runProgram(const std::vector<std::string>& words, const ProgramSetting& setting = {});

} // namespace testsupport
