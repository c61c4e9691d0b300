#include "Conversion/DitherTexture.h"

#include <utility>

#include "Operations/CopyChannels.h"
#include "Pixels/CMOXPixelAccessor.h"
#include "Pixels/Dither.h"
#include "Pixels/SurfacePump.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{
namespace
{

/// The channel that a grey target takes its one value from; eChannelNone for targets with colours.
EChannelName getGreySource(MOXPixelWord newFormat)
{
    if (newFormat.isCompressed())
        return newFormat.getFormat() == ePF_1bpp ? eChannelIntensity : eChannelNone;
    // Its l is the place of a normal map's height, not a grey.
    if (newFormat == layout("lgr", 6, 5, 5))
        return eChannelNone;

    EChannelName eSource = eChannelNone;
    for (unsigned int i = 0; i < 4; ++i)
    {
        const EChannelName eName = getChannelName(newFormat.getChannelLetter(i));
        if (eName == eChannelIntensity || (eName == eChannelLuminance && eSource == eChannelNone))
            eSource = eName;
    }
    return eSource;
}

} // namespace

bool ditherTexture(CMOXTexture& texture, MOXPixelWord newFormat)
{
    CMOXTextureHeader header = texture;
    header.setPixelFormat(k_RGBA8);
    header.setChannelType(eCT_UnsignedNormalisedByte);
    if (!header.fitsDataBlock())
        return false;

    CMOXTexture dithered(header);
    convertSurfaces(texture, dithered, CMOXPixelAccessor(texture.getPixelFormat(), texture.getChannelType()),
                    CMOXPixelAccessor(k_RGBA8, eCT_UnsignedNormalisedByte), texture.getColourSpace(), texture.getColourSpace());

    if (const EChannelName eGrey = getGreySource(newFormat); eGrey != eChannelNone)
    {
        const EChannelName aeTargets[3] = {eChannelRed, eChannelGreen, eChannelBlue};
        const EChannelName aeSources[3] = {eGrey, eGrey, eGrey};
        if (!CopyChannels(dithered, dithered, 3, aeTargets, aeSources))
            return false;
    }

    walkSurfaces(header,
                 [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                 {
                     ditherSurface(dithered.getDataPtr(uiLevel, uiMember, uiFace), newFormat, header.getWidth(uiLevel),
                                   header.getHeight(uiLevel), header.getDepth(uiLevel));
                     return true;
                 });
    texture = std::move(dithered);
    return true;
}

} // namespace moxtexture
