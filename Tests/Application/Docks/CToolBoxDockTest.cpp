#include "Docks/CToolBoxDock.h"

#include <gtest/gtest.h>

#include <vector>

#include <QtGui/QImage>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QToolButton>

#include "Resources/Resources.h"

using namespace moxtexture;

namespace
{

struct Tool
{
    const char* strButton;
    const char* strToolTip;
};

constexpr Tool k_aTools[] = {
    {"Tool_Border", "Add a mirrored border"},
    {"Tool_Rotate", "Rotate by 90 degrees"},
    {"Tool_Flip", "Flip along an axis"},
    {"Tool_Resize", "Resize the image"},
    {"Tool_Bleed", "Bleed colours into transparent areas"},
    {"Tool_PreMultiply", "Pre-multiply colours by alpha"},
    {"Tool_ColourMIPs", "Colourise different MIP Map levels"},
    {"Tool_MIPMap", "Create a MIP Map chain"},
    {"Tool_NormalMap", "Convert a height map into a normal map"},
    {"Tool_ChanSwap", "Edit the channel colours"},
    {"Tool_ResizeCanvas", "Resize the canvas without changing the image"},
};

} // namespace

TEST(ToolBoxDock, HasElevenToolsThatCannotBeUsedYet)
{
    CToolBoxDock dock;
    dock.slotActiveWindow(true, false);
    EXPECT_EQ("Toolbox", dock.windowTitle().toStdString());
    EXPECT_EQ("Dock_Toolbox", dock.objectName().toStdString());
    const auto* pTools = dock.findChild<QGroupBox*>("Group_Tools");
    ASSERT_NE(nullptr, pTools);
    EXPECT_EQ("Tools", pTools->title().toStdString());
    EXPECT_EQ(11, pTools->findChildren<QToolButton*>().size());
    for (const Tool& tool : k_aTools)
    {
        const auto* pButton = pTools->findChild<QToolButton*>(tool.strButton);
        ASSERT_NE(nullptr, pButton) << tool.strButton;
        EXPECT_EQ(tool.strToolTip, pButton->toolTip().toStdString());
        EXPECT_FALSE(pButton->accessibleName().isEmpty());
        EXPECT_FALSE(pButton->isEnabled());
    }
}

TEST(ToolBoxDock, HasNoOptionsYet)
{
    const CToolBoxDock dock;
    const auto* pOptions = dock.findChild<QGroupBox*>("Group_Options");
    ASSERT_NE(nullptr, pOptions);
    EXPECT_EQ("Options", pOptions->title().toStdString());
    EXPECT_TRUE(pOptions->findChildren<QWidget*>().isEmpty());
}

TEST(ToolBoxDock, IsForSingleViewsAlone)
{
    CToolBoxDock dock;
    const auto* pTools = dock.findChild<QGroupBox*>("Group_Tools");
    EXPECT_FALSE(pTools->isEnabled());
    dock.slotActiveWindow(true, false);
    EXPECT_TRUE(pTools->isEnabled());
    dock.slotActiveWindow(true, true);
    EXPECT_FALSE(pTools->isEnabled());
    dock.slotActiveWindow(false, false);
    EXPECT_FALSE(pTools->isEnabled());
}

TEST(ToolBoxDock, KeepsACopyOfTheHeader)
{
    CToolBoxDock dock;
    {
        const CMOXTextureHeader header(k_RGBA8, 20, 30, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
        dock.slotUpdateTexture(&header);
    }
    EXPECT_EQ(30u, dock.getTextureHeader().getWidth());
    EXPECT_EQ(20u, dock.getTextureHeader().getHeight());
    dock.slotUpdateTexture(nullptr);
    EXPECT_EQ(0u, dock.getTextureHeader().getDataSize());
}

TEST(ToolBoxDock, ShowsAPictureOnEachTool)
{
    initResources();
    const CToolBoxDock dock;
    std::vector<QImage> aPictures;
    for (const Tool& tool : k_aTools)
    {
        const QImage picture = dock.findChild<QToolButton*>(tool.strButton)->icon().pixmap(24, 24).toImage();
        EXPECT_EQ(QSize(24, 24), picture.size()) << tool.strButton;
        for (const QImage& other : aPictures)
            EXPECT_NE(other, picture) << tool.strButton;
        aPictures.push_back(picture);
    }
}
