#include "Docks/CDisplayDock.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <utility>
#include <vector>

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStackedWidget>

#include "SliderDrag.h"

namespace
{

using DiffParameter = std::pair<int, float>;
using Mask = std::array<bool, 4>;

constexpr const char* k_apChannels[] = {"Red", "Green", "Blue", "Alpha"};

class DisplayDock : public testing::Test
{
protected:
    DisplayDock()
    {
        QObject::connect(&m_Dock, &CDisplayDock::signalChangeViewMode, &m_Dock,
                         [this](ETextureViewModes eMode) { m_aModes.push_back(eMode); });
        QObject::connect(&m_Dock, &CDisplayDock::signalChangeColourMask, &m_Dock,
                         [this](bool bRed, bool bGreen, bool bBlue, bool bAlpha) {
                             m_aMasks.push_back({bRed, bGreen, bBlue, bAlpha});
                         });
        QObject::connect(&m_Dock, &CDisplayDock::signalSetDiff, &m_Dock,
                         [this](int iType, float fValue) { m_aDiffs.emplace_back(iType, fValue); });
        m_Dock.show();
    }

    template <typename T>
    T& find(const QString& strName) const
    {
        T* pWidget = m_Dock.findChild<T*>(strName);
        if (pWidget == nullptr)
            throw std::runtime_error("no such widget: " + strName.toStdString());
        return *pWidget;
    }

    QCheckBox& check(const char* strChannel) const { return find<QCheckBox>(QString("Check_%1Select").arg(strChannel)); }
    bool isEnabled(const char* strGroup) const { return find<QWidget>(strGroup).isEnabled(); }

    std::vector<std::string> column(const char* strColumn) const
    {
        std::vector<std::string> aTexts;
        for (const QLabel* pLabel : find<QGroupBox>(strColumn).findChildren<QLabel*>())
            aTexts.push_back(pLabel->text().toStdString());
        return aTexts;
    }

    CDisplayDock m_Dock;
    std::vector<ETextureViewModes> m_aModes;
    std::vector<Mask> m_aMasks;
    std::vector<DiffParameter> m_aDiffs;
};

} // namespace

TEST_F(DisplayDock, HasItsGroupsFromTopToBottom)
{
    EXPECT_EQ("Display Options", m_Dock.windowTitle().toStdString());
    EXPECT_EQ("Dock_Display", m_Dock.objectName().toStdString());
    const std::pair<const char*, const char*> aGroups[] = {{"Group_DisplayMode", "Display Mode"},
                                                           {"Group_Zoom", "Zoom"},
                                                           {"Group_Position", "Position"},
                                                           {"Group_Colour", "Colour"},
                                                           {"Group_DiffOptions", "Difference View Options"}};
    int iBottom = -1;
    for (const auto& [strName, strTitle] : aGroups)
    {
        const QGroupBox& group = find<QGroupBox>(strName);
        EXPECT_EQ(strTitle, group.title().toStdString());
        EXPECT_GT(group.y(), iBottom);
        iBottom = group.geometry().bottom();
    }
}

TEST_F(DisplayDock, StartsWithTheDefaultsOfEveryControl)
{
    const QComboBox& mode = find<QComboBox>("Combo_DisplayMode");
    ASSERT_EQ(3, mode.count());
    EXPECT_EQ("Single", mode.itemText(0).toStdString());
    EXPECT_EQ("Tiled", mode.itemText(1).toStdString());
    EXPECT_EQ("Cube", mode.itemText(2).toStdString());
    EXPECT_EQ(0, mode.currentIndex());

    const QSlider& zoom = find<QSlider>("ZoomSlider");
    EXPECT_EQ(&zoom, m_Dock.getZoomSlider());
    EXPECT_EQ(0, zoom.minimum());
    EXPECT_EQ(10, zoom.maximum());
    EXPECT_EQ(3, zoom.value());
    EXPECT_EQ(Qt::Horizontal, zoom.orientation());

    for (const char* strChannel : k_apChannels)
    {
        EXPECT_EQ(strChannel, check(strChannel).text().toStdString());
        EXPECT_TRUE(check(strChannel).isChecked());
    }
    EXPECT_EQ("Channel", find<QGroupBox>("Column_ChannelSelect").title().toStdString());
    EXPECT_EQ("In", find<QGroupBox>("Column_InColour").title().toStdString());
    EXPECT_EQ("Out", find<QGroupBox>("Column_OutColour").title().toStdString());
    EXPECT_EQ("Diff", find<QGroupBox>("Column_DiffColours").title().toStdString());
}

TEST_F(DisplayDock, StartsWithTheDefaultsOfTheDifferenceControls)
{
    const QComboBox& mode = find<QComboBox>("Combo_DiffMode");
    ASSERT_EQ(3, mode.count());
    EXPECT_EQ("Colour Diff", mode.itemText(0).toStdString());
    EXPECT_EQ("Tolerance Diff", mode.itemText(1).toStdString());
    EXPECT_EQ("Blend Textures", mode.itemText(2).toStdString());
    EXPECT_EQ(0, find<QStackedWidget>("Stack_DiffOptions").currentIndex());

    const QDoubleSpinBox& brightness = find<QDoubleSpinBox>("DSpin_Brightness");
    EXPECT_EQ(1, brightness.decimals());
    EXPECT_DOUBLE_EQ(1.0, brightness.minimum());
    EXPECT_DOUBLE_EQ(10.0, brightness.maximum());
    EXPECT_DOUBLE_EQ(0.1, brightness.singleStep());
    EXPECT_DOUBLE_EQ(1.0, brightness.value());

    const QDoubleSpinBox& tolerance = find<QDoubleSpinBox>("DSpin_Tolerance");
    EXPECT_EQ(2, tolerance.decimals());
    EXPECT_DOUBLE_EQ(0.0, tolerance.minimum());
    EXPECT_DOUBLE_EQ(1.0, tolerance.maximum());
    EXPECT_DOUBLE_EQ(0.01, tolerance.singleStep());
    EXPECT_DOUBLE_EQ(0.1, tolerance.value());

    const QSlider& blend = find<QSlider>("Slider_Blend");
    EXPECT_EQ(Qt::Horizontal, blend.orientation());
    EXPECT_EQ(0, blend.minimum());
    EXPECT_EQ(100, blend.maximum());
    EXPECT_EQ(1, blend.singleStep());
    EXPECT_EQ(50, blend.value());
}

TEST_F(DisplayDock, LabelsTheDifferenceControls)
{
    const std::pair<const char*, const char*> aLabels[] = {{"Label_Brightness", "Brightness x"},
                                                           {"Label_Tolerance", "Tolerance:"},
                                                           {"Label_Blend", "Blend Visibility:"},
                                                           {"Label_BlendLeft", "Left"},
                                                           {"Label_BlendRight", "Right"}};
    for (const auto& [strName, strText] : aLabels)
        EXPECT_EQ(strText, find<QLabel>(strName).text().toStdString());
    EXPECT_EQ(&find<QWidget>("DSpin_Brightness"), find<QLabel>("Label_Brightness").buddy());
    EXPECT_EQ(&find<QWidget>("DSpin_Tolerance"), find<QLabel>("Label_Tolerance").buddy());
    EXPECT_EQ(&find<QWidget>("Slider_Blend"), find<QLabel>("Label_Blend").buddy());
    m_Dock.slotUpdateDiffParams(2, 1.0f, 0.1f, 50.0f);
    QApplication::processEvents();
    EXPECT_LT(find<QLabel>("Label_BlendLeft").x(), find<QSlider>("Slider_Blend").x());
    EXPECT_LT(find<QSlider>("Slider_Blend").x(), find<QLabel>("Label_BlendRight").x());
}

TEST_F(DisplayDock, IsDisabledUntilThereIsAWindow)
{
    for (const char* strGroup : {"Group_DisplayMode", "Group_Zoom", "Group_Position", "Group_Colour", "Group_DiffOptions"})
        EXPECT_FALSE(isEnabled(strGroup));
}

TEST_F(DisplayDock, EnablesItsGroupsByTheActiveWindow)
{
    for (const bool bWindow : {true, false})
        for (const bool bDiff : {true, false})
        {
            m_Dock.slotActiveWindow(bWindow, bDiff);
            for (const char* strGroup : {"Group_DisplayMode", "Group_Zoom", "Group_Position", "Group_Colour", "Column_ChannelSelect"})
                EXPECT_EQ(bWindow, isEnabled(strGroup)) << strGroup;
            for (const char* strGroup : {"Group_DiffOptions", "Column_OutColour", "Column_DiffColours"})
                EXPECT_EQ(bWindow && bDiff, isEnabled(strGroup)) << strGroup;
        }
}

TEST_F(DisplayDock, TellsTheModeThatIsChosen)
{
    m_Dock.slotActiveWindow(true, false);
    QComboBox& mode = find<QComboBox>("Combo_DisplayMode");
    QTest::keyClick(&mode, Qt::Key_Down);
    QTest::keyClick(&mode, Qt::Key_Down);
    QTest::keyClick(&mode, Qt::Key_Home);
    EXPECT_EQ((std::vector<ETextureViewModes>{eViewTiled, eViewCube, eViewSingle}), m_aModes);
}

TEST_F(DisplayDock, TellsNoModeThatThereIsNot)
{
    m_Dock.slotChangeViewMode(-1);
    m_Dock.slotChangeViewMode(3);
    EXPECT_TRUE(m_aModes.empty());
}

TEST_F(DisplayDock, TellsTheWholeMaskWithEveryCheckBox)
{
    m_Dock.slotActiveWindow(true, false);
    for (const char* strChannel : k_apChannels)
        QTest::keyClick(&check(strChannel), Qt::Key_Space);
    QTest::keyClick(&check("Blue"), Qt::Key_Space);
    EXPECT_EQ((std::vector<Mask>{{false, true, true, true},
                                 {false, false, true, true},
                                 {false, false, false, true},
                                 {false, false, false, false},
                                 {false, false, true, false}}),
              m_aMasks);
}

TEST_F(DisplayDock, DoesNotEchoWhatIsSetFromOutside)
{
    m_Dock.setColourMask(false, true, false, true);
    m_Dock.setViewMode(eViewCube);
    std::vector<int> aMoves;
    QObject::connect(m_Dock.getZoomSlider(), &QSlider::sliderMoved, &m_Dock, [&](int iPosition) { aMoves.push_back(iPosition); });
    m_Dock.setZoomPosition(7);

    EXPECT_FALSE(check("Red").isChecked());
    EXPECT_TRUE(check("Green").isChecked());
    EXPECT_FALSE(check("Blue").isChecked());
    EXPECT_TRUE(check("Alpha").isChecked());
    EXPECT_EQ(2, find<QComboBox>("Combo_DisplayMode").currentIndex());
    EXPECT_EQ(7, m_Dock.getZoomSlider()->value());
    EXPECT_TRUE(m_aMasks.empty());
    EXPECT_TRUE(m_aModes.empty());
    EXPECT_TRUE(aMoves.empty());

    // And the boxes speak again afterwards.
    check("Red").click();
    EXPECT_TRUE(m_aMasks.empty()); // disabled: no window
    m_Dock.slotActiveWindow(true, false);
    check("Red").click();
    EXPECT_EQ((std::vector<Mask>{{true, true, false, true}}), m_aMasks);
}

TEST_F(DisplayDock, ShowsZoomAndPositionAsTheyAreTold)
{
    m_Dock.setZoomText("0.125 : 1");
    m_Dock.setPositionText("12, 34\nFace: +X");
    EXPECT_EQ("0.125 : 1", find<QLabel>("ZoomLabel").text().toStdString());
    EXPECT_EQ("12, 34\nFace: +X", find<QLabel>("PositionLabel").text().toStdString());
}

TEST_F(DisplayDock, SpreadsTwelveTextsOverThreeColumns)
{
    m_Dock.slotUpdateColours("1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12");
    EXPECT_EQ((std::vector<std::string>{"1", "2", "3", "4"}), column("Column_InColour"));
    EXPECT_EQ((std::vector<std::string>{"5", "6", "7", "8"}), column("Column_OutColour"));
    EXPECT_EQ((std::vector<std::string>{"9", "10", "11", "12"}), column("Column_DiffColours"));

    m_Dock.slotUpdateColours("1", "2", "3", "4", "", "", "", "", "", "", "", "");
    EXPECT_EQ(std::vector<std::string>(4), column("Column_OutColour"));
    EXPECT_EQ(std::vector<std::string>(4), column("Column_DiffColours"));
}

TEST_F(DisplayDock, PutsTheValueOfAChannelBesideItsCheckBox)
{
    m_Dock.slotActiveWindow(true, false);
    m_Dock.slotUpdateColours("1", "2", "3", "4", "", "", "", "", "", "", "", "");
    for (const char* strChannel : k_apChannels)
    {
        const QWidget& label = find<QWidget>(QString("Label_In") + strChannel);
        const int iLabel = label.mapTo(&m_Dock, label.rect().center()).y();
        const int iCheck = check(strChannel).mapTo(&m_Dock, check(strChannel).rect().center()).y();
        EXPECT_NEAR(iLabel, iCheck, 3) << strChannel;
    }
}

TEST_F(DisplayDock, SwitchesThePageWithTheKindOfDifference)
{
    m_Dock.slotActiveWindow(true, true);
    QComboBox& mode = find<QComboBox>("Combo_DiffMode");
    QTest::keyClick(&mode, Qt::Key_Down);
    EXPECT_EQ(1, find<QStackedWidget>("Stack_DiffOptions").currentIndex());
    EXPECT_TRUE(find<QWidget>("DSpin_Tolerance").isVisible());
    QTest::keyClick(&mode, Qt::Key_Down);
    EXPECT_TRUE(find<QWidget>("Slider_Blend").isVisible());
    QTest::keyClick(&mode, Qt::Key_Home);
    EXPECT_TRUE(find<QWidget>("DSpin_Brightness").isVisible());
    EXPECT_EQ((std::vector<DiffParameter>{{1, 0.1f}, {2, 50.0f}, {0, 1.0f}}), m_aDiffs);
}

TEST_F(DisplayDock, TellsEveryStepOfADifferenceParameter)
{
    m_Dock.slotActiveWindow(true, true);
    QTest::keyClick(&find<QDoubleSpinBox>("DSpin_Brightness"), Qt::Key_Up);
    m_Dock.slotUpdateDiffParams(1, 1.0f, 0.5f, 50.0f);
    QTest::keyClick(&find<QDoubleSpinBox>("DSpin_Tolerance"), Qt::Key_Down);
    m_Dock.slotUpdateDiffParams(2, 1.0f, 0.5f, 50.0f);
    QTest::keyClick(&find<QSlider>("Slider_Blend"), Qt::Key_Right);
    ASSERT_EQ(3u, m_aDiffs.size());
    EXPECT_EQ(0, m_aDiffs[0].first);
    EXPECT_FLOAT_EQ(1.1f, m_aDiffs[0].second);
    EXPECT_EQ(1, m_aDiffs[1].first);
    EXPECT_FLOAT_EQ(0.49f, m_aDiffs[1].second);
    EXPECT_EQ(DiffParameter(2, 51.0f), m_aDiffs[2]);
}

TEST_F(DisplayDock, TellsWhereTheBlendSliderIsDraggedTo)
{
    m_Dock.slotActiveWindow(true, true);
    m_Dock.slotUpdateDiffParams(2, 1.0f, 0.1f, 0.0f);
    dragToTheRightEnd(find<QSlider>("Slider_Blend"));
    EXPECT_EQ((std::vector<DiffParameter>{{2, 100.0f}}), m_aDiffs);
}

TEST_F(DisplayDock, TakesDifferenceParametersWithoutAWord)
{
    m_Dock.slotUpdateDiffParams(2, 2.5f, 0.25f, 73.9f);
    EXPECT_EQ(2, find<QComboBox>("Combo_DiffMode").currentIndex());
    EXPECT_EQ(2, find<QStackedWidget>("Stack_DiffOptions").currentIndex());
    EXPECT_DOUBLE_EQ(2.5, find<QDoubleSpinBox>("DSpin_Brightness").value());
    EXPECT_DOUBLE_EQ(0.25, find<QDoubleSpinBox>("DSpin_Tolerance").value());
    EXPECT_EQ(73, find<QSlider>("Slider_Blend").value()); // cut, not rounded
    EXPECT_TRUE(m_aDiffs.empty());
}

TEST_F(DisplayDock, ResetsForASingleView)
{
    m_Dock.slotUpdateDiffParams(2, 2.5f, 0.25f, 73.0f);
    m_Dock.slotUpdateDiffParams(0, 1.0f, 0.1f, 50.0f);
    EXPECT_EQ(0, find<QComboBox>("Combo_DiffMode").currentIndex());
    EXPECT_DOUBLE_EQ(1.0, find<QDoubleSpinBox>("DSpin_Brightness").value());
    EXPECT_DOUBLE_EQ(0.1, find<QDoubleSpinBox>("DSpin_Tolerance").value());
    EXPECT_EQ(50, find<QSlider>("Slider_Blend").value());
    EXPECT_TRUE(m_aDiffs.empty());
}

// A new comparison keeps its blend as 0.5, which is no position of the slider.
TEST_F(DisplayDock, MovesTheBlendSliderTo0ForAHalf)
{
    m_Dock.slotUpdateDiffParams(0, 1.0f, 0.1f, 0.5f);
    EXPECT_EQ(0, find<QSlider>("Slider_Blend").value());
}

TEST_F(DisplayDock, BringsImpossibleDifferenceParametersIntoTheirRanges)
{
    const float fInfinity = std::numeric_limits<float>::infinity();
    m_Dock.slotUpdateDiffParams(0, 99.0f, -1.0f, fInfinity);
    EXPECT_DOUBLE_EQ(10.0, find<QDoubleSpinBox>("DSpin_Brightness").value());
    EXPECT_DOUBLE_EQ(0.0, find<QDoubleSpinBox>("DSpin_Tolerance").value());
    EXPECT_EQ(100, find<QSlider>("Slider_Blend").value());
    for (const float fBlend : {-fInfinity, -1.0f, std::numeric_limits<float>::quiet_NaN()})
    {
        m_Dock.slotUpdateDiffParams(0, 1.0f, 0.1f, fBlend);
        EXPECT_EQ(0, find<QSlider>("Slider_Blend").value());
    }
    m_Dock.slotUpdateDiffParams(0, 1.0f, 0.1f, 1e20f);
    EXPECT_EQ(100, find<QSlider>("Slider_Blend").value());
    EXPECT_TRUE(m_aDiffs.empty());
}

TEST_F(DisplayDock, GivesEveryControlANameForThoseWhoCannotSeeIt)
{
    for (const QWidget* pWidget : m_Dock.findChildren<QWidget*>(QRegularExpression("^(Combo|DSpin|Slider|ZoomSlider)")))
        EXPECT_FALSE(pWidget->accessibleName().isEmpty()) << pWidget->objectName().toStdString();
}
