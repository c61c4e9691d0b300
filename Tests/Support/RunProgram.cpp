#include "Support/RunProgram.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace testsupport
{
namespace
{

/// A test that cannot get a pipe or a process cannot say anything.
int orAbort(int iResult)
{
    if (iResult < 0)
    {
        std::perror("RunProgram");
        std::abort();
    }
    return iResult;
}

struct Channel
{
    int iOurs, iTheirs;
};

Channel makePipe()
{
    int aiEnds[2];
    orAbort(pipe2(aiEnds, O_CLOEXEC));
    return {aiEnds[0], aiEnds[1]};
}

Channel makeTerminal()
{
    const int iOurs = orAbort(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    orAbort(grantpt(iOurs));
    orAbort(unlockpt(iOurs));
    const int iTheirs = orAbort(open(ptsname(iOurs), O_RDWR | O_NOCTTY | O_CLOEXEC));
    const winsize size = {24, 80, 0, 0};
    orAbort(ioctl(iTheirs, TIOCSWINSZ, &size));
    return {iOurs, iTheirs};
}

void addSanitiserOptions(const char* strVariable)
{
    const char* pEarlier = std::getenv(strVariable);
    const std::string strOptions =
        (pEarlier != nullptr ? std::string(pEarlier) + ":" : "") + "exitcode=" + std::to_string(k_iSanitiserStatus);
    setenv(strVariable, strOptions.c_str(), 1);
}

/// In the child: never returns.
[[noreturn]] void become(const std::vector<std::string>& words, const ProgramSetting& setting, int iOutput, int iErrors)
{
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int iSignal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGXFSZ, SIGPIPE})
        std::signal(iSignal, SIG_DFL);
    for (const int iSignal : setting.ignoredSignals)
        std::signal(iSignal, SIG_IGN);

    for (const auto& [strName, strValue] : setting.environment)
        setenv(strName.c_str(), strValue.c_str(), 1);
    for (const char* strVariable : {"ASAN_OPTIONS", "UBSAN_OPTIONS"})
        addSanitiserOptions(strVariable);
    if (!setting.strFolder.empty())
        orAbort(chdir(setting.strFolder.c_str()));

    dup2(orAbort(open("/dev/null", O_RDONLY)), STDIN_FILENO);
    dup2(setting.strOutputPath.empty() ? iOutput : orAbort(open(setting.strOutputPath.c_str(), O_WRONLY | O_CREAT, 0644)), STDOUT_FILENO);
    dup2(iErrors, STDERR_FILENO);

    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& strWord : words)
        arguments.push_back(const_cast<char*>(strWord.c_str()));
    arguments.push_back(nullptr);
    execv(arguments[0], arguments.data());
    _exit(127);
}

/// Takes what there is; false at the end.
bool readSome(int iDescriptor, std::string& strText)
{
    char acBuffer[4096];
    const ssize_t iCount = read(iDescriptor, acBuffer, sizeof acBuffer);
    if (iCount > 0)
        strText.append(acBuffer, static_cast<size_t>(iCount));
    return iCount > 0; // a terminal whose other side is closed gives an error in place of an end
}

} // namespace

CRunningProgram::CRunningProgram(const std::vector<std::string>& words, const ProgramSetting& setting)
{
    const Channel output = makePipe();
    const Channel errors = setting.bTerminal ? makeTerminal() : makePipe();
    const Channel started = makePipe(); // closed in the child where it becomes the program, and not before
    m_Process = orAbort(fork());
    if (m_Process == 0)
        become(words, setting, output.iTheirs, errors.iTheirs);
    for (const int iTheirs : {output.iTheirs, errors.iTheirs, started.iTheirs})
        close(iTheirs);
    std::string strNothing;
    readSome(started.iOurs, strNothing);
    close(started.iOurs);
    m_iOutput = output.iOurs;
    m_iErrors = errors.iOurs;
}

CRunningProgram::~CRunningProgram()
{
    if (m_Process > 0)
    {
        kill(m_Process, SIGKILL);
        waitpid(m_Process, nullptr, 0);
    }
    close(m_iOutput);
    close(m_iErrors);
}

void CRunningProgram::signal(int iSignal) const
{
    kill(m_Process, iSignal);
}

bool CRunningProgram::freeze() const
{
    kill(m_Process, SIGSTOP);
    siginfo_t info = {};
    orAbort(waitid(P_PID, static_cast<id_t>(m_Process), &info, WSTOPPED | WEXITED | WNOWAIT));
    return info.si_code == CLD_STOPPED;
}

bool CRunningProgram::hasEnded() const
{
    siginfo_t info = {};
    orAbort(waitid(P_PID, static_cast<id_t>(m_Process), &info, WEXITED | WNOWAIT | WNOHANG));
    return info.si_pid == m_Process;
}

ProgramRun CRunningProgram::wait()
{
    ProgramRun run;
    pollfd aPolled[] = {{m_iOutput, POLLIN, 0}, {m_iErrors, POLLIN, 0}};
    while (aPolled[0].fd >= 0 || aPolled[1].fd >= 0)
    {
        orAbort(poll(aPolled, 2, -1));
        if (aPolled[0].revents != 0 && !readSome(m_iOutput, run.strOutput))
            aPolled[0].fd = -1;
        if (aPolled[1].revents != 0 && !readSome(m_iErrors, run.strErrors))
            aPolled[1].fd = -1;
    }
    int iState = 0;
    orAbort(waitpid(m_Process, &iState, 0));
    m_Process = -1;
    if (WIFEXITED(iState))
        run.iStatus = WEXITSTATUS(iState);
    else
        run.iSignal = WTERMSIG(iState);
    return run;
}

ProgramRun runProgram(const std::vector<std::string>& words, const ProgramSetting& setting)
{
    CRunningProgram program(words, setting);
    return program.wait();
}

} // namespace testsupport
