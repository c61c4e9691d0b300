#include "Operations/ResampleSurface.h"

#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "Core/Bits.h"
#include "Operations/ChannelKind.h"
#include "Operations/CubicSampler.h"
#include "Operations/LinearSampler.h"
#include "Operations/ResampleKernels.h"
#include "Operations/RowCache.h"
#include "Operations/SmoothSurface.h"

namespace moxtexture
{
namespace
{

/// The positions of all three axes.
struct ResampleAxes
{
    ResampleAxes(const SurfaceSize& source, const SurfaceSize& destination)
        : bGrows(growsOnAnyAxis(source, destination)),
          x(source.uiWidth, destination.uiWidth, bGrows),
          y(source.uiHeight, destination.uiHeight, bGrows),
          z(source.uiDepth, destination.uiDepth, bGrows)
    {
    }

    bool bGrows;
    CResampleAxis x, y, z;
};

template <typename T>
std::unique_ptr<T[]> allocatePixels(const SurfaceSize& size)
{
    return std::unique_ptr<T[]>(new (std::nothrow) T[size.getPixelCount() * k_uiWorkingChannels]);
}

template <typename T>
bool canResample(const T* pSource, const T* pDestination, const SurfaceSize& source, const SurfaceSize& destination, EResizeMode eMode)
{
    return pSource != nullptr && pDestination != nullptr && !source.isEmpty() && !destination.isEmpty() && eMode <= eResizeCubic;
}

/// Calls makePixel(x, y, z, pPixel) for each pixel of the destination.
template <typename T, typename MakePixel>
void forEachPixel(T* pDestination, const SurfaceSize& destination, const MakePixel& makePixel)
{
    for (uint32_t z = 0; z < destination.uiDepth; ++z)
        for (uint32_t y = 0; y < destination.uiHeight; ++y)
            for (uint32_t x = 0; x < destination.uiWidth; ++x, pDestination += k_uiWorkingChannels)
                makePixel(x, y, z, pDestination);
}

template <typename T>
bool resampleNearest(const T* pSource, T* pDestination, const SurfaceSize& source, const SurfaceSize& destination)
{
    using Pixel = WholePixel<k_uiWorkingChannels * sizeof(T)>;
    const ResampleAxes axes(source, destination);
    const std::unique_ptr<uint32_t[]> pColumns(new (std::nothrow) uint32_t[destination.uiWidth]);
    if (!pColumns)
        return false;
    for (uint32_t x = 0; x < destination.uiWidth; ++x)
        pColumns[x] = axes.x.getNearestIndex(x);

    for (uint32_t z = 0; z < destination.uiDepth; ++z)
    {
        const T* pLastRow = nullptr;
        const T* pLastOut = nullptr;
        for (uint32_t y = 0; y < destination.uiHeight; ++y)
        {
            const T* pRow = pSource + source.getPixelIndex(0, axes.y.getNearestIndex(y), axes.z.getNearestIndex(z)) * k_uiWorkingChannels;
            T* pOut = pDestination + destination.getPixelIndex(0, y, z) * k_uiWorkingChannels;
            if (pRow == pLastRow)
                std::memcpy(pOut, pLastOut, destination.uiWidth * sizeof(Pixel));
            else
                for (size_t x = 0; x < destination.uiWidth; ++x)
                    std::memcpy(pOut + x * k_uiWorkingChannels, pRow + size_t{pColumns[x]} * k_uiWorkingChannels, sizeof(Pixel));
            pLastRow = pRow;
            pLastOut = pOut;
        }
    }
    return true;
}

/// Rows of the source, as it is or smoothed, in all of its slices.
template <typename T>
struct SourceRows
{
    const T* pPixels;
    SurfaceSize size;        ///< of what pPixels holds
    uint32_t uiFirstRow = 0; ///< of the source, which is the first that is held

    [[nodiscard]] const T* getRow(uint32_t uiRow, uint32_t uiSlice) const
    {
        return pPixels + size.getPixelIndex(0, uiRow - uiFirstRow, uiSlice) * k_uiWorkingChannels;
    }
};

/// Rows of the destination, or of what they are made from.
struct RowRange
{
    uint32_t uiBegin;
    uint32_t uiEnd;
};

/// What resampleByRows() works in.
template <size_t uiTaps>
struct RowsWorkspace
{
    static constexpr size_t kFloats = size_t{k_uiTileColumns} * k_uiWorkingChannels;

    std::array<AxisTaps<uiTaps>, k_uiTileColumns> aColumns;
    std::array<CRowCache<uiTaps, kFloats>, uiTaps> aCaches;   ///< rows resampled along x, for each slice that is read
    std::array<std::array<float, kFloats>, uiTaps> aafSlices; ///< one row of each of them, resampled along y too
};

/// True if each destination pixel is made of two neighbours of its own, by halves.
template <size_t uiTaps>
bool areHalvingColumns(const AxisTaps<uiTaps>* pColumns, uint32_t uiCount)
{
    for (uint32_t i = 0; i < uiCount; ++i)
        if (pColumns[i].fFraction != 0.5f || pColumns[i].auiIndex[0] != pColumns[0].auiIndex[0] + 2 * i ||
            pColumns[i].auiIndex[1] != pColumns[i].auiIndex[0] + 1)
            return false;
    return true;
}

/// A separable filter: source rows are resampled along x once, and kept while destination rows need them.
///
/// @param rows   all that the range is made from
/// @param range  of destination rows, in all slices
template <typename T, typename Filter>
bool resampleByRows(const SourceRows<T>& rows, T* pDestination, const SurfaceSize& source, const SurfaceSize& destination,
                    const RowRange& range)
{
    constexpr size_t kTaps = Filter::kTaps;
    const std::unique_ptr<RowsWorkspace<kTaps>> pWork(new (std::nothrow) RowsWorkspace<kTaps>);
    if (!pWork)
        return false;
    const ResampleKernels<T, kTaps>& kernels = getResampleKernels<T, kTaps>();
    const ResampleAxes axes(source, destination);

    for (uint32_t uiBegin = 0, uiCount; uiBegin < destination.uiWidth; uiBegin += uiCount)
    {
        uiCount = std::min(k_uiTileColumns, destination.uiWidth - uiBegin);
        const size_t uiFloats = size_t{uiCount} * k_uiWorkingChannels;
        for (uint32_t i = 0; i < uiCount; ++i)
            pWork->aColumns[i] = Filter::makeTaps(axes.x.getPosition(uiBegin + i), source.uiWidth);
        const bool bHalvesColumns = kernels.halveRows != nullptr && areHalvingColumns(pWork->aColumns.data(), uiCount);

        for (uint32_t z = 0; z < destination.uiDepth; ++z)
        {
            const AxisTaps<kTaps> tapsZ = Filter::makeTaps(axes.z.getPosition(z), source.uiDepth);
            // The step along z may be left out where it is v * 1 + w * 0: v again, but for infinities and NaN.
            const bool bOneSlice = kTaps == 2 ? std::numeric_limits<T>::is_integer && tapsZ.fFraction == 0.0f : source.uiDepth == 1;
            for (auto& cache : pWork->aCaches)
                cache.clear();

            for (uint32_t y = range.uiBegin; y < range.uiEnd; ++y)
            {
                const AxisTaps<kTaps> tapsY = Filter::makeTaps(axes.y.getPosition(y), source.uiHeight);
                T* pOut = pDestination + destination.getPixelIndex(uiBegin, y, z) * k_uiWorkingChannels;
                if (bHalvesColumns && bOneSlice && tapsY.fFraction == 0.5f)
                {
                    const auto rowAt = [&](size_t uiTap) {
                        return rows.getRow(tapsY.auiIndex[uiTap], tapsZ.auiIndex[0]) +
                               size_t{pWork->aColumns[0].auiIndex[0]} * k_uiWorkingChannels;
                    };
                    kernels.halveRows(rowAt(0), rowAt(1), uiCount, pOut);
                    continue;
                }

                std::array<const float*, kTaps> pSlices;
                for (size_t k = 0; k < kTaps; ++k)
                {
                    const uint32_t uiSlice = tapsZ.auiIndex[k];
                    if (k > 0 && uiSlice == tapsZ.auiIndex[k - 1])
                    {
                        pSlices[k] = pSlices[k - 1];
                        continue;
                    }
                    const auto makeRow = [&](uint32_t uiRow, float* pFloats)
                    { kernels.resampleRow(rows.getRow(uiRow, uiSlice), pWork->aColumns.data(), uiCount, pFloats); };
                    std::array<const float*, kTaps> pRows;
                    pWork->aCaches[k].select(tapsY.auiIndex, makeRow, pRows.data());
                    if (bOneSlice)
                    {
                        kernels.blendRowsToElements(pRows, tapsY.fFraction, uiFloats, pOut);
                        break;
                    }
                    kernels.blendRows(pRows, tapsY.fFraction, uiFloats, pWork->aafSlices[k].data());
                    pSlices[k] = pWork->aafSlices[k].data();
                }
                if (!bOneSlice)
                    kernels.blendRowsToElements(pSlices, tapsZ.fFraction, uiFloats, pOut);
            }
        }
    }
    return true;
}

/// The source rows that a range of destination rows is made from.
template <typename Filter>
RowRange getSourceRows(const CResampleAxis& axis, uint32_t uiSourceHeight, const RowRange& range)
{
    RowRange rows = {uiSourceHeight, 0};
    for (uint32_t y = range.uiBegin; y < range.uiEnd; ++y)
        for (const uint32_t uiRow : Filter::makeTaps(axis.getPosition(y), uiSourceHeight).auiIndex)
            rows = {std::min(rows.uiBegin, uiRow), std::max(rows.uiEnd, uiRow + 1)};
    return rows;
}

/// The cubic filter over the smoothed source, of which only a band of rows is held at a time where there is one slice.
template <typename T>
bool resampleSmoothed(const T* pSource, T* pDestination, const SurfaceSize& source, const SurfaceSize& destination)
{
    constexpr uint32_t kBandRows = 32;
    const ResampleAxes axes(source, destination);
    std::unique_ptr<T[]> pSmoothed;
    uint32_t uiRowsAllocated = 0;
    for (RowRange band = {0, 0}; band.uiBegin < destination.uiHeight; band.uiBegin = band.uiEnd)
    {
        band.uiEnd = source.uiDepth == 1 ? band.uiBegin + std::min(kBandRows, destination.uiHeight - band.uiBegin) : destination.uiHeight;
        const RowRange sourceRows = getSourceRows<CubicFilter>(axes.y, source.uiHeight, band);
        const SurfaceSize held = {source.uiWidth, sourceRows.uiEnd - sourceRows.uiBegin, source.uiDepth};
        if (held.uiHeight > uiRowsAllocated)
        {
            pSmoothed = allocatePixels<T>(held);
            uiRowsAllocated = held.uiHeight;
        }
        if (!pSmoothed || !smoothRows(pSource, source, sourceRows.uiBegin, held.uiHeight, pSmoothed.get()) ||
            !resampleByRows<T, CubicFilter>({pSmoothed.get(), held, sourceRows.uiBegin}, pDestination, source, destination, band))
            return false;
    }
    return true;
}

} // namespace

template <typename T>
bool resampleSurfaceReference(const T* pSource, T* pDestination, const SurfaceSize& source, const SurfaceSize& destination,
                              EResizeMode eMode)
{
    if (!canResample(pSource, pDestination, source, destination, eMode))
        return false;
    const ResampleAxes axes(source, destination);

    if (eMode == eResizeNearest)
    {
        forEachPixel(pDestination, destination,
                     [&](uint32_t x, uint32_t y, uint32_t z, T* pPixel)
                     {
                         const size_t uiPixel =
                             source.getPixelIndex(axes.x.getNearestIndex(x), axes.y.getNearestIndex(y), axes.z.getNearestIndex(z));
                         std::memcpy(pPixel, pSource + uiPixel * k_uiWorkingChannels, k_uiWorkingChannels * sizeof(T));
                     });
        return true;
    }
    if (eMode == eResizeLinear)
    {
        forEachPixel(pDestination, destination,
                     [&](uint32_t x, uint32_t y, uint32_t z, T* pPixel)
                     { sampleLinear(pSource, source, axes.x.getPosition(x), axes.y.getPosition(y), axes.z.getPosition(z), pPixel); });
        return true;
    }

    std::unique_ptr<T[]> pSmoothed;
    if (!axes.bGrows)
    {
        pSmoothed = allocatePixels<T>(source);
        if (!pSmoothed)
            return false;
        smoothSurfaceReference(pSource, pSmoothed.get(), source);
        pSource = pSmoothed.get();
    }
    forEachPixel(pDestination, destination,
                 [&](uint32_t x, uint32_t y, uint32_t z, T* pPixel)
                 { sampleCubic(pSource, source, axes.x.getPosition(x), axes.y.getPosition(y), axes.z.getPosition(z), pPixel); });
    return true;
}

template <typename T>
bool resampleSurface(const T* pSource, T* pDestination, const SurfaceSize& source, const SurfaceSize& destination, EResizeMode eMode)
{
    if (!canResample(pSource, pDestination, source, destination, eMode))
        return false;
    // Setting up for rows costs more than the few pixels at the end of a MIP chain.
    constexpr size_t kFewPixels = 16;
    if (source.getPixelCount() <= kFewPixels && destination.getPixelCount() <= kFewPixels)
        return resampleSurfaceReference(pSource, pDestination, source, destination, eMode);

    if (eMode == eResizeNearest)
        return resampleNearest(pSource, pDestination, source, destination);
    const RowRange all = {0, destination.uiHeight};
    if (eMode == eResizeLinear)
        return resampleByRows<T, LinearFilter>({pSource, source}, pDestination, source, destination, all);
    if (growsOnAnyAxis(source, destination))
        return resampleByRows<T, CubicFilter>({pSource, source}, pDestination, source, destination, all);
    return resampleSmoothed(pSource, pDestination, source, destination);
}

namespace
{

uint32_t getNextSize(uint32_t uiPresent, uint32_t uiStart, uint32_t uiTarget)
{
    if (uiTarget > uiStart)
        return static_cast<uint32_t>(std::min(uint64_t{uiPresent} * 2, uint64_t{uiTarget}));
    return std::max(uiPresent >> 1, uiTarget);
}

SurfaceSize getNextSize(const SurfaceSize& present, const SurfaceSize& start, const SurfaceSize& target)
{
    return {getNextSize(present.uiWidth, start.uiWidth, target.uiWidth), getNextSize(present.uiHeight, start.uiHeight, target.uiHeight),
            getNextSize(present.uiDepth, start.uiDepth, target.uiDepth)};
}

/// True if a surface measures less than 4 GiB.
template <typename T>
bool fitsTexture(const SurfaceSize& size)
{
    const CWrappingCount bytes = CWrappingCount(size.uiWidth) * size.uiHeight * size.uiDepth * (k_uiWorkingChannels * sizeof(T));
    return !bytes.hasWrapped() && bytes.getValue() <= 0xFFFFFFFF;
}

} // namespace

template <typename T>
bool resizeSurface(const T* pSource, T* pDestination, const SurfaceSize& source, const SurfaceSize& destination, EResizeMode eMode)
{
    if (!canResample(pSource, pDestination, source, destination, eMode))
        return false;

    for (SurfaceSize next = source; next != destination; next = getNextSize(next, source, destination))
        if (next != source && !fitsTexture<T>(next))
            return false;

    // The first stage reads the source itself and the last writes the destination: only what lies between them is held.
    SurfaceSize present = source;
    const T* pPresent = pSource;
    std::unique_ptr<T[]> pHeld;
    for (SurfaceSize next = getNextSize(present, source, destination); next != destination; next = getNextSize(next, source, destination))
    {
        std::unique_ptr<T[]> pNext = allocatePixels<T>(next);
        if (!pNext || !resampleSurface(pPresent, pNext.get(), present, next, eMode))
            return false;
        pHeld = std::move(pNext);
        pPresent = pHeld.get();
        present = next;
    }
    if (present == destination)
    {
        std::memcpy(pDestination, pPresent, destination.getPixelCount() * k_uiWorkingChannels * sizeof(T));
        return true;
    }
    return resampleSurface(pPresent, pDestination, present, destination, eMode);
}

template bool resampleSurfaceReference(const uint8_t*, uint8_t*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resampleSurfaceReference(const uint16_t*, uint16_t*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resampleSurfaceReference(const uint32_t*, uint32_t*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resampleSurfaceReference(const float*, float*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resampleSurface(const uint8_t*, uint8_t*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resampleSurface(const uint16_t*, uint16_t*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resampleSurface(const uint32_t*, uint32_t*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resampleSurface(const float*, float*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resizeSurface(const uint8_t*, uint8_t*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resizeSurface(const uint16_t*, uint16_t*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resizeSurface(const uint32_t*, uint32_t*, const SurfaceSize&, const SurfaceSize&, EResizeMode);
template bool resizeSurface(const float*, float*, const SurfaceSize&, const SurfaceSize&, EResizeMode);

} // namespace moxtexture
