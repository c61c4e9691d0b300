#include "Display/CMOXDrawPixel.h"

#include <algorithm>

void CMOXDrawPixelBlend::draw(uint8_t* dst, const uint8_t* src) const
{
    const uint8_t ui8Alpha = static_cast<uint8_t>(~m_aui8Mask[3] | src[3]);
    const uint32_t ui32Alpha = ui8Alpha;
    for (uint32_t c = 0; c < 3; ++c)
        dst[c] = static_cast<uint8_t>(((m_aui8BGColour[c] * (255 - ui32Alpha) + src[c] * ui32Alpha) / 255) & m_aui8Mask[c]);
    dst[3] = ui8Alpha;
}

void CMOXDrawPixelPreMultBlend::draw(uint8_t* dst, const uint8_t* src) const
{
    const uint8_t ui8Alpha = static_cast<uint8_t>(~m_aui8Mask[3] | src[3]);
    const uint32_t ui32Alpha = ui8Alpha;
    for (uint32_t c = 0; c < 3; ++c)
        dst[c] = static_cast<uint8_t>(std::min(src[c] + m_aui8BGColour[c] * (255 - ui32Alpha) / 255, 255u) & m_aui8Mask[c]);
    dst[3] = ui8Alpha;
}

void CMOXDrawPixelAlphaAsGrey::draw(uint8_t* dst, const uint8_t* src) const
{
    const uint8_t ui8Alpha = src[3];
    for (uint32_t c = 0; c < 3; ++c)
        dst[c] = ui8Alpha;
    dst[3] = 255;
}

CDrawPixelChoice::CDrawPixelChoice(const std::array<uint8_t, 4>& aui8BGColour, const std::array<uint8_t, 4>& aui8Mask)
{
    for (CMOXDrawPixel* pDrawPixel :
         {static_cast<CMOXDrawPixel*>(&m_Blend), static_cast<CMOXDrawPixel*>(&m_PreMultBlend), static_cast<CMOXDrawPixel*>(&m_AlphaAsGrey)})
    {
        pDrawPixel->setBGColour(aui8BGColour);
        pDrawPixel->setMask(aui8Mask);
    }
}

const CMOXDrawPixel& CDrawPixelChoice::choose(bool bPreMultiplied) const
{
    const std::array<uint8_t, 4>& aui8Mask = m_Blend.getMask();
    const bool bColour = aui8Mask[0] != 0 || aui8Mask[1] != 0 || aui8Mask[2] != 0;
    if (!bColour && aui8Mask[3] != 0)
        return m_AlphaAsGrey;
    if (bPreMultiplied)
        return m_PreMultBlend;
    return m_Blend;
}
