#pragma once

#include <cstddef>
#include <string>

namespace moxtexture
{

/// True where standard error is a terminal, so that a line on it can be painted over.
[[nodiscard]] bool isTerminal();

/// One line at the foot of the terminal that tells how far a batch is: files done, of how many, the one at hand. Not shown, its
/// functions do nothing but count. One thread at a time calls it.
class CProgressLine
{
public:
    CProgressLine(size_t uiCount, bool bShown) : m_uiCount(uiCount), m_bShown(bShown) {}
    CProgressLine(const CProgressLine&) = delete;
    CProgressLine& operator=(const CProgressLine&) = delete;
    ~CProgressLine() { erase(); }

    void begin(const std::string& strFile);
    void finishOne();

    /// Writes a line of its own to standard error, with the progress line below it again.
    void printAbove(const std::string& strLine);

private:
    void paint() const;
    void erase() const;

    size_t m_uiCount;
    size_t m_uiDone = 0;
    std::string m_strFile;
    bool m_bShown;
};

/// The text of the line, at most uiColumns characters of UTF-8: a long name loses its front.
[[nodiscard]] std::string getProgressText(size_t uiDone, size_t uiCount, const std::string& strFile, size_t uiColumns);

/// Takes a progress line that may stand there off the terminal, from any thread.
void eraseTerminalLine();

} // namespace moxtexture
