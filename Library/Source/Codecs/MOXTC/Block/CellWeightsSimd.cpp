#include "Codecs/MOXTC/Block/CellWeights.h"

#include "Codecs/MOXTC/Block/Modulation.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/MOXTC/Block/CellWeightsSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

#if HWY_TARGET == HWY_SCALAR

// Lanes of one byte don't make pairs.
void interpolateRows(const BlockStrip& upper, const BlockStrip& lower, size_t uiCellCount, CellWeights& weights)
{
    interpolateWeightsReference(upper, lower, uiCellCount, weights);
}

#else

namespace hn = hwy::HWY_NAMESPACE;

// No more than the room past the last pixel of a strip.
using DBytes = hn::CappedTag<uint8_t, 64>;

void interpolateRows(const BlockStrip& upper, const BlockStrip& lower, size_t uiCellCount, CellWeights& weights)
{
    const DBytes d;
    const hn::Repartition<uint16_t, DBytes> dPairs;
    const CellWeightRows rows(upper, lower);
    for (size_t j = 0; j < k_uiBlockHeight; ++j)
    {
        const uint8_t* HWY_RESTRICT pAbove = rows.ap[j];
        const uint8_t* HWY_RESTRICT pRow = rows.ap[j + 1];
        const uint8_t* HWY_RESTRICT pBelow = rows.ap[j + 2];
        const uint8_t* HWY_RESTRICT pModes = (j < k_uiBlockHeight / 2 ? upper : lower).aui8Modes.data();
        uint8_t* HWY_RESTRICT pWeights = weights.aaui8[j].data();

        // Odd columns of even rows are not stored, and even columns of odd rows. A cell begins in an even column.
        const auto notStored = hn::BitCast(d, hn::Set(dPairs, static_cast<uint16_t>(j % 2 == 0 ? 0xFF00 : 0x00FF)));
        for (size_t i = 0; i < uiCellCount * k_uiMaxBlockWidth; i += hn::Lanes(d))
        {
            const size_t x = i + k_uiMaxBlockWidth / 2;
            const auto left = hn::LoadU(d, pRow + x - 1);
            const auto right = hn::LoadU(d, pRow + x + 1);
            const auto above = hn::LoadU(d, pAbove + x);
            const auto below = hn::LoadU(d, pBelow + x);
            const auto sum = hn::Add(hn::Add(left, right), hn::Add(above, below));
            const auto bothAxes = hn::ShiftRight<2>(hn::Add(sum, hn::Set(d, 2)));

            const auto mode = hn::And(hn::LoadU(d, pModes + x), notStored);
            auto weight = hn::LoadU(d, pRow + x);
            weight = hn::IfThenElse(hn::Eq(mode, hn::Set(d, k_ui8ModeBothAxes)), bothAxes, weight);
            weight = hn::IfThenElse(hn::Eq(mode, hn::Set(d, k_ui8ModeHorizontal)), hn::AverageRound(left, right), weight);
            weight = hn::IfThenElse(hn::Eq(mode, hn::Set(d, k_ui8ModeVertical)), hn::AverageRound(above, below), weight);
            hn::StoreU(weight, d, pWeights + i);
        }
    }
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(interpolateRows);

void interpolateWeights(const BlockStrip& upper, const BlockStrip& lower, size_t uiCellCount, CellWeights& weights)
{
    HWY_DYNAMIC_DISPATCH(interpolateRows)(upper, lower, uiCellCount, weights);
}

} // namespace moxtexture
#endif
