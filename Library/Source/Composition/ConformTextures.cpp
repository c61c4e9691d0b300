#include "Composition/ConformTextures.h"

#include <algorithm>
#include <cstring>

#include "Operations/MIPMaps.h"
#include "Operations/Resize.h"
#include "Texture/SurfaceSize.h"

namespace moxtexture
{
namespace
{

bool hasOtherSurfaces(const CMOXTextureHeader& a, const CMOXTextureHeader& b)
{
    return a.getNumFaces() != b.getNumFaces() || a.getNumArrayMembers() != b.getNumArrayMembers();
}

/// Calls change(texture) for each texture that the flags name.
template <typename Change>
bool changeFlagged(CMOXTexture* pTextures, uint32_t uiCount, const std::vector<bool>& aFlags, Change change)
{
    for (uint32_t i = 0; i < uiCount; ++i)
        if (aFlags[i] && !change(pTextures[i]))
            return false;
    return true;
}

/// Fills the surfaces of one MIP level of a texture of the same format and size, starting over where the source ends.
bool repeatSurfaces(const CMOXTexture& source, CMOXTexture& target, uint32_t uiMIPLevel)
{
    const uint32_t uiSurfaceSize = source.getDataSize(uiMIPLevel, false, false);
    if (uiSurfaceSize == 0)
        return false;
    for (uint32_t uiMember = 0; uiMember < target.getNumArrayMembers(); ++uiMember)
        for (uint32_t uiFace = 0; uiFace < target.getNumFaces(); ++uiFace)
        {
            const uint8_t* pSource = source.getDataPtr(uiMIPLevel, uiMember % source.getNumArrayMembers(), uiFace % source.getNumFaces());
            uint8_t* pTarget = target.getDataPtr(uiMIPLevel, uiMember, uiFace);
            if (pSource == nullptr || pTarget == nullptr)
                return false;
            std::memcpy(pTarget, pSource, uiSurfaceSize);
        }
    return true;
}

bool repeatSurfaces(CMOXTexture& texture, uint32_t uiMembers, uint32_t uiFaces)
{
    if (texture.getNumArrayMembers() == 0 || texture.getNumFaces() == 0 || uiMembers == 0 || uiFaces == 0)
        return false;

    CMOXTexture repeated;
    CMOXTextureHeader& header = repeated;
    header = texture;
    header.setNumArrayMembers(uiMembers);
    header.setNumFaces(uiFaces);
    if (!repeated.allocateData())
        return false;

    for (uint32_t uiLevel = 0; uiLevel < texture.getNumMIPLevels(); ++uiLevel)
        if (!repeatSurfaces(texture, repeated, uiLevel))
            return false;
    texture = std::move(repeated);
    return true;
}

} // namespace

bool ConformDifferences::any(const std::vector<bool>& aFlags)
{
    return std::find(aFlags.begin(), aFlags.end(), true) != aFlags.end();
}

ConformDifferences findDifferences(const CMOXTextureHeader& reference, const CMOXTexture* pTextures, uint32_t uiCount)
{
    ConformDifferences differences;
    for (uint32_t i = 0; i < uiCount; ++i)
    {
        differences.aSizes.push_back(getSurfaceSize(pTextures[i]) != getSurfaceSize(reference));
        differences.aMIPs.push_back(pTextures[i].getNumMIPLevels() != reference.getNumMIPLevels());
        differences.aSurfaces.push_back(hasOtherSurfaces(pTextures[i], reference));
    }
    return differences;
}

bool conformSizes(const CMOXTextureHeader& reference, CMOXTexture* pTextures, uint32_t uiCount, const ConformDifferences& differences)
{
    return changeFlagged(pTextures, uiCount, differences.aSizes,
                         [&](CMOXTexture& texture)
                         { return Resize(texture, reference.getWidth(), reference.getHeight(), reference.getDepth(), eResizeLinear); });
}

bool conformMIPMaps(const CMOXTextureHeader& reference, CMOXTexture* pTextures, uint32_t uiCount, const ConformDifferences& differences)
{
    return changeFlagged(pTextures, uiCount, differences.aMIPs,
                         [&](CMOXTexture& texture) { return GenerateMIPMaps(texture, eResizeLinear, reference.getNumMIPLevels()); });
}

bool conformSurfaces(const CMOXTextureHeader& reference, CMOXTexture* pTextures, uint32_t uiCount, const ConformDifferences& differences,
                     bool bFaces, bool bArrays)
{
    return changeFlagged(pTextures, uiCount, differences.aSurfaces,
                         [&](CMOXTexture& texture)
                         {
                             return repeatSurfaces(texture, bArrays ? reference.getNumArrayMembers() : texture.getNumArrayMembers(),
                                                   bFaces ? reference.getNumFaces() : texture.getNumFaces());
                         });
}

} // namespace moxtexture
