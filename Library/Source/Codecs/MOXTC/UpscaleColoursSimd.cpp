#include "Codecs/MOXTC/UpscaleColours.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/MOXTC/UpscaleColoursSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/MOXTC/CompressorLanesSimd.h"

// First down, one vector for several blocks: a line of colours a row of pixels. Then across the line, to the pixels between two of
// its entries. All sums are whole and none is negative, so it is the plain form's result in another order.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

#if HWY_TARGET == HWY_SCALAR

void upscaleBothColours(CompressorImages& images)
{
    upscaleColoursReference(images);
}

#else

namespace
{

constexpr size_t k_uiMostLanes = 16;
using LaneIndices = decltype(hn::SetTableIndices(du, static_cast<const int32_t*>(nullptr)));

/// Colours of the blocks of a row: the last, all in order, and the first again; then room for whole vectors.
using Line = std::vector<uint32_t>;

size_t getLineSize(uint32_t uiBlocksX)
{
    return size_t{uiBlocksX} + 2 + 2 * k_uiMostLanes;
}

void fillLine(const uint32_t* pColours, uint32_t uiBlocksX, Line& line)
{
    line[0] = pColours[uiBlocksX - 1];
    std::copy(pColours, pColours + uiBlocksX, line.begin() + 1);
    line[size_t{uiBlocksX} + 1] = pColours[0];
}

/// A line between two rows of blocks, its channels in pairs as ChannelPairs has them and multiplied by the block's height.
struct PairLine
{
    explicit PairLine(size_t uiSize) : redBlue(uiSize), greenAlpha(uiSize) {}

    Line redBlue;
    Line greenAlpha;
};

/// @param y  rows of pixels below the centres of the blocks of upper, less than the block's height
HWY_INLINE void blendDown(const Line& upper, const Line& lower, size_t y, uint32_t uiBlocksX, PairLine& line)
{
    const VH upperShare = hn::Set(dh, static_cast<int16_t>(k_uiGroupHeight - y));
    const VH lowerShare = hn::Set(dh, static_cast<int16_t>(y));
    for (size_t i = 0; i < size_t{uiBlocksX} + 2; i += hn::Lanes(du))
    {
        const ChannelPairs blended =
            add(multiply(splitPixels(hn::LoadU(du, &upper[i])), upperShare), multiply(splitPixels(hn::LoadU(du, &lower[i])), lowerShare));
        hn::StoreU(hn::BitCast(du, blended.redBlue), du, &line.redBlue[i]);
        hn::StoreU(hn::BitCast(du, blended.greenAlpha), du, &line.greenAlpha[i]);
    }
}

/// For a vector of pixels that begins uiPhase pixels after the centre of a block: which entries of the line they lie between,
/// counted from that block's, and the share of each.
template <size_t uiBlockWidth>
class CSpan
{
public:
    HWY_INLINE explicit CSpan(size_t uiPhase)
    {
        alignas(64) int32_t aiEntries[k_uiMostLanes];
        alignas(64) int32_t aiNextEntries[k_uiMostLanes];
        alignas(64) int32_t aiShares[k_uiMostLanes];
        for (size_t i = 0; i < hn::Lanes(di); ++i)
        {
            aiEntries[i] = static_cast<int32_t>((uiPhase + i) / uiBlockWidth);
            aiNextEntries[i] = aiEntries[i] + 1;
            aiShares[i] = static_cast<int32_t>((uiPhase + i) % uiBlockWidth);
        }
        m_Entries = hn::SetTableIndices(du, aiEntries);
        m_NextEntries = hn::SetTableIndices(du, aiNextEntries);
        m_NextShare = repeatInPairs(hn::Load(di, aiShares));
        m_Share = hn::Sub(hn::Set(dh, static_cast<int16_t>(uiBlockWidth)), m_NextShare);
    }

    /// Both from the block's entry of a line on.
    HWY_INLINE VU blendAcross(const uint32_t* HWY_RESTRICT pRedBlue, const uint32_t* HWY_RESTRICT pGreenAlpha) const
    {
        return hn::Or(blendPair(pRedBlue), hn::ShiftLeft<8>(blendPair(pGreenAlpha)));
    }

private:
    HWY_INLINE VU blendPair(const uint32_t* HWY_RESTRICT pLine) const
    {
        constexpr int iShift = uiBlockWidth == 8 ? 5 : 4; // width times height
        const VU entries = hn::LoadU(du, pLine);
        const VH here = hn::BitCast(dh, hn::TableLookupLanes(entries, m_Entries));
        const VH next = hn::BitCast(dh, hn::TableLookupLanes(entries, m_NextEntries));
        return hn::BitCast(du, hn::ShiftRight<iShift>(hn::Add(hn::Mul(here, m_Share), hn::Mul(next, m_NextShare))));
    }

    LaneIndices m_Entries;
    LaneIndices m_NextEntries;
    VH m_Share;
    VH m_NextShare;
};

template <size_t uiBlockWidth>
HWY_INLINE void blendRow(const PairLine& line, uint32_t uiWidth, uint32_t* HWY_RESTRICT pRow)
{
    constexpr size_t uiHalf = uiBlockWidth / 2;
    const size_t uiLanes = hn::Lanes(du);
    // The row begins in the middle of a block, half a block after the centre of the one before it. A vector that is half a block
    // wide begins in the middle and at the centre in turn.
    const CSpan<uiBlockWidth> even(uiHalf);
    const CSpan<uiBlockWidth> odd((uiHalf + uiLanes) % uiBlockWidth);
    bool bOdd = false;
    for (size_t x = 0; x < uiWidth; x += uiLanes, bOdd = !bOdd)
    {
        const size_t uiEntry = (x + uiHalf) / uiBlockWidth;
        const CSpan<uiBlockWidth>& span = bOdd ? odd : even;
        const VU pixels = span.blendAcross(&line.redBlue[uiEntry], &line.greenAlpha[uiEntry]);
        if (x + uiLanes <= uiWidth)
            hn::StoreU(pixels, du, pRow + x);
        else
        {
            alignas(64) uint32_t auiPixels[k_uiMostLanes];
            hn::Store(pixels, du, auiPixels);
            std::copy(auiPixels, auiPixels + (uiWidth - x), pRow + x);
        }
    }
}

template <size_t uiBlockWidth>
HWY_INLINE void upscale(const CompressorImages& images, const std::vector<uint32_t>& colours, std::vector<uint32_t>& upscaled)
{
    const size_t uiLineSize = getLineSize(images.uiBlocksX);
    Line upper(uiLineSize);
    Line lower(uiLineSize);
    PairLine line(uiLineSize);
    fillLine(colours.data(), images.uiBlocksX, lower);
    for (uint32_t uiBlockY = 0; uiBlockY < images.uiBlocksY; ++uiBlockY)
    {
        upper.swap(lower);
        fillLine(&colours[images.getBlockIndex(0, uiBlockY + 1 < images.uiBlocksY ? uiBlockY + 1 : 0)], images.uiBlocksX, lower);
        for (size_t y = 0; y < k_uiGroupHeight; ++y)
        {
            blendDown(upper, lower, y, images.uiBlocksX, line);
            const size_t uiRow = (size_t{uiBlockY} * k_uiGroupHeight + k_uiGroupHeight / 2 + y) % images.uiHeight;
            blendRow<uiBlockWidth>(line, images.uiWidth, &upscaled[uiRow * images.uiWidth]);
        }
    }
}

template <size_t uiBlockWidth>
HWY_INLINE void upscaleBoth(CompressorImages& images)
{
    upscale<uiBlockWidth>(images, images.colourA, images.upscaledA);
    upscale<uiBlockWidth>(images, images.colourB, images.upscaledB);
}

} // namespace

void upscaleBothColours(CompressorImages& images)
{
    if (images.getBlockCount() == 0)
        return;
    if (images.ui8BlockWidth == 8)
        upscaleBoth<8>(images);
    else
        upscaleBoth<4>(images);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(upscaleBothColours);

void upscaleColours(CompressorImages& images)
{
    HWY_DYNAMIC_DISPATCH(upscaleBothColours)(images);
}

} // namespace moxtexture
#endif
