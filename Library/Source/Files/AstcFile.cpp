#include "Files/AstcFile.h"

#include <algorithm>
#include <istream>

#include "Core/ByteOrder.h"
#include "Core/FileHandle.h"
#include "Files/LoadLimits.h"

namespace moxtexture
{
namespace
{

constexpr uint32_t k_ui32Magic = 0x5CA1AB13;
constexpr size_t k_uiHeaderSize = 16;
constexpr size_t k_uiBlockOffset = 4; ///< three bytes
constexpr size_t k_uiSizeOffset = 7;  ///< three times three bytes
constexpr size_t k_uiSizeBytes = 3;

uint32_t load24(const uint8_t* p)
{
    return p[0] | static_cast<uint32_t>(p[1]) << 8 | static_cast<uint32_t>(p[2]) << 16;
}

void store24(uint8_t* p, uint32_t uiValue)
{
    for (uint32_t i = 0; i < k_uiSizeBytes; ++i)
        p[i] = static_cast<uint8_t>(uiValue >> (8 * i));
}

/// @param pSizes  three sizes in pixels, a byte each
/// @return ePF_Count if no format has such blocks
EMOXTPixelFormat findFormat(const uint8_t* pSizes)
{
    for (uint32_t uiFormat = ePF_ASTC_4x4; uiFormat <= ePF_ASTC_6x6x6; ++uiFormat)
    {
        const PixelFormatRow& row = getPixelFormatRow(uiFormat);
        if (row.uiMinX == pSizes[0] && row.uiMinY == pSizes[1] && row.uiMinZ == pSizes[2])
            return static_cast<EMOXTPixelFormat>(uiFormat);
    }
    return ePF_Count;
}

bool readBytes(std::istream& stream, uint8_t* pTarget, size_t uiSize)
{
    return static_cast<bool>(stream.read(reinterpret_cast<char*>(pTarget), static_cast<std::streamsize>(uiSize)));
}

/// @return bytes up to the stream's end; 0 if it cannot tell
uint64_t measureRest(std::istream& stream)
{
    const std::istream::pos_type start = stream.tellg();
    stream.seekg(0, std::ios::end);
    const std::istream::pos_type end = stream.tellg();
    stream.seekg(start);
    return stream && end > start ? static_cast<uint64_t>(end - start) : 0;
}

bool readHeader(std::istream& stream, CMOXTextureHeader& header)
{
    uint8_t aui8Header[k_uiHeaderSize];
    if (!readBytes(stream, aui8Header, sizeof(aui8Header)) || loadLE<uint32_t>(aui8Header) != k_ui32Magic)
        return false;
    const EMOXTPixelFormat eFormat = findFormat(aui8Header + k_uiBlockOffset);
    const uint8_t* pSizes = aui8Header + k_uiSizeOffset;
    header.setPixelFormat(eFormat);
    header.setWidth(load24(pSizes));
    header.setHeight(load24(pSizes + k_uiSizeBytes));
    header.setDepth(load24(pSizes + 2 * k_uiSizeBytes));
    return eFormat != ePF_Count;
}

bool writeHeader(const CMOXTextureHeader& header, std::FILE* pFile)
{
    uint8_t aui8Header[k_uiHeaderSize] = {};
    storeLE(aui8Header, k_ui32Magic);

    const MOXPixelWord format = header.getPixelFormat();
    if (format.isCompressed() && isASTC(format.getFormat()))
    {
        const PixelFormatRow& row = getPixelFormatRow(format.getFormat());
        const uint8_t aui8Block[] = {row.uiMinX, row.uiMinY, row.uiMinZ};
        std::copy(std::begin(aui8Block), std::end(aui8Block), aui8Header + k_uiBlockOffset);
    }

    uint8_t* pSize = aui8Header + k_uiSizeOffset;
    for (const uint32_t uiSize : {header.getWidth(), header.getHeight(), header.getDepth()})
    {
        if (uiSize >> (8 * k_uiSizeBytes) != 0)
            return false;
        store24(pSize, uiSize);
        pSize += k_uiSizeBytes;
    }
    return std::fwrite(aui8Header, sizeof(aui8Header), 1, pFile) == 1;
}

bool writeContents(const CMOXTexture& texture, std::FILE* pFile)
{
    const uint8_t* pSurface = texture.getDataPtr();
    const uint32_t uiSize = texture.getDataSize(0, false, false);
    return pSurface != nullptr && writeHeader(texture, pFile) && std::fwrite(pSurface, 1, uiSize, pFile) == uiSize;
}

} // namespace

bool readASTC(std::istream& stream, CMOXTexture& texture)
{
    const uint64_t ui64FileSize = measureRest(stream);
    if (!readHeader(stream, texture))
    {
        leaveWithoutData(texture);
        return false;
    }
    return takeDataBlock(texture, ui64FileSize) && readBytes(stream, texture.getDataPtr(), texture.getBlockSize());
}

bool writeASTC(const CMOXTexture& texture, const std::string& strPath)
{
    return writeFile(strPath, [&](std::FILE* pFile) { return writeContents(texture, pFile); });
}

} // namespace moxtexture
