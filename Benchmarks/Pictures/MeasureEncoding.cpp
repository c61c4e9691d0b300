// Tells how much of a picture the MOXTC formats keep: a table of PSNR by format and quality.
//   measure-encoding [PICTURE...]
// Generated pictures come first, then those that are named. MOXTC of the first generation, which takes powers of two alone, gets the
// middle 512 by 512 pixels of a named picture, MOXTCII all of it. The figures are the same on every machine.

#include <cmath>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <QImage>
#include <QString>

#include "Conversion/Transcode.h"
#include "Core/Workers.h"
#include "Formats/FormatNames.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

constexpr int k_iCrop = 512;

struct Picture
{
    std::string strName;
    uint32_t uiWidth, uiHeight;
    std::vector<uint8_t> pixels; ///< RGBA of 8 bits
};

struct Quality
{
    double fColour; ///< PSNR of red, green and blue together, in decibels
    double fAlpha;
};

Picture takePicture(const std::string& strName, const QImage& image)
{
    Picture picture{strName, static_cast<uint32_t>(image.width()), static_cast<uint32_t>(image.height()), {}};
    for (int y = 0; y < image.height(); ++y)
        picture.pixels.insert(picture.pixels.end(), image.constScanLine(y), image.constScanLine(y) + 4 * image.width());
    return picture;
}

/// 10 log10(255^2 / mean squared error) over the channels from uiFirst to uiLast.
double getPSNR(const uint8_t* pA, const uint8_t* pB, size_t uiPixels, size_t uiFirst, size_t uiLast)
{
    uint64_t ui64Sum = 0;
    for (size_t i = 0; i < uiPixels; ++i)
        for (size_t c = uiFirst; c <= uiLast; ++c)
        {
            const int iError = pA[4 * i + c] - pB[4 * i + c];
            ui64Sum += static_cast<uint64_t>(iError * iError);
        }
    const double fSamples = static_cast<double>(uiPixels) * static_cast<double>(uiLast - uiFirst + 1);
    return 10.0 * std::log10(255.0 * 255.0 * fSamples / static_cast<double>(ui64Sum)); // infinite where nothing is lost
}

std::optional<Quality> measure(const Picture& picture, EMOXTPixelFormat eFormat, uint32_t uiQuality)
{
    const CMOXTextureHeader header(k_RGBA8, picture.uiHeight, picture.uiWidth, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    CMOXTexture texture(header, picture.pixels.data());
    if (!Transcode(texture, eFormat, eCT_UnsignedNormalisedByte, eCS_Linear, uiQuality, false) ||
        !Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false))
        return std::nullopt;
    const size_t uiPixels = picture.pixels.size() / 4;
    return Quality{getPSNR(picture.pixels.data(), texture.getDataPtr(), uiPixels, 0, 2),
                   getPSNR(picture.pixels.data(), texture.getDataPtr(), uiPixels, 3, 3)};
}

bool printRow(const Picture& picture, EMOXTPixelFormat eFormat)
{
    std::printf("| %s %u x %u | %s |", picture.strName.c_str(), picture.uiWidth, picture.uiHeight, getFormatName(eFormat).c_str());
    for (const uint32_t uiQuality : {0u, 1u})
    {
        const std::optional<Quality> quality = measure(picture, eFormat, uiQuality);
        if (!quality)
            return false;
        std::printf(" %.2f | %.2f |", quality->fColour, quality->fAlpha);
    }
    std::printf("\n");
    return true;
}

/// @param crop  what the first generation gets of the picture
bool printRows(const Picture& crop, const Picture& picture)
{
    return printRow(crop, ePF_MOXTC_2bpp_RGBA) && printRow(crop, ePF_MOXTC_4bpp_RGBA) && printRow(picture, ePF_MOXTCII_2bpp) &&
           printRow(picture, ePF_MOXTCII_4bpp);
}

bool printNamed(const std::string& strPath)
{
    const QImage image = QImage(QString::fromLocal8Bit(strPath.c_str())).convertToFormat(QImage::Format_RGBA8888);
    if (image.width() < k_iCrop || image.height() < k_iCrop)
        return false;
    const std::string strName = strPath.substr(strPath.rfind('/') + 1);
    const QImage crop = image.copy((image.width() - k_iCrop) / 2, (image.height() - k_iCrop) / 2, k_iCrop, k_iCrop);
    return printRows(takePicture(strName, crop), takePicture(strName, image));
}

} // namespace

int main(int argc, char** argv)
{
    setProcessorCount(1); // one tile: others leave blocks that no pass is for
    std::printf("| picture | format | RGB at 0 | alpha at 0 | RGB at 1 | alpha at 1 |\n|---|---|---|---|---|---|\n");
    for (const uint64_t ui64Seed : {1u, 2u, 3u})
    {
        const Picture picture{"generated " + std::to_string(ui64Seed), k_iCrop, k_iCrop,
                              testsupport::makePicture(k_iCrop, k_iCrop, ui64Seed)};
        if (!printRows(picture, picture))
            return 1;
    }
    bool bGood = true;
    for (int i = 1; i < argc; ++i)
        if (!printNamed(argv[i]))
        {
            std::fprintf(stderr, "measure-encoding: %s is no picture of %d by %d or more\n", argv[i], k_iCrop, k_iCrop);
            bGood = false;
        }
    return bGood ? 0 : 1;
}
