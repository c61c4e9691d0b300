#include "CommandLine/ProgressLine.h"

#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

#include "CommandLine/ErrorStream.h"
#include "CommandLine/Names.h"

namespace moxtexture
{
namespace
{

constexpr char k_strErase[] = "\r\033[K";
constexpr size_t k_uiUsualColumns = 80;

size_t getColumns()
{
    winsize size = {};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return k_uiUsualColumns;
    return size.ws_col;
}

/// The last uiCount characters of a text in UTF-8, with dots for what is cut off.
std::string getEnd(const std::string& strText, size_t uiCount)
{
    const auto isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
    size_t uiCharacters = 0;
    for (const char c : strText)
        uiCharacters += isFirstByte(c) ? 1 : 0;
    if (uiCharacters <= uiCount)
        return strText;
    constexpr size_t uiDots = 3;
    if (uiCount <= uiDots)
        return {};

    size_t uiSkipped = uiCharacters - (uiCount - uiDots);
    size_t uiStart = 0;
    while (uiStart < strText.size() && (uiSkipped > 0 || !isFirstByte(strText[uiStart])))
        uiSkipped -= isFirstByte(strText[uiStart++]) ? 1 : 0;
    return "..." + strText.substr(uiStart);
}

} // namespace

bool isTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

std::string getProgressText(size_t uiDone, size_t uiCount, const std::string& strFile, size_t uiColumns)
{
    const std::string strNumbers = std::to_string(uiDone) + " of " + std::to_string(uiCount) + ": ";
    return strNumbers + getEnd(toOneLine(strFile), uiColumns > strNumbers.size() ? uiColumns - strNumbers.size() : 0);
}

void CProgressLine::begin(const std::string& strFile)
{
    m_strFile = strFile;
    paint();
}

void CProgressLine::finishOne()
{
    ++m_uiDone;
    paint();
}

void CProgressLine::printAbove(const std::string& strLine)
{
    erase();
    std::fprintf(getErrorStream(), "%s\n", strLine.c_str());
    paint();
}

void CProgressLine::paint() const
{
    // The last column stays free: a full line would make the terminal wrap.
    if (m_bShown)
        std::fprintf(getErrorStream(), "%s%s", k_strErase, getProgressText(m_uiDone, m_uiCount, m_strFile, getColumns() - 1).c_str());
}

void CProgressLine::erase() const
{
    if (m_bShown)
        std::fputs(k_strErase, getErrorStream());
}

void eraseTerminalLine()
{
    if (isTerminal())
        std::fputs(k_strErase, getErrorStream());
}

} // namespace moxtexture
