#include "Display/MousePick.h"

#include <gtest/gtest.h>

#include "Application/Display/DisplaySupport.h"
#include "Display/DrawCube.h"
#include "Display/DrawSurface.h"
#include "Display/ZoomScale.h"
#include "Support/SeededPictures.h"

namespace
{

/// 10 by 6 texels at zoom 2 in a picture of 8 by 8.
MousePickView makeView(ETextureViewModes eMode)
{
    MousePickView view;
    view.eMode = eMode;
    view.fZoom = 2.0f;
    view.uiFace = 3;
    view.uiPictureWidth = 8;
    view.uiPictureHeight = 8;
    view.uiSurfaceWidth = 10;
    view.uiSurfaceHeight = 6;
    return view;
}

void expectPick(const MousePick& expected, const MousePick& pick)
{
    EXPECT_EQ(expected.bInside, pick.bInside);
    EXPECT_EQ(expected.i32PixelX, pick.i32PixelX);
    EXPECT_EQ(expected.i32PixelY, pick.i32PixelY);
    EXPECT_EQ(expected.uiCubeFace, pick.uiCubeFace);
}

} // namespace

TEST(MousePick, OffThePictureTheLastPixelStaysAndIsOutside)
{
    const MousePick last = {true, 5, 4, 2};
    const MousePick expected = {false, 5, 4, 2};
    for (const ETextureViewModes eMode : {eViewSingle, eViewTiled, eViewCube})
    {
        const MousePickView view = makeView(eMode);
        expectPick(expected, pickMousePixel(view, -1, 0, last));
        expectPick(expected, pickMousePixel(view, 0, -1, last));
        expectPick(expected, pickMousePixel(view, 9, 0, last));
        expectPick(expected, pickMousePixel(view, 0, 9, last));
    }
}

TEST(MousePick, ThePlaceJustPastThePictureStillCountsAsOnIt)
{
    const MousePickView view = makeView(eViewTiled);
    expectPick({true, 4, 4, 3}, pickMousePixel(view, 8, 8)); // 8 / 2
}

TEST(MousePick, SingleTakesTheClampedOffset)
{
    MousePickView view = makeView(eViewSingle);
    view.offset = {100, 100};
    // at most 20 - 8 = 12 and 12 - 8 = 4: (12 + 3) / 2 = 7, (4 + 5) / 2 = 4
    expectPick({true, 7, 4, 3}, pickMousePixel(view, 3, 5));
    view.offset = {-1, -1};
    expectPick({true, 1, 2, 3}, pickMousePixel(view, 3, 5));
}

TEST(MousePick, SingleIsOutsideBeyondTheSurface)
{
    MousePickView view = makeView(eViewSingle);
    view.fZoom = 1.0f; // 6 rows of 8
    expectPick({true, 7, 5, 3}, pickMousePixel(view, 7, 5));
    expectPick({false, 7, 6, 3}, pickMousePixel(view, 7, 6));
    view.uiSurfaceWidth = 7;
    expectPick({false, 7, 5, 3}, pickMousePixel(view, 7, 5));
}

TEST(MousePick, SingleReachesIntoTheRestThatIsTooSmallForAScreenPixel)
{
    MousePickView view = makeView(eViewSingle);
    view.fZoom = 0.25f; // 10 by 6 texels are 2 by 1 screen pixels
    expectPick({true, 8, 4, 3}, pickMousePixel(view, 2, 1));
    expectPick({false, 12, 4, 3}, pickMousePixel(view, 3, 1));
}

TEST(MousePick, TiledWrapsOnBothSidesOfTheFaceThatIsShown)
{
    MousePickView view = makeView(eViewTiled);
    view.offset = {-7, -5};
    const MousePick last = {false, 0, 0, 5};
    expectPick({true, 7, 4, 3}, pickMousePixel(view, 0, 0, last)); // -3.5 is -3, and 7; -2.5 is -2, and 4
    expectPick({true, 0, 1, 3}, pickMousePixel(view, 6, 7, last)); // -0.5 is 0; 2 / 2
}

TEST(MousePick, CubeGivesTheTexelAndItsFace)
{
    MousePickView view = makeView(eViewCube);
    view.fZoom = 1.0f;
    view.uiPictureWidth = 4;
    view.uiPictureHeight = 2;
    // As in the test of pickCubeTexel().
    expectPick({true, 7, 1, 1}, pickMousePixel(view, 0, 0));
    expectPick({true, 5, 5, 2}, pickMousePixel(view, 2, 0));
}

TEST(MousePick, CubeClampsThePitchAsTheDrawingDoes)
{
    MousePickView view = makeView(eViewCube);
    view.offset.y = 512;
    const MousePick atPole = pickMousePixel(view, 5, 1);
    view.offset.y = 2147483647;
    expectPick(atPole, pickMousePixel(view, 5, 1));
}

TEST(MousePick, WithoutASurfaceOrAPictureNothingIsInside)
{
    for (const ETextureViewModes eMode : {eViewSingle, eViewTiled, eViewCube})
    {
        MousePickView view = makeView(eMode);
        view.uiSurfaceHeight = 0;
        expectPick({false, 1, 2, 3}, pickMousePixel(view, 0, 0, {true, 1, 2, 3}));
        view = makeView(eMode);
        view.uiPictureWidth = 0;
        expectPick({false, 1, 2, 3}, pickMousePixel(view, 0, 0, {true, 1, 2, 3}));
    }
}

TEST(MousePick, PixelsBeyondTheRangeOfIntegersStopAtItsEnd)
{
    MousePickView view = makeView(eViewSingle);
    view.fZoom = 0.125f;
    view.uiSurfaceWidth = 0xFFFFFFFF; // 2^29 screen pixels; the last of them is 2^32 texels on
    view.offset = {2147483647, 0};
    expectPick({true, 2147483647, 0, 3}, pickMousePixel(view, 7, 0));
}

TEST(MousePick, IsTheTexelThatIsDrawnThere)
{
    // Surfaces whose pixels tell their own place: red is x, green is y, blue is the face.
    constexpr uint32_t k_uiWidth = 37;
    constexpr uint32_t k_uiHeight = 23;
    std::vector<uint8_t> pixels;
    CubeFaces faces{k_uiWidth, k_uiHeight, {}};
    for (uint32_t uiFace = 0; uiFace < 6; ++uiFace)
        for (uint32_t y = 0; y < k_uiHeight; ++y)
            for (uint32_t x = 0; x < k_uiWidth; ++x)
                for (const uint32_t uiByte : {x, y, uiFace, 255u})
                    pixels.push_back(static_cast<uint8_t>(uiByte));
    for (size_t i = 0; i < 6; ++i)
        faces.apui8Pixels[i] = pixels.data() + i * 4 * k_uiWidth * k_uiHeight;
    CMOXDrawPixelBlend drawPixel;
    drawPixel.setBGColour({0, 0, 99, 255}); // no face

    testsupport::CSeededRandom random(6);
    for (uint32_t uiView = 0; uiView < 200; ++uiView)
    {
        MousePickView view;
        view.eMode = static_cast<ETextureViewModes>(random.below(3));
        view.fZoom = getZoomFactor(clampZoomPosition(static_cast<int32_t>(random.below(11)), view.eMode));
        view.offset = {static_cast<int32_t>(random.below(1000)) - 500, static_cast<int32_t>(random.below(1000)) - 500};
        view.uiPictureWidth = 1 + random.below(90);
        view.uiPictureHeight = 1 + random.below(90);
        view.uiSurfaceWidth = k_uiWidth;
        view.uiSurfaceHeight = k_uiHeight;
        SCOPED_TRACE(uiView);

        displaytest::CTarget target(view.uiPictureWidth, view.uiPictureHeight);
        const SourceImage source{k_uiWidth, k_uiHeight, pixels.data()};
        ViewOffset offset = view.offset;
        if (view.eMode == eViewSingle)
            drawSingle(source, target.image(), offset, view.fZoom, drawPixel, nullptr);
        else if (view.eMode == eViewTiled)
            drawTiled(source, target.image(), offset, view.fZoom, drawPixel, nullptr);
        else
            drawCube(faces, target.image(), offset, view.fZoom, drawPixel);
        for (uint32_t y = 0; y < view.uiPictureHeight; ++y)
            for (uint32_t x = 0; x < view.uiPictureWidth; ++x)
            {
                const MousePick pick = pickMousePixel(view, static_cast<int32_t>(x), static_cast<int32_t>(y));
                const auto [uiRed, uiGreen, uiBlue, uiAlpha] = target.pixel(x, y);
                if (uiBlue == 99)
                {
                    ASSERT_TRUE(!pick.bInside || view.fZoom < 1.0f);
                    continue;
                }
                ASSERT_TRUE(pick.bInside);
                ASSERT_EQ(uiRed, pick.i32PixelX);
                ASSERT_EQ(uiGreen, pick.i32PixelY);
                ASSERT_EQ(uiBlue, pick.uiCubeFace);
            }
    }
}
