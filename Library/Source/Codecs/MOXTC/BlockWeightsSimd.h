// No include guard but this one: the file is read once for every instruction set.
#if defined(HALVANE_MOXTC_BLOCK_WEIGHTS_SIMD) == defined(HWY_TARGET_TOGGLE)
#ifdef HALVANE_MOXTC_BLOCK_WEIGHTS_SIMD
#undef HALVANE_MOXTC_BLOCK_WEIGHTS_SIMD
#else
#define HALVANE_MOXTC_BLOCK_WEIGHTS_SIMD
#endif

#include <array>

#include "Codecs/MOXTC/Block/Modulation.h"
#include "Codecs/MOXTC/CompressorLanesSimd.h"

// The weights of two 2bpp blocks side by side (getBlockWeights is the plain form).
//
// Of any two rows that begin at an even one, the stored pixels and those between them make a chequered pattern. So a pair of rows
// is kept as two rows of bytes: the stored pixels (even columns from the upper row, odd ones from the lower) and the others (odd
// columns from the upper row, even ones from the lower). A pixel between others has two of its neighbours to its left and right in
// the row of stored ones, a third in its own column there, and the fourth, if any, in its column of the other pair.

// Where there are no vectors, the plain forms do.
#if HWY_TARGET != HWY_SCALAR

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

constexpr size_t k_uiRowPairs = k_uiGroupHeight / 2;

constexpr uint8_t k_ui8All = 0xFF;
alignas(16) constexpr uint8_t k_aui8EvenColumns[16] = {k_ui8All, 0, k_ui8All, 0, k_ui8All, 0, k_ui8All, 0,
                                                       k_ui8All, 0, k_ui8All, 0, k_ui8All, 0, k_ui8All, 0};
alignas(16) constexpr uint8_t k_aui8FirstColumns[16] = {k_ui8All, 0, 0, 0, 0, 0, 0, 0, k_ui8All};
alignas(16) constexpr uint8_t k_aui8LastColumns[16] = {0, 0, 0, 0, 0, 0, 0, k_ui8All, 0, 0, 0, 0, 0, 0, 0, k_ui8All};

/// In mode 1, by row pair: how many neighbours the pixels between others have.
constexpr uint8_t k_aaui8NeighbourCounts[k_uiRowPairs][8] = {{3, 3, 4, 3, 4, 3, 4, 2}, {2, 4, 3, 4, 3, 4, 3, 3}};

/// n / count without its fraction is n * this >> k_iShareBits, for n up to 34 (four weights of 8 and the rounding).
constexpr int k_iShareBits = 7;
constexpr uint16_t getShare(uint8_t ui8Count)
{
    return ui8Count == 3 ? 43 : static_cast<uint16_t>((1 << k_iShareBits) / ui8Count);
}

/// A number for each pixel between others of two blocks, by row pair.
template <typename F>
constexpr auto makeNeighbourTable(F f)
{
    using T = decltype(f(uint8_t{}));
    std::array<std::array<T, k_uiGroupWidth>, k_uiRowPairs> table{};
    for (size_t p = 0; p < k_uiRowPairs; ++p)
        for (size_t i = 0; i < k_uiGroupWidth; ++i)
            table[p][i] = f(k_aaui8NeighbourCounts[p][i % 8]);
    return table;
}
alignas(64) constexpr auto k_aShares = makeNeighbourTable(getShare);
alignas(64) constexpr auto k_aHalfCounts = makeNeighbourTable([](uint8_t ui8Count) { return static_cast<uint8_t>(ui8Count / 2); });

HWY_INLINE hn::Mask<decltype(d8)> loadColumnMask(const uint8_t (&aui8Columns)[16])
{
    return hn::MaskFromVec(hn::Load(d8, aui8Columns));
}

/// Looks up weights of a group's row by its codes.
HWY_INLINE V8 lookUpWeights(const WeightTable& table, V8 codes)
{
    alignas(16) const uint8_t aui8Table[16] = {table[0], table[1], table[2], table[3]};
    return hn::TableLookupBytes(hn::Load(d8, aui8Table), codes);
}

/// For the pixels between others, of one pair of rows.
struct BetweenWeights
{
    V8 bothAxes;
    V8 vertical;   ///< from above and below
    V8 horizontal; ///< from left and right
};

/// n / count of mode 1 for each byte.
HWY_INLINE V8 divideByNeighbourCount(V8 n, size_t uiPair)
{
    constexpr hn::FixedTag<uint16_t, 8> d16{};
    const V8 zero = hn::Zero(d8);
    const auto lower = hn::BitCast(d16, hn::InterleaveLower(d8, n, zero));
    const auto upper = hn::BitCast(d16, hn::InterleaveUpper(d8, n, zero));
    const uint16_t* pShares = k_aShares[uiPair].data();
    const auto lowerPart = hn::ShiftRight<k_iShareBits>(hn::Mul(lower, hn::Load(d16, pShares)));
    const auto upperPart = hn::ShiftRight<k_iShareBits>(hn::Mul(upper, hn::Load(d16, pShares + 8)));
    // The upper byte of each is 0.
    return hn::ConcatEven(d8, hn::BitCast(d8, upperPart), hn::BitCast(d8, lowerPart));
}

/// @param stored  weights of the stored pixels of the pair
/// @param other   the same of the other pair
HWY_INLINE BetweenWeights interpolateWeights(V8 stored, V8 other, size_t uiPair)
{
    const auto isEven = loadColumnMask(k_aui8EvenColumns);
    const auto isFirst = loadColumnMask(k_aui8FirstColumns);
    const auto isLast = loadColumnMask(k_aui8LastColumns);
    const V8 zero = hn::Zero(d8);
    const V8 one = hn::Set(d8, 1);
    const V8 two = hn::Set(d8, 2);
    const V8 left = hn::IfThenZeroElse(isFirst, hn::ShiftLeftLanes<1>(d8, stored));
    const V8 right = hn::IfThenZeroElse(isLast, hn::ShiftRightLanes<1>(d8, stored));
    // The upper row of the upper pair and the lower row of the lower one have no fourth neighbour.
    const V8 fourth = uiPair == 0 ? hn::IfThenElse(isEven, other, zero) : hn::IfThenElse(isEven, zero, other);
    const V8 onlyOne = hn::Add(stored, two);

    BetweenWeights weights;
    const V8 sum = hn::Add(hn::Add(left, right), hn::Add(stored, fourth));
    weights.bothAxes = divideByNeighbourCount(hn::Add(sum, hn::Load(d8, k_aHalfCounts[uiPair].data())), uiPair);
    // AverageRound(a, b) is (a + b + 1) / 2: so (stored + other + 2) / 2, and for one neighbour (2 stored + 4) / 2.
    weights.vertical = hn::AverageRound(hn::Add(stored, one),
                                        uiPair == 0 ? hn::IfThenElse(isEven, other, onlyOne) : hn::IfThenElse(isEven, onlyOne, other));
    // (left + right + 1) / 2, and at an edge (2 neighbour + 2) / 2.
    weights.horizontal =
        hn::AverageRound(hn::IfThenElse(isFirst, hn::Add(right, one), left), hn::IfThenElse(isLast, hn::Add(left, one), right));
    return weights;
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#endif

#endif
