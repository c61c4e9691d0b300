#include "Documents/SaveDecision.h"

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

TEST(SaveExtension, IsTheTextBehindTheLastPoint)
{
    EXPECT_EQ("mox", getSaveExtension("/a/b.c.mox"));
    EXPECT_EQ("", getSaveExtension("/a/b"));
    EXPECT_EQ("", getSaveExtension("/a/b."));
    EXPECT_EQ("DDS", getSaveExtension("b.DDS"));
    EXPECT_EQ("d/b", getSaveExtension("/a.d/b"));
}

TEST(SaveExtension, ThreeOfThemAreSavedInLowerCaseOnly)
{
    for (const char* pcExtension : {"mox", "dds", "ktx"})
        EXPECT_TRUE(isSaveExtension(pcExtension)) << pcExtension;
    for (const char* pcExtension : {"", "MOX", "Dds", "KTX", "png", "moxx", "mo", "astc", "h"})
        EXPECT_FALSE(isSaveExtension(pcExtension)) << pcExtension;
}

TEST(SaveRoad, SaveWritesToTheThreeExtensionsAndAsksForAnyOther)
{
    for (const char* pcName : {"/a/b.mox", "b.dds", "/x.y/b.c.ktx"})
        EXPECT_EQ(ESaveRoad::eWrite, decideSave(pcName)) << pcName;
    for (const char* pcName : {"/a/photo.png", "b.DDS", "New Texture 1", "mox", "/a.mox/b", "b.mox."})
        EXPECT_EQ(ESaveRoad::eAskForName, decideSave(pcName)) << pcName;
}

TEST(SaveRoad, SaveAsWritesNothingForAnyOtherExtension)
{
    EXPECT_EQ(ESaveRoad::eWrite, decideSaveAs("/a/b.mox", false));
    EXPECT_EQ(ESaveRoad::eWriteLegacy, decideSaveAs("/a/b.mox", true));
    for (const bool bLegacy : {false, true})
        for (const char* pcName : {"/a/b.png", "/a/b.DDS", "/a/b", "/a/b."})
            EXPECT_EQ(ESaveRoad::eWriteNothing, decideSaveAs(pcName, bLegacy)) << pcName;
}

TEST(FilterExtension, GoesBehindANameWithoutAPoint)
{
    EXPECT_EQ("/a/b.ktx", addFilterExtension("/a/b", "Khronos Textures (*.ktx)"));
    EXPECT_EQ("/a/b.mox", addFilterExtension("/a/b", "Moxwell Texture V2 (*.mox)"));
    EXPECT_EQ("/a/b.jpeg", addFilterExtension("/a/b", "JPEG Files (*.jpg *.jpeg)"));
    EXPECT_EQ("/a.d/b.dds", addFilterExtension("/a.d/b", "Direct Draw Surfaces (*.dds)")) << "the folder's point is none of the name";
}

TEST(FilterExtension, LeavesANameWithAPointAndAFilterWithoutOne)
{
    EXPECT_EQ("/a/b.png", addFilterExtension("/a/b.png", "Khronos Textures (*.ktx)"));
    EXPECT_EQ("/a/b.", addFilterExtension("/a/b.", "Khronos Textures (*.ktx)"));
    EXPECT_EQ("/a/b", addFilterExtension("/a/b", "All Files (*)"));
    EXPECT_EQ("/a/b", addFilterExtension("/a/b", ""));
    EXPECT_EQ("/a/b", addFilterExtension("/a/b", "odd) .x"));
}

TEST(SuggestedName, IsTheBaseNameInTheDocumentsOwnFolder)
{
    const testsupport::CTemporaryFolder folder;
    const QString strFolder = QString::fromStdString(folder.path());
    EXPECT_EQ(strFolder + "/photo.mox", suggestSaveName(strFolder + "/photo.png", ".mox", "/elsewhere"));
    EXPECT_EQ(strFolder + "/photo.mox", suggestSaveName(strFolder + "/photo", ".mox", "/elsewhere"));
}

TEST(SuggestedName, LosesTheExtensionAlone)
{
    for (const auto& [pcName, pcStem] : {
             std::pair("rock.v2.png", "rock.v2"),
             std::pair("rock.v2.jpeg", "rock.v2"),
             std::pair("photo.small.mox", "photo.small"),
             std::pair("tile.0.5.DDS", "tile.0.5"),
             std::pair("a b.c d.tga", "a b.c d"),
             std::pair(".hidden.png", ".hidden"),
             // None that is of three or four letters and digits.
             std::pair("photo.x", "photo"),
             std::pair("photo.picture", "photo"),
             std::pair("photo.a b", "photo"),
             std::pair("photo.", "photo"),
         })
        EXPECT_EQ(QString("./") + pcStem + ".mox", suggestSaveName(pcName, ".mox", "/elsewhere")) << pcName;
}

TEST(SuggestedName, OfAnEncodedDocumentIsThatOfItsSource)
{
    for (const char* pcName : {"rock.v2.png (Encoded:BC1)", "rock.v2.png * (Encoded:ETC2 RGB A1)", "rock.v2.png (Encoded:RGB 5 6 5 )",
                               "rock.v2.mox * (Encoded:BC1) * (Encoded:ASTC 4x4)"})
    {
        EXPECT_EQ("/elsewhere/rock.v2.mox", suggestSaveName(QString("/no such folder/") + pcName, ".mox", "/elsewhere")) << pcName;
        EXPECT_EQ("./rock.v2.png", suggestSaveName(pcName, ".png", "/elsewhere")) << pcName;
    }
}

TEST(SuggestedName, GoesToTheSavePathWhereTheFolderIsGone)
{
    EXPECT_EQ("/elsewhere/photo.mox", suggestSaveName("/no such folder/photo.png", ".mox", "/elsewhere"));
}

TEST(SuggestedName, OfAGeneratedNameLiesInTheCurrentFolder)
{
    EXPECT_EQ("./New Texture 1.mox", suggestSaveName("New Texture 1", ".mox", "/elsewhere"));
}
