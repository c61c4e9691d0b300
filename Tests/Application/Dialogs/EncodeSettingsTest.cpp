#include "Dialogs/EncodeSettings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Catalogue/EncodeFilter.h"
#include "Common/Preferences.h"

using namespace moxtexture;

namespace
{

using Numbers = std::vector<uint32_t>;

/// Preferences in a file that no other test uses.
class EncodeSettingsFile : public testing::Test
{
protected:
    EncodeSettingsFile() : m_Preferences(std::string("EncodeSettings") + testing::UnitTest::GetInstance()->current_test_info()->name())
    {
        std::string strError;
        EXPECT_TRUE(m_Preferences.load(strError, false)) << strError;
    }

    void setLists(const Numbers& apis, const Numbers& highs, const Numbers& lows, const Numbers& types, const Numbers& spaces)
    {
        m_Preferences.setUintArray("Encoding/RecentAPIs", apis);
        m_Preferences.setUintArray("Encoding/RecentFormat/PTHigh", highs);
        m_Preferences.setUintArray("Encoding/RecentFormat/PTLow", lows);
        m_Preferences.setUintArray("Encoding/RecentFormat/VarType", types);
        m_Preferences.setUintArray("Encoding/RecentFormat/CSpace", spaces);
    }

    Numbers getList(const std::string& strKey)
    {
        Numbers numbers;
        EXPECT_EQ(Preferences::eDone, m_Preferences.getUintArray(strKey, numbers)) << strKey;
        return numbers;
    }

    Preferences m_Preferences;
};

RecentFormat entry(MOXPixelWord pixelFormat, uint32_t uiAPI, EMOXTChannelType eType = eCT_UnsignedNormalisedByte,
                   EMOXTColourSpace eSpace = eCS_Linear)
{
    return {{pixelFormat, eType, eSpace}, uiAPI};
}

void expectEqual(const RecentFormats& expected, const RecentFormats& found)
{
    ASSERT_EQ(expected.size(), found.size());
    for (size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_EQ(expected[i].encoding, found[i].encoding) << i;
        EXPECT_EQ(expected[i].uiAPI, found[i].uiAPI) << i;
    }
}

void expectDefaults(const EncodeSettings& settings)
{
    EXPECT_EQ(2, settings.i32MOXTCMode);
    EXPECT_EQ(0, settings.i32ETCMode);
    EXPECT_EQ(2, settings.i32ASTCMode);
    EXPECT_TRUE(settings.bMIPMaps);
    EXPECT_FALSE(settings.bDither);
    EXPECT_FALSE(settings.bDiff);
    EXPECT_FALSE(settings.bVerticalFlip);
}

/// As many different encodings as asked, the first ones of the catalogue.
RecentFormats makeEntries(size_t uiCount)
{
    RecentFormats formats;
    for (size_t i = 0; i < uiCount; ++i)
        formats.push_back({getEncoding(getEncodeCatalogue()[i]), static_cast<uint32_t>(i % 8)});
    return formats;
}

} // namespace

TEST(EncodeSettings, WithoutPreferencesAreTheDefaults)
{
    expectDefaults(loadEncodeSettings(nullptr));
    EXPECT_TRUE(loadRecentFormats(nullptr).empty());
    storeEncodeSettings(nullptr, {});
    storeRecentFormats(nullptr, {});
}

TEST_F(EncodeSettingsFile, AnEmptyFileGivesTheDefaults)
{
    expectDefaults(loadEncodeSettings(&m_Preferences));
    EXPECT_TRUE(loadRecentFormats(&m_Preferences).empty());
}

TEST_F(EncodeSettingsFile, EachSettingHasItsKey)
{
    storeEncodeSettings(&m_Preferences, {4, 3, 1, false, true, true, true});
    const auto expectInt = [&](const char* strKey, int32_t i32Expected)
    {
        int32_t i32Value = -1;
        EXPECT_EQ(Preferences::eDone, m_Preferences.getInt(strKey, i32Value));
        EXPECT_EQ(i32Expected, i32Value) << strKey;
    };
    const auto expectBool = [&](const char* strKey, bool bExpected)
    {
        bool bValue = !bExpected;
        EXPECT_EQ(Preferences::eDone, m_Preferences.getBool(strKey, bValue));
        EXPECT_EQ(bExpected, bValue) << strKey;
    };
    expectInt("Encoding/MOXTCEncode", 4);
    expectInt("Encoding/ETCEncode", 3);
    expectInt("Encoding/ASTCEncode", 1);
    expectBool("Encoding/DoMIPs", false);
    expectBool("Encoding/DoDither", true);
    expectBool("Encoding/DoDiff", true);
    expectBool("Encoding/DoVFlip", true);

    storeEncodeSettings(&m_Preferences, {4, 3, 1, true, false, true, false});
    expectBool("Encoding/DoMIPs", true);
    expectBool("Encoding/DoDither", false);
    expectBool("Encoding/DoDiff", true);
    expectBool("Encoding/DoVFlip", false);
}

TEST_F(EncodeSettingsFile, SettingsComeBackFromTheFile)
{
    storeEncodeSettings(&m_Preferences, {0, 1, 4, false, true, false, true});
    storeRecentFormats(&m_Preferences, {entry(ePF_BC1, 4, eCT_UnsignedNormalisedByte, eCS_sRGB), entry(k_RGBA8, 7)});
    ASSERT_TRUE(m_Preferences.save());

    Preferences other("EncodeSettingsSettingsComeBackFromTheFile");
    std::string strError;
    ASSERT_TRUE(other.load(strError, false)) << strError;
    const EncodeSettings settings = loadEncodeSettings(&other);
    EXPECT_EQ(0, settings.i32MOXTCMode);
    EXPECT_EQ(1, settings.i32ETCMode);
    EXPECT_EQ(4, settings.i32ASTCMode);
    EXPECT_FALSE(settings.bMIPMaps);
    EXPECT_TRUE(settings.bDither);
    EXPECT_FALSE(settings.bDiff);
    EXPECT_TRUE(settings.bVerticalFlip);
    expectEqual({entry(ePF_BC1, 4, eCT_UnsignedNormalisedByte, eCS_sRGB), entry(k_RGBA8, 7)}, loadRecentFormats(&other));
}

TEST_F(EncodeSettingsFile, AModeThatItsListDoesNotHaveIsTheDefault)
{
    for (const int32_t i32Wrong : {-1, 5, 99, INT32_MIN, INT32_MAX})
    {
        storeEncodeSettings(&m_Preferences, {i32Wrong, i32Wrong, i32Wrong, true, false, false, false});
        expectDefaults(loadEncodeSettings(&m_Preferences));
    }
    // ETC has four.
    storeEncodeSettings(&m_Preferences, {4, 4, 4, true, false, false, false});
    EXPECT_EQ(4, loadEncodeSettings(&m_Preferences).i32MOXTCMode);
    EXPECT_EQ(0, loadEncodeSettings(&m_Preferences).i32ETCMode);
    EXPECT_EQ(4, loadEncodeSettings(&m_Preferences).i32ASTCMode);
}

TEST_F(EncodeSettingsFile, ASettingOfAnotherTypeIsTheDefault)
{
    for (const char* strKey : {"Encoding/MOXTCEncode", "Encoding/ETCEncode", "Encoding/ASTCEncode", "Encoding/DoMIPs", "Encoding/DoDither",
                               "Encoding/DoDiff", "Encoding/DoVFlip", "Encoding/RecentAPIs", "Encoding/RecentFormat/PTHigh"})
        m_Preferences.setText(strKey, "rubbish");
    expectDefaults(loadEncodeSettings(&m_Preferences));
    EXPECT_TRUE(loadRecentFormats(&m_Preferences).empty());
}

TEST_F(EncodeSettingsFile, RecentFormatsAreFiveParallelListsOldestFirst)
{
    storeRecentFormats(&m_Preferences, {entry(ePF_BC1, 4, eCT_UnsignedNormalisedByte, eCS_sRGB),
                                        entry(layout("rgb", 5, 6, 5), 1, eCT_UnsignedNormalisedShort), entry(k_RGBA8, 0)});
    EXPECT_EQ((Numbers{4, 1, 0}), getList("Encoding/RecentAPIs"));
    EXPECT_EQ((Numbers{0, 0x00050605, 0x08080808}), getList("Encoding/RecentFormat/PTHigh"));
    EXPECT_EQ((Numbers{7, 0x00626772, 0x61626772}), getList("Encoding/RecentFormat/PTLow")); // "rgb", "rgba"
    EXPECT_EQ((Numbers{0, 4, 0}), getList("Encoding/RecentFormat/VarType"));
    EXPECT_EQ((Numbers{1, 0, 0}), getList("Encoding/RecentFormat/CSpace"));
}

TEST_F(EncodeSettingsFile, ListsOfUnequalLengthsCountAsFarAsTheShortest)
{
    setLists({7, 6, 5}, {0, 0, 0, 0, 0}, {7, 9, 11}, {0, 0}, {0, 0, 0, 1});
    expectEqual({entry(ePF_BC1, 7), entry(ePF_BC2, 6)}, loadRecentFormats(&m_Preferences));
    setLists({7, 6, 5}, {0, 0, 0}, {7, 9, 11}, {}, {0, 0, 0});
    EXPECT_TRUE(loadRecentFormats(&m_Preferences).empty());
}

TEST_F(EncodeSettingsFile, AMissingListLeavesNoEntries)
{
    m_Preferences.setUintArray("Encoding/RecentAPIs", {7});
    m_Preferences.setUintArray("Encoding/RecentFormat/PTHigh", {0});
    m_Preferences.setUintArray("Encoding/RecentFormat/PTLow", {7});
    m_Preferences.setUintArray("Encoding/RecentFormat/VarType", {0});
    EXPECT_TRUE(loadRecentFormats(&m_Preferences).empty());
    m_Preferences.setUintArray("Encoding/RecentFormat/CSpace", {0});
    EXPECT_EQ(1u, loadRecentFormats(&m_Preferences).size());
}

TEST_F(EncodeSettingsFile, EntriesThatNobodyCouldHaveChosenAreLeftOut)
{
    // An API, a format, a type and a space that are none, then a layout that is not offered, between two that are.
    setLists({7, 8, 0, 0, 0, 0, 6}, {0, 0, 0, 0, 0, 0xFFFFFFFF, 0}, {7, 9, 51, 11, 11, 0xFFFFFFFF, 9}, {0, 0, 0, 14, 0, 0, 0},
             {0, 0, 0, 0, 2, 0, 0});
    expectEqual({entry(ePF_BC1, 7), entry(ePF_BC2, 6)}, loadRecentFormats(&m_Preferences));
}

TEST_F(EncodeSettingsFile, NumbersBelowZeroAndWordsAreNoEntriesEither)
{
    setLists({7, 6}, {0, 0}, {7, 9}, {0, 0}, {0, 0});
    m_Preferences.setIntArray("Encoding/RecentAPIs", {-1, 6});
    expectEqual({entry(ePF_BC2, 6)}, loadRecentFormats(&m_Preferences));
    m_Preferences.setTextArray("Encoding/RecentFormat/PTLow", {"seven", "nine"});
    EXPECT_TRUE(loadRecentFormats(&m_Preferences).empty());
}

TEST_F(EncodeSettingsFile, OfMoreThanTenEntriesTheNewestStay)
{
    RecentFormats formats = makeEntries(100);
    storeRecentFormats(&m_Preferences, formats);
    formats.erase(formats.begin(), formats.end() - 10);
    expectEqual(formats, loadRecentFormats(&m_Preferences));
}

TEST_F(EncodeSettingsFile, OfAnEntryThatStandsTwiceTheNewerStays)
{
    storeRecentFormats(&m_Preferences, {entry(ePF_BC1, 4), entry(ePF_BC2, 5), entry(ePF_BC1, 7)});
    expectEqual({entry(ePF_BC2, 5), entry(ePF_BC1, 7)}, loadRecentFormats(&m_Preferences));
}

TEST(RecentFormats, TakeAChoiceAsTheNewest)
{
    RecentFormats formats;
    addRecentFormat(formats, entry(ePF_BC1, 4));
    addRecentFormat(formats, entry(ePF_BC2, 5));
    expectEqual({entry(ePF_BC1, 4), entry(ePF_BC2, 5)}, formats);
}

TEST(RecentFormats, MoveARepeatedChoiceToTheEndWithItsNewApi)
{
    RecentFormats formats = {entry(ePF_BC1, 4), entry(ePF_BC2, 5), entry(ePF_BC3, 6)};
    addRecentFormat(formats, entry(ePF_BC1, 7));
    expectEqual({entry(ePF_BC2, 5), entry(ePF_BC3, 6), entry(ePF_BC1, 7)}, formats);
}

TEST(RecentFormats, AreTheSameOnlyInAllThreeValues)
{
    RecentFormats formats = {entry(ePF_EAC_R11, 7, eCT_UnsignedNormalisedInteger), entry(ePF_BC1, 7)};
    addRecentFormat(formats, entry(ePF_EAC_R11, 7, eCT_SignedNormalisedInteger));
    addRecentFormat(formats, entry(ePF_BC1, 7, eCT_UnsignedNormalisedByte, eCS_sRGB));
    EXPECT_EQ(4u, formats.size());
}

TEST(RecentFormats, AreTenAtMost)
{
    RecentFormats formats;
    for (const RecentFormat& format : makeEntries(25))
        addRecentFormat(formats, format);
    RecentFormats expected = makeEntries(25);
    expected.erase(expected.begin(), expected.begin() + 15);
    expectEqual(expected, formats);

    // Ten stay ten when one of them is chosen again.
    addRecentFormat(formats, expected.front());
    EXPECT_EQ(10u, formats.size());
    EXPECT_EQ(expected.front().encoding, formats.back().encoding);
    EXPECT_EQ(expected[1].encoding, formats.front().encoding);
}

TEST(LegacyApi, GoesByTheNewestEntry)
{
    EXPECT_EQ(2u, getLegacyApi({}));
    constexpr uint32_t aauiExpected[][2] = {{0, 2}, {1, 1}, {2, 2}, {3, 2},  {4, 2},  {5, 2},  {6, 2},
                                            {7, 2}, {8, 4}, {9, 2}, {16, 6}, {32, 6}, {64, 6}, {128, 2}};
    for (const auto& auiRow : aauiExpected)
        EXPECT_EQ(auiRow[1], getLegacyApi({entry(ePF_BC1, 1), entry(ePF_BC2, auiRow[0])})) << auiRow[0];
}
