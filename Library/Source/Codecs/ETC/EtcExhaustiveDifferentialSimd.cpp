#include <algorithm>
#include <memory>
#include <vector>

#include "Codecs/ETC/EtcExhaustiveHalves.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcExhaustiveDifferentialSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/ETC/EtcExhaustiveTermsSimd.h"

// First the errors of the halves for all colours that may matter, in columns of one red and one green level; then the pairs.
//
// A pair has an effect only if its sum is strictly below the best so far, which is never above the start's. So a colour matters to
// a half only if its error is below the start's less the least that the other half costs anywhere: the half's limit. Every other
// error may count as any number from the limit on, with one exception: a first colour is tried if it is below the bound in either
// half, so it may be tried for the sake of the half in which it doesn't matter (isTried).
//
// The pairs of a first colour are gone through one by one, in order, only if the least of their sums is below the best so far;
// otherwise none has an effect.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

constexpr size_t k_uiLevels5 = 32;
constexpr size_t k_uiBelow = 4; ///< how far a second level may be below the first
constexpr size_t k_uiReach = 8; ///< second levels for a first one
/// Blue levels of a column: those beyond the ends, too, and what makes up whole vectors.
template <typename Lane>
constexpr size_t k_uiColumnLevels = sizeof(Lane) == sizeof(uint16_t) ? 64 : 48;

template <typename Lane>
using Tag5 = LevelTag<Lane, k_uiLevels5>;

/// The error of a colour that doesn't exist or doesn't matter; two of them can be added.
template <typename Lane>
constexpr Lane k_None = std::numeric_limits<Lane>::max() / (sizeof(Lane) == 2 ? 1 : 2);

/// The errors of the halves for one red and one green level; blue level b at k_uiBelow + b.
template <typename Lane>
struct ColourColumn
{
    Lane a[k_uiHalves][k_uiColumnLevels<Lane>];
    size_t uiRed;
    size_t uiGreen;
};

/// The columns in which a colour may matter.
template <typename Lane>
struct ColourColumns
{
    std::vector<ColourColumn<Lane>> list;                  ///< by red and then green level
    uint16_t aaui16Numbers[k_uiLevels5][k_uiLevels5] = {}; ///< by red and green level: 1 + place in the list, 0 where there is none
    HalfErrors auiLimits{};                                ///< errors below these are the true ones
    HalfErrors auiLeast{};                                 ///< of all columns
};

/// What the columns are made from.
template <typename Lane>
struct ColumnSources
{
    ChannelTerms<Lane, k_uiLevels5> red, green, blue;
    RowSums<Lane, k_uiLevels5> aRows[k_uiLevels5]; ///< by red level, where it has any green level
    LevelTerms<Lane> aGreens[k_uiLevels5];         ///< by green level, where any red level has it
    uint32_t auiGreens[k_uiLevels5];               ///< by red level: the green levels (by bit) that the bound leaves
};

/// What a half's errors have to be below, if the other half costs no less than auiLeast says.
HWY_INLINE HalfErrors makeLimits(uint32_t uiStart, const HalfErrors& auiLeast)
{
    constexpr EEtcHalf aeOthers[k_uiHalves] = {eEtcRight, eEtcLeft, eEtcBottom, eEtcTop};
    HalfErrors auiLimits{};
    for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
        auiLimits[uiHalf] = uiStart - std::min(uiStart, auiLeast[aeOthers[uiHalf]]);
    return auiLimits;
}

/// Lower bounds of what the halves cost, by the channels on their own.
template <typename Lane>
HWY_INLINE HalfErrors findLeastOfChannels(const ColumnSources<Lane>& sources)
{
    HalfErrors auiLeast;
    auiLeast.fill(k_None<uint32_t>);
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
        for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
            auiLeast[uiHalf] = std::min(auiLeast[uiHalf], sources.red.auiLeast[uiTable][uiHalf] + sources.green.auiLeast[uiTable][uiHalf] +
                                                              sources.blue.auiLeast[uiTable][uiHalf]);
    return auiLeast;
}

/// Better ones, by pairs of red and green and by blue, over the colours that the bound leaves.
template <typename Lane>
HWY_NOINLINE HalfErrors findLeastOfRows(const ColumnSources<Lane>& sources, uint32_t uiBound)
{
    const Tag5<Lane> d;
    using V = hn::Vec<decltype(d)>;
    const V none = hn::Set(d, k_None<Lane>);
    const V bound = hn::Set(d, static_cast<Lane>(uiBound));
    V least[k_uiHalves] = {none, none, none, none};
    for (size_t uiRed = 0; uiRed < k_uiLevels5; ++uiRed)
    {
        if (sources.auiGreens[uiRed] == 0)
            continue;
        const RowSums<Lane, k_uiLevels5>& row = sources.aRows[uiRed];
        for (size_t uiLevel = 0; uiLevel < k_uiLevels5; uiLevel += hn::Lanes(d))
        {
            const auto isLeft = hn::Lt(hn::Load(d, row.aLeast + uiLevel), bound);
            for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
                for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
                {
                    const V blue = hn::Set(d, static_cast<Lane>(sources.blue.auiLeast[uiTable][uiHalf]));
                    const V sum = addErrors(d, hn::Load(d, row.aHalves[uiTable][uiHalf] + uiLevel), blue);
                    least[uiHalf] = hn::Min(least[uiHalf], hn::IfThenElse(isLeft, sum, none));
                }
        }
    }
    HalfErrors auiLeast{};
    for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
        auiLeast[uiHalf] = hn::GetLane(hn::MinOfLanes(d, least[uiHalf]));
    return auiLeast;
}

/// Adds a column without any error yet.
template <typename Lane>
HWY_INLINE void addColumn(size_t uiRed, size_t uiGreen, ColourColumns<Lane>& columns)
{
    const Tag5<Lane> d;
    ColourColumn<Lane>& column = columns.list.emplace_back();
    column.uiRed = uiRed;
    column.uiGreen = uiGreen;
    for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
        for (size_t uiLevel = 0; uiLevel < k_uiColumnLevels<Lane>; uiLevel += hn::Lanes(d))
            hn::StoreU(hn::Set(d, k_None<Lane>), d, column.a[uiHalf] + uiLevel);
    columns.aaui16Numbers[uiRed][uiGreen] = static_cast<uint16_t>(columns.list.size());
}

/// The least of all columns' errors.
template <typename Lane>
HWY_INLINE HalfErrors findLeastOfColumns(const std::vector<ColourColumn<Lane>>& list)
{
    const Tag5<Lane> d;
    HalfErrors auiLeast{};
    for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
    {
        auto least = hn::Set(d, k_None<Lane>);
        for (const ColourColumn<Lane>& column : list)
            for (size_t uiLevel = 0; uiLevel < k_uiLevels5; uiLevel += hn::Lanes(d))
                least = hn::Min(least, hn::LoadU(d, column.a[uiHalf] + k_uiBelow + uiLevel));
        auiLeast[uiHalf] = hn::GetLane(hn::MinOfLanes(d, least));
    }
    return auiLeast;
}

template <typename Lane>
HWY_NOINLINE ColourColumns<Lane> makeColumns(const EtcPixels& pixels, const std::array<uint32_t, 3>& auiWeights, uint32_t uiStart,
                                             uint32_t uiBound)
{
    // Not made by value: none of it needs to be cleared.
    const std::unique_ptr<ColumnSources<Lane>> pSources(new ColumnSources<Lane>);
    ColumnSources<Lane>& sources = *pSources;
    fillTerms(pixels.aui8Red, auiWeights[0], sources.red);
    fillTerms(pixels.aui8Green, auiWeights[1], sources.green);
    fillTerms(pixels.aui8Blue, auiWeights[2], sources.blue);

    const HalfErrors auiLimits = makeLimits(uiStart, findLeastOfChannels(sources));
    for (size_t uiRed = 0; uiRed < k_uiLevels5; ++uiRed)
    {
        sources.auiGreens[uiRed] = 0;
        if (sources.red.aLeast[uiRed] >= uiBound || !isPromisingRed(sources.red, uiRed, sources.green, sources.blue, auiLimits))
            continue;
        RowSums<Lane, k_uiLevels5>& row = sources.aRows[uiRed];
        fillLevel<k_uiLevels5>(pixels.aui8Red, auiWeights[0], uiRed, row.red);
        sumRow(sources.green, row);
        sources.auiGreens[uiRed] = findGreensBelow(row, uiBound);
    }

    ColourColumns<Lane> columns;
    columns.auiLimits = makeLimits(uiStart, findLeastOfRows(sources, uiBound));
    size_t uiColumns = 0;
    uint32_t uiAllGreens = 0;
    for (size_t uiRed = 0; uiRed < k_uiLevels5; ++uiRed)
        if (sources.auiGreens[uiRed] != 0)
        {
            sources.auiGreens[uiRed] &= findPromisingGreens(sources.aRows[uiRed], sources.blue, columns.auiLimits);
            uiColumns += hwy::PopCount(sources.auiGreens[uiRed]);
            uiAllGreens |= sources.auiGreens[uiRed];
        }
    columns.list.reserve(uiColumns);
    for (size_t uiRed = 0; uiRed < k_uiLevels5; ++uiRed)
        for (size_t uiGreen = 0; uiGreen < k_uiLevels5; ++uiGreen)
            if ((sources.auiGreens[uiRed] >> uiGreen & 1) != 0)
                addColumn(uiRed, uiGreen, columns);
    for (size_t uiGreen = 0; uiGreen < k_uiLevels5; ++uiGreen)
        if ((uiAllGreens >> uiGreen & 1) != 0)
            fillLevel<k_uiLevels5>(pixels.aui8Green, auiWeights[1], uiGreen, sources.aGreens[uiGreen]);

    // Table by table, as the terms of one table fit into the fastest cache.
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
        for (ColourColumn<Lane>& column : columns.list)
        {
            const RowSums<Lane, k_uiLevels5>& row = sources.aRows[column.uiRed];
            const uint32_t uiHalfMask = findPromisingHalves(row, column.uiGreen, sources.blue, uiTable, columns.auiLimits);
            if (uiHalfMask != 0)
                sweepBlues(row.red, sources.aGreens[column.uiGreen], sources.blue, uiTable, uiHalfMask, column.a[0] + k_uiBelow,
                           k_uiColumnLevels<Lane>);
        }
    columns.auiLeast = findLeastOfColumns(columns.list);
    return columns;
}

/// The second levels for a first one.
struct LevelRange
{
    explicit LevelRange(size_t uiFirst)
        : uiFrom(uiFirst - std::min(uiFirst, k_uiBelow)), uiTo(std::min(uiFirst + k_uiReach - k_uiBelow, k_uiLevels5))
    {
    }
    size_t uiFrom;
    size_t uiTo; ///< the level behind the last
};

/// Calls visit(column) for the columns of the second colours that go with a first one, in order.
template <typename Lane, typename Visit>
HWY_INLINE void forSecondColumns(const ColourColumns<Lane>& columns, const ColourColumn<Lane>& first, Visit visit)
{
    const LevelRange reds(first.uiRed);
    const LevelRange greens(first.uiGreen);
    for (size_t uiRed = reds.uiFrom; uiRed < reds.uiTo; ++uiRed)
        for (size_t uiGreen = greens.uiFrom; uiGreen < greens.uiTo; ++uiGreen)
            if (const size_t uiNumber = columns.aaui16Numbers[uiRed][uiGreen]; uiNumber != 0)
                visit(columns.list[uiNumber - 1]);
}

/// By first blue level: the least that the second half costs with any second colour.
template <typename Lane>
struct SecondLeast
{
    alignas(64) Lane a[k_uiColumnLevels<Lane> + k_uiLevels5];
};

template <typename Lane>
HWY_INLINE void findSecondLeast(const ColourColumns<Lane>& columns, const ColourColumn<Lane>& first, EEtcHalf eHalf,
                                SecondLeast<Lane>& least)
{
    const Tag5<Lane> d;
    const size_t uiLanes = hn::Lanes(d);
    constexpr size_t uiUsed = k_uiLevels5 + k_uiReach - 1;
    for (size_t i = 0; i < std::size(least.a); i += uiLanes)
        hn::Store(hn::Set(d, k_None<Lane>), d, least.a + i);
    forSecondColumns(columns, first,
                     [&](const ColourColumn<Lane>& second) HWY_ATTR
                     {
                         for (size_t i = 0; i < uiUsed; i += uiLanes)
                             hn::Store(hn::Min(hn::Load(d, least.a + i), hn::LoadU(d, second.a[eHalf] + i)), d, least.a + i);
                     });
    // Entry i covers the entries i to i + 7 of the columns, which are the levels i - 4 to i + 3.
    for (const size_t uiStep : {size_t{1}, size_t{2}, size_t{4}})
        for (size_t i = 0; i < uiUsed; i += uiLanes)
            hn::Store(hn::Min(hn::Load(d, least.a + i), hn::LoadU(d, least.a + i + uiStep)), d, least.a + i);
}

/// Whether a first colour comes below the bound in one of the halves that it fills.
template <EEtcMeasure eMeasure, typename Lane>
HWY_INLINE bool isTried(const EtcPixels& pixels, const ColourColumns<Lane>& columns, const ColourColumn<Lane>& first, size_t uiBlue,
                        uint32_t uiBound)
{
    for (const EEtcHalf eHalf : {eEtcLeft, eEtcTop})
        if (first.a[eHalf][k_uiBelow + uiBlue] < uiBound)
            return true;
    for (const EEtcHalf eHalf : {eEtcLeft, eEtcTop})
    {
        // From the limit on the error may be too high.
        if (columns.auiLimits[eHalf] >= uiBound || first.a[eHalf][k_uiBelow + uiBlue] < columns.auiLimits[eHalf])
            continue;
        const EtcColour base = {static_cast<uint8_t>(expandEtc5(static_cast<uint32_t>(first.uiRed))),
                                static_cast<uint8_t>(expandEtc5(static_cast<uint32_t>(first.uiGreen))),
                                static_cast<uint8_t>(expandEtc5(static_cast<uint32_t>(uiBlue)))};
        if (EtcMeasure<eMeasure>::fitHalf(pixels, eHalf, base).error < uiBound)
            return true;
    }
    return false;
}

/// Goes through the pairs of one first colour.
template <EEtcMeasure eMeasure, typename Lane>
HWY_NOINLINE void tryFirst(const ColourColumns<Lane>& columns, const ColourColumn<Lane>& first, size_t uiBlue, EtcBestPair& best)
{
    const uint32_t uiLeft = first.a[eEtcLeft][k_uiBelow + uiBlue];
    const uint32_t uiTop = first.a[eEtcTop][k_uiBelow + uiBlue];
    const LevelRange blues(uiBlue);
    forSecondColumns(
        columns, first,
        [&](const ColourColumn<Lane>& second) HWY_ATTR
        {
            for (size_t uiSecond = blues.uiFrom; uiSecond < blues.uiTo; ++uiSecond)
            {
                const uint32_t uiRows = uiTop + second.a[eEtcBottom][k_uiBelow + uiSecond];
                if (uiRows < best.uiError)
                {
                    best.uiError = uiRows;
                    if (eMeasure == EEtcMeasure::ePerceptual)
                        best.bFlip = true;
                }
                const uint32_t uiColumns = uiLeft + second.a[eEtcRight][k_uiBelow + uiSecond];
                if (uiColumns < best.uiError)
                {
                    best.uiError = uiColumns;
                    best.levels0 = {static_cast<uint8_t>(first.uiRed), static_cast<uint8_t>(first.uiGreen), static_cast<uint8_t>(uiBlue)};
                    best.levels1 = {static_cast<uint8_t>(second.uiRed), static_cast<uint8_t>(second.uiGreen),
                                    static_cast<uint8_t>(uiSecond)};
                    best.bFlip = false;
                }
            }
        });
}

/// The blue levels (by bit) of a column of first colours some pair of which may be below uiBest, if a second colour costs what
/// getLeast(half, blue level) says, as a vector.
template <typename Lane, typename GetLeast>
HWY_INLINE uint32_t findPromisingFirsts(const ColourColumn<Lane>& first, uint32_t uiBest, GetLeast getLeast)
{
    const Tag5<Lane> d;
    const auto best = hn::Set(d, static_cast<Lane>(uiBest));
    uint32_t uiBlues = 0;
    for (size_t uiLevel = 0; uiLevel < k_uiLevels5; uiLevel += hn::Lanes(d))
    {
        const auto columns = addErrors(d, hn::LoadU(d, first.a[eEtcLeft] + k_uiBelow + uiLevel), getLeast(eEtcRight, uiLevel));
        const auto rows = addErrors(d, hn::LoadU(d, first.a[eEtcTop] + k_uiBelow + uiLevel), getLeast(eEtcBottom, uiLevel));
        uiBlues |= getMaskBits(d, hn::Lt(hn::Min(columns, rows), best)) << uiLevel;
    }
    return uiBlues;
}

template <EEtcMeasure eMeasure, typename Lane>
HWY_NOINLINE void goThroughPairs(const EtcPixels& pixels, uint32_t uiBound, EtcBestPair& best)
{
    const Tag5<Lane> d;
    const ColourColumns<Lane> columns = makeColumns<Lane>(pixels, EtcMeasure<eMeasure>::k_auiWeights, best.uiError, uiBound);
    SecondLeast<Lane> right, bottom;
    for (const ColourColumn<Lane>& first : columns.list)
    {
        const auto getLeastOfAll = [&](EEtcHalf eHalf, size_t) HWY_ATTR { return hn::Set(d, static_cast<Lane>(columns.auiLeast[eHalf])); };
        if (findPromisingFirsts(first, best.uiError, getLeastOfAll) == 0)
            continue;
        findSecondLeast(columns, first, eEtcRight, right);
        findSecondLeast(columns, first, eEtcBottom, bottom);
        const auto getLeast = [&](EEtcHalf eHalf, size_t uiLevel) HWY_ATTR
        { return hn::Load(d, (eHalf == eEtcRight ? right : bottom).a + uiLevel); };
        const uint32_t uiBlues = findPromisingFirsts(first, best.uiError, getLeast);
        for (size_t uiBlue = 0; uiBlue < k_uiLevels5; ++uiBlue)
        {
            if ((uiBlues >> uiBlue & 1) == 0 || !isTried<eMeasure>(pixels, columns, first, uiBlue, uiBound))
                continue;
            tryFirst<eMeasure>(columns, first, uiBlue, best);
            uiBound = std::min(uiBound, best.uiError);
        }
    }
}

void goThroughPairsNarrow(const EtcPixels& pixels, uint32_t uiBound, EtcBestPair& best)
{
    goThroughPairs<EEtcMeasure::ePlain, uint16_t>(pixels, uiBound, best);
}

void goThroughPairsWide(const EtcPixels& pixels, uint32_t uiBound, EtcBestPair& best)
{
    goThroughPairs<EEtcMeasure::ePlain, uint32_t>(pixels, uiBound, best);
}

void goThroughPairsPerceptual(const EtcPixels& pixels, uint32_t uiBound, EtcBestPair& best)
{
    goThroughPairs<EEtcMeasure::ePerceptual, uint32_t>(pixels, uiBound, best);
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(goThroughPairsNarrow);
HWY_EXPORT(goThroughPairsWide);
HWY_EXPORT(goThroughPairsPerceptual);

template <>
void improvePair<EEtcMeasure::ePlain>(const EtcPixels& pixels, uint32_t uiBound, EtcBestPair& best)
{
    if (best.uiError < std::numeric_limits<uint16_t>::max())
        HWY_DYNAMIC_DISPATCH(goThroughPairsNarrow)(pixels, uiBound, best);
    else
        HWY_DYNAMIC_DISPATCH(goThroughPairsWide)(pixels, uiBound, best);
}

template <>
void improvePair<EEtcMeasure::ePerceptual>(const EtcPixels& pixels, uint32_t uiBound, EtcBestPair& best)
{
    HWY_DYNAMIC_DISPATCH(goThroughPairsPerceptual)(pixels, uiBound, best);
}

} // namespace moxtexture
#endif
