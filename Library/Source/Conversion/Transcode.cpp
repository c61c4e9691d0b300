#include "Conversion/Transcode.h"

#include <utility>

#include "Conversion/CodecTable.h"
#include "Conversion/CompressSurface.h"
#include "Conversion/DecompressSurface.h"
#include "Conversion/DitherTexture.h"
#include "Pixels/CMOXPixelAccessor.h"
#include "Pixels/SurfacePump.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{
namespace
{

/// Replaces an intermediate form by its compressed one. The channel type stays the intermediate's.
bool compressTexture(CMOXTexture& texture, EMOXTPixelFormat eFormat, uint32_t uiQuality)
{
    CMOXTextureHeader header = texture;
    header.setPixelFormat(eFormat);
    if (!header.fitsDataBlock())
        return false;

    CMOXTexture compressed(header);
    const bool bSigned = isSignedChannelType(header.getChannelType());
    uint64_t ui64Bytes = 0;
    walkSurfaces(header,
                 [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                 {
                     ui64Bytes += compressSurface(texture, compressed, eFormat, uiMember, uiFace, uiLevel, uiQuality, bSigned);
                     return true;
                 });
    texture = std::move(compressed);
    // Formats that measure nothing (BC6, BC7, unknown numbers) cannot be filled.
    return ui64Bytes != 0 && ui64Bytes == texture.getDataSize();
}

/// True where the pump would give the very bytes that it takes: unsigned bytes come back as they were. (Other types would not all:
/// the lowest signed number becomes zero, and some floats are cut.)
bool isReadyForCodec(const CMOXTexture& texture, const CMOXTextureHeader& intermediate)
{
    return texture.getEncoding() == intermediate.getEncoding() && texture.getChannelType() == eCT_UnsignedNormalisedByte &&
           (texture.getPixelFormat() == k_RGBA8 || texture.getPixelFormat() == layout("rgb", 8, 8, 8));
}

} // namespace

bool Transcode(CMOXTexture& texture, MOXPixelWord newFormat, EMOXTChannelType eNewChannelType, EMOXTColourSpace eNewColourSpace,
               uint32_t uiQuality, bool bDoDither)
{
    if (texture.getDataSize() == 0 || texture.getBlockSize() != texture.getDataSize() || newFormat == ePF_Count)
        return false;

    bool bSuccess = true;
    if (texture.getPixelFormat().isCompressed())
    {
        const uint64_t ui64Bytes = decompressTexture(texture);
        if (texture.getPixelFormat().isCompressed())
            return false;
        bSuccess = ui64Bytes == texture.getDataSize();
    }

    constexpr uint32_t uiBitsWithoutDither = 32;
    if (bDoDither && CMOXTextureHeader::getBitsPerPixel(newFormat) < uiBitsWithoutDither && !ditherTexture(texture, newFormat))
        return false;

    CMOXTextureHeader header = texture;
    header.setPixelFormat(newFormat);
    header.setChannelType(eNewChannelType);
    header.setColourSpace(eNewColourSpace);
    if (newFormat.isCompressed())
    {
        const Intermediate intermediate = getIntermediate(newFormat.getFormat(), eNewChannelType);
        header.setPixelFormat(intermediate.pixelFormat);
        header.setChannelType(intermediate.eChannelType);
    }
    if (!header.fitsDataBlock())
        return false;

    const bool bAlike =
        newFormat == texture.getPixelFormat() && eNewColourSpace == texture.getColourSpace() && eNewChannelType == texture.getChannelType();
    if (!bAlike && !isReadyForCodec(texture, header))
    {
        CMOXTexture converted(header);
        convertSurfaces(texture, converted, CMOXPixelAccessor(texture.getPixelFormat(), texture.getChannelType()),
                        CMOXPixelAccessor(converted.getPixelFormat(), converted.getChannelType()), eNewColourSpace,
                        texture.getColourSpace());
        texture = std::move(converted);
    }
    if (newFormat.isCompressed())
        bSuccess = compressTexture(texture, newFormat.getFormat(), uiQuality) && bSuccess;
    return bSuccess;
}

} // namespace moxtexture
