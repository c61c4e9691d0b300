#include "Documents/LoadToSurface.h"

#include <algorithm>
#include <new>

#include <QtGui/QImage>
#include <gtest/gtest.h>

#include "Application/Documents/DocumentSupport.h"
#include "Files/SaveTexture.h"
#include "Support/MemoryLimit.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

bool leaveAlone(const CMOXTextureHeader&, CMOXTexture&)
{
    return true;
}

class LoadToSurface : public testing::Test
{
protected:
    /// A picture of 2 by 1: red, and half transparent green.
    std::string makeImage() const
    {
        QImage image(2, 1, QImage::Format_ARGB32);
        image.setPixel(0, 0, qRgba(255, 0, 0, 255));
        image.setPixel(1, 0, qRgba(0, 255, 0, 128));
        const std::string strPath = m_Folder.path("picture.png");
        EXPECT_TRUE(image.save(QString::fromStdString(strPath)));
        return strPath;
    }

    std::string save(const CMOXTexture& texture) const
    {
        const std::string strPath = m_Folder.path("texture.mox");
        EXPECT_TRUE(saveTexture(texture, strPath));
        return strPath;
    }

    const CTemporaryFolder m_Folder;
};

} // namespace

TEST_F(LoadToSurface, AnImageOfTheSizeReplacesTheSurface)
{
    CMOXTexture working = makeBytes(2, 1);
    ASSERT_TRUE(loadIntoSurface(working, 0, 0, 0, makeImage(), leaveAlone));
    EXPECT_EQ((std::vector<uint8_t>{255, 0, 0, 255, 0, 255, 0, 128}), dataOf(working));
}

TEST_F(LoadToSurface, OnlyTheSurfaceToldChanges)
{
    const CMOXTexture before = makeBytes(4, 2, 1, 2, 2, 3);
    CMOXTexture working = before;
    ASSERT_TRUE(loadIntoSurface(working, 1, 1, 2, makeImage(), leaveAlone));

    // 6 surfaces of 32 bytes, then 6 of 8: the last of them.
    std::vector<uint8_t> expected = dataOf(before);
    const std::vector<uint8_t> picture = {255, 0, 0, 255, 0, 255, 0, 128};
    ASSERT_EQ(6u * 32 + 6 * 8, expected.size());
    std::copy(picture.begin(), picture.end(), expected.end() - 8);
    EXPECT_EQ(expected, dataOf(working));
}

TEST_F(LoadToSurface, TheReferenceIsATextureOfThatOneSurface)
{
    CMOXTexture working(CMOXTextureHeader(k_RGBA8, 8, 16, 4, 3, 2, 6, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    CMOXTextureHeader reference;
    EXPECT_FALSE(loadIntoSurface(working, 1, 0, 0, makeImage(),
                                 [&](const CMOXTextureHeader& told, CMOXTexture&)
                                 {
                                     reference = told;
                                     return false;
                                 }));
    EXPECT_EQ(k_RGBA8, reference.getPixelFormat());
    EXPECT_EQ(8u, reference.getWidth());
    EXPECT_EQ(4u, reference.getHeight());
    EXPECT_EQ(2u, reference.getDepth());
    EXPECT_EQ(1u, reference.getNumMIPLevels());
    EXPECT_EQ(1u, reference.getNumArrayMembers());
    EXPECT_EQ(1u, reference.getNumFaces());
}

TEST_F(LoadToSurface, WhatTheConformingMadeIsTaken)
{
    CMOXTexture working = makeBytes(3, 3);
    ASSERT_TRUE(loadIntoSurface(working, 0, 0, 0, makeImage(),
                                [](const CMOXTextureHeader& reference, CMOXTexture& texture)
                                {
                                    texture = CMOXTexture(reference);
                                    fill(texture, 77);
                                    return true;
                                }));
    EXPECT_EQ(std::vector<uint8_t>(36, 77), dataOf(working));
}

TEST_F(LoadToSurface, OtherLayoutsComeInTheWorkingTexturesOwn)
{
    const uint8_t aui8Blue[] = {255, 0, 0};
    const std::string strPath = save(
        CMOXTexture(CMOXTextureHeader(layout("bgr", 8, 8, 8), 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false), aui8Blue));
    CMOXTexture bytes = makeBytes(1, 1);
    ASSERT_TRUE(loadIntoSurface(bytes, 0, 0, 0, strPath, leaveAlone));
    EXPECT_EQ((std::vector<uint8_t>{0, 0, 255, 255}), dataOf(bytes));

    CMOXTexture floats = makeFloats({5.0f, 5.0f, 5.0f, 5.0f});
    ASSERT_TRUE(loadIntoSurface(floats, 0, 0, 0, strPath, leaveAlone));
    EXPECT_EQ(dataOf(makeFloats({0.0f, 0.0f, 1.0f, 1.0f})), dataOf(floats));
}

TEST_F(LoadToSurface, AMirroredFileComesUpright)
{
    CMOXTexture mirrored = makeBytes(1, 2);
    mirrored.setOrientation(2);
    CMOXTexture working = makeBytes(1, 2, 99);
    ASSERT_TRUE(loadIntoSurface(working, 0, 0, 0, save(mirrored), leaveAlone));
    // Bytes 0, 7, 14, 21 of the upper pixel and 28 to 49 of the lower one, the other way round.
    EXPECT_EQ((std::vector<uint8_t>{28, 35, 42, 49, 0, 7, 14, 21}), dataOf(working));
}

TEST_F(LoadToSurface, TheFirstSurfaceOfTheFileIsTaken)
{
    CMOXTexture working = makeBytes(2, 1, 99);
    ASSERT_TRUE(loadIntoSurface(working, 0, 0, 0, save(makeBytes(2, 1, 3, 1, 2, 2)), leaveAlone));
    EXPECT_EQ(dataOf(makeBytes(2, 1, 3)), dataOf(working));
}

TEST_F(LoadToSurface, WhatCannotBeLoadedChangesNothingAndAsksNothing)
{
    const CMOXTexture before = makeBytes(2, 1);
    CMOXTexture working = before;
    bool bAsked = false;
    const auto ask = [&](const CMOXTextureHeader&, CMOXTexture&) { return bAsked = true; };
    EXPECT_FALSE(loadIntoSurface(working, 0, 0, 0, m_Folder.path("missing.mox"), ask));
    EXPECT_FALSE(loadIntoSurface(working, 0, 0, 0, m_Folder.write("text.png", std::string("no picture")), ask));
    EXPECT_FALSE(loadIntoSurface(working, 0, 0, 0, "", ask));
    EXPECT_FALSE(loadIntoSurface(working, 1, 0, 0, makeImage(), ask)) << "no such level";
    EXPECT_FALSE(bAsked);
    EXPECT_EQ(dataOf(before), dataOf(working));
}

TEST_F(LoadToSurface, ADeclinedConformingChangesNothing)
{
    const CMOXTexture before = makeBytes(2, 1);
    CMOXTexture working = before;
    EXPECT_FALSE(loadIntoSurface(working, 0, 0, 0, makeImage(), [](const CMOXTextureHeader&, CMOXTexture&) { return false; }));
    EXPECT_EQ(dataOf(before), dataOf(working));
}

TEST_F(LoadToSurface, AConformingToOtherSizesOrLayoutsChangesNothing)
{
    const CMOXTexture before = makeBytes(4, 4);
    CMOXTexture working = before;
    EXPECT_FALSE(loadIntoSurface(working, 0, 0, 0, makeImage(), leaveAlone)) << "still 2 by 1";
    EXPECT_FALSE(loadIntoSurface(
        working, 0, 0, 0, makeImage(),
        [](const CMOXTextureHeader&, CMOXTexture& texture)
        {
            texture = makeFloats({1.0f, 1.0f, 1.0f, 1.0f, 2.0f, 2.0f, 2.0f, 2.0f, 3.0f, 3.0f, 3.0f, 3.0f, 4.0f, 4.0f, 4.0f, 4.0f});
            return true;
        }))
        << "of 64 bytes, too, but floats";
    EXPECT_EQ(dataOf(before), dataOf(working));
}

#ifndef HALVANE_SANITISED

TEST_F(LoadToSurface, RefusedMemoryChangesNothing)
{
    const std::string strPath =
        save(CMOXTexture(CMOXTextureHeader(k_RGBA8, 4096, 4096, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false)));
    const CMOXTexture before = makeBytes(2, 1);
    CMOXTexture working = before;
    {
        const CMemoryLimit limit;
        EXPECT_FALSE(loadIntoSurface(working, 0, 0, 0, strPath, leaveAlone));
        EXPECT_FALSE(
            loadIntoSurface(working, 0, 0, 0, makeImage(), [](const CMOXTextureHeader&, CMOXTexture&) -> bool { throw std::bad_alloc(); }))
            << "that of conforming, too";
    }
    EXPECT_EQ(dataOf(before), dataOf(working));
}

#endif
