#include "Codecs/MOXTC/Block/BlendCells.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/MOXTC/Block/BlendCellsSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef HALVANE_BLEND_CELLS_ONCE
#define HALVANE_BLEND_CELLS_ONCE
namespace moxtexture
{

constexpr size_t k_uiChannels = 4;

/// Constants of a row of pixels of a cell, one 16-bit lane a channel.
///
/// Lanes hold W times a colour while they go across, W the block's width, and 4 W times one after going down: 32 * 31 at most.
template <bool k2bpp, bool kII>
struct BlendLanes
{
    static constexpr size_t kWidth = getBlockWidth(k2bpp);
    static constexpr size_t kLanes = kWidth * k_uiChannels;

    /// What the left and the right block give to a pixel: of a smooth cell, and of a hard one.
    alignas(64) int16_t aai16Left[2][kLanes];
    alignas(64) int16_t aai16Right[2][kLanes];

    /// The colour's high bits to below its low ones, by the upper half of a product. The shift that brings the others in place is
    /// the same for all channels, because alphas are doubled.
    alignas(64) int16_t ai16HighBits[kLanes];

    /// From a pixel's weight to its lanes; the flag goes to the upper byte of those that it clears.
    alignas(64) uint8_t aui8SpreadWeights[2 * kLanes];
};

template <bool k2bpp, bool kII>
constexpr BlendLanes<k2bpp, kII> makeBlendLanes()
{
    BlendLanes<k2bpp, kII> lanes{};
    constexpr auto kWidth = static_cast<uint32_t>(lanes.kWidth);
    constexpr uint8_t kZero = 0x80;
    for (uint32_t i = 0; i < lanes.kLanes; ++i)
    {
        const uint32_t x = i / k_uiChannels;
        const bool bAlpha = i % k_uiChannels == 3;
        lanes.aai16Left[0][i] = static_cast<int16_t>(kWidth - x);
        lanes.aai16Right[0][i] = static_cast<int16_t>(x);
        lanes.aai16Left[1][i] = static_cast<int16_t>(x < kWidth / 2 ? kWidth : 0);
        lanes.aai16Right[1][i] = static_cast<int16_t>(x < kWidth / 2 ? 0 : kWidth);
        // 4bpp: v >> 6 for colours, v >> 5 for doubled alphas. 2bpp: one more.
        lanes.ai16HighBits[i] = static_cast<int16_t>((bAlpha ? 2048 : 1024) >> (k2bpp ? 1 : 0));
        const bool bCleared = !k2bpp && (bAlpha || kII);
        lanes.aui8SpreadWeights[2 * i] = static_cast<uint8_t>(x);
        lanes.aui8SpreadWeights[2 * i + 1] = bCleared ? static_cast<uint8_t>(x) : kZero;
    }
    return lanes;
}

template <bool k2bpp, bool kII>
constexpr BlendLanes<k2bpp, kII> k_blendLanes = makeBlendLanes<k2bpp, kII>();

} // namespace moxtexture
#endif

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

#if HWY_TARGET == HWY_SCALAR

// One lane does not make a pixel.
void blendRow(const CellRow& row, bool b2bpp, bool bII)
{
    blendCellsReference(row, b2bpp, bII);
}

#else

namespace hn = hwy::HWY_NAMESPACE;

/// A row of pixels of a cell, or as much of it as one vector holds.
template <bool k2bpp>
using DLanes = hn::CappedTag<int16_t, getBlockWidth(k2bpp) * k_uiChannels>;

/// Both colours of a block, one below the other, each in all pixels of a vector.
template <class D>
struct BlockColumn
{
    hn::Vec<D> upperA;
    hn::Vec<D> upperB;
    hn::Vec<D> downA; ///< from upper to lower
    hn::Vec<D> downB;
};

template <class D>
HWY_INLINE hn::Vec<D> loadColour(D d, const uint16_t* pColour)
{
    return hn::BitCast(d, hn::Set(hn::Repartition<uint64_t, D>(), loadLE<uint64_t>(pColour)));
}

template <class D>
HWY_INLINE BlockColumn<D> loadColumn(D d, const uint16_t* pUpper, const uint16_t* pLower)
{
    const auto upperA = loadColour(d, pUpper);
    const auto upperB = loadColour(d, pUpper + k_uiChannels);
    return {upperA, upperB, hn::Sub(loadColour(d, pLower), upperA), hn::Sub(loadColour(d, pLower + k_uiChannels), upperB)};
}

/// To 8 bits a channel.
template <bool k2bpp, class D, class V = hn::Vec<D>>
HWY_INLINE V expand(D, V sum, V highBits)
{
    return hn::Add(hn::ShiftRight < k2bpp ? 2 : 1 > (sum), hn::MulHigh(sum, highBits));
}

/// Blends the pixels of one vector, of which pWeights has those of the cell's row, and writes them to pPixels.
template <bool k2bpp, class D, class V = hn::Vec<D>>
HWY_INLINE void blendPixels(D d, V sumA, V sumB, V highBits, hn::Vec<hn::Repartition<uint8_t, D>> spreadWeights, const uint8_t* pWeights,
                            uint8_t* HWY_RESTRICT pPixels)
{
    const hn::Repartition<uint8_t, D> dBytes;
    const hn::Repartition<uint64_t, D> dRows;
    const hn::Rebind<uint8_t, D> dPixels;
    const V a = expand<k2bpp>(d, sumA, highBits);
    const V b = expand<k2bpp>(d, sumB, highBits);
    const auto rowWeights = hn::BitCast(dBytes, hn::Set(dRows, loadLE<uint64_t>(pWeights)));
    const V weights = hn::BitCast(d, hn::TableLookupBytesOr0(rowWeights, spreadWeights));

    // (8 - w) a + w b is 8 a + w (b - a), and the eighth of 8 a has no remainder.
    const V weight = k2bpp ? weights : hn::And(weights, hn::Set(d, k_ui8PunchThroughBit - 1));
    V pixels = hn::Add(a, hn::ShiftRight<3>(hn::Mul(hn::Sub(b, a), weight)));
    if (!k2bpp)
        pixels = hn::AndNot(hn::BroadcastSignBit(weights), pixels);
    hn::StoreU(hn::DemoteTo(dPixels, pixels), dPixels, pPixels);
}

template <bool k2bpp, bool kII>
void blendRowOf(const CellRow& row)
{
    using D = DLanes<k2bpp>;
    using V = hn::Vec<D>;
    constexpr size_t kWidth = getBlockWidth(k2bpp);
    constexpr size_t kLanes = hn::MaxLanes(D());
    constexpr size_t kVectors = kWidth * k_uiChannels / kLanes;
    const D d;
    const hn::Repartition<uint8_t, D> dBytes;
    const BlendLanes<k2bpp, kII>& constants = k_blendLanes<k2bpp, kII>;

    const uint16_t* const pUpper = row.pUpper->aaui16Colours[0].data();
    const uint16_t* const pLower = row.pLower->aaui16Colours[0].data();
    const uint32_t* const pHard = row.pUpper->aui32Hard.data();
    const auto [pWeights0, pWeights1, pWeights2, pWeights3] = row.apWeights;
    const auto [pPixels0, pPixels1, pPixels2, pPixels3] = row.apPixels;

    BlockColumn<D> left = loadColumn(d, pUpper, pLower);
    for (size_t uiCell = 0; uiCell < row.uiCellCount; ++uiCell)
    {
        const size_t uiNext = (uiCell + 1) * 2 * k_uiChannels;
        const BlockColumn<D> right = loadColumn(d, pUpper + uiNext, pLower + uiNext);
        const size_t uiHard = kII ? pHard[uiCell] : 0;
        const V isSmooth = hn::Set(d, static_cast<int16_t>(uiHard == 0 ? -1 : 0));
        const V middleSteps = hn::Set(d, static_cast<int16_t>(uiHard == 0 ? 1 : k_uiBlockHeight));

        for (size_t uiVector = 0; uiVector < kVectors; ++uiVector)
        {
            const size_t uiLane = uiVector * kLanes;
            const V leftPart = hn::Load(d, constants.aai16Left[uiHard] + uiLane);
            const V rightPart = hn::Load(d, constants.aai16Right[uiHard] + uiLane);
            const auto across = [&](V l, V r) { return hn::Add(hn::Mul(l, leftPart), hn::Mul(r, rightPart)); };
            V sumA = hn::ShiftLeft<2>(across(left.upperA, right.upperA));
            V sumB = hn::ShiftLeft<2>(across(left.upperB, right.upperB));

            // Down a smooth cell in four equal steps, down a hard one in the middle at once.
            const V downA = across(left.downA, right.downA);
            const V downB = across(left.downB, right.downB);
            const V outerDownA = kII ? hn::And(downA, isSmooth) : downA;
            const V outerDownB = kII ? hn::And(downB, isSmooth) : downB;
            const V innerDownA = kII ? hn::Mul(downA, middleSteps) : downA;
            const V innerDownB = kII ? hn::Mul(downB, middleSteps) : downB;

            const V highBits = hn::Load(d, constants.ai16HighBits + uiLane);
            const auto spreadWeights = hn::Load(dBytes, constants.aui8SpreadWeights + 2 * uiLane);
            const size_t uiPixelByte = uiCell * kWidth * k_uiChannels + uiLane;
            const auto blend = [&](const uint8_t* pWeights, uint8_t* pPixels)
            { blendPixels<k2bpp>(d, sumA, sumB, highBits, spreadWeights, pWeights + uiCell * kWidth, pPixels + uiPixelByte); };
            const auto stepDown = [&](V a, V b)
            {
                sumA = hn::Add(sumA, a);
                sumB = hn::Add(sumB, b);
            };
            blend(pWeights0, pPixels0);
            stepDown(outerDownA, outerDownB);
            blend(pWeights1, pPixels1);
            stepDown(innerDownA, innerDownB);
            blend(pWeights2, pPixels2);
            stepDown(outerDownA, outerDownB);
            blend(pWeights3, pPixels3);
        }
        left = right;
    }
}

void blendRow(const CellRow& row, bool b2bpp, bool bII)
{
    if (bII)
        b2bpp ? blendRowOf<true, true>(row) : blendRowOf<false, true>(row);
    else
        b2bpp ? blendRowOf<true, false>(row) : blendRowOf<false, false>(row);
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(blendRow);

void blendCells(const CellRow& row, bool b2bpp, bool bII)
{
    HWY_DYNAMIC_DISPATCH(blendRow)(row, b2bpp, bII);
}

} // namespace moxtexture
#endif
