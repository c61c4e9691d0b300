#pragma once

#include <cstdlib>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>

namespace testsupport
{

/// Gives the named variables of the environment their old values back when it ends.
class CEnvironmentKeeper
{
public:
    CEnvironmentKeeper(std::initializer_list<const char*> names)
    {
        for (const char* strName : names)
            m_Old[strName] = get(strName);
    }
    CEnvironmentKeeper(const CEnvironmentKeeper&) = delete;
    CEnvironmentKeeper& operator=(const CEnvironmentKeeper&) = delete;
    ~CEnvironmentKeeper()
    {
        for (const auto& [strName, value] : m_Old)
            set(strName, value);
    }

    static std::optional<std::string> get(const std::string& strName)
    {
        const char* pValue = std::getenv(strName.c_str());
        return pValue != nullptr ? std::optional<std::string>(pValue) : std::nullopt;
    }

    /// Unsets it where there is no value.
    static void set(const std::string& strName, const std::optional<std::string>& value)
    {
        if (value)
            ::setenv(strName.c_str(), value->c_str(), 1);
        else
            ::unsetenv(strName.c_str());
    }

private:
    std::map<std::string, std::optional<std::string>> m_Old;
};

} // namespace testsupport
