#include "Common/PlistDocument.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include <tinyxml2.h>

namespace
{

constexpr const char* k_strFirstLines =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";

std::string textOf(const PlistDocument& document)
{
    char* pText = nullptr;
    size_t uiSize = 0;
    std::FILE* pFile = ::open_memstream(&pText, &uiSize);
    document.write(pFile);
    std::fclose(pFile);
    std::string strText(pText, uiSize);
    std::free(pText);
    return strText;
}

/// Behind the first lines, which every list has.
std::string bodyOf(const PlistDocument& document)
{
    const std::string strText = textOf(document);
    EXPECT_EQ(0u, strText.find(k_strFirstLines)) << strText;
    return strText.substr(std::string(k_strFirstLines).size());
}

struct Parsed
{
    explicit Parsed(const std::string& strText) { bGood = document.parse(strText.data(), strText.size(), strError); }

    bool has(std::string_view strKey) const { return document.find(splitKeyPath(strKey)) != nullptr; }

    PlistDocument document;
    std::string strError;
    bool bGood = false;
};

std::string plist(const std::string& strInside)
{
    return "<plist version=\"1.0\">" + strInside + "</plist>";
}

void expectError(const std::string& strError, const std::string& strInside)
{
    const Parsed parsed(plist(strInside));
    EXPECT_FALSE(parsed.bGood) << strInside;
    EXPECT_EQ(strError, parsed.strError) << strInside;
}

void expectEmptyList(const std::string& strText)
{
    const Parsed parsed(strText);
    EXPECT_TRUE(parsed.bGood) << parsed.strError;
    EXPECT_EQ("", parsed.strError);
    EXPECT_FALSE(parsed.has("a"));
    // Whole and empty, as the next reader finds it.
    const std::string strBody = bodyOf(parsed.document);
    EXPECT_NE(std::string::npos, strBody.find("<plist version=\"1.0\">\n    <dict/>\n</plist>\n")) << strBody;
}

std::string nested(size_t uiLevels, const std::string& strInside)
{
    std::string strText = strInside;
    for (size_t i = 0; i < uiLevels; ++i)
        strText.insert(0, "<dict><key>a</key>").append("</dict>");
    return strText;
}

} // namespace

TEST(PlistDocument, OfTheTemplateIsEmptyAndTakesItsForm)
{
    EXPECT_EQ(std::string(k_strFirstLines) + "<plist version=\"1.0\">\n<dict>\n</dict>\n</plist>\n", PlistDocument::getTemplate());
    expectEmptyList(PlistDocument::getTemplate());
}

TEST(PlistDocument, WithoutADictGetsOne)
{
    const Parsed parsed("<plist/>");
    EXPECT_TRUE(parsed.bGood) << parsed.strError;
    EXPECT_EQ("<plist>\n    <dict/>\n</plist>\n", bodyOf(parsed.document));
    expectEmptyList("<plist version=\"1.0\"></plist>");
}

TEST(PlistDocument, WithoutAnyElementGetsAPlist)
{
    expectEmptyList("<?xml version=\"1.0\"?>\n<!-- nothing -->\n");
}

TEST(PlistDocument, ThatCannotBeParsedIsAnEmptyList)
{
    expectEmptyList("");
    expectEmptyList("no markup");
    expectEmptyList(std::string("\0\x01\x02\xFF\xFE", 5));
    expectEmptyList("<plist version=\"1.0\"><dict><key>a</key><string>b</string></dict>"); // the end is missing
    expectEmptyList("<plist version=\"1.0\"><dict><key>a</key><string>b</dict></plist>");
    expectEmptyList("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
}

TEST(PlistDocument, DropsWhatStandsBesideTheListButComments)
{
    const Parsed parsed("text<!WRONG <?xml version=\"1.0\"?>more \"text\"<!-- note --><plist version=\"1.0\"><dict/></plist>"
                        "<plist><dict><key>a</key><true/></dict></plist><!-- end -->");
    EXPECT_TRUE(parsed.bGood) << parsed.strError;
    EXPECT_FALSE(parsed.has("a"));
    const std::string strBody = bodyOf(parsed.document);
    for (const char* strKept : {"<!-- note -->", "<plist version=\"1.0\">\n    <dict/>\n</plist>", "<!-- end -->"})
        EXPECT_NE(std::string::npos, strBody.find(strKept)) << strBody;
    for (const char* strDropped : {"WRONG", "more", "text", "true"})
        EXPECT_EQ(std::string::npos, strBody.find(strDropped)) << strBody;
}

TEST(PlistDocument, WhoseFirstElementIsNoDictGetsOneBehindIt)
{
    Parsed parsed(plist("<string>x</string>"));
    EXPECT_TRUE(parsed.bGood) << parsed.strError;
    EXPECT_TRUE(parsed.document.set({"a"}, {ePlistString, "b"}));
    const Parsed again(textOf(parsed.document));
    EXPECT_TRUE(again.bGood) << again.strError;
    EXPECT_TRUE(again.has("a")) << textOf(again.document);
}

TEST(PlistDocument, RefusesAKeyWithoutAValue)
{
    expectError("ERROR: Key missing value!", "<dict><key>a</key></dict>");
    expectError("ERROR: Key missing value!", "<dict><key>a</key><true/><key>b</key></dict>");
    expectError("ERROR: Key missing value\n", "<dict><key>a</key><key>b</key><true/></dict>");
}

TEST(PlistDocument, RefusesAValueWithoutAKey)
{
    expectError("ERROR: Missing <key> tag\n", "<dict><string>x</string></dict>");
    expectError("ERROR: Missing <key> tag\n", "<dict><key>a</key><true/><string>x</string></dict>");
    expectError("ERROR: Missing <key> tag\n", "<dict><KEY>a</KEY><true/></dict>");
}

TEST(PlistDocument, RefusesAKeyInAnArray)
{
    expectError("ERROR: Array elements cannot contain a <key> tag!\n", "<dict><key>a</key><array><true/><key>b</key></array></dict>");
}

TEST(PlistDocument, ChecksWhatIsInsideDictsAndArrays)
{
    expectError("ERROR: Missing <key> tag\n", "<dict><key>a</key><dict><true/></dict></dict>");
    expectError("ERROR: Key missing value!", "<dict><key>a</key><array><dict><key>b</key></dict></array></dict>");
    expectError("ERROR: Array elements cannot contain a <key> tag!\n", "<dict><key>a</key><array><array><key/></array></array></dict>");
    EXPECT_TRUE(Parsed(plist("<dict><key>a</key><string><key>no dict, no rule</key></string></dict>")).bGood);
}

TEST(PlistDocument, PassesOverCommentsBetweenElements)
{
    const Parsed parsed(plist("<!-- 1 --><dict><!-- 2 --><key>a</key><!-- 3 --><true/><!-- 4 --></dict>"));
    EXPECT_TRUE(parsed.bGood) << parsed.strError;
    EXPECT_TRUE(parsed.has("a"));
}

TEST(PlistDocument, NestedTooDeeplyIsAnEmptyList)
{
    expectEmptyList(plist(nested(200, "<true/>")));
    expectEmptyList(plist(nested(10000, "<true/>")));
    std::string strOpened;
    for (int i = 0; i < 100000; ++i)
        strOpened += "<array>";
    expectEmptyList(plist(strOpened));
}

TEST(PlistDocument, LargerThanSettingsAreIsAnEmptyList)
{
    const std::string strStart = "<plist version=\"1.0\"><dict><key>a</key><string>";
    const std::string strEnd = "</string></dict></plist>";
    const size_t uiRest = PlistDocument::k_uiMostBytes - strStart.size() - strEnd.size();
    EXPECT_TRUE(Parsed(strStart + std::string(uiRest, 'x') + strEnd).has("a"));
    expectEmptyList(strStart + std::string(uiRest + 1, 'x') + strEnd);
}

TEST(PlistDocument, OfTheMostLevelsThatItWritesCanBeReadAgain)
{
    std::string strKey;
    for (size_t i = 0; i < PlistDocument::k_uiMostNames; ++i)
        strKey += "/a";
    Parsed parsed("");
    EXPECT_TRUE(parsed.document.setArray(splitKeyPath(strKey), {{ePlistString, "x"}}));
    EXPECT_TRUE(Parsed(textOf(parsed.document)).has(strKey));
}

TEST(PlistDocument, FindsTheFirstOfTwoEntriesOfOneName)
{
    const Parsed parsed(plist("<dict><key>a</key><string>1</string><key>a</key><string>2</string></dict>"));
    EXPECT_STREQ("1", parsed.document.find({"a"})->GetText());
}

TEST(PlistDocument, ComparesNamesExactly)
{
    const Parsed parsed(plist("<dict><key>Main</key><dict><key>State</key><true/></dict></dict>"));
    EXPECT_TRUE(parsed.has("Main/State"));
    EXPECT_FALSE(parsed.has("Main/state"));
    EXPECT_FALSE(parsed.has("main/State"));
    EXPECT_FALSE(parsed.has("Main/State/More"));
    EXPECT_FALSE(parsed.has("Main/Stat"));
}

TEST(PlistDocument, TakesAnotherValueForADictThatAPathNeeds)
{
    Parsed parsed(plist("<dict><key>Main</key><string>text</string></dict>"));
    EXPECT_TRUE(parsed.document.set({"Main", "State"}, {ePlistInteger, "7"}));
    EXPECT_EQ("<plist version=\"1.0\">\n    <dict>\n        <key>Main</key>\n        <dict>\n            <key>State</key>\n"
              "            <integer>7</integer>\n        </dict>\n    </dict>\n</plist>\n",
              bodyOf(parsed.document));
}

TEST(PlistDocument, DropsWhatWasInADictThatBecomesAText)
{
    Parsed parsed(plist("<dict><key>Main</key><dict><key>State</key><true/></dict></dict>"));
    EXPECT_TRUE(parsed.document.set({"Main"}, {ePlistString, "text"}));
    EXPECT_EQ("<plist version=\"1.0\">\n    <dict>\n        <key>Main</key>\n        <string>text</string>\n    </dict>\n</plist>\n",
              bodyOf(parsed.document));
}

TEST(PlistDocument, TellsWhetherAnythingChanged)
{
    Parsed parsed("");
    PlistDocument& document = parsed.document;
    EXPECT_TRUE(document.set({"a"}, {ePlistString, "1"}));
    EXPECT_FALSE(document.set({"a"}, {ePlistString, "1"}));
    EXPECT_TRUE(document.set({"a"}, {ePlistInteger, "1"}));
    EXPECT_TRUE(document.set({"a"}, {ePlistInteger, "2"}));
    EXPECT_TRUE(document.set({"a"}, {ePlistTrue, ""}));
    EXPECT_FALSE(document.set({"a"}, {ePlistTrue, ""}));

    const std::vector<PlistScalar> values = {{ePlistString, "1"}, {ePlistString, ""}};
    EXPECT_TRUE(document.setArray({"b"}, values));
    EXPECT_FALSE(document.setArray({"b"}, values));
    EXPECT_TRUE(document.setArray({"b"}, {values[0]}));
    EXPECT_TRUE(document.setArray({"b"}, values));
    EXPECT_TRUE(document.setArray({"b"}, {values[1], values[0]}));
    EXPECT_TRUE(document.setArray({"b"}, {}));
    EXPECT_FALSE(document.setArray({"b"}, {}));
}

TEST(KeyPath, IsSplitWithEmptyPiecesDropped)
{
    using Names = std::vector<std::string_view>;
    EXPECT_EQ((Names{"Main", "State"}), splitKeyPath("Main/State"));
    EXPECT_EQ((Names{"Main", "State"}), splitKeyPath("/Main//State/"));
    EXPECT_EQ((Names{"Recent files"}), splitKeyPath("Recent files"));
    EXPECT_EQ(Names{}, splitKeyPath(""));
    EXPECT_EQ(Names{}, splitKeyPath("///"));
}
