#include "CommandLine/Json.h"

#include <charconv>
#include <cmath>

namespace moxtexture
{
namespace
{

constexpr char k_acDigits[] = "0123456789abcdef";

/// Bytes of the well-formed UTF-8 sequence at the start of a text, or 0: no overlong forms, surrogates or values past U+10FFFF.
size_t measureUtf8(std::string_view strText)
{
    const auto byteAt = [&](size_t i) -> uint32_t { return i < strText.size() ? static_cast<uint8_t>(strText[i]) : 0; };
    const uint32_t uiLead = byteAt(0);
    if (uiLead < 0x80)
        return 1;
    const size_t uiSize = uiLead < 0xC2 ? 0 : uiLead < 0xE0 ? 2 : uiLead < 0xF0 ? 3 : uiLead < 0xF5 ? 4 : 0;
    for (size_t i = 1; i < uiSize; ++i)
        if ((byteAt(i) & 0xC0) != 0x80)
            return 0;
    const uint32_t uiSecond = byteAt(1);
    const bool bIllFormed = (uiLead == 0xE0 && uiSecond < 0xA0) || (uiLead == 0xED && uiSecond > 0x9F) ||
                            (uiLead == 0xF0 && uiSecond < 0x90) || (uiLead == 0xF4 && uiSecond > 0x8F);
    return bIllFormed ? 0 : uiSize;
}

template <typename T>
void appendNumber(std::string& strText, T value)
{
    char acBuffer[32];
    const std::to_chars_result result = std::to_chars(acBuffer, acBuffer + sizeof acBuffer, value);
    strText.append(acBuffer, result.ptr);
}

} // namespace

CJsonWriter& CJsonWriter::key(std::string_view strName)
{
    text(strName);
    m_strText += ": ";
    m_bNeedsComma = false;
    return *this;
}

CJsonWriter& CJsonWriter::text(std::string_view strText)
{
    beginValue();
    m_strText += '"';
    appendEscaped(strText);
    m_strText += '"';
    return *this;
}

CJsonWriter& CJsonWriter::number(uint64_t uiValue)
{
    beginValue();
    appendNumber(m_strText, uiValue);
    return *this;
}

CJsonWriter& CJsonWriter::real(double fValue)
{
    beginValue();
    if (std::isfinite(fValue))
        appendNumber(m_strText, fValue);
    else
        m_strText += "null";
    return *this;
}

CJsonWriter& CJsonWriter::boolean(bool bValue)
{
    beginValue();
    m_strText += bValue ? "true" : "false";
    return *this;
}

CJsonWriter& CJsonWriter::open(char cBracket)
{
    beginValue();
    m_strText += cBracket;
    m_bNeedsComma = false;
    return *this;
}

CJsonWriter& CJsonWriter::close(char cBracket)
{
    m_strText += cBracket;
    m_bNeedsComma = true;
    return *this;
}

void CJsonWriter::beginValue()
{
    if (m_bNeedsComma)
        m_strText += ", ";
    m_bNeedsComma = true;
}

void CJsonWriter::appendEscaped(std::string_view strText)
{
    while (!strText.empty())
    {
        const size_t uiSize = measureUtf8(strText);
        const char c = strText.front();
        if (uiSize == 0)
            m_strText += "\xEF\xBF\xBD";
        else if (c == '"' || c == '\\')
            (m_strText += '\\') += c;
        else if (static_cast<uint8_t>(c) < 0x20)
            ((m_strText += "\\u00") += k_acDigits[c >> 4]) += k_acDigits[c & 15];
        else
            m_strText += strText.substr(0, uiSize);
        strText.remove_prefix(uiSize == 0 ? 1 : uiSize);
    }
}

std::string toHex(const uint8_t* pData, size_t uiSize)
{
    std::string strHex;
    strHex.reserve(2 * uiSize);
    for (size_t i = 0; i < uiSize; ++i)
    {
        strHex += k_acDigits[pData[i] >> 4];
        strHex += k_acDigits[pData[i] & 15];
    }
    return strHex;
}

std::string toHexNumber(uint64_t uiValue, unsigned int uiDigits)
{
    std::string strNumber = "0x";
    for (unsigned int i = uiDigits; i-- > 0;)
        strNumber += k_acDigits[(uiValue >> (4 * i)) & 15];
    return strNumber;
}

} // namespace moxtexture
