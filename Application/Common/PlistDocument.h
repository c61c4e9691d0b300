#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tinyxml2
{
class XMLDocument;
class XMLElement;
} // namespace tinyxml2

/// The elements that a value can be.
enum EPlistType
{
    ePlistString,
    ePlistInteger, ///< with or without a sign
    ePlistReal,
    ePlistTrue,
    ePlistFalse,
    ePlistArray,
    ePlistDict,
    ePlistData ///< base64
};

[[nodiscard]] const char* getPlistTypeName(EPlistType eType);

/// A value without values in it: its element and the text in that.
struct PlistScalar
{
    EPlistType eType;
    std::string strText;
};

/// The names along a key's path: split at each "/", empty ones dropped.
[[nodiscard]] std::vector<std::string_view> splitKeyPath(std::string_view strKey);

/// A property list: XML with a `plist` that holds one `dict`, whose entries are pairs of a `key` and a value element.
/// A name that stands twice in a dictionary means its first entry.
class PlistDocument
{
public:
    /// More bytes than this are no settings, and not looked at: a hostile file costs no more memory than some ten times this.
    static constexpr size_t k_uiMostBytes = 4 << 20;
    /// Names along a path, so that a document that was written can be read again.
    static constexpr size_t k_uiMostNames = 64;

    PlistDocument();
    PlistDocument(const PlistDocument&) = delete;
    PlistDocument& operator=(const PlistDocument&) = delete;
    ~PlistDocument();

    /// The content of a new file: an empty list.
    [[nodiscard]] static const std::string& getTemplate();

    /// Takes the place of what was there. What cannot be parsed at all is an empty list; see validate().
    /// @param strError  takes what to show
    [[nodiscard]] bool parse(const char* pcText, size_t uiSize, std::string& strError);

    /// Writes the text; the file's error mark tells whether that worked.
    void write(std::FILE* pFile) const;

    /// The element of a value.
    /// @param names  one or more
    /// @return null if there is none
    [[nodiscard]] const tinyxml2::XMLElement* find(const std::vector<std::string_view>& names) const;

    /// Sets a value, and makes the entries and dictionaries that are missing on the way to it; another value in place of such a
    /// dictionary becomes one.
    /// @param names  one to k_uiMostNames
    /// @return false if all that was there already
    bool set(const std::vector<std::string_view>& names, const PlistScalar& value);
    bool setArray(const std::vector<std::string_view>& names, const std::vector<PlistScalar>& values);

private:
    void tidy();
    [[nodiscard]] bool validate(std::string& strError);
    [[nodiscard]] tinyxml2::XMLElement* getRoot() const;
    [[nodiscard]] tinyxml2::XMLElement& findOrMake(const std::vector<std::string_view>& names);

    std::unique_ptr<tinyxml2::XMLDocument> m_pDocument;
};
