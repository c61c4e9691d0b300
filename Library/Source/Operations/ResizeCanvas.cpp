#include "Operations/ResizeCanvas.h"

#include "Operations/ChannelKind.h"
#include "Operations/MovePixels.h"
#include "Operations/Resize.h"

namespace moxtexture
{

bool ResizeCanvas(CMOXTexture& texture, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth, int32_t iXOffset, int32_t iYOffset,
                  int32_t iZOffset)
{
    if (uiWidth == 0 || uiHeight == 0 || uiDepth == 0)
        return false;
    return withWholePixel(texture,
                          [&](auto pixel)
                          {
                              const SurfaceSize oldSize = getSurfaceSize(texture);
                              const SurfaceSize newSize = {uiWidth, uiHeight, uiDepth};
                              if (newSize == oldSize && iXOffset == 0 && iYOffset == 0 && iZOffset == 0)
                                  return true;
                              CMOXTextureHeader header = texture;
                              setResizedShape(header, uiWidth, uiHeight, uiDepth);
                              return replaceSurfaces(texture, header,
                                                     [&](const uint8_t* pSource, uint8_t* pTarget, uint32_t)
                                                     {
                                                         copyBox(pSource, oldSize, pTarget, newSize, iXOffset, iYOffset, iZOffset,
                                                                 sizeof(pixel));
                                                         return true;
                                                     });
                          });
}

} // namespace moxtexture
