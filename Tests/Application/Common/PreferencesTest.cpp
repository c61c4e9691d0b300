#include "Common/Preferences.h"

#include <gtest/gtest.h>

#include <locale>

#include "Application/Common/MemoryPreferences.h"

namespace
{

std::string dict(const std::string& strInside)
{
    return "<plist version=\"1.0\"><dict>" + strInside + "</dict></plist>";
}

/// Loaded from a file that is empty at first.
class PreferencesTest : public testing::Test
{
protected:
    PreferencesTest() { reload(); }

    void reload(bool bWatch = false)
    {
        std::string strError;
        EXPECT_TRUE(m_Preferences.load(strError, bWatch));
        EXPECT_EQ("", strError);
    }
    void loadFrom(const std::string& strInside)
    {
        m_File.replace(dict(strInside));
        reload();
    }

    /// The preset of a field, which a getter that finds nothing must leave.
    template <typename Value>
    using Getter = Preferences::EResult (Preferences::*)(const std::string&, Value&) const;
    template <typename Value>
    void expectLeft(Preferences::EResult eResult, Getter<Value> getter, const std::string& strKey, Value preset)
    {
        Value value = preset;
        EXPECT_EQ(eResult, (m_Preferences.*getter)(strKey, value)) << strKey;
        EXPECT_EQ(preset, value) << strKey;
    }
    std::string getText(const std::string& strKey)
    {
        std::string strValue = "none";
        m_Preferences.getText(strKey, strValue);
        return strValue;
    }

    MemoryPreferencesFile m_File;
    Preferences m_Preferences{"Test", 0, std::make_unique<CMemoryPreferences>(m_File)};
};

using Bytes = std::vector<uint8_t>;

} // namespace

// Values

TEST_F(PreferencesTest, GiveBackEveryTypeAlsoFromTheFile)
{
    Bytes bytes(256);
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<uint8_t>(i);
    m_Preferences.setText("s/text", "<a & \"b\"> ' \xE6\x9C\xA8\n  end ");
    m_Preferences.setInt("s/int", -2147483647 - 1);
    m_Preferences.setUint("s/uint", 4294967295u);
    m_Preferences.setReal("s/real", -0.375);
    m_Preferences.setBool("s/yes", true);
    m_Preferences.setBool("s/no", false);
    m_Preferences.setData("s/data", bytes.data(), bytes.size());
    m_Preferences.setTextArray("a/text", {"/with blanks/in it.mox", "", "b"});
    m_Preferences.setIntArray("a/int", {-1, 0, 2147483647});
    m_Preferences.setUintArray("a/uint", {0, 4294967295u});
    m_Preferences.setRealArray("a/real", {0.5, 1e300, -3});
    m_Preferences.setBoolArray("a/bool", {true, false, true});
    EXPECT_TRUE(m_Preferences.save());

    for (int iTime = 0; iTime < 2; ++iTime)
    {
        std::string strText;
        int32_t i32 = 0;
        uint32_t ui32 = 0;
        double d = 0;
        bool bYes = false;
        bool bNo = true;
        Bytes data;
        EXPECT_EQ(Preferences::eDone, m_Preferences.getText("s/text", strText));
        EXPECT_EQ("<a & \"b\"> ' \xE6\x9C\xA8\n  end ", strText);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getInt("s/int", i32));
        EXPECT_EQ(-2147483647 - 1, i32);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getUint("s/uint", ui32));
        EXPECT_EQ(4294967295u, ui32);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getReal("s/real", d));
        EXPECT_EQ(-0.375, d);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getBool("s/yes", bYes));
        EXPECT_TRUE(bYes);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getBool("s/no", bNo));
        EXPECT_FALSE(bNo);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getData("s/data", data));
        EXPECT_EQ(bytes, data);

        std::vector<std::string> texts;
        std::vector<int32_t> ints;
        std::vector<uint32_t> uints;
        std::vector<double> reals;
        std::vector<bool> bools;
        EXPECT_EQ(Preferences::eDone, m_Preferences.getTextArray("a/text", texts));
        EXPECT_EQ((std::vector<std::string>{"/with blanks/in it.mox", "", "b"}), texts);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getIntArray("a/int", ints));
        EXPECT_EQ((std::vector<int32_t>{-1, 0, 2147483647}), ints);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getUintArray("a/uint", uints));
        EXPECT_EQ((std::vector<uint32_t>{0, 4294967295u}), uints);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getRealArray("a/real", reals));
        EXPECT_EQ((std::vector<double>{0.5, 1e300, -3}), reals);
        EXPECT_EQ(Preferences::eDone, m_Preferences.getBoolArray("a/bool", bools));
        EXPECT_EQ((std::vector<bool>{true, false, true}), bools);
        reload();
    }
}

TEST_F(PreferencesTest, KeepCarriageReturns)
{
    m_Preferences.setText("\rkey", "\r\na\rb\r\r");
    m_Preferences.setTextArray("list", {"/a\rb.mox"});
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_NE(std::string::npos, m_File.strContent.find("<string>/a&#13;b.mox</string>")) << m_File.strContent;
    EXPECT_EQ(std::string::npos, m_File.strContent.find('\r'));
    reload();
    EXPECT_EQ("\r\na\rb\r\r", getText("\rkey"));
    std::vector<std::string> files;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getTextArray("list", files));
    EXPECT_EQ(std::vector<std::string>{"/a\rb.mox"}, files);
}

TEST_F(PreferencesTest, WriteEachTypeAsItsElement)
{
    m_Preferences.setText("text", "a");
    m_Preferences.setInt("int", -5);
    m_Preferences.setReal("real", 1.0 / 3); // a plain stream writes six digits
    m_Preferences.setBool("yes", true);
    m_Preferences.setBool("no", false);
    const uint8_t aui8Data[] = {'M', 'a'};
    m_Preferences.setData("data", aui8Data, 2);
    m_Preferences.setUintArray("array", {1, 2});
    m_Preferences.setInt("a/b", 1);
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_NE(std::string::npos, m_File.strContent.find("<plist version=\"1.0\">\n"
                                                        "    <dict>\n"
                                                        "        <key>text</key>\n"
                                                        "        <string>a</string>\n"
                                                        "        <key>int</key>\n"
                                                        "        <integer>-5</integer>\n"
                                                        "        <key>real</key>\n"
                                                        "        <real>0.333333</real>\n"
                                                        "        <key>yes</key>\n"
                                                        "        <true/>\n"
                                                        "        <key>no</key>\n"
                                                        "        <false/>\n"
                                                        "        <key>data</key>\n"
                                                        "        <data>TWE=</data>\n"
                                                        "        <key>array</key>\n"
                                                        "        <array>\n"
                                                        "            <integer>1</integer>\n"
                                                        "            <integer>2</integer>\n"
                                                        "        </array>\n"
                                                        "        <key>a</key>\n"
                                                        "        <dict>\n"
                                                        "            <key>b</key>\n"
                                                        "            <integer>1</integer>\n"
                                                        "        </dict>\n"
                                                        "    </dict>\n"
                                                        "</plist>\n"))
        << m_File.strContent;
}

TEST_F(PreferencesTest, WriteAndReadNumbersAlikeForEveryUser)
{
    struct Commas : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale earlier = std::locale::global(std::locale(std::locale(), new Commas));
    m_Preferences.setReal("real", 1234.5);
    m_Preferences.setInt("int", 1234567);
    double dValue = 0;
    int32_t i32Value = 0;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getReal("real", dValue));
    EXPECT_EQ(Preferences::eDone, m_Preferences.getInt("int", i32Value));
    std::locale::global(earlier);
    EXPECT_EQ(1234.5, dValue);
    EXPECT_EQ(1234567, i32Value);
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_NE(std::string::npos, m_File.strContent.find("<real>1234.5</real>"));
    EXPECT_NE(std::string::npos, m_File.strContent.find("<integer>1234567</integer>"));
}

TEST_F(PreferencesTest, ReadBytesPastWhatIsNoBase64)
{
    loadFrom("<key>a</key><data>\n  TW\tFu \n!!\n</data><key>none</key><data/><key>t</key><string>TWFu</string>");
    Bytes bytes;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getData("a", bytes));
    EXPECT_EQ((Bytes{'M', 'a', 'n'}), bytes);
    EXPECT_EQ(Preferences::eDone, m_Preferences.getData("none", bytes));
    EXPECT_EQ(Bytes{}, bytes);
    expectLeft<Bytes>(Preferences::eTypeMismatch, &Preferences::getData, "t", {7});
    expectLeft<Bytes>(Preferences::eKeyNotFound, &Preferences::getData, "x", {7});
}

TEST_F(PreferencesTest, KeepNoBytesAtAll)
{
    EXPECT_EQ(Preferences::eDone, m_Preferences.setData("a", nullptr, 0));
    EXPECT_TRUE(m_Preferences.save());
    reload();
    Bytes bytes = {1};
    EXPECT_EQ(Preferences::eDone, m_Preferences.getData("a", bytes));
    EXPECT_EQ(Bytes{}, bytes);
}

TEST_F(PreferencesTest, ReadAnEmptyTextAsOne)
{
    loadFrom("<key>a</key><string/><key>b</key><string></string>");
    EXPECT_EQ("", getText("a"));
    EXPECT_EQ("", getText("b"));
}

// What is missing, and what is of another type

TEST_F(PreferencesTest, LeaveAFieldAsItIsWhereTheKeyIsMissing)
{
    expectLeft<std::string>(Preferences::eKeyNotFound, &Preferences::getText, "a", "preset");
    expectLeft<int32_t>(Preferences::eKeyNotFound, &Preferences::getInt, "a/b", -4);
    expectLeft<uint32_t>(Preferences::eKeyNotFound, &Preferences::getUint, "a", 4);
    expectLeft<double>(Preferences::eKeyNotFound, &Preferences::getReal, "a", 0.5);
    expectLeft<bool>(Preferences::eKeyNotFound, &Preferences::getBool, "a", true);
    expectLeft<std::vector<std::string>>(Preferences::eKeyNotFound, &Preferences::getTextArray, "a", {"x"});
    expectLeft<std::vector<int32_t>>(Preferences::eKeyNotFound, &Preferences::getIntArray, "a", {1});
    expectLeft<std::vector<uint32_t>>(Preferences::eKeyNotFound, &Preferences::getUintArray, "a", {1});
    expectLeft<std::vector<double>>(Preferences::eKeyNotFound, &Preferences::getRealArray, "a", {1});
    expectLeft<std::vector<bool>>(Preferences::eKeyNotFound, &Preferences::getBoolArray, "a", {true});
}

TEST_F(PreferencesTest, WriteTheDefaultWhereTheKeyIsMissingOrOfAnotherType)
{
    loadFrom("<key>data</key><data>AA==</data>");
    for (const auto& [strKey, eResult] : {std::pair("missing", Preferences::eKeyNotFound), std::pair("data", Preferences::eTypeMismatch)})
    {
        std::string strText;
        int32_t i32 = 0;
        uint32_t ui32 = 0;
        double d = 0;
        bool b = false;
        EXPECT_EQ(eResult, m_Preferences.getText(strKey, strText, "default"));
        EXPECT_EQ("default", strText);
        EXPECT_EQ(eResult, m_Preferences.getInt(strKey, i32, -4));
        EXPECT_EQ(-4, i32);
        EXPECT_EQ(eResult, m_Preferences.getUint(strKey, ui32, 4));
        EXPECT_EQ(4u, ui32);
        EXPECT_EQ(eResult, m_Preferences.getReal(strKey, d, 0.5));
        EXPECT_EQ(0.5, d);
        EXPECT_EQ(eResult, m_Preferences.getBool(strKey, b, true));
        EXPECT_TRUE(b);
    }
}

TEST_F(PreferencesTest, PreferTheValueToTheDefault)
{
    m_Preferences.setInt("a", 7);
    int32_t i32Value = 0;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getInt("a", i32Value, 3));
    EXPECT_EQ(7, i32Value);
}

TEST_F(PreferencesTest, GiveAnIntegerAsNothingButAnInteger)
{
    loadFrom("<key>a</key><integer>1</integer>");
    expectLeft<std::string>(Preferences::eTypeMismatch, &Preferences::getText, "a", "preset");
    expectLeft<double>(Preferences::eTypeMismatch, &Preferences::getReal, "a", 0.5);
    expectLeft<bool>(Preferences::eTypeMismatch, &Preferences::getBool, "a", false);
    expectLeft<Bytes>(Preferences::eTypeMismatch, &Preferences::getData, "a", {7});
    expectLeft<std::vector<int32_t>>(Preferences::eTypeMismatch, &Preferences::getIntArray, "a", {7});
}

TEST_F(PreferencesTest, RefuseNumbersThatCannotBeRead)
{
    loadFrom("<key>word</key><integer>one</integer><key>none</key><integer/><key>large</key><integer>2147483648</integer>"
             "<key>larger</key><integer>4294967296</integer><key>real</key><real>half</real>");
    expectLeft<int32_t>(Preferences::eTypeMismatch, &Preferences::getInt, "word", 5);
    expectLeft<int32_t>(Preferences::eTypeMismatch, &Preferences::getInt, "none", 5);
    expectLeft<int32_t>(Preferences::eTypeMismatch, &Preferences::getInt, "large", 5);
    expectLeft<uint32_t>(Preferences::eTypeMismatch, &Preferences::getUint, "larger", 5);
    expectLeft<double>(Preferences::eTypeMismatch, &Preferences::getReal, "real", 5);
    uint32_t ui32Value = 0;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getUint("large", ui32Value));
    EXPECT_EQ(2147483648u, ui32Value);
}

TEST_F(PreferencesTest, RefuseAnArrayWithAnElementThatCannotBeRead)
{
    loadFrom("<key>ints</key><array><integer>1</integer><integer>x</integer></array>"
             "<key>bools</key><array><true/><string>true</string></array>");
    expectLeft<std::vector<int32_t>>(Preferences::eTypeMismatch, &Preferences::getIntArray, "ints", {7, 8});
    expectLeft<std::vector<bool>>(Preferences::eTypeMismatch, &Preferences::getBoolArray, "bools", {false});
}

TEST_F(PreferencesTest, TakeAnArrayInAnyCaseOfLetters)
{
    loadFrom("<key>a</key><Array><integer>1</integer></Array><key>b</key><ARRAY/><key>c</key><arrays/>");
    std::vector<int32_t> values;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getIntArray("a", values));
    EXPECT_EQ((std::vector<int32_t>{1}), values);
    EXPECT_EQ(Preferences::eDone, m_Preferences.getIntArray("b", values));
    EXPECT_TRUE(values.empty());
    expectLeft<std::vector<int32_t>>(Preferences::eTypeMismatch, &Preferences::getIntArray, "c", {7});
}

TEST_F(PreferencesTest, TakeABooleanByItsElementAlone)
{
    loadFrom("<key>a</key><true>false</true><key>b</key><string>true</string><key>c</key><True/>");
    bool bValue = false;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getBool("a", bValue));
    EXPECT_TRUE(bValue);
    expectLeft<bool>(Preferences::eTypeMismatch, &Preferences::getBool, "b", false);
    expectLeft<bool>(Preferences::eTypeMismatch, &Preferences::getBool, "c", false);
}

TEST_F(PreferencesTest, ChangeTheTypeOfAValueThatIsWrittenAnew)
{
    m_Preferences.setText("a", "text");
    m_Preferences.setBool("a", true);
    bool bValue = false;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getBool("a", bValue));
    EXPECT_TRUE(bValue);
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_NE(std::string::npos, m_File.strContent.find("<true/>")) << m_File.strContent;
    EXPECT_EQ(std::string::npos, m_File.strContent.find("text")) << m_File.strContent;

    m_Preferences.setIntArray("a", {1});
    m_Preferences.setInt("a", 3);
    int32_t i32Value = 0;
    EXPECT_EQ(Preferences::eDone, m_Preferences.getInt("a", i32Value));
    EXPECT_EQ(3, i32Value);
}

// Keys

TEST_F(PreferencesTest, AddressOneValueWhateverEmptyPiecesAKeyHas)
{
    m_Preferences.setText("Main//State/", "a");
    EXPECT_EQ("a", getText("Main/State"));
    m_Preferences.setText("/Main/State", "b");
    EXPECT_EQ("b", getText("Main//State/"));
}

TEST_F(PreferencesTest, RefuseAnEmptyKey)
{
    for (const char* strKey : {"", "/", "///"})
    {
        expectLeft<std::string>(Preferences::eEmptyKey, &Preferences::getText, strKey, "preset");
        EXPECT_EQ(Preferences::eEmptyKey, m_Preferences.setText(strKey, "a"));
        EXPECT_EQ(Preferences::eEmptyKey, m_Preferences.setIntArray(strKey, {1}));
    }
}

TEST_F(PreferencesTest, RefuseAKeyThatGoesDeeperThanAFileMay)
{
    std::string strKey = "a";
    for (int i = 0; i < 100; ++i)
        strKey += "/a";
    EXPECT_EQ(Preferences::eKeyNotFound, m_Preferences.setText(strKey, "b"));
    expectLeft<std::string>(Preferences::eKeyNotFound, &Preferences::getText, strKey, "preset");
}

// The file

TEST_F(PreferencesTest, AreNoneUntilTheyAreLoaded)
{
    Preferences preferences("Test", 0, std::make_unique<CMemoryPreferences>(m_File));
    std::string strValue = "preset";
    EXPECT_EQ(Preferences::eNoDocument, preferences.getText("a", strValue, "default"));
    EXPECT_EQ("default", strValue);
    EXPECT_EQ(Preferences::eNoDocument, preferences.setText("a", "b"));
    EXPECT_FALSE(preferences.save());
    EXPECT_FALSE(preferences.save(true));
}

TEST_F(PreferencesTest, CannotBeLoadedWithoutAFileLayer)
{
    Preferences preferences("Test", 0, nullptr);
    std::string strError;
    EXPECT_FALSE(preferences.load(strError, true));
    EXPECT_FALSE(preferences.save(true));
    int32_t i32Value = 0;
    EXPECT_EQ(Preferences::eNoDocument, preferences.getInt("a", i32Value));
}

TEST_F(PreferencesTest, TellWhyThereIsNoFile)
{
    m_File.bMissing = true;
    std::string strError;
    EXPECT_FALSE(m_Preferences.load(strError, true));
    EXPECT_EQ("ERROR: There is no file.", strError);
    EXPECT_EQ(Preferences::eNoDocument, m_Preferences.setInt("a", 1));
}

TEST_F(PreferencesTest, TellWhatIsWrongWithTheStructureAndLeaveTheFileAlone)
{
    const std::string strWrong = dict("<key>a</key>");
    m_File.replace(strWrong);
    std::string strError;
    EXPECT_FALSE(m_Preferences.load(strError, true));
    EXPECT_EQ("ERROR: Key missing value!", strError);
    EXPECT_EQ(Preferences::eNoDocument, m_Preferences.setInt("a", 1));
    EXPECT_FALSE(m_Preferences.save(true));
    EXPECT_EQ(strWrong, m_File.strContent);
}

TEST_F(PreferencesTest, ComeBackWhenAFileThatWasWrongIsPutRight)
{
    m_File.replace(dict("<key>a</key>"));
    std::string strError;
    EXPECT_FALSE(m_Preferences.load(strError, true));
    m_File.replace(dict("<key>a</key><string>b</string>"));
    EXPECT_EQ("b", getText("a"));
}

TEST_F(PreferencesTest, StartEmptyFromAFileThatIsNoList)
{
    m_File.replace("\x7F"
                   "ELF no list at all");
    reload();
    expectLeft<std::string>(Preferences::eKeyNotFound, &Preferences::getText, "a", "preset");
    m_Preferences.setText("a", "b");
    EXPECT_TRUE(m_Preferences.save());
    reload();
    EXPECT_EQ("b", getText("a"));
}

TEST_F(PreferencesTest, AreNoneWhereTheFileCannotBeReadAndLeaveItAlone)
{
    const std::string strGood = dict("<key>a</key><string>precious</string>");
    const std::string strLarge = dict("<key>a</key><string>" + std::string(4 << 20, 'x') + "</string>"); // of more than 4 MB
    for (const bool bFaulty : {true, false})
    {
        const std::string& strContent = bFaulty ? strGood : strLarge;
        m_File.replace(strContent);
        m_File.bFaulty = bFaulty;
        std::string strError;
        EXPECT_FALSE(m_Preferences.load(strError, true));
        EXPECT_EQ("ERROR: Failed to open preference file.", strError);
        expectLeft<std::string>(Preferences::eNoDocument, &Preferences::getText, "a", "preset");
        EXPECT_EQ(Preferences::eNoDocument, m_Preferences.setText("b", "mine"));
        EXPECT_FALSE(m_Preferences.save());
        EXPECT_FALSE(m_Preferences.save(true));
        EXPECT_EQ(strContent, m_File.strContent);
        EXPECT_EQ(0, m_File.iWritten);
    }
}

TEST_F(PreferencesTest, ComeBackWhenAFileThatCouldNotBeReadCanBe)
{
    m_File.replace(dict("<key>a</key><string>precious</string>"));
    m_File.bFaulty = true;
    std::string strError;
    EXPECT_FALSE(m_Preferences.load(strError, true));
    m_File.bFaulty = false;
    EXPECT_EQ("precious", getText("a"));
}

TEST_F(PreferencesTest, WriteTheFileOnlyToSaveAndOnlyWhatIsUnsaved)
{
    m_Preferences.setInt("a", 1);
    EXPECT_EQ(0, m_File.iWritten);
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_EQ(1, m_File.iWritten);
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_EQ(1, m_File.iWritten);
    EXPECT_TRUE(m_Preferences.save(true));
    EXPECT_EQ(2, m_File.iWritten);
    m_Preferences.setInt("a", 1); // what it was
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_EQ(2, m_File.iWritten);
}

TEST_F(PreferencesTest, StayUnsavedWhereASaveFails)
{
    m_Preferences.setInt("a", 1);
    m_File.bFull = true;
    EXPECT_FALSE(m_Preferences.save());
    m_File.bFull = false;
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_EQ(1, m_File.iWritten);
}

TEST_F(PreferencesTest, SaveNothingThatTheyWouldNotLoad)
{
    m_Preferences.setText("a", "b");
    EXPECT_TRUE(m_Preferences.save());
    m_Preferences.setText("large", std::string(5 << 20, 'x'));
    EXPECT_FALSE(m_Preferences.save());
    m_Preferences.setText("large", "");
    EXPECT_TRUE(m_Preferences.save());
    const Bytes large(5 << 20);
    EXPECT_EQ(Preferences::eTypeMismatch, m_Preferences.setData("large", large.data(), large.size()));
}

TEST_F(PreferencesTest, ShareOneDocumentAmongCopies)
{
    auto pFirst = std::make_unique<Preferences>(m_Preferences);
    const Preferences second = *pFirst;
    pFirst->setText("a", "b");
    EXPECT_EQ("b", getText("a"));
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_TRUE(pFirst->save());
    EXPECT_EQ(1, m_File.iWritten);
    pFirst.reset();
    std::string strValue;
    EXPECT_EQ(Preferences::eDone, second.getText("a", strValue));
}

// Changes by another process

TEST_F(PreferencesTest, AreReadAnewWhereAnotherProcessWroteTheFile)
{
    reload(true);
    Preferences other("Test", 0, std::make_unique<CMemoryPreferences>(m_File));
    std::string strError;
    EXPECT_TRUE(other.load(strError, true));
    m_Preferences.setText("a", "mine");
    EXPECT_TRUE(m_Preferences.save());

    std::string strValue;
    EXPECT_EQ(Preferences::eDone, other.getText("a", strValue));
    EXPECT_EQ("mine", strValue);
    other.setText("b", "theirs");
    EXPECT_TRUE(other.save());
    EXPECT_EQ("theirs", getText("b"));
    EXPECT_EQ("mine", getText("a"));
}

TEST_F(PreferencesTest, AreReadAnewBeforeAValueIsSetToo)
{
    reload(true);
    m_File.replace(dict("<key>b</key><string>theirs</string>"));
    m_Preferences.setText("a", "mine");
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_NE(std::string::npos, m_File.strContent.find("theirs"));
}

TEST_F(PreferencesTest, AreReadOnceWhileNothingChanges)
{
    reload(true);
    const int iOpened = m_File.iOpened;
    getText("a");
    m_Preferences.setText("a", "b");
    EXPECT_TRUE(m_Preferences.save());
    getText("a");
    EXPECT_EQ(iOpened, m_File.iOpened);
}

TEST_F(PreferencesTest, KeepWhatIsUnsavedOverAChangeOfTheFile)
{
    reload(true);
    m_Preferences.setText("a", "mine");
    m_File.replace(dict("<key>a</key><string>theirs</string>"));
    EXPECT_EQ("mine", getText("a"));
    EXPECT_TRUE(m_Preferences.save());
    EXPECT_NE(std::string::npos, m_File.strContent.find("mine"));
}

TEST_F(PreferencesTest, AreNotReadAnewWhereTheyDoNotWatch)
{
    m_Preferences.setText("a", "mine");
    EXPECT_TRUE(m_Preferences.save());
    m_File.replace(dict("<key>a</key><string>theirs</string>"));
    EXPECT_EQ("mine", getText("a"));
}

TEST_F(PreferencesTest, KeepTheirValuesWhereTheFileIsGone)
{
    reload(true);
    m_Preferences.setText("a", "mine");
    EXPECT_TRUE(m_Preferences.save());
    m_File.bMissing = true;
    EXPECT_EQ("mine", getText("a"));
}

TEST_F(PreferencesTest, KeepTheirValuesOverAChangeThatCannotBeReadUntilItCan)
{
    reload(true);
    m_Preferences.setText("a", "mine");
    EXPECT_TRUE(m_Preferences.save());
    const std::string strTheirs = dict("<key>b</key><string>theirs</string>");
    m_File.replace(strTheirs);
    m_File.bFaulty = true;
    for (int iAccess = 0; iAccess < 2; ++iAccess)
    {
        expectLeft<std::string>(Preferences::eNoDocument, &Preferences::getText, "a", "preset");
        EXPECT_EQ(Preferences::eNoDocument, m_Preferences.setText("c", "lost"));
        EXPECT_TRUE(m_Preferences.save()); // of nothing: nothing was set
        EXPECT_EQ(strTheirs, m_File.strContent);
    }
    // The old file again, as far as its time tells: then the old values hold.
    --m_File.ui32Time;
    EXPECT_EQ("mine", getText("a"));
    ++m_File.ui32Time;
    m_File.bFaulty = false;
    EXPECT_EQ("theirs", getText("b"));
    EXPECT_EQ("none", getText("a"));
}

TEST_F(PreferencesTest, GiveTheDefaultWhereTheChangedFileCannotBeLoaded)
{
    reload(true);
    m_Preferences.setText("a", "mine");
    EXPECT_TRUE(m_Preferences.save());
    m_File.replace(dict("<string>x</string>"));
    std::string strValue = "preset";
    EXPECT_EQ(Preferences::eNoDocument, m_Preferences.getText("a", strValue));
    EXPECT_EQ("preset", strValue);
    EXPECT_EQ(Preferences::eNoDocument, m_Preferences.setText("a", "x"));
    EXPECT_EQ(Preferences::eNoDocument, m_Preferences.getText("a", strValue, "default"));
    EXPECT_EQ("default", strValue);
}
