#include "Files/DdsWriter.h"

#include <cstdio>

#include "Core/FileHandle.h"
#include "Files/DdsHeader.h"
#include "Formats/DXGIFormatTable.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{
namespace
{

constexpr uint32_t flagIf(bool bSet, uint32_t ui32Flag)
{
    return bSet ? ui32Flag : 0;
}

template <size_t N>
bool writeBytes(const uint8_t (&aui8Record)[N], std::FILE* pFile)
{
    return std::fwrite(aui8Record, sizeof(aui8Record), 1, pFile) == 1;
}

uint32_t getPitch(const CMOXTextureHeader& header)
{
    return static_cast<uint32_t>((uint64_t{header.getWidth()} * header.getBitsPerPixel() + 7) / 8);
}

/// All but the pixel format.
DdsHeader describeShape(const CMOXTextureHeader& header)
{
    const bool bChain = header.getNumMIPLevels() > 1;
    const bool bVolume = header.getDepth() > 1;
    const bool bCube = header.getNumFaces() == k_uiDdsCubeFaces;
    const bool bPitch = !header.getPixelFormat().isCompressed();

    DdsHeader dds;
    dds.ui32Flags = eDdsRequiredFields | flagIf(bChain, eDdsMIPCount) | flagIf(bVolume, eDdsDepth) | flagIf(bPitch, eDdsPitch) |
                    flagIf(!bPitch, eDdsLinearSize);
    dds.ui32Height = header.getHeight();
    dds.ui32Width = header.getWidth();
    dds.ui32PitchOrLinearSize = bPitch ? getPitch(header) : header.getDataSize();
    dds.ui32Depth = header.getDepth();
    dds.ui32MIPCount = header.getNumMIPLevels();
    dds.ui32Caps = eDdsCapsTexture | flagIf(bCube || bChain, eDdsCapsComplex) | flagIf(bChain, eDdsCapsMIPMap);
    dds.ui32Caps2 = flagIf(bCube, eDdsCaps2Cube) | flagIf(bVolume, eDdsCaps2Volume);
    return dds;
}

DdsExtendedHeader describeExtended(const CMOXTextureHeader& header, uint32_t ui32Format)
{
    DdsExtendedHeader extended;
    extended.ui32Format = ui32Format;
    extended.ui32Dimension = header.getDepth() > 1 ? eDdsResource3D : header.getHeight() > 1 ? eDdsResource2D : eDdsResource1D;
    extended.ui32MiscFlags = flagIf(header.getNumFaces() == k_uiDdsCubeFaces, eDdsMiscCube);
    extended.ui32ArraySize = header.getNumArrayMembers();
    return extended;
}

bool writeHeaders(const CMOXTextureHeader& header, std::FILE* pFile)
{
    uint8_t aui8Record[DdsHeader::k_uiRecordSize];
    DdsHeader dds = describeShape(header);
    const D3DFormatRow* pPlain = header.getNumArrayMembers() < 2 ? findD3DFormat(header.getEncoding()) : nullptr;
    if (pPlain != nullptr)
    {
        dds.pixelFormat = describeD3DFormat(*pPlain);
        dds.writeRecord(aui8Record);
        return writeBytes(aui8Record, pFile);
    }

    const DXGIFormatRow* pRow = findDXGIFormat(header.getEncoding());
    if (pRow == nullptr)
        return false;
    uint8_t aui8Extended[DdsExtendedHeader::k_uiRecordSize];
    dds.writeRecord(aui8Record);
    describeExtended(header, pRow->ui32Number).writeRecord(aui8Extended);
    return writeBytes(aui8Record, pFile) && writeBytes(aui8Extended, pFile);
}

bool writeSurfaces(const CMOXTexture& texture, std::FILE* pFile)
{
    uint64_t ui64Sum = 0;
    const auto writeOne = [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
    {
        const uint32_t uiSize = texture.getDataSize(uiLevel, false, false);
        const uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
        ui64Sum += uiSize;
        return pSurface != nullptr && std::fwrite(pSurface, 1, uiSize, pFile) == uiSize;
    };
    return walkSurfaces(texture, writeOne) && ui64Sum == texture.getBlockSize();
}

bool writeContents(const CMOXTexture& texture, std::FILE* pFile)
{
    // A header that was changed since the block was taken may measure more than there is.
    const bool bHeld = texture.fitsDataBlock() && texture.getDataSize() == texture.getBlockSize() && texture.getBlockSize() != 0;
    return bHeld && writeHeaders(texture, pFile) && writeSurfaces(texture, pFile);
}

} // namespace

bool writeDds(const CMOXTexture& texture, const std::string& strPath)
{
    return writeFile(strPath, [&](std::FILE* pFile) { return writeContents(texture, pFile); });
}

} // namespace moxtexture
