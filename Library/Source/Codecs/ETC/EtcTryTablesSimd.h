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

/// EtcTables.h's modifiers, a row for each position.
struct ModifierColumns
{
    alignas(32) int32_t aai[k_uiPositions][k_uiTables];
};

constexpr ModifierColumns makeModifierColumns()
{
    ModifierColumns columns{};
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
        for (size_t uiPosition = 0; uiPosition < k_uiPositions; ++uiPosition)
            columns.aai[uiPosition][uiTable] = k_aaiEtcModifiers[uiTable][uiPosition];
    return columns;
}

constexpr ModifierColumns k_modifierColumns = makeModifierColumns();

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

HWY_INLINE VI clampToByte(VI v)
{
    return hn::Min(hn::Max(v, hn::Zero(di)), hn::Set(di, 255));
}

/// Two numbers of 16 bits in a lane.
HWY_INLINE VI packPair(VI low, VI high)
{
    return hn::Or(hn::And(low, hn::Set(di, 0xFFFF)), hn::ShiftLeft<16>(high));
}

/// sum + low of a * low of b + high of a * high of b.
HWY_INLINE VI addPairProducts(VI sum, VI a, VI b)
{
#if HWY_TARGET == HWY_SCALAR
    const VI low = hn::Mul(hn::ShiftRight<16>(hn::ShiftLeft<16>(a)), hn::ShiftRight<16>(hn::ShiftLeft<16>(b)));
    return hn::Add(sum, hn::Add(low, hn::Mul(hn::ShiftRight<16>(a), hn::ShiftRight<16>(b))));
#else
    const hn::Repartition<int16_t, DI> d16;
    VI rest = hn::Zero(di);
    const VI products = hn::ReorderWidenMulAccumulate(di, hn::BitCast(d16, a), hn::BitCast(d16, b), hn::Zero(di), rest);
    return hn::Add(sum, hn::RearrangeToOddPlusEven(products, rest));
#endif
}

/// A block's pixels as the plain search wants them: |p - c|^2 = |p|^2 + |c|^2 + (-2 p) c.
struct PlainPixels
{
    alignas(32) int32_t aiRedGreen[16]; ///< pairs of -2 p
    alignas(32) int32_t aiBlue[16];     ///< -2 p
    alignas(32) int32_t aiSquares[16];  ///< |p|^2

    HWY_INLINE explicit PlainPixels(const ColumnPixels& pixels)
    {
        for (size_t i = 0; i < 16; i += hn::Lanes(di))
        {
            const VI red = hn::Load(di, pixels.aai[0] + i);
            const VI green = hn::Load(di, pixels.aai[1] + i);
            const VI blue = hn::Load(di, pixels.aai[2] + i);
            const VI redGreen = packPair(red, green);
            hn::Store(addPairProducts(addPairProducts(hn::Zero(di), redGreen, redGreen), blue, blue), di, aiSquares + i);
            const VI zero = hn::Zero(di);
            hn::Store(packPair(hn::Sub(zero, hn::Add(red, red)), hn::Sub(zero, hn::Add(green, green))), di, aiRedGreen + i);
            hn::Store(packPair(hn::Sub(zero, hn::Add(blue, blue)), zero), di, aiBlue + i);
        }
    }
};

/// The table that fits a half best, and its error.
struct TableFit
{
    uint32_t uiTable;
    uint32_t uiError;
};

HWY_INLINE TableFit findTable(const PlainPixels& pixels, EEtcHalf eHalf, const int32_t (&base)[3])
{
    int32_t iSquares = 0;
    forEachOfHalf(eHalf, [&](size_t i) HWY_ATTR { iSquares += pixels.aiSquares[i]; });

    VI least = hn::Set(di, INT32_MAX);
    for (size_t uiTable = 0; uiTable < k_uiTables; uiTable += hn::Lanes(di))
    {
        VI aRedGreen[k_uiPositions], aBlue[k_uiPositions], aSquares[k_uiPositions];
        for (size_t i = 0; i < k_uiPositions; ++i)
        {
            const VI modifier = hn::Load(di, k_modifierColumns.aai[i] + uiTable);
            const VI red = clampToByte(hn::Add(hn::Set(di, base[0]), modifier));
            const VI green = clampToByte(hn::Add(hn::Set(di, base[1]), modifier));
            aRedGreen[i] = hn::Or(red, hn::ShiftLeft<16>(green));
            aBlue[i] = clampToByte(hn::Add(hn::Set(di, base[2]), modifier));
            aSquares[i] = addPairProducts(addPairProducts(hn::Zero(di), aRedGreen[i], aRedGreen[i]), aBlue[i], aBlue[i]);
        }
        VI sum = hn::Set(di, iSquares);
        forEachOfHalf(eHalf,
                      [&](size_t i) HWY_ATTR
                      {
                          const VI redGreen = hn::Set(di, pixels.aiRedGreen[i]);
                          const VI blue = hn::Set(di, pixels.aiBlue[i]);
                          const auto error = [&](size_t uiPosition) HWY_ATTR {
                              return addPairProducts(addPairProducts(aSquares[uiPosition], redGreen, aRedGreen[uiPosition]), blue,
                                                     aBlue[uiPosition]);
                          };
                          sum = hn::Add(sum, hn::Min(hn::Min(error(0), error(1)), hn::Min(error(2), error(3))));
                      });
        // The table in the lowest bits lets the first of equal ones win; the sum is 1560600 at most.
        const VI table = hn::Iota(di, static_cast<int32_t>(uiTable));
        least = hn::Min(least, hn::Or(hn::ShiftLeft<3>(sum), table));
    }
    const auto uiKey = static_cast<uint32_t>(hn::GetLane(hn::MinOfLanes(di, least)));
    return {uiKey & 7, uiKey >> 3};
}

/// A block's pixels as the first step of the perceptual search wants them: less 128, which keeps the numbers small.
struct PerceptualPixels
{
    alignas(32) float aaf[3][16];
    alignas(32) float afSquares[16]; ///< weighted

    HWY_INLINE explicit PerceptualPixels(const ColumnPixels& pixels)
    {
        for (size_t i = 0; i < 16; i += hn::Lanes(di))
        {
            VF squares = hn::Zero(df);
            for (size_t c = 0; c < 3; ++c)
            {
                const VF p = hn::ConvertTo(df, hn::Sub(hn::Load(di, pixels.aai[c] + i), hn::Set(di, 128)));
                hn::Store(p, df, aaf[c] + i);
                squares = hn::Add(squares, hn::Mul(hn::Set(df, k_afWeights[c]), hn::Mul(p, p)));
            }
            hn::Store(squares, df, afSquares + i);
        }
    }
};

/// How far a sum of NearSums and the exact form's may be apart. Near: no term of a pixel's sum is above 2^15, so each of some 15
/// roundings is off by 2^-10 at most. Exact: below 2^16, some 6 roundings by 2^-9. Times 8 pixels, and in both forms 8 sums below
/// 2^19, off by 2^-6 each: 0.12 + 0.1 + 0.25.
constexpr float k_fNearSumsReach = 0.5f;

/// The perceptual errors of the eight tables, nearly: what the exact form gives lies within k_fNearSumsReach of them.
struct NearSums
{
    alignas(32) float af[k_uiTables];
};

HWY_INLINE NearSums findNearSums(const PerceptualPixels& pixels, EEtcHalf eHalf, const int32_t (&base)[3])
{
    float fSquares = 0.0f;
    forEachOfHalf(eHalf, [&](size_t i) HWY_ATTR { fSquares += pixels.afSquares[i]; });

    NearSums sums;
    for (size_t uiTable = 0; uiTable < k_uiTables; uiTable += hn::Lanes(di))
    {
        VF aaFactors[k_uiPositions][3], aSquares[k_uiPositions];
        for (size_t i = 0; i < k_uiPositions; ++i)
        {
            const VI modifier = hn::Load(di, k_modifierColumns.aai[i] + uiTable);
            aSquares[i] = hn::Zero(df);
            for (size_t c = 0; c < 3; ++c)
            {
                const VI candidate = clampToByte(hn::Add(hn::Set(di, base[c]), modifier));
                const VF centred = hn::ConvertTo(df, hn::Sub(candidate, hn::Set(di, 128)));
                const VF weighted = hn::Mul(hn::Set(df, k_afWeights[c]), centred);
                aaFactors[i][c] = hn::Mul(hn::Set(df, -2.0f), weighted);
                aSquares[i] = hn::Add(aSquares[i], hn::Mul(weighted, centred));
            }
        }
        VF sum = hn::Set(df, fSquares);
        forEachOfHalf(eHalf,
                      [&](size_t i) HWY_ATTR
                      {
                          const VF red = hn::Set(df, pixels.aaf[0][i]);
                          const VF green = hn::Set(df, pixels.aaf[1][i]);
                          const VF blue = hn::Set(df, pixels.aaf[2][i]);
                          const auto error = [&](size_t uiPosition) HWY_ATTR
                          {
                              const VF* const pFactors = aaFactors[uiPosition];
                              return hn::Add(hn::Add(aSquares[uiPosition], hn::Mul(red, pFactors[0])),
                                             hn::Add(hn::Mul(green, pFactors[1]), hn::Mul(blue, pFactors[2])));
                          };
                          sum = hn::Add(sum, hn::Min(hn::Min(error(0), error(1)), hn::Min(error(2), error(3))));
                      });
        hn::Store(sum, df, sums.af + uiTable);
    }
    return sums;
}

/// The colours that the two halves of a split choose from.
struct SplitCandidates
{
    alignas(32) int32_t aai[3][2 * k_uiPositions]; ///< channels; positions of the first half, then of the second
};

HWY_INLINE SplitCandidates makeCandidates(const int32_t (&base0)[3], uint32_t uiTable0, const int32_t (&base1)[3], uint32_t uiTable1)
{
    SplitCandidates candidates;
    for (size_t c = 0; c < 3; ++c)
        for (size_t i = 0; i < k_uiPositions; ++i)
        {
            candidates.aai[c][i] = std::clamp(base0[c] + k_aaiEtcModifiers[uiTable0][i], 0, 255);
            candidates.aai[c][k_uiPositions + i] = std::clamp(base1[c] + k_aaiEtcModifiers[uiTable1][i], 0, 255);
        }
    return candidates;
}

/// Which of the pixels, column by column, are of a split's second half, without and with flip.
alignas(32) constexpr int32_t k_aaiOfSecondHalf[2][16] = {{0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1},
                                                          {0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1}};

/// How the pixels of a block come off with given candidates.
template <typename T>
struct SplitPaint
{
    alignas(32) T aErrors[16];             ///< of each pixel, column by column
    alignas(32) int32_t aaiSquares[3][16]; ///< the squares of the differences in each channel
    uint32_t ui32Indices;                  ///< both planes
};

struct PlainMeasure
{
    using T = int32_t;
    static constexpr DI d{};
    static HWY_INLINE VI weigh(VI red, VI green, VI blue) { return hn::Add(hn::Add(red, green), blue); }
};

struct WeightedMeasure
{
    using T = int32_t;
    static constexpr DI d{};
    static HWY_INLINE VI weigh(VI red, VI green, VI blue)
    {
        return hn::Add(hn::Add(hn::Mul(red, hn::Set(di, 299)), hn::Mul(green, hn::Set(di, 587))), hn::Mul(blue, hn::Set(di, 114)));
    }
};

struct PerceptualMeasure
{
    using T = float;
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
            for (size_t c = 0; c < 3; ++c)
                aSquares[c] = hn::IfThenElse(isLessWhole, aNew[c], aSquares[c]);
        }
        hn::Store(least, Measure::d, paint.aErrors + i);
        for (size_t c = 0; c < 3; ++c)
            hn::Store(aSquares[c], di, paint.aaiSquares[c] + i);
        // Positions 0 to 3 are stored as 11, 10, 00, 01.
        const auto msb = hn::Lt(position, hn::Set(di, 2));
        const auto lsb = hn::Or(hn::Eq(position, hn::Zero(di)), hn::Eq(position, hn::Set(di, 3)));
        uint8_t aui8Msb[8] = {};
        uint8_t aui8Lsb[8] = {};
        hn::StoreMaskBits(di, msb, aui8Msb);
        hn::StoreMaskBits(di, lsb, aui8Lsb);
        paint.ui32Indices |= (uint32_t{aui8Msb[0]} << 16 | aui8Lsb[0]) << i;
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
