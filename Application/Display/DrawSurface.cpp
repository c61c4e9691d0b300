#include "Display/DrawSurface.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <vector>

#include "Display/DrawRow.h"
#include "Display/ScaledPlace.h"

namespace
{

int64_t getGridStep(const PixelGrid* pGrid, float fZoom)
{
    return pGrid != nullptr ? scaleSize(pGrid->uiSize, fZoom) : 0;
}

int32_t clampOffset(int32_t i32Offset, uint32_t uiSourceSize, uint32_t uiTargetSize, float fZoom)
{
    const int64_t i64Most = std::max(scaleSize(uiSourceSize, fZoom) - uiTargetSize, int64_t{0});
    return static_cast<int32_t>(
        std::clamp(int64_t{i32Offset}, int64_t{0}, std::min(i64Most, int64_t{std::numeric_limits<int32_t>::max()})));
}

uint8_t* getPixel(const TargetImage& target, size_t x, size_t y)
{
    return target.pui8Pixels + 4 * (y * target.uiWidth + x);
}

const uint8_t* getPixel(const SourceImage& source, size_t x, size_t y)
{
    return source.pui8Pixels + 4 * (y * source.uiWidth + x);
}

void fillPixels(uint8_t* pui8Pixels, size_t uiCount, const std::array<uint8_t, 4>& aui8Pixel)
{
    for (size_t i = 0; i < uiCount; ++i)
        std::memcpy(pui8Pixels + 4 * i, aui8Pixel.data(), 4);
}

/// The screen pixels of one axis that show the surface, from the first on; those after them show the background.
struct ScaledAxis
{
    std::vector<uint32_t> auiTexels; ///< the texel of each
    std::vector<uint32_t> auiLines;  ///< those on grid lines, ascending
};

/// @param texelAt  from a place to its texel
template <typename TexelAt>
ScaledAxis makeAxis(uint32_t uiCount, int32_t i32Offset, int64_t i64GridStep, TexelAt texelAt)
{
    ScaledAxis axis;
    axis.auiTexels.reserve(uiCount);
    for (uint32_t i = 0; i < uiCount; ++i)
    {
        const int64_t i64Place = int64_t{i32Offset} + i;
        axis.auiTexels.push_back(texelAt(i64Place));
        if (isOnGridLine(i64Place, i64GridStep))
            axis.auiLines.push_back(i);
    }
    return axis;
}

/// Texels that follow each other in the surface as their pixels do on the screen.
struct TexelRun
{
    size_t uiFirst = 0; ///< pixel
    size_t uiCount = 0;
    uint32_t uiTexel = 0;
};

std::vector<TexelRun> findRuns(const std::vector<uint32_t>& auiTexels)
{
    std::vector<TexelRun> aRuns;
    for (size_t i = 0; i < auiTexels.size(); ++i)
    {
        if (i == 0 || auiTexels[i] != auiTexels[i - 1] + 1)
            aRuns.push_back({i, 0, auiTexels[i]});
        ++aRuns.back().uiCount;
    }
    return aRuns;
}

/// Draws a surface row by row: everything that is the same for all pixels is settled before the first.
class CSurfaceRows
{
public:
    CSurfaceRows(const SourceImage& source, const TargetImage& target, const CMOXDrawPixel& drawPixel, EPixelOrder eOrder)
        : m_Source(source),
          m_Target(target),
          m_DrawPixel(drawPixel),
          m_pDrawRow(getDrawRow(drawPixel)),
          m_bSwap(eOrder == EPixelOrder::eScreen),
          m_aui8Background(inOrder(drawPixel.getBGColour()))
    {
    }

    void draw(const ScaledAxis& columns, const ScaledAxis& rows, const PixelGrid* pGrid)
    {
        prepareColumns(columns);
        if (pGrid != nullptr)
        {
            m_pDrawRow(m_DrawPixel, pGrid->aui8Pixel.data(), m_aui8Line.data(), 1);
            m_aui8Line = inOrder(m_aui8Line);
        }

        const size_t uiRowSize = size_t{4} * m_Target.uiWidth;
        std::optional<uint32_t> uiLastRow; // without a grid line along it
        auto nextLine = rows.auiLines.begin();
        for (uint32_t y = 0; y < m_Target.uiHeight; ++y)
        {
            uint8_t* pui8Row = getPixel(m_Target, 0, y);
            if (y >= rows.auiTexels.size())
            {
                fillPixels(pui8Row, m_Target.uiWidth, m_aui8Background);
                continue;
            }
            if (nextLine != rows.auiLines.end() && *nextLine == y)
            {
                ++nextLine;
                fillPixels(pui8Row, columns.auiTexels.size(), m_aui8Line);
                fillBeyond(pui8Row, columns.auiTexels.size());
                continue;
            }
            if (uiLastRow.has_value() && rows.auiTexels[y] == rows.auiTexels[*uiLastRow])
            {
                std::memcpy(pui8Row, getPixel(m_Target, 0, *uiLastRow), uiRowSize);
                continue;
            }
            drawRow(columns, rows.auiTexels[y], pui8Row);
            uiLastRow = y;
        }
    }

private:
    std::array<uint8_t, 4> inOrder(std::array<uint8_t, 4> aui8Pixel) const
    {
        if (m_bSwap)
            swapRowForScreen(aui8Pixel.data(), 1);
        return aui8Pixel;
    }

    void prepareColumns(const ScaledAxis& columns)
    {
        constexpr size_t k_uiWorthwhileRun = 16;
        m_aRuns = findRuns(columns.auiTexels);
        if (m_aRuns.size() * k_uiWorthwhileRun > columns.auiTexels.size())
            m_aRuns.clear();
    }

    void drawRow(const ScaledAxis& columns, uint32_t uiTexelRow, uint8_t* pui8Row) const
    {
        const size_t uiCount = columns.auiTexels.size();
        const uint8_t* pui8Texels = getPixel(m_Source, 0, uiTexelRow);
        if (m_aRuns.empty())
        {
            for (size_t x = 0; x < uiCount; ++x)
                std::memcpy(pui8Row + 4 * x, pui8Texels + size_t{4} * columns.auiTexels[x], 4);
            m_pDrawRow(m_DrawPixel, pui8Row, pui8Row, uiCount);
        }
        for (const TexelRun& run : m_aRuns)
            m_pDrawRow(m_DrawPixel, pui8Texels + size_t{4} * run.uiTexel, pui8Row + 4 * run.uiFirst, run.uiCount);
        if (m_bSwap)
            swapRowForScreen(pui8Row, uiCount);
        for (const uint32_t uiLine : columns.auiLines)
            std::memcpy(pui8Row + size_t{4} * uiLine, m_aui8Line.data(), 4);
        fillBeyond(pui8Row, uiCount);
    }

    void fillBeyond(uint8_t* pui8Row, size_t uiFirst) const
    {
        fillPixels(pui8Row + 4 * uiFirst, m_Target.uiWidth - uiFirst, m_aui8Background);
    }

    const SourceImage& m_Source;
    const TargetImage& m_Target;
    const CMOXDrawPixel& m_DrawPixel;
    const DrawRowFunction m_pDrawRow;
    const bool m_bSwap;
    const std::array<uint8_t, 4> m_aui8Background;
    std::array<uint8_t, 4> m_aui8Line = {};
    std::vector<TexelRun> m_aRuns; ///< of a row; empty where texels are better fetched one by one
};

/// Draws the fast way, or the plain way, which takes no memory, where memory is refused.
template <typename Fast, typename Plain>
void drawWithinMemory(const TargetImage& target, EPixelOrder eOrder, Fast drawFast, Plain drawPlain)
{
    try
    {
        drawFast();
    }
    catch (const std::bad_alloc&)
    {
        drawPlain();
        if (eOrder == EPixelOrder::eScreen)
            swapRowForScreen(target.pui8Pixels, size_t{target.uiWidth} * target.uiHeight);
    }
}

} // namespace

ViewOffset clampSingleOffset(uint32_t uiSourceWidth, uint32_t uiSourceHeight, uint32_t uiTargetWidth, uint32_t uiTargetHeight,
                             ViewOffset offset, float fZoom)
{
    return {clampOffset(offset.x, uiSourceWidth, uiTargetWidth, fZoom), clampOffset(offset.y, uiSourceHeight, uiTargetHeight, fZoom)};
}

void drawSingleReference(const SourceImage& source, const TargetImage& target, ViewOffset& offset, float fZoom,
                         const CMOXDrawPixel& drawPixel, const PixelGrid* pGrid)
{
    offset = clampSingleOffset(source.uiWidth, source.uiHeight, target.uiWidth, target.uiHeight, offset, fZoom);
    const int64_t i64ScaledWidth = scaleSize(source.uiWidth, fZoom);
    const int64_t i64ScaledHeight = scaleSize(source.uiHeight, fZoom);
    const int64_t i64Step = getGridStep(pGrid, fZoom);
    const float fInverseZoom = 1.0f / fZoom;
    for (uint32_t y = 0; y < target.uiHeight; ++y)
        for (uint32_t x = 0; x < target.uiWidth; ++x)
        {
            uint8_t* pui8Target = getPixel(target, x, y);
            if (y >= i64ScaledHeight || source.isMissing() || x >= i64ScaledWidth)
            {
                std::memcpy(pui8Target, drawPixel.getBGColour().data(), 4);
                continue;
            }
            const int64_t i64PlaceX = int64_t{offset.x} + x;
            const int64_t i64PlaceY = int64_t{offset.y} + y;
            if (isOnGridLine(i64PlaceX, i64Step) || isOnGridLine(i64PlaceY, i64Step))
                drawPixel.draw(pui8Target, pGrid->aui8Pixel.data());
            else
                drawPixel.draw(pui8Target, getPixel(source, getTexelWithin(i64PlaceX, fInverseZoom, source.uiWidth),
                                                    getTexelWithin(i64PlaceY, fInverseZoom, source.uiHeight)));
        }
}

void drawSingle(const SourceImage& source, const TargetImage& target, ViewOffset& offset, float fZoom, const CMOXDrawPixel& drawPixel,
                const PixelGrid* pGrid, EPixelOrder eOrder)
{
    offset = clampSingleOffset(source.uiWidth, source.uiHeight, target.uiWidth, target.uiHeight, offset, fZoom);
    const int64_t i64Step = getGridStep(pGrid, fZoom);
    const auto makeSingleAxis = [&](uint32_t uiTargetSize, uint32_t uiSourceSize, int32_t i32Offset)
    {
        const int64_t i64Count = source.isMissing() ? 0 : std::min(scaleSize(uiSourceSize, fZoom), int64_t{uiTargetSize});
        return makeAxis(static_cast<uint32_t>(i64Count), i32Offset, i64Step,
                        [&](int64_t i64Place) { return getTexelWithin(i64Place, 1.0f / fZoom, uiSourceSize); });
    };
    drawWithinMemory(
        target, eOrder,
        [&]
        {
            CSurfaceRows(source, target, drawPixel, eOrder)
                .draw(makeSingleAxis(target.uiWidth, source.uiWidth, offset.x), makeSingleAxis(target.uiHeight, source.uiHeight, offset.y),
                      pGrid);
        },
        [&] { drawSingleReference(source, target, offset, fZoom, drawPixel, pGrid); });
}

void drawTiledReference(const SourceImage& source, const TargetImage& target, ViewOffset offset, float fZoom,
                        const CMOXDrawPixel& drawPixel, const PixelGrid* pGrid)
{
    const int64_t i64Step = getGridStep(pGrid, fZoom);
    const float fInverseZoom = 1.0f / fZoom;
    for (uint32_t y = 0; y < target.uiHeight; ++y)
        for (uint32_t x = 0; x < target.uiWidth; ++x)
        {
            uint8_t* pui8Target = getPixel(target, x, y);
            const int64_t i64PlaceX = int64_t{offset.x} + x;
            const int64_t i64PlaceY = int64_t{offset.y} + y;
            if (source.isMissing())
                std::memcpy(pui8Target, drawPixel.getBGColour().data(), 4);
            else if (isOnGridLine(i64PlaceX, i64Step) || isOnGridLine(i64PlaceY, i64Step))
                drawPixel.draw(pui8Target, pGrid->aui8Pixel.data());
            else
                drawPixel.draw(pui8Target, getPixel(source, getTexelTiled(i64PlaceX, fInverseZoom, source.uiWidth),
                                                    getTexelTiled(i64PlaceY, fInverseZoom, source.uiHeight)));
        }
}

void drawTiled(const SourceImage& source, const TargetImage& target, ViewOffset offset, float fZoom, const CMOXDrawPixel& drawPixel,
               const PixelGrid* pGrid, EPixelOrder eOrder)
{
    const int64_t i64Step = getGridStep(pGrid, fZoom);
    const auto makeTiledAxis = [&](uint32_t uiTargetSize, uint32_t uiSourceSize, int32_t i32Offset)
    {
        return makeAxis(source.isMissing() ? 0 : uiTargetSize, i32Offset, i64Step,
                        [&](int64_t i64Place) { return getTexelTiled(i64Place, 1.0f / fZoom, uiSourceSize); });
    };
    drawWithinMemory(
        target, eOrder,
        [&]
        {
            CSurfaceRows(source, target, drawPixel, eOrder)
                .draw(makeTiledAxis(target.uiWidth, source.uiWidth, offset.x), makeTiledAxis(target.uiHeight, source.uiHeight, offset.y),
                      pGrid);
        },
        [&] { drawTiledReference(source, target, offset, fZoom, drawPixel, pGrid); });
}
