#include "Codecs/ETC/EtcGather.h"

#include "Core/Bits.h"
#include "Core/BlockPadding.h"
#include "Core/ByteOrder.h"

namespace moxtexture
{

namespace
{

/// The places of a side that the four places of a block from uiPosition on are taken from.
std::array<uint64_t, 4> getSources(uint32_t uiPosition, uint32_t uiSize)
{
    std::array<uint64_t, 4> sources;
    for (uint64_t i = 0; i < 4; ++i)
        sources[i] = getPaddingSource(uiPosition + i, uiSize, roundUpToMultiple(uiSize, 4));
    return sources;
}

/// The byte uiByte of each pixel.
std::array<uint8_t, 16> gatherBytes(const EtcSurface& surface, const EtcBlockOffsets& offsets, size_t uiByte)
{
    std::array<uint8_t, 16> aui8;
    for (size_t i = 0; i < 16; ++i)
        aui8[i] = surface.pui8Pixels[offsets[i] + uiByte];
    return aui8;
}

} // namespace

EtcBlockOffsets getEtcBlockOffsets(const EtcSurface& surface, uint32_t uiX, uint32_t uiY)
{
    const std::array<uint64_t, 4> columns = getSources(uiX, surface.uiWidth);
    const std::array<uint64_t, 4> rows = getSources(uiY, surface.uiHeight);
    EtcBlockOffsets offsets;
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
            offsets[etcPixelIndex(x, y)] = (rows[y] * surface.uiWidth + columns[x]) * surface.uiPixelBytes;
    return offsets;
}

EtcPixels gatherEtcPixels(const EtcSurface& surface, const EtcBlockOffsets& offsets)
{
    return {gatherBytes(surface, offsets, 0), gatherBytes(surface, offsets, 1), gatherBytes(surface, offsets, 2)};
}

EtcAlphas gatherEtcAlphas(const EtcSurface& surface, const EtcBlockOffsets& offsets)
{
    return {gatherBytes(surface, offsets, 3)};
}

void gatherEacPixels(const EtcSurface& surface, const EtcBlockOffsets& offsets, size_t uiChannel, uint16_t (&pixels)[16])
{
    for (size_t i = 0; i < 16; ++i)
        pixels[i] = loadLE<uint16_t>(surface.pui8Pixels + offsets[i] + uiChannel * sizeof(uint16_t));
}

} // namespace moxtexture
