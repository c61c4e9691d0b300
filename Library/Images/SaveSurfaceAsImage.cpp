#include "Images/SaveSurfaceAsImage.h"

#include <cstdio>
#include <limits>

#include <QtCore/QBuffer>
#include <QtGui/QImage>
#include <QtGui/QImageWriter>

#include "Core/FileHandle.h"
#include "Files/FileExtension.h"

namespace moxtexture
{
namespace
{

bool writeBytes(const QByteArray& bytes, const std::string& strPath)
{
    return writeFile(strPath,
                     [&](std::FILE* pFile) { return std::fwrite(bytes.constData(), static_cast<size_t>(bytes.size()), 1, pFile) == 1; });
}

} // namespace

bool saveSurfaceAsImage(const CMOXTexture& texture, const std::string& strPath, uint32_t uiMIPLevel, uint32_t uiArrayMember,
                        uint32_t uiFace)
{
    const uint8_t* pSurface = texture.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    const uint32_t uiWidth = texture.getWidth(uiMIPLevel);
    const uint32_t uiHeight = texture.getHeight(uiMIPLevel);
    constexpr uint32_t uiMost = std::numeric_limits<int>::max();
    if (pSurface == nullptr || texture.getPixelFormat() != k_RGBA8 || uiWidth > uiMost / 4 || uiHeight > uiMost)
        return false;

    // The bytes are in the other order than the format tells, and are swapped into it.
    const QImage image =
        QImage(pSurface, static_cast<int>(uiWidth), static_cast<int>(uiHeight), static_cast<int>(uiWidth * 4), QImage::Format_ARGB32)
            .rgbSwapped();
    // Into memory first: Qt would encode the name anew by the locale, and does not tell of a write that fails on closing.
    QBuffer encoded;
    QImageWriter writer(&encoded, QByteArray::fromStdString(getFileExtension(strPath)));
    return !image.isNull() && encoded.open(QIODevice::WriteOnly) && writer.write(image) && writeBytes(encoded.data(), strPath);
}

} // namespace moxtexture
