#pragma once

#include <cstdint>

#include "Texture/CMOXTextureHeader.h"

/// The header of a texture that is one surface of another: the sizes of that level, one level, member and face.
[[nodiscard]] inline moxtexture::CMOXTextureHeader makeSurfaceHeader(const moxtexture::CMOXTextureHeader& texture, uint32_t uiMIPLevel)
{
    moxtexture::CMOXTextureHeader surface = texture;
    surface.setWidth(texture.getWidth(uiMIPLevel));
    surface.setHeight(texture.getHeight(uiMIPLevel));
    surface.setDepth(texture.getDepth(uiMIPLevel));
    surface.setNumMIPLevels(1);
    surface.setNumArrayMembers(1);
    surface.setNumFaces(1);
    return surface;
}
