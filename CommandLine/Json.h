#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace moxtexture
{

/// Builds one line of JSON. Commas come by themselves; names and nesting are as the calls say.
///
///     CJsonWriter json;
///     json.beginObject().key("sizes").beginArray().number(4).number(2).endArray().endObject();
class CJsonWriter
{
public:
    CJsonWriter& beginObject() { return open('{'); }
    CJsonWriter& endObject() { return close('}'); }
    CJsonWriter& beginArray() { return open('['); }
    CJsonWriter& endArray() { return close(']'); }

    /// The name of the value that comes next.
    CJsonWriter& key(std::string_view strName);

    /// Bytes that are no UTF-8, as file names may hold, become U+FFFD.
    CJsonWriter& text(std::string_view strText);
    CJsonWriter& number(uint64_t uiValue);
    /// The shortest digits that read back as the same value; null for one that is not finite.
    CJsonWriter& real(double fValue);
    CJsonWriter& boolean(bool bValue);

    [[nodiscard]] const std::string& getText() const { return m_strText; }

private:
    CJsonWriter& open(char cBracket);
    CJsonWriter& close(char cBracket);
    void beginValue();
    void appendEscaped(std::string_view strText);

    std::string m_strText;
    bool m_bNeedsComma = false;
};

/// Two lower-case digits a byte.
[[nodiscard]] std::string toHex(const uint8_t* pData, size_t uiSize);

/// "0x" and as many lower-case digits, zeros in front.
[[nodiscard]] std::string toHexNumber(uint64_t uiValue, unsigned int uiDigits);

} // namespace moxtexture
