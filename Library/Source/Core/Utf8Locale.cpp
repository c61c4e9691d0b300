#include "Core/Utf8Locale.h"

#include <algorithm>
#include <cctype>
#include <clocale>
#include <cstdlib>
#include <initializer_list>
#include <string>

namespace moxtexture
{
namespace
{

/// What the environment says of the locale of characters: the first of its variables that is not empty.
struct Choice
{
    std::string strVariable; ///< empty if none is
    std::string strLocale = "C";
};

Choice readChoice()
{
    for (const char* strVariable : {"LC_ALL", "LC_CTYPE", "LANG"})
    {
        const char* pValue = std::getenv(strVariable);
        if (pValue != nullptr && *pValue != '\0')
            return {strVariable, pValue};
    }
    return {};
}

/// "en_GB.UTF-8", "C.utf8", "de_DE.UTF-8@euro"
bool namesUtf8(const std::string& strLocale)
{
    std::string strLetters;
    for (const char cLetter : strLocale.substr(std::min(strLocale.find('.'), strLocale.size())))
        if (std::isalnum(static_cast<unsigned char>(cLetter)) != 0)
            strLetters += static_cast<char>(std::tolower(static_cast<unsigned char>(cLetter)));
    return strLetters.rfind("utf8", 0) == 0;
}

} // namespace

void useUtf8Locale()
{
    const Choice choice = readChoice();
    const bool bNone = choice.strLocale == "C" || choice.strLocale == "POSIX";
    const bool bInstalled = std::setlocale(LC_CTYPE, "") != nullptr;
    if (!bNone && (bInstalled || !namesUtf8(choice.strLocale)))
        return;

    for (const char* strLocale : {"C.UTF-8", "C.utf8", "en_US.UTF-8"})
    {
        if (std::setlocale(LC_CTYPE, strLocale) == nullptr)
            continue;
        // LC_ALL goes before everything else. "C.UTF-8" differs from "C", which it names there, in the characters alone; in place of
        // another, which is the user's word on numbers and dates, it would not do.
        const bool bAll = choice.strVariable == "LC_ALL";
        if (!bAll)
            ::setenv("LC_CTYPE", strLocale, 1);
        else if (bNone)
            ::setenv("LC_ALL", strLocale, 1);
        return;
    }
}

} // namespace moxtexture
