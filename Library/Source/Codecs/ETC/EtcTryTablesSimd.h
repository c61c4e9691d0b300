// No include guard but this one: the file is read once for every instruction set.
#if defined(HALVANE_ETC_TRY_TABLES_SIMD) == defined(HWY_TARGET_TOGGLE)
#ifdef HALVANE_ETC_TRY_TABLES_SIMD
#undef HALVANE_ETC_TRY_TABLES_SIMD
#else
#define HALVANE_ETC_TRY_TABLES_SIMD
#endif

#include <algorithm>

#include <hwy/highway.h>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"
#include "Codecs/ETC/EtcTables.h"
#include "Codecs/ETC/EtcTryTables.h"

// The search of EtcTryTables.h in two steps. First the eight tables in lanes, pixel by pixel, for their sums alone; then the
// sixteen pixels in lanes, with the table that won, for the indices.
//
// For sources that give the same results as trying candidate by candidate.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

using DI = hn::CappedTag<int32_t, 8>;
using DF = hn::RebindToFloat<DI>;
using VI = hn::Vec<DI>;
using VF = hn::Vec<DF>;

constexpr DI di{};
constexpr DF df{};

constexpr size_t k_uiTables = 8;
constexpr size_t k_uiPositions = 4;

/// The weights of the perceptual measure.
constexpr float k_afWeights[3] = {0.299f, 0.587f, 0.114f};

/// Two equal numbers of 16 bits in a lane.
constexpr int32_t twice(int32_t iValue)
{
    return static_cast<int32_t>((static_cast<uint32_t>(iValue) & 0xFFFF) * 0x10001);
}

/// What a pixel may choose from, a row for each choice: the modifier in pairs, by table.
template <size_t kChoices>
struct ModifierPairs
{
    alignas(32) int32_t aai[kChoices][k_uiTables];
};

/// EtcTables.h's modifiers.
constexpr ModifierPairs<k_uiPositions> makeModifierPairs()
{
    ModifierPairs<k_uiPositions> pairs{};
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
        for (size_t uiPosition = 0; uiPosition < k_uiPositions; ++uiPosition)
            pairs.aai[uiPosition][uiTable] = twice(k_aaiEtcModifiers[uiTable][uiPosition]);
    return pairs;
}

constexpr ModifierPairs<k_uiPositions> k_modifierPairs = makeModifierPairs();

/// A base colour in two lanes of pairs of 16 bits: red and green, blue and nothing (whose weight is 0 everywhere).
struct BasePairs
{
    int32_t iRedGreen;
    int32_t iBlue;
};

/// @param bytes  red, green, blue: three whole numbers
template <typename Bytes>
HWY_INLINE BasePairs makeBasePairs(const Bytes& bytes)
{
    const auto channel = [&](size_t c) HWY_ATTR { return static_cast<uint32_t>(bytes[c]); };
    return {static_cast<int32_t>(channel(0) | channel(1) << 16), static_cast<int32_t>(channel(2))};
}

/// A block's pixels column by column, as the index bits stand.
struct ColumnPixels
{
    alignas(32) int32_t aai[3][16]; ///< red, green, blue
};

HWY_INLINE ColumnPixels orderByColumns(const EtcPixels& pixels)
{
    ColumnPixels columns;
    for (size_t x = 0; x < 4; ++x)
        for (size_t y = 0; y < 4; ++y)
        {
            columns.aai[0][x * 4 + y] = pixels.aui8Red[y * 4 + x];
            columns.aai[1][x * 4 + y] = pixels.aui8Green[y * 4 + x];
            columns.aai[2][x * 4 + y] = pixels.aui8Blue[y * 4 + x];
        }
    return columns;
}

/// Where a half's pixels stand in that order: four pairs.
struct HalfPlace
{
    size_t uiFirst; ///< of the first pair
    size_t uiStep;  ///< from one pair to the next
};

HWY_INLINE HalfPlace placeOf(EEtcHalf eHalf)
{
    constexpr HalfPlace k_aPlaces[] = {{0, 2}, {8, 2}, {0, 4}, {2, 4}};
    return k_aPlaces[eHalf];
}

/// Calls visit(index) for a half's pixels in their order.
template <typename Visit>
HWY_INLINE void forEachOfHalf(EEtcHalf eHalf, Visit visit)
{
    const HalfPlace place = placeOf(eHalf);
    for (size_t uiPair = 0; uiPair < 4; ++uiPair)
    {
        visit(place.uiFirst + uiPair * place.uiStep);
        visit(place.uiFirst + uiPair * place.uiStep + 1);
    }
}

/// A bit for each lane, the first lowest.
template <class D>
HWY_INLINE uint32_t maskBits(D d, hn::Mask<D> mask)
{
    uint8_t aui8Bits[8] = {};
    hn::StoreMaskBits(d, mask, aui8Bits);
    return aui8Bits[0];
}

/// Two numbers of 16 bits in a lane.
HWY_INLINE VI packPair(VI low, VI high)
{
    return hn::Or(hn::And(low, hn::Set(di, 0xFFFF)), hn::ShiftLeft<16>(high));
}

#if HWY_TARGET == HWY_SCALAR

HWY_INLINE VI lowOfPair(VI v)
{
    return hn::ShiftRight<16>(hn::ShiftLeft<16>(v));
}

template <typename Operation>
HWY_INLINE VI onPairs(VI a, VI b, Operation operation)
{
    return packPair(operation(lowOfPair(a), lowOfPair(b)), operation(hn::ShiftRight<16>(a), hn::ShiftRight<16>(b)));
}

HWY_INLINE VI addPairProducts(VI sum, VI a, VI b)
{
    const VI low = hn::Mul(lowOfPair(a), lowOfPair(b));
    return hn::Add(sum, hn::Add(low, hn::Mul(hn::ShiftRight<16>(a), hn::ShiftRight<16>(b))));
}

#else

template <typename Operation>
HWY_INLINE VI onPairs(VI a, VI b, Operation operation)
{
    const hn::Repartition<int16_t, DI> d16;
    return hn::BitCast(di, operation(hn::BitCast(d16, a), hn::BitCast(d16, b)));
}

/// sum + low of a * low of b + high of a * high of b.
HWY_INLINE VI addPairProducts(VI sum, VI a, VI b)
{
    const hn::Repartition<int16_t, DI> d16;
    VI rest = hn::Zero(di);
    const VI products = hn::ReorderWidenMulAccumulate(di, hn::BitCast(d16, a), hn::BitCast(d16, b), hn::Zero(di), rest);
    return hn::Add(sum, hn::RearrangeToOddPlusEven(products, rest));
}

#endif

HWY_INLINE VI addPairs(VI a, VI b)
{
    return onPairs(a, b, [](auto x, auto y) HWY_ATTR { return hn::Add(x, y); });
}

HWY_INLINE VI multiplyPairs(VI a, VI b)
{
    return onPairs(a, b, [](auto x, auto y) HWY_ATTR { return hn::Mul(x, y); });
}

HWY_INLINE VI clampPairsToBytes(VI v)
{
    const VI positive = onPairs(v, hn::Zero(di), [](auto x, auto y) HWY_ATTR { return hn::Max(x, y); });
    return onPairs(positive, hn::Set(di, twice(255)), [](auto x, auto y) HWY_ATTR { return hn::Min(x, y); });
}

/// Whole weights of the squares of red, green and blue; below 128, so that their products with bytes have 16 bits.
struct PlainWeights
{
    static constexpr int32_t k_iRed = 1;
    static constexpr int32_t k_iGreen = 1;
    static constexpr int32_t k_iBlue = 1;
};

/// Near 0.299, 0.587 and 0.114, and quicker than floats: 55 / 0.299 = 183.95, 108 / 0.587 = 183.99, 21 / 0.114 = 184.21, so a sum
/// with these is 183.94 to 184.22 times the exact one.
struct NearWeights
{
    static constexpr int32_t k_iRed = 55;
    static constexpr int32_t k_iGreen = 108;
    static constexpr int32_t k_iBlue = 21;
};

/// What no sum with NearWeights is above, for an exact one of 1.
constexpr double k_fMostNear = 184.22;

/// How far apart two sums with NearWeights must lie so that the exact ones differ likewise: 1/512 of the lesser. The exact sums'
/// own rounding is far below what that leaves.
HWY_INLINE uint32_t leastCertainAbove(uint32_t uiNear)
{
    return uiNear + (uiNear >> 9) + 1;
}

/// A block's pixels as the search for tables wants them: w (p - c)^2 = w p^2 + w c^2 + (-2 p) (w c).
template <typename Weights>
struct SearchPixels
{
    alignas(32) int32_t aiRedGreen[16]; ///< pairs of -2 p
    alignas(32) int32_t aiBlue[16];     ///< -2 p
    alignas(32) int32_t aiSquares[16];  ///< of all channels, weighted

    HWY_INLINE explicit SearchPixels(const ColumnPixels& pixels)
    {
        for (size_t i = 0; i < 16; i += hn::Lanes(di))
        {
            const VI redGreen = packPair(hn::Load(di, pixels.aai[0] + i), hn::Load(di, pixels.aai[1] + i));
            const VI blue = hn::Load(di, pixels.aai[2] + i);
            const VI weightedRedGreen = multiplyPairs(redGreen, hn::Set(di, Weights::k_iRed | Weights::k_iGreen << 16));
            const VI weightedBlue = multiplyPairs(blue, hn::Set(di, Weights::k_iBlue));
            const VI squares = addPairProducts(hn::Zero(di), redGreen, weightedRedGreen);
            hn::Store(addPairProducts(squares, blue, weightedBlue), di, aiSquares + i);
            hn::Store(multiplyPairs(redGreen, hn::Set(di, twice(-2))), di, aiRedGreen + i);
            hn::Store(multiplyPairs(blue, hn::Set(di, twice(-2))), di, aiBlue + i);
        }
    }
};

using PlainPixels = SearchPixels<PlainWeights>;
using NearPixels = SearchPixels<NearWeights>;

/// The sums of the least errors of a half's pixels, by table.
struct TableSums
{
    VI a[k_uiTables]; ///< the first is enough where vectors have eight lanes
};

/// @param modifiers        what the pixels choose from
/// @param ui32Transparent  a bit x * 4 + y for each pixel that is left out
/// @return sums of 1560600 at most times the mean weight
template <typename Weights, size_t kChoices>
HWY_INLINE TableSums sumTables(const SearchPixels<Weights>& pixels, EEtcHalf eHalf, const BasePairs& base,
                               const ModifierPairs<kChoices>& modifiers, uint32_t ui32Transparent)
{
    const auto forEachOpaque = [&](auto visit) HWY_ATTR
    {
        forEachOfHalf(eHalf,
                      [&](size_t i) HWY_ATTR
                      {
                          if ((ui32Transparent >> i & 1) == 0)
                              visit(i);
                      });
    };
    int32_t iSquares = 0;
    forEachOpaque([&](size_t i) HWY_ATTR { iSquares += pixels.aiSquares[i]; });

    TableSums sums;
    for (size_t uiTable = 0; uiTable < k_uiTables; uiTable += hn::Lanes(di))
    {
        VI aRedGreen[kChoices], aBlue[kChoices], aSquares[kChoices];
        for (size_t i = 0; i < kChoices; ++i)
        {
            const VI modifier = hn::Load(di, modifiers.aai[i] + uiTable);
            const VI redGreen = clampPairsToBytes(addPairs(hn::Set(di, base.iRedGreen), modifier));
            const VI blue = clampPairsToBytes(addPairs(hn::Set(di, base.iBlue), modifier));
            aRedGreen[i] = multiplyPairs(redGreen, hn::Set(di, Weights::k_iRed | Weights::k_iGreen << 16));
            aBlue[i] = multiplyPairs(blue, hn::Set(di, Weights::k_iBlue));
            aSquares[i] = addPairProducts(addPairProducts(hn::Zero(di), redGreen, aRedGreen[i]), blue, aBlue[i]);
        }
        VI sum = hn::Set(di, iSquares);
        forEachOpaque(
            [&](size_t uiPixel) HWY_ATTR
            {
                const VI redGreen = hn::Set(di, pixels.aiRedGreen[uiPixel]);
                const VI blue = hn::Set(di, pixels.aiBlue[uiPixel]);
                const auto error = [&](size_t i) HWY_ATTR
                { return addPairProducts(addPairProducts(aSquares[i], redGreen, aRedGreen[i]), blue, aBlue[i]); };
                VI least = hn::Min(error(0), error(1));
                for (size_t i = 2; i < kChoices; ++i)
                    least = hn::Min(least, error(i));
                sum = hn::Add(sum, least);
            });
        sums.a[uiTable / hn::Lanes(di)] = sum;
    }
    return sums;
}

/// The table that fits a half best, and its error.
struct TableFit
{
    uint32_t uiTable;
    uint32_t uiError;
};

/// @param sums  by the plain measure
HWY_INLINE TableFit findLeast(const TableSums& sums)
{
    VI least = hn::Set(di, INT32_MAX);
    for (size_t uiTable = 0; uiTable < k_uiTables; uiTable += hn::Lanes(di))
    {
        // The table in the lowest bits lets the first of equal ones win.
        const VI table = hn::Iota(di, static_cast<int32_t>(uiTable));
        least = hn::Min(least, hn::Or(hn::ShiftLeft<3>(sums.a[uiTable / hn::Lanes(di)]), table));
    }
    const auto uiKey = static_cast<uint32_t>(hn::GetLane(hn::MinOfLanes(di, least)));
    return {uiKey & 7, uiKey >> 3};
}

HWY_INLINE TableFit findTable(const PlainPixels& pixels, EEtcHalf eHalf, const BasePairs& base)
{
    return findLeast(sumTables(pixels, eHalf, base, k_modifierPairs, 0));
}

/// The tables that may fit a half best by the perceptual measure.
struct NearFit
{
    uint32_t uiTables; ///< a bit for each
    uint32_t uiError;  ///< the least, with NearWeights
};

HWY_INLINE NearFit findNearTables(const NearPixels& pixels, EEtcHalf eHalf, const BasePairs& base)
{
    const TableSums sums = sumTables(pixels, eHalf, base, k_modifierPairs, 0);
    VI least = sums.a[0];
    for (size_t uiTable = hn::Lanes(di); uiTable < k_uiTables; uiTable += hn::Lanes(di))
        least = hn::Min(least, sums.a[uiTable / hn::Lanes(di)]);
    const auto uiLeast = static_cast<uint32_t>(hn::GetLane(hn::MinOfLanes(di, least)));
    const VI limit = hn::Set(di, static_cast<int32_t>(leastCertainAbove(uiLeast)));
    uint32_t uiTables = 0;
    for (size_t uiTable = 0; uiTable < k_uiTables; uiTable += hn::Lanes(di))
        uiTables |= maskBits(di, hn::Lt(sums.a[uiTable / hn::Lanes(di)], limit)) << uiTable;
    return {uiTables, uiLeast};
}

/// The first of the tables whose bits are set, whose bit is cleared.
HWY_INLINE uint32_t takeLowestTable(uint32_t& uiTables)
{
    const auto uiTable = static_cast<uint32_t>(hwy::Num0BitsBelowLS1Bit_Nonzero32(uiTables));
    uiTables &= uiTables - 1;
    return uiTable;
}

/// The colours that the two halves of a split choose from.
struct SplitCandidates
{
    alignas(32) int32_t aai[3][2 * k_uiPositions]; ///< channels; positions of the first half, then of the second
};

/// @param uiHalf  0 or 1
HWY_INLINE void setCandidates(SplitCandidates& candidates, size_t uiHalf, const BasePairs& base, uint32_t uiTable)
{
    const hn::CappedTag<int32_t, k_uiPositions> d4;
    const int32_t aiBase[3] = {base.iRedGreen & 255, base.iRedGreen >> 16, base.iBlue};
    for (size_t i = 0; i < k_uiPositions; i += hn::Lanes(d4))
    {
        const auto modifiers = hn::LoadU(d4, k_aaiEtcModifiers[uiTable] + i);
        for (size_t c = 0; c < 3; ++c)
        {
            const auto sum = hn::Add(hn::Set(d4, aiBase[c]), modifiers);
            hn::Store(hn::Min(hn::Max(sum, hn::Zero(d4)), hn::Set(d4, 255)), d4, candidates.aai[c] + k_uiPositions * uiHalf + i);
        }
    }
}

/// Which of the pixels, column by column, are of a split's second half, without and with flip.
alignas(32) constexpr int32_t k_aaiOfSecondHalf[2][16] = {{0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1},
                                                          {0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1}};

/// How the pixels of a block come off with given candidates.
template <typename T>
struct SplitPaint
{
    alignas(32) T aErrors[16];             ///< of each pixel, column by column
    alignas(32) int32_t aaiSquares[3][16]; ///< the squares of the differences in each channel; perceptual search only
    uint32_t ui32Indices;                  ///< both planes
};

struct PlainMeasure
{
    using T = int32_t;
    static constexpr bool k_bKeepsSquares = false;
    static constexpr DI d{};
    static HWY_INLINE VI weigh(VI red, VI green, VI blue) { return hn::Add(hn::Add(red, green), blue); }
};

struct WeightedMeasure
{
    using T = int32_t;
    static constexpr bool k_bKeepsSquares = false;
    static constexpr DI d{};
    static HWY_INLINE VI weigh(VI red, VI green, VI blue)
    {
        return hn::Add(hn::Add(hn::Mul(red, hn::Set(di, 299)), hn::Mul(green, hn::Set(di, 587))), hn::Mul(blue, hn::Set(di, 114)));
    }
};

struct PerceptualMeasure
{
    using T = float;
    static constexpr bool k_bKeepsSquares = true;
    static constexpr DF d{};
    static HWY_INLINE VF weigh(VI red, VI green, VI blue)
    {
        const VF weightedRed = hn::Mul(hn::Set(df, k_afWeights[0]), hn::ConvertTo(df, red));
        const VF weightedGreen = hn::Mul(hn::Set(df, k_afWeights[1]), hn::ConvertTo(df, green));
        return hn::Add(hn::Add(weightedRed, weightedGreen), hn::Mul(hn::Set(df, k_afWeights[2]), hn::ConvertTo(df, blue)));
    }
};

/// Takes for each pixel the first candidate of its half with the least error.
template <typename Measure>
HWY_INLINE void paintSplit(const ColumnPixels& pixels, bool bFlip, const SplitCandidates& candidates,
                           SplitPaint<typename Measure::T>& paint)
{
    paint.ui32Indices = 0;
    for (size_t i = 0; i < 16; i += hn::Lanes(di))
    {
        const auto ofSecond = hn::Ne(hn::Load(di, k_aaiOfSecondHalf[bFlip ? 1 : 0] + i), hn::Zero(di));
        VI aSquares[3];
        auto least = hn::Zero(Measure::d);
        VI position = hn::Zero(di);
        for (size_t uiPosition = 0; uiPosition < k_uiPositions; ++uiPosition)
        {
            VI aNew[3];
            for (size_t c = 0; c < 3; ++c)
            {
                const VI candidate = hn::IfThenElse(ofSecond, hn::Set(di, candidates.aai[c][k_uiPositions + uiPosition]),
                                                    hn::Set(di, candidates.aai[c][uiPosition]));
                const VI difference = hn::Sub(hn::Load(di, pixels.aai[c] + i), candidate);
                aNew[c] = hn::Mul(difference, difference);
            }
            const auto error = Measure::weigh(aNew[0], aNew[1], aNew[2]);
            if (uiPosition == 0)
            {
                least = error;
                for (size_t c = 0; c < 3; ++c)
                    aSquares[c] = aNew[c];
                continue;
            }
            const auto isLess = hn::Lt(error, least);
            const auto isLessWhole = hn::RebindMask(di, isLess);
            least = hn::IfThenElse(isLess, error, least);
            position = hn::IfThenElse(isLessWhole, hn::Set(di, static_cast<int32_t>(uiPosition)), position);
            if constexpr (Measure::k_bKeepsSquares)
                for (size_t c = 0; c < 3; ++c)
                    aSquares[c] = hn::IfThenElse(isLessWhole, aNew[c], aSquares[c]);
        }
        hn::Store(least, Measure::d, paint.aErrors + i);
        if constexpr (Measure::k_bKeepsSquares)
            for (size_t c = 0; c < 3; ++c)
                hn::Store(aSquares[c], di, paint.aaiSquares[c] + i);
        // Positions 0 to 3 are stored as 11, 10, 00, 01.
        const auto msb = hn::Lt(position, hn::Set(di, 2));
        const auto lsb = hn::Or(hn::Eq(position, hn::Zero(di)), hn::Eq(position, hn::Set(di, 3)));
        paint.ui32Indices |= (maskBits(di, msb) << 16 | maskBits(di, lsb)) << i;
    }
}

/// The errors of a half, in the order of its pixels, which matters to floats.
template <typename T>
HWY_INLINE T sumOfHalf(const SplitPaint<T>& paint, EEtcHalf eHalf)
{
    T sum = 0;
    forEachOfHalf(eHalf, [&](size_t i) HWY_ATTR { sum += paint.aErrors[i]; });
    return sum;
}

/// The bits of a half in both planes.
HWY_INLINE uint32_t indexBitsOf(EEtcHalf eHalf)
{
    constexpr uint32_t k_aui32Bits[] = {0x00FF00FF, 0xFF00FF00, 0x33333333, 0xCCCCCCCC};
    return k_aui32Bits[eHalf];
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#endif
