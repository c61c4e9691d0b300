#include "Docks/CTexInfoDock.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSpinBox>

#include "Texture/CMOXTextureHeader.h"

using namespace moxtexture;

namespace
{

using Choice = std::pair<int, EMOXTColourSpace>;

CMOXTextureHeader makeHeader(EMOXTColourSpace eSpace)
{
    return CMOXTextureHeader(k_RGBA8, 20, 30, 4, 3, 2, 6, eSpace, eCT_UnsignedNormalisedByte, false);
}

class TexInfoDock : public testing::Test
{
protected:
    TexInfoDock()
    {
        QObject::connect(&m_Dock, &CTexInfoDock::colourSpaceChanged, &m_Dock,
                         [this](int image, EMOXTColourSpace eSpace) { m_aChoices.emplace_back(image, eSpace); });
        m_Dock.show();
    }

    void showOne(const CMOXTextureHeader& header, const std::string& strName = "/some/where/photo.png")
    {
        m_Dock.slotUpdateTextures(&strName, &header, nullptr, nullptr);
    }

    void showTwo(const CMOXTextureHeader& left, const CMOXTextureHeader& right)
    {
        const std::string strLeft = "left.mox";
        const std::string strRight = "/right.mox";
        m_Dock.slotUpdateTextures(&strLeft, &left, &strRight, &right);
    }

    QGroupBox& original() const { return *m_Dock.findChild<QGroupBox*>("Group_Original_Info"); }
    QGroupBox& encoded() const { return *m_Dock.findChild<QGroupBox*>("Group_Encoded_Info"); }

    static QLabel& label(const QGroupBox& group, const char* strName) { return *group.findChild<QLabel*>(strName); }
    static std::string text(const QGroupBox& group, const char* strName) { return label(group, strName).text().toStdString(); }
    static QComboBox& comboBox(const QGroupBox& group) { return *group.findChild<QComboBox*>("Combo_ColourSpace"); }
    static bool isRangeShown(const QGroupBox& group) { return group.findChild<QWidget*>("Group_Range")->isVisible(); }

    CTexInfoDock m_Dock;
    std::vector<Choice> m_aChoices;
};

} // namespace

TEST_F(TexInfoDock, HasItsTitleAndCanBeScrolled)
{
    EXPECT_EQ("Texture Information", m_Dock.windowTitle().toStdString());
    EXPECT_EQ("Dock_TexInfo", m_Dock.objectName().toStdString());
    const auto* pArea = qobject_cast<QScrollArea*>(m_Dock.widget());
    ASSERT_NE(nullptr, pArea);
    EXPECT_TRUE(pArea->widget()->isAncestorOf(&original()));
    EXPECT_TRUE(pArea->widget()->isAncestorOf(&encoded()));
}

TEST_F(TexInfoDock, ShowsNoGroupAtFirst)
{
    EXPECT_FALSE(original().isVisible());
    EXPECT_FALSE(encoded().isVisible());
}

TEST_F(TexInfoDock, NamesItsLinesAndTheColourSpaces)
{
    for (const QGroupBox* pGroup : {&original(), &encoded()})
    {
        std::vector<std::string> aTitles;
        for (const QLabel* pLabel : pGroup->findChildren<QLabel*>(QRegularExpression("^Title_(?!(Min|Max)$)")))
            aTitles.push_back(pLabel->text().toStdString());
        EXPECT_EQ((std::vector<std::string>{"Name", "Format", "Height", "Width", "Depth", "Array Size", "Faces", "MIP-Maps", "Flags",
                                            "Meta Data"}),
                  aTitles);
        EXPECT_EQ("Colour Space", pGroup->findChild<QGroupBox*>("Group_ColourSpace")->title().toStdString());
        ASSERT_EQ(2, comboBox(*pGroup).count());
        EXPECT_EQ("sRGB", comboBox(*pGroup).itemText(0).toStdString());
        EXPECT_EQ("Linear/HDR", comboBox(*pGroup).itemText(1).toStdString());
        for (const auto& [strName, iValue] : {std::pair<const char*, int>{"Min", 0}, {"Max", 255}})
        {
            const auto* pSpin = pGroup->findChild<QSpinBox*>(QString("Spin_") + strName);
            EXPECT_EQ(-999, pSpin->minimum());
            EXPECT_EQ(999, pSpin->maximum());
            EXPECT_EQ(iValue, pSpin->value());
            EXPECT_EQ(strName, label(*pGroup, (std::string("Title_") + strName).c_str()).text().toStdString());
        }
    }
}

TEST_F(TexInfoDock, ShowsWhatTheHeaderSays)
{
    showOne(makeHeader(eCS_Linear));
    EXPECT_TRUE(original().isVisible());
    EXPECT_FALSE(encoded().isVisible());
    EXPECT_EQ("Original Image", original().title().toStdString());
    EXPECT_EQ("photo.png", text(original(), "Label_Name"));
    EXPECT_EQ("/some/where/photo.png", label(original(), "Label_Name").toolTip().toStdString());
    EXPECT_EQ("RGBA 8 8 8 8 ", text(original(), "Label_Format"));
    EXPECT_EQ("20", text(original(), "Label_Height"));
    EXPECT_EQ("30", text(original(), "Label_Width"));
    EXPECT_EQ("4", text(original(), "Label_Depth"));
    EXPECT_EQ("2", text(original(), "Label_ArraySize"));
    EXPECT_EQ("6", text(original(), "Label_Faces"));
    EXPECT_EQ("3", text(original(), "Label_MIPMaps"));
    EXPECT_EQ("", text(original(), "Label_Flags"));
    EXPECT_EQ("0 Bytes", text(original(), "Label_MetaData"));
}

TEST_F(TexInfoDock, CountsTheBytesOfTheMetaData)
{
    CMOXTextureHeader header = makeHeader(eCS_Linear);
    header.addMetaData(MetaDataBlock(1, 2, nullptr, 5)); // a record of 12 bytes before the 5 of its data
    showOne(header);
    EXPECT_EQ("17 Bytes", text(original(), "Label_MetaData"));
}

TEST_F(TexInfoDock, ListsTheFlagsOneALine)
{
    CMOXTextureHeader header = makeHeader(eCS_Linear);
    header.setIsPreMultiplied(true);
    showOne(header);
    EXPECT_EQ("Pre-Multiplied\n", text(original(), "Label_Flags"));

    uint8_t aui8Record[CMOXTextureHeader::k_uiRecordSize];
    header.writeRecord(aui8Record);
    aui8Record[4] = 3; // both flags
    header.readRecord(aui8Record);
    showOne(header);
    EXPECT_EQ("Pre-Multiplied\nFile Compression\n", text(original(), "Label_Flags"));

    aui8Record[4] = 1;
    header.readRecord(aui8Record);
    showOne(header);
    EXPECT_EQ("File Compression\n", text(original(), "Label_Flags"));
}

TEST_F(TexInfoDock, ShowsANameWithoutFolderAsItIs)
{
    showOne(makeHeader(eCS_Linear), "New Texture 1 *");
    EXPECT_EQ("New Texture 1 *", text(original(), "Label_Name"));
}

TEST_F(TexInfoDock, CutsTheNameAtEitherSeparatorAsTheTitleDoes)
{
    showOne(makeHeader(eCS_Linear), "D:\\a/b\\c.mox");
    EXPECT_EQ("c.mox", text(original(), "Label_Name"));
    EXPECT_EQ("D:\\a/b\\c.mox", label(original(), "Label_Name").toolTip().toStdString());
}

TEST_F(TexInfoDock, ShowsNamesOfEveryLanguageLetterByLetter)
{
    showOne(makeHeader(eCS_Linear), "/tmp/\xC3\xA4<b>\xE6\xBC\xA2.png");
    EXPECT_EQ("\xC3\xA4<b>\xE6\xBC\xA2.png", text(original(), "Label_Name"));
    EXPECT_EQ(Qt::PlainText, label(original(), "Label_Name").textFormat());
}

TEST_F(TexInfoDock, GoesByIndex0ForSRGBAnd1ForAllElse)
{
    showOne(makeHeader(eCS_sRGB));
    EXPECT_EQ(0, comboBox(original()).currentIndex());
    EXPECT_FALSE(isRangeShown(original()));
    for (const EMOXTColourSpace eSpace : {eCS_Linear, static_cast<EMOXTColourSpace>(7)})
    {
        showOne(makeHeader(eSpace));
        EXPECT_EQ(1, comboBox(original()).currentIndex());
        EXPECT_TRUE(isRangeShown(original()));
    }
}

TEST_F(TexInfoDock, TitlesTwoTexturesLeftAndRight)
{
    showTwo(makeHeader(eCS_Linear), makeHeader(eCS_sRGB));
    EXPECT_TRUE(original().isVisible());
    EXPECT_TRUE(encoded().isVisible());
    EXPECT_EQ("Left Image", original().title().toStdString());
    EXPECT_EQ("Right Image", encoded().title().toStdString());
    EXPECT_EQ("left.mox", text(original(), "Label_Name"));
    EXPECT_EQ("right.mox", text(encoded(), "Label_Name"));
    EXPECT_EQ(1, comboBox(original()).currentIndex());
    EXPECT_EQ(0, comboBox(encoded()).currentIndex());

    showOne(makeHeader(eCS_Linear));
    EXPECT_EQ("Original Image", original().title().toStdString());
    EXPECT_FALSE(encoded().isVisible());
}

TEST_F(TexInfoDock, HidesBothGroupsWithoutATexture)
{
    showTwo(makeHeader(eCS_Linear), makeHeader(eCS_sRGB));
    m_Dock.slotUpdateTextures(nullptr, nullptr, nullptr, nullptr);
    EXPECT_FALSE(original().isVisible());
    EXPECT_FALSE(encoded().isVisible());
}

TEST_F(TexInfoDock, DoesWithoutAName)
{
    const CMOXTextureHeader header = makeHeader(eCS_Linear);
    m_Dock.slotUpdateTextures(nullptr, &header, nullptr, nullptr);
    EXPECT_TRUE(original().isVisible());
    EXPECT_EQ("", text(original(), "Label_Name"));
}

TEST_F(TexInfoDock, TellsAUsersChoiceWithTheImageAndTheColourSpace)
{
    showTwo(makeHeader(eCS_Linear), makeHeader(eCS_sRGB));
    QTest::keyClick(&comboBox(original()), Qt::Key_Up);
    QTest::keyClick(&comboBox(encoded()), Qt::Key_Down);
    EXPECT_EQ((std::vector<Choice>{{0, eCS_sRGB}, {1, eCS_Linear}}), m_aChoices);
}

TEST_F(TexInfoDock, ShowsTheRangeWithAChoiceOfLinear)
{
    showTwo(makeHeader(eCS_sRGB), makeHeader(eCS_sRGB));
    QTest::keyClick(&comboBox(encoded()), Qt::Key_Down);
    EXPECT_FALSE(isRangeShown(original()));
    EXPECT_TRUE(isRangeShown(encoded()));
    QTest::keyClick(&comboBox(encoded()), Qt::Key_Up);
    EXPECT_FALSE(isRangeShown(encoded()));
}

TEST_F(TexInfoDock, NeverTakesItsFillingForAChoice)
{
    showOne(makeHeader(eCS_sRGB));
    showOne(makeHeader(eCS_Linear));
    showTwo(makeHeader(eCS_sRGB), makeHeader(eCS_Linear));
    showTwo(makeHeader(eCS_Linear), makeHeader(eCS_sRGB));
    EXPECT_TRUE(m_aChoices.empty());
}

TEST_F(TexInfoDock, SurvivesAnImpossibleHeader)
{
    const CMOXTextureHeader header(MOXPixelWord(uint64_t{0xFFFFFFFFFFFFFFFF}), 0xFFFFFFFF, 0x80000000, 0, 0xFFFFFFFF, 0xFFFFFFFF, 0,
                                   static_cast<EMOXTColourSpace>(0xFFFFFFFF), static_cast<EMOXTChannelType>(99), true);
    showOne(header);
    EXPECT_EQ("-1", text(original(), "Label_Height")); // on purpose: printed as signed
    EXPECT_EQ("-2147483648", text(original(), "Label_Width"));
}
