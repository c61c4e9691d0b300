#include <algorithm>
#include <vector>

#include "Core/ByteOrder.h"
#include "Pixels/Dither.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Pixels/DitherSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

#if HWY_TARGET == HWY_SCALAR

bool DitherSlices(uint8_t*, const DitherBits&, size_t, size_t, size_t)
{
    return false;
}

#else

namespace hn = hwy::HWY_NAMESPACE;

using D16 = hn::ScalableTag<int16_t>;
using DU16 = hn::RebindToUnsigned<D16>;
using D8 = hn::Rebind<uint8_t, D16>;
using D32 = hn::Repartition<uint32_t, D16>;
using D64 = hn::Repartition<uint64_t, D16>;
using V16 = hn::Vec<D16>;

HWY_INLINE V16 Clamp(V16 values)
{
    return hn::Min(hn::Max(values, hn::Zero(D16())), hn::Set(D16(), 255));
}

/// Errors wander to the right and down, so that a pixel can be finished as soon as its left, upper left and upper neighbours are.
/// A vector holds one pixel (four channels) of each of some rows, every row one pixel behind the row above: a pixel's upper
/// neighbour was in the vector before, in the next row's place. Such bands of rows are done from top to bottom.
///
/// What a pixel receives arrives in the order upper left, left, above, each clamped, as it does column by column.
class CBandDither
{
public:
    CBandDither(const DitherBits& auiBits, size_t uiWidth, size_t uiHeight)
        : m_uiRows(hn::Lanes(D16()) / 4), m_uiWidth(uiWidth), m_Above(uiHeight > m_uiRows ? uiWidth : 0)
    {
        for (size_t i = 0; i < HWY_MAX_BYTES / sizeof(uint16_t); ++i)
        {
            const unsigned int uiKept = auiBits[i % 4];
            const bool bCut = uiKept >= 1 && uiKept <= 7;
            m_aui16Mask[i] = static_cast<uint16_t>(bCut ? 0x100 - (1 << (8 - uiKept)) : 0xFF);
            m_aui16Factor[i] = static_cast<uint16_t>(bCut ? 1 << (16 - uiKept) : 0); // its high product shifts right by uiKept
        }
        // Each pixel from the row above it in the vector; the first one's is put in by hand.
        for (uint32_t i = 0; i < HWY_MAX_BYTES / sizeof(uint32_t); ++i)
            m_aui32RowAbove[i] = i < 2 ? i : i - 2;
    }

    void ditherSlice(uint8_t* pSlice, size_t uiHeight)
    {
        std::fill(m_Above.begin(), m_Above.end(), 0);
        for (size_t y = 0; y < uiHeight; y += m_uiRows)
            ditherBand(pSlice + y * m_uiWidth * 4, std::min(m_uiRows, uiHeight - y));
    }

private:
    static constexpr size_t k_uiSteps = 256; ///< pixels of a row that are brought into place at a time

    void ditherBand(uint8_t* pBand, size_t uiRows)
    {
        for (auto* pErrors : {m_ai16Left, m_ai16Down, m_ai16UpperLeft})
            hn::Store(hn::Zero(D16()), D16(), pErrors);
        const size_t uiSteps = m_uiWidth + m_uiRows - 1;
        for (size_t uiFirst = 0; uiFirst < uiSteps; uiFirst += k_uiSteps)
        {
            const size_t uiCount = std::min(k_uiSteps, uiSteps - uiFirst);
            // Places beyond the picture hold black, which stays black until the row's end and gives no error.
            std::fill_n(m_aui8Pixels, uiCount * m_uiRows * 4, uint8_t{0});
            forEachPixel(pBand, uiRows, uiFirst, uiCount,
                         [](uint8_t* pPixel, uint8_t* pPlace) { storeLE(pPlace, loadLE<uint32_t>(pPixel)); });
            ditherSteps(uiFirst, uiCount);
            forEachPixel(pBand, uiRows, uiFirst, uiCount,
                         [](uint8_t* pPixel, uint8_t* pPlace) { storeLE(pPixel, loadLE<uint32_t>(pPlace)); });
        }
    }

    template <typename Visit>
    void forEachPixel(uint8_t* pBand, size_t uiRows, size_t uiFirst, size_t uiCount, Visit visit)
    {
        for (size_t uiRow = 0; uiRow < uiRows; ++uiRow)
        {
            const size_t uiBegin = std::max(uiFirst, uiRow);
            const size_t uiEnd = std::min(uiFirst + uiCount, m_uiWidth + uiRow);
            uint8_t* pRow = pBand + uiRow * m_uiWidth * 4;
            for (size_t uiStep = uiBegin; uiStep < uiEnd; ++uiStep)
                visit(pRow + (uiStep - uiRow) * 4, m_aui8Pixels + ((uiStep - uiFirst) * m_uiRows + uiRow) * 4);
        }
    }

    void ditherSteps(size_t uiFirst, size_t uiCount)
    {
        const D16 d;
        const auto mask = hn::Load(DU16(), m_aui16Mask);
        const auto factor = hn::Load(DU16(), m_aui16Factor);
        const auto rowAbove = hn::SetTableIndices(D32(), m_aui32RowAbove);
        const auto firstRow = hn::FirstN(d, 4);
        const auto three = hn::Set(d, 3);
        const bool bAbove = !m_Above.empty();
        auto left = hn::Load(d, m_ai16Left);
        auto down = hn::Load(d, m_ai16Down);
        auto upperLeft = hn::Load(d, m_ai16UpperLeft);

        for (size_t i = 0; i < uiCount; ++i)
        {
            const size_t uiStep = uiFirst + i;
            const uint64_t ui64First = bAbove && uiStep < m_uiWidth ? m_Above[uiStep] : 0;
            const auto shifted = hn::BitCast(d, hn::TableLookupLanes(hn::BitCast(D32(), down), rowAbove));
            const auto above = hn::IfThenElse(firstRow, hn::BitCast(d, hn::Set(D64(), ui64First)), shifted);

            uint8_t* pPlace = m_aui8Pixels + i * m_uiRows * 4;
            auto value = hn::PromoteTo(d, hn::LoadU(D8(), pPlace));
            value = Clamp(hn::Add(value, upperLeft));
            value = Clamp(hn::Add(value, left));
            value = Clamp(hn::Add(value, above));
            const auto bits = hn::BitCast(DU16(), value);
            const auto shown = hn::BitCast(d, hn::Add(hn::And(bits, mask), hn::MulHigh(bits, factor)));
            hn::StoreU(hn::DemoteTo(D8(), shown), D8(), pPlace);

            const auto error = hn::Sub(value, shown);
            const auto sign = hn::ShiftRight<15>(error);
            left = hn::ShiftRight<1>(hn::Sub(error, sign));
            down = hn::ShiftRight<2>(hn::Add(error, hn::And(sign, three)));
            upperLeft = above;

            if (bAbove && uiStep + 1 >= m_uiRows)
            {
                hn::Store(hn::BitCast(D64(), down), D64(), m_aui64Down);
                m_Above[uiStep + 1 - m_uiRows] = m_aui64Down[m_uiRows - 1];
            }
        }
        hn::Store(left, d, m_ai16Left);
        hn::Store(down, d, m_ai16Down);
        hn::Store(upperLeft, d, m_ai16UpperLeft);
    }

    HWY_ALIGN_MAX uint16_t m_aui16Mask[HWY_MAX_BYTES / sizeof(uint16_t)];
    HWY_ALIGN_MAX uint16_t m_aui16Factor[HWY_MAX_BYTES / sizeof(uint16_t)];
    HWY_ALIGN_MAX uint32_t m_aui32RowAbove[HWY_MAX_BYTES / sizeof(uint32_t)];
    HWY_ALIGN_MAX uint64_t m_aui64Down[HWY_MAX_BYTES / sizeof(uint64_t)];
    // What the last vector gives to the next: errors to the right, errors down, errors that came from above.
    HWY_ALIGN_MAX int16_t m_ai16Left[HWY_MAX_BYTES / sizeof(int16_t)];
    HWY_ALIGN_MAX int16_t m_ai16Down[HWY_MAX_BYTES / sizeof(int16_t)];
    HWY_ALIGN_MAX int16_t m_ai16UpperLeft[HWY_MAX_BYTES / sizeof(int16_t)];
    uint8_t m_aui8Pixels[k_uiSteps * HWY_MAX_BYTES / 2];
    size_t m_uiRows;
    size_t m_uiWidth;
    std::vector<uint64_t> m_Above; ///< what the last row of the band above gives down, four channels a pixel
};

/// @return false where there are no vectors
bool DitherSlices(uint8_t* pData, const DitherBits& auiBits, size_t uiWidth, size_t uiHeight, size_t uiDepth)
{
    CBandDither dither(auiBits, uiWidth, uiHeight);
    for (size_t z = 0; z < uiDepth; ++z)
        dither.ditherSlice(pData + z * uiWidth * uiHeight * 4, uiHeight);
    return true;
}

#endif

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(DitherSlices);

void ditherSurface(uint8_t* pData, MOXPixelWord newFormat, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth)
{
    const DitherBits auiBits = getDitherBits(newFormat);
    const bool bAny = std::any_of(auiBits.begin(), auiBits.end(), [](uint8_t uiKept) { return uiKept >= 1 && uiKept <= 7; });
    if (pData == nullptr || !bAny || uiWidth == 0 || uiHeight == 0)
        return;
    if (!HWY_DYNAMIC_DISPATCH(DitherSlices)(pData, auiBits, uiWidth, uiHeight, uiDepth))
        ditherSurfaceReference(pData, newFormat, uiWidth, uiHeight, uiDepth);
}

} // namespace moxtexture
#endif
