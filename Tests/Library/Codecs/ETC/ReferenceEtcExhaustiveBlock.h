#pragma once

#include "ReferenceEtcExhaustiveH.h"
#include "ReferenceEtcExhaustiveHalves.h"
#include "ReferenceEtcExhaustivePlanar.h"
#include "ReferenceEtcExhaustiveT.h"
#include "ReferenceEtcFastBlock.h"

/// The order of the searches and the choice among what they found, step by step.
namespace etcreference
{

/// Every search in its literal form.
struct LiteralSearches
{
    template <EEtcMeasure eMeasure>
    static uint32_t individual(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
    {
        return etcreference::searchIndividualExhaustive<eMeasure>(pixels, uiBound, words);
    }

    template <EEtcMeasure eMeasure>
    static uint32_t differential(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words)
    {
        return etcreference::searchDifferentialExhaustive<eMeasure>(pixels, uiBound, words);
    }

    template <EEtcMeasure eMeasure>
    static bool planar(const EtcPixels& pixels, uint32_t uiBound, const std::array<uint32_t, 3>& errors, EtcBlockWords& compact)
    {
        const auto found = etcreference::searchPlanarExhaustive(pixels, uiBound, errors, EtcMeasure<eMeasure>::k_auiWeights);
        compact = found.value_or(EtcBlockWords{});
        return found.has_value();
    }

    template <EEtcMeasure eMeasure>
    static uint32_t h(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact)
    {
        return eMeasure == EEtcMeasure::ePlain ? etcreference::searchHExhaustive(pixels, uiBound, compact)
                                               : etcreference::searchHExhaustivePerceptual(pixels, uiBound, compact);
    }

    template <EEtcMeasure eMeasure>
    static uint32_t t(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& compact)
    {
        return eMeasure == EEtcMeasure::ePlain ? etcreference::searchTExhaustive(pixels, uiBound, compact)
                                               : etcreference::searchTExhaustivePerceptual(pixels, uiBound, compact);
    }
};

/// The error of a block as the searches count it.
template <EEtcMeasure eMeasure>
uint32_t wholeError(const EtcPixels& pixels, const EtcPixels& decoded)
{
    if (eMeasure == EEtcMeasure::ePlain)
        return static_cast<uint32_t>(moxtexture::blockErrorRGB(pixels, decoded));
    return static_cast<uint32_t>(1000.0 * moxtexture::blockErrorPerceptual(pixels, decoded));
}

template <EEtcMeasure eMeasure>
uint32_t encodeFast(const EtcPixels& pixels, EtcBlockWords& words)
{
    if (eMeasure == EEtcMeasure::ePlain)
        return static_cast<uint32_t>(etcreference::etcFastBlockETC1(pixels, words));
    return static_cast<uint32_t>(1000.0 * etcreference::etcFastBlockETC1Perceptual(pixels, words));
}

template <typename Searches = LiteralSearches>
void etcExhaustiveBlockETC1(const EtcPixels& pixels, EtcBlockWords& words)
{
    constexpr EEtcMeasure eMeasure = EEtcMeasure::ePlain;
    EtcBlockWords fast, individual, differential;
    const uint32_t e0 = encodeFast<eMeasure>(pixels, fast);
    const uint32_t uiBound = std::min(e0, 3121200u);
    const uint32_t e1 = Searches::template individual<eMeasure>(pixels, uiBound, individual);
    const uint32_t e2 = Searches::template differential<eMeasure>(pixels, std::min(e1, uiBound), differential);
    words = differential;
    if (e1 < e2)
        words = individual;
    if (e0 < std::min(e1, e2))
        words = fast;
}

template <typename Searches = LiteralSearches>
void etcExhaustiveBlockETC1Perceptual(const EtcPixels& pixels, EtcBlockWords& words)
{
    constexpr EEtcMeasure eMeasure = EEtcMeasure::ePerceptual;
    EtcBlockWords fast, individual, differential;
    const uint32_t e0 = encodeFast<eMeasure>(pixels, fast);
    const uint32_t uiBound = std::min(e0, 1040400000u);
    const uint32_t e1 = Searches::template differential<eMeasure>(pixels, uiBound, differential);
    const uint32_t e2 = Searches::template individual<eMeasure>(pixels, std::min(e1, uiBound), individual);
    words = fast;
    if (e1 < e0)
        words = differential;
    if (e2 < std::min(e0, e1))
        words = individual;
}

/// What both ETC2 blocks begin with.
struct ModesWithoutSearch
{
    EtcBlockWords fast;
    uint32_t e0;
    std::array<uint32_t, 3> planarErrors; ///< red, green, blue
    uint32_t uiBound;
};

template <EEtcMeasure eMeasure>
ModesWithoutSearch runModesWithoutSearch(const EtcPixels& pixels)
{
    ModesWithoutSearch result{};
    result.e0 = encodeFast<eMeasure>(pixels, result.fast);
    const EtcPixels plane = moxtexture::decodeEtcPixelsPlanar(etcreference::planarFit(pixels));
    for (size_t c = 0; c < 3; ++c)
        for (size_t i = 0; i < 16; ++i)
        {
            const int iDifference = planeOf(pixels, c)[i] - planeOf(plane, c)[i];
            result.planarErrors[c] += static_cast<uint32_t>(iDifference * iDifference);
        }
    const uint32_t ep = wholeError<eMeasure>(pixels, plane);
    EtcBlockWords unused;
    const uint32_t et =
        eMeasure == EEtcMeasure::ePlain ? etcreference::tFast(pixels, unused) : etcreference::tFastPerceptual(pixels, unused);
    const uint32_t eh =
        eMeasure == EEtcMeasure::ePlain ? etcreference::hFast(pixels, unused) : etcreference::hFastPerceptual(pixels, unused);
    result.uiBound = std::min({result.e0, EtcMeasure<eMeasure>::k_uiMaxError, ep, et, eh});
    return result;
}

/// The block of the planar search and its error; without a block an error that no other is above.
template <EEtcMeasure eMeasure, typename Searches>
uint32_t encodePlanar(const EtcPixels& pixels, uint32_t uiBound, const std::array<uint32_t, 3>& errors, EtcBlockWords& words)
{
    EtcBlockWords compact;
    if (!Searches::template planar<eMeasure>(pixels, uiBound, errors, compact))
        return 0xFFFFFFFF;
    words = moxtexture::stuffPlanar(compact);
    return wholeError<eMeasure>(pixels, moxtexture::decodeEtcPixelsPlanar(compact));
}

template <typename Searches = LiteralSearches>
void etcExhaustiveBlockETC2(const EtcPixels& pixels, EtcBlockWords& words)
{
    constexpr EEtcMeasure eMeasure = EEtcMeasure::ePlain;
    const ModesWithoutSearch start = runModesWithoutSearch<eMeasure>(pixels);
    uint32_t uiBound = start.uiBound;
    EtcBlockWords differential, planar, individual, h, t;
    const uint32_t e1 = Searches::template differential<eMeasure>(pixels, uiBound, differential);
    uiBound = std::min(e1, uiBound);
    const uint32_t e2 = encodePlanar<eMeasure, Searches>(pixels, uiBound, start.planarErrors, planar);
    if (uiBound > e2)
        uiBound = e2;
    const uint32_t e3 = Searches::template individual<eMeasure>(pixels, uiBound, individual);
    uiBound = std::min(e3, uiBound);
    const uint32_t e4 = Searches::template h<eMeasure>(pixels, uiBound, h);
    const uint32_t e5 = Searches::template t<eMeasure>(pixels, std::min(e4, uiBound), t);

    words = start.fast;
    if (e1 < start.e0)
        words = differential;
    if (e3 < std::min(start.e0, e1))
        words = individual;
    if (e2 < std::min({start.e0, e1, e3}))
        words = planar;
    if (e4 < std::min({start.e0, e1, e3, e2}))
        words = moxtexture::stuffH(h);
    if (e5 < std::min({start.e0, e1, e3, e2, e4}))
        words = moxtexture::stuffT(t);
}

template <typename Searches = LiteralSearches>
void etcExhaustiveBlockETC2Perceptual(const EtcPixels& pixels, EtcBlockWords& words)
{
    constexpr EEtcMeasure eMeasure = EEtcMeasure::ePerceptual;
    const ModesWithoutSearch start = runModesWithoutSearch<eMeasure>(pixels);
    uint32_t uiBound = start.uiBound;
    EtcBlockWords differential, planar, individual, h, t;
    const uint32_t e1 = encodePlanar<eMeasure, Searches>(pixels, uiBound, start.planarErrors, planar);
    if (uiBound > e1)
        uiBound = e1;
    const uint32_t e2 = Searches::template differential<eMeasure>(pixels, uiBound, differential);
    uiBound = std::min(e2, uiBound);
    const uint32_t e3 = Searches::template individual<eMeasure>(pixels, uiBound, individual);
    uiBound = std::min(e3, uiBound);
    const uint32_t e4 = Searches::template h<eMeasure>(pixels, uiBound, h);
    const uint32_t e5 = Searches::template t<eMeasure>(pixels, std::min(e4, uiBound), t);

    words = start.fast;
    if (e1 < start.e0)
        words = planar;
    if (e2 < std::min(start.e0, e1))
        words = differential;
    if (e3 < std::min({start.e0, e1, e2}))
        words = individual;
    if (e4 < std::min({start.e0, e1, e2, e3}))
        words = moxtexture::stuffH(h);
    if (e5 < std::min({start.e0, e1, e2, e3, e4}))
        words = moxtexture::stuffT(t);
}

} // namespace etcreference
