#include "Operations/Flip.h"

#include "Operations/ChannelKind.h"
#include "Operations/FlipSurface.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{

bool Flip(CMOXTexture& texture, uint32_t uiAxis)
{
    return withWholePixel(texture,
                          [&](auto pixel)
                          {
                              if (uiAxis > eAxisZ)
                                  return true;
                              return walkSurfaces(texture,
                                                  [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                                                  {
                                                      uint8_t* pPixels = texture.getDataPtr(uiLevel, uiMember, uiFace);
                                                      if (pPixels == nullptr)
                                                          return false;
                                                      flipSurface<sizeof(pixel)>(pPixels, getSurfaceSize(texture, uiLevel), uiAxis);
                                                      return true;
                                                  });
                          });
}

} // namespace moxtexture
