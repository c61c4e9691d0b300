#include "Codecs/ETC/EtcFastETC2.h"

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcFastBlock.h"
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
    static double fit(const EtcPixels& pixels, const EtcPixels& decoded) { return blockErrorRGB(pixels, decoded); }

    static double tFit(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
    {
        return tFast(pixels, halfIntensity, compact);
    }

    static double hFit(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
    {
        return hFast(pixels, halfIntensity, compact);
    }
};

/// Weighted squares times 1000. The searches' whole numbers won't do: only the rounded sums tell equal errors from lesser ones.
struct PerceptualMeasure
{
    static double fit(const EtcPixels& pixels, const EtcPixels& decoded) { return 1000.0 * blockErrorPerceptual(pixels, decoded); }

    static double tFit(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
    {
        static_cast<void>(tFastPerceptual(pixels, halfIntensity, compact));
        return fit(pixels, decodeEtcPixelsT(compact));
    }

    static double hFit(const EtcPixels& pixels, const EtcColourPair& halfIntensity, EtcBlockWords& compact)
    {
        static_cast<void>(hFastPerceptual(pixels, halfIntensity, compact));
        return fit(pixels, decodeEtcPixelsH(compact));
    }
};

/// @tparam Measure  of all blocks but the refined ones, which are always measured plainly
template <typename Measure>
void tryPlanarTH(const EtcPixels& pixels, const EtcColourPair& halfIntensity, double fError, EtcBlockWords& block)
{
    EWinner eWinner = EWinner::eOther;
    const EtcBlockWords planar = planarFit(pixels);
    const double fPlanar = Measure::fit(pixels, decodeEtcPixelsPlanar(planar));
    if (fError > fPlanar)
    {
        fError = fPlanar;
        block = stuffPlanar(planar);
    }
    EtcBlockWords compact;
    const double fT = Measure::tFit(pixels, halfIntensity, compact);
    if (fError > fT)
    {
        fError = fT;
        block = stuffT(compact);
        eWinner = EWinner::eT;
    }
    const double fH = Measure::hFit(pixels, halfIntensity, compact);
    if (fError > fH)
    {
        fError = fH;
        block = stuffH(compact);
        eWinner = EWinner::eH;
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
