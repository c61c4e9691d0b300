#include "Codecs/MOXTC/Block/Modulation.h"

namespace moxtexture
{

namespace
{

constexpr uint8_t k_ui8HighestCode = 3;

/// Pixel (4, 2) of a 2bpp block, whose low bit is bit 20.
constexpr uint32_t k_uiVerticalFlagPixel = 2 * k_uiMaxBlockWidth + 4;

/// Calls f with x and y of every pixel of a 2bpp block that is stored in the modes between pixels, in the order of its codes.
template <typename F>
void forStoredPositions(F&& f)
{
    for (uint32_t y = 0; y < k_uiBlockHeight; ++y)
        for (uint32_t x = y & 1; x < k_uiMaxBlockWidth; x += 2)
            f(x, y);
}

uint8_t getInterpolatedMode(uint32_t ui32Modulation)
{
    if ((ui32Modulation & k_ui32OneAxisFlag) == 0)
        return k_ui8ModeBothAxes;
    return (ui32Modulation & k_ui32VerticalFlag) == 0 ? k_ui8ModeHorizontal : k_ui8ModeVertical;
}

/// 0 for a code of 0 or 1, else 3: the high bit in the place of the low one too.
uint8_t repeatHighBit(uint8_t ui8Code)
{
    return (ui8Code & 2) != 0 ? k_ui8HighestCode : uint8_t{0};
}

} // namespace

BlockModulation unpackModulation(const BlockWord& block, bool b2bpp)
{
    BlockModulation modulation;
    uint32_t ui32Bits = block.ui32Modulation;
    const bool bModeFlag = (block.ui32Colours & k_ui32ModeFlag) != 0;
    const auto takeCode = [&ui32Bits]
    {
        const auto ui8Code = static_cast<uint8_t>(ui32Bits & 3);
        ui32Bits >>= 2;
        return ui8Code;
    };

    if (!b2bpp)
    {
        for (size_t i = 0; i < k_uiMaxBlockPixels / 2; ++i)
            modulation.aui8Codes[i] = takeCode();
        modulation.ui8Mode = bModeFlag ? k_ui8ModePunchThrough : k_ui8ModeDirect;
        return modulation;
    }

    if (!bModeFlag)
    {
        for (size_t i = 0; i < k_uiMaxBlockPixels; ++i)
            modulation.aui8Codes[i] = ((ui32Bits >> i) & 1) != 0 ? k_ui8HighestCode : uint8_t{0};
        return modulation;
    }

    forStoredPositions([&](uint32_t x, uint32_t y) { modulation.aui8Codes[y * k_uiMaxBlockWidth + x] = takeCode(); });
    modulation.ui8Mode = getInterpolatedMode(block.ui32Modulation);
    modulation.aui8Codes[0] = repeatHighBit(modulation.aui8Codes[0]);
    if (modulation.ui8Mode != k_ui8ModeBothAxes)
        modulation.aui8Codes[k_uiVerticalFlagPixel] = repeatHighBit(modulation.aui8Codes[k_uiVerticalFlagPixel]);
    return modulation;
}

uint32_t packModulation4bpp(const uint8_t* pCodes)
{
    uint32_t ui32Modulation = 0;
    for (uint32_t i = 0; i < k_uiMaxBlockPixels / 2; ++i)
        ui32Modulation |= uint32_t{pCodes[i]} << (2 * i);
    return ui32Modulation;
}

uint32_t packModulationDirect(const uint8_t* pCodes)
{
    uint32_t ui32Modulation = 0;
    for (uint32_t i = 0; i < k_uiMaxBlockPixels; ++i)
        ui32Modulation |= uint32_t{pCodes[i] == k_ui8HighestCode} << i;
    return ui32Modulation;
}

uint32_t packModulationInterpolated(const uint8_t* pCodes, uint8_t ui8Mode)
{
    uint32_t ui32Modulation = 0;
    uint32_t uiShift = 0;
    forStoredPositions(
        [&](uint32_t x, uint32_t y)
        {
            ui32Modulation |= uint32_t{pCodes[y * k_uiMaxBlockWidth + x]} << uiShift;
            uiShift += 2;
        });

    if (ui8Mode == k_ui8ModeBothAxes)
        return ui32Modulation & ~k_ui32OneAxisFlag;
    ui32Modulation |= k_ui32OneAxisFlag;
    return ui8Mode == k_ui8ModeHorizontal ? ui32Modulation & ~k_ui32VerticalFlag : ui32Modulation | k_ui32VerticalFlag;
}

CModulationMap::CModulationMap(const CellBlocks& blocks, bool b2bpp)
{
    const uint32_t uiBlockWidth = getBlockWidth(b2bpp);
    const auto place = [&](const BlockWord& block, uint32_t uiLeft, uint32_t uiTop)
    {
        const BlockModulation modulation = unpackModulation(block, b2bpp);
        for (uint32_t y = 0; y < k_uiBlockHeight; ++y)
        {
            for (uint32_t x = 0; x < uiBlockWidth; ++x)
            {
                const size_t uiPlace = size_t{uiTop + y} * k_uiWidth + uiLeft + x;
                m_aui8Codes[uiPlace] = modulation.aui8Codes[size_t{y} * uiBlockWidth + x];
                m_aui8Modes[uiPlace] = modulation.ui8Mode;
            }
        }
    };
    place(blocks.P, 0, 0);
    place(blocks.Q, uiBlockWidth, 0);
    place(blocks.R, 0, k_uiBlockHeight);
    place(blocks.S, uiBlockWidth, k_uiBlockHeight);
}

uint8_t CModulationMap::getWeight2bpp(uint32_t x, uint32_t y) const
{
    if (getMode(x, y) == k_ui8ModeDirect || isStoredPosition(x, y))
        return getStandardWeight(x, y);
    const uint32_t uiAcross = uint32_t{getStandardWeight(x - 1, y)} + getStandardWeight(x + 1, y);
    const uint32_t uiDown = uint32_t{getStandardWeight(x, y - 1)} + getStandardWeight(x, y + 1);
    switch (getMode(x, y))
    {
    case k_ui8ModeHorizontal:
        return static_cast<uint8_t>((uiAcross + 1) / 2);
    case k_ui8ModeVertical:
        return static_cast<uint8_t>((uiDown + 1) / 2);
    default:
        return static_cast<uint8_t>((uiAcross + uiDown + 2) / 4);
    }
}

} // namespace moxtexture
