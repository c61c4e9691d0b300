#include "Operations/CopyChannels.h"

#include "Operations/ChannelCopies.h"
#include "Operations/ChannelKind.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{
namespace
{

bool haveEqualShapes(const CMOXTextureHeader& a, const CMOXTextureHeader& b)
{
    return a.getWidth() == b.getWidth() && a.getHeight() == b.getHeight() && a.getDepth() == b.getDepth() &&
           a.getNumMIPLevels() == b.getNumMIPLevels() && a.getNumArrayMembers() == b.getNumArrayMembers() &&
           a.getNumFaces() == b.getNumFaces();
}

template <typename Source, typename Destination>
bool copySurfaces(const CMOXTexture& source, CMOXTexture& destination, const ChannelPlan& plan)
{
    return walkSurfaces(destination,
                        [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                        {
                            const uint8_t* pSource = source.getDataPtr(uiLevel, uiMember, uiFace);
                            uint8_t* pDestination = destination.getDataPtr(uiLevel, uiMember, uiFace);
                            if (pSource == nullptr || pDestination == nullptr)
                                return false;
                            copyPixelChannels(reinterpret_cast<const Source*>(pSource), reinterpret_cast<Destination*>(pDestination),
                                              destination.getPixelCount(uiLevel, false, false), plan);
                            return true;
                        });
}

} // namespace

bool CopyChannels(CMOXTexture& destination, const CMOXTexture& source, uint32_t uiNumChannelCopies, const EChannelName* eChannels,
                  const EChannelName* eChannelsSource)
{
    if (!haveEqualShapes(destination, source))
        return false;
    const ChannelPlan plan = makeChannelPlan(uiNumChannelCopies, eChannels, eChannelsSource);
    return withChannelKind(source,
                           [&](auto sourceElement)
                           {
                               return withChannelKind(destination,
                                                      [&](auto destinationElement) {
                                                          return copySurfaces<decltype(sourceElement), decltype(destinationElement)>(
                                                              source, destination, plan);
                                                      });
                           });
}

} // namespace moxtexture
