#include "Codecs/MOXTC/MOXTCIIDecoderReference.h"

#include <cstring>
#include <optional>

#include "Codecs/MOXTC/Block/BlockGrid.h"
#include "Codecs/MOXTC/Block/BlockPalette.h"
#include "Codecs/MOXTC/Block/Modulation.h"

namespace moxtexture
{

namespace
{

using Pixel = std::array<uint8_t, 4>;

/// What is unpacked from the four blocks around a cell. Pixels are counted from the centre pixel of the block at the upper left,
/// and that block alone decides whether the cell is hard.
class CCell
{
public:
    CCell(const CellBlocks& blocks, bool b2bpp)
        : m_b2bpp(b2bpp),
          m_bHard((blocks.P.ui32Colours & k_ui32HardFlag) != 0),
          m_Map(blocks, b2bpp),
          m_ColoursA(unpackCellColoursA(blocks, true)),
          m_ColoursB(unpackCellColoursB(blocks, true))
    {
        if (m_bHard)
            m_Palette = makeBlockPalette(blocks);
    }

    Pixel getPixel(uint32_t x, uint32_t y) const { return m_bHard ? getHardPixel(x, y) : getSmoothPixel(x, y); }

private:
    uint32_t getMapX(uint32_t x) const { return x + getBlockWidth(m_b2bpp) / 2; }
    static uint32_t getMapY(uint32_t y) { return y + k_uiBlockHeight / 2; }

    Pixel getSmoothPixel(uint32_t x, uint32_t y) const
    {
        const uint32_t uiMapX = getMapX(x);
        const uint32_t uiMapY = getMapY(y);
        const bool bPunchThrough = !m_b2bpp && m_Map.getMode(uiMapX, uiMapY) == k_ui8ModePunchThrough;
        if (bPunchThrough && m_Map.getCode(uiMapX, uiMapY) == k_ui8PunchThroughCode)
            return {};

        uint32_t uiWeight = 0;
        if (bPunchThrough)
            uiWeight = k_aui8PunchThroughWeightsMOXTCII[m_Map.getCode(uiMapX, uiMapY)];
        else
            uiWeight = m_b2bpp ? m_Map.getWeight2bpp(uiMapX, uiMapY) : m_Map.getStandardWeight(uiMapX, uiMapY);
        return blendColours(interpolateCell(m_ColoursA, x, y, m_b2bpp), interpolateCell(m_ColoursB, x, y, m_b2bpp), uiWeight);
    }

    Pixel getHardPixel(uint32_t x, uint32_t y) const
    {
        const uint32_t uiMapX = getMapX(x);
        const uint32_t uiMapY = getMapY(y);
        const bool bCentre = x == 0 && y == 0;
        if (!m_b2bpp && !bCentre && m_Map.getMode(uiMapX, uiMapY) == k_ui8ModePunchThrough)
            return m_Palette[getPaletteIndex(x, y, m_Map.getCode(uiMapX, uiMapY))];

        // On purpose: no punch-through here. The centre pixel of a 4bpp block with the mode flag takes the standard table.
        const uint32_t uiWeight = m_b2bpp ? m_Map.getWeight2bpp(uiMapX, uiMapY) : m_Map.getStandardWeight(uiMapX, uiMapY);
        return blendColours(expandColour(getOwnColour(m_ColoursA, x, y)), expandColour(getOwnColour(m_ColoursB, x, y)), uiWeight);
    }

    /// The colour of the block that holds the pixel.
    const BlockColour& getOwnColour(const CellColours& colours, uint32_t x, uint32_t y) const
    {
        const bool bRight = x >= getBlockWidth(m_b2bpp) / 2;
        if (y >= k_uiBlockHeight / 2)
            return bRight ? colours.S : colours.R;
        return bRight ? colours.Q : colours.P;
    }

    bool m_b2bpp;
    bool m_bHard;
    CModulationMap m_Map;
    CellColours m_ColoursA;
    CellColours m_ColoursB;
    BlockPalette m_Palette = {};
};

} // namespace

bool DecompressMOXTCIIReference(const uint8_t* pSource, size_t uiSourceSize, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight,
                                bool bRasterOrder, bool b2bpp)
{
    if (uiWidth == 0)
        return false;

    const uint64_t ui64BlockWidth = getBlockWidth(b2bpp);
    const CBlockGrid grid(pSource, uiSourceSize, getMOXTCIIBlockCounts(uiWidth, uiHeight, b2bpp),
                          bRasterOrder ? EBlockOrder::eRaster : EBlockOrder::eMorton);
    const uint64_t ui64PaddedWidth = grid.getXBlocks() * ui64BlockWidth;
    const uint64_t ui64PaddedHeight = uint64_t{grid.getYBlocks()} * k_uiBlockHeight;

    for (uint32_t y = 0; y < uiHeight; ++y)
    {
        const uint64_t ui64CellsY = (y + ui64PaddedHeight - k_uiBlockHeight / 2) % ui64PaddedHeight;
        const auto uiYBlock = static_cast<uint32_t>(ui64CellsY / k_uiBlockHeight);
        std::optional<CCell> cell;
        uint32_t uiCellBlock = 0;
        for (uint32_t x = 0; x < uiWidth; ++x, pTarget += 4)
        {
            const uint64_t ui64CellsX = (x + ui64PaddedWidth - ui64BlockWidth / 2) % ui64PaddedWidth;
            const auto uiXBlock = static_cast<uint32_t>(ui64CellsX / ui64BlockWidth);
            if (!cell.has_value() || uiXBlock != uiCellBlock)
            {
                cell.emplace(grid.getCellBlocks(uiXBlock, uiYBlock), b2bpp);
                uiCellBlock = uiXBlock;
            }
            Pixel pixel = {};
            if (grid.hasBlock(static_cast<uint32_t>(x / ui64BlockWidth), y / k_uiBlockHeight))
                pixel =
                    cell->getPixel(static_cast<uint32_t>(ui64CellsX % ui64BlockWidth), static_cast<uint32_t>(ui64CellsY % k_uiBlockHeight));
            std::memcpy(pTarget, pixel.data(), 4);
        }
    }
    return true;
}

} // namespace moxtexture
