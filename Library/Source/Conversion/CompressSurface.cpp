#include "Conversion/CompressSurface.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "Conversion/SurfaceJob.h"

namespace moxtexture
{
namespace
{

/// The pixels of a surface laid out anew as one of a larger size; see compressSurface().
std::vector<uint8_t> enlarge(const uint8_t* pSource, size_t uiReadable, const SurfaceSize& from, const SurfaceSize& to, size_t uiPixelBytes)
{
    std::vector<uint8_t> enlarged(to.getPixelCount() * uiPixelBytes);
    const size_t uiRowBytes = to.uiWidth * uiPixelBytes;
    for (uint32_t z = 0; z < to.uiDepth; ++z)
    {
        for (uint32_t y = 0; y < to.uiHeight; ++y)
        {
            const size_t uiOffset = from.getPixelIndex(0, y, z) * uiPixelBytes;
            if (uiOffset < uiReadable)
                std::memcpy(&enlarged[to.getPixelIndex(0, y, z) * uiPixelBytes], pSource + uiOffset,
                            std::min(uiRowBytes, uiReadable - uiOffset));
        }
    }
    return enlarged;
}

} // namespace

uint32_t compressSurface(const CMOXTexture& source, CMOXTexture& target, EMOXTPixelFormat eFormat, uint32_t uiArrayMember, uint32_t uiFace,
                         uint32_t uiMIPLevel, uint32_t uiQuality, bool bSigned)
{
    SurfaceJob job;
    if (!job.prepare(source, target, eFormat, uiArrayMember, uiFace, uiMIPLevel, bSigned))
        return 0;
    job.surface.uiQuality = uiQuality;

    const size_t uiPixelBytes = source.getBitsPerPixel() / 8;
    std::vector<uint8_t> enlarged;
    if (job.raised != job.real)
    {
        const auto uiReadable = static_cast<size_t>(source.getDataPtr() + source.getBlockSize() - job.pSource);
        enlarged = enlarge(job.pSource, uiReadable, job.real, job.raised, uiPixelBytes);
        job.pSource = enlarged.data();
    }
    const size_t uiSourceSlice = size_t{job.raised.uiWidth} * job.raised.uiHeight * uiPixelBytes;
    const size_t uiTargetSlice = target.getDataSize(uiMIPLevel, false, false) / job.raised.uiDepth;
    return job.run(job.pCodec->pCompress, job.raised, uiSourceSlice, uiTargetSlice);
}

} // namespace moxtexture
