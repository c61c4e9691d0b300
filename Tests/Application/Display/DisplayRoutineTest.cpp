#include "Display/DisplayRoutine.h"

#include <gtest/gtest.h>

#include "Application/Display/DisplaySupport.h"
#include "Display/CPictureLabel.h"
#include "Support/MemoryLimit.h"

using namespace moxtexture;

namespace
{

CMOXTexture makeTexture(uint32_t uiWidth, uint32_t uiHeight, const std::vector<uint8_t>& pixels, uint32_t uiFaces = 1,
                        bool bPreMultiplied = false, uint32_t uiMIPLevels = 1, uint32_t uiMembers = 1)
{
    const CMOXTextureHeader header(k_RGBA8, uiHeight, uiWidth, 1, uiMIPLevels, uiMembers, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte,
                                   bPreMultiplied);
    EXPECT_EQ(pixels.size(), header.getDataSize());
    return CMOXTexture(header, pixels.data());
}

/// Opaque pixels of one colour each.
std::vector<uint8_t> makePixels(const std::vector<QColor>& colours)
{
    std::vector<uint8_t> pixels;
    for (const QColor& colour : colours)
        for (const int iByte : {colour.red(), colour.green(), colour.blue(), colour.alpha()})
            pixels.push_back(static_cast<uint8_t>(iByte));
    return pixels;
}

const QColor k_Red(250, 10, 20);
const QColor k_Green(30, 240, 40);
const QColor k_Blue(50, 60, 230);
const QColor k_White(251, 252, 253);
const QColor k_Background(160, 160, 160);

class DisplayRoutine : public testing::Test
{
protected:
    DisplayRoutine()
    {
        m_Picture.pLabel = &m_Label;
        m_Picture.pTexture = &m_Texture;
        m_Label.resize(4, 3);
    }

    void draw(bool bForce = false) { drawPictures(&m_Picture, 1, m_View, bForce); }
    QImage shown() const { return m_Label.pixmap(Qt::ReturnByValue).toImage(); }
    QColor shown(int x, int y) const { return shown().pixelColor(x, y); }

    CMOXTexture m_Texture = makeTexture(2, 2, makePixels({k_Red, k_Green, k_Blue, k_White}));
    CPictureLabel m_Label;
    DisplayPicture m_Picture;
    DisplayView m_View;
};

} // namespace

TEST_F(DisplayRoutine, TheLabelShowsThePicturesColours)
{
    draw();
    EXPECT_EQ(QSize(4, 3), shown().size());
    EXPECT_EQ(k_Red, shown(0, 0));
    EXPECT_EQ(k_Green, shown(1, 0));
    EXPECT_EQ(k_Blue, shown(0, 1));
    EXPECT_EQ(k_White, shown(1, 1));
    EXPECT_EQ(k_Background, shown(2, 0));
    EXPECT_EQ(k_Background, shown(0, 2));
}

TEST_F(DisplayRoutine, ThePictureIsOpaqueWhateverTheAlphas)
{
    m_Texture = makeTexture(1, 1, {100, 150, 200, 0});
    m_View.bgColour = QColor(10, 20, 30, 0);
    draw();
    EXPECT_FALSE(shown().hasAlphaChannel());
    EXPECT_EQ(QColor(10, 20, 30), shown(0, 0)); // alpha 0: the background's colour
    EXPECT_EQ(QColor(10, 20, 30), shown(1, 0));
    EXPECT_EQ(255, shown().convertToFormat(QImage::Format_ARGB32).pixelColor(0, 0).alpha());
    EXPECT_EQ(255, shown().constBits()[3]);
}

TEST_F(DisplayRoutine, TheFrameOfTheLabelIsNotDrawnOn)
{
    m_Label.resize(10, 8);
    m_Label.setLineWidth(3);
    draw();
    EXPECT_EQ(QSize(4, 2), shown().size());
}

TEST_F(DisplayRoutine, ForcedPicturesHaveTheSizeOfTheScaledTexture)
{
    m_View.fZoom = 4.0f;
    draw(true);
    EXPECT_EQ(QSize(8, 8), shown().size());
    EXPECT_EQ(k_White, shown(7, 7));
    EXPECT_EQ(QSize(8, 8), m_Label.sizeHint());
}

TEST_F(DisplayRoutine, ForcedPicturesHaveTheSizeOfLevelZeroAlsoAtAnotherLevel)
{
    m_Texture = makeTexture(2, 2, makePixels({k_Red, k_Red, k_Red, k_Red, k_Blue}), 1, false, 2);
    m_View.ui32MIPLevel = 1;
    m_View.fZoom = 2.0f;
    draw(true);
    EXPECT_EQ(QSize(4, 4), shown().size());
    EXPECT_EQ(k_Blue, shown(1, 1));
    EXPECT_EQ(k_Background, shown(2, 2));
}

TEST_F(DisplayRoutine, ForcedPicturesAreTruncated)
{
    m_Texture = makeTexture(5, 3, std::vector<uint8_t>(60, 255));
    m_View.fZoom = 0.5f;
    draw(true);
    EXPECT_EQ(QSize(2, 1), shown().size());
}

TEST_F(DisplayRoutine, TheBufferIsKeptWhileTheSizeStays)
{
    draw();
    const uint8_t* pui8Buffer = m_Picture.buffer.getData();
    EXPECT_EQ(48u, m_Picture.buffer.getSize());
    EXPECT_EQ(pui8Buffer, m_Picture.image.constBits());
    m_View.eMode = eViewTiled;
    draw();
    EXPECT_EQ(pui8Buffer, m_Picture.buffer.getData());
    EXPECT_EQ(k_Red, shown(2, 2));
    // As many bytes in another shape.
    m_Label.resize(3, 4);
    draw();
    EXPECT_EQ(pui8Buffer, m_Picture.buffer.getData());
    EXPECT_EQ(QSize(3, 4), shown().size());
    m_Label.resize(7, 5);
    draw();
    EXPECT_EQ(140u, m_Picture.buffer.getSize());
    EXPECT_EQ(QSize(7, 5), shown().size());
}

TEST_F(DisplayRoutine, ACopyOfThePictureStaysAsItWas)
{
    draw();
    const QPixmap pixmapBefore = m_Label.pixmap(Qt::ReturnByValue);
    const QImage imageBefore = m_Picture.image;
    m_View.aui8ColourMask = {0, 255, 255, 255};
    draw();
    EXPECT_EQ(QColor(0, 10, 20), shown(0, 0));
    EXPECT_EQ(k_Red, pixmapBefore.toImage().pixelColor(0, 0));
    EXPECT_EQ(k_Red, imageBefore.pixelColor(0, 0));
}

TEST_F(DisplayRoutine, TheLabelKeepsItsPictureWhenTheBufferIsGone)
{
    {
        DisplayPicture other = {&m_Label, &m_Texture, {}, {}};
        drawPictures(&other, 1, m_View, false);
    }
    EXPECT_EQ(k_White, shown(1, 1));
}

TEST_F(DisplayRoutine, ARefusedBufferLeavesTheLastPicture)
{
    draw();
    m_Texture = makeTexture(4096, 4096, std::vector<uint8_t>(size_t{4} * 4096 * 4096));
    m_View.fZoom = 128.0f; // 2^38 pixels
    draw(true);
    EXPECT_EQ(QSize(4, 3), shown().size());
    EXPECT_EQ(k_Red, shown(0, 0));
    m_View.fZoom = 1.0f;
    draw();
    EXPECT_EQ(QColor(160, 160, 160), shown(0, 0)); // alpha 0
}

#ifndef HALVANE_SANITISED

TEST_F(DisplayRoutine, TheLabelIsNotEmptiedWhereMemoryForTheDrawingItselfIsRefused)
{
    // A place of the table of columns takes 4 bytes: 64 MB, which is more than there is.
    m_Label.resize(16000000, 1);
    for (const ETextureViewModes eMode : {eViewTiled, eViewSingle})
    {
        m_Texture = makeTexture(2, 1, makePixels({k_Red, k_Green}));
        m_View = DisplayView();
        m_View.eMode = eMode;
        if (eMode == eViewSingle)
        {
            m_Texture = makeTexture(200000, 1, std::vector<uint8_t>(size_t{4} * 200000, 255));
            m_View.fZoom = 128.0f;
        }
        draw();
        m_View.aui8ColourMask = {0, 255, 255, 255};
        {
            const testsupport::CMemoryLimit limit;
            draw();
        }
        const QImage image = shown();
        ASSERT_EQ(QSize(16000000, 1), image.size()) << eMode;
        EXPECT_EQ(eMode == eViewTiled ? QColor(0, 10, 20) : QColor(0, 255, 255), image.pixelColor(0, 0));
        EXPECT_EQ(eMode == eViewTiled ? QColor(0, 240, 40) : QColor(0, 255, 255), image.pixelColor(15999999, 0));
    }
}

#endif

TEST_F(DisplayRoutine, ASizeOfZeroEndsTheDraw)
{
    draw();
    CPictureLabel secondLabel;
    secondLabel.resize(2, 2);
    DisplayPicture aPictures[] = {{&m_Label, &m_Texture, {}, {}}, {&secondLabel, &m_Texture, {}, {}}};
    m_Label.resize(0, 3);
    drawPictures(aPictures, 2, m_View, false);
    EXPECT_EQ(QSize(4, 3), shown().size());
    EXPECT_TRUE(secondLabel.pixmap(Qt::ReturnByValue).isNull());
    m_Label.setLineWidth(5); // less than nothing
    m_Label.resize(4, 3);
    draw();
    EXPECT_EQ(QSize(4, 3), shown().size());
}

TEST_F(DisplayRoutine, AnEmptyTextureIsNotForced)
{
    m_Texture = CMOXTexture();
    m_Texture.setNumMIPLevels(0);
    draw(true);
    EXPECT_TRUE(m_Label.pixmap(Qt::ReturnByValue).isNull());
}

TEST_F(DisplayRoutine, ThreePicturesShareTheView)
{
    const CMOXTexture other = makeTexture(1, 1, makePixels({k_Blue}));
    CPictureLabel aLabels[3];
    DisplayPicture aPictures[3];
    for (size_t i = 0; i < 3; ++i)
    {
        aLabels[i].resize(3, 1 + static_cast<int>(i));
        aPictures[i].pLabel = &aLabels[i];
        aPictures[i].pTexture = i == 1 ? &other : &m_Texture;
    }
    drawPictures(aPictures, 3, m_View, false);
    EXPECT_EQ(k_Red, aLabels[0].pixmap(Qt::ReturnByValue).toImage().pixelColor(0, 0));
    EXPECT_EQ(k_Blue, aLabels[1].pixmap(Qt::ReturnByValue).toImage().pixelColor(0, 0));
    EXPECT_EQ(k_Background, aLabels[1].pixmap(Qt::ReturnByValue).toImage().pixelColor(1, 0));
    EXPECT_EQ(k_White, aLabels[2].pixmap(Qt::ReturnByValue).toImage().pixelColor(1, 1));
    EXPECT_EQ(QSize(3, 3), aLabels[2].sizeHint());
}

TEST_F(DisplayRoutine, SingleStoresTheClampedOffsetsBackAndTheOtherModesDoNot)
{
    m_View.fZoom = 4.0f; // 8 by 8 on 4 by 3
    m_View.i32OffsetX = 9;
    m_View.i32OffsetY = 600;
    draw();
    EXPECT_EQ(4, m_View.i32OffsetX);
    EXPECT_EQ(5, m_View.i32OffsetY);
    m_View.eMode = eViewTiled;
    m_View.i32OffsetX = -9;
    m_View.i32OffsetY = 600;
    draw();
    EXPECT_EQ(-9, m_View.i32OffsetX);
    EXPECT_EQ(600, m_View.i32OffsetY);
}

TEST_F(DisplayRoutine, ACubeClampsThePitchAlone)
{
    m_View.eMode = eViewCube;
    for (const int32_t i32Offset : {9999, -9999})
    {
        m_View.i32OffsetX = i32Offset;
        m_View.i32OffsetY = i32Offset;
        draw();
        EXPECT_EQ(i32Offset, m_View.i32OffsetX);
        EXPECT_EQ(i32Offset < 0 ? -512 : 512, m_View.i32OffsetY);
    }
}

TEST_F(DisplayRoutine, ACubeWithFewerFacesShowsBlackForTheOthersAndNoGrid)
{
    // The middle pixel of 4 by 2 is face 4, the one right of it face 0, the first face 1.
    m_Texture = makeTexture(1, 1, makePixels({k_Red}));
    m_Label.resize(4, 2);
    m_View.eMode = eViewCube;
    m_View.aui8ColourMask = {255, 255, 255, 0};
    m_View.bGridShown = true;
    draw();
    EXPECT_EQ(k_Red, shown(3, 1));
    EXPECT_EQ(QColor(0, 0, 0), shown(2, 1));
    EXPECT_EQ(QColor(0, 0, 0), shown(0, 0));

    m_Texture = makeTexture(1, 1, makePixels({k_Red, k_Green, k_Green, k_Green, k_Blue, k_Green}), 6);
    draw();
    EXPECT_EQ(k_Blue, shown(2, 1));
    EXPECT_EQ(k_Green, shown(0, 0));
}

TEST_F(DisplayRoutine, TheSurfaceIsTheViewsOwn)
{
    // level 0: members 0 and 1, faces 0 and 1, 2 by 2 pixels each; level 1 likewise
    std::vector<uint8_t> pixels(size_t{4} * 20, 255);
    for (size_t i = 0; i < 20; ++i)
    {
        pixels[4 * i] = static_cast<uint8_t>(10 + i);
        pixels[4 * i + 1] = pixels[4 * i + 2] = 0;
    }
    m_Texture = makeTexture(2, 2, pixels, 2, false, 2, 2);
    draw();
    EXPECT_EQ(QColor(10, 0, 0), shown(0, 0));
    m_View.ui32Face = 1;
    draw();
    EXPECT_EQ(QColor(14, 0, 0), shown(0, 0));
    m_View.ui32ArrayMember = 1;
    draw();
    EXPECT_EQ(QColor(22, 0, 0), shown(0, 0));
    m_View.ui32MIPLevel = 1;
    draw();
    EXPECT_EQ(QColor(29, 0, 0), shown(0, 0));
    EXPECT_EQ(k_Background, shown(1, 0));
}

TEST_F(DisplayRoutine, ASurfaceThatIsNotThereShowsTheBackground)
{
    for (uint32_t* pui32Number : {&m_View.ui32MIPLevel, &m_View.ui32ArrayMember, &m_View.ui32Face})
    {
        *pui32Number = 7;
        draw();
        EXPECT_EQ(k_Background, shown(0, 0));
        m_View.eMode = eViewTiled;
        draw();
        EXPECT_EQ(k_Background, shown(0, 0));
        m_View = DisplayView();
    }
}

TEST_F(DisplayRoutine, ATextureWhoseHeaderOutgrewItsDataIsASurfaceThatIsNotThere)
{
    m_Texture.setWidth(60000);
    m_Texture.setHeight(60000);
    for (const ETextureViewModes eMode : {eViewSingle, eViewTiled, eViewCube})
    {
        m_View.eMode = eMode;
        draw();
        EXPECT_EQ(k_Background, shown(0, 0));
    }
}

TEST_F(DisplayRoutine, ATextureOfAnotherFormatIsASurfaceThatIsNotThere)
{
    m_Texture.setPixelFormat(k_RGBA16);
    draw();
    EXPECT_EQ(k_Background, shown(0, 0));
    m_Texture.setPixelFormat(ePF_Count);
    draw();
    EXPECT_EQ(k_Background, shown(0, 0));
}

TEST_F(DisplayRoutine, PreMultipliedTexturesAddTheirColour)
{
    // 160 * 127 / 255 = 79: 100 + 79, as against (160 * 127 + 100 * 128) / 255 = 129
    m_Texture = makeTexture(1, 1, {100, 100, 100, 128}, 1, true);
    draw();
    EXPECT_EQ(QColor(179, 179, 179), shown(0, 0));
    m_Texture = makeTexture(1, 1, {100, 100, 100, 128}, 1, false);
    draw();
    EXPECT_EQ(QColor(129, 129, 129), shown(0, 0));
}

TEST_F(DisplayRoutine, AlphaAloneIsGrey)
{
    m_Texture = makeTexture(1, 1, {1, 2, 3, 128});
    m_View.aui8ColourMask = {0, 0, 0, 255};
    draw();
    EXPECT_EQ(QColor(128, 128, 128), shown(0, 0));
}

TEST_F(DisplayRoutine, TheGridIsDrawnWhereItIsOn)
{
    m_View.fZoom = 2.0f;
    m_View.ui32GridSize = 1;
    draw();
    EXPECT_EQ(k_Red, shown(0, 0));
    m_View.bGridShown = true;
    draw();
    EXPECT_EQ(QColor(255, 255, 255), shown(0, 0));
    EXPECT_EQ(k_Red, shown(1, 1));
    EXPECT_EQ(QColor(255, 255, 255), shown(2, 1));
    EXPECT_EQ(k_Green, shown(3, 1));
}
