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

#include "Application/Dialogs/EncodeDialogSupport.h"
#include "Common/Preferences.h"
#include "Resources/Resources.h"
#include "Support/QtSupport.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using CDialog = CUsedEncodeDialog;

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
    CFilterEncodeDialog dialog(makeEncodeHeader(64, 64), nullptr, nullptr, true);
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
