#pragma once

#include <cstdint>
#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Saves one surface as an ordinary image, in the format that the path's extension tells (png, bmp, jpg and others that Qt
/// writes), at the format's default quality. Writes straight over an earlier file.
///
/// @param texture  of layout rgba 8 8 8 8; of a surface with depth, the first slice is saved
/// @return false for another layout, a surface that the texture does not have, an extension that cannot be written (no file is
///         touched then), or a failed write, which removes the file
///
/// Needs no application object; see loadTextureFile().
[[nodiscard]] bool saveSurfaceAsImage(const CMOXTexture& texture, const std::string& strPath, uint32_t uiMIPLevel, uint32_t uiArrayMember,
                                      uint32_t uiFace);

} // namespace moxtexture
