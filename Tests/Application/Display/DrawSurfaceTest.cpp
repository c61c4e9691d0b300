#include "Display/DrawSurface.h"

#include <gtest/gtest.h>

#include <functional>

#include "Application/Display/DisplaySupport.h"
#include "Display/DrawRow.h"
#include "Display/ZoomScale.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using displaytest::CTarget;
using displaytest::makeLetters;

namespace
{

/// Both forms of a routine, each of which has to pass.
using DrawSingle = std::function<void(const SourceImage&, const TargetImage&, ViewOffset&, float, const CMOXDrawPixel&, const PixelGrid*)>;
using DrawTiled = std::function<void(const SourceImage&, const TargetImage&, ViewOffset, float, const CMOXDrawPixel&, const PixelGrid*)>;

struct Forms
{
    const char* pName;
    DrawSingle drawSingle;
    DrawTiled drawTiled;
};

const Forms k_aForms[] = {
    {"plain", drawSingleReference, drawTiledReference},
    {"fast",
     [](const SourceImage& source, const TargetImage& target, ViewOffset& offset, float fZoom, const CMOXDrawPixel& drawPixel,
        const PixelGrid* pGrid) { drawSingle(source, target, offset, fZoom, drawPixel, pGrid); },
     [](const SourceImage& source, const TargetImage& target, ViewOffset offset, float fZoom, const CMOXDrawPixel& drawPixel,
        const PixelGrid* pGrid) { drawTiled(source, target, offset, fZoom, drawPixel, pGrid); }},
};

class DrawSurface : public testing::TestWithParam<Forms>
{
protected:
    DrawSurface() { m_DrawPixel.setBGColour({'.', 0, 0, 255}); }

    /// A surface of letters drawn alone; the rows of the target, one after the other.
    std::string single(const std::string& strLetters, uint32_t uiWidth, uint32_t uiTargetWidth, uint32_t uiTargetHeight, float fZoom,
                       ViewOffset offset = {}, const PixelGrid* pGrid = nullptr)
    {
        return draw(strLetters, uiWidth, uiTargetWidth, uiTargetHeight,
                    [&](const SourceImage& source, const TargetImage& target)
                    {
                        m_Offset = offset;
                        GetParam().drawSingle(source, target, m_Offset, fZoom, m_DrawPixel, pGrid);
                    });
    }

    std::string tiled(const std::string& strLetters, uint32_t uiWidth, uint32_t uiTargetWidth, uint32_t uiTargetHeight, float fZoom,
                      ViewOffset offset = {}, const PixelGrid* pGrid = nullptr)
    {
        return draw(strLetters, uiWidth, uiTargetWidth, uiTargetHeight,
                    [&](const SourceImage& source, const TargetImage& target)
                    { GetParam().drawTiled(source, target, offset, fZoom, m_DrawPixel, pGrid); });
    }

    CMOXDrawPixelBlend m_DrawPixel;
    PixelGrid m_Grid{4, {'#', 0, 0, 255}};
    ViewOffset m_Offset; ///< as single() got it back

private:
    template <typename Draw>
    static std::string draw(const std::string& strLetters, uint32_t uiWidth, uint32_t uiTargetWidth, uint32_t uiTargetHeight, Draw drawInto)
    {
        const std::vector<uint8_t> pixels = makeLetters(strLetters);
        CTarget target(uiTargetWidth, uiTargetHeight);
        drawInto(SourceImage{uiWidth, static_cast<uint32_t>(strLetters.size()) / uiWidth, pixels.data()}, target.image());
        std::string strRows;
        for (uint32_t y = 0; y < uiTargetHeight; ++y)
            strRows += (y == 0 ? "" : "|") + target.row(y);
        return strRows;
    }
};

std::string nameOf(const testing::TestParamInfo<Forms>& info)
{
    return info.param.pName;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(EachForm, DrawSurface, testing::ValuesIn(k_aForms), nameOf);

TEST_P(DrawSurface, OneTexelAtTheLargestZoomFillsABlockAndTheRestIsBackground)
{
    const std::vector<uint8_t> pixels = makeLetters("A");
    CTarget target(200, 150);
    ViewOffset offset;
    GetParam().drawSingle({1, 1, pixels.data()}, target.image(), offset, 128.0f, m_DrawPixel, nullptr);
    for (uint32_t y = 0; y < 150; ++y)
        EXPECT_EQ(y < 128 ? std::string(128, 'A') + std::string(72, '.') : std::string(200, '.'), target.row(y)) << y;
}

TEST_P(DrawSurface, ASmallSurfaceIsPinnedToTheCorner)
{
    EXPECT_EQ("AB..|CD..|....", single("ABCD", 2, 4, 3, 1.0f, {1, -5}));
    EXPECT_EQ(0, m_Offset.x);
    EXPECT_EQ(0, m_Offset.y);
}

TEST_P(DrawSurface, OffsetsAreClampedToTheScaledSurfaceAndStoredBack)
{
    // 4 by 2 texels at 2 are 8 by 4: at most 8 - 5 and 4 - 3. Places 3 to 7 show texels 1, 2, 2, 3, 3; rows 1 to 3 texels 0, 1, 1.
    EXPECT_EQ("BCCDD|FGGHH|FGGHH", single("ABCDEFGH", 4, 5, 3, 2.0f, {100, 2147483647}));
    EXPECT_EQ(3, m_Offset.x);
    EXPECT_EQ(1, m_Offset.y);
    EXPECT_EQ("AABBC|AABBC|EEFFG", single("ABCDEFGH", 4, 5, 3, 2.0f, {-2147483647 - 1, -1}));
    EXPECT_EQ(0, m_Offset.x);
    EXPECT_EQ(0, m_Offset.y);
}

TEST_P(DrawSurface, SmallZoomsSkipTexelsAndTruncateTheSize)
{
    // 5 texels at 0.5 are 2 pixels: texels 0 and 2.
    EXPECT_EQ("AC..|KM..|....", single("ABCDEFGHIJKLMNOPQRSTUVWXY", 5, 4, 3, 0.5f));
    // 7 at 0.125 are none.
    EXPECT_EQ("...", single("ABCDEFG", 7, 3, 1, 0.125f));
}

TEST_P(DrawSurface, BackgroundStandsAsItIsOutsideTheSurfaceWhateverTheMask)
{
    const std::vector<uint8_t> pixels = {10, 20, 30, 0};
    m_DrawPixel.setBGColour({200, 150, 100, 50});
    m_DrawPixel.setMask({0, 255, 0, 255});
    CTarget target(2, 1);
    ViewOffset offset;
    GetParam().drawSingle({1, 1, pixels.data()}, target.image(), offset, 1.0f, m_DrawPixel, nullptr);
    EXPECT_EQ((std::array<uint8_t, 4>{0, 150, 0, 0}), target.pixel(0, 0));
    EXPECT_EQ((std::array<uint8_t, 4>{200, 150, 100, 50}), target.pixel(1, 0));
}

TEST_P(DrawSurface, AlphaAloneIsGreyWithoutTheBackground)
{
    const std::vector<uint8_t> pixels = {10, 20, 30, 77};
    CMOXDrawPixelAlphaAsGrey drawPixel;
    drawPixel.setBGColour({200, 150, 100, 50});
    CTarget target(1, 1);
    ViewOffset offset;
    GetParam().drawSingle({1, 1, pixels.data()}, target.image(), offset, 1.0f, drawPixel, nullptr);
    EXPECT_EQ((std::array<uint8_t, 4>{77, 77, 77, 255}), target.pixel(0, 0));
}

TEST_P(DrawSurface, AGridStepOfOneIsNotDrawnAndAStepOfTwoIs)
{
    const std::string strLetters(16 * 16, 'A');
    EXPECT_EQ("AAAA|AAAA|AAAA|AAAA", single(strLetters, 16, 4, 4, 0.25f, {}, &m_Grid));
    EXPECT_EQ("####|#A#A|####|#A#A", single(strLetters, 16, 4, 4, 0.5f, {}, &m_Grid));
    EXPECT_EQ("####|#A#A|####|#A#A", tiled(strLetters, 16, 4, 4, 0.5f, {}, &m_Grid));
    EXPECT_EQ("AAAA|AAAA|AAAA|AAAA", tiled(strLetters, 16, 4, 4, 0.25f, {}, &m_Grid));
}

TEST_P(DrawSurface, GridLinesMoveWithTheSurfaceAndEndWithIt)
{
    // 4 by 3 texels at 2 with a step of 4: places 3 to 7 show texels 1, 2, 2, 3, 3 with a line at 4; rows 3 and 4 are row 1 and a line.
    m_Grid.uiSize = 2;
    EXPECT_EQ("F#GHH|#####", single("ABCDEFGHIJKL", 4, 5, 2, 2.0f, {3, 3}, &m_Grid));
    EXPECT_EQ("##.|#A.|...", single("A", 1, 3, 3, 2.0f, {}, &m_Grid));
}

TEST_P(DrawSurface, AGridOfSizeZeroIsNone)
{
    m_Grid.uiSize = 0;
    EXPECT_EQ("AB", single("AB", 2, 2, 1, 1.0f, {}, &m_Grid));
    EXPECT_EQ("AB", tiled("AB", 2, 2, 1, 1.0f, {}, &m_Grid));
}

TEST_P(DrawSurface, AGridLargerThanAnySurfaceDrawsItsFirstLines)
{
    m_Grid.uiSize = 0xFFFFFFFF;
    EXPECT_EQ("###|#AA|#AA", single("AB", 2, 3, 3, 128.0f, {}, &m_Grid));
    EXPECT_EQ("##", tiled("AB", 2, 2, 1, 128.0f, {0, 0}, &m_Grid));
}

TEST_P(DrawSurface, GridLinesGoThroughTheFunctor)
{
    const std::vector<uint8_t> pixels = {10, 20, 30, 40, 50, 60, 70, 80};
    const PixelGrid grid{1}; // white at every second pixel
    m_DrawPixel.setMask({255, 0, 0, 255});
    CTarget target(4, 2);
    ViewOffset offset = {0, 1};
    GetParam().drawTiled({2, 1, pixels.data()}, target.image(), offset, 2.0f, m_DrawPixel, &grid);
    EXPECT_EQ((std::array<uint8_t, 4>{255, 0, 0, 255}), target.pixel(0, 0));
    CMOXDrawPixelAlphaAsGrey grey;
    GetParam().drawTiled({2, 1, pixels.data()}, target.image(), offset, 2.0f, grey, &grid);
    EXPECT_EQ((std::array<uint8_t, 4>{255, 255, 255, 255}), target.pixel(0, 0));
    EXPECT_EQ((std::array<uint8_t, 4>{40, 40, 40, 255}), target.pixel(1, 0));
}

TEST_P(DrawSurface, TilesRepeatOnBothSidesOfZero)
{
    // places -3 to 3
    EXPECT_EQ("ABCABCA", tiled("ABC", 3, 7, 1, 1.0f, {-3, 0}));
    EXPECT_EQ("CABCABC", tiled("ABC", 3, 7, 1, 1.0f, {-4, 0}));
    EXPECT_EQ("EF|AB|CD|EF|AB", tiled("ABCDEF", 2, 2, 5, 1.0f, {0, -1}));
    // Texels 0, 8, 16 of places 0, 1, 2.
    EXPECT_EQ("ACB", tiled("ABC", 3, 3, 1, 0.125f));
}

TEST_P(DrawSurface, TheTexelAtZeroOfAMagnifiedTilingIsWide)
{
    // -3 / 2 = -1, -2 / 2 = -1, -1 / 2 = 0, then 0, 0, 1, 1, 2
    EXPECT_EQ("BBAAABBA", tiled("AB", 2, 8, 1, 2.0f, {-3, 0}));
}

TEST_P(DrawSurface, AMissingSurfaceShowsTheBackground)
{
    for (const SourceImage source : {SourceImage{4, 4, nullptr}, SourceImage{0, 0, nullptr}})
    {
        CTarget target(3, 2);
        ViewOffset offset = {1, 1};
        GetParam().drawSingle(source, target.image(), offset, 1.0f, m_DrawPixel, &m_Grid);
        EXPECT_EQ("...", target.row(0));
        EXPECT_EQ("...", target.row(1));
        CTarget tiledTarget(3, 1);
        GetParam().drawTiled(source, tiledTarget.image(), offset, 1.0f, m_DrawPixel, &m_Grid);
        EXPECT_EQ("...", tiledTarget.row(0));
    }
}

TEST_P(DrawSurface, OffsetsAtTheEndsOfTheirRangeStayInTheSurface)
{
    for (const int32_t i32Offset : {-2147483647 - 1, 2147483647})
        for (int32_t i32Position = 0; i32Position < k_i32ZoomPositionCount; ++i32Position)
        {
            const float fZoom = getZoomFactor(i32Position);
            const std::string strRow = tiled("ABCDEFG", 7, 9, 1, fZoom, {i32Offset, i32Offset}, &m_Grid);
            EXPECT_EQ(std::string::npos, strRow.find_first_not_of("ABCDEFG#")) << strRow;
        }
}

TEST_P(DrawSurface, TexelsPastTwoToTheTwentyFourAreThoseOfTheRoundedPlace)
{
    constexpr uint32_t k_uiWidth = 16777220;
    std::vector<uint8_t> pixels(size_t{4} * k_uiWidth);
    for (uint32_t x = k_uiWidth - 5; x < k_uiWidth; ++x)
        pixels[size_t{4} * x] = static_cast<uint8_t>('A' + (x - (k_uiWidth - 5)));
    m_DrawPixel.setMask({255, 255, 255, 0});
    CTarget target(5, 1);
    ViewOffset offset = {2147483647, 0};
    GetParam().drawSingle({k_uiWidth, 1, pixels.data()}, target.image(), offset, 1.0f, m_DrawPixel, nullptr);
    EXPECT_EQ(16777215, offset.x);
    // 16777215, 16777216, 16777217 -> 16777216, 16777218, 16777219 -> 16777220, which is the end
    EXPECT_EQ("ABBDE", target.row(0));
}

TEST(DrawSurfaceForms, AreEqualOnRandomViews)
{
    testsupport::CSeededRandom random(3);
    for (uint32_t uiView = 0; uiView < 400; ++uiView)
    {
        const uint32_t uiWidth = 1 + random.below(130);
        const uint32_t uiHeight = 1 + random.below(130);
        const std::vector<uint8_t> pixels = random.bytes(size_t{4} * uiWidth * uiHeight);
        const SourceImage source{uiWidth, uiHeight, random.below(20) == 0 ? nullptr : pixels.data()};
        const CDrawPixelChoice choice = displaytest::makeRandomChoice(random);
        const CMOXDrawPixel& drawPixel = choice.choose(random.below(2) == 0);
        const PixelGrid grid{1 + random.below(9)};
        const PixelGrid* pGrid = random.below(2) == 0 ? &grid : nullptr;
        const float fZoom = getZoomFactor(static_cast<int32_t>(random.below(11)));
        const ViewOffset offset = {static_cast<int32_t>(random.below(900)) - 450, static_cast<int32_t>(random.below(900)) - 450};
        const uint32_t uiTargetWidth = 1 + random.below(130);
        const uint32_t uiTargetHeight = 1 + random.below(130);
        SCOPED_TRACE(testing::Message() << "view " << uiView << ", zoom " << fZoom << ", " << uiWidth << " by " << uiHeight);

        CTarget single(uiTargetWidth, uiTargetHeight);
        ViewOffset clamped = offset;
        drawSingleReference(source, single.image(), clamped, fZoom, drawPixel, pGrid);
        CTarget tiled(uiTargetWidth, uiTargetHeight);
        drawTiledReference(source, tiled.image(), offset, fZoom, drawPixel, pGrid);
        std::vector<uint8_t> swapped = tiled.bytes();
        swapRowForScreenReference(swapped.data(), swapped.size() / 4);

        forEachInstructionSet(
            [&]
            {
                CTarget fast(uiTargetWidth, uiTargetHeight);
                ViewOffset fastOffset = offset;
                drawSingle(source, fast.image(), fastOffset, fZoom, drawPixel, pGrid);
                EXPECT_EQ(single.bytes(), fast.bytes());
                EXPECT_EQ(clamped.x, fastOffset.x);
                EXPECT_EQ(clamped.y, fastOffset.y);
                drawTiled(source, fast.image(), offset, fZoom, drawPixel, pGrid);
                EXPECT_EQ(tiled.bytes(), fast.bytes());
                drawTiled(source, fast.image(), offset, fZoom, drawPixel, pGrid, EPixelOrder::eScreen);
                EXPECT_EQ(swapped, fast.bytes());
            });
    }
}
