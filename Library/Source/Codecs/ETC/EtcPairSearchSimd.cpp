#include "Codecs/ETC/EtcPairSearch.h"

#include <algorithm>

#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcModePaints.h"
#include "Codecs/ETC/EtcTables.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcPairSearchSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

// One distance after the other, and in each one level after the other: reds, greens, blues. The errors of a level are lower
// bounds of all that follow from it: what is not fixed yet counts with its least error at each pixel. Sixteen levels of a channel
// are the lanes of a vector.
//
// Errors are sums of sixteen terms of 16 bits that saturate. Where the bound needs more bits, every channel's term is shifted right
// (so that sums stay lower bounds) and what then passes is measured exactly.
//
// The result is that of going through all pairs in their order with a bound that only a lesser error lowers: the least error, and
// the first pair that has it. So the distances can come one by one as long as equal errors are settled by the pairs' places.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

namespace hn = hwy::HWY_NAMESPACE;

using D16 = hn::CappedTag<uint16_t, 16>;
using V16 = hn::Vec<D16>;

using D32 = hn::CappedTag<int32_t, 16>;
using D16OfD32 = hn::Rebind<uint16_t, D32>;

constexpr D16 d16{};
constexpr D32 d32{};
constexpr D16OfD32 d16OfD32{};

constexpr size_t k_uiPixels = 16;
constexpr size_t k_uiLevels = 16;
constexpr size_t k_uiMostPaints = 3;

/// A shifted error below this is worth finer terms, with which fewer pairs pass.
constexpr uint32_t k_uiCoarseBelow = 8192;

/// For every pixel a number for every level of one channel.
struct alignas(64) LevelRow
{
    uint16_t aaui[k_uiPixels][k_uiLevels];
};

/// For every pixel one number.
struct alignas(32) PixelRow
{
    uint16_t aui[k_uiPixels];
};

/// The errors of one channel alone, of one paint.
struct PaintTerms
{
    LevelRow row;
    PixelRow least; ///< over all levels
};

/// The errors of one of the two colours at one distance: a pixel has that of its nearest paint. Rows are filled where they are
/// reached.
struct ColourTables
{
    size_t uiPaints;
    PaintTerms aaTerms[3][k_uiMostPaints]; ///< channels, paints
    LevelRow reds;                         ///< lanes: reds; least over all greens and blues
    LevelRow aGreens[16];                  ///< for each red; lanes: greens; least over all blues
    LevelRow aBlues[256];                  ///< for each red and green; lanes: blues; exact but for the shift
    std::array<bool, 16> abGreensFilled;
    std::array<bool, 256> abBluesFilled;
};

HWY_INLINE uint16_t addSaturated(uint32_t a, uint32_t b)
{
    return static_cast<uint16_t>(std::min(a + b, uint32_t{65535}));
}

void fillPaintTerms(const std::array<uint8_t, 16>& aui8Pixels, int32_t iOffset, uint32_t uiWeight, uint32_t uiShift, PaintTerms& terms)
{
    const size_t uiLanes = hn::Lanes(d32);
    const auto weight = hn::Set(d32, static_cast<int32_t>(uiWeight));
    const auto most = hn::Set(d32, 65535);
    for (size_t uiPixel = 0; uiPixel < k_uiPixels; ++uiPixel)
    {
        const auto pixel = hn::Set(d32, aui8Pixels[uiPixel]);
        auto least = most;
        for (size_t i = 0; i < k_uiLevels; i += uiLanes)
        {
            const auto colour = hn::Mul(hn::Iota(d32, static_cast<int32_t>(i)), hn::Set(d32, 17));
            const auto paint = hn::Clamp(hn::Add(colour, hn::Set(d32, iOffset)), hn::Zero(d32), hn::Set(d32, 255));
            const auto difference = hn::Sub(paint, pixel);
            const auto square = hn::Mul(hn::Mul(difference, difference), weight);
            const auto term = hn::Min(hn::ShiftRightSame(square, static_cast<int>(uiShift)), most);
            least = hn::Min(least, term);
            hn::Store(hn::DemoteTo(d16OfD32, term), d16OfD32, terms.row.aaui[uiPixel] + i);
        }
        terms.least.aui[uiPixel] = static_cast<uint16_t>(hn::GetLane(hn::MinOfLanes(d32, least)));
    }
}

/// row = least over the paints of (constant of the pixel and paint + terms of the channel).
template <typename Constant>
HWY_INLINE void fillLeast(const ColourTables& tables, size_t uiChannel, Constant constant, LevelRow& row)
{
    const size_t uiLanes = hn::Lanes(d16);
    for (size_t uiPixel = 0; uiPixel < k_uiPixels; ++uiPixel)
        for (size_t i = 0; i < k_uiLevels; i += uiLanes)
        {
            V16 least = hn::Set(d16, 65535);
            for (size_t uiPaint = 0; uiPaint < tables.uiPaints; ++uiPaint)
            {
                const V16 terms = hn::Load(d16, tables.aaTerms[uiChannel][uiPaint].row.aaui[uiPixel] + i);
                least = hn::Min(least, hn::SaturatedAdd(hn::Set(d16, constant(uiPixel, uiPaint)), terms));
            }
            hn::Store(least, d16, row.aaui[uiPixel] + i);
        }
}

void fillReds(ColourTables& tables)
{
    fillLeast(
        tables, 0,
        [&](size_t uiPixel, size_t uiPaint)
        { return addSaturated(tables.aaTerms[1][uiPaint].least.aui[uiPixel], tables.aaTerms[2][uiPaint].least.aui[uiPixel]); },
        tables.reds);
}

HWY_INLINE const LevelRow& getGreens(ColourTables& tables, size_t uiRed)
{
    if (!tables.abGreensFilled[uiRed])
    {
        tables.abGreensFilled[uiRed] = true;
        fillLeast(
            tables, 1,
            [&](size_t uiPixel, size_t uiPaint)
            { return addSaturated(tables.aaTerms[0][uiPaint].row.aaui[uiPixel][uiRed], tables.aaTerms[2][uiPaint].least.aui[uiPixel]); },
            tables.aGreens[uiRed]);
    }
    return tables.aGreens[uiRed];
}

HWY_INLINE const LevelRow& getBlues(ColourTables& tables, size_t uiRed, size_t uiGreen)
{
    const size_t uiRow = uiRed * 16 + uiGreen;
    if (!tables.abBluesFilled[uiRow])
    {
        tables.abBluesFilled[uiRow] = true;
        fillLeast(
            tables, 2,
            [&](size_t uiPixel, size_t uiPaint) {
                return addSaturated(tables.aaTerms[0][uiPaint].row.aaui[uiPixel][uiRed],
                                    tables.aaTerms[1][uiPaint].row.aaui[uiPixel][uiGreen]);
            },
            tables.aBlues[uiRow]);
    }
    return tables.aBlues[uiRow];
}

/// Sixteen sums, one a level.
struct alignas(64) Sums
{
    uint16_t aui[k_uiLevels];
};

/// For every level of `row` the sum over the pixels of the lesser of its error and that of one level of `other`.
/// @return a bit for each level whose sum is below the threshold
HWY_INLINE uint32_t sumsBelow(const LevelRow& other, size_t uiLevel, const LevelRow& row, uint32_t uiThreshold, Sums& sums)
{
    const size_t uiLanes = hn::Lanes(d16);
    const V16 threshold = hn::Set(d16, static_cast<uint16_t>(uiThreshold));
    uint32_t uiBits = 0;
    for (size_t i = 0; i < k_uiLevels; i += uiLanes)
    {
        V16 even = hn::Zero(d16);
        V16 odd = hn::Zero(d16);
        for (size_t uiPixel = 0; uiPixel < k_uiPixels; uiPixel += 2)
        {
            even = hn::SaturatedAdd(even, hn::Min(hn::Set(d16, other.aaui[uiPixel][uiLevel]), hn::Load(d16, row.aaui[uiPixel] + i)));
            odd = hn::SaturatedAdd(odd, hn::Min(hn::Set(d16, other.aaui[uiPixel + 1][uiLevel]), hn::Load(d16, row.aaui[uiPixel + 1] + i)));
        }
        const V16 sum = hn::SaturatedAdd(even, odd);
        const auto below = hn::Lt(sum, threshold);
        if (hn::AllFalse(d16, below))
            continue;
        hn::Store(sum, d16, sums.aui + i);
        uint8_t aui8Bits[8] = {};
        hn::StoreMaskBits(d16, below, aui8Bits);
        uiBits |= (aui8Bits[0] | uint32_t{aui8Bits[1]} << 8) << i;
    }
    return uiBits;
}

HWY_INLINE size_t takeLowest(uint32_t& uiBits)
{
    const size_t uiLowest = static_cast<size_t>(hwy::Num0BitsBelowLS1Bit_Nonzero32(uiBits));
    uiBits &= uiBits - 1;
    return uiLowest;
}

class CPairSearch
{
public:
    CPairSearch(const EtcPixels& pixels, EEtcPairKind eKind, const std::array<uint32_t, 3>& auiWeights, uint32_t uiBound)
        : m_pixels(pixels), m_auiWeights(auiWeights), m_bH(eKind == eEtcPairsH), m_second(m_bH ? m_first : m_onePaint), m_uiBest(uiBound)
    {
        chooseShift();
    }

    CPairSearch(const CPairSearch&) = delete;
    CPairSearch& operator=(const CPairSearch&) = delete;

    void search()
    {
        for (const int32_t iDistance : k_aui8EtcDistances)
        {
            m_iDistance = iDistance;
            do
            {
                if (m_bTooCoarse)
                    chooseShift();
                startTables({-iDistance, iDistance, 0}, m_bH ? 2 : 3, m_first);
                sweepReds();
            } while (m_bTooCoarse);
        }
    }

    uint32_t getError() const { return m_uiBest; }
    const EtcPair& getPair() const { return m_pair; }

private:
    void chooseShift()
    {
        m_uiShift = 0;
        while (m_uiBest >> m_uiShift >= 65535)
            ++m_uiShift;
        m_bTooCoarse = false;
        if (!m_bH)
            startTables({0}, 1, m_onePaint);
    }

    void startTables(const std::array<int32_t, k_uiMostPaints>& aiOffsets, size_t uiPaints, ColourTables& tables) const
    {
        const std::array<uint8_t, 16>* const apPlanes[] = {&m_pixels.aui8Red, &m_pixels.aui8Green, &m_pixels.aui8Blue};
        tables.uiPaints = uiPaints;
        for (size_t uiChannel = 0; uiChannel < 3; ++uiChannel)
            for (size_t uiPaint = 0; uiPaint < uiPaints; ++uiPaint)
                fillPaintTerms(*apPlanes[uiChannel], aiOffsets[uiPaint], m_auiWeights[uiChannel], m_uiShift,
                               tables.aaTerms[uiChannel][uiPaint]);
        fillReds(tables);
        tables.abGreensFilled.fill(false);
        tables.abBluesFilled.fill(false);
    }

    /// A sum at or above it cannot belong to a pair from this place on that is better than the best so far.
    HWY_INLINE uint32_t threshold(uint32_t uiPlace) const
    {
        if (m_bTooCoarse)
            return 0;
        const uint32_t uiLimit = m_uiBest + (uiPlace < m_uiPlace ? 1 : 0);
        return uiLimit == 0 ? 0 : ((uiLimit - 1) >> m_uiShift) + 1;
    }

    void sweepReds()
    {
        for (size_t r1 = 0; r1 < 16; ++r1)
        {
            Sums sums;
            uint32_t uiReds = sumsBelow(m_first.reds, r1, m_second.reds, threshold(static_cast<uint32_t>(r1 << 20)), sums);
            if (m_bH)
                uiReds &= 0xFFFFu << r1;
            while (uiReds != 0)
                sweepGreens(r1, takeLowest(uiReds));
        }
    }

    void sweepGreens(size_t r1, size_t r2)
    {
        Sums sums;
        const uint32_t uiPlace = static_cast<uint32_t>(r1 << 20 | r2 << 16);
        const LevelRow& firstGreens = getGreens(m_first, r1);
        const LevelRow& secondGreens = getGreens(m_second, r2);
        uint32_t uiFirst = sumsBelow(m_second.reds, r2, firstGreens, threshold(uiPlace), sums);
        while (uiFirst != 0)
        {
            const size_t g1 = takeLowest(uiFirst);
            uint32_t uiSecond = sumsBelow(firstGreens, g1, secondGreens, threshold(uiPlace | static_cast<uint32_t>(g1 << 12)), sums);
            if (m_bH && r1 == r2)
                uiSecond &= 0xFFFFu << g1;
            while (uiSecond != 0)
                sweepBlues(r1, r2, g1, takeLowest(uiSecond));
        }
    }

    void sweepBlues(size_t r1, size_t r2, size_t g1, size_t g2)
    {
        Sums sums;
        const uint32_t uiPlace = static_cast<uint32_t>(r1 << 20 | r2 << 16 | g1 << 12 | g2 << 8);
        const LevelRow& firstBlues = getBlues(m_first, r1, g1);
        uint32_t uiFirst = sumsBelow(getGreens(m_second, r2), g2, firstBlues, threshold(uiPlace), sums);
        if (uiFirst == 0)
            return;
        const LevelRow& secondBlues = getBlues(m_second, r2, g2);
        while (uiFirst != 0)
        {
            const size_t b1 = takeLowest(uiFirst);
            uint32_t uiSecond = sumsBelow(firstBlues, b1, secondBlues, threshold(uiPlace | static_cast<uint32_t>(b1 << 4)), sums);
            if (m_bH && r1 == r2 && g1 == g2)
                uiSecond &= 0xFFFEu << b1;
            while (uiSecond != 0)
            {
                const size_t b2 = takeLowest(uiSecond);
                measure({static_cast<uint32_t>(r1 << 8 | g1 << 4 | b1), static_cast<uint32_t>(r2 << 8 | g2 << 4 | b2)}, sums.aui[b2]);
            }
        }
    }

    void measure(const EtcPair& pair, uint32_t uiSum)
    {
        const uint32_t uiError = m_uiShift == 0 ? uiSum : exactError(pair);
        const uint32_t uiPlace = placeOfPair(pair);
        if (uiError < m_uiBest || (uiError == m_uiBest && uiPlace < m_uiPlace))
        {
            m_uiBest = uiError;
            m_uiPlace = uiPlace;
            m_pair = pair;
            m_bTooCoarse = m_uiShift > 0 && m_uiBest >> m_uiShift < k_uiCoarseBelow;
        }
    }

    /// The error of a pair at this distance.
    uint32_t exactError(const EtcPair& pair) const
    {
        const EtcColour first = expandLevels444(colourOfNumber444(pair.uiFirst));
        const EtcColour second = expandLevels444(colourOfNumber444(pair.uiSecond));
        const EtcModePaints paints = {offsetColour(first, -m_iDistance), offsetColour(first, m_iDistance),
                                      m_bH ? offsetColour(second, -m_iDistance) : first, m_bH ? offsetColour(second, m_iDistance) : second};
        uint32_t uiSum = 0;
        for (size_t uiPixel = 0; uiPixel < k_uiPixels; ++uiPixel)
        {
            uint32_t uiLeast = UINT32_MAX;
            for (const EtcColour& paint : paints)
                uiLeast = std::min(uiLeast, paintError(m_pixels, uiPixel, paint, m_auiWeights));
            uiSum += uiLeast;
        }
        return uiSum;
    }

    const EtcPixels& m_pixels;
    std::array<uint32_t, 3> m_auiWeights;
    bool m_bH;
    ColourTables m_first;
    ColourTables m_onePaint; ///< T mode's second colour, the same at every distance
    ColourTables& m_second;
    uint32_t m_uiShift = 0;
    bool m_bTooCoarse = false; ///< the best error has become low for the shift: nothing passes any more, and the distance starts again
    int32_t m_iDistance = 0;
    uint32_t m_uiBest;
    uint32_t m_uiPlace = 0; ///< of the best pair; before there is one nothing comes before it, so that only a lesser error is taken
    EtcPair m_pair;
};

} // namespace

uint32_t findPair(const EtcPixels& pixels, EEtcPairKind eKind, const std::array<uint32_t, 3>& auiWeights, uint32_t uiBound, EtcPair& pair)
{
    CPairSearch search(pixels, eKind, auiWeights, uiBound);
    search.search();
    if (search.getError() < uiBound)
        pair = search.getPair();
    return search.getError();
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(findPair);

uint32_t findLeastPair(const EtcPixels& pixels, EEtcPairKind eKind, const std::array<uint32_t, 3>& auiWeights, uint32_t uiBound,
                       EtcPair& pair)
{
    return HWY_DYNAMIC_DISPATCH(findPair)(pixels, eKind, auiWeights, uiBound, pair);
}

} // namespace moxtexture
#endif
