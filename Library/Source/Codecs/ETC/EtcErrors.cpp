#include "Codecs/ETC/EtcErrors.h"

namespace moxtexture
{

namespace
{

int32_t squareOfDifference(uint8_t uiA, uint8_t uiB)
{
    const int32_t iDifference = uiA - uiB;
    return iDifference * iDifference;
}

int32_t pixelError(const EtcPixels& a, const EtcPixels& b, size_t i)
{
    return squareOfDifference(a.aui8Red[i], b.aui8Red[i]) + squareOfDifference(a.aui8Green[i], b.aui8Green[i]) +
           squareOfDifference(a.aui8Blue[i], b.aui8Blue[i]);
}

} // namespace

double blockErrorRGB(const EtcPixels& pixels, const EtcPixels& decoded)
{
    int32_t iSum = 0;
    for (size_t i = 0; i < 16; ++i)
        iSum += pixelError(pixels, decoded, i);
    return iSum;
}

double blockErrorPerceptual(const EtcPixels& pixels, const EtcPixels& decoded)
{
    double fSum = 0.0;
    for (size_t i = 0; i < 16; ++i)
    {
        const double fRed = pixels.aui8Red[i] - decoded.aui8Red[i];
        const double fGreen = pixels.aui8Green[i] - decoded.aui8Green[i];
        const double fBlue = pixels.aui8Blue[i] - decoded.aui8Blue[i];
        fSum += 0.299 * (fRed * fRed) + 0.587 * (fGreen * fGreen) + 0.114 * (fBlue * fBlue);
    }
    return fSum;
}

double blockErrorRGBA(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcPixels& decoded)
{
    int32_t iSum = 0;
    for (size_t i = 0; i < 16; ++i)
        iSum += alphas.aui8[i] > 128 ? pixelError(pixels, decoded, i) : 0;
    return iSum;
}

} // namespace moxtexture
