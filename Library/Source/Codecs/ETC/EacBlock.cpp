#include "Codecs/ETC/EacBlock.h"

#include <algorithm>

#include "Codecs/ETC/EtcPlanePatch.h"

namespace moxtexture
{

namespace
{

constexpr size_t k_uiFirstIndexByte = 2;
constexpr uint32_t k_uiIndexBits = 48;

/// The sixteen values of a block in row order, each the value of its index.
template <typename T>
std::array<T, 16> lookUpValues(const uint8_t* pui8Block, const std::array<T, 8>& palette)
{
    const std::array<uint8_t, 16> indices = readEacIndices(pui8Block);
    std::array<T, 16> values;
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
            values[etcPixelIndex(x, y)] = palette[indices[x * 4 + y]];
    return values;
}

} // namespace

std::array<uint8_t, 16> readEacIndices(const uint8_t* pui8Block)
{
    uint64_t ui64Bits = 0;
    for (size_t i = k_uiFirstIndexByte; i < k_uiEacBlockBytes; ++i)
        ui64Bits = ui64Bits << 8 | pui8Block[i];
    std::array<uint8_t, 16> indices;
    for (uint32_t i = 0; i < 16; ++i)
        indices[i] = static_cast<uint8_t>(ui64Bits >> (k_uiIndexBits - 3 - 3 * i) & 7);
    return indices;
}

void writeEacIndices(uint8_t* pui8Block, const std::array<uint8_t, 16>& indices)
{
    uint64_t ui64Bits = 0;
    for (const uint8_t uiIndex : indices)
        ui64Bits = ui64Bits << 3 | uiIndex;
    for (uint32_t i = 0; i < k_uiIndexBits / 8; ++i)
        pui8Block[k_uiFirstIndexByte + i] = static_cast<uint8_t>(ui64Bits >> (k_uiIndexBits - 8 - 8 * i));
}

EtcAlphas decodeEtcAlphas(const uint8_t* pui8Block)
{
    std::array<uint8_t, 8> palette;
    for (size_t i = 0; i < 8; ++i)
        palette[i] = static_cast<uint8_t>(std::clamp(pui8Block[0] + alphaModifierTable[pui8Block[1]][i], 0, 255));
    return {lookUpValues(pui8Block, palette)};
}

std::array<uint16_t, 16> decodeEacValues(const uint8_t* pui8Block, bool bSigned)
{
    const uint32_t uiBase = getEacBase(pui8Block[0], bSigned);
    std::array<uint16_t, 8> palette;
    for (uint32_t i = 0; i < 8; ++i)
        palette[i] = eacValue(uiBase, pui8Block[1] & 15u, pui8Block[1] >> 4u, i, bSigned);
    return lookUpValues(pui8Block, palette);
}

void etcDecodeAlphaBlock(const uint8_t* pui8Block, uint8_t* pui8Plane, uint32_t uiStride, uint32_t uiX, uint32_t uiY)
{
    writeEtcPlanePatch(decodeEtcAlphas(pui8Block).aui8, pui8Plane, uiStride, uiX, uiY);
}

void eacDecodeBlock(const uint8_t* pui8Block, uint16_t* pui16Plane, uint32_t uiStride, uint32_t uiX, uint32_t uiY, bool bSigned)
{
    writeEtcPlanePatch(decodeEacValues(pui8Block, bSigned), pui16Plane, uiStride, uiX, uiY);
}

} // namespace moxtexture
