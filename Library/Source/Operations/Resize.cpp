#include "Operations/Resize.h"

#include "Operations/ChannelKind.h"
#include "Operations/MovePixels.h"
#include "Operations/ResampleSurface.h"

namespace moxtexture
{
namespace
{

uint32_t scaleBorder(uint32_t uiBorder, uint32_t uiNewSize, uint32_t uiOldSize)
{
    return static_cast<uint32_t>(uint64_t{uiBorder} * uiNewSize / uiOldSize);
}

} // namespace

void setResizedShape(CMOXTextureHeader& header, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth)
{
    uint32_t x;
    uint32_t y;
    uint32_t z;
    header.getBorder(x, y, z);
    const SurfaceSize old = getSurfaceSize(header);
    header.setWidth(uiWidth);
    header.setHeight(uiHeight);
    header.setDepth(uiDepth);
    header.setNumMIPLevels(1);
    if ((x != 0 || y != 0 || z != 0) && !old.isEmpty())
        header.setBorder(scaleBorder(x, uiWidth, old.uiWidth), scaleBorder(y, uiHeight, old.uiHeight),
                         scaleBorder(z, uiDepth, old.uiDepth));
}

bool Resize(CMOXTexture& texture, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth, EResizeMode eMode)
{
    if (uiWidth == 0 || uiHeight == 0 || uiDepth == 0)
        return false;
    return withChannelKind(texture,
                           [&](auto element)
                           {
                               if (getSurfaceSize(texture) == SurfaceSize{uiWidth, uiHeight, uiDepth})
                                   return true;
                               using T = decltype(element);
                               CMOXTextureHeader header = texture;
                               setResizedShape(header, uiWidth, uiHeight, uiDepth);
                               return replaceSurfaces(texture, header,
                                                      [&](const uint8_t* pSource, uint8_t* pTarget, uint32_t)
                                                      {
                                                          return resizeSurface(reinterpret_cast<const T*>(pSource),
                                                                               reinterpret_cast<T*>(pTarget), getSurfaceSize(texture),
                                                                               getSurfaceSize(header), eMode);
                                                      });
                           });
}

} // namespace moxtexture
