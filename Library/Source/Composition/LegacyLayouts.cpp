#include "Composition/LegacyLayouts.h"

#include <new>

#include "Composition/ChannelMoves.h"
#include "Files/LegacyFile.h"
#include "Formats/LegacyTypeTable.h"

namespace moxtexture
{
namespace
{

PixelEncoding withChannelType(PixelEncoding encoding, EMOXTChannelType eChannelType)
{
    encoding.eChannelType = eChannelType;
    return encoding;
}

} // namespace

PixelEncoding getLegacyEncoding(const PixelEncoding& encoding, uint32_t ui32Api)
{
    const int32_t i32Type = formatToLegacyType(encoding, ui32Api);
    if (encoding.pixelFormat.isCompressed())
    {
        const PixelEncoding asInteger = withChannelType(encoding, eCT_UnsignedNormalisedInteger);
        return i32Type < 0 && formatToLegacyType(asInteger, ui32Api) >= 0 ? asInteger : encoding;
    }
    if (i32Type < 0)
        return encoding;
    const PixelEncoding read = legacyTypeToFormat(static_cast<uint32_t>(i32Type));
    const bool bMoves = read.pixelFormat == encoding.pixelFormat &&
                        canMoveChannels(encoding.pixelFormat, encoding.eChannelType, read.pixelFormat, read.eChannelType);
    return bMoves ? withChannelType(encoding, read.eChannelType) : encoding;
}

bool saveLegacyForOthers(const CMOXTexture& texture, const std::string& strPath, uint32_t ui32Api)
try
{
    const EMOXTChannelType eType = getLegacyEncoding(texture.getEncoding(), ui32Api).eChannelType;
    if (eType == texture.getChannelType())
        return saveLegacy(texture, strPath, ui32Api);

    CMOXTexture prepared = texture;
    if (prepared.getPixelFormat().isCompressed())
        prepared.setChannelType(eType);
    else if (!moveChannels(prepared, prepared.getPixelFormat(), eType))
        return false;
    return saveLegacy(prepared, strPath, ui32Api);
}
catch (const std::bad_alloc&)
{
    return false;
}

} // namespace moxtexture
