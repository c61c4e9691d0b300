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
    const auto& P = row.pUpper->aaui32Expanded[uiCell];
    const auto& Q = row.pUpper->aaui32Expanded[uiCell + 1];
    const auto& R = row.pLower->aaui32Expanded[uiCell];
    const auto& S = row.pLower->aaui32Expanded[uiCell + 1];
    const Palette palette = {P[0], P[1], S[0], S[1], Q[0], Q[1], R[0], R[1]};
    paintQuadrant<0>(row, uiCell, palette);
    paintQuadrant<1>(row, uiCell, palette);
    paintQuadrant<2>(row, uiCell, palette);
    paintQuadrant<3>(row, uiCell, palette);
}

/// @tparam kQuadrant  in the order of P, Q, R, S
template <uint32_t kQuadrant>
void CHardCellPainter::paintQuadrant(const CellRow& row, size_t uiCell, const Palette& palette) const
{
    constexpr uint32_t kSide = 4;
    constexpr uint32_t kHalf = 2;
    constexpr uint32_t kLeft = kQuadrant % 2 * kHalf;
    constexpr uint32_t kTop = kQuadrant / 2 * kHalf;
    const BlockWord& block = (kTop == 0 ? row.pUpper : row.pLower)->aWords[uiCell + kQuadrant % 2];

    // The pixels of a block without the flag go nowhere instead of a branch around them: the flag is hard to foresee.
    std::array<uint8_t, kHalf * 4> aui8Nowhere;
    static_assert(k_ui32ModeFlag == 1);
    const uint32_t uiFlag = block.ui32Colours & k_ui32ModeFlag;
    for (uint32_t y = 0; y < kHalf; ++y)
    {
        const std::array<uint8_t*, 2> apPlaces = {aui8Nowhere.data(), row.apPixels[kTop + y] + (uiCell * kSide + kLeft) * 4};
        uint8_t* const pPixels = apPlaces[uiFlag];
        for (uint32_t x = kQuadrant == 0 && y == 0 ? 1 : 0; x < kHalf; ++x)
        {
            // Places of the cell's quadrant in the block are those of the opposite one.
            const uint32_t uiPlace = (kHalf - kTop + y) * kSide + kHalf - kLeft + x;
            const uint32_t uiCode = block.ui32Modulation >> 2 * uiPlace & 3;
            storeLE(pPixels + size_t{x} * 4, palette[m_aaaui8Indices[kTop + y][kLeft + x][uiCode]]);
        }
    }
}

} // namespace moxtexture
