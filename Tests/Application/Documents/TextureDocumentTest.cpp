#include "Documents/TextureDocument.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>

#include <QtGui/QImage>
#include <gtest/gtest.h>

#include "Application/Documents/DocumentSupport.h"
#include "Core/ByteOrder.h"
#include "Files/LegacyFile.h"
#include "Files/LoadTexture.h"
#include "Support/FileSizeLimit.h"
#include "Support/MemoryLimit.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

CTextureDocument makeDocument(uint32_t ui32Kind = eDocumentFile)
{
    CTextureDocument document(makeBytes(2, 2, 1), makeBytes(2, 2, 1), ui32Kind);
    EXPECT_TRUE(document.rebuildDisplay());
    return document;
}

/// One edit that leaves every byte of the working texture at uiByte.
void edit(CTextureDocument& document, uint8_t uiByte)
{
    EXPECT_TRUE(document.beginEdit());
    fill(document.getWorking(), uiByte);
    EXPECT_TRUE(document.endEdit());
}

std::vector<uint8_t> sixteenOf(uint8_t uiByte)
{
    return std::vector<uint8_t>(16, uiByte);
}

uint32_t paddingOf(const CMOXTextureHeader& header)
{
    const auto* pBlocks = header.getMetaData().find(CMOXTextureHeader::k_ui32NativeFourCC);
    const MetaDataBlock* pBlock = pBlocks != nullptr ? pBlocks->find(eMetaDataPadding) : nullptr;
    return pBlock != nullptr ? pBlock->u32DataSize : 0;
}

#ifndef HALVANE_SANITISED
/// 256 MiB that nobody has touched, so that they cost nothing.
CMOXTexture makeLarge()
{
    return CMOXTexture(CMOXTextureHeader(k_RGBA8, 8192, 8192, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
}
#endif

} // namespace

TEST(TextureDocument, AFileIsSavedFromBirth)
{
    const CTextureDocument document = makeDocument(eDocumentFile);
    EXPECT_EQ(0, document.getChangeCount());
    EXPECT_FALSE(document.isModified());
    EXPECT_FALSE(document.isNeverSaved());
    EXPECT_EQ(1u, document.getSourceKind());
}

TEST(TextureDocument, AnythingElseIsUnsavedFromBirthAndCountsTwoChanges)
{
    for (const uint32_t ui32Kind : {0u, 2u, 3u, 4u, 5u, 6u})
    {
        const CTextureDocument document = makeDocument(ui32Kind);
        EXPECT_EQ(2, document.getChangeCount()) << ui32Kind;
        EXPECT_FALSE(document.isModified()) << ui32Kind;
        EXPECT_TRUE(document.isNeverSaved()) << ui32Kind;
        EXPECT_EQ(ui32Kind, document.getSourceKind());
    }
}

TEST(TextureDocument, TexturesThatAreMovedInAreNotCopied)
{
    CMOXTexture stored = makeBytes(2, 2, 1);
    CMOXTexture working = makeBytes(2, 2, 2);
    const uint8_t* pStored = stored.getDataPtr();
    const uint8_t* pWorking = working.getDataPtr();
    CTextureDocument document(std::move(stored), std::move(working), eDocumentFile);
    EXPECT_EQ(pStored, document.getStored().getDataPtr());
    EXPECT_EQ(pWorking, document.getWorking().getDataPtr());
    EXPECT_EQ(nullptr, document.getDisplay().getDataPtr());
}

TEST(TextureDocument, NothingCanBeUndoneAtFirst)
{
    CTextureDocument document = makeDocument();
    EXPECT_FALSE(document.canUndo());
    EXPECT_FALSE(document.canRedo());
    EXPECT_FALSE(document.undo());
    EXPECT_FALSE(document.redo());
    EXPECT_EQ(0, document.getChangeCount());
    EXPECT_FALSE(document.isModified());
}

TEST(TextureDocument, AnEditCountsAndShows)
{
    CTextureDocument document = makeDocument();
    edit(document, 9);
    EXPECT_EQ(1, document.getChangeCount());
    EXPECT_TRUE(document.isModified());
    EXPECT_TRUE(document.canUndo());
    EXPECT_FALSE(document.canRedo());
    EXPECT_EQ(sixteenOf(9), dataOf(document.getDisplay()));
    EXPECT_EQ(dataOf(makeBytes(2, 2, 1)), dataOf(document.getStored()));
}

TEST(TextureDocument, UndoAndRedoExchangeTheTwoStates)
{
    CTextureDocument document = makeDocument();
    edit(document, 9);

    EXPECT_TRUE(document.undo());
    EXPECT_EQ(dataOf(makeBytes(2, 2, 1)), dataOf(document.getWorking()));
    EXPECT_EQ(dataOf(makeBytes(2, 2, 1)), dataOf(document.getDisplay()));
    EXPECT_EQ(0, document.getChangeCount());
    EXPECT_FALSE(document.isModified());
    EXPECT_FALSE(document.canUndo());
    EXPECT_TRUE(document.canRedo());

    EXPECT_TRUE(document.redo());
    EXPECT_EQ(sixteenOf(9), dataOf(document.getWorking()));
    EXPECT_EQ(sixteenOf(9), dataOf(document.getDisplay()));
    EXPECT_EQ(1, document.getChangeCount());
    EXPECT_TRUE(document.isModified());
    EXPECT_TRUE(document.canUndo());
    EXPECT_FALSE(document.canRedo());
}

TEST(TextureDocument, UndoBringsBackAnotherSize)
{
    CTextureDocument document = makeDocument();
    EXPECT_TRUE(document.beginEdit());
    document.getWorking() = makeBytes(5, 3, 2);
    EXPECT_TRUE(document.endEdit());
    EXPECT_EQ(5u, document.getDisplay().getWidth());
    document.undo();
    EXPECT_EQ(2u, document.getDisplay().getWidth());
    EXPECT_EQ(dataOf(makeBytes(2, 2, 1)), dataOf(document.getDisplay()));
    document.redo();
    EXPECT_EQ(dataOf(makeBytes(5, 3, 2)), dataOf(document.getDisplay()));
}

TEST(TextureDocument, TwoEditsLoseTheOlderStateAndKeepACountAfterTheOneUndo)
{
    CTextureDocument document = makeDocument();
    edit(document, 9);
    edit(document, 10);
    EXPECT_EQ(2, document.getChangeCount());
    EXPECT_TRUE(document.undo());
    EXPECT_EQ(sixteenOf(9), dataOf(document.getWorking()));
    EXPECT_FALSE(document.canUndo());
    EXPECT_FALSE(document.undo());
    EXPECT_EQ(1, document.getChangeCount());
    EXPECT_TRUE(document.isModified());
}

TEST(TextureDocument, AnEditAfterAnUndoEndsTheRedo)
{
    CTextureDocument document = makeDocument();
    edit(document, 9);
    document.undo();
    edit(document, 10);
    EXPECT_FALSE(document.canRedo());
    EXPECT_FALSE(document.redo());
    EXPECT_TRUE(document.undo());
    EXPECT_EQ(dataOf(makeBytes(2, 2, 1)), dataOf(document.getWorking()));
}

TEST(TextureDocument, AnEditThatWasBegunOnlyLeavesAnUndoToTheSameTexture)
{
    CTextureDocument document = makeDocument();
    EXPECT_TRUE(document.beginEdit());
    EXPECT_TRUE(document.canUndo());
    EXPECT_FALSE(document.isModified());
    EXPECT_EQ(0, document.getChangeCount());
    EXPECT_TRUE(document.undo());
    EXPECT_EQ(dataOf(makeBytes(2, 2, 1)), dataOf(document.getWorking()));
    EXPECT_EQ(0, document.getChangeCount());
    EXPECT_FALSE(document.isModified());
}

TEST(TextureDocument, AnUndoOfAnEditThatWasBegunOnlyLeavesTheCountsOfTheEditBefore)
{
    CTextureDocument document = makeDocument();
    edit(document, 9);
    EXPECT_TRUE(document.beginEdit());
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_TRUE(document.undo());
        EXPECT_EQ(1, document.getChangeCount());
        EXPECT_TRUE(document.isModified());
        EXPECT_TRUE(document.redo());
        EXPECT_EQ(1, document.getChangeCount());
        EXPECT_TRUE(document.isModified());
    }
    EXPECT_EQ(sixteenOf(9), dataOf(document.getWorking()));
}

TEST(TextureDocument, AnUnsavedKindStaysUnsavedWhenItsFirstEditIsUndone)
{
    CTextureDocument document = makeDocument(eDocumentEncoded);
    edit(document, 9);
    EXPECT_EQ(3, document.getChangeCount());
    document.undo();
    EXPECT_EQ(2, document.getChangeCount());
    EXPECT_TRUE(document.isNeverSaved());
    // On purpose: only a count of 0 takes the mark back.
    EXPECT_TRUE(document.isModified());
}

TEST(TextureDocument, SavedItIsAsOpenedFromAFile)
{
    CTextureDocument document = makeDocument(eDocumentNew);
    edit(document, 9);
    document.markSaved();
    EXPECT_EQ(0, document.getChangeCount());
    EXPECT_FALSE(document.isModified());
    EXPECT_FALSE(document.isNeverSaved());
}

TEST(TextureDocument, FloatsAreShownAsBytes)
{
    CTextureDocument document(CMOXTexture(), makeFloats({0.0f, 1.0f, 2.0f, 1.0f, -1.0f, 0.0f, 1.0f, 0.0f}), eDocumentFile);
    ASSERT_TRUE(document.rebuildDisplay());
    EXPECT_EQ(k_RGBA8, document.getDisplay().getPixelFormat());
    EXPECT_EQ((std::vector<uint8_t>{0, 255, 255, 255, 0, 0, 255, 0}), dataOf(document.getDisplay()));
    EXPECT_EQ(k_RGBA32, document.getWorking().getPixelFormat());
}

TEST(TextureDocument, BytesOfAnyTypeAndSpaceAreShownAsTheyAre)
{
    CMOXTexture working = makeBytes(2, 2, 100);
    working.setChannelType(eCT_SignedNormalisedByte);
    working.setColourSpace(eCS_sRGB);
    CTextureDocument document(CMOXTexture(), std::move(working), eDocumentFile);
    ASSERT_TRUE(document.rebuildDisplay());
    EXPECT_EQ(dataOf(makeBytes(2, 2, 100)), dataOf(document.getDisplay()));
}

TEST(TextureDocument, WhatCannotBeConvertedLeavesNothingToShow)
{
    CMOXTextureHeader header = makeBytes(4, 4);
    header.setPixelFormat(ePF_BC7);
    CTextureDocument document(CMOXTexture(), CMOXTexture(header), eDocumentFile);
    EXPECT_FALSE(document.rebuildDisplay());
    EXPECT_EQ(0u, document.getDisplay().getBlockSize());
}

TEST(TextureDocument, EncodingTakesTheStoredFormatTypeAndSpaceAndEndsTheUndo)
{
    const CMOXTextureHeader header(layout("bgr", 8, 8, 8), 1, 1, 1, 1, 1, 1, eCS_sRGB, eCT_UnsignedNormalisedByte, false);
    CTextureDocument document(CMOXTexture(header), makeBytes(1, 1), eDocumentFile);
    EXPECT_TRUE(document.beginEdit());
    const std::vector<uint8_t> pixel = {255, 0, 0, 7}; // ends of the range: the same in both colour spaces
    std::copy(pixel.begin(), pixel.end(), document.getWorking().getDataPtr());
    EXPECT_TRUE(document.endEdit());

    EXPECT_TRUE(document.encodeStored());
    EXPECT_EQ(header.getEncoding(), document.getStored().getEncoding());
    EXPECT_EQ((std::vector<uint8_t>{0, 0, 255}), dataOf(document.getStored()));
    EXPECT_EQ(pixel, dataOf(document.getWorking()));
    EXPECT_FALSE(document.canUndo());
    EXPECT_FALSE(document.canRedo());
    EXPECT_FALSE(document.undo());
    EXPECT_TRUE(document.isModified()) << "until it is written";
    EXPECT_EQ(1, document.getChangeCount());
}

TEST(TextureDocument, AFailedEncodingLeavesTheDocumentWithItsUndo)
{
    // There is no encoder for BC7.
    CMOXTextureHeader header = makeBytes(2, 2);
    header.setPixelFormat(ePF_BC7);
    CTextureDocument document(CMOXTexture(header), makeBytes(2, 2, 1), eDocumentFile);
    ASSERT_TRUE(document.rebuildDisplay());
    edit(document, 9);
    EXPECT_FALSE(document.encodeStored());
    EXPECT_EQ(MOXPixelWord(ePF_BC7), document.getStored().getPixelFormat());
    EXPECT_EQ(sixteenOf(9), dataOf(document.getWorking()));
    EXPECT_TRUE(document.isModified());
    EXPECT_TRUE(document.undo());
    EXPECT_EQ(dataOf(makeBytes(2, 2, 1)), dataOf(document.getWorking()));
}

TEST(TextureDocument, WritesTheStoredTextureUnderAnyName)
{
    const CTemporaryFolder folder;
    CTextureDocument document(makeBytes(2, 2, 50), makeBytes(2, 2, 1), eDocumentFile);
    const std::string strPath = folder.path("Sm\xC3\xB8rrebr\xC3\xB8"
                                            "d \xE6\x97\xA5.mox");
    ASSERT_TRUE(document.write(strPath, 0));
    EXPECT_EQ(dataOf(makeBytes(2, 2, 50)), dataOf(CMOXTexture(strPath)));
    EXPECT_EQ(1u, folder.count());
}

TEST(TextureDocument, PaddingGoesIntoBothTexturesAndAgainLeavesOne)
{
    const CTemporaryFolder folder;
    CTextureDocument document = makeDocument();
    const std::string strPath = folder.path("a.mox");
    for (int i = 0; i < 2; ++i)
    {
        ASSERT_TRUE(document.write(strPath, 8));
        // 52 + 12 = 64 bytes stand before the padding: none are missing, so it is one whole step.
        EXPECT_EQ(8u, paddingOf(document.getStored()));
        EXPECT_EQ(8u, paddingOf(document.getWorking()));
        EXPECT_EQ(20u, document.getStored().getMetaDataSize());
        EXPECT_EQ(52u + 20 + 16, readBytes(strPath).size());
        EXPECT_EQ(dataOf(makeBytes(2, 2, 1)), dataOf(CMOXTexture(strPath)));
    }
}

TEST(TextureDocument, PaddingOfTwoAfterTwelveBytesOfMetaDataIsOneStep)
{
    const CTemporaryFolder folder;
    CTextureDocument document = makeDocument();
    document.getStored().addMetaData(MetaDataBlock(0x12345678, 1, nullptr, 0));
    ASSERT_EQ(12u, document.getStored().getMetaDataSize());
    EXPECT_FALSE(document.write(folder.path("a.mox"), 2)) << "a file holds no record without data, and nothing else has 12 bytes";
    EXPECT_EQ(2u, paddingOf(document.getStored())); // -64 - 12 = -76 is even
}

TEST(TextureDocument, PaddingOfNoneOrOneByteAddsNothing)
{
    const CTemporaryFolder folder;
    CTextureDocument document = makeDocument();
    for (const uint32_t ui32Padding : {0u, 1u})
    {
        ASSERT_TRUE(document.write(folder.path("a.mox"), ui32Padding));
        EXPECT_EQ(0u, document.getStored().getMetaDataSize());
        EXPECT_EQ(0u, document.getWorking().getMetaDataSize());
    }
}

TEST(TextureDocument, AFailedWriteLeavesTheOldFileAndNothingBeside)
{
    const CTemporaryFolder folder;
    const std::string strPath = folder.write("a.mox", std::string("old"));
    CTextureDocument document = makeDocument();
    edit(document, 9);
    {
        const CFileSizeLimit limit(32);
        EXPECT_FALSE(document.write(strPath, 0));
    }
    EXPECT_EQ("old", readText(strPath));
    EXPECT_EQ(1u, folder.count());
    EXPECT_TRUE(document.isModified());
    EXPECT_EQ(1, document.getChangeCount());
}

TEST(TextureDocument, AnImageIsTheSurfaceToldByteForByte)
{
    const CTemporaryFolder folder;
    const CMOXTexture working = makeBytes(4, 4, 3, 2, 2, 3);
    const CTextureDocument document(CMOXTexture(), working, eDocumentFile);
    ASSERT_TRUE(document.writeImage(folder.path("a.png"), 1, 1, 2));

    const QImage image(QString::fromStdString(folder.path("a.png")));
    ASSERT_EQ(QSize(2, 2), image.size());
    const uint8_t* pSurface = working.getDataPtr(1, 1, 2);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 2; ++x, pSurface += 4)
            EXPECT_EQ(qRgba(pSurface[0], pSurface[1], pSurface[2], pSurface[3]), image.pixel(x, y)) << x << ", " << y;
}

TEST(TextureDocument, AnImageOfFloatsIsConvertedInACopy)
{
    const CTemporaryFolder folder;
    const CTextureDocument document(CMOXTexture(), makeFloats({1.0f, 0.0f, 0.0f, 1.0f, 0.0f, 5.0f, 0.0f, 1.0f}), eDocumentFile);
    ASSERT_TRUE(document.writeImage(folder.path("a.png"), 0, 0, 0));
    EXPECT_EQ(k_RGBA32, document.getWorking().getPixelFormat());

    const QImage image(QString::fromStdString(folder.path("a.png")));
    ASSERT_EQ(QSize(2, 1), image.size());
    EXPECT_EQ(qRgba(255, 0, 0, 255), image.pixel(0, 0));
    EXPECT_EQ(qRgba(0, 255, 0, 255), image.pixel(1, 0));
}

TEST(TextureDocument, AnImageThatCannotBeWrittenLeavesTheOldFile)
{
    const CTemporaryFolder folder;
    const std::string strUnknown = folder.write("a.xyz", std::string("old"));
    const std::string strPng = folder.write("a.png", std::string("old"));
    const CTextureDocument document = makeDocument();
    EXPECT_FALSE(document.writeImage(strUnknown, 0, 0, 0)) << "no such kind of image";
    EXPECT_FALSE(document.writeImage(strPng, 1, 0, 0)) << "no such level";
    EXPECT_EQ("old", readText(strUnknown));
    EXPECT_EQ("old", readText(strPng));
    EXPECT_EQ(2u, folder.count());
}

// Other containers

namespace
{

/// The lowest byte of the flags, which tells the pixel type of a native file of version 2.
uint32_t legacyTypeOf(const std::string& strPath)
{
    const std::vector<uint8_t> bytes = readBytes(strPath);
    return bytes.size() < k_uiLegacyHeaderSize ? ~0u : bytes[16];
}

CMOXTexture makeOf(MOXPixelWord format, EMOXTChannelType eType, uint32_t uiDepth = 1)
{
    CMOXTexture texture(CMOXTextureHeader(format, 2, 4, uiDepth, 1, 1, 1, eCS_Linear, eType, false));
    fill(texture, 77);
    return texture;
}

} // namespace

TEST(TextureDocument, TheExtensionChoosesTheContainer)
{
    const CTemporaryFolder folder;
    CTextureDocument document(makeBytes(4, 2, 50, 3, 1, 6), makeBytes(2, 2, 1), eDocumentFile);
    const auto startOf = [&](const char* pcName)
    {
        EXPECT_TRUE(document.write(folder.path(pcName), 0)) << pcName;
        const std::vector<uint8_t> bytes = readBytes(folder.path(pcName));
        return std::string(bytes.begin(), bytes.begin() + std::min<ptrdiff_t>(4, static_cast<ptrdiff_t>(bytes.size())));
    };
    EXPECT_EQ("MOX\x03", startOf("a.mox"));
    EXPECT_EQ("\xABKTX", startOf("a.ktx"));
    EXPECT_EQ("DDS ", startOf("a.dds"));
    EXPECT_EQ("/***", startOf("a.h"));
    for (const char* pcName : {"a.mox", "a.ktx", "a.dds"})
    {
        const CMOXTexture loaded(folder.path(pcName));
        EXPECT_EQ(6u, loaded.getNumFaces()) << pcName;
        EXPECT_EQ(3u, loaded.getNumMIPLevels()) << pcName;
        EXPECT_EQ(document.getStored().getEncoding(), loaded.getEncoding()) << pcName;
        EXPECT_EQ(dataOf(document.getStored()), dataOf(loaded)) << pcName;
    }
    EXPECT_EQ(4u, folder.count());
}

TEST(TextureDocument, ACHeaderHasTheArrayNamedAfterItsFile)
{
    const CTemporaryFolder folder;
    CTextureDocument document = makeDocument();
    ASSERT_TRUE(document.write(folder.path("rock.v2.h"), 0));
    EXPECT_NE(std::string::npos, readText(folder.path("rock.v2.h")).find("A8BIT rock[] = {\n"));
}

TEST(TextureDocument, WhatAContainerWritesOtherwiseIsPutRightOnACopy)
{
    // Three bytes a pixel have their number in a DDS with the first letter in the highest byte.
    const CTemporaryFolder folder;
    CMOXTexture stored(CMOXTextureHeader(layout("rgb", 8, 8, 8), 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    const std::vector<uint8_t> pixel = {1, 2, 3};
    std::copy(pixel.begin(), pixel.end(), stored.getDataPtr());
    CTextureDocument document(std::move(stored), makeBytes(1, 1), eDocumentFile);
    ASSERT_TRUE(document.write(folder.path("a.dds"), 0));
    EXPECT_EQ((std::vector<uint8_t>{3, 2, 1}), dataOf(CMOXTexture(folder.path("a.dds"))));
    EXPECT_EQ(eCT_UnsignedNormalisedInteger, CMOXTexture(folder.path("a.dds")).getChannelType());
    EXPECT_EQ(pixel, dataOf(document.getStored()));
    EXPECT_EQ(eCT_UnsignedNormalisedByte, document.getStored().getChannelType());
}

TEST(TextureDocument, MetadataThatAContainerCannotHoldStaysInTheDocument)
{
    const CTemporaryFolder folder;
    CTextureDocument document = makeDocument();
    document.getStored().setBumpMap(2.0f, "xyz");
    const uint32_t uiSize = document.getStored().getMetaDataSize();
    for (const char* pcName : {"a.ktx", "a.dds"})
    {
        ASSERT_TRUE(document.write(folder.path(pcName), 0)) << pcName;
        EXPECT_FALSE(CMOXTexture(folder.path(pcName)).isBumpMap()) << pcName;
        EXPECT_EQ(uiSize, document.getStored().getMetaDataSize()) << pcName;
    }
    ASSERT_TRUE(document.write(folder.path("a.mox"), 0));
    EXPECT_TRUE(CMOXTexture(folder.path("a.mox")).isBumpMap());
}

TEST(TextureDocument, AnEncodingThatAContainerHasNothingForFailsAndTheOldFileStays)
{
    // Luminance beside two signed directions is of DDS alone; bytes that are whole numbers, three to a pixel, of KTX.
    for (const auto& [pcName, stored] : {std::pair("a.ktx", makeOf(layout("lgr", 6, 5, 5), eCT_SignedNormalisedInteger)),
                                         std::pair("a.dds", makeOf(layout("rgb", 8, 8, 8), eCT_UnsignedByte))})
    {
        const CTemporaryFolder folder;
        CTextureDocument document(stored, makeBytes(4, 2), eDocumentFile);
        EXPECT_FALSE(document.write(folder.path(pcName), 0)) << pcName;
        EXPECT_EQ(0u, folder.count()) << pcName;
        folder.write(pcName, std::string("old"));
        EXPECT_FALSE(document.write(folder.path(pcName), 0)) << pcName;
        EXPECT_EQ("old", readText(folder.path(pcName))) << pcName;
        EXPECT_EQ(1u, folder.count()) << pcName;
    }
}

TEST(TextureDocument, AFailedWriteOfAnyContainerLeavesTheOldFileAndNothingBeside)
{
    for (const char* pcName : {"a.ktx", "a.dds", "a.h", "a.mox"})
    {
        const CTemporaryFolder folder;
        const std::string strPath = folder.write(pcName, std::string("old"));
        CTextureDocument document = makeDocument();
        {
            const CFileSizeLimit limit(40); // shorter than any of the headers
            EXPECT_FALSE(document.write(strPath, 0)) << pcName;
            EXPECT_FALSE(document.writeLegacy(strPath, 2)) << pcName;
        }
        EXPECT_EQ("old", readText(strPath)) << pcName;
        EXPECT_EQ(1u, folder.count()) << pcName;
        EXPECT_FALSE(document.write(folder.path(std::string("no such folder/") + pcName), 0)) << pcName;
        EXPECT_FALSE(document.writeLegacy(folder.path(std::string("no such folder/") + pcName), 2)) << pcName;
        EXPECT_EQ(1u, folder.count()) << pcName;
    }
}

TEST(TextureDocument, AnEmptyFolderOfTheNameIsNotReplaced)
{
    const CTemporaryFolder folder;
    std::filesystem::create_directory(folder.path("a.ktx"));
    CTextureDocument document = makeDocument();
    EXPECT_FALSE(document.write(folder.path("a.ktx"), 0));
    EXPECT_FALSE(document.writeLegacy(folder.path("a.ktx"), 2));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path("a.ktx")));
    EXPECT_EQ(1u, folder.count());
}

TEST(TextureDocument, LegacyIsWrittenWithThePixelTypesOfItsApi)
{
    const CMOXTexture bytes = makeOf(k_RGBA8, eCT_UnsignedNormalisedByte);
    const CMOXTexture integers = makeOf(layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedInteger);
    // Number of the API, its pixel type for four bytes, and for three as integers; -1: it has none.
    constexpr int aaiTypes[][3] = {{0, -1, -1}, {1, 18, -1}, {2, 18, -1},  {3, -1, 4}, {4, 18, -1},
                                   {5, -1, 4},  {6, 97, 4},  {7, 152, -1}, {8, -1, -1}};
    for (const auto& aiRow : aaiTypes)
        for (const auto& [pTexture, iType] : {std::pair(&bytes, aiRow[1]), std::pair(&integers, aiRow[2])})
        {
            const CTemporaryFolder folder;
            const CTextureDocument document(*pTexture, makeBytes(4, 2), eDocumentFile);
            const std::string strPath = folder.write("a.mox", std::string("old"));
            EXPECT_EQ(iType >= 0, document.writeLegacy(strPath, static_cast<uint32_t>(aiRow[0]))) << aiRow[0];
            EXPECT_EQ(1u, folder.count());
            if (iType < 0)
            {
                EXPECT_EQ("old", readText(strPath)) << aiRow[0];
                continue;
            }
            EXPECT_EQ(static_cast<uint32_t>(iType), legacyTypeOf(strPath)) << aiRow[0];
            EXPECT_EQ(k_uiLegacyHeaderSize, loadLE<uint32_t>(readBytes(strPath).data()));
            const CMOXTexture loaded(strPath);
            EXPECT_EQ(pTexture->getEncoding(), loaded.getEncoding()) << aiRow[0];
            EXPECT_EQ(dataOf(*pTexture), dataOf(loaded)) << aiRow[0];
        }
}

TEST(TextureDocument, LegacyHoldsNoDepth)
{
    const CTemporaryFolder folder;
    const CTextureDocument document(makeOf(k_RGBA8, eCT_UnsignedNormalisedByte, 2), makeBytes(4, 2), eDocumentFile);
    EXPECT_FALSE(document.writeLegacy(folder.path("a.mox"), 2));
    EXPECT_EQ(0u, folder.count());
}

#ifndef HALVANE_SANITISED

TEST(TextureDocument, WithoutMemoryForAnUndoTheEditDoesNotBegin)
{
    CTextureDocument document(CMOXTexture(), makeLarge(), eDocumentFile);
    {
        const CMemoryLimit limit;
        EXPECT_FALSE(document.beginEdit());
    }
    EXPECT_FALSE(document.canUndo());
    EXPECT_FALSE(document.canRedo());
    EXPECT_FALSE(document.isModified());
    EXPECT_EQ(size_t{8192} * 8192 * 4, document.getWorking().getBlockSize());
}

TEST(TextureDocument, WithoutMemoryForThePictureThereIsNone)
{
    CTextureDocument document(CMOXTexture(), makeLarge(), eDocumentFile);
    const CMemoryLimit limit;
    EXPECT_FALSE(document.rebuildDisplay());
    EXPECT_EQ(0u, document.getDisplay().getBlockSize());
}

TEST(TextureDocument, WithoutMemoryToEncodeTheStoredTextureStays)
{
    CTextureDocument document(makeBytes(2, 2, 50), makeLarge(), eDocumentFile);
    const CMemoryLimit limit;
    EXPECT_FALSE(document.encodeStored());
    EXPECT_EQ(dataOf(makeBytes(2, 2, 50)), dataOf(document.getStored()));
}

#endif
