#pragma once

#include "Codecs/MOXTC/Block/BlendCells.h"

namespace moxtexture
{

/// Shows the palettes of hard cells: MOXTCII at 4bpp.
class CHardCellPainter
{
public:
    CHardCellPainter();

    /// Writes the pixels of the hard cells of a row that lie in blocks with the mode flag, but for the centre pixels.
    void paint(const CellRow& row) const;

private:
    using Palette = std::array<uint32_t, 8>;

    void paintCell(const CellRow& row, size_t uiCell) const;
    template <uint32_t kQuadrant>
    void paintQuadrant(const CellRow& row, size_t uiCell, const Palette& palette) const;

    /// By y and x from the cell's centre and code; getPaletteIndex.
    std::array<std::array<std::array<uint8_t, 4>, 4>, 4> m_aaaui8Indices;
};

} // namespace moxtexture
