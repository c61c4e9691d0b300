#include "Codecs/MOXTC/StartingColours.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/MOXTC/StartingColoursSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/MOXTC/CompressorLanesSimd.h"

// Most pixels of a window cannot belong to the farthest pair, and are left out before all pairs are looked at. Let m be any point,
// r a pixel's distance from it, R the greatest r, and D the distance of some pair. Two pixels that are D or more apart have
// r + r' >= D, so both have r >= D - R. A good pair is one that leads far away: any pixel, the farthest from that, the farthest from
// that again; and m halfway between the last two leaves few.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

#if HWY_TARGET == HWY_SCALAR

void findStartingColoursOfWindows(CompressorImages& images, bool bOverlap)
{
    findStartingColoursReference(images, bOverlap);
}

#else

namespace
{

constexpr size_t k_uiMostLanes = 16;
constexpr uint32_t k_uiRunBlocks = 32; ///< their candidates are picked before the pairs are sought

/// The rows under the windows of a row of blocks, with the margins that wrap at both sides.
class CWindowRows
{
public:
    CWindowRows(const CompressorImages& images, bool bOverlap)
        : m_Images(images),
          m_uiMarginX(bOverlap ? images.ui8BlockWidth / 2u : 0),
          m_uiMarginY(bOverlap ? images.ui8BlockHeight / 2u : 0),
          m_uiPitch(images.uiWidth + 2 * m_uiMarginX),
          m_Rows(m_uiPitch * (images.ui8BlockHeight + 2 * m_uiMarginY))
    {
    }

    void fill(uint32_t uiBlockY)
    {
        const size_t uiTop = size_t{uiBlockY} * m_Images.ui8BlockHeight + m_Images.uiHeight - m_uiMarginY;
        auto itOut = m_Rows.begin();
        for (size_t y = 0; y < m_Images.ui8BlockHeight + 2 * m_uiMarginY; ++y)
        {
            const uint32_t* pRow = &m_Images.source[(uiTop + y) % m_Images.uiHeight * m_Images.uiWidth];
            itOut = std::copy_n(pRow + m_Images.uiWidth - m_uiMarginX, m_uiMarginX, itOut);
            itOut = std::copy_n(pRow, m_Images.uiWidth, itOut);
            itOut = std::copy_n(pRow, m_uiMarginX, itOut);
        }
    }

    /// The first pixel of a block's window; its rows are getPitch() apart.
    [[nodiscard]] const uint32_t* getWindow(uint32_t uiBlockX) const { return &m_Rows[size_t{uiBlockX} * m_Images.ui8BlockWidth]; }
    [[nodiscard]] size_t getPitch() const { return m_uiPitch; }

private:
    const CompressorImages& m_Images;
    size_t m_uiMarginX;
    size_t m_uiMarginY;
    size_t m_uiPitch;
    std::vector<uint32_t> m_Rows;
};

/// Up to uiMost pixels in the order of their window, and room for whole vectors.
template <size_t uiMost>
struct PixelList
{
    alignas(64) uint32_t auiPixels[uiMost + k_uiMostLanes];
    size_t uiCount = 0;

    HWY_INLINE ChannelPairs load(size_t i) const { return splitPixels(hn::Load(du, auiPixels + i)); }
    HWY_INLINE ChannelPairs repeat(size_t i) const { return splitPixels(hn::Set(du, auiPixels[i])); }

    /// Fills up the last vector with the first pixel.
    HWY_INLINE void padWithFirst() { hn::StoreU(hn::Set(du, auiPixels[0]), du, auiPixels + uiCount); }
};

/// Stores whole vectors, as they are soon loaded again.
template <size_t uiWidth, size_t uiHeight>
HWY_INLINE void loadWindow(const uint32_t* HWY_RESTRICT pWindow, size_t uiPitch, PixelList<uiWidth * uiHeight>& window)
{
    constexpr size_t uiLanes = hn::MaxLanes(du);
    for (size_t i = 0; i < uiWidth * uiHeight; i += std::max(uiLanes, uiWidth))
    {
        const uint32_t* pRow = pWindow + i / uiWidth * uiPitch;
        if constexpr (uiLanes <= uiWidth)
        {
            for (size_t x = 0; x < uiWidth; x += uiLanes)
                hn::Store(hn::LoadU(du, pRow + x), du, window.auiPixels + i + x);
        }
        else if constexpr (uiLanes == 2 * uiWidth)
        {
            constexpr hn::Half<DU> dRow{};
            hn::Store(hn::Combine(du, hn::LoadU(dRow, pRow + uiPitch), hn::LoadU(dRow, pRow)), du, window.auiPixels + i);
        }
        else
        {
            for (size_t uiPlace = 0; uiPlace < uiLanes; uiPlace += uiWidth, pRow += uiPitch)
                std::memcpy(window.auiPixels + i + uiPlace, pRow, uiWidth * sizeof(uint32_t));
        }
    }
}

HWY_INLINE int32_t getGreatestLane(VI v)
{
    return hn::GetLane(hn::MaxOfLanes(di, v));
}

/// A pixel of a list by its number, and its squared distance from another.
struct FarPixel
{
    size_t uiNumber;
    int32_t iDistance;
};

/// @return one of the pixels farthest from another
template <size_t uiMost>
HWY_INLINE FarPixel findFarPixel(const PixelList<uiMost>& pixels, const ChannelPairs& from)
{
    // The number stands below the distance, which has 18 bits.
    constexpr int iNumberBits = 7;
    static_assert(uiMost <= 1 << iNumberBits);
    const VI numbers = hn::Iota(di, 0);
    VI greatest = hn::Zero(di);
    for (size_t i = 0; i < uiMost; i += hn::Lanes(di))
    {
        const VI distance = getSquaredLength(subtract(pixels.load(i), from));
        const VI number = hn::Add(numbers, hn::Set(di, static_cast<int32_t>(i)));
        greatest = hn::Max(greatest, hn::Or(hn::ShiftLeft<iNumberBits>(distance), number));
    }
    const int32_t iGreatest = getGreatestLane(greatest);
    return {static_cast<size_t>(iGreatest & ((1 << iNumberBits) - 1)), iGreatest >> iNumberBits};
}

/// A limit below the square of D - R, where both are given squared.
HWY_INLINE int32_t getLeastDistance(int32_t iSquaredPair, int32_t iSquaredRadius)
{
    const float fRest = std::sqrt(static_cast<float>(iSquaredPair)) - std::sqrt(static_cast<float>(iSquaredRadius));
    // The margin is far more than floats lose on numbers of up to 2^22.
    return fRest > 0.0f ? static_cast<int32_t>(fRest * fRest * 0.999f) - 2 : 0;
}

/// Picks the pixels that may belong to the farthest pair, or the first one if all are alike. Has no branches, so that a processor may
/// begin with the next window.
template <size_t uiMost>
HWY_NOINLINE void pickCandidates(const PixelList<uiMost>& pixels, PixelList<uiMost>& candidates)
{
    const ChannelPairs first = pixels.repeat(findFarPixel(pixels, pixels.repeat(0)).uiNumber);
    const FarPixel second = findFarPixel(pixels, first);
    // Distances from the middle are doubled, so that the middle is whole; squared, they count four times.
    const ChannelPairs middle = add(first, pixels.repeat(second.uiNumber));
    alignas(64) int32_t aiDistances[uiMost];
    VI greatest = hn::Zero(di);
    for (size_t i = 0; i < uiMost; i += hn::Lanes(di))
    {
        const VI distance = getSquaredLength(subtract(shiftLeft<1>(pixels.load(i)), middle));
        hn::Store(distance, di, aiDistances + i);
        greatest = hn::Max(greatest, distance);
    }

    const VI beforeLeast = hn::Set(di, getLeastDistance(4 * second.iDistance, getGreatestLane(greatest)) - 1);
    size_t uiCount = 0;
    for (size_t i = 0; i < uiMost; i += hn::Lanes(di))
    {
        const auto isCandidate = hn::RebindMask(du, hn::Gt(hn::Load(di, aiDistances + i), beforeLeast));
        hn::StoreU(hn::Compress(hn::Load(du, pixels.auiPixels + i), isCandidate), du, candidates.auiPixels + uiCount);
        uiCount += hn::CountTrue(du, isCandidate);
    }
    candidates.uiCount = second.iDistance == 0 ? 1 : uiCount;
    candidates.padWithFirst();
}

/// The first pair, in order, of the greatest distance; a single pixel is both.
///
/// Of every row of the table of distances all columns may be looked at, from the vector with the diagonal on: a column before the
/// diagonal has its twin in an earlier row, which then is the first. What fills up the last vector stands for column 0.
template <size_t uiMost>
HWY_NOINLINE void findFarthestPair(const PixelList<uiMost>& pixels, uint32_t& uiFirst, uint32_t& uiSecond)
{
    const size_t uiLanes = hn::Lanes(di);
    VI greatest = hn::Zero(di);
    VI firstRow = greatest;
    for (size_t i = 0; i < pixels.uiCount; ++i)
    {
        const ChannelPairs from = pixels.repeat(i);
        VI row = hn::Zero(di);
        for (size_t j = i / uiLanes * uiLanes; j < pixels.uiCount; j += uiLanes)
            row = hn::Max(row, getSquaredLength(subtract(pixels.load(j), from)));
        firstRow = hn::IfThenElse(hn::Gt(row, greatest), hn::Set(di, static_cast<int32_t>(i)), firstRow);
        greatest = hn::Max(greatest, row);
    }

    const VI distance = hn::MaxOfLanes(di, greatest);
    const VI rows = hn::IfThenElse(hn::Eq(greatest, distance), firstRow, hn::Set(di, static_cast<int32_t>(uiMost)));
    const auto uiRow = static_cast<size_t>(hn::GetLane(hn::MinOfLanes(di, rows)));
    const ChannelPairs from = pixels.repeat(uiRow);
    uiFirst = pixels.auiPixels[uiRow];
    for (size_t j = uiRow / uiLanes * uiLanes; j < pixels.uiCount; j += uiLanes)
    {
        const MI isFarthest = hn::Eq(getSquaredLength(subtract(pixels.load(j), from)), distance);
        if (hn::AllFalse(di, isFarthest))
            continue;
        uiSecond = pixels.auiPixels[j + static_cast<size_t>(hn::FindFirstTrue(di, isFarthest))];
        return;
    }
}

/// @tparam uiWidth, uiHeight  of a window
template <size_t uiWidth, size_t uiHeight>
HWY_INLINE void findStartingColours(CompressorImages& images, bool bOverlap)
{
    using List = PixelList<uiWidth * uiHeight>;
    CWindowRows rows(images, bOverlap);
    std::vector<List> candidates(k_uiRunBlocks);
    List window;
    for (uint32_t y = 0; y < images.uiBlocksY; ++y)
    {
        rows.fill(y);
        for (uint32_t x = 0; x < images.uiBlocksX; x += k_uiRunBlocks)
        {
            const uint32_t uiBlocks = std::min(k_uiRunBlocks, images.uiBlocksX - x);
            for (uint32_t i = 0; i < uiBlocks; ++i)
            {
                loadWindow<uiWidth, uiHeight>(rows.getWindow(x + i), rows.getPitch(), window);
                pickCandidates(window, candidates[i]);
            }
            for (uint32_t i = 0; i < uiBlocks; ++i)
            {
                uint32_t uiColourA = 0;
                uint32_t uiColourB = 0;
                findFarthestPair(candidates[i], uiColourA, uiColourB);
                orderByLuminance(uiColourA, uiColourB);
                images.colourA[images.getBlockIndex(x + i, y)] = uiColourA;
                images.colourB[images.getBlockIndex(x + i, y)] = uiColourB;
            }
        }
    }
}

} // namespace

void findStartingColoursOfWindows(CompressorImages& images, bool bOverlap)
{
    if (images.ui8BlockWidth == 8)
        bOverlap ? findStartingColours<16, 8>(images, true) : findStartingColours<8, 4>(images, false);
    else
        bOverlap ? findStartingColours<8, 8>(images, true) : findStartingColours<4, 4>(images, false);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(findStartingColoursOfWindows);

void findStartingColours(CompressorImages& images, bool bOverlap)
{
    HWY_DYNAMIC_DISPATCH(findStartingColoursOfWindows)(images, bOverlap);
}

} // namespace moxtexture
#endif
