#include "Dialogs/CFilterEncodeDialog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableWidget>

#include "Application/Dialogs/EncodeDialogSupport.h"
#include "Common/Preferences.h"
#include "Resources/Resources.h"
#include "Support/QtSupport.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using CDialog = CUsedEncodeDialog;

/// Preferences in a file that no other test uses.
class EncodeDialogFile : public testing::Test
{
protected:
    EncodeDialogFile() : m_Preferences(fileName()) { load(m_Preferences); }

    static std::string fileName() { return std::string("EncodeDialog") + testing::UnitTest::GetInstance()->current_test_info()->name(); }
    static void load(Preferences& preferences)
    {
        std::string strError;
        EXPECT_TRUE(preferences.load(strError, false)) << strError;
    }

    /// What another process finds in the file.
    static Preferences reread()
    {
        Preferences preferences(fileName());
        load(preferences);
        return preferences;
    }

    /// Encodes to that format, for that API.
    int encodeTo(int iAPI, const std::string& strName)
    {
        CDialog dialog(64, 64, &m_Preferences);
        dialog.choose(iAPI, strName);
        return run(dialog, pressEncode);
    }

    Preferences m_Preferences;
};

} // namespace

TEST(EncodeDialog, GivesTheChoiceThatWasAccepted)
{
    CDialog dialog;
    dialog.choose(k_iOpenGLES3, "EAC RG11", "SNorm");
    dialog.check("Check_MIPMap").setChecked(false);
    dialog.check("Check_VFlip").setChecked(true);
    dialog.check("Check_Dither").setChecked(true);
    dialog.check("Check_Diff").setChecked(true);
    EXPECT_EQ(1, run(dialog, pressEncode));
    EXPECT_EQ(MOXPixelWord(ePF_EAC_RG11), dialog.getPixelFormat());
    EXPECT_EQ(eCT_SignedNormalisedInteger, dialog.getChannelType());
    EXPECT_EQ(eCS_Linear, dialog.getColourSpace());
    EXPECT_EQ(0u, dialog.getQuality());
    EXPECT_FALSE(dialog.getGenerateMIPMaps());
    EXPECT_TRUE(dialog.getVerticalFlip());
    EXPECT_TRUE(dialog.getDither());
    EXPECT_TRUE(dialog.getShowAsDiff());
}

TEST(EncodeDialog, GivesTheModeOfTheFamilyAsQuality)
{
    const std::pair<const char*, uint32_t> aFormats[] = {{"MOXTCII 4bpp", 4}, {"ETC1", 3},        {"ETC2 RGB", 3}, {"ETC2 RGBA", 3},
                                                         {"ASTC 4x4", 1},     {"ETC2 RGB A1", 0}, {"EAC R11", 0},  {"RGBA 8 8 8 8 ", 0}};
    for (const auto& [strName, uiQuality] : aFormats)
    {
        CDialog dialog(64, 64, nullptr, true, true);
        dialog.box("Combo_MOXTCMode").setCurrentIndex(4);
        dialog.box("Combo_ETCMode").setCurrentIndex(3);
        dialog.box("Combo_ASTCMode").setCurrentIndex(1);
        dialog.choose(k_iOpenGLES3, strName);
        EXPECT_EQ(1, run(dialog, pressEncode));
        EXPECT_EQ(uiQuality, dialog.getQuality()) << strName;
    }
}

TEST(EncodeDialog, DoesNotShowADifferenceThatItDoesNotOffer)
{
    CDialog dialog(64, 64, nullptr, true);
    EXPECT_TRUE(dialog.check("Check_Diff").isHidden());
    dialog.check("Check_Diff").setChecked(true);
    EXPECT_FALSE(dialog.getShowAsDiff());
    CDialog offering(64, 64, nullptr, false);
    EXPECT_FALSE(offering.check("Check_Diff").isHidden());
    EXPECT_FALSE(offering.getShowAsDiff());
    offering.check("Check_Diff").setChecked(true);
    EXPECT_TRUE(offering.getShowAsDiff());
}

TEST(EncodeDialog, ActsWhenItsButtonsArePressedNotWhenTheyAreReleased)
{
    CDialog dialog;
    dialog.choose(k_iVulkan, "BC1");
    dialog.show();
    QTest::mousePress(&dialog.encodeButton(), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(QDialog::Accepted, dialog.result());
    dialog.show();
    QTest::mousePress(&dialog.get<QPushButton>("Butt_Cancel"), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(QDialog::Rejected, dialog.result());
}

TEST(EncodeDialog, EncodesOnEnterAndCancelsOnEscape)
{
    CDialog dialog;
    dialog.choose(k_iVulkan, "BC1");
    EXPECT_EQ(1, run(dialog, [&](QDialog&) { QTest::keyClick(&dialog.table(), Qt::Key_Return); }));
    EXPECT_EQ(1, run(dialog, [&](QDialog&) { QTest::keyClick(&dialog.encodeButton(), Qt::Key_Enter); }));
    EXPECT_EQ(0, run(dialog, [&](QDialog&) { QTest::keyClick(&dialog.table(), Qt::Key_Escape); }));
    EXPECT_EQ(0, run(dialog, [&](QDialog&) { QTest::keyClick(&dialog.get<QPushButton>("Butt_Cancel"), Qt::Key_Space); }));
}

TEST(EncodeDialog, EnterDoesNothingWhileNothingIsChosen)
{
    CDialog dialog;
    EXPECT_EQ(0, run(dialog,
                     [&](QDialog&)
                     {
                         QTest::keyClick(&dialog.table(), Qt::Key_Return);
                         EXPECT_TRUE(dialog.isVisible());
                         QTest::keyClick(&dialog, Qt::Key_Escape);
                     }));
}

TEST(EncodeDialog, TabLeavesTheTable)
{
    CDialog dialog;
    dialog.choose(k_iVulkan, "MOXTCII 2bpp");
    dialog.show();
    dialog.activateWindow();
    dialog.table().setFocus();
    QTest::keyClick(&dialog.table(), Qt::Key_Tab);
    EXPECT_EQ(&dialog.box("Combo_MOXTCMode"), dialog.focusWidget());
}

TEST(EncodeDialog, TellsWhenItWasAcceptedWithNothingThatWillDo)
{
    CDialog dialog(100, 100);
    dialog.choose(k_iOpenGLES2, "MOXTC 2bpp RGB");
    CDialogAnswers answers;
    answers.thenAccept().thenPress(QMessageBox::Ok);
    EXPECT_EQ(-1, dialog.execDialog());
    ASSERT_EQ(2u, answers.seen().size());
    EXPECT_EQ("Cannot Encode", answers.seen()[1].strTitle);
    EXPECT_EQ("Unable to encode as invalid options selected. Please check your pixel format and try again.", answers.seen()[1].strText);
    EXPECT_EQ(QMessageBox::Critical, answers.seen()[1].eIcon);

    // The same dialog can be run again.
    dialog.choose(k_iOpenGLES2, "MOXTCII 2bpp");
    answers.thenDo(pressEncode);
    EXPECT_EQ(1, dialog.execDialog());
    EXPECT_EQ(MOXPixelWord(ePF_MOXTCII_2bpp), dialog.getPixelFormat());
}

TEST(EncodeDialog, HasRoomForItsColumnsAndTenRowsAtStart)
{
    CDialog dialog;
    const QTableWidget& table = dialog.table();
    int iColumns = 0;
    for (int i = 0; i < 4; ++i)
        iColumns += table.columnWidth(i);
    EXPECT_EQ(iColumns + table.verticalScrollBar()->sizeHint().width() + 2 * table.frameWidth(), table.minimumWidth());
    dialog.filter("Combo_API", k_iVulkan);
    EXPECT_EQ(table.horizontalHeader()->sizeHint().height() + 2 * (table.frameWidth() + 5 * table.rowHeight(0)), table.minimumHeight());
    EXPECT_GE(dialog.width(), table.minimumWidth());
    EXPECT_GE(dialog.height(), table.minimumHeight());
}

TEST(EncodeDialog, CutsNoTextOfItsTable)
{
    CDialog dialog;
    dialog.show();
    for (int iAPI = 1; iAPI <= k_iVulkan; ++iAPI)
    {
        dialog.filter("Combo_API", iAPI);
        for (int i = 0; i < dialog.table().rowCount(); ++i)
            for (int iColumn = 0; iColumn < 4; ++iColumn)
                EXPECT_LT(dialog.table().fontMetrics().horizontalAdvance(dialog.table().item(i, iColumn)->text()),
                          dialog.table().columnWidth(iColumn))
                    << dialog.row(i);
    }
    EXPECT_FALSE(dialog.table().horizontalScrollBar()->isVisible());
}

TEST_F(EncodeDialogFile, RestoresEverySettingAfterAnyExit)
{
    for (const bool bAccept : {false, true})
    {
        CDialog dialog(64, 64, &m_Preferences);
        dialog.box("Combo_MOXTCMode").setCurrentIndex(bAccept ? 4 : 1);
        dialog.box("Combo_ETCMode").setCurrentIndex(bAccept ? 1 : 3);
        dialog.box("Combo_ASTCMode").setCurrentIndex(bAccept ? 0 : 4);
        dialog.check("Check_MIPMap").setChecked(bAccept);
        dialog.check("Check_Dither").setChecked(!bAccept);
        dialog.check("Check_Diff").setChecked(!bAccept);
        dialog.check("Check_VFlip").setChecked(!bAccept);
        dialog.choose(k_iVulkan, "BC1");
        EXPECT_EQ(bAccept ? 1 : 0, run(dialog, bAccept ? pressEncode : pressCancel));

        Preferences stored = reread();
        const CDialog next(64, 64, &stored);
        EXPECT_EQ(bAccept ? 4 : 1, next.box("Combo_MOXTCMode").currentIndex());
        EXPECT_EQ(bAccept ? 1 : 3, next.box("Combo_ETCMode").currentIndex());
        EXPECT_EQ(bAccept ? 0 : 4, next.box("Combo_ASTCMode").currentIndex());
        EXPECT_EQ(bAccept, next.check("Check_MIPMap").isChecked());
        EXPECT_EQ(!bAccept, next.check("Check_Dither").isChecked());
        EXPECT_EQ(!bAccept, next.check("Check_Diff").isChecked());
        EXPECT_EQ(!bAccept, next.check("Check_VFlip").isChecked());
        // The recent list comes with acceptance alone.
        EXPECT_EQ(bAccept ? Texts{"BC1/UNorm/lRGB/Vulkan"} : Texts{}, next.rows());
    }
}

TEST_F(EncodeDialogFile, CancellingStoresTheSettingsButNotTheRecentList)
{
    ASSERT_EQ(1, encodeTo(k_iVulkan, "BC1"));
    {
        CDialog dialog(64, 64, &m_Preferences);
        dialog.choose(k_iVulkan, "BC3");
        dialog.check("Check_Dither").setChecked(true);
        EXPECT_EQ(0, run(dialog, pressCancel));
    }
    Preferences stored = reread();
    bool bDither = false;
    stored.getBool("Encoding/DoDither", bDither);
    EXPECT_TRUE(bDither);
    std::vector<uint32_t> formats;
    stored.getUintArray("Encoding/RecentFormat/PTLow", formats);
    EXPECT_EQ(std::vector<uint32_t>{7}, formats);
}

TEST_F(EncodeDialogFile, ARefusedAcceptanceStoresNothing)
{
    CDialog dialog(100, 100, &m_Preferences);
    dialog.choose(k_iOpenGLES2, "MOXTC 2bpp RGB");
    dialog.check("Check_Dither").setChecked(true);
    CDialogAnswers answers;
    answers.thenAccept().thenPress(QMessageBox::Ok);
    EXPECT_EQ(-1, dialog.execDialog());
    Preferences stored = reread();
    bool bDither = false;
    EXPECT_EQ(Preferences::eKeyNotFound, stored.getBool("Encoding/DoDither", bDither));
}

TEST_F(EncodeDialogFile, ListsRecentFormatsNewestFirstEachWithItsApi)
{
    ASSERT_EQ(1, encodeTo(k_iDirectX93, "BC1"));
    ASSERT_EQ(1, encodeTo(k_iVulkan, "RGBA 8 8 8 8 "));
    ASSERT_EQ(1, encodeTo(k_iOpenGLES3, "ETC1"));
    Preferences stored = reread();
    CDialog dialog(64, 64, &stored);
    EXPECT_EQ((Texts{"ETC1/UNorm/lRGB/OpenGL ES 3", "RGBA 8 8 8 8 /UNorm/lRGB/Vulkan", "BC1/UNorm/lRGB/DirectX 11 (9_3)"}), dialog.rows());

    // The newest is chosen, and Enter encodes to it at once.
    EXPECT_EQ(0, dialog.table().currentRow());
    EXPECT_EQ("StackPage_ETCOpts", dialog.page());
    EXPECT_TRUE(dialog.encodeButton().isEnabled());
    EXPECT_EQ(1, run(dialog,
                     [&](QDialog&)
                     {
                         EXPECT_EQ(&dialog.encodeButton(), dialog.focusWidget());
                         QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
                     }));
    EXPECT_EQ(MOXPixelWord(ePF_ETC1), dialog.getPixelFormat());
}

TEST_F(EncodeDialogFile, ARecentChoiceKeepsTheApiThatItWasChosenFor)
{
    ASSERT_EQ(1, encodeTo(k_iDirectX93, "BC1"));
    ASSERT_EQ(1, encodeTo(k_iVulkan, "BC3"));
    {
        CDialog dialog(64, 64, &m_Preferences);
        dialog.table().selectRow(1);
        EXPECT_EQ(1, run(dialog, pressEncode));
        EXPECT_EQ(MOXPixelWord(ePF_BC1), dialog.getPixelFormat());
    }
    const CDialog next(64, 64, &m_Preferences);
    EXPECT_EQ((Texts{"BC1/UNorm/lRGB/DirectX 11 (9_3)", "BC3/UNorm/lRGB/Vulkan"}), next.rows());
}

TEST_F(EncodeDialogFile, ARepeatedChoiceMovesUpInsteadOfDoubling)
{
    ASSERT_EQ(1, encodeTo(k_iDirectX93, "BC1"));
    ASSERT_EQ(1, encodeTo(k_iVulkan, "BC3"));
    ASSERT_EQ(1, encodeTo(k_iVulkan, "BC1"));
    const CDialog dialog(64, 64, &m_Preferences);
    EXPECT_EQ((Texts{"BC1/UNorm/lRGB/Vulkan", "BC3/UNorm/lRGB/Vulkan"}), dialog.rows());
}

TEST_F(EncodeDialogFile, TellsTheLegacyApiOfTheNewestChoice)
{
    CDialog dialog(64, 64, &m_Preferences);
    EXPECT_EQ(2u, dialog.getLegacyApi());
    dialog.choose(k_iOpenGLES2, "ETC1"); // the second of the list: place 1
    EXPECT_EQ(1, run(dialog, pressEncode));
    EXPECT_EQ(1u, dialog.getLegacyApi());
    dialog.choose(k_iVulkan, "BC1");
    EXPECT_EQ(1, run(dialog, pressEncode));
    EXPECT_EQ(2u, dialog.getLegacyApi());
}

TEST_F(EncodeDialogFile, SurvivesAnEditedFile)
{
    m_Preferences.setInt("Encoding/MOXTCEncode", 99);
    m_Preferences.setInt("Encoding/ETCEncode", -7);
    m_Preferences.setText("Encoding/DoMIPs", "perhaps");
    m_Preferences.setUintArray("Encoding/RecentAPIs", {7, 0xFFFFFFFF, 3, 2, 1, 0});
    m_Preferences.setUintArray("Encoding/RecentFormat/PTHigh", {0, 0, 0xFFFFFFFF});
    m_Preferences.setUintArray("Encoding/RecentFormat/PTLow", {7, 9, 0xFFFFFFFF, 4});
    m_Preferences.setUintArray("Encoding/RecentFormat/VarType", {0, 0, 77, 0, 0});
    m_Preferences.setUintArray("Encoding/RecentFormat/CSpace", {1, 0, 0, 0});
    CDialog dialog(64, 64, &m_Preferences);
    EXPECT_EQ((Texts{"BC1/UNorm/sRGB/Vulkan"}), dialog.rows());
    EXPECT_EQ(2, dialog.box("Combo_MOXTCMode").currentIndex());
    EXPECT_EQ(0, dialog.box("Combo_ETCMode").currentIndex());
    EXPECT_TRUE(dialog.check("Check_MIPMap").isChecked());
    EXPECT_EQ(1, run(dialog, pressEncode));
    EXPECT_EQ(eCS_sRGB, dialog.getColourSpace());
}
