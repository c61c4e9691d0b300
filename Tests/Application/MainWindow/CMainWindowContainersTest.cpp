// Files of other containers, from opening to saving, and what the docks tell of them.

#include <filesystem>

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTreeWidget>

#include "Application/MainWindow/MainWindowFixture.h"
#include "Files/AstcFile.h"
#include "Files/LegacyFile.h"
#include "Support/FileSizeLimit.h"

using namespace moxtexture;
using testsupport::CDialogAnswers;
using testsupport::dataOf;
using testsupport::makeBytes;

namespace
{

/// A texture of a shape that a container is asked to keep; 4 by 4 pixels in each surface of the top level.
struct Shape
{
    const char* pName;
    uint32_t uiDepth;
    uint32_t uiLevels;
    uint32_t uiMembers;
    uint32_t uiFaces;
};

constexpr Shape k_aShapes[] = {
    {"plain", 1, 1, 1, 1},
    {"chain", 1, 3, 1, 1},
    {"cube", 1, 1, 1, 6},
    {"cube with a chain", 1, 3, 1, 6},
    {"members", 1, 1, 3, 1},
    {"members with a chain", 1, 3, 2, 1},
    {"cubes", 1, 2, 2, 6},
    {"deep", 4, 1, 1, 1},
    {"deep with a chain", 4, 3, 1, 1},
};

CMOXTexture makeShape(const Shape& shape, uint8_t uiSeed = 0)
{
    CMOXTexture texture(CMOXTextureHeader(k_RGBA8, 4, 4, shape.uiDepth, shape.uiLevels, shape.uiMembers, shape.uiFaces, eCS_Linear,
                                          eCT_UnsignedNormalisedByte, false));
    for (uint32_t i = 0; i < texture.getBlockSize(); ++i)
        texture.getDataPtr()[i] = static_cast<uint8_t>(i * 7 + uiSeed);
    return texture;
}

class CMainWindowContainersTest : public MainWindowTest
{
protected:
    std::string file(const std::string& strName) const { return m_Files.path(strName); }

    /// Saves the active texture under another name, which must not fail.
    void saveAs(const std::string& strName, const char* pAction = "Act_Save_As")
    {
        CDialogAnswers answers;
        answers.thenChoose({QString::fromStdString(file(strName))});
        action(pAction).trigger();
        ASSERT_EQ(1u, answers.seen().size()) << strName;
        EXPECT_EQ("Save Texture", answers.seen()[0].strTitle);
        EXPECT_EQ(strName, area().currentSubWindow()->windowTitle().toStdString());
        EXPECT_TRUE(std::filesystem::exists(file(strName)));
    }
    void closeAll()
    {
        const CDialogAnswers answers;
        window().slotCloseAll();
        settle();
        ASSERT_EQ(0, windowCount());
        EXPECT_TRUE(answers.seen().empty()) << "all is saved";
    }
    void reload()
    {
        CDialogAnswers answers;
        answers.thenPress(QMessageBox::Yes);
        action("Act_Reload").trigger();
        settle();
        EXPECT_EQ(1u, answers.seen().size());
    }

    /// The text of a label of the texture information, as a user reads it beside its name.
    std::string infoText(const char* pLabel) const
    {
        const auto* pDock = window().findChild<QWidget*>("Dock_TexInfo");
        const auto* pGroup = pDock != nullptr ? pDock->findChild<QWidget*>("Group_Original_Info") : nullptr;
        const auto* pText = pGroup != nullptr ? pGroup->findChild<QLabel*>(pLabel) : nullptr;
        return pText != nullptr ? pText->text().toStdString() : std::string("no label ") + pLabel;
    }
    /// Items below the only texture in the tree of surfaces, on each of the three steps.
    std::vector<int> treeCounts() const
    {
        const auto* pTree = window().findChild<QTreeWidget*>("Tree_Surfaces");
        std::vector<int> counts;
        for (const QTreeWidgetItem* pItem = pTree->topLevelItem(0); pItem != nullptr && pItem->childCount() != 0; pItem = pItem->child(0))
            counts.push_back(pItem->childCount());
        return counts;
    }
};

TEST_F(CMainWindowContainersTest, EachShapeSavedFromTheWindowOpensAgainEqual)
{
    for (const char* pEnding : {".mox", ".ktx", ".dds"})
        for (const Shape& shape : k_aShapes)
        {
            SCOPED_TRACE(shape.pName + std::string(pEnding));
            const CMOXTexture texture = makeShape(shape, 3);
            openView(mox("source.mox", texture));
            const std::string strName = shape.pName + std::string(pEnding);
            saveAs(strName);
            closeAll();

            CTexViewWindowSingle& view = openView(file(strName));
            const CMOXTexture& stored = view.getStoredTexture();
            EXPECT_EQ(texture.getEncoding(), stored.getEncoding());
            EXPECT_EQ(shape.uiDepth, stored.getDepth());
            EXPECT_EQ(shape.uiLevels, stored.getNumMIPLevels());
            EXPECT_EQ(shape.uiMembers, stored.getNumArrayMembers());
            EXPECT_EQ(shape.uiFaces, stored.getNumFaces());
            EXPECT_EQ(dataOf(texture), dataOf(stored));
            EXPECT_EQ(dataOf(texture), dataOf(view.getWorkingTexture()));
            EXPECT_EQ(strName, subWindows().front()->windowTitle().toStdString());
            closeAll();
        }
}

TEST_F(CMainWindowContainersTest, TheDocksTellTheShapeOfAFileOfAnyContainer)
{
    for (const char* pEnding : {".ktx", ".dds"})
        for (const Shape& shape : k_aShapes)
        {
            const std::string strName = shape.pName + std::string(pEnding);
            SCOPED_TRACE(strName);
            openView(mox(strName, makeShape(shape)));
            EXPECT_EQ(strName, infoText("Label_Name"));
            EXPECT_EQ("4", infoText("Label_Width"));
            EXPECT_EQ("4", infoText("Label_Height"));
            EXPECT_EQ(std::to_string(shape.uiDepth), infoText("Label_Depth"));
            EXPECT_EQ(std::to_string(shape.uiMembers), infoText("Label_ArraySize"));
            EXPECT_EQ(std::to_string(shape.uiFaces), infoText("Label_Faces"));
            EXPECT_EQ(std::to_string(shape.uiLevels), infoText("Label_MIPMaps"));
            std::vector<int> expected;
            const bool bSurfaces = shape.uiMembers * shape.uiFaces > 1;
            if (bSurfaces || shape.uiLevels > 1)
                expected.push_back(static_cast<int>(shape.uiLevels));
            if (bSurfaces)
                expected.push_back(static_cast<int>(shape.uiMembers));
            if (shape.uiFaces > 1)
                expected.push_back(static_cast<int>(shape.uiFaces));
            EXPECT_EQ(expected, treeCounts());
            closeAll();
        }
}

TEST_F(CMainWindowContainersTest, LegacySavedFromTheWindowOpensAgainEqual)
{
    for (const Shape& shape : k_aShapes)
    {
        if (shape.uiDepth > 1)
            continue;
        SCOPED_TRACE(shape.pName);
        const CMOXTexture texture = makeShape(shape, 9);
        openView(mox("source.mox", texture));
        saveAs("old.mox", "Act_Save_Legacy");
        closeAll();
        EXPECT_EQ(52, testsupport::readBytes(file("old.mox"))[0]);
        CTexViewWindowSingle& view = openView(file("old.mox"));
        EXPECT_EQ(shape.uiMembers, view.getStoredTexture().getNumArrayMembers());
        EXPECT_EQ(shape.uiFaces, view.getStoredTexture().getNumFaces());
        EXPECT_EQ(dataOf(texture), dataOf(view.getWorkingTexture()));
        closeAll();
        std::filesystem::remove(file("old.mox"));
    }
}

TEST_F(CMainWindowContainersTest, LegacyOfADeepTextureFailsWithItsMessage)
{
    openView(mox("source.mox", makeShape({"deep", 2, 1, 1, 1})));
    m_Files.write("old.mox", std::string("old"));
    CDialogAnswers answers;
    answers.thenChoose({QString::fromStdString(file("old.mox"))}).thenPress(QMessageBox::Yes).thenPress(QMessageBox::Ok);
    action("Act_Save_Legacy").trigger();
    ASSERT_EQ(3u, answers.seen().size());
    EXPECT_EQ("An Error Has Occurred", answers.seen()[2].strTitle);
    EXPECT_EQ("old", testsupport::readText(file("old.mox")));
    EXPECT_EQ("source.mox", subWindows().front()->windowTitle().toStdString());
}

TEST_F(CMainWindowContainersTest, AFullDiskFailsWithTheMessageAndTheOldFileStays)
{
    for (const char* pName : {"a.ktx", "a.dds", "a.mox"})
    {
        const std::string strPath = mox(pName, makeBytes(4, 4, 1));
        const std::vector<uint8_t> before = testsupport::readBytes(strPath);
        edit(openView(strPath), 5);
        CDialogAnswers answers;
        answers.thenPress(QMessageBox::Yes).thenPress(QMessageBox::Ok);
        {
            const testsupport::CFileSizeLimit limit(40);
            action("Act_Save").trigger();
        }
        ASSERT_EQ(2u, answers.seen().size()) << pName;
        EXPECT_EQ("An Error Has Occurred", answers.seen()[1].strTitle);
        EXPECT_EQ("An unknown error has occurred, please try a different texture file type, or contact Bluedesk for support",
                  answers.seen()[1].strText);
        EXPECT_EQ(QMessageBox::Critical, answers.seen()[1].eIcon);
        EXPECT_EQ(before, testsupport::readBytes(strPath));
        EXPECT_EQ(pName + std::string(" *"), subWindows().front()->windowTitle().toStdString());
        // It is as unsaved as it was, and can be saved when there is room again.
        answers.thenPress(QMessageBox::Yes);
        action("Act_Save").trigger();
        EXPECT_EQ(std::vector<uint8_t>(64, 5), dataOf(CMOXTexture(strPath)));
        EXPECT_EQ(pName, subWindows().front()->windowTitle().toStdString());
        closeAll();
        std::filesystem::remove(strPath);
        EXPECT_EQ(0u, m_Files.count()) << "nothing is left beside";
    }
}

TEST_F(CMainWindowContainersTest, AFolderThatIsGoneFailsWithTheMessage)
{
    std::filesystem::create_directory(file("sub"));
    for (const char* pName : {"sub/a.ktx", "sub/a.dds", "sub/a.mox"})
        openView(mox(pName, makeBytes(4, 4, 1)));
    std::filesystem::remove_all(file("sub"));
    for (QMdiSubWindow* pSubWindow : subWindows())
    {
        area().setActiveSubWindow(pSubWindow);
        CDialogAnswers answers;
        answers.thenPress(QMessageBox::Ok);
        action("Act_Save").trigger();
        ASSERT_EQ(1u, answers.seen().size());
        EXPECT_EQ("An Error Has Occurred", answers.seen()[0].strTitle);
    }
    EXPECT_EQ(0u, m_Files.count());
}

TEST_F(CMainWindowContainersTest, ReloadReadsTheContainerThatTheDocumentWasSavedTo)
{
    // A DDS keeps no metadata: what the document still knew of it is gone when it is read again.
    CMOXTexture texture = makeBytes(4, 2, 3);
    texture.setBumpMap(2.0f, "xyz");
    CTexViewWindowSingle& view = openView(mox("a.mox", texture));
    saveAs("b.dds");
    EXPECT_TRUE(view.getStoredTexture().isBumpMap());
    EXPECT_EQ(uint32_t{eDocumentFile}, view.getSourceKind());
    EXPECT_FALSE(view.isModified());
    reload();
    ASSERT_EQ(1, windowCount());
    EXPECT_EQ("b.dds", subWindows().front()->windowTitle().toStdString());
    EXPECT_FALSE(lastView()->getStoredTexture().isBumpMap());
    EXPECT_EQ(dataOf(texture), dataOf(lastView()->getWorkingTexture()));

    // And what another program wrote there meanwhile.
    mox("b.dds", makeBytes(8, 8, 1));
    reload();
    EXPECT_EQ(8u, lastView()->getWorkingTexture().getWidth());
}

TEST_F(CMainWindowContainersTest, MetadataOutlivesASaveThatCannotHoldIt)
{
    CMOXTexture texture = makeBytes(4, 2, 3);
    texture.setBumpMap(2.0f, "xyz");
    openView(mox("a.mox", texture));
    saveAs("b.dds");
    saveAs("c.ktx");
    saveAs("d.mox");
    EXPECT_TRUE(CMOXTexture(file("d.mox")).isBumpMap());
}

TEST_F(CMainWindowContainersTest, OrientationIsKeptByKtxAndLegacyAndLostByDds)
{
    CMOXTexture texture = makeBytes(1, 2);
    texture.setOrientation(2); // bottom row first
    const std::vector<uint8_t> shown = {28, 35, 42, 49, 0, 7, 14, 21};
    for (const auto& [pName, pAction, bKept] : {std::tuple("b.ktx", "Act_Save_As", true), std::tuple("b.dds", "Act_Save_As", false),
                                                std::tuple("b.mox", "Act_Save_Legacy", true)})
    {
        EXPECT_EQ(shown, dataOf(openView(mox("a.mox", texture)).getWorkingTexture()));
        saveAs(pName, pAction);
        closeAll();
        CTexViewWindowSingle& view = openView(file(pName));
        EXPECT_EQ(bKept ? 2u : 0u, view.getStoredTexture().getOrientation(eAxisY)) << pName;
        EXPECT_EQ(bKept ? shown : dataOf(texture), dataOf(view.getWorkingTexture())) << pName;
        EXPECT_EQ(dataOf(texture), dataOf(view.getStoredTexture())) << pName;
        closeAll();
    }
}

TEST_F(CMainWindowContainersTest, ColourSpaceIsKeptByEachContainerThatHasANumberForIt)
{
    CMOXTexture texture = makeBytes(4, 2);
    texture.setColourSpace(eCS_sRGB);
    for (const char* pName : {"b.ktx", "b.dds"})
    {
        openView(mox("a.mox", texture));
        saveAs(pName);
        closeAll();
        EXPECT_EQ(eCS_sRGB, openView(file(pName)).getStoredTexture().getColourSpace()) << pName;
        closeAll();
    }
    // Version 2 for OpenGL knows nothing of it.
    openView(mox("a.mox", texture));
    saveAs("b.mox", "Act_Save_Legacy");
    closeAll();
    EXPECT_EQ(eCS_Linear, openView(file("b.mox")).getStoredTexture().getColourSpace());
}

TEST_F(CMainWindowContainersTest, ColoursOfADdsAreRightInTheWindowAndInTheFileSavedAgain)
{
    // As everybody writes three bytes a pixel, blue first: one pixel of red 10, green 20, blue 30.
    CMOXTexture texture(CMOXTextureHeader(layout("rgb", 8, 8, 8), 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    const std::vector<uint8_t> pixel = {10, 20, 30};
    std::copy(pixel.begin(), pixel.end(), texture.getDataPtr());
    openView(mox("a.mox", texture));
    saveAs("b.dds");
    closeAll();
    const std::vector<uint8_t> bytes = testsupport::readBytes(file("b.dds"));
    ASSERT_EQ(128u + 3, bytes.size());
    EXPECT_EQ(std::vector<uint8_t>({30, 20, 10}), std::vector<uint8_t>(bytes.end() - 3, bytes.end()));
    EXPECT_EQ(std::vector<uint8_t>({10, 20, 30, 255}), dataOf(openView(file("b.dds")).getWorkingTexture()));
    action("Act_Save").trigger();
    EXPECT_EQ(bytes, testsupport::readBytes(file("b.dds")));
}

TEST_F(CMainWindowContainersTest, OpensContainersByDropByMessageAndIntoASurface)
{
    const std::string strKtx = mox("a.ktx", makeBytes(4, 2, 1)), strDds = mox("b.dds", makeBytes(4, 2, 2));
    ASSERT_TRUE(saveLegacy(makeBytes(4, 2, 3), file("c.mox"), 2));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(strKtx)), QUrl::fromLocalFile(QString::fromStdString(strDds))});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &enter);
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &drop);
    ASSERT_EQ(2, windowCount());
    EXPECT_EQ(dataOf(makeBytes(4, 2, 1)), dataOf(viewOf(subWindows()[0])->getWorkingTexture()));
    EXPECT_EQ(dataOf(makeBytes(4, 2, 2)), dataOf(viewOf(subWindows()[1])->getWorkingTexture()));
    window().slotAppMessageRecieved(QString::fromStdString(strDds + "$!?" + file("c.mox")));
    ASSERT_EQ(3, windowCount());
    CTexViewWindowSingle& view = *viewOf(subWindows()[2]);
    EXPECT_EQ(dataOf(makeBytes(4, 2, 3)), dataOf(view.getWorkingTexture()));

    area().setActiveSubWindow(subWindows()[2]);
    for (const auto& [strPath, uiSeed] :
         {std::pair(strKtx, uint8_t{1}), std::pair(strDds, uint8_t{2}), std::pair(file("c.mox"), uint8_t{3})})
    {
        CDialogAnswers answers;
        answers.thenChoose({QString::fromStdString(strPath)});
        window().slotLoadToCurrentSurface();
        EXPECT_EQ(dataOf(makeBytes(4, 2, uiSeed)), dataOf(view.getWorkingTexture())) << strPath;
    }
}

TEST_F(CMainWindowContainersTest, AnAstcFileIsLoadedAndItsPixelsAreForAnotherProgram)
{
    CMOXTextureHeader header(ePF_ASTC_4x4, 8, 8, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    ASSERT_TRUE(writeASTC(CMOXTexture(header), file("a.astc")));
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Ok);
    open(file("a.astc"));
    ASSERT_EQ(1u, answers.seen().size());
    EXPECT_EQ("This file cannot be opened.", answers.seen()[0].strText);
    EXPECT_EQ("Please check that astcenc.exe is in PATH.", answers.seen()[0].strInformativeText);
    EXPECT_EQ(0, windowCount());
}

TEST_F(CMainWindowContainersTest, AnEncodedTextureSavesAsDdsAndOpensAgain)
{
    // Eight bytes for four by four pixels of one colour.
    CMOXTexture blocks(CMOXTextureHeader(ePF_BC1, 8, 8, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    openView(mox("a.mox", blocks));
    for (const char* pName : {"b.dds", "b.ktx"})
    {
        saveAs(pName);
        closeAll();
        CTexViewWindowSingle& view = openView(file(pName));
        EXPECT_EQ(MOXPixelWord(ePF_BC1), view.getStoredTexture().getPixelFormat()) << pName;
        EXPECT_EQ(dataOf(blocks), dataOf(view.getStoredTexture())) << pName;
    }
}

} // namespace
