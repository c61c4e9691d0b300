#include "Codecs/MOXTC/MOXTC1DecoderReference.h"

#include <cstring>

#include "Codecs/MOXTC/Block/BlockGrid.h"
#include "Codecs/MOXTC/Block/Modulation.h"

namespace moxtexture
{

namespace
{

using Pixel = std::array<uint8_t, 4>;

/// The pixels of the surface, of which a decoded picture may be larger.
class CTarget
{
public:
    CTarget(uint8_t* pPixels, uint32_t uiWidth, uint32_t uiHeight) : m_pPixels(pPixels), m_uiWidth(uiWidth), m_uiHeight(uiHeight) {}

    bool contains(size_t x, size_t y) const { return x < m_uiWidth && y < m_uiHeight; }
    void write(size_t x, size_t y, const Pixel& pixel) { std::memcpy(m_pPixels + (y * m_uiWidth + x) * 4, pixel.data(), 4); }

private:
    uint8_t* m_pPixels;
    uint32_t m_uiWidth;
    uint32_t m_uiHeight;
};

/// The weight at a position of the map, 0 to 8, or one that is too high by k_ui8PunchThroughOffset.
uint32_t getWeight(const CModulationMap& map, uint32_t x, uint32_t y, bool b2bpp)
{
    if (b2bpp)
        return map.getWeight2bpp(x, y);
    return map.getMode(x, y) == k_ui8ModeDirect ? map.getStandardWeight(x, y) : k_aui8PunchThroughWeightsMOXTC1[map.getCode(x, y)];
}

Pixel blendPixel(const Pixel& a, const Pixel& b, uint32_t uiWeight)
{
    if (uiWeight <= k_ui8PunchThroughOffset)
        return blendColours(a, b, uiWeight);
    Pixel pixel = blendColours(a, b, uiWeight - k_ui8PunchThroughOffset);
    pixel[3] = 0;
    return pixel;
}

/// Decodes the cell from the centre of block (uiXBlock, uiYBlock) into its place, wrapping at the right and lower edges.
void decodeCell(const CBlockGrid& grid, uint32_t uiXBlock, uint32_t uiYBlock, bool b2bpp, CTarget& target)
{
    const uint32_t uiBlockWidth = getBlockWidth(b2bpp);
    const size_t uiPictureWidth = size_t{grid.getXBlocks()} * uiBlockWidth;
    const size_t uiPictureHeight = size_t{grid.getYBlocks()} * k_uiBlockHeight;

    const CellBlocks blocks = grid.getCellBlocks(uiXBlock, uiYBlock);
    const CModulationMap map(blocks, b2bpp);
    const CellColours coloursA = unpackCellColoursA(blocks, false);
    const CellColours coloursB = unpackCellColoursB(blocks, false);

    for (uint32_t j = 0; j < k_uiBlockHeight; ++j)
    {
        const uint32_t uiMapY = j + k_uiBlockHeight / 2;
        const size_t y = (size_t{uiYBlock} * k_uiBlockHeight + uiMapY) % uiPictureHeight;
        for (uint32_t i = 0; i < uiBlockWidth; ++i)
        {
            const uint32_t uiMapX = i + uiBlockWidth / 2;
            const size_t x = (size_t{uiXBlock} * uiBlockWidth + uiMapX) % uiPictureWidth;
            if (!target.contains(x, y))
                continue;
            Pixel pixel = {};
            if (grid.hasBlock(static_cast<uint32_t>(x / uiBlockWidth), static_cast<uint32_t>(y / k_uiBlockHeight)))
                pixel = blendPixel(interpolateCell(coloursA, i, j, b2bpp), interpolateCell(coloursB, i, j, b2bpp),
                                   getWeight(map, uiMapX, uiMapY, b2bpp));
            target.write(x, y, pixel);
        }
    }
}

} // namespace

uint32_t DecompressMOXTCReference(const uint8_t* pSource, size_t uiSourceSize, bool b2bpp, uint32_t uiWidth, uint32_t uiHeight,
                                  uint8_t* pTarget)
{
    if (uiWidth == 0 || uiHeight == 0)
        return 0;

    const CBlockGrid grid(pSource, uiSourceSize, getMOXTC1BlockCounts(uiWidth, uiHeight, b2bpp), EBlockOrder::eMorton);
    CTarget target(pTarget, uiWidth, uiHeight);
    for (uint32_t y = 0; y < grid.getYBlocks(); ++y)
        for (uint32_t x = 0; x < grid.getXBlocks(); ++x)
            decodeCell(grid, x, y, b2bpp, target);
    return uiWidth * uiHeight >> (b2bpp ? 2 : 1);
}

} // namespace moxtexture
