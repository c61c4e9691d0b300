#include "Codecs/MOXTC/Block/HardCells.h"

#include "Codecs/MOXTC/Block/BlockPalette.h"

namespace moxtexture
{

CHardCellPainter::CHardCellPainter() : m_aaaui8Indices()
{
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
            for (uint32_t uiCode = 0; uiCode < 4; ++uiCode)
                m_aaaui8Indices[y][x][uiCode] = static_cast<uint8_t>(getPaletteIndex(x, y, uiCode));
}

void CHardCellPainter::paint(const CellRow& row) const
{
    static_assert(k_uiStripCells - 1 <= UINT8_MAX);
    // The cells to paint first, without a branch: which they are is hard to foresee.
    std::array<uint8_t, k_uiStripCells> aui8Cells;
    size_t uiCount = 0;
    for (size_t i = 0; i < row.uiCellCount; ++i)
    {
        const uint32_t ui32Flags = row.pUpper->aWords[i].ui32Colours | row.pUpper->aWords[i + 1].ui32Colours |
                                   row.pLower->aWords[i].ui32Colours | row.pLower->aWords[i + 1].ui32Colours;
        aui8Cells[uiCount] = static_cast<uint8_t>(i);
        uiCount += row.pUpper->aui32Hard[i] & ui32Flags & k_ui32ModeFlag;
    }
    for (size_t i = 0; i < uiCount; ++i)
        paintCell(row, aui8Cells[i]);
}

void CHardCellPainter::paintCell(const CellRow& row, size_t uiCell) const
{
    constexpr uint32_t kSide = 4;
    constexpr uint32_t kHalf = 2;
    const auto& aaUpper = row.pUpper->aaui32Expanded;
    const auto& aaLower = row.pLower->aaui32Expanded;
    const std::array<uint32_t, 8> palette = {aaUpper[uiCell][0],     aaUpper[uiCell][1],     aaLower[uiCell + 1][0], aaLower[uiCell + 1][1],
                                             aaUpper[uiCell + 1][0], aaUpper[uiCell + 1][1], aaLower[uiCell][0],     aaLower[uiCell][1]};

    for (uint32_t uiQuadrant = 0; uiQuadrant < 4; ++uiQuadrant)
    {
        const uint32_t uiLeft = uiQuadrant % 2 * kHalf;
        const uint32_t uiTop = uiQuadrant / 2 * kHalf;
        const BlockWord& block = (uiTop == 0 ? row.pUpper : row.pLower)->aWords[uiCell + uiQuadrant % 2];
        if ((block.ui32Colours & k_ui32ModeFlag) == 0)
            continue;
        // The quadrant is the opposite one of its block.
        const uint32_t ui32Codes = block.ui32Modulation >> 2 * ((kHalf - uiTop) * kSide + kHalf - uiLeft);
        for (uint32_t i = uiQuadrant == 0 ? 1 : 0; i < kSide; ++i)
        {
            const uint32_t x = i % kHalf;
            const uint32_t y = i / kHalf;
            const uint32_t uiCode = ui32Codes >> 2 * (y * kSide + x) & 3;
            storeLE(row.apPixels[uiTop + y] + (uiCell * kSide + uiLeft + x) * 4, palette[m_aaaui8Indices[uiTop + y][uiLeft + x][uiCode]]);
        }
    }
}

} // namespace moxtexture
