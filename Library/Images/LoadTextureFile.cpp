#include "Images/LoadTextureFile.h"

#include <cstdint>

#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <QtGui/QImageReader>

#include "Composition/DdsLayouts.h"
#include "Core/FileHandle.h"
#include "Files/FileExtension.h"

namespace moxtexture
{
namespace
{

constexpr char k_strCannotOpen[] = "Cannot open file, as it does not exist at specified location.\nHas it been renamed, moved or deleted?";
constexpr char k_strNoImage[] = "Either file is not a valid image or texture file, or is an unsupported format. If the file is a simple "
                                "bitmap or texture file, you could try wrapping it as raw data.";

bool mayBeMeant(const QSize& size, uint64_t ui64FileSize)
{
    constexpr uint64_t ui64AlwaysAllowedBytes = 1 << 30;
    constexpr uint64_t ui64MostBytesPerFileByte = 65536;

    if (size.width() < 1 || size.height() < 1)
        return false;
    const uint64_t ui64Size = uint64_t{static_cast<uint32_t>(size.width())} * static_cast<uint32_t>(size.height()) * 4;
    return ui64Size <= 0xFFFFFFFF && (ui64Size <= ui64AlwaysAllowedBytes || ui64Size / ui64MostBytesPerFileByte <= ui64FileSize);
}

/// A file that was opened by its handle and still tells its name, from which Qt takes what kind of image to try first: some kinds
/// (TGA among them) cannot be told by content. Qt itself must not open it: it would encode the name anew by the locale, and
/// takes some names for resources of the program.
class CNamedFile : public QFile
{
public:
    explicit CNamedFile(const std::string& strPath) : m_Name(QString::fromUtf8(strPath.c_str())) {}
    QString fileName() const override { return m_Name; }

private:
    QString m_Name;
};

/// @return a null image for what is none, or is refused
QImage readImage(const std::string& strPath)
{
    const CFileHandle file = CFileHandle::openForReading(strPath);
    uint64_t ui64FileSize = 0;
    if (!file.isOpen() || !getFileSize(file.get(), ui64FileSize))
        return {};

    CNamedFile device(strPath);
    if (!device.open(file.get(), QIODevice::ReadOnly))
        return {};
    QImageReader reader(&device);
    // Before any memory is taken for it. Kinds that do not tell their size beforehand are checked afterwards.
    const QSize size = reader.size();
    if (size.isValid() && !mayBeMeant(size, ui64FileSize))
        return {};
    QImage image = reader.read();
    return mayBeMeant(image.size(), ui64FileSize) ? image : QImage();
}

} // namespace

void loadTextureFile(LoadStatus& status, CMOXTexture& texture, const std::string& strPath, bool bAsStored)
{
    status = LoadStatus();
    if (!canOpenForReading(strPath))
    {
        status.bFailed = true;
        status.strError = k_strCannotOpen;
        texture = CMOXTexture();
        return;
    }

    texture = CMOXTexture(strPath);
    if (texture.getDataSize() != 0)
    {
        if (!bAsStored && getFileExtension(strPath) == "dds")
            correctLoadedDds(texture);
        return;
    }

    const QImage image = readImage(strPath).convertToFormat(QImage::Format_ARGB32).rgbSwapped();
    if (image.constBits() == nullptr)
    {
        status.bFailed = true;
        status.strError = k_strNoImage;
        return;
    }
    status.bWasImage = true;
    const CMOXTextureHeader header(k_RGBA8, static_cast<uint32_t>(image.height()), static_cast<uint32_t>(image.width()), 1, 1, 1, 1,
                                   eCS_Linear, eCT_UnsignedNormalisedByte, false);
    texture = CMOXTexture(header, image.constBits()); // rows of 32-bit pixels stand without gaps
}

} // namespace moxtexture
