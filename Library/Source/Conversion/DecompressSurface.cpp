#include "Conversion/DecompressSurface.h"

#include <cstring>
#include <utility>
#include <vector>

#include "Conversion/CodecTable.h"
#include "Conversion/Slices.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{

uint32_t decompressSurface(const CMOXTexture& source, CMOXTexture& target, EMOXTPixelFormat eFormat, uint32_t uiArrayMember,
                           uint32_t uiFace, uint32_t uiMIPLevel, bool bSigned)
{
    const CodecRow* pCodec = findCodec(eFormat);
    const uint8_t* pSource = source.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    uint8_t* pTarget = target.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    if (pCodec == nullptr || pCodec->pDecompress == nullptr || pSource == nullptr || pTarget == nullptr)
        return 0;

    const SurfaceSize real = getSurfaceSize(target, uiMIPLevel);
    const SurfaceSize size = pCodec->bDecodesSmallSurface ? real : raiseToMinimum(real, eFormat);
    const size_t uiPixelBytes = target.getBitsPerPixel() / 8;
    std::vector<uint8_t> raised;
    const bool bRaised = !(size == real);
    if (bRaised)
        raised.resize(size.getPixelCount() * uiPixelBytes);

    CodecSurface surface;
    surface.eFormat = eFormat;
    surface.bSigned = bSigned;
    surface.eColourSpace = source.getColourSpace();
    const size_t uiSourceSlice = source.getDataSize(uiMIPLevel, false, false) / size.uiDepth;
    const size_t uiTargetSlice = size_t{size.uiWidth} * size.uiHeight * uiPixelBytes;
    const uint32_t uiBytes = runCodec(pCodec->pDecompress, pCodec->bTakesDepth, pSource, uiSourceSlice, bRaised ? raised.data() : pTarget,
                                      uiTargetSlice, surface, size);
    if (uiBytes == 0 || !bRaised)
        return uiBytes;

    const size_t uiRowBytes = real.uiWidth * uiPixelBytes;
    for (uint32_t z = 0; z < real.uiDepth; ++z)
        for (uint32_t y = 0; y < real.uiHeight; ++y)
            std::memcpy(pTarget + (size_t{z} * real.uiHeight + y) * uiRowBytes,
                        &raised[(size_t{z} * size.uiHeight + y) * size.uiWidth * uiPixelBytes], uiRowBytes);
    return static_cast<uint32_t>(real.getPixelCount() * uiPixelBytes);
}

uint64_t decompressTexture(CMOXTexture& texture)
{
    const EMOXTPixelFormat eFormat = texture.getPixelFormat().getFormat();
    const Intermediate intermediate = getIntermediate(eFormat, texture.getChannelType());
    CMOXTextureHeader header = texture;
    header.setPixelFormat(intermediate.pixelFormat);
    header.setChannelType(intermediate.eChannelType);
    if (!header.fitsDataBlock())
        return 0;

    CMOXTexture decompressed(header);
    uint64_t ui64Bytes = 0;
    walkSurfaces(header,
                 [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                 {
                     ui64Bytes += decompressSurface(texture, decompressed, eFormat, uiMember, uiFace, uiLevel,
                                                    isSignedChannelType(texture.getChannelType()));
                     return true;
                 });
    texture = std::move(decompressed);
    return ui64Bytes;
}

} // namespace moxtexture
