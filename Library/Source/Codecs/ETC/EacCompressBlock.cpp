#include "Codecs/ETC/EacCompressBlock.h"

#include <array>
#include <cstdlib>

#include "Codecs/ETC/EacBlock.h"
#include "Codecs/ETC/EacSearch.h"

namespace moxtexture
{

namespace
{

/// The first of the nearest values.
uint8_t findNearest(uint16_t ui16Pixel, const std::array<uint16_t, 8>& palette)
{
    uint8_t uiNearest = 0;
    int32_t iLeast = 65536;
    for (uint8_t k = 0; k < 8; ++k)
    {
        const int32_t iDistance = std::abs(static_cast<int32_t>(static_cast<int16_t>(static_cast<uint16_t>(ui16Pixel - palette[k]))));
        if (iDistance < iLeast)
        {
            iLeast = iDistance;
            uiNearest = k;
        }
    }
    return uiNearest;
}

} // namespace

void eacCompressBlock(const uint16_t (&aui16Pixels)[16], uint8_t* pui8Destination, bool bSigned)
{
    const EacValues& values = bSigned ? eacValuesSigned : eacValuesUnsigned;
    const EacChoice choice = searchEacBlock(aui16Pixels, values);

    std::array<uint16_t, 8> palette;
    for (uint32_t k = 0; k < 8; ++k)
        palette[k] = values.get(choice.uiBase, choice.uiTable, choice.uiMultiplier, k);
    std::array<uint8_t, 16> indices;
    for (size_t x = 0; x < 4; ++x)
        for (size_t y = 0; y < 4; ++y)
            indices[x * 4 + y] = findNearest(aui16Pixels[y * 4 + x], palette);

    // The stored base of signed data is the base minus 128, modulo 256.
    pui8Destination[0] = static_cast<uint8_t>(bSigned ? choice.uiBase ^ 0x80u : choice.uiBase);
    pui8Destination[1] = static_cast<uint8_t>(choice.uiMultiplier << 4 | choice.uiTable);
    writeEacIndices(pui8Destination, indices);
}

} // namespace moxtexture
