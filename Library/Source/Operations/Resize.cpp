#include "Operations/Resize.h"

#include <utility>

#include "Operations/ChannelKind.h"
#include "Operations/ResampleSurface.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{
namespace
{

uint32_t scaleBorder(uint32_t uiBorder, uint32_t uiNewSize, uint32_t uiOldSize)
{
    return static_cast<uint32_t>(uint64_t{uiBorder} * uiNewSize / uiOldSize);
}

template <typename T>
bool resizeSurfaces(const CMOXTexture& source, CMOXTexture& destination, EResizeMode eMode)
{
    return walkSurfaces(destination,
                        [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                        {
                            return resizeSurface(reinterpret_cast<const T*>(source.getDataPtr(uiLevel, uiMember, uiFace)),
                                                 reinterpret_cast<T*>(destination.getDataPtr(uiLevel, uiMember, uiFace)),
                                                 getSurfaceSize(source), getSurfaceSize(destination), eMode);
                        });
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
                               CMOXTexture resized;
                               CMOXTextureHeader& header = resized;
                               header = texture;
                               setResizedShape(header, uiWidth, uiHeight, uiDepth);
                               if (!resized.allocateData())
                                   return false;
                               // Without surfaces there is nothing to walk, however many members or faces the header names.
                               if (resized.getBlockSize() != 0 && !resizeSurfaces<decltype(element)>(texture, resized, eMode))
                                   return false;
                               texture = std::move(resized);
                               return true;
                           });
}

} // namespace moxtexture
