#include "Fuzz/LoadedTexture.h"

#include <algorithm>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

#include "Composition/DdsLayouts.h"
#include "Composition/KtxLayouts.h"
#include "Conversion/Transcode.h"
#include "Core/FileHandle.h"
#include "Core/Workers.h"
#include "Files/AstcFile.h"
#include "Files/CHeaderFile.h"
#include "Files/DdsHeader.h"
#include "Files/DdsWriter.h"
#include "Files/KtxWriter.h"
#include "Files/LegacyFile.h"
#include "Files/LoadTexture.h"
#include "Files/NativeFile.h"
#include "Formats/FormatNames.h"
#include "Texture/SurfaceWalk.h"

using namespace moxtexture;

namespace fuzzsupport
{
namespace
{

/// The pixels, or near enough: a number of levels counts in full.
uint64_t countPixels(const CMOXTextureHeader& header)
{
    CWrappingCount count = header.getWidth();
    for (const uint32_t uiFactor :
         {header.getHeight(), header.getDepth(), header.getNumMIPLevels(), header.getNumArrayMembers(), header.getNumFaces()})
        count *= uiFactor;
    return count.getValue();
}

void lookAtHeader(const CMOXTextureHeader& header)
{
    uint32_t x = 0, y = 0, z = 0;
    header.getBorder(x, y, z);
    static_cast<void>(header.isBumpMap());
    for (const EMOXTAxis eAxis : {eAxisX, eAxisY, eAxisZ})
        static_cast<void>(header.getOrientation(eAxis));
    for (uint32_t uiFace = 0; uiFace < std::min(header.getNumFaces(), 8u); ++uiFace)
        static_cast<void>(getCubeFaceName(uiFace, header.getCubeMapOrder()));
    for (const bool bShort : {false, true})
    {
        static_cast<void>(getChannelTypeName(header.getChannelType(), bShort));
        static_cast<void>(getColourSpaceName(header.getColourSpace(), bShort));
    }
    static_cast<void>(getFormatName(header.getPixelFormat()));
}

void bringToRGBA8(const CMOXTexture& loaded)
{
    CMOXTexture texture = cutToSize(loaded);
    if (Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false))
        require(texture.getPixelFormat() == k_RGBA8 && texture.getDataSize() == texture.getBlockSize());
}

/// To one of the MOXTC formats at one of the two fast qualities, which its own bytes choose.
void encodeAsMOXTC(const CMOXTexture& loaded)
{
    setProcessorCount(1); // threads would find nothing more, and start slowly here
    CMOXTexture texture = loaded;
    const uint8_t* pBytes = texture.getDataPtr();
    const uint32_t uiChoice = (pBytes[0] + pBytes[texture.getBlockSize() - 1]) % 12u;
    const auto eFormat = static_cast<EMOXTPixelFormat>(ePF_MOXTC_2bpp_RGB + uiChoice / 2);
    if (Transcode(texture, eFormat, eCT_UnsignedNormalisedByte, eCS_Linear, uiChoice % 2, false))
        require(texture.getPixelFormat() == eFormat && texture.getDataSize() == texture.getBlockSize());
}

void saveEverywhere(const CMOXTexture& texture)
{
    const CMemoryPath path;
    for (auto* write : {writeKtx, writeDds, saveCHeader, writeASTC})
        static_cast<void>(write(texture, path.get()));
    for (uint32_t ui32Api = 1; ui32Api <= 7; ++ui32Api)
        static_cast<void>(saveLegacy(texture, path.get(), ui32Api));
    require(writeNative(texture, path.get()));
    requireSameData(texture, path, "mox");
}

/// As they go out so that others see the right colours.
void saveForOthers(const CMOXTexture& texture)
{
    CMOXTexture ktx = texture;
    if (prepareForKtx(ktx))
        requireSavedAsItIs(ktx, "ktx", writeKtx);
    CMOXTexture dds = texture;
    if (prepareForDds(dds) && isKeptByDds(dds))
        requireSavedAsItIs(dds, "dds", writeDds);
}

} // namespace

void require(bool bTrue)
{
    if (!bTrue)
        std::abort();
}

void requireSound(const CMOXTexture& texture)
{
    require(texture.fitsDataBlock() && texture.getDataSize() == texture.getBlockSize() &&
            texture.getMetaDataSize() == texture.sumMetaDataSize());
}

void lookAtSurfaces(const CMOXTexture& texture)
{
    if (texture.getDataSize() == 0)
        return;
    uint32_t uiLeft = 4096;
    volatile uint8_t ui8Seen = 0;
    const auto look = [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
    {
        const uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
        const uint32_t uiSize = texture.getDataSize(uiLevel, false, false);
        require(pSurface != nullptr);
        if (uiSize != 0) // pixels of a few bits make surfaces below a byte, which have none
        {
            ui8Seen = pSurface[0];
            ui8Seen = pSurface[uiSize - 1];
        }
        return --uiLeft != 0;
    };
    static_cast<void>(walkSurfaces(texture, look));
    static_cast<void>(ui8Seen);
}

void useLoaded(const CMOXTexture& texture)
{
    lookAtHeader(texture);
    lookAtSurfaces(texture);
    bringToRGBA8(texture);
    if (!isSmall(texture))
        return;
    // Each surface is enlarged to some blocks at least.
    constexpr uint64_t ui64MostPixels = 1024, ui64MostSurfaces = 12;
    const uint64_t ui64Surfaces = uint64_t{texture.getNumMIPLevels()} * texture.getNumArrayMembers() * texture.getNumFaces();
    if (countPixels(texture) <= ui64MostPixels && ui64Surfaces <= ui64MostSurfaces)
        encodeAsMOXTC(texture);
    saveEverywhere(texture);
    saveForOthers(texture);
}

CMOXTexture cutToSize(const CMOXTexture& texture)
{
    constexpr uint64_t ui64MostPixels = 65536;
    if (texture.getDataSize() == 0 || countPixels(texture) <= ui64MostPixels)
        return texture;

    CMOXTextureHeader header(texture);
    while (countPixels(header) > ui64MostPixels) // ends, as there are no more than 32 levels
    {
        header.setWidth((header.getWidth() + 1) / 2);
        header.setHeight((header.getHeight() + 1) / 2);
        header.setDepth((header.getDepth() + 1) / 2);
        header.setNumArrayMembers((header.getNumArrayMembers() + 1) / 2);
        header.setNumFaces((header.getNumFaces() + 1) / 2);
    }
    const bool bLess = header.fitsDataBlock() && header.getDataSize() <= texture.getBlockSize();
    return CMOXTexture(header, bLess ? texture.getDataPtr() : nullptr);
}

bool isSmall(const CMOXTexture& texture)
{
    constexpr uint32_t uiMostBytes = 16384;
    return texture.getDataSize() != 0 && texture.getDataSize() <= uiMostBytes;
}

bool isKeptByDds(const CMOXTextureHeader& header)
{
    const bool bFaces = header.getNumFaces() == 1 || header.getNumFaces() == k_uiDdsCubeFaces; // others become one
    // Unprepared, a float of 16 bits goes out under a number that is read as 32 bits.
    const bool bHalf = header.getPixelFormat() == layout("r", 16) && header.getChannelType() == eCT_SignedFloatingPoint;
    return bFaces && !bHalf && hasDdsFormat(header);
}

CMemoryPath::CMemoryPath() : m_iDescriptor(::memfd_create("fuzz", MFD_CLOEXEC)), m_strPath("/proc/self/fd/" + std::to_string(m_iDescriptor))
{
    require(m_iDescriptor >= 0);
}

CMemoryPath::~CMemoryPath()
{
    ::close(m_iDescriptor);
}

bool CMemoryPath::load(const std::string& strExtension, CMOXTexture& texture) const
{
    const CFileHandle file = CFileHandle::openForReading(m_strPath);
    require(file.isOpen());
    return readTexture(file.get(), strExtension, texture);
}

void requireSameData(const CMOXTexture& texture, const CMemoryPath& path, const std::string& strExtension)
{
    CMOXTexture again;
    require(path.load(strExtension, again));
    requireSound(again);
    require(texture.getBlockSize() == again.getBlockSize() &&
            std::equal(texture.getDataPtr(), texture.getDataPtr() + texture.getBlockSize(), again.getDataPtr()));
}

} // namespace fuzzsupport
