#include "Codecs/BC/BcColours.h"

namespace moxtexture
{

namespace
{

/// (uiA * a + uiB * b) >> uiShift for each of the three colour channels; alpha becomes 255.
uint32_t mixColours(uint32_t a, uint32_t b, uint32_t uiA, uint32_t uiB, uint32_t uiShift)
{
    uint32_t uiMixed = 0xFF000000;
    for (uint32_t uiBit = 0; uiBit < 24; uiBit += 8)
        uiMixed |= ((((a >> uiBit) & 0xFF) * uiA + ((b >> uiBit) & 0xFF) * uiB) >> uiShift) << uiBit;
    return uiMixed;
}

} // namespace

uint32_t quantise565(const BcColour& colour)
{
    const auto uiRed = static_cast<uint32_t>(colour.fRed);
    const auto uiGreen = static_cast<uint32_t>(colour.fGreen);
    const auto uiBlue = static_cast<uint32_t>(colour.fBlue);
    return (uiRed & 0xF8) << 8 | (uiGreen & 0xFC) << 3 | uiBlue >> 3;
}

uint32_t expand565(uint32_t ui565)
{
    const uint32_t uiRed = ui565 >> 8 & 0xF8;
    const uint32_t uiGreen = ui565 >> 3 & 0xFC;
    const uint32_t uiBlue = ui565 << 3 & 0xF8;
    return (uiRed | uiRed >> 5) | (uiGreen | uiGreen >> 6) << 8 | (uiBlue | uiBlue >> 5) << 16 | 0xFF000000;
}

BcPalette makeBcPalette(uint32_t uiColour0, uint32_t uiColour1, EBcColourForm eForm)
{
    const uint32_t a = expand565(uiColour0);
    const uint32_t b = expand565(uiColour1);
    if (eForm == EBcColourForm::eAlwaysFourColour || uiColour0 > uiColour1)
        return {a, b, mixColours(a, b, 42, 22, 6), mixColours(a, b, 22, 42, 6)};
    return {a, b, mixColours(a, b, 1, 1, 1), 0};
}

} // namespace moxtexture
