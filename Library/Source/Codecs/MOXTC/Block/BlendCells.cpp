#include "Codecs/MOXTC/Block/BlendCells.h"

#include "Codecs/MOXTC/Block/CellColours.h"

namespace moxtexture
{

namespace
{

/// Colour A (0) or B (1) of the blocks around a cell, as interpolateCell takes them.
CellColours getCellColours(const CellRow& row, size_t uiCell, size_t uiColour)
{
    const auto getColour = [&](const BlockStrip& strip, size_t uiBlock)
    {
        BlockColour colour;
        for (size_t uiChannel = 0; uiChannel < 4; ++uiChannel)
        {
            const uint32_t uiValue = strip.aaui16Colours[uiBlock][uiColour * 4 + uiChannel];
            colour.aui8[uiChannel] = static_cast<uint8_t>(uiChannel == 3 ? uiValue / 2 : uiValue);
        }
        return colour;
    };
    return {getColour(*row.pUpper, uiCell), getColour(*row.pUpper, uiCell + 1), getColour(*row.pLower, uiCell),
            getColour(*row.pLower, uiCell + 1)};
}

/// The cell as the block that holds pixel (x, y) would fill it alone.
CellColours spreadOwnColour(const CellColours& colours, uint32_t x, uint32_t y, uint32_t uiBlockWidth)
{
    const bool bRight = x >= uiBlockWidth / 2;
    const BlockColour& upper = bRight ? colours.Q : colours.P;
    const BlockColour& own = y < k_uiBlockHeight / 2 ? upper : bRight ? colours.S : colours.R;
    return {own, own, own, own};
}

} // namespace

void blendCellsReference(const CellRow& row, bool b2bpp, bool bII)
{
    const uint32_t uiBlockWidth = getBlockWidth(b2bpp);
    for (size_t uiCell = 0; uiCell < row.uiCellCount; ++uiCell)
    {
        const CellColours coloursA = getCellColours(row, uiCell, 0);
        const CellColours coloursB = getCellColours(row, uiCell, 1);
        const bool bHard = bII && row.pUpper->aui32Hard[uiCell] != 0;
        for (uint32_t y = 0; y < k_uiBlockHeight; ++y)
        {
            for (uint32_t x = 0; x < uiBlockWidth; ++x)
            {
                const auto interpolate = [&](const CellColours& colours)
                { return interpolateCell(bHard ? spreadOwnColour(colours, x, y, uiBlockWidth) : colours, x, y, b2bpp); };
                const size_t uiPixel = uiCell * uiBlockWidth + x;
                const uint8_t ui8Weight = row.apWeights[y][uiPixel];
                const bool bPunchThrough = (ui8Weight & k_ui8PunchThroughBit) != 0;
                std::array<uint8_t, 4> pixel =
                    blendColours(interpolate(coloursA), interpolate(coloursB), ui8Weight & uint32_t{k_ui8PunchThroughBit - 1});
                if (bPunchThrough && bII)
                    pixel = {};
                else if (bPunchThrough)
                    pixel[3] = 0;
                std::memcpy(row.apPixels[y] + uiPixel * 4, pixel.data(), 4);
            }
        }
    }
}

} // namespace moxtexture
