#include "Operations/ColourMIPMaps.h"

#include <type_traits>

#include "Operations/ChannelKind.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{
namespace
{

/// Whether red, green and blue hold the grey of the pixel or 0, by level modulo 6.
constexpr bool k_abChannelsOfLevel[6][3] = {
    {true, false, false}, // red; the top level itself is not painted
    {false, true, false}, // green
    {false, false, true}, // blue
    {false, true, true},  // cyan
    {true, false, true},  // magenta
    {true, true, false},  // yellow
};

template <typename T>
void paintSurface(T* pPixels, size_t uiPixelCount, const bool (&abChannels)[3])
{
    using Sum = std::conditional_t<std::is_integral_v<T>, uint64_t, float>;
    for (T* pPixel = pPixels; pPixel != pPixels + uiPixelCount * k_uiWorkingChannels; pPixel += k_uiWorkingChannels)
    {
        const Sum sum = static_cast<Sum>(pPixel[0]) + static_cast<Sum>(pPixel[1]) + static_cast<Sum>(pPixel[2]);
        const T grey = ChannelKind<T>::toElement(static_cast<float>(sum) / 3.0f);
        for (size_t c = 0; c < 3; ++c)
            pPixel[c] = abChannels[c] ? grey : T(0);
    }
}

} // namespace

bool ColourMIPMaps(CMOXTexture& texture)
{
    return withChannelKind(texture,
                           [&](auto element)
                           {
                               using Element = decltype(element);
                               bool bPainted = true;
                               if (texture.getNumMIPLevels() < 2)
                                   return true;
                               (void)walkSurfaces(texture,
                                                  [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                                                  {
                                                      if (uiLevel == 0)
                                                          return true;
                                                      Element* pPixels =
                                                          reinterpret_cast<Element*>(texture.getDataPtr(uiLevel, uiMember, uiFace));
                                                      bPainted = pPixels != nullptr;
                                                      if (bPainted)
                                                          paintSurface(pPixels, texture.getPixelCount(uiLevel, false, false),
                                                                       k_abChannelsOfLevel[uiLevel % 6]);
                                                      return true;
                                                  });
                               return bPainted;
                           });
}

} // namespace moxtexture
