#include "Conversion/CompressSurface.h"

#include <cstring>
#include <vector>

#include "Conversion/CodecTable.h"
#include "Conversion/Slices.h"

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
            const size_t uiOffset = (size_t{z} * from.uiHeight + y) * from.uiWidth * uiPixelBytes;
            if (uiOffset < uiReadable)
                std::memcpy(&enlarged[(size_t{z} * to.uiHeight + y) * uiRowBytes], pSource + uiOffset,
                            std::min(uiRowBytes, uiReadable - uiOffset));
        }
    }
    return enlarged;
}

} // namespace

uint32_t compressSurface(const CMOXTexture& source, CMOXTexture& target, EMOXTPixelFormat eFormat, uint32_t uiArrayMember, uint32_t uiFace,
                         uint32_t uiMIPLevel, uint32_t uiQuality, bool bSigned)
{
    const CodecRow* pCodec = findCodec(eFormat);
    const uint8_t* pSource = source.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    uint8_t* pTarget = target.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    if (pCodec == nullptr || pCodec->pCompress == nullptr || pSource == nullptr || pTarget == nullptr)
        return 0;

    const SurfaceSize real = getSurfaceSize(source, uiMIPLevel);
    const SurfaceSize size = raiseToMinimum(real, eFormat);
    const size_t uiPixelBytes = source.getBitsPerPixel() / 8;
    std::vector<uint8_t> enlarged;
    if (!(size == real))
    {
        const auto uiReadable = static_cast<size_t>(source.getDataPtr() + source.getBlockSize() - pSource);
        enlarged = enlarge(pSource, uiReadable, real, size, uiPixelBytes);
        pSource = enlarged.data();
    }

    CodecSurface surface;
    surface.eFormat = eFormat;
    surface.uiQuality = uiQuality;
    surface.bSigned = bSigned;
    surface.eColourSpace = source.getColourSpace();
    const size_t uiSourceSlice = size_t{size.uiWidth} * size.uiHeight * uiPixelBytes;
    const size_t uiTargetSlice = target.getDataSize(uiMIPLevel, false, false) / size.uiDepth;
    return runCodec(pCodec->pCompress, pCodec->bTakesDepth, pSource, uiSourceSlice, pTarget, uiTargetSlice, surface, size);
}

} // namespace moxtexture
