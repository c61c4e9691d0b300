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

enum class EWinner
{
    eOther,
    eT,
    eH
};

/// Sums of squares. They are whole numbers, and those that the searches give are those of the decoded blocks.
struct PlainMeasure
{
    static constexpr bool k_bWeighted = false;

    static double measure(const EtcPixels& pixels, const EtcPixels& decoded) { return blockErrorRGB(pixels, decoded); }
    static bool mayBeLess(uint32_t uiFound, double fError) { return uiFound < fError; }

    template <typename Decode>
    static double measureFit(const EtcPixels&, const EtcModeFit& fit, const EtcBlockWords&, Decode)
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

    template <typename Decode>
    static double measureFit(const EtcPixels& pixels, const EtcModeFit&, const EtcBlockWords& compact, Decode decode)
    {
        return measure(pixels, decode(compact));
    }
};

/// @tparam Measure  of all blocks but the refined ones, which are always measured plainly
template <typename Measure>
void tryPlanarTH(const EtcPixels& pixels, const EtcColourPair& halfIntensity, double fError, EtcBlockWords& block)
{
    EWinner eWinner = EWinner::eOther;
    const EtcBlockWords planar = planarFit(pixels);
    const double fPlanar = Measure::measure(pixels, decodeEtcPixelsPlanar(planar));
    if (fError > fPlanar)
    {
        fError = fPlanar;
        block = stuffPlanar(planar);
    }
    const EtcFastModes modes = fitFastModes(pixels, halfIntensity, Measure::k_bWeighted);
    if (Measure::mayBeLess(modes.t.uiError, fError))
    {
        const EtcBlockWords compact = makeFastT(pixels, modes.t, Measure::k_bWeighted);
        const double fT = Measure::measureFit(pixels, modes.t, compact, decodeEtcPixelsT);
        if (fError > fT)
        {
            fError = fT;
            block = stuffT(compact);
            eWinner = EWinner::eT;
        }
    }
    if (Measure::mayBeLess(modes.h.uiError, fError))
    {
        const EtcBlockWords compact = makeFastH(pixels, modes.h, Measure::k_bWeighted);
        const double fH = Measure::measureFit(pixels, modes.h, compact, decodeEtcPixelsH);
        if (fError > fH)
        {
            fError = fH;
            block = stuffH(compact);
            eWinner = EWinner::eH;
        }
    }

    if (eWinner == EWinner::eT)
    {
        const EtcBlockWords refined = tRefine(pixels, halfIntensity);
        if (fError > blockErrorRGB(pixels, decodeEtcPixelsT(refined)))
            block = stuffT(refined);
    }
    else if (eWinner == EWinner::eH)
    {
        const EtcBlockWords refined = hRefine(pixels);
        if (fError > blockErrorRGB(pixels, decodeEtcPixelsH(refined)))
            block = stuffH(refined);
    }
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
