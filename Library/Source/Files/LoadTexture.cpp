#include "Files/LoadTexture.h"

#include <cstdint>
#include <istream>
#include <stdexcept>
#include <vector>

#include "Core/FileHandle.h"
#include "Core/OneShotReadBuf.h"
#include "Files/FileExtension.h"
#include "Files/FileTypes.h"
#include "Files/LoadLimits.h"

namespace moxtexture
{

bool readTexture(std::FILE* pFile, const std::string& strExtension, CMOXTexture& texture)
{
    const FileType& type = getFileType(strExtension);
    const bool bGood = type.readStream != nullptr ? readThroughStream(pFile, type.readStream, texture) : type.readHandle(pFile, texture);
    if (!texture.fitsDataBlock() || texture.getBlockSize() != texture.getDataSize())
        leaveWithoutData(texture);
    return bGood;
}

bool readThroughStream(std::FILE* pFile, bool (*reader)(std::istream& stream, CMOXTexture& texture), CMOXTexture& texture)
{
    // The largest data block there can be, of 4 GiB, and half as much again for keys and padding.
    constexpr uint64_t ui64MostBytes = uint64_t{6} << 30;
    std::vector<uint8_t> bytes;
    if (!readWholeFile(pFile, bytes, ui64MostBytes))
        return false;
    OneShotReadBuf buffer(bytes);
    std::istream stream(&buffer);
    try
    {
        return reader(stream, texture);
    }
    catch (const std::runtime_error&)
    {
        return false;
    }
}

CMOXTexture::CMOXTexture(const std::string& strPath) : CMOXTexture()
{
    const CFileHandle file = CFileHandle::openForReading(strPath);
    // What the reader says is dropped: the caller sees a data size of 0.
    if (file.isOpen())
        readTexture(file.get(), getFileExtension(strPath), *this);
}

} // namespace moxtexture
