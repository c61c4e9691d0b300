#include "Core/Utf8Locale.h"

#include <gtest/gtest.h>

#include <clocale>

#include <langinfo.h>

#include "Support/Environment.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Value = std::optional<std::string>;

class Utf8Locale : public testing::Test
{
protected:
    Utf8Locale() : m_strOldLocale(std::setlocale(LC_ALL, nullptr)) { std::setlocale(LC_ALL, "C"); }
    ~Utf8Locale() override { std::setlocale(LC_ALL, m_strOldLocale.c_str()); }

    static void setUp(const Value& all, const Value& characters, const Value& language)
    {
        std::setlocale(LC_ALL, "C");
        CEnvironmentKeeper::set("LC_ALL", all);
        CEnvironmentKeeper::set("LC_CTYPE", characters);
        CEnvironmentKeeper::set("LANG", language);
    }
    static std::string getCodeSet() { return nl_langinfo(CODESET); }
    /// As a program that starts with this environment takes it.
    static std::string getCodeSetOfNextProgram()
    {
        EXPECT_NE(nullptr, std::setlocale(LC_ALL, ""));
        return getCodeSet();
    }

    CEnvironmentKeeper m_Keeper{"LC_ALL", "LC_CTYPE", "LANG"};
    std::string m_strOldLocale;
};

} // namespace

TEST_F(Utf8Locale, IsSetWhereTheEnvironmentNamesNoLocale)
{
    for (const Value& nothing : {Value(), Value(""), Value("C"), Value("POSIX")})
    {
        setUp({}, {}, nothing);
        useUtf8Locale();
        EXPECT_EQ("UTF-8", getCodeSet());
        EXPECT_EQ("UTF-8", getCodeSetOfNextProgram());
        EXPECT_EQ(nothing, CEnvironmentKeeper::get("LANG"));

        setUp({}, nothing, {});
        useUtf8Locale();
        EXPECT_EQ("UTF-8", getCodeSet());
        EXPECT_EQ("UTF-8", getCodeSetOfNextProgram());
    }
}

TEST_F(Utf8Locale, IsSetOverAnLcAllOfC)
{
    setUp("C", {}, "C.UTF-8");
    useUtf8Locale();
    EXPECT_EQ("UTF-8", getCodeSet());
    EXPECT_EQ("UTF-8", getCodeSetOfNextProgram());
    setUp("POSIX", "C.UTF-8", {});
    useUtf8Locale();
    EXPECT_EQ("UTF-8", getCodeSet());
    EXPECT_EQ("UTF-8", getCodeSetOfNextProgram());
}

TEST_F(Utf8Locale, ThatTheUserNamedStays)
{
    setUp({}, {}, "C.UTF-8");
    useUtf8Locale();
    EXPECT_EQ("UTF-8", getCodeSet());
    EXPECT_EQ(std::nullopt, CEnvironmentKeeper::get("LC_CTYPE"));
    EXPECT_EQ(std::nullopt, CEnvironmentKeeper::get("LC_ALL"));
}

TEST_F(Utf8Locale, IsNotForcedOnAUserOfAnotherCharacterSet)
{
    setUp({}, {}, "xx_XX.ISO-8859-1");
    useUtf8Locale();
    EXPECT_NE("UTF-8", getCodeSet());
    EXPECT_EQ("xx_XX.ISO-8859-1", CEnvironmentKeeper::get("LANG"));
    EXPECT_EQ(std::nullopt, CEnvironmentKeeper::get("LC_CTYPE"));
    EXPECT_EQ(std::nullopt, CEnvironmentKeeper::get("LC_ALL"));
}

TEST_F(Utf8Locale, StandsInForAUtf8LocaleThatIsNotInstalled)
{
    for (const char* strMissing : {"xx_XX.UTF-8", "xx_XX.utf8", "xx_XX.UTF-8@euro"})
    {
        setUp({}, {}, strMissing);
        useUtf8Locale();
        EXPECT_EQ("UTF-8", getCodeSet());
        EXPECT_EQ(strMissing, CEnvironmentKeeper::get("LANG"));

        setUp(strMissing, {}, {});
        useUtf8Locale();
        EXPECT_EQ("UTF-8", getCodeSet());
        EXPECT_EQ(strMissing, CEnvironmentKeeper::get("LC_ALL"));
    }
}

TEST_F(Utf8Locale, LeavesNumbersAsTheyWere)
{
    setUp({}, {}, {});
    useUtf8Locale();
    EXPECT_STREQ("C", std::setlocale(LC_NUMERIC, nullptr));
}
