#pragma once

#include <cstdint>
#include <vector>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// In what each texture of a row differs from a reference; every list has an entry a texture.
///
/// Found before anything is changed, and not found anew in between: a texture that loses its MIP levels to resizing keeps the
/// answer that its levels were as many as the reference's.
struct ConformDifferences
{
    std::vector<bool> aSizes;    ///< width, height or depth of the top level
    std::vector<bool> aMIPs;     ///< the number of MIP levels
    std::vector<bool> aSurfaces; ///< the number of faces or of array members

    [[nodiscard]] bool anySizes() const { return any(aSizes); }
    [[nodiscard]] bool anyMIPs() const { return any(aMIPs); }
    [[nodiscard]] bool anySurfaces() const { return any(aSurfaces); }

private:
    [[nodiscard]] static bool any(const std::vector<bool>& aFlags);
};

[[nodiscard]] ConformDifferences findDifferences(const CMOXTextureHeader& reference, const CMOXTexture* pTextures, uint32_t uiCount);

/// Resizes every texture whose size was found to differ to the reference's with the linear filter; their lower MIP levels go.
///
/// @param pTextures    uiCount textures in a working form that Resize() takes
/// @param differences  of the same textures
/// @return false at the first texture that could not be resized; those before it stay resized
[[nodiscard]] bool conformSizes(const CMOXTextureHeader& reference, CMOXTexture* pTextures, uint32_t uiCount,
                                const ConformDifferences& differences);

/// Builds the reference's number of MIP levels, with the linear filter, for every texture whose number was found to differ.
///
/// @return false at the first texture whose levels could not be made; those before it stay changed
[[nodiscard]] bool conformMIPMaps(const CMOXTextureHeader& reference, CMOXTexture* pTextures, uint32_t uiCount,
                                  const ConformDifferences& differences);

/// Gives every texture whose surfaces were found to differ the reference's number of faces (bFaces) and of array members
/// (bArrays): its own are taken in succession, again from the first after the last. Any pixel format will do.
///
/// @return false at the first texture without members, faces or whole surfaces, and for a result of no surfaces, of 4 GiB or more
///         or without memory; those before it stay changed, it stays as it was
[[nodiscard]] bool conformSurfaces(const CMOXTextureHeader& reference, CMOXTexture* pTextures, uint32_t uiCount,
                                   const ConformDifferences& differences, bool bFaces, bool bArrays);

} // namespace moxtexture
