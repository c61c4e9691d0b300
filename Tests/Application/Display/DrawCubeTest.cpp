#include "Display/DrawCube.h"

#include <gtest/gtest.h>

#include "Application/Display/DisplaySupport.h"
#include "Display/CubeBasis.h"
#include "Display/DrawRow.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using displaytest::CTarget;
using displaytest::makeLetters;

TEST(DrawCube, ShowsFourFacesRoundTheMiddleOfAWideView)
{
    // 4 by 2 pixels, faces of one texel. Directions are (-2 + x, 1 - y, 1).
    // Row 0: (-2, 1, 1) is face 1; (-1, 1, 1) a tie that X wins, face 1; (0, 1, 1) face 2; (1, 1, 1) face 0.
    // Row 1: (-2, 0, 1) and (-1, 0, 1) face 1, (0, 0, 1) face 4, (1, 0, 1) face 0.
    const std::vector<uint8_t> pixels = makeLetters("RLUDFB");
    CubeFaces faces{1, 1, {}};
    for (size_t i = 0; i < 6; ++i)
        faces.apui8Pixels[i] = pixels.data() + 4 * i;
    const CMOXDrawPixelBlend drawPixel;
    CTarget plain(4, 2);
    drawCubeReference(faces, plain.image(), {}, 1.0f, drawPixel);
    EXPECT_EQ("LLUR", plain.row(0));
    EXPECT_EQ("LLFR", plain.row(1));
    CTarget fast(4, 2);
    drawCube(faces, fast.image(), {}, 1.0f, drawPixel);
    EXPECT_EQ("LLUR", fast.row(0));
    EXPECT_EQ("LLFR", fast.row(1));
}

TEST(DrawCube, TakesTexelsFromTheFacesUpright)
{
    // Zoom 2 and 4 by 4 pixels show the middle of face 4 from -0.5 to 0.25 by quarters: u = -0.5, -0.25, 0, 0.25.
    // (u + 1) * 4 * 0.5 = 1, 1.5, 2, 2.5: texels 1, 1, 2, 2, and rows likewise as v = -Y / Z runs down.
    const std::vector<uint8_t> pixels = makeLetters("ABCDEFGHIJKLMNOP");
    CubeFaces faces{4, 4, {}};
    faces.apui8Pixels[4] = pixels.data();
    const CMOXDrawPixelBlend drawPixel;
    CTarget target(4, 4);
    drawCube(faces, target.image(), {}, 2.0f, drawPixel);
    EXPECT_EQ("FFGG", target.row(0));
    EXPECT_EQ("FFGG", target.row(1));
    EXPECT_EQ("JJKK", target.row(2));
    EXPECT_EQ("JJKK", target.row(3));
}

TEST(DrawCube, AMissingFaceIsAPixelOfZerosThroughTheFunctor)
{
    for (const CubeFaces& faces : {CubeFaces{4, 4, {}}, CubeFaces{0, 0, {}}, CubeFaces{0, 7, {}}})
    {
        CMOXDrawPixelBlend drawPixel;
        drawPixel.setBGColour({160, 150, 140, 255});
        drawPixel.setMask({255, 255, 255, 0});
        CTarget target(3, 3);
        const auto expectPixel = [&](const std::array<uint8_t, 4>& expected)
        {
            drawCubeReference(faces, target.image(), {}, 1.0f, drawPixel);
            EXPECT_EQ(expected, target.pixel(1, 1));
            drawCube(faces, target.image(), {}, 1.0f, drawPixel);
            EXPECT_EQ(expected, target.pixel(1, 1));
        };
        expectPixel({0, 0, 0, 255}); // alpha off: black
        drawPixel.setMask({255, 255, 255, 255});
        expectPixel({160, 150, 140, 0}); // alpha 0 shows the background
    }
}

TEST(DrawCube, BothFormsAreEqualOnRandomViews)
{
    testsupport::CSeededRandom random(5);
    for (uint32_t uiView = 0; uiView < 150; ++uiView)
    {
        CubeFaces faces{1 + random.below(130), 1 + random.below(130), {}};
        const std::vector<uint8_t> pixels = random.bytes(size_t{24} * faces.uiWidth * faces.uiHeight);
        for (size_t i = 0; i < 6; ++i)
            faces.apui8Pixels[i] = random.below(5) == 0 ? nullptr : pixels.data() + i * 4 * faces.uiWidth * faces.uiHeight;
        const CDrawPixelChoice choice = displaytest::makeRandomChoice(random);
        const CMOXDrawPixel& drawPixel = choice.choose(random.below(2) == 0);
        const ViewOffset offset = {static_cast<int32_t>(random.below(5000)) - 2500, static_cast<int32_t>(random.below(1025)) - 512};
        const auto fZoom = static_cast<float>(1u << random.below(8));
        const uint32_t uiWidth = 1 + random.below(uiView % 10 == 0 ? 700 : 130);
        const uint32_t uiHeight = 1 + random.below(130);
        SCOPED_TRACE(uiView);

        CTarget plain(uiWidth, uiHeight);
        drawCubeReference(faces, plain.image(), offset, fZoom, drawPixel);
        std::vector<uint8_t> swapped = plain.bytes();
        swapRowForScreenReference(swapped.data(), swapped.size() / 4);
        forEachInstructionSet(
            [&]
            {
                CTarget fast(uiWidth, uiHeight);
                drawCube(faces, fast.image(), offset, fZoom, drawPixel);
                EXPECT_EQ(plain.bytes(), fast.bytes());
                drawCube(faces, fast.image(), offset, fZoom, drawPixel, EPixelOrder::eScreen);
                EXPECT_EQ(swapped, fast.bytes());
            });
    }
}

TEST(DrawCube, OffsetsAtTheEndsOfTheirRangeDrawSomething)
{
    const std::vector<uint8_t> pixels = makeLetters("RLUDFB");
    CubeFaces faces{1, 1, {}};
    for (size_t i = 0; i < 6; ++i)
        faces.apui8Pixels[i] = pixels.data() + 4 * i;
    for (const int32_t i32Offset : {-2147483647 - 1, 2147483647})
    {
        CTarget target(9, 5);
        drawCube(faces, target.image(), {i32Offset, i32Offset}, 1.0f, CMOXDrawPixelBlend());
        for (uint32_t y = 0; y < 5; ++y)
            EXPECT_EQ(std::string::npos, target.row(y).find_first_not_of("RLUDFB"));
    }
}
