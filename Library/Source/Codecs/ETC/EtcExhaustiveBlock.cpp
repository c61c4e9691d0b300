#include "Codecs/ETC/EtcExhaustiveBlock.h"

#include <algorithm>
#include <initializer_list>
#include <limits>

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcExhaustiveDifferential.h"
#include "Codecs/ETC/EtcExhaustiveH.h"
#include "Codecs/ETC/EtcExhaustiveIndividual.h"
#include "Codecs/ETC/EtcExhaustivePlanar.h"
#include "Codecs/ETC/EtcExhaustiveT.h"
#include "Codecs/ETC/EtcFastBlock.h"
#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcMeasure.h"
#include "Codecs/ETC/EtcPlanarFit.h"
#include "Codecs/ETC/EtcTModes.h"
#include "Codecs/ETC/EtcTwoColours.h"

namespace moxtexture
{
namespace
{

/// A block and the error with which it competes.
struct Candidate
{
    EtcBlockWords words;
    uint32_t uiError = 0;
};

/// What a block is measured with and searched by.
template <EEtcMeasure>
struct Searches;

template <>
struct Searches<EEtcMeasure::ePlain>
{
    static constexpr double k_fScale = 1.0;
    static constexpr auto blockError = blockErrorRGB;
    static constexpr auto fastBlock = etcFastBlockETC1;
    static constexpr uint32_t (*fastT)(const EtcPixels&, const EtcColourPair&, EtcBlockWords&) = tFast;
    static constexpr uint32_t (*fastH)(const EtcPixels&, const EtcColourPair&, EtcBlockWords&) = hFast;
    static constexpr auto individual = searchIndividualExhaustive;
    static constexpr auto differential = searchDifferentialExhaustive;
    static constexpr auto planar = searchPlanarExhaustive;
    static constexpr auto h = searchHExhaustive;
    static constexpr auto t = searchTExhaustive;
};

template <>
struct Searches<EEtcMeasure::ePerceptual>
{
    static constexpr double k_fScale = 1000.0;
    static constexpr auto blockError = blockErrorPerceptual;
    static constexpr auto fastBlock = etcFastBlockETC1Perceptual;
    static constexpr uint32_t (*fastT)(const EtcPixels&, const EtcColourPair&, EtcBlockWords&) = tFastPerceptual;
    static constexpr uint32_t (*fastH)(const EtcPixels&, const EtcColourPair&, EtcBlockWords&) = hFastPerceptual;
    static constexpr auto individual = searchIndividualExhaustivePerceptual;
    static constexpr auto differential = searchDifferentialExhaustivePerceptual;
    static constexpr auto planar = searchPlanarExhaustivePerceptual;
    static constexpr auto h = searchHExhaustivePerceptual;
    static constexpr auto t = searchTExhaustivePerceptual;
};

/// An error in the whole numbers of the searches. On purpose truncated: a sum of weighted squares that comes out just below the
/// whole number that it stands for counts one less.
template <EEtcMeasure eMeasure>
uint32_t toWhole(double fError)
{
    return static_cast<uint32_t>(Searches<eMeasure>::k_fScale * fError);
}

template <EEtcMeasure eMeasure>
Candidate encodeFast(const EtcPixels& pixels)
{
    Candidate candidate;
    candidate.uiError = toWhole<eMeasure>(Searches<eMeasure>::fastBlock(pixels, candidate.words));
    return candidate;
}

using Search = uint32_t (*)(const EtcPixels& pixels, uint32_t uiBound, EtcBlockWords& words);

/// Runs a search that finds its block below the bound, and then lowers the bound to what was found.
Candidate runSearch(Search search, const EtcPixels& pixels, uint32_t& uiBound)
{
    Candidate candidate;
    candidate.uiError = search(pixels, uiBound, candidate.words);
    uiBound = std::min(uiBound, candidate.uiError);
    return candidate;
}

uint32_t sumSquares(const std::array<uint8_t, 16>& values, const std::array<uint8_t, 16>& decoded)
{
    uint32_t uiSum = 0;
    for (size_t i = 0; i < values.size(); ++i)
    {
        const int32_t iDifference = values[i] - decoded[i];
        uiSum += static_cast<uint32_t>(iDifference * iDifference);
    }
    return uiSum;
}

/// What the added modes reach without a search.
struct FastErrors
{
    uint32_t uiLeast;                ///< of planar, T and H, by the measure
    uint32_t uiRed, uiGreen, uiBlue; ///< of the fitted plane, squared, without weights in either measure
};

template <EEtcMeasure eMeasure>
FastErrors measureFastModes(const EtcPixels& pixels)
{
    using Of = Searches<eMeasure>;
    const EtcPixels plane = decodeEtcPixelsPlanar(planarFit(pixels));
    const EtcColourPair colours = lbgHalfIntensity(pixels);
    EtcBlockWords unused;
    FastErrors errors{};
    errors.uiLeast = std::min(
        {toWhole<eMeasure>(Of::blockError(pixels, plane)), Of::fastT(pixels, colours, unused), Of::fastH(pixels, colours, unused)});
    errors.uiRed = sumSquares(pixels.aui8Red, plane.aui8Red);
    errors.uiGreen = sumSquares(pixels.aui8Green, plane.aui8Green);
    errors.uiBlue = sumSquares(pixels.aui8Blue, plane.aui8Blue);
    return errors;
}

/// A plane that is nowhere within the bound has an error that never wins.
template <EEtcMeasure eMeasure>
Candidate runPlanarSearch(const EtcPixels& pixels, const FastErrors& fast, uint32_t& uiBound)
{
    Candidate candidate{{}, std::numeric_limits<uint32_t>::max()};
    EtcBlockWords compact;
    if (Searches<eMeasure>::planar(pixels, uiBound, fast.uiRed, fast.uiGreen, fast.uiBlue, compact))
        candidate = {stuffPlanar(compact), toWhole<eMeasure>(Searches<eMeasure>::blockError(pixels, decodeEtcPixelsPlanar(compact)))};
    uiBound = std::min(uiBound, candidate.uiError);
    return candidate;
}

/// Of equal errors the first.
EtcBlockWords chooseBlock(std::initializer_list<Candidate> candidates)
{
    return std::min_element(candidates.begin(), candidates.end(),
                            [](const Candidate& a, const Candidate& b) { return a.uiError < b.uiError; })
        ->words;
}

} // namespace

void etcExhaustiveBlockETC1(const EtcPixels& pixels, EtcBlockWords& words)
{
    using Of = Searches<EEtcMeasure::ePlain>;
    const Candidate fast = encodeFast<EEtcMeasure::ePlain>(pixels);
    uint32_t uiBound = std::min(fast.uiError, k_uiEtcMaxPlainError);
    const Candidate individual = runSearch(Of::individual, pixels, uiBound);
    const Candidate differential = runSearch(Of::differential, pixels, uiBound);
    words = chooseBlock({differential, individual, fast});
}

void etcExhaustiveBlockETC1Perceptual(const EtcPixels& pixels, EtcBlockWords& words)
{
    using Of = Searches<EEtcMeasure::ePerceptual>;
    const Candidate fast = encodeFast<EEtcMeasure::ePerceptual>(pixels);
    uint32_t uiBound = std::min(fast.uiError, k_uiEtcMaxPerceptualError);
    const Candidate differential = runSearch(Of::differential, pixels, uiBound);
    const Candidate individual = runSearch(Of::individual, pixels, uiBound);
    words = chooseBlock({fast, differential, individual});
}

void etcExhaustiveBlockETC2(const EtcPixels& pixels, EtcBlockWords& words)
{
    using Of = Searches<EEtcMeasure::ePlain>;
    const Candidate fast = encodeFast<EEtcMeasure::ePlain>(pixels);
    const FastErrors fastErrors = measureFastModes<EEtcMeasure::ePlain>(pixels);
    uint32_t uiBound = std::min({fast.uiError, k_uiEtcMaxPlainError, fastErrors.uiLeast});
    const Candidate differential = runSearch(Of::differential, pixels, uiBound);
    const Candidate planar = runPlanarSearch<EEtcMeasure::ePlain>(pixels, fastErrors, uiBound);
    const Candidate individual = runSearch(Of::individual, pixels, uiBound);
    Candidate h = runSearch(Of::h, pixels, uiBound);
    Candidate t = runSearch(Of::t, pixels, uiBound);
    h.words = stuffH(h.words);
    t.words = stuffT(t.words);
    words = chooseBlock({fast, differential, individual, planar, h, t});
}

void etcExhaustiveBlockETC2Perceptual(const EtcPixels& pixels, EtcBlockWords& words)
{
    using Of = Searches<EEtcMeasure::ePerceptual>;
    const Candidate fast = encodeFast<EEtcMeasure::ePerceptual>(pixels);
    const FastErrors fastErrors = measureFastModes<EEtcMeasure::ePerceptual>(pixels);
    uint32_t uiBound = std::min({fast.uiError, k_uiEtcMaxPerceptualError, fastErrors.uiLeast});
    const Candidate planar = runPlanarSearch<EEtcMeasure::ePerceptual>(pixels, fastErrors, uiBound);
    const Candidate differential = runSearch(Of::differential, pixels, uiBound);
    const Candidate individual = runSearch(Of::individual, pixels, uiBound);
    Candidate h = runSearch(Of::h, pixels, uiBound);
    Candidate t = runSearch(Of::t, pixels, uiBound);
    h.words = stuffH(h.words);
    t.words = stuffT(t.words);
    words = chooseBlock({fast, planar, differential, individual, h, t});
}

} // namespace moxtexture
