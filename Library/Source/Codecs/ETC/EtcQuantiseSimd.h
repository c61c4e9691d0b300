// No include guard but this one: the file is read once for every instruction set.
#if defined(HALVANE_ETC_QUANTISE_SIMD) == defined(HWY_TARGET_TOGGLE)
#ifdef HALVANE_ETC_QUANTISE_SIMD
#undef HALVANE_ETC_QUANTISE_SIMD
#else
#define HALVANE_ETC_QUANTISE_SIMD
#endif

#include <algorithm>

#include <hwy/highway.h>

#include "Codecs/ETC/EtcQuantise.h"
#include "Codecs/ETC/EtcTryTablesSimd.h"

// The quantisers of EtcQuantise.h for the four halves of a block at once, with 5 bits a channel and with 4.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

using DU = hn::RebindToUnsigned<DI>;
constexpr DU du{};

// The lanes of the quantisers: the four halves with 5 bits a channel, then the four with 4.
constexpr size_t k_uiHalves = 4;
constexpr size_t k_uiQuantisers = 2 * k_uiHalves;

/// The highest level.
alignas(32) constexpr int32_t k_aiTopLevel[k_uiQuantisers] = {31, 31, 31, 31, 15, 15, 15, 15};
/// A level becomes a byte as level * factor / 4.
alignas(32) constexpr int32_t k_aiExpansion[k_uiQuantisers] = {33, 33, 33, 33, 68, 68, 68, 68};

/// The sums of the eight pixels of each half, twice.
struct HalfSums
{
    alignas(32) int32_t aai[3][k_uiQuantisers];
};

HWY_INLINE HalfSums sumHalves(const ColumnPixels& pixels)
{
    HalfSums sums;
    for (size_t c = 0; c < 3; ++c)
    {
        // Pairs down the columns: of each column the upper one and the lower one.
        int32_t aiPairs[8];
        for (size_t i = 0; i < 8; ++i)
            aiPairs[i] = pixels.aai[c][2 * i] + pixels.aai[c][2 * i + 1];
        const int32_t iTopLeft = aiPairs[0] + aiPairs[2];
        const int32_t iBottomLeft = aiPairs[1] + aiPairs[3];
        const int32_t iTopRight = aiPairs[4] + aiPairs[6];
        const int32_t iBottomRight = aiPairs[5] + aiPairs[7];
        const int32_t aiHalves[k_uiHalves] = {iTopLeft + iBottomLeft, iTopRight + iBottomRight, iTopLeft + iTopRight,
                                              iBottomLeft + iBottomRight};
        for (size_t i = 0; i < k_uiQuantisers; ++i)
            sums.aai[c][i] = aiHalves[i % k_uiHalves];
    }
    return sums;
}

/// Colours by quantiser.
struct QuantisedHalves
{
    alignas(32) uint32_t aui32Levels[k_uiQuantisers]; ///< red, green, blue in 8 bits each, red lowest
    alignas(32) int32_t aiRedGreen[k_uiQuantisers];   ///< bytes as in BasePairs
    alignas(32) int32_t aiBlue[k_uiQuantisers];
};

HWY_INLINE VI expandLevels(VI levels, VI expansion)
{
    return hn::ShiftRight<2>(hn::Mul(levels, expansion));
}

HWY_INLINE void storeColours(const VI (&aLevels)[3], const VI (&aBytes)[3], size_t i, QuantisedHalves& halves)
{
    const VI levels = hn::Or(aLevels[0], hn::Or(hn::ShiftLeft<8>(aLevels[1]), hn::ShiftLeft<16>(aLevels[2])));
    hn::Store(hn::BitCast(du, levels), du, halves.aui32Levels + i);
    hn::Store(hn::Or(aBytes[0], hn::ShiftLeft<16>(aBytes[1])), di, halves.aiRedGreen + i);
    hn::Store(aBytes[2], di, halves.aiBlue + i);
}

/// v / 2040, rounded down, for v below 2^16.
HWY_INLINE VI divideBy2040(VI v)
{
    const VI eighth = hn::ShiftRight<3>(v);
    return hn::ShiftRight<8>(hn::Add(hn::Add(eighth, hn::Set(di, 1)), hn::ShiftRight<8>(eighth)));
}

/// quantiseNearest555 and quantiseNearest444. A sum of eight bytes makes level * 2040.
HWY_INLINE void quantiseNearest(const HalfSums& sums, QuantisedHalves& halves)
{
    for (size_t i = 0; i < k_uiQuantisers; i += hn::Lanes(di))
    {
        const VI top = hn::Load(di, k_aiTopLevel + i);
        const VI expansion = hn::Load(di, k_aiExpansion + i);
        VI aLevels[3], aBytes[3];
        for (size_t c = 0; c < 3; ++c)
        {
            aLevels[c] = divideBy2040(hn::Add(hn::Mul(hn::Load(di, sums.aai[c] + i), top), hn::Set(di, 1020)));
            aBytes[c] = expandLevels(aLevels[c], expansion);
        }
        storeColours(aLevels, aBytes, i, halves);
    }
}

/// A choice between the low and the high level for every channel; bits 0 to 2 say which of red, green and blue are high.
constexpr int32_t k_aiChoices[8] = {0, 1, 2, 4, 3, 5, 6, 7};

/// quantiseCombined555 and quantiseCombined444, plain or perceptual.
template <bool kPerceptual>
HWY_INLINE void quantiseCombined(const HalfSums& sums, QuantisedHalves& halves)
{
    for (size_t i = 0; i < k_uiQuantisers; i += hn::Lanes(di))
    {
        const VI top = hn::Load(di, k_aiTopLevel + i);
        const VI expansion = hn::Load(di, k_aiExpansion + i);
        VI aLow[3], aHigh[3], aLowBytes[3], aHighBytes[3];
        VF aaErrors[2][3];
        for (size_t c = 0; c < 3; ++c)
        {
            const VI sum = hn::Load(di, sums.aai[c] + i);
            const auto error = [&](VI bytes) HWY_ATTR
            { return hn::Mul(hn::ConvertTo(df, hn::Sub(hn::ShiftLeft<3>(bytes), sum)), hn::Set(df, 0.125f)); };
            aLow[c] = divideBy2040(hn::Mul(sum, top));
            aHigh[c] = hn::Min(hn::Add(aLow[c], hn::Set(di, 1)), top);
            aLowBytes[c] = expandLevels(aLow[c], expansion);
            aHighBytes[c] = expandLevels(aHigh[c], expansion);
            aaErrors[0][c] = error(aLowBytes[c]);
            aaErrors[1][c] = error(aHighBytes[c]);
        }

        // The squares for red and green, red and blue, green and blue, each low or high.
        VF aaaSquares[3][2][2];
        for (size_t uiPair = 0; uiPair < 3; ++uiPair)
            for (size_t a = 0; a < 2; ++a)
                for (size_t b = 0; b < 2; ++b)
                {
                    const VF difference = hn::Sub(aaErrors[a][uiPair == 2 ? 1 : 0], aaErrors[b][uiPair == 0 ? 1 : 2]);
                    VF square = hn::Mul(difference, difference);
                    if constexpr (kPerceptual)
                        square = hn::Mul(hn::Set(df, k_afEtcHueWeights[uiPair]), square);
                    aaaSquares[uiPair][a][b] = square;
                }

        VF least = hn::Zero(df);
        VI choice = hn::Zero(di);
        for (size_t n = 0; n < 8; ++n)
        {
            const auto uiChoice = static_cast<size_t>(k_aiChoices[n]);
            const size_t uiRed = uiChoice & 1;
            const size_t uiGreen = uiChoice >> 1 & 1;
            const size_t uiBlue = uiChoice >> 2;
            const VF cost = hn::Add(hn::Add(aaaSquares[0][uiRed][uiGreen], aaaSquares[1][uiRed][uiBlue]), aaaSquares[2][uiGreen][uiBlue]);
            if (n == 0)
            {
                least = cost;
                continue;
            }
            const auto isLess = hn::Lt(cost, least);
            least = hn::IfThenElse(isLess, cost, least);
            choice = hn::IfThenElse(hn::RebindMask(di, isLess), hn::Set(di, k_aiChoices[n]), choice);
        }
        if constexpr (!kPerceptual)
        {
            VF lowSquares = hn::Zero(df);
            for (size_t c = 0; c < 3; ++c)
                lowSquares = hn::Add(lowSquares, hn::Mul(aaErrors[0][c], aaErrors[0][c]));
            const auto isHigh = hn::RebindMask(di, hn::Gt(lowSquares, hn::Set(df, k_fEtcGreyLimit)));
            const VI settled = hn::IfThenElse(isHigh, hn::Set(di, 7), hn::Zero(di));
            const auto isAlike = hn::Or(hn::Eq(choice, hn::Zero(di)), hn::Eq(choice, hn::Set(di, 7)));
            choice = hn::IfThenElse(hn::And(isAlike, hn::Eq(top, hn::Set(di, 15))), settled, choice);
        }

        VI aLevels[3], aBytes[3];
        for (size_t c = 0; c < 3; ++c)
        {
            const VI bit = hn::Set(di, 1 << c);
            const auto isHigh = hn::Eq(hn::And(choice, bit), bit);
            aLevels[c] = hn::IfThenElse(isHigh, aHigh[c], aLow[c]);
            aBytes[c] = hn::IfThenElse(isHigh, aHighBytes[c], aLowBytes[c]);
        }
        storeColours(aLevels, aBytes, i, halves);
    }
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#endif
