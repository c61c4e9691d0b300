#include "MainWindow/OpenedTexture.h"

#include <filesystem>

#include <QtGui/QImage>
#include <gtest/gtest.h>

#include "Application/Documents/DocumentSupport.h"
#include "Files/SaveTexture.h"
#include "Formats/PixelFormats.h"
#include "Support/NativeFileBuilder.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using testsupport::dataOf;

namespace
{

class OpenedTextureTest : public testing::Test
{
protected:
    std::string save(const std::string& strName, const CMOXTexture& texture) const
    {
        EXPECT_TRUE(saveTexture(texture, m_Folder.path(strName)));
        return m_Folder.path(strName);
    }

    const testsupport::CTemporaryFolder m_Folder;
};

TEST_F(OpenedTextureTest, OfBytesIsDisplayedAsBytesByBothRoutes)
{
    const CMOXTexture texture = testsupport::makeBytes(3, 2, 5, 2);
    const std::string strPath = save("a.mox", texture);
    for (const EDisplayRoute eRoute : {EDisplayRoute::eOpen, EDisplayRoute::ePlain})
    {
        const OpenedTexture opened = openTexture(strPath, eRoute);
        ASSERT_EQ(EOpenEnd::eDone, opened.eEnd);
        EXPECT_EQ(dataOf(texture), dataOf(opened.stored));
        EXPECT_EQ(dataOf(texture), dataOf(opened.display));
    }
}

TEST_F(OpenedTextureTest, OfFloatsKeepsFloatsWhenOpenedAndBecomesBytesByThePlainRoute)
{
    const std::string strPath = save("a.mox", testsupport::makeFloats({4.0f, 0.0f, -1.0f, 1.0f}));
    const OpenedTexture opened = openTexture(strPath, EDisplayRoute::eOpen);
    ASSERT_EQ(EOpenEnd::eDone, opened.eEnd);
    EXPECT_EQ(k_RGBA32, opened.display.getPixelFormat());
    EXPECT_EQ(eCT_SignedFloatingPoint, opened.display.getChannelType());
    float afPixel[4];
    std::memcpy(afPixel, opened.display.getDataPtr(), sizeof(afPixel));
    EXPECT_EQ(4.0f, afPixel[0]);
    EXPECT_EQ(-1.0f, afPixel[2]);

    const OpenedTexture plain = openTexture(strPath, EDisplayRoute::ePlain);
    ASSERT_EQ(EOpenEnd::eDone, plain.eEnd);
    EXPECT_EQ(k_RGBA8, plain.display.getPixelFormat());
    EXPECT_EQ(std::vector<uint8_t>({255, 0, 0, 255}), dataOf(plain.display));
}

TEST_F(OpenedTextureTest, OfUnsignedFloatsIsFloatToo)
{
    // One pixel of 11, 11 and 10 bits, blue lowest: all zeros is black.
    const std::vector<uint8_t> file = testsupport::CNativeFileBuilder()
                                          .format(layout("bgr", 10, 11, 11).getWord())
                                          .channelType(eCT_UnsignedFloatingPoint)
                                          .data({0, 0, 0, 0})
                                          .bytes();
    const OpenedTexture opened = openTexture(m_Folder.write("a.mox", file), EDisplayRoute::eOpen);
    ASSERT_EQ(EOpenEnd::eDone, opened.eEnd);
    EXPECT_EQ(k_RGBA32, opened.display.getPixelFormat());
    EXPECT_EQ(eCT_SignedFloatingPoint, opened.display.getChannelType());
}

TEST_F(OpenedTextureTest, HasItsOrientationUndoneOnTheDisplayedCopyAlone)
{
    CMOXTexture texture = testsupport::makeBytes(1, 2);
    texture.setOrientation(2); // the Y axis is mirrored
    const OpenedTexture opened = openTexture(save("a.mox", texture), EDisplayRoute::ePlain);
    ASSERT_EQ(EOpenEnd::eDone, opened.eEnd);
    const std::vector<uint8_t> top = {0, 7, 14, 21}, bottom = {28, 35, 42, 49};
    std::vector<uint8_t> upright = bottom;
    upright.insert(upright.end(), top.begin(), top.end());
    EXPECT_EQ(upright, dataOf(opened.display));
    EXPECT_EQ(0u, opened.display.getOrientation(eAxisY));
    EXPECT_EQ(dataOf(texture), dataOf(opened.stored));
    EXPECT_EQ(2u, opened.stored.getOrientation(eAxisY));
}

TEST_F(OpenedTextureTest, NamedAstcInLowerCaseIsTurnedUpsideDownByTheTextOfItsPathAlone)
{
    QImage image(1, 2, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, Qt::red);
    image.setPixelColor(0, 1, Qt::blue);
    const std::vector<uint8_t> upright = {255, 0, 0, 255, 0, 0, 255, 255}, turned = {0, 0, 255, 255, 255, 0, 0, 255};
    for (const char* pName : {"a.astc", "a.ASTC", "a.png", "aastc"})
    {
        const std::string strPath = m_Folder.path(pName);
        ASSERT_TRUE(image.save(QString::fromStdString(strPath), "PNG"));
        const OpenedTexture opened = openTexture(strPath, EDisplayRoute::eOpen);
        ASSERT_EQ(EOpenEnd::eDone, opened.eEnd) << pName;
        EXPECT_EQ(std::string(pName) == "a.astc" ? turned : upright, dataOf(opened.display)) << pName;
        EXPECT_EQ(upright, dataOf(opened.stored)) << pName;
        EXPECT_EQ(upright, dataOf(openTexture(strPath, EDisplayRoute::ePlain).display)) << pName;
    }
}

TEST_F(OpenedTextureTest, OfAMissingFileIsNotLoaded)
{
    const OpenedTexture opened = openTexture(m_Folder.path("none.mox"), EDisplayRoute::eOpen);
    EXPECT_EQ(EOpenEnd::eNotLoaded, opened.eEnd);
    EXPECT_EQ("Cannot open file, as it does not exist at specified location.\nHas it been renamed, moved or deleted?", opened.strError);
}

TEST_F(OpenedTextureTest, OfABrokenFileIsNotLoaded)
{
    const OpenedTexture opened = openTexture(m_Folder.write("broken.mox", "no texture"), EDisplayRoute::eOpen);
    EXPECT_EQ(EOpenEnd::eNotLoaded, opened.eEnd);
    EXPECT_EQ("Either file is not a valid image or texture file, or is an unsupported format. If the file is a simple bitmap or texture "
              "file, you could try wrapping it as raw data.",
              opened.strError);
}

TEST_F(OpenedTextureTest, OfAFormatThatNothingDecodesIsNotConverted)
{
    // A block of 16 bytes holds 4 by 4 pixels, or 6 by 6 by 6 of which 4 by 4 are wanted; the last takes half a byte a pixel.
    for (const auto& [eFormat, bIsASTC] : {std::pair(ePF_ASTC_4x4, true), std::pair(ePF_ASTC_6x6x6, true), std::pair(ePF_BC4, false)})
    {
        const std::vector<uint8_t> file =
            testsupport::CNativeFileBuilder().format(eFormat).size(8, 8).data(std::vector<uint8_t>(64)).bytes();
        const OpenedTexture opened = openTexture(m_Folder.write("a.mox", file), EDisplayRoute::eOpen);
        EXPECT_EQ(EOpenEnd::eNotConverted, opened.eEnd);
        EXPECT_EQ(bIsASTC, opened.bIsASTC);
    }
}

TEST_F(OpenedTextureTest, IsFoundBehindAChainOfLinks)
{
    const std::string strFile = m_Folder.write("file", "text");
    std::string strLast = strFile;
    for (int i = 0; i < 256; ++i)
    {
        const std::string strLink = m_Folder.path("link" + std::to_string(i));
        std::filesystem::create_symlink(strLast, strLink);
        strLast = strLink;
    }
    EXPECT_EQ(strFile, resolveLinks(strLast));
    EXPECT_EQ(strFile, resolveLinks(strFile));
}

TEST_F(OpenedTextureTest, StopsAfter256LinksOfACycle)
{
    // 300 links, each to the next: 256 steps from the first end at the one numbered 256.
    const auto link = [&](int i) { return m_Folder.path("link" + std::to_string(i % 300)); };
    for (int i = 0; i < 300; ++i)
        std::filesystem::create_symlink(link(i + 1), link(i));
    EXPECT_EQ(link(256), resolveLinks(link(0)));
    EXPECT_EQ(link(299 + 256), resolveLinks(link(299)));
}

TEST_F(OpenedTextureTest, FollowsALinkThatIsRelativeToItsOwnFolder)
{
    std::filesystem::create_directory(m_Folder.path("sub"));
    const std::string strFile = m_Folder.write("file", "text");
    std::filesystem::create_symlink("../file", m_Folder.path("sub/link"));
    EXPECT_EQ(strFile, resolveLinks(m_Folder.path("sub/link")));
    std::filesystem::create_symlink("gone", m_Folder.path("dangling"));
    EXPECT_EQ(m_Folder.path("gone"), resolveLinks(m_Folder.path("dangling")));
    EXPECT_EQ("", resolveLinks(""));
}

} // namespace
