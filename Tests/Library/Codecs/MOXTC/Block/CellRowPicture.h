#pragma once

#include <memory>
#include <vector>

#include "Codecs/MOXTC/Block/BlendCells.h"

/// A row of cells to fill in, and the pixels that come of it.
namespace moxtctest
{

class CCellRowPicture
{
public:
    static constexpr uint8_t k_ui8Untouched = 0xAB;

    CCellRowPicture(size_t uiCellCount, bool b2bpp)
        : m_uiWidth(uiCellCount * moxtexture::getBlockWidth(b2bpp)),
          m_uiCellCount(uiCellCount),
          m_pStrips(std::make_unique<std::array<moxtexture::BlockStrip, 2>>()),
          m_Weights((m_uiWidth + moxtexture::k_uiMaxBlockWidth) * moxtexture::k_uiBlockHeight),
          m_Pixels(m_uiWidth * moxtexture::k_uiBlockHeight * 4)
    {
        clearPixels();
    }

    moxtexture::BlockStrip& upper() { return m_pStrips->front(); }
    moxtexture::BlockStrip& lower() { return m_pStrips->back(); }
    uint8_t& weightAt(size_t x, size_t y) { return m_Weights[y * (m_uiWidth + moxtexture::k_uiMaxBlockWidth) + x]; }
    std::vector<uint8_t>& weights() { return m_Weights; }
    const std::vector<uint8_t>& pixels() const { return m_Pixels; }

    void clearPixels() { m_Pixels.assign(m_Pixels.size(), k_ui8Untouched); }

    moxtexture::CellRow getRow()
    {
        moxtexture::CellRow row;
        row.pUpper = &upper();
        row.pLower = &lower();
        row.uiCellCount = m_uiCellCount;
        for (size_t y = 0; y < moxtexture::k_uiBlockHeight; ++y)
        {
            row.apWeights[y] = &weightAt(0, y);
            row.apPixels[y] = m_Pixels.data() + y * m_uiWidth * 4;
        }
        return row;
    }

    uint32_t pixelAt(size_t x, size_t y) const { return moxtexture::loadLE<uint32_t>(m_Pixels.data() + (y * m_uiWidth + x) * 4); }

    /// @param uiChannel  0 for red to 3 for alpha
    uint32_t channelAt(size_t x, size_t y, size_t uiChannel) const { return m_Pixels[(y * m_uiWidth + x) * 4 + uiChannel]; }

private:
    size_t m_uiWidth;
    size_t m_uiCellCount;
    std::unique_ptr<std::array<moxtexture::BlockStrip, 2>> m_pStrips;
    std::vector<uint8_t> m_Weights;
    std::vector<uint8_t> m_Pixels;
};

} // namespace moxtctest
