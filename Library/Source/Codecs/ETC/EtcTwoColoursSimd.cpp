#include "Codecs/ETC/EtcTwoColours.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "Codecs/ETC/EtcClusterTables.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcTwoColoursSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

// One pass over a block assigns each pixel to the nearer of two centres, pixels in lanes; then the centres move to the means of
// their pixels. In the transformed space errors and means are sums of doubles, which are added in the order of the pixels since
// they are compared for equality. In RGB all sums are whole numbers and may be added in any order.

#ifndef HALVANE_ETC_TWO_COLOURS_ONCE
#define HALVANE_ETC_TWO_COLOURS_ONCE
namespace moxtexture
{

constexpr uint32_t k_ui32AllEtcPixels = 0xFFFF;

/// Which pixels went to centre 0, bit y * 4 + x each, and the sum of all pixels' distances to their centres.
struct EtcAssignment
{
    uint32_t ui32First;
    double fError;
};

/// Assignments that their own means reproduce, with the error there: an attempt that comes to one of them ends with it.
class CEtcSettledAssignments
{
public:
    const EtcAssignment* find(uint32_t ui32First) const
    {
        for (size_t i = 0; i < m_uiCount; ++i)
            if (m_a[i].ui32First == ui32First)
                return &m_a[i];
        return nullptr;
    }

    void add(const EtcAssignment& assignment) { m_a[m_uiCount++] = assignment; }

private:
    size_t m_uiCount = 0;
    std::array<EtcAssignment, k_uiEtcClusterAttempts> m_a; // one an attempt at the most
};

} // namespace moxtexture
#endif

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

namespace hn = hwy::HWY_NAMESPACE;

constexpr size_t k_uiPixels = 16;

/// Doubles of pixels side by side, and of the dimensions of one pixel or centre (three and a zero).
using DPixels = hn::CappedTag<double, 8>;
using DPoint = hn::CappedTag<double, 4>;
constexpr size_t k_uiPixelLanes = hn::MaxLanes(DPixels());
constexpr size_t k_uiPointLanes = hn::MaxLanes(DPoint());
constexpr size_t k_uiPointParts = 4 / k_uiPointLanes;

template <typename T>
struct Centres
{
    alignas(32) T aa[2][4];
};

template <class D>
HWY_INLINE uint32_t bitsOfMask(D d, hn::Mask<D> mask)
{
    uint8_t aui8[8] = {};
    hn::StoreMaskBits(d, mask, aui8);
    return static_cast<uint32_t>(aui8[0]) | static_cast<uint32_t>(aui8[1]) << 8;
}

/// Bytes as numbers of the lanes' type.
template <class D>
HWY_INLINE hn::Vec<D> loadBytes(D d, const uint8_t* HWY_RESTRICT pui8)
{
    const hn::Rebind<uint8_t, D> d8;
    const hn::Rebind<int32_t, D> d32;
    if constexpr (std::is_same_v<hn::TFromD<D>, double>)
        return hn::PromoteTo(d, hn::PromoteTo(d32, hn::LoadU(d8, pui8)));
    else
        return hn::ConvertTo(d, hn::PromoteTo(d32, hn::LoadU(d8, pui8)));
}

/// Coordinates along intensity, R - G and R + G - 2 B.
/// @tparam bHalfIntensity  the square along intensity counts half; else it doesn't count
template <bool bHalfIntensity>
class CTransformedBlock
{
public:
    using CentrePair = Centres<double>;

    explicit HWY_INLINE CTransformedBlock(const EtcPixels& pixels)
    {
        const DPixels d;
        using V = hn::Vec<DPixels>;
        const V root3 = hn::Set(d, std::sqrt(3.0));
        const V root2 = hn::Set(d, std::sqrt(2.0));
        const V root6 = hn::Set(d, std::sqrt(6.0));
        V aLeast[3];
        V aMost[3];
        for (size_t i = 0; i < k_uiPixels; i += k_uiPixelLanes)
        {
            const V red = loadBytes(d, pixels.aui8Red.data() + i);
            const V green = loadBytes(d, pixels.aui8Green.data() + i);
            const V blue = loadBytes(d, pixels.aui8Blue.data() + i);
            const V both = hn::Add(red, green);
            const V aCoordinates[3] = {hn::Div(hn::Add(both, blue), root3), hn::Div(hn::Sub(red, green), root2),
                                       hn::Div(hn::Sub(both, hn::Add(blue, blue)), root6)};
            hn::StoreInterleaved4(aCoordinates[0], aCoordinates[1], aCoordinates[2], hn::Zero(d), d, m_aafPoints[i]);
            for (size_t c = 0; c < 3; ++c)
            {
                hn::Store(aCoordinates[c], d, m_aafPlanes[c] + i);
                aLeast[c] = i == 0 ? aCoordinates[c] : hn::Min(aLeast[c], aCoordinates[c]);
                aMost[c] = i == 0 ? aCoordinates[c] : hn::Max(aMost[c], aCoordinates[c]);
            }
        }
        for (size_t c = 0; c < 3; ++c)
        {
            m_afLeast[c] = hn::GetLane(hn::MinOfLanes(d, aLeast[c]));
            m_afRange[c] = hn::GetLane(hn::MaxOfLanes(d, aMost[c])) - m_afLeast[c];
        }
        m_afLeast[3] = 0.0;
        m_afRange[3] = 0.0;
    }

    HWY_INLINE void placeSeeds(uint32_t uiAttempt, CentrePair& centres) const
    {
        const DPoint d;
        for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
            for (size_t i = 0; i < 4; i += k_uiPointLanes)
            {
                const auto part = hn::Load(d, k_etcClusterSeeds.aaaf[uiAttempt][uiCentre] + i);
                hn::Store(hn::Add(hn::Mul(part, hn::Load(d, m_afRange + i)), hn::Load(d, m_afLeast + i)), d, centres.aa[uiCentre] + i);
            }
    }

    /// @return the pixels that go to centre 0, bit y * 4 + x each
    HWY_INLINE uint32_t assign(const CentrePair& centres)
    {
        const DPixels d;
        uint32_t ui32First = 0;
        for (size_t i = 0; i < k_uiPixels; i += k_uiPixelLanes)
        {
            const auto distance0 = distanceTo(centres.aa[0], i);
            const auto distance1 = distanceTo(centres.aa[1], i);
            const auto isFirst = hn::Gt(distance1, distance0);
            hn::Store(hn::Min(distance0, distance1), d, m_afNearest + i);
            hn::Store(hn::VecFromMask(d, isFirst), d, m_afIsFirst + i);
            ui32First |= bitsOfMask(d, isFirst) << i;
        }
        return ui32First;
    }

    /// The error of the last assignment.
    HWY_INLINE double sumError() const
    {
        double fError = 0.0;
        for (const double fDistance : m_afNearest)
            fError += fDistance;
        return fError;
    }

    /// The same, and the means of the pixels of the last assignment, which must leave neither centre without any. The sums don't wait
    /// for each other.
    HWY_INLINE double sumErrorAndMeans(uint32_t ui32First, CentrePair& means) const
    {
        const DPoint d;
        using V = hn::Vec<DPoint>;
        double fError = 0.0;
        V aaSums[2][k_uiPointParts];
        for (auto& aSums : aaSums)
            for (V& sum : aSums)
                sum = hn::Zero(d);
        for (size_t i = 0; i < k_uiPixels; ++i)
        {
            const V isFirst = hn::Set(d, m_afIsFirst[i]);
            for (size_t uiPart = 0; uiPart < k_uiPointParts; ++uiPart)
            {
                const V point = hn::Load(d, m_aafPoints[i] + uiPart * k_uiPointLanes);
                aaSums[0][uiPart] = hn::Add(aaSums[0][uiPart], hn::And(isFirst, point));
                aaSums[1][uiPart] = hn::Add(aaSums[1][uiPart], hn::AndNot(isFirst, point));
            }
            fError += m_afNearest[i];
        }
        const auto fFirst = static_cast<double>(hwy::PopCount(uint64_t{ui32First}));
        const double afCounts[2] = {fFirst, 16.0 - fFirst};
        for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
            for (size_t uiPart = 0; uiPart < k_uiPointParts; ++uiPart)
                hn::Store(hn::Div(aaSums[uiCentre][uiPart], hn::Set(d, afCounts[uiCentre])), d,
                          means.aa[uiCentre] + uiPart * k_uiPointLanes);
        return fError;
    }

    static EtcColourPair toBytes(const CentrePair& centres)
    {
        EtcColourPair bytes;
        for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
        {
            const double fIntensity = centres.aa[uiCentre][0] / std::sqrt(3.0);
            const double f1 = centres.aa[uiCentre][1] / std::sqrt(2.0);
            const double f2 = centres.aa[uiCentre][2] / std::sqrt(6.0);
            const double afChannels[3] = {fIntensity + f1 + f2, fIntensity - f1 + f2, fIntensity - 2.0 * f2};
            for (size_t c = 0; c < 3; ++c)
                bytes[uiCentre][c] = static_cast<uint8_t>(static_cast<int32_t>(std::clamp(afChannels[c], 0.0, 255.0) + 0.5));
        }
        return bytes;
    }

private:
    HWY_INLINE hn::Vec<DPixels> squareTo(const double* pfCentre, size_t uiDimension, size_t uiPixel) const
    {
        const DPixels d;
        const auto difference = hn::Sub(hn::Load(d, m_aafPlanes[uiDimension] + uiPixel), hn::Set(d, pfCentre[uiDimension]));
        return hn::Mul(difference, difference);
    }

    HWY_INLINE hn::Vec<DPixels> distanceTo(const double* pfCentre, size_t uiPixel) const
    {
        const DPixels d;
        auto sum = squareTo(pfCentre, 1, uiPixel);
        if constexpr (bHalfIntensity)
            sum = hn::Add(hn::Mul(hn::Set(d, 0.5), squareTo(pfCentre, 0, uiPixel)), sum);
        return hn::Add(sum, squareTo(pfCentre, 2, uiPixel));
    }

    alignas(64) double m_aafPlanes[3][k_uiPixels];
    alignas(64) double m_aafPoints[k_uiPixels][4];
    alignas(64) double m_afIsFirst[k_uiPixels]; ///< all bits set where the last assignment chose centre 0
    alignas(64) double m_afNearest[k_uiPixels]; ///< distances to the centres of the last assignment
    alignas(32) double m_afLeast[4];
    alignas(32) double m_afRange[4];
};

/// Red, green and blue, the centres in whole numbers.
class CRGBBlock
{
public:
    using CentrePair = Centres<float>;

    explicit HWY_INLINE CRGBBlock(const EtcPixels& pixels)
    {
        const D d;
        const uint8_t* const apPlanes[3] = {pixels.aui8Red.data(), pixels.aui8Green.data(), pixels.aui8Blue.data()};
        for (size_t c = 0; c < 3; ++c)
        {
            auto least = hn::Set(d, 255.0f);
            auto most = hn::Zero(d);
            for (size_t i = 0; i < k_uiPixels; i += hn::MaxLanes(d))
            {
                const auto values = loadBytes(d, apPlanes[c] + i);
                hn::Store(values, d, m_aafPlanes[c] + i);
                least = hn::Min(least, values);
                most = hn::Max(most, values);
            }
            m_afLeast[c] = static_cast<double>(hn::GetLane(hn::MinOfLanes(d, least)));
            m_afRange[c] = static_cast<double>(hn::GetLane(hn::MaxOfLanes(d, most))) - m_afLeast[c];
        }
        for (size_t uiGroup = 0; uiGroup < 4; ++uiGroup)
        {
            m_aaui64Sums[uiGroup][0] = 0;
            for (uint32_t uiBit = 0; uiBit < 4; ++uiBit)
            {
                const size_t i = uiGroup * 4 + uiBit;
                const uint64_t ui64Pixel = uint64_t{pixels.aui8Red[i]} | uint64_t{pixels.aui8Green[i]} << k_uiFieldBits |
                                           uint64_t{pixels.aui8Blue[i]} << 2 * k_uiFieldBits;
                for (size_t j = 0; j < size_t{1} << uiBit; ++j)
                    m_aaui64Sums[uiGroup][(size_t{1} << uiBit) + j] = m_aaui64Sums[uiGroup][j] + ui64Pixel;
            }
        }
        m_ui64Sum = sumOf(k_ui32AllEtcPixels);
    }

    HWY_INLINE void placeSeeds(uint32_t uiAttempt, CentrePair& centres) const
    {
        for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
            for (size_t c = 0; c < 3; ++c)
            {
                const double f = k_etcClusterSeeds.aaaf[uiAttempt][uiCentre][c] * m_afRange[c] + m_afLeast[c];
                centres.aa[uiCentre][c] = static_cast<float>(static_cast<int32_t>(f + 0.5));
            }
    }

    HWY_INLINE uint32_t assign(const CentrePair& centres)
    {
        const D d;
        auto sum = hn::Zero(d);
        uint32_t ui32First = 0;
        for (size_t i = 0; i < k_uiPixels; i += hn::MaxLanes(d))
        {
            const auto distance0 = distanceTo(centres.aa[0], i);
            const auto distance1 = distanceTo(centres.aa[1], i);
            sum = hn::Add(sum, hn::Min(distance0, distance1));
            ui32First |= bitsOfMask(d, hn::Gt(distance1, distance0)) << i;
        }
        m_fError = static_cast<double>(hn::GetLane(hn::SumOfLanes(d, sum)));
        return ui32First;
    }

    HWY_INLINE double sumError() const { return m_fError; }

    HWY_INLINE double sumErrorAndMeans(uint32_t ui32First, CentrePair& means) const
    {
        const auto uiFirst = static_cast<uint32_t>(hwy::PopCount(uint64_t{ui32First}));
        const uint64_t ui64First = sumOf(ui32First);
        placeMean(ui64First, uiFirst, means.aa[0]);
        placeMean(m_ui64Sum - ui64First, static_cast<uint32_t>(k_uiPixels) - uiFirst, means.aa[1]);
        return m_fError;
    }

    static EtcColourPair toBytes(const CentrePair& centres)
    {
        EtcColourPair bytes;
        for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
            for (size_t c = 0; c < 3; ++c)
                bytes[uiCentre][c] = static_cast<uint8_t>(static_cast<int32_t>(centres.aa[uiCentre][c]));
        return bytes;
    }

private:
    using D = hn::CappedTag<float, k_uiPixels>;
    static constexpr uint32_t k_uiFieldBits = 16; ///< of a channel's sum in a word

    HWY_INLINE hn::Vec<D> squareTo(const float* pfCentre, size_t uiChannel, size_t uiPixel) const
    {
        const D d;
        const auto difference = hn::Sub(hn::Load(d, m_aafPlanes[uiChannel] + uiPixel), hn::Set(d, pfCentre[uiChannel]));
        return hn::Mul(difference, difference);
    }

    HWY_INLINE hn::Vec<D> distanceTo(const float* pfCentre, size_t uiPixel) const
    {
        return hn::Add(hn::Add(squareTo(pfCentre, 0, uiPixel), squareTo(pfCentre, 1, uiPixel)), squareTo(pfCentre, 2, uiPixel));
    }

    HWY_INLINE uint64_t sumOf(uint32_t ui32Pixels) const
    {
        return m_aaui64Sums[0][ui32Pixels & 15] + m_aaui64Sums[1][ui32Pixels >> 4 & 15] + m_aaui64Sums[2][ui32Pixels >> 8 & 15] +
               m_aaui64Sums[3][ui32Pixels >> 12 & 15];
    }

    /// The quotients to the nearest whole number, halves up: in whole numbers the same as rounding the quotient of doubles.
    static HWY_INLINE void placeMean(uint64_t ui64Sums, uint32_t uiCount, float* pfCentre)
    {
        for (uint32_t c = 0; c < 3; ++c)
        {
            const auto uiSum = static_cast<uint32_t>(ui64Sums >> c * k_uiFieldBits & 0xFFFF);
            pfCentre[c] = static_cast<float>(static_cast<int32_t>((2 * uiSum + uiCount) * k_etcMeanDivisors.aui32[uiCount] >> 20));
        }
    }

    alignas(64) float m_aafPlanes[3][k_uiPixels];
    alignas(64) uint64_t m_aaui64Sums[4][16]; ///< by group of four pixels and which of them: sums of the channels in fields
    uint64_t m_ui64Sum;                       ///< of all pixels
    double m_afLeast[3];
    double m_afRange[3];
    double m_fError; ///< of the last assignment
};

template <class Block>
HWY_INLINE EtcColourPair cluster(const EtcPixels& pixels, bool bStartsAgain)
{
    constexpr double fStartError = 3.0 * 16.0 * 512.0 * 512.0;
    Block block(pixels);
    typename Block::CentrePair centres;
    typename Block::CentrePair best{};
    double fBest = fStartError;
    double fPrevious = fStartError;
    CEtcSettledAssignments settled;
    bool bSeed = true;
    for (uint32_t uiAttempt = 0; uiAttempt < k_uiEtcClusterAttempts && bSeed; ++uiAttempt)
    {
        bSeed = false;
        block.placeSeeds(uiAttempt, centres);
        uint32_t ui32Before = 0;
        for (uint32_t uiIteration = 0; uiIteration < k_uiEtcClusterIterations; ++uiIteration)
        {
            const uint32_t ui32First = block.assign(centres);
            const bool bEmpty = ui32First == 0 || ui32First == k_ui32AllEtcPixels;
            const bool bStays = ui32First == ui32Before;
            const EtcAssignment* const pSettled = settled.find(ui32First);
            const bool bMoves = !bEmpty && !bStays && !(pSettled && uiIteration + 2 < k_uiEtcClusterIterations);
            const typename Block::CentrePair measured = centres;
            const double fError = bMoves ? block.sumErrorAndMeans(ui32First, centres) : block.sumError();
            const bool bRepeats = fError == fPrevious;
            fPrevious = fError;
            if (fBest > fError)
            {
                fBest = fError;
                best = measured;
            }
            if (bEmpty || bRepeats)
            {
                bSeed = bEmpty || bStartsAgain;
                break;
            }
            if (fError == 0.0)
                break;
            if (bMoves)
            {
                ui32Before = ui32First;
                continue;
            }
            // Where the assignment stays, so do the centres, and the next error repeats this one. Where it is known to stay, the next
            // error is known and the one after that repeats it.
            bSeed = bStartsAgain && (!bStays || uiIteration + 1 < k_uiEtcClusterIterations);
            if (bStays)
                settled.add({ui32First, fError});
            else
                fPrevious = pSettled->fError;
            break;
        }
    }
    return Block::toBytes(best);
}

EtcColourPair clusterHalfIntensity(const EtcPixels& pixels)
{
    return cluster<CTransformedBlock<true>>(pixels, false);
}

EtcColourPair clusterNoIntensity(const EtcPixels& pixels, bool bStartsAgain)
{
    return cluster<CTransformedBlock<false>>(pixels, bStartsAgain);
}

EtcColourPair clusterRGB(const EtcPixels& pixels, bool bStartsAgain)
{
    return cluster<CRGBBlock>(pixels, bStartsAgain);
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(clusterHalfIntensity);
HWY_EXPORT(clusterNoIntensity);
HWY_EXPORT(clusterRGB);

EtcColourPair lbgHalfIntensity(const EtcPixels& pixels)
{
    return HWY_DYNAMIC_DISPATCH(clusterHalfIntensity)(pixels);
}

EtcColourPair lbgNoIntensityT(const EtcPixels& pixels)
{
    return HWY_DYNAMIC_DISPATCH(clusterNoIntensity)(pixels, false);
}

EtcColourPair lbgNoIntensityH(const EtcPixels& pixels)
{
    return HWY_DYNAMIC_DISPATCH(clusterNoIntensity)(pixels, true);
}

EtcColourPair lbgRGBT(const EtcPixels& pixels)
{
    return HWY_DYNAMIC_DISPATCH(clusterRGB)(pixels, false);
}

EtcColourPair lbgRGBH(const EtcPixels& pixels)
{
    return HWY_DYNAMIC_DISPATCH(clusterRGB)(pixels, true);
}

} // namespace moxtexture
#endif
