#include "Pixels/SurfacePump.h"

#include <algorithm>
#include <memory>

#include "Pixels/ColourSpaceMapping.h"
#include "Pixels/ConversionPlan.h"
#include "Pixels/ConversionRoute.h"

namespace moxtexture
{
namespace
{

/// The surfaces of one MIP level: how far apart they lie and how many pixels each has for both textures.
struct LevelShape
{
    uint64_t ui64SourceBytes;
    uint64_t ui64TargetBytes;
    uint64_t ui64Pixels;
};

LevelShape measureLevel(const CMOXTexture& source, const CMOXTexture& target, uint32_t uiLevel, uint32_t uiSourcePixel,
                        uint32_t uiTargetPixel)
{
    LevelShape shape = {source.getDataSize(uiLevel, false, false), target.getDataSize(uiLevel, false, false),
                        source.getPixelCount(uiLevel, false, false)};
    if (uiSourcePixel != 0)
        shape.ui64Pixels = std::min(shape.ui64Pixels, shape.ui64SourceBytes / uiSourcePixel);
    shape.ui64Pixels = uiTargetPixel != 0 ? std::min(shape.ui64Pixels, shape.ui64TargetBytes / uiTargetPixel) : 0;
    return shape;
}

uint64_t countPixels(const CMOXTexture& source, const CMOXTexture& target, uint32_t uiSourcePixel, uint32_t uiTargetPixel)
{
    uint64_t ui64Pixels = 0;
    const uint64_t ui64Surfaces = uint64_t{source.getNumArrayMembers()} * source.getNumFaces();
    for (uint32_t uiLevel = 0; uiLevel < std::min(source.getNumMIPLevels(), 32u); ++uiLevel)
        ui64Pixels += measureLevel(source, target, uiLevel, uiSourcePixel, uiTargetPixel).ui64Pixels * ui64Surfaces;
    return ui64Pixels;
}

/// Calls convert(source pixels, target pixels, count) until every surface was there. The surfaces of a level lie one after the
/// other, so that those which have nothing between them are one call.
/// @return bytes of target pixels
template <typename Convert>
uint64_t walkPixels(const CMOXTexture& source, CMOXTexture& target, uint32_t uiSourcePixel, uint32_t uiTargetPixel, Convert convert)
{
    const uint32_t uiMembers = std::min(source.getNumArrayMembers(), target.getNumArrayMembers());
    const uint32_t uiFaces = std::min(source.getNumFaces(), target.getNumFaces());
    const bool bSameFaces = source.getNumFaces() == target.getNumFaces();
    if (uiMembers == 0 || uiFaces == 0)
        return 0;

    uint64_t ui64Pixels = 0;
    for (uint32_t uiLevel = 0; uiLevel < std::min(source.getNumMIPLevels(), target.getNumMIPLevels()); ++uiLevel)
    {
        const LevelShape shape = measureLevel(source, target, uiLevel, uiSourcePixel, uiTargetPixel);
        const uint8_t* pSource = source.getDataPtr(uiLevel);
        uint8_t* pTarget = target.getDataPtr(uiLevel);
        if (shape.ui64Pixels == 0 || pSource == nullptr || pTarget == nullptr ||
            source.getDataPtr(uiLevel, uiMembers - 1, uiFaces - 1) == nullptr ||
            target.getDataPtr(uiLevel, uiMembers - 1, uiFaces - 1) == nullptr)
            continue;

        const uint64_t ui64Surfaces = uint64_t{uiMembers} * uiFaces;
        ui64Pixels += ui64Surfaces * shape.ui64Pixels;
        const bool bOneRun = bSameFaces && shape.ui64Pixels * uiSourcePixel == shape.ui64SourceBytes &&
                             shape.ui64Pixels * uiTargetPixel == shape.ui64TargetBytes;
        if (bOneRun)
        {
            convert(pSource, pTarget, static_cast<size_t>(ui64Surfaces * shape.ui64Pixels));
            continue;
        }
        for (uint64_t uiMember = 0; uiMember < uiMembers; ++uiMember)
            for (uint64_t uiFace = 0; uiFace < uiFaces; ++uiFace)
                convert(pSource + (uiMember * source.getNumFaces() + uiFace) * shape.ui64SourceBytes,
                        pTarget + (uiMember * target.getNumFaces() + uiFace) * shape.ui64TargetBytes,
                        static_cast<size_t>(shape.ui64Pixels));
    }
    return ui64Pixels * uiTargetPixel;
}

} // namespace

uint64_t convertSurfacesReference(const CMOXTexture& source, CMOXTexture& target, const CMOXPixelAccessor& sourceAccessor,
                                  const CMOXPixelAccessor& targetAccessor, EMOXTColourSpace eNewSpace, EMOXTColourSpace eOldSpace)
{
    CMOXPixelAccessor from = sourceAccessor;
    CMOXPixelAccessor to = targetAccessor;
    const uint32_t uiHeldBytes = std::min(to.getBytes(), CMOXPixelAccessor::k_uiRawBytes);
    return walkPixels(source, target, from.getBytes(), to.getBytes(),
                      [&](const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
                      {
                          for (size_t i = 0; i < uiCount; ++i)
                          {
                              from.setPixel(pSource);
                              if (to.convertFrom(from))
                                  to.applyColourSpace(eNewSpace, eOldSpace);
                              uint8_t* pRest = std::copy_n(to.getPixel(), uiHeldBytes, pTarget);
                              std::fill(pRest, pTarget + to.getBytes(), uint8_t{0});
                              pSource += from.getBytes();
                              pTarget += to.getBytes();
                          }
                      });
}

uint64_t convertSurfaces(const CMOXTexture& source, CMOXTexture& target, const CMOXPixelAccessor& sourceAccessor,
                         const CMOXPixelAccessor& targetAccessor, EMOXTColourSpace eNewSpace, EMOXTColourSpace eOldSpace)
{
    std::unique_ptr<CConversionRoute> pRoute;
    std::unique_ptr<ConversionPlan> pPlan;
    if (sourceAccessor.getFlags() == 0 && targetAccessor.getFlags() == 0)
    {
        pPlan = std::make_unique<ConversionPlan>(sourceAccessor, targetAccessor, getColourMapping(eNewSpace, eOldSpace));
        pRoute = chooseRoute(*pPlan, countPixels(source, target, sourceAccessor.getBytes(), targetAccessor.getBytes()));
    }
    if (!pRoute)
        return convertSurfacesReference(source, target, sourceAccessor, targetAccessor, eNewSpace, eOldSpace);
    return walkPixels(source, target, sourceAccessor.getBytes(), targetAccessor.getBytes(),
                      [&](const uint8_t* pSource, uint8_t* pTarget, size_t uiCount) { pRoute->convert(pSource, pTarget, uiCount); });
}

} // namespace moxtexture
