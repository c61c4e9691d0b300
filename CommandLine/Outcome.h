#pragma once

#include <functional>
#include <string>
#include <utility>

namespace moxtexture
{

/// The exit statuses of the program.
enum class EExitStatus : int
{
    eDone = 0,
    eFailed = 1,     ///< the words were right, the work was not to be done
    eWrongWords = 2, ///< nothing was read or written
};

/// What became of a piece of work.
struct Outcome
{
    EExitStatus eStatus = EExitStatus::eDone;
    std::string strText; ///< of done work what was asked for, for standard output; else the reason, empty where it was told already

    [[nodiscard]] bool isDone() const { return eStatus == EExitStatus::eDone; }
};

[[nodiscard]] inline Outcome done(std::string strOutput = {})
{
    return {EExitStatus::eDone, std::move(strOutput)};
}

[[nodiscard]] inline Outcome failed(std::string strReason)
{
    return {EExitStatus::eFailed, std::move(strReason)};
}

[[nodiscard]] inline Outcome wrongWords(std::string strReason)
{
    return {EExitStatus::eWrongWords, std::move(strReason)};
}

/// The one form in which the program tells of an error: a single line, without its end.
[[nodiscard]] std::string getErrorLine(const std::string& strText);

/// Calls work, and makes a refusal of memory a failure like any other.
[[nodiscard]] Outcome runGuarded(const std::function<Outcome()>& work);

} // namespace moxtexture
