#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

namespace moxtexture
{

/// Adds an option whose word a function of Names understands or not; the value goes to target, which must outlive the parsing.
///
/// @param strValue  what stands behind the option in the help, such as "FORMAT"
/// @param strMeaning  completes "'...' is no " where the word is not understood
template <typename T, typename Parse>
CLI::Option* addWordOption(CLI::App& verb, const std::string& strOption, std::optional<T>& target, Parse parse, const std::string& strValue,
                           const std::string& strMeaning, const std::string& strHelp)
{
    const auto take = [&target, parse, strOption, strMeaning](const std::string& strWord)
    {
        const std::optional<T> value = parse(strWord);
        if (!value)
            throw CLI::ValidationError(strOption, "'" + strWord + "' is no " + strMeaning);
        target = value;
    };
    return verb.add_option_function<std::string>(strOption, take, strHelp)->type_name(strValue);
}

/// Refuses another option in the place of an option's value, where a name was forgotten.
inline CLI::Option* refuseOptions(const CLI::App& verb, CLI::Option* pOption)
{
    const auto findFault = [&verb](const std::string& strWord)
    {
        const bool bOption = strWord.rfind("--", 0) == 0 || verb.get_option_no_throw(strWord) != nullptr;
        return bOption ? "'" + strWord + "' is an option; a file of that name is ./" + strWord : std::string();
    };
    return pOption->check(findFault);
}

/// A flag that takes no value, not even a false one.
inline CLI::Option* addFlag(CLI::App& verb, const std::string& strOption, bool& bTarget, const std::string& strHelp)
{
    return verb.add_flag(strOption, bTarget, strHelp)->disable_flag_override();
}

} // namespace moxtexture
