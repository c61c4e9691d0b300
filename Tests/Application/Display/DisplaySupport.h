#pragma once

#include <array>
#include <string>
#include <vector>

#include "Display/CMOXDrawPixel.h"
#include "Display/PixelImage.h"
#include "Support/SeededPictures.h"

namespace displaytest
{

/// A target that owns its pixels and reads as letters.
class CTarget
{
public:
    CTarget(uint32_t uiWidth, uint32_t uiHeight) : m_uiWidth(uiWidth), m_uiHeight(uiHeight), m_Pixels(size_t{4} * uiWidth * uiHeight, 0xCD)
    {
    }

    TargetImage image() { return {m_uiWidth, m_uiHeight, m_Pixels.data()}; }
    const std::vector<uint8_t>& bytes() const { return m_Pixels; }
    std::array<uint8_t, 4> pixel(uint32_t x, uint32_t y) const
    {
        const uint8_t* p = m_Pixels.data() + 4 * (size_t{y} * m_uiWidth + x);
        return {p[0], p[1], p[2], p[3]};
    }
    /// The red bytes of a row as letters.
    std::string row(uint32_t y) const
    {
        std::string strRow;
        for (uint32_t x = 0; x < m_uiWidth; ++x)
            strRow += static_cast<char>(pixel(x, y)[0]);
        return strRow;
    }

private:
    uint32_t m_uiWidth;
    uint32_t m_uiHeight;
    std::vector<uint8_t> m_Pixels;
};

/// A surface whose opaque pixels have letters as their red bytes, row by row.
inline std::vector<uint8_t> makeLetters(const std::string& strLetters)
{
    std::vector<uint8_t> pixels;
    for (const char cLetter : strLetters)
        for (const uint8_t ui8Byte : {static_cast<uint8_t>(cLetter), uint8_t{0}, uint8_t{0}, uint8_t{255}})
            pixels.push_back(ui8Byte);
    return pixels;
}

/// The functors of a random background and mask.
inline CDrawPixelChoice makeRandomChoice(testsupport::CSeededRandom& random)
{
    std::array<uint8_t, 4> aui8Mask;
    for (uint8_t& ui8Mask : aui8Mask)
        ui8Mask = random.below(3) != 0 ? 255 : 0;
    const std::vector<uint8_t> bg = random.bytes(4);
    return {{bg[0], bg[1], bg[2], bg[3]}, aui8Mask};
}

} // namespace displaytest
