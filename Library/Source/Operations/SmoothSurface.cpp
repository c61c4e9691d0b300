#include "Operations/SmoothSurface.h"

#include <memory>
#include <new>

#include "Operations/ChannelKind.h"
#include "Operations/ResampleKernels.h"
#include "Operations/RowCache.h"

namespace moxtexture
{
namespace
{

/// The place iOffset pixels from i, kept within the axis.
uint32_t clampedNeighbour(uint32_t i, int iOffset, uint32_t uiSize)
{
    return static_cast<uint32_t>(std::clamp<int64_t>(int64_t{i} + iOffset, 0, int64_t{uiSize} - 1));
}

template <typename T, typename Kernel>
void smoothPlainly(const T* pSource, T* pDestination, const SurfaceSize& size, const Kernel& kernel)
{
    constexpr int kHalf = Kernel::kSize / 2;
    constexpr int kHalfDepth = Kernel::kDepth / 2;
    for (uint32_t z = 0; z < size.uiDepth; ++z)
        for (uint32_t y = 0; y < size.uiHeight; ++y)
            for (uint32_t x = 0; x < size.uiWidth; ++x)
                for (size_t c = 0; c < k_uiWorkingChannels; ++c)
                {
                    float fSum = 0.0f;
                    const float* pWeight = kernel.afWeights.data();
                    for (int k = -kHalfDepth; k <= kHalfDepth; ++k)
                        for (int j = -kHalf; j <= kHalf; ++j)
                            for (int i = -kHalf; i <= kHalf; ++i)
                            {
                                const size_t uiPixel =
                                    size.getPixelIndex(clampedNeighbour(x, i, size.uiWidth), clampedNeighbour(y, j, size.uiHeight),
                                                       clampedNeighbour(z, k, size.uiDepth));
                                fSum += static_cast<float>(pSource[uiPixel * k_uiWorkingChannels + c]) * *pWeight++;
                            }
                    pDestination[size.getPixelIndex(x, y, z) * k_uiWorkingChannels + c] = ChannelKind<T>::toElement(fSum * kernel.fScale);
                }
}

/// Row by row over tiles of columns, from rows of floats with a pixel more on either side.
template <typename T, typename Kernel>
bool smoothRowsWith(const Kernel& kernel, const T* pSource, const SurfaceSize& size, uint32_t uiFirstRow, uint32_t uiRowCount,
                    T* pDestination)
{
    static_assert(Kernel::kSize == 3);
    using Cache = CRowCache<3, (k_uiTileColumns + 2) * k_uiWorkingChannels>;
    const std::unique_ptr<Cache[]> pCaches(new (std::nothrow) Cache[Kernel::kDepth]);
    if (!pCaches)
        return false;
    const SmoothKernels<T>& rowKernels = getSmoothKernels<T>();
    const SurfaceSize held = {size.uiWidth, uiRowCount, size.uiDepth};

    for (uint32_t uiBegin = 0, uiCount; uiBegin < size.uiWidth; uiBegin += uiCount)
    {
        uiCount = std::min(k_uiTileColumns, size.uiWidth - uiBegin);
        for (uint32_t z = 0; z < size.uiDepth; ++z)
        {
            std::for_each_n(pCaches.get(), Kernel::kDepth, [](Cache& cache) { cache.clear(); });
            for (uint32_t y = uiFirstRow; y < uiFirstRow + uiRowCount; ++y)
            {
                const std::array<uint32_t, 3> auiWanted = {clampedNeighbour(y, -1, size.uiHeight), y,
                                                           clampedNeighbour(y, 1, size.uiHeight)};
                std::array<const float*, Kernel::kRows> pRows;
                for (size_t k = 0; k < size_t{Kernel::kDepth}; ++k)
                {
                    const uint32_t uiSlice = clampedNeighbour(z, static_cast<int>(k) - Kernel::kDepth / 2, size.uiDepth);
                    const auto makeRow = [&](uint32_t uiRow, float* pFloats)
                    {
                        const T* pRow = pSource + size.getPixelIndex(uiBegin, uiRow, uiSlice) * k_uiWorkingChannels;
                        const T* pEnd = pRow + size_t{uiCount} * k_uiWorkingChannels;
                        float* pInner = pFloats + k_uiWorkingChannels;
                        const T* pLeft = uiBegin == 0 ? pRow : pRow - k_uiWorkingChannels;
                        const T* pRight = uiBegin + uiCount == size.uiWidth ? pEnd - k_uiWorkingChannels : pEnd;
                        rowKernels.toFloats(pLeft, k_uiWorkingChannels, pFloats);
                        rowKernels.toFloats(pRow, size_t{uiCount} * k_uiWorkingChannels, pInner);
                        rowKernels.toFloats(pRight, k_uiWorkingChannels, pInner + size_t{uiCount} * k_uiWorkingChannels);
                    };
                    pCaches[k].select(auiWanted, makeRow, &pRows[3 * k]);
                }
                rowKernels.smoothRow(pRows.data(), kernel.afWeights.data(), pRows.size(), kernel.fScale,
                                     size_t{uiCount} * k_uiWorkingChannels,
                                     pDestination + held.getPixelIndex(uiBegin, y - uiFirstRow, z) * k_uiWorkingChannels);
            }
        }
    }
    return true;
}

} // namespace

template <typename T>
void smoothSurfaceReference(const T* pSource, T* pDestination, const SurfaceSize& size)
{
    if (size.uiDepth == 1)
        smoothPlainly(pSource, pDestination, size, k_SmoothingKernel2D);
    else
        smoothPlainly(pSource, pDestination, size, k_SmoothingKernel3D);
}

template <typename T>
bool smoothRows(const T* pSource, const SurfaceSize& size, uint32_t uiFirstRow, uint32_t uiRowCount, T* pDestination)
{
    return size.uiDepth == 1 ? smoothRowsWith(k_SmoothingKernel2D, pSource, size, uiFirstRow, uiRowCount, pDestination)
                             : smoothRowsWith(k_SmoothingKernel3D, pSource, size, uiFirstRow, uiRowCount, pDestination);
}

template void smoothSurfaceReference(const uint8_t*, uint8_t*, const SurfaceSize&);
template void smoothSurfaceReference(const uint16_t*, uint16_t*, const SurfaceSize&);
template void smoothSurfaceReference(const uint32_t*, uint32_t*, const SurfaceSize&);
template void smoothSurfaceReference(const float*, float*, const SurfaceSize&);
template bool smoothRows(const uint8_t*, const SurfaceSize&, uint32_t, uint32_t, uint8_t*);
template bool smoothRows(const uint16_t*, const SurfaceSize&, uint32_t, uint32_t, uint16_t*);
template bool smoothRows(const uint32_t*, const SurfaceSize&, uint32_t, uint32_t, uint32_t*);
template bool smoothRows(const float*, const SurfaceSize&, uint32_t, uint32_t, float*);

} // namespace moxtexture
