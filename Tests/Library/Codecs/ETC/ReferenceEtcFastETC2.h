#pragma once

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "ReferenceEtcFastBlock.h"
#include "ReferenceEtcHModes.h"
#include "ReferenceEtcPlanarFit.h"
#include "ReferenceEtcTModes.h"

/// The fast ETC2 encoder, one mode after the other, each clustered for itself, decoded and measured.
namespace etcreference
{

enum class EMeasure
{
    ePlain,
    ePerceptual
};

inline double measure(const moxtexture::EtcPixels& pixels, const moxtexture::EtcPixels& decoded, EMeasure eMeasure)
{
    return eMeasure == EMeasure::ePlain ? moxtexture::blockErrorRGB(pixels, decoded)
                                        : 1000.0 * moxtexture::blockErrorPerceptual(pixels, decoded);
}

/// From planar on; e is the error of the block that stands.
inline void addedModes(const moxtexture::EtcPixels& pixels, EMeasure eMeasure, double e, moxtexture::EtcBlockWords& block)
{
    const bool bPlain = eMeasure == EMeasure::ePlain;
    const moxtexture::EtcBlockWords planar = etcreference::planarFit(pixels);
    const double ep = measure(pixels, moxtexture::decodeEtcPixelsPlanar(planar), eMeasure);
    moxtexture::EtcBlockWords t;
    static_cast<void>(bPlain ? etcreference::tFast(pixels, t) : etcreference::tFastPerceptual(pixels, t));
    const double et = measure(pixels, moxtexture::decodeEtcPixelsT(t), eMeasure);
    moxtexture::EtcBlockWords h;
    static_cast<void>(bPlain ? etcreference::hFast(pixels, h) : etcreference::hFastPerceptual(pixels, h));
    const double eh = measure(pixels, moxtexture::decodeEtcPixelsH(h), eMeasure);

    char cWinner = '-';
    if (e > ep)
    {
        e = ep;
        block = moxtexture::stuffPlanar(planar);
        cWinner = 'P';
    }
    if (e > et)
    {
        e = et;
        block = moxtexture::stuffT(t);
        cWinner = 'T';
    }
    if (e > eh)
    {
        e = eh;
        block = moxtexture::stuffH(h);
        cWinner = 'H';
    }
    if (cWinner == 'T')
    {
        const moxtexture::EtcBlockWords refined = etcreference::tRefine(pixels);
        if (e > moxtexture::blockErrorRGB(pixels, moxtexture::decodeEtcPixelsT(refined)))
            block = moxtexture::stuffT(refined);
    }
    if (cWinner == 'H')
    {
        const moxtexture::EtcBlockWords refined = etcreference::hRefine(pixels);
        if (e > moxtexture::blockErrorRGB(pixels, moxtexture::decodeEtcPixelsH(refined)))
            block = moxtexture::stuffH(refined);
    }
}

inline void etcFastBlockETC2(const moxtexture::EtcPixels& pixels, moxtexture::EtcBlockWords& block)
{
    const double e = etcreference::etcFastBlockETC1(pixels, block);
    etcreference::addedModes(pixels, EMeasure::ePlain, e, block);
}

inline void etcFastBlockETC2Perceptual(const moxtexture::EtcPixels& pixels, moxtexture::EtcBlockWords& block)
{
    const double e = 1000.0 * etcreference::etcFastBlockETC1Perceptual(pixels, block);
    etcreference::addedModes(pixels, EMeasure::ePerceptual, e, block);
}

} // namespace etcreference
