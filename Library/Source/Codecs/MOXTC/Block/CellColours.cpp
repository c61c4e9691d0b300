#include "Codecs/MOXTC/Block/CellColours.h"

namespace moxtexture
{

CellColours unpackCellColoursA(const CellBlocks& blocks, bool bII)
{
    return {unpackColourA(blocks.P.ui32Colours, bII), unpackColourA(blocks.Q.ui32Colours, bII), unpackColourA(blocks.R.ui32Colours, bII),
            unpackColourA(blocks.S.ui32Colours, bII)};
}

CellColours unpackCellColoursB(const CellBlocks& blocks, bool bII)
{
    return {unpackColourB(blocks.P.ui32Colours, bII), unpackColourB(blocks.Q.ui32Colours, bII), unpackColourB(blocks.R.ui32Colours, bII),
            unpackColourB(blocks.S.ui32Colours, bII)};
}

std::array<uint8_t, 4> interpolateCell(const CellColours& colours, uint32_t x, uint32_t y, bool b2bpp)
{
    const auto iX = static_cast<int32_t>(x);
    const auto iY = static_cast<int32_t>(y);
    const auto iWidth = static_cast<int32_t>(getBlockWidth(b2bpp));
    const auto getSum = [&](size_t uiChannel)
    {
        const int32_t P = colours.P.aui8[uiChannel];
        const int32_t Q = colours.Q.aui8[uiChannel];
        const int32_t R = colours.R.aui8[uiChannel];
        const int32_t S = colours.S.aui8[uiChannel];
        const int32_t iTop = iWidth * P + iX * (Q - P);
        const int32_t iBottom = iWidth * R + iX * (S - R);
        return 4 * iTop + iY * (iBottom - iTop);
    };

    // The sums are 16 times (4bpp) or 32 times (2bpp) the channel: to 8 bits, and the high bits once more below.
    const int iExtra = b2bpp ? 1 : 0;
    std::array<uint8_t, 4> pixel = {};
    for (size_t uiChannel = 0; uiChannel < 3; ++uiChannel)
    {
        const int32_t iSum = getSum(uiChannel);
        pixel[uiChannel] = static_cast<uint8_t>((iSum >> (6 + iExtra)) + (iSum >> (1 + iExtra)));
    }
    const int32_t iSum = getSum(3);
    pixel[3] = static_cast<uint8_t>((iSum >> (4 + iExtra)) + (iSum >> iExtra));
    return pixel;
}

std::array<uint8_t, 4> blendColours(const std::array<uint8_t, 4>& a, const std::array<uint8_t, 4>& b, uint32_t uiWeight)
{
    std::array<uint8_t, 4> pixel = {};
    for (size_t uiChannel = 0; uiChannel < 4; ++uiChannel)
        pixel[uiChannel] = static_cast<uint8_t>((a[uiChannel] * (8 - uiWeight) + b[uiChannel] * uiWeight) / 8);
    return pixel;
}

} // namespace moxtexture
