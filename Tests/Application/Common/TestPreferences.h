#pragma once

#include <string>

#include <gtest/gtest.h>

#include "Common/Preferences.h"

/// Loaded preferences in a new file, below the test program's own configuration folder.
class CTestPreferences : public Preferences
{
public:
    CTestPreferences() : CTestPreferences(getNewName(), false) {}

    /// The preferences as another start of the program, or another running program, has them.
    [[nodiscard]] CTestPreferences startAgain() const { return {m_strName, true}; }

    [[nodiscard]] const std::string& getName() const { return m_strName; }

private:
    CTestPreferences(const std::string& strName, bool bWatch) : Preferences(strName), m_strName(strName)
    {
        std::string strError;
        EXPECT_TRUE(load(strError, bWatch)) << strError;
    }

    static std::string getNewName()
    {
        static int iCount = 0;
        return "Test" + std::to_string(++iCount);
    }

    std::string m_strName;
};
