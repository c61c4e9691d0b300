#include <gtest/gtest.h>

#include <memory>

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

#include "Docks/CDisplayDock.h"
#include "Docks/CElidedLabel.h"
#include "Docks/CTexInfoDock.h"
#include "Docks/CToolBoxDock.h"
#include "Texture/CMOXTextureHeader.h"

using namespace moxtexture;

namespace
{

constexpr int k_iColumnWidth = 250;

std::unique_ptr<QDockWidget> makeInfoDock()
{
    auto pDock = std::make_unique<CTexInfoDock>();
    const std::string strName = "/home/someone/a very long name of a file that goes on and on, normal map.mox";
    uint8_t aui8Record[CMOXTextureHeader::k_uiRecordSize];
    CMOXTextureHeader header(k_RGBA32, 16384, 16384, 1, 15, 2048, 6, eCS_Linear, eCT_SignedFloatingPoint, true);
    header.writeRecord(aui8Record);
    aui8Record[4] = 3; // both flags
    header.readRecord(aui8Record);
    pDock->slotUpdateTextures(&strName, &header, &strName, &header);
    return pDock;
}

std::unique_ptr<QDockWidget> makeDisplayDock(int iDiffType)
{
    auto pDock = std::make_unique<CDisplayDock>();
    pDock->slotActiveWindow(true, true);
    pDock->slotUpdateDiffParams(iDiffType, 10.0f, 1.0f, 100.0f);
    pDock->setZoomText("0.125 : 1");
    pDock->setPositionText("16383, 16383\nFace: +X");
    const QString str = "4294967295";
    pDock->slotUpdateColours(str, str, str, str, str, str, str, str, str, str, str, str);
    return pDock;
}

/// Nothing stands outside the column, and no text but one that may be cut is cut.
void expectToFit(QDockWidget& dock)
{
    QFont font = QApplication::font();
    font.setPixelSize(13); // what desktops have at 10 points
    dock.setFont(font);
    dock.setFixedWidth(k_iColumnWidth);
    dock.resize(k_iColumnWidth, 900);
    dock.show();
    QApplication::processEvents();
    for (const QScrollArea* pArea : dock.findChildren<QScrollArea*>())
        EXPECT_EQ(0, pArea->horizontalScrollBar()->maximum());
    for (const QWidget* pWidget : dock.widget()->findChildren<QWidget*>())
    {
        if (!pWidget->isVisible() || qobject_cast<const QScrollBar*>(pWidget->parentWidget()) != nullptr)
            continue;
        EXPECT_LE(pWidget->mapTo(&dock, QPoint()).x() + pWidget->width(), k_iColumnWidth) << pWidget->objectName().toStdString();
        EXPECT_GE(pWidget->width(), pWidget->minimumSizeHint().width()) << pWidget->objectName().toStdString();
        const auto* pLabel = qobject_cast<const QLabel*>(pWidget);
        if (pLabel != nullptr && pLabel->objectName() != "Label_Name")
        {
            EXPECT_GE(pLabel->width(), pLabel->sizeHint().width()) << pLabel->objectName().toStdString();
            EXPECT_GE(pLabel->height(), pLabel->sizeHint().height()) << pLabel->objectName().toStdString();
        }
    }
}

} // namespace

TEST(DocksInANarrowColumn, TextureInformationFits)
{
    expectToFit(*makeInfoDock());
}

TEST(DocksInANarrowColumn, DisplayOptionsFitWithEveryKindOfDifference)
{
    for (int i = 0; i < 3; ++i)
        expectToFit(*makeDisplayDock(i));
}

TEST(DocksInANarrowColumn, ToolboxFits)
{
    CToolBoxDock dock;
    expectToFit(dock);
}
