#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "Texture/CMOXTexture.h"

/// Makes a texture like the reference in sizes and counts, asking the user where it must; false if that failed or was declined.
using ConformTexture = std::function<bool(const moxtexture::CMOXTextureHeader& reference, moxtexture::CMOXTexture& texture)>;

/// Loads a texture file or image over one surface of a working texture.
///
/// The file is brought into the working texture's layout with its orientation undone, then conformed to a texture of that one
/// surface; its first surface replaces the one told.
///
/// @param working  8-bit or 32-bit float RGBA
/// @param strPath  UTF-8
/// @param conform  gets a reference of one surface with the sizes of the level
/// @return false, with the working texture as it was, if any of the steps failed or memory is refused
[[nodiscard]] bool loadIntoSurface(moxtexture::CMOXTexture& working, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace,
                                   const std::string& strPath, const ConformTexture& conform);
