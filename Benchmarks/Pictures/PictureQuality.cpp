#include "PictureQuality.h"

#include <algorithm>
#include <cmath>

#include <QImage>
#include <QString>

#include "Conversion/Transcode.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

Picture makeGenerated(uint32_t uiSide, uint64_t ui64Seed)
{
    return {"generated " + std::to_string(ui64Seed), uiSide, uiSide, testsupport::makePicture(uiSide, uiSide, ui64Seed)};
}

std::optional<Picture> readPicture(const std::string& strPath)
{
    const QImage image = QImage(QString::fromLocal8Bit(strPath.c_str())).convertToFormat(QImage::Format_RGBA8888);
    if (image.isNull())
        return std::nullopt;
    Picture picture{
        strPath.substr(strPath.rfind('/') + 1), static_cast<uint32_t>(image.width()), static_cast<uint32_t>(image.height()), {}};
    for (int y = 0; y < image.height(); ++y)
        picture.pixels.insert(picture.pixels.end(), image.constScanLine(y), image.constScanLine(y) + 4 * image.width());
    return picture;
}

Picture cutMiddle(const Picture& picture, uint32_t uiSide)
{
    const uint32_t uiWidth = std::min(uiSide, picture.uiWidth), uiHeight = std::min(uiSide, picture.uiHeight);
    const size_t uiLeft = (picture.uiWidth - uiWidth) / 2, uiTop = (picture.uiHeight - uiHeight) / 2;
    Picture cut{picture.strName, uiWidth, uiHeight, {}};
    for (size_t y = 0; y < uiHeight; ++y)
    {
        const auto pRow = picture.pixels.begin() + static_cast<ptrdiff_t>(4 * ((uiTop + y) * picture.uiWidth + uiLeft));
        cut.pixels.insert(cut.pixels.end(), pRow, pRow + static_cast<ptrdiff_t>(4 * size_t{uiWidth}));
    }
    return cut;
}

std::vector<uint8_t> throughFormat(const Picture& picture, EMOXTPixelFormat eFormat, uint32_t uiQuality)
{
    const CMOXTextureHeader header(k_RGBA8, picture.uiHeight, picture.uiWidth, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    CMOXTexture texture(header, picture.pixels.data());
    if (!Transcode(texture, eFormat, eCT_UnsignedNormalisedByte, eCS_Linear, uiQuality, false) ||
        !Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false))
        return {};
    return {texture.getDataPtr(), texture.getDataPtr() + texture.getBlockSize()};
}

double getPSNR(const Picture& picture, const std::vector<uint8_t>& decoded, const ChannelWeights& weights, uint8_t ui8LeastAlpha)
{
    std::array<uint64_t, 4> aui64Squares = {};
    uint64_t ui64Pixels = 0;
    for (size_t i = 0; i < picture.pixels.size(); i += 4)
    {
        if (picture.pixels[i + 3] < ui8LeastAlpha)
            continue;
        ++ui64Pixels;
        for (size_t c = 0; c < 4; ++c)
        {
            const int iError = picture.pixels[i + c] - decoded[i + c];
            aui64Squares[c] += static_cast<uint64_t>(iError * iError);
        }
    }
    double fSum = 0.0, fWeights = 0.0;
    for (size_t c = 0; c < 4; ++c)
    {
        fSum += weights[c] * static_cast<double>(aui64Squares[c]);
        fWeights += weights[c];
    }
    return 10.0 * std::log10(255.0 * 255.0 * fWeights * static_cast<double>(ui64Pixels) / fSum);
}
