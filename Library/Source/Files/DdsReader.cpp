#include "Files/DdsReader.h"

#include "Core/FileHandle.h"
#include "Files/DdsHeader.h"
#include "Files/LoadLimits.h"
#include "Texture/DdsFormats.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{
namespace
{

/// Reads a header whose size is the record's.
template <size_t N>
bool readBytes(std::FILE* pFile, uint8_t (&aui8Record)[N])
{
    return std::fread(aui8Record, sizeof(aui8Record), 1, pFile) == 1;
}

void takeShape(const DdsHeader& dds, CMOXTextureHeader& header)
{
    header.setWidth(dds.ui32Width);
    header.setHeight(dds.ui32Height);
    header.setDepth((dds.ui32Flags & eDdsDepth) != 0 ? dds.ui32Depth : 1);
    header.setNumMIPLevels((dds.ui32Flags & eDdsMIPCount) != 0 ? dds.ui32MIPCount : 1);
    header.setNumFaces((dds.ui32Caps2 & eDdsCaps2Cube) != 0 ? k_uiDdsCubeFaces : 1);
    header.setNumArrayMembers(1);
}

/// @return false for a resource that is no texture
bool takeDimension(uint32_t ui32Dimension, CMOXTextureHeader& header)
{
    if (ui32Dimension < eDdsResource1D || ui32Dimension > eDdsResource3D)
        return false;
    if (ui32Dimension == eDdsResource1D)
        header.setHeight(1);
    if (ui32Dimension != eDdsResource3D)
        header.setDepth(1);
    return true;
}

bool takeExtended(const DdsExtendedHeader& extended, CMOXTextureHeader& header)
{
    if (!takeDimension(extended.ui32Dimension, header))
        return false;
    if ((extended.ui32MiscFlags & eDdsMiscCube) != 0)
        header.setNumFaces(k_uiDdsCubeFaces);
    header.setNumArrayMembers(extended.ui32ArraySize != 0 ? extended.ui32ArraySize : 1);
    setFromDXGIFormat(header, extended.ui32Format);
    return true;
}

/// Leaves the file at the start of the data.
bool readHeaders(std::FILE* pFile, CMOXTextureHeader& header)
{
    uint8_t aui8Record[DdsHeader::k_uiRecordSize];
    DdsHeader dds;
    if (!readBytes(pFile, aui8Record) || !dds.readRecord(aui8Record))
        return false;
    takeShape(dds, header);
    if (!dds.isExtended())
        return setFromD3DFormat(header, findD3DNumber(dds.pixelFormat));

    uint8_t aui8Extended[DdsExtendedHeader::k_uiRecordSize];
    if (!readBytes(pFile, aui8Extended))
        return false;
    DdsExtendedHeader extended;
    extended.readRecord(aui8Extended);
    return takeExtended(extended, header);
}

bool readSurfaces(std::FILE* pFile, CMOXTexture& texture)
{
    uint64_t ui64Sum = 0;
    const auto readOne = [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
    {
        const uint32_t uiSize = texture.getDataSize(uiLevel, false, false);
        uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
        const size_t uiRead = pSurface != nullptr ? std::fread(pSurface, 1, uiSize, pFile) : 0;
        ui64Sum += uiRead;
        return uiRead == uiSize; // behind the end of the file there is nothing for the others either
    };
    return walkSurfaces(texture, readOne) && ui64Sum == texture.getBlockSize();
}

} // namespace

bool readDds(std::FILE* pFile, CMOXTexture& texture)
{
    uint64_t ui64Size = 0;
    if (pFile == nullptr || !getFileSize(pFile, ui64Size) || !readHeaders(pFile, texture))
    {
        leaveWithoutData(texture);
        return false;
    }
    return takeDataBlock(texture, ui64Size) && texture.getBlockSize() != 0 && readSurfaces(pFile, texture);
}

} // namespace moxtexture
