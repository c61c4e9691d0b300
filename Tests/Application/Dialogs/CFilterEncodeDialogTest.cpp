#include "Dialogs/CFilterEncodeDialog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTableWidget>

#include "Common/Preferences.h"
#include "Resources/Resources.h"
#include "Support/QtSupport.h"

using namespace moxtexture;
using testsupport::CDialogAnswers;

namespace
{

using Texts = std::vector<std::string>;

constexpr int k_iOpenGLES2 = 2, k_iOpenGLES3 = 3, k_iOpenGL = 4, k_iDirectX93 = 5, k_iDirectX111 = 7, k_iVulkan = 8; // in Combo_API

CMOXTextureHeader makeHeader(uint32_t uiWidth, uint32_t uiHeight)
{
    return CMOXTextureHeader(k_RGBA8, uiHeight, uiWidth, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
}

/// The dialog, and what a user sees and touches of it.
class CDialog : public CFilterEncodeDialog
{
public:
    explicit CDialog(uint32_t uiWidth = 64, uint32_t uiHeight = 64, Preferences* pPreferences = nullptr, bool bHideDiff = false,
                     bool bASTCEncoderFound = false)
        : CFilterEncodeDialog(makeHeader(uiWidth, uiHeight), nullptr, pPreferences, bHideDiff, bASTCEncoderFound)
    {
    }

    template <typename Widget>
    Widget& get(const char* strName) const
    {
        auto* pWidget = findChild<Widget*>(strName);
        if (pWidget == nullptr)
            throw std::runtime_error(std::string("no widget ") + strName);
        return *pWidget;
    }
    QComboBox& box(const char* strName) const { return get<QComboBox>(strName); }
    QCheckBox& check(const char* strName) const { return get<QCheckBox>(strName); }
    QTableWidget& table() const { return get<QTableWidget>("Table_FilteredFormats"); }
    QPushButton& encodeButton() const { return get<QPushButton>("Butt_Encode"); }
    std::string page() const { return get<QStackedWidget>("Stack_WarningsAndOptions").currentWidget()->objectName().toStdString(); }
    bool isWarned(const std::string& strFamily) const
    {
        const bool bText = !get<QLabel>(("Label_" + strFamily + "Warning").c_str()).isHidden();
        EXPECT_EQ(bText, !get<QLabel>(("Icon_" + strFamily + "Warning").c_str()).isHidden());
        return bText;
    }

    void filter(const char* strBox, int iIndex) const { box(strBox).setCurrentIndex(iIndex); }

    std::string cell(int iRow, int iColumn) const { return table().item(iRow, iColumn)->text().toStdString(); }
    std::string row(int iRow) const { return cell(iRow, 0) + "/" + cell(iRow, 1) + "/" + cell(iRow, 2) + "/" + cell(iRow, 3); }
    Texts rows() const
    {
        Texts texts;
        for (int i = 0; i < table().rowCount(); ++i)
            texts.push_back(row(i));
        return texts;
    }

    /// Shows the formats of an API and clicks on one of them.
    void choose(int iAPI, const std::string& strName, const std::string& strType = "UNorm", const std::string& strSpace = "lRGB") const
    {
        filter("Combo_API", iAPI);
        for (int i = 0; i < table().rowCount(); ++i)
            if (cell(i, 0) == strName && cell(i, 1) == strType && cell(i, 2) == strSpace)
                return table().selectRow(i);
        ADD_FAILURE() << "not listed: " << strName << " " << strType << " " << strSpace;
    }
};

/// Runs the dialog, and what is done while it is up.
int run(CDialog& dialog, const std::function<void(QDialog&)>& work)
{
    CDialogAnswers answers;
    answers.thenDo(work);
    return dialog.execDialog();
}

void pressEncode(QDialog& dialog)
{
    QTest::mousePress(dialog.findChild<QPushButton*>("Butt_Encode"), Qt::LeftButton);
}

void pressCancel(QDialog& dialog)
{
    QTest::mousePress(dialog.findChild<QPushButton*>("Butt_Cancel"), Qt::LeftButton);
}

Texts textsOf(const QComboBox& box)
{
    Texts texts;
    for (int i = 0; i < box.count(); ++i)
        texts.push_back(box.itemText(i).toStdString());
    return texts;
}

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

TEST(EncodeDialog, OnItsFirstStartOffersNothingUntilAGroupIsChosen)
{
    const CDialog dialog;
    EXPECT_EQ("Recent Formats", dialog.box("Combo_API").currentText().toStdString());
    EXPECT_EQ(0, dialog.table().rowCount());
    EXPECT_EQ("StackPage_NoSelection", dialog.page());
    EXPECT_FALSE(dialog.encodeButton().isEnabled());

    dialog.filter("Combo_API", k_iVulkan);
    EXPECT_EQ(110, dialog.table().rowCount());
    EXPECT_EQ("StackPage_NoSelection", dialog.page());
    EXPECT_FALSE(dialog.encodeButton().isEnabled());

    dialog.table().selectRow(0);
    EXPECT_EQ("StackPage_MOXTCOpts", dialog.page());
    EXPECT_TRUE(dialog.encodeButton().isEnabled());
}

TEST(EncodeDialog, OnItsFirstStartIsReadyForTheKeyboard)
{
    CDialog dialog;
    dialog.show();
    EXPECT_EQ(&dialog.box("Combo_API"), dialog.focusWidget());
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
    EXPECT_EQ("OpenGL ES 1", dialog.box("Combo_API").currentText().toStdString());
    EXPECT_EQ(14, dialog.table().rowCount());
}

TEST(EncodeDialog, HasItsTitleTextsAndBuddies)
{
    const CDialog dialog;
    EXPECT_EQ("Encode Texture", dialog.windowTitle().toStdString());
    EXPECT_FALSE(dialog.windowFlags() & Qt::WindowContextHelpButtonHint);
    const char* const aLabels[][3] = {{"Label_API", "Group/API:", "Combo_API"},
                                      {"Label_BPP", "Bits Per Pixel:", "Combo_BPP"},
                                      {"Label_NumChannels", "Channels:", "Combo_NumChannels"},
                                      {"Label_ColourSpace", "Colour Space:", "Combo_ColourSpace"},
                                      {"Label_VariableType", "Channel Type:", "Combo_VariableType"},
                                      {"Label_HasAlpha", "Has Alpha:", "Combo_HasAlpha"},
                                      {"Label_MOXTCMode", "MOXTC Encoding Mode:", "Combo_MOXTCMode"},
                                      {"Label_ETCMode", "ETC Encoding Mode:", "Combo_ETCMode"},
                                      {"Label_ASTCMode", "ASTC Encoding Mode", "Combo_ASTCMode"}};
    for (const auto& aRow : aLabels)
    {
        EXPECT_EQ(aRow[1], dialog.get<QLabel>(aRow[0]).text().toStdString());
        EXPECT_EQ(&dialog.box(aRow[2]), dialog.get<QLabel>(aRow[0]).buddy());
    }
    const char* const aButtons[][2] = {
        {"Butt_ResetFilters", "Reset Filters"}, {"Butt_Encode", "Encode"},         {"Butt_Cancel", "Cancel"},
        {"Check_MIPMap", "Generate MIPMaps:"},  {"Check_VFlip", "Vertical Flip:"}, {"Check_Dither", "Dither:"},
        {"Check_Diff", "Show As Diff View:"}};
    for (const auto& aRow : aButtons)
        EXPECT_EQ(aRow[1], dialog.get<QAbstractButton>(aRow[0]).text().toStdString());
    const char* const aPages[][2] = {
        {"Label_MOXTCWarning", "Warning: Rectangular MOXTC Textures are not supported on all devices. Please check before deployment."},
        {"Label_ETCWarning", "Warning: Non-Power of Two ETC Textures are not supported on all devices. Please check before deployment."},
        {"Label_ASTCError", "Error: astcenc.exe not found. Please download and place in PATH."},
        {"Label_NPOTError", "Non-Power of Two textures are not supported by the selected pixel format."},
        {"Label_SizeError", "The dimensions of the current texture are incompatible with the pixel format you have chosen."},
        {"Label_NoSelection", "Please choose a pixel type."}};
    for (const auto& aRow : aPages)
        EXPECT_EQ(aRow[1], dialog.get<QLabel>(aRow[0]).text().toStdString());
}

TEST(EncodeDialog, HasItsListsAndDefaults)
{
    const CDialog dialog;
    EXPECT_EQ((Texts{"Recent Formats", "OpenGL ES 1", "OpenGL ES 2", "OpenGL ES 3", "OpenGL", "DirectX 11 (9_3)", "DirectX 11 (10_1)",
                     "DirectX 11 (11_1)", "Vulkan"}),
              textsOf(dialog.box("Combo_API")));
    EXPECT_EQ(
        (Texts{"Any", "Any Compressed", "0.59", "0.71", "0.85", "0.89", "1",   "1.02", "1.07", "1.28", "1.6", "2",  "2.13", "2.56", "2.67",
               "3.2", "3.56",           "4",    "4.27", "4.74", "5.12", "6.4", "8",    "16",   "24",   "32",  "48", "64",   "96",   "128"}),
        textsOf(dialog.box("Combo_BPP")));
    EXPECT_EQ((Texts{"Any", "1", "2", "3", "4"}), textsOf(dialog.box("Combo_NumChannels")));
    EXPECT_EQ((Texts{"Any", "lRGB", "sRGB"}), textsOf(dialog.box("Combo_ColourSpace")));
    EXPECT_EQ((Texts{"Any", "UNorm", "SNorm", "UInt", "SInt", "UFloat", "Float"}), textsOf(dialog.box("Combo_VariableType")));
    EXPECT_EQ((Texts{"Any", "Yes", "No"}), textsOf(dialog.box("Combo_HasAlpha")));
    for (const char* strBox :
         {"Combo_API", "Combo_BPP", "Combo_NumChannels", "Combo_ColourSpace", "Combo_VariableType", "Combo_HasAlpha", "Combo_ETCMode"})
        EXPECT_EQ(0, dialog.box(strBox).currentIndex()) << strBox;

    EXPECT_EQ((Texts{"Fastest (Development Quality)", "Fast (Lower Quality)", "Normal (Good Quality)", "High (Better Quality)",
                     "Very High (Best Quality)"}),
              textsOf(dialog.box("Combo_MOXTCMode")));
    EXPECT_EQ((Texts{"Fast", "Fast Perceptual", "Slow", "Slow Perceptual"}), textsOf(dialog.box("Combo_ETCMode")));
    EXPECT_EQ((Texts{"Very Fast", "Fast", "Medium", "Thorough", "Exhaustive"}), textsOf(dialog.box("Combo_ASTCMode")));
    EXPECT_EQ(2, dialog.box("Combo_MOXTCMode").currentIndex());
    EXPECT_EQ(2, dialog.box("Combo_ASTCMode").currentIndex());

    EXPECT_TRUE(dialog.check("Check_MIPMap").isChecked());
    EXPECT_FALSE(dialog.check("Check_VFlip").isChecked());
    EXPECT_FALSE(dialog.check("Check_Dither").isChecked());
    EXPECT_FALSE(dialog.check("Check_Diff").isChecked());
}

TEST(EncodeDialog, NamesForAssistantsEveryWidgetThatAUserTouches)
{
    const CDialog dialog;
    for (const QWidget* pWidget : dialog.findChildren<QWidget*>())
        if (qobject_cast<const QComboBox*>(pWidget) != nullptr || qobject_cast<const QCheckBox*>(pWidget) != nullptr ||
            qobject_cast<const QTableWidget*>(pWidget) != nullptr)
        {
            EXPECT_FALSE(pWidget->accessibleName().isEmpty()) << pWidget->objectName().toStdString();
        }
}

TEST(EncodeDialog, ShowsItsIconsBesideWarningsAndErrors)
{
    initResources();
    const CDialog dialog;
    for (const char* strIcon : {"Icon_MOXTCWarning", "Icon_ETCWarning", "Icon_ASTCError", "Icon_NPOTError", "Icon_SizeError"})
    {
        const QPixmap pixmap = dialog.get<QLabel>(strIcon).pixmap(Qt::ReturnByValue);
        EXPECT_EQ(24, pixmap.width() / pixmap.devicePixelRatio()) << strIcon;
        EXPECT_FALSE(dialog.get<QLabel>(strIcon).accessibleName().isEmpty()) << strIcon;
    }
}

TEST(EncodeDialog, KeepsItsSizeWhileRowsAreChosen)
{
    for (const auto& [uiWidth, uiHeight] : {std::pair{64u, 64u}, {128u, 64u}, {101u, 37u}})
    {
        CDialog dialog(uiWidth, uiHeight);
        dialog.show();
        const QSize size = dialog.size();
        const QRect table = dialog.table().geometry();
        dialog.filter("Combo_API", k_iOpenGLES3);
        for (int i = 0; i < dialog.table().rowCount(); i += 5)
        {
            dialog.table().selectRow(i);
            QApplication::processEvents();
            EXPECT_EQ(size, dialog.size()) << dialog.row(i);
            EXPECT_EQ(table, dialog.table().geometry()) << dialog.row(i);
            EXPECT_LT(dialog.table().geometry().bottom(), dialog.get<QStackedWidget>("Stack_WarningsAndOptions").geometry().top());
        }
    }
}

TEST(EncodeDialog, ListsSingleRowsThatCannotBeEditedOrSorted)
{
    const CDialog dialog;
    const QTableWidget& table = dialog.table();
    ASSERT_EQ(4, table.columnCount());
    const char* const aHeaders[] = {"Name", "Type", "Colour Space", "API"};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(aHeaders[i], table.horizontalHeaderItem(i)->text().toStdString());
    EXPECT_EQ(QAbstractItemView::SingleSelection, table.selectionMode());
    EXPECT_EQ(QAbstractItemView::SelectRows, table.selectionBehavior());
    EXPECT_EQ(QAbstractItemView::NoEditTriggers, table.editTriggers());
    EXPECT_FALSE(table.isSortingEnabled());
}

TEST(EncodeDialog, FillsItsColumnsWithShortNamesAndTheChosenApi)
{
    const CDialog dialog;
    dialog.filter("Combo_API", k_iDirectX93);
    dialog.filter("Combo_HasAlpha", 2);
    EXPECT_EQ((Texts{"BC1/UNorm/lRGB/DirectX 11 (9_3)", "BC1/UNorm/sRGB/DirectX 11 (9_3)", "RGB 5 6 5 /UNorm/lRGB/DirectX 11 (9_3)",
                     "RG 8 8 /SNorm/lRGB/DirectX 11 (9_3)", "RG 16 16 /Float/lRGB/DirectX 11 (9_3)",
                     "RG 16 16 /UNorm/lRGB/DirectX 11 (9_3)", "RG 16 16 /SNorm/lRGB/DirectX 11 (9_3)",
                     "RGB 16 16 16 /Float/lRGB/DirectX 11 (9_3)", "RGB 16 16 16 /UNorm/lRGB/DirectX 11 (9_3)",
                     "RGB 16 16 16 /SNorm/lRGB/DirectX 11 (9_3)", "RG 32 32 /Float/lRGB/DirectX 11 (9_3)",
                     "R 8 /UNorm/lRGB/DirectX 11 (9_3)", "R 16 /UNorm/lRGB/DirectX 11 (9_3)", "R 32 /Float/lRGB/DirectX 11 (9_3)"}),
              dialog.rows());
}

// The counts of this test were taken from the list of formats by a separate script, for OpenGL ES 3 and each place of each box.
TEST(EncodeDialog, EveryFilterBoxNarrowsTheList)
{
    const CDialog dialog;
    constexpr int aiApis[] = {0, 14, 23, 124, 18, 27, 65, 65, 110};
    for (int i = 0; i < 9; ++i)
    {
        dialog.filter("Combo_API", i);
        EXPECT_EQ(aiApis[i], dialog.table().rowCount()) << i;
    }

    dialog.filter("Combo_API", k_iOpenGLES3);
    const std::pair<const char*, std::vector<int>> aBoxes[] = {
        {"Combo_BPP", {124, 71, 2, 2, 2, 2, 0, 2, 2, 4, 4, 10, 2, 2, 4, 2, 4, 13, 2, 2, 2, 2, 12, 11, 5, 16, 3, 6, 3, 3}},
        {"Combo_NumChannels", {124, 62, 64, 70, 76}},
        {"Combo_ColourSpace", {124, 89, 35}},
        {"Combo_VariableType", {124, 83, 6, 13, 12, 2, 8}},
        {"Combo_HasAlpha", {124, 78, 46}},
    };
    for (const auto& [strBox, aiCounts] : aBoxes)
    {
        ASSERT_EQ(aiCounts.size(), static_cast<size_t>(dialog.box(strBox).count())) << strBox;
        for (size_t i = 0; i < aiCounts.size(); ++i)
        {
            dialog.filter(strBox, static_cast<int>(i));
            EXPECT_EQ(aiCounts[i], dialog.table().rowCount()) << strBox << " " << i;
        }
        dialog.filter(strBox, 0);
    }
}

TEST(EncodeDialog, FilteringTakesTheSelectionAway)
{
    const CDialog dialog;
    dialog.choose(k_iVulkan, "BC1");
    EXPECT_TRUE(dialog.encodeButton().isEnabled());
    dialog.filter("Combo_HasAlpha", 2);
    EXPECT_EQ(-1, dialog.table().currentRow());
    EXPECT_TRUE(dialog.table().selectedItems().isEmpty());
    EXPECT_EQ("StackPage_NoSelection", dialog.page());
    EXPECT_FALSE(dialog.encodeButton().isEnabled());
}

TEST(EncodeDialog, AFilterThatNothingPassesLeavesAnEmptyTable)
{
    const CDialog dialog;
    dialog.filter("Combo_API", 1);
    dialog.filter("Combo_BPP", 2);
    EXPECT_EQ(0, dialog.table().rowCount());
    EXPECT_EQ("StackPage_NoSelection", dialog.page());
    dialog.filter("Combo_BPP", 0);
    EXPECT_EQ(14, dialog.table().rowCount());
}

TEST(EncodeDialog, RecentFormatsCannotBeFiltered)
{
    const CDialog dialog;
    const char* const aBoxes[] = {"Combo_BPP", "Combo_NumChannels", "Combo_ColourSpace", "Combo_VariableType", "Combo_HasAlpha"};
    for (const char* strBox : aBoxes)
        EXPECT_FALSE(dialog.box(strBox).isEnabled()) << strBox;
    dialog.filter("Combo_API", k_iOpenGL);
    for (const char* strBox : aBoxes)
        EXPECT_TRUE(dialog.box(strBox).isEnabled()) << strBox;
    dialog.filter("Combo_API", 0);
    for (const char* strBox : aBoxes)
        EXPECT_FALSE(dialog.box(strBox).isEnabled()) << strBox;
}

TEST(EncodeDialog, ResetFiltersReturnsToTheRecentFormats)
{
    CDialog dialog;
    const char* const aBoxes[] = {"Combo_API",         "Combo_BPP",          "Combo_NumChannels",
                                  "Combo_ColourSpace", "Combo_VariableType", "Combo_HasAlpha"};
    for (const char* strBox : aBoxes)
        dialog.filter(strBox, 2);
    dialog.show();
    // On release: the press alone does nothing yet.
    auto& button = dialog.get<QPushButton>("Butt_ResetFilters");
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_EQ(2, dialog.box("Combo_API").currentIndex());
    QTest::mouseRelease(&button, Qt::LeftButton);
    for (const char* strBox : aBoxes)
        EXPECT_EQ(0, dialog.box(strBox).currentIndex()) << strBox;
    EXPECT_EQ(0, dialog.table().rowCount());
    EXPECT_FALSE(dialog.box("Combo_BPP").isEnabled());
    EXPECT_EQ("StackPage_NoSelection", dialog.page());
}

TEST(EncodeDialog, AnyCompressedSelectsTheFormatsWithoutChannelBits)
{
    const CDialog dialog;
    dialog.filter("Combo_API", k_iDirectX111);
    dialog.filter("Combo_BPP", 1);
    EXPECT_EQ((Texts{"BC1/UNorm/lRGB", "BC1/UNorm/sRGB", "BC2/UNorm/lRGB", "BC2/UNorm/sRGB", "BC3/UNorm/lRGB", "BC3/UNorm/sRGB",
                     "2-Planar GRGB 8 8 8 8/UNorm/lRGB", "2-Planar RGBG 8 8 8 8/UNorm/lRGB"}),
              [&]
              {
                  Texts rows = dialog.rows();
                  for (std::string& strRow : rows)
                      strRow.resize(strRow.rfind('/'));
                  return rows;
              }());
}

TEST(EncodeDialog, MoxtcTwoBitRefusesASizeThatMoxtcIITakes)
{
    const CDialog dialog(100, 100);
    dialog.choose(k_iOpenGLES2, "MOXTC 2bpp RGB");
    EXPECT_EQ("StackPage_NPOTError", dialog.page());
    EXPECT_FALSE(dialog.encodeButton().isEnabled());
    dialog.choose(k_iOpenGLES2, "MOXTCII 2bpp");
    EXPECT_EQ("StackPage_MOXTCOpts", dialog.page());
    EXPECT_FALSE(dialog.isWarned("MOXTC"));
    EXPECT_TRUE(dialog.encodeButton().isEnabled());
}

TEST(EncodeDialog, WarnsOfARectangleForMoxtcAndTakesIt)
{
    const CDialog dialog(128, 64);
    dialog.choose(k_iOpenGLES2, "MOXTC 2bpp RGB");
    EXPECT_EQ("StackPage_MOXTCOpts", dialog.page());
    EXPECT_TRUE(dialog.isWarned("MOXTC"));
    EXPECT_TRUE(dialog.encodeButton().isEnabled());
    dialog.choose(k_iOpenGLES2, "MOXTCII 2bpp");
    EXPECT_FALSE(dialog.isWarned("MOXTC"));
}

TEST(EncodeDialog, WarnsOfEtcWithoutPowersOfTwoAndTakesIt)
{
    const CDialog odd(100, 64);
    odd.choose(k_iOpenGLES3, "ETC2 RGBA");
    EXPECT_EQ("StackPage_ETCOpts", odd.page());
    EXPECT_TRUE(odd.isWarned("ETC"));
    EXPECT_FALSE(odd.isWarned("MOXTC"));
    EXPECT_TRUE(odd.encodeButton().isEnabled());
    const CDialog even(128, 64);
    even.choose(k_iOpenGLES3, "ETC2 RGBA");
    EXPECT_EQ("StackPage_ETCOpts", even.page());
    EXPECT_FALSE(even.isWarned("ETC"));
}

TEST(EncodeDialog, ShowsAnEmptyPageForEacAndPunchThrough)
{
    const CDialog dialog(101, 37);
    for (const char* strName : {"EAC R11", "EAC RG11", "ETC2 RGB A1"})
    {
        dialog.choose(k_iOpenGLES3, "ETC1");
        EXPECT_EQ("StackPage_ETCOpts", dialog.page());
        dialog.choose(k_iOpenGLES3, strName);
        EXPECT_EQ("StackPage_Empty", dialog.page()) << strName;
        EXPECT_FALSE(dialog.isWarned("ETC"));
        EXPECT_TRUE(dialog.encodeButton().isEnabled());
    }
}

TEST(EncodeDialog, AstcNeedsItsEncoder)
{
    const CDialog without(64, 64, nullptr, true, false);
    without.choose(k_iVulkan, "ASTC 6x6");
    EXPECT_EQ("StackPage_ASTCError", without.page());
    EXPECT_FALSE(without.encodeButton().isEnabled());
    const CDialog with(64, 64, nullptr, true, true);
    with.choose(k_iVulkan, "ASTC 6x6");
    EXPECT_EQ("StackPage_ASTCOpts", with.page());
    EXPECT_TRUE(with.encodeButton().isEnabled());
}

TEST(EncodeDialog, HasNoAstcEncoderOfItsOwn)
{
    CFilterEncodeDialog dialog(makeHeader(64, 64), nullptr, nullptr, true);
    dialog.findChild<QComboBox*>("Combo_API")->setCurrentIndex(k_iOpenGLES3);
    dialog.findChild<QComboBox*>("Combo_BPP")->setCurrentIndex(2); // 0.59
    dialog.findChild<QTableWidget*>("Table_FilteredFormats")->selectRow(0);
    EXPECT_EQ("StackPage_ASTCError",
              dialog.findChild<QStackedWidget*>("Stack_WarningsAndOptions")->currentWidget()->objectName().toStdString());
}

TEST(EncodeDialog, BcLeavesThePageAsItWas)
{
    const CDialog dialog(100, 100);
    dialog.choose(k_iDirectX93, "BC1");
    EXPECT_EQ("StackPage_NoSelection", dialog.page());
    EXPECT_TRUE(dialog.encodeButton().isEnabled());

    // From a row to another of the same list: here from that of a layout.
    dialog.choose(k_iDirectX93, "RGBA 8 8 8 8 ");
    EXPECT_EQ("StackPage_Empty", dialog.page());
    dialog.table().selectRow(0);
    ASSERT_EQ("BC1", dialog.cell(0, 0));
    EXPECT_EQ("StackPage_Empty", dialog.page());
    EXPECT_TRUE(dialog.encodeButton().isEnabled());
}

TEST(EncodeDialog, PairFormatsGoByTheirBlockSize)
{
    const CDialog even(6, 6);
    even.choose(k_iDirectX111, "2-Planar RGBG 8 8 8 8");
    EXPECT_EQ("StackPage_Empty", even.page());
    EXPECT_TRUE(even.encodeButton().isEnabled());
    const CDialog odd(7, 6);
    odd.choose(k_iDirectX111, "2-Planar RGBG 8 8 8 8");
    EXPECT_EQ("StackPage_SizeError", odd.page());
    EXPECT_FALSE(odd.encodeButton().isEnabled());
}

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
