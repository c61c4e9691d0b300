#include "Codecs/MOXTC/StripDecoder.h"

#include <cstring>

#include "Codecs/MOXTC/Block/BlendCells.h"
#include "Codecs/MOXTC/Block/CellWeights.h"
#include "Codecs/MOXTC/Block/HardCells.h"
#include "Codecs/MOXTC/Block/UnpackStrip.h"

namespace moxtexture
{

namespace
{

constexpr size_t k_uiPixelBytes = 4;
constexpr size_t k_uiMostRowBytes = k_uiStripCells * k_uiMaxBlockWidth * k_uiPixelBytes;

class CStripDecoder
{
public:
    CStripDecoder(const BlockSource& source, const PixelTarget& target);

    void decode();

private:
    /// Whether all pixels of a strip's cells are the target's and stand in its rows in the order of the cells, or the strip has the cell
    /// that wraps, or one that the target has in part.
    enum class EPlace
    {
        eInside,
        eAtEdge,
    };

    void decodeStrip(uint32_t uiFirstCell, size_t uiCellCount, EPlace ePlace);
    void findColumns(uint32_t uiFirstCell, size_t uiCellCount);
    void unpackRow(uint32_t uiBlockRow, size_t uiBlockCount, BlockStrip& strip) const;
    void makePixels(CellRow& cells);
    void copyVisible(const CellRow& cells, uint32_t uiFirstCell, uint32_t uiCellRow) const;
    void clearAbsentBlocks() const;

    uint64_t getIndex(uint32_t x, uint32_t y) const;
    bool isPresent(uint64_t ui64Index) const { return ui64Index < m_Source.uiSize / k_uiBlockBytes; }

    /// The row of pixels that is row j of a row of cells.
    size_t getPixelRow(uint32_t uiCellRow, size_t j) const
    {
        return (size_t{uiCellRow} * k_uiBlockHeight + k_uiBlockHeight / 2 + j) % (size_t{m_Source.counts.uiY} * k_uiBlockHeight);
    }
    uint8_t* getPixel(size_t x, size_t y) const { return m_Target.pPixels + (y * m_Target.uiWidth + x) * k_uiPixelBytes; }

    BlockSource m_Source;
    PixelTarget m_Target;
    uint32_t m_uiBlockWidth;
    bool m_bAllPresent;
    CHardCellPainter m_HardCellPainter;

    std::array<uint64_t, k_uiStripBlocks> m_aui64Columns = {}; ///< what a column of the strip adds to the index of a block
    std::array<BlockStrip, 2> m_aStrips;                       ///< of even and of odd rows of blocks
    CellWeights m_Weights;
    std::array<std::array<uint8_t, k_uiMostRowBytes>, k_uiBlockHeight> m_aaui8Aside; ///< pixels that don't go straight to the target
};

CStripDecoder::CStripDecoder(const BlockSource& source, const PixelTarget& target)
    : m_Source(source),
      m_Target(target),
      m_uiBlockWidth(getBlockWidth(source.b2bpp)),
      // No block stands behind the one of the last corner.
      m_bAllPresent(isPresent(getIndex(source.counts.uiX - 1, source.counts.uiY - 1)))
{
}

void CStripDecoder::decode()
{
    const size_t uiHalf = m_uiBlockWidth / 2;
    const size_t uiWhole = m_Target.uiWidth < uiHalf ? 0 : (m_Target.uiWidth - uiHalf) / m_uiBlockWidth;
    const auto uiInside = static_cast<uint32_t>(std::min(uiWhole, size_t{m_Source.counts.uiX} - 1));
    uint32_t uiCell = 0;
    while (uiCell < uiInside)
    {
        const uint32_t uiCount = std::min(uiInside - uiCell, static_cast<uint32_t>(k_uiStripCells));
        decodeStrip(uiCell, uiCount, EPlace::eInside);
        uiCell += uiCount;
    }
    // One cell, or two where the target ends within the last but one.
    decodeStrip(uiCell, m_Source.counts.uiX - uiCell, EPlace::eAtEdge);
    if (!m_bAllPresent)
        clearAbsentBlocks();
}

void CStripDecoder::decodeStrip(uint32_t uiFirstCell, size_t uiCellCount, EPlace ePlace)
{
    findColumns(uiFirstCell, uiCellCount);
    unpackRow(0, uiCellCount + 1, m_aStrips[0]);
    for (uint32_t uiRow = 0; uiRow < m_Source.counts.uiY; ++uiRow)
    {
        BlockStrip& lower = m_aStrips[(uiRow + 1) % 2];
        unpackRow(uiRow + 1 == m_Source.counts.uiY ? 0 : uiRow + 1, uiCellCount + 1, lower);
        CellRow cells;
        cells.pUpper = &m_aStrips[uiRow % 2];
        cells.pLower = &lower;
        cells.uiCellCount = uiCellCount;
        for (size_t j = 0; j < k_uiBlockHeight; ++j)
        {
            const size_t y = getPixelRow(uiRow, j);
            const bool bStraight = ePlace == EPlace::eInside && y < m_Target.uiHeight;
            cells.apPixels[j] = bStraight ? getPixel(size_t{uiFirstCell} * m_uiBlockWidth + m_uiBlockWidth / 2, y) : m_aaui8Aside[j].data();
        }
        makePixels(cells);
        if (ePlace == EPlace::eAtEdge)
            copyVisible(cells, uiFirstCell, uiRow);
    }
}

void CStripDecoder::makePixels(CellRow& cells)
{
    if (m_Source.b2bpp)
        interpolateWeights(*cells.pUpper, *cells.pLower, cells.uiCellCount, m_Weights);
    const CellWeightRows stored(*cells.pUpper, *cells.pLower);
    for (size_t j = 0; j < k_uiBlockHeight; ++j)
        cells.apWeights[j] = m_Source.b2bpp ? m_Weights.aaui8[j].data() : stored.ap[j + 1] + m_uiBlockWidth / 2;
    blendCells(cells, m_Source.b2bpp, m_Source.bII);
    if (m_Source.bII && !m_Source.b2bpp)
        m_HardCellPainter.paint(cells);
}

/// Copies the halves of the cells, each of which lies in one block, as far as the target has them.
void CStripDecoder::copyVisible(const CellRow& cells, uint32_t uiFirstCell, uint32_t uiCellRow) const
{
    const size_t uiHalf = m_uiBlockWidth / 2;
    for (size_t j = 0; j < k_uiBlockHeight; ++j)
    {
        const size_t y = getPixelRow(uiCellRow, j);
        if (y >= m_Target.uiHeight)
            continue;
        for (size_t i = 0; i < 2 * cells.uiCellCount; ++i)
        {
            const size_t x = ((size_t{uiFirstCell} * 2 + 1 + i) % (size_t{m_Source.counts.uiX} * 2)) * uiHalf;
            if (x < m_Target.uiWidth)
                std::memcpy(getPixel(x, y), cells.apPixels[j] + i * uiHalf * k_uiPixelBytes,
                            std::min(uiHalf, m_Target.uiWidth - x) * k_uiPixelBytes);
        }
    }
}

uint64_t CStripDecoder::getIndex(uint32_t x, uint32_t y) const
{
    return m_Source.eOrder == EBlockOrder::eRaster ? getBlockIndexRaster(x, y, m_Source.counts.uiX)
                                                   : getBlockIndexMorton(x, y, m_Source.counts.uiX, m_Source.counts.uiY);
}

/// In both orders the index of a block is what its column has in row 0 and what its row has in column 0.
void CStripDecoder::findColumns(uint32_t uiFirstCell, size_t uiCellCount)
{
    for (size_t i = 0; i <= uiCellCount; ++i)
        m_aui64Columns[i] = getIndex(static_cast<uint32_t>((uiFirstCell + i) % m_Source.counts.uiX), 0);
}

void CStripDecoder::unpackRow(uint32_t uiBlockRow, size_t uiBlockCount, BlockStrip& strip) const
{
    const uint64_t ui64Row = getIndex(0, uiBlockRow);
    for (size_t i = 0; i < uiBlockCount; ++i)
    {
        const uint64_t ui64Index = ui64Row + m_aui64Columns[i];
        const bool bPresent = m_bAllPresent || isPresent(ui64Index);
        strip.aWords[i] = bPresent ? loadBlock(m_Source.pBlocks + static_cast<size_t>(ui64Index) * k_uiBlockBytes) : BlockWord{};
    }
    unpackStrip(strip, uiBlockCount, m_Source.b2bpp, m_Source.bII);
}

void CStripDecoder::clearAbsentBlocks() const
{
    for (uint32_t uiRow = 0; uiRow < m_Source.counts.uiY; ++uiRow)
    {
        const size_t uiTop = size_t{uiRow} * k_uiBlockHeight;
        const size_t uiBottom = std::min(uiTop + k_uiBlockHeight, size_t{m_Target.uiHeight});
        for (uint32_t uiColumn = 0; uiColumn < m_Source.counts.uiX; ++uiColumn)
        {
            const size_t uiLeft = size_t{uiColumn} * m_uiBlockWidth;
            if (isPresent(getIndex(uiColumn, uiRow)) || uiLeft >= m_Target.uiWidth)
                continue;
            const size_t uiWidth = std::min(size_t{m_uiBlockWidth}, m_Target.uiWidth - uiLeft);
            for (size_t y = uiTop; y < uiBottom; ++y)
                std::memset(getPixel(uiLeft, y), 0, uiWidth * k_uiPixelBytes);
        }
    }
}

} // namespace

void decodeStrips(const BlockSource& source, const PixelTarget& target)
{
    CStripDecoder(source, target).decode();
}

} // namespace moxtexture
