#pragma once

#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace moxtexture
{

/// Reads a text of decimal numbers and separators from left to right. Each step that does not fit leaves the text where it was.
///
/// Numbers are digits alone, and for the signed kind a minus before them: no blanks, no plus, nothing that overflows, whatever
/// the locale.
class CNumberScanner
{
public:
    explicit CNumberScanner(std::string_view strText) : m_strRest(strText) {}

    [[nodiscard]] bool read(uint32_t& uiValue) { return readNumber(uiValue); }
    [[nodiscard]] bool read(int32_t& iValue) { return readNumber(iValue); }

    [[nodiscard]] bool skip(char c)
    {
        if (m_strRest.empty() || m_strRest.front() != c)
            return false;
        m_strRest.remove_prefix(1);
        return true;
    }

    [[nodiscard]] bool isAtEnd() const { return m_strRest.empty(); }

private:
    template <typename T>
    bool readNumber(T& value)
    {
        const char* pEnd = m_strRest.data() + m_strRest.size();
        const std::from_chars_result result = std::from_chars(m_strRest.data(), pEnd, value);
        if (result.ec != std::errc())
            return false;
        m_strRest.remove_prefix(static_cast<size_t>(result.ptr - m_strRest.data()));
        return true;
    }

    std::string_view m_strRest;
};

} // namespace moxtexture
