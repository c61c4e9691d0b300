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
#include <cstring>
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

/// A channel's weighted squared differences, level by level in lanes, and their sums.
template <typename Lane, size_t k_uiLevels>
struct ChannelTerms
{
    alignas(64) Lane aTerms[k_uiTables][16][k_uiModifiers][k_uiLevels];
    alignas(64) Lane aHalves[k_uiTables][k_uiHalves][k_uiLevels]; ///< the pixels' least terms, summed
    alignas(64) Lane aLeast[k_uiLevels];                          ///< of all tables and halves
    uint32_t auiLeast[k_uiTables][k_uiHalves];                    ///< of all levels
};

/// The same differences for one level, by table, pixel and modifier.
template <typename Lane>
struct LevelTerms
{
    alignas(64) Lane a[k_uiTables][16 * k_uiModifiers];
};

/// The sums of red's and green's terms for one red level.
template <typename Lane, size_t k_uiLevels>
struct RowSums
{
    LevelTerms<Lane> red;
    alignas(64) Lane aHalves[k_uiTables][k_uiHalves][k_uiLevels]; ///< by green level: the pixels' least sums, summed
    alignas(64) Lane aLeast[k_uiLevels];                          ///< of all tables and halves
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

template <size_t k_uiLevels, typename Lane>
HWY_NOINLINE void fillLevel(const std::array<uint8_t, 16>& values, uint32_t uiWeight, size_t uiLevel, LevelTerms<Lane>& terms)
{
    constexpr size_t uiCount = 16 * k_uiModifiers;
    const hn::CappedTag<Lane, uiCount> d;
    const hn::Rebind<uint8_t, decltype(d)> d8;
    static constexpr auto k_aPaints = makeEtcPaintBytes<k_uiLevels>();
    alignas(64) uint8_t aui8Values[uiCount];
    alignas(64) uint32_t auiPaints[16]; // of four bytes each
    for (size_t i = 0; i < uiCount; ++i)
        aui8Values[i] = values[i / k_uiModifiers];
    const auto weight = hn::Set(d, static_cast<Lane>(uiWeight));
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
    {
        uint8_t aui8Four[k_uiModifiers];
        for (size_t uiModifier = 0; uiModifier < k_uiModifiers; ++uiModifier)
            aui8Four[uiModifier] = k_aPaints[uiTable][uiModifier][uiLevel];
        uint32_t uiFour = 0;
        std::memcpy(&uiFour, aui8Four, sizeof(uiFour));
        std::fill_n(auiPaints, 16, uiFour);
        const auto* const pui8Paints = reinterpret_cast<const uint8_t*>(auiPaints);
        for (size_t i = 0; i < uiCount; i += hn::Lanes(d))
        {
            const auto difference = hn::Sub(hn::PromoteTo(d, hn::Load(d8, pui8Paints + i)), hn::PromoteTo(d, hn::Load(d8, aui8Values + i)));
            hn::Store(hn::Mul(hn::Mul(difference, difference), weight), d, terms.a[uiTable] + i);
        }
    }
}

/// Fills what depends on the sums' red terms.
template <typename Lane, size_t k_uiLevels>
HWY_NOINLINE void sumRow(const ChannelTerms<Lane, k_uiLevels>& green, RowSums<Lane, k_uiLevels>& sums)
{
    const LevelTag<Lane, k_uiLevels> d;
    using V = hn::Vec<decltype(d)>;
    std::fill_n(sums.aLeast, k_uiLevels, std::numeric_limits<Lane>::max());
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
    {
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
                        pairs[uiModifier] = addErrors(d, hn::Set(d, sums.red.a[uiTable][uiPixel * k_uiModifiers + uiModifier]),
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
/// @param pErrors  by half, uiStride apart, and blue level
template <typename Lane, size_t k_uiLevels>
HWY_NOINLINE void sweepBlues(const LevelTerms<Lane>& red, const LevelTerms<Lane>& green, const ChannelTerms<Lane, k_uiLevels>& blue,
                             size_t uiTable, uint32_t uiHalfMask, Lane* HWY_RESTRICT pErrors, size_t uiStride)
{
    const LevelTag<Lane, k_uiLevels> d;
    using V = hn::Vec<decltype(d)>;
    const hn::CappedTag<Lane, 16 * k_uiModifiers> dPairs;
    alignas(64) Lane aPairs[16 * k_uiModifiers];
    for (size_t i = 0; i < std::size(aPairs); i += hn::Lanes(dPairs))
        hn::Store(addErrors(dPairs, hn::Load(dPairs, red.a[uiTable] + i), hn::Load(dPairs, green.a[uiTable] + i)), dPairs, aPairs + i);

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
                    all[uiModifier] = addErrors(d, hn::Set(d, aPairs[uiPixel * k_uiModifiers + uiModifier]),
                                                hn::Load(d, blue.aTerms[uiTable][uiPixel][uiModifier] + uiLevel));
                quadrants[uiQuadrant] = addErrors(d, quadrants[uiQuadrant], leastOfFour<decltype(d)>(all[0], all[1], all[2], all[3]));
            }
        }
        for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
        {
            if ((uiHalfMask >> uiHalf & 1) == 0)
                continue;
            const V sum = addErrors(d, quadrants[k_aauiHalfQuadrants[uiHalf][0]], quadrants[k_aauiHalfQuadrants[uiHalf][1]]);
            Lane* const pHalf = pErrors + uiHalf * uiStride + uiLevel;
            hn::StoreU(hn::Min(hn::LoadU(d, pHalf), sum), d, pHalf);
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
