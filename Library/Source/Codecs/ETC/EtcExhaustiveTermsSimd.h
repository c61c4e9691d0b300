// No include guard but this one: the file is read once for every instruction set.
#if defined(HALVANE_ETC_EXHAUSTIVE_TERMS_SIMD) == defined(HWY_TARGET_TOGGLE)
#ifdef HALVANE_ETC_EXHAUSTIVE_TERMS_SIMD
#undef HALVANE_ETC_EXHAUSTIVE_TERMS_SIMD
#else
#define HALVANE_ETC_EXHAUSTIVE_TERMS_SIMD
#endif

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#include <hwy/highway.h>

#include "Codecs/ETC/EtcExhaustiveHalves.h"
#include "Core/ByteOrder.h"

// The errors of a block's pixels under all levels of a channel, level by level in lanes, and their sums over the halves.
//
// A lane is 32 bits wide, or 16 bits that stop at 65535. The latter give the same decisions wherever an error only has to be
// compared with a limit of 65535 or less, for a sum that has stopped isn't below any such limit, and neither is the true one.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

constexpr size_t k_uiTables = 8;
constexpr size_t k_uiModifiers = 4;
constexpr size_t k_uiHalves = 4;

/// Pixels of each quadrant: top left, top right, bottom left, bottom right.
constexpr size_t k_aauiQuadrantPixels[4][4] = {{0, 4, 1, 5}, {2, 6, 3, 7}, {8, 12, 9, 13}, {10, 14, 11, 15}};

/// The two quadrants of each half, by EEtcHalf.
constexpr size_t k_aauiHalfQuadrants[k_uiHalves][2] = {{0, 2}, {1, 3}, {0, 1}, {2, 3}};

/// By EEtcHalf.
using HalfErrors = std::array<uint32_t, k_uiHalves>;

/// A vector of levels.
template <typename Lane, size_t k_uiLevels>
using LevelTag = hn::CappedTag<Lane, k_uiLevels>;

template <class D>
HWY_INLINE hn::Vec<D> addErrors(D, hn::Vec<D> a, hn::Vec<D> b)
{
    if constexpr (sizeof(hn::TFromD<D>) == sizeof(uint16_t))
        return hn::SaturatedAdd(a, b);
    else
        return hn::Add(a, b);
}

/// The lanes of a mask as bits; 32 lanes at the most.
template <class D>
HWY_INLINE uint32_t getMaskBits(D d, hn::Mask<D> mask)
{
    uint8_t aui8Bits[8] = {};
    hn::StoreMaskBits(d, mask, aui8Bits);
    return loadLE<uint32_t>(aui8Bits);
}

/// A channel's weighted squared differences.
template <typename Lane, size_t k_uiLevels>
struct ChannelTerms
{
    alignas(64) Lane aTerms[k_uiTables][16][k_uiModifiers][k_uiLevels];
    alignas(64) Lane aHalves[k_uiTables][k_uiHalves][k_uiLevels]; ///< the pixels' least terms, summed
    alignas(64) Lane aLeast[k_uiLevels];                          ///< of all tables and halves
    uint32_t auiLeast[k_uiTables][k_uiHalves];                    ///< of all levels
};

/// The sums of red's and green's terms for one red level.
template <typename Lane, size_t k_uiLevels>
struct RowSums
{
    alignas(64) Lane aRed[k_uiTables][16][k_uiModifiers];         ///< red's terms
    alignas(64) Lane aHalves[k_uiTables][k_uiHalves][k_uiLevels]; ///< by green level: the pixels' least sums, summed
    alignas(64) Lane aLeast[k_uiLevels];                          ///< of all tables and halves
};

/// The errors of the halves for one red and one green level, by blue level.
template <typename Lane, size_t k_uiLevels>
struct ColumnErrors
{
    alignas(64) Lane a[k_uiHalves][k_uiLevels];

    void clear() { std::fill_n(&a[0][0], k_uiHalves * k_uiLevels, std::numeric_limits<Lane>::max()); }
};

template <typename D>
HWY_INLINE hn::Vec<D> leastOfFour(hn::Vec<D> a, hn::Vec<D> b, hn::Vec<D> c, hn::Vec<D> d)
{
    return hn::Min(hn::Min(a, b), hn::Min(c, d));
}

/// Stores the sums over the halves and their least at pLeast.
template <typename Lane, size_t k_uiLevels, class D, class V>
HWY_INLINE void storeHalves(D d, const V* pQuadrants, Lane (*pHalves)[k_uiLevels], size_t uiLevel, Lane* pLeast)
{
    V least = hn::Load(d, pLeast + uiLevel);
    for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
    {
        const V sum = addErrors(d, pQuadrants[k_aauiHalfQuadrants[uiHalf][0]], pQuadrants[k_aauiHalfQuadrants[uiHalf][1]]);
        hn::Store(sum, d, pHalves[uiHalf] + uiLevel);
        least = hn::Min(least, sum);
    }
    hn::Store(least, d, pLeast + uiLevel);
}

template <typename Lane, size_t k_uiLevels>
HWY_NOINLINE void fillTerms(const std::array<uint8_t, 16>& values, uint32_t uiWeight, ChannelTerms<Lane, k_uiLevels>& terms)
{
    const LevelTag<Lane, k_uiLevels> d;
    const hn::Rebind<uint8_t, decltype(d)> d8;
    using V = hn::Vec<decltype(d)>;
    static constexpr auto k_aPaints = makeEtcPaintBytes<k_uiLevels>();
    const V weight = hn::Set(d, static_cast<Lane>(uiWeight));
    std::fill_n(terms.aLeast, k_uiLevels, std::numeric_limits<Lane>::max());
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
        for (size_t uiLevel = 0; uiLevel < k_uiLevels; uiLevel += hn::Lanes(d))
        {
            V paints[k_uiModifiers];
            for (size_t uiModifier = 0; uiModifier < k_uiModifiers; ++uiModifier)
                paints[uiModifier] = hn::PromoteTo(d, hn::LoadU(d8, k_aPaints[uiTable][uiModifier].data() + uiLevel));
            V quadrants[4];
            for (size_t uiQuadrant = 0; uiQuadrant < 4; ++uiQuadrant)
            {
                quadrants[uiQuadrant] = hn::Zero(d);
                for (const size_t uiPixel : k_aauiQuadrantPixels[uiQuadrant])
                {
                    const V value = hn::Set(d, values[uiPixel]);
                    V squares[k_uiModifiers];
                    for (size_t uiModifier = 0; uiModifier < k_uiModifiers; ++uiModifier)
                    {
                        // A negative difference wraps round, and its square back.
                        const V difference = hn::Sub(paints[uiModifier], value);
                        squares[uiModifier] = hn::Mul(hn::Mul(difference, difference), weight);
                        hn::Store(squares[uiModifier], d, terms.aTerms[uiTable][uiPixel][uiModifier] + uiLevel);
                    }
                    quadrants[uiQuadrant] =
                        addErrors(d, quadrants[uiQuadrant], leastOfFour<decltype(d)>(squares[0], squares[1], squares[2], squares[3]));
                }
            }
            storeHalves<Lane, k_uiLevels>(d, quadrants, terms.aHalves[uiTable], uiLevel, terms.aLeast);
        }
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
        for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
        {
            V least = hn::Load(d, terms.aHalves[uiTable][uiHalf]);
            for (size_t uiLevel = hn::Lanes(d); uiLevel < k_uiLevels; uiLevel += hn::Lanes(d))
                least = hn::Min(least, hn::Load(d, terms.aHalves[uiTable][uiHalf] + uiLevel));
            terms.auiLeast[uiTable][uiHalf] = hn::GetLane(hn::MinOfLanes(d, least));
        }
}

template <typename Lane, size_t k_uiLevels>
HWY_NOINLINE void sumRow(const ChannelTerms<Lane, k_uiLevels>& red, size_t uiRed, const ChannelTerms<Lane, k_uiLevels>& green,
                         RowSums<Lane, k_uiLevels>& sums)
{
    const LevelTag<Lane, k_uiLevels> d;
    using V = hn::Vec<decltype(d)>;
    std::fill_n(sums.aLeast, k_uiLevels, std::numeric_limits<Lane>::max());
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
    {
        for (size_t uiPixel = 0; uiPixel < 16; ++uiPixel)
            for (size_t uiModifier = 0; uiModifier < k_uiModifiers; ++uiModifier)
                sums.aRed[uiTable][uiPixel][uiModifier] = red.aTerms[uiTable][uiPixel][uiModifier][uiRed];
        for (size_t uiLevel = 0; uiLevel < k_uiLevels; uiLevel += hn::Lanes(d))
        {
            V quadrants[4];
            for (size_t uiQuadrant = 0; uiQuadrant < 4; ++uiQuadrant)
            {
                quadrants[uiQuadrant] = hn::Zero(d);
                for (const size_t uiPixel : k_aauiQuadrantPixels[uiQuadrant])
                {
                    V pairs[k_uiModifiers];
                    for (size_t uiModifier = 0; uiModifier < k_uiModifiers; ++uiModifier)
                        pairs[uiModifier] = addErrors(d, hn::Set(d, sums.aRed[uiTable][uiPixel][uiModifier]),
                                                      hn::Load(d, green.aTerms[uiTable][uiPixel][uiModifier] + uiLevel));
                    quadrants[uiQuadrant] =
                        addErrors(d, quadrants[uiQuadrant], leastOfFour<decltype(d)>(pairs[0], pairs[1], pairs[2], pairs[3]));
                }
            }
            storeHalves<Lane, k_uiLevels>(d, quadrants, sums.aHalves[uiTable], uiLevel, sums.aLeast);
        }
    }
}

/// Lowers the errors of the halves in a mask (bit uiHalf) to those under one table.
template <typename Lane, size_t k_uiLevels>
HWY_NOINLINE void sweepBlues(const RowSums<Lane, k_uiLevels>& sums, const ChannelTerms<Lane, k_uiLevels>& green, size_t uiGreen,
                             const ChannelTerms<Lane, k_uiLevels>& blue, size_t uiTable, uint32_t uiHalfMask,
                             ColumnErrors<Lane, k_uiLevels>& errors)
{
    const LevelTag<Lane, k_uiLevels> d;
    using V = hn::Vec<decltype(d)>;
    uint32_t uiQuadrantMask = 0;
    for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
        if ((uiHalfMask >> uiHalf & 1) != 0)
            uiQuadrantMask |= 1u << k_aauiHalfQuadrants[uiHalf][0] | 1u << k_aauiHalfQuadrants[uiHalf][1];
    for (size_t uiLevel = 0; uiLevel < k_uiLevels; uiLevel += hn::Lanes(d))
    {
        V quadrants[4];
        for (size_t uiQuadrant = 0; uiQuadrant < 4; ++uiQuadrant)
        {
            quadrants[uiQuadrant] = hn::Zero(d);
            if ((uiQuadrantMask >> uiQuadrant & 1) == 0)
                continue;
            for (const size_t uiPixel : k_aauiQuadrantPixels[uiQuadrant])
            {
                V all[k_uiModifiers];
                for (size_t uiModifier = 0; uiModifier < k_uiModifiers; ++uiModifier)
                {
                    const V pair = addErrors(d, hn::Set(d, sums.aRed[uiTable][uiPixel][uiModifier]),
                                             hn::Set(d, green.aTerms[uiTable][uiPixel][uiModifier][uiGreen]));
                    all[uiModifier] = addErrors(d, pair, hn::Load(d, blue.aTerms[uiTable][uiPixel][uiModifier] + uiLevel));
                }
                quadrants[uiQuadrant] = addErrors(d, quadrants[uiQuadrant], leastOfFour<decltype(d)>(all[0], all[1], all[2], all[3]));
            }
        }
        for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
        {
            if ((uiHalfMask >> uiHalf & 1) == 0)
                continue;
            const V sum = addErrors(d, quadrants[k_aauiHalfQuadrants[uiHalf][0]], quadrants[k_aauiHalfQuadrants[uiHalf][1]]);
            hn::Store(hn::Min(hn::Load(d, errors.a[uiHalf] + uiLevel), sum), d, errors.a[uiHalf] + uiLevel);
        }
    }
}

/// The halves (bit uiHalf) that one table may bring below their limits with some blue level: what the pair of red and green costs,
/// plus the least that blue costs on its own, is not above what the three channels cost together.
template <typename Lane, size_t k_uiLevels>
HWY_INLINE uint32_t findPromisingHalves(const RowSums<Lane, k_uiLevels>& sums, size_t uiGreen, const ChannelTerms<Lane, k_uiLevels>& blue,
                                        size_t uiTable, const HalfErrors& auiLimits)
{
    uint32_t uiHalfMask = 0;
    for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
        if (sums.aHalves[uiTable][uiHalf][uiGreen] + blue.auiLeast[uiTable][uiHalf] < auiLimits[uiHalf])
            uiHalfMask |= 1u << uiHalf;
    return uiHalfMask;
}

/// Lowers the errors of a column (one red, one green level) to those of all tables, where they are below their limits; others may
/// stay too high, but not below the limit.
template <typename Lane, size_t k_uiLevels>
HWY_INLINE void sweepColumn(const RowSums<Lane, k_uiLevels>& sums, const ChannelTerms<Lane, k_uiLevels>& green, size_t uiGreen,
                            const ChannelTerms<Lane, k_uiLevels>& blue, const HalfErrors& auiLimits, ColumnErrors<Lane, k_uiLevels>& errors)
{
    errors.clear();
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
    {
        const uint32_t uiHalfMask = findPromisingHalves(sums, uiGreen, blue, uiTable, auiLimits);
        if (uiHalfMask != 0)
            sweepBlues(sums, green, uiGreen, blue, uiTable, uiHalfMask, errors);
    }
}

/// The green levels (by bit) with which some table may bring some half below its limit.
template <typename Lane, size_t k_uiLevels>
HWY_NOINLINE uint32_t findPromisingGreens(const RowSums<Lane, k_uiLevels>& sums, const ChannelTerms<Lane, k_uiLevels>& blue,
                                          const HalfErrors& auiLimits)
{
    const LevelTag<Lane, k_uiLevels> d;
    using M = hn::Mask<decltype(d)>;
    uint32_t uiGreens = 0;
    for (size_t uiLevel = 0; uiLevel < k_uiLevels; uiLevel += hn::Lanes(d))
    {
        M promising = hn::Lt(hn::Zero(d), hn::Zero(d));
        for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
            for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
            {
                const uint32_t uiBlue = blue.auiLeast[uiTable][uiHalf];
                const uint32_t uiLimit = auiLimits[uiHalf];
                const auto room = static_cast<Lane>(uiLimit > uiBlue ? uiLimit - uiBlue : 0);
                promising = hn::Or(promising, hn::Lt(hn::Load(d, sums.aHalves[uiTable][uiHalf] + uiLevel), hn::Set(d, room)));
            }
        uiGreens |= getMaskBits(d, promising) << uiLevel;
    }
    return uiGreens;
}

/// The green levels (by bit) whose sum with red is below the bound in some half under some table.
template <typename Lane, size_t k_uiLevels>
HWY_INLINE uint32_t findGreensBelow(const RowSums<Lane, k_uiLevels>& sums, uint32_t uiBound)
{
    uint32_t uiGreens = 0;
    for (size_t uiGreen = 0; uiGreen < k_uiLevels; ++uiGreen)
        uiGreens |= static_cast<uint32_t>(sums.aLeast[uiGreen] < uiBound) << uiGreen;
    return uiGreens;
}

/// Whether some level of green and blue may bring some half below its limit, by what the channels cost on their own.
template <typename Lane, size_t k_uiLevels>
HWY_INLINE bool isPromisingRed(const ChannelTerms<Lane, k_uiLevels>& red, size_t uiRed, const ChannelTerms<Lane, k_uiLevels>& green,
                               const ChannelTerms<Lane, k_uiLevels>& blue, const HalfErrors& auiLimits)
{
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
        for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
            if (red.aHalves[uiTable][uiHalf][uiRed] + green.auiLeast[uiTable][uiHalf] + blue.auiLeast[uiTable][uiHalf] < auiLimits[uiHalf])
                return true;
    return false;
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#endif
