#include "Operations/MIPMaps.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "Operations/ChannelKind.h"
#include "Operations/ResampleSurface.h"

namespace moxtexture
{
namespace
{

SurfaceSize getSizeBelow(const SurfaceSize& size)
{
    return {std::max(1u, size.uiWidth >> 1), std::max(1u, size.uiHeight >> 1), std::max(1u, size.uiDepth >> 1)};
}

template <typename T>
bool generateChain(const CMOXTexture& source, CMOXTexture& destination, EResizeMode eMode, uint32_t uiMember, uint32_t uiFace)
{
    const uint8_t* pSource = source.getDataPtr(0, uiMember, uiFace);
    uint8_t* pAbove = destination.getDataPtr(0, uiMember, uiFace);
    if (pSource == nullptr || pAbove == nullptr)
        return false;
    std::memcpy(pAbove, pSource, destination.getDataSize(0, false, false));

    SurfaceSize above = getSurfaceSize(destination);
    for (uint32_t uiLevel = 1; uiLevel < destination.getNumMIPLevels(); ++uiLevel)
    {
        // Never larger than the surface: the header shifts the same sizes right by the level, modulo 32.
        const SurfaceSize size = getSizeBelow(above);
        uint8_t* pLevel = destination.getDataPtr(uiLevel, uiMember, uiFace);
        if (!resampleSurface(reinterpret_cast<const T*>(pAbove), reinterpret_cast<T*>(pLevel), above, size, eMode))
            return false;
        pAbove = pLevel;
        above = size;
    }
    return true;
}

} // namespace

uint32_t getFullMIPChainLength(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth)
{
    uint32_t uiCount = 1;
    for (; uiWidth > 1 || uiHeight > 1 || uiDepth >= 2; ++uiCount)
    {
        uiWidth >>= 1;
        uiHeight >>= 1;
        uiDepth >>= 1;
    }
    return uiCount;
}

bool GenerateMIPMaps(CMOXTexture& texture, EResizeMode eMode, uint32_t uiNumMIPMaps)
{
    if (uiNumMIPMaps == 0)
        return false;
    return withChannelKind(
        texture,
        [&](auto element)
        {
            CMOXTexture chained;
            CMOXTextureHeader& header = chained;
            header = texture;
            header.setNumMIPLevels(uiNumMIPMaps != k_uiFullMIPChain
                                       ? uiNumMIPMaps
                                       : getFullMIPChainLength(texture.getWidth(), texture.getHeight(), texture.getDepth()));
            if (!chained.allocateData())
                return false;
            // A block without bytes has no surfaces, however many members or faces the header names.
            for (uint32_t uiMember = 0; chained.getBlockSize() != 0 && uiMember < chained.getNumArrayMembers(); ++uiMember)
                for (uint32_t uiFace = 0; uiFace < chained.getNumFaces(); ++uiFace)
                    if (!generateChain<decltype(element)>(texture, chained, eMode, uiMember, uiFace))
                        return false;
            texture = std::move(chained);
            return true;
        });
}

} // namespace moxtexture
