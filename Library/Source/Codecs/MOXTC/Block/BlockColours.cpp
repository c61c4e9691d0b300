#include "Codecs/MOXTC/Block/BlockColours.h"

namespace moxtexture
{

namespace
{

constexpr uint32_t k_ui32OpaqueAlpha = 255;

constexpr uint32_t getBits(uint32_t ui32Word, uint32_t uiLowest, uint32_t uiCount)
{
    return (ui32Word >> uiLowest) & ((uint32_t{1} << uiCount) - 1);
}

constexpr uint32_t widen4To5(uint32_t ui)
{
    return (ui << 1) | (ui >> 3);
}

constexpr uint32_t widen3To5(uint32_t ui)
{
    return (ui << 2) | (ui >> 1);
}

BlockColour makeColour(uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, uint32_t uiAlpha)
{
    return {{static_cast<uint8_t>(uiRed), static_cast<uint8_t>(uiGreen), static_cast<uint8_t>(uiBlue), static_cast<uint8_t>(uiAlpha)}};
}

uint32_t topBits(uint8_t ui8Channel, uint32_t uiCount)
{
    return uint32_t{ui8Channel} >> (8 - uiCount);
}

uint32_t packA(const uint8_t* pA, bool bOpaque)
{
    if (bOpaque)
        return topBits(pA[0], 5) << 10 | topBits(pA[1], 5) << 5 | topBits(pA[2], 4) << 1;
    return topBits(pA[3], 3) << 12 | topBits(pA[0], 4) << 8 | topBits(pA[1], 4) << 4 | topBits(pA[2], 3) << 1;
}

uint32_t packB(const uint8_t* pB, bool bOpaque)
{
    if (bOpaque)
        return topBits(pB[0], 5) << 26 | topBits(pB[1], 5) << 21 | topBits(pB[2], 5) << 16;
    return topBits(pB[3], 3) << 28 | topBits(pB[0], 4) << 24 | topBits(pB[1], 4) << 20 | topBits(pB[2], 4) << 16;
}

} // namespace

BlockColour unpackColourA(uint32_t ui32Colours, bool bII)
{
    if ((ui32Colours & (bII ? k_ui32OpaqueFlag : k_ui32OpaqueAFlag)) != 0)
        return makeColour(getBits(ui32Colours, 10, 5), getBits(ui32Colours, 5, 5), widen4To5(getBits(ui32Colours, 1, 4)), 15);
    return makeColour(widen4To5(getBits(ui32Colours, 8, 4)), widen4To5(getBits(ui32Colours, 4, 4)), widen3To5(getBits(ui32Colours, 1, 3)),
                      getBits(ui32Colours, 12, 3) << 1);
}

BlockColour unpackColourB(uint32_t ui32Colours, bool bII)
{
    if ((ui32Colours & k_ui32OpaqueFlag) != 0)
        return makeColour(getBits(ui32Colours, 26, 5), getBits(ui32Colours, 21, 5), getBits(ui32Colours, 16, 5), 15);
    return makeColour(widen4To5(getBits(ui32Colours, 24, 4)), widen4To5(getBits(ui32Colours, 20, 4)),
                      widen4To5(getBits(ui32Colours, 16, 4)), getBits(ui32Colours, 28, 3) << 1 | (bII ? 1u : 0u));
}

std::array<uint8_t, 4> expandColour(const BlockColour& colour)
{
    const auto widen5 = [](uint8_t ui8) { return static_cast<uint8_t>((ui8 >> 2) | (ui8 << 3)); };
    const uint8_t ui8Alpha = colour.aui8[3];
    return {widen5(colour.aui8[0]), widen5(colour.aui8[1]), widen5(colour.aui8[2]), static_cast<uint8_t>((ui8Alpha << 4) | ui8Alpha)};
}

uint32_t packColours(const uint8_t* pA, const uint8_t* pB, bool bII)
{
    bool bOpaqueA = pA[3] == k_ui32OpaqueAlpha;
    bool bOpaqueB = pB[3] == k_ui32OpaqueAlpha;
    if (bII)
        bOpaqueA = bOpaqueB = bOpaqueA && bOpaqueB;
    uint32_t ui32Colours = packA(pA, bOpaqueA) | packB(pB, bOpaqueB);
    if (bOpaqueA && !bII)
        ui32Colours |= k_ui32OpaqueAFlag;
    if (bOpaqueB)
        ui32Colours |= k_ui32OpaqueFlag;
    return ui32Colours;
}

} // namespace moxtexture
