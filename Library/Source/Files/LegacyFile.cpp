#include "Files/LegacyFile.h"

#include <algorithm>

#include "Core/ByteOrder.h"
#include "Core/FileHandle.h"
#include "Formats/LegacyTypeTable.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{
namespace
{

enum ELegacyFlag : uint32_t
{
    eLegacyPixelType = 0xFF, ///< a number, not a flag
    eLegacyMIPMaps = 0x100,
    eLegacyBumpMap = 0x400,
    eLegacyCubeMap = 0x1000,
    eLegacyAlpha = 0x8000,
    eLegacyVerticalFlip = 0x10000,
};

constexpr uint32_t k_ui32Magic = 0x21584F4D; // "MOX!"

/// The header, word by word.
struct LegacyHeader
{
    uint32_t ui32HeaderSize = k_uiLegacyHeaderSize;
    uint32_t ui32Height = 0, ui32Width = 0;
    uint32_t ui32MIPCount = 0; ///< levels below the top
    uint32_t ui32Flags = 0;    ///< ELegacyFlag, or'ed
    uint32_t ui32DataSize = 0;
    uint32_t ui32BitsPerPixel = 0;
    uint32_t ui32RedMask = 0, ui32GreenMask = 0, ui32BlueMask = 0;
    uint32_t ui32AlphaMask = 0; ///< 1 for the numbered formats that keep alpha apart from their twins without
    uint32_t ui32Magic = k_ui32Magic;
    uint32_t ui32Surfaces = 0; ///< array members times faces
};

// A machine of another byte order has to load and store the words one by one; ByteOrder.h refuses it.
static_assert(sizeof(LegacyHeader) == k_uiLegacyHeaderSize);

CMOXTextureHeader makeHeader(const LegacyHeader& legacy)
{
    const PixelEncoding encoding = legacyTypeToFormat(legacy.ui32Flags & eLegacyPixelType);
    const uint32_t uiFaces = (legacy.ui32Flags & eLegacyCubeMap) != 0 ? 6 : 1;
    CMOXTextureHeader header(encoding.pixelFormat, legacy.ui32Height, legacy.ui32Width, 1, legacy.ui32MIPCount + 1,
                             std::max(1u, legacy.ui32Surfaces / uiFaces), uiFaces, encoding.eColourSpace, encoding.eChannelType,
                             encoding.bPreMultiplied);
    if ((legacy.ui32Flags & eLegacyBumpMap) != 0)
        header.setBumpMap(1.0f, "xyz");
    if ((legacy.ui32Flags & eLegacyVerticalFlip) != 0)
        header.setOrientation(2);
    return header;
}

bool hasAlphaMask(const CMOXTextureHeader& header)
{
    return header.getPixelFormat() == ePF_MOXTC_2bpp_RGBA || header.getPixelFormat() == ePF_MOXTC_4bpp_RGBA;
}

LegacyHeader describe(const CMOXTextureHeader& header, uint32_t uiType)
{
    LegacyHeader legacy;
    legacy.ui32Height = header.getHeight();
    legacy.ui32Width = header.getWidth();
    legacy.ui32MIPCount = header.getNumMIPLevels() - 1;
    legacy.ui32Flags = uiType;
    if (header.getNumMIPLevels() > 1)
        legacy.ui32Flags |= eLegacyMIPMaps;
    if (header.isBumpMap())
        legacy.ui32Flags |= eLegacyBumpMap;
    if (header.getNumFaces() > 1)
        legacy.ui32Flags |= eLegacyCubeMap;
    if (header.getOrientation(eAxisY) == 2)
        legacy.ui32Flags |= eLegacyVerticalFlip;
    if (hasAlphaMask(header))
    {
        legacy.ui32Flags |= eLegacyAlpha;
        legacy.ui32AlphaMask = 1;
    }
    legacy.ui32DataSize = header.getDataSize();
    legacy.ui32BitsPerPixel = header.getBitsPerPixel();
    legacy.ui32Surfaces = header.getNumArrayMembers() * header.getNumFaces();
    return legacy;
}

bool writeSurfaces(const CMOXTexture& texture, std::FILE* pFile)
{
    return walkSurfaces(texture,
                        [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                        {
                            const uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
                            const uint32_t uiSize = texture.getDataSize(uiLevel, false, false);
                            return pSurface != nullptr && std::fwrite(pSurface, 1, uiSize, pFile) == uiSize;
                        });
}

bool writeContents(const CMOXTexture& texture, uint32_t ui32Api, std::FILE* pFile)
{
    const int32_t iType = formatToLegacyType(texture.getEncoding(), ui32Api);
    // A header that was changed since the block was taken may measure more than there is.
    const bool bHeld = texture.fitsDataBlock() && texture.getDataSize() == texture.getBlockSize() && texture.getBlockSize() != 0;
    if (texture.getDepth() >= 2 || iType < 0 || !bHeld)
        return false;
    const LegacyHeader legacy = describe(texture, static_cast<uint32_t>(iType));
    return std::fwrite(&legacy, sizeof(legacy), 1, pFile) == 1 && writeSurfaces(texture, pFile);
}

} // namespace

bool readLegacyHeader(std::FILE* pFile, CMOXTexture& texture)
{
    uint8_t aui8Bytes[k_uiLegacyHeaderSize] = {}; // a shorter header has 0 surfaces
    constexpr size_t uiWordSize = 4;
    if (std::fread(aui8Bytes, uiWordSize, 1, pFile) != 1)
        return false;
    const uint32_t uiSize = loadLE<uint32_t>(aui8Bytes);
    if ((uiSize != k_uiLegacyShortHeaderSize && uiSize != k_uiLegacyHeaderSize) ||
        std::fread(aui8Bytes + uiWordSize, uiSize - uiWordSize, 1, pFile) != 1)
        return false;
    static_cast<CMOXTextureHeader&>(texture) = makeHeader(loadLE<LegacyHeader>(aui8Bytes));
    return true;
}

bool readLegacyData(std::FILE* pFile, CMOXTexture& texture)
{
    return walkSurfaces(texture,
                        [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                        {
                            uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
                            const uint32_t uiSize = texture.getDataSize(uiLevel, false, false);
                            return pSurface != nullptr && std::fread(pSurface, 1, uiSize, pFile) == uiSize;
                        });
}

bool saveLegacy(const CMOXTexture& texture, const std::string& strPath, uint32_t ui32Api)
{
    return writeFile(strPath, [&](std::FILE* pFile) { return writeContents(texture, ui32Api, pFile); });
}

} // namespace moxtexture
