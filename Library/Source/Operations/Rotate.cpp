#include "Operations/Rotate.h"

#include "Operations/ChannelKind.h"
#include "Operations/RotateSurface.h"

namespace moxtexture
{
namespace
{

void setRotatedShape(CMOXTextureHeader& header, uint32_t uiAxis)
{
    const SurfaceSize size = getSurfaceSize(header);
    switch (uiAxis)
    {
    case eAxisX:
        header.setHeight(size.uiDepth);
        header.setDepth(size.uiHeight);
        break;
    case eAxisY:
        header.setHeight(size.uiWidth); // on purpose: width and depth stay
        break;
    case eAxisZ:
        header.setWidth(size.uiHeight);
        header.setHeight(size.uiWidth);
        break;
    default:
        break;
    }
}

} // namespace

bool Rotate(CMOXTexture& texture, uint32_t uiAxis, bool bForward)
{
    return withWholePixel(texture,
                          [&](auto pixel)
                          {
                              CMOXTextureHeader header = texture;
                              setRotatedShape(header, uiAxis);
                              return replaceSurfaces(texture, header,
                                                     [&](const uint8_t* pSource, uint8_t* pTarget, uint32_t uiLevel)
                                                     {
                                                         if (uiAxis == eAxisZ)
                                                             rotateSurface<sizeof(pixel)>(pSource, pTarget,
                                                                                          getSurfaceSize(texture, uiLevel), bForward);
                                                         return true;
                                                     });
                          });
}

} // namespace moxtexture
