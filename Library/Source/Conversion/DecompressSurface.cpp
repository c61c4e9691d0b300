#include "Conversion/DecompressSurface.h"

#include <cstring>
#include <utility>
#include <vector>

#include "Conversion/CodecTable.h"
#include "Conversion/SurfaceJob.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{

uint32_t decompressSurface(const CMOXTexture& source, CMOXTexture& target, EMOXTPixelFormat eFormat, uint32_t uiArrayMember,
                           uint32_t uiFace, uint32_t uiMIPLevel, bool bSigned)
{
    SurfaceJob job;
    if (!job.prepare(source, target, eFormat, uiArrayMember, uiFace, uiMIPLevel, bSigned))
        return 0;

    const SurfaceSize size = job.pCodec->bDecodesSmallSurface ? job.real : job.raised;
    const size_t uiPixelBytes = target.getBitsPerPixel() / 8;
    const size_t uiSourceSlice = source.getDataSize(uiMIPLevel, false, false) / job.raised.uiDepth;
    const size_t uiTargetSlice = size_t{size.uiWidth} * size.uiHeight * uiPixelBytes;
    if (size == job.real)
        return job.run(job.pCodec->pDecompress, size, uiSourceSlice, uiTargetSlice);

    std::vector<uint8_t> raised(size.getPixelCount() * uiPixelBytes);
    uint8_t* pTarget = std::exchange(job.pTarget, raised.data());
    const uint32_t uiBytes = job.run(job.pCodec->pDecompress, size, uiSourceSlice, uiTargetSlice);
    const size_t uiRowBytes = job.real.uiWidth * uiPixelBytes;
    for (uint32_t z = 0; z < job.real.uiDepth; ++z)
        for (uint32_t y = 0; y < job.real.uiHeight; ++y)
            std::memcpy(pTarget + job.real.getPixelIndex(0, y, z) * uiPixelBytes, &raised[size.getPixelIndex(0, y, z) * uiPixelBytes],
                        uiRowBytes);
    // A codec that stopped short did not fill the real surface either, as far as anybody can tell.
    return uiBytes == raised.size() ? static_cast<uint32_t>(job.real.getPixelCount() * uiPixelBytes) : 0;
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
