#include "Conversion/SurfaceJob.h"

#include <algorithm>

namespace moxtexture
{

bool SurfaceJob::prepare(const CMOXTexture& source, CMOXTexture& target, EMOXTPixelFormat eFormat, uint32_t uiArrayMember, uint32_t uiFace,
                         uint32_t uiMIPLevel, bool bSigned)
{
    pCodec = findCodec(eFormat);
    pSource = source.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    pTarget = target.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    if (pCodec == nullptr || pSource == nullptr || pTarget == nullptr)
        return false;

    real = getSurfaceSize(source, uiMIPLevel);
    SurfaceSize smallest;
    CMOXTextureHeader::getMinDimensions(eFormat, smallest.uiWidth, smallest.uiHeight, smallest.uiDepth);
    raised = {std::max(real.uiWidth, smallest.uiWidth), std::max(real.uiHeight, smallest.uiHeight),
              std::max(real.uiDepth, smallest.uiDepth)};
    surface.eFormat = eFormat;
    surface.bSigned = bSigned;
    surface.eColourSpace = source.getColourSpace();
    return true;
}

uint32_t SurfaceJob::run(CodecEntry pEntry, const SurfaceSize& size, size_t uiSourceSlice, size_t uiTargetSlice)
{
    if (pEntry == nullptr)
        return 0;
    surface.uiWidth = size.uiWidth;
    surface.uiHeight = size.uiHeight;
    if (pCodec->bTakesDepth)
    {
        surface.uiDepth = size.uiDepth;
        return pEntry(pSource, pTarget, surface);
    }
    uint32_t uiBytes = 0;
    for (uint32_t z = 0; z < size.uiDepth; ++z)
    {
        const uint32_t uiSliceBytes = pEntry(pSource + z * uiSourceSlice, pTarget + z * uiTargetSlice, surface);
        if (uiSliceBytes == 0)
            return 0;
        uiBytes += uiSliceBytes;
    }
    return uiBytes;
}

} // namespace moxtexture
