#include "Codecs/ETC/EtcFastETC2.h"

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcFastBlock.h"
#include "Codecs/ETC/EtcFastModes.h"
#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcPlanarFit.h"
#include "Codecs/ETC/EtcTModes.h"

namespace moxtexture
{

namespace
{

// The steps of T mode and of H mode, by the same names.

struct ModeT
{
    static const EtcModeFit& fitOf(const EtcFastModes& modes) { return modes.t; }
    static EtcBlockWords make(const EtcPixels& pixels, const EtcModeFit& fit, bool bWeighted) { return makeFastT(pixels, fit, bWeighted); }
    static EtcPixels decode(const EtcBlockWords& compact) { return decodeEtcPixelsT(compact); }
    static EtcBlockWords stuff(const EtcBlockWords& compact) { return stuffT(compact); }
    static EtcBlockWords refine(const EtcPixels& pixels, const EtcColourPair& halfIntensity) { return tRefine(pixels, halfIntensity); }
};

struct ModeH
{
    static const EtcModeFit& fitOf(const EtcFastModes& modes) { return modes.h; }
    static EtcBlockWords make(const EtcPixels& pixels, const EtcModeFit& fit, bool bWeighted) { return makeFastH(pixels, fit, bWeighted); }
    static EtcPixels decode(const EtcBlockWords& compact) { return decodeEtcPixelsH(compact); }
    static EtcBlockWords stuff(const EtcBlockWords& compact) { return stuffH(compact); }
    static EtcBlockWords refine(const EtcPixels& pixels, const EtcColourPair&) { return hRefine(pixels); }
};

/// Sums of squares. They are whole numbers, and those that the searches give are those of the decoded blocks.
struct PlainMeasure
{
    static constexpr bool k_bWeighted = false;

    static double measure(const EtcPixels& pixels, const EtcPixels& decoded) { return blockErrorRGB(pixels, decoded); }
    static bool mayBeLess(uint32_t uiFound, double fError) { return uiFound < fError; }

    template <typename Mode>
    static double measureFit(const EtcPixels&, const EtcModeFit& fit, const EtcBlockWords&)
    {
        return fit.uiError;
    }
};

/// Weighted squares times 1000. The searches' whole numbers won't do where errors are near: the rounded sums of doubles tell which
/// is the lesser.
struct PerceptualMeasure
{
    static constexpr bool k_bWeighted = true;
    static constexpr double k_fFarthestRounding = 0.5; ///< far above what the doubles round

    static double measure(const EtcPixels& pixels, const EtcPixels& decoded) { return 1000.0 * blockErrorPerceptual(pixels, decoded); }
    static bool mayBeLess(uint32_t uiFound, double fError) { return uiFound < fError + k_fFarthestRounding; }

    template <typename Mode>
    static double measureFit(const EtcPixels& pixels, const EtcModeFit&, const EtcBlockWords& compact)
    {
        return measure(pixels, Mode::decode(compact));
    }
};

/// Takes the block of a mode if its error is strictly less.
template <typename Measure, typename Mode>
bool tryFit(const EtcPixels& pixels, const EtcFastModes& modes, double& fError, EtcBlockWords& block)
{
    const EtcModeFit& fit = Mode::fitOf(modes);
    if (!Measure::mayBeLess(fit.uiError, fError))
        return false;
    const EtcBlockWords compact = Mode::make(pixels, fit, Measure::k_bWeighted);
    const double fFound = Measure::template measureFit<Mode>(pixels, fit, compact);
    if (fFound >= fError)
        return false;
    fError = fFound;
    block = Mode::stuff(compact);
    return true;
}

/// On purpose: the refined block is found and measured plainly, whatever fError was measured by.
template <typename Mode>
void tryRefined(const EtcPixels& pixels, const EtcColourPair& halfIntensity, double fError, EtcBlockWords& block)
{
    const EtcBlockWords refined = Mode::refine(pixels, halfIntensity);
    if (blockErrorRGB(pixels, Mode::decode(refined)) < fError)
        block = Mode::stuff(refined);
}

template <typename Measure>
void tryPlanarTH(const EtcPixels& pixels, const EtcColourPair& halfIntensity, double fError, EtcBlockWords& block)
{
    const EtcBlockWords planar = planarFit(pixels);
    const double fPlanar = Measure::measure(pixels, decodeEtcPixelsPlanar(planar));
    if (fPlanar < fError)
    {
        fError = fPlanar;
        block = stuffPlanar(planar);
    }
    const EtcFastModes modes = fitFastModes(pixels, halfIntensity, Measure::k_bWeighted);
    const bool bT = tryFit<Measure, ModeT>(pixels, modes, fError, block);
    const bool bH = tryFit<Measure, ModeH>(pixels, modes, fError, block);
    if (bH)
        tryRefined<ModeH>(pixels, halfIntensity, fError, block);
    else if (bT)
        tryRefined<ModeT>(pixels, halfIntensity, fError, block);
}

} // namespace

void etcTryPlanarTH(const EtcPixels& pixels, const EtcColourPair& halfIntensity, double fError, EtcBlockWords& block)
{
    tryPlanarTH<PlainMeasure>(pixels, halfIntensity, fError, block);
}

void etcFastBlockETC2(const EtcPixels& pixels, EtcBlockWords& block)
{
    const double fError = etcFastBlockETC1(pixels, block);
    if (fError > 0.0) // nothing is strictly less than 0
        tryPlanarTH<PlainMeasure>(pixels, lbgHalfIntensity(pixels), fError, block);
}

void etcFastBlockETC2Perceptual(const EtcPixels& pixels, EtcBlockWords& block)
{
    const double fError = 1000.0 * etcFastBlockETC1Perceptual(pixels, block);
    if (fError > 0.0)
        tryPlanarTH<PerceptualMeasure>(pixels, lbgHalfIntensity(pixels), fError, block);
}

} // namespace moxtexture
