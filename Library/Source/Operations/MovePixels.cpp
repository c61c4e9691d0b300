#include "Operations/MovePixels.h"

#include <algorithm>
#include <cstring>

namespace moxtexture
{
namespace
{

/// The part of an axis that source and destination share.
struct SharedRun
{
    SharedRun(int64_t i64Offset, uint32_t uiSource, uint32_t uiDestination)
        : i64Begin(std::max<int64_t>(0, i64Offset)), i64End(std::min<int64_t>(uiDestination, i64Offset + uiSource))
    {
    }

    int64_t i64Begin; ///< in the destination
    int64_t i64End;   ///< may lie before the begin: nothing is shared
};

} // namespace

void copyBox(const uint8_t* pSource, const SurfaceSize& sourceSize, uint8_t* pDestination, const SurfaceSize& destinationSize, int64_t i64X,
             int64_t i64Y, int64_t i64Z, size_t uiPixelBytes)
{
    const SharedRun columns(i64X, sourceSize.uiWidth, destinationSize.uiWidth);
    const SharedRun rows(i64Y, sourceSize.uiHeight, destinationSize.uiHeight);
    const SharedRun slices(i64Z, sourceSize.uiDepth, destinationSize.uiDepth);
    if (columns.i64End <= columns.i64Begin)
        return;
    const size_t uiRunBytes = static_cast<size_t>(columns.i64End - columns.i64Begin) * uiPixelBytes;
    const auto indexOf = [](const SurfaceSize& size, int64_t x, int64_t y, int64_t z)
    { return size.getPixelIndex(static_cast<uint32_t>(x), static_cast<uint32_t>(y), static_cast<uint32_t>(z)); };
    for (int64_t z = slices.i64Begin; z < slices.i64End; ++z)
        for (int64_t y = rows.i64Begin; y < rows.i64End; ++y)
            std::memcpy(pDestination + indexOf(destinationSize, columns.i64Begin, y, z) * uiPixelBytes,
                        pSource + indexOf(sourceSize, columns.i64Begin - i64X, y - i64Y, z - i64Z) * uiPixelBytes, uiRunBytes);
}

} // namespace moxtexture
